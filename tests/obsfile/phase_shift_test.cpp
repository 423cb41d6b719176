// "SYS / PHASE SHIFT": the line, its satellites, its continuation lines, and the two lines that a BeiDou
// signal can take.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

#include "support/obs_signals.h"
#include "support/obs_text.h"

namespace {
namespace phaseShiftTest {

using orbconv::Constellation;
using orbconv::indexOf;
using testing::ElementsAre;
using testsupport::blanks;
using testsupport::headerLine;
using testsupport::setCodes;
using testsupport::Signals;
using Lines = std::vector<std::string>;

constexpr std::string_view label = "SYS / PHASE SHIFT";

std::vector<int> range(int first, int last) {
    std::vector<int> numbers(static_cast<std::size_t>(last - first + 1));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

Lines gpsLines(const std::vector<int>& satellites) {
    return Signals{}.signal(Constellation::gps, 0, "L1C", 0.0F, satellites).lines();
}

constexpr std::string_view firstTen = " G01 G02 G03 G04 G05 G06 G07 G08 G09 G10";

std::string lineOfTen(std::string_view count) {
    return std::string("G L1C  0.00000  ").append(count).append(firstTen).append("  ").append(label);
}

// ---- the line ----

TEST(PhaseShift, NothingSeenWritesNothing) {
    EXPECT_THAT(Signals{}.lines(), ElementsAre());
}

TEST(PhaseShift, LineHasLetterCodeShiftCountAndSatellites) {
    EXPECT_THAT(Signals{}.signal(Constellation::gps, 1, "L1W", -0.25F, {3, 14, 32}).lines(),
                ElementsAre("G L1W -0.25000  03 G03 G14 G32" + blanks(30) + "SYS / PHASE SHIFT"));
}

TEST(PhaseShift, ASignalWithoutSatellitesKeepsItsLineWithACountOf00) {
    EXPECT_THAT(gpsLines({}), ElementsAre("G L1C  0.00000  00" + blanks(42) + "SYS / PHASE SHIFT"));
}

TEST(PhaseShift, ShiftHasFiveDecimalsInEightColumns) {
    EXPECT_THAT(Signals{}.signal(Constellation::gps, 0, "L1C", 0.1F, {}).lines(),
                ElementsAre(headerLine("G L1C  0.10000  00", label)));
}

TEST(PhaseShift, AShiftTooWideForItsFieldMovesTheRest) {
    EXPECT_THAT(Signals{}.signal(Constellation::gps, 2, "L2W", -12.5F, {}).lines(),
                ElementsAre("G L2W -12.50000  00" + blanks(42) + "SYS / PHASE SHIFT"));
}

TEST(PhaseShift, SignalsStandInSlotOrderAndConstellationsInTheOrderGREJCIS) {
    Signals all;
    all.options.includeQzss = all.options.includeSbas = true;
    all.signal(Constellation::sbas, 0, "L1A", 0.0F, {})
        .signal(Constellation::navic, 4, "L5A", 0.0F, {2})
        .signal(Constellation::beidou, 0, "L2I", 0.0F, {1})
        .signal(Constellation::qzss, 0, "L1Q", 0.0F, {})
        .signal(Constellation::galileo, 5, "L1X", 0.0F, {3})
        .signal(Constellation::galileo, 0, "L1X", 0.5F, {4})
        .signal(Constellation::glonass, 0, "L1C", 0.0F, {5})
        .signal(Constellation::gps, 0, "L1C", 0.0F, {6});
    EXPECT_THAT(
        all.lines(),
        ElementsAre(headerLine("G L1C  0.00000  01 G06", label), headerLine("R L1C  0.00000  01 R05", label),
                    headerLine("E L1X  0.50000  01 E04", label), headerLine("E L1X  0.00000  01 E03", label),
                    headerLine("J L1Q  0.00000  00", label), headerLine("C L2I  0.00000  01 C01", label),
                    headerLine("I L5A  0.00000  01 I02", label), headerLine("S L1A  0.00000  00", label)));
}

TEST(PhaseShift, ASignalWithoutAPhaseCodeHasNoLine) {
    Signals signals;
    setCodes(signals.survey->codes(Constellation::gps), 0, {"C1C"});
    setCodes(signals.survey->codes(Constellation::gps), 2, {"D1C", "S1C", "L1Z"});
    signals.survey->obsCodeCount[0] = 4;
    signals.survey->signalSatelliteList[0][0] = {1, 2};
    EXPECT_THAT(signals.lines(), ElementsAre());
}

TEST(PhaseShift, AConstellationWhoseCodeCountIsNotAboveZeroHasNoLine) {
    for (const std::int32_t count : {0, -1, -4}) {
        Signals signals;
        signals.signal(Constellation::gps, 0, "L1C", 0.0F, {1});
        signals.survey->obsCodeCount[0] = count;
        EXPECT_THAT(signals.lines(), ElementsAre()) << count;
    }
}

struct LeftOut {
    Constellation constellation;
    bool orbconv::RunOptions::*flag;
};

class PhaseShiftLeftOut : public testing::TestWithParam<LeftOut> {};

TEST_P(PhaseShiftLeftOut, AConstellationWhoseFlagIsClearedHasNoLine) {
    Signals signals;
    signals.signal(GetParam().constellation, 0, "L1C", 0.0F, {1});
    EXPECT_EQ(signals.lines().size(), 1U);
    signals.options.*GetParam().flag = false;
    EXPECT_THAT(signals.lines(), ElementsAre());
}

INSTANTIATE_TEST_SUITE_P(
    Flags, PhaseShiftLeftOut,
    testing::Values(LeftOut{Constellation::gps, &orbconv::RunOptions::includeGps},
                    LeftOut{Constellation::glonass, &orbconv::RunOptions::includeGlonass},
                    LeftOut{Constellation::galileo, &orbconv::RunOptions::includeGalileo},
                    LeftOut{Constellation::beidou, &orbconv::RunOptions::includeBeidou},
                    LeftOut{Constellation::navic, &orbconv::RunOptions::includeNavic}));

TEST(PhaseShift, QzssAndSbasNeverListSatellites) {
    Signals signals;
    signals.options.includeQzss = signals.options.includeSbas = true;
    signals.signal(Constellation::qzss, 0, "L1C", 0.0F, {}).signal(Constellation::sbas, 4, "L5I", 0.25F, {});
    signals.survey->phaseShiftSatellites[indexOf(Constellation::qzss)][0] = {1, 2};
    signals.survey->phaseShiftSatellites[indexOf(Constellation::sbas)][4] = {3};
    EXPECT_THAT(signals.lines(), ElementsAre(headerLine("J L1C  0.00000  00", label),
                                             headerLine("S L5I  0.25000  00", label)));
}

// ---- counts and continuation lines ----

TEST(PhaseShift, TenSatellitesFillTheLineUpToTwoBlanks) {
    EXPECT_THAT(gpsLines(range(1, 10)), ElementsAre(lineOfTen("10")));
}

TEST(PhaseShift, TheEleventhBeginsAContinuationLineInColumn19) {
    EXPECT_THAT(gpsLines(range(1, 11)),
                ElementsAre(lineOfTen("11"), blanks(18) + " G11" + blanks(38) + std::string(label)));
}

TEST(PhaseShift, TwelveSatellitesTakeALineOfTenAndOneOfTwo) {
    EXPECT_THAT(gpsLines(range(1, 12)),
                ElementsAre(lineOfTen("12"), headerLine(blanks(18) + " G11 G12", label)));
}

TEST(PhaseShift, TwentySatellitesFillTwoLines) {
    EXPECT_THAT(gpsLines(range(1, 20)),
                ElementsAre(lineOfTen("20"),
                            headerLine(blanks(18) + " G11 G12 G13 G14 G15 G16 G17 G18 G19 G20", label)));
}

TEST(PhaseShift, TwentyOneSatellitesHaveAThirdLine) {
    EXPECT_THAT(gpsLines(range(1, 21)),
                ElementsAre(lineOfTen("21"),
                            headerLine(blanks(18) + " G11 G12 G13 G14 G15 G16 G17 G18 G19 G20", label),
                            headerLine(blanks(18) + " G21", label)));
}

TEST(PhaseShift, MoreThanThirtySatellitesAreCountedButNotShown) {
    EXPECT_THAT(gpsLines(range(1, 32)),
                ElementsAre(lineOfTen("32"),
                            headerLine(blanks(18) + " G11 G12 G13 G14 G15 G16 G17 G18 G19 G20", label),
                            headerLine(blanks(18) + " G21 G22 G23 G24 G25 G26 G27 G28 G29 G30", label)));
}

TEST(PhaseShift, GalileoIsCountedOverTheFirst32Entries) {
    const Lines lines = Signals{}.signal(Constellation::galileo, 0, "L1X", 0.5F, range(1, 36)).lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "E L1X  0.50000  32 E01 E02 E03 E04 E05 E06 E07 E08 E09 E10  SYS / PHASE SHIFT");
    EXPECT_EQ(lines[2], headerLine(blanks(18) + " E21 E22 E23 E24 E25 E26 E27 E28 E29 E30", label));
}

TEST(PhaseShift, UseCountsAreMadeAnew) {
    Signals signals;
    for (auto& row : signals.survey->signalUseCount) {
        row.fill(77);
    }
    signals.signal(Constellation::galileo, 4, "L5X", 0.25F, {8, 9});
    signals.signal(Constellation::navic, 4, "L5A", 0.0F, {7});
    EXPECT_THAT(signals.lines(), ElementsAre(headerLine("E L5X  0.25000  02 E08 E09", label),
                                             headerLine("I L5A  0.00000  01 I07", label)));
    EXPECT_EQ(signals.survey->signalUseCount[2][4], 2U);
    EXPECT_EQ(signals.survey->signalUseCount[2][3], 0U);
    EXPECT_EQ(signals.survey->signalUseCount[5][4], 1U);
    EXPECT_EQ(signals.survey->signalUseCount[3][0], 0U);
    EXPECT_EQ(signals.survey->signalUseCount[6][11], 0U);
}

// ---- GLONASS ----

TEST(PhaseShift, GlonassUnknownSlotIsListedInThreeDigitsButNotCounted) {
    EXPECT_THAT(Signals{}.signal(Constellation::glonass, 0, "L1C", 0.0F, {5, 24, 255}).lines(),
                ElementsAre("R L1C  0.00000  02 R05 R24 R255" + blanks(34) + "SYS / PHASE SHIFT"));
}

TEST(PhaseShift, GlonassTenSlotsAndAnUnknownOneTakeOneLine) {
    std::vector<int> slots = range(1, 10);
    slots.push_back(255);
    EXPECT_THAT(Signals{}.signal(Constellation::glonass, 0, "L1C", 0.0F, slots).lines(),
                ElementsAre("R L1C  0.00000  10 R01 R02 R03 R04 R05 R06 R07 R08 R09 R10  SYS / PHASE SHIFT"));
}

// The continuation ends at the count, which leaves the unknown slot out.
TEST(PhaseShift, GlonassElevenSlotsAndAnUnknownOneContinueWithTheEleventhAlone) {
    std::vector<int> slots = range(1, 11);
    slots.push_back(255);
    const Lines lines = Signals{}.signal(Constellation::glonass, 0, "L1C", 0.0F, slots).lines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1], headerLine(blanks(18) + " R11", label));
}

