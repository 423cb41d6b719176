#include "windows/start_program.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <stdexcept>

namespace testsupport {

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error("cannot " + what + ": system error " + std::to_string(GetLastError()));
}

// A system handle, closed at the end.
class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() { CloseHandle(handle_); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    [[nodiscard]] HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

// A file that the started program takes over as one of its standard streams.
HANDLE openStream(const std::filesystem::path& path, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inheritable{};
    inheritable.nLength = sizeof inheritable;
    inheritable.bInheritHandle = TRUE;
    const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                    creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        fail("open " + path.string());
    }
    return file;
}

std::wstring wide(const std::string& utf8) {
    const auto size = static_cast<int>(utf8.size());
    std::wstring text(utf8.size(), L'\0');  // never more units than bytes
    text.resize(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), size)));
    return text;
}

// In quotation marks, as the C runtime of the started program takes arguments apart: a backslash counts as
// itself unless a row of them ends at a quotation mark, and then each is doubled.
std::wstring quoted(const std::wstring& argument) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        if (character == L'"') {
            text.append(backslashes + 1, L'\\');
        }
        text += character;
        backslashes = character == L'\\' ? backslashes + 1 : 0;
    }
    return text.append(backslashes, L'\\') + L'"';
}

}  // namespace

std::filesystem::path besideThisProgram(const std::filesystem::path& name) {
    std::wstring own(32768, L'\0');
    own.resize(GetModuleFileNameW(nullptr, own.data(), static_cast<DWORD>(own.size())));
    return std::filesystem::path(own).parent_path() / name;
}

int startProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                 const std::filesystem::path& folder, const std::filesystem::path& standardOutput,
                 const std::filesystem::path& standardError) {
    std::wstring commandLine = quoted(program.wstring());
    for (const std::string& argument : arguments) {
        commandLine += L' ' + quoted(wide(argument));
    }
    const Handle input(openStream(L"NUL", GENERIC_READ, OPEN_EXISTING));
    const Handle output(openStream(standardOutput, GENERIC_WRITE, CREATE_ALWAYS));
    const Handle error(openStream(standardError, GENERIC_WRITE, CREATE_ALWAYS));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.get();
    start.hStdOutput = output.get();
    start.hStdError = error.get();

    // No window to click away when a program ends abnormally.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    PROCESS_INFORMATION started{};
    const auto create = [&] {
        return CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                              folder.c_str(), &start, &started) != FALSE;
    };
    // Once in many thousand starts Wine fails for a reason of its own, before the program runs.
    if (!create() && (GetLastError() != ERROR_INTERNAL_ERROR || !create())) {
        fail("start " + program.string());
    }
    const Handle process(started.hProcess);
    const Handle thread(started.hThread);
    DWORD status = 0;
    if (WaitForSingleObject(process.get(), INFINITE) != WAIT_OBJECT_0 ||
        GetExitCodeProcess(process.get(), &status) == FALSE) {
        fail("wait for " + program.string());
    }
    return static_cast<int>(status);
}

}  // namespace testsupport
