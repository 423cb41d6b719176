// Random epochs through the steps of ranges, Doppler and phases and through their formulas written out
// entry by entry: in every version, with systems left out, messages that are missing, too short or too long,
// and records that are another satellite's.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "assembly/record_order.h"
#include "support/assembly_bench.h"
#include "support/effort.h"

namespace {

using testsupport::Constellation;
using testsupport::ObsRow;
using testsupport::Satellite;
using testsupport::SatEpochRecord;
using testsupport::Values;

// ---- the formulas ----

// Columns of the tables below.
constexpr std::size_t gps = 0;
constexpr std::size_t glonass = 1;
constexpr std::size_t galileo = 2;
constexpr std::size_t beidou = 3;
constexpr std::size_t navic = 4;
constexpr std::array constellations = {Constellation::gps, Constellation::glonass, Constellation::galileo,
                                       Constellation::beidou, Constellation::navic};
constexpr std::array<std::size_t, 5> capacities = {32, 32, 37, 61, 30};
constexpr double lightSpeed = 299792458.0;

// Versions that let a system take part in a step.
enum Versions { off, all, only4, only401, ifIncluded };

struct StepRow {
    std::string id;
    std::size_t band;
    std::array<Versions, 5> gates;  // G R E C I
};
struct PhaseRow {
    StepRow step;
    std::array<double, 5> megahertz;  // 0: GLONASS has its own expressions, or there is no value
    std::array<double, 5> shifts;
    std::array<bool, 5> lists;   // writes PhaseShiftSatellites
    std::array<bool, 5> counts;  // adds to SignalUseCount
};
struct DopplerRow {
    StepRow step;
    std::array<double, 5> megahertz;
};

// clang-format off
const std::vector<StepRow> rangeSteps = {
    {"1r", 1, {ifIncluded, ifIncluded, ifIncluded, ifIncluded, off}},
    {"2r", 2, {all, all, all, all, only4}},
    {"3r", 3, {all, all, all, all, off}},
    {"5r", 4, {all, all, all, all, all}},
    {"lr", 5, {all, only4, off, all, only401}}};
const std::vector<DopplerRow> dopplerSteps = {
    {{"0d", 0, {all, all, all, all, all}},    {1575.42, 0, 1575.42, 1561.098, 2492.028}},
    {{"1d", 1, {all, all, all, all, only4}},  {1575.42, 0, 1191.795, 1191.795, 2492.028}},
    {{"2d", 2, {all, all, all, all, off}},    {1227.6, 0, 1207.14, 1207.14, 0}},
    {{"3d", 3, {all, all, all, all, off}},    {1227.6, 0, 1278.75, 1268.52, 0}},
    {{"5d", 4, {all, all, all, all, all}},    {1176.45, 0, 1176.45, 1176.45, 1176.45}},
    {{"ld", 5, {all, off, off, all, only401}}, {1575.42, 0, 0, 1575.42, 1575.42}}};
const std::vector<PhaseRow> phaseSteps = {
    {{"cp", 0, {all, all, all, all, all}}, {1575.42, 0, 1575.42, 1561.098, 2492.028},
     {0, 0, 0.5, 0, 0}, {false, true, false, false, false}, {}},
    {{"1p", 1, {all, all, all, all, off}}, {1575.42, 0, 1191.795, 1191.795, 0},
     {-0.25, -0.25, 0.25, 0.25, 0}, {true, true, true, false, true}, {false, false, false, false, true}},
    {{"2p", 2, {all, all, all, all, only4}}, {1227.6, 0, 1207.14, 1207.14, 2492.028},
     {0, 0.25, 0.25, 0, 0}, {true, true, true, false, true}, {false, false, true, false, true}},
    {{"3p", 3, {all, all, all, all, only4}}, {1227.6, 0, 1278.75, 1268.52, 2492.028},
     {0.25, 0, 0.5, 0, 0}, {true, true, true, false, true}, {false, false, true, false, true}},
    {{"5p", 4, {all, all, all, all, all}}, {1176.45, 0, 1176.45, 1176.45, 1176.45},
     {0.25, 0.25, 0.25, 0.25, 0}, {true, true, true, false, true}, {false, false, true, false, true}},
    {{"lp", 5, {all, only4, off, all, only401}}, {1575.42, 0, 0, 1575.42, 1575.42},
     {-0.25, 0, 0, 0, 0}, {true, true, false, false, true}, {false, true, false, false, true}}};
// clang-format on

double hertz(double megahertz) {
    return std::pow(10.0, 6.0) * megahertz;
}
// MHz of a GLONASS band.
double glonassMegahertz(std::size_t band, int channel) {
    if (band == 4) {
        return 1202.025;
    }
    return band < 2 ? channel * 0.5625 + 1602.0 : channel * 0.4375 + 1246.0;
}
double beidouExtra(std::size_t band, int number) {
    const bool to58 = number >= 6 && number <= 58;
    const bool to18 = number >= 6 && number <= 18;
    switch (band) {
        case 0:
        case 3: return to58 ? 0.5 : 0.0;
        case 2: return to18 ? 0.25 : 0.0;
        case 4: return to18 ? 0.5 : 0.0;
        default: return 0.0;
    }
}

// ---- the records ----

struct Record {
    int number = 0;
    double clockOffset = 0.0;
    std::int32_t referenceDoppler = 0;
    std::array<double, 6> range{};
    std::array<double, 6> doppler{};
    std::array<double, 6> phase{};

