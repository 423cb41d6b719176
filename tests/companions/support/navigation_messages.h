// Navigation messages with numbers that are easily worked out, and what a log of them decodes to.
#pragma once

#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

#include "companions/support/reading_items.h"
#include "reading/broadcast.h"
#include "samplelog/log_builder.h"

namespace testsupport {

inline constexpr double pi = 3.141592653589793;

// Week 2348 of GPS begins on 2025-01-05, a Sunday; with the 2048 that the receiver leaves away it is 300.
// toc and toe are two hours behind that.
inline samplelog::KeplerBlock keplerOfWeek(std::int16_t week) {
    return {.sv = 7,
            .tot = 7000,
            .flags = 2,
            .iodc = 100,
            .toc = 7200,
            .uraIndex = 1,
            .health = 5,
            .week = week,
            .tgd = 0x1p-30F,
            .af2 = 0x1p-60F,
            .af1 = 0x1p-40F,
            .af0 = 0x1p-12F,
            .toe = 7200,
            .iode = 33,
            .sqrtA = 5153.5,
            .e = 0.0078125,
            .M0 = 0.5,
            .Omega0 = -0.25,
            .i0 = 0.3125,
            .omega = 1.0,
            .deltaN = 0x1p-28F,
            .OmegaDot = -0x1p-27F,
            .IDOT = 0x1p-29F,
            .Crc = 200.5F,
            .Crs = -10.25F,
            .Cuc = 0x1p-20F,
            .Cus = 0x1p-21F,
            .Cic = 0x1p-22F,
            .Cis = -0x1p-23F};
}

inline samplelog::GpsBody modernGps(std::uint8_t navFlags) {
    return {.kepler = keplerOfWeek(300),
            .navFlags = navFlags,
            .cnavToe = 7200,
            .cnavTop = 3600,
            .adot = 0.125,
            .deltaNDot = 0x1p-44F,
            .uraiEd = 0xFE,    // -2
            .uraiNed0 = 0xF0,  // -16
            .uraiNed1 = 3,
            .uraiNed2 = 7,
            .iscL1cp = 0x1p-31F,
            .iscL1cd = 0x1p-32F,
            .iscL1ca = 0x1p-33F,
            .iscL2c = 0x1p-34F,
            .iscL5i5 = 0x1p-35F,
            .iscL5q5 = 0x1p-36F,
            .af0Delta = 0x1p-36F};
}

// Moscow's 2025-01-05 is day 371 of the four years from 2024 on; tb is 5:15 h of it, 2:15 h of UTC.
inline samplelog::GlonassBody glonassOf2025() {
    return {.sv = 8,
            .frequency = -7,
            .dayNumber = 371,
            .tk = 18030,
            .tb = 18900,
            .healthByte = 0xF1,
            .age = 2,
            .x = 10000.5,
            .y = -20000.25,
            .z = 3000.125,
            .vx = 1.5F,
            .vy = -2.5F,
            .vz = 3.5F,
            .ax = 0x1p-30F,
            .ay = -0x1p-29F,
            .az = 0x1p-28F,
            .tauN = 0x1p-14F,
            .gamma = 0x1p-40F};
}

inline samplelog::GalileoBody galileoOf(std::uint8_t navFlags) {
    return {.kepler = keplerOfWeek(1324),  // and 1024 are 2348
            .bgdE5a = 0x1p-32F,
            .bgdE5b = 0x1p-33F,
            .ai0 = 75.5F,
            .ai1 = 0.25F,
            .ai2 = 0x1p-7F,
            .ionFlags = 9,
            .navFlags = navFlags};
}

// Week 992 of BeiDou time is week 2348 of GPS.
inline samplelog::BeidouBody beidouOf(std::uint8_t navFlags, std::uint8_t sv) {
    samplelog::BeidouBody body{.kepler = keplerOfWeek(992),
                               .tgd2 = 0x1p-31F,
                               .navFlags = navFlags,
                               .aodc = 11,
                               .aode = 12,
                               .adot = 0.25,
                               .deltaNDot = 0x1p-45F};
    body.kepler.sv = sv;
    return body;
}

inline samplelog::IonoBody ionoTerms() {
    return {.tot = 7000,
            .alpha0 = 0x1p-26F,
            .alpha1 = 0x1p-25F,
            .alpha2 = -0x1p-24F,
            .alpha3 = 0x1p-23F,
            .beta0 = 0x1p16F,
            .beta1 = 0x1p15F,
            .beta2 = -0x1p16F,
            .beta3 = 0x1p17F};
}

// One message of every kind that a navigation file can show, and of every form that it comes in, from the
// satellites n and n + 1. Other n below 5 give other messages.
inline void addEveryKind(samplelog::LogBuilder& log, std::uint8_t n) {
    const auto from = [n](auto body) {
        body.kepler.sv = n;
        return body;
    };
    auto kepler = keplerOfWeek(300);
    kepler.sv = n;
    auto glonass = glonassOf2025();
    glonass.sv = n;
    const std::uint8_t next = n + 1;
    log.ge123(kepler).ie(kepler).ge160(from(modernGps(1)));
    log.ge168(from(modernGps(2))).ge160(from(modernGps(8)));
    log.ne88(glonass);
    glonass.sv = next;
    log.ne103(glonass);
    log.en(from(galileoOf(5))).en(from(galileoOf(2)));
    log.cn134(beidouOf(1, n)).cn134(beidouOf(1, n + 20));  // D2 and D1
    log.cn152(beidouOf(0x08, n)).cn160(beidouOf(0x20, n)).cn152(beidouOf(0x40, n));
    auto iono = ionoTerms();
    iono.alpha0 *= n;
    log.io(iono).ii(iono).ci(iono);
    const samplelog::TimeOffsetBody offset = {
        .a0 = 0x1p-30 * n, .a1 = 0x1p-50F, .tot = 345600, .week = 300, .leapSeconds = 18};
    log.uo(offset).cu(offset).iu(offset).nu({.tauC = 0x1p-27 * n, .tauGps = 0x1p-28F});
    log.eu({.utc = offset, .a0Gps = 0x1p-32F, .totGps = 7200, .weekGps = 300});
}

inline std::vector<orbconv::reading::Broadcast> broadcastsIn(std::string_view log) {
    std::vector<orbconv::reading::Broadcast> found;
    orbconv::reading::LogReader reader(bytesOf(log));
    for (auto item = reader.next(); item != orbconv::reading::LogItem::end; item = reader.next()) {
        if (item == orbconv::reading::LogItem::message) {
            found.push_back(orbconv::reading::decodeBroadcast(reader.message()));
        }
    }
    return found;
}

// Of the log's only message.
inline orbconv::reading::Broadcast broadcastIn(std::string_view log) {
    const auto found = broadcastsIn(log);
    return found.size() == 1 ? found.front() : orbconv::reading::Broadcast{};
}

}  // namespace testsupport
