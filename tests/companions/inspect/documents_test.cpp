// The text screen and the JSON document, and the bar on the way to them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "companions/support/inspected.h"
#include "inspect/json_document.h"
#include "inspect/progress.h"
#include "inspect/text_screen.h"

namespace orbconv::inspect {
namespace {

using nlohmann::json;
using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testing::HasSubstr;
using testing::Not;
using testsupport::cleanLog;
using testsupport::inspected;
using testsupport::putCleanEpoch;

json documentOf(const LogSummary& log) {
    std::ostringstream out;
    writeJson(out, std::span(&log, 1));
    return json::parse(out.str())["logs"][0];
}

std::string screenOf(const LogSummary& log) {
    std::ostringstream out;
    writeScreen(out, log);
    return out.str();
}

// Damage, a gap, a fraction, GLONASS without a slot, an unknown id.
LogSummary fullSummary() {
    LogBuilder log = cleanLog(3);
    log.raw(std::string(30, '\0'));
    putCleanEpoch(log, testsupport::cleanStart + 5500);
    log.message("zz", "body").io({.alpha0 = 1.0F}).ge123({.sv = 9, .week = 265, .toe = 122'400});
    log.time(testsupport::cleanStart + 6500)
        .rd(2024, 5, 6)
        .sx({{SystemCode::glonass, -4}, {SystemCode::qzss, 2}, {8, 8}})
        .nn({255});
    log.flags(Band::c, {0x40, 0x40}).to(0).td();
    LogSummary summary = inspected(log);
    summary.file = "folder/site.kvs";
    summary.notes.emplace_back("the file grew");
    return summary;
}

TEST(JsonTest, Document_HasTheNamesOfTheLayout) {
    const LogSummary summary = fullSummary();
    const json log = documentOf(summary);
    EXPECT_EQ(log["file"], "folder/site.kvs");
    EXPECT_EQ(log["bytes"], summary.bytes);
    EXPECT_EQ(log["messages"], summary.messages);
    EXPECT_EQ(log["messagesById"]["TD"], 5);
    EXPECT_EQ(log["messagesById"]["zz"], 1);
    EXPECT_EQ(log["bytesById"]["zz"], 11);
    EXPECT_EQ(log["unknownIds"], json::array({"zz"}));
    EXPECT_EQ(log["epochs"], 5);
    EXPECT_EQ(log["first"], "2024-05-06T10:00:00.000");
    EXPECT_EQ(log["last"], "2024-05-06T10:00:06.500");
    EXPECT_EQ(log["timeScale"], "GPS");
    EXPECT_EQ(log["interval"], 1.0);
    EXPECT_EQ(log["gaps"],
              json::parse(R"([{"from": "2024-05-06T10:00:02.000", "to": "2024-05-06T10:00:05.500"}])"));
    EXPECT_EQ(log["gapCount"], 1);
    EXPECT_EQ(log["missingEpochs"], 3);  // 3.5 s are nearest to 4 intervals
    EXPECT_EQ(log["damage"], json::array({{{"offset", summary.damage[0].offset}, {"bytes", 30}}}));
    EXPECT_EQ(log["damageBytes"], 30);
    EXPECT_EQ(log["satellites"], json::parse(R"({"G": 2, "R": 1, "J": 1})"));
    EXPECT_EQ(log["satelliteNames"]["R"], json::array({"R(-4)"}));
    EXPECT_EQ(log["unknownSystems"], 1);
    EXPECT_EQ(log["identity"]["marker"], "SITE");
    EXPECT_EQ(log["identity"]["position"], json::array({3'000'000.0, 1.0, 2.0}));
    EXPECT_EQ(log["signals"][0]["system"], "G");
    EXPECT_EQ(log["signals"][0]["code"], "1C");
    EXPECT_EQ(log["signals"][0]["band"], "c");
    EXPECT_EQ(log["signals"][0]["epochs"], 4);
    EXPECT_EQ(log["signals"][0]["epochShare"], 0.8);
    EXPECT_EQ(log["signals"][0]["strength"], json::parse(R"({"median": 42.5, "min": 40.0, "max": 45.0})"));
    EXPECT_EQ(log["signals"][1]["strength"], json());
    EXPECT_EQ(log["signals"][2]["code"], json());
    EXPECT_EQ(log["navigation"][0],
              json::parse(R"({"system": "G", "kind": "LNAV", "id": "GE", "messages": 1, "satellites": 1})"));
    EXPECT_EQ(log["navigation"][1]["satellites"], json());
    EXPECT_EQ(log["notes"], json::array({"the file grew"}));
    bool found = false;
    for (const json& finding : log["findings"]) {
        if (finding["code"] == "O8") {
            found = true;
            EXPECT_EQ(finding["count"], 1);
            EXPECT_EQ(finding["example"], "R(-4) at 2024-05-06T10:00:06.500");
            EXPECT_EQ(finding["everySuchLog"], false);
        }
    }
    EXPECT_TRUE(found);
}

TEST(JsonTest, EmptyLog_HasNullsAndEmptyLists) {
    const json log = documentOf(LogSummary{});
    EXPECT_EQ(log["first"], json());
    EXPECT_EQ(log["interval"], json());
    EXPECT_EQ(log["timeScale"], json());
    EXPECT_EQ(log["gaps"], json::array());
    EXPECT_EQ(log["satellites"], json::object());
    EXPECT_EQ(log["identity"]["marker"], json());
    EXPECT_EQ(log["identity"]["position"], json());
}

TEST(JsonTest, BytesThatAreNoUtf8_DoNotBreakTheDocument) {
    LogSummary summary;
    summary.file = "caf\xE9.kvs";
    EXPECT_EQ(documentOf(summary)["file"], "caf\xEF\xBF\xBD.kvs");
}

TEST(JsonTest, NoLogs) {
    std::ostringstream out;
    writeJson(out, {});
    EXPECT_EQ(json::parse(out.str()), json::parse(R"({"logs": []})"));
}

TEST(ScreenTest, TellsAllAndKeepsTo80Columns) {
    const std::string screen = screenOf(fullSummary());
    std::istringstream lines(screen);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80) << line;
    }
    EXPECT_THAT(screen, HasSubstr("folder/site.kvs\nSize        "));
    EXPECT_THAT(screen, HasSubstr("Time        2024-05-06T10:00:00.000 to 2024-05-06T10:00:06.500 (GPS)\n"));
    EXPECT_THAT(screen, HasSubstr("Epochs      5 epochs, every 1.000 s, 3 missing\n"));
    EXPECT_THAT(screen,
                HasSubstr("Gaps        1\n"
                          "            2024-05-06T10:00:02.000 to 2024-05-06T10:00:05.500, 3.500 s\n"));
    EXPECT_THAT(screen, HasSubstr("Marker      SITE\n"));
    EXPECT_THAT(screen, HasSubstr("Position    3000000.0000 1.0000 2.0000 m\n"));
    EXPECT_THAT(screen, HasSubstr("  GPS         2  G05 G07\n"));
    EXPECT_THAT(screen, HasSubstr("  1 entry of unknown systems\n"));
    EXPECT_THAT(screen,
                HasSubstr("  GPS 1C                     2   80.0 %           42.50   40.00 to 45.00\n"));
    EXPECT_THAT(screen, HasSubstr("  GPS LNAV                       1           1\n"));
    EXPECT_THAT(screen, HasSubstr("  zz         1            11  unknown\n"));
    EXPECT_THAT(screen, HasSubstr("Damage      1 place, 30 bytes\n"));
    EXPECT_THAT(screen, HasSubstr("  O8   GLONASS satellites without a slot have other names\n"
                                  "       1 line; R(-4) at 2024-05-06T10:00:06.500\n"));
    EXPECT_THAT(screen, HasSubstr("\nNote: the file grew\n"));
}

TEST(ScreenTest, CleanLog) {
    const std::string screen = screenOf(inspected(cleanLog()));
    EXPECT_THAT(screen, HasSubstr("Gaps        none\n"));
    EXPECT_THAT(screen, HasSubstr("Damage      none\n"));
    EXPECT_THAT(screen, HasSubstr("  also      O20 N17 N23\n"));
}

TEST(ScreenTest, EmptySummary) {
    const std::string screen = screenOf(LogSummary{});
    EXPECT_THAT(screen, HasSubstr("Time        none\n"));
    EXPECT_THAT(screen, HasSubstr("Epochs      0 epochs\n"));
    EXPECT_THAT(screen, HasSubstr("Position    -\n"));
    EXPECT_THAT(screen, HasSubstr("Satellites\n  none\n"));
    EXPECT_THAT(screen, HasSubstr("satellites\n  none\n"));
    EXPECT_THAT(screen, HasSubstr("  nothing\n"));
    EXPECT_THAT(screen, Not(HasSubstr("Signals")));
}

TEST(ScreenTest, OnlyTheFirstTenOfGapsAndDamage) {
    LogBuilder log;
    for (std::uint32_t i = 0; i < 12; ++i) {
        log.time(i * 10'000).td().time(i * 10'000 + 1000).td().time(i * 10'000 + 2000).td();
        log.raw(std::string(20, '\0'));
    }
    const std::string screen = screenOf(inspected(log));
    EXPECT_THAT(screen, HasSubstr("Time        day 1 00:00:00.000 to day 1 00:01:52.000 (no date)\n"));
    EXPECT_THAT(screen, HasSubstr("Gaps        11\n"));
    EXPECT_THAT(screen, HasSubstr("            and 1 more\n"));
    EXPECT_THAT(screen, HasSubstr("Damage      12 places, 240 bytes\n"));
    EXPECT_THAT(screen, HasSubstr("            and 2 more\n"));
}

TEST(ScreenTest, StepsBackAndEpochsWithoutTime) {
    LogBuilder log;
    log.td().rd(2024, 5, 6).time(5000).td().rd(2024, 5, 6).time(1000).td();
    const std::string screen = screenOf(inspected(log));
    EXPECT_THAT(screen, HasSubstr("Epochs      3 epochs, 1 without a time\n"));
    EXPECT_THAT(screen, HasSubstr("            the time goes back 1 time\n"));
}

TEST(ScreenTest, WhatMovesTheCursor_IsShownAsAQuestionMark) {
    LogSummary summary;
    summary.file = "a\x1B[2Jb\x7F.kvs";
    EXPECT_EQ(screenOf(summary).substr(0, 11), "a?[2Jb?.kvs");
}

TEST(ScreenTest, ManySatellites_GoOnInTheNextLine) {
    LogBuilder log;
    std::vector<samplelog::Satellite> list;
    for (int number = 1; number <= 20; ++number) {
        list.push_back({SystemCode::gps, number});
    }
    log.sx(list).td();
    EXPECT_THAT(screenOf(inspected(log)),
                HasSubstr("  GPS        20  G01 G02 G03 G04 G05 G06 G07 G08 G09 G10 G11 G12 G13 G14 G15 G16\n"
                          "            G17 G18 G19 G20\n"));
}

TEST(ProgressTest, NothingInTheFirstSecond) {
    std::ostringstream out;
    const auto start = ProgressBar::Clock::now();
    ProgressBar bar(out, "site.kvs", 1000, start);
    bar.show(100, start + std::chrono::milliseconds{999});
    bar.clear();
    EXPECT_EQ(out.str(), "");
}

TEST(ProgressTest, ABarThen_AtMostTenTimesASecond) {
    std::ostringstream out;
    const auto start = ProgressBar::Clock::now();
    ProgressBar bar(out, "site.kvs", 1000, start);
    bar.show(500, start + std::chrono::milliseconds{1000});
    const std::string first = out.str();
    EXPECT_EQ(first,
              "\rsite.kvs                      [" + std::string(20, '#') + std::string(20, '.') + "] 50 %");
    bar.show(501, start + std::chrono::milliseconds{1099});
    EXPECT_EQ(out.str(), first);
    bar.show(2000, start + std::chrono::milliseconds{1100});
    EXPECT_THAT(out.str(), HasSubstr("] 100 %"));
    bar.clear();
    EXPECT_EQ(out.str().back(), '\r');
}

}  // namespace
}  // namespace orbconv::inspect
