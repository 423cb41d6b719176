// Headers of the navigation files, written from tables without ephemerides.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>

#include "navfile/mixed_nav_file.h"
#include "navfile/nav_files.h"
#include "support/conversion.h"
#include "support/nav_survey.h"
#include "support/staging.h"

namespace {

using namespace orbconv;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::splitLines;
using testsupport::written;

using Lines = std::vector<std::string>;
using FileWriter = void (*)(TextWriter&, const NavFileTables&);

constexpr RunStamp stamp = {.year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5};

class NavHeader : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();

    Lines file(FileWriter write, double version = 3.05, std::string_view letter = "M") {
        return splitLines(written([&](TextWriter& out) { write(out, {version, stamp, letter, *tables}); }));
    }
    // The lines between the first three and the last one.
    Lines corrections(FileWriter write) {
        const Lines lines = file(write);
        EXPECT_GE(lines.size(), 4U);
        return {lines.begin() + 3, lines.end() - 1};
    }
};

IonoRecord iono(float first = 1.0F) {
    return {
        .alpha = {first, 0.5F, -0.25F, 0.125F}, .beta = {90112.0F, 16384.0F, -65536.0F, 0.0F}, .stamp = {}};
}

BeidouIonoRecord beidouIono(std::int32_t sv, char hourLetter, float first = 1.0F) {
    const IonoRecord plain = iono(first);
    return {
        .tot = 0, .alpha = plain.alpha, .beta = plain.beta, .stamp = {}, .hourLetter = hourLetter, .sv = sv};
}

TimeOffsetRecord offset(double a0, float a1, std::uint64_t tot = 604784, std::uint16_t week = 2348) {
    return {.a0 = a0, .a1 = a1, .tot = tot, .week = week, .stamp = {}};
}

// ---- the first lines and the last ----

const std::string programLine =
    "ORBCONV v.0.0.10a   ZENTA GNSS          20260102 030405 UTC PGM / RUN BY / DATE";
const std::string leapSeconds0 = "     0                                                      LEAP SECONDS";
const std::string endOfHeader = "                                                            END OF HEADER";

TEST_F(NavHeader, GpsWithoutDataHasFirstLinesAndEndOnly) {
    EXPECT_THAT(
        file(writeGpsNavFile),
        ElementsAre("     3.05           N: GNSS NAV DATA    G: GPS              RINEX VERSION / TYPE",
                    programLine, leapSeconds0, endOfHeader));
}

TEST_F(NavHeader, NavicWithoutDataHasFirstLinesAndEndOnly) {
    EXPECT_THAT(
        file(writeNavicNavFile),
        ElementsAre("     3.05           N: GNSS NAV DATA    I: IRNSS            RINEX VERSION / TYPE",
                    programLine, leapSeconds0, endOfHeader));
}

TEST_F(NavHeader, BeidouWithoutDataHasFirstLinesAndEndOnly) {
    EXPECT_THAT(
        file(writeBeidouNavFile),
        ElementsAre("     3.05           N: GNSS NAV DATA    C: BDS              RINEX VERSION / TYPE",
                    programLine, leapSeconds0, endOfHeader));
}

TEST_F(NavHeader, GalileoWithoutDataHasALineOfZerosAndNoTimeCorrection) {
    EXPECT_THAT(
        file(writeGalileoNavFile),
        ElementsAre("     3.05           N: GNSS NAV DATA    E: Galileo          RINEX VERSION / TYPE",
                    programLine, leapSeconds0,
                    "GAL    0.0000D+00  0.0000D+00  0.0000D+00  0.0000D+00       IONOSPHERIC CORR",
                    endOfHeader));
}

TEST_F(NavHeader, GlonassWithoutDataHasTwoTimeCorrectionsOfZeros) {
    EXPECT_THAT(
        file(writeGlonassNavFile),
        ElementsAre(
            "     3.05           N: GNSS NAV DATA    R: GLONASS          RINEX VERSION / TYPE", programLine,
            leapSeconds0, "GLUT  0.0000000000D+00 0.000000000D+00      0    0          TIME SYSTEM CORR",
            "GLGP  0.0000000000D+00 0.000000000D+00      0    0          TIME SYSTEM CORR", endOfHeader));
}

