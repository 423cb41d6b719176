#include "navdecode/iono_and_time_decoders.h"

#include <cmath>

#include "log/little_endian.h"

namespace orbconv {

namespace {

namespace ionoBody {
constexpr BodyField<std::uint32_t> tot{0};  // CI only
constexpr std::array<BodyField<float>, 4> alpha = {{{6}, {10}, {14}, {18}}};
constexpr std::array<BodyField<float>, 4> beta = {{{22}, {26}, {30}, {34}}};
static_assert(tileBody(6, 38, alpha[0], alpha[1], alpha[2], alpha[3], beta[0], beta[1], beta[2], beta[3]));
}  // namespace ionoBody

namespace offsetBody {
constexpr BodyField<double> a0{0};
constexpr BodyField<float> a1{8};
constexpr BodyField<std::uint32_t> tot{12};
constexpr BodyField<std::uint16_t> week{16};
constexpr BodyField<std::int8_t> leapSeconds{18};
static_assert(tileBody(0, 19, a0, a1, tot, week, leapSeconds));
// EU only.
constexpr BodyField<float> a0Gps{23};
constexpr BodyField<float> a1Gps{27};
constexpr BodyField<std::uint32_t> totGps{31};
constexpr BodyField<std::uint16_t> weekGps{35};
static_assert(tileBody(23, 37, a0Gps, a1Gps, totGps, weekGps));
}  // namespace offsetBody

namespace nuBody {
constexpr BodyField<double> tauC{0};
constexpr BodyField<float> tauGps{8};
static_assert(tileBody(0, 12, tauC, tauGps));
}  // namespace nuBody

constexpr std::int32_t ionoWrap = 499;
constexpr std::int32_t beidouIonoWrap = 99;
constexpr std::int32_t navicTimeOffsetWrap = 99;
// UO, IU and EU. Deliberate: EU too, although a Galileo ephemeris adds 1024. CU adds nothing.
constexpr std::uint32_t timeOffsetWeek = 2048;

template <class Record>
void loadCoefficients(Record& record, const std::uint8_t* body) {
    for (std::size_t i = 0; i < record.alpha.size(); ++i) {
        record.alpha[i] = ionoBody::alpha[i].load(body);
        record.beta[i] = ionoBody::beta[i].load(body);
    }
}

// Whether the body repeats the table's latest record. Then the count still wraps when it is due.
template <class Table>
bool repeatsLatestIono(Table& table, const std::uint8_t* body, std::int32_t wrap) {
    if (table.count <= 0) {
        return false;
    }
    const auto& latest = table.records[static_cast<std::size_t>(table.count - 1)];
    const bool repeats = ionoBody::alpha[0].load(body) == latest.alpha[0] &&
                         ionoBody::alpha[1].load(body) == latest.alpha[1] &&
                         ionoBody::beta[0].load(body) == latest.beta[0];
    if (repeats && table.count >= wrap) {
        table.count = 0;
    }
    return repeats;
}

void countUpTo(std::int32_t& count, std::int32_t wrap) {
    ++count;
    if (count >= wrap) {
        count = 0;
    }
}

void decodeIono(IonoTable& table, const std::uint8_t* body, const EpochClock& clock) {
    if (repeatsLatestIono(table, body, ionoWrap)) {
        return;
    }
    IonoRecord& record = table.records[static_cast<std::size_t>(table.count)];
    loadCoefficients(record, body);
    record.stamp = clock;
    countUpTo(table.count, ionoWrap);
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

void loadTimeOffset(TimeOffsetRecord& record, const std::uint8_t* body, std::uint32_t weekOffset,
                    const EpochClock& clock) {
    record.a0 = offsetBody::a0.load(body);
    record.a1 = offsetBody::a1.load(body);
    record.tot = offsetBody::tot.load(body);
    record.week = static_cast<std::uint16_t>(offsetBody::week.load(body) + weekOffset);
    record.stamp = clock;
}

// The UTC part of a record, which every kind of time-offset record has.
const TimeOffsetRecord& utcPartOf(const TimeOffsetRecord& record) {
    return record;
}
const TimeOffsetRecord& utcPartOf(const GalileoTimeOffsetRecord& record) {
    return record.utc;
}

template <class Table>
bool repeatsLatestOffset(const Table& table, const std::uint8_t* body) {
    if (table.count <= 0) {
        return false;
    }
    const TimeOffsetRecord& latest = utcPartOf(table.records[static_cast<std::size_t>(table.count - 1)]);
    return offsetBody::a0.load(body) == latest.a0 && offsetBody::a1.load(body) == latest.a1 &&
           offsetBody::tot.load(body) == latest.tot;
}

// The record for a message that is to be stored; null for a repeat and for a full table.
template <class Table>
auto* recordToStore(Table& table, const std::uint8_t* body) {
    const bool full = table.count >= static_cast<std::int32_t>(table.records.size());
    return full || repeatsLatestOffset(table, body) ? nullptr
                                                    : &table.records[static_cast<std::size_t>(table.count)];
}

}  // namespace

char hourLetterOf(std::uint32_t tot) {
    const auto hours = static_cast<float>(tot / 3600.0);
    const float hour = std::fmod(hours, 24.0F);
    const int letter = hour <= 1.0F ? 0 : static_cast<int>(std::ceil(hour)) - 1;
    return static_cast<char>('A' + letter);
}

void decodeGpsIono(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables) {
    decodeIono(tables.gpsIono, staging.body(rowOf("IO")), clock);
}

void decodeNavicIono(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables) {
    decodeIono(tables.navicIono, staging.body(rowOf("II")), clock);
}

void decodeBeidouIono(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("CI"));
    BeidouIonoTable& table = tables.beidouIono;
    if (repeatsLatestIono(table, body, beidouIonoWrap)) {
        return;
    }
    BeidouIonoRecord& record = table.records[static_cast<std::size_t>(table.count)];
    record.tot = ionoBody::tot.load(body);
    loadCoefficients(record, body);
    record.stamp = clock;
    record.hourLetter = hourLetterOf(record.tot);
    record.sv = latestBeidouSatellite(tables);
    dropSeenBeidouIono(table);
    countUpTo(table.count, beidouIonoWrap);
}

void decodeGpsTimeOffset(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("UO"));
    if (TimeOffsetRecord* const record = recordToStore(tables.gpsTimeOffset, body)) {
        loadTimeOffset(*record, body, timeOffsetWeek, clock);
        tables.lastLeapSeconds = offsetBody::leapSeconds.load(body);
        ++tables.gpsTimeOffset.count;
    }
}

