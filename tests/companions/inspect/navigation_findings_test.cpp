// Findings about navigation messages, set off by small logs.
#include <gtest/gtest.h>

#include "companions/support/inspected.h"

namespace orbconv::inspect {
namespace {

using samplelog::KeplerBlock;
using samplelog::LogBuilder;
using testsupport::codes;
using testsupport::codesOfEverySuch;
using testsupport::countOf;
using testsupport::exampleOf;
using testsupport::inspected;

// 6 May 2024 is the Monday of GPS week 2313, of BeiDou week 957.
constexpr std::int16_t gpsWeek = 2313 - 2048;
constexpr std::int16_t galileoWeek = 2313 - 1024;
constexpr std::int16_t beidouWeek = 2313 - 1356;
constexpr std::int32_t monday10 = 86400 + 36000;

LogBuilder datedLog() {
    LogBuilder log;
    log.rd(2024, 5, 6);
    return log;
}

KeplerBlock gps(std::uint8_t sv, std::int32_t toe = monday10) {
    return {.sv = sv, .week = gpsWeek, .toe = toe};
}

TEST(NavigationFindingsTest, OneEphemerisOfEach_OfItsOwnDay_SetsOffNone) {
    LogBuilder log = datedLog();
    log.ge123(gps(3)).ne88({.sv = 3, .tb = 43'200});
    log.en({.kepler = {.sv = 3, .week = galileoWeek, .toe = monday10}, .navFlags = 4});
    log.cn134({.kepler = {.sv = 30, .week = beidouWeek, .toe = monday10}, .navFlags = 1});
    log.ie(gps(4)).io({.alpha0 = 1.0F}).uo({.a0 = 1e-9}).cu({.a0 = -1e-9}).ci({.alpha0 = 1.0F});
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "");
    EXPECT_EQ(codesOfEverySuch(summary), "N5 N6 N26 N14 N16 N17 N23 N25");
}

TEST(NavigationFindingsTest, WrongDay) {
    LogBuilder log = datedLog();
    log.ge123(gps(3, monday10 + 86400)).ge123(gps(4)).ge123(gps(5, 86399));
    log.en({.kepler = {.sv = 3, .week = galileoWeek, .toe = 0}, .navFlags = 4});
    log.cn134({.kepler = {.sv = 30, .week = static_cast<std::int16_t>(beidouWeek - 1), .toe = monday10},
               .navFlags = 1});
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "N1");
    EXPECT_EQ(countOf(summary, "N1"), 4);
    EXPECT_EQ(exampleOf(summary, "N1"), "GE at offset 12: of 2024-05-07, received on 2024-05-06");
}

// A record of satellite 0 is kept and never written.
TEST(NavigationFindingsTest, WrongDay_NotOfSatellite0) {
    LogBuilder log = datedLog();
    log.cn134({.kepler = {.sv = 0, .week = beidouWeek - 1, .toe = monday10}, .navFlags = 1});
    EXPECT_EQ(countOf(inspected(log), "N1"), 0);
}

TEST(NavigationFindingsTest, WrongHour_OfTheFirstThreeMoscowHours) {
    LogBuilder log = datedLog();
    log.ne88({.sv = 1, .tb = 10'799}).ne88({.sv = 2, .tb = 10'800}).ne88({.sv = 3, .tb = 86'400});
    EXPECT_EQ(codes(inspected(log)), "N2");
    EXPECT_EQ(countOf(inspected(log), "N2"), 2);
}

TEST(NavigationFindingsTest, ShiftedOffsets_BySign) {
    const auto lines = [](auto put) {
        LogBuilder log = datedLog();
        put(log);
        return countOf(inspected(log), "N3");
    };
    EXPECT_EQ(lines([](LogBuilder& log) { log.uo({.a0 = -1.0}).uo({.a0 = -1.0}); }), 1);  // the same once
    EXPECT_EQ(lines([](LogBuilder& log) { log.iu({.a0 = -1.0}).iu({.a0 = 1.0}); }), 1);
    EXPECT_EQ(lines([](LogBuilder& log) { log.cu({.a0 = 1.0}).cu({.a0 = -1.0}); }), 1);
    EXPECT_EQ(lines([](LogBuilder& log) { log.eu({.utc = {.a0 = 1.0}, .a0Gps = 1.0F}); }), 2);
    EXPECT_EQ(lines([](LogBuilder& log) { log.eu({.utc = {.a0 = -1.0}, .a0Gps = -1.0F}); }), 0);
    EXPECT_EQ(lines([](LogBuilder& log) { log.nu({.tauGps = -1.0F}).nu({.tauGps = 1.0F}); }), 0);
    EXPECT_EQ(lines([](LogBuilder& log) { log.nu({.tauGps = 1.0F}).nu({.tauGps = -1.0F}); }), 1);
    EXPECT_EQ(lines([](LogBuilder& log) { log.message("EU", std::string(23, '\x3F')); }), 1);  // without GAGP
}

// A zero ends what is written of a list.
TEST(NavigationFindingsTest, ShiftedOffsets_BehindAZero) {
    const auto lines = [](auto put) {
        LogBuilder log = datedLog();
        put(log);
        return countOf(inspected(log), "N3");
    };
    EXPECT_EQ(lines([](LogBuilder& log) { log.cu({.a0 = 1.0}).cu({}).cu({.a0 = 2.0}); }), 1);
    EXPECT_EQ(lines([](LogBuilder& log) { log.iu({.a0 = 0.0, .a1 = 1.0F}).iu({.a0 = -2.0}); }), 0);
    EXPECT_EQ(lines([](LogBuilder& log) { log.uo({.a0 = 0.0, .a1 = 1.0F}).uo({.a0 = -2.0}); }), 1);
    EXPECT_EQ(lines([](LogBuilder& log) { log.uo({.tot = 9}).uo({.a0 = -2.0}); }), 0);
    EXPECT_EQ(lines([](LogBuilder& log) {
                  log.eu({.utc = {.a0 = -1.0}, .a0Gps = 0.0F}).eu({.utc = {.a0 = 1.0}, .a0Gps = 1.0F});
              }),
              1);
}

TEST(NavigationFindingsTest, GlonassOffsets_AreOfEverySuchLog) {
    LogBuilder log = datedLog();
    log.nu({.tauGps = 1.0F}).nu({.tauGps = 1.0F});
    EXPECT_EQ(codesOfEverySuch(inspected(log)), "N4 N17 N23");
    EXPECT_EQ(countOf(inspected(log), "N4"), 1);
}

TEST(NavigationFindingsTest, CutAccuracies_OfTheOddIndices) {
    LogBuilder log = datedLog();
    for (const int index : {0, 1, 2, 3, 4, 5, 6, 7, -1}) {
        KeplerBlock block = gps(static_cast<std::uint8_t>(index + 10));
        block.uraIndex = static_cast<std::int8_t>(index);
        log.ge123(block);
    }
    log.en({.kepler = {.sv = 3, .uraIndex = 1, .week = galileoWeek, .toe = monday10}, .navFlags = 4});
    EXPECT_EQ(countOf(inspected(log), "N7"), 3);
}

TEST(NavigationFindingsTest, DroppedRepeats_OfOtherContent) {
    LogBuilder log = datedLog();
    KeplerBlock sick = gps(3);
    sick.health = 1;
    log.ge123(gps(3)).ge123(gps(3)).ge123(sick);
    log.cn134({.kepler = {.sv = 30, .week = beidouWeek, .toe = monday10}, .navFlags = 1});
    log.cn134({.kepler = {.sv = 30, .week = beidouWeek, .toe = monday10}, .navFlags = 2});  // another key
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "N8");
    EXPECT_EQ(countOf(summary, "N8"), 1);
}

TEST(NavigationFindingsTest, RemovedGlonass_ByAnyRepetition) {
    LogBuilder log = datedLog();
    log.ne88({.sv = 1, .tk = 900, .tb = 43'200}).ne88({.sv = 1, .tk = 900, .tb = 43'200});
    log.ne88({.sv = 1, .tk = 930, .tb = 43'200});
    EXPECT_EQ(codes(inspected(log)), "N8");
    EXPECT_EQ(countOf(inspected(log), "N8", "removed"), 1);
}

TEST(NavigationFindingsTest, SeveralWeeks) {
    LogBuilder log = datedLog();
    log.ge123(gps(1));
    KeplerBlock next = gps(2);
    next.week = gpsWeek + 1;
    log.ge123(next);
    next.sv = 3;
    log.ge123(next).ge123(gps(4));
    EXPECT_EQ(countOf(inspected(log), "N9"), 1);
}

TEST(NavigationFindingsTest, FitInterval) {
    LogBuilder log = datedLog();
    KeplerBlock block = gps(1);
    block.iodc = 239;
    log.ge123(block);
    block.sv = 2;
    block.iodc = 240;
    log.ge123(block);
    EXPECT_EQ(codes(inspected(log)), "N10");
    EXPECT_EQ(countOf(inspected(log), "N10"), 1);
}

TEST(NavigationFindingsTest, Fnav_IsOfEverySuchLog) {
    LogBuilder log = datedLog();
    log.en({.kepler = {.sv = 3, .week = galileoWeek, .toe = monday10}, .navFlags = 4});
    log.en({.kepler = {.sv = 3, .week = galileoWeek, .toe = monday10}, .navFlags = 2});
    EXPECT_EQ(codesOfEverySuch(inspected(log)), "N6 N11 N26 N16");
    EXPECT_EQ(countOf(inspected(log), "N16"), 1);
}

TEST(NavigationFindingsTest, Ionospheres) {
    LogBuilder log = datedLog();
    log.io({.alpha0 = 1.0F}).io({.alpha0 = 1.0F}).io({.alpha0 = 2.0F}).io({.alpha0 = 2.0F, .beta0 = 1.0F});
    log.io({.alpha0 = 2.0F, .alpha2 = 9.0F, .beta0 = 1.0F});  // what is not compared makes no other set
    EXPECT_EQ(codes(inspected(log)), "N12");
    EXPECT_EQ(countOf(inspected(log), "N12"), 2);

    LogBuilder beidou = datedLog();
    beidou.ci({.alpha0 = 1.0F})
        .cn134({.kepler = {.sv = 30, .week = beidouWeek, .toe = monday10}, .navFlags = 1});
    EXPECT_EQ(countOf(inspected(beidou), "N12", "BeiDou"), 1);

    LogBuilder ended = datedLog();
    ended.io({.alpha0 = 1.0F}).io({.alpha0 = 0.0F, .beta0 = 1.0F}).io({.alpha0 = 2.0F});
    EXPECT_EQ(countOf(inspected(ended), "N12", "ends the list"), 2);

    LogBuilder navic = datedLog();
    navic.ii({.alpha0 = 1.0F});
    EXPECT_EQ(codesOfEverySuch(inspected(navic)), "N22");
}

TEST(NavigationFindingsTest, MessagesAheadOfTheFirstDate) {
    LogBuilder log;
    log.ge123(gps(3))
        .message("GA", "\3almanac")
        .message("RD", "ab")
        .rd(2024, 13, 40)
        .io({.alpha0 = 1.0F})
        .rd(2024, 5, 6);
    log.ge123(gps(4)).message("RD", "abcde");
    EXPECT_EQ(codes(inspected(log)), "N21");
    EXPECT_EQ(countOf(inspected(log), "N21"), 2);
}

TEST(NavigationFindingsTest, FullTables) {
    LogBuilder log = datedLog();
    for (std::int32_t toe = 0; toe < 10'003; ++toe) {
        log.ge123(gps(3, 86400 + toe));
    }
    EXPECT_EQ(countOf(inspected(log), "N28"), 3);
    EXPECT_EQ(exampleOf(inspected(log), "N28"), "GE at offset " + std::to_string(12 + 10'000 * 129));

    LogBuilder offsets = datedLog();
    for (std::uint32_t i = 1; i <= 101; ++i) {
        offsets.uo({.a0 = 1.0, .tot = i}).ci({.alpha0 = static_cast<float>(i)});
    }
    EXPECT_EQ(countOf(inspected(offsets), "N28"), 1 + 2);
}

TEST(NavigationFindingsTest, CnavRecords) {
    LogBuilder log = datedLog();
    log.ge160({.kepler = gps(1), .navFlags = 2, .uraiNed0 = 250});
    log.ge168({.kepler = gps(2), .navFlags = 8, .uraiEd = 5})
        .ge160({.kepler = gps(3), .navFlags = 1, .uraiEd = 250});
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "N18 N24");
    EXPECT_EQ(countOf(summary, "N18"), 2);
    EXPECT_EQ(countOf(summary, "N24"), 1);
}

TEST(NavigationFindingsTest, BeidouTypes) {
    LogBuilder log = datedLog();
    log.cn152({.kepler = {.sv = 30, .week = beidouWeek, .toe = monday10}, .navFlags = 8});
    log.cn134({.kepler = {.sv = 59, .week = beidouWeek, .toe = monday10}, .navFlags = 1});
    log.cn134({.kepler = {.sv = 58, .week = beidouWeek, .toe = monday10}, .navFlags = 1});
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "N19 N27");
    EXPECT_EQ(countOf(summary, "N25"), 2);
    EXPECT_EQ(countOf(summary, "N27"), 1);
}

TEST(NavigationFindingsTest, QzssAndSbas) {
    LogBuilder log = datedLog();
    log.message("QE", std::string(140, '\1')).message("WA", "almanac").message("QI", "ionosphere");
    EXPECT_EQ(codes(inspected(log)), "N20");
    EXPECT_EQ(countOf(inspected(log), "N20"), 3);
}

TEST(NavigationFindingsTest, ShortBodies_ArePassedOver) {
    LogBuilder log = datedLog();
    log.message("EN", "short").message("IE", "short").message("IO", "short").message("UO", "short");
    EXPECT_EQ(codes(inspected(log)), "");
}

}  // namespace
}  // namespace orbconv::inspect
