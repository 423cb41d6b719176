// Signal strengths and their RINEX digits.
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "support/assembly_bench.h"

namespace {

using testsupport::Cell;
using testsupport::Constellation;
using testsupport::everyVersion;
using testsupport::Gate;
using testsupport::ObsRow;
using testsupport::satellite;
using testsupport::satellites;
using testsupport::SatEpochRecord;
using enum testsupport::Constellation;

constexpr auto strengths = ObsRow::strength;

struct StrengthRow : Cell {
    Gate gate;
};

using testsupport::always;
using testsupport::shut;

// clang-format off
constexpr auto strengthRows = std::to_array<StrengthRow>({
    {{"CE", gps},     always}, {{"CE", glonass}, always}, {{"CE", galileo}, always},
    {{"1E", gps},     always}, {{"1E", glonass}, always}, {{"1E", galileo}, always},
    {{"2E", gps},     always}, {{"2E", glonass}, always}, {{"2E", galileo}, always},
    {{"3E", gps},     always}, {{"3E", glonass}, always}, {{"3E", galileo}, always},
    {{"5E", gps},     always}, {{"5E", glonass}, always}, {{"5E", galileo}, always},
    {{"lE", gps},     always}, {{"lE", glonass}, shut},   {{"lE", galileo}, testsupport::only136},
    {{"CE", beidou},  always}, {{"CE", navic},   testsupport::only3And4}, {{"CE", glonassCdma}, always},
    {{"1E", beidou},  always}, {{"1E", navic},   testsupport::only136},   {{"1E", glonassCdma}, shut},
    {{"2E", beidou},  always}, {{"2E", navic},   testsupport::only136},   {{"2E", glonassCdma}, shut},
    {{"3E", beidou},  always}, {{"3E", navic},   testsupport::only136},   {{"3E", glonassCdma}, always},
    {{"5E", beidou},  always}, {{"5E", navic},   always},                 {{"5E", glonassCdma}, always},
    {{"lE", beidou},  always}, {{"lE", navic},   testsupport::only401},   {{"lE", glonassCdma}, shut},
});
// clang-format on

// The digit of an element in 0.25 dB-Hz: whole sixes of dB-Hz, 1 to 9.
int digitOf(int element) {
    return std::clamp(element / 24, 1, 9);
}

class Strengths : public testsupport::AssemblyTable<StrengthRow> {
protected:
    SatEpochRecord& run(double version, bool included, int element) {
        restart();
        options.rinexVersion = version;
        includeEverySystem();
        include(GetParam().system, included);
        list({satellite(GetParam().system, 5)});
        put(GetParam().id, {element});
        assemble();
        return record(GetParam().system);
    }
    [[nodiscard]] static std::size_t column() { return testsupport::bandOf(GetParam().id); }
    static double openVersion() {
        for (const double version : {4.01, 136.0}) {
            if (GetParam().gate.opensFor(version)) {
                return version;
            }
        }
        return 0.0;
    }
    static bool everOpen() { return openVersion() != 0.0; }
};

TEST_P(Strengths, AreStoredForTheVersionsOfTheSignal) {
    for (const double version : everyVersion) {
        const SatEpochRecord& record = run(version, true, 187);
        for (std::size_t other = 0; other < 11; ++other) {
            const bool stored = other == column() && GetParam().gate.opensFor(version);
            EXPECT_EQ(record.at(strengths, other), stored ? 46.75 : 0.0)
                << "column " << other << ", version " << version;
        }
    }
}

TEST_P(Strengths, AreNotStoredForALeftOutConstellation) {
    for (const double version : everyVersion) {
        const SatEpochRecord& record = run(version, false, 187);
        EXPECT_EQ(record.obs, SatEpochRecord{}.obs);
        EXPECT_EQ(record.strengthIndex, SatEpochRecord{}.strengthIndex);
        EXPECT_EQ(record.number, 0);
    }
}

TEST_P(Strengths, AreAQuarterOfEveryElement) {
    for (int element = 0; element <= 255; ++element) {
        ASSERT_EQ(run(openVersion(), true, element).at(strengths, column()),
                  everOpen() ? element * 0.25 : 0.0);
    }
}

TEST_P(Strengths, DigitIsTheNumberOfWholeSixes) {
    // NavIC has a rule of its own in the last band.
    const bool ofBandC = GetParam().id == "lE" && GetParam().system == navic;
    for (int element = 0; element <= 255; ++element) {
        const SatEpochRecord& record = run(openVersion(), true, element);
        for (std::size_t other = 0; other < 22; ++other) {
            const int digit = ofBandC ? 1 : digitOf(element);
            ASSERT_EQ(record.strengthIndex[other], other == column() && everOpen() ? digit : 0) << element;
        }
    }
}

TEST_P(Strengths, AreDroppedInAnotherSatellitesRecord) {
    restart();
    options.rinexVersion = openVersion();
    includeEverySystem();
    record(GetParam().system, 0).number = 6;
    list(satellites(GetParam().system, 4, 2));
    put(GetParam().id, {100, 120});
    assemble();
    EXPECT_EQ(record(GetParam().system, 0).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(GetParam().system, 0).strengthIndex, SatEpochRecord{}.strengthIndex);
    EXPECT_EQ(record(GetParam().system, 1).at(strengths, column()), everOpen() ? 30.0 : 0.0);
}

TEST_P(Strengths, ClaimAFreeRecord) {
    for (const double version : everyVersion) {
        restart();
        includeEverySystem();
        options.rinexVersion = version;
        staleList({satellite(GetParam().system, 5)});
        put(GetParam().id, {100});
        assemble();
        EXPECT_EQ(record(GetParam().system).number, GetParam().gate.opensFor(version) ? 5 : 0) << version;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryCell, Strengths, testing::ValuesIn(strengthRows), testsupport::nameOfCell);

class StrengthSteps : public testsupport::AssemblyTest {};

TEST_F(StrengthSteps, DigitsAtTheirBounds) {
    struct Bound {
        int element;  // 0.25 dB-Hz
        int digit;
    };
    for (const auto& [element, digit] : {Bound{0, 1},
                                         {1, 1},
                                         {47, 1},
                                         {48, 2},
                                         {71, 2},
                                         {72, 3},
                                         {191, 7},
                                         {192, 8},
                                         {215, 8},
                                         {216, 9},
                                         {239, 9},
                                         {240, 9},
                                         {255, 9}}) {
        list({satellite(gps, 5)});
        put("CE", {element});
        assemble();
        EXPECT_EQ(record(gps).strengthIndex[0], digit) << element;
    }
}

TEST_F(StrengthSteps, ExcludedGpsIsPassedOverAndTheOthersKeepTheirPlaces) {
    options.includeGps = false;
    list({satellite(gps, 5), satellite(galileo, 6), satellite(gps, 7), satellite(galileo, 8)});
    put("CE", {40, 80, 120, 160});
    assemble();
    EXPECT_EQ(record(gps, 0).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(gps, 1).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(galileo, 0).at(strengths, 0), 20.0);
    EXPECT_EQ(record(galileo, 1).at(strengths, 0), 40.0);
}

TEST_F(StrengthSteps, DigitOutlivesTheSatellite) {
    list({satellite(gps, 5)});
    put("2E", {192});
    assemble();
    orbconv::clearEpochRecords(store);
    put("2E", {});
    list({satellite(gps, 6)});
    assemble();
    EXPECT_EQ(record(gps).number, 6);
    EXPECT_EQ(record(gps).strengthIndex[2], 8);
    EXPECT_EQ(record(gps).at(strengths, 2), 0.0);
}

// ---- the last band ----

TEST_F(StrengthSteps, LastBandOfOwnRecordHasTheDigitOfItsOwnStrength) {
    for (const Constellation system : {gps, beidou}) {
        list({satellite(system, 5)});
        put("5E", {48});
        put("lE", {192});
        assemble();
        EXPECT_EQ(record(system).at(strengths, 5), 48.0);
        EXPECT_EQ(record(system).strengthIndex[5], 8);
    }
}

TEST_F(StrengthSteps, LastBandOfAFreeRecordHasTheDigitOfThePreviousBand) {
    for (const Constellation system : {gps, beidou}) {
        record(system).at(strengths, 4) = 47.75;
        staleList({satellite(system, 5)});
        put("lE", {255});
        assemble();
        EXPECT_EQ(record(system).at(strengths, 5), 63.75);
        EXPECT_EQ(record(system).strengthIndex[5], 7);
    }
}

TEST_F(StrengthSteps, LastBandOfAFreeRecordWithoutThePreviousBandHasDigitOne) {
    for (const Constellation system : {gps, beidou}) {
        staleList({satellite(system, 5)});
        put("lE", {255});
        assemble();
        EXPECT_EQ(record(system).at(strengths, 5), 63.75);
        EXPECT_EQ(record(system).strengthIndex[5], 1);
    }
}

TEST_F(StrengthSteps, LastBandOfSatelliteZeroAlwaysHasTheDigitOfThePreviousBand) {
    list({satellite(gps, 0)});
    put("5E", {120});
    put("lE", {255});
    assemble();
    EXPECT_EQ(record(gps).strengthIndex[4], 5);
    EXPECT_EQ(record(gps).strengthIndex[5], 5);
}

TEST_F(StrengthSteps, LastBandOfNavicHasTheDigitOfBandC) {
    options.rinexVersion = 4.01;
    list({satellite(navic, 5)});
    put("CE", {192});
    put("5E", {72});
    put("lE", {120});
    assemble();
    EXPECT_EQ(record(navic).at(strengths, 5), 30.0);
    EXPECT_EQ(record(navic).strengthIndex[5], 8);
    EXPECT_EQ(record(navic).strengthIndex[4], 3);
}

TEST_F(StrengthSteps, LastBandOfAFreeNavicRecordHasTheDigitOfBandCToo) {
    options.rinexVersion = 4.01;
    record(navic).at(strengths, 0) = 24.0;
    record(navic).at(strengths, 4) = 54.0;
    staleList({satellite(navic, 5)});
    put("lE", {192});
    assemble();
    EXPECT_EQ(record(navic).at(strengths, 5), 48.0);
    EXPECT_EQ(record(navic).strengthIndex[5], 4);
}

TEST_F(StrengthSteps, LastBandOfGlonassStoresNothing) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        list({satellite(glonass, 5), satellite(gps, 6)});
        put("lE", {192, 120});
        assemble();
        EXPECT_EQ(record(glonass).obs, SatEpochRecord{}.obs);
        EXPECT_EQ(record(glonass).strengthIndex[5], 0);
        EXPECT_EQ(record(gps).at(strengths, 5), 30.0);
    }
}

}  // namespace
