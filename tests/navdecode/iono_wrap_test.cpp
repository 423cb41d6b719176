// A count that has come past its limit starts over, also at a message that repeats the record before it. A
// log cannot bring it there: the count starts over with the record that reaches the limit.
#include <gtest/gtest.h>

#include "support/nav_survey.h"

namespace {

using samplelog::LogBuilder;

const samplelog::IonoBody body = {.alpha0 = 1.0F, .alpha1 = 2.0F, .beta0 = 3.0F};

// Feeds `message` with the record below `count` its equal.
template <class Table>
std::int32_t countBehindRepeat(testsupport::NavSurvey& survey, Table& table, std::int32_t count,
                               const LogBuilder& message) {
    auto& latest = table.records[static_cast<std::size_t>(count - 1)];
    latest.alpha = {body.alpha0, body.alpha1, 0.0F, 0.0F};
    latest.beta = {body.beta0, 0.0F, 0.0F, 0.0F};
    table.count = count;
    survey.feed(message);
    return table.count;
}

TEST(IonosphereWrap, RepeatAtTheLimitStartsOver) {
    testsupport::NavSurvey survey;
    auto& tables = survey.tables();
    EXPECT_EQ(countBehindRepeat(survey, tables.gpsIono, 499, LogBuilder().io(body)), 0);
    EXPECT_EQ(countBehindRepeat(survey, tables.navicIono, 500, LogBuilder().ii(body)), 0);
    EXPECT_EQ(countBehindRepeat(survey, tables.beidouIono, 99, LogBuilder().ci(body)), 0);
}

TEST(IonosphereWrap, RepeatBelowTheLimitLeavesTheCount) {
    testsupport::NavSurvey survey;
    auto& tables = survey.tables();
    EXPECT_EQ(countBehindRepeat(survey, tables.gpsIono, 498, LogBuilder().io(body)), 498);
    EXPECT_EQ(countBehindRepeat(survey, tables.navicIono, 498, LogBuilder().ii(body)), 498);
    EXPECT_EQ(countBehindRepeat(survey, tables.beidouIono, 98, LogBuilder().ci(body)), 98);
}

}  // namespace
