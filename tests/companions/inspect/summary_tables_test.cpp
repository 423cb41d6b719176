// What the rows of the summary's tables say, and what an uneventful log leaves at nothing.
#include <gtest/gtest.h>

#include <set>
#include <string_view>

#include "companions/support/inspected.h"
#include "inspect/findings.h"
#include "inspect/log_summary.h"

namespace orbconv::inspect {
namespace {

using testsupport::cleanLog;
using testsupport::inspected;

TEST(SummaryTablesTest, Findings_CountThingsOfTheLogOrTheFiles) {
    const std::set<std::string_view> things = {"codes",    "epochs",  "files",   "headers",     "lines",
                                               "messages", "ranges",  "records", "repetitions", "satellites",
                                               "sets",     "signals", "texts",   "values",      "weeks"};
    for (const FindingRow& row : findingRows) {
        EXPECT_TRUE(things.contains(row.counted)) << row.title << ": " << row.counted;
    }
}

TEST(SummaryTablesTest, CutAccuracies_AreFoundInEveryLogThatHasThem) {
    EXPECT_TRUE(rowOf(FindingId::cutAccuracies).everySuch);
}

TEST(SummaryTablesTest, SignalsWithoutCode_AreNamedByTheirBand) {
    EXPECT_EQ(signalText(Constellation::glonassCdma, bands::l), "GLONASS CDMA band l");
    EXPECT_EQ(signalText(Constellation::qzss, bands::c), "QZSS band c");
    EXPECT_EQ(signalText(Constellation::qzss, bands::b1), "QZSS band 1");
    EXPECT_EQ(signalText(Constellation::qzss, bands::b2), "QZSS band 2");
    EXPECT_EQ(signalText(Constellation::qzss, bands::b3), "QZSS band 3");
    EXPECT_EQ(signalText(Constellation::qzss, bands::b5), "QZSS band 5");
    EXPECT_EQ(signalText(Constellation::sbas, 1), "SBAS band 1");
}

TEST(SummaryTablesTest, CleanLog_HasNoUnknownSystemAndNoStepBack) {
    const LogSummary log = inspected(cleanLog(3));
    EXPECT_EQ(log.unknownSystems, 0);
    EXPECT_EQ(log.stepsBack, 0);
    EXPECT_TRUE(log.dated);
}

TEST(SummaryTablesTest, EmptyLog_HasNothing) {
    const LogSummary log = inspected(samplelog::LogBuilder());
    EXPECT_EQ(log.unknownSystems, 0);
    EXPECT_EQ(log.stepsBack, 0);
    EXPECT_FALSE(log.dated);
}

}  // namespace
}  // namespace orbconv::inspect
