// The three characters of length, read as the C library reads a hexadecimal number, and what a short or
// senseless length leaves in the staging.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "log/message_reader.h"
#include "samplelog/log_builder.h"
#include "support/staging.h"

namespace {

using namespace std::string_view_literals;
using orbconv::LogStream;
using orbconv::MessageId;
using orbconv::MessageStaging;
using orbconv::rowOf;
using samplelog::LogBuilder;
using testsupport::bytesOf;

struct LengthCase {
    std::string_view text;
    int length;
};

// Character codes: most of them cannot be shown.
void PrintTo(const LengthCase& field, std::ostream* out) {
    for (const char c : field.text) {
        *out << std::hex << int{static_cast<unsigned char>(c)} << ' ';
    }
}

class LengthField : public testing::TestWithParam<LengthCase> {};

constexpr auto lengthCases = std::to_array<LengthCase>({
    // plain digits of either case
    {"000", 0},
    {"00A", 10},
    {"00a", 10},
    {"0fE", 254},
    {"7B9", 1977},
    {"FFF", 4095},
    // leading white space
    {" 1A", 26},
    {"  7", 7},
    {"\t\nb", 11},
    {"\v\f9", 9},
    {"\r0c", 12},
    // a sign
    {"+0C", 12},
    {" +4", 4},
    {"+fF", 255},
    {"-00", 0},
    {"-01", -1},
    {" -2", -2},
    {"-FF", -255},
    // the prefix
    {"0x5", 5},
    {"0XB", 11},
    {"0xG", 0},
    {"0x ", 0},
    // as far as the digits go
    {"1 2", 1},
    {"B2-", 0xB2},
    {"5x1", 5},
    {"1.5", 1},
    {"A\0B"sv, 10},
    {"12\xFF", 0x12},
    // no digit to start with
    {"   ", 0},
    {"G01", 0},
    {"x01", 0},
    {"-+1", 0},
    {"+ 4", 0},
    {"--1", 0},
    {"\0"
     "12"sv,
     0},
    {"\xA0"
     "12"sv,
     0},
});

std::string lengthMessage(std::string_view id, std::string_view length) {
    return LogBuilder().messageWithLengthText(id, length, std::string(5000, '#')).take();
}

// Bytes that are taken behind the length characters.
int consumedBehindLength(std::string_view id, std::string_view length) {
    const auto staging = std::make_unique<MessageStaging>();
    const std::string log = lengthMessage(id, length);
    LogStream stream(bytesOf(log));
    orbconv::readMessage(stream, *staging);
    return 5000 - static_cast<int>(stream.take(LogStream::maxTake).size());
}

struct ClosingCase {
    std::string_view id;
    int closing;
};

}  // namespace

TEST_P(LengthField, IsReadAsTheLibraryReadsAHexadecimalNumber) {
    // An unknown message takes its length and one byte more; fewer than none are none.
    EXPECT_EQ(consumedBehindLength("zz", GetParam().text), std::max(0, GetParam().length + 1));
}

TEST_P(LengthField, HoldsForMessagesThatAreStaged) {
    EXPECT_EQ(consumedBehindLength("IE", GetParam().text), std::max(0, GetParam().length + 1));
    EXPECT_EQ(consumedBehindLength("TD", GetParam().text), std::max(0, GetParam().length + 2));
    EXPECT_EQ(consumedBehindLength(">>", GetParam().text), std::max(0, GetParam().length + 2));
    EXPECT_EQ(consumedBehindLength("2r", GetParam().text), std::max(0, (GetParam().length - 1) / 2) * 2 + 2);
}

INSTANTIATE_TEST_SUITE_P(MessageReader, LengthField, testing::ValuesIn(lengthCases));

