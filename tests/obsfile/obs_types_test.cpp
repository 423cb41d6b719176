// "SYS / # / OBS TYPES": rows of thirteen codes, their paddings, and BeiDou's own way of counting.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "obsfile/observation_header.h"
#include "support/conversion.h"
#include "support/obs_text.h"
#include "support/staging.h"

namespace {
namespace obsTypesTest {

using orbconv::Constellation;
using orbconv::SignalText;
using testing::ElementsAre;
using testsupport::blanks;
using testsupport::headerLine;
using testsupport::setCodes;
using Lines = std::vector<std::string>;

constexpr std::string_view label = "SYS / # / OBS TYPES";

Lines obsTypes(orbconv::SignalSurvey& survey, const orbconv::RunOptions& options = {}) {
    return testsupport::splitLines(testsupport::written(
        [&](orbconv::TextWriter& out) { orbconv::writeObsTypes(out, options, survey); }));
}

// A code that shows its slot: "c07" in slot 7.
SignalText slotCode(std::size_t slot) {
    const char text[4] = {'c', static_cast<char>('0' + slot / 10), static_cast<char>('0' + slot % 10), 0};
    return SignalText(text);
}

// The first `count` slots of a constellation filled, without gaps, with the codes c00, c01 and so on.
std::unique_ptr<orbconv::SignalSurvey> filled(Constellation constellation, std::size_t count) {
    auto survey = std::make_unique<orbconv::SignalSurvey>();
    for (std::size_t slot = 0; slot < count; ++slot) {
        survey->codes(constellation)[slot] = slotCode(slot);
    }
    survey->obsCodeCount[orbconv::indexOf(constellation)] = static_cast<std::int32_t>(count);
    return survey;
}

Lines gpsLines(std::size_t count) {
    return obsTypes(*filled(Constellation::gps, count));
}

constexpr std::string_view rowOf0To12 = " c00 c01 c02 c03 c04 c05 c06 c07 c08 c09 c10 c11 c12";
constexpr std::string_view rowOf13To25 = "c13 c14 c15 c16 c17 c18 c19 c20 c21 c22 c23 c24 c25 ";
constexpr std::string_view rowOf26To38 = "c26 c27 c28 c29 c30 c31 c32 c33 c34 c35 c36 c37 c38 ";

std::string firstRow(std::string_view count) {
    return std::string("G").append("  ").append(count).append(rowOf0To12).append("  ").append(label);
}

// ---- one constellation, all but BeiDou ----

TEST(ObsTypes, CodesStandBehindTheCountEachWithABlankAhead) {
    orbconv::SignalSurvey survey;
    setCodes(survey.codes(Constellation::gps), 0, {"C1C", "L1C", "D1C", "S1C"});
    setCodes(survey.codes(Constellation::gps), 5, {"C2W", "L2W", "D2W", "S2W"});
    survey.obsCodeCount[0] = 8;
    EXPECT_THAT(obsTypes(survey),
                ElementsAre("G    8 C1C L1C D1C S1C C2W L2W D2W S2W" + blanks(22) + "SYS / # / OBS TYPES"));
}

TEST(ObsTypes, EmptySlotsAreLeftOutWhereverTheyStand) {
    orbconv::SignalSurvey survey;
    setCodes(survey.codes(Constellation::galileo), 10, {"C7X"});
    setCodes(survey.codes(Constellation::galileo), 22, {"D5X", "S5X"});
    setCodes(survey.codes(Constellation::galileo), 59, {"Z9Z"});
    survey.obsCodeCount[2] = 4;
    EXPECT_THAT(obsTypes(survey), ElementsAre(headerLine("E    4 C7X D5X S5X Z9Z", label)));
}

TEST(ObsTypes, AConstellationWithoutCodesHasNoLine) {
    EXPECT_THAT(gpsLines(0), ElementsAre());
}

TEST(ObsTypes, TheCountDecidesAndNotTheList) {
    const auto survey = filled(Constellation::navic, 8);
    survey->obsCodeCount[5] = 3;
    EXPECT_THAT(obsTypes(*survey), ElementsAre(headerLine("I    3 c00 c01 c02", label)));
}

TEST(ObsTypes, OneCode) {
    EXPECT_THAT(gpsLines(1), ElementsAre(headerLine("G    1 c00", label)));
}

TEST(ObsTypes, TwelveCodesArePaddedWithSixBlanks) {
    EXPECT_THAT(gpsLines(12), ElementsAre("G   12 c00 c01 c02 c03 c04 c05 c06 c07 c08 c09 c10 c11      "
                                          "SYS / # / OBS TYPES"));
}

TEST(ObsTypes, ThirteenCodesFillOneLine) {
    EXPECT_THAT(gpsLines(13), ElementsAre(firstRow(" 13")));
}

TEST(ObsTypes, TheFourteenthCodeStandsInARowOfItsOwnBehindSevenBlanks) {
    EXPECT_THAT(gpsLines(14), ElementsAre(firstRow(" 14"), headerLine("       c13", label)));
}

TEST(ObsTypes, TwentyFiveCodesArePaddedWithFiveBlanks) {
    EXPECT_THAT(gpsLines(25), ElementsAre(firstRow(" 25"),
                                          "       c13 c14 c15 c16 c17 c18 c19 c20 c21 c22 c23 c24      "
                                          "SYS / # / OBS TYPES"));
}

TEST(ObsTypes, TwentySixCodesFillTwoRowsTheSecondPaddedByOneBlank) {
    EXPECT_THAT(gpsLines(26),
                ElementsAre(firstRow(" 26"), blanks(7).append(rowOf13To25).append(" ").append(label)));
}

TEST(ObsTypes, AThirdRowBringsTheLabelToColumn61) {
    EXPECT_THAT(gpsLines(30),
                ElementsAre(firstRow(" 30"), blanks(7).append(rowOf13To25).append(" ").append(label),
                            headerLine("       c26 c27 c28 c29", label)));
}

TEST(ObsTypes, ThirtyNineCodesFillThreeRows) {
    EXPECT_THAT(gpsLines(39),
                ElementsAre(firstRow(" 39"), blanks(7).append(rowOf13To25).append(" ").append(label),
                            blanks(7).append(rowOf26To38).append(" ").append(label)));
}

TEST(ObsTypes, MoreThan39CodesLoseTheRestButAreCounted) {
    const Lines full = gpsLines(60);
    ASSERT_EQ(full.size(), 3U);
    EXPECT_EQ(full[0], firstRow(" 60"));
    EXPECT_EQ(full[2], blanks(7).append(rowOf26To38).append(" ").append(label));
}

TEST(ObsTypes, GapsAheadOfASecondRowAreStillSkippedThere) {
    orbconv::SignalSurvey survey;
    for (std::size_t band = 0; band < 4; ++band) {
        for (std::size_t kind = 0; kind < 4; ++kind) {
            survey.codes(Constellation::galileo)[band * 5 + kind] = slotCode(band * 5 + kind);
        }
    }
    survey.obsCodeCount[2] = 16;
    EXPECT_THAT(obsTypes(survey),
                ElementsAre("E   16 c00 c01 c02 c03 c05 c06 c07 c08 c10 c11 c12 c13 c15  SYS / # / OBS TYPES",
                            headerLine("       c16 c17 c18", label)));
}

// ---- all constellations ----

TEST(ObsTypes, ConstellationsStandInTheOrderGREJCIS) {
    orbconv::SignalSurvey survey;
    for (std::size_t c = 0; c < orbconv::countedConstellations; ++c) {
        survey.obsCodeList[c][0] = slotCode(c);
        survey.obsCodeCount[c] = 1;
    }
    survey.obsCodeCount[4] = 5;
    orbconv::RunOptions options;
    options.includeQzss = options.includeSbas = true;
    EXPECT_THAT(obsTypes(survey, options),
                ElementsAre(headerLine("G    1 c00", label), headerLine("R    1 c01", label),
                            headerLine("E    1 c02", label), headerLine("J    1 c03", label),
                            headerLine("C    1 c04", label), headerLine("I    1 c05", label),
                            headerLine("S    1 c06", label)));
}

TEST(ObsTypes, QzssAndSbasAreSwitchedOffInARun) {
    EXPECT_THAT(obsTypes(*filled(Constellation::qzss, 4)), ElementsAre());
    EXPECT_THAT(obsTypes(*filled(Constellation::sbas, 4)), ElementsAre());
}

TEST(ObsTypes, APlaceholderIsPrintedAsItStands) {
    orbconv::SignalSurvey survey;
    setCodes(survey.codes(Constellation::qzss), 0, {"C1X", "nan", "n1n", "---"});
    survey.obsCodeCount[3] = 4;
    orbconv::RunOptions options;
    options.includeQzss = true;
    EXPECT_THAT(obsTypes(survey, options), ElementsAre(headerLine("J    4 C1X nan n1n ---", label)));
}

struct LeftOut {
    Constellation constellation;
    bool orbconv::RunOptions::*flag;
};

class ObsTypesLeftOut : public testing::TestWithParam<LeftOut> {};

TEST_P(ObsTypesLeftOut, AConstellationWhoseFlagIsClearedHasNoLine) {
    const auto survey = filled(GetParam().constellation, 20);
    orbconv::RunOptions options;
    options.*GetParam().flag = false;
    EXPECT_THAT(obsTypes(*survey, options), ElementsAre());
}

INSTANTIATE_TEST_SUITE_P(
    Flags, ObsTypesLeftOut,
    testing::Values(LeftOut{Constellation::gps, &orbconv::RunOptions::includeGps},
                    LeftOut{Constellation::glonass, &orbconv::RunOptions::includeGlonass},
                    LeftOut{Constellation::galileo, &orbconv::RunOptions::includeGalileo},
                    LeftOut{Constellation::beidou, &orbconv::RunOptions::includeBeidou},
                    LeftOut{Constellation::navic, &orbconv::RunOptions::includeNavic}));

// ---- BeiDou ----

// A BeiDou survey of whole bands: the four codes of each, and the second phase where the band has one.
struct BeidouBands {
    std::vector<std::size_t> bands;
    bool secondPhases = true;
};

std::unique_ptr<orbconv::SignalSurvey> beidou(const BeidouBands& wanted) {
    static const std::array<std::array<SignalText, 5>, 6> codes = {{{"C2I", "L2I", "D2I", "S2I", "L2I"},
                                                                    {"C8X", "L8X", "D8X", "S8X", {}},
                                                                    {"C7I", "L7I", "D7I", "S7I", "L7Z"},
                                                                    {"C6I", "L6I", "D6I", "S6I", "L6I"},
                                                                    {"C5X", "L5X", "D5X", "S5X", "L5x"},
                                                                    {"C1X", "L1X", "D1X", "S1X", "L1X"}}};
    auto survey = std::make_unique<orbconv::SignalSurvey>();
    for (const std::size_t band : wanted.bands) {
        const std::size_t kinds = wanted.secondPhases ? 5 : 4;
        std::copy_n(codes[band].begin(), kinds,
                    survey->codes(Constellation::beidou).begin() + static_cast<std::ptrdiff_t>(band * 5));
    }
    orbconv::countObsCodes(*survey);
    return survey;
}

TEST(ObsTypesBeidou, CountIsFourLowerAndSecondPhasesAreNotListed) {
    EXPECT_THAT(obsTypes(*beidou({.bands = {0, 2, 3}})),
                ElementsAre("C   11 C2I L2I D2I S2I C7I L7I D7I S7I C6I" + blanks(18) + std::string(label)));
}

TEST(ObsTypesBeidou, OneBandWithASecondPhaseListsItsCodeAlone) {
    EXPECT_THAT(obsTypes(*beidou({.bands = {0}})), ElementsAre(headerLine("C    1 C2I", label)));
}

TEST(ObsTypesBeidou, OneBandOfFourCodesHasNoLine) {
    const auto survey = beidou({.bands = {0}, .secondPhases = false});
    EXPECT_THAT(obsTypes(*survey), ElementsAre());
    EXPECT_EQ(survey->obsCodeCount[4], 0);
}

TEST(ObsTypesBeidou, TheLoweredCountStaysInTheTable) {
    const auto survey = beidou({.bands = {0, 2}});
    obsTypes(*survey);
    EXPECT_EQ(survey->obsCodeCount[4], 6);
}

TEST(ObsTypesBeidou, TheCountIsLoweredAlsoWithoutAnyCodeAndWhenLeftOut) {
    orbconv::SignalSurvey survey;
    orbconv::RunOptions options;
    options.includeBeidou = false;
    obsTypes(survey, options);
    EXPECT_EQ(survey.obsCodeCount[4], -4);
    EXPECT_EQ(survey.obsCodeCount[0], 0);
}

TEST(ObsTypesBeidou, ASecondPhaseAloneIsNotListed) {
    orbconv::SignalSurvey survey;
    setCodes(survey.codes(Constellation::beidou), 4, {"L2I"});
    setCodes(survey.codes(Constellation::beidou), 10, {"C7I", "L7I", "D7I", "S7I", "L7Z"});
    survey.obsCodeCount[4] = 6;
    EXPECT_THAT(obsTypes(survey), ElementsAre(headerLine("C    2 C7I", label)));
}

// Row 0 ends behind fifteen places, row 1 begins at place 13 again.
TEST(ObsTypesBeidou, FourBandsRepeatTheirLastCodeInTheSecondRow) {
    EXPECT_THAT(obsTypes(*beidou({.bands = {0, 2, 3, 4}})),
                ElementsAre(headerLine("C   16 C2I L2I D2I S2I C7I L7I D7I S7I C6I L6I D6I S6I", label),
                            "       S6I C5X " + blanks(49) + std::string(label)));
}

TEST(ObsTypesBeidou, FirstFourBandsRepeatTheThirteenthCode) {
    EXPECT_THAT(obsTypes(*beidou({.bands = {0, 1, 2, 3}})),
                ElementsAre("C   15 C2I L2I D2I S2I C8X L8X D8X S8X C7I L7I D7I S7I C6I  SYS / # / OBS TYPES",
                            headerLine("       C6I", label)));
}

TEST(ObsTypesBeidou, AllBandsWithSecondPhases) {
    EXPECT_THAT(obsTypes(*beidou({.bands = {0, 1, 2, 3, 4, 5}})),
                ElementsAre("C   25 C2I L2I D2I S2I C8X L8X D8X S8X C7I L7I D7I S7I C6I  SYS / # / OBS TYPES",
                            headerLine("       C6I L6I D6I S6I C5X L5X D5X S5X C1X", label)));
}

// Without second phases to leave out, the first row takes fifteen codes and keeps two blanks of padding.
TEST(ObsTypesBeidou, FifteenCodesInTheFirstRowPushTheLabelToColumn69) {
    EXPECT_THAT(obsTypes(*beidou({.bands = {0, 1, 2, 3, 5}, .secondPhases = false})),
                ElementsAre("C   16 C2I L2I D2I S2I C8X L8X D8X S8X C7I L7I D7I S7I C6I L6I D6I  "
                            "SYS / # / OBS TYPES",
                            "       L6I D6I S6I " + blanks(33) + std::string(label)));
}

// More codes than a log can bring: the second row takes sixteen places, the third begins at place 26.
TEST(ObsTypesBeidou, RowsOverlapByTwoAndThreePlaces) {
    EXPECT_THAT(
        obsTypes(*filled(Constellation::beidou, 34)),
        ElementsAre(headerLine("C   30 c00 c01 c02 c03 c05 c06 c07 c08 c10 c11 c12 c13", label),
                    "       c13 c15 c16 c17 c18 c20 c21 c22 c23 c25 c26 c27 c28      " + std::string(label),
                    "       c26 c27 c28 c29 " + blanks(41) + std::string(label)));
}

// The last band's second phase is not among those left out.
TEST(ObsTypesBeidou, TheSecondPhaseOfTheLastBandIsListed) {
    orbconv::SignalSurvey survey;
    setCodes(survey.codes(Constellation::beidou), 25, {"C1X", "L1X", "D1X", "S1X", "Z9Z"});
    setCodes(survey.codes(Constellation::beidou), 30, {"x30", "x31", "x32", "x33"});
    survey.obsCodeCount[4] = 9;
    EXPECT_THAT(obsTypes(survey), ElementsAre(headerLine("C    5 C1X L1X D1X S1X Z9Z", label)));
}

}  // namespace obsTypesTest
}  // namespace
