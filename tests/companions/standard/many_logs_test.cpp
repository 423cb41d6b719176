// Several logs in one call: joined in order of time, whatever the order of the arguments.
#include <gtest/gtest.h>

#include <algorithm>

#include "companions/standard/support/hourly_logs.h"
#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "companions/standard/support/strict_reader.h"

namespace {
namespace manyLogsTest {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::addEpoch;
using testsupport::bodyOf;
using testsupport::hourlyLog;
using testsupport::linesOf;
using testsupport::NamedLog;
using testsupport::OwnFolder;
using testsupport::present;
using testsupport::runStandard;
using testsupport::runStandardOn;
using testsupport::StandardRun;
using Lines = std::vector<std::string>;

constexpr std::uint32_t hour = 3600000;

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

// Without the line that tells the time of the run.
Lines withoutRunTime(const std::string& text) {
    Lines lines = linesOf(text);
    std::erase_if(lines, [](const std::string& line) { return line.ends_with("PGM / RUN BY / DATE"); });
    return lines;
}

// A log of one epoch of a GPS satellite with 0.075 s of flight.
std::string logOf(std::uint32_t timeOfDayMs, std::uint8_t satellite) {
    LogBuilder log;
    log.rd(2024, 3, 5).time(timeOfDayMs);
    log.sx({{SystemCode::gps, satellite}}).flags(Band::c, {present}).rx({0}).td();
    return log.take();
}
std::string lineOf(int satellite) {
    return "G" + std::string(satellite < 10 ? "0" : "") + std::to_string(satellite) + "  22484434.350";
}

// ---- order ----

TEST(ManyLogs, TwentyFourHoursGiveTheDay) {
    std::vector<NamedLog> hours;
    std::string day;
    for (std::uint32_t i = 0; i < 24; ++i) {
        hours.push_back({"hour" + std::to_string(i) + ".kvs", hourlyLog(i)});
        day += hours.back().bytes;
    }
    std::rotate(hours.begin(), hours.begin() + 7, hours.end());
    std::swap(hours[3], hours[20]);
    const StandardRun joined = runStandardOn(hours);
    const StandardRun whole = runStandard(day);
    ASSERT_EQ(joined.exitStatus, 0) << joined.errors;
    EXPECT_EQ(whole.body().size(), 24 * testsupport::linesOfHour);
    EXPECT_EQ(withoutRunTime(joined.text()), withoutRunTime(whole.text()));
    EXPECT_EQ(withoutRunTime(joined.navigationText()), withoutRunTime(whole.navigationText()));
    EXPECT_EQ(joined.files.begin()->first, whole.files.begin()->first);
}

TEST(ManyLogs, OrderOfTheArgumentsSaysNothing) {
    LogBuilder first;
    first.kvMarker("OLD").raw(logOf(hour, 1));
    LogBuilder second;
    second.kvMarker("NEW").raw(logOf(2 * hour, 2));
    std::vector<NamedLog> logs = {
        {"b.kvs", first.take()}, {"c.kvs", second.take()}, {"a.kvs", logOf(3 * hour, 3)}};
    std::ranges::sort(logs, {}, &NamedLog::name);
    do {
        const StandardRun run = runStandardOn(logs);
        EXPECT_EQ(run.labelled("MARKER NAME"), Lines{"NEW"});  // the last that tells one
        EXPECT_EQ(run.body(), (Lines{"> 2024 03 05 01 00  0.0000000  0  1", lineOf(1),
                                     "> 2024 03 05 02 00  0.0000000  0  1", lineOf(2),
                                     "> 2024 03 05 03 00  0.0000000  0  1", lineOf(3)}));
    } while (std::ranges::next_permutation(logs, {}, &NamedLog::name).found);
}

TEST(ManyLogs, OverlapsCountOnceAndAreTold) {
    LogBuilder early;
    early.raw(logOf(hour, 1)).raw(logOf(hour + 2000, 1)).raw(logOf(hour + 4000, 1));
    LogBuilder late;
    late.raw(logOf(hour + 2000, 2))
        .raw(logOf(hour + 3000, 2))
        .raw(logOf(hour + 4000, 2))
        .raw(logOf(hour + 5000, 2));
    const StandardRun run = runStandardOn({{"late.kvs", late.take()}, {"early.kvs", early.take()}});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.body(),
              (Lines{"> 2024 03 05 01 00  0.0000000  0  1", lineOf(1), "> 2024 03 05 01 00  2.0000000  0  1",
                     lineOf(1), "> 2024 03 05 01 00  3.0000000  0  1", lineOf(2),
                     "> 2024 03 05 01 00  4.0000000  0  1", lineOf(1), "> 2024 03 05 01 00  5.0000000  0  1",
                     lineOf(2)}));
    EXPECT_EQ(run.labelled("INTERVAL"), Lines{"     1.000"});  // of the epochs that are written
    EXPECT_TRUE(contains(run.errors, "  epochs: 5, "));
    EXPECT_TRUE(contains(run.errors, "    epochs of a time that came already: 2\n"));
}

TEST(ManyLogs, WhatOnlyARepeatedEpochHoldsIsNotInTheHeader) {
    LogBuilder early;
    early.raw(logOf(hour, 1)).raw(logOf(hour + 2000, 1));
    LogBuilder late;
    late.rd(2024, 3, 5).time(hour + 2000);
    late.sx({{SystemCode::glonass, -3}}).nn({8}).flags(Band::c, {present}).rx({0}).td();
    const StandardRun run = runStandardOn({{"early.kvs", early.take()}, {"late.kvs", late.take()}});
    EXPECT_EQ(run.labelled("SYS / # / OBS TYPES"), Lines{"G    4 C1C L1C D1C S1C"});
    EXPECT_EQ(run.labelled("GLONASS SLOT / FRQ #"), Lines{});
    EXPECT_EQ(run.labelled("RINEX VERSION / TYPE"), Lines{"     3.05           OBSERVATION DATA    G"});
}

TEST(ManyLogs, OfLogsThatBeginTogetherTheNameDecides) {
    for (const bool isTurned : {false, true}) {
        std::vector<NamedLog> logs = {{"a.kvs", logOf(hour, 1)}, {"b.kvs", logOf(hour, 2)}};
        if (isTurned) {
            std::ranges::reverse(logs);
        }
        EXPECT_EQ(runStandardOn(logs).body(), (Lines{"> 2024 03 05 01 00  0.0000000  0  1", lineOf(1)}));
    }
}

// Its second part begins behind the other log, and counts ahead of it nevertheless.
TEST(ManyLogs, LogThatBeginsFirstCountsWithAllItsParts) {
    constexpr std::uint32_t minute = 60000;
    const std::string first = logOf(hour, 1) + logOf(hour + 10 * minute, 1) + logOf(hour + 8 * minute, 1);
    const std::string second = logOf(hour + 5 * minute, 2) + logOf(hour + 8 * minute, 2);
    const StandardRun run = runStandardOn({{"a.kvs", first}, {"b.kvs", second}});
    EXPECT_EQ(run.body(),
              (Lines{"> 2024 03 05 01 00  0.0000000  0  1", lineOf(1), "> 2024 03 05 01 05  0.0000000  0  1",
                     lineOf(2), "> 2024 03 05 01 08  0.0000000  0  1", lineOf(1),
                     "> 2024 03 05 01 10  0.0000000  0  1", lineOf(1)}));
}

TEST(ManyLogs, ThinningActsOnAll) {
    LogBuilder early;
    LogBuilder late;
    for (std::uint32_t second = 0; second < 60; ++second) {
        early.raw(logOf(hour + 1000 * second, 1));
        late.raw(logOf(hour + 60000 + 1000 * second, 2));
    }
    const StandardRun run =
        runStandardOn({{"late.kvs", late.take()}, {"early.kvs", early.take()}}, {"--interval", "30"});
    EXPECT_EQ(run.body(),
              (Lines{"> 2024 03 05 01 00  0.0000000  0  1", lineOf(1), "> 2024 03 05 01 00 30.0000000  0  1",
                     lineOf(1), "> 2024 03 05 01 01  0.0000000  0  1", lineOf(2),
                     "> 2024 03 05 01 01 30.0000000  0  1", lineOf(2)}));
    EXPECT_TRUE(contains(run.errors, "epochs outside the window or the interval: 116\n"));
}

// ---- limits ----

TEST(ManyLogs, FortyCanOverlapAndNoMore) {
    std::vector<NamedLog> logs;
    for (int i = 0; i < 40; ++i) {
        logs.push_back({"log" + std::to_string(100 + i) + ".kvs", logOf(hour, 1) + logOf(2 * hour, 1)});
    }
    // One that has ended by then takes no place.
    logs.push_back({"earlier.kvs", logOf(1000, 9)});
    const StandardRun run = runStandardOn(logs);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.body().size(), 6U);
    EXPECT_TRUE(contains(run.errors, "epochs of a time that came already: 78\n"));
    logs.push_back({"further.kvs", logOf(hour + 1000, 1)});
    const StandardRun tooMany = runStandardOn(logs);
    EXPECT_EQ(tooMany.exitStatus, 1);
    EXPECT_TRUE(tooMany.files.empty());
    EXPECT_TRUE(
        contains(tooMany.errors, "at 2024-03-05T01:00:01.000 more than 40 logs, or parts of them, overlap"));
}

