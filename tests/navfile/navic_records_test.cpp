#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "navfile/ephemeris_records.h"
#include "support/nav_records.h"

namespace {
namespace navicRecordsTest {

using namespace orbconv;
using testing::SizeIs;
using testsupport::recordLines;
using testsupport::valueAt;
using testsupport::withFirstLine;

using Lines = std::vector<std::string>;

class NavicRecords : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();
    // Satellite 5 with every printed field different.
    NavicEphemeris& entry = add(5);

    NavicEphemeris& add(std::int32_t sv) {
        tables->navic.slots.reserve(4);  // so that `entry` stays where it is
        NavicEphemeris& added = testsupport::append(tables->navic);
        added.kepler = testsupport::numberedKepler(sv);
        added.epoch = testsupport::recordEpoch();
        added.fitInterval = 27;
        return added;
    }
    Lines lines(double version) { return testsupport::recordsOf(writeNavicRecords, *tables, version); }
    std::string value(std::size_t line, std::size_t place) { return valueAt(lines(3.05).at(line), place); }
};

constexpr const char* head = "I05 2024 03 05 06 07 08";
const std::vector<std::vector<double>> rows = {{1, 2, 3},        {4, 5, 6, 7},     {8, 9, 10, 11},
                                               {12, 13, 14, 15}, {16, 17, 18, 19}, {20, 0, 21, 0},
                                               {22, 23, 24, 25}, {26, 27}};

TEST_F(NavicRecords, Below4HasTheLetterDAndNoEphLine) {
    EXPECT_EQ(lines(3.05), recordLines(head, rows, 'D'));
}

TEST_F(NavicRecords, From4OnHasTheLetterEBehindAnEphLine) {
    EXPECT_EQ(lines(4.0), withFirstLine("> EPH I05 LNAV", recordLines(head, rows, 'e')));
    EXPECT_EQ(lines(4.01), withFirstLine("> EPH I05 LNAV", recordLines(head, rows, 'e')));
}

class NavicSatellites : public NavicRecords, public testing::WithParamInterface<std::pair<int, bool>> {};

TEST_P(NavicSatellites, From1To256AreWritten) {
    const auto [sv, isWritten] = GetParam();
    entry.kepler.sv = sv;
    EXPECT_THAT(lines(3.05), SizeIs(isWritten ? 8U : 0U));
    EXPECT_THAT(lines(4.01), SizeIs(isWritten ? 9U : 0U));
}

INSTANTIATE_TEST_SUITE_P(Ends, NavicSatellites,
                         testing::Values(std::pair(-1, false), std::pair(0, false), std::pair(1, true),
                                         std::pair(255, true), std::pair(256, true), std::pair(257, false)));

TEST_F(NavicRecords, EveryTouchedSlotIsLookedAtAndNotTheCount) {
    add(6);
    tables->navic.count = 0;
    EXPECT_THAT(lines(3.05), SizeIs(16));
}

TEST_F(NavicRecords, SatelliteOfThreeDigitsMovesTheLine) {
    entry.kepler.sv = 256;
    EXPECT_EQ(lines(3.05).at(0).substr(0, 24), "I256 2024 03 05 06 07 08");
    EXPECT_EQ(lines(4.01).at(0), "> EPH I256 LNAV");
}

TEST_F(NavicRecords, I0AloneOfTheDoublesIsNarrowed) {
    entry.kepler.Omega0 = entry.kepler.i0 = entry.kepler.omega = 0.1;
    EXPECT_EQ(value(3, 2), " 1.000000000000D-01");
    EXPECT_EQ(value(4, 0), " 1.000000014901D-01");
    EXPECT_EQ(value(4, 2), " 1.000000000000D-01");
}

TEST_F(NavicRecords, L2BitsStandAroundTheWeek) {
    entry.kepler.l2Flags = 2;
    EXPECT_EQ(value(5, 1) + value(5, 3), " 0.000000000000D+00 1.000000000000D+00");
    entry.kepler.l2Flags = 4;
    EXPECT_EQ(value(5, 1) + value(5, 3), " 1.000000000000D+00 0.000000000000D+00");
}

}  // namespace navicRecordsTest
}  // namespace
