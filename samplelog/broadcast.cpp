#include "broadcast.h"

#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "calendar.h"
#include "random.h"

namespace samplelog {

namespace {

// How a system counts time and renews its ephemerides.
struct SystemTime {
    std::int64_t zero = 0;     // GPS seconds of the system's own second 0
    std::int64_t weeks = 0;    // weeks in which the broadcast week number comes round; 0 for never
    std::int64_t renewal = 0;  // seconds from one ephemeris to the next
};

SystemTime systemTimeOf(std::uint8_t systemCode) {
    constexpr std::int64_t halfHour = 1800;
    switch (systemCode) {
        case SystemCode::gps: return {0, 1024, 4 * halfHour};
        case SystemCode::glonass:
            // Moscow time, three hours ahead of UTC.
            return {leapSecondsToUtc - 10800, 0, halfHour};
        case SystemCode::galileo: return {1024 * secondsOfWeek, 0, halfHour};
        case SystemCode::beidou: return {1356 * secondsOfWeek + 14, 0, 2 * halfHour};
        default: return {1024 * secondsOfWeek, 1024, 4 * halfHour};
    }
}

// Angles travel in semicircles, from -1 to 1.
double semicircles(double angle) {
    const double turns = angle / (2.0 * pi);
    return 2.0 * (turns - std::floor(turns + 0.5));
}

// Satellites broadcast whole numbers of such steps; what a receiver logs are those numbers times the step.
constexpr double angleStep = 0x1p-31;  // semicircles
constexpr double eccentricityStep = 0x1p-33;
constexpr double rootStep = 0x1p-19;      // square root of metres
constexpr double positionStep = 0x1p-11;  // kilometres

double inSteps(double value, double step) {
    return std::floor(value / step + 0.5) * step;
}

std::uint64_t keyOf(const SatelliteModel& satellite) {
    return static_cast<std::uint64_t>(satellite.systemCode) * 100 +
           static_cast<std::uint64_t>(satellite.number);
}

float smallTerm(std::uint64_t bits, double size) {
    return static_cast<float>(size * toSymmetric(bits));
}

// The orbit of `satellite` in the terms of the message, for a reference time `shift` seconds after that of
// the present issue: the forms of one satellite refer to different times, as their own broadcasts do.
KeplerBlock keplerBlockOf(const SatelliteModel& satellite, const BroadcastTime& time, std::uint64_t seed,
                          std::int64_t shift = 0) {
    const SystemTime system = systemTimeOf(satellite.systemCode);
    const std::int64_t issue = issueAt(satellite, time.now);
    const std::int64_t reference = issue * system.renewal + shift;  // in the system's seconds
    const std::int64_t week = reference / secondsOfWeek;
    const std::int64_t secondOfWeek = reference % secondsOfWeek;
    const double orbitTime = static_cast<double>(reference + system.zero - time.orbitZero);
    const std::uint64_t key = hashOf(seed, keyOf(satellite), static_cast<std::uint64_t>(reference));

    const Orbit& orbit = satellite.orbit;
    const double perigee = pi * toSymmetric(hashOf(seed, keyOf(satellite), 5));
    const double keplerRate = std::sqrt(gravityConstant / (orbit.radius * orbit.radius * orbit.radius));
    const double node = orbit.node - earthRate * orbitTime + earthRate * static_cast<double>(secondOfWeek);
    const auto nowInWeek = static_cast<std::uint32_t>((time.now - system.zero) % secondsOfWeek);
    return {
        .sv = static_cast<std::uint8_t>(satellite.number),
        .tot = nowInWeek - nowInWeek % 6,
        .flags = 1,
        .iodc = static_cast<std::int16_t>(issue % 240),
        .toc = static_cast<std::int32_t>(secondOfWeek),
        .uraIndex = static_cast<std::int8_t>(satellite.systemCode == SystemCode::galileo ? 107 : key % 3),
        .health = 0,
        .week = static_cast<std::int16_t>(system.weeks == 0 ? week : week % system.weeks),
        .tgd = smallTerm(mixBits(key), 5e-9),
        .af2 = 0.0F,
        .af1 = static_cast<float>(satellite.clockRate),
        .af0 = static_cast<float>(satellite.clockOffset + satellite.clockRate * orbitTime),
        .toe = static_cast<std::int32_t>(secondOfWeek),
        .iode = static_cast<std::int16_t>(issue % 240),
        .sqrtA = inSteps(std::sqrt(orbit.radius), rootStep),
        .e = inSteps(1e-8 * (1.0 + toUnit(key)), eccentricityStep),
        .M0 = inSteps(semicircles(orbit.argument + orbit.rate * orbitTime - perigee), angleStep),
        .Omega0 = inSteps(semicircles(node), angleStep),
        .i0 = inSteps(orbit.inclination / pi, angleStep),
        .omega = inSteps(perigee / pi, angleStep),
        .deltaN = static_cast<float>((orbit.rate - keplerRate) / pi),
        .OmegaDot = 0.0F,
        .IDOT = 0.0F,
        // The orbits are circles: what little stands here moves no satellite by more than a hand.
        .Crc = smallTerm(mixBits(key + 1), 0.05),
        .Crs = smallTerm(mixBits(key + 2), 0.05),
        .Cuc = smallTerm(mixBits(key + 3), 2e-9),
        .Cus = smallTerm(mixBits(key + 4), 2e-9),
        .Cic = smallTerm(mixBits(key + 5), 2e-9),
        .Cis = smallTerm(mixBits(key + 6), 2e-9),
    };
}

void writeGps(const SatelliteModel& satellite, const BroadcastTime& time, std::uint64_t seed,
              LogBuilder& log) {
    log.ge123(keplerBlockOf(satellite, time, seed));
    if ((satellite.bands & bandBit(4)) == 0) {
        return;
    }
    const std::uint64_t key = hashOf(seed, keyOf(satellite), 6);
    GpsBody body = {
        .kepler = keplerBlockOf(satellite, time, seed, 1800),
        .navFlags = 2,
        .adot = 0.0,
        .uraiEd = 1,
        .uraiNed0 = 2,
        .uraiNed1 = 1,
        .uraiNed2 = 1,
        .iscL1cp = smallTerm(mixBits(key), 2e-9),
        .iscL1cd = smallTerm(mixBits(key + 1), 2e-9),
        .iscL1ca = smallTerm(mixBits(key + 2), 2e-9),
        .iscL2c = smallTerm(mixBits(key + 3), 4e-9),
        .iscL5i5 = smallTerm(mixBits(key + 4), 4e-9),
        .iscL5q5 = smallTerm(mixBits(key + 5), 4e-9),
        .af0Delta = smallTerm(mixBits(key + 6), 1e-11),
    };
    body.cnavToe = static_cast<std::uint32_t>(body.kepler.toe);
    body.cnavTop = body.kepler.tot;
    log.ge160(body);
    if ((satellite.bands & bandBit(5)) != 0) {
        body.kepler = keplerBlockOf(satellite, time, seed, 3600);
        body.navFlags = 8;
        body.cnavToe = static_cast<std::uint32_t>(body.kepler.toe);
        log.ge168(body);
    }
}

void writeGlonass(const SatelliteModel& satellite, const BroadcastTime& time, std::uint64_t seed,
                  LogBuilder& log) {
    const SystemTime system = systemTimeOf(SystemCode::glonass);
    const std::int64_t reference = issueAt(satellite, time.now) * system.renewal + system.renewal / 2;
    const std::int64_t frame = time.now - system.zero;
    const double orbitTime = static_cast<double>(reference + system.zero - time.orbitZero);
    const StateVector state = stateOf(satellite.orbit, orbitTime);
    const std::uint64_t key = hashOf(seed, keyOf(satellite), static_cast<std::uint64_t>(reference));
    constexpr double kilometre = 1000.0;
    const GlonassBody body = {
        .sv = static_cast<std::uint8_t>(satellite.number),
        .frequency = static_cast<std::int8_t>(satellite.channel),
        .dayNumber = static_cast<std::int16_t>(glonassDayOf(dateOf(frame / secondsOfDay))),
        .tk = static_cast<std::int32_t>(frame % secondsOfDay / 30 * 30),
        .tb = static_cast<std::int32_t>(reference % secondsOfDay),
        .healthByte = 0,
        .age = 0,
        .flagsByte = 0,
        .x = inSteps(state.position.x / kilometre, positionStep),
        .y = inSteps(state.position.y / kilometre, positionStep),
        .z = inSteps(state.position.z / kilometre, positionStep),
        .vx = static_cast<float>(state.velocity.x / kilometre),
        .vy = static_cast<float>(state.velocity.y / kilometre),
        .vz = static_cast<float>(state.velocity.z / kilometre),
        .ax = smallTerm(mixBits(key), 2e-9),
        .ay = smallTerm(mixBits(key + 1), 2e-9),
        .az = smallTerm(mixBits(key + 2), 2e-9),
        .tauSys = 1.5e-8,
        .tauN = static_cast<float>(-satellite.clockOffset - satellite.clockRate * orbitTime),
        .gamma = static_cast<float>(satellite.clockRate),
    };
    if ((satellite.bands & bandBit(4)) != 0) {
        log.ne103(body);
    } else {
        log.ne88(body);
    }
}

void writeGalileo(const SatelliteModel& satellite, const BroadcastTime& time, std::uint64_t seed,
                  LogBuilder& log) {
    const std::uint64_t key = hashOf(seed, keyOf(satellite), 7);
    GalileoBody body = {
        .kepler = keplerBlockOf(satellite, time, seed),
        .bgdE5a = smallTerm(mixBits(key), 4e-9),
        .bgdE5b = smallTerm(mixBits(key + 1), 4e-9),
        .ai0 = 78.5F,
        .ai1 = 0.5390625F,
        .ai2 = 0.0271F,
        .navFlags = 1,
    };
    log.en(body);
    body.navFlags = 2;
    log.en(body);
}

void writeBeidou(const SatelliteModel& satellite, const BroadcastTime& time, std::uint64_t seed,
                 LogBuilder& log) {
    const std::uint64_t key = hashOf(seed, keyOf(satellite), 8);
    BeidouBody body = {
        .kepler = keplerBlockOf(satellite, time, seed),
        .tgd2 = smallTerm(mixBits(key), 8e-9),
        .navFlags = 1,
        .aodc = 1,
        .aode = 1,
    };
    log.cn134(body);
    if ((satellite.bands & bandBit(5)) == 0) {
        return;
    }
    body.kepler = keplerBlockOf(satellite, time, seed, 1800);
    body.sisai = 2.0F;
    body.deltaNDot = smallTerm(mixBits(key + 1), 1e-14);
    switch (satellite.number % 3) {
        case 0:
            body.navFlags = 1U << 3U;
            log.cn152(body);
            break;
        case 1:
            body.navFlags = 1U << 5U;
            log.cn152(body);
            break;
        default:
            body.navFlags = 1U << 6U;
            log.cn160(body);
            break;
    }
}

constexpr std::int64_t correctionPeriod = 21600;

IonoBody ionosphereOf(std::uint64_t key, std::int64_t tot) {
    const double scale = 1.0 + 0.2 * toSymmetric(key);
    return {
        .tot = static_cast<std::uint32_t>(tot),
        .alpha0 = static_cast<float>(1.1176e-8 * scale),
        .alpha1 = static_cast<float>(2.2352e-8 * scale),
        .alpha2 = static_cast<float>(-5.9605e-8 * scale),
        .alpha3 = static_cast<float>(-1.1921e-7 * scale),
        .beta0 = static_cast<float>(9.6256e4 * scale),
        .beta1 = static_cast<float>(1.6384e5 * scale),
        .beta2 = static_cast<float>(-6.5536e4 * scale),
        .beta3 = static_cast<float>(-5.2429e5 * scale),
    };
}

TimeOffsetBody timeOffsetOf(std::uint64_t key, std::int64_t tot, std::int64_t week, int leapSeconds) {
    return {
        .a0 = 2e-9 * toSymmetric(mixBits(key)),
        .a1 = smallTerm(mixBits(key + 1), 1e-14),
        .tot = static_cast<std::uint32_t>(tot),
        .week = static_cast<std::uint16_t>(week),
        .leapSeconds = static_cast<std::int8_t>(leapSeconds),
        .leapWord1 = 137,
        .leapWord2 = 7,
        .leapWord3 = static_cast<std::uint8_t>(leapSeconds),
    };
}

}  // namespace

std::int64_t issueAt(const SatelliteModel& satellite, std::int64_t gpsSeconds) {
    const SystemTime system = systemTimeOf(satellite.systemCode);
    // GLONASS refers to the middle of its period, the others to the period's end that is nearest.
    const std::int64_t lead = satellite.systemCode == SystemCode::glonass ? 0 : system.renewal / 2;
    return (gpsSeconds - system.zero + lead) / system.renewal;
}

void writeEphemeris(const SatelliteModel& satellite, const BroadcastTime& time, std::uint64_t seed,
                    LogBuilder& log) {
    switch (satellite.systemCode) {
        case SystemCode::gps: writeGps(satellite, time, seed, log); break;
        case SystemCode::glonass: writeGlonass(satellite, time, seed, log); break;
        case SystemCode::galileo: writeGalileo(satellite, time, seed, log); break;
        case SystemCode::beidou: writeBeidou(satellite, time, seed, log); break;
        default: log.ie(keplerBlockOf(satellite, time, seed)); break;
    }
}

void writeCorrections(std::int64_t gpsSeconds, std::uint64_t seed, LogBuilder& log) {
    const std::int64_t set = gpsSeconds / correctionPeriod;
    const std::int64_t reference = set * correctionPeriod;
    const std::int64_t tot = reference % secondsOfWeek;
    const std::int64_t week = reference / secondsOfWeek;
    const auto keyFor = [&](std::uint8_t systemCode) {
        return hashOf(seed, systemCode, static_cast<std::uint64_t>(set), 9);
    };
    log.io(ionosphereOf(keyFor(SystemCode::gps), tot));
    log.ii(ionosphereOf(keyFor(SystemCode::navic), tot));
    log.ci(ionosphereOf(keyFor(SystemCode::beidou), tot));
    constexpr int leapSeconds = leapSecondsToUtc;
    constexpr int beidouLeapSeconds = leapSeconds - 14;
    log.uo(timeOffsetOf(keyFor(SystemCode::gps), tot, week % 1024, leapSeconds));
    log.cu(timeOffsetOf(keyFor(SystemCode::beidou), tot, week - 1356, beidouLeapSeconds));
    log.iu(timeOffsetOf(keyFor(SystemCode::navic), tot, week % 1024, leapSeconds));
    const std::uint64_t galileoKey = keyFor(SystemCode::galileo);
    log.eu({
        .utc = timeOffsetOf(galileoKey, tot, week % 1024, leapSeconds),
        .a0Gps = smallTerm(mixBits(galileoKey + 2), 3e-9),
        .a1Gps = smallTerm(mixBits(galileoKey + 3), 1e-15),
        .totGps = static_cast<std::uint32_t>(tot),
        .weekGps = static_cast<std::uint16_t>(week % 1024),
    });
    const std::uint64_t glonassKey = keyFor(SystemCode::glonass);
    log.nu({.tauC = 3e-9 * toSymmetric(glonassKey), .tauGps = smallTerm(mixBits(glonassKey), 2e-9)});
}

void writeAlmanacs(std::int64_t gpsSeconds, std::uint64_t seed, LogBuilder& log) {
    constexpr std::size_t almanacSize = 46;
    constexpr std::array<std::string_view, 3> ids = {"NA", "EA", "CA"};
    std::string body(almanacSize, '\0');
    NoiseSource noise = {hashOf(seed, static_cast<std::uint64_t>(gpsSeconds), 10)};
    for (const std::string_view id : ids) {
        for (char& byte : body) {
            byte = static_cast<char>(noise.next() & 0xFFU);
        }
        log.message(id, body);
    }
}

}  // namespace samplelog
