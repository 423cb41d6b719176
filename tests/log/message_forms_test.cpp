// The messages whose length picks a form: which body bytes land where, what the reader leaves in the stream,
// and the length that it keeps for the decoders.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "log/message_reader.h"
#include "samplelog/log_builder.h"
#include "support/staging.h"

namespace {

using orbconv::LogStream;
using orbconv::MessageId;
using orbconv::MessageStaging;
using orbconv::rowOf;
using samplelog::Closing;
using samplelog::LogBuilder;
using testsupport::bytesOf;

constexpr std::uint8_t untouched = 0x5A;

// A run of body bytes and where it lands.
struct Piece {
    std::size_t bodyOffset;
    std::size_t areaOffset;
    std::size_t bytes;
};

struct Form {
    std::string_view id;
    unsigned length;
    std::vector<Piece> pieces;
};

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.id << form.length;
}

class MessageForm : public testing::TestWithParam<Form> {};

const std::vector<Form> forms = {
    {"NE", 88, {{0, 0, 87}}},
    {"NE", 103, {{0, 0, 87}, {87, 87, 16}}},
    {"GE", 123, {{0, 0, 122}}},
    // 1 + 4 + 4 + 8 + 4 bytes, four single bytes, then the pair and the clock's difference.
    {"GE", 160, {{0, 0, 122}, {122, 122, 21}, {143, 143, 4}, {147, 163, 8}, {155, 171, 4}}},
    // The same with the quartet, which has a place of its own.
    {"GE", 168, {{0, 0, 122}, {122, 122, 21}, {143, 143, 4}, {147, 147, 16}, {163, 171, 4}}},
    {"CN", 134, {{0, 0, 122}, {122, 122, 9}, {131, 131, 2}}},
    {"CN", 152, {{0, 0, 122}, {122, 122, 9}, {131, 133, 8}, {139, 141, 4}, {143, 145, 4}, {147, 149, 4}}},
    {"CN", 160, {{0, 0, 122}, {122, 122, 9}, {131, 133, 28}}},
};

std::size_t tableRow(std::string_view id) {
    return orbconv::findRow(MessageId(id[0], id[1])).value();
}

// No byte of it is the value that marks an untouched area.
std::string longBody() {
    std::string body(400, '\0');
    for (std::size_t i = 0; i < body.size(); ++i) {
        body[i] = static_cast<char>(0x60 + i % 151);
    }
    return body;
}

std::unique_ptr<MessageStaging> markedStaging() {
    auto staging = std::make_unique<MessageStaging>();
    staging->bytes.fill(untouched);
    return staging;
}

// Ids in the order in which the reader meets them, the last one without the end's own.
std::vector<std::string> idTextsIn(std::string_view log) {
    const auto staging = std::make_unique<MessageStaging>();
    std::vector<std::string> ids;
    LogStream stream(bytesOf(log));
    for (;;) {
        const MessageId id = orbconv::readMessage(stream, *staging);
        if (stream.atEnd()) {
            return ids;
        }
        ids.push_back({id.first, id.second});
    }
}

using Ids = std::vector<std::string>;

}  // namespace

TEST_P(MessageForm, PutsEachPieceInItsPlace) {
    const auto& [id, length, pieces] = GetParam();
    const std::string body = longBody();
    const auto staging = markedStaging();
    testsupport::stage(*staging, LogBuilder().messageWithLength(id, length, body, Closing::none));
    const auto area = staging->area(tableRow(id));
    std::vector<std::uint8_t> expected(area.size(), untouched);
    for (const Piece& piece : pieces) {
        ASSERT_LE(piece.areaOffset + piece.bytes, expected.size());
        const auto part = bytesOf(body).subspan(piece.bodyOffset, piece.bytes);
        std::ranges::copy(part, expected.begin() + static_cast<std::ptrdiff_t>(piece.areaOffset));
    }
    EXPECT_TRUE(std::ranges::equal(area, expected));
}

TEST_P(MessageForm, KeepsItsLength) {
    const auto staging = markedStaging();
    testsupport::stage(*staging,
                       LogBuilder().messageWithLength(GetParam().id, GetParam().length, longBody()));
    EXPECT_EQ(staging->bodyLength[tableRow(GetParam().id)], static_cast<std::int32_t>(GetParam().length));
}

INSTANTIATE_TEST_SUITE_P(MessageReader, MessageForm, testing::ValuesIn(forms), [](const auto& instance) {
    return std::string(instance.param.id) + std::to_string(instance.param.length);
});

TEST(MessageForms, OtherLengthsStageNothingAndAreKept) {
    for (const std::string_view id : {"NE", "GE", "CN"}) {
        for (const unsigned length : {0U, 1U, 87U, 89U, 122U, 124U, 133U, 153U, 161U, 169U, 0xFFFU}) {
            const auto staging = markedStaging();
            const std::string log =
                LogBuilder().messageWithLength(id, length, longBody(), Closing::none).take();
            LogStream message(bytesOf(log));
            orbconv::readMessage(message, *staging);
            EXPECT_EQ(std::ranges::count(staging->bytes, untouched),
                      static_cast<std::ptrdiff_t>(staging->bytes.size()));
            EXPECT_EQ(staging->bodyLength[tableRow(id)], static_cast<std::int32_t>(length));
        }
    }
}

