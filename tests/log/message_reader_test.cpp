// The framing of every message: how many bytes a reading takes, which of them land in the staging and how
// many elements are counted. The table of the format stands here once more, written by hand.
#include "log/message_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "samplelog/log_builder.h"
#include "support/staging.h"

namespace {

using orbconv::LogStream;
using orbconv::MessageId;
using orbconv::MessageStaging;
using samplelog::LogBuilder;
using testsupport::bytesOf;

enum class Kind {
    whole,        // length + 1 bytes
    wholeText,    // length + 2 bytes
    array,        // elements of some bytes, then 2 bytes
    oneLess,      // ==: length - 1 bytes, then 2
    fourLess,     // PM: length - 4 bytes, then 6
    twoLess,      // SS: length - 2 bytes, then 3
    alwaysSeven,  // SE: 5 bytes, then 2
    formsOrTwo,   // GE, CN: one of several forms, or only the 2 closing bytes
    formsOrNone,  // NE: one of two forms, or nothing
};

struct Row {
    std::string_view id;
    Kind kind;
    std::size_t size;  // bytes of the area; for arrays bytes of an element
    std::size_t room = 180;
};

// As a name that can stand anywhere.
std::string nameOf(std::string_view id) {
    return id == "~~"   ? "TildeTilde"
           : id == "==" ? "EqualsEquals"
           : id == ">>" ? "ArrowArrow"
                        : std::string(id);
}

void PrintTo(const Row& row, std::ostream* out) {
    *out << nameOf(row.id);
}

// clang-format off
constexpr auto format = std::to_array<Row>({
    {"~~", Kind::whole, 12},      {"RD", Kind::whole, 20},   {"PV", Kind::whole, 48},      {"TO", Kind::whole, 24},
    {"AI", Kind::whole, 108},     {"UO", Kind::whole, 32},   {"IO", Kind::whole, 40},      {"NU", Kind::whole, 32},
    {"EN", Kind::whole, 160},     {"EU", Kind::whole, 48},   {"CU", Kind::whole, 32},      {"CI", Kind::whole, 40},
    {"II", Kind::whole, 40},      {"IU", Kind::whole, 32},   {"IE", Kind::whole, 432},
    {"KV", Kind::wholeText, 96},  {"TD", Kind::wholeText, 304}, {"MF", Kind::wholeText, 24},  {">>", Kind::wholeText, 0},
    {"ST", Kind::whole, 8},       {"DP", Kind::whole, 24},   {"DO", Kind::whole, 24},      {"NA", Kind::whole, 304},
    {"WE", Kind::whole, 304},     {"WA", Kind::whole, 304},  {"WU", Kind::whole, 304},     {"EA", Kind::whole, 304},
    {"QE", Kind::whole, 304},     {"QA", Kind::whole, 304},  {"QU", Kind::whole, 32},     {"QI", Kind::whole, 48},
    {"CA", Kind::whole, 304},     {"IA", Kind::whole, 300},
    {"==", Kind::oneLess, 105},   {"PM", Kind::fourLess, 100}, {"SS", Kind::twoLess, 180}, {"SE", Kind::alwaysSeven, 5},
    {"GE", Kind::formsOrTwo, 175}, {"CN", Kind::formsOrTwo, 161}, {"NE", Kind::formsOrNone, 103},
    {"rc", Kind::array, 4}, {"rx", Kind::array, 4}, {"DC", Kind::array, 4}, {"DX", Kind::array, 4},
    {"cp", Kind::array, 4}, {"1p", Kind::array, 4}, {"2p", Kind::array, 4}, {"3p", Kind::array, 4}, {"5p", Kind::array, 4}, {"lp", Kind::array, 4},
    {"1r", Kind::array, 2}, {"2r", Kind::array, 2}, {"3r", Kind::array, 2}, {"5r", Kind::array, 2}, {"lr", Kind::array, 2},
    {"0d", Kind::array, 2}, {"1d", Kind::array, 2}, {"2d", Kind::array, 2}, {"3d", Kind::array, 2}, {"5d", Kind::array, 2}, {"ld", Kind::array, 2},
    {"CE", Kind::array, 1}, {"1E", Kind::array, 1}, {"2E", Kind::array, 1}, {"3E", Kind::array, 1}, {"5E", Kind::array, 1}, {"lE", Kind::array, 1},
    {"FC", Kind::array, 2, 360}, {"F1", Kind::array, 2, 360}, {"F2", Kind::array, 2, 360}, {"F3", Kind::array, 2, 360}, {"F5", Kind::array, 2, 360}, {"Fl", Kind::array, 2, 360},
    {"SX", Kind::array, 2}, {"NN", Kind::array, 1, 24}, {"SI", Kind::array, 1}, {"EL", Kind::array, 1},
    {"cr", Kind::array, 2}, {"cc", Kind::array, 2}, {"c5", Kind::array, 2}, {"cl", Kind::array, 2}, {"TC", Kind::array, 2},
    {"c1", Kind::array, 2}, {"c2", Kind::array, 2}, {"c3", Kind::array, 2},
});
// clang-format on

// The forms of the three messages that have some: length, and the bytes that it takes.
struct FormLength {
    std::string_view id;
    std::size_t length;
    std::size_t consumed;
};
constexpr auto formLengths = std::to_array<FormLength>({
    {"NE", 88, 87 + 2},
    {"NE", 103, 87 + 16 + 2},
    {"GE", 123, 122 + 2},
    {"GE", 160, 122 + 1 + 4 + 4 + 8 + 4 + 4 + 8 + 4 + 2},
    {"GE", 168, 122 + 1 + 4 + 4 + 8 + 4 + 4 + 16 + 4 + 2},
    {"CN", 134, 122 + 4 + 1 + 4 + 2 + 2},
    {"CN", 152, 122 + 4 + 1 + 4 + 8 + 4 + 4 + 4 + 2},
    {"CN", 160, 122 + 4 + 1 + 4 + 28 + 2},
});

const std::vector<std::size_t> lengths = {0,   1,   2,   3,   4,   5,   6,   7,     8,     9,     88,   90,
                                          103, 123, 134, 152, 160, 168, 361, 0x2D0, 0x2D1, 0x2D2, 0xFFF};

MessageId idOf(std::string_view text) {
    return {text[0], text[1]};
}

std::size_t rowOf(std::string_view id) {
    return orbconv::findRow(idOf(id)).value();
}

std::size_t lengthLess(std::size_t length, std::size_t less) {
    return length > less ? length - less : 0;
}

// Bytes that a message takes behind its length characters.
std::size_t expectedConsumption(const Row& row, std::size_t length) {
    switch (row.kind) {
        case Kind::whole: return length + 1;
        case Kind::wholeText: return length + 2;
        case Kind::array: return lengthLess(length, 1) / row.size * row.size + 2;
        case Kind::oneLess: return lengthLess(length, 1) + 2;
        case Kind::fourLess: return lengthLess(length, 4) + 6;
        case Kind::twoLess: return lengthLess(length, 2) + 3;
        case Kind::alwaysSeven: return 7;
        case Kind::formsOrTwo:
        case Kind::formsOrNone: break;
    }
    const auto form = std::ranges::find_if(
        formLengths, [&](const FormLength& f) { return f.id == row.id && f.length == length; });
    return form != formLengths.end() ? form->consumed : row.kind == Kind::formsOrTwo ? 2 : 0;
}

// Bytes of the body that the area keeps from its start on, for all kinds without forms.
std::size_t expectedKept(const Row& row, std::size_t length) {
    const std::size_t taken = expectedConsumption(row, length);
    switch (row.kind) {
        case Kind::array: return std::min(taken - 2, row.size * row.room);
        case Kind::oneLess: return std::min(taken - 2, row.size);
        case Kind::fourLess: return std::min(taken - 6, row.size);
        case Kind::twoLess: return std::min(taken - 3, row.size);
        case Kind::alwaysSeven: return 5;
        default: return std::min(taken, row.size);
    }
}

// More bytes than any message takes, no two neighbours alike, none of them 0x5A.
std::string longestBody() {
    std::string body(5000, '\0');
    for (std::size_t i = 0; i < body.size(); ++i) {
        body[i] = static_cast<char>(0x60 + i % 97);
    }
    return body;
}

// Reads one message with 5000 bytes behind its length characters.
class OneMessage {
public:
    OneMessage(std::string_view id, std::size_t length)
        : log_(LogBuilder().messageWithLength(id, static_cast<unsigned>(length), longestBody()).take()),
          before_(log_.size()) {
        staging_->bytes.fill(0x5A);
        LogStream stream(bytesOf(log_));
        id_ = orbconv::readMessage(stream, *staging_);
        before_ -= stream.take(LogStream::maxTake).size();
    }
    [[nodiscard]] MessageId id() const { return id_; }
    [[nodiscard]] std::size_t consumed() const { return before_; }
    [[nodiscard]] const MessageStaging& staging() const { return *staging_; }

private:
    std::string log_;
    std::size_t before_;
    std::unique_ptr<MessageStaging> staging_ = std::make_unique<MessageStaging>();
    MessageId id_;
};

class EveryMessage : public testing::TestWithParam<Row> {};

std::size_t consumedBy(std::string_view log) {
    MessageStaging staging;
    LogStream stream(bytesOf(log));
    orbconv::readMessage(stream, staging);
    return log.size() - stream.take(LogStream::maxTake).size();
}

}  // namespace

