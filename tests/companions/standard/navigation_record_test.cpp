// Which value of a message stands where in its record.
#include "standard/navigation_record.h"

#include <gtest/gtest.h>

#include <limits>

#include "companions/support/navigation_messages.h"
#include "standard/navigation_values.h"

namespace {

using namespace orbconv::standard;
using orbconv::Constellation;
using orbconv::NavType;
using samplelog::LogBuilder;
using testsupport::pi;

using Values = std::vector<std::optional<double>>;
constexpr std::nullopt_t blank = std::nullopt;

const ReceptionTime received = orbconv::reading::timeOfIsoText("2025-01-05T02:00");

std::optional<NavigationRecord> recordOf(LogBuilder& log) {
    return orbconv::standard::recordOf(testsupport::broadcastIn(log.bytes()), received);
}

void expectRecord(LogBuilder& log, std::string_view typeName, const Values& expected) {
    const auto record = recordOf(log);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->typeName, typeName);
    EXPECT_EQ(record->epoch,
              orbconv::reading::timeOfIsoText(typeName == "FDMA" ? "2025-01-05T02:15" : "2025-01-05T02:00"));
    ASSERT_EQ(valuesOfEpochLine + record->orbitLines * valuesOfLine, expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const std::string place =
            "line " + std::to_string((i + 1) / 4) + ", value " + std::to_string((i + 1) % 4);
        EXPECT_EQ(std::isnan(record->values[i]), !expected[i]) << place;
        if (expected[i]) {
            EXPECT_DOUBLE_EQ(record->values[i], *expected[i]) << place;
        }
    }
    for (std::size_t i = expected.size(); i < record->values.size(); ++i) {
        EXPECT_TRUE(std::isnan(record->values[i]));
    }
}

// Clock and orbit as keplerOfWeek has them, with what the messages have otherwise.
Values orbit(double af0, double first1, double first3, const Values& rest) {
    Values values = {af0,     0x1p-40,   0x1p-60,               //
                     first1,  -10.25,    pi * 0x1p-28, pi / 2,  //
                     0x1p-20, 0.0078125, 0x1p-21,      5153.5,  //
                     first3,  0x1p-22,   -pi / 4,      -0x1p-23, 0.3125 * pi, 200.5, pi, -pi * 0x1p-27};
    values.insert(values.end(), rest.begin(), rest.end());
    return values;
}
constexpr double idot = pi * 0x1p-29;

// ---- every kind ----

TEST(NavigationRecord, GpsLnav) {
    LogBuilder log;
    const Values expected = orbit(0x1p-12, 33, 7200,
                                  {idot, 0, 2348, 1,      //
                                   2.8, 5, 0x1p-30, 100,  //
                                   7000, 4, blank, blank});
    expectRecord(log.ge123(testsupport::keplerOfWeek(300)), "LNAV", expected);
    // A long form of the same message says no more.
    expectRecord(log.clear().ge160(testsupport::modernGps(1)), "LNAV", expected);
}

TEST(NavigationRecord, FlagsOfGpsLnav) {
    auto kepler = testsupport::keplerOfWeek(300);
    kepler.flags = 4;
    kepler.iodc = 240;
    LogBuilder log;
    const auto record = recordOf(log.ge123(kepler));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->values[20], 1);             // codes on L2
    EXPECT_EQ(record->values[22], 0);             // L2 P data
    EXPECT_TRUE(std::isnan(record->values[28]));  // the fit interval of other issues is not told
    kepler.iodc = -1;
    EXPECT_TRUE(std::isnan(recordOf(log.clear().ge123(kepler))->values[28]));
    kepler.iodc = 239;
    EXPECT_EQ(recordOf(log.clear().ge123(kepler))->values[28], 4);
}

TEST(NavigationRecord, GpsCnavOfBothForms) {
    const double af0 = 0x1p-12 + 0x1p-36;
    LogBuilder log;
    expectRecord(log.ge168(testsupport::modernGps(2)), "CNAV",
                 orbit(af0, 0.125, 3600,
                       {idot, pi * 0x1p-44, -16, 3,          //
                        -2, 5, 0x1p-30, 7,                   //
                        0x1p-33, 0x1p-34, 0x1p-35, 0x1p-36,  //
                        7000, blank, blank, blank}));
    expectRecord(log.clear().ge160(testsupport::modernGps(4)), "CNAV",
                 orbit(af0, 0.125, 3600,
                       {idot, pi * 0x1p-44, -16, 3,  //
                        -2, 5, 0x1p-30, 7,           //
                        blank, blank, blank, blank,  //
                        7000, blank, blank, blank}));
}

