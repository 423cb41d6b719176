// Where a log ends: end of file is known only after a read that asked for more than was left, and the id of
// a message cut off in its middle counts all the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "log/message_reader.h"
#include "samplelog/log_builder.h"
#include "support/conversion.h"
#include "support/log_passes.h"
#include "support/staging.h"

namespace {

using orbconv::LogStream;
using orbconv::MessageId;
using orbconv::MessageStaging;
using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::bytesOf;

constexpr int epochs = 4;

// A message and the bytes in which it stands.
struct Placed {
    MessageId id;
    std::size_t begin;
    std::size_t end;
};

class PlacedLog {
public:
    template <class Append>
    void add(MessageId id, Append append) {
        const std::size_t begin = log.size();
        append(log);
        messages.push_back({id, begin, log.size()});
    }
    LogBuilder log;
    std::vector<Placed> messages;
};

// Every kind of reading, four epochs, and text and navigation messages between them.
PlacedLog shortLog() {
    PlacedLog placed;
    placed.add("KV", [](LogBuilder& log) { log.kvMarker("MARK"); });
    placed.add("PM", [](LogBuilder& log) { log.pmParameters({{"rcv/igs=", "TYPE"}}); });
    placed.add("==", [](LogBuilder& log) { log.antennaType("ANTENNA"); });
    placed.add("PV", [](LogBuilder& log) { log.pv({1, 2, 3}); });
    for (int epoch = 0; epoch < epochs; ++epoch) {
        placed.add("~~", [&](LogBuilder& log) { log.time(static_cast<std::uint32_t>(1000 * (epoch + 1))); });
        placed.add("RD", [](LogBuilder& log) { log.rd(2024, 3, 5); });
        placed.add("SX", [](LogBuilder& log) { log.sx({{SystemCode::gps, 5}, {SystemCode::glonass, -3}}); });
        placed.add("NN", [](LogBuilder& log) { log.nn({12}); });
        placed.add("rx", [](LogBuilder& log) { log.rx({0, 0}); });
        placed.add("FC", [](LogBuilder& log) { log.flags(Band::c, {0x40, 0x40}); });
        placed.add("SE", [](LogBuilder& log) { log.se(); });
        placed.add("SS", [](LogBuilder& log) { log.ss({1, 2}); });
        placed.add({'>', 'x'}, [](LogBuilder& log) { log.raw(">x"); });
        placed.add(">>", [](LogBuilder& log) { log.message(">>", "text"); });
        placed.add("zz", [](LogBuilder& log) { log.message("zz", "unknown"); });
        placed.add("GE", [](LogBuilder& log) { log.ge123({.sv = 5, .toe = 7200}); });
        placed.add("TD", [](LogBuilder& log) { log.td(); });
    }
    placed.add("NE", [](LogBuilder& log) { log.ne103({}); });
    return placed;
}

// The ids that a pass sees, up to and with that of the read that finds the end.
std::vector<MessageId> idsIn(std::string_view log) {
    const auto staging = std::make_unique<MessageStaging>();
    LogStream stream(bytesOf(log));
    std::vector<MessageId> ids;
    while (!stream.atEnd()) {
        ids.push_back(orbconv::readMessage(stream, *staging));
    }
    return ids;
}

// The same by the rule: a message counts from its second byte on, and behind the last whole message one
// more read finds the end without an id.
std::vector<MessageId> idsExpected(const std::vector<Placed>& messages, std::size_t size) {
    std::vector<MessageId> ids;
    for (const Placed& message : messages) {
        if (size >= message.begin + 2) {
            ids.push_back(message.id);
        }
        if (size >= message.begin + 2 && size < message.end) {
            return ids;
        }
    }
    ids.emplace_back();
    return ids;
}

std::ptrdiff_t countOf(std::string_view log, MessageId id) {
    return std::ranges::count(idsIn(log), id);
}

std::ptrdiff_t epochLines(const std::string& file) {
    return std::ranges::count_if(testsupport::splitLines(file),
                                 [](const std::string& line) { return line.starts_with("> "); });
}

// A temporary file with `text`, read from its start.
std::FILE* fileOf(std::string_view text) {
    std::FILE* const file = std::tmpfile();
    std::fwrite(text.data(), 1, text.size(), file);
    std::rewind(file);
    return file;
}

std::string longText() {
    std::string text(700'001, '\0');
    std::uint32_t value = 1;
    for (char& c : text) {
        value = value * 1664525U + 1013904223U;
        c = static_cast<char>(value >> 24U);
    }
    return text;
}

}  // namespace

TEST(LogStream, EndIsReachedOnlyByAskingForMoreThanIsLeft) {
    LogStream stream(bytesOf("abcd"));
    EXPECT_FALSE(stream.atEnd());
    EXPECT_TRUE(std::ranges::equal(stream.take(3), bytesOf("abc")));
    EXPECT_TRUE(std::ranges::equal(stream.take(1), bytesOf("d")));
    EXPECT_FALSE(stream.atEnd());
    EXPECT_TRUE(stream.take(0).empty());
    EXPECT_FALSE(stream.atEnd());
    EXPECT_TRUE(stream.take(1).empty());
    EXPECT_TRUE(stream.atEnd());
}

TEST(LogStream, GivesWhatIsLeftWhenAskedForMore) {
    LogStream stream(bytesOf("abcd"));
    stream.take(1);
    EXPECT_TRUE(std::ranges::equal(stream.take(9), bytesOf("bcd")));
    EXPECT_TRUE(stream.atEnd());
    EXPECT_TRUE(stream.take(9).empty());
}

TEST(LogStream, OfAFileTellsTheSameAsOfMemory) {
    LogStream stream(fileOf("abcd"));
    EXPECT_TRUE(std::ranges::equal(stream.take(4), bytesOf("abcd")));
    EXPECT_FALSE(stream.atEnd());
    EXPECT_TRUE(stream.take(1).empty());
    EXPECT_TRUE(stream.atEnd());
}

TEST(LogStream, OfNoFileIsEmpty) {
    LogStream stream(nullptr);
    EXPECT_FALSE(stream.atEnd());
    EXPECT_TRUE(stream.take(2).empty());
    EXPECT_TRUE(stream.atEnd());
}

TEST(LogStream, GivesEveryByteOfALongFileInPiecesOfAnySize) {
    const std::string text = longText();
    for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::size_t{4099}, LogStream::maxTake}) {
        LogStream stream(fileOf(text));
        std::size_t taken = 0;
        bool equal = true;
        while (!stream.atEnd()) {
            const auto piece = stream.take(size);
            equal = equal && std::ranges::equal(piece, bytesOf(text).subspan(taken, piece.size()));
            taken += piece.size();
        }
        EXPECT_TRUE(equal) << size;
        EXPECT_EQ(taken, text.size()) << size;
    }
}

