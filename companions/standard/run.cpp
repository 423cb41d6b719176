#include "standard/run.h"

#include <exception>
#include <iostream>
#include <optional>
#include <stdexcept>

#include "standard/conversion.h"
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

void tellSummary(const Options& options, const Survey& survey, const OutputFile& observations,
                 const std::optional<OutputFile>& navigation) {
    const RinexVersion version = options.selection.version;
    tell("written: " + observations.path().string());
    tellLines("  ", contentLines(survey.content, columnsOf(survey.content)));
    const std::vector<std::string> losses = lossLines(survey.lost);
    if (!losses.empty()) {
        tellLines("  ", {"left out (a satellite counts in each of its epochs):"});
        tellLines("    ", losses);
    }
    if (navigation) {
        tell("written: " + navigation->path().string());
    } else {
        tell("no navigation file: the log holds no record for it");
    }
    tellLines("  ", navigationLines(survey.navigation, version));
    const std::vector<std::string> navigationLosses = navigationLossLines(survey.navigation, version);
    if (!navigationLosses.empty()) {
        tellLines("  ", {"left out:"});
        tellLines("    ", navigationLosses);
    }
}

int convert(const Options& options) {
    const bool showsProgress = !options.quiet && errorStreamIsTerminal();
    ProgressBar progress(showsProgress ? &std::cerr : nullptr, 1.0);
    Survey survey = surveyOf(options, progress);
    const std::string hindrance = hindranceOf(survey);
    if (!hindrance.empty()) {
        throw std::runtime_error(options.logName + ": " + hindrance);
    }
    std::vector<std::string> warnings;
    const HeaderTexts texts = headerTextsOf(options.texts, survey.site, warnings);
    // Both are there, or refused, ahead of the first byte.
    OutputFile observations(observationPathOf(options, texts, survey.content), options.force);
    std::optional<OutputFile> navigation;
    if (const auto path = navigationPathOf(options, texts, survey)) {
        navigation.emplace(*path, options.force);
        writeNavigation(*navigation, options, texts, survey);
    }
    writeObservations(observations, options, texts, survey, progress);
    observations.close();
    if (navigation) {
        navigation->finish();
    }
    observations.finish();
    progress.clear();
    if (!options.quiet) {
        for (const std::string& warning : warnings) {
            tell("warning: " + warning);
        }
        tellSummary(options, survey, observations, navigation);
    }
    return hasLoss(survey.lost) ? exitWithLoss : 0;
}

}  // namespace

int run(int argc, const char* const* argv) {
    try {
        const Options options = optionsOf(argc, argv);
        noteStopRequests();
        return convert(options);
    } catch (const Stopped&) {
        return endAsRequested();
    } catch (const std::exception& error) {
        tell(error.what());
        return exitFailure;
    }
}

}  // namespace orbconv::standard
