// The 122 bytes of orbit and clock that open the bodies of GE, EN, CN and IE, and the steps that the four
// decoders share.
#pragma once

#include <algorithm>
#include <cstdint>

#include "log/little_endian.h"
#include "navdecode/navigation_tables.h"

namespace orbconv {

// Offsets of KeplerBlock in a body (receiver's format). Angles come in semicircles, everything else in the
// units of the ephemeris: no scale factor is applied anywhere.
namespace keplerBlock {
inline constexpr BodyField<std::uint8_t> sv{0};
inline constexpr BodyField<std::uint32_t> tot{1};
inline constexpr BodyField<std::uint8_t> flags{5};
inline constexpr BodyField<std::int16_t> iodc{6};
inline constexpr BodyField<std::int32_t> toc{8};
inline constexpr BodyField<std::int8_t> uraIndex{12};
inline constexpr BodyField<std::uint8_t> health{13};
inline constexpr BodyField<std::int16_t> week{14};
inline constexpr BodyField<float> tgd{16};
inline constexpr BodyField<float> af2{20};
inline constexpr BodyField<float> af1{24};
inline constexpr BodyField<float> af0{28};
inline constexpr BodyField<std::int32_t> toe{32};
inline constexpr BodyField<std::uint16_t> iode{36};
inline constexpr BodyField<double> sqrtA{38};
inline constexpr BodyField<double> e{46};
inline constexpr BodyField<double> M0{54};
inline constexpr BodyField<double> Omega0{62};
inline constexpr BodyField<double> i0{70};
inline constexpr BodyField<double> omega{78};
inline constexpr BodyField<float> deltaN{86};
inline constexpr BodyField<float> OmegaDot{90};
inline constexpr BodyField<float> IDOT{94};
inline constexpr BodyField<float> Crc{98};
inline constexpr BodyField<float> Crs{102};
inline constexpr BodyField<float> Cuc{106};
inline constexpr BodyField<float> Cus{110};
inline constexpr BodyField<float> Cic{114};
inline constexpr BodyField<float> Cis{118};
inline constexpr std::size_t bytes = 122;
static_assert(tileBody(0, bytes, sv, tot, flags, iodc, toc, uraIndex, health, week, tgd, af2, af1, af0, toe,
                       iode, sqrtA, e, M0, Omega0, i0, omega, deltaN, OmegaDot, IDOT, Crc, Crs, Cuc, Cus, Cic,
                       Cis));
}  // namespace keplerBlock

// Semicircles to radians, in double precision whatever the width of the field.
inline constexpr double pi = 3.141592653589793;
constexpr double toRadians(double semicircles) {
    return semicircles * pi;
}
constexpr float toRadians(float semicircles) {
    return static_cast<float>(static_cast<double>(semicircles) * pi);
}

// Decodes all of the block but `sv`. `weekOffset` is added in 16 bits; `accuracy` is left as it was.
void decodeKeplerBlock(const std::uint8_t* body, std::int32_t weekOffset, KeplerElements& kepler);

// A week number and its offset, kept in 16 bits.
constexpr std::int16_t offsetWeek(std::int16_t week, std::int32_t offset) {
    return static_cast<std::int16_t>(static_cast<std::uint32_t>(week) + static_cast<std::uint32_t>(offset));
}

// The accuracy in metres for an index of GPS, BeiDou or NavIC.
std::int32_t accuracyInMetres(std::int8_t uraIndex);

// The date of the epoch clock, which also leaves the mark of a date that is still missing.
void setRecordDate(RecordEpoch& epoch, const EpochClock& clock);

// Hour, minute and second of `toe`'s day, in single precision.
void setTimeOfDay(RecordEpoch& epoch, std::int32_t toe);

// Gives the entries that came before the first date of their table the present one. For every table but
// GLONASS; `i` is the slot of the new entry.
template <class Entry>
void backFillDate(EphemerisTable<Entry>& table, std::int32_t i, ReceiverClocks& clocks) {
    const auto entry = static_cast<std::size_t>(i);
    if (table.slots[entry].epoch.year == 0.0F) {
        clocks.dateStillMissing = true;
        return;
    }
    if (clocks.dateStillMissing) {
        return;
    }
    for (std::size_t k = 0; k < entry && table.slots[k].epoch.year == 0.0F; ++k) {
        RecordEpoch& epoch = table.slots[k].epoch;
        epoch.year = clocks.epoch.year;
        epoch.month = clocks.epoch.month;
        epoch.day = clocks.epoch.day;
        epoch.timeBase = clocks.epoch.timeBase;
    }
}

// What makes two ephemerides of a table the same one: satellite, toe, and three flag bits where a table
// compares them.
constexpr std::uint64_t duplicateKey(const KeplerElements& kepler, std::uint8_t flags = 0) {
    return static_cast<std::uint64_t>(flags & 7U) << 40 |
           static_cast<std::uint64_t>(static_cast<std::uint8_t>(kepler.sv)) << 32 |
           static_cast<std::uint32_t>(kepler.toe);
}

// Ends the decoding of the new entry in slot `count`: drops it if its key was seen, otherwise counts it.
// The first entry of a key stays. The keys below the count all differ, so there is one hit at most.
template <class Entry>
void appendUnlessSeen(EphemerisTable<Entry>& table, std::uint64_t key) {
    const auto i = static_cast<std::size_t>(table.count);
    const auto end = table.keys.begin() + table.count;
    if (std::find(table.keys.begin(), end, key) != end) {
        table.slots[i].kepler.sv = 0;  // the slot is used again by the next message
        return;
    }
    table.keys[i] = key;
    ++table.count;
}

}  // namespace orbconv
