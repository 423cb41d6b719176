// Doppler: the reference of DX, the full value of DC, and the differences that are scaled from the reference
// carrier to the band's own.
#include <gtest/gtest.h>

#include <cmath>
#include <string_view>
#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::always;
using testsupport::Cell;
using testsupport::Constellation;
using testsupport::everyVersion;
using testsupport::Gate;
using testsupport::ObsRow;
using testsupport::only135;
using testsupport::only136;
using testsupport::only3And4;
using testsupport::only4;
using testsupport::only401;
using testsupport::satellite;
using testsupport::SatEpochRecord;
using testsupport::shut;
using enum testsupport::Constellation;

constexpr auto dopplers = ObsRow::doppler;

// ---- differences ----

// Carriers of GLONASS, which depend on the channel.
constexpr double f1 = -1.0;
constexpr double f2 = -2.0;
constexpr double f5 = -5.0;

struct DopplerRow : Cell {
    Gate gate;
    double band;       // MHz, or one of the above
    double reference;  // MHz
};

// clang-format off
constexpr auto dopplerRows = std::to_array<DopplerRow>({
    {{"0d", gps},         always,    1575.42,  1575.42},
    {{"1d", gps},         always,    1575.42,  1575.42},
    {{"2d", gps},         always,    1227.6,   1575.42},
    {{"3d", gps},         always,    1227.6,   1575.42},
    {{"5d", gps},         always,    1176.45,  1575.42},
    {{"ld", gps},         always,    1575.42,  1575.42},
    {{"0d", glonass},     always,    f1,       f1},
    {{"1d", glonass},     always,    f1,       f1},
    {{"2d", glonass},     always,    f2,       f1},
    {{"3d", glonass},     always,    f2,       f1},
    {{"5d", glonass},     always,    f5,       f1},
    {{"ld", glonass},     shut,      f5,       f1},
    {{"0d", galileo},     always,    1575.42,  1575.42},
    {{"1d", galileo},     always,    1191.795, 1575.42},
    {{"2d", galileo},     always,    1207.14,  1575.42},
    {{"3d", galileo},     always,    1278.75,  1575.42},
    {{"5d", galileo},     always,    1176.45,  1575.42},
    {{"0d", beidou},      always,    1561.098, 1561.098},
    {{"1d", beidou},      always,    1191.795, 1561.098},
    {{"2d", beidou},      always,    1207.14,  1561.098},
    {{"3d", beidou},      always,    1268.52,  1561.098},
    {{"5d", beidou},      always,    1176.45,  1561.098},
    {{"ld", beidou},      always,    1575.42,  1561.098},
    {{"0d", navic},       only3And4, 2492.028, 1575.42},
    {{"1d", navic},       only4,     2492.028, 1575.42},
    {{"2d", navic},       only136,   2492.028, 1575.42},
    {{"3d", navic},       only136,   2492.028, 1575.42},
    {{"5d", navic},       always,    1176.45,  1575.42},
    {{"ld", navic},       only401,   1575.42,  1575.42},
    {{"0d", glonassCdma}, only135,   1600.995, 1600.995},
    {{"1d", glonassCdma}, shut,      1600.995, 1600.995},
    {{"2d", glonassCdma}, shut,      1600.995, 1600.995},
    {{"3d", glonassCdma}, always,    1248.06,  1600.995},
    {{"5d", glonassCdma}, always,    1202.025, 1600.995},
    {{"ld", glonassCdma}, shut,      1600.995, 1600.995},
});
// clang-format on

// In Hz, for GLONASS in MHz.
double carrier(double megahertz, int channel) {
    if (megahertz == f1) {
        return channel * 0.5625 + 1602.0;
    }
    if (megahertz == f2) {
        return channel * 0.4375 + 1246.0;
    }
    return megahertz == f5 ? 1202.025 : std::pow(10.0, 6.0) * megahertz;
}

