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
        for (const std::size_t position : {capacity, capacity + 1, std::size_t{179}}) {
            EXPECT_EQ(store->claimable(system, position), nullptr) << position;
            EXPECT_EQ(store->writable(system, position), nullptr) << position;
        }
        EXPECT_EQ(store->writable(system, capacity - 1), &store->records(system).back());
    }
}

}  // namespace
