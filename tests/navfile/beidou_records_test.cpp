#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "navfile/ephemeris_records.h"
#include "support/nav_records.h"

namespace {

using namespace orbconv;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testsupport::recordLines;
using testsupport::valueAt;
using testsupport::withFirstLine;

using Lines = std::vector<std::string>;
using Rows = std::vector<std::vector<double>>;

constexpr const char* head = "C05 2024 03 05 06 07 08";

class BeidouRecords : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();
    // Satellite 5 with every printed field different.
    BeidouEphemeris& entry = add(5, NavType::d2);

    BeidouEphemeris& add(std::int32_t sv, NavType type) {
        tables->beidou.slots.reserve(4);  // so that `entry` stays where it is
        BeidouEphemeris& added = testsupport::append(tables->beidou);
        added.kepler = testsupport::numberedKepler(sv);
        added.epoch = testsupport::recordEpoch();
        added.navType = type;
        added.satType = 30;
        added.tgd2 = 31;
        added.aodc = 32;
        added.aode = 33;
        added.adot = 34;
        added.deltaNDot = 35;
        added.sisai = 36;
        return added;
    }
    Lines lines(double version) { return testsupport::recordsOf(writeBeidouRecords, *tables, version); }
    std::string value(std::size_t line, std::size_t place) { return valueAt(lines(3.05).at(line), place); }
};

// ---- the forms ----

const Lines dRecord = {"C05 2024 03 05 06 07 08 1.000000000000D+00 2.000000000000D+00 3.000000000000D+00",
                       "     3.300000000000D+01 5.000000000000D+00 6.000000000000D+00 7.000000000000D+00",
                       "     8.000000000000D+00 9.000000000000D+00 1.000000000000D+01 1.100000000000D+01",
                       "     1.200000000000D+01 1.300000000000D+01 1.400000000000D+01 1.500000000000D+01",
                       "     1.600000000000D+01 1.700000000000D+01 1.800000000000D+01 1.900000000000D+01",
                       "     2.000000000000D+01 0.000000000000D+00 2.100000000000D+01 0.000000000000D+00",
                       "     2.200000000000D+01 2.300000000000D+01 2.400000000000D+01 3.100000000000D+01",
                       "     2.600000000000D+01 3.200000000000D+01"};

const Rows cnv1Rows = {{1, 2, 3},       {34, 5, 6, 7}, {8, 9, 10, 11},  {12, 13, 14, 15}, {16, 17, 18, 19},
                       {20, 35, 30, 0}, {36, 0, 36},   {36, 0, 24, 31}, {22, 23, 0, 25},  {26, 0, 0, 4}};
const Rows cnv2Rows = {{1, 2, 3},       {34, 5, 6, 7}, {8, 9, 10, 11},  {12, 13, 14, 15}, {16, 17, 18, 19},
                       {20, 35, 30, 0}, {36, 0, 36},   {36, 0, 24, 31}, {26, 23, 0, 25},  {26, 0, 0, 4}};
const Rows cnv3Rows = {{1, 2, 3},        {34, 5, 6, 7},    {8, 9, 10, 11},
                       {12, 13, 14, 15}, {16, 17, 18, 19}, {20, 35, 30, 0},
                       {36, 0, 36},      {0, 23, 0, 31},   {26}};

TEST_F(BeidouRecords, Below4HasNoEphLine) {
    EXPECT_EQ(lines(3.05), dRecord);
    entry.navType = NavType::d1;
    EXPECT_EQ(lines(3.05), dRecord);
}

TEST_F(BeidouRecords, From4OnKeepsTheLetterDBehindAnEphLine) {
    EXPECT_EQ(lines(4.0), withFirstLine("> EPH C05   D2", dRecord));
    entry.navType = NavType::d1;
    EXPECT_EQ(lines(4.01), withFirstLine("> EPH C05   D1", dRecord));
}

TEST_F(BeidouRecords, Cnv1Form) {
    entry.navType = NavType::cnv1;
    EXPECT_EQ(lines(4.01), withFirstLine("> EPH C05 CNV1", recordLines(head, cnv1Rows)));
}

