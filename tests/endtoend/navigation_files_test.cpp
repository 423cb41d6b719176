// Whole navigation files, written out by hand.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "samplelog/log_builder.h"
#include "support/conversion.h"
#include "support/nav_full_log.h"

namespace {

using namespace testsupport::fullNavigation;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::SizeIs;
using testsupport::Conversion;
using testsupport::convert;

// The lines of a file but for the one with the computer's clock, which is that of the observation file.
Lines withoutRunStamp(const Conversion& run, char letter) {
    Lines lines = run.lines(letter);
    if (lines.size() < 2 || run.lines('o').size() < 2) {
        ADD_FAILURE() << "no file " << letter << " or no observation file";
        return {};
    }
    EXPECT_EQ(lines[1], run.lines('o')[1]);
    EXPECT_THAT(lines[1], MatchesRegex("ORBCONV v.0.0.10a   ZENTA GNSS          "
                                       "20...... ...... UTC PGM / RUN BY / DATE"));
    lines.erase(lines.begin() + 1);
    return lines;
}

// ---- below version 4.0: a file for each constellation ----

class SingleFiles : public testing::Test {
protected:
    static void SetUpTestSuite() { run() = convert(fullLog().bytes()); }
    static void TearDownTestSuite() { run() = {}; }
    static Conversion& run() {
        static Conversion conversion;
        return conversion;
    }
};

TEST_F(SingleFiles, AreFiveAndNoMixedOne) {
    EXPECT_EQ(run().exitStatus, 0);
    for (const char letter : {'o', 'N', 'I', 'G', 'L', 'C'}) {
        EXPECT_TRUE(run().has(letter)) << letter;
    }
    EXPECT_FALSE(run().has('p'));
    EXPECT_EQ(run().files.size(), 6U);
}

TEST_F(SingleFiles, GpsHoldsTheLnavRecordsByTime) {
    const Lines header = {"     3.05           N: GNSS NAV DATA    G: GPS              RINEX VERSION / TYPE",
                          leapSeconds18,
                          "GPSA   1.0000D+00  5.0000D-01 -2.5000D-01  1.2500D-01       IONOSPHERIC CORR",
                          "GPSB   9.0112D+04  1.6384D+04 -6.5536D+04  0.0000D+00       IONOSPHERIC CORR",
                          "GPUT  -9.3132257462D-10 8.881784197D-16 604784 2348          TIME SYSTEM CORR",
                          endOfHeader};
    EXPECT_EQ(withoutRunStamp(run(), 'N'), joined({header, gps5, gps9}));
}

TEST_F(SingleFiles, NavicHoldsItsRecordsBySatellite) {
    const Lines header = {"     3.05           N: GNSS NAV DATA    I: IRNSS            RINEX VERSION / TYPE",
                          leapSeconds18,
                          "IRSA   1.0000D+00  5.0000D-01 -2.5000D-01  1.2500D-01       IONOSPHERIC CORR",
                          "IRSB   9.0112D+04  1.6384D+04 -6.5536D+04  0.0000D+00       IONOSPHERIC CORR",
                          "IRUT  -9.3132257462D-10 8.881784197D-16 604784 2348          TIME SYSTEM CORR",
                          endOfHeader};
    EXPECT_EQ(withoutRunStamp(run(), 'I'), joined({header, navic4, navic5}));
}

TEST_F(SingleFiles, GlonassHoldsTheLiveEntryPastTheCountUnsorted) {
    const Lines header = {
        "     3.05           N: GNSS NAV DATA    R: GLONASS          RINEX VERSION / TYPE", leapSeconds18,
        "GLUT  0.0000000000D+00 0.000000000D+00      0    0          TIME SYSTEM CORR",
        "GLGP  7.4505805969D-09-9.313225746D-10      0    0          TIME SYSTEM CORR", endOfHeader};
    EXPECT_EQ(withoutRunStamp(run(), 'G'), joined({header, glonass2, glonass7, glonassPastTheCount}));
}

TEST_F(SingleFiles, GalileoIsSortedAheadOfItsHeader) {
    const Lines header = {"     3.05           N: GNSS NAV DATA    E: Galileo          RINEX VERSION / TYPE",
                          leapSeconds18,
                          "GAL    3.2000D+01  5.0000D-01  0.0000D+00  0.0000D+00       IONOSPHERIC CORR",
                          "GAUT 9.3132257462D-10 0.000000000D+00 604784 2348          TIME SYSTEM CORR",
                          "GAGP 7.4505805969D-09 0.000000000D+00  86400 2348          TIME SYSTEM CORR",
                          endOfHeader};
    EXPECT_EQ(withoutRunStamp(run(), 'L'), joined({header, galileoFnav, galileoInav}));
}

TEST_F(SingleFiles, BeidouHoldsNoCnavRecord) {
    const Lines header = {"     3.05           N: GNSS NAV DATA    C: BDS              RINEX VERSION / TYPE",
                          leapSeconds18,
                          "BDSA   1.0000D+00  5.0000D-01 -2.5000D-01  1.2500D-01 B  6  IONOSPHERIC CORR",
                          "BDSB   9.0112D+04  1.6384D+04 -6.5536D+04  0.0000D+00 B  6  IONOSPHERIC CORR",
                          "BDUT -9.3132257462D-10 8.881784197D-16 604784  300          TIME SYSTEM CORR",
                          endOfHeader};
    EXPECT_EQ(withoutRunStamp(run(), 'C'), joined({header, beidouD1}));
}

TEST_F(SingleFiles, ObservationHeaderShowsTheLeapSeconds) {
    EXPECT_THAT(run().labelled('o', "LEAP SECONDS"), ElementsAre(leapSeconds18));
}

// ---- from version 4.0 on: one mixed file ----

class MixedFile : public testing::TestWithParam<const char*> {};

TEST_P(MixedFile, HoldsEverythingWithGalileoInTheOrderOfTheLog) {
    const std::string version = GetParam();
    const Conversion run = convert(fullLog().bytes(), {"-rv", version});
    EXPECT_EQ(run.files.size(), 2U);
    const Lines header = {
        "     " + version + "           N: GNSS NAV DATA    MMIXED            RINEX VERSION / TYPE",
        leapSeconds18, endOfHeader};
    EXPECT_EQ(withoutRunStamp(run, 'p'), joined({header, mixedBody({})}));
}

// Without a single constellation there is no letter either.
TEST_P(MixedFile, HoldsExcludedConstellationsInTheOrderOfTheLog) {
    const std::string version = GetParam();
    const Conversion run = convert(fullLog().bytes(), {"-rv", version, "-G", "-R", "-E", "-C", "-I"});
    EXPECT_EQ(run.lines('p').at(0),
              "     " + version + "           N: GNSS NAV DATA    MIXED            RINEX VERSION / TYPE");
    EXPECT_EQ(run.body('p'), mixedBody({.gps = true, .glonass = true, .beidou = true, .navic = true}));
}

INSTANTIATE_TEST_SUITE_P(Versions, MixedFile, testing::Values("4.00", "4.01"));

struct MixedExclusion {
    const char* option;
    Excluded excluded;
};

class MixedFileWithout : public testing::TestWithParam<MixedExclusion> {};

TEST_P(MixedFileWithout, OneConstellationLeavesThatOneUnsorted) {
    const Conversion run = convert(fullLog().bytes(), {"-rv", "4.01", GetParam().option});
    EXPECT_EQ(run.body('p'), mixedBody(GetParam().excluded));
}

INSTANTIATE_TEST_SUITE_P(Options, MixedFileWithout,
                         testing::Values(MixedExclusion{"-G", {.gps = true}},
                                         MixedExclusion{"-R", {.glonass = true}}, MixedExclusion{"-E", {}},
                                         MixedExclusion{"-C", {.beidou = true}},
                                         MixedExclusion{"-I", {.navic = true}}));

// ---- other logs ----

// Two epochs of GPS alone, enough for an observation header.
LogBuilder twoEpochs() {
    LogBuilder log;
    for (const std::uint32_t second : {3724U, 3725U}) {
        log.time(second * 1000).rd(2024, 3, 5).sx({{SystemCode::gps, 7}}).td();
    }
    return log;
}

TEST(NavigationFiles, OfAnEmptyLogHoldWhatIsAlwaysWritten) {
    const Conversion single = convert("");
    EXPECT_THAT(single.lines('N'), SizeIs(4));
    EXPECT_THAT(single.lines('I'), SizeIs(4));
    EXPECT_THAT(single.lines('G'), SizeIs(6));
    EXPECT_THAT(single.lines('L'), SizeIs(5));
    EXPECT_THAT(single.lines('C'), SizeIs(4));
    EXPECT_THAT(
        convert("", {"-rv", "4.01"}).body('p'),
        ElementsAre("> STO R   FDMA", "       0 00 00 00 00 00 GLGP" + gap + "UTCGAL",
                    "     0.000000000000e+00 0.000000000000e+00 0.000000000000e+00 0.000000000000e+00",
                    "> ION C00 IFNV",
                    "       0 00 00 00 00 00 0.000000000000e+00 0.000000000000e+00 0.000000000000e+00",
                    "     0.000000000000e+00"));
}

struct Exclusion {
    const char* option;
    char letter;
};

class ExcludedConstellation : public testing::TestWithParam<Exclusion> {};

TEST_P(ExcludedConstellation, HasNoFileBelow4) {
    const Conversion run = convert(twoEpochs().bytes(), {GetParam().option});
    EXPECT_EQ(run.files.size(), 5U);
    EXPECT_FALSE(run.has(GetParam().letter));
}

INSTANTIATE_TEST_SUITE_P(Options, ExcludedConstellation,
                         testing::Values(Exclusion{"-G", 'N'}, Exclusion{"-I", 'I'}, Exclusion{"-R", 'G'},
                                         Exclusion{"-E", 'L'}, Exclusion{"-C", 'C'}));

TEST(NavigationFiles, RecordsOfALogWithoutADateHaveTheYear0) {
    const Conversion run = convert(LogBuilder().ge123(orbit(9, 7200)).bytes());
    ASSERT_THAT(run.body('N'), SizeIs(8));
    EXPECT_EQ(run.body('N')[0], "G09    0 00 00 02 00 00" + clockValues);
}

TEST(NavigationFiles, RecordsAheadOfTheFirstDateTakeThatOfTheFirstDatedOne) {
    const LogBuilder log =
        LogBuilder().ge123(orbit(9, 7200)).ge123(orbit(5, 3600)).rd(2024, 3, 5).ge123(orbit(5, 7200));
    const Conversion run = convert(log.bytes());
    ASSERT_THAT(run.body('N'), SizeIs(24));
    EXPECT_EQ(run.body('N')[0], gps5[0]);
    EXPECT_EQ(run.body('N')[16], gps9[0]);
}

TEST(NavigationFiles, MessagesAreDecodedOnceThoughTheLogIsReadTwice) {
    LogBuilder log = twoEpochs();
    log.uo({.a0 = 1.0}).uo({.a0 = 2.0}).io({.alpha0 = 1.0F}).io({.alpha0 = 2.0F});
    const Conversion run = convert(log.bytes());
    EXPECT_THAT(run.labelled('N', "TIME SYSTEM CORR"), SizeIs(2));
    EXPECT_THAT(run.labelled('N', "IONOSPHERIC CORR"), SizeIs(4));
}

TEST(NavigationFiles, LeapSecondsComeFromTheEndOfTheLogToo) {
    LogBuilder log = twoEpochs();
    log.uo({.a0 = 1.0, .leapSeconds = 17}).uo({.a0 = 2.0, .leapSeconds = -3});
    const Conversion run = convert(log.bytes());
    for (const char letter : {'o', 'N', 'I', 'G', 'L', 'C'}) {
        EXPECT_THAT(run.labelled(letter, "LEAP SECONDS"),
                    ElementsAre("    -3                                                      LEAP SECONDS"))
            << letter;
    }
}

TEST(NavigationFiles, MixedHeaderShowsTheLetterOfASingleConstellation) {
    EXPECT_EQ(convert(twoEpochs().bytes(), {"-rv", "4.01"}).lines('p').at(0),
              "     4.01           N: GNSS NAV DATA    GMIXED            RINEX VERSION / TYPE");
}

TEST(NavigationFiles, FullTableTakesNothingMoreAndTheRunGoesOn) {
    LogBuilder log = twoEpochs();
    for (std::int32_t toe = 10001; toe > 0; --toe) {
        log.ge123(orbit(9, toe));
    }
    log.ie(orbit(4, 7200));
    const Conversion run = convert(log.bytes());
    EXPECT_EQ(run.exitStatus, 0);
    ASSERT_THAT(run.body('N'), SizeIs(80000));
    EXPECT_EQ(run.body('N')[0].substr(0, 23), "G09 2024 03 05 00 00 02");  // the message with 1 came last
    EXPECT_EQ(run.body('I'), navic4);
}

TEST(NavigationFiles, QzssEphemeridesReachNoFile) {
    const std::string block = LogBuilder().ge123(orbit(9, 7200)).bytes().substr(5, 122);
    LogBuilder log = twoEpochs();
    log.message("QE", block);
    EXPECT_THAT(convert(log.bytes()).body('N'), SizeIs(0));
}

}  // namespace
