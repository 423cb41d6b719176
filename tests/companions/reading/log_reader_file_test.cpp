// Logs in files: read piece by piece, they give what they give in memory.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "companions/support/reading_items.h"
#include "reading/log_reader.h"
#include "samplelog/log_builder.h"

namespace orbconv::reading {
namespace {

using samplelog::LogBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::FoundItems;
using testsupport::itemsOf;
using testsupport::itemsOfFile;

constexpr std::size_t window = std::size_t{512} * 1024;

void expectSame(const FoundItems& file, const FoundItems& memory) {
    EXPECT_TRUE(file.tiled);
    EXPECT_FALSE(file.failed);
    EXPECT_TRUE(file.messages == memory.messages) << file.messages.size() << ' ' << memory.messages.size();
    EXPECT_EQ(file.damages, memory.damages);
}

// Messages of the greatest length, just over `size` bytes of them.
std::string filler(std::size_t size) {
    LogBuilder log;
    while (log.size() < size) {
        log.message("zz", std::string(0xFFE, 'x'));
    }
    return log.take();
}

std::string smallMessages(std::size_t count) {
    LogBuilder log;
    for (std::size_t i = 0; i < count; ++i) {
        log.time(static_cast<std::uint32_t>(i)).nn({1, 2}).td();
    }
    return log.take();
}

TEST(LogReaderFileTest, EmptyFile_EndsAtOnce) {
    expectSame(itemsOfFile(""), {});
}

TEST(LogReaderFileTest, SmallFile_AsInMemory) {
    const std::string log = smallMessages(3) + "damage" + smallMessages(3);
    expectSame(itemsOfFile(log), itemsOf(log));
    EXPECT_THAT(itemsOfFile(log).damages, ElementsAre(Damage{93, 6}));
}

TEST(LogReaderFileTest, ManyWindows_EveryMessageOnce) {
    const std::string log = smallMessages(100000);
    const FoundItems items = itemsOfFile(log);
    EXPECT_EQ(items.messages.size(), 300000U);
    EXPECT_THAT(items.damages, IsEmpty());
    expectSame(items, itemsOf(log));
}

// The damage and what follows it stand at every distance from where a piece of the file ends.
TEST(LogReaderFileTest, DamageAroundTheEndOfAPiece_AsInMemory) {
    const std::string ahead = filler(window - 20000);
    const std::string behind = smallMessages(400) + filler(40000) + smallMessages(400);
    std::mt19937 random(7);
    for (std::size_t shift = 0; shift < 24; ++shift) {
        LogBuilder small;
        small.message("zz", std::string(random() % 800, 'y'));
        std::string log = ahead + small.take() + behind;
        for (std::size_t i = 0; i < 60; ++i) {
            log[window - 30000 + random() % 60000] = static_cast<char>(random());
        }
        expectSame(itemsOfFile(log), itemsOf(log));
    }
}

TEST(LogReaderFileTest, DamageGreaterThanAPiece_IsOneStretch) {
    const std::string first = smallMessages(5);
    const std::string log = first + std::string(3 * window + 12345, '\0') + first;
    const FoundItems items = itemsOfFile(log);
    EXPECT_EQ(items.messages.size(), 30U);
    EXPECT_THAT(items.damages, ElementsAre(Damage{first.size(), 3 * window + 12345}));
    expectSame(items, itemsOf(log));
}

TEST(LogReaderFileTest, NoiseGreaterThanAPiece_EndsWithTheFile) {
    std::string noise(2 * window + 99, '\0');
    std::mt19937 random(11);
    for (char& byte : noise) {
        byte = static_cast<char>(random());
    }
    const FoundItems items = itemsOfFile(smallMessages(1) + noise);
    EXPECT_EQ(items.messages.size(), 3U);
    EXPECT_THAT(items.damages, ElementsAre(Damage{31, noise.size()}));
}

TEST(LogReaderFileTest, CutTailBehindManyPieces_IsDamage) {
    const std::string ahead = smallMessages(40000);
    const std::string log = ahead + LogBuilder().ge123({.sv = 2}).bytes().substr(0, 100);
    const FoundItems items = itemsOfFile(log);
    EXPECT_EQ(items.messages.size(), 120000U);
    EXPECT_THAT(items.damages, ElementsAre(Damage{ahead.size(), 100}));
}

}  // namespace
}  // namespace orbconv::reading
