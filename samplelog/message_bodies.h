// Bodies of the receiver's messages as plain structs, in the units that the messages carry.
//
// All fields have defaults, so that a body can be written with designated initialisers and only the fields
// that matter:
//
//     GpsBody{.kepler = {.sv = 5, .toe = 7200, .sqrtA = 5153.6}, .navFlags = 1}
//
// Everything defaults to zero but the satellite numbers, which default to 1: an ephemeris of satellite 0 is
// no ephemeris. The fields stand in the order in which the message holds them.

#pragma once

#include <array>
#include <cstdint>

namespace samplelog {

// System codes of the satellite list. Other values than these belong to no system.
struct SystemCode {
    static constexpr std::uint8_t gps = 1;
    static constexpr std::uint8_t glonass = 2;
    static constexpr std::uint8_t sbas = 3;
    static constexpr std::uint8_t galileo = 4;
    static constexpr std::uint8_t qzss = 5;
    static constexpr std::uint8_t beidou = 6;
    static constexpr std::uint8_t navic = 7;
    static constexpr std::uint8_t glonassCdma = 9;
};

// One element of the satellite list. `number` is the satellite's number, for GLONASS its frequency channel
// (-7 to 6); its low eight bits go into the log.
struct Satellite {
    std::uint8_t systemCode = SystemCode::gps;
    int number = 0;

