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
#include "standard/conversion.h"
#include "standard/epoch_gate.h"
#include "standard/epoch_lines.h"
#include "standard/log_texts.h"
#include "standard/observation_header.h"
#include "standard/survey.h"

namespace {

using namespace orbconv::standard;
namespace reading = orbconv::reading;

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
    if (input.choice[2] % 8 == 2) {
        selection.split = Split::hour;
    }
    return selection;
}

// A date for logs that tell none, by every other input.
std::optional<reading::LogDate> firstDateOf(const fuzzing::LogInput& input) {
    return input.choice[2] >= 0x80 ? reading::dateOf(2024, 2, 28) : std::nullopt;
}

void surveyInto(Survey& survey, const fuzzing::LogInput& input, const Selection& selection) {
    survey.contents.split = selection.split;
    survey.logs.push_back({.name = "log", .site = {}});
    Surveyor surveyor(selection, survey, firstDateOf(input));
    reading::LogReader reader(input.log);
    for (auto item = reader.next(); item != reading::LogItem::end; item = reader.next()) {
        if (item == reading::LogItem::damage) {
            surveyor.take(reader.damage());
        } else {
            surveyor.take(reader.message(), reader.habits());
        }
    }
    surveyor.finish();
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

std::string observationFile(const Conversion& conversion, std::size_t part,
                            const std::vector<EpochObservations>& epochs) {
    const Survey& survey = conversion.survey;
    const Part& facts = survey.contents.parts[part];
    std::ostringstream text;
    {
        orbconv::TextWriter out(text);
        writeObservationHeader(out, {.version = conversion.options.selection.version,
                                     .runTime = conversion.runTime,
                                     .texts = conversion.texts,
                                     .columns = conversion.columns,
                                     .whole = survey.contents.whole,
                                     .part = facts.content,
                                     .scale = survey.scale.value_or(TimeScale::gps),
                                     .leapSeconds = survey.leapSeconds});
        for (const EpochObservations& epoch : epochs) {
            if (survey.contents.partStart(epoch.time) == facts.start) {
                writeEpoch(out, epoch, conversion.columns);
            }
        }
        out.flush();
    }
    return text.str();
}

std::string navigationFile(const Conversion& conversion, std::size_t part) {
    std::ostringstream text;
    OutputStream out(text, "navigation", false);
    writeNavigation(out, conversion, part);
    out.finish();
    return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    const fuzzing::LogInput input = fuzzing::splitInput({data, size});
    if (!fuzzing::isWorthRunning(input.log)) {
        return -1;
    }
    const Options options{.logNames = {"log"}, .selection = selectionOf(input)};
    Survey survey;
    surveyInto(survey, input, options.selection);
    // Epochs beyond the most stretches are left out, which the sort does not know.
    const bool isWhole = survey.lost.disorderedEpochs == 0;
    const auto epochs = epochsOf(input, options.selection, survey.scale);
    if (!survey.epochsAscend) {
        survey.contents = {.split = options.selection.split, .whole = {}, .parts = {}};
        for (const EpochObservations& epoch : epochs) {
            survey.contents.take(epoch);
        }
    }
    if (survey.contents.whole.epochs == 0) {
        return 0;  // no file
    }
    std::vector<std::string> warnings;
    const Conversion conversion = conversionOf(options, survey, headerTextsOf({}, survey.logs, warnings));
    for (std::size_t part = 0; part < survey.contents.parts.size(); ++part) {
        if (isWhole) {
            requireNone(testsupport::readStrictly(observationFile(conversion, part, epochs)).complaints);
        }
        if (hasFile(conversion, part, FileKind::navigation)) {
            requireNone(testsupport::readNavigationStrictly(navigationFile(conversion, part)).complaints);
        }
    }
    return 0;
}
