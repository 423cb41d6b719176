// Satellite lines of values that do not fit or are no numbers: nothing is cut, the rest of the line moves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <iomanip>
#include <limits>
#include <memory>
#include <random>
#include <sstream>

#include "obsfile/epoch_writer.h"
#include "support/conversion.h"
#include "support/obs_text.h"
#include "support/staging.h"

namespace {

using orbconv::ObsRow;
using orbconv::SatEpochRecord;
using testsupport::blanks;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

struct Values {
    double pseudorange = 0.0;
    double phase = 0.0;
    std::int32_t digit = 0;
    double doppler = 0.0;
    double strength = 0.0;
};

void setSignal(SatEpochRecord& record, std::size_t band, const Values& values) {
    record.signalFlags[band] = orbconv::signalPresentBit;
    record.at(ObsRow::pseudorange, band) = values.pseudorange;
    record.at(ObsRow::phase, band) = values.phase;
    record.at(ObsRow::doppler, band) = values.doppler;
    record.at(ObsRow::strength, band) = values.strength;
    record.strengthIndex[band] = values.digit;
}

std::string lineOf(const SatEpochRecord& record, std::size_t bands) {
    return testsupport::written([&](orbconv::TextWriter& out) {
        orbconv::writeSatelliteLines(out, std::span(&record, 1), 'G', bands, nullptr);
    });
}

// The line of satellite G01 with one signal, less the satellite.
std::string signalOf(const Values& values) {
    SatEpochRecord record;
    record.number = 1;
    setSignal(record, 0, values);
    std::string line = lineOf(record, 1);
    EXPECT_TRUE(line.starts_with("G01") && line.ends_with('\n')) << line;
    return line.substr(3, line.size() - 4);
}

// ---- each field at its edge and beyond ----

TEST(EpochOverflow, PseudorangeOf14CharactersFillsItsField) {
    EXPECT_EQ(signalOf({.pseudorange = 1234567890.125}),
              "1234567890.125           0.000 0         0.000           0.000  ");
    EXPECT_EQ(signalOf({.pseudorange = -123456789.125}),
              "-123456789.125           0.000 0         0.000           0.000  ");
}

TEST(EpochOverflow, PseudorangeOf15CharactersMovesTheRestByOne) {
    EXPECT_EQ(signalOf({.pseudorange = 12345678901.125}),
              "12345678901.125           0.000 0         0.000           0.000  ");
}

TEST(EpochOverflow, PhaseOf16CharactersFillsItsField) {
    EXPECT_EQ(signalOf({.phase = 123456789012.125}),
              "         0.000123456789012.125 0         0.000           0.000  ");
}

TEST(EpochOverflow, PhaseOf17CharactersMovesTheRestByOne) {
    EXPECT_EQ(signalOf({.phase = -123456789012.125}),
              "         0.000-123456789012.125 0         0.000           0.000  ");
}

TEST(EpochOverflow, DigitsBeyondOneMoveTheRest) {
    EXPECT_EQ(signalOf({.digit = 10}), "         0.000           0.000 10         0.000           0.000  ");
    EXPECT_EQ(signalOf({.digit = -1}), "         0.000           0.000 -1         0.000           0.000  ");
    EXPECT_EQ(signalOf({.digit = std::numeric_limits<std::int32_t>::min()}),
              "         0.000           0.000 -2147483648         0.000           0.000  ");
}

TEST(EpochOverflow, DopplerOf15CharactersMovesTheRestByOne) {
    EXPECT_EQ(signalOf({.doppler = -1234567890.125}),
              "         0.000           0.000 0-1234567890.125           0.000  ");
}

TEST(EpochOverflow, StrengthOf14CharactersMovesTheRestByOne) {
    EXPECT_EQ(signalOf({.strength = 123456789.125}),
              "         0.000           0.000 0         0.000   123456789.125  ");
    EXPECT_EQ(signalOf({.strength = 1234567890.125}),
              "         0.000           0.000 0         0.000   1234567890.125  ");
}

TEST(EpochOverflow, TheNextSignalStandsBehindAMovedOne) {
    SatEpochRecord record;
    record.number = 1;
    setSignal(record, 0, {.pseudorange = 123456789012.125});
    setSignal(record, 2, {.pseudorange = 1.0});
    EXPECT_EQ(lineOf(record, 3), "G01123456789012.125           0.000 0         0.000           0.000  " +
                                     blanks(64) +
                                     "         1.000           0.000 0         0.000           0.000  \n");
}

// ---- signs and roundings ----

TEST(EpochOverflow, NegativeZeroIsPositiveButInThePhase) {
    EXPECT_EQ(signalOf({.pseudorange = -0.0, .phase = -0.0, .doppler = -0.0, .strength = -0.0}),
              "         0.000          -0.000 0         0.000           0.000  ");
}

TEST(EpochOverflow, ASmallNegativeValueKeepsItsSign) {
    EXPECT_EQ(signalOf({.pseudorange = -0.0004, .phase = -0.0004, .doppler = -0.0004, .strength = -0.0004}),
              "        -0.000          -0.000 0        -0.000          -0.000  ");
}

TEST(EpochOverflow, SubnormalsAreZeros) {
    const double least = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(signalOf({.pseudorange = least, .phase = -least, .doppler = -least, .strength = least}),
              "         0.000          -0.000 0        -0.000           0.000  ");
}

TEST(EpochOverflow, ExactTiesGoToTheEvenThirdDecimal) {
    EXPECT_EQ(signalOf({.pseudorange = 0.0625, .phase = 0.1875, .doppler = -0.3125, .strength = 0.4375}),
              "         0.062           0.188 0        -0.312           0.438  ");
}

TEST(EpochOverflow, NearTiesGoByTheBinaryValue) {
    // 1.0005 is stored just below, 1.0015 just above, 4.0005 just below, 8.0005 just above the tie.
    EXPECT_EQ(signalOf({.pseudorange = 1.0005, .phase = 1.0015, .doppler = 4.0005, .strength = 8.0005}),
              "         1.000           1.002 0         4.000           8.001  ");
}

TEST(EpochOverflow, ARoundingCarriesThroughAllNines) {
    EXPECT_EQ(signalOf({.pseudorange = 999999999.99975, .phase = 9.9996, .doppler = -99.9999}),
              "1000000000.000          10.000 0      -100.000           0.000  ");
}

// ---- no numbers, and the largest ----

TEST(EpochOverflow, InfinitiesAndNansStandRightJustified) {
    EXPECT_EQ(signalOf({.pseudorange = infinity, .phase = -infinity, .doppler = notANumber}),
              "           inf            -inf 0           nan           0.000  ");
    EXPECT_EQ(signalOf({.phase = notANumber, .doppler = -infinity, .strength = infinity}),
              "         0.000             nan 0          -inf             inf  ");
}

TEST(EpochOverflow, ANanWithASignKeepsIt) {
    const double negativeNan = std::copysign(notANumber, -1.0);
    EXPECT_EQ(signalOf({.pseudorange = negativeNan, .phase = negativeNan, .doppler = negativeNan}),
              "          -nan            -nan 0          -nan           0.000  ");
}

TEST(EpochOverflow, PowersOfTenBeyondTheExactIntegers) {
    EXPECT_EQ(signalOf({.pseudorange = 1e15, .phase = -1e16, .doppler = 1e22}),
              "1000000000000000.000-10000000000000000.000 010000000000000000000000.000           0.000  ");
}

TEST(EpochOverflow, TheLargestDoubleHas309DigitsAheadOfThePoint) {
    const std::string line = signalOf({.pseudorange = largest});
    EXPECT_EQ(line.size(), 313U + 50U);
    EXPECT_TRUE(line.starts_with("17976931348623157081452742373170435679807056752584")) << line;
    EXPECT_TRUE(line.ends_with("4124858368.000           0.000 0         0.000           0.000  ")) << line;
}

// 30 records of 7 bands of 4 values of 314 characters: more than any buffer of a fixed size holds.
TEST(EpochOverflow, AnEpochOfTheLargestValuesIsWrittenWhole) {
    const auto store = std::make_unique<orbconv::EpochStore>();
    const auto records = store->useFirst(orbconv::Constellation::beidou, 30);
    for (SatEpochRecord& record : records) {
        record.number = 1;
        for (std::size_t band = 0; band < 7; ++band) {
            setSignal(record, band,
                      {-largest, -largest, std::numeric_limits<std::int32_t>::max(), -largest, -largest});
        }
    }
    const std::string text = testsupport::written(
        [&](orbconv::TextWriter& out) { orbconv::writeSatelliteLines(out, records, 'C', 7, nullptr); });
    const std::string columns = testsupport::splitLines(text).at(0).substr(3, 4 * 314 + 1 + 10 + 3 + 2);
    EXPECT_EQ(columns.substr(0, 52), "-179769313486231570814527423731704356798070567525844");
    std::string line = "C01";
    for (int i = 0; i < 7; ++i) {
        line += columns;
    }
    line += '\n';
    ASSERT_EQ(text.size(), 30 * line.size());
    for (std::size_t i = 0; i < 30; ++i) {
        ASSERT_EQ(text.compare(i * line.size(), line.size(), line), 0) << i;
    }
}

TEST(EpochOverflow, TheEpochLineTakesValuesOfAnyWidth) {
    const auto store = std::make_unique<orbconv::EpochStore>();
    const auto survey = std::make_unique<orbconv::SignalSurvey>();
    const orbconv::RunOptions options;
    orbconv::EpochClock clock{2024, 1, 2, 3, 4, 123456.5F, 0};
    const auto line = [&](double offset) {
        return testsupport::written([&](orbconv::TextWriter& out) {
            orbconv::writeEpochLine(out, 0, {options, clock, 12345, offset, *store, *survey});
        });
    };
    EXPECT_EQ(line(infinity), "> 2024 01 02 03 04 123456.5000000  012345                  inf\n");
    EXPECT_EQ(line(notANumber), "> 2024 01 02 03 04 123456.5000000  012345                  nan\n");
    clock.second = -1.0F;
    EXPECT_EQ(line(1e6), "> 2024 01 02 03 04 -1.0000000  012345      1000000.000000000000\n");
    clock.second = 0.0F;
    EXPECT_EQ(line(-0.0), "> 2024 01 02 03 04  0.0000000  012345      -0.000000000000\n");
}

// ---- any value prints as a stream prints it ----

std::string streamed(double value, int width) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::fixed << std::setprecision(3) << std::setw(width);
    if (std::isnan(value)) {
        out << (std::signbit(value) ? "-nan" : "nan");  // MinGW's streams leave out the sign
    } else {
        out << value;
    }
    return out.str();
}

