// The order of the steps, the number of list entries that each walks, and the staged values that a missing
// message leaves behind.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/assembly_bench.h"

namespace {
namespace stepOrderTest {

using testsupport::Constellation;
using testsupport::ObsRow;
using testsupport::satellite;
using testsupport::satellites;
using testsupport::SatEpochRecord;
using enum testsupport::Constellation;

constexpr double lightSpeed = 299792458.0;

class StepOrder : public testsupport::AssemblyTest {
protected:
    // The time of flight of an rx element of GPS.
    static double flight(int value) { return value * 1e-11 + 0.075; }
};

// ---- order ----
//
// The staging is the same whatever the order of the messages in the log, so each test stages the message of
// the later step first.

TEST_F(StepOrder, RxComesAfterRc) {
    list({satellite(gps, 5)});
    put("rx", {2000});
    put("rc", {1000});
    assemble();
    EXPECT_EQ(record(gps).at(ObsRow::pseudorange, 0), flight(2000) * lightSpeed);
}

TEST_F(StepOrder, RcRemainsWhereRxHasNoElement) {
    list({satellite(gps, 5)});
    put("rx", {});
    put("rc", {1000});
    assemble();
    EXPECT_EQ(record(gps).at(ObsRow::pseudorange, 0), flight(1000) * lightSpeed);
}

TEST_F(StepOrder, RxComesBeforeTheRangeDifferences) {
    list({satellite(gps, 5)});
    for (const std::string_view id : {"1r", "3r", "5r", "lr"}) {
        put(id, {100});
    }
    put("rx", {2000});
    assemble();
    for (const std::size_t column : {1U, 3U, 4U, 5U}) {
        EXPECT_EQ(record(gps).at(ObsRow::pseudorange, column),
                  (100 * 1e-11 + 2e-7 + flight(2000)) * lightSpeed);
    }
}

TEST_F(StepOrder, FirstRangeDifferenceComesBeforeTheSecond) {
    survey.lastRangeDelta = 999;
    list({satellite(gps, 5)});
    put("2r", {7});
    put("1r", {100});
    assemble();
    EXPECT_EQ(record(gps).at(ObsRow::pseudorange, 2), (100 * 1e-11 + 2e-7 + 0.0) * lightSpeed);
}

TEST_F(StepOrder, RxComesBeforeThePhases) {
    list({satellite(galileo, 5)});
    for (const std::string_view id : {"cp", "1p", "2p", "3p", "5p"}) {
        put(id, {0});
    }
    put("rx", {2000});
    assemble();
    const double time = 2000 * 2e-11 + 0.085;
    EXPECT_EQ(record(galileo).at(ObsRow::phase, 0), time * (1e6 * 1575.42) + 0.5);
    EXPECT_EQ(record(galileo).at(ObsRow::phase, 1), time * (1e6 * 1191.795) + 0.25);
    EXPECT_EQ(record(galileo).at(ObsRow::phase, 2), time * (1e6 * 1207.14) + 0.25);
    EXPECT_EQ(record(galileo).at(ObsRow::phase, 3), time * (1e6 * 1278.75) + 0.5);
    EXPECT_EQ(record(galileo).at(ObsRow::phase, 4), time * (1e6 * 1176.45) + 0.25);
}

TEST_F(StepOrder, DxComesBeforeTheDopplerDifferences) {
    list({satellite(gps, 5)});
    for (const std::string_view id : {"0d", "1d", "2d", "3d", "5d", "ld"}) {
        put(id, {0});
    }
    put("DX", {10000});
    assemble();
    for (std::size_t column = 0; column < 6; ++column) {
        EXPECT_LT(record(gps).at(ObsRow::doppler, column), -0.7) << column;
    }
}

TEST_F(StepOrder, DopplerDifferenceReplacesTheFullDoppler) {
    list(satellites(gps, 5, 2));
    put("0d", {0});
    put("DX", {10000, 10000});
    put("DC", {20000, 30000});
    assemble();
    EXPECT_EQ(record(gps, 0).at(ObsRow::doppler, 0), -10000.0 * 1575420000.0 / 1575420000.0 * 1e-4);
    EXPECT_EQ(record(gps, 1).at(ObsRow::doppler, 0), -30000 * 1e-4);
}

TEST_F(StepOrder, FlagsComeFirstAndClaimTheRecords) {
    list({satellite(gps, 5)});
    put("lE", {192});
    put("FC", {0x40});
    assemble();
    // A record that lE itself claimed would have digit 1.
    EXPECT_EQ(record(gps).strengthIndex[5], 8);
}

TEST_F(StepOrder, FlagsClaimWithTheSignedChannelBeforeRcComes) {
    list({satellite(glonass, -5)});
    put("rc", {1000});
    assemble();
    EXPECT_EQ(record(glonass).number, -5);
}

TEST_F(StepOrder, StrengthOfBandFiveComesBeforeThatOfTheLast) {
    record(gps).at(ObsRow::strength, 4) = 12.0;
    list({satellite(gps, 0)});
    put("lE", {255});
    put("5E", {192});
    assemble();
    EXPECT_EQ(record(gps).strengthIndex[5], 8);
}

TEST_F(StepOrder, PhaseOfTheLastBandComesAfterTheDopplerOfIt) {
    options.rinexVersion = 4.0;
    survey.codes(glonass)[26] = "L3X";
    survey.codes(glonass)[27] = "D3X";
    list({satellite(glonass, 5)});
    put("lp", {1});
    put("ld", {1});
    assemble();
    EXPECT_EQ(code(glonass, 26), "");
    EXPECT_EQ(code(glonass, 27), "");
    EXPECT_EQ(survey.obsCodeCount[1], 0);
}

TEST_F(StepOrder, ClaimOfRcReachesTheStepsBehindIt) {
    staleList({satellite(glonass, -5)});
    put("rc", {1000});
    put("CE", {160});
    put("1r", {50});
    assemble();
    // rc has claimed the record for the unsigned number 251, so the others drop their values.
    EXPECT_EQ(record(glonass).number, 251);
    EXPECT_EQ(record(glonass).at(ObsRow::strength, 0), 0.0);
    EXPECT_EQ(record(glonass).at(ObsRow::pseudorange, 1), 0.0);
}

// ---- what each step walks ----

// A message whose steps store an element's value in a row and column of GPS.
struct WalkRow {
    std::string_view id;
    ObsRow row;
};

class StepWalk : public testsupport::AssemblyTable<WalkRow> {
protected:
    [[nodiscard]] bool stored(std::size_t i) {
        return record(gps, i).at(GetParam().row, testsupport::bandOf(GetParam().id)) != 0.0;
    }
};

TEST_P(StepWalk, EndsWithTheMessagesCount) {
    list(satellites(gps, 1, 3));
    put(GetParam().id, {99, 99});
    assemble();
    EXPECT_TRUE(stored(0));
    EXPECT_TRUE(stored(1));
    EXPECT_FALSE(stored(2));
}

TEST_P(StepWalk, GoesOnPastTheEndOfAShorterList) {
    list(satellites(gps, 1, 3));
    list({satellite(gps, 11)});
    put(GetParam().id, {99, 99, 99});
    assemble();
    EXPECT_EQ(record(gps, 0).number, 11);
    EXPECT_EQ(record(gps, 1).number, 2);
    EXPECT_EQ(record(gps, 2).number, 3);
    EXPECT_TRUE(stored(2));
    EXPECT_EQ(record(gps, 3).number, 0);
}

TEST_P(StepWalk, AppliesTheLastValuesToThePresentList) {
    list(satellites(gps, 1, 2));
    put(GetParam().id, {99, 0x4040});
    assemble();
    const double second = record(gps, 1).at(GetParam().row, testsupport::bandOf(GetParam().id));
    orbconv::clearEpochRecords(store);
    list({satellite(galileo, 8), satellite(gps, 20)});
    assemble();
    EXPECT_EQ(record(gps, 0).number, 20);
    EXPECT_EQ(record(gps, 0).at(GetParam().row, testsupport::bandOf(GetParam().id)), second);
}

TEST_P(StepWalk, DoesNotStartWithoutAnElement) {
    list(satellites(gps, 1, 2));
    put(GetParam().id, {99, 99});
    put(GetParam().id, {});
    assemble();
    EXPECT_FALSE(stored(0));
    EXPECT_FALSE(stored(1));
    EXPECT_EQ(record(gps, 0).number, 1) << "the flag steps have walked";
}

TEST_P(StepWalk, TakesOneHundredAndEightyElements) {
    auto entries = satellites(sbas, 1, 179);
    entries.push_back(satellite(gps, 7));
    list(entries);
    put(GetParam().id, std::vector<std::int64_t>(181, 99));  // one more than there is room for
    assemble();
    EXPECT_TRUE(stored(0));
}

INSTANTIATE_TEST_SUITE_P(
    EveryMeasurement, StepWalk,
    testing::Values(WalkRow{"rc", ObsRow::pseudorange}, WalkRow{"1r", ObsRow::pseudorange},
                    WalkRow{"2r", ObsRow::pseudorange}, WalkRow{"3r", ObsRow::pseudorange},
                    WalkRow{"5r", ObsRow::pseudorange}, WalkRow{"lr", ObsRow::pseudorange},
                    WalkRow{"DC", ObsRow::doppler}, WalkRow{"0d", ObsRow::doppler},
                    WalkRow{"1d", ObsRow::doppler}, WalkRow{"2d", ObsRow::doppler},
                    WalkRow{"3d", ObsRow::doppler}, WalkRow{"5d", ObsRow::doppler},
                    WalkRow{"ld", ObsRow::doppler}, WalkRow{"cp", ObsRow::phase},
                    WalkRow{"1p", ObsRow::phase}, WalkRow{"2p", ObsRow::phase}, WalkRow{"3p", ObsRow::phase},
                    WalkRow{"5p", ObsRow::phase}, WalkRow{"lp", ObsRow::phase},
                    WalkRow{"CE", ObsRow::strength}, WalkRow{"1E", ObsRow::strength},
                    WalkRow{"2E", ObsRow::strength}, WalkRow{"3E", ObsRow::strength},
                    WalkRow{"5E", ObsRow::strength}, WalkRow{"lE", ObsRow::strength}),
    testsupport::nameOfMessage);

TEST_F(StepOrder, DxWalksItsOwnCount) {
    list(satellites(gps, 1, 3));
    put("DX", {1, 2});
    assemble();
    EXPECT_EQ(record(gps, 1).referenceDoppler, 2);
    EXPECT_EQ(record(gps, 2).referenceDoppler, 0);
}

TEST_F(StepOrder, DxWalksPastTheEndOfAShorterList) {
    staleList(satellites(gps, 1, 3));
    put("DX", {1, 2, 3});
    assemble();
    EXPECT_EQ(record(gps, 2).referenceDoppler, 3);
}

TEST_F(StepOrder, RxWalksTheCountOfTheList) {
    list(satellites(gps, 1, 3));
    put("rx", {10, 20, 30});
    put("rx", {11});  // the others are still those of the message before
    assemble();
    EXPECT_EQ(record(gps, 0).clockOffset, flight(11));
    EXPECT_EQ(record(gps, 2).clockOffset, flight(30));
}

TEST_F(StepOrder, RxEndsWithTheList) {
    list(satellites(gps, 1, 3));
    list(satellites(gps, 1, 2));
    put("rx", {10, 20, 30});
    assemble();
    EXPECT_EQ(record(gps, 1).clockOffset, flight(20));
    EXPECT_EQ(record(gps, 2).clockOffset, 0.0);
}

TEST_F(StepOrder, RxWithoutAnElementLeavesTheClockOffsetAtZero) {
    list({satellite(gps, 5)});
    put("rx", {4000});
    put("rx", {});
    assemble();
    EXPECT_EQ(record(gps).clockOffset, 0.0);
    EXPECT_EQ(record(gps).at(ObsRow::pseudorange, 0), 0.0);
}

TEST_F(StepOrder, LogWithoutRxHasAClockOffsetOfZero) {
    list({satellite(gps, 5)});
    assemble();
    EXPECT_EQ(record(gps).clockOffset, 0.0);
    EXPECT_EQ(record(gps).at(ObsRow::pseudorange, 0), 0.0);
}

TEST_F(StepOrder, EmptyListRunsNoFlagStepAndNoRx) {
    staleList({satellite(gps, 5)});
    put("FC", {0x40});
    put("rx", {4000});
    assemble();
    EXPECT_EQ(record(gps).number, 0);
    EXPECT_EQ(record(gps).signalFlags[0], 0U);
    EXPECT_EQ(record(gps).clockOffset, 0.0);
}

TEST_F(StepOrder, EachConstellationHasACursorOfItsOwn) {
    includeEverySystem();
    options.rinexVersion = 4.01;
    std::vector<testsupport::Satellite> entries;
    std::vector<std::int64_t> bytes;
    for (int place = 1; place <= 3; ++place) {
        for (const Constellation system : testsupport::everyConstellation) {
            entries.push_back(satellite(system, place));
            bytes.push_back(static_cast<std::int64_t>(bytes.size()) + 1);
        }
    }
    list(entries);
    put("5E", bytes);
    assemble();
    for (const Constellation system : {gps, glonass, galileo, beidou, navic, glonassCdma}) {
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(record(system, i).number, static_cast<std::int32_t>(i) + 1);
            EXPECT_EQ(record(system, i).at(ObsRow::strength, 4),
                      0.25 * static_cast<double>(8 * i + testsupport::rowOf(system) + 1));
        }
    }
}

TEST_F(StepOrder, MessagesThatNobodyReadsChangeNothing) {
    list(satellites(gps, 1, 2));
    samplelog::LogBuilder log;
    for (const std::string_view id : {"cr", "cc", "c1", "c2", "c3", "c5", "cl", "TC"}) {
        log.unreadArray(id, {0x4040, 0x4040});
    }
    log.si({0x40, 0x40}).el({0x40, 0x40});
    testsupport::stage(staging, log);
    assemble();
    EXPECT_EQ(record(gps, 0).number, 1);
    EXPECT_EQ(record(gps, 0).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(gps, 0).signalFlags, SatEpochRecord{}.signalFlags);
    EXPECT_EQ(record(gps, 0).clockOffset, 0.0);
    EXPECT_EQ(record(gps, 0).referenceDoppler, 0);
}

TEST_F(StepOrder, ChangedListDropsTheValuesOfThePlacesBehindTheChange) {
    // Records at index 30 and up keep their satellite; a list that lost its first GPS entry moves all others.
    list(satellites(gps, 1, 32));
    put("CE", std::vector<std::int64_t>(32, 100));
    assemble();
    orbconv::clearEpochRecords(store);
    list(satellites(gps, 2, 31));
    put("CE", std::vector<std::int64_t>(31, 120));
    assemble();
    EXPECT_EQ(record(gps, 29).number, 31);
    EXPECT_EQ(record(gps, 29).at(ObsRow::strength, 0), 30.0);
    EXPECT_EQ(record(gps, 30).number, 31);
    EXPECT_EQ(record(gps, 30).at(ObsRow::strength, 0), 25.0);
}

}  // namespace stepOrderTest
}  // namespace
