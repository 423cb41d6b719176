// orbconv-standard from a log to a file: what stands in it and what is told.
#include <gtest/gtest.h>

#include <algorithm>

#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "companions/standard/support/strict_reader.h"

namespace {
namespace programTest {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::addEpoch;
using testsupport::addRangeOfGps7;
using testsupport::fullLog;
using testsupport::logOfTimes;
using testsupport::present;
using testsupport::runStandard;
using testsupport::StandardRun;
using Lines = std::vector<std::string>;

constexpr std::uint32_t hour = 3600000;

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

// ---- a whole file ----

TEST(StandardProgram, WholeFileOfVersion305) {
    const StandardRun run = runStandard(fullLog());
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    ASSERT_EQ(run.files.begin()->first, "ABCD00XXX_R_20240650100_00U_00U_MO.rnx");
    Lines lines = run.lines();
    ASSERT_GT(lines.size(), 1U);
    EXPECT_TRUE(lines[1].ends_with(" UTC PGM / RUN BY / DATE"));
    EXPECT_EQ(lines[1].find_first_not_of("0123456789", 40), 48U);  // the date, and a blank ahead of the time
    EXPECT_EQ(lines[1][48], ' ');
    EXPECT_TRUE(lines[1].starts_with("orbconv-std 0."));
    lines.erase(lines.begin() + 1);
    // 0.075 s of flight are 22484434.350 m, 118156500 cycles of GPS L1, and 120023437.5 cycles of GLONASS L1
    // on channel -3, 1600.3125 MHz. The second band's difference is 1e-7 s + 2e-7 s: 89.938 m more.
    const Lines expected = {
        "     3.05           OBSERVATION DATA    M                   RINEX VERSION / TYPE",
        "ABCD                                                        MARKER NAME",
        "                                                            OBSERVER / AGENCY",
        "R1                  RECEIVER            1.0                 REC # / TYPE / VERS",
        "                    TYPE            NONE                    ANT # / TYPE",
        "     1000.5000    -2000.2500     3000.0000                  APPROX POSITION XYZ",
        "        0.0000        0.0000        0.0000                  ANTENNA: DELTA H/E/N",
        "G    8 C1C L1C D1C S1C C2W L2W D2W S2W                      SYS / # / OBS TYPES",
        "R    4 C1C L1C D1C S1C                                      SYS / # / OBS TYPES",
        "DBHZ                                                        SIGNAL STRENGTH UNIT",
        "  2024     3     5     1     0    0.5000000     GPS         TIME OF FIRST OBS",
        "  2024     3     5     1     0    0.5000000     GPS         TIME OF LAST OBS",
        "     0                                                      RCV CLOCK OFFS APPL",
        "G L1C  0.00000                                              SYS / PHASE SHIFT",
        "G L2W  0.00000                                              SYS / PHASE SHIFT",
        "R L1C  0.00000                                              SYS / PHASE SHIFT",
        "  1 R08 -3                                                  GLONASS SLOT / FRQ #",
        "                                                            GLONASS COD/PHS/BIS",
        "    18                                                      LEAP SECONDS",
        "                                                            END OF HEADER",
        "> 2024 03 05 01 00  0.5000000  0  2      -0.000125000000",
        "G07  22484434.350   118156500.000           1.000                    22484524.288",
        "R08  22484434.350   120023437.500 7     -1234.568          45.000",
    };
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(testsupport::readStrictly(run.text()).complaints, Lines{});
}

TEST(StandardProgram, Version401LeavesOutWhatItTellsWritersToLeaveOut) {
    const StandardRun run = runStandard(fullLog(), {"--rinex", "4.01"});
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_EQ(run.labelled("RINEX VERSION / TYPE"), Lines{"     4.01           OBSERVATION DATA    M"});
    EXPECT_EQ(run.labelled("SYS / PHASE SHIFT"), Lines{});
    EXPECT_EQ(run.labelled("GLONASS COD/PHS/BIS"), Lines{});
    EXPECT_EQ(run.labelled("GLONASS SLOT / FRQ #"), Lines{"  1 R08 -3"});
    EXPECT_EQ(testsupport::readStrictly(run.text()).complaints, Lines{});
}

TEST(StandardProgram, LogThatTellsNothingLeavesFieldsBlank) {
    const StandardRun run = runStandard(logOfTimes({hour}));
    EXPECT_EQ(run.files.begin()->first, "XXXX00XXX_R_20240650100_00U_00U_MO.rnx");
    EXPECT_EQ(run.labelled("RINEX VERSION / TYPE"), Lines{"     3.05           OBSERVATION DATA    G"});
    EXPECT_EQ(run.labelled("MARKER NAME"), Lines{""});
    EXPECT_EQ(run.labelled("APPROX POSITION XYZ"), Lines{"        0.0000        0.0000        0.0000"});
    for (const char* const label : {"LEAP SECONDS", "INTERVAL", "MARKER NUMBER", "MARKER TYPE", "COMMENT",
                                    "GLONASS SLOT / FRQ #", "GLONASS COD/PHS/BIS"}) {
        EXPECT_EQ(run.labelled(label), Lines{}) << label;
    }
    EXPECT_EQ(run.body(), (Lines{"> 2024 03 05 01 00  0.0000000  0  1", testsupport::lineOfGps7}));
}

// ---- epochs ----

TEST(StandardProgram, EpochHoldsWhatCameInItAlone) {
    LogBuilder log;
    log.rd(2024, 3, 5).time(hour).to(0.5);
    addRangeOfGps7(log);
    log.strengths(Band::c, {160}).td();
    log.time(hour + 1000).sx({{SystemCode::gps, 9}}).flags(Band::c, {present}).rx({0}).td();
    EXPECT_EQ(runStandard(log.take()).body(),
              (Lines{"> 2024 03 05 01 00  0.0000000  0  1       0.500000000000",
                     "G07  22484434.350" + std::string(42, ' ') + "40.000",
                     "> 2024 03 05 01 00  1.0000000  0  1", "G09  22484434.350"}));
}

TEST(StandardProgram, EpochWithoutSatellitesIsLeftOutAndTold) {
    LogBuilder log;
    log.rd(2024, 3, 5);
    addEpoch(log, hour);
    log.time(hour + 1000).sx({}).td();
    log.time(hour + 2000).sx({{SystemCode::gps, 3}}).flags(Band::c, {0}).rx({0}).td();
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.body().size(), 2U);
    EXPECT_TRUE(contains(run.errors, "    epochs without a satellite to write: 2\n"));
}

TEST(StandardProgram, RepeatedTimeIsToldAndTheFirstKept) {
    LogBuilder log;
    log.rd(2024, 3, 5);
    addEpoch(log, hour);
    log.time(hour).sx({{SystemCode::gps, 9}}).flags(Band::c, {present}).rx({0}).td();
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.body(), (Lines{"> 2024 03 05 01 00  0.0000000  0  1", testsupport::lineOfGps7}));
    EXPECT_TRUE(contains(run.errors, "epochs of a time that came already: 1\n"));
}

