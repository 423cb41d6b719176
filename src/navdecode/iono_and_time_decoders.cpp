#include "navdecode/iono_and_time_decoders.h"

#include <cmath>

#include "log/navigation_bodies.h"
#include "navdecode/field_rows.h"

namespace orbconv {

namespace {

void countAndWrap(std::int32_t& count, std::int32_t wrap) {
    ++count;
    if (count == wrap) {
        count = 0;
    }
}

// ---- ionosphere ----

template <class Table>
bool repeatsLatestIono(const Table& table, const std::uint8_t* body) {
    if (table.count <= 0) {
        return false;
    }
    const auto& latest = table.records[static_cast<std::size_t>(table.count - 1)];
    return bodies::iono::alpha[0].load(body) == latest.alpha[0] &&
           bodies::iono::alpha[1].load(body) == latest.alpha[1] &&
           bodies::iono::beta[0].load(body) == latest.beta[0];
}

// The record behind the latest one with coefficients and stamp, not counted yet; null for a repeat.
template <class Table>
auto* newIonoRecord(Table& table, const std::uint8_t* body, const EpochClock& clock) {
    auto* const record =
        repeatsLatestIono(table, body) ? nullptr : &table.records[static_cast<std::size_t>(table.count)];
    if (record != nullptr) {
        for (std::size_t i = 0; i < record->alpha.size(); ++i) {
            record->alpha[i] = bodies::iono::alpha[i].load(body);
            record->beta[i] = bodies::iono::beta[i].load(body);
        }
        record->stamp = clock;
    }
    return record;
}

void decodeIono(const std::uint8_t* body, const EpochClock& clock, IonoTable& table) {
    if (newIonoRecord(table, body, clock) != nullptr) {
        countAndWrap(table.count, ionoWrap);
    }
}

// Deliberate: after a hit the scan goes on with the record before.
void dropSeenBeidouIono(BeidouIonoTable& table) {
    for (std::int32_t k = 0; k < table.count; ++k) {
        BeidouIonoRecord& latest = table.records[static_cast<std::size_t>(table.count)];
        const BeidouIonoRecord& seen = table.records[static_cast<std::size_t>(k)];
        if (latest.alpha[0] == seen.alpha[0] && latest.alpha[1] == seen.alpha[1] &&
            latest.hourLetter == seen.hourLetter && latest.sv == seen.sv) {
            latest.sv = 0;
            --table.count;
        }
    }
}

std::int32_t latestBeidouSatellite(const NavigationTables& tables) {
    const std::int32_t count = tables.beidou.count;
    return count > 0 ? tables.beidou.slots[static_cast<std::size_t>(count - 1)].kepler.sv : 0;
}

// ---- time offsets ----

// How the messages of one id are stored.
struct TimeOffsetRule {
    std::size_t messageRow;
    std::int32_t weekOffset;
    std::int32_t wrap;  // the count starts over there; 0: never
    bool setsLeapSeconds;
};
// Deliberate: EU adds 2048 to its weeks, although a Galileo ephemeris adds 1024.
// clang-format off
constexpr TimeOffsetRule gpsRule     = {.messageRow = rowOf("UO"), .weekOffset = 2048, .wrap = 0,  .setsLeapSeconds = true};
constexpr TimeOffsetRule beidouRule  = {.messageRow = rowOf("CU"), .weekOffset = 0,    .wrap = 0,  .setsLeapSeconds = false};
constexpr TimeOffsetRule navicRule   = {.messageRow = rowOf("IU"), .weekOffset = 2048, .wrap = navicTimeOffsetWrap, .setsLeapSeconds = false};
constexpr TimeOffsetRule galileoRule = {.messageRow = rowOf("EU"), .weekOffset = 2048, .wrap = 0,  .setsLeapSeconds = true};

constexpr std::tuple timeOffsetRows{
    FieldRow{bodies::timeOffset::a0,   &TimeOffsetRecord::a0},
    FieldRow{bodies::timeOffset::a1,   &TimeOffsetRecord::a1},
    FieldRow{bodies::timeOffset::tot,  &TimeOffsetRecord::tot},
    FieldRow{bodies::timeOffset::week, &TimeOffsetRecord::week},
};
constexpr std::tuple galileoGpsRows{
    FieldRow{bodies::eu::a0Gps,   &GalileoTimeOffsetRecord::a0Gps},
    FieldRow{bodies::eu::a1Gps,   &GalileoTimeOffsetRecord::a1Gps},
    FieldRow{bodies::eu::totGps,  &GalileoTimeOffsetRecord::totGps},
    FieldRow{bodies::eu::weekGps, &GalileoTimeOffsetRecord::weekGps},
};
// clang-format on

// The offset against UTC, which every kind of time-offset record has.
template <class Record>
auto& utcPartOf(Record& record) {
    if constexpr (requires { record.utc; }) {
        return record.utc;
    } else {
        return record;
    }
}

template <class Table>
bool repeatsLatestOffset(const Table& table, const std::uint8_t* body) {
    if (table.count <= 0) {
        return false;
    }
    const TimeOffsetRecord& latest = utcPartOf(table.records[static_cast<std::size_t>(table.count - 1)]);
    return bodies::timeOffset::a0.load(body) == latest.a0 && bodies::timeOffset::a1.load(body) == latest.a1 &&
           bodies::timeOffset::tot.load(body) == latest.tot;
}

// Stores and counts a message and returns its record; null for a repeat and for a full table.
template <class Table>
auto* storeTimeOffset(const TimeOffsetRule& rule, const std::uint8_t* body, const EpochClock& clock,
                      Table& table, std::int32_t& lastLeapSeconds) {
    const auto slot = static_cast<std::size_t>(table.count);
    auto* const record =
        slot >= table.records.size() || repeatsLatestOffset(table, body) ? nullptr : &table.records[slot];
    if (record != nullptr) {
        TimeOffsetRecord& utc = utcPartOf(*record);
        loadFields(body, timeOffsetRows, utc);
        utc.week = offsetWeek(utc.week, rule.weekOffset);
        utc.stamp = clock;
        if (rule.setsLeapSeconds) {
            lastLeapSeconds = bodies::timeOffset::leapSeconds.load(body);
        }
        countAndWrap(table.count, rule.wrap);
    }
    return record;
}

}  // namespace

char hourLetterOf(std::uint32_t tot) {
    const auto hours = static_cast<float>(tot / 3600.0);
    const float hour = std::fmod(hours, 24.0F);
    const int letter = hour <= 1.0F ? 0 : static_cast<int>(std::ceil(hour)) - 1;
    return static_cast<char>('A' + letter);
}

void decodeGpsIono(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    decodeIono(staging.body(rowOf("IO")), clocks.epoch, tables.gpsIono);
}

void decodeNavicIono(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    decodeIono(staging.body(rowOf("II")), clocks.epoch, tables.navicIono);
}

void decodeBeidouIono(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("CI"));
    BeidouIonoTable& table = tables.beidouIono;
    BeidouIonoRecord* const record = newIonoRecord(table, body, clocks.epoch);
    if (record == nullptr) {
        return;
    }
    record->tot = bodies::iono::tot.load(body);
    record->hourLetter = hourLetterOf(record->tot);
    record->sv = latestBeidouSatellite(tables);
    dropSeenBeidouIono(table);
    countAndWrap(table.count, beidouIonoWrap);
}

void decodeGpsTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    storeTimeOffset(gpsRule, staging.body(gpsRule.messageRow), clocks.epoch, tables.gpsTimeOffset,
                    tables.lastLeapSeconds);
}

void decodeBeidouTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    storeTimeOffset(beidouRule, staging.body(beidouRule.messageRow), clocks.epoch, tables.beidouTimeOffset,
                    tables.lastLeapSeconds);
}

void decodeNavicTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    storeTimeOffset(navicRule, staging.body(navicRule.messageRow), clocks.epoch, tables.navicTimeOffset,
                    tables.lastLeapSeconds);
}

void decodeGalileoTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks,
                             NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(galileoRule.messageRow);
    if (GalileoTimeOffsetRecord* const record = storeTimeOffset(
            galileoRule, body, clocks.epoch, tables.galileoTimeOffset, tables.lastLeapSeconds)) {
        loadFields(body, galileoGpsRows, *record);
        record->weekGps = offsetWeek(record->weekGps, galileoRule.weekOffset);
    }
}

void decodeGlonassTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks,
                             NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("NU"));
    tables.glonassTimeOffset.tauC = bodies::nu::tauC.load(body);
    tables.glonassTimeOffset.tauGps = bodies::nu::tauGps.load(body);
    tables.glonassTimeOffset.stamp = clocks.epoch;
}

}  // namespace orbconv
