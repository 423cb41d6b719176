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

// What the messages of ionosphere and time are called.
struct MessageTypeRow {
    Constellation constellation;
    std::string_view type;
};
constexpr std::array<MessageTypeRow, 5> messageTypes = {{
    {Constellation::gps, "LNAV"},
    {Constellation::glonass, "FDMA"},
    {Constellation::galileo, "IFNV"},
    {Constellation::beidou, "D1D2"},
    {Constellation::navic, "LNAV"},
}};
std::string_view messageTypeOf(Constellation constellation) {
    return std::ranges::find(messageTypes, constellation, &MessageTypeRow::constellation)->type;
}

// The UTC of a pair.
struct UtcRow {
    std::string_view pair;
    std::string_view identifier;
};
constexpr std::array<UtcRow, 5> utcRows = {{
    {"GPUT", "UTC(USNO)"},
    {"GLUT", "UTC(SU)"},
    {"GAUT", "UTCGAL"},
    {"BDUT", "UTC(NTSC)"},
    {"IRUT", "UTCIRN"},
}};

constexpr std::size_t nequickTerms = 3;

void writeIonosphereRecord(TextWriter& out, const IonosphereTerms& terms) {
    writeHead(out, "ION", terms.constellation, terms.sv, messageTypeOf(terms.constellation));
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

void writeOffsetRecord(TextWriter& out, const TimeOffsetTerms& terms) {
    writeHead(out, "STO", terms.constellation, terms.sv, messageTypeOf(terms.constellation));
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

void writeEphemeris(TextWriter& out, const NavigationRecord& record, RinexVersion version) {
    if (version == RinexVersion::v401) {
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

bool isKnownTo(RinexVersion version, NavType type) {
    switch (type) {
        case NavType::cnav:
        case NavType::cnv2:
        case NavType::cnv1:
        case NavType::cnv3: return version == RinexVersion::v401;
        default: return true;
    }
}

bool NavigationContent::empty() const {
    return std::ranges::all_of(records, [](const auto& kinds) { return kinds.empty(); });
}

char NavigationContent::systemLetter() const {
    const auto present = [](const auto& kinds) { return !kinds.empty(); };
    const auto first = std::ranges::find_if(records, present);
    return std::ranges::count_if(records, present) == 1
               ? systemLetters[static_cast<std::size_t>(first - records.begin())]
               : 'M';
}

NavigationContent contentOf(const NavigationPart& part, RinexVersion version) {
    NavigationContent content;
    for (const NavigationRecord* record : part.records) {
        if (isKnownTo(version, record->type)) {
            ++content.records[indexOf(record->constellation)][record->typeName];
        } else {
            ++content.leftOut;
        }
    }
    if (version == RinexVersion::v401) {
        for (const TimeOffsetTerms* terms : part.offsets) {
            ++content.records[indexOf(terms->constellation)]["STO"];
        }
        for (const IonosphereTerms* terms : part.ionosphere) {
            ++content.records[indexOf(terms->constellation)]["ION"];
        }
    }
    return content;
}

void writeNavigationRecords(TextWriter& out, const NavigationPart& part, RinexVersion version) {
    if (version == RinexVersion::v401) {
        for (const TimeOffsetTerms* terms : part.offsets) {
            writeOffsetRecord(out, *terms);
        }
        for (const IonosphereTerms* terms : part.ionosphere) {
            writeIonosphereRecord(out, *terms);
        }
    }
    for (const NavigationRecord* record : part.records) {
        if (isKnownTo(version, record->type)) {
            writeEphemeris(out, *record, version);
        }
    }
}

}  // namespace orbconv::standard