double scaled(const DopplerRow& row, std::int32_t turnedSum, int number) {
    return turnedSum * carrier(row.band, number) / carrier(row.reference, number) * 1e-4;
}

class DopplerDifferences : public testsupport::AssemblyTable<DopplerRow> {
protected:
    // DX and the row's message for one satellite.
    SatEpochRecord& run(double version, int number, std::int32_t reference, std::int16_t difference) {
        restart();
        options.rinexVersion = version;
        list({satellite(GetParam().system, number)});
        put("DX", {reference});
        put(GetParam().id, {difference});
        assemble();
        return record(GetParam().system);
    }
    [[nodiscard]] static std::size_t column() { return testsupport::bandOf(GetParam().id); }
    // A version that opens the row's gate, if one does.
    static double openVersion() {
        for (const double version : everyVersion) {
            if (GetParam().gate.opensFor(version)) {
                return version;
            }
        }
        return 4.01;
    }
    static bool everOpen() { return GetParam().gate.opensFor(openVersion()); }
};

TEST_P(DopplerDifferences, AreScaledForTheVersionsOfTheSignal) {
    for (const double version : everyVersion) {
        const SatEpochRecord& record = run(version, 5, 12345678, -321);
        for (std::size_t other = 0; other < 11; ++other) {
            const bool stored = other == column() && GetParam().gate.opensFor(version);
            EXPECT_EQ(record.at(dopplers, other), stored ? scaled(GetParam(), -(12345678 - 321), 5) : 0.0)
                << "column " << other << ", version " << version;
        }
    }
}

TEST_P(DopplerDifferences, NeedNoConstellationIncluded) {
    includeEverySystem(false);
    const SatEpochRecord& record = run(openVersion(), 5, 777, 1);
    EXPECT_EQ(record.at(dopplers, column()), everOpen() ? scaled(GetParam(), -778, 5) : 0.0);
}

TEST_P(DopplerDifferences, AreExactForAnyValue) {
    testsupport::Values values(2);
    for (int i = 0; i < 300; ++i) {
        const std::int32_t reference = values.between(-60000000, 60000000);
        const std::int16_t difference = values.int16();
        const int number = values.between(-7, 6);
        // Only GLONASS has negative numbers; those of the others are seen as 249 and above.
        const SatEpochRecord& record = run(openVersion(), number, reference, difference);
        ASSERT_EQ(record.at(dopplers, column()),
                  everOpen() ? scaled(GetParam(), -(reference + difference), number) : 0.0)
            << reference << " " << difference << " " << number;
    }
}

TEST_P(DopplerDifferences, SumAndItsNegationWrapIn32Bits) {
    constexpr std::int32_t lowest = INT32_MIN;
    const double expected = everOpen() ? scaled(GetParam(), lowest, 5) : 0.0;
    EXPECT_EQ(run(openVersion(), 5, lowest, 0).at(dopplers, column()), expected);
    EXPECT_EQ(run(openVersion(), 5, INT32_MAX, 1).at(dopplers, column()), expected);
    const double above = everOpen() ? scaled(GetParam(), -INT32_MAX, 5) : 0.0;
    EXPECT_EQ(run(openVersion(), 5, lowest, -1).at(dopplers, column()), above);
}

TEST_P(DopplerDifferences, StandAloneWithoutAReference) {
    restart();
    options.rinexVersion = openVersion();
    list({satellite(GetParam().system, 5)});
    put(GetParam().id, {250});
    assemble();
    EXPECT_EQ(record(GetParam().system).at(dopplers, column()),
              everOpen() ? scaled(GetParam(), -250, 5) : 0.0);
}

TEST_P(DopplerDifferences, AreDroppedInAnotherSatellitesRecord) {
    options.rinexVersion = openVersion();
    const Constellation system = GetParam().system;
    record(system).number = 6;
    list({satellite(system, 5), satellite(system, 4)});
    put(GetParam().id, {250, 250});
    assemble();
    EXPECT_EQ(record(system, 0).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(system, 1).at(dopplers, column()), everOpen() ? scaled(GetParam(), -250, 4) : 0.0);
    EXPECT_EQ(console.str(), "");
}

