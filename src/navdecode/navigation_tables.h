// The store between the survey pass, whose decoders fill it, and the navigation files. Plain tables with a
// signed count of used slots. Slots are never cleared: what a dropped message left in a slot shows in the
// next entry there. An entry with satellite number 0 is dead: the record writers skip it, while the sorts
// move it like any other, and the ionosphere of Galileo and the satellite of BeiDou's ionosphere are taken
// from their slot dead or alive.
//
// An entry keeps the fields that the navigation files are made from; the others are left in the message. The
// fields that are kept although no file of this program shows them say so.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "log/receiver_clock.h"
#include "navdecode/kepler_block.h"
#include "navdecode/message_meaning.h"

namespace orbconv {

inline constexpr std::int32_t ephemerisTableCapacity = 10000;

// The epoch of every ephemeris is the date on which its message came in, joined to the time of day of toe,
// for GLONASS of tb. Deliberate: not derived from week and toc. Its time base is shown nowhere.

struct GpsEphemeris {
    KeplerBlock kepler;
    ClockReading epoch;
    float fitInterval;  // hours
    NavType navType;
    std::uint8_t navFlags;  // they tell the type; no record shows them
    std::uint32_t cnavToe;
    std::uint32_t cnavTop;  // no record of this program shows it
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
    ClockReading epoch;
};

struct GalileoEphemeris {
    KeplerBlock kepler;
    ClockReading epoch;
    NavType navType;
    float bgdE5a, bgdE5b;
    float ai0, ai1, ai2;
    std::uint8_t ionFlags;
    std::uint8_t navFlags;
    float sisa;                // metres
    std::int32_t dataSources;  // accumulated by every message that used the slot, never cleared
};

struct BeidouEphemeris {
    KeplerBlock kepler;
    ClockReading epoch;
    NavType navType;
    std::int32_t satType;  // nothing fills it: its column is always 0
    float tgd2;
    std::uint8_t navFlags;
    std::uint8_t aodc, aode;
    double adot;
    float deltaNDot, sisai;
};

struct NavicEphemeris {
    KeplerBlock kepler;
    ClockReading epoch;
    float fitInterval;  // hours
};

// Up to 10000 ephemerides. Storage grows with the slots that messages have touched, so an empty table costs
// nothing and a slot that was never touched reads as dead.
template <class Entry>
struct EphemerisTable {
    // Every slot that a message has touched; live entries can stand past the count.
    std::vector<Entry> slots;
    // The duplicate key of each slot.
    std::vector<std::uint64_t> keys;
    std::int32_t count = 0;

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
};

struct IonoRecord {
    std::array<float, 4> alpha;
    std::array<float, 4> beta;
    EpochClock stamp;
};

struct BeidouIonoRecord {
    std::uint32_t tot;  // seconds; the hour letter is made of it, no file shows it
    std::array<float, 4> alpha;
    std::array<float, 4> beta;
    EpochClock stamp;
    char hourLetter;
    std::int32_t sv;  // of the latest BeiDou ephemeris; 0 marks a dropped record
};

struct TimeOffsetRecord {
    double a0;
    float a1;
    std::uint64_t tot;
    std::uint16_t week;
    EpochClock stamp;
};

struct GalileoTimeOffsetRecord {
    TimeOffsetRecord utc;
    float a0Gps, a1Gps;
    std::uint32_t totGps;
    std::uint16_t weekGps;  // no file of this program shows it
};

struct GlonassTimeOffset {
    double tauC;
    float tauGps;
    EpochClock stamp;
};

inline constexpr std::size_t ionoSlots = 1000;
inline constexpr std::size_t timeOffsetSlots = 100;

// Where the counts of the tables that never fill start over.
inline constexpr std::int32_t ionoWrap = 499;
inline constexpr std::int32_t beidouIonoWrap = 99;
inline constexpr std::int32_t navicTimeOffsetWrap = 99;

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

// The ephemeris that the Galileo ionosphere lines come from: slot 0, all zeros while the table is empty.
inline GalileoEphemeris firstGalileoEphemeris(const NavigationTables& navigation) {
    return navigation.galileo.slots.empty() ? GalileoEphemeris{} : navigation.galileo.slots.front();
}

}  // namespace orbconv
