#include "standard/navigation_header.h"

#include <algorithm>
#include <array>
#include <span>

#include "standard/header_fields.h"
#include "standard/leap_seconds.h"

namespace orbconv::standard {

namespace {

constexpr char exponentLetter = 'E';
constexpr int labelColumn = 60;  // behind the data of a line

// How a constellation's ionosphere terms are called; empty for none.
struct IonosphereRow {
    Constellation constellation;
    std::string_view alphaName;
    std::string_view betaName;
};
constexpr std::array<IonosphereRow, 4> ionosphereRows = {{
    {Constellation::gps, "GPSA", "GPSB"},
    {Constellation::galileo, "GAL ", ""},
    {Constellation::beidou, "BDSA", "BDSB"},
    {Constellation::navic, "IRNA", "IRNB"},
}};

// The pairs of time systems, with the number of the UTC; 0 for none.
struct OffsetRow {
    std::string_view pair;
    int utc;
};
constexpr std::array<OffsetRow, 7> offsetRows = {{
    {"GPUT", 2},
    {"GLUT", 3},
    {"GLGP", 0},
    {"GAUT", 5},
    {"GAGP", 0},
    {"BDUT", 7},
    {"IRUT", 0},
}};

constexpr std::size_t klobucharHalf = 4;

void writeIonosphereLine(TextWriter& out, std::string_view name, std::span<const double> values,
                         const IonosphereTerms& terms) {
    constexpr int width = 12;
    constexpr int decimals = 4;
    out.left(name, 4).blanks(1);
    for (const double value : values) {
        out.scientific(value, decimals, width, exponentLetter);
    }
    int column = 5 + width * static_cast<int>(values.size());
    if (terms.constellation == Constellation::beidou) {
        const char hour = static_cast<char>('A' + reading::calendarOf(terms.sent).hour);
        out.blanks(1).text({&hour, 1}).blanks(1).integer(terms.sv, 2);
        column += 5;
    }
    out.blanks(labelColumn - column).text("IONOSPHERIC CORR").endLine();
}

void writeIonosphereLines(TextWriter& out, const IonosphereTerms& terms, const IonosphereRow& row) {
    const std::span<const double> values(terms.values);
    if (terms.constellation == Constellation::galileo) {
        const std::array<double, klobucharHalf> three = {values[0], values[1], values[2], 0.0};
        writeIonosphereLine(out, row.alphaName, three, terms);
        return;
    }
    writeIonosphereLine(out, row.alphaName, values.first(klobucharHalf), terms);
    writeIonosphereLine(out, row.betaName, values.subspan(klobucharHalf, klobucharHalf), terms);
}

void writeOffsetLine(TextWriter& out, const TimeOffsetTerms& terms, const OffsetRow& row) {
    out.text(terms.pair).blanks(1);
    out.scientific(terms.a0, 10, 17, exponentLetter).scientific(terms.a1, 9, 16, exponentLetter);
    out.blanks(1).integer(static_cast<std::int64_t>(terms.reference), 6).blanks(1).integer(terms.week, 4);
    out.blanks(7).integer(row.utc, 2).blanks(1).text("TIME SYSTEM CORR").endLine();
}

// Of the terms that a test picks, those that came last; null if there are none.
template <class Terms, class Test>
const Terms* lastHeard(const std::vector<Terms>& sets, const std::optional<reading::LogTime>& end,
                       Test test) {
    const Terms* last = nullptr;
    for (const Terms& terms : sets) {
        const bool isOfFile = !end || terms.sent < *end;
        if (isOfFile && test(terms) && (last == nullptr || terms.heard > last->heard)) {
            last = &terms;
        }
    }
    return last;
}

// IONOSPHERIC CORR and TIME SYSTEM CORR: the last set of each.
void writeCorrectionLines(TextWriter& out, const NavigationFacts& facts) {
    for (const IonosphereRow& row : ionosphereRows) {
        const auto* const terms =
            lastHeard(facts.navigation.ionosphere(), facts.end,
                      [&](const IonosphereTerms& other) { return other.constellation == row.constellation; });
        if (terms != nullptr) {
            writeIonosphereLines(out, *terms, row);
        }
    }
    for (const OffsetRow& row : offsetRows) {
        const auto* const terms =
            lastHeard(facts.navigation.offsets(), facts.end,
                      [&](const TimeOffsetTerms& other) { return other.pair == row.pair; });
        if (terms != nullptr) {
            writeOffsetLine(out, *terms, row);
        }
    }
}

void writeLine(TextWriter& out, std::string_view content, std::string_view label) {
    out.left(content, labelColumn).text(label).endLine();
}

}  // namespace

void writeNavigationHeader(TextWriter& out, const NavigationFacts& facts) {
    writeLine(out, versionField(facts.version, "N: GNSS NAV DATA", facts.systemLetter),
              "RINEX VERSION / TYPE");
    writeLine(out, programFields(facts.runTime), "PGM / RUN BY / DATE");
    for (const std::string& comment : facts.comments) {
        writeLine(out, comment, "COMMENT");
    }
    if (facts.version == RinexVersion::v305) {
        writeCorrectionLines(out, facts);
    }
    // 4.01 demands it, 3.05 does not want it of GLONASS alone.
    const bool isOfGlonass = facts.systemLetter == systemLetters[indexOf(Constellation::glonass)];
    if (facts.version == RinexVersion::v401 || (facts.leapSeconds && !isOfGlonass)) {
        writeLine(out, integerField(facts.leapSeconds.value_or(leapSecondsAt(facts.first)), 6),
                  "LEAP SECONDS");
    }
    writeLine(out, "", "END OF HEADER");
}

}  // namespace orbconv::standard