TEST_F(NavHeader, MixedFileHasFirstLinesAndEndWithItsLabelTwoColumnsLeft) {
    Lines lines = file(writeMixedNavFile, 4.01);
    ASSERT_GE(lines.size(), 4U);
    lines.resize(4);
    EXPECT_THAT(lines,
                ElementsAre("     4.01           N: GNSS NAV DATA    MMIXED            RINEX VERSION / TYPE",
                            programLine, leapSeconds0, endOfHeader));
}

TEST_F(NavHeader, MixedFileShowsTheLetterOfASingleConstellation) {
    EXPECT_EQ(file(writeMixedNavFile, 4.0, "G").at(0),
              "     4.00           N: GNSS NAV DATA    GMIXED            RINEX VERSION / TYPE");
}

TEST_F(NavHeader, MixedFileWithoutALetterHasItsLabelInColumn58) {
    EXPECT_EQ(file(writeMixedNavFile, 4.0, "").at(0),
              "     4.00           N: GNSS NAV DATA    MIXED            RINEX VERSION / TYPE");
}

TEST_F(NavHeader, MixedFileHasNoCorrectionsInItsHeader) {
    tables->gpsIono.records[0] = iono();
    tables->gpsTimeOffset.records[0] = offset(0.5, 0.25F);
    EXPECT_EQ(file(writeMixedNavFile, 4.01).at(3), endOfHeader);
}

TEST_F(NavHeader, LeapSecondsAreThoseOfTheTables) {
    tables->lastLeapSeconds = 18;
    EXPECT_EQ(file(writeGpsNavFile).at(2),
              "    18                                                      LEAP SECONDS");
    tables->lastLeapSeconds = -128;
    EXPECT_EQ(file(writeMixedNavFile).at(2),
              "  -128                                                      LEAP SECONDS");
}

// ---- IONOSPHERIC CORR ----

TEST_F(NavHeader, GpsIonosphereIsAPairOfLines) {
    tables->gpsIono.records[0] = iono();
    EXPECT_THAT(corrections(writeGpsNavFile),
                ElementsAre("GPSA   1.0000D+00  5.0000D-01 -2.5000D-01  1.2500D-01       IONOSPHERIC CORR",
                            "GPSB   9.0112D+04  1.6384D+04 -6.5536D+04  0.0000D+00       IONOSPHERIC CORR"));
}

TEST_F(NavHeader, NavicIonosphereIsAPairOfLines) {
    tables->navicIono.records[0] = iono();
    EXPECT_THAT(corrections(writeNavicNavFile),
                ElementsAre("IRSA   1.0000D+00  5.0000D-01 -2.5000D-01  1.2500D-01       IONOSPHERIC CORR",
                            "IRSB   9.0112D+04  1.6384D+04 -6.5536D+04  0.0000D+00       IONOSPHERIC CORR"));
}

TEST_F(NavHeader, BeidouIonosphereShowsHourAndSatelliteOfEveryRecord) {
    tables->beidouIono.records[0] = beidouIono(7, 'A');
    tables->beidouIono.records[1] = beidouIono(123, 'X', -2.0F);
    EXPECT_THAT(corrections(writeBeidouNavFile),
                ElementsAre("BDSA   1.0000D+00  5.0000D-01 -2.5000D-01  1.2500D-01 A  7  IONOSPHERIC CORR",
                            "BDSB   9.0112D+04  1.6384D+04 -6.5536D+04  0.0000D+00 A  7  IONOSPHERIC CORR",
                            "BDSA  -2.0000D+00  5.0000D-01 -2.5000D-01  1.2500D-01 X123  IONOSPHERIC CORR",
                            "BDSB   9.0112D+04  1.6384D+04 -6.5536D+04  0.0000D+00 X123  IONOSPHERIC CORR"));
}