TEST(PhaseShift, GlonassWalksTwelveSignalsTheLastSixBeingMergedCdma) {
    Signals signals;
    signals.signal(Constellation::glonass, 0, "L1C", 0.0F, {1})
        .signal(Constellation::glonass, 6, "L4X", 0.125F, {})
        .signal(Constellation::glonass, 11, "L3Z", -0.125F, {});
    for (const std::size_t band : {std::size_t{0}, std::size_t{5}}) {
        signals.survey->signalSatelliteList[indexOf(Constellation::glonassCdma)][band] = {9, 21};
        signals.survey->signalSatelliteList[indexOf(Constellation::glonass)][band + 6] = {9, 21};
    }
    EXPECT_THAT(signals.lines(), ElementsAre(headerLine("R L1C  0.00000  01 R01", label),
                                             headerLine("R L4X  0.12500  02 R09 R21", label),
                                             headerLine("R L3Z -0.12500  02 R09 R21", label)));
}

TEST(PhaseShift, OtherConstellationsEndBehindTheSixthSignal) {
    Signals signals;
    setCodes(signals.survey->codes(Constellation::gps), 26, {"L1X"});
    setCodes(signals.survey->codes(Constellation::gps), 31, {"L4X"});
    signals.survey->obsCodeCount[0] = 2;
    EXPECT_THAT(signals.lines(), ElementsAre(headerLine("G L1X  0.00000  00", label)));
}

