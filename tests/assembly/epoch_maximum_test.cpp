// The greatest count of satellites in an epoch, before there has been any.
#include <gtest/gtest.h>

#include "assembly/record_order.h"
#include "support/assembly_bench.h"

namespace {

using EpochMaximum = testsupport::AssemblyTest;

TEST_F(EpochMaximum, IsZeroAfterAnEpochWithoutSatellites) {
    list({});
    orbconv::sortEpochRecords(options, staging, store, survey);
    EXPECT_EQ(survey.maxSatellitesInEpoch, 0);
}

}  // namespace
