// The clocks that the log's time messages drive. The log has no time stamp per measurement: ~~ brings the
// time of day and RD the date.
#pragma once

#include <array>
#include <string_view>

#include "log/message_staging.h"

namespace orbconv {

// A date and time in single precision, as every line of the output prints it.
struct ClockReading {
    float year = 0;
    float month = 0;
    float day = 0;
    float hour = 0;
    float minute = 0;
    float second = 0;
    float timeBase = 0;  // index into timeScaleNames
};

using EpochClock = ClockReading;    // of the epoch being written, and of what navigation decoders store
using LastObsClock = ClockReading;  // of "TIME OF LAST OBS"

struct ReceiverClocks {
    EpochClock epoch;
    LastObsClock lastObs;
    // Seconds between the log's last two ~~ of which the first is not at 0:00; negative across midnight.
    float surveyInterval = 0;
    // Set by a navigation decoder that stored an entry without a date, cleared with every setting of the
    // epoch clock.
    bool dateStillMissing = true;
};

// The time scales that RD's fifth byte picks (receiver's format). Deliberate: not RINEX's three letters, but
// for GPS.
inline constexpr std::array<std::string_view, 4> timeScaleNames = {"GPS", "UTC_USNO", "GLONASS", "UTC_SU"};

// The name for a clock's `timeBase`; empty for an index that the table does not have.
std::string_view timeScaleName(float timeBase);

// Sets a clock to the latest staged date and time of day. It then stands on a whole second: milliseconds are
// dropped.
void setClockFromRd(ClockReading& clock, const MessageStaging& staging);

// The same for the epoch clock; clears dateStillMissing.
void setEpochClockFromRd(ReceiverClocks& clocks, const MessageStaging& staging);

// The step between the two times of day, in seconds: two products in double precision, their difference in
// single.
float intervalBetween(std::uint32_t earlierMs, std::uint32_t laterMs);

// Moves the clock on by `interval` seconds after an epoch has been written.
void advanceEpochClock(EpochClock& clock, float interval);

}  // namespace orbconv
