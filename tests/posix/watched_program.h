// Runs the converter in surroundings that fail it, with a watch on the time that it takes.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// A folder of its own for one test, gone with it.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    // Names of all that it holds, sorted.
    [[nodiscard]] std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

std::string contentsOf(const std::filesystem::path& file);
void write(const std::filesystem::path& file, std::string_view contents);

struct Surroundings {
    // Where standard output goes; a file of the test's own if empty.
    std::filesystem::path standardOutput = {};
    // As a user who owns nothing, if the test has the right to become one.
    bool asNobody = false;
    // The most bytes that a file can take; 0 for as many as it likes.
    std::size_t longestFile = 0;
};

struct WatchedRun {
    int exitStatus = 0;       // -1 for an end by a signal
    bool hung = false;        // was ended because it took too long
    bool notStarted = false;  // the user who owns nothing may not run the program
    std::string standardOutput;
    std::string standardError;
};

class WatchedProgram {
public:
    // Starts in `folder`.
    WatchedProgram(const TestFolder& folder, const std::vector<std::string>& arguments,
                   const Surroundings& surroundings = {});
    // Its end, or that of the watch's patience.
    WatchedRun wait();

private:
    TestFolder streams_;
    bool ownOutput_;
    pid_t process_;
};

inline WatchedRun runWatched(const TestFolder& folder, const std::vector<std::string>& arguments,
                             const Surroundings& surroundings = {}) {
    return WatchedProgram(folder, arguments, surroundings).wait();
}

// The writing end of a named pipe.
class PipeEnd {
public:
    // Waits until someone reads; isOpen() is false if nobody does.
    explicit PipeEnd(const std::filesystem::path& name);
    ~PipeEnd();
    PipeEnd(const PipeEnd&) = delete;
    PipeEnd& operator=(const PipeEnd&) = delete;

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    // Bytes that the pipe has room for: false if not all of them went in.
    [[nodiscard]] bool put(std::string_view bytes) const;

private:
    int descriptor_ = -1;
};

// Gives the program that opens the pipe `name` these bytes, and calls `beforeTheEnd` while it has the pipe
// open: what the program finds under that name later is decided there.
template <class BeforeTheEnd>
void feedThroughPipe(const std::filesystem::path& name, std::string_view bytes, BeforeTheEnd beforeTheEnd) {
    const PipeEnd pipe(name);
    if (pipe.isOpen() && pipe.put(bytes)) {
        beforeTheEnd();
    }
}

}  // namespace testsupport
