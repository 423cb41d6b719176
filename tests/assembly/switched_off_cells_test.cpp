// Signals that a version opens, or none: what their messages do for the versions that leave them shut, and
// what they would do where they are open.
#include <gtest/gtest.h>

#include <string>

#include "support/assembly_bench.h"

namespace {

using testsupport::constellationNames;
using testsupport::everyVersion;
using testsupport::ObsRow;
using testsupport::rowOf;
using testsupport::satellite;
using enum testsupport::Constellation;

class SwitchedOffCells : public testsupport::AssemblyTest {
protected:
    void restartWith(double version) {
        restart();
        options.rinexVersion = version;
    }
};

TEST_F(SwitchedOffCells, FullDopplerIsTakenForEveryVersionButNavics) {
    for (const double version : everyVersion) {
        for (const auto system : {gps, glonass, galileo, beidou, navic, glonassCdma}) {
            restartWith(version);
            list({satellite(system, 5)});
            put("DC", {-12345});
            assemble();
            const bool open = system != navic || version == 3.05 || version == 4.0 || version == 4.01;
            EXPECT_EQ(record(system).at(ObsRow::doppler, 0), open ? 12345 * 1e-4 : 0.0)
                << constellationNames[rowOf(system)] << " " << version;
        }
    }
}

// The branch of SBAS in 1r is switched off with the version 135.0.
TEST_F(SwitchedOffCells, FirstDifferenceOfSbasCountsForItsVersionAlone) {
    options.includeSbas = true;
    for (const double version : everyVersion) {
        restartWith(version);
        list({satellite(gps, 5), satellite(sbas, 6)});
        put("1r", {100, 200});
        assemble();
        EXPECT_EQ(survey.lastRangeDelta, version == 135.0 ? 200 : 100) << version;
    }
}

TEST_F(SwitchedOffCells, FirstDifferenceOfSbasListsItsPlaceholderForItsVersionAlone) {
    for (const double version : everyVersion) {
        restartWith(version);
        list({satellite(sbas, 6)});
        put("1r", {1});
        assemble();
        EXPECT_EQ(code(sbas, 5), version == 135.0 ? "n1n" : "") << version;
    }
}

// GLONASS CDMA has no part in the phases of the bands 1, 2 and l: its satellites claim no record there.
TEST_F(SwitchedOffCells, PhasesThatCdmaLacksClaimNoRecord) {
    for (const char* const id : {"1p", "2p", "lp"}) {
        for (const double version : everyVersion) {
            restartWith(version);
            staleList({satellite(glonassCdma, 5)});
            put(id, {1});
            assemble();
            EXPECT_EQ(record(glonassCdma).number, 0) << id << " " << version;
        }
    }
}

// The branch of Galileo in lp is switched off with the version 136.0, and enters no satellite even there.
TEST_F(SwitchedOffCells, LastPhaseOfGalileoListsNoSatellite) {
    for (const double version : everyVersion) {
        restartWith(version);
        list({satellite(galileo, 5)});
        put("lp", {1});
        assemble();
        for (const auto& satellites : survey.phaseShiftSatellites[rowOf(galileo)]) {
            EXPECT_EQ(satellites, orbconv::SatelliteNumbers{}) << version;
        }
    }
}

}  // namespace