// ---- BeiDou ----

// The lines of one BeiDou signal that has both phase codes, named after their slots: pha and alt.
Lines beidouLines(std::size_t band, float shift, const std::vector<int>& satellites) {
    Signals signals;
    signals.signal(Constellation::beidou, band, "pha", shift, satellites);
    signals.survey->codes(Constellation::beidou)[band * 5 + 4] = "alt";
    return signals.lines();
}

// Which satellites the second line of a band takes, and what its shift adds to the stored one.
struct TwoLines {
    std::size_t band;
    int lastOfClass;  // the class begins at 6
    std::string secondShift;
};

class PhaseShiftBeidouBand : public testing::TestWithParam<TwoLines> {};

TEST_P(PhaseShiftBeidouBand, SatellitesAreSplitByNumberAtTheEndsOfTheClass) {
    const int last = GetParam().lastOfClass;
    const std::string lastOfClass = " C" + std::to_string(last);
    const std::string behindClass = " C" + std::to_string(last + 1);
    EXPECT_THAT(beidouLines(GetParam().band, 0.0F, {1, 5, 6, last, last + 1, 61}),
                ElementsAre(headerLine("C pha  0.00000  04 C01 C05" + behindClass + " C61", label),
                            headerLine("C alt " + GetParam().secondShift + "  02 C06" + lastOfClass, label)));
}