void decodeBeidouTimeOffset(const MessageStaging& staging, const EpochClock& clock,
                            NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("CU"));
    if (TimeOffsetRecord* const record = recordToStore(tables.beidouTimeOffset, body)) {
        loadTimeOffset(*record, body, 0, clock);
        ++tables.beidouTimeOffset.count;
    }
}

void decodeNavicTimeOffset(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("IU"));
    if (TimeOffsetRecord* const record = recordToStore(tables.navicTimeOffset, body)) {
        loadTimeOffset(*record, body, timeOffsetWeek, clock);
        countUpTo(tables.navicTimeOffset.count, navicTimeOffsetWrap);
    }
}

void decodeGalileoTimeOffset(const MessageStaging& staging, const EpochClock& clock,
                             NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("EU"));
    if (GalileoTimeOffsetRecord* const record = recordToStore(tables.galileoTimeOffset, body)) {
        loadTimeOffset(record->utc, body, timeOffsetWeek, clock);
        record->a0Gps = offsetBody::a0Gps.load(body);
        record->a1Gps = offsetBody::a1Gps.load(body);
        record->totGps = offsetBody::totGps.load(body);
        record->weekGps = static_cast<std::uint16_t>(offsetBody::weekGps.load(body) + timeOffsetWeek);
        tables.lastLeapSeconds = offsetBody::leapSeconds.load(body);
        ++tables.galileoTimeOffset.count;
    }
}

void decodeGlonassTimeOffset(const MessageStaging& staging, const EpochClock& clock,
                             NavigationTables& tables) {
    const std::uint8_t* const body = staging.body(rowOf("NU"));
    tables.glonassTimeOffset.tauC = nuBody::tauC.load(body);
    tables.glonassTimeOffset.tauGps = nuBody::tauGps.load(body);
    tables.glonassTimeOffset.stamp = clock;
}

}  // namespace orbconv
