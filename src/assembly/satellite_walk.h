// The walk that all assembly steps share: the entries of the satellite list, each with the record at its
// position among those of its constellation.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "assembly/epoch_store.h"
#include "assembly/signal_plan.h"
#include "log/satellite_lists.h"

namespace orbconv {

// The place of an unknown system code in per-constellation tables of the walk.
inline constexpr std::size_t noConstellation = constellationCount;

// Which constellations a step takes; never noConstellation.
using EnabledConstellations = std::array<bool, constellationCount + 1>;

// No step stores a value for SBAS or QZSS, although the store has arrays for them.
constexpr bool hasRecords(Constellation constellation) {
    return constellation != Constellation::sbas && constellation != Constellation::qzss;
}

struct WalkEntry {
    SatEpochRecord* record = nullptr;  // null beyond the capacity of the array, and for unknown codes
    std::int32_t number = 0;           // signed for GLONASS, where it is the channel
    std::uint8_t rawNumber = 0;        // the byte as the list has it
    std::uint8_t constellation = noConstellation;
    std::uint8_t position = 0;  // among the entries of its constellation

    [[nodiscard]] Constellation system() const { return static_cast<Constellation>(constellation); }
    [[nodiscard]] Claim claim() const { return claimRecord(record, number); }
};

// Made once an epoch. A step takes a constellation as a whole or not at all, so an entry's position, and
// with it its record, is the same for every step.
class SatelliteWalk {
public:
    SatelliteWalk(const MessageStaging& staging, EpochStore& store);

    // Calls action(i, entry) for the first `count` entries of the enabled constellations.
    template <class Action>
    void forEach(int count, const EnabledConstellations& enabled, Action action) const {
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            const WalkEntry& entry = entries_[i];
            if (enabled[entry.constellation]) {
                action(i, entry);
            }
        }
    }

    // Whether the first `count` entries hold one of the constellation.
    [[nodiscard]] bool holds(Constellation constellation, int count) const {
        return firstEntry_[indexOf(constellation)] < static_cast<std::size_t>(count);
    }

private:
    std::array<WalkEntry, SatelliteList::capacity> entries_;
    std::array<std::size_t, constellationCount + 1> firstEntry_{};
};

inline SatelliteWalk::SatelliteWalk(const MessageStaging& staging, EpochStore& store) {
    const SatelliteList list(staging);
    firstEntry_.fill(entries_.size());
    std::array<std::uint8_t, constellationCount> cursor{};
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const auto constellation = constellationOfCode(list.systemCode(i));
        if (!constellation) {
            continue;
        }
        const std::size_t c = indexOf(*constellation);
        const bool isGlonass = *constellation == Constellation::glonass;
        const std::uint8_t position = cursor[c]++;
        entries_[i] = {
            .record = position < storeCapacity[c] ? &store.all[storeOffset[c] + position] : nullptr,
            .number =
                isGlonass ? list.frequencyChannel(i) : static_cast<std::int32_t>(list.satelliteNumber(i)),
            .rawNumber = list.satelliteNumber(i),
            .constellation = static_cast<std::uint8_t>(c),
            .position = position};
        if (position == 0) {
            firstEntry_[c] = i;
        }
    }
}

}  // namespace orbconv