TEST_F(BeidouRecords, Cnv2FormHasTheTransmissionTimeForTheAccuracy) {
    entry.navType = NavType::cnv2;
    EXPECT_EQ(lines(4.0), withFirstLine("> EPH C05 CNV2", recordLines(head, cnv2Rows)));
}

TEST_F(BeidouRecords, Cnv3Form) {
    entry.navType = NavType::cnv3;
    EXPECT_EQ(lines(4.01), withFirstLine("> EPH C05 CNV3", recordLines(head, cnv3Rows)));
}

TEST_F(BeidouRecords, From4OnAnyOtherTypeHasTwoLinesOnly) {
    entry.navType = NavType::none;
    EXPECT_THAT(
        lines(4.0),
        ElementsAre("> EPH C05     ",
                    "C05 2024 03 05 06 07 08 1.000000000000D+00 2.000000000000D+00 3.000000000000D+00"));
}

// ---- what is written and what is skipped ----

TEST_F(BeidouRecords, Below4OnlyD1AndD2AreWritten) {
    for (const NavType type : {NavType::cnv1, NavType::cnv2, NavType::cnv3, NavType::none}) {
        entry.navType = type;
        EXPECT_THAT(lines(3.05), IsEmpty());
    }
}

TEST_F(BeidouRecords, DeadEntriesAreSkipped) {
    add(0, NavType::d1);
    EXPECT_THAT(lines(3.05), SizeIs(8));
    EXPECT_THAT(lines(4.01), SizeIs(9));
}

TEST_F(BeidouRecords, EveryTouchedSlotIsLookedAtAndNotTheCount) {
    tables->beidou.count = 0;
    EXPECT_EQ(lines(3.05), dRecord);
}

// ---- number forms ----

TEST_F(BeidouRecords, I0AloneOfTheDoublesOfAnOrbitIsNarrowed) {
    entry.kepler.Omega0 = entry.kepler.i0 = entry.kepler.omega = 0.1;
    for (const NavType type : {NavType::d1, NavType::cnv1, NavType::cnv2, NavType::cnv3}) {
        entry.navType = type;
        const Lines record = lines(4.01);
        EXPECT_EQ(valueAt(record.at(4), 2), " 1.000000000000D-01");
        EXPECT_EQ(valueAt(record.at(5), 0), " 1.000000014901D-01");
        EXPECT_EQ(valueAt(record.at(5), 2), " 1.000000000000D-01");
    }
}

TEST_F(BeidouRecords, RateOfTheAxisIsNarrowed) {
    entry.adot = 0.1;
    for (const NavType type : {NavType::cnv1, NavType::cnv2, NavType::cnv3}) {
        entry.navType = type;
        EXPECT_EQ(valueAt(lines(4.01).at(2), 0), " 1.000000014901D-01");
    }
}

TEST_F(BeidouRecords, AgesAreUnsignedBytes) {
    entry.aode = 255;
    entry.aodc = 254;
    EXPECT_EQ(value(1, 0), " 2.550000000000D+02");
    EXPECT_EQ(value(7, 1), " 2.540000000000D+02");
}

TEST_F(BeidouRecords, IntegersPassThroughSinglePrecision) {
    entry.kepler.toe = 16777217;
    entry.kepler.tot = 4294967295U;
    EXPECT_EQ(value(3, 0), " 1.677721600000D+07");
    EXPECT_EQ(value(7, 0), " 4.294967296000D+09");
}

TEST_F(BeidouRecords, IodcIsSignedAndIodeIsNot) {
    entry.navType = NavType::cnv1;
    entry.kepler.iodc = -2;
    entry.kepler.iode = 65535;
    EXPECT_EQ(valueAt(lines(4.0).at(9), 3), "-2.000000000000D+00");
    EXPECT_EQ(valueAt(lines(4.0).at(10), 3), " 6.553500000000D+04");
}

}  // namespace
