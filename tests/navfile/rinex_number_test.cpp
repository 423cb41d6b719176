#include "navfile/rinex_number.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "support/nav_lines.h"
#include "support/staging.h"

namespace {

using orbconv::TextWriter;
using orbconv::writeRinexNumber;
using testsupport::navNumber;
using testsupport::written;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::string number(double value, int precision = 12, int width = 19) {
    return written([&](TextWriter& out) { writeRinexNumber(out, value, precision, width); });
}

struct NumberRow {
    double value;
    const char* text;
};

class RecordNumber : public testing::TestWithParam<NumberRow> {};

TEST_P(RecordNumber, Has12DecimalsAndTheLetterDIn19Columns) {
    EXPECT_EQ(number(GetParam().value), GetParam().text);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Values, RecordNumber, testing::Values(
    NumberRow{0.0,                       " 0.000000000000D+00"},
    NumberRow{-0.0,                      "-0.000000000000D+00"},
    NumberRow{1.0,                       " 1.000000000000D+00"},
    NumberRow{-1.5,                      "-1.500000000000D+00"},
    NumberRow{10.0,                      " 1.000000000000D+01"},
    NumberRow{604800.0,                  " 6.048000000000D+05"},
    NumberRow{0.0009765625,              " 9.765625000000D-04"},
    NumberRow{5153.6484375,              " 5.153648437500D+03"},
    NumberRow{9.9999999999996,           " 1.000000000000D+01"},
    NumberRow{-9.9999999999994,          "-9.999999999999D+00"},
    NumberRow{1.0E-100,                  "1.000000000000D-100"},
    NumberRow{-1.0E-100,                 "-1.000000000000D-100"},
    NumberRow{1.0E+100,                  "1.000000000000D+100"},
    NumberRow{1.7976931348623157E+308,   "1.797693134862D+308"},
    NumberRow{5e-324,                    "4.940656458412D-324"}));
// Ties in the last place go to the even digit: these values are exact in binary.
INSTANTIATE_TEST_SUITE_P(Ties, RecordNumber, testing::Values(
    NumberRow{1.0001220703125, " 1.000122070312D+00"},
    NumberRow{3.0001220703125, " 3.000122070312D+00"},
    NumberRow{1.0003662109375, " 1.000366210938D+00"}));
INSTANTIATE_TEST_SUITE_P(NoNumbers, RecordNumber, testing::Values(
    NumberRow{infinity,                        "                inf"},
    NumberRow{-infinity,                       "               -inf"},
    NumberRow{nan,                             "                nan"},
    NumberRow{std::copysign(nan, -1.0),        "               -nan"}));
// A 32-bit value shows its own digits.
INSTANTIATE_TEST_SUITE_P(WidenedFloats, RecordNumber, testing::Values(
    NumberRow{12345.678F, " 1.234567773438D+04"},
    NumberRow{0.1F,       " 1.000000014901D-01"}));
// clang-format on

TEST(RinexNumber, IonosphereCoefficientHas4DecimalsIn12Columns) {
    EXPECT_EQ(number(1234.5, 4, 12), "  1.2345D+03");
    EXPECT_EQ(number(-1234.5, 4, 12), " -1.2345D+03");
    EXPECT_EQ(number(0.0, 4, 12), "  0.0000D+00");
}

TEST(RinexNumber, TextWiderThanItsFieldStandsWithoutABlank) {
    EXPECT_EQ(number(0.0, 10, 12), "0.0000000000D+00");
    EXPECT_EQ(number(-0.5, 10, 12), "-5.0000000000D-01");
}

TEST(RinexNumber, SecondTimeCoefficientHasOneBlankForItsSign) {
    EXPECT_EQ(number(0.5, 9, 16), " 5.000000000D-01");
    EXPECT_EQ(number(-0.5, 9, 16), "-5.000000000D-01");
}

TEST(RinexNumber, WhatFollowsIsNotPadded) {
    EXPECT_EQ(written([](TextWriter& out) {
                  writeRinexNumber(out, 1.0, 4, 12);
                  out.text("x");
              }),
              "  1.0000D+00x");
}

TEST(RinexNumber, PlainLetterIsALowerCaseE) {
    EXPECT_EQ(written([](TextWriter& out) { out.scientific(1.2345e-5, 12, 19, orbconv::plainExponent); }),
              " 1.234500000000e-05");
}

// The classic stream's text with its e replaced, for any bits whatever.
TEST(RinexNumber, AnyValueIsTheStreamsText) {
    std::mt19937_64 random(1);
    constexpr int forms[][2] = {{4, 12}, {10, 12}, {9, 16}, {12, 19}};
    for (int i = 0; i < 200000; ++i) {
        const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        const auto& [precision, width] = forms[i % 4];
        ASSERT_EQ(number(value, precision, width), navNumber(value, 'D', precision, width));
    }
}

TEST(RinexNumber, ValuesOfEphemeridesAreTheStreamsText) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
    for (int i = 0; i < 200000; ++i) {
        const double value = mantissa(random) * std::pow(10.0, i % 40 - 30);
        const double shown = i % 2 == 0 ? value : static_cast<double>(static_cast<float>(value));
        ASSERT_EQ(number(shown), navNumber(shown));
    }
}

}  // namespace
