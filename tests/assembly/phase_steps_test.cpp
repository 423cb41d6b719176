// Carrier phases: time of flight times the carrier, and a shift and an addition in cycles.
#include <gtest/gtest.h>

#include <cmath>
#include <string_view>

#include "support/assembly_bench.h"

namespace {
namespace phaseStepsTest {

using testsupport::always;
using testsupport::Cell;
using testsupport::Constellation;
using testsupport::everyVersion;
using testsupport::from401;
using testsupport::Gate;
using testsupport::ObsRow;
using testsupport::only136;
using testsupport::only3And4;
using testsupport::only4;
using testsupport::satellite;
using testsupport::satellites;
using testsupport::SatEpochRecord;
using testsupport::shut;
using enum testsupport::Constellation;

constexpr auto phases = ObsRow::phase;

// Carriers of GLONASS, the first two of which depend on the channel, and the mark of a step without a value.
constexpr double f1 = -1.0;
constexpr double f2 = -2.0;
constexpr double f5 = -5.0;
constexpr double noValue = 0.0;

struct PhaseRow : Cell {
    Gate gate;
    double megahertz;  // or one of the above
    double shift;      // cycles
};

// clang-format off
constexpr auto phaseRows = std::to_array<PhaseRow>({
    {{"cp", gps},         always,    1575.42,  0.0},
    {{"1p", gps},         always,    1575.42,  -0.25},
    {{"2p", gps},         always,    1227.6,   0.0},
    {{"3p", gps},         always,    1227.6,   0.25},
    {{"5p", gps},         always,    1176.45,  0.25},
    {{"lp", gps},         always,    1575.42,  -0.25},
    {{"cp", glonass},     always,    f1,       0.0},
    {{"1p", glonass},     always,    f1,       -0.25},
    {{"2p", glonass},     always,    f2,       0.25},
    {{"3p", glonass},     always,    f2,       0.0},
    {{"5p", glonass},     always,    f5,       0.25},
    {{"lp", glonass},     only4,     noValue,  0.0},
    {{"cp", galileo},     always,    1575.42,  0.5},
    {{"1p", galileo},     always,    1191.795, 0.25},
    {{"2p", galileo},     always,    1207.14,  0.25},
    {{"3p", galileo},     always,    1278.75,  0.5},
    {{"5p", galileo},     always,    1176.45,  0.25},
    {{"cp", qzss},        always,    noValue,  0.0},
    {{"1p", qzss},        only4,     noValue,  0.0},
    {{"2p", qzss},        always,    noValue,  0.25},
    {{"3p", qzss},        only4,     noValue,  0.0},
    {{"5p", qzss},        always,    noValue,  0.25},
    {{"lp", qzss},        always,    noValue,  -0.25},
    {{"cp", beidou},      always,    1561.098, 0.0},
    {{"1p", beidou},      always,    1191.795, 0.25},
    {{"2p", beidou},      always,    1207.14,  0.0},
    {{"3p", beidou},      always,    1268.52,  0.0},
    {{"5p", beidou},      always,    1176.45,  0.25},
    {{"lp", beidou},      always,    1575.42,  0.0},
    {{"cp", navic},       only3And4, 2492.028, 0.0},
    {{"1p", navic},       only136,   2492.028, 0.0},
    {{"2p", navic},       only4,     2492.028, 0.0},
    {{"3p", navic},       only4,     2492.028, 0.0},
    {{"5p", navic},       always,    1176.45,  0.0},
    {{"lp", navic},       from401,   1575.42,  0.0},
    {{"cp", sbas},        only3And4, noValue,  0.0},
    {{"1p", sbas},        only4,     noValue,  0.0},
    {{"2p", sbas},        only4,     noValue,  0.0},
    {{"3p", sbas},        only4,     noValue,  0.0},
    {{"5p", sbas},        only3And4, noValue,  0.25},
    {{"lp", sbas},        only4,     noValue,  0.0},
    {{"cp", glonassCdma}, always,    1600.995, 0.0},
    {{"3p", glonassCdma}, always,    1248.06,  0.0},
    {{"5p", glonassCdma}, always,    1202.025, 0.0},
    {{"1p", glonassCdma}, shut,      noValue,  0.0},
    {{"2p", glonassCdma}, shut,      noValue,  0.0},
    {{"lp", glonassCdma}, shut,      noValue,  0.0},
});
// clang-format on

// A satellite number that is in no BeiDou class.
constexpr int plainNumber = 5;

// Time of flight in cycles of the row's carrier, formed as the constellation's products are.
double cycles(double megahertz, double time, int channel) {
    const double million = std::pow(10.0, 6.0);
    if (megahertz == f1) {
        return million * (channel * 0.5625 + 1602.0) * time;
    }
    if (megahertz == f2) {
        return million * (channel * 0.4375 + 1246.0) * time;
    }
    if (megahertz == f5) {
        return million * (time * 1202.025);
    }
    return time * (million * megahertz);
}

double phaseOf(const PhaseRow& row, std::int32_t value, double clockOffset, int number, double extra = 0.0) {
    const double time = value * std::pow(2.0, -40.0) + clockOffset;
    return cycles(row.megahertz, time, number) + row.shift + extra;
}

class Phases : public testsupport::AssemblyTable<PhaseRow> {
protected:
    SatEpochRecord& run(double version, int number, std::int32_t value, double clockOffset) {
        restart();
        options.rinexVersion = version;
        SatEpochRecord& record = this->record(GetParam().system);
        record.clockOffset = clockOffset;
        staleList({satellite(GetParam().system, number)});
        put(GetParam().id, {value});
        assemble();
        return record;
    }
    [[nodiscard]] static std::size_t column() { return testsupport::bandOf(GetParam().id); }
    [[nodiscard]] float& shiftCell() {
        return survey.phaseShiftValues[testsupport::rowOf(GetParam().system)][column()];
    }
    static bool hasValue(double version) {
        return GetParam().gate.opensFor(version) && GetParam().megahertz != noValue;
    }
    static double openVersion() {
        for (const double version : everyVersion) {
            if (GetParam().gate.opensFor(version)) {
                return version;
            }
        }
        return 4.01;
    }
};

TEST_P(Phases, AreStoredForTheVersionsOfTheSignal) {
    for (const double version : everyVersion) {
        const SatEpochRecord& record = run(version, plainNumber, -7654321, 0.0712345);
        for (std::size_t other = 0; other < 11; ++other) {
            const bool stored = other == column() && hasValue(version);
            EXPECT_EQ(record.at(phases, other),
                      stored ? phaseOf(GetParam(), -7654321, 0.0712345, plainNumber) : 0.0)
                << "column " << other << ", version " << version;
        }
    }
}

TEST_P(Phases, NeedNoConstellationIncluded) {
    includeEverySystem(false);
    const double version = openVersion();
    EXPECT_EQ(run(version, plainNumber, 55, 0.07).at(phases, column()),
              hasValue(version) ? phaseOf(GetParam(), 55, 0.07, plainNumber) : 0.0);
}

TEST_P(Phases, AreExactForAnyValue) {
    testsupport::Values values(5);
    const double version = openVersion();
    for (int i = 0; i < 300; ++i) {
        const std::int32_t value = values.int32();
        const double clockOffset = values.int32() * 1e-11 + 0.075;
        // Channels for GLONASS, numbers below the BeiDou classes for the others.
        const int number = GetParam().system == glonass ? values.between(-7, 6) : values.between(1, 5);
        ASSERT_EQ(run(version, number, value, clockOffset).at(phases, column()),
                  hasValue(version) ? phaseOf(GetParam(), value, clockOffset, number) : 0.0)
            << value << " " << clockOffset << " " << number;
    }
}

TEST_P(Phases, AreDroppedInAnotherSatellitesRecord) {
    const double version = openVersion();
    options.rinexVersion = version;
    record(GetParam().system).number = 3;
    list(satellites(GetParam().system, 4, 2));
    put(GetParam().id, {100, 200});
    assemble();
    EXPECT_EQ(record(GetParam().system, 0).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(GetParam().system, 1).at(phases, column()),
              hasValue(version) ? phaseOf(GetParam(), 200, 0.0, 5) : 0.0);
}

TEST_P(Phases, ShiftIsStoredForTheHeader) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        shiftCell() = 9.0F;
        list({satellite(GetParam().system, 5)});
        put(GetParam().id, {100});
        assemble();
        EXPECT_EQ(shiftCell(),
                  GetParam().gate.opensFor(version) ? static_cast<float>(GetParam().shift) : 9.0F)
            << version;
        shiftCell() = 0.0F;
        EXPECT_EQ(survey.phaseShiftValues, orbconv::SignalSurvey{}.phaseShiftValues);
    }
}

