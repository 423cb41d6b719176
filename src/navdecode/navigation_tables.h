// The store between the survey pass, whose decoders fill it, and the navigation files. Plain tables with a
// signed count of used slots. An entry with satellite number 0 is dead and every reader skips it. Slots are
// never cleared: what a dropped message left in a slot shows in the next entry there. Of a message's fields
// an entry keeps those that have a meaning; raw words without one are left in the message.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "log/receiver_clock.h"

namespace orbconv {

inline constexpr std::int32_t ephemerisTableCapacity = 10000;

// The navigation message that an ephemeris came in; `none` as long as nothing has set it.
enum class NavType : std::uint8_t { none, lnav, cnav, cnv2, inav, fnav, d1, d2, cnv1, cnv3 };

constexpr std::string_view navTypeName(NavType type) {
    constexpr std::array<std::string_view, 10> names = {"",     "LNAV", "CNAV", "CNV2", "INAV",
                                                        "FNAV", "D1",   "D2",   "CNV1", "CNV3"};
    return names[static_cast<std::size_t>(type)];
}

// Date and time of an ephemeris record: the date on which the message came in, joined to the time of day of
// the ephemeris. Deliberate: not derived from week and toc.
struct RecordEpoch {
    float year;
    float month;
    float day;
    float hour;
    float minute;
    float second;
    float timeBase;
};

// The orbit and clock that GPS, Galileo, BeiDou and NavIC ephemerides have in common. Angles in radians,
// rates in radians per second, times in seconds (of week), lengths in metres.
struct KeplerElements {
    std::int32_t sv;
    std::uint32_t tot;
    std::uint8_t l2Flags;  // bit 1: L2 P data flag, bit 2: codes on L2
    std::int16_t iodc;
    std::int32_t toc;
    std::int32_t accuracy;  // metres; for Galileo the raw index
    std::int32_t health;
    std::int16_t week;
    float tgd, af2, af1, af0;
    std::int32_t toe;  // key of duplicates and of the sort
    std::uint16_t iode;
    double sqrtA, e, M0, Omega0, i0, omega;
    float deltaN, OmegaDot, IDOT;
    float Crc, Crs, Cuc, Cus, Cic, Cis;
};

struct GpsEphemeris {
    KeplerElements kepler;
    RecordEpoch epoch;
    float fitInterval;  // hours
    NavType navType;
    std::uint8_t navFlags;  // bit 0 LNAV; bits 1, 2 CNAV; bit 3 CNV2
    std::uint32_t cnavToe, cnavTop;
    double adot;
    float deltaNDot;
    std::uint8_t uraiEd, uraiNed0, uraiNed1, uraiNed2;
    float iscL1ca, iscL2c, iscL5i5, iscL5q5;
    float iscL1cp, iscL1cd;
    float af0Delta;
};

struct GlonassEphemeris {
    std::int32_t sv;
    std::int8_t frequency;
    std::uint16_t dayNumber;
    std::int32_t tk;  // key of duplicates
    std::int32_t tb;  // key of the sort; seconds
    std::uint8_t healthByte;
    std::uint8_t age;
    double x, y, z;    // km
    float vx, vy, vz;  // km/s
    float ax, ay, az;  // km/s^2
    float tauN, gamma;
    RecordEpoch epoch;
};

struct GalileoEphemeris {
    KeplerElements kepler;
    RecordEpoch epoch;
    NavType navType;
    float bgdE5a, bgdE5b;
    float ai0, ai1, ai2;
    std::uint8_t ionFlags;
    std::uint8_t navFlags;         // bits 0, 2: INAV; bit 1: FNAV
    float sisa;                    // metres
    std::uint32_t dataSourceBits;  // accumulated by every message that used the slot, never cleared
    std::int32_t dataSources;
};

struct BeidouEphemeris {
    KeplerElements kepler;
    RecordEpoch epoch;
    NavType navType;
    std::int32_t satType;  // nothing fills it
    float tgd2;
    std::uint8_t navFlags;  // bits 0 to 2: D1 or D2; bit 3 CNV1; bit 5 CNV2; bit 6 CNV3
    std::uint8_t aodc, aode;
    double adot;
    float deltaNDot, sisai;
};

struct NavicEphemeris {
    KeplerElements kepler;
    RecordEpoch epoch;
    float fitInterval;  // hours
};

// Up to 10000 ephemerides. Storage grows with the slots that messages have touched, so an empty table costs
// nothing and a slot that was never touched reads as dead.
template <class Entry>
class EphemerisTable {
public:
    // The slot for the next message, new ones zero-filled, or null when the table is full.
    Entry* nextSlot() {
        if (count >= ephemerisTableCapacity) {
            return nullptr;
        }
        const auto i = static_cast<std::size_t>(count);
        if (i >= slots.size()) {
            slots.emplace_back();
            keys.push_back(0);
        }
        return &slots[i];
    }

    // Every slot that a message has touched; live entries can stand past the count.
    std::vector<Entry> slots;
    // The duplicate key of each slot.
    std::vector<std::uint64_t> keys;
    std::int32_t count = 0;
};

struct IonoRecord {
    std::array<float, 4> alpha;
    std::array<float, 4> beta;
    EpochClock stamp;
};

struct BeidouIonoRecord {
    std::uint32_t tot;
    std::array<float, 4> alpha;
    std::array<float, 4> beta;
    EpochClock stamp;
    char hourLetter;
    std::int32_t sv;  // of the latest BeiDou ephemeris; 0 marks a dropped record
};

struct TimeOffsetRecord {
    double a0;
    float a1;
    std::uint32_t word;  // behind a1; no message fills it
    std::uint64_t tot;
    std::uint16_t week;
    EpochClock stamp;
};

struct GalileoTimeOffsetRecord {
    TimeOffsetRecord utc;
    float a0Gps, a1Gps;
    std::uint32_t totGps;
    std::uint16_t weekGps;
};

struct GlonassTimeOffset {
    double tauC;
    float tauGps;
    EpochClock stamp;
};

inline constexpr std::size_t ionoSlots = 1000;
inline constexpr std::size_t timeOffsetSlots = 100;

// A table of `Slots` records; readers walk it from slot 0 to an end mark, not to the count.
template <class Record, std::size_t Slots>
struct RecordTable {
    std::array<Record, Slots> records{};
    std::int32_t count = 0;
};

using IonoTable = RecordTable<IonoRecord, ionoSlots>;
using BeidouIonoTable = RecordTable<BeidouIonoRecord, ionoSlots>;
using TimeOffsetTable = RecordTable<TimeOffsetRecord, timeOffsetSlots>;
using GalileoTimeOffsetTable = RecordTable<GalileoTimeOffsetRecord, timeOffsetSlots>;

struct NavigationTables {
    EphemerisTable<GpsEphemeris> gps;
    EphemerisTable<GlonassEphemeris> glonass;
    EphemerisTable<GalileoEphemeris> galileo;
    EphemerisTable<BeidouEphemeris> beidou;
    EphemerisTable<NavicEphemeris> navic;

    IonoTable gpsIono;
    IonoTable navicIono;
    BeidouIonoTable beidouIono;

    TimeOffsetTable gpsTimeOffset;
    TimeOffsetTable beidouTimeOffset;
    TimeOffsetTable navicTimeOffset;
    GalileoTimeOffsetTable galileoTimeOffset;
    GlonassTimeOffset glonassTimeOffset{};

    std::int32_t lastLeapSeconds = 0;
};

}  // namespace orbconv
