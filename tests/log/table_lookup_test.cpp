// Look-ups of what is not there.
#include <gtest/gtest.h>

#include <limits>

#include "log/message_table.h"
#include "log/receiver_clock.h"

namespace {

TEST(MessageTable, HasNoRowForAnUnknownId) {
    for (const orbconv::MessageId id : {orbconv::MessageId("zz"), orbconv::MessageId(">a"),
                                        orbconv::MessageId("~x"), orbconv::MessageId()}) {
        EXPECT_FALSE(orbconv::findRow(id).has_value()) << id.key();
    }
}

TEST(TimeScaleName, IsEmptyForANegativeIndexAndForNoNumber) {
    EXPECT_EQ(orbconv::timeScaleName(-1.0F), "");
    EXPECT_EQ(orbconv::timeScaleName(std::numeric_limits<float>::quiet_NaN()), "");
}

}  // namespace
