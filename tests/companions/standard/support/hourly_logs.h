// The logs of a station's hours.
#pragma once

#include <cstdint>
#include <string>

#include "companions/standard/support/small_logs.h"
#include "companions/support/navigation_messages.h"

namespace testsupport {

// An hour of 2025-01-05, from 0: epochs every 30 s of two GPS satellites and a GLONASS one with ranges, and
// an ephemeris of GPS satellite 7, its toc on the hour, another issue each hour.
inline std::string hourlyLog(std::uint32_t hour) {
    using samplelog::SystemCode;
    samplelog::LogBuilder log;
    log.kvMarker("HOUR").rd(2025, 1, 5);
    for (std::uint32_t i = 0; i < 120; ++i) {
        log.time(3600000 * hour + 30000 * i);
        log.sx({{SystemCode::gps, 7},
                {SystemCode::gps, static_cast<std::uint8_t>(10 + hour)},
                {SystemCode::glonass, -3}});
        log.nn({8}).flags(samplelog::Band::c, {present, present, present});
        log.rx({0, static_cast<std::int32_t>(1000 * i), static_cast<std::int32_t>(hour)}).td();
        if (i == 0) {
            auto kepler = keplerOfWeek(300);
            kepler.toc = static_cast<std::int32_t>(3600 * hour);
            kepler.toe = kepler.toc;
            kepler.iodc = static_cast<std::int16_t>(hour);
            log.ge123(kepler);
        }
    }
    return log.take();
}
inline constexpr std::size_t linesOfHour = 120 * 4;  // an epoch line and three satellites

}  // namespace testsupport
