// Findings about times, set off by small logs.
#include <gtest/gtest.h>

#include "companions/support/inspected.h"

namespace orbconv::inspect {
namespace {

using samplelog::LogBuilder;
using testsupport::cleanLog;
using testsupport::cleanStart;
using testsupport::codes;
using testsupport::countOf;
using testsupport::exampleOf;
using testsupport::inspected;
using testsupport::putCleanEpoch;
using testsupport::putCleanStart;

// Times of day, each with its date and its end, in milliseconds.
LogBuilder datedLog(const std::vector<std::uint32_t>& times) {
    LogBuilder log;
    log.rd(2024, 5, 6);
    putCleanStart(log);
    for (const std::uint32_t time : times) {
        putCleanEpoch(log, time);
    }
    return log;
}

// A date once, then epochs without one.
LogBuilder undatedLog(const std::vector<std::uint32_t>& times) {
    LogBuilder log;
    log.rd(2024, 5, 6);
    putCleanStart(log);
    for (const std::uint32_t time : times) {
        log.time(time);
        if (time == times.front()) {
            log.rd(2024, 5, 6);
        }
        log.to(0.0).td();
    }
    return log;
}

TEST(TimeFindingsTest, CleanLog_SetsOffNone) {
    const LogSummary log = inspected(cleanLog());
    EXPECT_EQ(codes(log), "");
    EXPECT_EQ(testsupport::codesOfEverySuch(log), "O20 N17 N23");  // no GLONASS; the time offset UO
}

TEST(TimeFindingsTest, Fractions) {
    const LogSummary log =
        inspected(datedLog({36'000'000, 36'000'200, 36'000'400, 36'000'600, 36'000'800, 36'001'000}));
    EXPECT_EQ(codes(log), "O10");
    EXPECT_EQ(countOf(log, "O10"), 4);
    EXPECT_EQ(exampleOf(log, "O10"), "at 2024-05-06T10:00:00.200");
}

TEST(TimeFindingsTest, DateAheadOfTime_HasTheTimeOfTheEpochBefore) {
    LogBuilder log = cleanLog();
    log.rd(2024, 5, 6).time(cleanStart + 4000).sx({{1, 5}}).to(0).td();
    EXPECT_EQ(countOf(inspected(log), "O10", "ahead"), 1);
    EXPECT_EQ(countOf(inspected(cleanLog()), "O10", "ahead"), 0);
}

TEST(TimeFindingsTest, WithoutDates_TheClockFallsBackAtEachMinute) {
    // The last two are of another minute than the date.
    const LogSummary log = inspected(undatedLog({58'000, 59'000, 60'000, 61'000}));
    EXPECT_EQ(countOf(log, "O11"), 2);
    EXPECT_EQ(exampleOf(log, "O11"), "at 2024-05-06T00:01:00.000");
    EXPECT_EQ(countOf(inspected(undatedLog({56'000, 57'000, 58'000, 59'000})), "O11"), 0);
}

TEST(TimeFindingsTest, WithoutDates_GapsDoNotShow) {
    const LogSummary log = inspected(undatedLog({1000, 2000, 5000, 6000, 7000}));
    EXPECT_EQ(countOf(log, "O10", "without dates"), 1);
    EXPECT_EQ(exampleOf(log, "O10"), "the clock goes on by 1.000 s at each epoch");
    EXPECT_EQ(countOf(inspected(undatedLog({1000, 2000, 3000})), "O10"), 0);
}

TEST(TimeFindingsTest, WithoutDates_StepsOfTooManyLengthsAreBounded) {
    std::vector<std::uint32_t> times = {1000};
    for (std::uint32_t step = 1; step <= 4200; ++step) {
        times.push_back(times.back() + step);
    }
    EXPECT_EQ(countOf(inspected(undatedLog(times)), "O10", "without dates"), 4096);
}

TEST(TimeFindingsTest, Interval_IsThatOfTheLastTwoTimes) {
    const LogSummary log = inspected(datedLog({36'000'000, 36'001'000, 36'002'000, 36'005'000}));
    EXPECT_EQ(codes(log), "O12");
    EXPECT_EQ(exampleOf(log, "O12"), "3.000 in place of 1.000");
}

TEST(TimeFindingsTest, Interval_AcrossMidnightIsNegative) {
    LogBuilder log;
    log.rd(2024, 5, 6);
    putCleanStart(log);
    putCleanEpoch(log, 86'396'000);
    putCleanEpoch(log, 86'398'000);
    log.time(0).rd(2024, 5, 7).to(0).sx({}).td();
    EXPECT_EQ(exampleOf(inspected(log), "O12"), "-86398.000 in place of 2.000");
}

TEST(TimeFindingsTest, MidnightStart_LosesTheFirstEpoch) {
    const LogSummary log = inspected(datedLog({0, 1000, 2000, 3000}));
    EXPECT_EQ(codes(log), "O13");
    EXPECT_EQ(countOf(log, "O13"), 1);
}

TEST(TimeFindingsTest, NoHeader_OneEpochOrNoTime) {
    const LogSummary one = inspected(datedLog({36'000'000}));
    EXPECT_EQ(countOf(one, "O14"), 1);
    EXPECT_EQ(exampleOf(one, "O14"), "1 times of day");
    const LogSummary midnight = inspected(datedLog({0, 1000}));
    EXPECT_EQ(countOf(midnight, "O14"), 2);
    EXPECT_EQ(countOf(inspected(LogBuilder{}.td()), "O14"), 1);
}

TEST(TimeFindingsTest, HeaderDueAtMidnight_WaitsForTwoTimesMore) {
    const LogSummary log = inspected(datedLog({86'399'000, 0, 1000, 2000, 3000}));
    EXPECT_EQ(countOf(log, "O14", "ahead"), 2);
}

TEST(TimeFindingsTest, EpochsAheadOfTheHeader) {
    LogBuilder log;
    log.rd(2024, 5, 6).to(0).td().to(0).td();
    putCleanStart(log);
    putCleanEpoch(log, cleanStart);
    putCleanEpoch(log, cleanStart + 1000);
    const LogSummary summary = inspected(log);
    EXPECT_EQ(countOf(summary, "O14", "ahead"), 2);
    EXPECT_EQ(exampleOf(summary, "O14"), "the first 2 of the log");
}

TEST(TimeFindingsTest, EpochsWithoutClockOffset) {
    LogBuilder log = cleanLog();
    log.time(cleanStart + 4000).rd(2024, 5, 6).sx({{1, 5}}).td();
    EXPECT_EQ(countOf(inspected(log), "O16"), 1);
    EXPECT_EQ(exampleOf(inspected(log), "O16"), "at 2024-05-06T10:00:04.000");
}

TEST(TimeFindingsTest, TimeScaleAndLateDate) {
    LogBuilder log;
    putCleanStart(log);
    log.time(1000).to(0).td().rd(2024, 5, 6, 2).time(2000).to(0).td().time(3000).to(0).td();
    const LogSummary summary = inspected(log);
    EXPECT_EQ(summary.timeScale, "GLONASS");
    EXPECT_EQ(exampleOf(summary, "O22", "three characters"), "GLONASS");
    EXPECT_EQ(exampleOf(summary, "O22", "No date"), "1 epochs ahead of the first date");
}

TEST(TimeFindingsTest, ShortBodies_AreNoTimes) {
    LogBuilder log = cleanLog();
    log.message("~~", "ab").message("RD", "abc");
    EXPECT_EQ(codes(inspected(log)), "");
}

}  // namespace
}  // namespace orbconv::inspect
