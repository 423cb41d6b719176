// When an epoch was: the date of the last RD, the time of day of the last ~~, and midnight between them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "companions/support/epochs_of.h"
#include "companions/support/reading_items.h"
#include "reading/epoch.h"
#include "samplelog/log_builder.h"

namespace orbconv::reading {
namespace {

using samplelog::LogBuilder;
using testing::ElementsAre;
using testsupport::epochsOf;

constexpr std::uint32_t beforeMidnight = 86'399'000;

// "-" for an epoch without a time.
std::vector<std::string> timesOf(const LogBuilder& log) {
    std::vector<std::string> texts;
    for (const Epoch& epoch : epochsOf(log)) {
        texts.push_back(epoch.time ? isoText(*epoch.time) : "-");
    }
    return texts;
}

TEST(EpochTimeTest, DateAheadOfTimeOrBehindIt) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).time(3'723'500).td()),
                ElementsAre("2024-03-05T01:02:03.500"));
    EXPECT_THAT(timesOf(LogBuilder().time(3'723'501).rd(2024, 3, 5).td()),
                ElementsAre("2024-03-05T01:02:03.501"));
}

TEST(EpochTimeTest, NoneWithoutADateOrATimeOfDay) {
    EXPECT_THAT(timesOf(LogBuilder().time(1).td().rd(2024, 3, 5).td()),
                ElementsAre("-", "2024-03-05T00:00:00.001"));
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).td().time(1).td()),
                ElementsAre("-", "2024-03-05T00:00:00.001"));
}

// Of a log that has no TD behind the messages of interest.
std::string timeSoFarOf(const LogBuilder& log) {
    EpochCollector collector;
    LogReader reader(testsupport::bytesOf(log.bytes()));
    for (LogItem item = reader.next(); item != LogItem::end; item = reader.next()) {
        collector.add(reader.message());
    }
    const auto time = collector.timeSoFar();
    return time ? isoText(*time) : "-";
}

TEST(EpochTimeTest, TimeSoFar_OfAnEpochThatIsNotClosed) {
    EXPECT_EQ(timeSoFarOf(LogBuilder().time(1500)), "-");
    EXPECT_EQ(timeSoFarOf(LogBuilder().rd(2024, 3, 5)), "2024-03-05T00:00:00.000");
    EXPECT_EQ(timeSoFarOf(LogBuilder().rd(2024, 3, 5).time(1500)), "2024-03-05T00:00:01.500");
    EXPECT_EQ(timeSoFarOf(LogBuilder().rd(2024, 3, 5).time(beforeMidnight).td().time(1500)),
              "2024-03-06T00:00:01.500");
}

TEST(EpochTimeTest, DateStaysUntilTheNext) {
    EXPECT_THAT(
        timesOf(LogBuilder().rd(2024, 3, 5).time(1000).td().time(2000).td().rd(2024, 4, 1).time(3000).td()),
        ElementsAre("2024-03-05T00:00:01.000", "2024-03-05T00:00:02.000", "2024-04-01T00:00:03.000"));
}

TEST(EpochTimeTest, WhatIsItsOwn_IsTold) {
    const auto epochs = epochsOf(LogBuilder().rd(2024, 3, 5, 2).time(1000).td().time(2000).td().td());
    ASSERT_EQ(epochs.size(), 3U);
    EXPECT_TRUE(epochs[0].hasOwnDate);
    EXPECT_TRUE(epochs[0].hasOwnTime);
    EXPECT_FALSE(epochs[1].hasOwnDate);
    EXPECT_TRUE(epochs[1].hasOwnTime);
    EXPECT_FALSE(epochs[2].hasOwnTime);
    EXPECT_EQ(epochs[2].timeOfDayMs, 2000U);
    EXPECT_EQ(epochs[2].timeBase, 2);
}

TEST(EpochTimeTest, LastOfSeveralCounts) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).time(1000).time(2000).rd(2024, 3, 6).td()),
                ElementsAre("2024-03-06T00:00:02.000"));
}

TEST(EpochTimeTest, Midnight_WithoutADateIsTheNextDay) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 2, 28).time(beforeMidnight).td().time(0).td().time(1000).td()),
                ElementsAre("2024-02-28T23:59:59.000", "2024-02-29T00:00:00.000", "2024-02-29T00:00:01.000"));
}