TEST(ManyLogs, ManyLogsBehindEachOtherAreFewAtATime) {
    std::vector<NamedLog> logs;
    for (std::uint32_t i = 0; i < 300; ++i) {
        logs.push_back({std::to_string(1000 - i) + ".kvs", logOf(1000 * i, 1)});
    }
    const StandardRun run = runStandardOn(logs);
    EXPECT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_EQ(run.body().size(), 600U);
}

// ---- what the logs are ----

TEST(ManyLogs, LogThatAddsNothingAndAnotherReceiverAreDoubts) {
    LogBuilder first;
    first.pmParameters({{"rcv/id=", "R1"}}).raw(logOf(hour, 1));
    LogBuilder second;
    second.pmParameters({{"rcv/id=", "R2"}}).raw(logOf(2 * hour, 1));
    LogBuilder third;
    third.pmParameters({{"rcv/id=", "R2"}}).raw(logOf(3 * hour, 1));
    const StandardRun run = runStandardOn(
        {{"1.kvs", first.take()}, {"2.kvs", second.take()}, {"3.kvs", third.take()}, {"4.kvs", ""}});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_TRUE(contains(run.errors, "2.kvs: its receiver is R2, that of "));
    EXPECT_TRUE(contains(run.errors, "1.kvs is R1\n"));
    EXPECT_FALSE(contains(run.errors, "3.kvs: its receiver"));
    EXPECT_TRUE(contains(run.errors, "4.kvs: it holds no epoch\n"));
    EXPECT_EQ(run.labelled("REC # / TYPE / VERS"), Lines{"R2"});
}

