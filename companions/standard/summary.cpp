#include "standard/summary.h"

#include <algorithm>
#include <array>
#include <utility>

#include "standard/header_fields.h"
#include "standard/navigation_parts.h"
#include "standard/navigation_writer.h"
#include "standard/observation_header.h"

namespace orbconv::standard {

namespace {

struct LossRow {
    const char* text;
    std::uint64_t (*count)(const LossCounts& lost);
    bool isLoss = false;
};

template <LeftOut reason>
std::uint64_t satellites(const LossCounts& lost) {
    return lost.satellites[static_cast<std::size_t>(reason)];
}

// clang-format off
constexpr auto lossRows = std::to_array<LossRow>({
    {"bytes of damage",                                      [](const LossCounts& lost) { return lost.damagedBytes; }, true},
    {"places of damage",                                     [](const LossCounts& lost) { return lost.damagedStretches; }, true},
    {"epochs without date (--date gives that of the first)", [](const LossCounts& lost) { return lost.epochsWithoutDate; }, true},
    {"epochs in another time scale than the first",          [](const LossCounts& lost) { return lost.epochsOfOtherScale; }, true},
    {"epochs in too much disorder of time",                  [](const LossCounts& lost) { return lost.disorderedEpochs; }, true},
    {"epochs of a time that came already",                   [](const LossCounts& lost) { return lost.repeatedEpochs; }},
    {"epochs without a satellite to write",                  [](const LossCounts& lost) { return lost.epochsWithoutSatellites; }},
    {"epochs outside the window or the interval",            [](const LossCounts& lost) { return lost.epochsNotAskedFor; }},
    {"epochs that the log does not close",                   [](const LossCounts& lost) { return lost.openEpochs; }},
    {"clock offsets beyond 9 s",                             [](const LossCounts& lost) { return lost.unprintableClockOffsets; }},
    {"satellites of GLONASS without slot",                   satellites<LeftOut::glonassWithoutSlot>},
    {"satellites of GLONASS on an impossible channel",       satellites<LeftOut::glonassWithoutChannel>},
    {"satellites without a number of two digits",            satellites<LeftOut::withoutNumber>},
    {"satellites that stand in their epoch already",         satellites<LeftOut::twice>},
    {"satellites of QZSS",                                   satellites<LeftOut::qzss>},
    {"satellites of SBAS",                                   satellites<LeftOut::sbas>},
    {"satellites of GLONASS CDMA",                           satellites<LeftOut::glonassCdma>},
    {"satellites of an unknown system",                      satellites<LeftOut::unknownSystem>},
});
// clang-format on

std::string intervalText(const ContentSurvey& content) {
    const auto step = content.steps.mostFrequent();
    if (!step) {
        return "";
    }
    const std::uint64_t gaps = content.steps.gaps();
    return ", mostly every " + fixedField(static_cast<double>(*step) / 1000.0, 3, 0) + " s" +
           (gaps == 0 ? "" : ", longer steps: " + std::to_string(gaps));
}

}  // namespace

std::vector<std::string> contentLines(const ContentSurvey& content, TimeScale scale, const Columns& columns) {
    std::vector<std::string> lines;
    lines.push_back("epochs: " + std::to_string(content.epochs) + ", " +
                    reading::isoText(content.first.value_or(reading::LogTime{})) + " to " +
                    reading::isoText(content.last.value_or(reading::LogTime{})) + ' ' +
                    std::string(timeSystemCode(scale)) + intervalText(content));
    for (std::size_t i = 0; i < constellationCount; ++i) {
        const auto constellation = static_cast<Constellation>(i);
        if (columns[i].empty()) {
            continue;
        }
        std::string line = systemLetters[i] + std::string(": satellites ") +
                           std::to_string(content.satellites(constellation).count()) + ", signals";
        for (const Column& column : columns[i]) {
            if (column.kind == Kind::range) {
                line += ' ' + codeOf(constellation, column).substr(1);
            }
        }
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> lossLines(const LossCounts& lost) {
    std::vector<std::string> lines;
    for (const LossRow& row : lossRows) {
        if (const std::uint64_t count = row.count(lost); count != 0) {
            lines.push_back(std::string(row.text) + ": " + std::to_string(count));
        }
    }
    return lines;
}

std::vector<std::string> navigationLines(const NavigationSet& navigation, RinexVersion version) {
    std::vector<std::string> lines;
    const NavigationContent content = contentOf(wholeOf(navigation), version);
    for (std::size_t i = 0; i < constellationCount; ++i) {
        std::string line = systemLetters[i] + std::string(": records");
        for (const auto& [kind, count] : content.records[i]) {
            line += ' ' + std::string(kind) + ' ' + std::to_string(count);
        }
        if (!content.records[i].empty()) {
            lines.push_back(line);
        }
    }
    if (const std::uint64_t repeated = navigation.losses().repeated; repeated != 0) {
        lines.push_back("repetitions of these: " + std::to_string(repeated));
    }
    return lines;
}

std::vector<std::string> navigationLossLines(const NavigationSet& navigation, RinexVersion version) {
    const NavigationLosses& losses = navigation.losses();
    const std::array<std::pair<const char*, std::uint64_t>, 4> rows = {{
        {"messages of a form that is not known", losses.unknownForm},
        {"messages with a satellite, time or number that a record cannot show", losses.unusable},
        {"messages without date", losses.withoutDate},
        {"records of kinds that 3.05 does not know (--rinex 4.01 has them)",
         contentOf(wholeOf(navigation), version).leftOut},
    }};
    std::vector<std::string> lines;
    for (const auto& [text, count] : rows) {
        if (count != 0) {
            lines.push_back(std::string(text) + ": " + std::to_string(count));
        }
    }
    return lines;
}

bool hasLoss(const LossCounts& lost) {
    return std::ranges::any_of(lossRows,
                               [&](const LossRow& row) { return row.isLoss && row.count(lost) != 0; });
}

}  // namespace orbconv::standard
