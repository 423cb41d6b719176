#include "standard/file_names.h"

#include <gtest/gtest.h>

#include "standard/option_values.h"

namespace {

using namespace orbconv::standard;  // NOLINT(google-build-using-namespace)

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

TEST(StandardFileNames, StationIsOfTheMarkersFirstFourLetters) {
    EXPECT_EQ(stationOf("ESBC00DNK"), "ESBC00XXX");
    EXPECT_EQ(stationOf("kms3"), "KMS300XXX");
    EXPECT_EQ(stationOf("a-b c"), "ABCX00XXX");
    EXPECT_EQ(stationOf("{zZ@[`"), "ZZXX00XXX");
    EXPECT_EQ(stationOf(""), "XXXX00XXX");
}

TEST(StandardFileNames, PeriodHasTheLargestUnitThatMakesItWhole) {
    EXPECT_EQ(periodField(0), "00U");
    EXPECT_EQ(periodField(1), "01M");
    EXPECT_EQ(periodField(15 * minute), "15M");
    EXPECT_EQ(periodField(15 * minute + 1), "16M");
    EXPECT_EQ(periodField(60 * minute), "01H");
    EXPECT_EQ(periodField(59 * minute + second), "01H");
    EXPECT_EQ(periodField(90 * minute), "90M");
    EXPECT_EQ(periodField(99 * minute), "99M");
    EXPECT_EQ(periodField(100 * minute), "02H");
    EXPECT_EQ(periodField(day), "01D");
    EXPECT_EQ(periodField(36 * hour), "36H");
    EXPECT_EQ(periodField(100 * hour), "05D");
    EXPECT_EQ(periodField(365 * day), "01Y");
    EXPECT_EQ(periodField(365 * day + 1), "02Y");
    EXPECT_EQ(periodField(100 * day), "01Y");
    EXPECT_EQ(periodField(std::int64_t{119} * 365 * day), "99Y");
}

TEST(StandardFileNames, RateHasTheLargestUnitThatMakesItWhole) {
    EXPECT_EQ(rateField({}), "00U");
    EXPECT_EQ(rateField(second), "01S");
    EXPECT_EQ(rateField(30 * second), "30S");
    EXPECT_EQ(rateField(60 * second), "01M");
    EXPECT_EQ(rateField(90 * second), "90S");
    EXPECT_EQ(rateField(15 * minute), "15M");
    EXPECT_EQ(rateField(hour), "01H");
    EXPECT_EQ(rateField(day), "01D");
    EXPECT_EQ(rateField(100 * second), "00U");
    EXPECT_EQ(rateField(1500), "00U");
    EXPECT_EQ(rateField(500), "02Z");
    EXPECT_EQ(rateField(200), "05Z");
    EXPECT_EQ(rateField(20), "50Z");
    EXPECT_EQ(rateField(10), "01C");
    EXPECT_EQ(rateField(2), "05C");
    EXPECT_EQ(rateField(8), "00U");  // 125 Hz
    EXPECT_EQ(rateField(300), "00U");
}

TEST(StandardFileNames, NameHasTheDayOfTheYearAndTheIntervalBehindTheLastEpoch) {
    EXPECT_EQ(longNameOf({.station = "ALGO00CAN",
                          .first = timeOf("2024-12-31T23:45:59.9"),
                          .last = timeOf("2025-01-01T00:44:59.9"),
                          .intervalMs = 60 * second,
                          .split = {}},
                         FileKind::observations),
              "ALGO00CAN_R_20243662345_01H_01M_MO.rnx");
}

}  // namespace
