// Where the converter's reader loses messages that the careful one has.
#include <gtest/gtest.h>

#include <filesystem>

#include "companions/support/inspected.h"
#include "companions/support/reading_items.h"
#include "inspect/converter_walk.h"
#include "log/message_lookup.h"

namespace orbconv::inspect {
namespace {

using samplelog::LogBuilder;
using testsupport::bytesOf;
using testsupport::cleanLog;
using testsupport::cleanStart;
using testsupport::countOf;
using testsupport::exampleOf;
using testsupport::inspected;
using testsupport::putCleanEpoch;

TEST(ConverterWalkTest, ConvertedBytes_AreThoseOfTheReader) {
    const auto bytes = [](MessageId id, int length) {
        return convertedBytes(id, findRowQuickly(id), length);
    };
    EXPECT_EQ(bytes("~~", 5), 11);   // body and line end
    EXPECT_EQ(bytes("KV", 20), 27);  // two line ends
    EXPECT_EQ(bytes("PM", 20), 27);
    EXPECT_EQ(bytes("==", 20), 26);
    EXPECT_EQ(bytes("SE", 40), 12);  // whatever the length says
    EXPECT_EQ(bytes("rc", 13), 19);
    EXPECT_EQ(bytes("rc", 15), 19);  // whole elements
    EXPECT_EQ(bytes("NE", 88), 94);
    EXPECT_EQ(bytes("NE", 103), 110);  // one more than the message has
    EXPECT_EQ(bytes("NE", 90), 5);
    EXPECT_EQ(bytes("GE", 123), 129);
    EXPECT_EQ(bytes("GE", 90), 7);
    EXPECT_EQ(bytes("zz", 10), 16);
    EXPECT_EQ(bytes(">>", 10), 17);
    EXPECT_EQ(bytes(">a", 10), 2);
}

TEST(ConverterWalkTest, InStep_LosesNothing) {
    LogBuilder log = cleanLog();
    log.ne103({.sv = 1, .tb = 43'200});
    putCleanEpoch(log, cleanStart + 4000);
    EXPECT_EQ(countOf(inspected(log), "O32"), 0);
}

TEST(ConverterWalkTest, LongGlonassEphemeris_TakesTheFirstCharacterOfTheNextMessage) {
    LogBuilder log = cleanLog();
    const std::size_t place = log.size();
    log.ne103({.sv = 1, .tb = 43'200}, samplelog::LongNeEnd::bare);
    putCleanEpoch(log, cleanStart + 4000);
    const LogSummary summary = inspected(log);
    // "~~005" without its first character: id "~0", length "05\x80", 0, so 6 bytes are read; ... the end of
    // the message is its checksum and line feed, and the next message is met again or lost with it.
    EXPECT_GE(countOf(summary, "O32"), 1);
    EXPECT_EQ(exampleOf(summary, "O32").substr(0, 6 + 7 + 13 + 2),
              "first behind NE at offset " + std::to_string(place).substr(0, 2));
}

TEST(ConverterWalkTest, ALengthThatSwallowsEpochs) {
    LogBuilder log = cleanLog(3);
    const std::size_t place = log.size();
    // An unknown message whose length says 0x400: the careful reader finds the epochs inside.
    std::string epochs;
    {
        LogBuilder inner;
        for (std::uint32_t i = 0; i < 10; ++i) {
            putCleanEpoch(inner, cleanStart + 3000 + i * 1000);
        }
        epochs = inner.take();
    }
    ASSERT_GT(epochs.size(), 0x402);
    log.raw("zz400").raw(epochs);
    const LogSummary summary = inspected(log);
    EXPECT_EQ(summary.epochs, 13);
    EXPECT_GT(countOf(summary, "O32"), 12);
    EXPECT_EQ(exampleOf(summary, "O32").find("first behind damage at offset " + std::to_string(place)), 0);
}

TEST(ConverterWalkTest, DamageThatIsReadPast_LosesNothing) {
    LogBuilder log = cleanLog(3);
    log.raw("\n\n\n\n\n\n");  // "\n\n", length 0: 6 bytes
    putCleanEpoch(log, cleanStart + 3000);
    const LogSummary summary = inspected(log);
    EXPECT_EQ(summary.damageCount, 1);
    EXPECT_EQ(countOf(summary, "O32"), 0);
}

TEST(ConverterWalkTest, DamageWhileOutOfStep) {
    LogBuilder log = cleanLog(3);
    log.raw("zz200");
    putCleanEpoch(log, cleanStart + 3000);
    log.raw(std::string(10, '\0'));
    putCleanEpoch(log, cleanStart + 4000);
    putCleanEpoch(log, cleanStart + 5000);
    putCleanEpoch(log, cleanStart + 6000);
    const LogSummary summary = inspected(log);
    EXPECT_EQ(summary.epochs, 7);
    EXPECT_GT(countOf(summary, "O32"), 0);
}

TEST(ConverterWalkTest, AFileThatIsGone_LosesNothingMore) {
    const std::string log = cleanLog().take();
    reading::LogReader reader(bytesOf(log));
    ASSERT_EQ(reader.next(), reading::LogItem::message);
    reading::Message message = reader.message();
    message.offset = 100;
    ConverterWalk walk(LogBytes((std::filesystem::path(testing::TempDir()) / "no_such_log").string()));
    walk.passDamage({.offset = 0, .bytes = 100});
    EXPECT_TRUE(walk.meets(message));
}

TEST(LogBytesTest, Memory) {
    const std::string text = "0123456789";
    LogBytes bytes{bytesOf(text)};
    EXPECT_EQ(bytes.at(0).size(), 10);
    EXPECT_EQ(bytes.at(7).size(), 3);
    EXPECT_EQ(bytes.at(7)[0], '7');
    EXPECT_EQ(bytes.at(10).size(), 0);
    EXPECT_EQ(bytes.at(999).size(), 0);
    EXPECT_EQ(bytes.reader().next(), reading::LogItem::damage);
}

TEST(LogBytesTest, File_AtAnyPlace) {
    const std::filesystem::path path = std::filesystem::path(testing::TempDir()) / "log_bytes_test";
    std::string text;
    for (int i = 0; i < 40'000; ++i) {
        text += std::to_string(100'000 + i);
    }
    std::ofstream(path, std::ios::binary) << text;
    {
        LogBytes bytes(path.string());
        for (const std::size_t place : {std::size_t{0}, std::size_t{100}, std::size_t{200'000},
                                        std::size_t{50}, text.size() - 4, text.size(), text.size() + 5}) {
            const auto got = bytes.at(place);
            const std::size_t left = text.size() - std::min(place, text.size());
            ASSERT_EQ(got.size(), std::min<std::size_t>(left, 8192)) << place;
            EXPECT_TRUE(
                std::equal(got.begin(), got.end(), text.begin() + static_cast<long>(text.size() - left)));
        }
        EXPECT_EQ(bytes.reader().next(), reading::LogItem::damage);
    }  // some systems remove no file that is open
    std::filesystem::remove(path);
    LogBytes gone(path.string());
    EXPECT_TRUE(gone.at(0).empty());
    EXPECT_EQ(gone.reader().next(), reading::LogItem::end);
}

}  // namespace
}  // namespace orbconv::inspect
