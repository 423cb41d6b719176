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
inline const std::string lineOfGps7 = "G07  22484434.350";

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

}  // namespace testsupport
