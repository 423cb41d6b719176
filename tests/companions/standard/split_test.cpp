// Output that is cut into whole hours or days, each with files of its own.
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "companions/standard/support/hourly_logs.h"
#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "companions/standard/support/strict_reader.h"
#include "standard/contents.h"
#include "standard/navigation_parts.h"

namespace {
namespace splitTest {

using orbconv::reading::LogTime;
using orbconv::reading::timeOfIsoText;
using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::addEpoch;
using testsupport::bodyOf;
using testsupport::hourlyLog;
using testsupport::linesOf;
using testsupport::logOfTimes;
using testsupport::present;
using testsupport::runStandard;
using testsupport::runStandardOn;
using testsupport::StandardRun;
using Lines = std::vector<std::string>;

constexpr std::uint32_t hour = 3600000;

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

Lines labelled(const std::string& text, std::string_view label) {
    Lines found;
    for (const std::string& line : linesOf(text)) {
        if (line.ends_with(label)) {
            found.push_back(line.substr(0, line.find_last_not_of(' ', 59) + 1));
        }
    }
    return found;
}

// The texts of the files of a kind, in the order of their names, which is that of their times.
Lines filesOf(const StandardRun& run, std::string_view ending) {
    Lines texts;
    for (const auto& [name, text] : run.files) {
        if (name.ends_with(ending)) {
            texts.push_back(text);
        }
    }
    return texts;
}

Lines joinedBodies(const Lines& texts) {
    Lines all;
    for (const std::string& text : texts) {
        std::ranges::move(bodyOf(text), std::back_inserter(all));
    }
    return all;
}

LogTime at(std::string_view text) {
    return timeOfIsoText(text).value();
}

// ---- hours and days ----

TEST(Split, HoursOfADayAreThoseOfTheHourlyLogs) {
    std::string day;
    Lines hours;
    Lines navigationOfHours;
    for (std::uint32_t i = 0; i < 24; ++i) {
        day += hourlyLog(i);
        const StandardRun alone = runStandard(hourlyLog(i));
        hours.push_back(alone.text());
        navigationOfHours.push_back(alone.navigationText());
    }
    const StandardRun split = runStandard(day, {"--split", "1h"});
    ASSERT_EQ(split.exitStatus, 0) << split.errors;
    ASSERT_EQ(split.files.size(), 48U);
    const Lines files = filesOf(split, "_MO.rnx");
    const Lines navigation = filesOf(split, "_MN.rnx");
    ASSERT_EQ(files.size(), 24U);
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ(bodyOf(files[i]), bodyOf(hours[i])) << i;
        EXPECT_EQ(bodyOf(navigation[i]), bodyOf(navigationOfHours[i])) << i;
        EXPECT_EQ(testsupport::readStrictly(files[i]).complaints, Lines{}) << i;
    }
    EXPECT_TRUE(split.files.contains("HOUR00XXX_R_20250051300_01H_30S_MO.rnx"));
    EXPECT_TRUE(split.files.contains("HOUR00XXX_R_20250051300_01H_MN.rnx"));
    EXPECT_TRUE(contains(split.errors, "written: 24 observation files, "));
    EXPECT_TRUE(contains(split.errors,
                         "HOUR00XXX_R_20250050000_01H_30S_MO.rnx to "
                         "HOUR00XXX_R_20250052300_01H_30S_MO.rnx\n"));
    EXPECT_TRUE(contains(split.errors, "written: 24 navigation files, "));
}

TEST(Split, BodiesJoinedAreTheWholes) {
    const std::string day = hourlyLog(2) + hourlyLog(3) + hourlyLog(5);
    const StandardRun whole = runStandard(day);
    const StandardRun split = runStandard(day, {"--split", "1h"});
    EXPECT_EQ(joinedBodies(filesOf(split, "_MO.rnx")), whole.body());
    EXPECT_EQ(joinedBodies(filesOf(split, "_MN.rnx")), bodyOf(whole.navigationText()));
    EXPECT_EQ(split.files.size(), 6U);  // none of the hour that has no epoch
}

TEST(Split, DayEndsAtMidnight) {
    const StandardRun run = runStandard(logOfTimes({86398000, 86399000, 0, 1000}), {"--split", "1d"});
    ASSERT_EQ(run.files.size(), 2U);
    EXPECT_EQ(run.files.begin()->first, "XXXX00XXX_R_20240650000_01D_01S_MO.rnx");
    EXPECT_EQ(run.files.rbegin()->first, "XXXX00XXX_R_20240660000_01D_01S_MO.rnx");
    EXPECT_EQ(bodyOf(run.files.begin()->second).at(2), "> 2024 03 05 23 59 59.0000000  0  1");
    EXPECT_EQ(bodyOf(run.files.rbegin()->second).at(0), "> 2024 03 06 00 00  0.0000000  0  1");
    EXPECT_TRUE(contains(run.errors, "  epochs: 4, "));
}

TEST(Split, LogsThatOverlapAreCutToo) {
    const StandardRun run =
        runStandardOn({{"b.kvs", hourlyLog(3)}, {"a.kvs", hourlyLog(2) + hourlyLog(3)}}, {"--split", "1h"});
    const Lines files = filesOf(run, "_MO.rnx");
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(bodyOf(files[1]), runStandard(hourlyLog(3)).body());
    EXPECT_TRUE(contains(run.errors, "epochs of a time that came already: 120\n"));
}

// ---- headers ----

TEST(Split, HeaderIsThatOfTheFileAndItsTypesAreThoseOfAll) {
    LogBuilder log;
    log.rd(2024, 3, 5);
    for (const std::uint32_t second : {0U, 10U, 20U}) {
        log.time(hour + 1000 * second);
        log.sx({{SystemCode::glonass, 5}, {SystemCode::gps, 7}}).nn({3});
        log.flags(Band::c, {present, present}).rx({0, 0}).td();
    }
    for (const std::uint32_t second : {0U, 30U, 60U}) {
        addEpoch(log, 2 * hour + 1000 * second);
    }
    const StandardRun run = runStandard(log.take(), {"--split", "1h"});
    const Lines files = filesOf(run, "_MO.rnx");
    ASSERT_EQ(files.size(), 2U);
    for (const std::string& text : files) {
        EXPECT_EQ(labelled(text, "SYS / # / OBS TYPES"),
                  (Lines{"G    4 C1C L1C D1C S1C", "R    4 C1C L1C D1C S1C"}));
        EXPECT_EQ(labelled(text, "SYS / PHASE SHIFT"), (Lines{"G L1C  0.00000", "R L1C  0.00000"}));
        EXPECT_EQ(testsupport::readStrictly(text).complaints, Lines{});
    }
    EXPECT_EQ(labelled(files[0], "INTERVAL"), Lines{"    10.000"});
    EXPECT_EQ(labelled(files[1], "INTERVAL"), Lines{"    30.000"});
    EXPECT_EQ(labelled(files[0], "TIME OF FIRST OBS"),
              Lines{"  2024     3     5     1     0    0.0000000     GPS"});
    EXPECT_EQ(labelled(files[0], "TIME OF LAST OBS"),
              Lines{"  2024     3     5     1     0   20.0000000     GPS"});
    EXPECT_EQ(labelled(files[1], "TIME OF FIRST OBS"),
              Lines{"  2024     3     5     2     0    0.0000000     GPS"});
    EXPECT_EQ(labelled(files[1], "TIME OF LAST OBS"),
              Lines{"  2024     3     5     2     1    0.0000000     GPS"});
    EXPECT_EQ(labelled(files[0], "GLONASS SLOT / FRQ #"), Lines{"  1 R03  5"});
    EXPECT_EQ(labelled(files[1], "GLONASS SLOT / FRQ #"), Lines{"  0"});
    // Of four steps of 10 and 30 s and one of an hour, the shortest of the most frequent ones.
    EXPECT_TRUE(run.files.contains("XXXX00XXX_R_20240650200_01H_10S_MO.rnx"));
}

TEST(Split, NavigationHeaderHasTheLastTermsUntilTheFilesEnd) {
    LogBuilder log;
    log.raw(hourlyLog(2)).uo({.a0 = 0x1p-30, .tot = 345600, .week = 300, .leapSeconds = 18});
    log.raw(hourlyLog(3)).uo({.a0 = 0x1p-31, .tot = 345600, .week = 300, .leapSeconds = 18});
    log.raw(hourlyLog(4)).uo({.a0 = 0x1p-30, .tot = 345600, .week = 300, .leapSeconds = 18});
    const StandardRun run = runStandard(log.take(), {"--split", "1h"});
    const Lines files = filesOf(run, "_MN.rnx");
    ASSERT_EQ(files.size(), 3U);
    // 2^-30 and 2^-31. In the last two hours the first set has been heard again, behind the other.
    const std::string first = "GPUT  9.3132257462E-10 0.000000000E+00 345600 2348        2";
    for (const std::string& text : files) {
        EXPECT_EQ(labelled(text, "TIME SYSTEM CORR"), Lines{first});
    }
    LogBuilder other;
    other.raw(hourlyLog(2)).uo({.a0 = 0x1p-30, .tot = 345600, .week = 300, .leapSeconds = 18});
    other.raw(hourlyLog(3)).uo({.a0 = 0x1p-31, .tot = 345600, .week = 300, .leapSeconds = 18});
    const Lines two = filesOf(runStandard(other.take(), {"--split", "1h"}), "_MN.rnx");
    ASSERT_EQ(two.size(), 2U);
    EXPECT_EQ(labelled(two[0], "TIME SYSTEM CORR"), Lines{first});
    EXPECT_EQ(labelled(two[1], "TIME SYSTEM CORR"),
              Lines{"GPUT  4.6566128731E-10 0.000000000E+00 345600 2348        2"});
}

// ---- which file a record is of ----

TEST(Split, RecordsWithoutAnHourOfTheirOwnGoAheadOrIntoTheFirst) {
    LogBuilder log;
    log.rd(2025, 1, 5);
    const auto addRecord = [&](std::int32_t toc) {
        auto kepler = testsupport::keplerOfWeek(300);
        kepler.toc = toc;
        kepler.toe = toc;
        log.ge123(kepler);
    };
    addEpoch(log, 2 * hour);
    for (const std::int32_t hours : {0, 2, 3, 4, 6}) {
        addRecord(3600 * hours);
    }
    addEpoch(log, 4 * hour);
    const StandardRun run = runStandard(log.take(), {"--split", "1h"});
    const Lines files = filesOf(run, "_MN.rnx");
    ASSERT_EQ(files.size(), 2U);
    const auto epochsOf = [](const std::string& text) {
        Lines epochs;
        for (const std::string& line : bodyOf(text)) {
            if (line.starts_with('G')) {
                epochs.push_back(line.substr(15, 2));
            }
        }
        return epochs;
    };
    EXPECT_EQ(epochsOf(files[0]), (Lines{"00", "02", "03"}));
    EXPECT_EQ(epochsOf(files[1]), (Lines{"04", "06"}));
}

TEST(Split, HourWithoutARecordHasNoNavigationFile) {
    const StandardRun run =
        runStandard(hourlyLog(2) + logOfTimes({}) + LogBuilder().rd(2025, 1, 5).time(4 * hour).take() +
                        LogBuilder()
                            .rd(2025, 1, 5)
                            .time(4 * hour)
                            .sx({{SystemCode::gps, 7}})
                            .flags(Band::c, {present})
                            .rx({0})
                            .td()
                            .take(),
                    {"--split", "1h"});
    EXPECT_EQ(filesOf(run, "_MO.rnx").size(), 2U);
    EXPECT_EQ(filesOf(run, "_MN.rnx").size(), 1U);
    EXPECT_TRUE(run.files.contains("HOUR00XXX_R_20250050200_01H_MN.rnx"));
}

TEST(Split, TermsOfVersion401StandInTheFileOfTheirTime) {
    LogBuilder log;
    log.raw(hourlyLog(2)).io(testsupport::ionoTerms());
    log.raw(hourlyLog(3)).uo({.a0 = 0x1p-30, .tot = 345600, .week = 300, .leapSeconds = 18});
    const StandardRun run = runStandard(log.take(), {"--split", "1h", "--rinex", "4.01"});
    const Lines files = filesOf(run, "_MN.rnx");
    ASSERT_EQ(files.size(), 2U);
    EXPECT_TRUE(contains(files[0], "\n> ION G07 LNAV\n"));
    EXPECT_FALSE(contains(files[0], "> STO"));
    EXPECT_TRUE(contains(files[1], "\n> STO G07 LNAV\n"));
    EXPECT_FALSE(contains(files[1], "> ION"));
}

// ---- all or nothing ----

TEST(Split, ExistingFileOfAnyPartIsRefusedAheadOfTheFirstByte) {
    const testsupport::OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", hourlyLog(2) + hourlyLog(3));
    for (const char* const existing :
         {"HOUR00XXX_R_20250050300_01H_30S_MO.rnx", "HOUR00XXX_R_20250050300_01H_MN.rnx"}) {
        testsupport::writeBytes(folder.path() / existing, "mine\n");
        std::string errors;
        EXPECT_EQ(testsupport::runWithArguments({"--split", "1h", folder.file("site.kvs")}, errors), 1);
        EXPECT_TRUE(contains(errors, std::string(existing) + " exists; --force overwrites it"));
        EXPECT_EQ(folder.names(), (Lines{existing, "site.kvs"}));
        std::filesystem::remove(folder.path() / existing);
    }
}

TEST(Split, FailureInALaterPartTakesAllAway) {
    const testsupport::OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", hourlyLog(2) + hourlyLog(3));
    // Where the last file should be written there is a folder.
    const std::string blocked = "HOUR00XXX_R_20250050300_01H_30S_MO.rnx.part";
    std::filesystem::create_directories(folder.path() / blocked / "x");
    std::string errors;
    EXPECT_EQ(testsupport::runWithArguments({"--split", "1h", folder.file("site.kvs")}, errors), 1);
    EXPECT_EQ(folder.names(), (Lines{blocked, "site.kvs"}));
}

// ---- pieces ----

orbconv::standard::EpochObservations epochAt(LogTime time) {
    orbconv::standard::EpochObservations epoch;
    epoch.time = time;
    return epoch;
}

TEST(SplitContents, PartsBeginOnTheHourAndTheDay) {
    using orbconv::standard::partStartOf;
    using orbconv::standard::Split;
    EXPECT_EQ(partStartOf(at("2024-03-05T13:59:59.999"), Split::hour), at("2024-03-05T13:00"));
    EXPECT_EQ(partStartOf(at("2024-03-05T14:00"), Split::hour), at("2024-03-05T14:00"));
    EXPECT_EQ(partStartOf(at("2024-03-05T23:59:59.999"), Split::day), at("2024-03-05"));
    EXPECT_EQ(partStartOf(at("1980-01-06T00:00"), Split::day), at("1980-01-06"));
}

TEST(SplitContents, StepsAreOfOnePartAndOfAll) {
    orbconv::standard::Contents contents{.split = orbconv::standard::Split::hour, .whole = {}, .parts = {}};
    for (const char* const time : {"2024-03-05T13:59:40", "2024-03-05T13:59:50", "2024-03-05T14:00:20"}) {
        contents.take(epochAt(at(time)));
    }
    ASSERT_EQ(contents.parts.size(), 2U);
    EXPECT_EQ(contents.parts[0].content.steps.mostFrequent(), 10000);
    EXPECT_EQ(contents.parts[0].content.epochs, 2U);
    EXPECT_EQ(contents.parts[1].content.steps.mostFrequent(), std::nullopt);
    EXPECT_EQ(contents.whole.steps.gaps(), 1U);
    EXPECT_EQ(contents.whole.first, at("2024-03-05T13:59:40"));
    EXPECT_EQ(contents.whole.last, at("2024-03-05T14:00:20"));
}

TEST(SplitContents, ThereAreNoMoreThanTenThousandParts) {
    orbconv::standard::Contents contents{.split = orbconv::standard::Split::hour, .whole = {}, .parts = {}};
    LogTime time = at("2024-03-05");
    for (int i = 0; i < 10'000; ++i, time += std::chrono::hours{1}) {
        contents.take(epochAt(time));
    }
    contents.take(epochAt(time - std::chrono::minutes{1}));
    try {
        contents.take(epochAt(time));
        FAIL() << "a part too many";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "--split: more than 10000 files; --start and --end make them fewer");
    }
}

}  // namespace splitTest
}  // namespace
