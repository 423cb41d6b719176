// The third row of "SYS / # / OBS TYPES", from its first code on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "obsfile/observation_header.h"
#include "support/conversion.h"
#include "support/obs_text.h"
#include "support/staging.h"

namespace {

using testsupport::headerLine;

constexpr std::string_view label = "SYS / # / OBS TYPES";

TEST(ObsTypesThirdRow, ItsLabelStandsInColumn61WithOneCodeToo) {
    orbconv::SignalSurvey survey;
    auto& codes = survey.codes(orbconv::Constellation::gps);
    std::fill_n(codes.begin(), 27, orbconv::SignalText("C1C"));
    survey.obsCodeCount[0] = 27;
    const auto lines = testsupport::splitLines(testsupport::written(
        [&](orbconv::TextWriter& out) { orbconv::writeObsTypes(out, orbconv::RunOptions{}, survey); }));
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[2], headerLine("       C1C", label));
}

}  // namespace
