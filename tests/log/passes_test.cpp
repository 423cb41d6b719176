// When the observation file's header and epochs are due, which time they carry, and what is in the first.
#include "log/passes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "samplelog/log_builder.h"
#include "support/conversion.h"
#include "support/log_passes.h"

namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::Satellite;
using samplelog::SystemCode;
using testsupport::Passes;
using Lines = std::vector<std::string>;
using Times = std::vector<std::uint32_t>;

// A time of flight of 0 counts: 0.075 s times the speed of light.
constexpr std::string_view gps5 = "G05  22484434.350";
constexpr std::string_view gps6 = "G06  22484434.350";

LogBuilder& measure(LogBuilder& log, const std::vector<Satellite>& satellites = {{SystemCode::gps, 5}}) {
    return log.sx(satellites)
        .rx(std::vector<std::int32_t>(satellites.size(), 0))
        .flags(Band::c, std::vector<std::uint16_t>(satellites.size(), 0x40))
        .td();
}

// An epoch at each time, with or without the date in front of its measurements.
LogBuilder epochsAt(const Times& times, bool dated = true) {
    LogBuilder log;
    for (const std::uint32_t time : times) {
        log.time(time);
        measure(dated ? log.rd(2024, 3, 5) : log);
    }
    return log;
}

Lines converted(const LogBuilder& log) {
    return testsupport::splitLines(Passes().convert(log.bytes()));
}

Lines linesWith(const Lines& lines, std::string_view label) {
    Lines found;
    std::ranges::copy_if(lines, std::back_inserter(found),
                         [&](const std::string& line) { return line.ends_with(label); });
    return found;
}

// Date and time of the epoch lines.
Lines epochTimes(const Lines& lines) {
    Lines times;
    for (const std::string& line : lines) {
        if (line.starts_with("> ")) {
            times.push_back(line.substr(2, 27));
        }
    }
    return times;
}

std::size_t epochCount(const Lines& lines) {
    return epochTimes(lines).size();
}

// What stands behind the header.
Lines body(const Lines& lines) {
    const auto end =
        std::ranges::find_if(lines, [](const std::string& line) { return line.ends_with("END OF HEADER"); });
    return {end == lines.end() ? end : end + 1, lines.end()};
}

std::string interval(const LogBuilder& log) {
    const Lines lines = linesWith(converted(log), "INTERVAL");
    return lines.empty() ? "" : lines.at(0).substr(0, 60);
}

// The field of "INTERVAL" and the blanks behind it.
std::string intervalField(std::string_view number) {
    return std::string(10 - number.size(), ' ') + std::string(number) + std::string(50, ' ');
}

std::string timeLine(const Lines& lines, std::string_view label) {
    const Lines found = linesWith(lines, label);
    return found.size() == 1 ? found[0].substr(0, 51) : "";
}

}  // namespace

TEST(WritingPass, LogWithoutATimeHasNoHeaderAndNoEpochs) {
    LogBuilder log;
    measure(log.rd(2024, 3, 5));
    measure(log);
    EXPECT_EQ(converted(log), Lines{});
}

TEST(WritingPass, LogOfOneEpochHasNoHeader) {
    EXPECT_EQ(converted(epochsAt({3600000})), Lines{});
}

TEST(WritingPass, HeaderAndFirstEpochAreDueAtTheSecondTime) {
    LogBuilder log = epochsAt({3600000});
    const Lines lines = converted(log.time(3601000));
    ASSERT_FALSE(lines.empty());
    EXPECT_TRUE(lines.at(0).ends_with("RINEX VERSION / TYPE"));
    EXPECT_EQ(linesWith(lines, "END OF HEADER").size(), 1U);
    ASSERT_EQ(body(lines).size(), 2U);
    EXPECT_EQ(body(lines).at(0), "> 2024 03 05 01 00  0.0000000  0  1       0.000000000000");
    EXPECT_TRUE(body(lines).at(1).starts_with(gps5));
}

TEST(WritingPass, EachFurtherTdIsAnEpoch) {
    EXPECT_EQ(
        epochTimes(converted(epochsAt({3600000, 3601000, 3602000}))),
        (Lines{"2024 03 05 01 00  0.0000000", "2024 03 05 01 00  1.0000000", "2024 03 05 01 00  2.0000000"}));
}