INSTANTIATE_TEST_SUITE_P(Bands, PhaseShiftBeidouBand,
                         testing::Values(TwoLines{0, 58, " 0.50000"}, TwoLines{1, 18, " 0.50000"},
                                         TwoLines{2, 18, " 0.25000"}, TwoLines{3, 58, " 0.50000"},
                                         TwoLines{4, 18, " 0.50000"}));

TEST(PhaseShiftBeidou, TheLastBandListsEverySatelliteInOneLine) {
    EXPECT_THAT(beidouLines(5, 0.0F, {1, 5, 6, 18, 19, 58, 59}),
                ElementsAre(headerLine("C pha  0.00000  07 C01 C05 C06 C18 C19 C58 C59", label)));
}

TEST(PhaseShiftBeidou, APassWithoutSatellitesWritesNothing) {
    EXPECT_THAT(beidouLines(0, 0.0F, {10, 20}), ElementsAre(headerLine("C alt  0.50000  02 C10 C20", label)));
    EXPECT_THAT(beidouLines(0, 0.0F, {2, 60}), ElementsAre(headerLine("C pha  0.00000  02 C02 C60", label)));
    EXPECT_THAT(beidouLines(0, 0.0F, {}), ElementsAre());
    EXPECT_THAT(beidouLines(5, 0.0F, {}), ElementsAre());
}

TEST(PhaseShiftBeidou, ABandWithoutAFirstPhaseCodeHasNoLineEvenWithASecond) {
    Signals signals;
    signals.survey->codes(Constellation::beidou)[4] = "L2I";
    signals.survey->obsCodeCount[4] = 6;
    signals.survey->signalSatelliteList[4][0] = {3, 10};
    EXPECT_THAT(signals.lines(), ElementsAre());
}

TEST(PhaseShiftBeidou, TheSecondLineOfABandWithoutASecondCodeHasABlankOne) {
    EXPECT_THAT(Signals{}.signal(Constellation::beidou, 1, "L8X", 0.25F, {3, 10}).lines(),
                ElementsAre(headerLine("C L8X  0.25000  01 C03", label),
                            headerLine("C      0.75000  01 C10", label)));
}

TEST(PhaseShiftBeidou, TheStoredShiftOfTheThirdBandIsLoweredByAQuarterForItsSecondLine) {
    Signals signals;
    signals.signal(Constellation::beidou, 2, "L7I", 0.5F, {10, 20});
    EXPECT_THAT(signals.lines(), ElementsAre(headerLine("C L7I  0.50000  01 C20", label),
                                             headerLine("C      0.75000  01 C10", label)));
    EXPECT_EQ(signals.survey->phaseShiftValues[4][2], 0.25F);
}

TEST(PhaseShiftBeidou, TheStoredShiftStaysWhereNoSecondLineIsWritten) {
    Signals signals;
    signals.signal(Constellation::beidou, 2, "L7I", 0.5F, {20});
    signals.signal(Constellation::beidou, 0, "L2I", 0.5F, {10, 20});
    signals.lines();
    EXPECT_EQ(signals.survey->phaseShiftValues[4][2], 0.5F);
    EXPECT_EQ(signals.survey->phaseShiftValues[4][0], 0.5F);
}

constexpr std::string_view tenOfTheClass = " C06 C07 C08 C09 C10 C11 C12 C13 C14 C15";

std::string altLineOfTen(std::string_view count) {
    return std::string("C alt  0.50000  ").append(count).append(tenOfTheClass).append("  ").append(label);
}

TEST(PhaseShiftBeidou, NineSatellitesHaveNoContinuationLine) {
    EXPECT_THAT(beidouLines(0, 0.0F, range(6, 14)),
                ElementsAre(headerLine("C alt  0.50000  09 C06 C07 C08 C09 C10 C11 C12 C13 C14", label)));
}

TEST(PhaseShiftBeidou, ExactlyTenSatellitesHaveAContinuationLineWithoutEntries) {
    EXPECT_THAT(beidouLines(0, 0.0F, range(6, 15)),
                ElementsAre(altLineOfTen("10"), blanks(60) + std::string(label)));
}

