// Random epochs through the assembly and through its rules written out literally: changing lists, records
// that are another's, messages that are missing, too short or too long, and systems that are left out.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "assembly/record_order.h"
#include "support/assembly_bench.h"
#include "support/assembly_model.h"

namespace {

using testsupport::AssemblyModel;
using testsupport::Constellation;
using testsupport::ModelRecord;
using testsupport::ObsRow;
using testsupport::rowOf;
using testsupport::Satellite;
using testsupport::SatEpochRecord;
using testsupport::Values;
using enum testsupport::Constellation;

const std::vector<std::string> flagIds = {"FC", "F1", "F2", "F3", "F5", "Fl"};
const std::vector<std::string> strengthIds = {"CE", "1E", "2E", "3E", "5E", "lE"};

class AssemblyOfRandomEpochs : public testing::TestWithParam<unsigned>, protected testsupport::AssemblyBench {
protected:
    AssemblyOfRandomEpochs() {
        options.rinexVersion = 4.01;
        for (const Constellation system : {gps, glonass, galileo, beidou, navic}) {
            const bool included = values.between(0, 7) != 0;
            include(system, included);
            model->included[rowOf(system)] = included;
        }
    }

    // A list of up to 180 satellites, in which a satellite mostly keeps its place from epoch to epoch; the
    // short ones of a log with few satellites, the long ones with more than the arrays have room for.
    void nextList() {
        if (epoch % 11 == 0 || visible.empty()) {
            visible.clear();
            const int most = values.between(0, 2);
            for (const auto& [system, count] :
                 {std::pair{gps, 34}, {glonass, 30}, {galileo, 40}, {beidou, 64}, {navic, 12}}) {
                const int present = most == 2 ? count : values.between(0, most == 1 ? 12 : 3);
                for (int i = 0; i < present; ++i) {
                    visible.push_back(randomSatellite(system));
                }
            }
            std::shuffle(visible.begin(), visible.end(), std::mt19937(GetParam() + epoch));
        }
        for (int changes = values.between(0, 3); changes > 0 && !visible.empty(); --changes) {
            Satellite& changed =
                visible[static_cast<std::size_t>(values.between(0, static_cast<int>(visible.size()) - 1))];
            changed = values.between(0, 9) == 0 ? Satellite{.systemCode = 8, .number = 1}
                                                : randomSatellite(systemOf(changed));
        }
        list(visible);
        model->stageList(visible);
    }
    Satellite randomSatellite(Constellation system) {
        const int number = system == glonass ? values.between(-7, 6) : values.between(0, 63);
        return testsupport::satellite(system, number);
    }
    static Constellation systemOf(const Satellite& entry) {
        for (const Constellation system : {glonass, galileo, beidou, navic}) {
            if (testsupport::systemCodes[rowOf(system)] == entry.systemCode) {
                return system;
            }
        }
        return gps;
    }

    // Mostly one element a satellite; now and then none, fewer, more, or no message at all.
    void nextMessage(const std::string& id, std::int32_t low, std::int32_t high, std::size_t room = 180) {
        std::size_t count = visible.size();
        switch (values.between(0, 12)) {
            case 0: return;
            case 1: count = 0; break;
            case 2: count = count / 2; break;
            case 3: count = count + 5; break;
            default: break;
        }
        count = std::min(count, room);
        std::vector<std::int64_t> elements;
        for (std::size_t i = 0; i < count; ++i) {
            elements.push_back(values.between(low, high));
        }
        put(id, elements);
        model->stageMessage(id, elements);
    }
    void nextFlags() {
        nextList();
        nextMessage("NN", 0, 26, 24);
        orbconv::assignGlonassSlots(staging, store);
        model->assignSlots();
        for (const std::string& id : flagIds) {
            nextMessage(id, 0, 255);
        }
    }

