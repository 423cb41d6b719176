#include <gtest/gtest.h>

#include "support/conversion.h"
#include "support/staging.h"

TEST(EmptyLog, LeavesAnEmptyObservationFile) {
    const auto run = testsupport::convert("");
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.lines('o').size(), 0U);
    EXPECT_TRUE(run.has('N'));
}
