#include "standard/conversion.h"

#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <system_error>

#include "standard/epoch_lines.h"
#include "standard/epoch_sequence.h"
#include "standard/file_names.h"
#include "standard/navigation_header.h"
#include "standard/navigation_writer.h"
#include "standard/stop_request.h"
#include "standard/summary.h"

namespace orbconv::standard {

namespace {

constexpr double surveyShare = 0.3;  // of the time that a run takes

void endIfAsked() {
    if (stopRequested() != 0) {
        throw Stopped{};
    }
}

RunTime currentTime() {
    const std::time_t now = std::time(nullptr);
    const std::tm utc = *std::gmtime(&now);  // NOLINT(*-mt-unsafe): there is one thread
    return {.year = utc.tm_year + 1900,
            .month = utc.tm_mon + 1,
            .day = utc.tm_mday,
            .hour = utc.tm_hour,
            .minute = utc.tm_min,
            .second = utc.tm_sec};
}

// At least 1; what has no size is not measured.
double sizeOf(const std::string& name) {
    std::error_code ignored;
    const auto bytes = std::filesystem::file_size(name, ignored);
    return ignored ? 1.0 : std::max(static_cast<double>(bytes), 1.0);
}

// The log's first date, with the time of day that has come until then.
ReceptionTime firstTimeOf(const Options& options) {
    reading::LogReader reader(openLog(options.logName));
    reading::EpochCollector collector;
    for (auto item = reader.next(); item != reading::LogItem::end && !collector.date();
         item = reader.next()) {
        if (item == reading::LogItem::message && collector.add(reader.message())) {
            endIfAsked();
        }
    }
    return inGpsTime(collector.timeSoFar(), collector.epoch().timeBase);
}

ObservationFileName nameOf(const Options& options, const HeaderTexts& texts, const ContentSurvey& content) {
    return {.station = options.station.value_or(stationOf(texts.markerName.value_or(""))),
            .first = content.first.value_or(reading::LogTime{}),
            .last = content.last.value_or(reading::LogTime{}),
            .intervalMs = content.steps.mostFrequent()};
}

std::filesystem::path folderOf(const Options& options) {
    return options.outputDirectory ? std::filesystem::path(*options.outputDirectory)
                                   : std::filesystem::path(options.logName).parent_path();
}

}  // namespace

Survey surveyOf(const Options& options, ProgressBar& progress) {
    const bool tellsDate = options.firstDate.has_value();
    Surveyor surveyor(options.selection, options.firstDate,
                      tellsDate ? ReceptionTime{} : firstTimeOf(options));
    reading::LogReader reader(openLog(options.logName));
    const double size = sizeOf(options.logName);
    for (auto item = reader.next(); item != reading::LogItem::end; item = reader.next()) {
        if (item == reading::LogItem::damage) {
            surveyor.take(reader.damage());
            continue;
        }
        surveyor.take(reader.message(), reader.habits());
        if (reader.message().row == rowOf("TD")) {
            endIfAsked();
            progress.show(surveyShare * static_cast<double>(reader.position()) / size);
        }
    }
    if (reader.failed()) {
        throw std::runtime_error(options.logName + ": it cannot be read to its end");
    }
    return surveyor.finish();
}

std::string hindranceOf(const Survey& survey) {
    if (survey.content.epochs != 0) {
        return {};
    }
    if (survey.messages == 0) {
        return "it holds no message of a receiver";
    }
    if (survey.epochs == 0) {
        return "it holds no epoch";
    }
    if (survey.epochs == survey.lost.epochsWithoutDate) {
        return "it tells no date; --date YYYY-MM-DD gives that of its first epoch";
    }
    std::string hindrance = "none of its epochs (" + std::to_string(survey.epochs) + ") can be written";
    for (const std::string& line : lossLines(survey.lost)) {
        hindrance += "; " + line;
    }
    return hindrance;
}

std::filesystem::path observationPathOf(const Options& options, const HeaderTexts& texts,
                                        const ContentSurvey& content) {
    return folderOf(options) / textOf(nameOf(options, texts, content));
}

std::optional<std::filesystem::path> navigationPathOf(const Options& options, const HeaderTexts& texts,
                                                      const Survey& survey) {
    const NavigationContent content = contentOf(survey.navigation, options.selection.version);
    if (content.empty()) {
        return std::nullopt;
    }
    const ObservationFileName beside = nameOf(options, texts, survey.content);
    return folderOf(options) / navigationNameBeside(beside);
}

void writeObservations(OutputFile& file, const Options& options, const HeaderTexts& texts, Survey& survey,
                       ProgressBar& progress) {
    const Columns columns = columnsOf(survey.content);
    writeObservationHeader(file.writer(), {.version = options.selection.version,
                                           .runTime = currentTime(),
                                           .texts = texts,
                                           .survey = survey,
                                           .columns = columns});
    EpochSequence sequence(options.logName, survey, options.selection);
    const auto first = survey.content.first.value_or(reading::LogTime{});
    const auto span = static_cast<double>((survey.content.last.value_or(first) - first).count() + 1);
    std::uint64_t written = 0;
    for (const EpochObservations* epoch = sequence.next(); epoch != nullptr; epoch = sequence.next()) {
        writeEpoch(file.writer(), *epoch, columns);
        ++written;
        file.check();
        endIfAsked();
        progress.show(surveyShare +
                      (1.0 - surveyShare) * static_cast<double>((epoch->time - first).count()) / span);
    }
    survey.lost.repeatedEpochs += sequence.repeatedEpochs();
    if (written + sequence.repeatedEpochs() != survey.content.epochs) {
        throw std::runtime_error(options.logName + ": its second reading found other epochs than its first");
    }
    survey.content.epochs = written;
}

void writeNavigation(OutputFile& file, const Options& options, const HeaderTexts& texts,
                     const Survey& survey) {
    const RinexVersion version = options.selection.version;
    writeNavigationHeader(file.writer(),
                          {.version = version,
                           .systemLetter = contentOf(survey.navigation, version).systemLetter(),
                           .runTime = currentTime(),
                           .comments = texts.comments,
                           .navigation = survey.navigation,
                           .leapSeconds = survey.leapSeconds,
                           .first = survey.content.first.value_or(reading::LogTime{})});
    writeNavigationRecords(file.writer(), survey.navigation, version);
    file.check();
    endIfAsked();
}

}  // namespace orbconv::standard
