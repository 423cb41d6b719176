#include <gtest/gtest.h>

#include "support/nav_survey.h"

namespace {
namespace gpsDecoderTest {

using namespace orbconv;
using samplelog::Closing;
using samplelog::GpsBody;
using samplelog::KeplerBlock;
using samplelog::LogBuilder;
using testsupport::bitsOf;
using testsupport::bodyWithField;
using testsupport::NavSurvey;

// The entry that the last of these messages made, if none was dropped.
GpsEphemeris lastOf(const LogBuilder& log) {
    NavSurvey survey;
    survey.feed(log);
    return survey.tables().gps.slots.at(static_cast<std::size_t>(survey.tables().gps.count - 1));
}

// A length that no form has: the reader takes two closing bytes and no body.
LogBuilder& unknownLength(LogBuilder& log) {
    return log.messageWithLength("GE", 5, "");
}

// ---- the short form ----

TEST(GpsShortForm, IsLnavWhateverItsFlags) {
    EXPECT_EQ(lastOf(LogBuilder().ge123({.flags = 0})).navType, NavType::lnav);
    EXPECT_EQ(lastOf(LogBuilder().ge123({.flags = 0xFE})).navType, NavType::lnav);
}

TEST(GpsShortForm, TakesTheSatellite) {
    EXPECT_EQ(lastOf(LogBuilder().ge123({.sv = 32})).kepler.sv, 32);
}

TEST(GpsShortForm, LeavesTheModernFieldsAsTheSlotHeldThem) {
    NavSurvey survey;
    const GpsBody dropped = {.kepler = {.sv = 1}, .navFlags = 8, .cnavToe = 77, .uraiEd = 3};
    survey.feed(LogBuilder().ge123({.sv = 1}).ge168(dropped).ge123({.sv = 2}));
    const GpsEphemeris& entry = survey.tables().gps.slots.at(1);
    EXPECT_EQ(entry.kepler.sv, 2);
    EXPECT_EQ(entry.navType, NavType::lnav);
    EXPECT_EQ(entry.navFlags, 8);
    EXPECT_EQ(entry.cnavToe, 77U);
    EXPECT_EQ(entry.uraiEd, 3);
}

// ---- what all forms share ----

TEST(GpsEphemeris, WeekIsOffsetBy2048) {
    EXPECT_EQ(lastOf(LogBuilder().ge123({.week = 300})).kepler.week, 2348);
    EXPECT_EQ(lastOf(LogBuilder().ge160({.kepler = {.week = 300}})).kepler.week, 2348);
    EXPECT_EQ(lastOf(LogBuilder().ge168({.kepler = {.week = -1}})).kepler.week, 2047);
}

TEST(GpsEphemeris, AccuracyIsInMetres) {
    EXPECT_EQ(lastOf(LogBuilder().ge123({.uraIndex = 1})).kepler.accuracy, 2);
    EXPECT_EQ(lastOf(LogBuilder().ge160({.kepler = {.uraIndex = 7}})).kepler.accuracy, 32);
    EXPECT_EQ(lastOf(LogBuilder().ge168({.kepler = {.uraIndex = 16}})).kepler.accuracy, 16);
}

TEST(GpsEphemeris, TimeOfDayIsThatOfToeInEveryForm) {
    const GpsBody body = {.kepler = {.toe = 7261}, .cnavToe = 50000};
    for (const GpsEphemeris& entry : {lastOf(LogBuilder().ge123(body.kepler)),
                                      lastOf(LogBuilder().ge160(body)), lastOf(LogBuilder().ge168(body))}) {
        EXPECT_EQ(entry.epoch.hour, 2.0F);
        EXPECT_EQ(entry.epoch.minute, 1.0F);
        EXPECT_EQ(entry.epoch.second, 1.0F);
    }
}

TEST(GpsEphemeris, DateAndTimeBaseAreThoseOfTheEpochClock) {
    const GpsEphemeris entry = lastOf(LogBuilder().rd(2024, 3, 5, 1).ge123({}));
    EXPECT_EQ(entry.epoch.year, 2024.0F);
    EXPECT_EQ(entry.epoch.month, 3.0F);
    EXPECT_EQ(entry.epoch.day, 5.0F);
    EXPECT_EQ(entry.epoch.timeBase, 1.0F);
}

struct FitRow {
    std::int16_t iodc;
    float fitInterval;
};

class GpsFitInterval : public testing::TestWithParam<FitRow> {};

// The flags have no say, unlike NavIC's.
TEST_P(GpsFitInterval, Is4ForASignedIodcBelow240) {
    EXPECT_EQ(lastOf(LogBuilder().ge123({.iodc = GetParam().iodc})).fitInterval, GetParam().fitInterval);
    EXPECT_EQ(lastOf(LogBuilder().ge168({.kepler = {.iodc = GetParam().iodc}})).fitInterval,
              GetParam().fitInterval);
}

INSTANTIATE_TEST_SUITE_P(Iodc, GpsFitInterval,
                         testing::Values(FitRow{0, 4.0F}, FitRow{239, 4.0F}, FitRow{240, 0.0F},
                                         FitRow{1023, 0.0F}, FitRow{-1, 4.0F}));

TEST(GpsEphemeris, FitIntervalStaysAsADroppedMessageLeftIt) {
    const LogBuilder log = LogBuilder()
                               .ge123({.sv = 1, .iodc = 240})
                               .ge123({.sv = 1, .iodc = 239})
                               .ge123({.sv = 2, .iodc = 240});
    EXPECT_EQ(lastOf(log).kepler.sv, 2);
    EXPECT_EQ(lastOf(log).fitInterval, 4.0F);
}

TEST(GpsEphemeris, FormsOfOneSatelliteAndToeAreDuplicates) {
    NavSurvey survey;
    const KeplerBlock block = {.sv = 9, .toe = 7200};
    survey.feed(LogBuilder().ge123(block).ge160({.kepler = block, .navFlags = 2, .cnavToe = 1}));
    survey.feed(LogBuilder().ge168({.kepler = block, .navFlags = 8, .cnavToe = 2}));
    EXPECT_EQ(survey.tables().gps.count, 1);
}

// ---- the long forms ----

struct NavTypeRow {
    std::uint8_t navFlags;
    NavType type;
};

class GpsNavType : public testing::TestWithParam<NavTypeRow> {};

TEST_P(GpsNavType, IsChosenByTheFlagByteOfALongForm) {
    const GpsBody body = {.navFlags = GetParam().navFlags};
    EXPECT_EQ(lastOf(LogBuilder().ge160(body)).navType, GetParam().type);
    EXPECT_EQ(lastOf(LogBuilder().ge168(body)).navType, GetParam().type);
}

INSTANTIATE_TEST_SUITE_P(Flags, GpsNavType,
                         testing::Values(NavTypeRow{0, NavType::none}, NavTypeRow{1, NavType::lnav},
                                         NavTypeRow{2, NavType::cnav}, NavTypeRow{3, NavType::cnav},
                                         NavTypeRow{4, NavType::cnav}, NavTypeRow{8, NavType::cnv2},
                                         NavTypeRow{9, NavType::lnav}, NavTypeRow{10, NavType::cnav},
                                         NavTypeRow{12, NavType::cnav}, NavTypeRow{16, NavType::none},
                                         NavTypeRow{0xF8, NavType::cnv2}, NavTypeRow{0xFF, NavType::cnav}));

TEST(GpsNavType, StaysAsTheSlotHeldItWithoutAFlag) {
    const LogBuilder log = LogBuilder()
                               .ge123({.sv = 1})
                               .ge168({.kepler = {.sv = 1}, .navFlags = 8})
                               .ge160({.kepler = {.sv = 2}, .navFlags = 0});
    EXPECT_EQ(lastOf(log).kepler.sv, 2);
    EXPECT_EQ(lastOf(log).navType, NavType::cnv2);
}

// Where a field stands in the bodies of lengths 160 and 168, and what a value put there becomes.
struct FieldRow {
    const char* name;
    std::size_t in160;
    std::size_t in168;
    std::size_t width;
    std::uint64_t put;
    double (*read)(const GpsEphemeris&);
    double expected160;
    double expected168;
};

// clang-format off
const FieldRow fieldRows[] = {
    {"sv",          0,   0, 1, 0x12,         [](const GpsEphemeris& g) -> double { return g.kepler.sv; }, 18, 18},
    {"navFlags",  122, 122, 1, 0x58,         [](const GpsEphemeris& g) -> double { return g.navFlags; },  88, 88},
    {"cnavToe",   123, 123, 4, 0x12345678,   [](const GpsEphemeris& g) -> double { return g.cnavToe; },   305419896, 305419896},
    {"cnavTop",   127, 127, 4, 0xFEDCBA98,   [](const GpsEphemeris& g) -> double { return g.cnavTop; },   4275878552, 4275878552},
    {"adot",      131, 131, 8, bitsOf(0.1),  [](const GpsEphemeris& g) -> double { return g.adot; },      0.1 * 3.141592653589793, 0.1},
    {"deltaNDot", 139, 139, 4, bitsOf(0.3F), [](const GpsEphemeris& g) -> double { return g.deltaNDot; }, 0.942477822303772, 0.30000001192092896},
    {"uraiEd",    143, 143, 1, 0x81,         [](const GpsEphemeris& g) -> double { return g.uraiEd; },    129, 129},
    {"uraiNed0",  144, 144, 1, 0x82,         [](const GpsEphemeris& g) -> double { return g.uraiNed0; },  130, 130},
    {"uraiNed1",  145, 145, 1, 0x83,         [](const GpsEphemeris& g) -> double { return g.uraiNed1; },  131, 131},
    {"uraiNed2",  146, 146, 1, 0x84,         [](const GpsEphemeris& g) -> double { return g.uraiNed2; },  132, 132},
    {"af0Delta",  155, 163, 4, bitsOf(1.5F), [](const GpsEphemeris& g) -> double { return g.af0Delta; },  1.5, 1.5},
};
// clang-format on

class GpsLongFormField : public testing::TestWithParam<FieldRow> {};

TEST_P(GpsLongFormField, StandsAtItsOffsetWithItsWidth) {
    const FieldRow& row = GetParam();
    const std::string body160 = bodyWithField(159, row.in160, row.width, row.put);
    EXPECT_EQ(row.read(lastOf(LogBuilder().message("GE", body160))), row.expected160);
    const std::string body168 = bodyWithField(167, row.in168, row.width, row.put);
    EXPECT_EQ(row.read(lastOf(LogBuilder().message("GE", body168))), row.expected168);
}

INSTANTIATE_TEST_SUITE_P(AllFields, GpsLongFormField, testing::ValuesIn(fieldRows),
                         [](const auto& row) { return std::string(row.param.name); });

// ---- the crossed corrections ----

constexpr GpsBody correctionsOf(std::uint8_t sv) {
    return {.kepler = {.sv = sv},
            .iscL1cp = 1.5F,
            .iscL1cd = 2.5F,
            .iscL1ca = 3.5F,
            .iscL2c = 4.5F,
            .iscL5i5 = 5.5F,
            .iscL5q5 = 6.5F};
}

void expectQuartet(const GpsEphemeris& entry, float ca, float l2c, float i5, float q5) {
    EXPECT_EQ(entry.iscL1ca, ca);
    EXPECT_EQ(entry.iscL2c, l2c);
    EXPECT_EQ(entry.iscL5i5, i5);
    EXPECT_EQ(entry.iscL5q5, q5);
}

void expectPair(const GpsEphemeris& entry, float cp, float cd) {
    EXPECT_EQ(entry.iscL1cp, cp);
    EXPECT_EQ(entry.iscL1cd, cd);
}

TEST(GpsCorrections, OwnOnesOfALongFormAreNotStored) {
    for (const GpsEphemeris& entry :
         {lastOf(LogBuilder().ge160(correctionsOf(1))), lastOf(LogBuilder().ge168(correctionsOf(1)))}) {
        expectQuartet(entry, 0, 0, 0, 0);
        expectPair(entry, 0, 0);
    }
}

TEST(GpsCorrections, Length160StoresTheQuartetOfTheLastLength168) {
    const GpsEphemeris entry = lastOf(LogBuilder().ge168(correctionsOf(1)).ge160({.kepler = {.sv = 2}}));
    expectQuartet(entry, 3.5F, 4.5F, 5.5F, 6.5F);
    expectPair(entry, 0, 0);
}

TEST(GpsCorrections, Length168StoresThePairOfTheLastLength160) {
    const GpsEphemeris entry = lastOf(LogBuilder().ge160(correctionsOf(1)).ge168({.kepler = {.sv = 2}}));
    expectPair(entry, 1.5F, 2.5F);
    expectQuartet(entry, 0, 0, 0, 0);
}

TEST(GpsCorrections, ShortFormBetweenDisturbsNothing) {
    const LogBuilder log = LogBuilder().ge168(correctionsOf(1)).ge123({.sv = 3}).ge160({.kepler = {.sv = 2}});
    expectQuartet(lastOf(log), 3.5F, 4.5F, 5.5F, 6.5F);
}

TEST(GpsCorrections, AlmanacOverwritesWhatIsStaged) {
    std::string almanac(177, '\0');
    almanac.replace(147, 4, std::string("\0\0\xC0\x3F", 4));  // 1.5
    almanac.replace(163, 4, std::string("\0\0\x20\x40", 4));  // 2.5
    NavSurvey survey;
    survey.feed(LogBuilder().ge168(correctionsOf(1)).message("GA", almanac));
    EXPECT_EQ(survey.tables().gps.count, 1);  // it is no ephemeris itself
    survey.feed(LogBuilder().ge160({.kepler = {.sv = 2}}));
    expectQuartet(survey.tables().gps.slots.at(1), 1.5F, 0, 0, 0);
    survey.feed(LogBuilder().message("GA", almanac).ge168({.kepler = {.sv = 3}}));
    expectPair(survey.tables().gps.slots.at(2), 2.5F, 0);
}

// ---- lengths without a form ----

TEST(GpsUnknownLength, RepeatsTheBodyBeforeWithoutASatellite) {
    LogBuilder log;
    log.ge123({.sv = 5, .iodc = 300, .uraIndex = 7, .week = 300, .toe = 7200, .sqrtA = 5153.5});
    const GpsEphemeris entry = lastOf(unknownLength(log));
    EXPECT_EQ(entry.kepler.sv, 0);
    EXPECT_EQ(entry.kepler.toe, 7200);
    EXPECT_EQ(entry.kepler.week, 2348);
    EXPECT_EQ(entry.kepler.accuracy, 32);
    EXPECT_EQ(entry.kepler.sqrtA, 5153.5);
    EXPECT_EQ(entry.epoch.hour, 2.0F);
    EXPECT_EQ(entry.navType, NavType::none);
}

TEST(GpsUnknownLength, IsCountedOnceForEachToe) {
    LogBuilder log;
    unknownLength(unknownLength(log.ge123({.sv = 5, .toe = 7200})));
    unknownLength(log.ge123({.sv = 5, .toe = 14400}));
    NavSurvey survey;
    survey.feed(log);
    ASSERT_EQ(survey.tables().gps.count, 4);
    EXPECT_EQ(survey.tables().gps.slots[1].kepler.sv, 0);
    EXPECT_EQ(survey.tables().gps.slots[2].kepler.sv, 5);
    EXPECT_EQ(survey.tables().gps.slots[3].kepler.toe, 14400);
}

TEST(GpsUnknownLength, OfTheFirstMessageStoresZeros) {
    LogBuilder log;
    const GpsEphemeris entry = lastOf(unknownLength(log));
    EXPECT_EQ(entry.kepler.sv, 0);
    EXPECT_EQ(entry.kepler.accuracy, 2);
    EXPECT_EQ(entry.kepler.week, 2048);
}

TEST(GpsUnknownLength, StoresTheBytesOfAnAlmanac) {
    std::string almanac(40, '\0');
    almanac[32] = 10;  // toe
    LogBuilder log;
    log.ge123({.sv = 5, .toe = 7200}).message("GA", almanac);
    EXPECT_EQ(lastOf(unknownLength(log)).kepler.toe, 10);
}

TEST(QzssEphemeris, GoesToNoTable) {
    NavSurvey survey;
    LogBuilder block;
    block.ge123({.sv = 5});
    survey.feed(LogBuilder().message("QE", block.bytes().substr(5, 122)));
    EXPECT_EQ(survey.tables().gps.count, 0);
    EXPECT_TRUE(survey.tables().gps.slots.empty());
}

}  // namespace gpsDecoderTest
}  // namespace
