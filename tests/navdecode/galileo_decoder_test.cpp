#include <gtest/gtest.h>

#include "support/nav_survey.h"

namespace {
namespace galileoDecoderTest {

using namespace orbconv;
using samplelog::GalileoBody;
using samplelog::LogBuilder;
using testsupport::bitsOf;
using testsupport::bodyWithField;
using testsupport::NavSurvey;

GalileoEphemeris decoded(const GalileoBody& body) {
    NavSurvey survey;
    survey.feed(LogBuilder().en(body));
    return survey.tables().galileo.slots.at(0);
}

using FieldRow = testsupport::WireField<GalileoEphemeris>;

// clang-format off
const FieldRow fieldRows[] = {
    {"sv",         0, 1, 0x12,         [](const GalileoEphemeris& e) -> double { return e.kepler.sv; },       18},
    {"uraIndex",  12, 1, 0x0F,         [](const GalileoEphemeris& e) -> double { return e.kepler.accuracy; }, 15},
    {"toe",       32, 4, 0x12345678,   [](const GalileoEphemeris& e) -> double { return e.kepler.toe; },      305419896},
    {"Cis",      118, 4, bitsOf(0.5F), [](const GalileoEphemeris& e) -> double { return e.kepler.Cis; },      0.5},
    {"bgdE5a",   122, 4, bitsOf(1.5F), [](const GalileoEphemeris& e) -> double { return e.bgdE5a; },          1.5},
    {"bgdE5b",   126, 4, bitsOf(2.5F), [](const GalileoEphemeris& e) -> double { return e.bgdE5b; },          2.5},
    {"ai0",      130, 4, bitsOf(3.5F), [](const GalileoEphemeris& e) -> double { return e.ai0; },             3.5},
    {"ai1",      134, 4, bitsOf(4.5F), [](const GalileoEphemeris& e) -> double { return e.ai1; },             4.5},
    {"ai2",      138, 4, bitsOf(5.5F), [](const GalileoEphemeris& e) -> double { return e.ai2; },             5.5},
    {"ionFlags", 142, 1, 0xA5,         [](const GalileoEphemeris& e) -> double { return e.ionFlags; },        165},
    {"navFlags", 143, 1, 0x5A,         [](const GalileoEphemeris& e) -> double { return e.navFlags; },        90},
};
// clang-format on

class GalileoField : public testing::TestWithParam<FieldRow> {};

TEST_P(GalileoField, StandsAtItsOffsetWithItsWidth) {
    const FieldRow& row = GetParam();
    NavSurvey survey;
    survey.feed(LogBuilder().message("EN", bodyWithField(148, row.offset, row.width, row.put)));
    EXPECT_EQ(row.read(survey.tables().galileo.slots.at(0)), row.expected);
}

INSTANTIATE_TEST_SUITE_P(AllFields, GalileoField, testing::ValuesIn(fieldRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(GalileoEphemeris, WeekIsOffsetBy1024) {
    EXPECT_EQ(decoded({.kepler = {.week = 1200}}).kepler.week, 2224);
    EXPECT_EQ(decoded({.kepler = {.week = 32767}}).kepler.week, -31745);
}

TEST(GalileoEphemeris, AccuracyKeepsTheRawIndex) {
    EXPECT_EQ(decoded({.kepler = {.uraIndex = 107}}).kepler.accuracy, 107);
    EXPECT_EQ(decoded({.kepler = {.uraIndex = -3}}).kepler.accuracy, -3);
}

TEST(GalileoEphemeris, DateTimeOfDayAndTimeBaseAreSet) {
    NavSurvey survey;
    survey.feed(LogBuilder().rd(2024, 3, 5, 3).en({.kepler = {.toe = 7261}}));
    const ClockReading& epoch = survey.tables().galileo.slots.at(0).epoch;
    EXPECT_EQ(epoch.day, 5.0F);
    EXPECT_EQ(epoch.hour, 2.0F);
    EXPECT_EQ(epoch.second, 1.0F);
    EXPECT_EQ(epoch.timeBase, 3.0F);
}

TEST(GalileoEphemeris, LengthOfTheMessageIsNotLookedAt) {
    NavSurvey survey;
    survey.feed(LogBuilder().message("EN", bodyWithField(159, 32, 4, 7200)));
    EXPECT_EQ(survey.tables().galileo.slots.at(0).kepler.toe, 7200);
}

// ---- SISA ----

struct SisaRow {
    int index;
    float metres;
};

class Sisa : public testing::TestWithParam<SisaRow> {};

TEST_P(Sisa, InMetresFollowsTheIndex) {
    const auto index = static_cast<std::int8_t>(GetParam().index);
    EXPECT_FLOAT_EQ(decoded({.kepler = {.uraIndex = index}}).sisa, GetParam().metres);
}

INSTANTIATE_TEST_SUITE_P(EndsOfTheRanges, Sisa,
                         testing::Values(SisaRow{0, 0.0F}, SisaRow{1, 0.01F}, SisaRow{49, 0.49F},
                                         SisaRow{50, 0.5F}, SisaRow{74, 0.98F}, SisaRow{75, 1.0F},
                                         SisaRow{99, 1.96F}, SisaRow{100, 2.0F}, SisaRow{101, 2.16F},
                                         SisaRow{125, 6.0F}, SisaRow{126, -1.0F}, SisaRow{127, -1.0F}));

// The sum in double and narrowed afterwards would end in another last bit for all of these.
class SisaRounding : public testing::TestWithParam<SisaRow> {};

TEST_P(SisaRounding, ProductIsNarrowedAheadOfTheSum) {
    const auto index = static_cast<std::int8_t>(GetParam().index);
    EXPECT_EQ(decoded({.kepler = {.uraIndex = index}}).sisa, GetParam().metres);
}

INSTANTIATE_TEST_SUITE_P(Indices, SisaRounding,
                         testing::Values(SisaRow{58, static_cast<float>(8 * 0.02) + 0.5F},
                                         SisaRow{67, static_cast<float>(17 * 0.02) + 0.5F},
                                         SisaRow{83, static_cast<float>(8 * 0.04) + 1.0F},
                                         SisaRow{96, static_cast<float>(21 * 0.04) + 1.0F},
                                         SisaRow{104, static_cast<float>(4 * 0.16) + 2.0F},
                                         SisaRow{123, static_cast<float>(23 * 0.16) + 2.0F}));

TEST(Sisa, NegativeIndexLeavesWhatADroppedMessageLeft) {
    NavSurvey survey;
    survey.feed(LogBuilder()
                    .en({.kepler = {.sv = 1, .uraIndex = -1}})
                    .en({.kepler = {.sv = 1, .uraIndex = 100}})
                    .en({.kepler = {.sv = 2, .uraIndex = -128}}));
    ASSERT_EQ(survey.tables().galileo.count, 2);
    EXPECT_EQ(survey.tables().galileo.slots[0].sisa, 0.0F);
    EXPECT_EQ(survey.tables().galileo.slots[1].sisa, 2.0F);
}

// ---- message type and data sources ----

struct SourceRow {
    std::uint8_t navFlags;
    NavType type;
    std::int32_t dataSources;
};

class GalileoSource : public testing::TestWithParam<SourceRow> {};

TEST_P(GalileoSource, FollowsTheFlagByte) {
    const GalileoEphemeris entry = decoded({.navFlags = GetParam().navFlags});
    EXPECT_EQ(entry.navType, GetParam().type);
    EXPECT_EQ(entry.dataSources, GetParam().dataSources);
}

INSTANTIATE_TEST_SUITE_P(Flags, GalileoSource,
                         testing::Values(SourceRow{0, NavType::none, 0}, SourceRow{1, NavType::inav, 517},
                                         SourceRow{2, NavType::fnav, 258}, SourceRow{3, NavType::inav, 517},
                                         SourceRow{4, NavType::inav, 517}, SourceRow{5, NavType::inav, 517},
                                         SourceRow{6, NavType::inav, 517}, SourceRow{7, NavType::inav, 517},
                                         SourceRow{0xF8, NavType::none, 0},
                                         SourceRow{0xFA, NavType::fnav, 258}));

// What a slot shows in which a message with `droppedFlags` was dropped and one with `flags` stored.
GalileoEphemeris reused(std::uint8_t droppedFlags, std::uint8_t flags) {
    NavSurvey survey;
    const GalileoBody first = {.kepler = {.sv = 1}, .navFlags = droppedFlags};
    survey.feed(LogBuilder().en(first).en(first).en({.kepler = {.sv = 2}, .navFlags = flags}));
    return survey.tables().galileo.slots.at(1);
}

TEST(GalileoSource, BitsOfADroppedMessageStayInTheSlot) {
    EXPECT_EQ(reused(1, 2).dataSources, 775);
    EXPECT_EQ(reused(1, 2).navType, NavType::fnav);
    EXPECT_EQ(reused(2, 1).dataSources, 775);
    EXPECT_EQ(reused(2, 1).navType, NavType::inav);
    EXPECT_EQ(reused(1, 4).dataSources, 517);
}

TEST(GalileoSource, WithoutAFlagTypeAndSourcesStayAsTheSlotHeldThem) {
    EXPECT_EQ(reused(2, 0).navType, NavType::fnav);
    EXPECT_EQ(reused(2, 0).dataSources, 258);
}

// ---- duplicates ----

std::int32_t countOf(std::uint8_t firstFlags, std::uint8_t secondFlags) {
    NavSurvey survey;
    survey.feed(LogBuilder().en({.navFlags = firstFlags}).en({.navFlags = secondFlags}));
    return survey.tables().galileo.count;
}

TEST(GalileoDuplicate, FormsOfOneEphemerisAreTwoEntries) {
    EXPECT_EQ(countOf(1, 2), 2);
}

TEST(GalileoDuplicate, EachOfTheThreeLowFlagsIsCompared) {
    EXPECT_EQ(countOf(1, 5), 2);
    EXPECT_EQ(countOf(1, 3), 2);
    EXPECT_EQ(countOf(0, 1), 2);
    EXPECT_EQ(countOf(5, 5), 1);
}

TEST(GalileoDuplicate, OtherFlagsAreNotCompared) {
    EXPECT_EQ(countOf(1, 0xF9), 1);
}

}  // namespace galileoDecoderTest
}  // namespace
