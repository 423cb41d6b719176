// Header tables with contents that no log gives: nothing is read past a table's end, and the rules hold to
// the last value.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "obsfile/header_tables.h"
#include "obsfile/observation_header.h"
#include "support/conversion.h"
#include "support/obs_text.h"
#include "support/staging.h"

namespace {

using orbconv::Constellation;
using orbconv::SignalSurvey;
using testing::ElementsAre;
using testsupport::blanks;
using testsupport::headerLine;
using testsupport::setCodes;

template <class Write>
std::vector<std::string> linesOf(Write write) {
    return testsupport::splitLines(testsupport::written(write));
}

TEST(TableBounds, ObsTypesEndWithTheListWhateverTheCount) {
    const auto survey = std::make_unique<SignalSurvey>();
    setCodes(survey->codes(Constellation::gps), 0, {"C1C"});
    setCodes(survey->codes(Constellation::gps), 59, {"L1C"});
    survey->obsCodeCount[0] = 5;
    EXPECT_THAT(linesOf([&](orbconv::TextWriter& out) { orbconv::writeObsTypes(out, {}, *survey); }),
                ElementsAre(headerLine("G    5 C1C L1C", "SYS / # / OBS TYPES")));
}

// Ten satellites make a continuation line; the walk for more ends with the list of 61 entries.
TEST(TableBounds, BeidouContinuationEndsWithTheListWhateverTheUseCount) {
    constexpr std::size_t lastBand = 5;
    const std::size_t beidou = orbconv::indexOf(Constellation::beidou);
    const auto survey = std::make_unique<SignalSurvey>();
    setCodes(survey->codes(Constellation::beidou), 26, {"L1X"});
    for (std::size_t i = 0; i < 10; ++i) {
        survey->signalSatelliteList[beidou][lastBand][i] = 21 + static_cast<std::int32_t>(i);
    }
    survey->signalUseCount[beidou][lastBand] = 1000;
    EXPECT_THAT(linesOf([&](orbconv::TextWriter& out) {
                    orbconv::writeBeidouPhaseShift(out, 26, lastBand, *survey);
                }),
                ElementsAre("C L1X  0.00000  10 C21 C22 C23 C24 C25 C26 C27 C28 C29 C30  SYS / PHASE SHIFT",
                            blanks(60) + "SYS / PHASE SHIFT"));
}

// An entry without a slot is not moved, also ahead of one below 0.
TEST(TableBounds, GlonassSlotBelow0DoesNotPassAFreeEntry) {
    orbconv::GlonassSlotTable table;
    table.slot[1] = -5;
    testsupport::written([&](orbconv::TextWriter& out) { orbconv::writeGlonassSlots(out, table); });
    EXPECT_EQ(table.slot[0], 0);
    EXPECT_EQ(table.slot[1], -5);
}

}  // namespace
