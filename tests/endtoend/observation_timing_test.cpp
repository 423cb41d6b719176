// What stands in the observation file depends on when its header is due and on what the tables still hold
// from earlier epochs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/obs_logs.h"

namespace {
namespace observationTimingTest {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::Satellite;
using samplelog::SystemCode;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testsupport::addEpoch;
using testsupport::blanks;
using testsupport::convert;
using testsupport::headerLine;
using testsupport::joined;
using Lines = std::vector<std::string>;

constexpr std::uint16_t on = 0x40;

// An epoch of satellites whose first signal is present and of which nothing was measured.
void addPresence(LogBuilder& log, const std::vector<Satellite>& satellites,
                 const std::vector<std::uint8_t>& slots = {}) {
    addEpoch(log, {.satellites = satellites,
                   .slots = slots,
                   .bands = {{.band = Band::c, .flags = std::vector<std::uint16_t>(satellites.size(), on)}}});
}

std::string epochLine(const std::string& time, std::size_t satellites) {
    const std::string count = std::to_string(satellites);
    return "> 2024 03 05 " + time + "  0" + blanks(3 - count.size()) + count + "       0.000000000000";
}

const std::string zeros = "         0.000           0.000 0         0.000           0.000  ";
const std::string g01 = "G01" + zeros + blanks(320);

// A log of G01 at the times of day, dated at the first alone.
LogBuilder gpsLog(const std::vector<std::uint32_t>& times) {
    LogBuilder log;
    for (const std::uint32_t time : times) {
        log.time(time);
        if (log.size() < 20) {
            log.rd(2024, 3, 5);
        }
        addPresence(log, {{SystemCode::gps, 1}});
    }
    return log;
}

// ---- when the header is due ----

TEST(ObservationTiming, ALogOfOneTimeLeavesAnEmptyFile) {
    const auto run = convert(gpsLog({3600000}).bytes());
    EXPECT_EQ(run.exitStatus, 0);
    ASSERT_TRUE(run.has('o'));
    EXPECT_THAT(run.lines('o'), ElementsAre());
}

TEST(ObservationTiming, TheSecondTimeBringsTheHeaderAndTheEpochAheadOfIt) {
    LogBuilder log = gpsLog({3600000});
    log.time(3601000);
    EXPECT_THAT(convert(log.bytes()).body('o'), ElementsAre(epochLine("01 00  0.0000000", 1), g01));
}

TEST(ObservationTiming, ATimeOfZeroAtTheStartPutsTheHeaderOffToTheThird) {
    EXPECT_THAT(convert(gpsLog({0, 1000}).bytes()).lines('o'), ElementsAre());
    EXPECT_THAT(convert(gpsLog({0, 1000, 2000}).bytes()).body('o'),
                ElementsAre(epochLine("00 00  0.0000000", 1), g01, epochLine("00 00  1.0000000", 1), g01));
}

TEST(ObservationTiming, AHeaderDueAtMidnightComesTwoTimesLaterBehindItsEpoch) {
    const auto lines = convert(gpsLog({86399000, 0, 1000, 2000}).bytes()).lines('o');
    ASSERT_GT(lines.size(), 6U);
    EXPECT_EQ(lines[0], epochLine("23 59 59.0000000", 1));
    EXPECT_EQ(lines[1], g01);
    EXPECT_THAT(lines[2], testing::EndsWith("RINEX VERSION / TYPE"));
    const Lines end(lines.end() - 5, lines.end());
    EXPECT_THAT(end, ElementsAre(headerLine("", "END OF HEADER"), epochLine("23 59 60.0000000", 1), g01,
                                 epochLine("23 60  0.0000000", 1), g01));
}

TEST(ObservationTiming, EpochsAheadOfTheHeaderAreLostButForTheLast) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addPresence(log, {{SystemCode::gps, 1}});
    addPresence(log, {{SystemCode::gps, 1}, {SystemCode::gps, 2}});
    log.time(3601000);
    EXPECT_THAT(convert(log.bytes()).body('o'),
                ElementsAre(epochLine("01 00  0.0000000", 2), g01, "G02" + zeros + blanks(320)));
}

// ---- clocks ----

TEST(ObservationTiming, WithoutFurtherDatesTheClockCountsToSixtyAndDropsTheOvershoot) {
    const auto run = convert(gpsLog({58000, 59000, 60000, 61000, 62000}).bytes());
    EXPECT_THAT(run.body('o'),
                ElementsAre(epochLine("00 00 58.0000000", 1), g01, epochLine("00 00 59.0000000", 1), g01,
                            epochLine("00 00 60.0000000", 1), g01, epochLine("00 01  0.0000000", 1), g01,
                            epochLine("00 01  1.0000000", 1), g01));
}

TEST(ObservationTiming, TheLogsLastStepIsTheIntervalOfTheWholeFile) {
    const auto run = convert(gpsLog({1000, 2000, 32000}).bytes());
    EXPECT_THAT(run.labelled('o', "INTERVAL"), ElementsAre(headerLine("    30.000", "INTERVAL")));
    EXPECT_THAT(run.body('o'),
                ElementsAre(epochLine("00 00  1.0000000", 1), g01, epochLine("00 00 31.0000000", 1), g01,
                            epochLine("00 01  0.0000000", 1), g01));
}

TEST(ObservationTiming, AcrossMidnightTheIntervalIsNegativeAndAStepFromZeroLeavesItSo) {
    const auto run = convert(gpsLog({5000, 6000, 0, 1000}).bytes());
    EXPECT_THAT(run.labelled('o', "INTERVAL"), ElementsAre(headerLine("    -6.000", "INTERVAL")));
}

TEST(ObservationTiming, ALogWithoutADateAtItsStartReportsItsLastTimeAsItsFirst) {
    LogBuilder log;
    for (const std::uint32_t second : {0U, 1U, 2U}) {
        log.time(3600000 + 1000 * second);
        addPresence(log, {{SystemCode::gps, 1}});
    }
    log.rd(2024, 3, 5);
    const auto run = convert(log.bytes());
    EXPECT_THAT(run.labelled('o', "TIME OF FIRST OBS"),
                ElementsAre("  2024     3     5     1     0    2.0000000     GPS         TIME OF FIRST OBS"));
}

// ---- what the header finds in the tables ----

TEST(ObservationTiming, IdentityBehindTheSecondTimeDoesNotReachTheHeader) {
    LogBuilder log = gpsLog({3600000});
    log.kvMarker("EARLY").time(3601000).kvMarker("LATE").pv({1.0, 2.0, 3.0});
    const auto run = convert(log.bytes());
    EXPECT_THAT(run.labelled('o', "MARKER NAME"), ElementsAre(headerLine("EARLY", "MARKER NAME")));
    EXPECT_THAT(run.labelled('o', "APPROX POSITION XYZ"),
                ElementsAre(headerLine("        0.0000        0.0000        0.0000", "APPROX POSITION XYZ")));
}

TEST(ObservationTiming, ASignalWithoutAnyPhaseKeepsAShiftOfZero) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addEpoch(log, {.satellites = {{SystemCode::gps, 1}},
                   .bands = {{.band = Band::b1, .flags = {on}},
                             {.band = Band::b5, .phases = {0}, .flags = {on}}}});
    log.time(3601000);
    EXPECT_THAT(convert(log.bytes()).labelled('o', "SYS / PHASE SHIFT"),
                ElementsAre(headerLine("G L1W  0.00000  01 G01", "SYS / PHASE SHIFT"),
                            headerLine("G L5X  0.25000  01 G01", "SYS / PHASE SHIFT")));
}

