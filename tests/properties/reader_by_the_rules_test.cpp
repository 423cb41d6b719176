// The reader against the literal one, field by field, wherever a byte of the framing is wrong, for every
// length that a message can announce, and on bytes without order. Each compares where the next message is
// looked for, what the areas hold and what is counted.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "samplelog/log_builder.h"
#include "support/effort.h"
#include "support/literal_reader.h"
#include "support/staging.h"

namespace {

using orbconv::LogStream;
using orbconv::MessageId;
using orbconv::MessageStaging;
using samplelog::Band;
using samplelog::LogBuilder;
using testsupport::bytesOf;
using testsupport::LiteralReader;

bool sameArea(const MessageStaging& staging, const std::string& id, const LiteralReader::Area& expected) {
    const std::size_t row = orbconv::findRow({id[0], id[1]}).value();
    const auto area = staging.area(row);
    // A length of 0 gives some messages a count below 0: none.
    const bool sameCount = expected.room == 0 || std::max(staging.elementCount[row], 0) ==
                                                     std::clamp(expected.count, 0, expected.room);
    return area.size() >= expected.bytes.size() &&
           std::ranges::equal(area.first(expected.bytes.size()), expected.bytes) && sameCount;
}

// Both readers with their areas.
class BothReaders {
public:
    // Reads a log to its end with both, areas as they are. Stops at the first difference.
    void expectSameReading(const std::string& log) {
        LogStream stream(bytesOf(log));
        literal_.open(log);
        std::size_t messages = 0;
        while (!stream.atEnd() && !literal_.atEnd()) {
            ASSERT_NO_FATAL_FAILURE(expectSameMessage(stream)) << "message " << messages;
            ++messages;
        }
        ASSERT_EQ(stream.atEnd(), literal_.atEnd()) << "behind message " << messages;
        expectSameAreas();
    }

    void expectSameMessage(LogStream& stream) {
        const std::string expected = literal_.read();
        const MessageId id = orbconv::readMessage(stream, *staging_);
        ASSERT_EQ(id, expected.empty() ? MessageId() : MessageId(expected[0], expected[1])) << expected;
        if (const LiteralReader::Area* const area = literal_.areaOf(expected)) {
            ASSERT_TRUE(sameArea(*staging_, expected == "GA" ? "GE" : expected, *area)) << expected;
        }
    }

    void expectSameAreas() const {
        for (const auto& [id, area] : literal_.areas()) {
            ASSERT_TRUE(sameArea(*staging_, id, area)) << id;
        }
        ASSERT_EQ(staging_->lastEpochMs, literal_.timeOfDay());
        ASSERT_EQ(staging_->timeOfDayMs, literal_.timeOfDay());
    }

    // Bytes that one message takes, found out by both.
    void expectSameLength(const std::string& log) {
        LogStream stream(bytesOf(log));
        literal_.open(log);
        ASSERT_NO_FATAL_FAILURE(expectSameMessage(stream));
        ASSERT_EQ(log.size() - stream.take(LogStream::maxTake).size(), literal_.position());
    }

private:
    std::unique_ptr<MessageStaging> staging_ = std::make_unique<MessageStaging>();
    LiteralReader literal_;
};

// ---- one wrong byte ----

// Every kind of reading once, and the places of its ids, lengths and line ends.
struct FramedLog {
    std::string bytes;
    std::vector<std::size_t> framing;

