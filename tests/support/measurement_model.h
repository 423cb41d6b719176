// The steps of ranges, Doppler and phases once more, their formulas written out entry by entry: for tests
// that run both on the same random epochs. It knows the five systems and the three versions of a run.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "support/assembly_bench.h"

namespace testsupport::measurements {

// ---- the formulas ----

// Columns of the tables below.
inline constexpr std::size_t gps = 0;
inline constexpr std::size_t glonass = 1;
inline constexpr std::size_t galileo = 2;
inline constexpr std::size_t beidou = 3;
inline constexpr std::size_t navic = 4;
inline constexpr std::array constellations = {Constellation::gps, Constellation::glonass,
                                              Constellation::galileo, Constellation::beidou,
                                              Constellation::navic};
inline constexpr std::array<std::size_t, 5> capacities = {32, 32, 37, 61, 30};
inline constexpr double lightSpeed = 299792458.0;

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
inline const std::vector<StepRow> rangeSteps = {
    {"1r", 1, {ifIncluded, ifIncluded, ifIncluded, ifIncluded, off}},
    {"2r", 2, {all, all, all, all, only4}},
    {"3r", 3, {all, all, all, all, off}},
    {"5r", 4, {all, all, all, all, all}},
    {"lr", 5, {all, only4, off, all, only401}}};
inline const std::vector<DopplerRow> dopplerSteps = {
    {{"0d", 0, {all, all, all, all, all}},    {1575.42, 0, 1575.42, 1561.098, 2492.028}},
    {{"1d", 1, {all, all, all, all, only4}},  {1575.42, 0, 1191.795, 1191.795, 2492.028}},
    {{"2d", 2, {all, all, all, all, off}},    {1227.6, 0, 1207.14, 1207.14, 0}},
    {{"3d", 3, {all, all, all, all, off}},    {1227.6, 0, 1278.75, 1268.52, 0}},
    {{"5d", 4, {all, all, all, all, all}},    {1176.45, 0, 1176.45, 1176.45, 1176.45}},
    {{"ld", 5, {all, off, off, all, only401}}, {1575.42, 0, 0, 1575.42, 1575.42}}};
inline const std::vector<PhaseRow> phaseSteps = {
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

inline double hertz(double megahertz) {
    return std::pow(10.0, 6.0) * megahertz;
}
// MHz of a GLONASS band.
inline double glonassMegahertz(std::size_t band, int channel) {
    if (band == 4) {
        return 1202.025;
    }
    return band < 2 ? channel * 0.5625 + 1602.0 : channel * 0.4375 + 1246.0;
}
inline double beidouExtra(std::size_t band, int number) {
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

}  // namespace testsupport::measurements
