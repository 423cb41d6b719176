// What the summary of a log counts, by hand-worked logs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "companions/support/inspected.h"
#include "companions/support/reading_items.h"
#include "inspect/message_meanings.h"
#include "inspect/summarise.h"

namespace orbconv::inspect {
namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testsupport::cleanLog;
using testsupport::inspected;

LogTime timeOf(std::string_view text) {
    return *reading::timeOfIsoText(text);
}

TEST(SummaryTest, EmptyLog_HasNothing) {
    const LogSummary log = inspected(std::string_view{});
    EXPECT_EQ(log.bytes, 0);
    EXPECT_EQ(log.messages, 0);
    EXPECT_EQ(log.epochs, 0);
    EXPECT_FALSE(log.first || log.last || log.interval);
    EXPECT_FALSE(log.timeline);
    EXPECT_THAT(log.constellations, IsEmpty());
    EXPECT_THAT(log.gaps, IsEmpty());
    EXPECT_THAT(log.findings, IsEmpty());
}

TEST(SummaryTest, Messages_AreCountedById_MostBytesFirst) {
    LogBuilder builder;
    builder.message("zz", "0123456789").time(1000).time(2000).td("").message("zz", "");
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.bytes, builder.size());
    EXPECT_EQ(log.messages, 5);
    ASSERT_THAT(log.messagesById, SizeIs(3));
    // zz: 5 + 11 + 1 and 5 + 1 + 1 bytes; ~~: twice 5 + 5 + 1; TD: 5 + 2.
    EXPECT_EQ(log.messagesById[0].id, MessageId("zz"));
    EXPECT_FALSE(log.messagesById[0].known);
    EXPECT_EQ(log.messagesById[0].count, 2);
    EXPECT_EQ(log.messagesById[0].bytes, 24);
    EXPECT_EQ(log.messagesById[1].id, MessageId("~~"));
    EXPECT_TRUE(log.messagesById[1].known);
    EXPECT_EQ(log.messagesById[1].bytes, 22);
    EXPECT_EQ(log.messagesById[2].id, MessageId("TD"));
}

TEST(SummaryTest, MeaningsOfMessages) {
    EXPECT_EQ(messageMeaning("rx"), "reference ranges");
    EXPECT_EQ(messageMeaning("zz"), "unknown");
}

TEST(SummaryTest, Times_FirstLastIntervalScale) {
    const LogSummary log = inspected(cleanLog(3));
    EXPECT_EQ(log.epochs, 3);
    EXPECT_EQ(log.epochsWithoutTime, 0);
    EXPECT_TRUE(log.dated);
    EXPECT_EQ(log.timeScale, "GPS");
    EXPECT_EQ(log.first, timeOf("2024-05-06T10:00:00"));
    EXPECT_EQ(log.last, timeOf("2024-05-06T10:00:02"));
    EXPECT_EQ(log.interval, Milliseconds{1000});
    EXPECT_EQ(log.missingEpochs, 0);
    EXPECT_EQ(log.gapCount, 0);
}

TEST(SummaryTest, Gaps_AreStepsLongerThanTheMostFrequentOne) {
    LogBuilder builder;
    builder.rd(2024, 5, 6);
    for (const std::uint32_t second : {1U, 2U, 3U, 7U, 8U, 10U}) {
        builder.time(second * 1000).td();
    }
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.interval, Milliseconds{1000});
    EXPECT_THAT(log.gaps, ElementsAre(Gap{timeOf("2024-05-06T00:00:03"), timeOf("2024-05-06T00:00:07")},
                                      Gap{timeOf("2024-05-06T00:00:08"), timeOf("2024-05-06T00:00:10")}));
    EXPECT_EQ(log.gapCount, 2);
    EXPECT_EQ(log.missingEpochs, 3 + 1);
}

TEST(SummaryTest, Interval_OfEquallyFrequentStepsTheShortest) {
    LogBuilder builder;
    builder.rd(2024, 5, 6);
    for (const std::uint32_t second : {0U, 30U, 31U}) {
        builder.time(second * 1000).td();
    }
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.interval, Milliseconds{1000});
    EXPECT_THAT(log.gaps, ElementsAre(Gap{timeOf("2024-05-06T00:00:00"), timeOf("2024-05-06T00:00:30")}));
    EXPECT_EQ(log.missingEpochs, 29);
}