TEST(StandardProgram, EpochsThatGoBackInTimeAreSortedIn) {
    LogBuilder log;
    log.rd(2024, 3, 5).time(hour);
    addRangeOfGps7(log);
    log.td().rd(2024, 3, 5);
    addEpoch(log, hour + 2000);
    log.rd(2024, 3, 5);
    addEpoch(log, hour + 1000);
    log.rd(2024, 3, 5).time(hour + 2000);  // once more, and not as the first had it
    log.sx({{SystemCode::gps, 9}}).flags(Band::c, {present}).rx({0}).td();
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.body(), (Lines{"> 2024 03 05 01 00  0.0000000  0  1", testsupport::lineOfGps7,
                                 "> 2024 03 05 01 00  1.0000000  0  1", testsupport::lineOfGps7,
                                 "> 2024 03 05 01 00  2.0000000  0  1", testsupport::lineOfGps7}));
    EXPECT_TRUE(contains(run.errors, "  epochs: 3, "));
    EXPECT_TRUE(contains(run.errors, "epochs of a time that came already: 1\n"));
}

TEST(StandardProgram, EpochsInMoreDisorderThanCanBeSortedAreLost) {
    LogBuilder log;
    for (std::uint32_t i = 0; i < 42; ++i) {
        log.rd(2024, 3, 5);
        addEpoch(log, hour - 1000 * i);
    }
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(run.body().size(), 2 * 40U);
    EXPECT_TRUE(contains(run.errors, "epochs in too much disorder of time: 2\n"));
    EXPECT_EQ(testsupport::readStrictly(run.text()).complaints, Lines{});
}

TEST(StandardProgram, TimeOfDayThatFallsBackIsTheNextDay) {
    const StandardRun run = runStandard(logOfTimes({86399000, 0}));
    EXPECT_EQ(run.body().at(2), "> 2024 03 06 00 00  0.0000000  0  1");
    EXPECT_EQ(run.labelled("INTERVAL"), Lines{"     1.000"});
}

