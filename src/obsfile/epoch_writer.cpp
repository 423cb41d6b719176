#include "obsfile/epoch_writer.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "text/number_format.h"

namespace orbconv {

namespace {

constexpr std::size_t bandColumns = 64;

// Room for a satellite line with every number at its longest.
constexpr std::size_t lineRoom = 32 + obsColumns * (obsRows * maxNumberText + bandColumns);

// The constellations in writing order.
struct EpochRow {
    Constellation constellation;
    std::size_t bands;
    bool byCodeList;  // bands without a code take no columns
};
constexpr std::array<EpochRow, countedConstellations> epochRows = {{
    {Constellation::gps, 6, false},
    {Constellation::glonass, 5, false},
    {Constellation::galileo, 5, false},
    {Constellation::qzss, 6, false},
    {Constellation::beidou, 6, false},
    {Constellation::navic, 7, true},
    {Constellation::sbas, 6, false},
}};
// Deliberate: so many records of every array are looked at, whatever its capacity.
constexpr std::size_t writtenRecords = 30;

char* fillBlanks(char* out, std::size_t count) {
    std::memset(out, ' ', count);
    return out + count;
}

// One number at `out`, where blanks stand. Blanks stand behind the returned end too, also when a number too
// wide for its field has pushed it on.
inline char* writeNumber(char* out, double value, int width) {
    char* const end = formatFixed3IntoBlanks(out, value, width);
    if (end != out + width) [[unlikely]] {
        fillBlanks(end, bandColumns);
    }
    return end;
}

char* writeDigit(char* out, std::int32_t digit) {
    if (digit >= 0 && digit <= 9) [[likely]] {
        *out = static_cast<char>('0' + digit);
        return out + 1;
    }
    out = formatInteger(out, digit);
    fillBlanks(out, bandColumns);
    return out;
}

double withoutNegativeZero(double value) {
    return value + 0.0;
}

// The four numbers of a signal that is present.
char* writePresentSignal(char* out, const SatEpochRecord& record, std::size_t band) {
    fillBlanks(out, bandColumns);
    out = writeNumber(out, withoutNegativeZero(record.at(ObsRow::pseudorange, band)), 14);
    out = writeNumber(out, record.at(ObsRow::phase, band), 16);  // can show -0.000
    out += 1;  // the loss-of-lock indicator is never written
    out = writeDigit(out, record.strengthIndex[band]);
    out = writeNumber(out, withoutNegativeZero(record.at(ObsRow::doppler, band)), 14);
    out += 3;
    out = writeNumber(out, withoutNegativeZero(record.at(ObsRow::strength, band)), 13);
    return out + 2;
}

char* writeSatelliteId(char* out, char letter, std::int32_t id) {
    *out++ = letter;
    if (id >= 0 && id < 10) {
        *out++ = '0';
    }
    return formatInteger(out, id);
}

}  // namespace

void writeSatelliteLines(TextWriter& out, std::span<const SatEpochRecord> records, char letter,
                         std::size_t writtenBands, const ObsCodeList* codeList) {
    std::int32_t previous = -1;
    for (const SatEpochRecord& record : records) {
        // Deliberate: a GLONASS satellite without a slot shows its channel, and of two neighbours with one
        // slot the second is dropped.
        const std::int32_t id = record.gloSlotNumber != 0 ? record.gloSlotNumber : record.number;
        const bool repeated = record.gloSlotNumber != 0 && record.gloSlotNumber == previous;
        if (id == 0 || repeated) {
            continue;
        }
        char* line = out.reserve(lineRoom);
        line = writeSatelliteId(line, letter, id);
        for (std::size_t band = 0; band < writtenBands; ++band) {
            if (codeList != nullptr && (*codeList)[slotOf(band, Kind::code)].empty()) {
                continue;
            }
            const bool present = (record.signalFlags[band] & signalPresentBit) != 0;
            line = present ? writePresentSignal(line, record, band) : fillBlanks(line, bandColumns);
        }
        *line++ = '\n';
        out.commit(line);
        previous = record.gloSlotNumber;
    }
}

void writeEpochLine(TextWriter& out, std::int32_t epochFlag, const EpochTables& tables) {
    const EpochClock& clock = tables.clock;
    std::array<char, maxNumberText> year;  // NOLINT(*-member-init): filled by the formatter
    const char* const yearEnd = formatFixed(year.data(), clock.year, 0);
    out.text("> ")
        .left({year.data(), static_cast<std::size_t>(yearEnd - year.data())}, 5)
        .fixed(clock.month, 0, 2, '0')
        .blanks(1)
        .fixed(clock.day, 0, 2, '0')
        .blanks(1)
        .fixed(clock.hour, 0, 2, '0')
        .blanks(1)
        .fixed(clock.minute, 0, 2, '0')
        .blanks(1)
        .fixed(clock.second, 7, 10)
        .integer(epochFlag, 3)
        .integer(tables.satellitesInEpoch, 3)
        .blanks(6)
        .fixed(tables.receiverClockOffset, 12, 15)
        .endLine();
}

void writeEpoch(TextWriter& out, std::int32_t epochFlag, const EpochTables& tables) {
    writeEpochLine(out, epochFlag, tables);
    const PerConstellation<bool> included = includedConstellations(tables.options);
    for (const EpochRow& row : epochRows) {
        const std::size_t c = indexOf(row.constellation);
        if (!included[c] || tables.survey.obsCodeCount[c] == 0) {
            continue;
        }
        const auto used = tables.store.usedRecords(row.constellation);
        writeSatelliteLines(out, used.first(std::min(used.size(), writtenRecords)), systemLetters[c],
                            row.bands, row.byCodeList ? &tables.survey.codes(row.constellation) : nullptr);
    }
}

}  // namespace orbconv