TEST(MessageForms, LengthsOfTheOtherMessagesAreOtherLengths) {
    EXPECT_EQ(idTextsIn("NE07B>a>b>c>d"), (Ids{"NE", ">a", ">b", ">c", ">d"}));
    EXPECT_EQ(idTextsIn("GE058>a>b>c>d"), (Ids{"GE", ">b", ">c", ">d"}));
    EXPECT_EQ(idTextsIn("CN07B>a>b>c>d"), (Ids{"CN", ">b", ">c", ">d"}));
}

TEST(MessageForms, GlonassOfAnotherLengthLeavesItsWholeBodyInTheStream) {
    EXPECT_EQ(idTextsIn("NE05A>a>b>c"), (Ids{"NE", ">a", ">b", ">c"}));
}

TEST(MessageForms, GpsAndBeidouOfAnotherLengthTakeTwoBytes) {
    EXPECT_EQ(idTextsIn("GE07A>a>b>c"), (Ids{"GE", ">b", ">c"}));
    EXPECT_EQ(idTextsIn("CN07A>a>b>c"), (Ids{"CN", ">b", ">c"}));
}

TEST(MessageForms, LongGlonassMessageTakesOneByteOfTheNext) {
    LogBuilder log;
    log.ne103({}, samplelog::LongNeEnd::bare).raw(">a>b>c");
    // The first character of the next id is gone, so that ids are read out of step: "a>", whose length
    // "b>c" is 0xB.
    EXPECT_EQ(idTextsIn(log.bytes()), Ids{"NE"});
    log.clear().ne103({}, samplelog::LongNeEnd::bare).raw(".>a>b");
    EXPECT_EQ(idTextsIn(log.bytes()), (Ids{"NE", ">a", ">b"}));
    log.clear().ne88({}).raw(">a>b");
    EXPECT_EQ(idTextsIn(log.bytes()), (Ids{"NE", ">a", ">b"}));
}

TEST(MessageForms, PairAndQuartetOfGpsOutliveMessagesOfTheOtherForm) {
    const auto staging = markedStaging();
    LogBuilder log;
    log.ge160({.iscL1cp = 1.5F, .iscL1cd = 2.5F, .af0Delta = 3.5F});
    log.ge168({.iscL1ca = 4.5F, .iscL2c = 5.5F, .iscL5i5 = 6.5F, .iscL5q5 = 7.5F, .af0Delta = 8.5F});
    testsupport::stage(*staging, log);
    const std::uint8_t* const body = staging->body(rowOf("GE"));
    EXPECT_EQ(orbconv::loadLittleEndian<float>(body + 147), 4.5F);
    EXPECT_EQ(orbconv::loadLittleEndian<float>(body + 151), 5.5F);
    EXPECT_EQ(orbconv::loadLittleEndian<float>(body + 155), 6.5F);
    EXPECT_EQ(orbconv::loadLittleEndian<float>(body + 159), 7.5F);
    EXPECT_EQ(orbconv::loadLittleEndian<float>(body + 163), 1.5F);
    EXPECT_EQ(orbconv::loadLittleEndian<float>(body + 167), 2.5F);
    EXPECT_EQ(orbconv::loadLittleEndian<float>(body + 171), 8.5F);
}

TEST(GpsAlmanac, OverwritesTheStagedEphemerisButNotItsLength) {
    const auto staging = markedStaging();
    testsupport::stage(*staging, LogBuilder().messageWithLength("GE", 123, longBody(), Closing::none));
    const std::string almanac(99, '!');
    const std::string log = "GA064" + almanac + "@#";
    LogStream stream(bytesOf(log));
    EXPECT_EQ(orbconv::readMessage(stream, *staging), MessageId("GA"));
    const auto area = staging->area(rowOf("GE"));
    EXPECT_TRUE(std::ranges::equal(area.first(99), bytesOf(almanac)));
    // One byte more than the length: the body's checksum and the line end.
    EXPECT_EQ(area[99], '@');
    EXPECT_EQ(area[100], '#');
    EXPECT_EQ(area[101], static_cast<std::uint8_t>(longBody()[101]));
    EXPECT_EQ(staging->bodyLength[rowOf("GE")], 123);
}

TEST(GpsAlmanac, LongerThanTheAreaIsCutAndReadPast) {
    const auto staging = markedStaging();
    const std::string log = "GAFFF" + std::string(0x1000, '!') + ">a";
    LogStream stream(bytesOf(log));
    orbconv::readMessage(stream, *staging);
    EXPECT_EQ(orbconv::readMessage(stream, *staging), MessageId('>', 'a'));
    const auto area = staging->area(rowOf("GE"));
    EXPECT_EQ(std::ranges::count(area, '!'), static_cast<std::ptrdiff_t>(area.size()));
    EXPECT_EQ(std::ranges::count(staging->bytes, '!'), static_cast<std::ptrdiff_t>(area.size()));
}