// What the survey pass has staged is still there when the first epoch is assembled.
TEST(ObservationTiming, APhaseOfTheLastEpochAloneGivesItsShiftToTheHeader) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addPresence(log, {{SystemCode::gps, 1}});
    log.time(3601000);
    addEpoch(log, {.satellites = {{SystemCode::gps, 1}},
                   .bands = {{.band = Band::b1, .phases = {0}, .flags = {on}}}});
    EXPECT_THAT(convert(log.bytes()).labelled('o', "SYS / PHASE SHIFT"),
                ElementsAre(headerLine("G L1C  0.00000  01 G01", "SYS / PHASE SHIFT"),
                            headerLine("G L1W -0.25000  01 G01", "SYS / PHASE SHIFT")));
}

// Two epochs of one BeiDou satellite with its first signal.
testsupport::Conversion beidouRun(int satellite) {
    LogBuilder log;
    for (const std::uint32_t second : {0U, 1U}) {
        log.time(3600000 + 1000 * second).rd(2024, 3, 5);
        addPresence(log, {{SystemCode::beidou, satellite}});
    }
    return convert(log.bytes());
}

// Four codes: the header lowers their count to 0, the next epoch counts anew.
TEST(ObservationTiming, BeidouWithFourCodesMissesItsLinesInTheFirstEpochOnly) {
    const auto run = beidouRun(3);
    EXPECT_THAT(run.labelled('o', "SYS / # / OBS TYPES"), ElementsAre());
    EXPECT_THAT(run.labelled('o', "SYS / PHASE SHIFT"), ElementsAre());
    EXPECT_THAT(run.body('o'), ElementsAre(epochLine("01 00  0.0000000", 1), epochLine("01 00  1.0000000", 1),
                                           "C03" + zeros + blanks(320)));
}

