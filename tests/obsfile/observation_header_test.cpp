// The header of the observation file: its records, their order and columns, and when it is written.
#include "obsfile/observation_header.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "support/conversion.h"
#include "support/obs_text.h"
#include "support/staging.h"

namespace {

using orbconv::Constellation;
using testing::ElementsAre;
using testsupport::blanks;
using testsupport::headerLine;
using Lines = std::vector<std::string>;

// A header's tables, empty but for the presence of a time.
struct Header {
    orbconv::RunOptions options;
    orbconv::RunStamp runStamp{2026, 7, 9, 1, 2, 3};
    orbconv::ReceiverInfo receiver;
    orbconv::ReceiverClocks clocks;
    orbconv::SystemPresence presence;
    std::int32_t lastLeapSeconds = 0;
    orbconv::SignalSurvey survey;
    orbconv::GlonassSlotTable glonassSlotTable;
    float interval = 1.0F;
    std::uint32_t lastEpochMs = 1;
    bool done = false;

    void writeTo(orbconv::TextWriter& out) {
        orbconv::writeObservationHeader(
            out, interval, lastEpochMs,
            {options, runStamp, receiver, clocks, presence, lastLeapSeconds, survey, glonassSlotTable}, done);
    }
    Lines lines() {
        return testsupport::splitLines(
            testsupport::written([this](orbconv::TextWriter& out) { writeTo(out); }));
    }
    // The only line of a first call that ends with the label.
    std::string line(std::string_view label) {
        done = false;
        std::string found;
        for (const std::string& line : lines()) {
            if (line.ends_with(label)) {
                EXPECT_EQ(found, "");
                found = line;
            }
        }
        return found;
    }
};

class ObservationHeader : public testing::Test {
protected:
    std::unique_ptr<Header> header_ = std::make_unique<Header>();
    Header& header = *header_;
};

// ---- order and gates ----

TEST_F(ObservationHeader, EmptyTablesStillGiveEveryRecordInItsOrder) {
    header.presence.letter = 'G';
    EXPECT_THAT(
        header.lines(),
        ElementsAre("     3.05           OBSERVATION DATA    G                   RINEX VERSION / TYPE",
                    "ORBCONV v.0.0.10a   ZENTA GNSS          20260709 010203 UTC PGM / RUN BY / DATE",
                    headerLine("", "OBSERVER / AGENCY"),  //
                    headerLine("", "MARKER NAME"),        //
                    headerLine("", "REC # / TYPE / VERS"),
                    "        0.0000        0.0000        0.0000                  APPROX POSITION XYZ",
                    headerLine("-Unknown-", "ANT # / TYPE"),
                    "        0.0000        0.0000        0.0000                  ANTENNA: DELTA H/E/N",
                    headerLine("  0", "GLONASS SLOT / FRQ #"),  //
                    "        GLONASS COD/PHS/BIS",              //
                    headerLine("     1.000", "INTERVAL"),
                    "     0     0     0     0     0    0.0000000     GPS         TIME OF FIRST OBS",
                    "     0     0     0     0     0    0.0000000     GPS         TIME OF LAST OBS",
                    headerLine("     0", "LEAP SECONDS"),     //
                    headerLine("     0", "# OF SATELLITES"),  //
                    headerLine("", "END OF HEADER")));
    EXPECT_TRUE(header.done);
}

TEST_F(ObservationHeader, ObsTypesStandBehindTheAntennaAndPhaseShiftsBehindTheLeapSeconds) {
    testsupport::setCodes(header.survey.codes(Constellation::gps), 0, {"C1C", "L1C"});
    header.survey.obsCodeCount[0] = 2;
    const Lines lines = header.lines();
    ASSERT_EQ(lines.size(), 18U);
    EXPECT_THAT(lines[7], testing::EndsWith("ANTENNA: DELTA H/E/N"));
    EXPECT_EQ(lines[8], headerLine("G    2 C1C L1C", "SYS / # / OBS TYPES"));
    EXPECT_THAT(lines[9], testing::EndsWith("GLONASS SLOT / FRQ #"));
    EXPECT_THAT(lines[14], testing::EndsWith("LEAP SECONDS"));
    EXPECT_EQ(lines[15], headerLine("G L1C  0.00000  00", "SYS / PHASE SHIFT"));
    EXPECT_THAT(lines[16], testing::EndsWith("# OF SATELLITES"));
}

TEST_F(ObservationHeader, TheTwoGlonassRecordsNeedIncludeGlonass) {
    header.options.includeGlonass = false;
    const Lines lines = header.lines();
    EXPECT_EQ(lines.size(), 14U);
    EXPECT_THAT(lines, testing::Not(testing::Contains(testing::HasSubstr("GLONASS"))));
}

TEST_F(ObservationHeader, NothingIsWrittenWhileNoEpochTimeIsKnown) {
    header.lastEpochMs = 0;
    EXPECT_EQ(header.lines(), Lines{});
    EXPECT_FALSE(header.done);
}

TEST_F(ObservationHeader, AHeaderThatFoundNoTimeIsWrittenWholeByALaterCall) {
    header.lastEpochMs = 0;
    header.lines();
    header.lastEpochMs = 5;
    EXPECT_EQ(header.lines().size(), 16U);
    EXPECT_TRUE(header.done);
}

TEST_F(ObservationHeader, ASecondCallWritesTheLeapSecondsAlone) {
    header.lines();
    header.lastLeapSeconds = 18;
    EXPECT_THAT(header.lines(), ElementsAre(headerLine("    18", "LEAP SECONDS")));
    EXPECT_TRUE(header.done);
}

TEST_F(ObservationHeader, ACallWithoutATimeWritesNothingEvenWhenTheHeaderStands) {
    header.lines();
    header.lastEpochMs = 0;
    EXPECT_EQ(header.lines(), Lines{});
    EXPECT_TRUE(header.done);
}

TEST_F(ObservationHeader, TheGlonassSlotTableIsSortedInPlace) {
    header.glonassSlotTable.slot = {9, 4};
    header.glonassSlotTable.frequencyNumber = {-2, 6};
    EXPECT_EQ(header.line("GLONASS SLOT / FRQ #"), headerLine("  2 R04  6 R09 -2", "GLONASS SLOT / FRQ #"));
    EXPECT_EQ(header.glonassSlotTable.slot[0], 4);
    EXPECT_EQ(header.glonassSlotTable.frequencyNumber[0], 6);
}

// ---- first line ----

TEST_F(ObservationHeader, VersionLine_ShowsTheVersionWithTwoDecimalsInColumns1To9) {
    header.presence.letter = 'M';
    header.options.rinexVersion = 4.0;
    EXPECT_EQ(header.line("RINEX VERSION / TYPE"),
              "     4.00           OBSERVATION DATA    M                   RINEX VERSION / TYPE");
}

TEST_F(ObservationHeader, VersionLine_OfVersion401) {
    header.presence.letter = 'R';
    header.options.rinexVersion = 4.01;
    EXPECT_EQ(header.line("RINEX VERSION / TYPE"),
              "     4.01           OBSERVATION DATA    R                   RINEX VERSION / TYPE");
}

TEST_F(ObservationHeader, VersionLine_WithoutALetterStandsOneColumnToTheLeft) {
    EXPECT_EQ(header.line("RINEX VERSION / TYPE"),
              "     3.05           OBSERVATION DATA    " + blanks(19) + "RINEX VERSION / TYPE");
}

// ---- run, marker, receiver ----

TEST_F(ObservationHeader, ProgramLine_FillsDateAndTimeWithZerosButNotTheYear) {
    header.runStamp = {987, 12, 31, 23, 59, 58};
    EXPECT_EQ(header.line("PGM / RUN BY / DATE"),
              "ORBCONV v.0.0.10a   ZENTA GNSS           9871231 235958 UTC PGM / RUN BY / DATE");
}

TEST_F(ObservationHeader, MarkerName_IsLeftJustifiedIn60) {
    header.receiver.markerName = "PIER 7";
    EXPECT_EQ(header.line("MARKER NAME"), "PIER 7" + blanks(54) + "MARKER NAME");
}

TEST_F(ObservationHeader, MarkerName_OfMoreThan60CharactersMovesTheLabel) {
    header.receiver.markerName = std::string(61, 'm');
    EXPECT_EQ(header.line("MARKER NAME"), std::string(61, 'm') + "MARKER NAME");
}

TEST_F(ObservationHeader, ReceiverLine_HasThreeFieldsOf20) {
    header.receiver.receiverNumber = "NUMBER";
    header.receiver.receiverType = "TYPE";
    header.receiver.receiverVersion = "VERSION";
    EXPECT_EQ(header.line("REC # / TYPE / VERS"),
              "NUMBER              TYPE                VERSION             REC # / TYPE / VERS");
}

TEST_F(ObservationHeader, ReceiverLine_CutsTheVersionTo20Characters) {
    header.receiver.receiverVersion = "12345678901234567890X";
    EXPECT_EQ(header.line("REC # / TYPE / VERS"), blanks(40) + "12345678901234567890REC # / TYPE / VERS");
}

TEST_F(ObservationHeader, ReceiverLine_ALongTypeMovesEverythingBehindIt) {
    header.receiver.receiverType = "123456789012345678901234";
    header.receiver.receiverVersion = "V";
    EXPECT_EQ(header.line("REC # / TYPE / VERS"),
              blanks(20) + "123456789012345678901234V" + blanks(19) + "REC # / TYPE / VERS");
}

TEST_F(ObservationHeader, ReceiverLine_ALongNumberMovesEverythingBehindIt) {
    header.receiver.receiverNumber = "1234567890123456789012";
    header.receiver.receiverType = "T";
    EXPECT_EQ(header.line("REC # / TYPE / VERS"),
              "1234567890123456789012T" + blanks(39) + "REC # / TYPE / VERS");
}

// ---- position and antenna ----

TEST_F(ObservationHeader, Position_HasFourDecimalsInFieldsOf14) {
    header.receiver.approxPosition = {-2700123.45678, 12.5, 4500000.00004};
    EXPECT_EQ(header.line("APPROX POSITION XYZ"),
              " -2700123.4568       12.5000  4500000.0000                  APPROX POSITION XYZ");
}

TEST_F(ObservationHeader, Position_TooWideForItsFieldMovesTheRest) {
    header.receiver.approxPosition = {1e12, 0.0, 0.0};
    EXPECT_EQ(header.line("APPROX POSITION XYZ"),
              "1000000000000.0000        0.0000        0.0000" + blanks(18) + "APPROX POSITION XYZ");
}

TEST_F(ObservationHeader, AntennaDelta_StandsInTheOrderHEN) {
    header.options.antennaDeltaH = 1.2345;
    header.options.antennaDeltaE = -0.00004;
    header.options.antennaDeltaN = 3.0;
    EXPECT_EQ(header.line("ANTENNA: DELTA H/E/N"),
              "        1.2345       -0.0000        3.0000                  ANTENNA: DELTA H/E/N");
}

TEST_F(ObservationHeader, Antenna_NumberIn20AndTypeIn40) {
    header.options.antennaNumber = "A-17";
    header.receiver.antennaType = "DISC RING       NONE";
    EXPECT_EQ(header.line("ANT # / TYPE"),
              "A-17" + blanks(16) + "DISC RING       NONE" + blanks(20) + "ANT # / TYPE");
}

TEST_F(ObservationHeader, Antenna_TextsThatFillTheirFieldsHaveNoPadding) {
    header.options.antennaNumber = std::string(20, 'n');
    header.receiver.antennaType = std::string(40, 't');
    EXPECT_EQ(header.line("ANT # / TYPE"), std::string(20, 'n') + std::string(40, 't') + "ANT # / TYPE");
}

// What reaches the file when the writing of the header fails.
std::string partialHeader(Header& header) {
    return testsupport::written(
        [&header](orbconv::TextWriter& out) { EXPECT_THROW(header.writeTo(out), std::length_error); });
}

TEST_F(ObservationHeader, Antenna_NumberOf21CharactersEndsTheRunBehindThePosition) {
    header.options.antennaNumber = std::string(21, 'n');
    const std::string text = partialHeader(header);
    EXPECT_THAT(text, testing::HasSubstr("APPROX POSITION XYZ\n"));
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("ANT # / TYPE")));
    EXPECT_FALSE(header.done);
}

