#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "navfile/ephemeris_records.h"
#include "support/nav_records.h"

namespace {

using namespace orbconv;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testsupport::valueAt;
using testsupport::withFirstLine;

using Lines = std::vector<std::string>;

class GlonassRecords : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();
    // Satellite 5 with every printed field different.
    GlonassEphemeris& entry = add(5);

    GlonassEphemeris& add(std::int32_t sv) {
        tables->glonass.slots.reserve(4);  // so that `entry` stays where it is
        GlonassEphemeris& added = testsupport::append(tables->glonass);
        added.sv = sv;
        added.epoch = testsupport::recordEpoch();
        added.tauN = 1;
        added.gamma = 2;
        added.dayNumber = 1;
        added.tk = 100;
        added.tb = 14400;
        added.x = 4;
        added.vx = 5;
        added.ax = 6;
        added.healthByte = 1;
        added.y = 7;
        added.vy = 8;
        added.ay = 9;
        added.frequency = -7;
        added.z = 10;
        added.vz = 11;
        added.az = 12;
        added.age = 13;
        return added;
    }
    Lines lines(double version) { return testsupport::recordsOf(writeGlonassRecords, *tables, version); }
    std::string value(std::size_t line, std::size_t place) { return valueAt(lines(3.05).at(line), place); }
};

// The frame time is 86400 - 10800 + 100.
const Lines record = {"R05 2024 03 05 06 07 08-1.000000000000D+00 2.000000000000D+00 7.570000000000D+04",
                      "     4.000000000000D+00 5.000000000000D+00 6.000000000000D+00 1.000000000000D+00",
                      "     7.000000000000D+00 8.000000000000D+00 9.000000000000D+00-7.000000000000D+00",
                      "     1.000000000000D+01 1.100000000000D+01 1.200000000000D+01 1.300000000000D+01"};

TEST_F(GlonassRecords, Below4HasNoEphLine) {
    EXPECT_EQ(lines(3.05), record);
}

TEST_F(GlonassRecords, From4OnHasAnEphLineTheSameLinesAndNoMore) {
    EXPECT_EQ(lines(4.0), withFirstLine("> EPH R05 FDMA", record));
    EXPECT_EQ(lines(4.01), withFirstLine("> EPH R05 FDMA", record));
}

TEST_F(GlonassRecords, DeadEntriesAreSkipped) {
    add(0);
    EXPECT_THAT(lines(3.05), SizeIs(4));
    entry.sv = 0;
    EXPECT_THAT(lines(4.01), IsEmpty());
}

TEST_F(GlonassRecords, LiveEntryPastTheCountIsWritten) {
    add(9);
    tables->glonass.count = 1;
    EXPECT_THAT(lines(3.05), SizeIs(8));
    EXPECT_EQ(lines(4.01).at(5), "> EPH R09 FDMA");
}

TEST_F(GlonassRecords, ClockBiasOf0PrintsWithAMinusSign) {
    entry.tauN = 0.0F;
    EXPECT_EQ(value(0, 1), "-0.000000000000D+00");
    entry.tauN = -0.0F;
    EXPECT_EQ(value(0, 1), " 0.000000000000D+00");
    entry.tauN = -0.5F;
    EXPECT_EQ(value(0, 1), " 5.000000000000D-01");
}

TEST_F(GlonassRecords, ClockBiasThatIsNoNumberKeepsItsSign) {
    entry.tauN = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(value(0, 1), "                nan");
}

TEST_F(GlonassRecords, XAndZAreNarrowedAndYIsNot) {
    entry.x = entry.y = entry.z = 0.1;
    EXPECT_EQ(value(1, 0), " 1.000000014901D-01");
    EXPECT_EQ(value(2, 0), " 1.000000000000D-01");
    EXPECT_EQ(value(3, 0), " 1.000000014901D-01");
}

TEST_F(GlonassRecords, HealthIsTheLowestBit) {
    entry.healthByte = 0xFE;
    EXPECT_EQ(value(1, 3), " 0.000000000000D+00");
    entry.healthByte = 0xFF;
    EXPECT_EQ(value(1, 3), " 1.000000000000D+00");
}

TEST_F(GlonassRecords, AgeIsUnsigned) {
    entry.age = 255;
    EXPECT_EQ(value(3, 3), " 2.550000000000D+02");
}

TEST_F(GlonassRecords, NegativeHourStandsInItsTwoColumns) {
    entry.epoch.hour = -2;
    EXPECT_EQ(lines(3.05).at(0).substr(0, 23), "R05 2024 03 05 -2 07 08");
}

// ---- frame time ----

struct FrameRow {
    std::uint16_t dayNumber;
    std::int32_t tk;
    const char* text;
};

class GlonassFrameTime : public GlonassRecords, public testing::WithParamInterface<FrameRow> {};

TEST_P(GlonassFrameTime, IsSecondsOfTheWeekWithTheSignOfTheSum) {
    entry.dayNumber = GetParam().dayNumber;
    entry.tk = GetParam().tk;
    EXPECT_EQ(value(0, 3), GetParam().text);
    EXPECT_EQ(valueAt(lines(4.01).at(1), 3), GetParam().text);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Within32Bits, GlonassFrameTime, testing::Values(
    FrameRow{0, 0,     "-1.080000000000D+04"},
    FrameRow{0, 10800, " 0.000000000000D+00"},
    FrameRow{0, 10801, " 1.000000000000D+00"},
    FrameRow{6, 86400, " 5.940000000000D+05"},    // 604800 - 10800
    FrameRow{7, 0,     " 5.940000000000D+05"},
    FrameRow{7, 10800, " 0.000000000000D+00"},    // a week exactly
    FrameRow{7, 10805, " 5.000000000000D+00"},
    FrameRow{0, -594001, "-1.000000000000D+00"}));  // -604801
// The seconds of 30000, 50000 and 65535 days, less 2 to the power of 32; a sum past the highest number.
INSTANTIATE_TEST_SUITE_P(Wrapping, GlonassFrameTime, testing::Values(
    FrameRow{30000, 0, "-4.660960000000D+05"},    // -1702967296 - 10800 = -2815 weeks - 466096
    FrameRow{50000, 0, " 2.251040000000D+05"},    // 25032704 - 10800 = 41 weeks + 225104
    FrameRow{65535, 0, " 3.979040000000D+05"},    // 1367256704 - 10800 = 2260 weeks + 397904
    FrameRow{1, 2147483647, "-3.680490000000D+05"}));  // 2147559247 wraps: -3550 weeks - 368049
// clang-format on

}  // namespace