TEST(EpochTimeTest, Midnight_WithADateIsThatDate) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 2, 28).time(beforeMidnight).td().rd(2024, 2, 29).time(0).td()),
                ElementsAre("2024-02-28T23:59:59.000", "2024-02-29T00:00:00.000"));
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 2, 28).time(beforeMidnight).td().time(0).rd(2024, 2, 29).td()),
                ElementsAre("2024-02-28T23:59:59.000", "2024-02-29T00:00:00.000"));
}

TEST(EpochTimeTest, Midnight_SeveralTimes) {
    LogBuilder log;
    log.rd(2023, 12, 30);
    for (int day = 0; day < 4; ++day) {
        log.time(43'200'000).td();
        log.time(10).td();
    }
    EXPECT_THAT(timesOf(log),
                ElementsAre("2023-12-30T12:00:00.000", "2023-12-31T00:00:00.010", "2023-12-31T12:00:00.000",
                            "2024-01-01T00:00:00.010", "2024-01-01T12:00:00.000", "2024-01-02T00:00:00.010",
                            "2024-01-02T12:00:00.000", "2024-01-03T00:00:00.010"));
}

TEST(EpochTimeTest, SameTimeAgain_IsNoMidnight) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).time(1000).td().time(1000).td().td()),
                ElementsAre("2024-03-05T00:00:01.000", "2024-03-05T00:00:01.000", "2024-03-05T00:00:01.000"));
}

// Two times of day in one epoch: only what the epochs end with is compared.
TEST(EpochTimeTest, FallWithinAnEpoch_IsNoMidnight) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).time(1000).td().time(5000).time(2000).td()),
                ElementsAre("2024-03-05T00:00:01.000", "2024-03-05T00:00:02.000"));
}

// A time of day that came in front of its epoch's end, in an epoch without a list, counts as any other.
TEST(EpochTimeTest, Midnight_DateOfTheEpochsBeforeTheFirstRd) {
    EXPECT_THAT(timesOf(LogBuilder().time(beforeMidnight).td().time(0).td().rd(2024, 3, 5).time(1000).td()),
                ElementsAre("-", "-", "2024-03-05T00:00:01.000"));
}

TEST(EpochTimeTest, ImpossibleDate_IsPassedOver) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 13, 5).time(1000).td()), ElementsAre("-"));
    const auto epochs =
        epochsOf(LogBuilder().rd(2024, 3, 5).time(1000).td().rd(2024, 2, 30, 3).time(2000).td());
    ASSERT_EQ(epochs.size(), 2U);
    EXPECT_EQ(isoText(*epochs[1].time), "2024-03-05T00:00:02.000");
    EXPECT_FALSE(epochs[1].hasOwnDate);
    EXPECT_EQ(epochs[1].timeBase, 0);
}

TEST(EpochTimeTest, ImpossibleTimeOfDay_IsPassedOver) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).time(86'401'000).td()), ElementsAre("-"));
    const auto epochs = epochsOf(LogBuilder().rd(2024, 3, 5).time(1000).td().time(0xFFFFFFFF).td());
    ASSERT_EQ(epochs.size(), 2U);
    EXPECT_FALSE(epochs[1].hasOwnTime);
    EXPECT_EQ(epochs[1].timeOfDayMs, 1000U);
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).time(86'399'999).td()),
                ElementsAre("2024-03-05T23:59:59.999"));
}

// A time scale with leap seconds has, now and then, a day with one second more.
TEST(EpochTimeTest, LeapSecond_StandsBehindTheDay) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2016, 12, 31, 1).time(86'400'999).td().time(0).td()),
                ElementsAre("2017-01-01T00:00:00.999", "2017-01-01T00:00:00.000"));
}

TEST(EpochTimeTest, ShortBodies_ArePassedOver) {
    EXPECT_THAT(timesOf(LogBuilder().rd(2024, 3, 5).message("~~", "123").td()), ElementsAre("-"));
    EXPECT_THAT(timesOf(LogBuilder().time(1000).message("RD", std::string("\xE8\x07\x03", 3)).td()),
                ElementsAre("-"));
}

TEST(EpochTimeTest, CollectorsDate_MovesOnWithTheEpochs) {
    EpochCollector collector;
    LogBuilder log;
    log.rd(2024, 3, 5).time(beforeMidnight).td().time(0).td();
    LogReader reader(testsupport::bytesOf(log.bytes()));
    EXPECT_FALSE(collector.date());
    while (reader.next() == LogItem::message) {
        collector.add(reader.message());
    }
    EXPECT_EQ(collector.date(), dateOf(2024, 3, 6));
}

}  // namespace
}  // namespace orbconv::reading