TEST_P(DopplerDifferences, ClaimAFreeRecord) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        staleList({satellite(GetParam().system, 5)});
        put(GetParam().id, {250});
        assemble();
        EXPECT_EQ(record(GetParam().system).number, GetParam().gate.opensFor(version) ? 5 : 0) << version;
    }
}

INSTANTIATE_TEST_SUITE_P(EveryCell, DopplerDifferences, testing::ValuesIn(dopplerRows),
                         testsupport::nameOfCell);

class DopplerSteps : public testsupport::AssemblyTest {};

TEST_F(DopplerSteps, SecondCarrierOfChannelZeroIs1246Over1602) {
    list({satellite(glonass, 0)});
    put("DX", {1000000});
    put("2d", {0});
    assemble();
    EXPECT_EQ(record(glonass).at(dopplers, 2), -1000000.0 * 1246.0 / 1602.0 * 1e-4);
}

TEST_F(DopplerSteps, CarriersOfANegativeChannelAreBelowThoseOfChannelZero) {
    list({satellite(glonass, -7)});
    put("DX", {1000000});
    put("3d", {0});
    put("5d", {0});
    assemble();
    EXPECT_EQ(record(glonass).at(dopplers, 3), -1000000.0 * 1242.9375 / 1598.0625 * 1e-4);
    EXPECT_EQ(record(glonass).at(dopplers, 4), -1000000.0 * 1202.025 / 1598.0625 * 1e-4);
}

TEST_F(DopplerSteps, EqualCarriersStillMultiplyAndDivide) {
    // The rounding of both shows in large values, by no more than the last place.
    int differing = 0;
    testsupport::Values values(3);
    for (int i = 0; i < 200; ++i) {
        restart();
        const std::int32_t reference = values.between(1000000000, 2000000000);
        list({satellite(gps, 5)});
        put("DX", {reference});
        put("1d", {0});
        assemble();
        const double plain = -reference * 1e-4;
        const double value = record(gps).at(dopplers, 1);
        differing += value != plain ? 1 : 0;
        EXPECT_NEAR(value, plain, std::abs(plain) * 3e-16);
    }
    EXPECT_GT(differing, 0);
}

TEST_F(DopplerSteps, LastBandOfGalileoIsSwitchedOffInEveryRun) {
    for (const double version : {3.05, 4.0, 4.01}) {
        restart();
        options.rinexVersion = version;
        staleList({satellite(galileo, 5), satellite(gps, 6)});
        put("ld", {250, 250});
        assemble();
        EXPECT_EQ(record(galileo).number, 0) << version;
        EXPECT_EQ(record(galileo).obs, SatEpochRecord{}.obs) << version;
        EXPECT_EQ(record(gps).number, 6);
    }
}

// ---- DX ----

TEST_F(DopplerSteps, ReferenceIsTheRawValueForEverySystemAndVersion) {
    includeEverySystem(false);
    for (const double version : everyVersion) {
        for (const Constellation system : {gps, glonass, galileo, beidou, navic, glonassCdma}) {
            restart();
            options.rinexVersion = version;
            list({satellite(system, 5)});
            put("DX", {-2147483648});
            assemble();
            EXPECT_EQ(record(system).referenceDoppler, INT32_MIN);
            EXPECT_EQ(record(system).number, 0) << "claims nothing";
        }
    }
}

TEST_F(DopplerSteps, ReferenceIsWrittenIntoWhateverRecordStandsThere) {
    record(gps).number = 6;
    list({satellite(gps, 5)});
    put("DX", {4711});
    assemble();
    EXPECT_EQ(record(gps).referenceDoppler, 4711);
    EXPECT_EQ(record(gps).number, 6);
}

