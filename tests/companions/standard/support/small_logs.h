// Logs of a few epochs, for tests of one thing each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "samplelog/log_builder.h"

namespace testsupport {

inline constexpr std::uint16_t present = 0x40;

// GPS satellite 7 with a range alone: 0.075 s of flight, 22484434.350 m.
inline void addRangeOfGps7(samplelog::LogBuilder& log) {
    log.sx({{samplelog::SystemCode::gps, 7}}).flags(samplelog::Band::c, {present}).rx({0});
}
inline constexpr const char* lineOfGps7 = "G07  22484434.350";

// A closed epoch with GPS satellite 7 at a time of day; without RD.
inline void addEpoch(samplelog::LogBuilder& log, std::uint32_t timeOfDayMs) {
    log.time(timeOfDayMs);
    addRangeOfGps7(log);
    log.td();
}

// A log of 2024-03-05 with such an epoch at each of the times.
inline std::string logOfTimes(const std::vector<std::uint32_t>& timesOfDayMs) {
    samplelog::LogBuilder log;
    log.rd(2024, 3, 5);
    for (const std::uint32_t time : timesOfDayMs) {
        addEpoch(log, time);
    }
    return log.take();
}

// One epoch of GPS and GLONASS with values that are easily worked out.
inline std::string fullLog() {
    using samplelog::Band;
    using samplelog::SystemCode;
    samplelog::LogBuilder log;
    log.kvMarker("ABCD").antennaType("TYPE            NONE").pv({1000.5, -2000.25, 3000.0});
    log.pmParameters({{"rcv/id=", "R1"}, {"rcv/igs=", "RECEIVER"}, {"rcv/ver/main=", "1.0"}});
    log.time(3600500).rd(2024, 3, 5).to(-0.000125);
    log.sx({{SystemCode::glonass, -3}, {SystemCode::gps, 7}}).nn({8});
    log.flags(Band::c, {present, present}).flags(Band::b2, {0, present});
    log.rx({0, 0}).rangeDeltas(Band::b2, {0, 10000});
    log.phases(Band::c, {0, 0});
    log.dx({12345678, -10000}).dopplerDeltas(Band::c, {0, 0});
    log.strengths(Band::c, {180, 0});
    log.uo({.a0 = 1e-9, .leapSeconds = 18}).td();
    return log.take();
}

}  // namespace testsupport
