// Any log through the program's own way from arguments to files: the log stands in a folder of its own,
// the output files beside it. They are as long as what the same stages give over the log in memory.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "conversion_run_in_memory.h"
#include "run/conversion_run.h"
#include "run_limits.h"

namespace {

// A folder of this process alone, gone when it ends: in memory if TMPDIR stands there.
class Folder {
public:
    Folder()
        : path_(std::filesystem::temp_directory_path().string() + "/orbconv-fuzz-" +
                std::to_string(getpid())) {
        std::filesystem::create_directory(path_);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    [[nodiscard]] std::string logName() const { return path_ + "/fuzz.log"; }

    // The bytes of all files but the log. They are gone afterwards.
    [[nodiscard]] std::uintmax_t takeOutput() const {
        std::uintmax_t size = 0;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            if (entry.path() != logName()) {
                size += entry.file_size();
                std::filesystem::remove(entry.path());
            }
        }
        return size;
    }

private:
    std::string path_;
};

std::vector<const char*> argumentsOf(const fuzzing::LogInput& input, const std::string& logName) {
    std::vector<const char*> arguments = {"orbconv",
                                          "-f",
                                          logName.c_str(),
                                          "-rv",
                                          fuzzing::versionTexts[fuzzing::versionIndex(input)],
                                          "-DH",
                                          fuzzing::antennaOffsets[fuzzing::offsetIndex(input, 0)],
                                          "-DE",
                                          fuzzing::antennaOffsets[fuzzing::offsetIndex(input, 1)],
                                          "-DN",
                                          fuzzing::antennaOffsets[fuzzing::offsetIndex(input, 2)]};
    const char* const antennaNumber = fuzzing::antennaNumbers[fuzzing::numberIndex(input)];
    if (*antennaNumber != '-') {  // the usual one cannot be given: it looks like an option
        arguments.insert(arguments.end(), {"-AN", antennaNumber});
    }
    for (std::size_t i = 0; i < fuzzing::leaveOutOptions.size(); ++i) {
        if ((input.choice[1] >> i & 1U) != 0) {
            arguments.push_back(fuzzing::leaveOutOptions[i]);
        }
    }
    return arguments;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    static const Folder folder;
    static const std::string logName = folder.logName();
    static fuzzing::Discard console;
    fuzzing::LogInput input = fuzzing::splitInput({data, size});
    if (!fuzzing::isWorthRunning(input.log)) {
        return 0;
    }
    std::FILE* const file = std::fopen(logName.c_str(), "wb");
    if (file == nullptr) {
        std::abort();
    }
    std::fwrite(input.log.data(), 1, input.log.size(), file);
    std::fclose(file);

    std::streambuf* const standardOutput = std::cout.rdbuf(console.rdbuf());
    const std::vector<const char*> arguments = argumentsOf(input, logName);
    try {
        if (orbconv::convert(static_cast<int>(arguments.size()), arguments.data()) != 0) {
            std::abort();
        }
    } catch (const std::exception& error) {
        if (!fuzzing::isKnownEnd(error)) {
            throw;
        }
    }
    std::cout.rdbuf(standardOutput);

    input.choice[1] &= static_cast<std::uint8_t>(~(fuzzing::noOutputFile | fuzzing::dormantSystems));
    static fuzzing::ConversionInMemory inMemory;
    inMemory.out.size = 0;
    inMemory.run(input);
    if (folder.takeOutput() != inMemory.out.size) {
        std::abort();
    }
    return 0;
}
