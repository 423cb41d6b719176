#include "standard/run.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iostream>
#include <span>
#include <stdexcept>

#include "standard/conversion.h"
#include "standard/log_texts.h"
#include "standard/output_files.h"
#include "standard/platform.h"
#include "standard/program.h"
#include "standard/stop_request.h"
#include "standard/summary.h"

namespace orbconv::standard {

namespace {

constexpr int exitFailure = 1;
constexpr int exitWithLoss = 2;

void tell(std::string_view text) {
    std::cerr << programName << ": " << text << '\n';
}

void tellLines(std::string_view indent, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        std::cerr << indent << line << '\n';
    }
}

// "24 observation files, FIRST to LAST".
std::string filesText(const std::vector<std::filesystem::path>& paths, const char* kind) {
    const std::string first = paths.front().string();
    return paths.size() == 1 ? first
                             : std::to_string(paths.size()) + ' ' + kind + " files, " + first + " to " +
                                   paths.back().filename().string();
}

void tellObservations(const Conversion& conversion) {
    const Survey& survey = conversion.survey;
    if (survey.contents.whole.epochs != 0) {
        const TimeScale scale = survey.scale.value_or(TimeScale::gps);
        tellLines("  ", contentLines(survey.contents.whole, scale, conversion.columns));
    }
    const std::vector<std::string> losses = lossLines(survey.lost);
    if (!losses.empty()) {
        tellLines("  ", {"left out (a satellite counts in each of its epochs):"});
        tellLines("    ", losses);
    }
}

void tellNavigation(const Conversion& conversion) {
    const RinexVersion version = conversion.options.selection.version;
    const NavigationSet& navigation = conversion.survey.navigation;
    tellLines("  ", navigationLines(navigation, version));
    const std::vector<std::string> losses = navigationLossLines(navigation, version);
    if (!losses.empty()) {
        tellLines("  ", {"left out:"});
        tellLines("    ", losses);
    }
}

void tellFiles(const Conversion& conversion, const OutputFiles& files) {
    const auto observations = files.paths(FileKind::observations);
    tell(observations.empty() ? "no observation file: " + hindranceOf(conversion.survey)
                              : "written: " + filesText(observations, "observation"));
    tellObservations(conversion);
    const auto navigation = files.paths(FileKind::navigation);
    tell(navigation.empty() ? "no navigation file: the log holds no record for it"
                            : "written: " + filesText(navigation, "navigation"));
    tellNavigation(conversion);
}

struct Outcome {
    int status = 0;
    bool hasWarnings = false;
};

Outcome convert(const Options& options) {
    const bool showsProgress = !options.quiet && errorStreamIsTerminal();
    ProgressBar progress(showsProgress ? &std::cerr : nullptr, 1.0);
    const Survey survey = surveyOf(options, progress);
    std::vector<std::string> warnings = doubtsAbout(survey.logs);
    const Conversion conversion =
        conversionOf(options, survey, headerTextsOf(options.texts, survey.logs, warnings));
    // Logs without an epoch give a navigation file alone, if they hold a record.
    const std::string hindrance = hindranceOf(survey);
    const bool hasParts = !survey.contents.parts.empty();
    if (!hindrance.empty() && !(hasParts && hasFile(conversion, 0, FileKind::navigation))) {
        throw std::runtime_error(namesOf(survey) + ": " + hindrance);
    }
    OutputFiles files(conversion);
    if (options.toStandardOutput) {
        writeToStandardOutput(conversion, *options.toStandardOutput, progress);
    } else {
        files.write(progress);
    }
    progress.clear();
    if (!options.quiet) {
        for (const std::string& warning : warnings) {
            tell("warning: " + warning);
        }
        if (!options.toStandardOutput) {
            tellFiles(conversion, files);
        } else if (*options.toStandardOutput == FileKind::observations) {
            tellObservations(conversion);
        } else {
            tellNavigation(conversion);
        }
    }
    return {.status = hasLoss(survey.lost) ? exitWithLoss : 0, .hasWarnings = !warnings.empty()};
}

Outcome outcomeOf(int argc, const char* const* argv) {
    try {
        const Options options = optionsOf(argc, argv);
        noteStopRequests();
        return convert(options);
    } catch (const std::exception& error) {
        tell(error.what());
        return {.status = exitFailure};
    }
}

}  // namespace

int run(int argc, const char* const* argv) {
    try {
        const Outcome outcome = outcomeOf(argc, argv);
        // Logs that were dropped on the program come without an option, and its window would be gone at once.
        const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
        const bool hasOptions =
            std::ranges::any_of(arguments, [](const char* text) { return text[0] == '-'; });
        if (!hasOptions && (outcome.status != 0 || outcome.hasWarnings)) {
            keepOwnWindowOpen();
        }
        return outcome.status;
    } catch (const Stopped&) {
        return endAsRequested();
    }
}

}  // namespace orbconv::standard
