// Files that give an error instead of their bytes.
#include <gtest/gtest.h>

#include <cstdio>

#include "reading/log_reader.h"

namespace orbconv::reading {
namespace {

TEST(UnreadableLogTest, Folder_FailsAtItsFirstByte) {
    LogReader reader(std::fopen("/", "rb"));
    EXPECT_EQ(reader.next(), LogItem::end);
    EXPECT_TRUE(reader.failed());
    EXPECT_EQ(reader.position(), 0U);
}

}  // namespace
}  // namespace orbconv::reading
