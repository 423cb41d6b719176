// Any bytes through the stages of orbconv-standard, in memory: the survey, then both files, which readers
// that know the standard alone must accept. The epochs come in order by a sort of all of them, in place of
// the program's stretches of the log.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "companions/standard/support/strict_navigation_reader.h"
#include "companions/standard/support/strict_reader.h"
#include "fuzz_input.h"
#include "reading/epoch.h"
#include "reading/log_reader.h"
#include "run_limits.h"
#include "standard/columns.h"
#include "standard/epoch_gate.h"
#include "standard/epoch_lines.h"
#include "standard/header_texts.h"
#include "standard/navigation_header.h"
#include "standard/navigation_writer.h"
#include "standard/observation_header.h"
#include "standard/survey.h"

namespace {

using namespace orbconv::standard;
namespace reading = orbconv::reading;

constexpr RunTime runTime = {.year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5};

void requireNone(const std::vector<std::string>& complaints) {
    for (const std::string& complaint : complaints) {
        std::fprintf(stderr, "%s\n", complaint.c_str());
    }
    if (!complaints.empty()) {
        std::abort();
    }
}

Selection selectionOf(const fuzzing::LogInput& input) {
    Selection selection;
    selection.version = input.choice[0] % 2 == 0 ? RinexVersion::v305 : RinexVersion::v401;
    for (std::size_t system = 0; system < selection.systems.size(); ++system) {
        // Mostly all of them.
        const bool leavesOut = input.choice[1] >= 0xC0 && (input.choice[1] >> (system % 6) & 1U) != 0;
        selection.systems[system] = selection.systems[system] && !leavesOut;
    }
    if (input.choice[2] % 8 == 1) {
        selection.intervalMs = 1000;
    }
    return selection;
}

// A date for logs that tell none, by every other input.
std::optional<reading::LogDate> firstDateOf(const fuzzing::LogInput& input) {
    return input.choice[2] >= 0x80 ? reading::dateOf(2024, 2, 28) : std::nullopt;
}

Survey surveyOf(const fuzzing::LogInput& input, const Selection& selection) {
    Surveyor surveyor(selection, firstDateOf(input));
    reading::LogReader reader(input.log);
    for (auto item = reader.next(); item != reading::LogItem::end; item = reader.next()) {
        if (item == reading::LogItem::damage) {
            surveyor.take(reader.damage());
        } else {
            surveyor.take(reader.message(), reader.habits());
        }
    }
    return surveyor.finish();
}

// The epochs that have a line, in order of time; of those of one time the first of the log.
std::vector<EpochObservations> epochsOf(const fuzzing::LogInput& input, const Selection& selection,
                                        std::optional<TimeScale> scale) {
    std::vector<EpochObservations> epochs;
    static reading::EpochCollector collector;
    collector = reading::EpochCollector(reading::CarriedTime{.date = firstDateOf(input), .timeOfDayMs = {}});
    reading::LogReader reader(input.log);
    for (auto item = reader.next(); item != reading::LogItem::end; item = reader.next()) {
        if (item == reading::LogItem::message && collector.add(reader.message()) &&
            gateOf(collector.epoch(), selection, scale) == Gate::open) {
            EpochObservations& epoch = epochs.emplace_back();
            observationsOf(collector.epoch(), selection, epoch);
            if (epoch.satellites.empty()) {
                epochs.pop_back();
            }
        }
    }
    std::ranges::stable_sort(epochs, {}, &EpochObservations::time);
    const auto isOfOneTime = [](const auto& one, const auto& other) { return one.time == other.time; };
    epochs.erase(std::unique(epochs.begin(), epochs.end(), isOfOneTime), epochs.end());
    return epochs;
}

std::string observationFile(const fuzzing::LogInput& input, const Selection& selection, const Survey& survey,
                            const HeaderTexts& texts) {
    std::ostringstream text;
    {
        orbconv::TextWriter out(text);
        const Columns columns = columnsOf(survey.content);
        writeObservationHeader(out, {.version = selection.version,
                                     .runTime = runTime,
                                     .texts = texts,
                                     .survey = survey,
                                     .columns = columns});
        for (const EpochObservations& epoch : epochsOf(input, selection, survey.content.scale)) {
            writeEpoch(out, epoch, columns);
        }
        out.flush();
    }
    return text.str();
}

std::string navigationFile(const Selection& selection, const Survey& survey, const HeaderTexts& texts) {
    std::ostringstream text;
    {
        orbconv::TextWriter out(text);
        writeNavigationHeader(out,
                              {.version = selection.version,
                               .systemLetter = contentOf(survey.navigation, selection.version).systemLetter(),
                               .runTime = runTime,
                               .comments = texts.comments,
                               .navigation = survey.navigation,
                               .leapSeconds = survey.leapSeconds,
                               .first = survey.content.first.value_or(reading::LogTime{})});
        writeNavigationRecords(out, survey.navigation, selection.version);
        out.flush();
    }
    return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    const fuzzing::LogInput input = fuzzing::splitInput({data, size});
    if (!fuzzing::isWorthRunning(input.log)) {
        return -1;
    }
    const Selection selection = selectionOf(input);
    const Survey survey = surveyOf(input, selection);
    if (survey.content.epochs == 0) {
        return 0;  // no file
    }
    std::vector<std::string> warnings;
    const HeaderTexts texts = headerTextsOf({}, survey.site, warnings);
    // Epochs beyond the most stretches are left out, which the sort does not know.
    if (survey.lost.disorderedEpochs == 0) {
        requireNone(testsupport::readStrictly(observationFile(input, selection, survey, texts)).complaints);
    }
    if (!contentOf(survey.navigation, selection.version).empty()) {
        requireNone(testsupport::readNavigationStrictly(navigationFile(selection, survey, texts)).complaints);
    }
    return 0;
}