    bool claim(int satellite) {
        number = number == 0 ? satellite : number;
        return number == satellite;
    }
};

class Model {
public:
    std::array<std::vector<Record>, 5> records;
    std::array<bool, 5> included{};
    double version = 3.05;
    std::array<std::array<unsigned, 6>, 5> useCounts{};
    std::array<std::array<std::array<int, 60>, 6>, 5> lists{};
    std::array<std::array<double, 6>, 5> shifts{};
    std::string console;

    Model() {
        for (std::size_t system = 0; system < 5; ++system) {
            records[system].resize(capacities[system]);
        }
    }
    void stageList(const std::vector<Satellite>& satellites) {
        std::copy(satellites.begin(), satellites.end(), list_.begin());
        listCount_ = satellites.size();
    }
    void stageMessage(const std::string& id, const std::vector<std::int64_t>& elements) {
        auto& area = staged_[id];
        area.resize(180);
        std::copy(elements.begin(), elements.end(), area.begin());
        counts_[id] = elements.size();
    }

    void assemble() {
        walk({"FC", 0, {ifIncluded, ifIncluded, ifIncluded, ifIncluded, ifIncluded}}, listCount_,
             [](Record* record, std::size_t, int number, auto...) {
                 if (record != nullptr) {
                     record->claim(number);
                 }
             });
        fullRanges();
        for (const StepRow& step : rangeSteps) {
            rangeDeltas(step);
        }
        fullDopplers();
        for (const DopplerRow& row : dopplerSteps) {
            dopplerDeltas(row);
        }
        for (const PhaseRow& row : phaseSteps) {
            phases(row);
        }
    }

    // The first 30 of every array.
    void clear() {
        for (auto& array : records) {
            std::fill_n(array.begin(), 30, Record());
        }
    }

private:
    [[nodiscard]] bool opens(Versions gate, std::size_t system) const {
        switch (gate) {
            case off: return false;
            case all: return true;
            case only4: return version == 4.0 || version == 4.01;
            case only401: return version == 4.01;
            case ifIncluded: return included[system];
        }
        return false;
    }
    // Calls action(record, system, number, cursor, entry) for each entry that takes part; a step that leaves
    // a system out does so as a whole, so its cursor has no say.
    template <class Action>
    void walk(const StepRow& step, std::size_t count, Action action) {
        std::array<std::size_t, 5> cursors{};
        for (std::size_t i = 0; i < count; ++i) {
            constexpr std::array<std::uint8_t, 5> codes = {1, 2, 4, 6, 7};
            for (std::size_t system = 0; system < 5; ++system) {
                if (list_[i].systemCode == codes[system] && opens(step.gates[system], system)) {
                    const std::size_t cursor = cursors[system]++;
                    Record* const record = cursor < capacities[system] ? &records[system][cursor] : nullptr;
                    action(record, system, list_[i].number, cursor, i);
                }
            }
        }
    }
    std::int64_t element(const std::string& id, std::size_t i) {
        auto& area = staged_[id];
        area.resize(180);
        return area[i];
    }