TEST(PhaseShiftBeidou, TwelveSatellitesContinueWithTwo) {
    EXPECT_THAT(beidouLines(0, 0.0F, range(6, 17)),
                ElementsAre(altLineOfTen("12"), headerLine(blanks(18) + " C16 C17", label)));
}

TEST(PhaseShiftBeidou, NoThirdLineFollowsTheSecondTen) {
    EXPECT_THAT(beidouLines(0, 0.0F, range(6, 30)),
                ElementsAre(altLineOfTen("25"),
                            headerLine(blanks(18) + " C16 C17 C18 C19 C20 C21 C22 C23 C24 C25", label)));
}

TEST(PhaseShiftBeidou, TheContinuationLeavesOutTheSatellitesOfTheOtherPass) {
    EXPECT_THAT(beidouLines(4, 0.0F, range(6, 20)),
                ElementsAre(headerLine("C pha  0.00000  02 C19 C20", label), altLineOfTen("13"),
                            headerLine(blanks(18) + " C16 C17 C18", label)));
}

TEST(PhaseShiftBeidou, BothPassesCanContinue) {
    std::vector<int> satellites = {1, 2, 3, 4, 5};
    for (const int number : range(6, 16)) {
        satellites.push_back(number);
    }
    for (const int number : range(19, 24)) {
        satellites.push_back(number);
    }
    EXPECT_THAT(beidouLines(4, 0.0F, satellites),
                ElementsAre("C pha  0.00000  11 C01 C02 C03 C04 C05 C19 C20 C21 C22 C23  SYS / PHASE SHIFT",
                            headerLine(blanks(18) + " C24", label), altLineOfTen("11"),
                            headerLine(blanks(18) + " C16", label)));
}

// Deliberate: the count goes over all 61 entries, the listing over the first 32.
TEST(PhaseShiftBeidou, SatellitesBehindThe32ndEntryAreCountedButNotListed) {
    std::vector<int> satellites = range(6, 37);
    satellites.insert(satellites.end(), {59, 60, 61});
    const Lines lines = beidouLines(0, 0.0F, satellites);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], "C pha  0.00000  03" + blanks(30) + "SYS / PHASE SHIFT");
    EXPECT_EQ(lines[1], altLineOfTen("32"));
}

TEST(PhaseShiftBeidou, AllSixtyOneEntriesAreCounted) {
    const Lines lines = beidouLines(5, 0.0F, range(1, 61));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "C pha  0.00000  61 C01 C02 C03 C04 C05 C06 C07 C08 C09 C10  SYS / PHASE SHIFT");
    EXPECT_EQ(lines[1], headerLine(blanks(18) + " C11 C12 C13 C14 C15 C16 C17 C18 C19 C20", label));
}

// The tenth stands in the 32nd entry. The walk goes on behind it while its own running number, one lower
// than the entry's, is below the use count of 32: one entry more.
TEST(PhaseShiftBeidou, TheContinuationReachesOneEntryPastTheUseCount) {
    std::vector<int> satellites = range(1, 27);
    satellites.insert(satellites.end(), {59, 60, 61, 62, 63, 64, 65});
    const Lines lines = beidouLines(0, 0.0F, satellites);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0], "C pha  0.00000  12 C01 C02 C03 C04 C05 C59 C60 C61 C62 C63  SYS / PHASE SHIFT");
    EXPECT_EQ(lines[1], blanks(18) + " C64" + blanks(34) + "SYS / PHASE SHIFT");
}

TEST(PhaseShiftBeidou, WithoutAUseCountNothingIsWritten) {
    Signals signals;
    signals.signal(Constellation::beidou, 0, "L2I", 0.0F, {3, 10});
    EXPECT_EQ(testsupport::written([&](orbconv::TextWriter& out) {
                  orbconv::writeBeidouPhaseShift(out, 1, 0, *signals.survey);
              }),
              "");
    signals.survey->signalUseCount[4][0] = 1;
    EXPECT_EQ(testsupport::splitLines(testsupport::written([&](orbconv::TextWriter& out) {
                  orbconv::writeBeidouPhaseShift(out, 1, 0, *signals.survey);
              })).size(),
              2U);
}

TEST(PhaseShiftBeidou, ANumberOfThreeDigitsMovesTheRestByOne) {
    EXPECT_THAT(beidouLines(0, 0.0F, {7, 200}),
                ElementsAre("C pha  0.00000  01 C200" + blanks(38) + "SYS / PHASE SHIFT",
                            headerLine("C alt  0.50000  01 C07", label)));
}

}  // namespace phaseShiftTest
}  // namespace
