// The times of navigation records: weeks, days and transmission times.
#include "standard/navigation_time.h"

#include <gtest/gtest.h>

#include "standard/leap_seconds.h"
#include "standard/survey.h"

namespace {

using namespace orbconv::standard;
using orbconv::Constellation;
using orbconv::reading::GlonassEphemeris;
using orbconv::reading::isoText;
using orbconv::reading::KeplerOrbit;
using orbconv::reading::LogTime;

LogTime at(std::string_view text) {
    return orbconv::reading::timeOfIsoText(text).value_or(LogTime{});
}

const WeekCount gpsWeeks = weekCountOf(Constellation::gps);

// Week 2348 of GPS begins on 2025-01-05.
RecordTimes keplerTimes(const KeplerOrbit& orbit, std::string_view received,
                        WeekField field = WeekField::printed, const WeekCount& weeks = gpsWeeks) {
    const auto times = timesOf(orbit, weeks, field, at(received));
    EXPECT_TRUE(times);
    return times.value_or(RecordTimes{});
}

// ---- weeks ----

TEST(NavigationTime, EpochIsTocInTheWeekOfToe) {
    const auto times = keplerTimes({.tot = 6900, .toc = 7216, .toe = 7200, .week = 2348}, "2025-01-05T02:00");
    EXPECT_EQ(isoText(times.epoch), "2025-01-05T02:00:16.000");
    EXPECT_EQ(times.week, 2348);
    EXPECT_EQ(times.transmission, 6900);
}

TEST(NavigationTime, TocAheadOfTheWeeksBegin) {
    const KeplerOrbit orbit{.tot = 604000, .toc = 604784, .toe = 0, .week = 2348};
    const auto printed = keplerTimes(orbit, "2025-01-05T00:00");
    EXPECT_EQ(isoText(printed.epoch), "2025-01-04T23:59:44.000");
    EXPECT_EQ(printed.week, 2348);
    EXPECT_EQ(printed.transmission, -800);  // of the week that is printed
    const auto missing = keplerTimes(orbit, "2025-01-05T00:00", WeekField::missing);
    EXPECT_EQ(isoText(missing.epoch), "2025-01-04T23:59:44.000");
    EXPECT_EQ(missing.transmission, 604000);  // of the week of toc
}

TEST(NavigationTime, TocBehindTheWeeksEnd) {
    const KeplerOrbit orbit{.tot = 100, .toc = 0, .toe = 604784, .week = 2348};
    const auto printed = keplerTimes(orbit, "2025-01-12T00:00");
    EXPECT_EQ(isoText(printed.epoch), "2025-01-12T00:00:00.000");
    EXPECT_EQ(printed.week, 2348);
    EXPECT_EQ(printed.transmission, 604900);
    EXPECT_EQ(keplerTimes(orbit, "2025-01-12T00:00", WeekField::missing).transmission, 100);
}

TEST(NavigationTime, RollOversAreToldByTheReception) {
    const KeplerOrbit orbit{.toc = 7200, .toe = 7200, .week = 2348};
    // 500 weeks behind 2025-01-05 the week of the message is still the nearest, 520 weeks behind it is not.
    EXPECT_EQ(keplerTimes(orbit, "2034-08-06").week, 2348);
    EXPECT_EQ(keplerTimes(orbit, "2034-12-24").week, 2348 + 1024);
    EXPECT_EQ(keplerTimes(orbit, "2005-05-22").week, 2348 - 1024);
    EXPECT_EQ(isoText(keplerTimes(orbit, "2005-05-22").epoch), "2005-05-22T02:00:00.000");
    const auto weekOf = [&](Constellation constellation, std::int32_t week) {
        return keplerTimes({.toc = 0, .toe = 0, .week = week}, "2025-01-05", WeekField::printed,
                           weekCountOf(constellation))
            .week;
    };
    EXPECT_EQ(weekOf(Constellation::navic, 2348 - 1024), 2348);
    EXPECT_EQ(weekOf(Constellation::galileo, 2348 - 1024), 2348 - 1024);
    EXPECT_EQ(weekOf(Constellation::galileo, 2348 - 4096), 2348);
    EXPECT_EQ(weekOf(Constellation::beidou, 992 + 4000), 992 + 4000);
    EXPECT_EQ(weekOf(Constellation::beidou, 992 + 8192), 992);
    EXPECT_EQ(timesOf(orbit, gpsWeeks, WeekField::missing, std::nullopt)->week, 2348);
}

TEST(NavigationTime, BeidouWeeksBeginIn2006) {
    const auto times = keplerTimes({.toc = 7200, .toe = 7200, .week = 992}, "2025-01-05", WeekField::printed,
                                   weekCountOf(Constellation::beidou));
    EXPECT_EQ(isoText(times.epoch), "2025-01-05T02:00:00.000");
}

TEST(NavigationTime, WeekThatIsNotPrintedIsTheNearestToTheReception) {
    const KeplerOrbit orbit{.toc = 7200, .toe = 7200, .week = 2345};
    EXPECT_EQ(isoText(keplerTimes(orbit, "2025-01-05T01:00").epoch), "2024-12-15T02:00:00.000");
    EXPECT_EQ(isoText(keplerTimes(orbit, "2025-01-05T01:00", WeekField::missing).epoch),
              "2025-01-05T02:00:00.000");
    // Half a week and a second ahead of it, the week before is nearer.
    EXPECT_EQ(isoText(keplerTimes(orbit, "2025-01-01T13:59:59", WeekField::missing).epoch),
              "2024-12-29T02:00:00.000");
}

TEST(NavigationTime, SecondsThatAreNoneMakeNoRecord) {
    const auto isRecord = [](double toc, double toe) {
        return timesOf({.toc = toc, .toe = toe, .week = 2348}, gpsWeeks, WeekField::printed, at("2025-01-05"))
            .has_value();
    };
    EXPECT_TRUE(isRecord(604800, 0));
    EXPECT_FALSE(isRecord(604801, 0));
    EXPECT_FALSE(isRecord(-1, 0));
    EXPECT_FALSE(isRecord(0, -1));
    EXPECT_FALSE(isRecord(0, 604801));
    EXPECT_EQ(keplerTimes({.tot = 604801, .week = 2348}, "2025-01-05").transmission, 999999999.999);
}

// ---- GLONASS ----

RecordTimes glonassTimes(const GlonassEphemeris& glonass, std::string_view received) {
    const auto times = timesOf(glonass, at(received));
    EXPECT_TRUE(times);
    return times.value_or(RecordTimes{});
}

TEST(NavigationTime, GlonassDayIsMoscows) {
    // The first of the four years; three hours of it are the last of the year before in UTC, a Sunday.
    const auto times = glonassTimes({.dayNumber = 1, .tk = 600, .tb = 0}, "2023-12-31T21:10");
    EXPECT_EQ(isoText(times.epoch), "2023-12-31T21:00:00.000");
    EXPECT_EQ(times.transmission, 21 * 3600 + 600);
    EXPECT_EQ(isoText(glonassTimes({.dayNumber = 1461, .tb = 82800}, "2023-12-31T20:05").epoch),
              "2023-12-31T20:00:00.000");
}

TEST(NavigationTime, GlonassFrameOfMoscowsSundayBeginsInTheWeekBefore) {
    // 2024-04-07, a Sunday, is day 98.
    const auto times = glonassTimes({.dayNumber = 98, .tk = 0, .tb = 900}, "2024-04-06T21:01");
    EXPECT_EQ(isoText(times.epoch), "2024-04-06T21:15:00.000");
    EXPECT_EQ(times.transmission, 6 * 86400 + 21 * 3600);
    EXPECT_EQ(glonassTimes({.dayNumber = 98, .tk = -1, .tb = 900}, "2024-04-06").transmission, 999999999.999);
    EXPECT_EQ(glonassTimes({.dayNumber = 98, .tk = 86401, .tb = 900}, "2024-04-06").transmission,
              999999999.999);
}

TEST(NavigationTime, FourYearsAreToldByTheReception) {
    const GlonassEphemeris day100{.dayNumber = 100, .tb = 54000};  // 9 April of a leap year, 12 h of UTC
    for (const char* const day : {"1996-04-09T12:00", "2020-04-09T12:00", "2024-04-09T12:00"}) {
        EXPECT_EQ(glonassTimes(day100, day).epoch, at(day));
    }
}

TEST(NavigationTime, DayThatContradictsTheReceptionGivesWay) {
    const auto epochOf = [](std::int32_t dayNumber) {
        return isoText(glonassTimes({.dayNumber = dayNumber, .tb = 54000}, "2024-04-09T12:00").epoch);
    };
    EXPECT_EQ(epochOf(101), "2024-04-10T12:00:00.000");  // a day off
    EXPECT_EQ(epochOf(99), "2024-04-08T12:00:00.000");
    EXPECT_EQ(epochOf(102), "2024-04-09T12:00:00.000");  // two days off
    EXPECT_EQ(epochOf(98), "2024-04-09T12:00:00.000");
    // A day and a half away it is still believed.
    const GlonassEphemeris day101{.dayNumber = 101, .tb = 54000};
    EXPECT_EQ(isoText(glonassTimes(day101, "2024-04-09T00:00").epoch), "2024-04-10T12:00:00.000");
    EXPECT_EQ(isoText(glonassTimes(day101, "2024-04-08T23:30").epoch), "2024-04-08T12:00:00.000");
    EXPECT_EQ(epochOf(0), "2024-04-09T12:00:00.000");
    EXPECT_EQ(epochOf(1462), "2024-04-09T12:00:00.000");
    // No day of the four years, though it would be the right one: day 0 of 2024 is the last of 2023.
    EXPECT_EQ(isoText(glonassTimes({.dayNumber = 0, .tb = 54000}, "2024-01-01T10:00").epoch),
              "2024-01-01T12:00:00.000");
}

TEST(NavigationTime, GlonassWithoutTimeMakesNoRecord) {
    EXPECT_FALSE(timesOf(GlonassEphemeris{.dayNumber = 100, .tb = -1}, at("2024-04-09")));
    EXPECT_FALSE(timesOf(GlonassEphemeris{.dayNumber = 100, .tb = 86401}, at("2024-04-09")));
    EXPECT_FALSE(timesOf(GlonassEphemeris{.dayNumber = 100}, std::nullopt));
}

// ---- leap seconds ----

TEST(LeapSeconds, ByDate) {
    EXPECT_EQ(leapSecondsAt(at("1980-01-06")), 0);
    EXPECT_EQ(leapSecondsAt(at("1981-07-01")), 1);
    EXPECT_EQ(leapSecondsAt(at("1999-01-01")), 13);
    EXPECT_EQ(leapSecondsAt(at("2005-12-31T23:59:59")), 13);
    EXPECT_EQ(leapSecondsAt(at("2006-01-01")), 14);
    EXPECT_EQ(leapSecondsAt(at("2016-12-31T23:59:59")), 17);
    EXPECT_EQ(leapSecondsAt(at("2017-01-01")), 18);
    EXPECT_EQ(leapSecondsAt(at("2099-12-31")), 18);
}

// Each day follows a half year whose last minute had 61 seconds.
TEST(LeapSeconds, OneMoreFromEachLeapOn) {
    int count = 0;
    for (const char* const day :
         {"1981-07-01", "1982-07-01", "1983-07-01", "1985-07-01", "1988-01-01", "1990-01-01", "1991-01-01",
          "1992-07-01", "1993-07-01", "1994-07-01", "1996-01-01", "1997-07-01", "1999-01-01", "2006-01-01",
          "2009-01-01", "2012-07-01", "2015-07-01", "2017-01-01"}) {
        EXPECT_EQ(leapSecondsAt(at(day) - std::chrono::milliseconds{1}), count) << day;
        EXPECT_EQ(leapSecondsAt(at(day)), ++count) << day;
    }
}

TEST(LeapSeconds, LogsOnUtcLackThem) {
    EXPECT_EQ(inGpsTime(at("2025-01-05T01:00"), 0), at("2025-01-05T01:00"));
    for (const std::uint8_t timeBase : std::initializer_list<std::uint8_t>{1, 2, 3}) {
        EXPECT_EQ(inGpsTime(at("2025-01-05T01:00"), timeBase), at("2025-01-05T01:00:18"));
    }
    EXPECT_EQ(inGpsTime(std::nullopt, 1), std::nullopt);
}

}  // namespace