TEST_P(EveryMessage, TakesItsIdItsLengthAndWhatItsKindTakes) {
    for (const std::size_t length : lengths) {
        const OneMessage message(GetParam().id, length);
        EXPECT_EQ(message.id(), idOf(GetParam().id));
        EXPECT_EQ(message.consumed(), 5 + expectedConsumption(GetParam(), length)) << length;
    }
}

TEST_P(EveryMessage, FillsItsOwnAreaAndNothingElse) {
    const Row& row = GetParam();
    for (const std::size_t length : lengths) {
        const OneMessage message(row.id, length);
        const std::size_t begin = orbconv::areaOffsets[rowOf(row.id)];
        const std::size_t end = orbconv::areaOffsets[rowOf(row.id) + 1];
        std::size_t strangers = 0;
        for (std::size_t i = 0; i < message.staging().bytes.size(); ++i) {
            strangers += (i < begin || i >= end) && message.staging().bytes[i] != 0x5A ? 1U : 0U;
        }
        EXPECT_EQ(strangers, 0U) << length;
    }
}

TEST_P(EveryMessage, KeepsItsBodyUpToTheRoomOfItsArea) {
    const Row& row = GetParam();
    if (row.kind == Kind::formsOrNone || row.kind == Kind::formsOrTwo) {
        return;
    }
    const std::string body = longestBody();
    for (const std::size_t length : lengths) {
        const OneMessage message(row.id, length);
        const auto area = message.staging().area(rowOf(row.id));
        const std::size_t kept = expectedKept(row, length);
        ASSERT_GE(area.size(), kept) << length;
        EXPECT_TRUE(std::ranges::equal(area.first(kept), bytesOf(body).first(kept))) << length;
        const auto stale = area.subspan(kept);
        EXPECT_EQ(std::ranges::count(stale, 0x5A), static_cast<std::ptrdiff_t>(stale.size())) << length;
    }
}

