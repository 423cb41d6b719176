#include "standard/observation_header.h"

#include <algorithm>
#include <map>

#include "standard/header_fields.h"

namespace orbconv::standard {

namespace {

using Lines = std::vector<std::string>;

// A record of the header: its label, and the first 60 columns of each of its lines; without a line it does
// not stand.
struct HeaderRow {
    std::string_view label;
    Lines (*lines)(const HeaderFacts& facts);
};

std::string satelliteName(Constellation constellation, std::size_t number) {
    return systemLetters[orbconv::indexOf(constellation)] + twoDigits(static_cast<std::int64_t>(number));
}

std::vector<Constellation> constellationsIn(const HeaderFacts& facts) {
    std::vector<Constellation> present;
    for (std::size_t i = 0; i < constellationCount; ++i) {
        if (!facts.columns[i].empty()) {
            present.push_back(static_cast<Constellation>(i));
        }
    }
    return present;
}

std::string textOf(const HeaderText& text, std::size_t width) {
    return leftField(text.value_or(""), width);
}

Lines onlyIfGiven(const HeaderText& text) {
    return text ? Lines{*text} : Lines{};
}

std::string threeLengths(const std::optional<std::array<double, 3>>& lengths) {
    std::string line;
    for (const double length : lengths.value_or(std::array<double, 3>{})) {
        line += fixedField(length, 4, 14);
    }
    return line;
}

// ---- lines ----

Lines receiverLine(const HeaderFacts& facts) {
    return {textOf(facts.texts.receiverNumber, 20) + textOf(facts.texts.receiverType, 20) +
            textOf(facts.texts.receiverVersion, 20)};
}

Lines codeLines(const HeaderFacts& facts) {
    Lines lines;
    for (const Constellation constellation : constellationsIn(facts)) {
        Lines codes;
        for (const Column& column : facts.columns[orbconv::indexOf(constellation)]) {
            codes.push_back(' ' + codeOf(constellation, column));
        }
        const std::string first = systemLetters[orbconv::indexOf(constellation)] + std::string("  ") +
                                  integerField(static_cast<std::int64_t>(codes.size()), 3);
        std::ranges::move(listLines(codes, 13, first, "      "), std::back_inserter(lines));
    }
    return lines;
}

Lines intervalLine(const HeaderFacts& facts) {
    const auto step = facts.part.steps.mostFrequent();
    return step ? Lines{fixedField(static_cast<double>(*step) / 1000.0, 3, 10)} : Lines{};
}

std::string timeLine(const HeaderFacts& facts, const std::optional<reading::LogTime>& time) {
    return timeField(time.value_or(reading::LogTime{})) + "     " + std::string(timeSystemCode(facts.scale));
}

// ---- phase shifts ----

// The satellites of a phase code by their correction. More than one group: each is listed.
std::map<double, Lines> correctionGroups(const HeaderFacts& facts, Constellation constellation,
                                         std::size_t band) {
    std::map<double, Lines> groups;
    const SatelliteSet& satellites = facts.whole.signals[band][orbconv::indexOf(constellation)];
    for (std::size_t number = 1; number <= highestNumber; ++number) {
        if (satellites[number]) {
            groups[phaseCorrection(constellation, band, static_cast<int>(number))].push_back(
                ' ' + satelliteName(constellation, number));
        }
    }
    return groups;
}

Lines phaseShiftLines(const HeaderFacts& facts) {
    Lines lines;
    if (facts.version != RinexVersion::v305) {
        return lines;  // a writer leaves the record out
    }
    for (const Constellation constellation : constellationsIn(facts)) {
        for (const Column& column : facts.columns[orbconv::indexOf(constellation)]) {
            if (column.kind != Kind::phase) {
                continue;
            }
            const auto groups = correctionGroups(facts, constellation, column.band);
            for (const auto& [cycles, satellites] : groups) {
                std::string first = systemLetters[orbconv::indexOf(constellation)] + std::string(" ") +
                                    codeOf(constellation, column) + ' ' + fixedField(cycles, 5, 8);
                if (groups.size() == 1) {
                    lines.push_back(first);
                    continue;
                }
                first += "  " + twoDigits(static_cast<std::int64_t>(satellites.size()));
                std::ranges::move(listLines(satellites, 10, first, std::string(18, ' ')),
                                  std::back_inserter(lines));
            }
        }
    }
    return lines;
}

// ---- GLONASS ----

// Whether the file has columns for it.
bool hasGlonass(const HeaderFacts& facts) {
    return !facts.columns[orbconv::indexOf(Constellation::glonass)].empty();
}

Lines glonassSlotLines(const HeaderFacts& facts) {
    if (!hasGlonass(facts)) {
        return {};
    }
    Lines entries;
    for (std::size_t slot = 1; slot <= highestNumber; ++slot) {
        if (facts.part.glonassChannels[slot]) {
            entries.push_back(satelliteName(Constellation::glonass, slot) + ' ' +
                              integerField(*facts.part.glonassChannels[slot], 2) + ' ');
        }
    }
    return listLines(entries, 8, integerField(static_cast<std::int64_t>(entries.size()), 3) + ' ', "    ");
}

// Blank: the biases are unknown.
Lines glonassBiasLine(const HeaderFacts& facts) {
    const bool stands = facts.version == RinexVersion::v305 && hasGlonass(facts);
    return stands ? Lines{""} : Lines{};
}

Lines leapSecondLine(const HeaderFacts& facts) {
    return facts.leapSeconds ? Lines{integerField(*facts.leapSeconds, 6)} : Lines{};
}

// clang-format off
constexpr auto headerRows = std::to_array<HeaderRow>({
    {"RINEX VERSION / TYPE", [](const HeaderFacts& facts) { return Lines{versionField(facts.version, "OBSERVATION DATA", systemLetterOf(facts.columns))}; }},
    {"PGM / RUN BY / DATE",  [](const HeaderFacts& facts) { return Lines{programFields(facts.runTime)}; }},
    {"COMMENT",              [](const HeaderFacts& facts) { return facts.texts.comments; }},
    {"MARKER NAME",          [](const HeaderFacts& facts) { return Lines{textOf(facts.texts.markerName, 60)}; }},
    {"MARKER NUMBER",        [](const HeaderFacts& facts) { return onlyIfGiven(facts.texts.markerNumber); }},
    {"MARKER TYPE",          [](const HeaderFacts& facts) { return onlyIfGiven(facts.texts.markerType); }},
    {"OBSERVER / AGENCY",    [](const HeaderFacts& facts) { return Lines{textOf(facts.texts.observer, 20) + textOf(facts.texts.agency, 40)}; }},
    {"REC # / TYPE / VERS",  receiverLine},
    {"ANT # / TYPE",         [](const HeaderFacts& facts) { return Lines{textOf(facts.texts.antennaNumber, 20) + textOf(facts.texts.antennaType, 20)}; }},
    {"APPROX POSITION XYZ",  [](const HeaderFacts& facts) { return Lines{threeLengths(facts.texts.position)}; }},
    {"ANTENNA: DELTA H/E/N", [](const HeaderFacts& facts) { return Lines{threeLengths(facts.texts.antennaDelta)}; }},
    {"SYS / # / OBS TYPES",  codeLines},
    {"SIGNAL STRENGTH UNIT", [](const HeaderFacts&) { return Lines{"DBHZ"}; }},
    {"INTERVAL",             intervalLine},
    {"TIME OF FIRST OBS",    [](const HeaderFacts& facts) { return Lines{timeLine(facts, facts.part.first)}; }},
    {"TIME OF LAST OBS",     [](const HeaderFacts& facts) { return Lines{timeLine(facts, facts.part.last)}; }},
    {"RCV CLOCK OFFS APPL",  [](const HeaderFacts&) { return Lines{integerField(0, 6)}; }},
    {"SYS / PHASE SHIFT",    phaseShiftLines},
    {"GLONASS SLOT / FRQ #", glonassSlotLines},
    {"GLONASS COD/PHS/BIS",  glonassBiasLine},
    {"LEAP SECONDS",         leapSecondLine},
    {"END OF HEADER",        [](const HeaderFacts&) { return Lines{""}; }},
});
// clang-format on

}  // namespace

std::string_view timeSystemCode(TimeScale scale) {
    return scale == TimeScale::gps ? "GPS" : "GLO";
}

void writeObservationHeader(TextWriter& out, const HeaderFacts& facts) {
    constexpr int contentColumns = 60;
    for (const HeaderRow& row : headerRows) {
        for (const std::string& line : row.lines(facts)) {
            out.left(line, contentColumns).text(row.label).endLine();
        }
    }
}

}  // namespace orbconv::standard