TEST(StandardProgram, EpochsAheadOfTheFirstDateAreLost) {
    LogBuilder log;
    addEpoch(log, hour);
    addEpoch(log, hour + 1000);
    log.rd(2024, 3, 5);
    addEpoch(log, hour + 2000);
    const std::string bytes = log.take();
    const StandardRun run = runStandard(bytes);
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(run.body().size(), 2U);
    EXPECT_TRUE(contains(run.errors, "epochs without date (--date gives that of the first): 2\n"));
    const StandardRun dated = runStandard(bytes, {"--date", "2024-03-05"});
    EXPECT_EQ(dated.exitStatus, 0);
    EXPECT_EQ(dated.body().size(), 6U);
}

TEST(StandardProgram, LogWithoutDateIsAnErrorThatTellsOfTheOption) {
    LogBuilder log;
    addEpoch(log, 86399000);
    addEpoch(log, 0);
    const std::string bytes = log.take();
    const StandardRun run = runStandard(bytes);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_TRUE(run.files.empty());
    EXPECT_TRUE(contains(run.errors, "--date YYYY-MM-DD"));
    EXPECT_EQ(runStandard(bytes, {"--date=2024-02-29"}).body(),
              (Lines{"> 2024 02 29 23 59 59.0000000  0  1", testsupport::lineOfGps7,
                     "> 2024 03 01 00 00  0.0000000  0  1", testsupport::lineOfGps7}));
}

TEST(StandardProgram, TimeBaseGivesTheTimeSystem) {
    for (const unsigned base : {1U, 2U, 3U}) {
        LogBuilder log;
        log.rd(2024, 3, 5, base);
        addEpoch(log, hour);
        EXPECT_EQ(runStandard(log.take()).labelled("TIME OF FIRST OBS"),
                  Lines{"  2024     3     5     1     0    0.0000000     GLO"});
    }
    LogBuilder unknown;
    unknown.rd(2024, 3, 5, 4);
    addEpoch(unknown, hour);
    EXPECT_EQ(runStandard(unknown.take()).labelled("TIME OF FIRST OBS"),
              Lines{"  2024     3     5     1     0    0.0000000     GPS"});
}

TEST(StandardProgram, EpochsInAnotherTimeScaleAreLost) {
    LogBuilder log;
    log.rd(2024, 3, 5, 1);
    addEpoch(log, hour);
    log.rd(2024, 3, 5, 0);
    addEpoch(log, hour + 1000);
    log.rd(2024, 3, 5, 3);
    addEpoch(log, hour + 2000);
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(run.body().size(), 4U);
    EXPECT_TRUE(contains(run.errors, "epochs in another time scale than the first: 1\n"));
}

TEST(StandardProgram, EpochThatTheLogDoesNotCloseIsTold) {
    LogBuilder log;
    log.raw(logOfTimes({hour})).time(hour + 1000);
    addRangeOfGps7(log);
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.body().size(), 2U);
    EXPECT_TRUE(contains(run.errors, "epochs that the log does not close: 1\n"));
}

TEST(StandardProgram, ClockOffsetThatHasNoPlaceIsTold) {
    for (const double offset : {9.5, -1e300}) {
        LogBuilder log;
        log.rd(2024, 3, 5).to(offset);
        addEpoch(log, hour);
        const StandardRun run = runStandard(log.take());
        EXPECT_EQ(run.body().at(0), "> 2024 03 05 01 00  0.0000000  0  1");
        EXPECT_TRUE(contains(run.errors, "clock offsets beyond 9 s: 1\n"));
    }
}

TEST(StandardProgram, DamageIsToldAndItsStatusIsTwo) {
    LogBuilder log;
    log.raw(logOfTimes({hour})).raw("what is this?\n");
    log.raw(logOfTimes({hour + 1000}));
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 2);
    EXPECT_EQ(run.body().size(), 4U);
    EXPECT_TRUE(contains(run.errors, "bytes of damage: 14\n"));
}

// ---- header ----

TEST(StandardProgram, IntervalIsTheMostFrequentStep) {
    const StandardRun run = runStandard(logOfTimes({0, 30000, 60000, 61000, 91000}));
    EXPECT_EQ(run.labelled("INTERVAL"), Lines{"    30.000"});
    EXPECT_EQ(run.files.begin()->first, "XXXX00XXX_R_20240650000_03M_30S_MO.rnx");
}

TEST(StandardProgram, LastWordOfTheLogCounts) {
    LogBuilder log;
    log.kvMarker("FIRST").uo({.leapSeconds = 17}).raw(logOfTimes({hour}));
    log.kvMarker("LAST").eu({.utc = {.leapSeconds = 18}});
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.labelled("MARKER NAME"), Lines{"LAST"});
    EXPECT_EQ(run.labelled("LEAP SECONDS"), Lines{"    18"});
}

