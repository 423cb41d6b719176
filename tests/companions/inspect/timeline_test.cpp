// The bins of the timeline.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "companions/support/inspected.h"

namespace orbconv::inspect {
namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testsupport::inspected;

Timeline timelineOf(const LogBuilder& log) {
    return *inspected(log, {.timeline = true}).timeline;
}

TEST(TimelineTest, ShortLog_HasABinASecond) {
    LogBuilder builder;
    builder.rd(2024, 5, 6);
    builder.time(10'000).sx({{SystemCode::gps, 7}, {SystemCode::glonass, -2}, {8, 1}}).nn({4});
    builder.flags(Band::c, {0x40, 0x40, 0x40}).strengths(Band::c, {160, 120, 1}).td();
    builder.time(10'500).sx({{SystemCode::gps, 7}}).flags(Band::c, {0x40}).strengths(Band::c, {100}).td();
    builder.time(12'000).sx({{SystemCode::gps, 7}}).flags(Band::c, {0}).strengths(Band::c, {90}).td();
    const Timeline line = timelineOf(builder);
    EXPECT_EQ(reading::isoText(line.start), "2024-05-06T00:00:10.000");
    EXPECT_EQ(line.binWidth, Milliseconds{1000});
    EXPECT_EQ(line.bins, 3);
    EXPECT_THAT(line.epochs, ElementsAre(2, 0, 1));
    EXPECT_THAT(line.gaps, ElementsAre(1, 0, 0));  // the interval is 0.5 s
    ASSERT_THAT(line.satellites, SizeIs(3));
    EXPECT_EQ(line.satellites[0].sum, 3);
    EXPECT_EQ(line.satellites[0].least, 1);
    EXPECT_EQ(line.satellites[0].most, 2);
    EXPECT_EQ(line.satellites[1].sum, 0);
    EXPECT_EQ(line.satellites[1].most, 0);
    EXPECT_THAT(line.satellitesBySystem[0], ElementsAre(2, 0, 1));
    EXPECT_THAT(line.satellitesBySystem[2], IsEmpty());
    ASSERT_THAT(line.tracks, SizeIs(2));
    EXPECT_EQ(nameText(line.tracks[0].satellite), "G07");
    EXPECT_THAT(line.tracks[0].listed, ElementsAre(2, 0, 1));
    EXPECT_THAT(line.tracks[0].present[bands::c], ElementsAre(2, 0, 0));
    EXPECT_THAT(line.tracks[0].present[bands::b1], IsEmpty());
    EXPECT_EQ(nameText(line.tracks[1].satellite), "R04");
    EXPECT_EQ(line.tracks[1].satellite.channel, -2);
    ASSERT_THAT(line.signals, SizeIs(2));
    EXPECT_EQ(line.signals[0].constellation, Constellation::gps);
    EXPECT_EQ(line.signals[0].bins[0].sum, 260);
    EXPECT_EQ(line.signals[0].bins[0].count, 2);
    EXPECT_EQ(line.signals[0].bins[0].least, 100);
    EXPECT_EQ(line.signals[0].bins[0].most, 160);
    EXPECT_EQ(line.signals[0].bins[1].count, 0);
    EXPECT_EQ(line.signals[0].bins[1].most, 0);
}

TEST(TimelineTest, LongLog_BinsDoubleAndKeepTheirSums) {
    LogBuilder builder;
    builder.rd(2024, 5, 6);
    for (std::uint32_t i = 0; i < 1025; ++i) {
        builder.time(i * 1000).sx({{SystemCode::gps, 7}}).flags(Band::c, {0x40});
        builder.strengths(Band::c, {static_cast<std::uint8_t>(100 + i % 4)}).td();
        if (i == 700) {
            builder.raw(std::string(50, '\0'));
        }
    }
    const Timeline line = timelineOf(builder);
    EXPECT_EQ(line.binWidth, Milliseconds{4000});  // 1025 s in 512 bins: 1 s and 2 s are too little
    ASSERT_EQ(line.bins, 257);
    EXPECT_THAT(line.epochs, SizeIs(257));
    for (std::size_t i = 0; i < 256; ++i) {
        ASSERT_EQ(line.epochs[i], 4);
        ASSERT_EQ(line.tracks[0].present[bands::c][i], 4);
        ASSERT_EQ(line.satellites[i].sum, 4);
        ASSERT_EQ(line.signals[0].bins[i].sum, 100 + 101 + 102 + 103);
        ASSERT_EQ(line.signals[0].bins[i].least, 100);
        ASSERT_EQ(line.signals[0].bins[i].most, 103);
    }
    EXPECT_EQ(line.epochs[256], 1);
    EXPECT_EQ(line.damages[175], 1);  // 700 / 4
    EXPECT_EQ(line.damageBytes[175], 50);
    EXPECT_EQ(line.damages[174] + line.damages[176], 0);
}

TEST(TimelineTest, SatellitesBeyondTheMost_AreCounted) {
    LogBuilder builder;
    builder.rd(2024, 5, 6);
    for (const std::uint8_t system : {SystemCode::gps, SystemCode::galileo, SystemCode::beidou}) {
        std::vector<samplelog::Satellite> list;
        std::vector<std::uint16_t> flags;
        for (int number = 1; number <= 180; ++number) {
            list.push_back({system, number});
            flags.push_back(0x40);
        }
        builder.time(1000U * system).sx(list).flags(Band::c, flags).td();
    }
    const Timeline line = timelineOf(builder);
    EXPECT_THAT(line.tracks, SizeIs(Timeline::mostTracks));
    EXPECT_EQ(line.satellitesLeftOut, 3 * 180 - 400);
    EXPECT_EQ(line.satellitesBySystem[4].back(), 180);
}

TEST(TimelineTest, BrokenDates_DoNotSqueezeTheRest) {
    LogBuilder builder;
    builder.rd(2024, 5, 6).time(0).td().time(1000).td();
    builder.rd(2090, 5, 6).time(2000).td();  // alone: left out
    builder.rd(2024, 5, 6).time(3000).td();
    builder.rd(2010, 5, 6).time(4000).td();                  // ahead of the start
    builder.rd(2024, 5, 9).time(5000).td().time(6000).td();  // the second stands beside the first
    const Timeline line = timelineOf(builder);
    EXPECT_EQ(line.epochsLeftOut, 3);
    EXPECT_EQ(line.epochs[0] + line.epochs.back(), 4);
    EXPECT_EQ(line.binWidth, Milliseconds{512'000});  // three days and 6 s in 512 bins
}

TEST(TimelineTest, GapsOutsideThePicture_AreNotCountedIn) {
    LogBuilder builder;
    builder.rd(2024, 5, 6).time(0).td().time(1000).td().time(2000).td();
    builder.rd(2010, 5, 6).time(0).td().time(5000).td();
    builder.rd(2090, 5, 6).time(0).td();
    const LogSummary log = inspected(builder, {.timeline = true});
    EXPECT_EQ(log.gapCount, 2);
    EXPECT_THAT(log.timeline->gaps, ElementsAre(0, 0, 0));
}

TEST(TimelineTest, Tracks_StandByConstellationNumberChannel) {
    LogBuilder builder;
    builder.rd(2024, 5, 6).time(0);
    builder.sx({{SystemCode::beidou, 3},
                {SystemCode::glonass, 5},
                {SystemCode::glonass, -5},
                {SystemCode::glonass, 1},
                {SystemCode::gps, 30},
                {SystemCode::gps, 2}});
    builder.nn({255, 255, 9}).td();
    const Timeline line = timelineOf(builder);
    std::vector<std::string> names;
    for (const SatelliteTrack& track : line.tracks) {
        names.push_back(nameText(track.satellite));
    }
    EXPECT_THAT(names, ElementsAre("G02", "G30", "R09", "R(-5)", "R(5)", "C03"));
}

}  // namespace
}  // namespace orbconv::inspect
