// The assembly on the bench: the tables that it reads and writes, messages staged into them by their id,
// and the names that the table-driven tests of the steps share.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <ostream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/epoch_assembly.h"
#include "support/staging.h"

namespace testsupport {

using orbconv::Constellation;
using orbconv::ObsRow;
using orbconv::SatEpochRecord;
using samplelog::Satellite;

inline constexpr std::array<Constellation, 8> everyConstellation = {
    Constellation::gps,    Constellation::glonass, Constellation::galileo, Constellation::qzss,
    Constellation::beidou, Constellation::navic,   Constellation::sbas,    Constellation::glonassCdma};

inline constexpr std::array<std::string_view, 8> constellationNames = {
    "Gps", "Glonass", "Galileo", "Qzss", "Beidou", "Navic", "Sbas", "GlonassCdma"};

// System codes of the satellite list.
inline constexpr std::array<std::uint8_t, 8> systemCodes = {1, 2, 4, 5, 6, 7, 3, 9};

constexpr std::size_t rowOf(Constellation constellation) {
    return static_cast<std::size_t>(constellation);
}
inline Satellite satellite(Constellation constellation, int number) {
    return {.systemCode = systemCodes[rowOf(constellation)], .number = number};
}
// `count` satellites of one constellation, numbered from `first` on.
inline std::vector<Satellite> satellites(Constellation constellation, int first, int count) {
    std::vector<Satellite> list;
    for (int i = 0; i < count; ++i) {
        list.push_back(satellite(constellation, first + i));
    }
    return list;
}

// ---- versions ----

// One older than all, the three that a run can have, and the three that switch a signal off.
inline constexpr std::array<double, 7> everyVersion = {3.04, 3.05, 4.0, 4.01, 8.0, 135.0, 136.0};

// The versions of `everyVersion` that open a gate.
struct Gate {
    std::array<bool, 7> open;
    [[nodiscard]] bool opensFor(double version) const {
        for (std::size_t i = 0; i < everyVersion.size(); ++i) {
            if (everyVersion[i] == version) {
                return open[i];
            }
        }
        return false;
    }
};
// clang-format off
//                                    3.04   3.05   4.0    4.01   8.0    135.0  136.0
inline constexpr Gate shut       = {{false, false, false, false, false, false, false}};
inline constexpr Gate always     = {{true,  true,  true,  true,  true,  true,  true}};
inline constexpr Gate from305    = {{false, true,  true,  true,  true,  true,  true}};
inline constexpr Gate from401    = {{false, false, false, true,  true,  true,  true}};
inline constexpr Gate only3And4  = {{false, true,  true,  true,  false, false, false}};
inline constexpr Gate only4      = {{false, false, true,  true,  false, false, false}};
inline constexpr Gate only401    = {{false, false, false, true,  false, false, false}};
inline constexpr Gate only8      = {{false, false, false, false, true,  false, false}};
inline constexpr Gate only135    = {{false, false, false, false, false, true,  false}};
inline constexpr Gate only136    = {{false, false, false, false, false, false, true}};
// clang-format on

// ---- rows of table-driven tests ----

// A message and a constellation; base of the rows.
struct Cell {
    std::string_view id;
    Constellation system;

    friend std::ostream& operator<<(std::ostream& out, const Cell& cell) {
        return out << constellationNames[rowOf(cell.system)] << cell.id;
    }
};
// Names a parameterised test after its cell, such as "Gps1r".
inline constexpr auto nameOfCell = [](const auto& info) {
    return std::string(constellationNames[rowOf(info.param.system)]) + std::string(info.param.id);
};

// Names a parameterised test after its message.
inline constexpr auto nameOfMessage = [](const auto& info) { return std::string(info.param.id); };

// Bands of the message families c, 1, 2, 3, 5, l; rc, rx, DC and 0d belong to c.
inline std::size_t bandOf(std::string_view id) {
    const char family = id[1] == 'r' || id[1] == 'd' || id[1] == 'p' || id[1] == 'E' ? id[0] : id[1];
    const std::size_t place = std::string_view("123").find(family);
    if (place != std::string_view::npos) {
        return place + 1;
    }
    return family == '5' ? 4 : family == 'l' ? 5 : 0;
}

// ---- the bench ----

class AssemblyBench {
public:
    orbconv::RunOptions options;
    orbconv::MessageStaging staging;
    orbconv::EpochStore store;
    orbconv::SignalSurvey survey;
    std::ostringstream console;