TEST(NavigationRecord, GpsCnv2OfBothForms) {
    const double af0 = 0x1p-12 + 0x1p-36;
    LogBuilder log;
    expectRecord(log.ge160(testsupport::modernGps(8)), "CNV2", orbit(af0, 0.125, 3600, {idot,    pi * 0x1p-44,
                                                                                        -16,     3,  //
                                                                                        -2,      5,
                                                                                        0x1p-30, 7,  //
                                                                                        blank,   blank,
                                                                                        blank,   blank,  //
                                                                                        0x1p-32, 0x1p-31,
                                                                                        blank,   blank,  //
                                                                                        7000,    blank,
                                                                                        blank,   blank}));
    expectRecord(log.clear().ge168(testsupport::modernGps(8)), "CNV2",
                 orbit(af0, 0.125, 3600, {idot,    pi * 0x1p-44,
                                          -16,     3,  //
                                          -2,      5,
                                          0x1p-30, 7,  //
                                          0x1p-33, 0x1p-34,
                                          0x1p-35, 0x1p-36,  //
                                          blank,   blank,
                                          blank,   blank,  //
                                          7000,    blank,
                                          blank,   blank}));
}

TEST(NavigationRecord, Glonass) {
    // 5:00:30 h of Moscow's Sunday are 2:00:30 h of the week of UTC.
    LogBuilder log;
    const Values expected = {-0x1p-14,  0x1p-40,       7230,          //
                             10000.5,   1.5,           0x1p-30,  1,   //
                             -20000.25, -2.5,          -0x1p-29, -7,  //
                             3000.125,  3.5,           0x1p-28,  2,   //
                             blank,     999999999.999, 15,       blank};
    expectRecord(log.ne88(testsupport::glonassOf2025()), "FDMA", expected);
    expectRecord(log.clear().ne103(testsupport::glonassOf2025()), "FDMA", expected);
}

TEST(NavigationRecord, GalileoInavAndFnav) {
    LogBuilder log;
    expectRecord(log.en(testsupport::galileoOf(5)), "INAV",
                 orbit(0x1p-12, 33, 7200,
                       {idot, 517, 2348, blank,     //
                        0.01, 5, 0x1p-32, 0x1p-33,  //
                        7000, blank, blank, blank}));
    expectRecord(log.clear().en(testsupport::galileoOf(2)), "FNAV",
                 orbit(0x1p-12, 33, 7200,
                       {idot, 258, 2348, blank,  //
                        0.01, 5, 0x1p-32, 0,     //
                        7000, blank, blank, blank}));
}

TEST(NavigationRecord, BeidouD1AndD2) {
    LogBuilder log;
    const Values expected = orbit(0x1p-12, 12, 7200,
                                  {idot, blank, 992, blank,   //
                                   2.8, 5, 0x1p-30, 0x1p-31,  //
                                   7000, 11, blank, blank});
    expectRecord(log.cn134(testsupport::beidouOf(1, 20)), "D1", expected);
    expectRecord(log.clear().cn134(testsupport::beidouOf(1, 4)), "D2", expected);
}

TEST(NavigationRecord, BeidouOfALongFormHasNoAges) {
    LogBuilder log;
    const auto record = recordOf(log.cn152(testsupport::beidouOf(1, 20)));
    ASSERT_TRUE(record);
    EXPECT_TRUE(std::isnan(record->values[3]));   // AODE
    EXPECT_TRUE(std::isnan(record->values[28]));  // AODC
}

TEST(NavigationRecord, BeidouCnv1ToCnv3) {
    for (const auto& [flags, name] : {std::pair(std::uint8_t{8}, "CNV1"), {std::uint8_t{0x20}, "CNV2"}}) {
        LogBuilder log;
        expectRecord(log.cn152(testsupport::beidouOf(flags, 20)), name,
                     orbit(0x1p-12, 0.25, 7200, {idot,    pi * 0x1p-45,
                                                 blank,   blank,  //
                                                 blank,   blank,
                                                 blank,   blank,  //
                                                 blank,   blank,
                                                 0x1p-30, 0x1p-31,  //
                                                 blank,   5,
                                                 blank,   100,  //
                                                 7000,    blank,
                                                 blank,   33}));
    }
    LogBuilder log;
    expectRecord(log.cn160(testsupport::beidouOf(0x40, 20)), "CNV3",
                 orbit(0x1p-12, 0.25, 7200,
                       {idot, pi * 0x1p-45, blank, blank,  //
                        blank, blank, blank, blank,        //
                        blank, 5, blank, 0x1p-31,          //
                        7000, blank, blank, blank}));
}

TEST(NavigationRecord, Navic) {
    LogBuilder log;
    expectRecord(log.ie(testsupport::keplerOfWeek(300)), "LNAV",
                 orbit(0x1p-12, 33, 7200,
                       {idot, blank, 2348, blank,  //
                        2.8, 5, 0x1p-30, blank,    //
                        7000, blank, blank, blank}));
}

// ---- what makes no record ----

