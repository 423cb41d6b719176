// Numbers that C libraries spell and round in different ways, through the whole program: what is no number,
// exponents of three digits, and values that lie exactly between two printed ones, which go to the even
// digit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "samplelog/log_builder.h"
#include "support/conversion.h"
#include "support/nav_full_log.h"
#include "support/obs_text.h"

namespace {

using samplelog::KeplerBlock;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::blanks;
using testsupport::convert;
using testsupport::fullNavigation::Lines;
using testsupport::fullNavigation::plain;

constexpr float infinity = std::numeric_limits<float>::infinity();
const float positiveNan = std::copysign(std::numeric_limits<float>::quiet_NaN(), 1.0F);
const float negativeNan = std::copysign(std::numeric_limits<float>::quiet_NaN(), -1.0F);

// The ties are 1 + 2^-13 and 1 + 3 * 2^-13, which end in a 5 at the 13th decimal.
std::string logOfOddNumbers() {
    KeplerBlock body{.sv = 5, .toe = 7200};
    body.af0 = infinity;
    body.af1 = -infinity;
    body.af2 = 0x1p+127F;
    body.Crs = 1.0003662109375F;
    body.Cuc = 0x1p-149F;
    body.e = 1e-100;
    body.Cus = -0.0F;
    body.sqrtA = -1e+100;
    body.Cic = negativeNan;
    body.Cis = positiveNan;
    body.Crc = 1.0001220703125F;
    LogBuilder log;
    log.rd(2024, 3, 5).pv({-0.03125, 0.09375, static_cast<double>(negativeNan)}).ge123(body);
    for (const std::uint32_t second : {3724U, 3725U}) {
        log.time(second * 1000).sx({{SystemCode::gps, 7}}).td();
    }
    return log.bytes();
}

// Two to the power of 127 is 1.7014118346046923e+38, and of -149 1.40129846432481707e-45.
Lines record() {
    return {"G05 2024 03 05 02 00 00                inf               -inf 1.701411834605D+38",
            "     0.000000000000D+00 1.000366210938D+00 0.000000000000D+00 0.000000000000D+00",
            "     1.401298464325D-451.000000000000D-100-0.000000000000D+00-1.000000000000D+100",
            "     7.200000000000D+03               -nan 0.000000000000D+00                nan",
            "     0.000000000000D+00 1.000122070312D+00 0.000000000000D+00 0.000000000000D+00"};
}

// The record's lines that hold its orbit; the rest holds whole numbers.
Lines orbitOf(Lines lines, std::size_t first) {
    lines.resize(std::max(lines.size(), first + 5));
    return {lines.begin() + static_cast<std::ptrdiff_t>(first),
            lines.begin() + static_cast<std::ptrdiff_t>(first + 5)};
}

}  // namespace

TEST(NumberSpellings, OfANavigationRecordWithTheLetterD) {
    EXPECT_EQ(orbitOf(convert(logOfOddNumbers()).body('N'), 0), record());
}

TEST(NumberSpellings, OfANavigationRecordWithTheLetterE) {
    EXPECT_EQ(orbitOf(convert(logOfOddNumbers(), {"-rv", "4.01"}).body('p'), 1), plain(record()));
}

TEST(NumberSpellings, OfThePositionInTheObservationHeader) {
    EXPECT_EQ(convert(logOfOddNumbers()).labelled('o', "APPROX POSITION XYZ"),
              Lines{"       -0.0312        0.0938          -nan" + blanks(18) + "APPROX POSITION XYZ"});
}

TEST(NumberSpellings, OfTheAntennaOffsets) {
    const auto run = convert(logOfOddNumbers(), {"-DH", "0.03125", "-DE", "1e15", "-DN", "-0.09375"});
    EXPECT_EQ(
        run.labelled('o', "ANTENNA: DELTA H/E/N"),
        Lines{"        0.03121000000000000000.0000       -0.0938" + blanks(18) + "ANTENNA: DELTA H/E/N"});
}