TEST(SummaryTest, Steps_BackAndOfNothingAreNoInterval) {
    LogBuilder builder;
    for (const std::uint32_t second : {10U, 10U, 5U, 5U}) {
        builder.rd(2024, 5, 6).time(second * 1000).td();
    }
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.epochs, 4);
    EXPECT_EQ(log.stepsBack, 1);
    EXPECT_FALSE(log.interval);
    EXPECT_THAT(log.gaps, IsEmpty());
    EXPECT_EQ(log.last, timeOf("2024-05-06T00:00:05"));
}

TEST(SummaryTest, Steps_MoreThanAreKeptAreStillCounted) {
    LogBuilder builder;
    builder.rd(2024, 5, 6);
    std::uint32_t time = 0;
    const auto step = [&](std::uint32_t milliseconds) {
        time += milliseconds;
        builder.time(time).td();
    };
    step(1000);
    step(1000);
    step(1000);
    for (int i = 0; i < 1200; ++i) {
        step(2000);
        step(1000);
    }
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.interval, Milliseconds{1000});
    EXPECT_THAT(log.gaps, SizeIs(1000));
    EXPECT_EQ(log.gapCount, 1200);
    EXPECT_EQ(log.missingEpochs, 1200);
}

TEST(SummaryTest, Steps_OfTooManyLengthsAreBounded) {
    LogBuilder builder;
    builder.rd(2024, 5, 6);
    std::uint32_t time = 0;
    const auto step = [&](std::uint32_t milliseconds) {
        time += milliseconds;
        builder.time(time).td();
    };
    for (std::uint32_t milliseconds = 1; milliseconds <= 5000; ++milliseconds) {
        step(milliseconds);
    }
    for (int i = 0; i < 66'000; ++i) {  // more runs than are kept
        step(10);
        step(20);
    }
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.epochs, 5000 + 132'000);
    EXPECT_EQ(log.interval, Milliseconds{10});
    EXPECT_THAT(log.gaps, SizeIs(1000));
}

TEST(SummaryTest, WithoutDates_DaysAreCountedFromTheFirst) {
    LogBuilder builder;
    builder.time(86'399'000).td().time(0).td().time(1000).td();
    const LogSummary log = inspected(builder);
    EXPECT_FALSE(log.dated);
    EXPECT_EQ(log.timeScale, "");
    EXPECT_EQ(reading::isoText(*log.first), "1970-01-01T23:59:59.000");
    EXPECT_EQ(reading::isoText(*log.last), "1970-01-02T00:00:01.000");
    EXPECT_EQ(log.interval, Milliseconds{1000});
    EXPECT_THAT(log.gaps, IsEmpty());
}

TEST(SummaryTest, EpochsAheadOfTheFirstDate_HaveNoTime) {
    LogBuilder builder;
    builder.time(1000).td().time(5000).td().rd(2024, 5, 6).time(10'000).td().time(11'000).td();
    for (const bool timeline : {false, true}) {
        const LogSummary log = inspected(builder, {.timeline = timeline});
        EXPECT_EQ(log.epochs, 4);
        EXPECT_EQ(log.epochsWithoutTime, 2);
        EXPECT_EQ(log.first, timeOf("2024-05-06T00:00:10"));
        EXPECT_EQ(log.interval, Milliseconds{1000});
    }
}

TEST(SummaryTest, EpochsWithoutAnyTime) {
    LogBuilder builder;
    builder.td().td();
    const LogSummary log = inspected(builder, {.timeline = true});
    EXPECT_EQ(log.epochs, 2);
    EXPECT_EQ(log.epochsWithoutTime, 2);
    EXPECT_FALSE(log.first);
    EXPECT_EQ(log.timeline->epochsLeftOut, 2);
    EXPECT_EQ(log.timeline->bins, 0);
}

TEST(SummaryTest, Identity) {
    const LogSummary log = inspected(cleanLog());
    EXPECT_EQ(log.identity.markerName->text, "SITE");
    EXPECT_EQ(log.identity.receiverType->text, "TYPE");
    EXPECT_EQ((*log.identity.position)[0], 3'000'000.0);
}

