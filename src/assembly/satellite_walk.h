// The walk that all assembly steps share: the entries of the satellite list, each with the record at its
// position among those of its constellation.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "assembly/epoch_store.h"
#include "assembly/signal_plan.h"
#include "log/satellite_lists.h"

namespace orbconv {

// No step stores a value for SBAS or QZSS, although the store has arrays for them.
constexpr bool hasRecords(Constellation constellation) {
    return constellation != Constellation::sbas && constellation != Constellation::qzss;
}

struct WalkEntry {
    SatEpochRecord* record;  // null beyond the capacity of the array
    std::int32_t number;     // signed for GLONASS, where it is the channel
    std::uint8_t rawNumber;  // the byte as the list has it
    std::uint8_t element;    // place in the list, and in every message's array
    std::uint8_t position;   // place among the entries of its constellation

    [[nodiscard]] Claim claim() const { return claimRecord(record, number); }
};

// Made once an epoch, out of the first `entries` entries of the list (at most 180). A step takes a
// constellation as a whole or not at all, so an entry's position, and with it its record, is the same for
// every step, and the constellations can be walked one after the other.
class SatelliteWalk {
public:
    SatelliteWalk(const MessageStaging& staging, EpochStore& store, int entries);

    // The constellation's entries among the first `count` of the list, in their order.
    [[nodiscard]] std::span<const WalkEntry> of(Constellation constellation, int count) const {
        const std::size_t c = indexOf(constellation);
        std::size_t end = begin_[c + 1];
        while (end > begin_[c] && entries_[end - 1].element >= count) {
            --end;
        }
        return std::span(entries_).subspan(begin_[c], end - begin_[c]);
    }

private:
    std::array<WalkEntry, SatelliteList::capacity> entries_;  // by constellation
    std::array<std::size_t, constellationCount + 1>
        begin_{};  // of each among the entries; behind them the end
};

}  // namespace orbconv
