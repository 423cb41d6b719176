#include <gtest/gtest.h>

#include "support/nav_survey.h"

namespace {
namespace navicDecoderTest {

using namespace orbconv;
using samplelog::KeplerBlock;
using samplelog::LogBuilder;
using testsupport::NavSurvey;

NavicEphemeris decoded(const KeplerBlock& block) {
    NavSurvey survey;
    survey.feed(LogBuilder().ie(block));
    return survey.tables().navic.slots.at(0);
}

TEST(NavicEphemeris, WeekIsOffsetBy2048) {
    EXPECT_EQ(decoded({.week = 300}).kepler.week, 2348);
}

TEST(NavicEphemeris, AccuracyIsInMetres) {
    EXPECT_EQ(decoded({.uraIndex = 1}).kepler.accuracy, 2);
    EXPECT_EQ(decoded({.uraIndex = -4}).kepler.accuracy, 0);
    EXPECT_EQ(decoded({.uraIndex = 16}).kepler.accuracy, 16);
}

struct FitRow {
    std::uint8_t flags;
    std::int16_t iodc;
    float fitInterval;
};

class NavicFitInterval : public testing::TestWithParam<FitRow> {};

TEST_P(NavicFitInterval, Is4OnlyWithFlagBit0AndIodcBelow240) {
    EXPECT_EQ(decoded({.flags = GetParam().flags, .iodc = GetParam().iodc}).fitInterval,
              GetParam().fitInterval);
}

INSTANTIATE_TEST_SUITE_P(FlagsAndIodc, NavicFitInterval,
                         testing::Values(FitRow{1, 100, 4.0F}, FitRow{0, 100, 0.0F}, FitRow{0xFE, 100, 0.0F},
                                         FitRow{0xFF, 239, 4.0F}, FitRow{1, 240, 0.0F},
                                         FitRow{1, -32768, 4.0F}));

TEST(NavicEphemeris, FitIntervalStaysAsADroppedMessageLeftIt) {
    NavSurvey survey;
    const KeplerBlock without = {.sv = 1, .toe = 100};
    const KeplerBlock with = {.sv = 1, .flags = 1, .iodc = 5, .toe = 100};
    survey.feed(LogBuilder().ie(without).ie(with).ie({.sv = 2, .toe = 100}));
    ASSERT_EQ(survey.tables().navic.count, 2);
    EXPECT_EQ(survey.tables().navic.slots[0].fitInterval, 0.0F);
    EXPECT_EQ(survey.tables().navic.slots[1].fitInterval, 4.0F);
}

TEST(NavicEphemeris, HighestSatelliteNumberIsStored) {
    EXPECT_EQ(decoded({.sv = 255}).kepler.sv, 255);
}

TEST(NavicEphemeris, LengthOfTheMessageIsNotLookedAt) {
    NavSurvey survey;
    LogBuilder block;
    block.ie({.sv = 7, .toe = 7200});
    const std::string body = block.bytes().substr(5, 122);
    survey.feed(LogBuilder().message("IE", body + std::string(40, 'x')).message("IE", body.substr(0, 1)));
    ASSERT_EQ(survey.tables().navic.count, 1);  // the one-byte body shows the staged rest: a duplicate
    EXPECT_EQ(survey.tables().navic.slots[0].kepler.toe, 7200);
}

TEST(NavicEphemeris, TimeBaseIsThatOfTheEpochClock) {
    NavSurvey survey;
    survey.feed(LogBuilder().rd(2024, 3, 5, 2).ie({}));
    EXPECT_EQ(survey.tables().navic.slots.at(0).epoch.timeBase, 2.0F);
}

}  // namespace navicDecoderTest
}  // namespace