TEST(NavigationRecord, NumbersThatNoFieldHoldsMakeNoRecord) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {std::nan(""), infinity, -infinity, 1e100, -1e300, 9.99999e99}) {
        auto kepler = testsupport::keplerOfWeek(300);
        kepler.sqrtA = value;
        LogBuilder log;
        EXPECT_FALSE(recordOf(log.ge123(kepler))) << value;
    }
    auto kepler = testsupport::keplerOfWeek(300);
    kepler.af0 = std::numeric_limits<float>::infinity();
    auto glonass = testsupport::glonassOf2025();
    glonass.z = infinity;
    LogBuilder log;
    EXPECT_FALSE(recordOf(log.ie(kepler)));
    EXPECT_FALSE(recordOf(log.clear().ne88(glonass)));
}

TEST(NavigationRecord, NumbersTooSmallAreZeroWithoutSign) {
    auto kepler = testsupport::keplerOfWeek(300);
    kepler.e = -1e-100;
    kepler.sqrtA = 9e99;
    kepler.M0 = -0.0;
    kepler.i0 = 1e-99;
    LogBuilder log;
    const auto record = recordOf(log.ge123(kepler));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->values[8], 0);
    EXPECT_FALSE(std::signbit(record->values[8]));
    EXPECT_EQ(record->values[10], 9e99);
    EXPECT_FALSE(std::signbit(record->values[6]));
    EXPECT_DOUBLE_EQ(record->values[15], pi * 1e-99);
}

TEST(NavigationRecord, SatellitesAndTimesThatAreNoneMakeNoRecord) {
    const auto isRecord = [](const samplelog::KeplerBlock& kepler) {
        LogBuilder log;
        return recordOf(log.ie(kepler)).has_value();
    };
    auto kepler = testsupport::keplerOfWeek(300);
    kepler.sv = 99;
    EXPECT_TRUE(isRecord(kepler));
    kepler.sv = 100;
    EXPECT_FALSE(isRecord(kepler));
    kepler.sv = 0;
    EXPECT_FALSE(isRecord(kepler));
    kepler = testsupport::keplerOfWeek(300);
    kepler.toc = -1;
    EXPECT_FALSE(isRecord(kepler));
    auto glonass = testsupport::glonassOf2025();
    glonass.tb = -1;
    LogBuilder log;
    EXPECT_FALSE(recordOf(log.ne88(glonass)));
}

TEST(NavigationRecord, TermsAreNoRecord) {
    auto broadcast = testsupport::broadcastIn(LogBuilder().io(testsupport::ionoTerms()).take());
    broadcast.sv = 5;
    EXPECT_FALSE(orbconv::standard::recordOf(broadcast, received));
}

TEST(NavigationRecord, TypeWithoutAFormIsNoRecord) {
    auto broadcast = testsupport::broadcastIn(LogBuilder().ge123(testsupport::keplerOfWeek(300)).take());
    std::get<orbconv::reading::GpsEphemeris>(broadcast.body).type = NavType::inav;
    EXPECT_FALSE(orbconv::standard::recordOf(broadcast, received));
}

// ---- indices ----

TEST(NavigationValues, AccuracyOfAnIndex) {
    EXPECT_EQ(nominalAccuracy(-1), std::nullopt);
    // 2 to the power of 1 + N/2, to one decimal.
    const std::vector<double> lower = {2.0, 2.8, 4.0, 5.7, 8.0, 11.3, 16.0};
    for (std::size_t index = 0; index < lower.size(); ++index) {
        EXPECT_EQ(nominalAccuracy(static_cast<std::int32_t>(index)), lower[index]);
    }
    // 2 to the power of N - 2.
    for (std::int32_t index = 7; index <= 15; ++index) {
        EXPECT_EQ(nominalAccuracy(index), 1 << (index - 2));
    }
    EXPECT_EQ(nominalAccuracy(16), std::nullopt);
}

TEST(NavigationValues, SisaOfAnIndex) {
    const std::vector<std::pair<int, double>> rows = {
        {0, 0.0},   {7, 0.07},  {49, 0.49},  {50, 0.5},  {51, 0.52},  {74, 0.98},  {75, 1.0},
        {99, 1.96}, {100, 2.0}, {107, 3.12}, {125, 6.0}, {126, -1.0}, {127, -1.0}, {-1, -1.0}};
    for (const auto& [index, metres] : rows) {
        EXPECT_EQ(sisaOf(index), metres) << index;
    }
}

TEST(NavigationValues, DataSourceOfGalileo) {
    EXPECT_EQ(galileoDataSource(NavType::inav, 1), 513);
    EXPECT_EQ(galileoDataSource(NavType::inav, 4), 516);
    EXPECT_EQ(galileoDataSource(NavType::inav, 7), 517);
    EXPECT_EQ(galileoDataSource(NavType::fnav, 2), 258);
}

}  // namespace
