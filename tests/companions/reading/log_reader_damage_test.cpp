// Damage: where it stands, how much it is, and that nothing behind it is lost.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "companions/support/reading_items.h"
#include "reading/log_reader.h"
#include "samplelog/log_builder.h"

namespace orbconv::reading {
namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::FoundItems;
using testsupport::itemsOf;

// An epoch of nine messages.
LogBuilder& epoch(LogBuilder& log, std::uint32_t timeOfDayMs = 1000) {
    return log.time(timeOfDayMs)
        .rd(2024, 3, 5)
        .sx({{1, 5}, {2, -3}, {6, 20}})
        .nn({7})
        .rx({100, 200, 300})
        .flags(Band::c, {0x40, 0x40, 0x40})
        .phases(Band::c, {1, 2, 3})
        .strengths(Band::c, {160, 170, 180})
        .td();
}
constexpr std::string_view epochIds = "~~ RD SX NN rx FC cp CE TD";

std::string epochBytes() {
    LogBuilder log;
    return epoch(log).take();
}

std::string twice(std::string_view ids) {
    return std::string(ids) + " " + std::string(ids);
}

std::string noise(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

TEST(LogReaderDamageTest, Zeros_OneStretchOfTheirSize) {
    const std::string first = epochBytes();
    for (const std::size_t size : {1U, 2U, 3U, 7U, 100U, 4096U, 70000U}) {
        const FoundItems items = itemsOf(first + std::string(size, '\0') + first);
        EXPECT_EQ(items.ids(), twice(epochIds)) << size;
        // A single byte may be the one byte more that some messages have.
        if (size > 1) {
            EXPECT_THAT(items.damages, ElementsAre(Damage{first.size(), size}));
        }
        EXPECT_TRUE(items.tiled);
    }
}

TEST(LogReaderDamageTest, Noise_OneStretchOfItsSize) {
    const std::string first = epochBytes();
    for (unsigned seed = 0; seed < 50; ++seed) {
        const std::size_t size = 2 + seed * seed * 4;
        const FoundItems items = itemsOf(first + noise(size, seed) + first);
        EXPECT_EQ(items.ids(), twice(epochIds)) << seed;
        EXPECT_THAT(items.damages, ElementsAre(Damage{first.size(), size})) << seed;
        EXPECT_TRUE(items.tiled);
    }
}

TEST(LogReaderDamageTest, AtTheStart_IsFoundToo) {
    const FoundItems items = itemsOf("half a message\n" + epochBytes());
    EXPECT_EQ(items.ids(), epochIds);
    EXPECT_THAT(items.damages, ElementsAre(Damage{0, 15}));
}

TEST(LogReaderDamageTest, AtTheEnd_IsFoundToo) {
    const std::string log = epochBytes();
    const FoundItems items = itemsOf(log + noise(300, 4));
    EXPECT_EQ(items.ids(), epochIds);
    EXPECT_THAT(items.damages, ElementsAre(Damage{log.size(), 300}));
}

TEST(LogReaderDamageTest, NothingButDamage_IsOneStretch) {
    for (const std::string& log : {std::string(100000, '\0'), noise(100000, 9), std::string(1, 'x'),
                                   std::string("RD006"), std::string(100000, '\n')}) {
        const FoundItems items = itemsOf(log);
        EXPECT_THAT(items.messages, IsEmpty());
        EXPECT_THAT(items.damages, ElementsAre(Damage{0, log.size()}));
    }
}

TEST(LogReaderDamageTest, CutTail_IsDamageFromTheLastMessageOn) {
    LogBuilder log;
    epoch(log);
    const std::size_t whole = log.size();
    log.ge123({.sv = 4});
    const FoundItems items = itemsOf(std::string_view(log.bytes()).substr(0, whole + 60));
    EXPECT_EQ(items.ids(), epochIds);
    EXPECT_THAT(items.damages, ElementsAre(Damage{whole, 60}));
}

// Wherever the first log ends, every message of the second one is found.
TEST(LogReaderDamageTest, LogsJoinedInTheMiddleOfAMessage_SecondOneIsWhole) {
    LogBuilder log;
    epoch(log).ge123({.sv = 4}).ne103({.sv = 9}).kvMarker("A marker");
    const std::string second = epochBytes();
    const auto expected = itemsOf(second).messages;
    for (std::size_t size = 0; size <= log.size(); ++size) {
        const FoundItems items = itemsOf(log.bytes().substr(0, size) + second);
        EXPECT_TRUE(items.tiled);
        ASSERT_GE(items.messages.size(), expected.size()) << size;
        const std::size_t first = items.messages.size() - expected.size();
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(items.messages[first + i].offset, size + expected[i].offset) << size;
            EXPECT_EQ(items.messages[first + i].body, expected[i].body) << size;
        }
    }
}

TEST(LogReaderDamageTest, FewerThanThreeMessagesBehindIt_AreFoundAtTheEnd) {
    const std::string first = epochBytes();
    const std::string broken = noise(50, 1);
    EXPECT_EQ(itemsOf(first + broken + LogBuilder().td().bytes()).ids(), std::string(epochIds) + " TD");
    EXPECT_EQ(itemsOf(first + broken + LogBuilder().time(1).td().bytes()).ids(),
              std::string(epochIds) + " ~~ TD");
}

TEST(LogReaderDamageTest, MessageAloneBetweenTwo_IsFound) {
    const std::string first = epochBytes();
    const std::string alone = LogBuilder().rx({1, 2, 3}).bytes();
    const FoundItems items = itemsOf(first + noise(50, 1) + alone + noise(50, 2) + first);
    EXPECT_EQ(items.ids(), std::string(epochIds) + " rx " + std::string(epochIds));
    EXPECT_THAT(items.damages,
                ElementsAre(Damage{first.size(), 50}, Damage{first.size() + 50 + alone.size(), 50}));
}

TEST(LogReaderDamageTest, TwoMessagesBetweenTwo_AreFound) {
    const std::string first = epochBytes();
    const std::string two = LogBuilder().rx({1, 2, 3}).strengths(Band::b1, {9, 8, 7}).bytes();
    const FoundItems items = itemsOf(first + noise(50, 3) + two + noise(50, 4) + first);
    EXPECT_EQ(items.ids(), std::string(epochIds) + " rx 1E " + std::string(epochIds));
}

TEST(LogReaderDamageTest, MessageAheadOfIt_IsNotLost) {
    const std::string first = epochBytes();
    for (const std::string& last :
         {LogBuilder().time(1).take(), LogBuilder().rx({1}).take(), LogBuilder().kvMarker("A").take(),
          LogBuilder().ne103({.sv = 1}, samplelog::LongNeEnd::bare).take(), LogBuilder().td().take()}) {
        for (unsigned seed = 0; seed < 20; ++seed) {
            const FoundItems items = itemsOf(first + last + noise(64, seed) + first);
            EXPECT_EQ(items.messages.size(), 19U) << last.substr(0, 2);
            EXPECT_THAT(items.damages, ElementsAre(Damage{first.size() + last.size(), 64}));
        }
    }
}

// One digit of a length wrong: that message alone is lost, whatever it claims to hold.
TEST(LogReaderDamageTest, WrongDigit_LosesNoOtherMessage) {
    LogBuilder log;
    for (std::uint32_t i = 0; i < 30; ++i) {
        epoch(log, 1000 * (i + 1));
    }
    const auto whole = itemsOf(log.bytes()).messages;
    ASSERT_EQ(whole.size(), 270U);
    for (std::size_t touched = 9; touched < 18; ++touched) {
        for (std::size_t digit = 2; digit < 5; ++digit) {
            for (const char wrong : std::string_view("0123456789ABCDEF")) {
                std::string bytes = log.bytes();
                char& place = bytes[whole[touched].offset + digit];
                if (place == wrong) {
                    continue;
                }
                place = wrong;
                const FoundItems items = itemsOf(bytes);
                EXPECT_TRUE(items.tiled);
                std::size_t found = 0;
                for (std::size_t i = 0; i < whole.size(); ++i) {
                    found += i != touched && std::ranges::count(items.messages, whole[i]) == 1 ? 1U : 0U;
                }
                EXPECT_EQ(found, whole.size() - 1) << whole[touched].id << " digit " << digit << wrong;
            }
        }
    }
}

// A message that lost as many bytes as the one behind it has ends where that one ends.
TEST(LogReaderDamageTest, BytesLostJustAsManyAsTheNextMessageHas_NextIsFound) {
    LogBuilder log;
    epoch(epoch(log));
    const std::size_t begin = log.size();
    log.rx({1, 2, 3, 4, 5, 6});
    std::string bytes = log.take();
    bytes.resize(bytes.size() - 15);
    const FoundItems items = itemsOf(bytes + LogBuilder().rx({7, 8}).bytes() + epochBytes());
    EXPECT_THAT(items.damages, ElementsAre(Damage{begin, 16}));
    EXPECT_EQ(items.ids(), twice(epochIds) + " rx " + std::string(epochIds));
}

// The reader takes a message for what it says if it is like the one before. Here the order of messages tells.
TEST(LogReaderDamageTest, MessageLikeTheOneBefore_StillDoesNotSwallow) {
    std::string bytes = epochBytes() + epochBytes();
    const std::size_t begin = bytes.size();
    bytes += std::string("rx00Dabc") + LogBuilder().time(5).bytes().substr(0, 11) + epochBytes();
    const FoundItems items = itemsOf(bytes);
    EXPECT_THAT(items.damages, ElementsAre(Damage{begin, 8}));
    EXPECT_EQ(items.ids(), twice(epochIds) + " ~~ " + std::string(epochIds));
}

TEST(LogReaderDamageTest, UnknownMessagesAtTheEnd_AreTakenOnlyFromAGoodOne) {
    const std::string unknown = LogBuilder().message("zz", "abc").message("yy", "de").take();
    EXPECT_EQ(itemsOf(epochBytes() + unknown).ids(), std::string(epochIds) + " zz yy");
    EXPECT_EQ(itemsOf(epochBytes() + std::string(20, '\0') + unknown).ids(), epochIds);
    EXPECT_EQ(itemsOf(epochBytes() + std::string(20, '\0') + unknown + unknown).ids(),
              std::string(epochIds) + " zz yy zz yy");
}

// A byte between two messages is the one that some messages have more; two are damage.
TEST(LogReaderDamageTest, SingleByteBetweenTwoMessages_BelongsToTheFirst) {
    const FoundItems items = itemsOf(epochBytes() + '\0' + epochBytes());
    EXPECT_EQ(items.ids(), twice(epochIds));
    EXPECT_THAT(items.damages, IsEmpty());
    EXPECT_EQ(items.messages[8].bytes, 12U);
}

TEST(LogReaderDamageTest, LineEndLost_LosesNoOtherMessage) {
    LogBuilder log;
    epoch(log);
    const std::size_t place = log.size();
    log.rx({1, 2, 3});
    std::string bytes = log.take();
    bytes.pop_back();
    const FoundItems items = itemsOf(bytes + epochBytes());
    EXPECT_TRUE(items.tiled);
    ASSERT_GE(items.messages.size(), 18U);
    EXPECT_EQ(items.messages[items.messages.size() - 9].offset, place + 5 + 13);
}

}  // namespace
}  // namespace orbconv::reading
