// The width of a time offset's first coefficient. Every number in scientific notation is wider; "inf" is not.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "navfile/nav_files.h"
#include "support/conversion.h"
#include "support/nav_survey.h"
#include "support/staging.h"

namespace {

using orbconv::TextWriter;
using testsupport::splitLines;
using testsupport::written;

TEST(TimeSystemWidth, InfiniteFirstCoefficientTakesTwelveColumns) {
    const auto tables = std::make_unique<orbconv::NavigationTables>();
    tables->glonassTimeOffset.tauGps = std::numeric_limits<float>::infinity();
    tables->glonassTimeOffset.tauC = 0.25;
    const orbconv::RunStamp stamp;
    const std::vector<std::string> lines = splitLines(written([&](TextWriter& out) {
        orbconv::writeGlonassNavFile(out, {3.05, stamp, "R", *tables});
    }));
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[4], "GLGP           inf 2.500000000D-01      0    0          TIME SYSTEM CORR");
}

}  // namespace
