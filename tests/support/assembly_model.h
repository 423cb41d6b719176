// The assembly once more, written step by step as its rules tell it, without any short cut: for tests that
// run both on the same random epochs. It knows the five systems of a run in version 4.01, and of the 33 steps
// the flags, rx, 1r, 2r and the strengths.
#pragma once

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "support/assembly_bench.h"

namespace testsupport {

struct ModelRecord {
    std::int32_t number = 0;
    std::int32_t slot = 0;
    double clockOffset = 0.0;
    std::array<double, 6> range{};
    std::array<double, 6> strength{};
    std::array<int, 6> digit{};
    std::array<std::uint32_t, 6> flags{};
};

class AssemblyModel {
public:
    struct Entry {
        Constellation system;
        int number;
        std::size_t position;  // among the entries of its system
    };

    AssemblyModel() {
        constexpr std::array<std::size_t, 8> capacities = {32, 32, 37, 30, 61, 30, 30, 30};
        for (std::size_t c = 0; c < 8; ++c) {
            records[c].resize(capacities[c]);
        }
    }

    std::array<std::vector<ModelRecord>, 8> records;
    std::array<bool, 8> included = {true, true, true, false, true, true, false, false};
    // The staged elements of each message, behind `count` those of earlier, longer ones.
    std::vector<Satellite> list = std::vector<Satellite>(180, {.systemCode = 0});
    std::map<std::string, std::vector<std::int64_t>> staged;
    std::map<std::string, std::size_t> counts;
    std::size_t listCount = 0;

    std::array<std::array<std::vector<std::int32_t>, 6>, 8> signalLists;
    std::array<std::array<std::vector<std::int32_t>, 6>, 8> shiftLists;
    std::array<std::array<std::uint32_t, 6>, 8> useCounts{};
    std::int64_t lastRangeDelta = 0;

    void stageList(const std::vector<Satellite>& satellites) {
        std::copy(satellites.begin(), satellites.end(), list.begin());
        listCount = satellites.size();
    }
    void stageMessage(const std::string& id, const std::vector<std::int64_t>& elements) {
        auto& area = staged[id];
        area.resize(180);
        std::copy(elements.begin(), elements.end(), area.begin());
        counts[id] = elements.size();
    }

    void assignSlots() {
        walk(listCount, [&](std::size_t, const Entry& entry) {
            if (entry.system == Constellation::glonass && entry.position < 24) {
                ModelRecord& record = records[1][entry.position];
                if (record.number == 0) {
                    record.number = entry.number;
                }
                if (record.number == entry.number) {
                    record.slot = static_cast<std::int32_t>(element("NN", entry.position));
                }
            }
        });
    }

    void flagStep(const std::string& id, bool surveying) {
        const std::size_t band = bandOf(id);
        walk(listCount, [&](std::size_t i, const Entry& entry) {
            ModelRecord* const record = recordOf(entry);
            if (!hasSignal(entry.system, band) || !included[rowOf(entry.system)] || record == nullptr) {
                return;
            }
            if (claim(*record, entry.number)) {
                const std::uint32_t taken = entry.system == Constellation::beidou && band == 1 ? 0xC0 : 0x40;
                const auto word = static_cast<std::uint32_t>(element(id, i));
                record->flags[band] = (record->flags[band] & ~taken) | (word & taken);
            }
            if (surveying && (record->flags[band] & 0x40) != 0) {
                note(entry, *record, band);
            }
        });
    }

    void rxStep() {
        if (counts["rx"] == 0) {
            return;
        }
        walk(listCount, [&](std::size_t i, const Entry& entry) {
            ModelRecord* const record = recordOf(entry);
            if (included[rowOf(entry.system)] && record != nullptr) {
                const bool longUnit =
                    entry.system != Constellation::gps && entry.system != Constellation::glonass;
                const double offset = !longUnit                                ? 0.075
                                      : entry.system == Constellation::galileo ? 0.085
                                                                               : 0.105;
                record->clockOffset =
                    static_cast<double>(element("rx", i)) * (longUnit ? 2e-11 : 1e-11) + offset;
                record->range[0] = record->clockOffset * 299792458.0;
            }
        });
    }

    // 1r and 2r.
    void rangeStep(const std::string& id) {
        walk(counts[id], [&](std::size_t i, const Entry& entry) {
            const bool first = id == "1r";
            if (first && (!included[rowOf(entry.system)] || entry.system == Constellation::navic)) {
                return;
            }
            if (first) {
                lastRangeDelta = element(id, i);
            }
            ModelRecord* const record = recordOf(entry);
            if (record != nullptr && claim(*record, entry.number)) {
                record->range[bandOf(id)] =
                    (static_cast<double>(lastRangeDelta) * 1e-11 + 2e-7 + record->clockOffset) * 299792458.0;
            }
        });
    }

