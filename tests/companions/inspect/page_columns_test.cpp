#include "inspect/page_columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orbconv::inspect {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Bins of a second with these epochs.
Timeline timelineOf(std::vector<std::uint32_t> epochs) {
    Timeline timeline;
    timeline.bins = epochs.size();
    timeline.epochs = std::move(epochs);
    timeline.gaps.resize(timeline.bins);
    return timeline;
}

TEST(PageColumnsTest, Columns_AreTheBinsIfEachHasAnEpoch) {
    EXPECT_THAT(makeColumns(timelineOf({1, 1, 2}), seconds{1}, 1),
                ElementsAre(Column{0, 1}, Column{1, 2}, Column{2, 3}));
}

TEST(PageColumnsTest, Columns_HoldAsManyBinsAsAreFolded) {
    EXPECT_THAT(makeColumns(timelineOf({1, 0, 1, 1, 1}), seconds{1}, 2),
                ElementsAre(Column{0, 2}, Column{2, 4}, Column{4, 5}));
}

TEST(PageColumnsTest, EmptyBins_BelongToTheEpochIfItsIntervalLeavesThem) {
    EXPECT_THAT(makeColumns(timelineOf({1, 0, 0, 1, 0, 0, 1}), seconds{3}, 1),
                ElementsAre(Column{0, 3}, Column{3, 6}, Column{6, 7}));
}

TEST(PageColumnsTest, EmptyBins_AreAGapBehindTheEpochAtWhichOneBegins) {
    Timeline timeline = timelineOf({1, 0, 0, 1, 0, 0, 1});
    timeline.gaps[3] = 1;
    EXPECT_THAT(makeColumns(timeline, seconds{3}, 1),
                ElementsAre(Column{0, 3}, Column{3, 4}, Column{4, 6, true}, Column{6, 7}));
}

TEST(PageColumnsTest, EmptyBins_AreAGapIfTheyLastTwoIntervals) {
    EXPECT_THAT(makeColumns(timelineOf({1, 0, 0, 1}), seconds{1}, 1),
                ElementsAre(Column{0, 1}, Column{1, 3, true}, Column{3, 4}));
    EXPECT_THAT(makeColumns(timelineOf({1, 0, 0, 1}), seconds{2}, 1),
                ElementsAre(Column{0, 3}, Column{3, 4}));
}

TEST(PageColumnsTest, EmptyBins_AreAGapWithoutAnIntervalAndAtTheStart) {
    EXPECT_THAT(makeColumns(timelineOf({0, 1, 0}), std::nullopt, 1),
                ElementsAre(Column{0, 1, true}, Column{1, 2}, Column{2, 3, true}));
}

TEST(PageColumnsTest, Runs_JoinNeighboursOfLikePresence) {
    const Timeline timeline = timelineOf({2, 2, 2, 0, 2, 2});
    const auto columns = makeColumns(timeline, seconds{1}, 1);
    const std::vector<std::uint32_t> present = {2, 2, 1, 0, 2, 0};
    EXPECT_THAT(runsOf(timeline, columns, present, Presence::always, Presence::always),
                ElementsAre(ColumnRun{0, 2}, ColumnRun{4, 5}));
    EXPECT_THAT(runsOf(timeline, columns, present, Presence::sometimes, Presence::sometimes),
                ElementsAre(ColumnRun{2, 4}));
    EXPECT_THAT(runsOf(timeline, columns, present, Presence::sometimes, Presence::always),
                ElementsAre(ColumnRun{0, 5}));
    EXPECT_THAT(runsOf(timeline, columns, {}, Presence::sometimes, Presence::always), IsEmpty());
}

TEST(PageColumnsTest, RunsPath_GoesFromRunToRun) {
    const std::vector<ColumnRun> runs = {{3, 5}, {7, 8}, {20, 120}};
    EXPECT_EQ(runsPath(runs, 9), "M3 9h2m2 0h1m12 0h100");
    EXPECT_EQ(runsPath({}, 9), "");
}

