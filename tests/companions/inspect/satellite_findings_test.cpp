// Findings about satellites and signals, set off by small logs.
#include <gtest/gtest.h>

#include "companions/support/inspected.h"
#include "companions/support/observed_log.h"
#include "inspect/findings.h"

namespace orbconv::inspect {
namespace {
namespace satelliteFindingsTest {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::cleanLog;
using testsupport::cleanStart;
using testsupport::codes;
using testsupport::countOf;
using testsupport::exampleOf;
using testsupport::inspected;
using testsupport::putBand;
using testsupport::putEpoch;
using testsupport::Satellites;
using testsupport::satellitesOf;
using testsupport::startedLog;
using testsupport::threeEpochs;

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

// Three epochs of three GPS satellites with these differences.
std::uint64_t secondRangesOf(const std::vector<std::int16_t>& ofSlot2,
                             const std::vector<std::int16_t>& ofSlot3,
                             const std::vector<std::uint16_t>& flagsOfSlot3 = {0x40, 0x40, 0x40}) {
    LogBuilder log = startedLog();
    for (std::uint32_t i = 0; i < 3; ++i) {
        log.time(cleanStart + 1000 * i).rd(2024, 5, 6).sx(satellitesOf(SystemCode::gps, 3)).to(0);
        putBand(log, Band::c, 3);
        putBand(log, Band::b1, 3);
        putBand(log, Band::b2, 3);
        log.rangeDeltas(Band::b1, ofSlot2).rangeDeltas(Band::b2, ofSlot3).flags(Band::b2, flagsOfSlot3).td();
    }
    return countOf(inspected(log), "O3");
}

TEST(SatelliteFindingsTest, SecondRanges_OfEachSatelliteThatHasTheSignal) {
    EXPECT_EQ(secondRangesOf({1, 2, 12}, {12, 12, 12}), 0);
    EXPECT_EQ(secondRangesOf({1, 2, 12}, {12, 12, 99}), 3);
    EXPECT_EQ(secondRangesOf({1, 2, 12}, {99, 12, 12}), 3);
    EXPECT_EQ(secondRangesOf({1, 2, 12}, {12, 12, 99}, {0x40, 0x40, 0}), 0);
    // The last element of slot 2 is that of the second satellite.
    EXPECT_EQ(secondRangesOf({1, 12}, {12, 12, 12}), 0);
    EXPECT_EQ(secondRangesOf({1, 12}, {1, 1, 12}), 6);
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

TEST(SatelliteFindingsTest, CutPhaseShifts_FromTheFirstSatelliteThatHasNoRoom) {
    EXPECT_EQ(countOf(threeEpochs(satellitesOf(SystemCode::gps, 30), {Band::c}), "O21"), 0);
    const LogSummary gpsLog = threeEpochs(satellitesOf(SystemCode::gps, 31), {Band::c});
    EXPECT_EQ(countOf(gpsLog, "O21"), 1);
    EXPECT_EQ(exampleOf(gpsLog, "O21"), "GPS 1C");
    // On band 1 no class of BeiDou satellites has a correction of its own.
    EXPECT_EQ(countOf(threeEpochs(satellitesOf(SystemCode::beidou, 20), {Band::b1}), "O21"), 0);
    const LogSummary beidouLog = threeEpochs(satellitesOf(SystemCode::beidou, 21), {Band::b1});
    EXPECT_EQ(countOf(beidouLog, "O21"), 1);
    EXPECT_EQ(exampleOf(beidouLog, "O21"), "BeiDou 8X");
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
    // No slots at all are a line without entries, too; the start has a time offset, for N17 and N23.
    EXPECT_EQ(testsupport::codesOfEverySuch(log), "O28 O29 O20 N17 N23");
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
    EXPECT_EQ(exampleOf(inspected(log), "O33"), "the log has 3r, and no F3 with the signal");
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

TEST(SatelliteFindingsTest, MissingMessages_FromTheListOn) {
    LogBuilder log = startedLog();
    putEpoch(log, 0, gps, {Band::c});
    putEpoch(log, 1, gps, {Band::c});
    log.time(cleanStart + 2000).rd(2024, 5, 6).to(0);
    putBand(log, Band::c, 1);
    log.td();
    EXPECT_EQ(countOf(inspected(log), "O30"), 1);
    EXPECT_EQ(exampleOf(inspected(log), "O30"), "SX at 2024-05-06T10:00:02.000");

    LogBuilder late = startedLog();
    late.time(cleanStart).rd(2024, 5, 6).to(0);
    putBand(late, Band::c, 1);
    late.td();
    putEpoch(late, 1, gps, {Band::c});
    putEpoch(late, 2, gps, {Band::c});
    EXPECT_EQ(countOf(inspected(late), "O30"), 1);
    EXPECT_EQ(exampleOf(inspected(late), "O30"), "SX ahead of its first one");
}

// SI stands behind the last message that the converter takes values from.
TEST(SatelliteFindingsTest, MissingMessages_NotOfThoseThatNobodyReads) {
    LogBuilder log = startedLog();
    putEpoch(log, 0, gps, {Band::c});
    log.message("SI", "1");  // in the second of three epochs
    putEpoch(log, 1, gps, {Band::c});
    putEpoch(log, 2, gps, {Band::c});
    EXPECT_EQ(codes(inspected(log)), "");
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

// Three epochs with GPS 5 and a satellite without any signal.
LogSummary withoutSignal(std::uint8_t system) {
    LogBuilder log = startedLog();
    for (std::uint32_t i = 0; i < 3; ++i) {
        log.time(cleanStart + 1000 * i).rd(2024, 5, 6).sx({{SystemCode::gps, 5}, {system, 1}}).nn({1}).to(0);
        putBand(log, Band::c, 2);
        log.flags(Band::c, {0x40, 0}).td();
    }
    return inspected(log);
}

TEST(SatelliteFindingsTest, LeftOutSystems_HaveNoLines) {
    for (const std::uint8_t system : {SystemCode::qzss, SystemCode::sbas, SystemCode::glonassCdma}) {
        EXPECT_EQ(countOf(withoutSignal(system), "O31"), 1) << int{system};
        EXPECT_EQ(countOf(withoutSignal(system), "O7"), 0) << int{system};
    }
    for (const std::uint8_t system :
         {SystemCode::gps, SystemCode::glonass, SystemCode::galileo, SystemCode::beidou, SystemCode::navic}) {
        EXPECT_EQ(countOf(withoutSignal(system), "O31"), 0) << int{system};
        EXPECT_EQ(countOf(withoutSignal(system), "O7"), 3) << int{system};
    }
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

}  // namespace satelliteFindingsTest
}  // namespace
}  // namespace orbconv::inspect
