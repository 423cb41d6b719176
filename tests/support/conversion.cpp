#include "support/conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#ifdef _WIN32
#include "windows/start_program.h"
#else
#include <sys/wait.h>
#endif

namespace testsupport {

namespace {

namespace fs = std::filesystem;

constexpr int sanitizerExit = 99;

// A folder of its own for one run, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        path_ = fs::temp_directory_path() /
                ("orbconv-test-" + std::to_string(random()) + std::to_string(random()));
        fs::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

// A text file with line ends as '\n'.
std::string readText(const fs::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    std::string text = bytes.str();
#ifdef _WIN32
    // Not by a text stream, for which a byte 26 is the end.
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') {
            text[kept++] = text[i];
        }
    }
    text.resize(kept);
#endif
    return text;
}

}  // namespace

#ifdef _WIN32
int exitStatusOfRun(const std::vector<std::string>& arguments, const fs::path& folder,
                    const fs::path& standardOutput, const fs::path& standardError) {
    const fs::path program = besideThisProgram(fs::path(ORBCONV_BINARY).filename());
    return startProgram(program, arguments, folder, standardOutput, standardError);
}
#else
int exitStatusOfRun(const std::vector<std::string>& arguments, const fs::path& folder,
                    const fs::path& standardOutput, const fs::path& standardError) {
    const auto quoted = [](const std::string& text) { return "\"" + text + "\""; };
    std::string command = "cd " + quoted(folder.string()) + " && " + quoted(ORBCONV_BINARY);
    for (const std::string& argument : arguments) {
        command += " " + quoted(argument);
    }
    command += " > " + quoted(standardOutput.string()) + " 2> " + quoted(standardError.string());
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
#endif

Conversion runProgram(const std::vector<std::string>& arguments, std::string_view log,
                      const std::string& logName) {
    const TemporaryFolder streams;
    const TemporaryFolder folder;
    if (!logName.empty()) {
        std::ofstream(folder.path() / logName, std::ios::binary)
            .write(log.data(), static_cast<std::streamsize>(log.size()));
    }
    Conversion result;
    result.exitStatus =
        exitStatusOfRun(arguments, folder.path(), streams.path() / "out", streams.path() / "err");
    result.abnormal = result.exitStatus != 0 && result.exitStatus != 1;
    result.standardOutput = readText(streams.path() / "out");
    result.standardError = readText(streams.path() / "err");
    EXPECT_NE(result.exitStatus, sanitizerExit) << result.standardError;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        const std::string name = entry.path().filename().string();
        result.names.push_back(name);
        if (name != logName && fs::is_regular_file(entry)) {
            result.files[name.back()] = readText(entry.path());
        }
    }
    std::ranges::sort(result.names);
    return result;
}

Conversion convert(std::string_view log, const std::vector<std::string>& arguments,
                   const std::string& logName) {
    std::vector<std::string> all = {"-f", logName};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProgram(all, log, logName);
}

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::vector<std::string> Conversion::lines(char letter) const {
    const auto file = files.find(letter);
    return file == files.end() ? std::vector<std::string>{} : splitLines(file->second);
}

std::vector<std::string> Conversion::labelled(char letter, std::string_view label) const {
    std::vector<std::string> found;
    for (const std::string& line : lines(letter)) {
        if (line.ends_with(label)) {
            found.push_back(line);
        }
    }
    return found;
}

std::vector<std::string> Conversion::body(char letter) const {
    std::vector<std::string> all = lines(letter);
    const auto end =
        std::ranges::find_if(all, [](const std::string& line) { return line.ends_with("END OF HEADER"); });
    return {end == all.end() ? end : end + 1, all.end()};
}

}  // namespace testsupport
