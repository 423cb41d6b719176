// Findings about satellites, signals and the header, set off by small logs.
#include <gtest/gtest.h>

#include "companions/support/inspected.h"
#include "inspect/findings.h"

namespace orbconv::inspect {
namespace {
namespace satelliteFindingsTest {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::Satellite;
using samplelog::SystemCode;
using testsupport::cleanLog;
using testsupport::cleanStart;
using testsupport::codes;
using testsupport::countOf;
using testsupport::exampleOf;
using testsupport::inspected;
using testsupport::putCleanStart;

using Satellites = std::vector<Satellite>;

// All arrays of a band, for satellites that have its signal.
void putBand(LogBuilder& log, Band band, std::size_t count) {
    if (band == Band::c) {
        log.rx(std::vector<std::int32_t>(count, 100)).dx(std::vector<std::int32_t>(count, 1));
    } else {
        log.rangeDeltas(band, std::vector<std::int16_t>(count, 7));
    }
    log.phases(band, std::vector<std::int32_t>(count, 1))
        .dopplerDeltas(band, std::vector<std::int16_t>(count, 1));
    log.strengths(band, std::vector<std::uint8_t>(count, 160))
        .flags(band, std::vector<std::uint16_t>(count, 0x40));
}

void putEpoch(LogBuilder& log, int index, const Satellites& satellites, const std::vector<Band>& bands,
              const std::vector<std::uint8_t>& slots = {}) {
    log.time(cleanStart + static_cast<std::uint32_t>(index) * 1000U).rd(2024, 5, 6).sx(satellites).to(0);
    if (!slots.empty()) {
        log.nn(slots);
    }
    for (const Band band : bands) {
        putBand(log, band, satellites.size());
    }
    log.td();
}

LogBuilder startedLog() {
    LogBuilder log;
    log.rd(2024, 5, 6);
    putCleanStart(log);
    return log;
}

// Three epochs of the same.
LogSummary threeEpochs(const Satellites& satellites, const std::vector<Band>& bands,
                       const std::vector<std::uint8_t>& slots = {}) {
    LogBuilder log = startedLog();
    for (int i = 0; i < 3; ++i) {
        putEpoch(log, i, satellites, bands, slots);
    }
    return inspected(log);
}

const Satellites gps = {{SystemCode::gps, 5}};

TEST(SatelliteFindingsTest, FindingRows_HaveAllCodesOnceOrWithOtherTitles) {
    for (const FindingRow& row : findingRows) {
        EXPECT_GE(row.code.size(), 2) << row.title;
        for (const FindingRow& other : findingRows) {
            EXPECT_TRUE(&row == &other || row.title != other.title) << row.title;
        }
    }
}

TEST(SatelliteFindingsTest, SlotGaps_UnusedSlotAheadOfAUsedOne) {
    const LogSummary log = threeEpochs(gps, {Band::c, Band::b3});
    EXPECT_EQ(codes(log), "O1");
    EXPECT_EQ(countOf(log, "O1"), 2);
    EXPECT_EQ(exampleOf(log, "O1"), "GPS 1W has no satellite");
    EXPECT_EQ(countOf(threeEpochs(gps, {Band::c, Band::b1}), "O1"), 0);
}

TEST(SatelliteFindingsTest, Beidou_CodesAndSecondRecords) {
    const LogSummary outside = threeEpochs({{SystemCode::beidou, 3}}, {Band::c});
    EXPECT_EQ(codes(outside), "O2 O17");  // BeiDou counts as NavIC
    EXPECT_EQ(exampleOf(outside, "O17"), "I in place of C");
    const LogSummary inside = threeEpochs({{SystemCode::beidou, 20}}, {Band::c, Band::b1, Band::b2});
    EXPECT_EQ(codes(inside), "O2 O17 O21");
    EXPECT_EQ(countOf(inside, "O2"), 3);
    EXPECT_EQ(countOf(inside, "O21"), 1);  // 20 is of the class 6 to 58, and not of 6 to 18
    EXPECT_EQ(exampleOf(inside, "O21"), "BeiDou 2I");
}

TEST(SatelliteFindingsTest, SecondRanges_AreThoseOfTheLastSatellite) {
    LogBuilder log = startedLog();
    const Satellites three = {{SystemCode::gps, 5}, {SystemCode::galileo, 7}, {SystemCode::navic, 2}};
    for (int i = 0; i < 3; ++i) {
        log.time(cleanStart + static_cast<std::uint32_t>(i) * 1000U).rd(2024, 5, 6).sx(three).to(0);
        putBand(log, Band::c, 3);
        putBand(log, Band::b1, 3);
        putBand(log, Band::b2, 3);
        // 1r of the last that counts, Galileo, is 12; 2r is 12 for GPS alone.
        log.rangeDeltas(Band::b1, {11, 12, 13}).rangeDeltas(Band::b2, {12, 99, 98}).td();
    }
    EXPECT_EQ(countOf(inspected(log), "O3"), 3);
    EXPECT_EQ(exampleOf(inspected(log), "O3"), "E07 at 2024-05-06T10:00:00.000");
    EXPECT_EQ(countOf(threeEpochs(three, {Band::c, Band::b1, Band::b2}), "O3"), 0);
}

TEST(SatelliteFindingsTest, MissingValues_OfPresentSignals) {
    LogBuilder log = cleanLog();
    // No message of band 1 but the flags, ever: range, phase, Doppler and strength are missing.
    log.time(cleanStart + 4000).rd(2024, 5, 6).sx({{1, 5}}).to(0);
    putBand(log, Band::c, 1);
    log.flags(Band::b1, {0x40}).td();
    EXPECT_EQ(countOf(inspected(log), "O5"), 4);
    EXPECT_EQ(exampleOf(inspected(log), "O5"), "G05, GPS 1W, at 2024-05-06T10:00:04.000");
    // A strength of 0 is none.
    LogBuilder weak = cleanLog();
    weak.time(cleanStart + 4000).rd(2024, 5, 6).sx({{1, 5}}).to(0);
    putBand(weak, Band::c, 1);
    weak.strengths(Band::c, {0}).td();
    EXPECT_EQ(countOf(inspected(weak), "O5"), 1);
}

TEST(SatelliteFindingsTest, FullRangesAndDoppler_AreValuesOfBandC) {
    LogBuilder log = startedLog();
    for (int i = 0; i < 3; ++i) {
        log.time(cleanStart + static_cast<std::uint32_t>(i) * 1000U).rd(2024, 5, 6).sx(gps).to(0);
        log.rc({1}).dc({1}).phases(Band::c, {1}).strengths(Band::c, {99}).flags(Band::c, {0x40}).td();
    }
    EXPECT_EQ(codes(inspected(log)), "");
}

TEST(SatelliteFindingsTest, BeyondThirty) {
    Satellites many;
    for (int number = 1; number <= 32; ++number) {
        many.push_back({SystemCode::gps, number});
    }
    const LogSummary log = threeEpochs(many, {Band::c});
    EXPECT_EQ(codes(log), "O6 O21");
    EXPECT_EQ(countOf(log, "O6"), 6);
    EXPECT_EQ(exampleOf(log, "O6"), "G31 at 2024-05-06T10:00:00.000");
    many.resize(30);
    EXPECT_EQ(codes(threeEpochs(many, {Band::c})), "");
}

TEST(SatelliteFindingsTest, NoSignal_AndNotCounted) {
    LogBuilder log = cleanLog();
    log.time(cleanStart + 4000).rd(2024, 5, 6).sx({{1, 5}, {1, 9}}).to(0);
    putBand(log, Band::c, 2);
    log.flags(Band::c, {0x40, 0}).td();
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "O7 O24");
    EXPECT_EQ(exampleOf(summary, "O7"), "G09 at 2024-05-06T10:00:04.000");
    EXPECT_EQ(exampleOf(summary, "O24"), "G09");
}

TEST(SatelliteFindingsTest, NotCounted_WhereTheConstellationHasNoSlot1) {
    EXPECT_EQ(countOf(threeEpochs(gps, {Band::b1}), "O24"), 1);
}

TEST(SatelliteFindingsTest, GlonassWithoutSlot) {
    const Satellites two = {{SystemCode::glonass, -3}, {SystemCode::glonass, 2}};
    const LogSummary log = threeEpochs(two, {Band::c}, {7, 255});
    EXPECT_EQ(countOf(log, "O8"), 3);
    EXPECT_EQ(exampleOf(log, "O8"), "R(2) at 2024-05-06T10:00:00.000");
    EXPECT_EQ(countOf(log, "O21"), 1);  // R255 in SYS / PHASE SHIFT
    EXPECT_EQ(codes(threeEpochs(two, {Band::c}, {7, 8})), "");
}

TEST(SatelliteFindingsTest, LeftoverLines_OfGlonassSatellitesThatAreNotInTheList) {
    LogBuilder log = startedLog();
    const Satellites two = {{SystemCode::glonass, 1}, {SystemCode::glonass, 2}};
    const Satellites one = {{SystemCode::glonass, 1}};
    putEpoch(log, 0, two, {Band::c}, {3, 4});
    putEpoch(log, 1, one, {Band::c}, {3});  // slot 4 stays in the second record
    putEpoch(log, 2, two, {Band::c}, {3, 4});
    putEpoch(log, 3, two, {Band::c}, {3, 4});
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "O26");
    EXPECT_EQ(countOf(summary, "O26"), 1);
    EXPECT_EQ(exampleOf(summary, "O26"), "at 2024-05-06T10:00:01.000");
}

TEST(SatelliteFindingsTest, LeftoverLines_OneOfTheSameSlotIsNotWritten) {
    LogBuilder log = startedLog();
    const Satellites two = {{SystemCode::glonass, 1}, {SystemCode::glonass, 2}};
    const Satellites one = {{SystemCode::glonass, 2}};
    putEpoch(log, 0, two, {Band::c}, {3, 4});
    putEpoch(log, 1, one, {Band::c}, {4});  // slots 4 and 4: one line
    putEpoch(log, 2, two, {Band::c}, {3, 4});
    EXPECT_EQ(countOf(inspected(log), "O26"), 0);
}

TEST(SatelliteFindingsTest, LeftoverLines_ComeAheadOfTheSatellite) {
    LogBuilder log = startedLog();
    putEpoch(log, 0, {{SystemCode::glonass, 1}}, {Band::c}, {9});
    putEpoch(log, 1, {{SystemCode::glonass, 1}}, {Band::c}, {9});
    putEpoch(log, 2, {{SystemCode::glonass, 1}, {SystemCode::glonass, 2}}, {Band::c}, {9, 4});
    const LogSummary summary = inspected(log);
    // The first pass leaves slots 9 and 4. The first epoch's sort puts 4 ahead of 9; the second writes its 9
    // over the 4, and of the two of slot 9 one is written.
    EXPECT_EQ(countOf(summary, "O26"), 1);
    EXPECT_EQ(exampleOf(summary, "O26"), "at 2024-05-06T10:00:00.000");
}

TEST(SatelliteFindingsTest, LeftoverLines_MoreThanTheRecordsHold) {
    LogBuilder log = startedLog();
    Satellites many;
    std::vector<std::uint8_t> slots;
    for (int i = 0; i < 40; ++i) {
        many.push_back({SystemCode::glonass, 1});
        slots.push_back(static_cast<std::uint8_t>(i + 1));
    }
    slots.resize(24);
    putEpoch(log, 0, many, {Band::c}, slots);
    putEpoch(log, 1, gps, {Band::c});
    putEpoch(log, 2, gps, {Band::c});
    EXPECT_EQ(countOf(inspected(log), "O26"), 2);
}

TEST(SatelliteFindingsTest, NavicDigits_AndShiftedPhases_AreOfEverySuchLog) {
    const LogSummary log =
        threeEpochs({{SystemCode::navic, 2}, {SystemCode::gps, 3}}, {Band::c, Band::b1, Band::l});
    EXPECT_EQ(countOf(log, "O28"), 3);
    EXPECT_EQ(countOf(log, "O29"), 2);  // GPS 1W and 1X
    EXPECT_EQ(exampleOf(log, "O29"), "GPS 1W");
}

TEST(SatelliteFindingsTest, C2pAlone) {
    LogBuilder log = startedLog();
    for (int i = 0; i < 3; ++i) {
        log.time(cleanStart + static_cast<std::uint32_t>(i) * 1000U).rd(2024, 5, 6).to(0);
        log.sx({{SystemCode::glonass, 1}}).nn({3});
        putBand(log, Band::c, 1);
        log.rangeDeltas(Band::b3, {1}).td();
    }
    EXPECT_EQ(codes(inspected(log)), "O33");
    EXPECT_EQ(
        countOf(threeEpochs({{SystemCode::glonass, 1}}, {Band::c, Band::b1, Band::b2, Band::b3}, {3}), "O33"),
        0);
}

TEST(SatelliteFindingsTest, MissingMessages_AreReplacedByTheirLastOnes) {
    LogBuilder log = cleanLog();
    log.time(cleanStart + 4000).rd(2024, 5, 6).sx({{1, 5}, {1, 7}}).to(0);
    log.rx({1, 2}).dx({1, 2}).dopplerDeltas(Band::c, {0, 0}).strengths(Band::c, {160, 180});
    log.flags(Band::c, {0x40, 0x40}).td();
    EXPECT_EQ(codes(inspected(log)), "O30");
    EXPECT_EQ(exampleOf(inspected(log), "O30"), "cp at 2024-05-06T10:00:04.000");
}

// The second reading begins with what the first one has left.
TEST(SatelliteFindingsTest, MissingMessages_AheadOfTheFirstOne) {
    LogBuilder log = startedLog();
    putEpoch(log, 0, gps, {Band::c});
    putEpoch(log, 1, gps, {Band::c});
    putEpoch(log, 2, gps, {Band::c, Band::b2});
    EXPECT_EQ(countOf(inspected(log), "O30"), 10);  // range, phase, Doppler, strength and flags of two epochs
    EXPECT_EQ(exampleOf(inspected(log), "O30"), "2r ahead of its first one");
}

TEST(SatelliteFindingsTest, EpochsWithoutAList_HaveTheLastOne) {
    LogBuilder log = cleanLog();
    log.time(cleanStart + 4000).rd(2024, 5, 6).to(0).td();
    EXPECT_EQ(countOf(inspected(log), "O27"), 0);
    LogBuilder none = startedLog();
    for (std::uint32_t i = 0; i < 3; ++i) {
        none.time(cleanStart + 1000 * i).rd(2024, 5, 6).to(0).td();
    }
    EXPECT_EQ(countOf(inspected(none), "O27"), 3);
    EXPECT_EQ(exampleOf(inspected(none), "O27"), "the log has no list");
}

TEST(SatelliteFindingsTest, LeftOutSystems) {
    const LogSummary log =
        threeEpochs({{SystemCode::gps, 5}, {SystemCode::sbas, 20}, {SystemCode::glonassCdma, 1}}, {Band::c});
    EXPECT_EQ(countOf(log, "O31"), 2);
    EXPECT_EQ(exampleOf(log, "O31"), "S20");
    EXPECT_EQ(exampleOf(log, "O17"), "M in place of G");  // SBAS counts as Galileo
}

TEST(SatelliteFindingsTest, EmptyEpochs) {
    LogBuilder log = cleanLog();
    log.time(cleanStart + 4000).rd(2024, 5, 6).sx({}).to(0);
    putBand(log, Band::c, 0);
    log.td();
    EXPECT_EQ(codes(inspected(log)), "O27");
}

TEST(SatelliteFindingsTest, Letter_OfTwoSystems) {
    EXPECT_EQ(codes(threeEpochs({{SystemCode::gps, 1}, {SystemCode::glonass, 1}}, {Band::c}, {3})), "");
    const LogSummary log = threeEpochs({{SystemCode::galileo, 1}, {SystemCode::navic, 1}}, {Band::c});
    EXPECT_EQ(exampleOf(log, "O17"), "none in place of M");
    EXPECT_EQ(countOf(threeEpochs({{SystemCode::qzss, 1}}, {Band::c}), "O17"), 0);  // nothing is written
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

TEST(HeaderFindingsTest, LongTexts_AndAbnormalEnd) {
    LogBuilder log = startedLog();
    log.kvMarker(std::string(61, 'M')).pmParameters({{"rcv/igs=", std::string(21, 'T')}});
    log.pmParameters({{"rcv/id=", "short"}});
    for (int i = 0; i < 3; ++i) {
        putEpoch(log, i, gps, {Band::c});
    }
    const LogSummary summary = inspected(log);
    EXPECT_EQ(codes(summary), "O25 O25");
    EXPECT_EQ(countOf(summary, "O25", "too long"), 2);
    EXPECT_EQ(countOf(summary, "O25", "ends the run"), 1);
    EXPECT_NE(exampleOf(summary, "O25", "ends the run").find("\"short\""), std::string::npos);
}

TEST(HeaderFindingsTest, NoLeapSeconds) {
    LogBuilder log;
    log.rd(2024, 5, 6).kvMarker("SITE").antennaType("ANT").pv({.x = 1.0});
    log.pmParameters({{"rcv/id=", "12345678901234567890"}, {"rcv/igs=", "TYPE"}, {"rcv/ver/main=", "1"}});
    for (int i = 0; i < 3; ++i) {
        putEpoch(log, i, gps, {Band::c});
    }
    EXPECT_EQ(codes(inspected(log)), "O23");
}

TEST(HeaderFindingsTest, SlotLines_AreEmptyAtEightSixteenTwentyFour) {
    const auto slotLines = [](int count) {
        Satellites list;
        std::vector<std::uint8_t> slots;
        for (int i = 1; i <= count; ++i) {
            list.push_back({SystemCode::glonass, i % 7});
            slots.push_back(static_cast<std::uint8_t>(i));
        }
        return exampleOf(threeEpochs(list, {Band::c}, slots), "O20");
    };
    EXPECT_EQ(slotLines(7), "");
    EXPECT_EQ(slotLines(8), "8 slots");
    EXPECT_EQ(slotLines(24), "24 slots");
}

}  // namespace satelliteFindingsTest
}  // namespace
}  // namespace orbconv::inspect
