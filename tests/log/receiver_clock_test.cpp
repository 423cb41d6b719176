// The clocks: what a date and a time of day make, the interval between two times, and the clock's own step
// with all that it does not do.
#include "log/receiver_clock.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "support/staging.h"

namespace {

using orbconv::ClockReading;
using samplelog::LogBuilder;

// Compared and printed as one value: year, month, day, hour, minute, second, time base.
std::array<float, 7> valuesOf(const ClockReading& clock) {
    return {clock.year, clock.month, clock.day, clock.hour, clock.minute, clock.second, clock.timeBase};
}

std::array<float, 7> clockAt(const LogBuilder& log) {
    orbconv::MessageStaging staging;
    testsupport::stage(staging, log);
    ClockReading clock;
    orbconv::setClockFromRd(clock, staging);
    return valuesOf(clock);
}

std::array<float, 7> clockAtTime(std::uint32_t timeOfDayMs) {
    return clockAt(LogBuilder().time(timeOfDayMs).rd(2024, 3, 5));
}

using Values = std::array<float, 7>;

ClockReading clockOf(float day, float hour, float minute, float second) {
    return {.year = 2024, .month = 12, .day = day, .hour = hour, .minute = minute, .second = second};
}

// Day, hour, minute and second after one step.
std::array<float, 4> advanced(ClockReading clock, float interval) {
    orbconv::advanceEpochClock(clock, interval);
    EXPECT_EQ(clock.year, 2024.0F);
    EXPECT_EQ(clock.month, 12.0F);
    return {clock.day, clock.hour, clock.minute, clock.second};
}

using Moment = std::array<float, 4>;

}  // namespace

TEST(ClockFromRd, TakesDateAndTimeAndDropsTheMilliseconds) {
    EXPECT_EQ(clockAtTime(3723500), (Values{2024, 3, 5, 1, 2, 3, 0}));
    EXPECT_EQ(clockAtTime(3723999), (Values{2024, 3, 5, 1, 2, 3, 0}));
    EXPECT_EQ(clockAtTime(3724000), (Values{2024, 3, 5, 1, 2, 4, 0}));
}

TEST(ClockFromRd, CoversTheDay) {
    EXPECT_EQ(clockAtTime(0), (Values{2024, 3, 5, 0, 0, 0, 0}));
    EXPECT_EQ(clockAtTime(59999), (Values{2024, 3, 5, 0, 0, 59, 0}));
    EXPECT_EQ(clockAtTime(60000), (Values{2024, 3, 5, 0, 1, 0, 0}));
    EXPECT_EQ(clockAtTime(3599999), (Values{2024, 3, 5, 0, 59, 59, 0}));
    EXPECT_EQ(clockAtTime(86399999), (Values{2024, 3, 5, 23, 59, 59, 0}));
}

TEST(ClockFromRd, HoursGoOnBeyondTheDay) {
    EXPECT_EQ(clockAtTime(86400000), (Values{2024, 3, 5, 24, 0, 0, 0}));
    EXPECT_EQ(clockAtTime(4294967295U), (Values{2024, 3, 5, 1193, 2, 47, 0}));
}

TEST(ClockFromRd, TakesTheDateAsItStands) {
    EXPECT_EQ(clockAt(LogBuilder().rd(65535, 255, 200, 255)), (Values{65535, 255, 200, 0, 0, 0, 255}));
    EXPECT_EQ(clockAt(LogBuilder().rd(1999, 12, 31, 3)), (Values{1999, 12, 31, 0, 0, 0, 3}));
}

TEST(ClockFromRd, TakesTheLatestOfEach) {
    EXPECT_EQ(clockAt(LogBuilder().rd(2023, 1, 1).time(1000).rd(2024, 2, 29).time(2000)),
              (Values{2024, 2, 29, 0, 0, 2, 0}));
}

TEST(ClockFromRd, HasNoDateAheadOfTheFirstDateMessage) {
    EXPECT_EQ(clockAt(LogBuilder().time(3661000)), (Values{0, 0, 0, 1, 1, 1, 0}));
}

TEST(EpochClock, SettingItTouchesNothingElseButTheMissingDate) {
    orbconv::MessageStaging staging;
    testsupport::stage(staging, LogBuilder().time(3723500).rd(2024, 3, 5, 1));
    orbconv::ReceiverClocks clocks;
    clocks.dateStillMissing = true;
    clocks.surveyInterval = 7;
    orbconv::setEpochClockFromRd(clocks, staging);
    EXPECT_EQ(valuesOf(clocks.epoch), (Values{2024, 3, 5, 1, 2, 3, 1}));
    EXPECT_EQ(valuesOf(clocks.lastObs), Values{});
    EXPECT_FALSE(clocks.dateStillMissing);
    EXPECT_EQ(clocks.surveyInterval, 7.0F);
}

TEST(EpochClock, StartsWithoutADate) {
    EXPECT_TRUE(orbconv::ReceiverClocks().dateStillMissing);
    EXPECT_EQ(valuesOf(orbconv::ReceiverClocks().epoch), Values{});
}