    static double timeOfFlight(std::int64_t raw, std::size_t system) {
        const double unit = std::pow(10.0, -11.0);
        const bool longUnit = system != gps && system != glonass;
        const double offset = !longUnit ? 0.075 : system == galileo ? 0.085 : 0.105;
        return static_cast<double>(raw) * (longUnit ? unit + unit : unit) + offset;
    }
    void fullRanges() {
        const std::array<Versions, 5> gates = {ifIncluded, ifIncluded, ifIncluded, ifIncluded, ifIncluded};
        walk({"rc", 0, gates}, counts_["rc"],
             [&](Record* record, std::size_t system, int number, std::size_t, std::size_t i) {
                 if (record != nullptr && record->claim(number & 0xFF)) {
                     record->range[0] = timeOfFlight(element("rc", i), system) * lightSpeed;
                 }
             });
        walk({"rx", 0, gates}, counts_["rx"] > 0 ? listCount_ : 0,
             [&](Record* record, std::size_t system, int, std::size_t, std::size_t i) {
                 if (record != nullptr) {
                     record->clockOffset = timeOfFlight(element("rx", i), system);
                     record->range[0] = record->clockOffset * lightSpeed;
                 }
             });
    }
    void rangeDeltas(const StepRow& step) {
        walk(step, counts_[step.id],
             [&](Record* record, std::size_t, int number, std::size_t, std::size_t i) {
                 const std::int64_t own = element(step.id, i);
                 lastRangeDelta_ = step.band == 1 ? own : lastRangeDelta_;
                 if (record != nullptr && record->claim(number)) {
                     const auto delta = static_cast<double>(step.band == 2 ? lastRangeDelta_ : own);
                     record->range[step.band] =
                         (delta * std::pow(10.0, -11.0) + 2e-7 + record->clockOffset) * lightSpeed;
                 }
             });
    }
    static double turned(std::int64_t counts) {
        return static_cast<double>(static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(counts)));
    }
    void fullDopplers() {
        const std::array<Versions, 5> gates = {all, all, all, all, all};
        walk({"DX", 0, gates}, counts_["DX"],
             [&](Record* record, std::size_t, int, std::size_t, std::size_t i) {
                 if (record != nullptr) {
                     record->referenceDoppler = static_cast<std::int32_t>(element("DX", i));
                 }
             });
        walk({"DC", 0, gates}, counts_["DC"],
             [&](Record* record, std::size_t system, int number, std::size_t, std::size_t i) {
                 if (record == nullptr) {
                     return;
                 }
                 if (record->claim(number)) {
                     record->doppler[0] = turned(element("DC", i)) * std::pow(10.0, -4.0);
                 } else if (system == glonass) {
                     console += "----->>> Error glo dc\n";
                 }
             });
    }
    void dopplerDeltas(const DopplerRow& row) {
        walk(row.step, counts_[row.step.id],
             [&](Record* record, std::size_t system, int number, std::size_t, std::size_t i) {
                 if (record == nullptr || !record->claim(number)) {
                     return;
                 }
                 const std::size_t band = row.step.band;
                 double own = hertz(row.megahertz[system]);
                 double reference = hertz(system == beidou ? 1561.098 : 1575.42);
                 if (system == glonass) {
                     own = glonassMegahertz(band, record->number);
                     reference = glonassMegahertz(0, record->number);
                 }
                 const double counts = turned(record->referenceDoppler + element(row.step.id, i));
                 record->doppler[band] = counts * own / reference * std::pow(10.0, -4.0);
             });
    }
    void phases(const PhaseRow& row) {
        const std::size_t band = row.step.band;
        walk(row.step, counts_[row.step.id],
             [&](Record* record, std::size_t system, int number, std::size_t cursor, std::size_t i) {
                 shifts[system][band] = row.shifts[system];
                 useCounts[system][band] += row.counts[system] ? 1U : 0U;
                 if (row.lists[system] && cursor < 60) {
                     lists[system][band][cursor] = number;
                 }
                 const bool hasValue = system != glonass || band != 5;
                 if (record == nullptr || !record->claim(number) || !hasValue) {
                     return;
                 }
                 const double t = static_cast<double>(element(row.step.id, i)) * std::pow(2.0, -40.0) +
                                  record->clockOffset;
                 double cycles = t * hertz(row.megahertz[system]);
                 if (system == glonass) {
                     const double megahertz = glonassMegahertz(band, record->number);
                     cycles = band == 4 ? std::pow(10.0, 6.0) * (t * megahertz)
                                        : std::pow(10.0, 6.0) * megahertz * t;
                 }
                 const double extra = system == beidou ? beidouExtra(band, record->number) : 0.0;
                 record->phase[band] = cycles + row.shifts[system] + extra;
             });
    }

    std::vector<Satellite> list_ = std::vector<Satellite>(180, {.systemCode = 0});
    std::size_t listCount_ = 0;
    std::map<std::string, std::vector<std::int64_t>> staged_;
    std::map<std::string, std::size_t> counts_;
    std::int64_t lastRangeDelta_ = 0;
};

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
