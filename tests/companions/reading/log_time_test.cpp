#include "reading/log_time.h"

#include <gtest/gtest.h>

namespace orbconv::reading {
namespace {

TEST(LogTimeTest, IsoText_HasMillisecondsAlways) {
    EXPECT_EQ(isoText(LogTime(*dateOf(2024, 5, 6)) + std::chrono::hours(23)), "2024-05-06T23:00:00.000");
}

}  // namespace
}  // namespace orbconv::reading
