#include "standard/navigation_writer.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "standard/navigation_time.h"

namespace orbconv::standard {

namespace {

using reading::CalendarTime;

constexpr char exponentLetter = 'E';
constexpr int valueWidth = 19;
constexpr int valueDecimals = 12;
constexpr int labelColumn = 60;  // behind the data of a header line

char letterOf(Constellation constellation) {
    return systemLetters[indexOf(constellation)];
}

void writeLetter(TextWriter& out, Constellation constellation) {
    const char letter = letterOf(constellation);
    out.text({&letter, 1});
}

void writeValue(TextWriter& out, double value) {
    if (std::isnan(value)) {
        out.blanks(valueWidth);
    } else {
        out.scientific(value, valueDecimals, valueWidth, exponentLetter);
    }
}

// Up to four values; what is blank behind the last one is left out.
void writeValues(TextWriter& out, std::span<const double> values) {
    while (!values.empty() && std::isnan(values.back())) {
        values = values.first(values.size() - 1);
    }
    for (const double value : values) {
        writeValue(out, value);
    }
    out.endLine();
}

void writeEpoch(TextWriter& out, reading::LogTime epoch) {
    const CalendarTime time = reading::calendarOf(epoch);
    out.integer(time.year, 4, '0');
    for (const unsigned number : {time.month, time.day, time.hour, time.minute, time.second}) {
        out.blanks(1).integer(number, 2, '0');
    }
}

void writeHead(TextWriter& out, std::string_view recordClass, Constellation constellation, std::int32_t sv,
               std::string_view type) {
    out.text("> ").text(recordClass).blanks(1);
    writeLetter(out, constellation);
    if (sv == 0) {
        out.blanks(2);
    } else {
        out.integer(sv, 2, '0');
    }
    out.blanks(1).text(type).endLine();
}

// What a constellation's own messages of ionosphere and time are called, and how its terms stand in a header.
struct TermsRow {
    Constellation constellation;
    std::string_view type;       // of a record at 4.01
    std::string_view alphaName;  // of a header line at 3.05; empty for none
    std::string_view betaName;
};
constexpr std::array<TermsRow, 5> termsRows = {{
    {Constellation::gps, "LNAV", "GPSA", "GPSB"},
    {Constellation::glonass, "FDMA", "", ""},
    {Constellation::galileo, "IFNV", "GAL ", ""},
    {Constellation::beidou, "D1D2", "BDSA", "BDSB"},
    {Constellation::navic, "LNAV", "IRNA", "IRNB"},
}};
const TermsRow& termsRowOf(Constellation constellation) {
    return *std::ranges::find(termsRows, constellation, &TermsRow::constellation);
}

// The UTC of a pair: its identifier at 4.01 and its number at 3.05, 0 for none.
struct UtcRow {
    std::string_view pair;
    std::string_view identifier;
    int number;
};
constexpr std::array<UtcRow, 5> utcRows = {{
    {"GPUT", "UTC(USNO)", 2},
    {"GLUT", "UTC(SU)", 3},
    {"GAUT", "UTCGAL", 5},
    {"BDUT", "UTC(NTSC)", 7},
    {"IRUT", "UTCIRN", 0},
}};

constexpr std::size_t klobucharHalf = 4;
constexpr std::size_t nequickTerms = 3;

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

void writeIonosphereLines(TextWriter& out, const IonosphereTerms& terms) {
    const TermsRow& row = termsRowOf(terms.constellation);
    const std::span<const double> values(terms.values);
    if (terms.constellation == Constellation::galileo) {
        const std::array<double, klobucharHalf> three = {values[0], values[1], values[2], 0.0};
        writeIonosphereLine(out, row.alphaName, three, terms);
        return;
    }
    writeIonosphereLine(out, row.alphaName, values.first(klobucharHalf), terms);
    writeIonosphereLine(out, row.betaName, values.subspan(klobucharHalf, klobucharHalf), terms);
}

int utcNumber(std::string_view pair) {
    const auto row = std::ranges::find(utcRows, pair, &UtcRow::pair);
    return row == utcRows.end() ? 0 : row->number;
}

void writeOffsetLine(TextWriter& out, const TimeOffsetTerms& terms) {
    out.text(terms.pair).blanks(1);
    out.scientific(terms.a0, 10, 17, exponentLetter).scientific(terms.a1, 9, 16, exponentLetter);
    out.blanks(1).integer(static_cast<std::int64_t>(terms.reference), 6).blanks(1).integer(terms.week, 4);
    out.blanks(7).integer(utcNumber(terms.pair), 2).blanks(1).text("TIME SYSTEM CORR").endLine();
}

void writeIonosphereRecord(TextWriter& out, const IonosphereTerms& terms) {
    writeHead(out, "ION", terms.constellation, terms.sv, termsRowOf(terms.constellation).type);
    out.blanks(4);
    writeEpoch(out, terms.sent);
    const std::span<const double> values(terms.values);
    writeValues(out, values.first(3));
    out.blanks(4);
    if (terms.constellation == Constellation::galileo) {
        writeValues(out, values.subspan(nequickTerms, 1));
        return;
    }
    writeValues(out, values.subspan(3, 4));
    out.blanks(4);
    writeValues(out, values.subspan(7, 1));
}

void writeOffsetRecord(TextWriter& out, const TimeOffsetTerms& terms, std::int32_t sv) {
    writeHead(out, "STO", terms.constellation, sv, termsRowOf(terms.constellation).type);
    out.blanks(4);
    writeEpoch(out, terms.epoch);
    const auto utc = std::ranges::find(utcRows, terms.pair, &UtcRow::pair);
    out.blanks(1);
    if (utc == utcRows.end()) {
        out.text(terms.pair);
    } else {
        constexpr int pairField = 18;
        constexpr int augmentationField = 18;
        out.left(terms.pair, pairField).blanks(1 + augmentationField + 1).text(utc->identifier);
    }
    out.endLine().blanks(4);
    writeValues(out, std::array{terms.transmission, terms.a0, terms.a1, 0.0});
}

void writeEphemeris(TextWriter& out, const NavigationRecord& record, NavigationVersion version) {
    if (version == NavigationVersion::rinex4) {
        writeHead(out, "EPH", record.constellation, record.sv, record.typeName);
    }
    writeLetter(out, record.constellation);
    out.integer(record.sv, 2, '0').blanks(1);
    writeEpoch(out, record.epoch);
    std::span<const double> values(record.values);
    writeValues(out, values.first(valuesOfEpochLine));
    values = values.subspan(valuesOfEpochLine);
    for (std::size_t line = 0; line < record.orbitLines; ++line) {
        out.blanks(4);
        writeValues(out, values.subspan(line * valuesOfLine, valuesOfLine));
    }
}

}  // namespace

bool isKnownTo(NavigationVersion version, NavType type) {
    switch (type) {
        case NavType::cnav:
        case NavType::cnv2:
        case NavType::cnv1:
        case NavType::cnv3: return version == NavigationVersion::rinex4;
        default: return true;
    }
}

PerConstellation<bool> constellationsOf(const NavigationSet& navigation, NavigationVersion version) {
    PerConstellation<bool> present{};
    for (const NavigationRecord* record : navigation.sortedRecords()) {
        present[indexOf(record->constellation)] |= isKnownTo(version, record->type);
    }
    return present;
}

void writeCorrectionLines(TextWriter& out, const NavigationSet& navigation) {
    for (const TermsRow& row : termsRows) {
        const auto& sets = navigation.ionosphere();
        const auto last = std::find_if(sets.rbegin(), sets.rend(), [&](const IonosphereTerms& terms) {
            return terms.constellation == row.constellation;
        });
        if (last != sets.rend()) {
            writeIonosphereLines(out, *last);
        }
    }
    for (const std::string_view pair : {"GPUT", "GLUT", "GLGP", "GAUT", "GAGP", "BDUT", "IRUT"}) {
        const auto& sets = navigation.offsets();
        const auto last = std::find_if(sets.rbegin(), sets.rend(),
                                       [&](const TimeOffsetTerms& terms) { return terms.pair == pair; });
        if (last != sets.rend()) {
            writeOffsetLine(out, *last);
        }
    }
}

void writeNavigationRecords(TextWriter& out, const NavigationSet& navigation, NavigationVersion version) {
    if (version == NavigationVersion::rinex4) {
        for (const TimeOffsetTerms& terms : navigation.offsets()) {
            writeOffsetRecord(out, terms, 0);
        }
        for (const IonosphereTerms& terms : navigation.ionosphere()) {
            writeIonosphereRecord(out, terms);
        }
    }
    for (const NavigationRecord* record : navigation.sortedRecords()) {
        if (isKnownTo(version, record->type)) {
            writeEphemeris(out, *record, version);
        }
    }
}

}  // namespace orbconv::standard
