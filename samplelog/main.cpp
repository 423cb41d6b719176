// orbconv-sample-log: writes a realistic receiver log, for a first try of orbconv and for its benchmarks.
//
// Exit status: 0 when the log is written, 1 when it cannot be written, 2 for a command line that makes no
// sense.

#include <argparse/argparse.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "arguments.h"
#include "log_builder.h"
#include "scenario.h"

namespace {

constexpr int exitCannotWrite = 1;
constexpr int exitUsage = 2;

constexpr std::int64_t mostEpochs = 1'000'000'000;
constexpr std::size_t blockSize = std::size_t{256} * 1024;

struct Arguments {
    samplelog::ScenarioOptions scenario;
    std::string outputFileName = "sample.kvs";
};

Arguments parseArguments(int argc, const char* const* argv) {
    Arguments arguments;
    samplelog::ScenarioOptions& scenario = arguments.scenario;
    argparse::ArgumentParser parser("orbconv-sample-log", "", argparse::default_arguments::help);
    parser.add_description("Writes a sample receiver log: satellites of five systems over one site.");
    // No default_value(): with it the parser would take an option without its value for the default.
    parser.add_argument("--epochs")
        .metavar("N")
        .help("number of epochs (default 600)")
        .action([&](const std::string& text) {
            scenario.epochCount = samplelog::parseCount("--epochs", text, 1, mostEpochs);
        });
    parser.add_argument("--interval")
        .metavar("SECONDS")
        .help("time between epochs, with up to three decimals (default 1)")
        .action([&](const std::string& text) {
            scenario.intervalMs = samplelog::parseInterval("--interval", text);
        });
    parser.add_argument("--seed")
        .metavar("K")
        .help("another number gives other orbits and other noise (default 1)")
        .action([&](const std::string& text) { scenario.seed = samplelog::parseSeed("--seed", text); });
    parser.add_argument("--start")
        .metavar("YYYY-MM-DDTHH:MM:SS")
        .help("GPS time of the first epoch (default 2025-06-17T06:00:00)")
        .action([&](const std::string& text) { scenario.start = samplelog::parseStart("--start", text); });
    parser.add_argument("-o", "--output")
        .metavar("FILE")
        .help("the log to write (default sample.kvs)")
        .store_into(arguments.outputFileName);
    parser.parse_args(argc, argv);
    return arguments;
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// A file that takes what a builder has gathered. Every failure ends in an exception with the system's reason.
class LogFile {
public:
    explicit LogFile(const std::string& name) : fileName(name), file(std::fopen(name.c_str(), "wb")) {
        if (!file) {
            fail("open");
        }
        // The blocks are large enough as they are.
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    }

    void write(samplelog::LogBuilder& log) {
        if (std::fwrite(log.bytes().data(), 1, log.size(), file.get()) != log.size()) {
            fail("write");
        }
        log.clear();
    }

    void close() {
        if (std::fclose(file.release()) != 0) {
            fail("write");
        }
    }

private:
    [[noreturn]] void fail(const char* what) const {
        throw std::runtime_error("cannot " + std::string(what) + " '" + fileName +
                                 "': " + std::strerror(errno));
    }

    std::string fileName;
    std::unique_ptr<std::FILE, FileCloser> file;
};

void writeLog(const Arguments& arguments) {
    LogFile file(arguments.outputFileName);
    samplelog::Scenario scenario = samplelog::makeScenario(arguments.scenario);
    samplelog::LogBuilder log;
    log.reserve(2 * blockSize);
    samplelog::writeIdentity(scenario, log);
    for (std::int64_t epoch = 0; epoch < arguments.scenario.epochCount; ++epoch) {
        samplelog::writeEpoch(scenario, epoch, log);
        if (log.size() >= blockSize) {
            file.write(log);
        }
    }
    file.write(log);
    file.close();
}

}  // namespace

int main(int argc, char* argv[]) {
    Arguments arguments;
    try {
        arguments = parseArguments(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "orbconv-sample-log: " << error.what() << "\nTry orbconv-sample-log --help.\n";
        return exitUsage;
    }
    try {
        writeLog(arguments);
    } catch (const std::exception& error) {
        std::cerr << "orbconv-sample-log: " << error.what() << '\n';
        return exitCannotWrite;
    }
    return 0;
}
