// The second band: all satellites of an epoch go by the last difference that 1r took.
#include <gtest/gtest.h>

#include <string_view>

#include "support/assembly_bench.h"

namespace {

using testsupport::everyVersion;
using testsupport::ObsRow;
using testsupport::satellite;
using testsupport::satellites;
using enum testsupport::Constellation;

class SecondRange : public testsupport::AssemblyTest {
protected:
    double second(testsupport::Constellation system, std::size_t i = 0) {
        return record(system, i).at(ObsRow::pseudorange, 2);
    }
    static double value(int delta, double clockOffset = 0.0) {
        return (delta * 1e-11 + 2e-7 + clockOffset) * 299792458.0;
    }
};

TEST_F(SecondRange, GoesByTheLastElementOf1rForAllSatellites) {
    list({satellite(gps, 5), satellite(galileo, 6), satellite(gps, 7)});
    put("rx", {1000, 2000, 3000});
    put("1r", {1, 2, 100});
    put("2r", {10, 20, 30});
    assemble();
    EXPECT_EQ(second(gps, 0), value(100, 1000 * 1e-11 + 0.075));
    EXPECT_EQ(second(galileo), value(100, 2000 * 2e-11 + 0.085));
    EXPECT_EQ(second(gps, 1), value(100, 3000 * 1e-11 + 0.075));
}

TEST_F(SecondRange, GoesByZeroAsLongAsNo1rCame) {
    list({satellite(gps, 5)});
    put("2r", {10});
    assemble();
    EXPECT_EQ(second(gps), value(0));
}

TEST_F(SecondRange, CellsOutliveTheEpoch) {
    list({satellite(gps, 5)});
    put("1r", {100});
    put("2r", {10});
    assemble();
    orbconv::clearEpochRecords(store);
    put("1r", {});
    assemble();
    EXPECT_EQ(second(gps), value(100));
    EXPECT_EQ(survey.lastRangeDelta, 100);
    EXPECT_EQ(survey.secondRangeDelta, 10);
}

TEST_F(SecondRange, OwnElementIsOnlyKept) {
    list({satellite(gps, 5), satellite(gps, 6)});
    put("2r", {10, -20});
    assemble();
    EXPECT_EQ(survey.secondRangeDelta, -20);
    EXPECT_EQ(survey.lastRangeDelta, 0);
}

TEST_F(SecondRange, LastElementCountsAlsoIfItsRecordIsAnothers) {
    record(gps, 1).number = 9;
    list({satellite(gps, 5), satellite(gps, 6)});
    put("1r", {1, 100});
    put("2r", {0, 0});
    assemble();
    EXPECT_EQ(second(gps, 0), value(100));
    EXPECT_EQ(record(gps, 1).obs, testsupport::SatEpochRecord{}.obs);
}

TEST_F(SecondRange, LastElementOfALeftOutConstellationDoesNotCount) {
    options.includeGlonass = false;
    list({satellite(gps, 5), satellite(glonass, 6)});
    put("1r", {100, 200});
    put("2r", {0, 0});
    assemble();
    EXPECT_EQ(second(gps), value(100));
    EXPECT_EQ(second(glonass), value(100));
}

TEST_F(SecondRange, LastElementOfQzssCountsInVersion4) {
    for (const double version : everyVersion) {
        for (const bool included : {true, false}) {
            restart();
            options.rinexVersion = version;
            options.includeQzss = included;
            list({satellite(gps, 5), satellite(qzss, 6)});
            put("1r", {100, 200});
            put("2r", {0, 0});
            assemble();
            EXPECT_EQ(second(gps), value(version == 4.0 || version == 4.01 ? 200 : 100)) << version;
        }
    }
}

TEST_F(SecondRange, LastElementOfSwitchedOffSignalsDoesNotCountInARun) {
    includeEverySystem();
    for (const auto system : {sbas, navic, glonassCdma}) {
        for (const double version : {3.05, 4.0, 4.01}) {
            restart();
            options.rinexVersion = version;
            list({satellite(gps, 5), satellite(system, 6)});
            put("1r", {100, 200});
            put("2r", {0, 0});
            assemble();
            EXPECT_EQ(second(gps), value(100)) << version;
        }
    }
}

TEST_F(SecondRange, LastElementOfSwitchedOffSignalsCountsWhereTheyAreSwitchedOn) {
    options.rinexVersion = 135.0;
    for (const auto system : {navic, glonassCdma}) {
        restart();
        list({satellite(gps, 5), satellite(system, 6)});
        put("1r", {100, 200});
        put("2r", {0, 0});
        assemble();
        EXPECT_EQ(second(gps), value(200));
    }
}

TEST_F(SecondRange, ElementsOfUnknownSystemsDoNotCount) {
    list({satellite(gps, 5), {.systemCode = 8, .number = 6}});
    put("1r", {100, 200});
    put("2r", {0, 0});
    assemble();
    EXPECT_EQ(second(gps), value(100));
}

TEST_F(SecondRange, OtherBandsGoByTheirOwnElements) {
    list(satellites(gps, 5, 2));
    put("1r", {1, 2});
    put("3r", {3, 4});
    put("5r", {5, 6});
    put("lr", {7, 8});
    assemble();
    int delta = 1;
    for (const std::size_t column : {1U, 3U, 4U, 5U}) {
        EXPECT_EQ(record(gps, 0).at(ObsRow::pseudorange, column), value(delta++)) << column;
        EXPECT_EQ(record(gps, 1).at(ObsRow::pseudorange, column), value(delta++)) << column;
    }
    EXPECT_EQ(survey.lastRangeDelta, 2);
}

}  // namespace
