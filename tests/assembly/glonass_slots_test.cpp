// The channels and slots that NN and the satellite list give to the GLONASS records before an epoch is
// assembled.
#include <gtest/gtest.h>

#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::satellite;
using testsupport::satellites;
using enum testsupport::Constellation;

class GlonassRecordSlots : public testsupport::AssemblyTest {
protected:
    void assign(const std::vector<std::int64_t>& slots) {
        put("NN", slots);
        orbconv::assignGlonassSlots(staging, store);
    }
    void expectRecord(std::size_t i, std::int32_t channel, std::int32_t slot) {
        EXPECT_EQ(record(glonass, i).number, channel) << i;
        EXPECT_EQ(record(glonass, i).gloSlotNumber, slot) << i;
    }
};

TEST_F(GlonassRecordSlots, FreeRecordsTakeChannelAndSlotInTheOrderOfTheList) {
    list({satellite(gps, 9), satellite(glonass, -7), satellite(beidou, 3), satellite(glonass, 6),
          satellite(glonass, 1)});
    assign({24, 1, 9});
    expectRecord(0, -7, 24);
    expectRecord(1, 6, 1);
    expectRecord(2, 1, 9);
    expectRecord(3, 0, 0);
}

TEST_F(GlonassRecordSlots, RecordOfTheChannelTakesANewSlot) {
    list({satellite(glonass, -7)});
    assign({24});
    assign({255});
    expectRecord(0, -7, 255);
}

TEST_F(GlonassRecordSlots, RecordOfAnotherChannelIsLeftAlone) {
    record(glonass, 0).number = 5;
    record(glonass, 0).gloSlotNumber = 11;
    list({satellite(glonass, -7), satellite(glonass, 2)});
    assign({24, 3});
    expectRecord(0, 5, 11);
    expectRecord(1, 2, 3);
}

TEST_F(GlonassRecordSlots, UnknownSlotAndSlotZeroAreTaken) {
    list({satellite(glonass, 1), satellite(glonass, 2)});
    record(glonass, 1).gloSlotNumber = 7;
    assign({255, 0});
    expectRecord(0, 1, 255);
    expectRecord(1, 2, 0);
}

TEST_F(GlonassRecordSlots, ChannelZeroTakesItsSlotAndStaysFree) {
    list({satellite(glonass, 0)});
    assign({17});
    expectRecord(0, 0, 17);
}

TEST_F(GlonassRecordSlots, ShorterNnLeavesTheOthersWithTheBytesOfTheOneBefore) {
    list({satellite(glonass, 1), satellite(glonass, 2), satellite(glonass, 3)});
    put("NN", {11, 12, 13});
    assign({21});
    expectRecord(0, 1, 21);
    expectRecord(1, 2, 12);
    expectRecord(2, 3, 13);
}

TEST_F(GlonassRecordSlots, ElementsBeyondTheRoomOfNnArePassedOver) {
    list(satellites(glonass, 1, 40));
    assign(std::vector<std::int64_t>(40, 9));
    expectRecord(23, 24, 9);
    for (std::size_t i = 24; i < 32; ++i) {
        expectRecord(i, 0, 0);
    }
    EXPECT_EQ(record(galileo, 0).number, 0);
}

TEST_F(GlonassRecordSlots, EmptyListChangesNothing) {
    staleList({satellite(glonass, 1)});
    assign({9});
    expectRecord(0, 0, 0);
}

TEST_F(GlonassRecordSlots, NoFlagIsLookedAt) {
    includeEverySystem(false);
    list({satellite(glonass, 1)});
    assign({9});
    expectRecord(0, 1, 9);
}

TEST_F(GlonassRecordSlots, SlotSurvivesAClear) {
    list({satellite(glonass, 1)});
    assign({9});
    orbconv::clearEpochRecords(store);
    expectRecord(0, 0, 9);
}

TEST_F(GlonassRecordSlots, OtherConstellationsAreLeftAlone) {
    list({satellite(gps, 9), satellite(glonassCdma, 4)});
    assign({24, 1});
    for (const auto& record : store.all) {
        EXPECT_EQ(record.number, 0);
        EXPECT_EQ(record.gloSlotNumber, 0);
    }
}

}  // namespace
