#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "navfile/ephemeris_records.h"
#include "support/nav_records.h"

namespace {
namespace gpsRecordsTest {

using namespace orbconv;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testsupport::recordLines;
using testsupport::valueAt;
using testsupport::withFirstLine;

using Lines = std::vector<std::string>;
using Rows = std::vector<std::vector<double>>;

constexpr const char* head = "G05 2024 03 05 06 07 08";

class GpsRecords : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();
    // Satellite 5 with every printed field different.
    GpsEphemeris& entry = add(5, NavType::lnav);

    GpsEphemeris& add(std::int32_t sv, NavType type) {
        tables->gps.slots.reserve(8);  // so that `entry` stays where it is
        GpsEphemeris& added = testsupport::append(tables->gps);
        added.kepler = testsupport::numberedKepler(sv);
        added.epoch = testsupport::recordEpoch();
        added.navType = type;
        added.fitInterval = 4.0F;
        added.adot = 30;
        added.cnavToe = 31;
        added.deltaNDot = 32;
        added.uraiNed0 = 33;
        added.uraiNed1 = 34;
        added.uraiEd = 35;
        added.uraiNed2 = 36;
        added.iscL1ca = 37;
        added.iscL2c = 38;
        added.iscL5i5 = 39;
        added.iscL5q5 = 40;
        added.iscL1cd = 41;
        added.iscL1cp = 42;
        added.af0Delta = 0.5F;
        added.cnavTop = 43;
        return added;
    }
    Lines lines(double version) { return testsupport::recordsOf(writeGpsRecords, *tables, version); }
    // A value of the record at 3.05: line 0 is the epoch line.
    std::string value(std::size_t line, std::size_t place) { return valueAt(lines(3.05).at(line), place); }
    // The same at 4.01, behind the EPH line.
    std::string plainValue(std::size_t line, std::size_t place) {
        return valueAt(lines(4.01).at(line + 1), place);
    }
};

// ---- the forms ----

const Rows lnavRows = {{1, 2, 3},        {4, 5, 6, 7},   {8, 9, 10, 11},   {12, 13, 14, 15},
                       {16, 17, 18, 19}, {20, 0, 21, 0}, {22, 23, 24, 25}, {26, 4}};
const Rows cnavRows = {{1.5, 2, 3},      {30, 5, 6, 7},    {8, 9, 10, 11},
                       {31, 13, 14, 15}, {16, 17, 18, 19}, {20, 32, 33, 34},
                       {35, 23, 24, 36}, {37, 38, 39, 40}, {4, 21}};
const Rows cnv2Rows = {{1.5, 2, 3},      {30, 5, 6, 7},    {8, 9, 10, 11},   {31, 13, 14, 15},
                       {16, 17, 18, 19}, {20, 32, 33, 34}, {35, 23, 24, 36}, {37, 38, 39, 40},
                       {41, 42},         {4, 21}};

TEST_F(GpsRecords, LnavBelow4HasTheLetterDAndNoEphLine) {
    EXPECT_THAT(
        lines(3.05),
        ElementsAre("G05 2024 03 05 06 07 08 1.000000000000D+00 2.000000000000D+00 3.000000000000D+00",
                    "     4.000000000000D+00 5.000000000000D+00 6.000000000000D+00 7.000000000000D+00",
                    "     8.000000000000D+00 9.000000000000D+00 1.000000000000D+01 1.100000000000D+01",
                    "     1.200000000000D+01 1.300000000000D+01 1.400000000000D+01 1.500000000000D+01",
                    "     1.600000000000D+01 1.700000000000D+01 1.800000000000D+01 1.900000000000D+01",
                    "     2.000000000000D+01 0.000000000000D+00 2.100000000000D+01 0.000000000000D+00",
                    "     2.200000000000D+01 2.300000000000D+01 2.400000000000D+01 2.500000000000D+01",
                    "     2.600000000000D+01 4.000000000000D+00"));
}

TEST_F(GpsRecords, EphRecordHasTheLetterE) {
    for (const double version : {4.0, 4.01}) {
        EXPECT_EQ(lines(version), withFirstLine("> EPH G05 LNAV", recordLines(head, lnavRows, 'e')));
    }
}

TEST_F(GpsRecords, CnavForm) {
    entry.navType = NavType::cnav;
    EXPECT_EQ(lines(4.01), withFirstLine("> EPH G05 CNAV", recordLines(head, cnavRows, 'e')));
}

TEST_F(GpsRecords, Cnv2Form) {
    entry.navType = NavType::cnv2;
    EXPECT_EQ(lines(4.0), withFirstLine("> EPH G05 CNV2", recordLines(head, cnv2Rows, 'e')));
}

// ---- what is written and what is skipped ----

TEST_F(GpsRecords, Below4OnlyLnavIsWritten) {
    entry.navType = NavType::cnav;
    add(6, NavType::cnv2);
    add(7, NavType::none);
    EXPECT_THAT(lines(3.05), IsEmpty());
    add(8, NavType::lnav);
    EXPECT_THAT(lines(3.05), SizeIs(8));
    EXPECT_EQ(lines(3.05).at(0).substr(0, 3), "G08");
}

TEST_F(GpsRecords, From4OnNothingIsWrittenForAnyOtherType) {
    entry.navType = NavType::none;
    add(6, NavType::inav);
    EXPECT_THAT(lines(4.0), IsEmpty());
}

TEST_F(GpsRecords, DeadEntriesAreSkipped) {
    entry.kepler.sv = 0;
    EXPECT_THAT(lines(3.05), IsEmpty());
    EXPECT_THAT(lines(4.01), IsEmpty());
}

TEST_F(GpsRecords, EveryTouchedSlotIsLookedAtAndNotTheCount) {
    add(6, NavType::lnav);
    tables->gps.count = 0;
    EXPECT_THAT(lines(3.05), SizeIs(16));
    EXPECT_THAT(lines(4.0), SizeIs(18));
}

TEST_F(GpsRecords, StandInTheOrderOfTheTable) {
    entry.kepler.sv = 30;
    add(2, NavType::lnav).kepler.toe = 1;
    EXPECT_EQ(lines(3.05).at(0).substr(0, 3), "G30");
    EXPECT_EQ(lines(3.05).at(8).substr(0, 3), "G02");
}

// ---- the epoch line ----

TEST_F(GpsRecords, SatelliteOfThreeDigitsMovesTheLine) {
    entry.kepler.sv = 137;
    EXPECT_EQ(lines(3.05).at(0).substr(0, 24), "G137 2024 03 05 06 07 08");
    EXPECT_EQ(lines(4.0).at(0), "> EPH G137 LNAV");
}

TEST_F(GpsRecords, EpochWithoutADateHasZeros) {
    entry.epoch = {};
    EXPECT_EQ(lines(3.05).at(0).substr(0, 23), "G05    0 00 00 00 00 00");
}

TEST_F(GpsRecords, NegativeTimesStandWithTheirSign) {
    entry.epoch.hour = -1;
    entry.epoch.minute = -14;
    entry.epoch.second = -8;
    EXPECT_EQ(lines(3.05).at(0).substr(0, 24), "G05 2024 03 05 -1 -14 -8");
}

TEST_F(GpsRecords, SumOfTheClockIsTakenInSinglePrecision) {
    entry.navType = NavType::cnav;
    entry.kepler.af0 = 1.0F;
    entry.af0Delta = 1.0F / 1073741824.0F;  // in double the sum would be 1.000000000931
    EXPECT_EQ(plainValue(0, 1), " 1.000000000000e+00");
    entry.kepler.af0 = 16777216.0F;
    entry.af0Delta = 3.0F;  // halfway between two floats: the even one
    EXPECT_EQ(plainValue(0, 1), " 1.677722000000e+07");
}

TEST_F(GpsRecords, LnavPrintsTheClockWithoutTheDifference) {
    EXPECT_EQ(plainValue(0, 1), " 1.000000000000e+00");
}

// ---- number forms ----

TEST_F(GpsRecords, I0AloneOfTheDoublesIsNarrowed) {
    entry.kepler.M0 = entry.kepler.e = entry.kepler.sqrtA = 0.1;
    entry.kepler.Omega0 = entry.kepler.i0 = entry.kepler.omega = 0.1;
    EXPECT_EQ(value(1, 3), " 1.000000000000D-01");
    EXPECT_EQ(value(2, 1), " 1.000000000000D-01");
    EXPECT_EQ(value(2, 3), " 1.000000000000D-01");
    EXPECT_EQ(value(3, 2), " 1.000000000000D-01");
    EXPECT_EQ(value(4, 0), " 1.000000014901D-01");
    EXPECT_EQ(value(4, 2), " 1.000000000000D-01");
    EXPECT_EQ(plainValue(4, 0), " 1.000000014901e-01");
    EXPECT_EQ(plainValue(4, 2), " 1.000000000000e-01");
}

TEST_F(GpsRecords, RateOfTheAxisIsNarrowed) {
    entry.adot = 0.1;
    for (const NavType type : {NavType::cnav, NavType::cnv2}) {
        entry.navType = type;
        EXPECT_EQ(plainValue(1, 0), " 1.000000014901e-01");
    }
}

TEST_F(GpsRecords, FloatsShowTheirOwnDigits) {
    entry.kepler.Crs = 0.1F;
    EXPECT_EQ(value(1, 1), " 1.000000014901D-01");
    EXPECT_EQ(plainValue(1, 1), " 1.000000014901e-01");
}

TEST_F(GpsRecords, IntegersPassThroughSinglePrecision) {
    entry.kepler.toe = 16777217;
    entry.kepler.tot = 4294967295U;
    entry.kepler.accuracy = entry.kepler.health = 33554435;
    EXPECT_EQ(value(3, 0), " 1.677721600000D+07");
    EXPECT_EQ(value(6, 0), " 3.355443600000D+07");
    EXPECT_EQ(value(6, 1), " 3.355443600000D+07");
    EXPECT_EQ(value(7, 0), " 4.294967296000D+09");
    entry.navType = NavType::cnav;
    entry.cnavToe = 16777219;
    EXPECT_EQ(plainValue(3, 0), " 1.677722000000e+07");
}

TEST_F(GpsRecords, WeekAndIodcAreSignedAndIodeIsNot) {
    entry.kepler.week = -30721;
    entry.kepler.iodc = -2;
    entry.kepler.iode = 65535;
    EXPECT_EQ(value(1, 0), " 6.553500000000D+04");
    EXPECT_EQ(value(5, 2), "-3.072100000000D+04");
    EXPECT_EQ(value(6, 3), "-2.000000000000D+00");
}

TEST_F(GpsRecords, UraBytesAreUnsigned) {
    entry.navType = NavType::cnav;
    entry.uraiNed0 = 255;
    EXPECT_EQ(plainValue(5, 2), " 2.550000000000e+02");
}

TEST_F(GpsRecords, L2BitsPrintAs0Or1) {
    const std::string zero = " 0.000000000000D+00";
    const std::string one = " 1.000000000000D+00";
    for (const unsigned flags : {0U, 1U, 2U, 4U, 6U, 0xF9U, 0xFFU}) {
        entry.kepler.l2Flags = static_cast<std::uint8_t>(flags);
        EXPECT_EQ(value(5, 1), (flags & 4U) != 0 ? one : zero) << flags;
        EXPECT_EQ(value(5, 3), (flags & 2U) != 0 ? one : zero) << flags;
    }
}

TEST_F(GpsRecords, WhatIsNoNumberPrintsAsText) {
    entry.kepler.sqrtA = std::numeric_limits<double>::quiet_NaN();
    entry.kepler.Crc = -std::numeric_limits<float>::infinity();
    EXPECT_EQ(value(2, 3), "                nan");
    EXPECT_EQ(value(4, 1), "               -inf");
}

TEST_F(GpsRecords, DoubleBeyondSinglePrecisionNarrowsToInfinity) {
    entry.kepler.i0 = 1e300;
    EXPECT_EQ(value(4, 0), "                inf");
}

TEST_F(GpsRecords, ExponentOfThreeDigitsTakesTheWholeField) {
    entry.kepler.M0 = 1e-100;
    EXPECT_EQ(lines(3.05).at(1),
              "     4.000000000000D+00 5.000000000000D+00 6.000000000000D+001.000000000000D-100");
}

}  // namespace gpsRecordsTest
}  // namespace