TEST_P(EveryMessage, CountsItsElementsUpToTheRoomOfItsArea) {
    const Row& row = GetParam();
    if (row.kind != Kind::array) {
        return;
    }
    for (const std::size_t length : lengths) {
        if (length == 0) {
            continue;  // not a length that a message can have: no count is due
        }
        const OneMessage message(row.id, length);
        const auto count = std::min(lengthLess(length, 1) / row.size, row.room);
        EXPECT_EQ(message.staging().elementCount[rowOf(row.id)], static_cast<std::int32_t>(count)) << length;
    }
}

TEST_P(EveryMessage, SetsTheTimeOnlyIfItIsTheTimeMessage) {
    const OneMessage message(GetParam().id, 5);
    const std::uint32_t expected = GetParam().id == "~~" ? 0x63626160U : 0U;
    EXPECT_EQ(message.staging().timeOfDayMs, expected);
    EXPECT_EQ(message.staging().lastEpochMs, expected);
}

TEST_P(EveryMessage, SetsTheSatellitesOfTheEpochOnlyIfItIsTheList) {
    const OneMessage message(GetParam().id, 9);
    EXPECT_EQ(message.staging().satellitesInEpoch, GetParam().id == "SX" ? 4 : 0);
}

INSTANTIATE_TEST_SUITE_P(MessageReader, EveryMessage, testing::ValuesIn(format),
                         [](const auto& instance) { return nameOf(instance.param.id); });

TEST(MessageReader, HasARowForEveryMessageAndForNoOther) {
    EXPECT_EQ(orbconv::messageTable.size(), format.size() + 1) << "the one more is GA, which has no area";
    for (const Row& row : format) {
        EXPECT_TRUE(orbconv::findRow(idOf(row.id)).has_value()) << row.id;
    }
    EXPECT_TRUE(orbconv::findRow("GA").has_value());
}

TEST(MessageReader, SkipsEveryOtherIdByItsLengthAndOneByte) {
    std::set<std::string> known = {"GA"};
    for (const Row& row : format) {
        known.emplace(row.id);
    }
    const std::string tail(40, '\x5B');
    for (int key = 0; key < 0x10000; ++key) {
        const std::string id = {static_cast<char>(key >> 8), static_cast<char>(key & 0xFF)};
        if (id[0] != '>' && !known.contains(id)) {
            ASSERT_EQ(consumedBy(id + "00A" + tail), 5U + 0xA + 1U) << key;
        }
    }
}

TEST(MessageReader, SkippedMessagesReturnTheirIdAndLeaveTheStagingAlone) {
    for (const std::string_view id : {"zz", "d1", "m~", "xx", "yE", "\n~", "\r\n", "rz", "~A", "TX"}) {
        const OneMessage message(id, 0xFFF);
        EXPECT_EQ(message.id(), idOf(id));
        EXPECT_EQ(message.consumed(), 5U + 0xFFF + 1U);
        EXPECT_EQ(std::ranges::count(message.staging().bytes, 0x5A),
                  static_cast<std::ptrdiff_t>(message.staging().bytes.size()));
    }
}

TEST(MessageReader, DoubleArrowTakesItsLengthAndTwoBytes) {
    EXPECT_EQ(consumedBy(">>002abcdefgh"), 5U + 4U);
    EXPECT_EQ(consumedBy(">>000abcdefgh"), 5U + 2U);
    EXPECT_EQ(OneMessage(">>", 0xFFF).consumed(), 5U + 0xFFF + 2U);
}

TEST(MessageReader, ArrowAndAnotherCharacterTakeNothingMore) {
    for (int second = 0; second < 256; ++second) {
        if (second != '>') {
            EXPECT_EQ(consumedBy(std::string{'>', static_cast<char>(second)} + "002abcdefgh"), 2U) << second;
        }
    }
}
