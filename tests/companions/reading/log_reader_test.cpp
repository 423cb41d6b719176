// Messages that are whole, and what a message is.
#include "reading/log_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "companions/support/reading_items.h"
#include "samplelog/log_builder.h"

namespace orbconv::reading {
namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::FoundItems;
using testsupport::itemsOf;

// Three messages of a known form, for a log to begin or to end with.
LogBuilder& three(LogBuilder& log) {
    return log.time(1000).rd(2024, 3, 5).td();
}

// What stands between two times three good messages, or behind the first three.
FoundItems between(std::string_view bytes) {
    LogBuilder log;
    three(log).raw(bytes);
    return itemsOf(three(log).bytes());
}

TEST(LogReaderTest, EmptyLog_EndsAtOnce) {
    const FoundItems items = itemsOf("");
    EXPECT_TRUE(items.tiled);
    EXPECT_THAT(items.messages, IsEmpty());
    EXPECT_THAT(items.damages, IsEmpty());
}

TEST(LogReaderTest, Message_HasIdRowOffsetAndBody) {
    LogBuilder log;
    log.time(0x01020304).nn({7, 9}).td("abc");
    LogReader reader(testsupport::bytesOf(log.bytes()));
    ASSERT_EQ(reader.next(), LogItem::message);
    EXPECT_EQ(reader.message().id, MessageId("~~"));
    EXPECT_EQ(reader.message().row, rowOf("~~"));
    EXPECT_EQ(reader.message().offset, 0U);
    EXPECT_EQ(reader.message().bytes, 11U);  // 2 + 3 + 5 + 1
    EXPECT_EQ(reader.message().body.size(), 5U);
    EXPECT_THAT(reader.message().content(), ElementsAre(4, 3, 2, 1));
    ASSERT_EQ(reader.next(), LogItem::message);
    EXPECT_EQ(reader.message().row, rowOf("NN"));
    EXPECT_EQ(reader.message().offset, 11U);
    EXPECT_THAT(reader.message().content(), ElementsAre(7, 9));
    ASSERT_EQ(reader.next(), LogItem::message);
    EXPECT_EQ(reader.message().row, rowOf("TD"));
    EXPECT_EQ(reader.message().offset, 20U);
    EXPECT_EQ(reader.message().bytes, 10U);  // 2 + 3 + 3 + 2
    EXPECT_THAT(reader.message().content(), ElementsAre('a', 'b', 'c'));
    EXPECT_EQ(reader.position(), 30U);
    EXPECT_EQ(reader.next(), LogItem::end);
    EXPECT_EQ(reader.next(), LogItem::end);
    EXPECT_FALSE(reader.failed());
}

TEST(LogReaderTest, UnknownId_IsTakenByItsLength) {
    LogBuilder unknown;
    unknown.message("zz", "what nobody knows").message("?!", std::string(4094, 'x'));
    const FoundItems items = between(unknown.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD zz ?! ~~ RD TD");
    EXPECT_THAT(items.damages, IsEmpty());
    LogReader reader(testsupport::bytesOf(unknown.bytes()));
    ASSERT_EQ(reader.next(), LogItem::message);
    EXPECT_EQ(reader.message().row, noRow);
    EXPECT_EQ(reader.message().content().size(), 17U);
}

TEST(LogReaderTest, UnknownTextOfTwoAngles_HasTwoLineEndBytes) {
    LogBuilder text;
    text.message(">>", "command");
    const FoundItems items = between(text.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD >> ~~ RD TD");
    EXPECT_EQ(items.messages[3].bytes, 14U);
    EXPECT_EQ(items.messages[3].body, "command");
    EXPECT_THAT(items.damages, IsEmpty());
}

TEST(LogReaderTest, Digits_OfEitherCase) {
    EXPECT_EQ(between("zz00a123456789-\n").ids(), "~~ RD TD zz ~~ RD TD");
    EXPECT_EQ(between("zz00A123456789-\n").ids(), "~~ RD TD zz ~~ RD TD");
}

TEST(LogReaderTest, Digits_NothingElse) {
    for (const std::string_view message : {"zz-0A123456789-\n", "zz+0A123456789-\n", "zz 0A123456789-\n",
                                           "zz0xA123456789-\n", "zz0G3123\n", "zz003", "zz00\n123\n"}) {
        const FoundItems items = between(message);
        EXPECT_EQ(items.ids(), "~~ RD TD ~~ RD TD") << message;
        EXPECT_THAT(items.damages, ElementsAre(Damage{34, message.size()})) << message;
        EXPECT_TRUE(items.tiled);
    }
}

TEST(LogReaderTest, LengthThatTheIdCannotHave_IsDamage) {
    LogBuilder log;
    log.message("rx", "123456");  // an element and a half
    const FoundItems items = between(log.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD ~~ RD TD");
    EXPECT_THAT(items.damages, ElementsAre(Damage{34, log.size()}));
}

TEST(LogReaderTest, EmptyTextAndEmptyArrays_AreMessages) {
    LogBuilder log;
    log.td("").sx({}).flags(Band::c, {}).message("zz", "");
    const FoundItems items = between(log.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD TD SX FC zz ~~ RD TD");
    EXPECT_THAT(items.damages, IsEmpty());
}

TEST(LogReaderTest, BinaryMessageWithoutItsChecksum_IsNone) {
    EXPECT_EQ(between("zz000\n").ids(), "~~ RD TD ~~ RD TD");
}

TEST(LogReaderTest, EveryKnownId_IsTaken) {
    LogBuilder log;
    std::string ids;
    for (const MessageRow& row : messageTable) {
        const std::string id = {row.id.first, row.id.second};
        const int length = row.reading == Reading::forms        ? row.forms.front().length
                           : row.reading == Reading::fixedBlock ? 6
                                                                : 5;
        const bool isText = id == "KV" || id == "MF" || id == "TD";
        log.message(id,
                    id == "PM" ? "x" : std::string(static_cast<std::size_t>(length - (isText ? 0 : 1)), 'x'));
        ids += (ids.empty() ? "" : " ") + id;
    }
    const FoundItems items = itemsOf(log.bytes());
    EXPECT_EQ(items.ids(), ids);
    EXPECT_THAT(items.damages, IsEmpty());
    EXPECT_TRUE(items.tiled);
}

TEST(LogReaderTest, OneByteMore_WhereItLeadsToTheNextMessage) {
    LogBuilder ephemeris;
    ephemeris.ne103({.sv = 3});  // padded
    const FoundItems items = between(ephemeris.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD NE ~~ RD TD");
    EXPECT_EQ(items.messages[3].bytes, 110U);  // 5 + 103 + 2
    EXPECT_EQ(items.messages[3].body.size(), 103U);
    EXPECT_THAT(items.damages, IsEmpty());
}

TEST(LogReaderTest, OneByteMore_NotWhereThePlainLengthLeadsOn) {
    LogBuilder ephemeris;
    ephemeris.ne103({.sv = 3}, samplelog::LongNeEnd::bare);
    const FoundItems items = between(ephemeris.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD NE ~~ RD TD");
    EXPECT_EQ(items.messages[3].bytes, 109U);
    EXPECT_THAT(items.damages, IsEmpty());
}

TEST(LogReaderTest, OneByteMore_OfAnyId) {
    LogBuilder ephemeris;
    ephemeris.ge123({.sv = 3}).raw("\n");
    const FoundItems items = between(ephemeris.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD GE ~~ RD TD");
    EXPECT_EQ(items.messages[3].bytes, 130U);
    EXPECT_THAT(items.damages, IsEmpty());
}

TEST(LogReaderTest, OneByteMore_OfTheLastMessage) {
    LogBuilder log;
    three(log).ne103({.sv = 3});
    const FoundItems items = itemsOf(log.bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD NE");
    EXPECT_EQ(items.messages[3].bytes, 110U);
    EXPECT_THAT(items.damages, IsEmpty());
}

TEST(LogReaderTest, BodyThatLooksLikeMessages_StaysABody) {
    LogBuilder inner;
    three(three(inner));
    LogBuilder log;
    three(log).message(">>", inner.bytes() + "x").message("rx", inner.bytes().substr(0, 24));
    const FoundItems items = itemsOf(three(log).bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD >> rx ~~ RD TD");
    EXPECT_THAT(items.damages, IsEmpty());
}

// Two characters and three digits that stand ahead of messages by chance are no message around them.
TEST(LogReaderTest, UnknownBodyOfKnownMessages_IsThoseMessages) {
    LogBuilder inner;
    three(three(inner));
    LogBuilder log;
    three(log).message("zz", inner.bytes());
    const FoundItems items = itemsOf(three(log).bytes());
    EXPECT_EQ(items.ids(), "~~ RD TD ~~ RD TD ~~ RD TD ~~ RD TD");
    EXPECT_THAT(items.damages, ElementsAre(Damage{34, 5}, Damage{107, 2}));
}

TEST(LogReaderTest, FewMessages_AreTakenToo) {
    EXPECT_EQ(itemsOf(LogBuilder().td().bytes()).ids(), "TD");
    EXPECT_EQ(itemsOf(LogBuilder().time(5).td().bytes()).ids(), "~~ TD");
    EXPECT_EQ(itemsOf(LogBuilder().message("zz", "abc").bytes()).ids(), "zz");
}

TEST(LogReaderTest, EveryPrefixOfALog_KeepsItsWholeMessages) {
    LogBuilder log;
    log.time(1000).rd(2024, 3, 5).sx({{1, 5}, {2, -3}}).nn({7}).rx({100, 200}).flags(Band::c, {0x40, 0x40});
    log.ge123({.sv = 4}).kvMarker("A marker").td();
    const auto whole = itemsOf(log.bytes()).messages;
    ASSERT_EQ(whole.size(), 9U);
    for (std::size_t size = 0; size < log.size(); ++size) {
        const FoundItems items = itemsOf(std::string_view(log.bytes()).substr(0, size));
        EXPECT_TRUE(items.tiled) << size;
        std::size_t expected = 0;
        while (whole[expected].offset + whole[expected].bytes <= size) {
            EXPECT_EQ(items.messages.at(expected), whole[expected]) << size;
            ++expected;
        }
        // What is left of the last one is damage, or at most the message without its line end.
        ASSERT_LE(items.messages.size(), expected + 1) << size;
        if (items.messages.size() > expected) {
            EXPECT_EQ(items.messages.back().body, whole[expected].body) << size;
        }
    }
}

}  // namespace
}  // namespace orbconv::reading
