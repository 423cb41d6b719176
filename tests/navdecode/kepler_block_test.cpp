#include "navdecode/kepler_block.h"

#include <gtest/gtest.h>

#include "support/nav_survey.h"

namespace {
namespace keplerBlockTest {

using namespace orbconv;
using samplelog::LogBuilder;
using testsupport::bitsOf;
using testsupport::bodyWithField;
using testsupport::NavSurvey;

constexpr double exactPi = 3.141592653589793;

// What one `IE` with these 122 bytes leaves in the NavIC table.
KeplerBlock decodedBytes(const std::string& body) {
    NavSurvey survey;
    survey.feed(LogBuilder().message("IE", body));
    return survey.tables().navic.slots.at(0).kepler;
}

KeplerBlock decoded(const samplelog::KeplerBlock& block) {
    NavSurvey survey;
    survey.feed(LogBuilder().ie(block));
    return survey.tables().navic.slots.at(0).kepler;
}

using FieldRow = testsupport::WireField<KeplerBlock>;

// clang-format off
const FieldRow fieldRows[] = {
    {"sv",         0, 1, 0x12,              [](const KeplerBlock& k) -> double { return k.sv; },       18},
    {"tot",        1, 4, 0x12345678,        [](const KeplerBlock& k) -> double { return k.tot; },      305419896},
    {"flags",      5, 1, 0xA6,              [](const KeplerBlock& k) -> double { return k.l2Flags; },  166},
    {"iodc",       6, 2, 0x0123,            [](const KeplerBlock& k) -> double { return k.iodc; },     291},
    {"toc",        8, 4, 0x12345678,        [](const KeplerBlock& k) -> double { return k.toc; },      305419896},
    {"uraIndex",  12, 1, 0x0F,              [](const KeplerBlock& k) -> double { return k.accuracy; }, 8192},
    {"health",    13, 1, 0x3F,              [](const KeplerBlock& k) -> double { return k.health; },   63},
    {"week",      14, 2, 0x0100,            [](const KeplerBlock& k) -> double { return k.week; },     256 + 2048},
    {"tgd",       16, 4, bitsOf(1.5F),      [](const KeplerBlock& k) -> double { return k.tgd; },      1.5},
    {"af2",       20, 4, bitsOf(2.5F),      [](const KeplerBlock& k) -> double { return k.af2; },      2.5},
    {"af1",       24, 4, bitsOf(3.5F),      [](const KeplerBlock& k) -> double { return k.af1; },      3.5},
    {"af0",       28, 4, bitsOf(4.5F),      [](const KeplerBlock& k) -> double { return k.af0; },      4.5},
    {"toe",       32, 4, 0x12345678,        [](const KeplerBlock& k) -> double { return k.toe; },      305419896},
    {"iode",      36, 2, 0x0123,            [](const KeplerBlock& k) -> double { return k.iode; },     291},
    {"sqrtA",     38, 8, bitsOf(5153.0625), [](const KeplerBlock& k) -> double { return k.sqrtA; },    5153.0625},
    {"e",         46, 8, bitsOf(0.015625),  [](const KeplerBlock& k) -> double { return k.e; },        0.015625},
    {"M0",        54, 8, bitsOf(0.1),       [](const KeplerBlock& k) -> double { return k.M0; },       0.1 * exactPi},
    {"Omega0",    62, 8, bitsOf(0.2),       [](const KeplerBlock& k) -> double { return k.Omega0; },   0.2 * exactPi},
    {"i0",        70, 8, bitsOf(0.3),       [](const KeplerBlock& k) -> double { return k.i0; },       0.3 * exactPi},
    {"omega",     78, 8, bitsOf(0.7),       [](const KeplerBlock& k) -> double { return k.omega; },    0.7 * exactPi},
    {"deltaN",    86, 4, bitsOf(1.0F),      [](const KeplerBlock& k) -> double { return k.deltaN; },   3.1415927410125732},
    {"OmegaDot",  90, 4, bitsOf(0.5F),      [](const KeplerBlock& k) -> double { return k.OmegaDot; }, 1.5707963705062866},
    {"IDOT",      94, 4, bitsOf(0.25F),     [](const KeplerBlock& k) -> double { return k.IDOT; },     0.7853981852531433},
    {"Crc",       98, 4, bitsOf(5.5F),      [](const KeplerBlock& k) -> double { return k.Crc; },      5.5},
    {"Crs",      102, 4, bitsOf(6.5F),      [](const KeplerBlock& k) -> double { return k.Crs; },      6.5},
    {"Cuc",      106, 4, bitsOf(7.5F),      [](const KeplerBlock& k) -> double { return k.Cuc; },      7.5},
    {"Cus",      110, 4, bitsOf(8.5F),      [](const KeplerBlock& k) -> double { return k.Cus; },      8.5},
    {"Cic",      114, 4, bitsOf(9.5F),      [](const KeplerBlock& k) -> double { return k.Cic; },      9.5},
    {"Cis",      118, 4, bitsOf(10.5F),     [](const KeplerBlock& k) -> double { return k.Cis; },      10.5},
};
// clang-format on

class KeplerBlockField : public testing::TestWithParam<FieldRow> {};

TEST_P(KeplerBlockField, StandsAtItsOffsetWithItsWidth) {
    const FieldRow& row = GetParam();
    EXPECT_EQ(row.read(decodedBytes(bodyWithField(122, row.offset, row.width, row.put))), row.expected);
}

INSTANTIATE_TEST_SUITE_P(AllFields, KeplerBlockField, testing::ValuesIn(fieldRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(KeplerBlock, IodcIsSigned) {
    EXPECT_EQ(decoded({.iodc = -2}).iodc, -2);
}

TEST(KeplerBlock, IodeReadsBackAsNonNegative) {
    EXPECT_EQ(decoded({.iode = -1}).iode, 65535);
}

TEST(KeplerBlock, HealthIsUnsigned) {
    EXPECT_EQ(decoded({.health = 255}).health, 255);
}

TEST(KeplerBlock, TocAndToeAreSigned) {
    const KeplerBlock kepler = decoded({.toc = -5, .toe = -6});
    EXPECT_EQ(kepler.toc, -5);
    EXPECT_EQ(kepler.toe, -6);
}

TEST(KeplerBlock, TransmissionTimeIsUnsigned) {
    EXPECT_EQ(decoded({.tot = 4294967295U}).tot, 4294967295U);
}

TEST(KeplerBlock, DoubleAnglesAreMultipliedInDouble) {
    EXPECT_EQ(decoded({.M0 = -1.0}).M0, -3.141592653589793);
    EXPECT_EQ(decoded({.omega = 1.0 / 3.0}).omega, 1.0 / 3.0 * exactPi);
}

// 0.3F and 0.6F in single precision times pi in single precision would end in another last bit.
TEST(KeplerBlock, SingleAnglesAreWidenedMultipliedAndNarrowed) {
    const KeplerBlock kepler = decoded({.deltaN = 0.3F, .OmegaDot = 1.1F, .IDOT = 0.6F});
    EXPECT_EQ(kepler.deltaN, 0.942477822303772F);
    EXPECT_EQ(kepler.OmegaDot, 3.455751895904541F);
    EXPECT_EQ(kepler.IDOT, 1.884955644607544F);
    EXPECT_NE(kepler.deltaN, 0.3F * 3.1415927F);
}

TEST(KeplerBlock, HarmonicTermsAreNotScaled) {
    EXPECT_EQ(decoded({.Cus = 1.0e-6F}).Cus, 1.0e-6F);
}

struct AccuracyRow {
    int index;
    int metres;
};

class Accuracy : public testing::TestWithParam<AccuracyRow> {};

TEST_P(Accuracy, InMetresFollowsTheIndex) {
    EXPECT_EQ(accuracyInMetres(static_cast<std::int8_t>(GetParam().index)), GetParam().metres);
}

INSTANTIATE_TEST_SUITE_P(UpTo6_PowerOfTheHalvedIndexPlus1, Accuracy,
                         testing::Values(AccuracyRow{0, 2}, AccuracyRow{1, 2}, AccuracyRow{2, 4},
                                         AccuracyRow{3, 4}, AccuracyRow{4, 8}, AccuracyRow{5, 8},
                                         AccuracyRow{6, 16}));
INSTANTIATE_TEST_SUITE_P(From7To15_PowerOfTheIndexMinus2, Accuracy,
                         testing::Values(AccuracyRow{7, 32}, AccuracyRow{8, 64}, AccuracyRow{9, 128},
                                         AccuracyRow{10, 256}, AccuracyRow{11, 512}, AccuracyRow{12, 1024},
                                         AccuracyRow{13, 2048}, AccuracyRow{14, 4096},
                                         AccuracyRow{15, 8192}));
INSTANTIATE_TEST_SUITE_P(Above15_TheIndexItself, Accuracy,
                         testing::Values(AccuracyRow{16, 16}, AccuracyRow{17, 17}, AccuracyRow{127, 127}));
INSTANTIATE_TEST_SUITE_P(Negative_TruncatesTowardZero, Accuracy,
                         testing::Values(AccuracyRow{-1, 2}, AccuracyRow{-2, 1}, AccuracyRow{-3, 1},
                                         AccuracyRow{-4, 0}, AccuracyRow{-5, 0}, AccuracyRow{-128, 0}));

}  // namespace keplerBlockTest
}  // namespace