    void expectSameRecords() {
        for (const Constellation system : testsupport::everyConstellation) {
            const auto& expected = model->records[rowOf(system)];
            for (std::size_t i = 0; i < expected.size(); ++i) {
                expectSame(record(system, i), expected[i]);
                if (HasFatalFailure()) {
                    FAIL() << "epoch " << epoch << ", system " << rowOf(system) << ", record " << i;
                }
            }
        }
    }
    static void expectSame(const SatEpochRecord& found, const ModelRecord& expected) {
        ASSERT_EQ(found.number, expected.number);
        ASSERT_EQ(found.gloSlotNumber, expected.slot);
        ASSERT_EQ(found.clockOffset, expected.clockOffset);
        for (std::size_t band = 0; band < 6; ++band) {
            ASSERT_EQ(found.at(ObsRow::pseudorange, band), expected.range[band]);
            ASSERT_EQ(found.at(ObsRow::strength, band), expected.strength[band]);
            ASSERT_EQ(found.strengthIndex[band], expected.digit[band]);
            ASSERT_EQ(found.signalFlags[band], expected.flags[band]);
        }
    }
    static void expectSameList(const orbconv::SatelliteNumbers& found, std::vector<std::int32_t> expected) {
        expected.resize(found.size());
        ASSERT_TRUE(std::equal(found.begin(), found.end(), expected.begin()));
    }
    void expectSameSurvey() {
        for (const Constellation system : {gps, glonass, galileo, beidou, navic}) {
            const std::size_t c = rowOf(system);
            for (std::size_t band = 0; band < 6; ++band) {
                ASSERT_EQ(survey.signalUseCount[c][band], model->useCounts[c][band]) << c << " " << band;
                expectSameList(survey.signalSatelliteList[c][band], model->signalLists[c][band]);
                expectSameList(survey.phaseShiftSatellites[c][band], model->shiftLists[c][band]);
                ASSERT_FALSE(HasFatalFailure()) << "epoch " << epoch << ", " << c << " " << band;
            }
        }
    }

    unsigned epoch = 0;
    Values values{GetParam()};
    std::vector<Satellite> visible;
    std::unique_ptr<AssemblyModel> model = std::make_unique<AssemblyModel>();
};

TEST_P(AssemblyOfRandomEpochs, SurveysTheSignalsOfTheRules) {
    for (epoch = 0; epoch < 60; ++epoch) {
        nextFlags();
        collect();
        for (const std::string& id : flagIds) {
            model->flagStep(id, true);
        }
        ASSERT_NO_FATAL_FAILURE(expectSameSurvey());
        ASSERT_NO_FATAL_FAILURE(expectSameRecords());
        orbconv::clearEpochRecords(store);
        model->clearRecords();
    }
}

TEST_P(AssemblyOfRandomEpochs, FillsTheRecordsOfTheRules) {
    for (epoch = 0; epoch < 60; ++epoch) {
        nextFlags();
        nextMessage("rx", -2000000000, 2000000000);
        nextMessage("1r", -32768, 32767);
        nextMessage("2r", -32768, 32767);
        for (const std::string& id : strengthIds) {
            nextMessage(id, 0, 255);
        }
        assemble();
        for (const std::string& id : flagIds) {
            model->flagStep(id, false);
        }
        model->rxStep();
        model->rangeStep("1r");
        model->rangeStep("2r");
        for (const std::string& id : strengthIds) {
            model->strengthStep(id);
        }
        ASSERT_NO_FATAL_FAILURE(expectSameRecords());
        ASSERT_EQ(survey.lastRangeDelta, model->lastRangeDelta);

        orbconv::sortEpochRecords(options, staging, store, survey);
        model->sortRecords();
        ASSERT_NO_FATAL_FAILURE(expectSameRecords());
        if (values.between(0, 4) != 0) {  // an epoch before the header is not cleared
            orbconv::clearEpochRecords(store);
            model->clearRecords();
            ASSERT_NO_FATAL_FAILURE(expectSameRecords());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfManySeeds, AssemblyOfRandomEpochs, testing::Range(1U, 25U));

}  // namespace
