// Random epochs through the steps of ranges, Doppler and phases and through their formulas written out
// entry by entry: in every version, with systems left out, messages that are missing, too short or too long,
// and records that are another satellite's.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "assembly/record_order.h"
#include "support/assembly_bench.h"
#include "support/effort.h"
#include "support/measurement_model.h"

namespace testsupport::measurements {
namespace {

// ---- random epochs ----

class MeasurementsOfRandomEpochs : public testing::TestWithParam<unsigned>,
                                   protected testsupport::AssemblyBench {
protected:
    MeasurementsOfRandomEpochs() {
        options.rinexVersion = model->version = std::array{3.05, 4.0, 4.01}.at(GetParam() % 3);
        for (std::size_t system = 0; system < 5; ++system) {
            model->included[system] = values.between(0, 4) != 0;
            include(constellations[system], model->included[system]);
        }
    }

    // Mostly the list of the epoch before with a few changes; sometimes more than the arrays have room for.
    void nextList() {
        if (visible.empty() || values.between(0, 9) == 0) {
            visible.clear();
            const bool crowded = values.between(0, 4) == 0;
            for (const auto& [system, count] :
                 {std::pair{gps, 34}, {glonass, 34}, {galileo, 39}, {beidou, 60}, {navic, 13}}) {
                for (int i = crowded ? count : values.between(0, 9); i > 0; --i) {
                    visible.push_back(randomSatellite(system));
                }
            }
            std::shuffle(visible.begin(), visible.end(),
                         std::mt19937(static_cast<unsigned>(values.between(0, 99999))));
        }
        for (int changes = values.between(0, 3); changes > 0 && !visible.empty(); --changes) {
            Satellite& changed =
                visible[static_cast<std::size_t>(values.between(0, static_cast<int>(visible.size()) - 1))];
            changed = values.between(0, 9) == 0
                          ? Satellite{.systemCode = 8, .number = 1}
                          : randomSatellite(static_cast<std::size_t>(values.between(0, 4)));
        }
        list(visible);
        model->stageList(visible);
    }
    Satellite randomSatellite(std::size_t system) {
        return testsupport::satellite(constellations[system],
                                      system == glonass ? values.between(-7, 6) : values.between(0, 63));
    }
    // Mostly one element a satellite; now and then none, fewer, more, or no message at all.
    void nextMessage(const std::string& id, std::int32_t low, std::int32_t high) {
        std::size_t count = visible.size();
        switch (values.between(0, 12)) {
            case 0: return;
            case 1: count = 0; break;
            case 2: count = count / 2; break;
            case 3: count = std::min(count + 5, std::size_t{180}); break;
            default: break;
        }
        std::vector<std::int64_t> elements;
        for (std::size_t i = 0; i < count; ++i) {
            elements.push_back(values.between(low, high));
        }
        put(id, elements);
        model->stageMessage(id, elements);
    }

    void expectSameRecords() {
        for (std::size_t system = 0; system < 5; ++system) {
            for (std::size_t i = 0; i < capacities[system]; ++i) {
                ASSERT_NO_FATAL_FAILURE(
                    expectSame(record(constellations[system], i), model->records[system][i]))
                    << "system " << system << ", record " << i;
            }
        }
    }
    static void expectSame(const SatEpochRecord& found, const Record& expected) {
        ASSERT_EQ(found.number, expected.number);
        ASSERT_EQ(found.clockOffset, expected.clockOffset);
        ASSERT_EQ(found.referenceDoppler, expected.referenceDoppler);
        for (std::size_t band = 0; band < 6; ++band) {
            ASSERT_EQ(found.at(ObsRow::pseudorange, band), expected.range[band]) << "range " << band;
            ASSERT_EQ(found.at(ObsRow::doppler, band), expected.doppler[band]) << "Doppler " << band;
            ASSERT_EQ(found.at(ObsRow::phase, band), expected.phase[band]) << "phase " << band;
        }
    }
    void expectSameBookkeeping() {
        for (std::size_t system = 0; system < 5; ++system) {
            const std::size_t row = testsupport::rowOf(constellations[system]);
            for (std::size_t band = 0; band < 6; ++band) {
                ASSERT_EQ(survey.signalUseCount[row][band], model->useCounts[system][band]) << row << band;
                ASSERT_EQ(static_cast<double>(survey.phaseShiftValues[row][band]),
                          model->shifts[system][band])
                    << row << band;
                const auto& list = survey.phaseShiftSatellites[row][band];
                ASSERT_TRUE(std::equal(list.begin(), list.begin() + 60, model->lists[system][band].begin()))
                    << row << band;
            }
        }
    }

    Values values{GetParam()};
    std::vector<Satellite> visible;
    std::unique_ptr<Model> model = std::make_unique<Model>();
};

TEST_P(MeasurementsOfRandomEpochs, AreThoseOfTheFormulas) {
    for (int epoch = 0; epoch < 30; ++epoch) {
        nextList();
        for (const std::string id : {"rc", "rx", "DC", "DX", "cp", "1p", "2p", "3p", "5p", "lp"}) {
            nextMessage(id, INT32_MIN, INT32_MAX);
        }
        for (const std::string id : {"1r", "2r", "3r", "5r", "lr", "0d", "1d", "2d", "3d", "5d", "ld"}) {
            nextMessage(id, INT16_MIN, INT16_MAX);
        }
        assemble();
        model->assemble();
        ASSERT_NO_FATAL_FAILURE(expectSameRecords()) << "epoch " << epoch;
        ASSERT_NO_FATAL_FAILURE(expectSameBookkeeping()) << "epoch " << epoch;
        ASSERT_EQ(console.str(), model->console);
        if (values.between(0, 3) != 0) {  // an epoch before the header is not cleared
            orbconv::clearEpochRecords(store);
            model->clear();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfManySeeds, MeasurementsOfRandomEpochs,
                         testing::Range(1U, testsupport::effort(61U, 10U)));

}  // namespace
}  // namespace testsupport::measurements