TEST(SummaryTest, Satellites_ByConstellation) {
    LogBuilder builder;
    builder.sx({{SystemCode::gps, 9}, {SystemCode::gps, 3}, {SystemCode::navic, 2}, {8, 1}}).td();
    builder.sx({{SystemCode::gps, 9}}).td();
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.unknownSystems, 1);
    ASSERT_THAT(log.constellations, SizeIs(2));
    const ConstellationSummary& gps = log.constellations[0];
    EXPECT_EQ(gps.constellation, Constellation::gps);
    ASSERT_THAT(gps.satellites, SizeIs(2));
    EXPECT_EQ(nameText(gps.satellites[0]), "G03");
    EXPECT_EQ(nameText(gps.satellites[1]), "G09");
    EXPECT_EQ(gps.listings, 3);
    EXPECT_EQ(gps.epochs, 2);
    EXPECT_EQ(gps.mostInOneEpoch, 2);
    EXPECT_EQ(log.constellations[1].epochs, 1);
}

TEST(SummaryTest, Glonass_GoesBySlot_AndByChannelWhereNoEpochGivesOne) {
    LogBuilder builder;
    builder.sx({{SystemCode::glonass, -3}, {SystemCode::glonass, 5}, {SystemCode::glonass, 6}})
        .nn({11, 255, 0})
        .flags(Band::c, {0x40, 0x40, 0x40})
        .td();
    builder.sx({{SystemCode::glonass, 5}}).nn({21}).flags(Band::c, {0x40}).td();
    const LogSummary log = inspected(builder);
    const ConstellationSummary& glonass = log.constellations.at(0);
    ASSERT_THAT(glonass.satellites, SizeIs(3));
    EXPECT_EQ(nameText(glonass.satellites[0]), "R11");
    EXPECT_EQ(glonass.satellites[0].channel, -3);
    EXPECT_EQ(nameText(glonass.satellites[1]), "R21");
    EXPECT_EQ(nameText(glonass.satellites[2]), "R(6)");
    EXPECT_EQ(log.signals.at(0).satelliteCount, 3);
    EXPECT_EQ(log.signals.at(0).satellites.count(), 2);
}

TEST(SummaryTest, Signals_SatellitesEpochsAndStrengths) {
    LogBuilder builder;
    builder.sx({{SystemCode::gps, 9}, {SystemCode::gps, 3}, {SystemCode::qzss, 1}})
        .flags(Band::c, {0x40, 0x40, 0xFFFF})
        .strengths(Band::c, {160, 180, 200})
        .flags(Band::b2, {0, 0x40})
        .strengths(Band::b2, {0, 0, 0})
        .td();
    builder.sx({{SystemCode::gps, 9}, {SystemCode::gps, 3}})
        .flags(Band::c, {0x40, 0xBF})
        .strengths(Band::c, {162})
        .td();
    builder.sx({{SystemCode::gps, 9}}).td();
    const LogSummary log = inspected(builder);
    ASSERT_THAT(log.signals, SizeIs(3));
    const SignalSummary& gps = log.signals[0];
    EXPECT_EQ(gps.code(), "1C");
    EXPECT_EQ(signalText(gps.constellation, gps.band), "GPS 1C");
    EXPECT_EQ(gps.satelliteCount, 2);
    EXPECT_EQ(gps.epochs, 2);
    EXPECT_EQ(gps.observations, 3);
    const auto range = strengthRange(gps);
    ASSERT_TRUE(range);
    EXPECT_EQ(range->least, 40.0);
    EXPECT_EQ(range->median, 40.5);  // of 40.0, 40.5 and 45.0
    EXPECT_EQ(range->most, 45.0);

    EXPECT_EQ(log.signals[1].band, bands::b2);
    EXPECT_EQ(log.signals[1].satelliteCount, 1);
    EXPECT_FALSE(strengthRange(log.signals[1]));

    EXPECT_EQ(log.signals[2].code(), "");
    EXPECT_EQ(signalText(log.signals[2].constellation, log.signals[2].band), "QZSS band c");
}

TEST(SummaryTest, Strengths_MedianOfAnEvenNumberIsTheMeanOfTheMiddle) {
    SignalSummary signal;
    signal.strengths[100] = 2;
    signal.strengths[104] = 1;
    signal.strengths[255] = 1;
    const auto range = strengthRange(signal);
    ASSERT_TRUE(range);
    EXPECT_EQ(range->least, 25.0);
    EXPECT_EQ(range->median, 25.5);
    EXPECT_EQ(range->most, 63.75);
}