TEST_F(NavHeader, BeidouIonosphereEndsAtADroppedRecord) {
    tables->beidouIono.records[0] = beidouIono(7, 'A');
    tables->beidouIono.records[1] = beidouIono(0, 'B');
    tables->beidouIono.records[2] = beidouIono(7, 'C');
    EXPECT_EQ(corrections(writeBeidouNavFile).size(), 2U);
    tables->beidouIono.records[0].sv = 0;
    EXPECT_THAT(corrections(writeBeidouNavFile), IsEmpty());
}

TEST_F(NavHeader, GalileoIonosphereIsThatOfSlot0EvenIfDead) {
    GalileoEphemeris& first = testsupport::append(tables->galileo);
    first.ai0 = 64.0F;
    first.ai1 = -0.5F;
    first.ai2 = 0.25F;
    testsupport::append(tables->galileo).ai0 = 1.0F;
    EXPECT_THAT(corrections(writeGalileoNavFile),
                ElementsAre("GAL    6.4000D+01 -5.0000D-01  2.5000D-01  0.0000D+00       IONOSPHERIC CORR"));
}

// The tables of GPS, NavIC and BeiDou end in the same way.
struct IonoWalk {
    const char* name;
    FileWriter write;
    void (*put)(NavigationTables&, std::size_t, float);
};

const IonoWalk ionoWalks[] = {
    {"Gps", writeGpsNavFile,
     [](NavigationTables& t, std::size_t i, float first) { t.gpsIono.records[i] = iono(first); }},
    {"Navic", writeNavicNavFile,
     [](NavigationTables& t, std::size_t i, float first) { t.navicIono.records[i] = iono(first); }},
    {"Beidou", writeBeidouNavFile,
     [](NavigationTables& t, std::size_t i, float first) {
         t.beidouIono.records[i] = beidouIono(7, 'A', first);
     }},
};

class NavHeaderIonoWalk : public NavHeader, public testing::WithParamInterface<IonoWalk> {
protected:
    // Lines written from records with these first coefficients.
    std::size_t linesOf(const std::vector<float>& firsts) {
        for (std::size_t i = 0; i < firsts.size(); ++i) {
            GetParam().put(*tables, i, firsts[i]);
        }
        return corrections(GetParam().write).size();
    }
};

TEST_P(NavHeaderIonoWalk, EndsAtAFirstCoefficientOf0) {
    EXPECT_EQ(linesOf({1.0F, 2.0F, 0.0F, 3.0F}), 4U);
}
TEST_P(NavHeaderIonoWalk, NegativeZeroEndsItToo) {
    EXPECT_EQ(linesOf({1.0F, -0.0F, 3.0F}), 2U);
}
TEST_P(NavHeaderIonoWalk, ZeroInTheFirstRecordWritesNothing) {
    EXPECT_EQ(linesOf({0.0F, 2.0F}), 0U);
}
TEST_P(NavHeaderIonoWalk, NotANumberDoesNotEndIt) {
    EXPECT_EQ(linesOf({1.0F, std::numeric_limits<float>::quiet_NaN(), 3.0F}), 6U);
}
TEST_P(NavHeaderIonoWalk, OverAFullTableEndsWithTheTable) {
    EXPECT_EQ(linesOf(std::vector<float>(1000, 1.0F)), 2000U);
}

INSTANTIATE_TEST_SUITE_P(Constellations, NavHeaderIonoWalk, testing::ValuesIn(ionoWalks),
                         [](const auto& walk) { return std::string(walk.param.name); });

// ---- TIME SYSTEM CORR ----

