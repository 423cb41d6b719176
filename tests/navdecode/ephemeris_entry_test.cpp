#include "navdecode/ephemeris_entry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace orbconv;

struct TimeOfDayRow {
    std::int32_t toe;
    float hour;
    float minute;
    float second;
};

class TimeOfDay : public testing::TestWithParam<TimeOfDayRow> {};

TEST_P(TimeOfDay, IsThatOfToe) {
    ClockReading epoch{};
    setTimeOfDay(epoch, GetParam().toe);
    EXPECT_EQ(epoch.hour, GetParam().hour);
    EXPECT_EQ(epoch.minute, GetParam().minute);
    EXPECT_EQ(epoch.second, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(WithinTheDay, TimeOfDay,
                         testing::Values(TimeOfDayRow{0, 0, 0, 0}, TimeOfDayRow{59, 0, 0, 59},
                                         TimeOfDayRow{60, 0, 1, 0}, TimeOfDayRow{3599, 0, 59, 59},
                                         TimeOfDayRow{3600, 1, 0, 0}, TimeOfDayRow{7261, 2, 1, 1},
                                         TimeOfDayRow{86399, 23, 59, 59}));
INSTANTIATE_TEST_SUITE_P(DaysAreTakenOff, TimeOfDay,
                         testing::Values(TimeOfDayRow{86400, 0, 0, 0}, TimeOfDayRow{100000, 3, 46, 40},
                                         TimeOfDayRow{604784, 23, 59, 44}, TimeOfDayRow{604800, 0, 0, 0}));
INSTANTIATE_TEST_SUITE_P(NegativeToeTruncatesTowardZero, TimeOfDay,
                         testing::Values(TimeOfDayRow{-1, 0, 0, -1}, TimeOfDayRow{-3661, -1, -1, -1},
                                         TimeOfDayRow{-86400, 0, 0, 0},
                                         TimeOfDayRow{std::numeric_limits<std::int32_t>::min(), -3, -14,
                                                      -8}));

// An hour or minute of a fraction below zero is an integer zero, without a sign.
TEST(TimeOfDaySign, FractionBelowZeroIsPlainZero) {
    ClockReading epoch{};
    setTimeOfDay(epoch, -59);
    EXPECT_FALSE(std::signbit(epoch.hour));
    EXPECT_FALSE(std::signbit(epoch.minute));
    EXPECT_EQ(epoch.second, -59.0F);
}

TEST(RecordDate, IsThatOfTheEpochClock) {
    ClockReading epoch{};
    setRecordDate(epoch,
                  {.year = 2024, .month = 3, .day = 5, .hour = 6, .minute = 7, .second = 8, .timeBase = 1});
    EXPECT_EQ(epoch.year, 2024.0F);
    EXPECT_EQ(epoch.month, 3.0F);
    EXPECT_EQ(epoch.day, 5.0F);
    EXPECT_EQ(epoch.timeBase, 1.0F);
    EXPECT_EQ(epoch.hour, 0.0F);
}

TEST(NavTypeOfASlot, IsLeftWhereNoFlagTellsIt) {
    NavType type = NavType::cnv1;
    setNavType(type, NavType::none);
    EXPECT_EQ(type, NavType::cnv1);
    setNavType(type, NavType::cnv2);
    EXPECT_EQ(type, NavType::cnv2);
}

}  // namespace