    friend bool operator==(const Satellite&, const Satellite&) = default;
};

// Three coordinates, metres.
struct Vector3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// Orbit and clock, the 122 bytes that open `GE`, `EN`, `CN` and `IE`. Angles and their rates are in
// semicircles and semicircles per second; the week is the system's own with the roll-over taken off.
struct KeplerBlock {
    std::uint8_t sv = 1;
    std::uint32_t tot = 0;  // transmission time, seconds of week
    std::uint8_t flags = 0;
    std::int16_t iodc = 0;
    std::int32_t toc = 0;      // seconds of week
    std::int8_t uraIndex = 0;  // index of accuracy, not metres
    std::uint8_t health = 0;
    std::int16_t week = 0;
    float tgd = 0.0F;      // seconds
    float af2 = 0.0F;      // s/s^2
    float af1 = 0.0F;      // s/s
    float af0 = 0.0F;      // seconds
    std::int32_t toe = 0;  // seconds of week
    std::int16_t iode = 0;
    double sqrtA = 0.0;  // square root of metres
    double e = 0.0;
    double M0 = 0.0;
    double Omega0 = 0.0;
    double i0 = 0.0;
    double omega = 0.0;
    float deltaN = 0.0F;
    float OmegaDot = 0.0F;
    float IDOT = 0.0F;
    float Crc = 0.0F;  // metres
    float Crs = 0.0F;  // metres
    float Cuc = 0.0F;  // radians
    float Cus = 0.0F;  // radians
    float Cic = 0.0F;  // radians
    float Cis = 0.0F;  // radians
};

// `GE`: the block alone is the short form; everything behind it belongs to the two long forms.
struct GpsBody {
    KeplerBlock kepler = {};
    std::uint8_t navFlags = 0;  // bit 0 LNAV, bits 1 and 2 CNAV, bit 3 CNV2
    std::uint32_t cnavToe = 0;
    std::uint32_t cnavTop = 0;
    double adot = 0.0;
    float deltaNDot = 0.0F;
    std::uint8_t uraiEd = 0;
    std::uint8_t uraiNed0 = 0;
    std::uint8_t uraiNed1 = 0;
    std::uint8_t uraiNed2 = 0;
    float iscL1cp = 0.0F;  // only in the form of length 160
    float iscL1cd = 0.0F;  // only in the form of length 160
    float iscL1ca = 0.0F;  // only in the form of length 168
    float iscL2c = 0.0F;   // only in the form of length 168
    float iscL5i5 = 0.0F;  // only in the form of length 168
    float iscL5q5 = 0.0F;  // only in the form of length 168
    float af0Delta = 0.0F;
};

// `NE`: state vector in km, km/s and km/s^2; the `ext` fields belong to the long form.
struct GlonassBody {
    std::uint8_t sv = 1;         // orbit slot
    std::int8_t frequency = 0;   // frequency channel
    std::int16_t dayNumber = 0;  // day of the four-year period
    std::int32_t tk = 0;         // frame time, seconds of day
    std::int32_t tb = 0;         // reference time, seconds of day
    std::uint8_t healthByte = 0;
    std::uint8_t age = 0;  // days
    std::uint8_t flagsByte = 0;
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    float vx = 0.0F;
    float vy = 0.0F;
    float vz = 0.0F;
    float ax = 0.0F;
    float ay = 0.0F;
    float az = 0.0F;
    double tauSys = 0.0;  // seconds
    float tauN = 0.0F;    // seconds
    float gamma = 0.0F;
    float extra1 = 0.0F;
    std::uint8_t extra2 = 0;
    std::uint8_t extra3 = 0;
    std::uint16_t extra4 = 0;
    std::uint8_t ext1 = 0;
    std::uint32_t ext2 = 0;
    std::uint32_t ext3 = 0;
    std::uint8_t ext4 = 0;
    std::uint8_t ext5 = 0;
    std::uint8_t ext6 = 0;
    std::uint8_t ext7 = 0;
    std::uint16_t ext8 = 0;
};

// `EN`.
struct GalileoBody {
    KeplerBlock kepler = {};
    float bgdE5a = 0.0F;  // seconds
    float bgdE5b = 0.0F;  // seconds
    float ai0 = 0.0F;
    float ai1 = 0.0F;
    float ai2 = 0.0F;
    std::uint8_t ionFlags = 0;
    std::uint8_t navFlags = 0;  // bits 0 and 2 INAV, bit 1 FNAV
    std::uint32_t lastWord = 0;
};

// `CN`: one struct for its three forms; each form takes the fields that it has.
struct BeidouBody {
    KeplerBlock kepler = {};
    float tgd2 = 0.0F;          // seconds
    std::uint8_t navFlags = 0;  // bits 0 to 2 D1 or D2, bit 3 CNV1, bit 5 CNV2, bit 6 CNV3
    std::uint32_t tailWord = 0;
    std::uint8_t aodc = 0;  // only in the form of length 134
    std::uint8_t aode = 0;  // only in the form of length 134
    double adot = 0.0;      // from here on: the forms of length 152 and 160
    float deltaNDot = 0.0F;
    float sisai = 0.0F;
    float cnavWord1 = 0.0F;
    float cnavWord2 = 0.0F;  // only in the form of length 160
    float cnavWord3 = 0.0F;  // only in the form of length 160
};

// `IO`, `II` and `CI`: eight coefficients of the broadcast ionosphere. Ahead of them stand six bytes: the
// first four are `tot` (seconds of week), which only `CI` uses.
struct IonoBody {
    std::uint32_t tot = 0;
    std::array<std::uint8_t, 2> unread = {};
    float alpha0 = 0.0F;
    float alpha1 = 0.0F;
    float alpha2 = 0.0F;
    float alpha3 = 0.0F;
    float beta0 = 0.0F;
    float beta1 = 0.0F;
    float beta2 = 0.0F;
    float beta3 = 0.0F;
};

// `UO`, `CU` and `IU`: the system's time against UTC.
struct TimeOffsetBody {
    double a0 = 0.0;         // seconds
    float a1 = 0.0F;         // s/s
    std::uint32_t tot = 0;   // seconds of week
    std::uint16_t week = 0;  // as in KeplerBlock
    std::int8_t leapSeconds = 0;
    std::uint8_t leapWord1 = 0;
    std::uint16_t leapWord2 = 0;
    std::uint8_t leapWord3 = 0;
};

// `EU`: the same against UTC, then Galileo time against GPS time.
struct GalileoTimeOffsetBody {
    TimeOffsetBody utc = {};
    float a0Gps = 0.0F;
    float a1Gps = 0.0F;
    std::uint32_t totGps = 0;
    std::uint16_t weekGps = 0;
};

// `NU`.
struct GlonassTimeOffsetBody {
    double tauC = 0.0;    // seconds
    float tauGps = 0.0F;  // seconds
    std::uint32_t word1 = 0;
    std::uint32_t word2 = 0;
};

}  // namespace samplelog