TEST_F(ObservationHeader, Antenna_TypeOf41CharactersEndsTheRunBehindThePosition) {
    header.receiver.antennaType = std::string(41, 't');
    const std::string text = partialHeader(header);
    EXPECT_THAT(text, testing::HasSubstr("APPROX POSITION XYZ\n"));
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("ANT # / TYPE")));
    EXPECT_FALSE(header.done);
}

// ---- numbers and times ----

struct IntervalCase {
    float interval;
    std::string columns;
};

class ObservationHeaderInterval : public testing::TestWithParam<IntervalCase> {};

TEST_P(ObservationHeaderInterval, HasThreeDecimalsInTenColumns) {
    const auto header = std::make_unique<Header>();
    header->interval = GetParam().interval;
    EXPECT_EQ(header->line("INTERVAL"), GetParam().columns + blanks(50) + "INTERVAL");
}

INSTANTIATE_TEST_SUITE_P(Values, ObservationHeaderInterval,
                         testing::Values(IntervalCase{0.0F, "     0.000"}, IntervalCase{0.2F, "     0.200"},
                                         IntervalCase{30.0F, "    30.000"},
                                         IntervalCase{-86399.0F, "-86399.000"},
                                         IntervalCase{16777216.0F, "16777216.000"}));

TEST_F(ObservationHeader, Times_OfTheTwoClocksHaveColumnsOfTheirOwn) {
    header.clocks.epoch = {2024, 3, 5, 1, 2, 3, 0};
    header.clocks.lastObs = {2024, 12, 31, 23, 59, 59, 0};
    EXPECT_EQ(header.line("TIME OF FIRST OBS"),
              "  2024     3     5     1     2    3.0000000     GPS         TIME OF FIRST OBS");
    EXPECT_EQ(header.line("TIME OF LAST OBS"),
              "  2024    12    31    23    59   59.0000000     GPS         TIME OF LAST OBS");
}