TEST(WritingPass, OtherMessagesThanTdWriteNothing) {
    LogBuilder log = epochsAt({3600000, 3601000});
    log.time(3602000).rd(2024, 3, 5).sx({{SystemCode::gps, 5}}).rx({0}).kvMarker("X").message("zz", "?");
    EXPECT_EQ(epochCount(converted(log.time(3603000).to(0.5))), 2U);
}

TEST(WritingPass, HeaderIsWrittenOnce) {
    const Lines lines = converted(epochsAt({1000, 2000, 3000, 4000, 5000}));
    EXPECT_EQ(linesWith(lines, "RINEX VERSION / TYPE").size(), 1U);
    EXPECT_EQ(linesWith(lines, "LEAP SECONDS").size(), 1U);
    EXPECT_EQ(linesWith(lines, "END OF HEADER").size(), 1U);
}

TEST(WritingPass, HeaderIsNotDueBehindATimeOfZero) {
    EXPECT_EQ(converted(epochsAt({0, 1000})), Lines{});
    const Lines lines = converted(epochsAt({0, 1000, 2000}));
    EXPECT_EQ(linesWith(lines, "END OF HEADER").size(), 1U);
    EXPECT_EQ(epochTimes(lines), (Lines{"2024 03 05 00 00  1.0000000", "2024 03 05 00 00  2.0000000"}));
}

TEST(WritingPass, RepeatedTimeIsASecondTime) {
    EXPECT_EQ(linesWith(converted(LogBuilder().time(1000).time(1000)), "END OF HEADER").size(), 1U);
}

TEST(WritingPass, HeaderDueAtATimeOfZeroWritesOnlyItsEpochAndIsDueAgain) {
    // At 0 the header's own gate is shut. The next time follows a zero, so the header comes with the one
    // behind it.
    const Lines lines = converted(epochsAt({86399000, 0, 1000, 2000}));
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.at(0).substr(0, 29), "> 2024 03 05 23 59 59.0000000");
    EXPECT_EQ(linesWith(lines, "RINEX VERSION / TYPE").size(), 1U);
    EXPECT_EQ(linesWith(lines, "END OF HEADER").size(), 1U);
    EXPECT_EQ(epochCount(lines), 3U);
    EXPECT_EQ(epochTimes(body(lines)), (Lines{"2024 03 05 00 00  1.0000000", "2024 03 05 00 00  2.0000000"}));
}

TEST(FirstEpoch, KeepsTheRecordsOfEpochsThatWereNotWritten) {
    // The header is due behind the third TD; a record that the later epochs don't reach keeps its satellite.
    LogBuilder log;
    measure(log.time(0).rd(2024, 3, 5), {{SystemCode::gps, 5}, {SystemCode::gps, 6}});
    measure(log.time(1000), {{SystemCode::gps, 5}});
    const Lines lines = body(converted(log.time(2000)));
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines.at(0).substr(29, 6), "  0  1");
    EXPECT_TRUE(lines.at(1).starts_with(gps5));
    EXPECT_TRUE(lines.at(2).starts_with(gps6));
}

TEST(FirstEpoch, RecordsAreClearedBehindIt) {
    LogBuilder log;
    measure(log.time(1000).rd(2024, 3, 5), {{SystemCode::gps, 5}, {SystemCode::gps, 6}});
    measure(log.time(2000), {{SystemCode::gps, 7}});
    const Lines lines = body(converted(log));
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_TRUE(lines.at(4).starts_with("G07  22484434.350"));
}

TEST(FirstEpoch, CountIsThatOfAListReadBehindItsTd) {
    LogBuilder log;
    measure(log.time(1000).rd(2024, 3, 5), {{SystemCode::gps, 5}});
    log.sx({{SystemCode::gps, 5}, {SystemCode::gps, 6}, {SystemCode::glonass, 1}}).time(2000);
    EXPECT_EQ(body(converted(log)).at(0).substr(29, 6), "  0  3");
}

TEST(FirstEpoch, IsEmptyWhenAKvMessageClearedItsRecords) {
    LogBuilder log;
    measure(log.time(1000).rd(2024, 3, 5)).kvMarker("MARK").time(2000);
    const Lines lines = body(converted(log));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines.at(0).substr(29, 6), "  0  1");
}