TEST_P(Phases, ShiftIsStoredAlsoForADroppedPhase) {
    options.rinexVersion = openVersion();
    shiftCell() = 9.0F;
    record(GetParam().system).number = 3;
    list({satellite(GetParam().system, 5)});
    put(GetParam().id, {100});
    assemble();
    const bool stored = GetParam().gate.opensFor(openVersion());
    EXPECT_EQ(shiftCell(), stored ? static_cast<float>(GetParam().shift) : 9.0F);
}

TEST_P(Phases, ShiftIsNotStoredWithoutASatellite) {
    options.rinexVersion = openVersion();
    shiftCell() = 9.0F;
    list({satellite(GetParam().system == gps ? galileo : gps, 5), satellite(GetParam().system, 5)});
    put(GetParam().id, {100});
    assemble();
    EXPECT_EQ(shiftCell(), 9.0F);
}

INSTANTIATE_TEST_SUITE_P(EveryCell, Phases, testing::ValuesIn(phaseRows), testsupport::nameOfCell);

// ---- the addition for BeiDou classes ----

struct ExtraRow {
    std::string_view id;
    double megahertz;
    double shift;
    int lastOfClass;
    double extra;
};

class BeidouExtraPhase : public testsupport::AssemblyTable<ExtraRow> {};

