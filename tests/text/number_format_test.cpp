// The formatters against texts worked out by hand.
#include "text/number_format.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

namespace {

using Limits = std::numeric_limits<double>;

constexpr double infinity = Limits::infinity();
const double positiveNan = std::copysign(Limits::quiet_NaN(), 1.0);
const double negativeNan = std::copysign(Limits::quiet_NaN(), -1.0);

std::string integer(std::int64_t value) {
    std::array<char, 20> buffer{};
    return {buffer.data(), orbconv::formatInteger(buffer.data(), value)};
}

std::string fixed(double value, int decimals) {
    std::array<char, orbconv::maxNumberText> buffer{};
    return {buffer.data(), orbconv::formatFixed(buffer.data(), value, decimals)};
}

std::string scientific(double value, int precision, char exponentLetter = 'e') {
    std::array<char, orbconv::maxNumberText> buffer{};
    return {buffer.data(), orbconv::formatScientific(buffer.data(), value, precision, exponentLetter)};
}

// A mark stands ahead of the field: nothing may be written there.
std::string intoBlanks(double value, int width) {
    std::array<char, orbconv::maxNumberText + 1> buffer{};
    buffer[0] = '#';
    std::memset(buffer.data() + 1, ' ', static_cast<std::size_t>(width));
    const char* const end = orbconv::formatFixed3IntoBlanks(buffer.data() + 1, value, width);
    return {static_cast<const char*>(buffer.data()), end};
}

}  // namespace