TEST_F(DopplerSteps, ReferencesOfSbasAndQzssAreNotKept) {
    includeEverySystem();
    list({satellite(sbas, 20), satellite(qzss, 3), satellite(galileo, 5)});
    put("DX", {1, 2, 3});
    assemble();
    EXPECT_EQ(record(sbas).referenceDoppler, 0);
    EXPECT_EQ(record(qzss).referenceDoppler, 0);
    EXPECT_EQ(record(galileo).referenceDoppler, 3);
}

// ---- DC ----

TEST_F(DopplerSteps, FullDopplerTurnsTheSign) {
    list({satellite(gps, 5)});
    put("DC", {-12345});
    assemble();
    EXPECT_EQ(record(gps).at(dopplers, 0), 12345 * 1e-4);
    EXPECT_NEAR(record(gps).at(dopplers, 0), 1.2345, 1e-15);
}

TEST_F(DopplerSteps, FullDopplerIsNeitherScaledNorReferred) {
    includeEverySystem(false);
    options.rinexVersion = 3.05;
    for (const Constellation system : {gps, glonass, galileo, beidou, navic, glonassCdma}) {
        list({satellite(system, 5)});
        put("DX", {1000000});
        put("DC", {54321});
        assemble();
        EXPECT_EQ(record(system).at(dopplers, 0), -54321 * 1e-4);
    }
}

TEST_F(DopplerSteps, FullDopplerIsExactForAnyValue) {
    testsupport::Values values(4);
    for (int i = 0; i < 300; ++i) {
        restart();
        const std::int32_t value = values.between(-INT32_MAX, INT32_MAX);
        list({satellite(beidou, 5)});
        put("DC", {value});
        assemble();
        ASSERT_EQ(record(beidou).at(dopplers, 0), -value * 1e-4) << value;
    }
}

TEST_F(DopplerSteps, FullDopplerNegationWrapsIn32Bits) {
    list({satellite(gps, 5)});
    put("DC", {-2147483648});
    assemble();
    EXPECT_EQ(record(gps).at(dopplers, 0), -2147483648.0 * 1e-4);
}

TEST_F(DopplerSteps, FullDopplerOfNavicNeedsAVersionOfARun) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        list({satellite(navic, 5)});
        put("DC", {54321});
        assemble();
        EXPECT_EQ(record(navic).at(dopplers, 0), only3And4.opensFor(version) ? -54321 * 1e-4 : 0.0)
            << version;
    }
}

TEST_F(DopplerSteps, DroppedGlonassFullDopplerIsTheOnlyOneReported) {
    for (const Constellation system : {gps, glonass, galileo, beidou, navic, glonassCdma}) {
        restart();
        record(system).number = 6;
        list({satellite(system, 5)});
        put("DC", {54321});
        assemble();
        EXPECT_EQ(record(system).at(dopplers, 0), 0.0);
        EXPECT_EQ(console.str(), system == glonass ? "----->>> Error glo dc\n" : "");
    }
}

TEST_F(DopplerSteps, EveryDroppedGlonassFullDopplerIsReported) {
    record(glonass, 0).number = 6;
    record(glonass, 2).number = 6;
    list({satellite(glonass, 1), satellite(glonass, -2), satellite(glonass, 3)});
    put("DC", {100, 200, 300});
    assemble();
    EXPECT_EQ(console.str(), "----->>> Error glo dc\n----->>> Error glo dc\n");
    EXPECT_EQ(record(glonass, 1).at(dopplers, 0), -200 * 1e-4);
}

TEST_F(DopplerSteps, ZeroDopplerIsPositiveZero) {
    list({satellite(gps, 5)});
    put("DC", {0});
    put("1d", {0});
    assemble();
    EXPECT_FALSE(std::signbit(record(gps).at(dopplers, 0)));
    EXPECT_FALSE(std::signbit(record(gps).at(dopplers, 1)));
}

}  // namespace