TEST_F(NavHeader, GpsTimeCorrectionHasItsLabelInColumn61Or62) {
    tables->gpsTimeOffset.records[0] = offset(0.5, -0.25F);
    tables->gpsTimeOffset.records[1] = offset(-0.5, 0.25F, 0, 0);
    EXPECT_THAT(corrections(writeGpsNavFile),
                ElementsAre("GPUT  5.0000000000D-01-2.500000000D-01 604784 2348          TIME SYSTEM CORR",
                            "GPUT  -5.0000000000D-01 2.500000000D-01      0    0          TIME SYSTEM CORR"));
}

TEST_F(NavHeader, NavicTimeCorrectionHasItsLabelInColumn61Or62) {
    tables->navicTimeOffset.records[0] = offset(0.5, 0.25F);
    tables->navicTimeOffset.records[1] = offset(-0.5, 0.25F);
    EXPECT_THAT(corrections(writeNavicNavFile),
                ElementsAre("IRUT  5.0000000000D-01 2.500000000D-01 604784 2348          TIME SYSTEM CORR",
                            "IRUT  -5.0000000000D-01 2.500000000D-01 604784 2348          TIME SYSTEM CORR"));
}

TEST_F(NavHeader, BeidouTimeCorrectionHasItsLabelInColumn60Or61) {
    tables->beidouTimeOffset.records[0] = offset(0.5, 0.25F, 604784, 900);
    tables->beidouTimeOffset.records[1] = offset(-0.5, -0.25F, 604784, 900);
    EXPECT_THAT(corrections(writeBeidouNavFile),
                ElementsAre("BDUT 5.0000000000D-01 2.500000000D-01 604784  900          TIME SYSTEM CORR",
                            "BDUT -5.0000000000D-01-2.500000000D-01 604784  900          TIME SYSTEM CORR"));
}

TEST_F(NavHeader, ReferenceTimeAndWeekWiderThanTheirFieldsMoveTheLine) {
    tables->gpsTimeOffset.records[0] = offset(0.5, 0.25F, 4294967295U, 65535);
    EXPECT_THAT(
        corrections(writeGpsNavFile),
        ElementsAre("GPUT  5.0000000000D-01 2.500000000D-01429496729565535          TIME SYSTEM CORR"));
}

TEST_F(NavHeader, GalileoWritesAllOfOneTimeCorrectionAheadOfTheOtherWithTheSameWeek) {
    auto& records = tables->galileoTimeOffset.records;
    records[0] = {.utc = offset(0.5, 0.25F), .a0Gps = 2.0F, .a1Gps = 4.0F, .totGps = 7200, .weekGps = 9};
    records[1] = {.utc = offset(-0.5, 0.25F), .a0Gps = -2.0F, .a1Gps = -4.0F, .totGps = 7201, .weekGps = 9};
    Lines lines = corrections(writeGalileoNavFile);
    lines.erase(lines.begin());  // the ionosphere
    EXPECT_THAT(lines,
                ElementsAre("GAUT 5.0000000000D-01 2.500000000D-01 604784 2348          TIME SYSTEM CORR",
                            "GAUT -5.0000000000D-01 2.500000000D-01 604784 2348          TIME SYSTEM CORR",
                            "GAGP 2.0000000000D+00 4.000000000D+00   7200 2348          TIME SYSTEM CORR",
                            "GAGP -2.0000000000D+00-4.000000000D+00   7201 2348          TIME SYSTEM CORR"));
}

// How often a name stands at the start of a line.
std::ptrdiff_t linesNamed(const Lines& lines, std::string_view name) {
    return std::count_if(lines.begin(), lines.end(),
                         [name](const std::string& line) { return line.starts_with(name); });
}

TEST_F(NavHeader, GalileoWalksEndEachAtItsOwnFirstCoefficient) {
    auto& records = tables->galileoTimeOffset.records;
    records[0] = {.utc = offset(0.5, 0), .a0Gps = 2.0F, .a1Gps = 0, .totGps = 0, .weekGps = 0};
    records[1] = {.utc = offset(0.0, 1), .a0Gps = 2.0F, .a1Gps = 0, .totGps = 0, .weekGps = 0};
    records[2] = {.utc = offset(0.5, 0), .a0Gps = 0.0F, .a1Gps = 1, .totGps = 0, .weekGps = 0};
    const Lines lines = corrections(writeGalileoNavFile);
    EXPECT_EQ(linesNamed(lines, "GAUT"), 1);
    EXPECT_EQ(linesNamed(lines, "GAGP"), 2);
}

