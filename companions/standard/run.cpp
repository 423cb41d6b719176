#include "standard/run.h"

#include <exception>
#include <iostream>
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

void tellSummary(const Survey& survey, const std::filesystem::path& path) {
    tell("written: " + path.string());
    for (const std::string& line : contentLines(survey.content, columnsOf(survey.content))) {
        std::cerr << "  " << line << '\n';
    }
    const std::vector<std::string> losses = lossLines(survey.lost);
    if (!losses.empty()) {
        std::cerr << "  left out (a satellite counts in each of its epochs):\n";
    }
    for (const std::string& line : losses) {
        std::cerr << "    " << line << '\n';
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
    OutputFile file(observationPathOf(options, texts, survey.content), options.force);
    writeObservations(file, options, texts, survey, progress);
    file.finish();
    progress.clear();
    if (!options.quiet) {
        for (const std::string& warning : warnings) {
            tell("warning: " + warning);
        }
        tellSummary(survey, file.path());
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
