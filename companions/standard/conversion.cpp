#include "standard/conversion.h"

#include <algorithm>
#include <ctime>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "standard/epoch_lines.h"
#include "standard/file_names.h"
#include "standard/log_order.h"
#include "standard/navigation_header.h"
#include "standard/navigation_writer.h"
#include "standard/observation_header.h"
#include "standard/stop_request.h"
#include "standard/summary.h"

namespace orbconv::standard {

namespace {

constexpr double surveyShare = 0.3;  // of the time that a run takes

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

// What has no size is not measured.
double sizeOf(const std::string& name) {
    std::error_code ignored;
    const auto bytes = std::filesystem::file_size(name, ignored);
    return ignored ? 0.0 : static_cast<double>(bytes);
}

// How much of all logs has been read.
struct ReadingProgress {
    ProgressBar& bar;
    double allBytes;
    double bytesOfEarlierLogs = 0.0;

    void show(std::uint64_t position) const {
        bar.show(surveyShare * (bytesOfEarlierLogs + static_cast<double>(position)) /
                 std::max(allBytes, 1.0));
    }
};

void surveyLog(const LogStart& log, const Options& options, Survey& survey, const ReadingProgress& progress) {
    survey.logs.push_back({.name = log.name, .site = {}});
    Surveyor surveyor(options.selection, survey, options.firstDate, log.firstDated);
    reading::LogReader reader(openLog(log.name));
    for (auto item = reader.next(); item != reading::LogItem::end; item = reader.next()) {
        endIfAsked();
        if (item == reading::LogItem::damage) {
            surveyor.take(reader.damage());
            continue;
        }
        surveyor.take(reader.message(), reader.habits());
        if (reader.message().row == rowOf("TD")) {
            progress.show(reader.position());
        }
    }
    if (reader.failed()) {
        throw std::runtime_error(log.name + ": it cannot be read to its end");
    }
    surveyor.finish();
}

// Logs that overlap, or go back in time, tell what the files will hold only when their epochs are in order.
void countInOrder(Survey& survey, const Selection& selection) {
    survey.contents = {.split = selection.split, .whole = {}, .parts = {}};
    EpochSequence epochs(survey, selection);
    while (const EpochObservations* const epoch = epochs.next()) {
        survey.contents.take(*epoch);
    }
    survey.lost.repeatedEpochs += epochs.repeatedEpochs();
}

std::vector<reading::LogTime> startsOf(const std::vector<Part>& parts) {
    std::vector<reading::LogTime> starts;
    std::ranges::transform(parts, std::back_inserter(starts), &Part::start);
    return starts;
}

// Beside the log, or the earliest of several.
std::filesystem::path folderOf(const Conversion& conversion) {
    const auto& given = conversion.options.outputDirectory;
    return given ? std::filesystem::path(*given)
                 : std::filesystem::path(conversion.survey.logs.front().name).parent_path();
}

}  // namespace

Survey surveyOf(const Options& options, ProgressBar& progress) {
    Survey survey;
    survey.contents.split = options.selection.split;
    ReadingProgress reading{.bar = progress, .allBytes = 0.0};
    for (const std::string& name : options.logNames) {
        reading.allBytes += sizeOf(name);
    }
    ReceptionTime firstDated;
    for (const LogStart& log : logsInOrder(options)) {
        surveyLog(log, options, survey, reading);
        reading.bytesOfEarlierLogs += sizeOf(log.name);
        firstDated = firstDated ? firstDated : log.firstDated;
    }
    if (!survey.epochsAscend) {
        countInOrder(survey, options.selection);
    }
    if (survey.epochs() == 0 && firstDated) {
        survey.contents.addEmptyPart(*firstDated);
    }
    return survey;
}

std::string namesOf(const Survey& survey) {
    const std::size_t others = survey.logs.size() - 1;
    return survey.logs.front().name + (others == 0 ? "" : " and " + std::to_string(others) + " more");
}

std::string hindranceOf(const Survey& survey) {
    if (survey.contents.whole.epochs != 0) {
        return {};
    }
    if (survey.messages() == 0) {
        return "no message of a receiver in it";
    }
    const std::uint64_t epochs = survey.epochs();
    if (epochs == 0) {
        return "no epoch in it";
    }
    if (epochs == survey.lost.epochsWithoutDate) {
        return "no date in it; --date YYYY-MM-DD gives that of the first epoch";
    }
    std::string hindrance = "none of the " + std::to_string(epochs) + " epochs in it can be written";
    for (const std::string& line : lossLines(survey.lost)) {
        hindrance += "; " + line;
    }
    return hindrance;
}

Conversion conversionOf(const Options& options, const Survey& survey, HeaderTexts texts) {
    return {.options = options,
            .survey = survey,
            .texts = std::move(texts),
            .columns = columnsOf(survey.contents.whole),
            .navigation = partsOf(survey.navigation, startsOf(survey.contents.parts)),
            .runTime = currentTime()};
}

bool hasFile(const Conversion& conversion, std::size_t part, FileKind kind) {
    if (kind == FileKind::observations) {
        return conversion.survey.contents.parts[part].content.epochs != 0;
    }
    return !contentOf(conversion.navigation[part], conversion.options.selection.version).empty();
}

std::filesystem::path pathOf(const Conversion& conversion, std::size_t part, FileKind kind) {
    const Options& options = conversion.options;
    const Contents& contents = conversion.survey.contents;
    const ContentSurvey& content = contents.parts[part].content;
    const FileNameFacts facts{
        .station = options.station.value_or(stationOf(conversion.texts.markerName.value_or(""))),
        .first = content.first.value_or(reading::LogTime{}),
        .last = content.last.value_or(reading::LogTime{}),
        .intervalMs = contents.whole.steps.mostFrequent(),
        .split = options.selection.split};
    std::string name = options.longNames ? longNameOf(facts, kind) : shortNameOf(facts, kind);
    if (options.gzip) {
        name += ".gz";
    }
    return folderOf(conversion) / name;
}

void writeObservations(OutputStream& out, const Conversion& conversion, std::size_t part,
                       EpochSequence& epochs, ProgressBar& progress) {
    const Survey& survey = conversion.survey;
    const Contents& contents = survey.contents;
    const auto& [start, content] = contents.parts[part];
    writeObservationHeader(out.writer(), {.version = conversion.options.selection.version,
                                          .runTime = conversion.runTime,
                                          .texts = conversion.texts,
                                          .columns = conversion.columns,
                                          .whole = contents.whole,
                                          .part = content,
                                          .scale = survey.scale.value_or(TimeScale::gps),
                                          .leapSeconds = survey.leapSeconds});
    const auto first = contents.whole.first.value_or(reading::LogTime{});
    const auto span = static_cast<double>((contents.whole.last.value_or(first) - first).count() + 1);
    std::uint64_t written = 0;
    for (const EpochObservations* epoch = epochs.current();
         epoch != nullptr && contents.partStart(epoch->time) == start; epoch = epochs.next()) {
        writeEpoch(out.writer(), *epoch, conversion.columns);
        ++written;
        out.check();
        progress.show(surveyShare +
                      (1.0 - surveyShare) * static_cast<double>((epoch->time - first).count()) / span);
    }
    const bool isLastPart = part + 1 == contents.parts.size();
    if (written != content.epochs || (isLastPart && epochs.current() != nullptr)) {
        throw std::runtime_error(namesOf(survey) + ": the second reading found other epochs than the first");
    }
}

void writeNavigation(OutputStream& out, const Conversion& conversion, std::size_t part) {
    const RinexVersion version = conversion.options.selection.version;
    const Survey& survey = conversion.survey;
    const NavigationPart& navigation = conversion.navigation[part];
    writeNavigationHeader(out.writer(),
                          {.version = version,
                           .systemLetter = contentOf(navigation, version).systemLetter(),
                           .runTime = conversion.runTime,
                           .comments = conversion.texts.comments,
                           .navigation = survey.navigation,
                           .end = navigation.end,
                           .leapSeconds = survey.leapSeconds,
                           .first = survey.contents.parts[part].content.first.value_or(reading::LogTime{})});
    writeNavigationRecords(out.writer(), navigation, version);
    out.check();
    endIfAsked();
}

}  // namespace orbconv::standard
