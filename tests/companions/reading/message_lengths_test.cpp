#include "reading/message_lengths.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace orbconv::reading {
namespace {

const MessageRow& row(MessageId id) {
    return messageTable[findRow(id).value()];
}

// Every length from 0 to 0xFFF that the id can have.
std::set<int> lengthsOf(MessageId id) {
    std::set<int> lengths;
    for (int length = 0; length <= longestLength; ++length) {
        if (lengthIsPossible(row(id), length)) {
            lengths.insert(length);
        }
    }
    return lengths;
}

std::set<int> everyFrom(int least, int most, int step = 1) {
    std::set<int> lengths;
    for (int length = least; length <= most; length += step) {
        lengths.insert(length);
    }
    return lengths;
}

TEST(MessageLengthsTest, Whole_AnyThatTheAreaHoldsWithTheLineEnd) {
    EXPECT_EQ(lengthsOf("~~"), everyFrom(1, 11));
    EXPECT_EQ(lengthsOf("RD"), everyFrom(1, 19));
    EXPECT_EQ(lengthsOf("PV"), everyFrom(1, 47));
    EXPECT_EQ(lengthsOf("IE"), everyFrom(1, 431));
    EXPECT_EQ(lengthsOf("ST"), everyFrom(1, 7));
}

TEST(MessageLengthsTest, Text_MayBeEmpty) {
    EXPECT_EQ(lengthsOf("TD"), everyFrom(0, 302));
    EXPECT_EQ(lengthsOf("KV"), everyFrom(0, 94));
    EXPECT_EQ(lengthsOf("MF"), everyFrom(0, 22));
}

TEST(MessageLengthsTest, TextThatNobodyReads_MayBeAsLongAsALengthFieldCanSay) {
    EXPECT_TRUE(lengthIsPossible(row(">>"), 0));
    EXPECT_TRUE(lengthIsPossible(row(">>"), 0xFFF));
}

TEST(MessageLengthsTest, ParameterText_HasFourClosingBytesAndAHundredOfText) {
    EXPECT_EQ(lengthsOf("PM"), everyFrom(4, 104));
}

TEST(MessageLengthsTest, Assignment_HasOneByteThatIsNoText) {
    EXPECT_EQ(lengthsOf("=="), everyFrom(1, 106));
}

TEST(MessageLengthsTest, Almanac_FitsTheAreaThatItShares) {
    EXPECT_EQ(lengthsOf("GA"), everyFrom(1, 176));
}

TEST(MessageLengthsTest, Array_WholeElementsAndTheChecksum) {
    EXPECT_EQ(lengthsOf("rx"), everyFrom(1, 721, 4));
    EXPECT_EQ(lengthsOf("1r"), everyFrom(1, 361, 2));
    EXPECT_EQ(lengthsOf("CE"), everyFrom(1, 181));
    EXPECT_EQ(lengthsOf("SX"), everyFrom(1, 361, 2));
    EXPECT_EQ(lengthsOf("NN"), everyFrom(1, 25));
    EXPECT_EQ(lengthsOf("FC"), everyFrom(1, 721, 2));
}

TEST(MessageLengthsTest, Forms_ThoseThatThereAre) {
    EXPECT_EQ(lengthsOf("GE"), (std::set{123, 160, 168}));
    EXPECT_EQ(lengthsOf("NE"), (std::set{88, 103}));
    EXPECT_EQ(lengthsOf("CN"), (std::set{134, 152, 160}));
}

TEST(MessageLengthsTest, OfFixedSize_JustThatAndTheChecksum) {
    EXPECT_EQ(lengthsOf("SE"), std::set{6});
}

TEST(MessageLengthsTest, ByteForEachSatelliteAndOneMore) {
    EXPECT_EQ(lengthsOf("SS"), everyFrom(2, 182));
}

TEST(MessageLengthsTest, LineEnd_TwoBehindTextsOneBehindEveryOther) {
    for (const MessageRow& each : messageTable) {
        const std::string id = {each.id.first, each.id.second};
        const bool isText = id == "KV" || id == "PM" || id == "MF" || id == "TD" || id == ">>";
        EXPECT_EQ(each.lineEndBytes, isText ? 2 : 1) << id;
    }
}

}  // namespace
}  // namespace orbconv::reading
