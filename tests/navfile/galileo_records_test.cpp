#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "navfile/ephemeris_records.h"
#include "support/nav_records.h"

namespace {
namespace galileoRecordsTest {

using namespace orbconv;
using testing::IsEmpty;
using testing::SizeIs;
using testsupport::valueAt;
using testsupport::withFirstLine;

using Lines = std::vector<std::string>;

class GalileoRecords : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();
    // Satellite 5 with every printed field different.
    GalileoEphemeris& entry = add(5, NavType::inav);

    GalileoEphemeris& add(std::int32_t sv, NavType type) {
        tables->galileo.slots.reserve(4);  // so that `entry` stays where it is
        GalileoEphemeris& added = testsupport::append(tables->galileo);
        added.kepler = testsupport::numberedKepler(sv);
        added.epoch = testsupport::recordEpoch();
        added.navType = type;
        added.dataSources = 517;
        added.sisa = 27;
        added.bgdE5a = 28;
        added.bgdE5b = 29;
        return added;
    }
    Lines lines(double version) { return testsupport::recordsOf(writeGalileoRecords, *tables, version); }
    std::string value(std::size_t line, std::size_t place) { return valueAt(lines(3.05).at(line), place); }
};

const Lines record = {"E05 2024 03 05 06 07 08 1.000000000000D+00 2.000000000000D+00 3.000000000000D+00",
                      "     4.000000000000D+00 5.000000000000D+00 6.000000000000D+00 7.000000000000D+00",
                      "     8.000000000000D+00 9.000000000000D+00 1.000000000000D+01 1.100000000000D+01",
                      "     1.200000000000D+01 1.300000000000D+01 1.400000000000D+01 1.500000000000D+01",
                      "     1.600000000000D+01 1.700000000000D+01 1.800000000000D+01 1.900000000000D+01",
                      "     2.000000000000D+01 5.170000000000D+02 2.100000000000D+01 0.000000000000D+00",
                      "     2.700000000000D+01 2.300000000000D+01 2.800000000000D+01 2.900000000000D+01",
                      "     2.600000000000D+01"};

TEST_F(GalileoRecords, Below4HasNoEphLineAndTakesEveryType) {
    for (const NavType type : {NavType::inav, NavType::fnav, NavType::none}) {
        entry.navType = type;
        EXPECT_EQ(lines(3.05), record);
    }
}

TEST_F(GalileoRecords, From4OnKeepsTheLetterDBehindAnEphLine) {
    EXPECT_EQ(lines(4.0), withFirstLine("> EPH E05 INAV", record));
    entry.navType = NavType::fnav;
    EXPECT_EQ(lines(4.01), withFirstLine("> EPH E05 FNAV", record));
}

TEST_F(GalileoRecords, EmptyTypeIsFiveBlanks) {
    entry.navType = NavType::none;
    EXPECT_EQ(lines(4.0), withFirstLine("> EPH E05     ", record));
}

TEST_F(GalileoRecords, DeadEntriesAreSkipped) {
    add(0, NavType::inav);
    EXPECT_THAT(lines(3.05), SizeIs(8));
    entry.kepler.sv = 0;
    EXPECT_THAT(lines(4.01), IsEmpty());
}

TEST_F(GalileoRecords, EveryTouchedSlotIsLookedAtAndNotTheCount) {
    tables->galileo.count = 0;
    EXPECT_EQ(lines(3.05), record);
}

TEST_F(GalileoRecords, I0AloneOfTheDoublesIsNarrowed) {
    entry.kepler.M0 = entry.kepler.Omega0 = entry.kepler.i0 = entry.kepler.omega = 0.1;
    EXPECT_EQ(value(1, 3), " 1.000000000000D-01");
    EXPECT_EQ(value(3, 2), " 1.000000000000D-01");
    EXPECT_EQ(value(4, 0), " 1.000000014901D-01");
    EXPECT_EQ(value(4, 2), " 1.000000000000D-01");
}

TEST_F(GalileoRecords, SisaWithoutAPredictionIsMinus1) {
    entry.sisa = -1.0F;
    EXPECT_EQ(value(6, 0), "-1.000000000000D+00");
}

TEST_F(GalileoRecords, SisaShowsTheDigitsOfAFloat) {
    entry.sisa = 0.98F;
    EXPECT_EQ(value(6, 0), " 9.800000190735D-01");
}

TEST_F(GalileoRecords, IntegersPassThroughSinglePrecision) {
    entry.kepler.toe = 16777217;
    entry.kepler.tot = 4294967295U;
    EXPECT_EQ(value(3, 0), " 1.677721600000D+07");
    EXPECT_EQ(value(7, 0), " 4.294967296000D+09");
}

TEST_F(GalileoRecords, FlagsOfL2AndFitAreNotPrinted) {
    entry.kepler.l2Flags = 0xFF;
    EXPECT_EQ(lines(3.05), record);
}

}  // namespace galileoRecordsTest
}  // namespace