TEST(WritingPass, KvMessageClearsTheFirst30RecordsOfEveryArray) {
    Passes passes;
    orbconv::EpochStore& store = passes.state->store;
    for (std::size_t c = 0; c < orbconv::constellationCount; ++c) {
        const auto records =
            store.useFirst(static_cast<orbconv::Constellation>(c), orbconv::storeCapacity[c]);
        for (orbconv::SatEpochRecord& record : records) {
            record.number = 9;
        }
    }
    passes.write(LogBuilder().kv("").bytes());
    for (std::size_t c = 0; c < orbconv::constellationCount; ++c) {
        const auto records = store.records(static_cast<orbconv::Constellation>(c));
        const auto isFree = [](const orbconv::SatEpochRecord& record) { return record.number == 0; };
        EXPECT_TRUE(std::ranges::all_of(records.first(30), isFree)) << c;
        EXPECT_TRUE(std::ranges::none_of(records.subspan(30), isFree)) << c;
    }
}

TEST(HeaderInterval, IsThatOfTheLastTwoTimes) {
    EXPECT_EQ(interval(epochsAt({1000, 2000, 32000})), intervalField("30.000"));
    EXPECT_EQ(interval(epochsAt({1000, 31000, 31200})), intervalField("0.200"));
}

TEST(HeaderInterval, IsZeroBetweenEqualTimes) {
    EXPECT_EQ(interval(epochsAt({1000, 2000, 2000})), intervalField("0.000"));
}

TEST(HeaderInterval, IsLeftAloneBehindATimeOfZero) {
    EXPECT_EQ(interval(epochsAt({86399000, 86399500, 0, 1000})), intervalField("-86399.500"));
}

TEST(HeaderInterval, IsNegativeAcrossMidnight) {
    EXPECT_EQ(interval(epochsAt({86398000, 86399000, 1000})), intervalField("-86398.000"));
}

TEST(EpochTime, WithoutADateMessageMovesOnByTheInterval) {
    // The times of day don't count, nor does the gap among them.
    LogBuilder log;
    measure(log.time(3600000).rd(2024, 3, 5));
    for (const std::uint32_t time : Times{3601000, 3900000, 3901000, 7200000, 7230000}) {
        measure(log.time(time));
    }
    EXPECT_EQ(
        epochTimes(converted(log)),
        (Lines{"2024 03 05 01 00  0.0000000", "2024 03 05 01 00 30.0000000", "2024 03 05 01 00 60.0000000",
               "2024 03 05 01 01  0.0000000", "2024 03 05 01 01 30.0000000", "2024 03 05 01 01 60.0000000"}));
}

TEST(EpochTime, IsPutRightByADateMessage) {
    LogBuilder log = epochsAt({3600000, 3601000});
    measure(log.time(7200000));
    measure(log.time(7201000).rd(2025, 1, 31));
    EXPECT_EQ(epochTimes(converted(log)),
              (Lines{"2024 03 05 01 00  0.0000000", "2024 03 05 01 00  1.0000000",
                     "2024 03 05 01 00  2.0000000", "2025 01 31 02 00  1.0000000"}));
}

TEST(EpochTime, BehindMidnightShowsTheNewDayAtItsDateMessage) {
    LogBuilder log = epochsAt({86398000, 86399000});
    measure(log.time(1000).rd(2024, 3, 6));
    EXPECT_EQ(epochTimes(converted(log)), (Lines{"2024 03 05 23 59 58.0000000", "2024 03 05 23 59 59.0000000",
                                                 "2024 03 06 00 00  1.0000000"}));
}

TEST(EpochTime, AddsUpInSinglePrecision) {
    LogBuilder log;
    measure(log.time(1000).rd(2024, 3, 5));
    for (std::uint32_t i = 1; i <= 10; ++i) {
        measure(log.time(1000 + 100 * i));
    }
    const Lines times = epochTimes(converted(log));
    ASSERT_EQ(times.size(), 11U);
    // A tenth is 838860.8 of the units in which numbers from 1 to 2 are kept, so each step adds 838861.
    EXPECT_EQ(times.back(), "2024 03 05 00 00  2.0000002");
}

TEST(EpochTime, WithoutAnyDateHasYearZero) {
    LogBuilder log = epochsAt({3600000, 3601000}, false);
    EXPECT_EQ(epochTimes(converted(log)),
              (Lines{"0    00 00 01 00  1.0000000", "0    00 00 01 00  2.0000000"}));
}

TEST(EpochTime, HourThatLeavesTheDayTurnsItOnlyWhenTheClockMovesOn) {
    LogBuilder log;
    measure(log.time(86399000).rd(2024, 2, 29));
    measure(log.time(86400000).rd(2024, 2, 29));
    measure(log.time(86401000));
    EXPECT_EQ(epochTimes(converted(log)), (Lines{"2024 02 29 23 59 59.0000000", "2024 02 29 24 00  0.0000000",
                                                 "2024 02 30 00 00  1.0000000"}));
}

