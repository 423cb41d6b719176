#include "run/conversion_run.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "assembly/record_order.h"
#include "log/passes.h"
#include "navfile/mixed_nav_file.h"
#include "navfile/nav_files.h"
#include "navfile/table_order.h"
#include "run/command_line.h"

namespace orbconv {

namespace {

constexpr int exitFailure = 1;
constexpr std::size_t cutCharacters = 4;

// Progress shows as it happens, so each text is flushed.
void report(std::string_view text) {
    std::cout << text << std::endl;
}

RunStamp currentStamp() {
    const std::time_t now = std::time(nullptr);
    const std::tm utc = *std::gmtime(&now);  // NOLINT(*-mt-unsafe): there is one thread
    return {.year = utc.tm_year + 1900,
            .month = utc.tm_mon + 1,
            .day = utc.tm_mday,
            .hour = utc.tm_hour,
            .minute = utc.tm_min,
            .second = utc.tm_sec};
}

std::FILE* openLog(const RunOptions& options) {
    return std::fopen(options.inputFileName.c_str(), "rb");
}

int reportUnopenedLog(const CommandLine& commandLine) {
    const int reason = errno;
    commandLine.printHelp(std::cout);
    std::cout << std::endl;
    errno = reason;
    std::perror("File Error: ");
    return exitFailure;
}

// An output file: a text stream with a writer in front of it. A failed open is not reported; what is
// written then goes nowhere.
class OutputFile {
public:
    explicit OutputFile(const std::string& name)
        : stream_(name), writer_(stream_.is_open() ? &stream_ : nullptr) {}
    TextWriter& writer() { return writer_; }

private:
    std::ofstream stream_;
    TextWriter writer_;
};

// One constellation's file below version 4.0, in the order in which the files are written.
struct NavFileRow {
    char letter;
    bool RunOptions::*include;
    void (*sortTable)(NavigationTables&);
    void (*write)(TextWriter&, const NavFileTables&);
};
constexpr std::array<NavFileRow, 5> navFileRows = {{
    {'N', &RunOptions::includeGps, sortGpsTable, writeGpsNavFile},
    {'I', &RunOptions::includeNavic, sortNavicTable, writeNavicNavFile},
    {'G', &RunOptions::includeGlonass, sortGlonassTable, writeGlonassNavFile},
    {'L', &RunOptions::includeGalileo, sortGalileoTable, writeGalileoNavFile},
    {'C', &RunOptions::includeBeidou, sortBeidouTable, writeBeidouNavFile},
}};

// The sorts ahead of the mixed file. Deliberate: NavIC twice and Galileo not at all.
struct MixedSort {
    bool RunOptions::*include;
    void (*sortTable)(NavigationTables&);
};
constexpr std::array<MixedSort, 5> mixedSorts = {{
    {&RunOptions::includeGps, sortGpsTable},
    {&RunOptions::includeNavic, sortNavicTable},
    {&RunOptions::includeGlonass, sortGlonassTable},
    {&RunOptions::includeNavic, sortNavicTable},
    {&RunOptions::includeBeidou, sortBeidouTable},
}};

void writeNavigation(RunState& state, const std::string& baseName) {
    const NavFileTables tables{.rinexVersion = state.options.rinexVersion,
                               .runStamp = state.runStamp,
                               .satelliteSystemLetter = state.presence.satelliteSystemLetter(),
                               .navigation = state.navigation};
    if (!isRinex4(state.options.rinexVersion)) {
        for (const NavFileRow& row : navFileRows) {
            if (state.options.*(row.include)) {
                OutputFile file(outputName(baseName, state.runStamp, row.letter));
                row.sortTable(state.navigation);
                row.write(file.writer(), tables);
            }
        }
        return;
    }
    OutputFile file(outputName(baseName, state.runStamp, 'p'));
    for (const MixedSort& row : mixedSorts) {
        if (state.options.*(row.include)) {
            row.sortTable(state.navigation);
        }
    }
    writeMixedNavFile(file.writer(), tables);
}

// The run behind an accepted command line.
int convertLog(RunState& state, const CommandLine& commandLine) {
    std::FILE* const file = openLog(state.options);
    if (file == nullptr) {
        return reportUnopenedLog(commandLine);
    }
    report("Conversion in progress");
    {
        LogStream log(file);
        surveyPass(log, surveyTables(state));
    }
    state.runStamp = currentStamp();
    state.survey.signalUseCount = {};
    sortSignalSatelliteLists(state.survey);

    std::FILE* const again = openLog(state.options);
    if (again == nullptr) {
        return reportUnopenedLog(commandLine);
    }
    LogStream log(again);
    const std::string baseName = outputBaseName(state.options.inputFileName);
    {
        OutputFile observations(outputName(baseName, state.runStamp, 'o'));
        report("Preparing Observation data");
        writingPass(observations.writer(), log, writingTables(state));
    }
    report("Preparing Navigation data");
    writeNavigation(state, baseName);
    report("The process is complete");
    return 0;
}

}  // namespace

std::string outputBaseName(const std::string& inputFileName) {
    if (inputFileName.size() < cutCharacters) {
        throw std::out_of_range("input file name shorter than four characters");
    }
    return inputFileName.substr(0, inputFileName.size() - cutCharacters);
}

std::string outputName(const std::string& baseName, const RunStamp& runStamp, char letter) {
    return baseName + "." + std::to_string(runStamp.year - 2000) + letter;
}

int convert(int argc, const char* const* argv) {
    const auto state = std::make_unique<RunState>();
    state->console = &std::cout;
    CommandLine commandLine(state->options);
    commandLine.parse(argc, argv);

    const double version = state->options.rinexVersion;
    if (version != 3.05 && version != 4.0 && version != 4.01) {
        report("Unsupported Rinex Version");
        return exitFailure;
    }
    std::cout << "Rinex Version: " << version << std::endl;
    report("KVS File: " + state->options.inputFileName);
    try {
        return convertLog(*state, commandLine);
    } catch (const char* text) {
        // The way for a fault to end the run with a text; nothing throws one today. Any other exception
        // passes through.
        report(text);
        return exitFailure;
    }
}

}  // namespace orbconv