TEST_P(BeidouExtraPhase, GoesToTheClassAndTheShiftOfTheHeaderDoesNotShowIt) {
    const ExtraRow& row = GetParam();
    const PhaseRow plain = {{row.id, beidou}, always, row.megahertz, row.shift};
    const std::size_t band = testsupport::bandOf(row.id);
    for (const int number : {1, 5, 6, 10, 18, 19, 20, 58, 59, 60, 117}) {
        const double extra = number >= 6 && number <= row.lastOfClass ? row.extra : 0.0;
        for (const int value : {0, 987654321, -123456789}) {
            restart();
            list({satellite(beidou, number)});
            put("rx", {424242});
            put(row.id, {value});
            assemble();
            EXPECT_EQ(record(beidou).at(phases, band),
                      phaseOf(plain, value, 424242 * 2e-11 + 0.105, number, extra))
                << number;
            EXPECT_EQ(survey.phaseShiftValues[4][band], static_cast<float>(row.shift));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryBand, BeidouExtraPhase,
    testing::Values(ExtraRow{"cp", 1561.098, 0.0, 58, 0.5}, ExtraRow{"1p", 1191.795, 0.25, 58, 0.0},
                    ExtraRow{"2p", 1207.14, 0.0, 18, 0.25}, ExtraRow{"3p", 1268.52, 0.0, 58, 0.5},
                    ExtraRow{"5p", 1176.45, 0.25, 18, 0.5}, ExtraRow{"lp", 1575.42, 0.0, 58, 0.0}),
    testsupport::nameOfMessage);

// ---- single rules ----

class PhaseSteps : public testsupport::AssemblyTest {};

TEST_F(PhaseSteps, WithoutAClockOffsetThePhaseIsTheValueTimesTheCarrier) {
    list({satellite(gps, 5)});
    put("cp", {1099511627});
    assemble();
    EXPECT_EQ(record(gps).at(phases, 0), 1099511627 / 1099511627776.0 * 1575420000.0);
}

TEST_F(PhaseSteps, ValueOfZeroIsTheClockOffsetAlone) {
    list({satellite(gps, 5)});
    put("rx", {1000});
    put("2p", {0});
    assemble();
    EXPECT_EQ(record(gps).at(phases, 2), (1000 * 1e-11 + 0.075) * (1e6 * 1227.6));
}

TEST_F(PhaseSteps, FirstCarrierOfChannelMinusSevenIs1598Point0625) {
    list({satellite(glonass, -7)});
    put("rx", {1000});
    put("cp", {0});
    assemble();
    EXPECT_EQ(record(glonass).at(phases, 0), 1e6 * 1598.0625 * (1000 * 1e-11 + 0.075));
}

TEST_F(PhaseSteps, LastBandOfGlonassErasesItsCodesAndStoresNoValue) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        record(glonass).signalName.fill("old");
        survey.codes(glonass).fill("old");
        list({satellite(glonass, 2)});
        put("lp", {100});
        assemble();
        const std::string_view expected = only4.opensFor(version) ? "" : "old";
        EXPECT_EQ(record(glonass).signalName[26].view(), expected);
        EXPECT_EQ(code(glonass, 26), expected);
        EXPECT_EQ(record(glonass).obs, SatEpochRecord{}.obs);
    }
}

TEST_F(PhaseSteps, SwitchedOffLastBandOfGalileoWouldStoreItsShiftInTheFourthColumn) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        survey.phaseShiftValues[2] = {9.0F, 9.0F, 9.0F, 9.0F, 9.0F, 9.0F};
        record(galileo).signalName.fill("old");
        record(galileo).at(phases, 5) = 7.5;
        const auto before = record(galileo).obs;
        list({satellite(galileo, 2)});
        put("lp", {100});
        assemble();
        const bool open = version == 136.0;
        EXPECT_EQ(survey.phaseShiftValues[2][3], open ? 0.0F : 9.0F) << version;
        EXPECT_EQ(survey.phaseShiftValues[2][5], 9.0F);
        EXPECT_EQ(survey.signalUseCount[2][3], open ? 1U : 0U) << version;
        EXPECT_EQ(survey.signalUseCount[2][5], 0U);
        EXPECT_EQ(record(galileo).signalName[26].view(), "old");
        EXPECT_EQ(record(galileo).obs, before);
    }
}

}  // namespace phaseStepsTest
}  // namespace