TEST(ManyLogs, SingleLogRaisesNoDoubt) {
    LogBuilder log;
    log.pmParameters({{"rcv/id=", "R1"}}).raw(logOf(hour, 1));
    EXPECT_FALSE(contains(runStandard(log.take()).errors, "warning"));
}

TEST(ManyLogs, LogThatCannotBeReadIsAnErrorAndNothingIsWritten) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "a.kvs", logOf(hour, 1));
    std::string errors;
    EXPECT_EQ(testsupport::runWithArguments({folder.file("a.kvs"), folder.file("b.kvs")}, errors), 1);
    EXPECT_TRUE(contains(errors, "b.kvs: "));
    EXPECT_EQ(folder.names(), Lines{"a.kvs"});
}

TEST(ManyLogs, LogsWithoutAnEpochAreAnErrorThatNamesTheFirst) {
    const StandardRun run = runStandardOn({{"b.kvs", ""}, {"a.kvs", ""}, {"c.kvs", ""}});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_TRUE(contains(run.errors, "a.kvs and 2 more: no message of a receiver in it\n"));
}

// They say nothing of the order that their names have.
TEST(ManyLogs, LogsWithoutAnEpochStandByTheirDates) {
    const auto logOfDay = [](std::uint8_t day, std::uint32_t tot) {
        LogBuilder log;
        auto kepler = testsupport::keplerOfWeek(300);
        kepler.tot = tot;
        return log.rd(2025, 1, day).ge123(kepler).take();
    };
    const StandardRun run = runStandardOn({{"a.kvs", logOfDay(6, 7030)}, {"b.kvs", logOfDay(5, 7000)}});
    ASSERT_EQ(run.files.size(), 1U);
    EXPECT_EQ(run.files.begin()->first, "XXXX00XXX_R_20250050000_00U_MN.rnx");
    EXPECT_TRUE(contains(run.files.begin()->second, "7.000000000000E+03"));  // sent first
    EXPECT_FALSE(contains(run.files.begin()->second, "7.030000000000E+03"));
}

TEST(ManyLogs, DateIsThatOfEachLogsFirstEpoch) {
    LogBuilder early;
    addEpoch(early, hour);
    LogBuilder late;
    addEpoch(late, 2 * hour);
    const StandardRun run =
        runStandardOn({{"late.kvs", late.take()}, {"early.kvs", early.take()}}, {"--date", "2024-02-29"});
    EXPECT_EQ(run.body(), (Lines{"> 2024 02 29 01 00  0.0000000  0  1", testsupport::lineOfGps7,
                                 "> 2024 02 29 02 00  0.0000000  0  1", testsupport::lineOfGps7}));
}

TEST(ManyLogs, OpenEpochsOfEachAreTold) {
    LogBuilder first;
    first.raw(logOf(hour, 1)).sx({{SystemCode::gps, 1}});
    LogBuilder second;
    second.raw(logOf(2 * hour, 1)).sx({{SystemCode::gps, 1}});
    const StandardRun run = runStandardOn({{"a.kvs", first.take()}, {"b.kvs", second.take()}});
    EXPECT_TRUE(contains(run.errors, "epochs that the log does not close: 2\n"));
    EXPECT_EQ(run.body().size(), 4U);
}

TEST(ManyLogs, FilesStandBesideTheEarliestLog) {
    const OwnFolder folder;
    std::filesystem::create_directory(folder.path() / "early");
    std::filesystem::create_directory(folder.path() / "late");
    testsupport::writeBytes(folder.path() / "early" / "x.kvs", logOf(hour, 1));
    testsupport::writeBytes(folder.path() / "late" / "a.kvs", logOf(2 * hour, 1));
    std::string errors;
    EXPECT_EQ(testsupport::runWithArguments({"-q", (folder.path() / "late" / "a.kvs").string(),
                                             (folder.path() / "early" / "x.kvs").string()},
                                            errors),
              0);
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "early" / "XXXX00XXX_R_20240650100_02H_01H_MO.rnx"));
}

}  // namespace manyLogsTest
}  // namespace