TEST_F(NavHeader, GlonassTimeCorrectionPrintsItsFloatFirst) {
    tables->glonassTimeOffset = {.tauC = 0.25, .tauGps = -0.5F, .stamp = {}};
    EXPECT_THAT(corrections(writeGlonassNavFile),
                ElementsAre("GLUT  0.0000000000D+00 0.000000000D+00      0    0          TIME SYSTEM CORR",
                            "GLGP  -5.0000000000D-01 2.500000000D-01      0    0          TIME SYSTEM CORR"));
}

TEST_F(NavHeader, FloatsAreWidenedWithTheirOwnDigits) {
    tables->gpsTimeOffset.records[0] = offset(0.1, 0.1F);
    EXPECT_EQ(corrections(writeGpsNavFile).at(0).substr(0, 38), "GPUT  1.0000000000D-01 1.000000015D-01");
}

TEST_F(NavHeader, GpsTimeWalkEndsOnlyWhereBothCoefficientsAre0) {
    tables->gpsTimeOffset.records[0] = offset(0.0, 0.25F);
    tables->gpsTimeOffset.records[1] = offset(0.5, 0.0F);
    tables->gpsTimeOffset.records[2] = offset(0.0, 0.0F);
    tables->gpsTimeOffset.records[3] = offset(0.5, 0.25F);
    EXPECT_EQ(corrections(writeGpsNavFile).size(), 2U);
}

TEST_F(NavHeader, OtherTimeWalksEndWhereTheFirstCoefficientIs0) {
    for (auto* table : {&tables->beidouTimeOffset, &tables->navicTimeOffset}) {
        table->records[0] = offset(0.5, 0.0F);
        table->records[1] = offset(0.0, 0.25F);
        table->records[2] = offset(0.5, 0.25F);
    }
    EXPECT_EQ(corrections(writeBeidouNavFile).size(), 1U);
    EXPECT_EQ(corrections(writeNavicNavFile).size(), 1U);
    tables->beidouTimeOffset.records[0].a0 = tables->navicTimeOffset.records[0].a0 = 0.0;
    EXPECT_THAT(corrections(writeBeidouNavFile), IsEmpty());
    EXPECT_THAT(corrections(writeNavicNavFile), IsEmpty());
}

TEST_F(NavHeader, TimeWalksOverFullTablesEndWithTheTables) {
    for (std::size_t i = 0; i < 100; ++i) {
        const TimeOffsetRecord record = offset(0.5, 0.25F);
        tables->gpsTimeOffset.records[i] = record;
        tables->beidouTimeOffset.records[i] = record;
        tables->navicTimeOffset.records[i] = record;
        tables->galileoTimeOffset.records[i] = {record, 0.5F, 0.0F, 0, 0};
    }
    EXPECT_EQ(corrections(writeGpsNavFile).size(), 100U);
    EXPECT_EQ(corrections(writeBeidouNavFile).size(), 100U);
    EXPECT_EQ(corrections(writeNavicNavFile).size(), 100U);
    EXPECT_EQ(linesNamed(corrections(writeGalileoNavFile), "GAUT"), 100);
    EXPECT_EQ(linesNamed(corrections(writeGalileoNavFile), "GAGP"), 100);
}

TEST_F(NavHeader, IonosphereStandsAheadOfTheTimeCorrection) {
    tables->navicIono.records[0] = iono();
    tables->navicTimeOffset.records[0] = offset(0.5, 0.25F);
    const Lines lines = corrections(writeNavicNavFile);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].substr(0, 4) + lines[1].substr(0, 4) + lines[2].substr(0, 4), "IRSAIRSBIRUT");
}

}  // namespace
