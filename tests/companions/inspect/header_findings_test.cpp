// Findings about the header of the observation file, set off by small logs.
#include <gtest/gtest.h>

#include <string>

#include "companions/support/inspected.h"
#include "companions/support/observed_log.h"

namespace orbconv::inspect {
namespace {
namespace headerFindingsTest {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::codes;
using testsupport::countOf;
using testsupport::exampleOf;
using testsupport::inspected;
using testsupport::putEpoch;
using testsupport::Satellites;
using testsupport::startedLog;
using testsupport::threeEpochs;

const Satellites gps = {{SystemCode::gps, 5}};

// What a log tells ahead of its first epoch; an empty text has no message.
struct Told {
    std::string marker = "SITE";
    std::string number = "12345678901234567890";
    std::string type = "TYPE";
    std::string version = "1.0";
    std::string antenna = "ANT";
    bool position = true;
    std::string timeOffset = "UO";  // or EU, of Galileo: both tell the leap seconds
};

LogSummary withHeader(const Told& told) {
    LogBuilder log;
    log.rd(2024, 5, 6);
    if (!told.marker.empty()) {
        log.kvMarker(told.marker);
    }
    // A message each: the text of one has room for little more than one of them.
    for (const LogBuilder::Parameter& parameter : {LogBuilder::Parameter{"rcv/id=", told.number},
                                                   {"rcv/igs=", told.type},
                                                   {"rcv/ver/main=", told.version}}) {
        if (!parameter.second.empty()) {
            log.pmParameters({parameter});
        }
    }
    if (!told.antenna.empty()) {
        log.antennaType(told.antenna);
    }
    if (told.position) {
        log.pv({.x = 1.0});
    }
    if (told.timeOffset == "UO") {
        log.uo({.leapSeconds = 18});
    } else if (told.timeOffset == "EU") {
        log.eu({.utc = {.leapSeconds = 18}});
    }
    for (int i = 0; i < 3; ++i) {
        putEpoch(log, i, gps, {Band::c});
    }
    return inspected(log);
}

TEST(HeaderFindingsTest, MissingIdentity) {
    LogBuilder log;
    log.rd(2024, 5, 6).uo({});
    for (int i = 0; i < 3; ++i) {
        putEpoch(log, i, gps, {Band::c});
    }
    log.kvMarker("TOO-LATE");
    EXPECT_EQ(codes(inspected(log)), "O18");
    EXPECT_EQ(countOf(inspected(log), "O18"), 6);
    EXPECT_EQ(exampleOf(inspected(log), "O18"), "marker name");
}

TEST(HeaderFindingsTest, MissingIdentity_NamesEachValue) {
    EXPECT_EQ(codes(withHeader({})), "");
    const auto missing = [](const Told& told) {
        const LogSummary log = withHeader(told);
        EXPECT_EQ(codes(log), "O18");
        EXPECT_EQ(countOf(log, "O18"), 1);
        return exampleOf(log, "O18");
    };
    EXPECT_EQ(missing({.marker = ""}), "marker name");
    EXPECT_EQ(missing({.number = ""}), "receiver number");
    EXPECT_EQ(missing({.type = ""}), "receiver type");
    EXPECT_EQ(missing({.version = ""}), "receiver version");
    EXPECT_EQ(missing({.antenna = ""}), "antenna type");
    EXPECT_EQ(missing({.position = false}), "position");
}

TEST(HeaderFindingsTest, LongTexts_AndAbnormalEnd) {
    LogBuilder log = startedLog();
    log.kvMarker(std::string(61, 'M')).pmParameters({{"rcv/igs=", std::string(21, 'T')}});
    const std::size_t place = log.size();
    log.pmParameters({{"rcv/id=", "short"}});
    for (int i = 0; i < 3; ++i) {
        putEpoch(log, i, gps, {Band::c});
    }
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "O25 O25");
    EXPECT_EQ(countOf(summary, "O25", "too long"), 2);
    EXPECT_EQ(countOf(summary, "O25", "ends the run"), 1);
    EXPECT_EQ(exampleOf(summary, "O25", "ends the run"),
              "PM at offset " + std::to_string(place) + ": \"short\"");
}

TEST(HeaderFindingsTest, LongTexts_ThatFillTheirRoomFit) {
    EXPECT_EQ(codes(withHeader({.marker = std::string(60, 'M')})), "");
    // Of a receiver number six characters are cut out behind the twentieth.
    EXPECT_EQ(codes(withHeader({.number = std::string(26, 'N')})), "");
    EXPECT_EQ(codes(withHeader({.type = std::string(20, 'T')})), "");
    EXPECT_EQ(codes(withHeader({.version = std::string(20, 'V')})), "");
    EXPECT_EQ(codes(withHeader({.antenna = std::string(20, 'A')})), "");
}

TEST(HeaderFindingsTest, LongTexts_OfOneCharacterMoreDoNot) {
    const auto tooLong = [](const Told& told) {
        const LogSummary log = withHeader(told);
        EXPECT_EQ(codes(log), "O25");
        EXPECT_EQ(countOf(log, "O25"), 1);
        return exampleOf(log, "O25");
    };
    const std::string marker(61, 'M');
    const std::string type(21, 'T');
    const std::string version(21, 'V');
    const std::string antenna(21, 'A');
    EXPECT_EQ(tooLong({.marker = marker}), "marker name: \"" + marker + "\"");
    EXPECT_EQ(tooLong({.number = "ABCDEFGHIJKLMNOPQRSTuvwxyzU"}),
              "receiver number: \"ABCDEFGHIJKLMNOPQRSTU\"");
    EXPECT_EQ(tooLong({.type = type}), "receiver type: \"" + type + "\"");
    EXPECT_EQ(tooLong({.version = version}), "receiver version: \"" + version + "\"");
    EXPECT_EQ(tooLong({.antenna = antenna}), "antenna type: \"" + antenna + "\"");
}

TEST(HeaderFindingsTest, NoLeapSeconds) {
    const LogSummary log = withHeader({.timeOffset = ""});
    EXPECT_EQ(codes(log), "O23");
    EXPECT_EQ(codes(withHeader({.timeOffset = "EU"})), "");
    EXPECT_EQ(exampleOf(log, "O23"), "no UO and no EU");
}

// Satellites of the slots from `first` on.
Satellites glonass(int first, int count, std::vector<std::uint8_t>& slots) {
    Satellites list;
    slots.clear();
    for (int slot = first; slot < first + count; ++slot) {
        list.push_back({SystemCode::glonass, slot % 7});
        slots.push_back(static_cast<std::uint8_t>(slot));
    }
    return list;
}

TEST(HeaderFindingsTest, SlotLines_AreEmptyAtEightSixteenTwentyFour) {
    const auto slotLines = [](int count) {
        std::vector<std::uint8_t> slots;
        const Satellites list = glonass(1, count, slots);
        return exampleOf(threeEpochs(list, {Band::c}, slots), "O20");
    };
    EXPECT_EQ(slotLines(7), "");
    EXPECT_EQ(slotLines(8), "8 slots");
    EXPECT_EQ(slotLines(24), "24 slots");
}

TEST(HeaderFindingsTest, SlotLines_OfThirtyTwoAreAllFull) {
    LogBuilder log = startedLog();
    std::vector<std::uint8_t> slots;
    for (int i = 0; i < 3; ++i) {
        const Satellites list = glonass(i == 0 ? 1 : 17, 16, slots);
        putEpoch(log, i, list, {Band::c}, slots);
    }
    EXPECT_EQ(exampleOf(inspected(log), "O20"), "");
}

}  // namespace headerFindingsTest
}  // namespace
}  // namespace orbconv::inspect
