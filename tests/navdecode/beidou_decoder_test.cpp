#include <gtest/gtest.h>

#include "support/nav_survey.h"

namespace {

using namespace orbconv;
using samplelog::BeidouBody;
using samplelog::LogBuilder;
using testsupport::bitsOf;
using testsupport::bodyWithField;
using testsupport::NavSurvey;

BeidouEphemeris firstOf(const LogBuilder& log) {
    NavSurvey survey;
    survey.feed(log);
    return survey.tables().beidou.slots.at(0);
}

// The entry of satellite 2 in the slot where a message of satellite 1, `dropped`, was dropped before.
BeidouEphemeris behindDropped(const LogBuilder& dropped, const LogBuilder& stored) {
    NavSurvey survey;
    survey.feed(LogBuilder().cn134({.kepler = {.sv = 1}, .navFlags = 8})).feed(dropped).feed(stored);
    EXPECT_EQ(survey.tables().beidou.count, 2);
    EXPECT_EQ(survey.tables().beidou.slots.at(1).kepler.sv, 2);
    return survey.tables().beidou.slots.at(1);
}

constexpr BeidouBody cnavBody(std::uint8_t sv) {
    return {.kepler = {.sv = sv}, .navFlags = 8, .adot = 0.1, .deltaNDot = 0.3F, .sisai = 1.5F};
}

using FieldRow = testsupport::WireField<BeidouEphemeris>;

// clang-format off
// The fields that every form has, and those of lengths 134 and 152.
const FieldRow commonRows[] = {
    {"sv",         0, 1, 0x12,         [](const BeidouEphemeris& c) -> double { return c.kepler.sv; },  18},
    {"toe",       32, 4, 0x12345678,   [](const BeidouEphemeris& c) -> double { return c.kepler.toe; }, 305419896},
    {"Cis",      118, 4, bitsOf(0.5F), [](const BeidouEphemeris& c) -> double { return c.kepler.Cis; }, 0.5},
    {"tgd2",     122, 4, bitsOf(1.5F), [](const BeidouEphemeris& c) -> double { return c.tgd2; },       1.5},
    {"navFlags", 126, 1, 0x5A,         [](const BeidouEphemeris& c) -> double { return c.navFlags; },   90},
};
const FieldRow rows134[] = {
    {"aodc", 131, 1, 0x81, [](const BeidouEphemeris& c) -> double { return c.aodc; }, 129},
    {"aode", 132, 1, 0x82, [](const BeidouEphemeris& c) -> double { return c.aode; }, 130},
};
const FieldRow rows152[] = {
    {"adot",      131, 8, bitsOf(0.1),  [](const BeidouEphemeris& c) -> double { return c.adot; },      0.1},
    {"deltaNDot", 139, 4, bitsOf(0.5F), [](const BeidouEphemeris& c) -> double { return c.deltaNDot; }, 0.5},
    {"sisai",     143, 4, bitsOf(1.5F), [](const BeidouEphemeris& c) -> double { return c.sisai; },     1.5},
};
// clang-format on

class BeidouCommonField : public testing::TestWithParam<FieldRow> {};
class BeidouField134 : public testing::TestWithParam<FieldRow> {};
class BeidouField152 : public testing::TestWithParam<FieldRow> {};

double readFrom(std::size_t length, const FieldRow& row) {
    const std::string body = bodyWithField(length - 1, row.offset, row.width, row.put);
    return row.read(firstOf(LogBuilder().message("CN", body)));
}

TEST_P(BeidouCommonField, StandsAtItsOffsetInEveryForm) {
    for (const std::size_t length : {134U, 152U, 160U}) {
        EXPECT_EQ(readFrom(length, GetParam()), GetParam().expected) << length;
    }
}
TEST_P(BeidouField134, StandsAtItsOffset) {
    EXPECT_EQ(readFrom(134, GetParam()), GetParam().expected);
}
TEST_P(BeidouField152, StandsAtItsOffset) {
    EXPECT_EQ(readFrom(152, GetParam()), GetParam().expected);
}

constexpr auto nameOfRow = [](const auto& row) { return std::string(row.param.name); };
INSTANTIATE_TEST_SUITE_P(AllFields, BeidouCommonField, testing::ValuesIn(commonRows), nameOfRow);
INSTANTIATE_TEST_SUITE_P(AllFields, BeidouField134, testing::ValuesIn(rows134), nameOfRow);
INSTANTIATE_TEST_SUITE_P(AllFields, BeidouField152, testing::ValuesIn(rows152), nameOfRow);

TEST(BeidouEphemeris, WeekHasNoOffset) {
    EXPECT_EQ(firstOf(LogBuilder().cn134({.kepler = {.week = 900}})).kepler.week, 900);
}

TEST(BeidouEphemeris, AccuracyIsInMetres) {
    EXPECT_EQ(firstOf(LogBuilder().cn134({.kepler = {.uraIndex = 8}})).kepler.accuracy, 64);
    EXPECT_EQ(firstOf(LogBuilder().cn160({.kepler = {.uraIndex = 1}})).kepler.accuracy, 2);
}

TEST(BeidouEphemeris, DateTimeOfDayAndTimeBaseAreSet) {
    const ClockReading epoch = firstOf(LogBuilder().rd(2024, 3, 5, 1).cn152({.kepler = {.toe = 7261}})).epoch;
    EXPECT_EQ(epoch.month, 3.0F);
    EXPECT_EQ(epoch.hour, 2.0F);
    EXPECT_EQ(epoch.minute, 1.0F);
    EXPECT_EQ(epoch.timeBase, 1.0F);
}

TEST(BeidouEphemeris, SatelliteTypeIsNeverFilled) {
    EXPECT_EQ(firstOf(LogBuilder().message("CN", std::string(159, '\xFF'))).satType, 0);
}

// ---- message type ----

struct NavTypeRow {
    std::uint8_t sv;
    std::uint8_t navFlags;
    NavType type;
};

class BeidouNavType : public testing::TestWithParam<NavTypeRow> {};

TEST_P(BeidouNavType, FollowsFlagsAndSatelliteInEveryForm) {
    const BeidouBody body = {.kepler = {.sv = GetParam().sv}, .navFlags = GetParam().navFlags};
    EXPECT_EQ(firstOf(LogBuilder().cn134(body)).navType, GetParam().type);
    EXPECT_EQ(firstOf(LogBuilder().cn152(body)).navType, GetParam().type);
    EXPECT_EQ(firstOf(LogBuilder().cn160(body)).navType, GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(D1AndD2, BeidouNavType,
                         testing::Values(NavTypeRow{5, 1, NavType::d2}, NavTypeRow{6, 1, NavType::d1},
                                         NavTypeRow{5, 2, NavType::d2}, NavTypeRow{6, 2, NavType::d1},
                                         NavTypeRow{1, 4, NavType::d2}, NavTypeRow{61, 4, NavType::d1},
                                         NavTypeRow{0, 1, NavType::d2}, NavTypeRow{255, 7, NavType::d1}));
INSTANTIATE_TEST_SUITE_P(LowFlagsWin, BeidouNavType,
                         testing::Values(NavTypeRow{6, 9, NavType::d1}, NavTypeRow{5, 0x22, NavType::d2},
                                         NavTypeRow{6, 0xFF, NavType::d1}));
INSTANTIATE_TEST_SUITE_P(Cnav, BeidouNavType,
                         testing::Values(NavTypeRow{6, 8, NavType::cnv1}, NavTypeRow{5, 8, NavType::cnv1},
                                         NavTypeRow{6, 0x20, NavType::cnv2},
                                         NavTypeRow{6, 0x40, NavType::cnv3},
                                         NavTypeRow{6, 0x68, NavType::cnv1},
                                         NavTypeRow{6, 0x60, NavType::cnv2}));
INSTANTIATE_TEST_SUITE_P(NoKnownFlag, BeidouNavType,
                         testing::Values(NavTypeRow{6, 0, NavType::none}, NavTypeRow{6, 0x10, NavType::none},
                                         NavTypeRow{6, 0x80, NavType::none}));

TEST(BeidouNavType, StaysAsTheSlotHeldItWithoutAFlag) {
    const BeidouEphemeris entry = behindDropped(LogBuilder().cn134({.kepler = {.sv = 1}, .navFlags = 0x40}),
                                                LogBuilder().cn134({.kepler = {.sv = 2}, .navFlags = 0}));
    EXPECT_EQ(entry.navType, NavType::cnv3);
}

// ---- what each length stores ----

TEST(BeidouLength134, LeavesTheCnavFieldsAsTheSlotHeldThem) {
    const BeidouEphemeris entry =
        behindDropped(LogBuilder().cn152(cnavBody(1)), LogBuilder().cn134({.kepler = {.sv = 2}}));
    EXPECT_EQ(entry.adot, 0.1);
    EXPECT_EQ(entry.sisai, 1.5F);
}

TEST(BeidouLength152, LeavesTheAgesAsTheSlotHeldThem) {
    const BeidouBody ages = {.kepler = {.sv = 1}, .aodc = 3, .aode = 4};
    const BeidouEphemeris entry =
        behindDropped(LogBuilder().cn134(ages), LogBuilder().cn152({.kepler = {.sv = 2}}));
    // Satellite 1 without flags and satellite 1 with flag 8 are one key.
    EXPECT_EQ(entry.aodc, 3);
    EXPECT_EQ(entry.aode, 4);
}

TEST(BeidouLength160, StoresNoCnavField) {
    const BeidouEphemeris entry = firstOf(LogBuilder().cn160(cnavBody(1)));
    EXPECT_EQ(entry.navType, NavType::cnv1);
    EXPECT_EQ(entry.adot, 0.0);
    EXPECT_EQ(entry.deltaNDot, 0.0F);
    EXPECT_EQ(entry.sisai, 0.0F);
}

TEST(BeidouLength160, KeepsTheCnavFieldsThatADroppedMessageLeft) {
    const BeidouEphemeris entry =
        behindDropped(LogBuilder().cn152(cnavBody(1)),
                      LogBuilder().cn160({.kepler = {.sv = 2}, .navFlags = 8, .adot = 9.0, .sisai = 9.0F}));
    EXPECT_EQ(entry.adot, 0.1);
    EXPECT_EQ(entry.deltaNDot, 0.3F);
    EXPECT_EQ(entry.sisai, 1.5F);
}

TEST(BeidouLength160, StoresNoAges) {
    const std::string body(159, '\x11');
    EXPECT_EQ(firstOf(LogBuilder().message("CN", body)).aodc, 0);
    EXPECT_EQ(firstOf(LogBuilder().message("CN", body)).aode, 0);
}

// The reader takes two closing bytes and no body.
TEST(BeidouUnknownLength, StoresThePreviousBodyOnceMore) {
    NavSurvey survey;
    survey.feed(LogBuilder().cn134({.kepler = {.sv = 7, .toe = 7200}, .tgd2 = 2.5F, .navFlags = 1}));
    survey.feed(LogBuilder().messageWithLength("CN", 5, ""));
    EXPECT_EQ(survey.tables().beidou.count, 1);  // a duplicate
    const BeidouEphemeris& repeated = survey.tables().beidou.slots.at(1);
    EXPECT_EQ(repeated.kepler.sv, 0);
    EXPECT_EQ(repeated.kepler.toe, 7200);
    EXPECT_EQ(repeated.tgd2, 2.5F);
    EXPECT_EQ(repeated.navType, NavType::d1);
}

TEST(BeidouUnknownLength, OfTheFirstMessageStoresZeros) {
    const BeidouEphemeris entry = firstOf(LogBuilder().messageWithLength("CN", 5, ""));
    EXPECT_EQ(entry.kepler.sv, 0);
    EXPECT_EQ(entry.kepler.accuracy, 2);
    EXPECT_EQ(entry.navType, NavType::none);
}

// ---- duplicates ----

std::int32_t countOf(std::uint8_t firstFlags, std::uint8_t secondFlags) {
    NavSurvey survey;
    survey.feed(LogBuilder().cn134({.navFlags = firstFlags}).cn152({.navFlags = secondFlags}));
    return survey.tables().beidou.count;
}

TEST(BeidouDuplicate, OnlyTheThreeLowFlagsAreCompared) {
    EXPECT_EQ(countOf(8, 32), 1);
    EXPECT_EQ(countOf(0x41, 0x81), 1);
}

TEST(BeidouDuplicate, EachOfTheThreeLowFlagsIsCompared) {
    EXPECT_EQ(countOf(1, 8), 2);
    EXPECT_EQ(countOf(2, 3), 2);
    EXPECT_EQ(countOf(4, 0), 2);
}

}  // namespace