TEST(IntervalBetween, IsTheDifferenceOfTwoProductsInDoublePrecision) {
    EXPECT_EQ(orbconv::intervalBetween(3600000, 3601000), 1.0F);
    EXPECT_EQ(orbconv::intervalBetween(1000, 31000), 30.0F);
    // In single precision 86399.8 - 86399.6 would be 0.203125.
    EXPECT_EQ(orbconv::intervalBetween(86399600, 86399800), 0.2F);
    EXPECT_EQ(orbconv::intervalBetween(86399950, 86400000), 0.05F);
}

TEST(IntervalBetween, IsNegativeAcrossMidnight) {
    EXPECT_EQ(orbconv::intervalBetween(86399000, 0), -86399.0F);
    EXPECT_EQ(orbconv::intervalBetween(86399000, 1000), -86398.0F);
    EXPECT_EQ(orbconv::intervalBetween(4294967295U, 1), static_cast<float>(1e-3 * 1.0 - 1e-3 * 4294967295.0));
}

TEST(AdvanceEpochClock, AddsTheIntervalToTheSecond) {
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 3), 1), (Moment{5, 1, 2, 4}));
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 3), 0), (Moment{5, 1, 2, 3}));
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 3), 0.25F), (Moment{5, 1, 2, 3.25F}));
}

TEST(AdvanceEpochClock, SixtyIsASecondThatIsReallyTaken) {
    ClockReading clock = clockOf(5, 1, 2, 57);
    std::vector<std::pair<float, float>> seen;
    for (int i = 0; i < 5; ++i) {
        orbconv::advanceEpochClock(clock, 1);
        seen.emplace_back(clock.minute, clock.second);
    }
    EXPECT_EQ(seen, (std::vector<std::pair<float, float>>{{2, 58}, {2, 59}, {2, 60}, {3, 0}, {3, 1}}));
}

TEST(AdvanceEpochClock, DropsWhatExceedsTheMinute) {
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 45), 30), (Moment{5, 1, 3, 0}));
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 0), 3600), (Moment{5, 1, 3, 0}));
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 30), 30), (Moment{5, 1, 2, 60}));
}

TEST(AdvanceEpochClock, AddsInSinglePrecision) {
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 59.8F), 0.2F), (Moment{5, 1, 2, 60}));
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 60), 0.2F), (Moment{5, 1, 3, 0}));
    ClockReading clock = clockOf(5, 1, 2, 0);
    for (int i = 0; i < 10; ++i) {
        orbconv::advanceEpochClock(clock, 0.1F);
    }
    // Ten tenths are the single-precision number next above 1.
    EXPECT_EQ(clock.second, std::nextafter(1.0F, 2.0F));
}

TEST(AdvanceEpochClock, SixtyIsAMinuteThatIsReallyTaken) {
    EXPECT_EQ(advanced(clockOf(5, 1, 58, 60), 1), (Moment{5, 1, 59, 0}));
    EXPECT_EQ(advanced(clockOf(5, 1, 59, 60), 1), (Moment{5, 1, 60, 0}));
    EXPECT_EQ(advanced(clockOf(5, 1, 60, 0), 1), (Moment{5, 1, 60, 1}));
    EXPECT_EQ(advanced(clockOf(5, 1, 60, 60), 1), (Moment{5, 2, 0, 0}));
}

TEST(AdvanceEpochClock, TurnsTheDayWhenTheHourExceeds23) {
    EXPECT_EQ(advanced(clockOf(5, 23, 60, 60), 1), (Moment{6, 0, 0, 0}));
    EXPECT_EQ(advanced(clockOf(5, 24, 10, 20), 1), (Moment{6, 0, 10, 21}));
    EXPECT_EQ(advanced(clockOf(5, 1193, 2, 47), 1), (Moment{6, 0, 2, 48}));
    EXPECT_EQ(advanced(clockOf(5, 23, 59, 59), 1), (Moment{5, 23, 59, 60}));
}

TEST(AdvanceEpochClock, NeverTurnsTheMonth) {
    EXPECT_EQ(advanced(clockOf(31, 23, 60, 60), 1), (Moment{32, 0, 0, 0}));
    EXPECT_EQ(advanced(clockOf(99, 23, 60, 60), 1), (Moment{100, 0, 0, 0}));
}

TEST(AdvanceEpochClock, NegativeIntervalRunsTheSecondBelowZero) {
    EXPECT_EQ(advanced(clockOf(5, 1, 2, 3), -86399), (Moment{5, 1, 2, -86396}));
}

TEST(AdvanceEpochClock, KeepsTheTimeBase) {
    ClockReading clock = clockOf(5, 23, 60, 60);
    clock.timeBase = 3;
    orbconv::advanceEpochClock(clock, 1);
    EXPECT_EQ(clock.timeBase, 3.0F);
}

TEST(TimeScaleName, HasFourNames) {
    EXPECT_EQ(orbconv::timeScaleName(0), "GPS");
    EXPECT_EQ(orbconv::timeScaleName(1), "UTC_USNO");
    EXPECT_EQ(orbconv::timeScaleName(2), "GLONASS");
    EXPECT_EQ(orbconv::timeScaleName(3), "UTC_SU");
}

TEST(TimeScaleName, IsEmptyForAnIndexThatTheTableDoesNotHave) {
    for (int timeBase = 4; timeBase < 256; ++timeBase) {
        EXPECT_EQ(orbconv::timeScaleName(static_cast<float>(timeBase)), "") << timeBase;
    }
}
