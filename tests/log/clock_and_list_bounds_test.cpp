// Values between two whole ones, and just behind the last one: where the clock's own step and the slots of NN
// end.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "assembly/epoch_store.h"
#include "log/receiver_clock.h"
#include "log/satellite_lists.h"
#include "support/staging.h"

namespace {

using samplelog::LogBuilder;
using Moment = std::array<float, 4>;

// Day, hour, minute and second after one step.
Moment advanced(const Moment& moment, float interval) {
    orbconv::ClockReading clock{
        .day = moment[0], .hour = moment[1], .minute = moment[2], .second = moment[3]};
    orbconv::advanceEpochClock(clock, interval);
    return {clock.day, clock.hour, clock.minute, clock.second};
}

}  // namespace

TEST(ClockStep, AnythingAboveSixtySecondsBeginsAMinute) {
    EXPECT_EQ(advanced({5, 1, 2, 59.75F}, 0.25F), (Moment{5, 1, 2, 60}));
    EXPECT_EQ(advanced({5, 1, 2, 59.75F}, 0.3125F), (Moment{5, 1, 3, 0}));
}

TEST(ClockStep, AnythingAboveSixtyMinutesBeginsAnHour) {
    EXPECT_EQ(advanced({5, 1, 60, 0}, 1), (Moment{5, 1, 60, 1}));
    EXPECT_EQ(advanced({5, 1, 60.0625F, 0}, 1), (Moment{5, 2, 0, 1}));
}

TEST(ClockStep, AnythingAboveTwentyThreeHoursBeginsADay) {
    EXPECT_EQ(advanced({5, 23, 1, 0}, 1), (Moment{5, 23, 1, 1}));
    EXPECT_EQ(advanced({5, 23.0625F, 1, 0}, 1), (Moment{6, 0, 1, 1}));
}

// Behind the 24 bytes of NN stand those of the full ranges: they are nobody's slot.
TEST(SlotsBehindNn, TwentyFifthSatelliteTakesNoneFromTheRanges) {
    orbconv::MessageStaging staging;
    std::vector<samplelog::Satellite> satellites;
    for (int channel = 1; channel <= 25; ++channel) {
        satellites.push_back({samplelog::SystemCode::glonass, channel});
    }
    LogBuilder log;
    log.sx(satellites);
    log.message("NN", std::string(24, '\x01'));
    log.message("rc", std::string(100, '\x07'));
    testsupport::stage(staging, log);

    orbconv::GlonassSlotTable table;
    orbconv::noteGlonassSlots(staging, table);
    EXPECT_EQ(table.count, 1);
    EXPECT_EQ(table.slot[1], 0);

    const auto store = std::make_unique<orbconv::EpochStore>();
    orbconv::assignGlonassSlots(staging, *store);
    const auto records = store->records(orbconv::Constellation::glonass);
    EXPECT_EQ(records[23].gloSlotNumber, 1);
    EXPECT_EQ(records[24].gloSlotNumber, 0);
    EXPECT_EQ(records[24].number, 0);
}
