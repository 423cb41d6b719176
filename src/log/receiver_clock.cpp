#include "log/receiver_clock.h"

#include "log/epoch_bodies.h"

namespace orbconv {

namespace {

constexpr double secondsPerMillisecond = 1e-3;

}  // namespace

std::string_view timeScaleName(float timeBase) {
    const bool known = timeBase >= 0.0F && timeBase < static_cast<float>(timeScaleNames.size());
    return known ? timeScaleNames[static_cast<std::size_t>(timeBase)] : std::string_view{};
}

void setClockFromRd(ClockReading& clock, const MessageStaging& staging) {
    const std::uint8_t* const rd = staging.body(rowOf("RD"));
    const std::uint32_t timeOfDayMs = staging.timeOfDayMs;  // of ~~, kept by the reader
    clock.year = bodies::rd::year.load(rd);
    clock.month = bodies::rd::month.load(rd);
    clock.day = bodies::rd::day.load(rd);
    clock.timeBase = bodies::rd::timeBase.load(rd);
    clock.hour = static_cast<float>(timeOfDayMs / 3600000);
    clock.minute = static_cast<float>(timeOfDayMs / 60000) - clock.hour * 60.0F;
    clock.second = static_cast<float>(timeOfDayMs / 1000) - clock.hour * 3600.0F - clock.minute * 60.0F;
}

void setEpochClockFromRd(ReceiverClocks& clocks, const MessageStaging& staging) {
    setClockFromRd(clocks.epoch, staging);
    clocks.dateStillMissing = false;
}

float intervalBetween(std::uint32_t earlierMs, std::uint32_t laterMs) {
    return static_cast<float>(secondsPerMillisecond * laterMs - secondsPerMillisecond * earlierMs);
}

void advanceEpochClock(EpochClock& clock, float interval) {
    // Deliberate: 60.0 is a value that second and minute really take, what overshoots is dropped and not
    // carried, and months and years never roll. The next RD puts the clock right.
    clock.second += interval;
    if (clock.second > 60.0F) {
        clock.minute += 1.0F;
        clock.second = 0.0F;
    }
    if (clock.minute > 60.0F) {
        clock.hour += 1.0F;
        clock.minute = 0.0F;
    }
    if (clock.hour > 23.0F) {
        clock.day += 1.0F;
        clock.hour = 0.0F;
    }
}

}  // namespace orbconv
