// Damage at random: of the messages that it did not touch all but the odd one are found, and a log without
// any is never reported as damaged.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "companions/support/damaged_log.h"
#include "companions/support/literal_log.h"
#include "companions/support/reading_items.h"
#include "samplelog/scenario.h"
#include "support/effort.h"
#include "support/random_log.h"

namespace orbconv::reading {
namespace {

using testsupport::DamagedLog;
using testsupport::FoundItems;
using testsupport::FoundMessage;
using testsupport::itemsOf;

// A small log, of one maker or the other.
std::string smallLog(unsigned seed) {
    if (seed % 4 != 0) {
        return testsupport::RandomLog({.seed = seed,
                                       .epochs = 3 + static_cast<int>(seed % 5),
                                       .mostOfASystem = 1 + static_cast<int>(seed % 9)})
            .bytes();
    }
    samplelog::ScenarioOptions options;
    options.epochCount = 3 + seed % 17;
    options.intervalMs = seed % 8 == 0 ? 1000 : 900'000;
    options.seed = seed;
    samplelog::Scenario scenario = samplelog::makeScenario(options);
    samplelog::LogBuilder log;
    samplelog::writeIdentity(scenario, log);
    for (std::int64_t epoch = 0; epoch < options.epochCount; ++epoch) {
        samplelog::writeEpoch(scenario, epoch, log);
    }
    return log.take();
}

struct WholeLog {
    std::string bytes;
    std::vector<FoundMessage> messages;
};

std::vector<WholeLog> wholeLogs(unsigned count) {
    std::vector<WholeLog> logs(count);
    for (unsigned seed = 0; seed < count; ++seed) {
        logs[seed].bytes = smallLog(seed);
        logs[seed].messages = testsupport::literalMessages(logs[seed].bytes).value();
    }
    return logs;
}

// How many of the messages were found just so.
std::size_t foundOf(const std::vector<FoundMessage>& expected, const std::vector<FoundMessage>& found) {
    std::size_t count = 0;
    auto next = found.begin();
    for (const FoundMessage& message : expected) {
        next =
            std::lower_bound(next, found.end(), message.offset,
                             [](const FoundMessage& a, std::uint64_t offset) { return a.offset < offset; });
        count += next != found.end() && next->offset == message.offset && next->id == message.id &&
                         next->body == message.body
                     ? 1U
                     : 0U;
    }
    return count;
}

TEST(DamagedLogsTest, UntouchedMessages_AreFound) {
    const auto logs = wholeLogs(testsupport::effort(200U, 20U));
    const unsigned tries = testsupport::effort(10'000U, 200U);
    std::mt19937 random(12);
    std::size_t untouched = 0;
    std::size_t found = 0;
    std::size_t reported = 0;
    for (unsigned i = 0; i < tries; ++i) {
        const WholeLog& whole = logs[i % logs.size()];
        const WholeLog& second = logs[random() % logs.size()];
        DamagedLog log(whole.bytes, whole.messages);
        const DamagedLog other(second.bytes, second.messages);
        for (unsigned damages = 1 + i % 3; damages > 0; --damages) {
            log.damageOnce(random, other);
        }
        const FoundItems items = itemsOf(log.bytes());
        ASSERT_TRUE(items.tiled) << i;
        const auto expected = log.untouched();
        untouched += expected.size();
        found += foundOf(expected, items.messages);
        reported += items.damages.empty() ? 0U : 1U;
    }
    const double share = static_cast<double>(found) / static_cast<double>(untouched);
    std::cout << "of " << untouched << " untouched messages in " << tries << " damaged logs " << found
              << " found: " << 100 * share << " %; damage reported in " << reported << " of them\n";
    EXPECT_GE(share, 0.999);
}

TEST(DamagedLogsTest, UndamagedLogs_AreNotReported) {
    const unsigned tries = testsupport::effort(2'000U, 40U);
    std::size_t messages = 0;
    std::size_t damages = 0;
    for (unsigned seed = 0; seed < tries; ++seed) {
        const std::string log = smallLog(1000 + seed);
        const auto expected = testsupport::literalMessages(log);
        ASSERT_TRUE(expected);
        const FoundItems items = itemsOf(log);
        messages += items.messages.size();
        damages += items.damages.size();
        EXPECT_TRUE(items.messages == *expected) << seed;
    }
    std::cout << "in " << tries << " undamaged logs " << messages << " messages and " << damages
              << " reports of damage\n";
    EXPECT_EQ(damages, 0U);
}

}  // namespace
}  // namespace orbconv::reading