TEST(EndOfFile, OfALogCutAtAnyByteIsFoundByTheReadThatCrossesIt) {
    const PlacedLog placed = shortLog();
    const std::string_view log = placed.log.bytes();
    for (std::size_t size = 0; size <= log.size(); ++size) {
        ASSERT_EQ(idsIn(log.substr(0, size)), idsExpected(placed.messages, size)) << size;
    }
}

TEST(EndOfFile, OfAnEmptyLogIsFoundByTheFirstRead) {
    EXPECT_EQ(idsIn(""), std::vector<MessageId>{MessageId()});
}

TEST(EndOfFile, OneByteOfAnIdIsNoMessage) {
    EXPECT_EQ(idsIn("T"), std::vector<MessageId>{MessageId()});
    EXPECT_EQ(countOf("TD", "TD"), 1);
}

TEST(EndOfFile, IsNotReachedByTheLastByteOfTheLastMessage) {
    LogBuilder log;
    EXPECT_EQ(idsIn(log.time(1).bytes()).size(), 2U);
    EXPECT_EQ(idsIn(log.clear().td().bytes()).size(), 2U);
    EXPECT_EQ(idsIn(log.clear().se().bytes()).size(), 2U);
    EXPECT_EQ(idsIn(">x").size(), 2U);
}