// One code, a second phase: the count is -3, and only 0 keeps the lines back.
TEST(ObservationTiming, BeidouWithASecondPhaseAloneHasItsLinesInEveryEpoch) {
    const auto run = beidouRun(10);
    EXPECT_THAT(run.labelled('o', "SYS / # / OBS TYPES"), ElementsAre());
    EXPECT_THAT(run.body('o'), ElementsAre(epochLine("01 00  0.0000000", 1), "C10" + zeros + blanks(320),
                                           epochLine("01 00  1.0000000", 1), "C10" + zeros + blanks(320)));
}

TEST(ObservationTiming, GlonassSlotsOfTheWholeLogStandInTheHeader) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addPresence(log, {{SystemCode::glonass, -7}}, {24});
    log.time(3601000).rd(2024, 3, 5);
    addPresence(log, {{SystemCode::glonass, 6}}, {1});
    const auto run = convert(log.bytes());
    EXPECT_THAT(run.labelled('o', "GLONASS SLOT / FRQ #"),
                ElementsAre(headerLine("  2 R01  6 R24 -7", "GLONASS SLOT / FRQ #")));
}

// ---- records and their leftovers ----

TEST(ObservationTiming, TwoGlonassSatellitesOfOneSlotShareTheFirstOnesLine) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addPresence(log, {{SystemCode::glonass, 3}, {SystemCode::glonass, 4}, {SystemCode::glonass, 5}},
                {9, 9, 2});
    log.time(3601000);
    EXPECT_THAT(convert(log.bytes()).body('o'),
                ElementsAre(epochLine("01 00  0.0000000", 3), "R02" + zeros + blanks(256),
                            "R09" + zeros + blanks(256)));
}

TEST(ObservationTiming, GlonassSatellitesWithoutSlotsShowTheirChannels) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addPresence(log, {{SystemCode::glonass, 6}, {SystemCode::glonass, -7}});
    log.time(3601000);
    EXPECT_THAT(convert(log.bytes()).body('o'),
                ElementsAre(epochLine("01 00  0.0000000", 2), "R06" + zeros + blanks(256),
                            "R-7" + zeros + blanks(256)));
}

