// Every array of the store ends where its capacity says.
#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "support/assembly_bench.h"

namespace {

TEST(StoreBounds, NoRecordIsHandedOutBehindTheLast) {
    constexpr std::array<std::size_t, 8> capacities = {32, 32, 37, 30, 61, 30, 30, 30};
    const auto store = std::make_unique<orbconv::EpochStore>();
    for (const testsupport::Constellation system : testsupport::everyConstellation) {
        const std::size_t capacity = capacities[testsupport::rowOf(system)];
        ASSERT_EQ(store->records(system).size(), capacity);
        for (const std::size_t count : {capacity, capacity + 1, std::size_t{180}}) {
            const auto records = store->useFirst(system, count);
            EXPECT_EQ(records.size(), capacity) << count;
            EXPECT_EQ(records.data(), store->records(system).data());
            EXPECT_EQ(store->usedRecords(system).size(), capacity);
        }
    }
}

}  // namespace
