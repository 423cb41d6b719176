// What of many messages goes into a navigation file, and in which order.
#include "standard/navigation_set.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

#include "companions/support/navigation_messages.h"
#include "standard/summary.h"

namespace {
namespace navigationSetTest {

using namespace orbconv::standard;
using orbconv::Constellation;
using orbconv::reading::isoText;
using orbconv::reading::LogTime;
using samplelog::LogBuilder;

LogTime at(std::string_view text) {
    return orbconv::reading::timeOfIsoText(text).value_or(LogTime{});
}

void addAll(NavigationSet& set, const LogBuilder& log, std::string_view received = "2025-01-05T02:00") {
    for (const auto& broadcast : testsupport::broadcastsIn(log.bytes())) {
        set.add(broadcast, at(received));
    }
}

NavigationSet setOf(const LogBuilder& log, std::string_view received = "2025-01-05T02:00") {
    NavigationSet set;
    addAll(set, log, received);
    return set;
}

// ---- repetitions ----

TEST(NavigationSet, TimeOfTransmissionAloneMakesARepetition) {
    auto kepler = testsupport::keplerOfWeek(300);
    LogBuilder log;
    log.ge123(kepler);
    kepler.tot += 30;
    log.ge123(kepler);
    const auto set = setOf(log);
    ASSERT_EQ(set.records().size(), 1U);
    EXPECT_EQ(set.records()[0].values[27], 7000);  // the first stays
    EXPECT_EQ(set.losses().repeated, 1U);
}

TEST(NavigationSet, FrameTimeAloneMakesARepetitionOfGlonass) {
    auto glonass = testsupport::glonassOf2025();
    LogBuilder log;
    log.ne88(glonass);
    glonass.tk += 30;
    log.ne103(glonass);
    const auto set = setOf(log);
    EXPECT_EQ(set.records().size(), 1U);
    EXPECT_EQ(set.losses().repeated, 1U);
}

TEST(NavigationSet, WhateverElseDiffersMakesARecord) {
    const auto kepler = testsupport::keplerOfWeek(300);
    std::vector<samplelog::KeplerBlock> others(5, kepler);
    others[0].sv = 8;
    others[1].health = 0;
    others[2].iodc = 101;
    others[3].af2 = 0;
    others[4].toc += 16;
    LogBuilder log;
    log.ge123(kepler);
    for (const auto& other : others) {
        log.ge123(other).ge123(other);
    }
    log.ie(kepler);
    const auto set = setOf(log);
    EXPECT_EQ(set.records().size(), 7U);
    EXPECT_EQ(set.losses().repeated, 5U);
}

TEST(NavigationSet, KindsOfOneSatelliteAreRecordsOfTheirOwn) {
    LogBuilder log;
    log.en(testsupport::galileoOf(5)).en(testsupport::galileoOf(2)).en(testsupport::galileoOf(1));
    log.cn152(testsupport::beidouOf(8, 20)).cn152(testsupport::beidouOf(0x20, 20));
    EXPECT_EQ(setOf(log).records().size(), 5U);
}

// ---- order ----

TEST(NavigationSet, OrderIsEpochThenConstellationThenSatelliteThenArrival) {
    auto late = testsupport::keplerOfWeek(300);
    late.toc = late.toe = 14400;
    auto other = testsupport::keplerOfWeek(300);
    other.sv = 3;
    auto changed = testsupport::keplerOfWeek(300);
    changed.health = 0;
    LogBuilder log;
    log.ge123(late).ie(other).en(testsupport::galileoOf(5)).ge123(testsupport::keplerOfWeek(300));
    log.ge123(changed).ge123(other).ne88(testsupport::glonassOf2025());
    const auto set = setOf(log);
    std::string order;
    for (const NavigationRecord* record : set.sortedRecords()) {
        order += orbconv::systemLetters[orbconv::indexOf(record->constellation)] +
                 std::to_string(record->sv) + isoText(record->epoch).substr(10, 6) + ' ';
    }
    EXPECT_EQ(order, "G3T02:00 G7T02:00 G7T02:00 E7T02:00 I3T02:00 R8T02:15 G7T04:00 ");
    EXPECT_EQ(set.sortedRecords()[1]->values[24], 5);  // health, as they came
    EXPECT_EQ(set.sortedRecords()[2]->values[24], 0);
}

// ---- losses ----

TEST(NavigationSet, LossesAreCountedByReason) {
    auto wrong = testsupport::keplerOfWeek(300);
    wrong.sv = 0;
    LogBuilder log;
    log.en(testsupport::galileoOf(0)).cn134(testsupport::beidouOf(0, 20)).ie(wrong).rd(2025, 1, 5);
    auto set = setOf(log);
    EXPECT_EQ(set.losses().unknownForm, 2U);
    EXPECT_EQ(set.losses().unusable, 1U);
    EXPECT_EQ(set.losses().withoutDate, 0U);
    set.add(testsupport::broadcastIn(LogBuilder().ge123(testsupport::keplerOfWeek(300)).take()),
            std::nullopt);
    EXPECT_EQ(set.losses().withoutDate, 1U);
    set.add({}, at("2025-01-05"));
    EXPECT_EQ(set.losses().unusable, 1U);
    EXPECT_TRUE(set.records().empty());
}

// ---- ionosphere ----

TEST(NavigationSet, MessagesWithoutDateAreTold) {
    NavigationSet set;
    LogBuilder log;
    log.ge123(testsupport::keplerOfWeek(300));
    set.add(testsupport::broadcastIn(log.bytes()), std::nullopt);
    EXPECT_EQ(navigationLossLines(set, RinexVersion::v305),
              std::vector<std::string>{"messages without date: 1"});
}

TEST(NavigationSet, IonosphereTermsStandOnceEach) {
    auto other = testsupport::ionoTerms();
    other.beta3 = 0;
    LogBuilder log;
    log.io(testsupport::ionoTerms()).io(other).io(testsupport::ionoTerms()).ci(other).ii(other);
    const auto set = setOf(log);
    ASSERT_EQ(set.ionosphere().size(), 4U);
    EXPECT_EQ(set.ionosphere()[0].values,
              (std::array{0x1p-26, 0x1p-25, -0x1p-24, 0x1p-23, 0x1p16, 0x1p15, -0x1p16, 0x1p17}));
    EXPECT_GT(set.ionosphere()[0].heard, set.ionosphere()[1].heard);  // it holds again
    EXPECT_EQ(isoText(set.ionosphere()[0].sent), "2025-01-05T02:00:00.000");
    EXPECT_EQ(isoText(set.ionosphere()[2].sent), "2025-01-05T01:59:46.000");  // BeiDou time
    EXPECT_EQ(set.ionosphere()[3].constellation, Constellation::navic);
}

TEST(NavigationSet, GalileoTermsComeWithEachEphemeris) {
    const auto set = setOf(LogBuilder().en(testsupport::galileoOf(5)).en(testsupport::galileoOf(2)));
    ASSERT_EQ(set.ionosphere().size(), 1U);
    EXPECT_EQ(set.ionosphere()[0].values, (std::array{75.5, 0.25, 0x1p-7, 9.0, 0.0, 0.0, 0.0, 0.0}));
    EXPECT_EQ(set.ionosphere()[0].sv, 7);
}

TEST(NavigationSet, TermsNameTheSatelliteThatWasHeardLast) {
    auto other = testsupport::ionoTerms();
    other.alpha0 = 0;
    LogBuilder log;
    log.io(testsupport::ionoTerms()).uo({.a0 = 1e-9}).ii(other);
    log.ge123(testsupport::keplerOfWeek(300)).io(other).uo({.a0 = 2e-9});
    const auto set = setOf(log);
    ASSERT_EQ(set.ionosphere().size(), 3U);
    EXPECT_EQ(set.ionosphere()[0].sv, 7);  // which came behind it
    EXPECT_EQ(set.ionosphere()[1].sv, 0);  // NavIC was never heard
    EXPECT_EQ(set.ionosphere()[2].sv, 7);
    ASSERT_EQ(set.offsets().size(), 2U);
    EXPECT_EQ(set.offsets()[0].sv, 7);
    EXPECT_EQ(set.offsets()[1].sv, 7);
}

TEST(NavigationSet, TermsThatAreNoneAreLeftOut) {
    auto broken = testsupport::ionoTerms();
    broken.beta2 = std::numeric_limits<float>::quiet_NaN();
    LogBuilder log;
    log.io({}).io(broken).uo({}).uo({.a0 = std::numeric_limits<double>::infinity()});
    log.uo({.a0 = 1e-9, .tot = 604801}).nu({});
    log.cu({.a0 = 1e-9, .week = 65535});  // the week ahead of BeiDou's first one
    const auto set = setOf(log, "2025-01-05T02:00");
    EXPECT_TRUE(set.ionosphere().empty());
    EXPECT_TRUE(set.offsets().empty());
}

// ---- time offsets ----

TEST(NavigationSet, OffsetsStandInTheWeekOfTheirReference) {
    LogBuilder log;
    log.uo({.a0 = 0x1p-30, .a1 = 0x1p-50F, .tot = 345600, .week = 299}).cu({.a0 = 0x1p-29, .week = 992});
    log.iu({.a0 = 0x1p-28, .week = 300 + 1024});
    const auto set = setOf(log);
    ASSERT_EQ(set.offsets().size(), 3U);
    const TimeOffsetTerms& gps = set.offsets()[0];
    EXPECT_EQ(gps.pair, "GPUT");
    EXPECT_EQ(gps.a0, 0x1p-30);
    EXPECT_EQ(gps.a1, 0x1p-50);
    EXPECT_EQ(gps.week, 2347);
    EXPECT_EQ(isoText(gps.epoch), "2025-01-02T00:00:00.000");  // the Thursday of week 2347
    EXPECT_EQ(gps.transmission, 604800 + 7200);
    const TimeOffsetTerms& beidou = set.offsets()[1];
    EXPECT_EQ(beidou.pair, "BDUT");
    EXPECT_EQ(beidou.week, 992);
    EXPECT_EQ(isoText(beidou.epoch), "2025-01-05T00:00:00.000");
    EXPECT_EQ(beidou.transmission, 7186);
    EXPECT_EQ(set.offsets()[2].pair, "IRUT");
    EXPECT_EQ(set.offsets()[2].week, 2348);
}

TEST(NavigationSet, OffsetsOfGalileoAndGlonass) {
    LogBuilder log;
    log.eu({.utc = {.a0 = 0x1p-30, .tot = 3600, .week = 300}, .a0Gps = 0x1p-31F, .weekGps = 300});
    log.nu({.tauC = 0x1p-27, .tauGps = -0x1p-28F});
    const auto set = setOf(log);
    ASSERT_EQ(set.offsets().size(), 4U);
    EXPECT_EQ(set.offsets()[0].pair, "GAUT");
    EXPECT_EQ(set.offsets()[0].transmission, 7200);
    EXPECT_EQ(set.offsets()[1].pair, "GAGP");
    EXPECT_EQ(set.offsets()[1].a0, 0x1p-31);
    EXPECT_EQ(set.offsets()[2].pair, "GLUT");
    EXPECT_EQ(set.offsets()[2].a0, -0x1p-27);
    EXPECT_EQ(isoText(set.offsets()[2].epoch), "2025-01-05T00:00:00.000");
    EXPECT_EQ(set.offsets()[2].transmission, 7182);  // of UTC, 18 s behind GPS time
    EXPECT_EQ(set.offsets()[3].pair, "GLGP");
    EXPECT_EQ(set.offsets()[3].a0, 0x1p-28);
}

TEST(NavigationSet, OffsetsOfGlonassAreOfTheDayOfUtc) {
    NavigationSet set;
    const LogBuilder log = LogBuilder().nu({.tauC = 0x1p-27});
    addAll(set, log, "2025-01-05T00:00:10");  // 23:59:52 of Saturday
    addAll(set, log, "2025-01-05T00:00:18");
    addAll(set, log, "2025-01-05T23:00");
    ASSERT_EQ(set.offsets().size(), 2U);
    EXPECT_EQ(isoText(set.offsets()[0].epoch), "2025-01-04T00:00:00.000");
    EXPECT_EQ(set.offsets()[0].transmission, 604792);
    EXPECT_EQ(isoText(set.offsets()[1].epoch), "2025-01-05T00:00:00.000");
    EXPECT_EQ(set.offsets()[1].transmission, 0);
}

// ---- size ----

TEST(NavigationSet, TenThousandRecordsOfEachSystemInBelowASecond) {
    constexpr int count = 10000;
    std::vector<orbconv::reading::Broadcast> messages;
    for (int i = 0; i < count; ++i) {
        auto kepler = testsupport::keplerOfWeek(300);
        kepler.M0 = i * 1e-6;
        auto galileo = testsupport::galileoOf(5);
        auto beidou = testsupport::beidouOf(1, 20);
        auto glonass = testsupport::glonassOf2025();
        galileo.kepler.M0 = beidou.kepler.M0 = glonass.x = kepler.M0;
        galileo.ai0 = static_cast<float>(i);
        LogBuilder log;
        log.ge123(kepler).en(galileo).cn134(beidou).ie(kepler).ne88(glonass);
        const auto found = testsupport::broadcastsIn(log.bytes());
        messages.insert(messages.end(), found.begin(), found.end());
    }
    const auto from = std::chrono::steady_clock::now();
    NavigationSet set;
    for (const auto& broadcast : messages) {
        set.add(broadcast, at("2025-01-05T02:00"));
    }
    EXPECT_EQ(set.sortedRecords().size(), 5U * count);
    EXPECT_EQ(set.ionosphere().size(), 1U * count);
    // Far above what it takes, far below what a search through all of them would.
    EXPECT_LT(std::chrono::steady_clock::now() - from, std::chrono::seconds{5});
}

}  // namespace navigationSetTest
}  // namespace