double withoutNegativeZero(double value) {
    return value == 0.0 ? 0.0 : value;
}

std::string streamedSignal(const Values& values) {
    return streamed(withoutNegativeZero(values.pseudorange), 14) + streamed(values.phase, 16) + " " +
           std::to_string(values.digit) + streamed(withoutNegativeZero(values.doppler), 14) + "   " +
           streamed(withoutNegativeZero(values.strength), 13) + "  ";
}

TEST(EpochOverflow, AnyBitPatternPrintsAsAStreamPrintsIt) {
    std::mt19937_64 random(20240305);
    const auto any = [&] { return std::bit_cast<double>(random()); };
    for (int i = 0; i < 20000; ++i) {
        const Values values{any(), any(), static_cast<std::int32_t>(random() % 100), any(), any()};
        ASSERT_EQ(signalOf(values), streamedSignal(values));
    }
}

// Ranges, phases and the like, many of them on or beside a tie of the third decimal.
TEST(EpochOverflow, OrdinaryValuesAndTheirTiesPrintAsAStreamPrintsThem) {
    std::mt19937_64 random(305);
    const auto any = [&] {
        const double tie =
            static_cast<double>(static_cast<std::int64_t>(random() >> (16 + random() % 44))) / 16;
        const double beside = std::nextafter(tie, random() % 2 == 0 ? -1e300 : 1e300);
        const double sign = random() % 2 == 0 ? -1.0 : 1.0;
        return sign * (random() % 2 == 0 ? tie : beside);
    };
    for (int i = 0; i < 50000; ++i) {
        const Values values{any(), any(), static_cast<std::int32_t>(random() % 10), any(), any()};
        ASSERT_EQ(signalOf(values), streamedSignal(values));
    }
}

}  // namespace
