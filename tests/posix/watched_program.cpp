#include "posix/watched_program.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace testsupport {

namespace {

namespace fs = std::filesystem;

constexpr auto patience = std::chrono::seconds(60);
constexpr auto glance = std::chrono::milliseconds(2);
constexpr int nobody = 65534;
constexpr int notStartedStatus = 126;

// Calls `done` until it is true or the time is over.
template <class Done>
bool waitUntil(Done done) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(glance);
    }
    return true;
}

bool becomeNobody() {
    return geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0);
}

void sendTo(const fs::path& file, int descriptor) {
    const int opened = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (opened < 0 || dup2(opened, descriptor) < 0) {
        _exit(notStartedStatus);
    }
}

// In the new process, up to the program's start.
[[noreturn]] void startProgram(const fs::path& folder, std::vector<std::string> arguments,
                               const fs::path& standardOutput, const fs::path& standardError,
                               const Surroundings& surroundings) {
    sendTo(standardOutput, STDOUT_FILENO);
    sendTo(standardError, STDERR_FILENO);
    if (surroundings.longestFile > 0) {
        const rlimit limit = {.rlim_cur = surroundings.longestFile, .rlim_max = surroundings.longestFile};
        std::signal(SIGXFSZ, SIG_IGN);  // so that the write fails, and not the process
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            _exit(notStartedStatus);
        }
    }
    std::string program = ORBCONV_BINARY;
    std::vector<char*> pointers = {program.data()};
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    if (chdir(folder.c_str()) == 0 && (!surroundings.asNobody || becomeNobody())) {
        execv(program.c_str(), pointers.data());
    }
    _exit(notStartedStatus);
}

}  // namespace

TestFolder::TestFolder() {
    std::string name = (fs::temp_directory_path() / "orbconv-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for the test");
    }
    path_ = name;
    fs::permissions(path_, fs::perms(0755));
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    fs::permissions(path_, fs::perms(0755), ignored);
    fs::remove_all(path_, ignored);
}

std::vector<std::string> TestFolder::names() const {
    std::vector<std::string> all;
    for (const auto& entry : fs::directory_iterator(path_)) {
        all.push_back(entry.path().filename().string());
    }
    std::ranges::sort(all);
    return all;
}

std::string contentsOf(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

void write(const fs::path& file, std::string_view contents) {
    std::ofstream(file, std::ios::binary)
        .write(contents.data(), static_cast<std::streamsize>(contents.size()));
}

WatchedProgram::WatchedProgram(const TestFolder& folder, const std::vector<std::string>& arguments,
                               const Surroundings& surroundings)
    : ownOutput_(surroundings.standardOutput.empty()), process_(fork()) {
    if (process_ == 0) {
        startProgram(folder.path(), arguments, ownOutput_ ? streams_ / "out" : surroundings.standardOutput,
                     streams_ / "err", surroundings);
    }
    if (process_ < 0) {
        throw std::runtime_error("no process for the program");
    }
}

WatchedRun WatchedProgram::wait() {
    WatchedRun run;
    int status = 0;
    if (!waitUntil([&] { return waitpid(process_, &status, WNOHANG) == process_; })) {
        run.hung = true;
        kill(process_, SIGKILL);
        waitpid(process_, &status, 0);
    }
    run.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.notStarted = run.exitStatus == notStartedStatus;
    run.standardOutput = ownOutput_ ? contentsOf(streams_ / "out") : std::string();
    run.standardError = contentsOf(streams_ / "err");
    return run;
}

PipeEnd::PipeEnd(const fs::path& name) {
    waitUntil([&] {
        descriptor_ = open(name.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return descriptor_ >= 0;
    });
}

PipeEnd::~PipeEnd() {
    if (isOpen()) {
        close(descriptor_);
    }
}

bool PipeEnd::put(std::string_view bytes) const {
    return ::write(descriptor_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

}  // namespace testsupport
