// The numeric constants, written again by hand and formed again with the same roundings.
#include "run/constants.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <string>

namespace {

struct Carrier {
    const char* name;
    double hertz;
    double megahertz;
};

void PrintTo(const Carrier& carrier, std::ostream* out) {
    *out << carrier.name;
}

class CarrierFrequency : public testing::TestWithParam<Carrier> {};

// clang-format off
constexpr Carrier carriers[] = {
    {"GpsL1",         orbconv::carrierGpsL1,         1575.42},
    {"GpsL2",         orbconv::carrierGpsL2,         1227.6},
    {"GpsL5",         orbconv::carrierGpsL5,         1176.45},
    {"GalileoE5a",    orbconv::carrierGalileoE5a,    1176.45},
    {"GalileoE5b",    orbconv::carrierGalileoE5b,    1207.14},
    {"GalileoE5",     orbconv::carrierGalileoE5,     1191.795},
    {"GalileoE6",     orbconv::carrierGalileoE6,     1278.75},
    {"BeidouB1I",     orbconv::carrierBeidouB1I,     1561.098},
    {"BeidouB1C",     orbconv::carrierBeidouB1C,     1575.42},
    {"BeidouB2a",     orbconv::carrierBeidouB2a,     1176.45},
    {"BeidouB2b",     orbconv::carrierBeidouB2b,     1207.14},
    {"BeidouB2ab",    orbconv::carrierBeidouB2ab,    1191.795},
    {"BeidouB3I",     orbconv::carrierBeidouB3I,     1268.52},
    {"NavicL1",       orbconv::carrierNavicL1,       1575.42},
    {"NavicL5",       orbconv::carrierNavicL5,       1176.45},
    {"NavicS",        orbconv::carrierNavicS,        2492.028},
    {"GlonassCdmaL1", orbconv::carrierGlonassCdmaL1, 1600.995},
    {"GlonassCdmaL2", orbconv::carrierGlonassCdmaL2, 1248.06},
    {"GlonassCdmaL3", orbconv::carrierGlonassCdmaL3, 1202.025},
};
// clang-format on

}  // namespace

TEST_P(CarrierFrequency, IsAMillionTimesItsMegahertz) {
    EXPECT_EQ(GetParam().hertz, std::pow(10.0, 6) * GetParam().megahertz);
}

INSTANTIATE_TEST_SUITE_P(Constants, CarrierFrequency, testing::ValuesIn(carriers),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(RangeUnits, AreHundredthsOfANanosecondOrTwoOfThem) {
    EXPECT_EQ(orbconv::rangeUnitGps, 1e-11);
    EXPECT_EQ(orbconv::rangeUnitGlonass, 1e-11);
    EXPECT_EQ(orbconv::rangeUnitGlonassCdma, 1e-11);
    EXPECT_EQ(orbconv::rangeUnitGalileo, 1e-11 + 1e-11);
    EXPECT_EQ(orbconv::rangeUnitBeidou, 1e-11 + 1e-11);
    EXPECT_EQ(orbconv::rangeUnitNavic, 1e-11 + 1e-11);
}

TEST(RangeUnits, EqualThePowerOfTenOfTheMathLibrary) {
    EXPECT_EQ(orbconv::rangeUnitGps, std::pow(10.0, -11));
    EXPECT_EQ(orbconv::dopplerUnit, std::pow(10.0, -4));
}

TEST(ScaleFactors, AreTheUnitsOfTheReceiver) {
    EXPECT_EQ(orbconv::dopplerUnit, 1e-4);
    EXPECT_EQ(orbconv::phaseUnit, std::ldexp(1.0, -40));
    EXPECT_EQ(orbconv::rangeDeltaUnit, 1e-11);
    EXPECT_EQ(orbconv::rangeDeltaOffset, 2e-7);
    EXPECT_EQ(orbconv::strengthUnit, 0.25);
    EXPECT_EQ(orbconv::strengthPerDigit, 6.0);
}

TEST(RangeOffsets, DependOnTheConstellation) {
    EXPECT_EQ(orbconv::rangeOffsetGpsGlonass, 0.075);
    EXPECT_EQ(orbconv::rangeOffsetGalileo, 0.085);
    EXPECT_EQ(orbconv::rangeOffsetBeidouNavic, 0.105);
}

TEST(SpeedOfLight, IsExact) {
    EXPECT_EQ(orbconv::speedOfLight, 299792458.0);
}

TEST(GlonassCarriers, StepByTheChannelInMegahertz) {
    EXPECT_EQ(orbconv::glonassL1Megahertz(0), 1602.0);
    EXPECT_EQ(orbconv::glonassL1Megahertz(-7), 1598.0625);
    EXPECT_EQ(orbconv::glonassL1Megahertz(6), 1605.375);
    EXPECT_EQ(orbconv::glonassL2Megahertz(0), 1246.0);
    EXPECT_EQ(orbconv::glonassL2Megahertz(-7), 1242.9375);
    EXPECT_EQ(orbconv::glonassL2Megahertz(6), 1248.625);
    EXPECT_EQ(orbconv::glonassL3Megahertz, 1202.025);
}