TEST_F(ObservationHeader, Times_LongTimeScaleNamesReachBackToColumn44) {
    header.clocks.epoch.timeBase = 1;
    header.clocks.lastObs.timeBase = 2;
    EXPECT_EQ(header.line("TIME OF FIRST OBS"),
              "     0     0     0     0     0    0.0000000UTC_USNO         TIME OF FIRST OBS");
    EXPECT_EQ(header.line("TIME OF LAST OBS"),
              "     0     0     0     0     0    0.0000000 GLONASS         TIME OF LAST OBS");
    header.clocks.epoch.timeBase = 3;
    EXPECT_EQ(header.line("TIME OF FIRST OBS"),
              "     0     0     0     0     0    0.0000000  UTC_SU         TIME OF FIRST OBS");
}

TEST_F(ObservationHeader, Times_AnUnknownTimeScaleIsAnEmptyField) {
    header.clocks.epoch.timeBase = 4;
    header.clocks.lastObs.timeBase = 255;
    EXPECT_EQ(header.line("TIME OF FIRST OBS"),
              "     0     0     0     0     0    0.0000000                 TIME OF FIRST OBS");
    EXPECT_EQ(header.line("TIME OF LAST OBS"),
              "     0     0     0     0     0    0.0000000                 TIME OF LAST OBS");
}

TEST_F(ObservationHeader, Times_ShowTheClocksSecondsWithSevenDecimals) {
    header.clocks.epoch.second = 59.75F;
    EXPECT_EQ(header.line("TIME OF FIRST OBS"),
              "     0     0     0     0     0   59.7500000     GPS         TIME OF FIRST OBS");
}

TEST_F(ObservationHeader, LeapSeconds_AreASignedIntegerInSixColumns) {
    header.lastLeapSeconds = -18;
    EXPECT_EQ(header.line("LEAP SECONDS"), "   -18" + blanks(54) + "LEAP SECONDS");
}

TEST_F(ObservationHeader, SatelliteTotal_StandsInSixColumns) {
    header.survey.satelliteTotal = 142;
    EXPECT_EQ(header.line("# OF SATELLITES"), "   142" + blanks(54) + "# OF SATELLITES");
}

TEST_F(ObservationHeader, AWriterWithoutAFileTakesTheHeaderAndWritesNothing) {
    orbconv::TextWriter out(nullptr);
    header.writeTo(out);
    EXPECT_TRUE(header.done);
}

}  // namespace
