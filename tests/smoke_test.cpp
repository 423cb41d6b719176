#include <gtest/gtest.h>
TEST(Smoke, Builds) { EXPECT_EQ(1 + 1, 2); }