    void strengthStep(const std::string& id) {
        const std::size_t band = bandOf(id);
        walk(counts[id], [&](std::size_t i, const Entry& entry) {
            ModelRecord* const record = recordOf(entry);
            if (!hasSignal(entry.system, band) || !included[rowOf(entry.system)] || record == nullptr) {
                return;
            }
            const bool free = record->number == 0;
            if (!claim(*record, entry.number)) {
                return;
            }
            record->strength[band] = static_cast<double>(element(id, i)) * 0.25;
            std::size_t source = band;
            if (band == 5) {
                source = entry.system == Constellation::navic ? 0 : free ? 4 : 5;
            }
            record->digit[band] = std::clamp(static_cast<int>(record->strength[source] / 6.0), 1, 9);
        });
    }

    void sortRecords() {
        for (const std::size_t c : {0U, 1U, 2U, 4U, 5U}) {
            const auto key = [c](const ModelRecord& record) { return c == 1 ? record.slot : record.number; };
            for (std::size_t pass = 0; pass < records[c].size(); ++pass) {
                for (std::size_t i = 0; i + 1 < records[c].size(); ++i) {
                    ModelRecord& a = records[c][i];
                    ModelRecord& b = records[c][i + 1];
                    if (key(a) > key(b) && key(a) != 0 && key(b) != 0) {
                        std::swap(a, b);
                    }
                }
            }
        }
    }

    void clearRecords() {
        for (auto& array : records) {
            for (std::size_t i = 0; i < 30; ++i) {
                ModelRecord& record = array[i];
                record.number = 0;
                record.clockOffset = 0.0;
                record.range = {};
                record.strength = {};
                record.flags[0] &= ~0x40U;
            }
        }
    }

private:
    // The signals of version 4.01.
    static bool hasSignal(Constellation system, std::size_t band) {
        switch (system) {
            case Constellation::gps:
            case Constellation::beidou: return true;
            case Constellation::glonass:
            case Constellation::galileo: return band != 5;
            default: return band == 0 || band == 4 || band == 5;
        }
    }
    static bool claim(ModelRecord& record, int number) {
        if (record.number == 0) {
            record.number = number;
        }
        return record.number == number;
    }
    ModelRecord* recordOf(const Entry& entry) {
        auto& array = records[rowOf(entry.system)];
        return entry.position < array.size() ? &array[entry.position] : nullptr;
    }
    std::int64_t element(const std::string& id, std::size_t i) {
        const auto& area = staged[id];
        return i < area.size() ? area[i] : 0;
    }
    template <class Action>
    void walk(std::size_t count, Action action) {
        std::array<std::size_t, 8> cursors{};
        for (std::size_t i = 0; i < count; ++i) {
            const auto code = std::find(systemCodes.begin(), systemCodes.end(), list[i].systemCode);
            if (code != systemCodes.end()) {
                const auto system = static_cast<Constellation>(code - systemCodes.begin());
                action(i, Entry{system, list[i].number, cursors[rowOf(system)]++});
            }
        }
    }

    static void enter(std::vector<std::int32_t>& entries, std::size_t room, std::int32_t key) {
        entries.resize(61);
        for (std::size_t i = 0; i < room && entries[i] != key; ++i) {
            if (entries[i] == 0) {
                entries[i] = key;
                return;
            }
        }
    }
    void note(const Entry& entry, const ModelRecord& record, std::size_t band) {
        const std::size_t c = rowOf(entry.system);
        const bool isBeidou = entry.system == Constellation::beidou;
        if (entry.system != Constellation::navic || band != 4) {
            ++useCounts[c][entry.system == Constellation::galileo && band == 4 ? 3 : band];
        }
        const std::int32_t key = entry.system == Constellation::glonass ? record.slot : record.number;
        if (!isBeidou || band != 1 || (key >= 6 && key <= 58)) {
            enter(signalLists[c][band], isBeidou ? 61 : 32, key);
        }
        auto& shifts = shiftLists[c][band];
        shifts.resize(61);
        const std::size_t room = isBeidou && band != 0 ? 61 : 60;
        if (entry.position < room &&
            (shifts[entry.position] == 0 || shifts[entry.position] == entry.number)) {
            shifts[entry.position] = entry.number;
        } else {
            enter(shifts, room, entry.number);
        }
    }
};

}  // namespace testsupport