TEST(EndOfFile, IsReachedInsideALongGlonassMessageThatEndsTheLog) {
    LogBuilder log;
    EXPECT_EQ(idsIn(log.ne103({}, samplelog::LongNeEnd::bare).bytes()).size(), 1U);
    EXPECT_EQ(idsIn(log.clear().ne103({}).bytes()).size(), 2U);
}

TEST(EndOfFile, OfACutMessageLeavesWhatCameInItsArea) {
    const auto staging = std::make_unique<MessageStaging>();
    testsupport::stage(*staging, LogBuilder().rx({1, 2, 3}));
    const std::string cut = LogBuilder().rx({7, 8, 9}).take();
    // The id, the length and five body bytes: one element and the lowest byte of the next.
    testsupport::stage(*staging, std::string_view(cut).substr(0, 10));
    EXPECT_EQ(staging->elements<std::int32_t>(orbconv::rowOf("rx"))[0], 7);
    EXPECT_EQ(staging->elements<std::int32_t>(orbconv::rowOf("rx"))[1], 8);
    EXPECT_EQ(staging->elements<std::int32_t>(orbconv::rowOf("rx"))[2], 3);
    EXPECT_EQ(staging->elementCount[orbconv::rowOf("rx")], 3);
}

TEST(EndOfFile, EpochOfACutTdIsWritten) {
    const std::string log = LogBuilder().time(1000).rd(2024, 3, 5).td().time(2000).take();
    EXPECT_EQ(epochLines(testsupport::Passes().convert(log)), 1);
    EXPECT_EQ(epochLines(testsupport::Passes().convert(log + "T")), 1);
    EXPECT_EQ(epochLines(testsupport::Passes().convert(log + "TD")), 2);
    EXPECT_EQ(epochLines(testsupport::Passes().convert(log + "TD0")), 2);
    EXPECT_EQ(epochLines(testsupport::Passes().convert(log + "TD002\r\n")), 2);
}

TEST(EndOfFile, CutEphemerisIsDecoded) {
    testsupport::Passes passes;
    const std::string log = LogBuilder().ge123({.sv = 5, .toe = 7200}).take();
    passes.survey(std::string_view(log).substr(0, 60));
    EXPECT_EQ(passes.state->navigation.gps.count, 1);
    EXPECT_EQ(passes.state->navigation.gps.slots[0].kepler.sv, 5);
    EXPECT_EQ(passes.state->navigation.gps.slots[0].kepler.toe, 7200);
}

// The first epoch goes out with the header at the second time message, and each further one at its TD: all
// that counts is that two bytes of the message have come.
TEST(EndOfFile, OfALogCutAtAnyByteEveryBegunMessageIsActedOn) {
    const PlacedLog placed = shortLog();
    const std::string_view log = placed.log.bytes();
    std::vector<std::size_t> due;
    int times = 0;
    for (const Placed& message : placed.messages) {
        times += message.id == MessageId("~~") ? 1 : 0;
        const MessageId writing = due.empty() ? MessageId("~~") : MessageId("TD");
        if (message.id == writing && times >= 2) {
            due.push_back(message.begin + 2);
        }
    }
    ASSERT_EQ(due.size(), static_cast<std::size_t>(epochs));
    for (std::size_t size = 0; size <= log.size(); ++size) {
        const auto expected = std::ranges::count_if(due, [&](std::size_t place) { return place <= size; });
        ASSERT_EQ(epochLines(testsupport::Passes().convert(log.substr(0, size))), expected) << size;
    }
}

TEST(EndOfFile, OfTheProgramsInputIsThatOfTheLog) {
    const PlacedLog placed = shortLog();
    const std::string_view log = placed.log.bytes();
    for (const Placed& message : placed.messages) {
        for (const std::size_t size : {message.begin, message.begin + 2, message.end}) {
            const auto run = testsupport::convert(log.substr(0, size));
            ASSERT_EQ(run.exitStatus, 0);
            ASSERT_EQ(epochLines(run.files.at('o')),
                      epochLines(testsupport::Passes().convert(log.substr(0, size))))
                << size;
        }
    }
}