TEST(TimeOfFirstObs, IsThatOfTheEpochClockWhenTheHeaderIsDue) {
    const Lines lines = converted(epochsAt({3723500, 3724500, 3725500}));
    EXPECT_EQ(timeLine(lines, "TIME OF FIRST OBS"), "  2024     3     5     1     2    3.0000000     GPS");
    EXPECT_EQ(timeLine(lines, "TIME OF LAST OBS"), "  2024     3     5     1     2    5.0000000     GPS");
}

TEST(TimeOfFirstObs, IsTheLastTimeOfALogWithoutADateInFrontOfItsFirstEpochs) {
    LogBuilder log = epochsAt({3600000, 3601000, 3602000}, false);
    const Lines lines = converted(log.rd(2024, 3, 5));
    EXPECT_EQ(timeLine(lines, "TIME OF FIRST OBS"), timeLine(lines, "TIME OF LAST OBS"));
    EXPECT_EQ(timeLine(lines, "TIME OF FIRST OBS"), "  2024     3     5     1     0    2.0000000     GPS");
}

TEST(TimeOfFirstObs, IsNotMovedByTheTimesOfTheWritingPass) {
    // The date stands ahead of the first time, when the time of day is 0 again.
    LogBuilder log;
    measure(log.rd(2024, 3, 5).time(3600000)).time(3601000);
    const Lines lines = converted(log);
    EXPECT_EQ(timeLine(lines, "TIME OF FIRST OBS"), "  2024     3     5     0     0    0.0000000     GPS");
    EXPECT_EQ(timeLine(lines, "TIME OF LAST OBS"), "  2024     3     5     1     0    1.0000000     GPS");
    EXPECT_EQ(epochTimes(lines), Lines{"2024 03 05 00 00  0.0000000"});
}

TEST(TimeOfLastObs, HasTheDateOfTheLastDateMessage) {
    LogBuilder log = epochsAt({3600000, 3601000});
    const Lines lines = converted(log.time(7200000).rd(2031, 12, 30, 1).time(7260000));
    EXPECT_EQ(timeLine(lines, "TIME OF LAST OBS"), "  2031    12    30     2     1    0.0000000UTC_USNO");
}

TEST(ReceiverIdentity, ReachesTheHeaderUpToTheMessageThatTriggersIt) {
    LogBuilder log = epochsAt({1000});
    log.pmParameters({{"rcv/igs=", "EARLY"}}).pv({1, 2, 3}).antennaType("ANT1").time(2000);
    log.pmParameters({{"rcv/igs=", "LATE"}}).pv({4, 5, 6}).antennaType("ANT2").kvMarker("LATE");
    const Lines lines = converted(log);
    EXPECT_EQ(linesWith(lines, "REC # / TYPE / VERS"),
              Lines{std::string(20, ' ') + "EARLY" + std::string(35, ' ') + "REC # / TYPE / VERS"});
    EXPECT_EQ(linesWith(lines, "APPROX POSITION XYZ"), Lines{"        1.0000        2.0000        3.0000" +
                                                             std::string(18, ' ') + "APPROX POSITION XYZ"});
    EXPECT_EQ(linesWith(lines, "ANT # / TYPE"),
              Lines{"-Unknown-           ANT1" + std::string(36, ' ') + "ANT # / TYPE"});
    EXPECT_EQ(linesWith(lines, "MARKER NAME"), Lines{std::string(60, ' ') + "MARKER NAME"});
}

TEST(ReceiverClockOffset, IsTheLastThatTheLogGave) {
    LogBuilder log = epochsAt({1000, 2000});
    measure(log.to(-1.25e-4).time(3000));
    const Lines lines = body(converted(measure(log)));
    EXPECT_EQ(lines.at(0).substr(41), " 0.000000000000");
    EXPECT_EQ(lines.at(4).substr(41), "-0.000125000000");
    EXPECT_EQ(lines.at(6).substr(41), "-0.000125000000");
}

TEST(AiMessage, ChangesNothing) {
    LogBuilder with = epochsAt({1000});
    with.ai(1, {1, 2, 3}, 1, {4, 5, 6}).time(2000);
    EXPECT_EQ(converted(with), converted(epochsAt({1000}).time(2000)));
}