TEST(NegativeLength, TakesNoBodyButWhatClosesTheMessage) {
    for (const auto& [id, closing] : std::to_array<ClosingCase>({{"RD", 0},
                                                                 {"KV", 0},
                                                                 {"zz", 0},
                                                                 {">>", 0},
                                                                 {"NE", 0},
                                                                 {"GE", 2},
                                                                 {"CN", 2},
                                                                 {"SX", 2},
                                                                 {"rx", 2},
                                                                 {"==", 2},
                                                                 {"SS", 3},
                                                                 {"PM", 6},
                                                                 {"SE", 7}})) {
        EXPECT_EQ(consumedBehindLength(id, "-10"), closing) << id;
    }
}

TEST(NegativeLength, LeavesNoElements) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().sx({{1, 5}, {1, 6}}).rx({1, 2}));
    testsupport::stage(staging, "SX-10..rx-10..");
    EXPECT_LE(staging.elementCount[rowOf("SX")], 0);
    EXPECT_LE(staging.elementCount[rowOf("rx")], 0);
}

TEST(EvenArrayLength, LeavesOneByteUnread) {
    // The element takes two bytes, the closing two: the last byte of the body opens the next id.
    const auto staging = std::make_unique<MessageStaging>();
    LogStream stream(bytesOf("SX004\x01\x05__>a"));
    orbconv::readMessage(stream, *staging);
    EXPECT_EQ(staging->elementCount[rowOf("SX")], 1);
    EXPECT_EQ(staging->area(rowOf("SX"))[0], 1);
    EXPECT_EQ(staging->area(rowOf("SX"))[1], 5);
    EXPECT_EQ(orbconv::readMessage(stream, *staging), MessageId('>', 'a'));

    LogStream shifted(bytesOf("SX004\x01\x05___>a"));
    orbconv::readMessage(shifted, *staging);
    EXPECT_EQ(orbconv::readMessage(shifted, *staging), MessageId('_', '>'));
}

TEST(StaleBytes, RemainBehindAShorterBody) {
    MessageStaging staging;
    testsupport::stage(staging, "EU006abcdef\n");
    testsupport::stage(staging, "EU003xy.\n");
    const auto area = staging.area(rowOf("EU"));
    EXPECT_TRUE(std::ranges::equal(area.first(8), bytesOf("xy.\nef\n\0"sv)));
}

TEST(StaleBytes, RemainBehindAShorterArrayWhoseCountIsNew) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().rx({100, 200, 300}).rx({7}));
    EXPECT_EQ(staging.elementCount[rowOf("rx")], 1);
    EXPECT_EQ(staging.elements<std::int32_t>(rowOf("rx"))[0], 7);
    EXPECT_EQ(staging.elements<std::int32_t>(rowOf("rx"))[1], 200);
    EXPECT_EQ(staging.elements<std::int32_t>(rowOf("rx"))[2], 300);
}

TEST(StaleBytes, OfAnotherMessageNeverAppear) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().rx({-1, -1, -1}).rc({7}));
    EXPECT_EQ(staging.elements<std::int32_t>(rowOf("rc"))[0], 7);
    EXPECT_EQ(staging.elements<std::int32_t>(rowOf("rc"))[1], 0);
}

TEST(StaleBytes, OfTheTimeAreaOutliveTheTimeItself) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().time(0x04030201));
    staging.timeOfDayMs = 0;
    testsupport::stage(staging, "~~000\x09");
    EXPECT_EQ(staging.timeOfDayMs, 0x04030209U);
    EXPECT_EQ(staging.lastEpochMs, 0x04030209U);
}

TEST(TimeMessage, SetsTheTimeAndItsCopy) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().time(0xFFFFFFFF));
    EXPECT_EQ(staging.timeOfDayMs, 0xFFFFFFFFU);
    testsupport::stage(staging, LogBuilder().time(3723500));
    staging.timeOfDayMs = 0;
    testsupport::stage(staging, LogBuilder().rd(2024, 3, 5).td());
    EXPECT_EQ(staging.timeOfDayMs, 0U);
    EXPECT_EQ(staging.lastEpochMs, 3723500U);
}

TEST(TimeMessage, OfLengthFiveTakesSixBytes) {
    EXPECT_EQ(consumedBehindLength("~~", "005"), 6);
}