TEST(SummaryTest, Navigation_KindsBySystemFlagsAndLength) {
    using samplelog::KeplerBlock;
    LogBuilder builder;
    builder.ge123({.sv = 3}).ge123({.sv = 4}).ge123({.sv = 4});
    builder.ge160({.kepler = {.sv = 5}, .navFlags = 3}).ge168({.kepler = {.sv = 6}, .navFlags = 8});
    builder.ge160({.kepler = {.sv = 7}, .navFlags = 1}).ge160({.kepler = {.sv = 7}, .navFlags = 0});
    builder.ne88({.sv = 9}).en({.kepler = {.sv = 1}, .navFlags = 4}).en({.kepler = {.sv = 1}, .navFlags = 2});
    builder.cn134({.kepler = {.sv = 5}, .navFlags = 1}).cn134({.kepler = {.sv = 6}, .navFlags = 9});
    builder.cn152({.kepler = {.sv = 6}, .navFlags = 8}).cn160({.kepler = {.sv = 6}, .navFlags = 64});
    builder.ie({.sv = 2}).io({}).message("QE", std::string(140, '\1')).message("GA", "\7almanac");
    const LogSummary log = inspected(builder);
    std::vector<std::string> kinds;
    for (const NavigationSummary& kind : log.navigation) {
        kinds.push_back(std::string(constellationName(rowOf(kind.kind).constellation)) + " " +
                        std::string(rowOf(kind.kind).name) + " " + std::to_string(kind.messages) + " " +
                        std::to_string(kind.satellites.count()));
    }
    EXPECT_THAT(
        kinds, ElementsAre("GPS CNAV 1 1", "GPS LNAV 4 3", "GPS CNV2 1 1", "GPS untyped 1 1",
                           "GLONASS FDMA 1 1", "Galileo INAV 1 1", "Galileo FNAV 1 1", "QZSS ephemerides 1 1",
                           "BeiDou D2 1 1", "BeiDou D1 1 1", "BeiDou CNV1 1 1", "BeiDou CNV3 1 1",
                           "NavIC LNAV 1 1", "GPS almanacs 1 1", "GPS ionosphere 1 0"));
}

TEST(SummaryTest, End_WhatBeginsAheadOfItIsTakenWhole) {
    const std::string log = cleanLog(4).take();
    const std::string shorter = cleanLog(3).take();
    reading::LogReader reader(testsupport::bytesOf(log));
    const LogSummary summary = summarise(reader, LogBytes(testsupport::bytesOf(log)),
                                         {.timeline = false, .progress = {}, .end = shorter.size() - 1});
    EXPECT_EQ(summary.epochs, 3);
    EXPECT_EQ(summary.bytes, shorter.size());
    EXPECT_EQ(summary.damageCount, 0);
}

TEST(SummaryTest, Damage_PlacesAndBytes) {
    LogBuilder builder = cleanLog(3);
    const std::size_t first = builder.size();
    builder.raw(std::string(100, '\0'));
    testsupport::putCleanEpoch(builder, testsupport::cleanStart + 3000);
    testsupport::putCleanEpoch(builder, testsupport::cleanStart + 4000);
    const std::size_t second = builder.size();
    builder.raw("GE");
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.epochs, 5);
    EXPECT_THAT(log.damage, ElementsAre(Damage{first, 100}, Damage{second, 2}));
    EXPECT_EQ(log.damageCount, 2);
    EXPECT_EQ(log.damageBytes, 102);
}

TEST(SummaryTest, Damage_MorePlacesThanAreKeptAreCounted) {
    LogBuilder builder;
    for (int i = 0; i < 1001; ++i) {
        builder.time(1000).td().time(2000).td().raw(std::string(20, '\0'));
    }
    const LogSummary log = inspected(builder);
    EXPECT_EQ(log.damageCount, 1001);
    EXPECT_EQ(log.damageBytes, 20'020);
    EXPECT_THAT(log.damage, SizeIs(1000));
}

}  // namespace
}  // namespace orbconv::inspect
