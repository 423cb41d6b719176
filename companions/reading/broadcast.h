// The navigation messages of the log, decoded: one plain struct a kind, in the units of the standard's
// formulas (seconds, metres, radians), in the precision in which the log holds them. A value that the
// message's form does not bring is no value.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <variant>

#include "navdecode/message_meaning.h"
#include "reading/log_reader.h"
#include "run/constellation.h"

namespace orbconv::reading {

// The orbit and clock of GPS, Galileo, BeiDou and NavIC. Times in seconds of the system's week.
struct KeplerOrbit {
    double tot = 0;  // transmission time of the message
    double toc = 0, toe = 0;
    // Of toe, as sent, with the offset of message_meaning.h: who knows the time of reception settles it.
    std::int32_t week = 0;
    std::uint8_t flags = 0;  // bit 1: L2 P data flag; bit 2: codes on L2
    std::int32_t iodc = 0, iode = 0;
    std::int32_t accuracyIndex = 0;  // URA, Galileo SISA
    std::int32_t health = 0;
    double tgd = 0;
    double af0 = 0, af1 = 0, af2 = 0;
    double sqrtA = 0, e = 0, M0 = 0, Omega0 = 0, i0 = 0, omega = 0;
    double deltaN = 0, OmegaDot = 0, IDOT = 0;
    double Crc = 0, Crs = 0, Cuc = 0, Cus = 0, Cic = 0, Cis = 0;
};

struct GpsEphemeris {
    KeplerOrbit orbit{};
    NavType type{};  // lnav, cnav, cnv2
    // CNAV and CNV2; accuracy indices ED and NED0 -16 to 15, NED1 and NED2 0 to 7
    double top = 0;
    double adot = 0, deltaNDot = 0;
    std::int32_t uraiEd = 0, uraiNed0 = 0, uraiNed1 = 0, uraiNed2 = 0;
    double af0Delta = 0;  // the small part of af0
    std::optional<double> iscL1ca{}, iscL2c{}, iscL5i5{}, iscL5q5{};
    std::optional<double> iscL1cp{}, iscL1cd{};
};

struct GlonassEphemeris {
    std::int32_t frequency = 0;     // channel
    std::int32_t dayNumber = 0;     // of the four years, 1 to 1461; Moscow's calendar
    std::int32_t tk = 0, tb = 0;    // of the frame and of the values, seconds of Moscow's day
    std::int32_t health = 0;        // 0 good, 1 bad
    std::int32_t age = 0;           // days
    double x = 0, y = 0, z = 0;     // km
    double vx = 0, vy = 0, vz = 0;  // km/s
    double ax = 0, ay = 0, az = 0;  // km/s^2
    double tauN = 0, gamma = 0;
};

// The disturbance flags and the three terms of the NeQuick model, which every Galileo ephemeris brings.
struct NequickTerms {
    std::array<double, 3> ai{};
    std::int32_t flags = 0;
};

struct GalileoEphemeris {
    KeplerOrbit orbit{};
    NavType type{};  // inav, fnav
    std::uint8_t navFlags = 0;
    double bgdE5a = 0, bgdE5b = 0;
    NequickTerms ionosphere{};
};

struct BeidouEphemeris {
    KeplerOrbit orbit{};
    NavType type{};  // d1, d2, cnv1, cnv2, cnv3
    double tgd2 = 0;
    std::optional<double> aodc{}, aode{};
    std::optional<double> adot{}, deltaNDot{};
};

struct NavicEphemeris {
    KeplerOrbit orbit{};
};

// Klobuchar's terms, in seconds and semicircles.
struct KlobucharTerms {
    std::array<double, 4> alpha{};
    std::array<double, 4> beta{};
};

// One system time against another: a0 + a1 (t - reference), whole leap seconds taken out.
struct TimeOffset {
    double a0 = 0, a1 = 0;
    double reference = 0;   // seconds of week
    std::int32_t week = 0;  // of the reference, as sent, with the offset of message_meaning.h
};
struct UtcOffset {
    TimeOffset offset{};
    std::int32_t leapSeconds = 0;
};
struct GalileoOffsets {
    UtcOffset utc{};
    TimeOffset gps{};
};
struct GlonassOffsets {
    double tauC = 0, tauGps = 0;  // seconds
};

using NavigationBody =
    std::variant<std::monostate, GpsEphemeris, GlonassEphemeris, GalileoEphemeris, BeidouEphemeris,
                 NavicEphemeris, KlobucharTerms, UtcOffset, GalileoOffsets, GlonassOffsets>;

enum class BroadcastState : std::uint8_t {
    none,  // no navigation message that is decoded
    decoded,
    unknownForm,  // the length or the flags pick no form that the format knows
};

struct Broadcast {
    BroadcastState state = BroadcastState::none;
    Constellation constellation{};  // of an unknown form, too
    std::int32_t sv = 0;            // of an ephemeris: satellite, GLONASS slot
    NavigationBody body{};
};

Broadcast decodeBroadcast(const Message& message);

}  // namespace orbconv::reading
