// What the phase steps note of the satellites beside their values: lists by position, and use counts.
#include <gtest/gtest.h>

#include <string_view>

#include "support/assembly_bench.h"

namespace {
namespace phaseListsTest {

using testsupport::always;
using testsupport::Cell;
using testsupport::Constellation;
using testsupport::everyVersion;
using testsupport::from401;
using testsupport::Gate;
using testsupport::only136;
using testsupport::only3And4;
using testsupport::only4;
using testsupport::satellite;
using testsupport::satellites;
using testsupport::shut;
using enum testsupport::Constellation;

constexpr std::size_t uncounted = 99;

struct NoteRow : Cell {
    Gate gate;
    bool lists;            // enters PhaseShiftSatellites
    std::size_t countRow;  // row of SignalUseCount, or uncounted
};

// clang-format off
constexpr auto noteRows = std::to_array<NoteRow>({
    {{"cp", gps},         always,    false, uncounted},
    {{"cp", glonass},     always,    true,  uncounted},
    {{"cp", galileo},     always,    false, uncounted},
    {{"cp", qzss},        always,    true,  3},
    {{"cp", beidou},      always,    false, uncounted},
    {{"cp", navic},       only3And4, false, uncounted},
    {{"cp", sbas},        only3And4, true,  6},
    {{"cp", glonassCdma}, always,    false, uncounted},

    {{"1p", gps},         always,    true,  uncounted},
    {{"1p", glonass},     always,    true,  uncounted},
    {{"1p", galileo},     always,    true,  uncounted},
    {{"1p", qzss},        only4,     true,  3},
    {{"1p", beidou},      always,    false, uncounted},
    {{"1p", navic},       only136,   true,  5},
    {{"1p", sbas},        only4,     true,  6},
    {{"1p", glonassCdma}, shut,      false, uncounted},

    {{"2p", gps},         always,    true,  uncounted},
    {{"2p", glonass},     always,    true,  uncounted},
    {{"2p", galileo},     always,    true,  2},
    {{"2p", qzss},        always,    true,  3},
    {{"2p", beidou},      always,    false, uncounted},
    {{"2p", navic},       only4,     true,  5},
    {{"2p", sbas},        only4,     true,  6},
    {{"2p", glonassCdma}, shut,      false, uncounted},

    {{"3p", gps},         always,    true,  uncounted},
    {{"3p", glonass},     always,    true,  uncounted},
    {{"3p", galileo},     always,    true,  2},
    {{"3p", qzss},        only4,     true,  3},
    {{"3p", beidou},      always,    false, uncounted},
    {{"3p", navic},       only4,     true,  5},
    {{"3p", sbas},        only4,     true,  6},
    {{"3p", glonassCdma}, always,    true,  6},

    {{"5p", gps},         always,    true,  uncounted},
    {{"5p", glonass},     always,    true,  uncounted},
    {{"5p", galileo},     always,    true,  2},
    {{"5p", qzss},        always,    true,  3},
    {{"5p", beidou},      always,    false, uncounted},
    {{"5p", navic},       always,    true,  5},
    {{"5p", sbas},        only3And4, true,  6},
    {{"5p", glonassCdma}, always,    true,  6},

    {{"lp", gps},         always,    true,  uncounted},
    {{"lp", glonass},     only4,     true,  1},
    {{"lp", qzss},        always,    true,  3},
    {{"lp", beidou},      always,    false, uncounted},
    {{"lp", navic},       from401,   true,  5},
    {{"lp", sbas},        only4,     true,  6},
    {{"lp", glonassCdma}, shut,      false, uncounted},
});
// clang-format on

class PhaseNotes : public testsupport::AssemblyTable<NoteRow> {
protected:
    // Three satellites among one of BeiDou, which notes nothing (or of GPS, in a list of its own), the last
    // of them at the place of another satellite's record.
    void run(double version) {
        restart();
        options.rinexVersion = version;
        record(GetParam().system, 2).number = 77;
        list({satellite(GetParam().system, 11), satellite(GetParam().system == beidou ? gps : beidou, 1),
              satellite(GetParam().system, 12), satellite(GetParam().system, 13)});
        put(GetParam().id, {1, 2, 3, 4});
        assemble();
    }
    [[nodiscard]] static std::size_t band() { return testsupport::bandOf(GetParam().id); }
    [[nodiscard]] orbconv::SatelliteNumbers& satelliteList() {
        return survey.phaseShiftSatellites[testsupport::rowOf(GetParam().system)][band()];
    }
    void expectCount(std::uint32_t count) {
        for (std::size_t row = 0; row < 7; ++row) {
            for (std::size_t column = 0; column < 12; ++column) {
                EXPECT_EQ(survey.signalUseCount[row][column],
                          row == GetParam().countRow && column == band() ? count : 0U)
                    << row << " " << column << ", version " << options.rinexVersion;
            }
        }
    }
};

TEST_P(PhaseNotes, SatellitesAreListedAtTheirPlaceAlsoWithoutTheirRecord) {
    for (const double version : everyVersion) {
        run(version);
        orbconv::SatelliteNumbers expected{};
        if (GetParam().lists && GetParam().gate.opensFor(version)) {
            expected[0] = 11;
            expected[1] = 12;
            expected[2] = 13;
        }
        EXPECT_EQ(satelliteList(), expected) << version;
    }
}

TEST_P(PhaseNotes, OtherListsOfTheConstellationAreLeftAlone) {
    for (const double version : everyVersion) {
        run(version);
        satelliteList() = {};
        for (const auto& others : survey.phaseShiftSatellites[testsupport::rowOf(GetParam().system)]) {
            EXPECT_EQ(others, orbconv::SatelliteNumbers{}) << version;
        }
    }
}

TEST_P(PhaseNotes, SatellitesAreCountedInTheRowOfTheConstellation) {
    for (const double version : everyVersion) {
        run(version);
        expectCount(GetParam().gate.opensFor(version) ? 3 : 0);
    }
}

TEST_P(PhaseNotes, CountsGoOnFromEpochToEpoch) {
    for (const double version : everyVersion) {
        run(version);
        assemble();
        expectCount(GetParam().gate.opensFor(version) ? 6 : 0);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryCell, PhaseNotes, testing::ValuesIn(noteRows), testsupport::nameOfCell);

class PhaseLists : public testsupport::AssemblyTest {
protected:
    orbconv::SatelliteNumbers& listOf(Constellation system, std::size_t band) {
        return survey.phaseShiftSatellites[testsupport::rowOf(system)][band];
    }
};

TEST_F(PhaseLists, GlonassEntriesAreSignedChannels) {
    list({satellite(glonass, -7), satellite(glonass, 6)});
    put("cp", {1, 2});
    assemble();
    EXPECT_EQ(listOf(glonass, 0)[0], -7);
    EXPECT_EQ(listOf(glonass, 0)[1], 6);
}

TEST_F(PhaseLists, LaterEpochOverwritesThePlace) {
    list({satellite(gps, 5), satellite(gps, 6)});
    put("1p", {1, 2});
    assemble();
    list({satellite(gps, 7)});
    put("1p", {1});
    assemble();
    EXPECT_EQ(listOf(gps, 1)[0], 7);
    EXPECT_EQ(listOf(gps, 1)[1], 6);
}

TEST_F(PhaseLists, SatelliteWithoutARecordIsListed) {
    list(satellites(gps, 1, 34));
    put("2p", std::vector<std::int64_t>(34, 1));
    assemble();
    EXPECT_EQ(listOf(gps, 2)[31], 32);
    EXPECT_EQ(listOf(gps, 2)[33], 34);
    EXPECT_EQ(listOf(gps, 2)[34], 0);
}

TEST_F(PhaseLists, SatellitesBeyondTheSixtiethAreNotListed) {
    list(satellites(gps, 1, 180));
    put("1p", std::vector<std::int64_t>(180, 1));
    assemble();
    EXPECT_EQ(listOf(gps, 1)[59], 60);
    EXPECT_EQ(listOf(gps, 1)[60], 0);
    EXPECT_EQ(listOf(gps, 2), orbconv::SatelliteNumbers{});
}

}  // namespace phaseListsTest
}  // namespace
