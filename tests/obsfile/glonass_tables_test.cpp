// "GLONASS SLOT / FRQ #" and "GLONASS COD/PHS/BIS".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "obsfile/header_tables.h"
#include "support/conversion.h"
#include "support/obs_text.h"
#include "support/staging.h"

namespace {

using testing::ElementsAre;
using testsupport::blanks;
using testsupport::headerLine;
using Lines = std::vector<std::string>;

constexpr std::string_view slotLabel = "GLONASS SLOT / FRQ #";

Lines slotLines(orbconv::GlonassSlotTable& table) {
    return testsupport::splitLines(
        testsupport::written([&](orbconv::TextWriter& out) { orbconv::writeGlonassSlots(out, table); }));
}

// Slots 1 to `count`, each with its own number as the channel.
orbconv::GlonassSlotTable firstSlots(int count) {
    orbconv::GlonassSlotTable table;
    for (int i = 0; i < count; ++i) {
        table.slot[static_cast<std::size_t>(i)] = i + 1;
        table.frequencyNumber[static_cast<std::size_t>(i)] = i + 1;
    }
    table.count = count;
    return table;
}

Lines linesOfFirstSlots(int count) {
    orbconv::GlonassSlotTable table = firstSlots(count);
    return slotLines(table);
}

constexpr std::string_view slots1To8 = " R01  1 R02  2 R03  3 R04  4 R05  5 R06  6 R07  7 R08  8";
constexpr std::string_view slots9To16 = " R09  9 R10 10 R11 11 R12 12 R13 13 R14 14 R15 15 R16 16";
constexpr std::string_view slots17To24 = " R17 17 R18 18 R19 19 R20 20 R21 21 R22 22 R23 23 R24 24";
constexpr std::string_view slots25To32 = " R25 25 R26 26 R27 27 R28 28 R29 29 R30 30 R31 31 R32 32";

std::string fullLine(std::string_view count, std::string_view entries) {
    return std::string(count).append(entries).append(" ").append(slotLabel);
}

TEST(GlonassSlots, NoSlotGivesACountOfZeroAnd57Blanks) {
    EXPECT_THAT(linesOfFirstSlots(0), ElementsAre("  0" + blanks(57) + std::string(slotLabel)));
}

TEST(GlonassSlots, AnEntryTakesSevenColumnsWithItsSignedChannel) {
    orbconv::GlonassSlotTable table;
    table.slot = {3, 24};
    table.frequencyNumber = {-7, 6};
    table.count = 2;
    EXPECT_THAT(slotLines(table), ElementsAre("  2 R03 -7 R24  6" + blanks(43) + std::string(slotLabel)));
}

TEST(GlonassSlots, SevenSlotsArePaddedWithEightBlanks) {
    EXPECT_THAT(
        linesOfFirstSlots(7),
        ElementsAre("  7 R01  1 R02  2 R03  3 R04  4 R05  5 R06  6 R07  7        GLONASS SLOT / FRQ #"));
}

TEST(GlonassSlots, EightSlotsHaveASecondLineWithoutEntries) {
    EXPECT_THAT(linesOfFirstSlots(8),
                ElementsAre(fullLine("  8", slots1To8), blanks(60) + std::string(slotLabel)));
}

TEST(GlonassSlots, TheNinthStandsInTheSecondLineBehindThreeBlanks) {
    EXPECT_THAT(linesOfFirstSlots(9),
                ElementsAre(fullLine("  9", slots1To8), headerLine("    R09  9", slotLabel)));
}

TEST(GlonassSlots, FifteenSlotsTakeTwoLines) {
    EXPECT_THAT(linesOfFirstSlots(15),
                ElementsAre(fullLine(" 15", slots1To8),
                            headerLine("    R09  9 R10 10 R11 11 R12 12 R13 13 R14 14 R15 15", slotLabel)));
}

TEST(GlonassSlots, SixteenSlotsHaveAThirdLineWithoutEntries) {
    EXPECT_THAT(linesOfFirstSlots(16), ElementsAre(fullLine(" 16", slots1To8), fullLine("   ", slots9To16),
                                                   blanks(60) + std::string(slotLabel)));
}

TEST(GlonassSlots, TwentyFourSlotsHaveAFourthLineWithoutEntries) {
    EXPECT_THAT(linesOfFirstSlots(24),
                ElementsAre(fullLine(" 24", slots1To8), fullLine("   ", slots9To16),
                            fullLine("   ", slots17To24), blanks(60) + std::string(slotLabel)));
}

TEST(GlonassSlots, AFullTableOf32TakesFourLinesAndNoFifth) {
    EXPECT_THAT(linesOfFirstSlots(32),
                ElementsAre(fullLine(" 32", slots1To8), fullLine("   ", slots9To16),
                            fullLine("   ", slots17To24), fullLine("   ", slots25To32)));
}

TEST(GlonassSlots, EntriesAreSortedBySlotTogetherWithTheirChannels) {
    orbconv::GlonassSlotTable table;
    table.slot = {22, 1, 9};
    table.frequencyNumber = {-3, 5, -2};
    table.count = 3;
    EXPECT_THAT(slotLines(table), ElementsAre(headerLine("  3 R01  5 R09 -2 R22 -3", slotLabel)));
}

TEST(GlonassSlots, AFullTableInReverseIsSortedWhole) {
    orbconv::GlonassSlotTable table = firstSlots(32);
    std::ranges::reverse(table.slot);
    std::ranges::reverse(table.frequencyNumber);
    slotLines(table);
    EXPECT_EQ(table.slot, firstSlots(32).slot);
    EXPECT_EQ(table.frequencyNumber, firstSlots(32).frequencyNumber);
}

TEST(GlonassSlots, AFreeEntryStaysInItsPlaceAndPartsTheSort) {
    orbconv::GlonassSlotTable table;
    table.slot = {7, 3, 0, 5, 2};
    table.frequencyNumber = {1, 2, 3, 4, 5};
    slotLines(table);
    EXPECT_THAT(std::vector<int>(table.slot.begin(), table.slot.begin() + 5), ElementsAre(3, 7, 0, 2, 5));
    EXPECT_THAT(std::vector<int>(table.frequencyNumber.begin(), table.frequencyNumber.begin() + 5),
                ElementsAre(2, 1, 3, 5, 4));
}

TEST(GlonassSlots, EqualSlotsKeepTheirOrder) {
    orbconv::GlonassSlotTable table;
    table.slot = {4, 4, 2};
    table.frequencyNumber = {1, 2, 3};
    EXPECT_THAT(slotLines(table), ElementsAre(headerLine("  3 R02  3 R04  1 R04  2", slotLabel)));
}

TEST(GlonassSlots, ASlotOfThreeDigitsMovesTheRestByOne) {
    orbconv::GlonassSlotTable table;
    table.slot = {254, 1};
    table.frequencyNumber = {127, -128};
    table.count = 2;
    EXPECT_THAT(slotLines(table), ElementsAre("  2 R01-128 R254127" + blanks(43) + std::string(slotLabel)));
}

// ---- biases ----

struct BiasCase {
    std::vector<std::size_t> slots;  // of the code list
    std::string line;
};

std::ostream& operator<<(std::ostream& out, const BiasCase& example) {
    return out << example.line;
}

class GlonassBiases : public testing::TestWithParam<BiasCase> {};

TEST_P(GlonassBiases, EachPresentCodeTakes13ColumnsAheadOfEightBlanks) {
    orbconv::ObsCodeList codes{};
    for (const std::size_t slot : GetParam().slots) {
        const std::array<orbconv::SignalText, 4> names = {"C1C", "C1P", "C2C", "C2P"};
        codes[slot] = slot % 5 == 0 && slot < 20 ? names[slot / 5] : orbconv::SignalText("L9Z");
    }
    EXPECT_EQ(
        testsupport::written([&](orbconv::TextWriter& out) { orbconv::writeGlonassBiases(out, codes); }),
        GetParam().line + "GLONASS COD/PHS/BIS\n");
}

INSTANTIATE_TEST_SUITE_P(
    Codes, GlonassBiases,
    testing::Values(BiasCase{{}, "        "},  //
                    BiasCase{{0}, " C1C    0.000        "}, BiasCase{{15}, " C2P    0.000        "},
                    BiasCase{{0, 10}, " C1C    0.000 C2C    0.000        "},
                    BiasCase{{5, 10, 15}, " C1P    0.000 C2C    0.000 C2P    0.000        "},
                    BiasCase{{0, 5, 10, 15}, " C1C    0.000 C1P    0.000 C2C    0.000 C2P    0.000        "},
                    // Other slots than the four code ones, C3X of the fifth signal among them, count for
                    // nothing.
                    BiasCase{{1, 6, 11, 16, 20, 25, 30}, "        "}));

}  // namespace
