// The logs that stand beside the repository, counted another way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "companions/support/literal_log.h"
#include "companions/support/reading_items.h"
#include "reading/epoch.h"

namespace orbconv::reading {
namespace {

using testsupport::LiteralEpoch;

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

LiteralEpoch asLiteral(const Epoch& epoch) {
    LiteralEpoch literal;
    if (epoch.time) {
        literal.milliseconds = epoch.time->time_since_epoch().count();
    }
    for (const EpochSatellite& satellite : epoch.satellites()) {
        literal.satellites.push_back(std::to_string(satellite.systemCode) + "-" +
                                     std::to_string(satellite.number));
    }
    const auto take = [&]<class T>(const char* id, std::size_t row, T /*element*/) {
        for (std::size_t i = 0; i < epoch.elementCount(row); ++i) {
            literal.elements[id].push_back(*epoch.element<T>(row, i));
        }
        if (epoch.has(row)) {
            literal.elements[id];
        }
    };
    take("rx", rowOf("rx"), std::uint32_t{});
    take("CE", rowOf("CE"), std::uint8_t{});
    take("FC", rowOf("FC"), std::uint16_t{});
    return literal;
}

std::vector<LiteralEpoch> epochsOf(std::string_view log) {
    std::vector<LiteralEpoch> epochs;
    LogReader reader(testsupport::bytesOf(log));
    EpochCollector collector;
    for (LogItem item = reader.next(); item != LogItem::end; item = reader.next()) {
        if (item == LogItem::message && collector.add(reader.message())) {
            epochs.push_back(asLiteral(collector.epoch()));
        }
    }
    return epochs;
}

// Whether the log is undamaged. If so, both readers have to agree on it.
bool agreesIfWhole(const std::filesystem::path& path) {
    const std::string log = contentOf(path);
    const auto expected = testsupport::literalMessages(log);
    if (!expected) {
        return false;
    }
    for (const auto& items : {testsupport::itemsOf(log), testsupport::itemsOfFile(log)}) {
        EXPECT_TRUE(items.tiled) << path;
        EXPECT_THAT(items.damages, testing::IsEmpty()) << path;
        EXPECT_TRUE(items.messages == *expected) << path;
    }
    EXPECT_TRUE(epochsOf(log) == testsupport::literalEpochs(*expected)) << path;
    return true;
}

TEST(LiteralAgreementTest, LogsOfRealObservations) {
    const std::filesystem::path folder = std::filesystem::path(ORBCONV_SHARED_LOGS) / "data";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no " << folder;
    }
    std::size_t logs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".kvs") {
            EXPECT_TRUE(agreesIfWhole(entry.path())) << entry.path();
            ++logs;
        }
    }
    EXPECT_GT(logs, 0U);
}

TEST(LiteralAgreementTest, LogsOfTheConformanceCases) {
    const std::filesystem::path folder = std::filesystem::path(ORBCONV_SHARED_LOGS) / "conformance" / "cases";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no " << folder;
    }
    std::size_t logs = 0;
    std::size_t whole = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::filesystem::path log = entry.path() / "log";
        if (std::filesystem::exists(log)) {
            ++logs;
            whole += agreesIfWhole(log) ? 1U : 0U;
        }
    }
    RecordProperty("whole", static_cast<int>(whole));
    EXPECT_GT(whole, logs / 2) << "of " << logs;
}

}  // namespace
}  // namespace orbconv::reading