// The phases of the second epoch are missing: the last ones are applied to the list as it stands, one of
// them to an entry that only the longer list had. The record that it claims shows what it kept of its flags.
TEST(ObservationTiming, AMessageThatStopsComingGoesOnClaimingARecord) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addEpoch(log, {.satellites = {{SystemCode::gps, 1}, {SystemCode::gps, 2}},
                   .ranges = {0, 0},
                   .bands = {{.band = Band::c, .flags = {on, on}},
                             {.band = Band::b2, .phases = {1 << 20, 1 << 30}, .flags = {on, on}}}});
    log.time(3601000).rd(2024, 3, 5);
    addEpoch(log, {.satellites = {{SystemCode::gps, 2}},
                   .ranges = {0},
                   .bands = {{.band = Band::c, .flags = {on}}, {.band = Band::b2, .flags = {on}}}});
    const Lines body = convert(log.bytes()).body('o');
    ASSERT_EQ(body.size(), 6U);
    EXPECT_EQ(body[3], epochLine("01 00  1.0000000", 1));
    // 2^-20 s and 2^-10 s of 1227.6 MHz; the second without the 0.075 s that only a range gives.
    EXPECT_EQ(body[4], "G02  22484434.350           0.000 0         0.000           0.000  " + blanks(64) +
                           "         0.000    92071170.731 0         0.000           0.000  " + blanks(192));
    EXPECT_EQ(body[5], "G02" + blanks(128) +
                           "         0.000     1198828.125 0         0.000           0.000  " + blanks(192));
}

TEST(ObservationTiming, ASignalThatIsLostInALaterEpochIsBlankThere) {
    LogBuilder log = gpsLog({3600000});
    log.time(3601000);
    addEpoch(log, {.satellites = {{SystemCode::gps, 1}}, .bands = {{.band = Band::c, .flags = {0xFFBF}}}});
    EXPECT_EQ(convert(log.bytes()).body('o').back(), "G01" + blanks(384));
}

// Satellites `count` down to 1 of one system, all present.
LogBuilder crowdedLog(std::uint8_t systemCode, int count) {
    std::vector<Satellite> satellites;
    for (int number = count; number > 0; --number) {
        satellites.push_back({systemCode, number});
    }
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addPresence(log, satellites);
    return log.time(3601000);
}

TEST(ObservationTiming, TheThirtyFirstSatelliteIsCountedButNotWritten) {
    for (const auto& [code, letter] :
         {std::pair{SystemCode::gps, 'G'}, std::pair{SystemCode::galileo, 'E'}}) {
        const auto body = convert(crowdedLog(code, 31).bytes()).body('o');
        ASSERT_EQ(body.size(), 31U);
        EXPECT_EQ(body[0], epochLine("01 00  0.0000000", 31));
        EXPECT_EQ(body[1].substr(0, 3), std::string(1, letter) + "01");
        EXPECT_EQ(body[30].substr(0, 3), std::string(1, letter) + "30");
    }
}

// ---- texts that do not fit ----

TEST(ObservationTiming, AnAntennaNumberOfTwentyCharactersIsWhole) {
    LogBuilder log = gpsLog({3600000, 3601000});
    const auto run = convert(log.bytes(), {"-AN", "12345678901234567890"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_THAT(run.labelled('o', "ANT # / TYPE"),
                ElementsAre(headerLine("12345678901234567890", "ANT # / TYPE")));
}

TEST(ObservationTiming, AnAntennaNumberOf21CharactersEndsTheRunAbnormally) {
    const LogBuilder log = gpsLog({3600000, 3601000});
    const auto run = convert(log.bytes(), {"-AN", "123456789012345678901"});
    EXPECT_TRUE(run.abnormal);
    EXPECT_THAT(run.labelled('o', "END OF HEADER"), ElementsAre());
    EXPECT_FALSE(run.has('N'));
}

TEST(ObservationTiming, AnAntennaTypeOf41CharactersEndsTheRunAbnormally) {
    LogBuilder log;
    log.antennaType(std::string(41, 't'));
    log.raw(gpsLog({3600000, 3601000}).bytes());
    const auto run = convert(log.bytes());
    EXPECT_TRUE(run.abnormal);
    EXPECT_THAT(run.labelled('o', "END OF HEADER"), ElementsAre());
}

// Nothing fails where no header is due.
TEST(ObservationTiming, AnAntennaNumberOf21CharactersPassesInALogWithoutAHeader) {
    const auto run = convert(gpsLog({3600000}).bytes(), {"-AN", "123456789012345678901"});
    EXPECT_EQ(run.exitStatus, 0);
}

}  // namespace observationTimingTest
}  // namespace
