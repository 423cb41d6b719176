// Which epochs of a log are asked for, by their time alone.
#pragma once

#include <cstdint>

#include "reading/epoch.h"
#include "standard/selection.h"

namespace orbconv::standard {

// The time scale of a file, which is that of its first epoch: GPS time, or UTC, which RINEX calls GLO. The
// log's two kinds of UTC and its GLONASS time are one scale here; none of them has Moscow's three hours.
enum class TimeScale : std::uint8_t { gps, utc };

// Of a time base that the format does not know, GPS time.
TimeScale timeScaleOf(std::uint8_t timeBase);

enum class Gate : std::uint8_t {
    open,
    withoutDate,  // no date has come yet, or no time of day
    otherScale,   // in another time scale than the file
    notAskedFor,  // outside the window, or between the multiples of the interval
};

// `scale` is nothing ahead of the first epoch that has a time.
Gate gateOf(const reading::Epoch& epoch, const Selection& selection, std::optional<TimeScale> scale);

}  // namespace orbconv::standard
