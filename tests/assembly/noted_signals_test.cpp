// The survey passes over signals that it has seen at their place: what it collects must be the same as if it
// had looked at each of them again.
#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "assembly/signal_plan.h"
#include "assembly/signal_survey.h"

namespace {

using orbconv::Constellation;
using orbconv::SatEpochRecord;
using orbconv::SignalSurvey;

constexpr std::array surveyed = {Constellation::gps, Constellation::glonass, Constellation::galileo,
                                 Constellation::beidou, Constellation::navic};

// Everything that the survey collects.
void expectSameTables(const SignalSurvey& a, const SignalSurvey& b) {
    EXPECT_EQ(a.obsCodeList, b.obsCodeList);
    EXPECT_EQ(a.signalSatelliteList, b.signalSatelliteList);
    EXPECT_EQ(a.phaseShiftSatellites, b.phaseShiftSatellites);
    EXPECT_EQ(a.signalUseCount, b.signalUseCount);
}

// Few positions and numbers of every class, so that a position sees the same satellite again and others in
// between, and lists run full.
struct SignalSource {
    std::mt19937 random;
    SatEpochRecord record;

    orbconv::SurveyedSignal next(std::uint32_t numbers, std::uint32_t positions) {
        const Constellation constellation = surveyed[random() % surveyed.size()];
        const std::size_t band = random() % orbconv::bandCount;
        const auto satellite = static_cast<std::int32_t>(random() % numbers);
        record.number = constellation == Constellation::glonass ? satellite % 14 - 7 : satellite;
        record.gloSlotNumber =
            constellation == Constellation::glonass ? static_cast<std::int32_t>(random() % 26) : 0;
        return {.constellation = constellation,
                .band = band,
                .record = record,
                .satelliteNumber = random() % 8 == 0 ? record.number + 1 : record.number,
                .position = random() % positions};
    }
};

void compareOver(std::uint32_t numbers, std::uint32_t positions) {
    const auto remembering = std::make_unique<SignalSurvey>();
    const auto forgetful = std::make_unique<SignalSurvey>();
    SignalSource source{.random = std::mt19937(numbers * 100 + positions), .record = {}};
    for (int i = 0; i < 20000; ++i) {
        const orbconv::SurveyedSignal signal = source.next(numbers, positions);
        orbconv::noteSignal(*remembering, signal);
        forgetful->notedSignals = {};
        orbconv::noteSignal(*forgetful, signal);
    }
    expectSameTables(*remembering, *forgetful);
}

TEST(NotedSignals, FewSatellitesAtFewPlacesChangeNothing) {
    compareOver(12, 3);
}

TEST(NotedSignals, SatellitesOfAllClassesChangeNothing) {
    compareOver(130, 20);
}

TEST(NotedSignals, FullListsChangeNothing) {
    compareOver(256, 30);
}

}  // namespace
