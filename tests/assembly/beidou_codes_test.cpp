// BeiDou observables depend on the class of a satellite's number, and use the fifth slot of a band for a
// second phase code.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::satellite;
using testsupport::SatEpochRecord;
using enum testsupport::Constellation;

class BeidouCodes : public testsupport::AssemblyTest {
protected:
    // Each number at the first place of an epoch of its own, with the signal of `id` present.
    void meet(std::string_view id, const std::vector<int>& numbers) {
        for (const int number : numbers) {
            list({satellite(beidou, number)});
            put(id, {0x40});
            collect();
            orbconv::clearEpochRecords(store);
        }
    }
    // The five slots of a message's band, joined by blanks, "." for an empty one.
    std::string group(std::string_view id) {
        std::string text;
        const std::size_t first = 5 * testsupport::bandOf(id);
        for (std::size_t slot = first; slot < first + 5; ++slot) {
            const std::string_view code = this->code(beidou, slot);
            text += (slot == first ? "" : " ") + std::string(code.empty() ? "." : code);
        }
        return text;
    }
    // The group that one satellite of the number makes.
    std::string groupOf(std::string_view id, int number) {
        restart();
        meet(id, {number});
        return group(id);
    }
    // The same behind satellites met before.
    std::string groupOf(std::string_view id, const std::vector<int>& numbers) {
        restart();
        meet(id, numbers);
        return group(id);
    }
};

TEST_F(BeidouCodes, BandC_Class6To58EntersOnlyASecondPhase) {
    for (const int inside : {6, 7, 18, 19, 40, 58}) {
        EXPECT_EQ(groupOf("FC", inside), ". . . . L2I") << inside;
    }
    for (const int outside : {1, 5, 59, 61, 116, 117, 255}) {
        EXPECT_EQ(groupOf("FC", outside), "C2I L2I D2I S2I .") << outside;
    }
}

TEST_F(BeidouCodes, BandC_BothClassesFillAllFiveSlots) {
    EXPECT_EQ(groupOf("FC", {20, 60}), "C2I L2I D2I S2I L2I");
    EXPECT_EQ(groupOf("FC", {60, 20}), "C2I L2I D2I S2I L2I");
}

TEST_F(BeidouCodes, Band1_HasNoClass) {
    for (const int number : {1, 5, 6, 18, 30, 58, 59, 116, 117}) {
        EXPECT_EQ(groupOf("F1", number), "C8X L8X D8X S8X .") << number;
    }
}

TEST_F(BeidouCodes, Band2_Class6To18HasASecondPhaseBesideTheOthers) {
    for (const int inside : {6, 10, 18}) {
        EXPECT_EQ(groupOf("F2", inside), "C7I L7I D7I S7I L7Z") << inside;
    }
    for (const int outside : {1, 5, 19, 58, 59, 200}) {
        EXPECT_EQ(groupOf("F2", outside), "C7I L7I D7I S7I .") << outside;
    }
    EXPECT_EQ(groupOf("F2", {19, 18}), "C7I L7I D7I S7I L7Z");
}

TEST_F(BeidouCodes, Band2_SecondPhaseIsEnteredOnce) {
    survey.codes(beidou)[14] = "old";
    meet("F2", {10});
    EXPECT_EQ(group("F2"), ". . . . old");
}

TEST_F(BeidouCodes, Band2_InsideTheClassRewritesTheFourSlots) {
    survey.codes(beidou)[10] = "old";
    meet("F2", {19});
    EXPECT_EQ(group("F2"), "old . . . .");
    meet("F2", {18});
    EXPECT_EQ(group("F2"), "C7I L7I D7I S7I L7Z");
}

TEST_F(BeidouCodes, Band3_Class6To58HasASecondPhaseBesideTheOthers) {
    for (const int inside : {6, 18, 19, 58}) {
        EXPECT_EQ(groupOf("F3", inside), "C6I L6I D6I S6I L6I") << inside;
    }
    for (const int outside : {1, 5, 59, 116, 117}) {
        EXPECT_EQ(groupOf("F3", outside), "C6I L6I D6I S6I .") << outside;
    }
    EXPECT_EQ(groupOf("F3", {60, 30}), "C6I L6I D6I S6I L6I");
}

TEST_F(BeidouCodes, Band3_SecondPhaseIsEnteredOnce) {
    survey.codes(beidou)[19] = "old";
    meet("F3", {30});
    EXPECT_EQ(group("F3"), ". . . . old");
}

TEST_F(BeidouCodes, Band5_EverySatelliteHasASecondPhaseWithALowerCaseLetter) {
    for (const int number : {1, 5, 6, 18, 19, 58, 117}) {
        EXPECT_EQ(groupOf("F5", number), "C5X L5X D5X S5X L5x") << number;
    }
}

TEST_F(BeidouCodes, Band5_SlotsBehindTheCodeAreWrittenAgainByEverySatellite) {
    for (const int number : {10, 30}) {
        restart();
        for (std::size_t slot = 20; slot < 25; ++slot) {
            survey.codes(beidou)[slot] = "old";
        }
        meet("F5", {number});
        EXPECT_EQ(group("F5"), "old L5X D5X S5X L5x") << number;
    }
}

TEST_F(BeidouCodes, BandL_NumbersTo116HaveASecondPhase) {
    for (const int inside : {0, 1, 6, 58, 59, 116}) {
        EXPECT_EQ(groupOf("Fl", inside), "C1X L1X D1X S1X L1X") << inside;
    }
    for (const int outside : {117, 255}) {
        EXPECT_EQ(groupOf("Fl", outside), "C1X L1X D1X S1X .") << outside;
    }
    EXPECT_EQ(groupOf("Fl", {117, 116}), "C1X L1X D1X S1X L1X");
}

TEST_F(BeidouCodes, BandL_SecondPhaseIsEnteredOnce) {
    survey.codes(beidou)[29] = "old";
    meet("Fl", {30});
    EXPECT_EQ(group("Fl"), ". . . . old");
}

TEST_F(BeidouCodes, ClassIsThatOfTheRecordsNumber) {
    // The list's satellite does not own the record, whose signal is still marked present.
    for (const auto& [listed, owner, codes] :
         {std::tuple{60, 20, ". . . . L2I"}, {20, 60, "C2I L2I D2I S2I ."}}) {
        restart();
        record(beidou).number = owner;
        record(beidou).signalFlags[0] = 0x40;
        list({satellite(beidou, listed)});
        collect();
        EXPECT_EQ(group("FC"), codes);
    }
}

TEST_F(BeidouCodes, OtherBandsAreLeftAlone) {
    meet("FC", {20, 60});
    for (std::size_t slot = 5; slot < 60; ++slot) {
        EXPECT_EQ(code(beidou, slot), "") << slot;
    }
}

TEST_F(BeidouCodes, OfSeveralSatellitesOfOneEpochEachEntersItsOwn) {
    list({satellite(beidou, 20), satellite(gps, 20), satellite(beidou, 60)});
    put("FC", {0x40, 0, 0x40});
    put("F2", {0x40, 0, 0});
    collect();
    EXPECT_EQ(group("FC"), "C2I L2I D2I S2I L2I");
    EXPECT_EQ(group("F2"), "C7I L7I D7I S7I .");
}

}  // namespace