TEST(StandardProgram, TextOfTheLogThatIsTooWideIsCutWithAWarning) {
    LogBuilder log;
    log.antennaType("TWENTY-ONE CHARACTERS").raw(logOfTimes({hour}));
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.labelled("ANT # / TYPE"), Lines{"                    TWENTY-ONE CHARACTER"});
    EXPECT_TRUE(contains(run.errors,
                         "site.kvs: the == message at byte 0 tells a text of 21 characters, cut to 20; "
                         "--antenna-type gives another\n"));
}

TEST(StandardProgram, CodesAndSlotsGoOnInFurtherLines) {
    LogBuilder log;
    log.rd(2024, 3, 5).time(hour);
    std::vector<samplelog::Satellite> list;
    std::vector<std::uint8_t> slots;
    for (std::uint8_t slot = 1; slot <= 9; ++slot) {
        list.push_back({SystemCode::glonass, slot - 3});
        slots.push_back(slot);
    }
    const std::vector<std::uint16_t> flags(9, present);
    log.sx(list).nn(slots).rx(std::vector<std::int32_t>(9, 0));
    for (const Band band : {Band::c, Band::b1, Band::b2, Band::b3}) {
        log.flags(band, flags).rangeDeltas(band, std::vector<std::int16_t>(9, 0));
    }
    const StandardRun run = runStandard(log.td().take());
    EXPECT_EQ(run.labelled("SYS / # / OBS TYPES"),
              (Lines{"R   16 C1C L1C D1C S1C C1P L1P D1P S1P C2C L2C D2C S2C C2P", "       L2P D2P S2P"}));
    EXPECT_EQ(run.labelled("GLONASS SLOT / FRQ #"),
              (Lines{"  9 R01 -2 R02 -1 R03  0 R04  1 R05  2 R06  3 R07  4 R08  5", "    R09  6"}));
}

TEST(StandardProgram, PhaseShiftsListTheSatellitesWhereTheyDiffer) {
    LogBuilder log;
    log.rd(2024, 3, 5).time(hour);
    std::vector<samplelog::Satellite> list = {{SystemCode::beidou, 3}};
    for (int number = 6; number <= 17; ++number) {
        list.push_back({SystemCode::beidou, number});
    }
    const std::vector<std::uint16_t> flags(list.size(), present);
    log.sx(list).rx(std::vector<std::int32_t>(list.size(), 0)).flags(Band::c, flags).flags(Band::b1, flags);
    log.phases(Band::b1, std::vector<std::int32_t>(list.size(), 0));
    EXPECT_EQ(runStandard(log.td().take()).labelled("SYS / PHASE SHIFT"),
              (Lines{"C L2I  0.00000  01 C03", "C L2I  0.50000  12 C06 C07 C08 C09 C10 C11 C12 C13 C14 C15",
                     "                   C16 C17", "C L8X  0.25000"}));
}

// ---- whatever stands ahead ----

TEST(StandardProgram, TwoLogsJoinedGiveTheEpochsOfBoth) {
    LogBuilder first;
    first.kvMarker("ONE").rd(2024, 3, 5);
    first.time(hour).sx({{SystemCode::gps, 3}, {SystemCode::glonass, 1}}).nn({2});
    first.flags(Band::c, {present, present}).flags(Band::b1, {present, present}).rx({1, 2});
    first.rangeDeltas(Band::b1, {3, 4}).strengths(Band::c, {100, 200}).to(0.25).td();
    LogBuilder second;
    second.rd(2024, 3, 6);
    addEpoch(second, hour);
    const auto epochsOf = [](const std::string& log) {
        const StandardRun run = runStandard(log);
        EXPECT_EQ(run.exitStatus, 0) << run.errors;
        const auto file = testsupport::readStrictly(run.text());
        EXPECT_EQ(file.complaints, Lines{});
        // Values alone: the columns differ, since the header lists the codes of both.
        std::vector<std::vector<std::string>> epochs;
        for (const auto& epoch : file.epochs) {
            auto& words = epochs.emplace_back(Lines{epoch.time});
            for (const auto& [name, values] : epoch.satellites) {
                words.push_back(name);
                for (std::size_t i = 0; i < file.codes.at(name[0]).size(); ++i) {
                    const std::string value = values.size() > 16 * i ? values.substr(16 * i, 16) : "";
                    if (value.find_first_not_of(' ') != std::string::npos) {
                        words.push_back(file.codes.at(name[0])[i] + value.substr(0, 14));
                    }
                }
            }
        }
        return epochs;
    };
    auto expected = epochsOf(first.bytes());
    std::ranges::move(epochsOf(second.bytes()), std::back_inserter(expected));
    EXPECT_EQ(epochsOf(first.bytes() + second.bytes()), expected);
    EXPECT_EQ(epochsOf(second.bytes() + first.bytes()), expected);
}

}  // namespace programTest
}  // namespace