const std::vector<Column> fourColumns = {{0, 2}, {2, 3}, {3, 6, true}, {6, 7}};

TEST(PageColumnsTest, StairsPath_BreaksWhereThereIsNoHeight) {
    const std::vector<std::optional<std::int64_t>> heights = {10, 20, std::nullopt, 20};
    EXPECT_EQ(stairsPath(fourColumns, heights), "M0 10H2V20H3M6 20H7");
    const std::vector<std::optional<std::int64_t>> level = {10, 10, std::nullopt, std::nullopt};
    EXPECT_EQ(stairsPath(fourColumns, level), "M0 10H2H3");
}

TEST(PageColumnsTest, AreaPath_StandsOnItsBase) {
    const std::vector<std::optional<std::int64_t>> heights = {10, 20, std::nullopt, 5};
    EXPECT_EQ(areaPath(fourColumns, heights, 99), "M0 10H2V20H3V99H0zM6 5H7V99H6z");
}

// The texts at the axis of a log of such a width, which starts at 22:59:50 of 2024-05-06.
std::vector<std::string> textsFor(std::chrono::milliseconds width, bool dated) {
    Timeline timeline = timelineOf({1});
    timeline.binWidth = width;
    timeline.start = LogTime(std::chrono::days{dated ? 19849 : 0}) + hours{23} - seconds{10};
    std::vector<std::string> texts;
    for (const Tick& tick : ticksOf(timeline, dated)) {
        EXPECT_GE(tick.share, 0.0);
        EXPECT_LE(tick.share, 1.0);
        texts.push_back(tick.text);
    }
    return texts;
}

TEST(PageColumnsTest, Ticks_StandAtRoundTimes) {
    EXPECT_THAT(textsFor(seconds{20}, true),
                ElementsAre("22:59:50", "22:59:55", "23:00:00", "23:00:05", "23:00:10"));
    EXPECT_THAT(textsFor(minutes{5}, true), ElementsAre("23:00", "23:01", "23:02", "23:03", "23:04"));
    EXPECT_THAT(textsFor(hours{24}, true),
                ElementsAre("05-07", "03:00", "06:00", "09:00", "12:00", "15:00", "18:00", "21:00"));
    EXPECT_THAT(textsFor(hours{48}, false),
                ElementsAre("00:00", "06:00", "12:00", "18:00", "00:00", "06:00", "12:00", "18:00"));
    EXPECT_THAT(textsFor(hours{24 * 3}, true),
                ElementsAre("05-07", "12:00", "05-08", "12:00", "05-09", "12:00"));
    EXPECT_THAT(textsFor(hours{24 * 7}, false),
                ElementsAre("+1 d", "+2 d", "+3 d", "+4 d", "+5 d", "+6 d", "+7 d"));
}

TEST(PageColumnsTest, Ticks_OfYearsHaveTheYear) {
    // Days that are multiples of 200 since 1970-01-01: 20000 is 2024-10-04.
    EXPECT_THAT(textsFor(hours{24 * 800}, true),
                ElementsAre("2024-10-04", "2025-04-22", "2025-11-08", "2026-05-27"));
}

TEST(PageColumnsTest, Ticks_StandWhereTheirTimeIs) {
    Timeline timeline = timelineOf({1, 1, 1, 1});
    timeline.binWidth = seconds{2};
    timeline.start = LogTime(hours{1}) + Milliseconds{500};
    const auto ticks = ticksOf(timeline, true);
    ASSERT_EQ(ticks.size(), 4U);
    EXPECT_EQ(ticks[0].share, 0.1875);  // one and a half of eight seconds
    EXPECT_EQ(ticks[3].share, 0.9375);
}

TEST(PageColumnsTest, Ticks_OfTheLongestTimesAreNoMoreThanTheirStepMakes) {
    EXPECT_EQ(textsFor(hours{24 * 36500}, true).size(), 8U);  // days 20000, 25000, ... 55000
}

}  // namespace
}  // namespace orbconv::inspect