TEST(FormatInteger, ReachesTheEndsOfTheRange) {
    EXPECT_EQ(integer(0), "0");
    EXPECT_EQ(integer(9), "9");
    EXPECT_EQ(integer(10), "10");
    EXPECT_EQ(integer(-1), "-1");
    EXPECT_EQ(integer(-1234567890), "-1234567890");
    EXPECT_EQ(integer(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(integer(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(FormatFixed, PrintsTheTextsWorkedOutByHand) {
    EXPECT_EQ(fixed(0.0, 3), "0.000");
    EXPECT_EQ(fixed(1.0, 0), "1");
    EXPECT_EQ(fixed(3.05, 2), "3.05");
    EXPECT_EQ(fixed(4.0, 2), "4.00");
    EXPECT_EQ(fixed(-1.5, 1), "-1.5");
    EXPECT_EQ(fixed(59.8, 7), "59.8000000");
    EXPECT_EQ(fixed(22484434.35, 3), "22484434.350");
    EXPECT_EQ(fixed(0.001, 12), "0.001000000000");
    EXPECT_EQ(fixed(-0.25, 5), "-0.25000");
    EXPECT_EQ(fixed(123456789.0, 0), "123456789");
    EXPECT_EQ(fixed(1e22, 3), "10000000000000000000000.000");
    EXPECT_EQ(fixed(0.1, 20), "0.10000000000000000555");
}

TEST(FormatFixed, ExactTiesRoundToTheEvenDigit) {
    EXPECT_EQ(fixed(0.5, 0), "0");
    EXPECT_EQ(fixed(1.5, 0), "2");
    EXPECT_EQ(fixed(2.5, 0), "2");
    EXPECT_EQ(fixed(0.25, 1), "0.2");
    EXPECT_EQ(fixed(0.75, 1), "0.8");
    EXPECT_EQ(fixed(0.0625, 3), "0.062");
    EXPECT_EQ(fixed(0.1875, 3), "0.188");
    EXPECT_EQ(fixed(-0.3125, 3), "-0.312");
    EXPECT_EQ(fixed(1000000.4375, 3), "1000000.438");
}

TEST(FormatFixed, RoundsTheBinaryValueAndNotItsShortDecimals) {
    // The doubles nearest to these ties lie a little above or below them.
    EXPECT_EQ(fixed(0.0005, 3), "0.001");
    EXPECT_EQ(fixed(0.0025, 3), "0.003");
    EXPECT_EQ(fixed(1.0005, 3), "1.000");
    EXPECT_EQ(fixed(2.675, 2), "2.67");
    EXPECT_EQ(fixed(1.015, 2), "1.01");
    EXPECT_EQ(fixed(1.005, 2), "1.00");
}

TEST(FormatFixed, CarriesIntoANewDigit) {
    EXPECT_EQ(fixed(0.9996, 3), "1.000");
    EXPECT_EQ(fixed(9.9996, 3), "10.000");
    EXPECT_EQ(fixed(-99.9996, 3), "-100.000");
    EXPECT_EQ(fixed(99999999.9996, 3), "100000000.000");
    EXPECT_EQ(fixed(9.5, 0), "10");
}

TEST(FormatFixed, KeepsTheSignOfNegativeZeroAndOfWhatRoundsToIt) {
    EXPECT_EQ(fixed(-0.0, 3), "-0.000");
    EXPECT_EQ(fixed(-0.0004, 3), "-0.000");
    EXPECT_EQ(fixed(-Limits::denorm_min(), 3), "-0.000");
    EXPECT_EQ(fixed(-0.4, 0), "-0");
}

TEST(FormatFixed, PrintsTheWholeLengthOfTheLargestDouble) {
    const std::string text = fixed(Limits::max(), 3);
    EXPECT_EQ(text.size(), 309U + 4U);
    EXPECT_EQ(text.substr(0, 17), "17976931348623157");
    EXPECT_EQ(fixed(-Limits::max(), orbconv::maxDecimals).size(), 1U + 309U + 1U + 20U);
    EXPECT_EQ(fixed(std::ldexp(1.0, 100), 1), "1267650600228229401496703205376.0");
}

TEST(FormatFixed, NamesWhatIsNoNumber) {
    for (const int decimals : {0, 3, 12}) {
        EXPECT_EQ(fixed(infinity, decimals), "inf");
        EXPECT_EQ(fixed(-infinity, decimals), "-inf");
        EXPECT_EQ(fixed(positiveNan, decimals), "nan");
        EXPECT_EQ(fixed(negativeNan, decimals), "-nan");
    }
}

TEST(FormatScientific, PrintsTheTextsWorkedOutByHand) {
    EXPECT_EQ(scientific(0.0, 12), "0.000000000000e+00");
    EXPECT_EQ(scientific(-0.0, 12), "-0.000000000000e+00");
    EXPECT_EQ(scientific(-1.5, 12, 'D'), "-1.500000000000D+00");
    EXPECT_EQ(scientific(1234.5, 4, 'D'), "1.2345D+03");
    EXPECT_EQ(scientific(0.00001, 4), "1.0000e-05");
    EXPECT_EQ(scientific(9.99996, 4), "1.0000e+01");
    EXPECT_EQ(scientific(7.0, 0), "7e+00");
}

TEST(FormatScientific, WritesAThirdExponentDigitOnlyWhenNeeded) {
    EXPECT_EQ(scientific(1e99, 2), "1.00e+99");
    EXPECT_EQ(scientific(9.999e99, 2), "1.00e+100");
    EXPECT_EQ(scientific(1e-100, 12, 'D'), "1.000000000000D-100");
    EXPECT_EQ(scientific(-1e-100, 12, 'D'), "-1.000000000000D-100");
    EXPECT_EQ(scientific(9.999e-100, 2), "1.00e-99");
    EXPECT_EQ(scientific(Limits::denorm_min(), 12), "4.940656458412e-324");
    EXPECT_EQ(scientific(Limits::max(), 12), "1.797693134862e+308");
}

TEST(FormatScientific, ShowsTheDigitsOfAWidenedSinglePrecisionValue) {
    EXPECT_EQ(scientific(static_cast<double>(12345.678F), 12, 'D'), "1.234567773438D+04");
}

TEST(FormatScientific, ExactTiesRoundToTheEvenDigit) {
    EXPECT_EQ(scientific(2.5, 0), "2e+00");
    EXPECT_EQ(scientific(3.5, 0), "4e+00");
    EXPECT_EQ(scientific(12.5, 1), "1.2e+01");
    EXPECT_EQ(scientific(137.5, 2), "1.38e+02");
}

TEST(FormatScientific, LeavesTextsWithoutAnExponentAsTheyAre) {
    EXPECT_EQ(scientific(infinity, 12, 'D'), "inf");
    EXPECT_EQ(scientific(-infinity, 12, 'D'), "-inf");
    EXPECT_EQ(scientific(positiveNan, 12, 'D'), "nan");
    EXPECT_EQ(scientific(negativeNan, 12, 'D'), "-nan");
}

TEST(FormatFixed3IntoBlanks, StandsAtTheRightEndOfItsField) {
    EXPECT_EQ(intoBlanks(22484434.35, 14), "#  22484434.350");
    EXPECT_EQ(intoBlanks(-0.25, 13), "#       -0.250");
    EXPECT_EQ(intoBlanks(0.0, 16), "#           0.000");
    EXPECT_EQ(intoBlanks(-0.0, 6), "#-0.000");
    EXPECT_EQ(intoBlanks(1.0, 5), "#1.000");
}

TEST(FormatFixed3IntoBlanks, RunsOverTheRightEndWhenWiderThanItsField) {
    EXPECT_EQ(intoBlanks(12345.678, 1), "#12345.678");
    EXPECT_EQ(intoBlanks(-99.9996, 7), "#-100.000");
    EXPECT_EQ(intoBlanks(-1e20, 14), "#-100000000000000000000.000");
}

TEST(FormatFixed3IntoBlanks, JustifiesWhatIsNoNumber) {
    EXPECT_EQ(intoBlanks(infinity, 14), "#           inf");
    EXPECT_EQ(intoBlanks(-infinity, 14), "#          -inf");
    EXPECT_EQ(intoBlanks(positiveNan, 14), "#           nan");
    EXPECT_EQ(intoBlanks(negativeNan, 14), "#          -nan");
    EXPECT_EQ(intoBlanks(infinity, 2), "#inf");
}