    // Makes everything but the options new.
    void restart() {
        staging = {};
        store = {};
        survey = {};
        console.str({});
    }

    void includeEverySystem(bool include = true) {
        for (const Constellation constellation : everyConstellation) {
            this->include(constellation, include);
        }
    }
    void include(Constellation constellation, bool include) {
        const std::array<bool*, 8> flags = {&options.includeGps,     &options.includeGlonass,
                                            &options.includeGalileo, &options.includeQzss,
                                            &options.includeBeidou,  &options.includeNavic,
                                            &options.includeSbas,    &options.includeGlonassCdma};
        *flags[rowOf(constellation)] = include;
    }

    // The satellite list of the epoch.
    void list(const std::vector<Satellite>& entries) { stage(staging, samplelog::LogBuilder().sx(entries)); }
    // The same entries left behind by an earlier list, the present one being empty: the steps that walk the
    // count of the list have nothing to do, those that walk their own message's count meet free records.
    void staleList(const std::vector<Satellite>& entries) {
        list(entries);
        list({});
    }
    // Stages a measurement or flag message, or NN.
    void put(std::string_view id, const std::vector<std::int64_t>& elements) {
        std::string body;
        for (const std::int64_t element : elements) {
            for (std::size_t byte = 0; byte < elementBytes(id); ++byte) {
                body.push_back(static_cast<char>(static_cast<std::uint64_t>(element) >> (8 * byte)));
            }
        }
        stage(staging, samplelog::LogBuilder().message(id, body));
    }

    // What a TD of the writing pass does.
    void assemble() {
        auto assembly = tables(false);
        orbconv::assembleEpoch(assembly);
    }
    // What a TD of the survey pass does.
    void collect() {
        auto assembly = tables(true);
        orbconv::assembleFlags(assembly);
    }

    // To be looked at or filled by a test; it counts as used from then on.
    SatEpochRecord& record(Constellation constellation, std::size_t i = 0) {
        return store.useFirst(constellation, i + 1)[i];
    }
    [[nodiscard]] std::string_view code(Constellation constellation, std::size_t slot) const {
        return survey.codes(constellation)[slot].view();
    }

private:
    orbconv::EpochAssembly tables(bool surveying) {
        return {.options = options,
                .surveying = surveying,
                .staging = staging,
                .store = store,
                .survey = survey,
                .console = console};
    }
    static std::size_t elementBytes(std::string_view id) {
        if (id[1] == 'p' || id == "rc" || id == "rx" || id == "DC" || id == "DX") {
            return 4;
        }
        return id[1] == 'E' || id == "NN" ? 1 : 2;
    }
};

// Base of the fixtures: the bench is at hand in every test.
class AssemblyTest : public testing::Test, protected AssemblyBench {};
template <class Row>
class AssemblyTable : public testing::TestWithParam<Row>, protected AssemblyBench {};

// ---- numbers ----

// The same values on every run.
class Values {
public:
    explicit Values(unsigned seed) : engine_(seed) {}
    std::int32_t between(std::int32_t low, std::int32_t high) {
        const auto width = static_cast<std::uint64_t>(static_cast<std::int64_t>(high) - low) + 1;
        return static_cast<std::int32_t>(low + static_cast<std::int64_t>(engine_() % width));
    }
    std::int32_t int32() { return between(INT32_MIN, INT32_MAX); }
    std::int16_t int16() { return static_cast<std::int16_t>(between(INT16_MIN, INT16_MAX)); }

private:
    std::mt19937 engine_;
};

}  // namespace testsupport