    void add(const LogBuilder& message, std::size_t lineEnd = 1) {
        const std::size_t begin = bytes.size();
        bytes += message.bytes();
        for (std::size_t place = begin; place < begin + 5; ++place) {
            framing.push_back(place);
        }
        for (std::size_t place = bytes.size() - lineEnd; place < bytes.size(); ++place) {
            framing.push_back(place);
        }
    }
};

FramedLog oneOfEachReading() {
    FramedLog log;
    log.add(LogBuilder().time(3600000));
    log.add(LogBuilder().kvMarker("PIER"), 2);
    log.add(LogBuilder().pmParameters({{"rcv/igs=", "TYPE"}}), 2);
    log.add(LogBuilder().antennaType("DISC"));
    log.add(LogBuilder().sx({{1, 5}, {2, -3}}));
    log.add(LogBuilder().nn({12}));
    log.add(LogBuilder().rx({1, 2}));
    log.add(LogBuilder().flags(Band::b1, {0x40, 0x40}));
    log.add(LogBuilder().strengths(Band::c, {100, 120}));
    log.add(LogBuilder().ss({1, 2}));
    log.add(LogBuilder().se());
    log.add(LogBuilder().message("zz", "unknown"));
    log.add(LogBuilder().message(">>", "text"), 2);
    log.add(LogBuilder().ne88({}));
    log.add(LogBuilder().ge160({}));
    log.add(LogBuilder().cn134({}));
    log.add(LogBuilder().message("GA", "almanac"));
    log.add(LogBuilder().td(), 2);
    return log;
}

TEST(ReaderByTheRules, ReadsTheUndamagedLogToItsEnd) {
    BothReaders readers;
    readers.expectSameReading(oneOfEachReading().bytes);
}

TEST(ReaderByTheRules, HoldsWithAnyValueInAnyPlaceOfTheFraming) {
    const FramedLog log = oneOfEachReading();
    const auto step = testsupport::effort(std::size_t{1}, std::size_t{5});
    for (std::size_t i = 0; i < log.framing.size(); i += step) {
        BothReaders readers;  // keeps what the damaged logs before left: areas are never cleared
        std::string damaged = log.bytes;
        for (int value = 0; value < 256; ++value) {
            damaged[log.framing[i]] = static_cast<char>(value);
            ASSERT_NO_FATAL_FAILURE(readers.expectSameReading(damaged))
                << "place " << log.framing[i] << ", value " << value;
        }
    }
}

TEST(ReaderByTheRules, HoldsWithTwoWrongBytesAnywhere) {
    const std::string log = oneOfEachReading().bytes;
    std::mt19937 random(21);
    BothReaders readers;
    for (int i = 0; i < testsupport::effort(20000, 2000); ++i) {
        std::string damaged = log;
        damaged[random() % log.size()] = static_cast<char>(random());
        damaged[random() % log.size()] = static_cast<char>(random());
        ASSERT_NO_FATAL_FAILURE(readers.expectSameReading(damaged)) << i;
    }
}

// ---- every length ----

std::vector<std::string> idsAndOthers() {
    std::vector<std::string> ids = LiteralReader().ids();
    ids.insert(ids.end(), {"GA", ">>", ">x", "zz", "d0", "\r\n"});
    return ids;
}

class EveryLength : public testing::TestWithParam<std::string> {};

TEST_P(EveryLength, TakesTheBytesOfTheRules) {
    std::string log = GetParam() + "000";
    for (int i = 0; i < 5000; ++i) {
        log.push_back(static_cast<char>(i * 89 / 64));
    }
    BothReaders readers;
    const int step = testsupport::effort(1, 17);
    for (int length = 0; length <= 0xFFF; length += length < 200 ? 1 : step) {
        const std::string digits =
            LogBuilder().messageWithLength("zz", static_cast<unsigned>(length), "").take();
        log.replace(2, 3, digits, 2, 3);
        ASSERT_NO_FATAL_FAILURE(readers.expectSameLength(log)) << length;
    }
    readers.expectSameAreas();
}

INSTANTIATE_TEST_SUITE_P(ReaderByTheRules, EveryLength, testing::ValuesIn(idsAndOthers()),
                         [](const auto& instance) { return "Row" + std::to_string(instance.index); });

// ---- bytes without order ----

TEST(ReaderByTheRules, HoldsForRandomMessagesOfAnyLength) {
    const std::vector<std::string> ids = idsAndOthers();
    std::mt19937 random(22);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    BothReaders readers;
    for (int run = 0; run < testsupport::effort(2000, 200); ++run) {
        LogBuilder log;
        for (std::size_t message = below(40); message > 0; --message) {
            std::string body(below(4) == 0 ? below(2000) : below(200), '\0');
            std::ranges::generate(body, [&] { return static_cast<char>(random()); });
            const std::string& id = ids[below(ids.size())];
            switch (below(8)) {
                case 0: log.messageWithLength(id, static_cast<unsigned>(below(0x1000)), body); break;
                case 1:
                    log.messageWithLengthText(id, std::string(" -+0xF1").substr(below(5), 3), body);
                    break;
                case 2: log.raw(body); break;
                default: log.message(id, body); break;
            }
        }
        ASSERT_NO_FATAL_FAILURE(readers.expectSameReading(log.bytes())) << run;
    }
}

}  // namespace
