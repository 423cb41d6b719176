#include "assembly/satellite_walk.h"

namespace orbconv {

// NOLINTNEXTLINE(*-member-init): entries are filled as far as they are used
SatelliteWalk::SatelliteWalk(const MessageStaging& staging, EpochStore& store, int entries,
                             WalkedFor purpose) {
    const SatelliteList list(staging);
    const auto count = static_cast<std::size_t>(entries);
    std::array<std::uint8_t, SatelliteList::capacity> constellations{};
    for (std::size_t i = 0; i < count; ++i) {
        const auto constellation = constellationOfCode(list.systemCode(i));
        constellations[i] =
            static_cast<std::uint8_t>(constellation ? indexOf(*constellation) : constellationCount);
        if (constellation) {
            ++begin_[constellations[i] + std::size_t{1}];
        }
    }
    PerConstellation<std::span<SatEpochRecord>> records;
    for (std::size_t c = 0; c < constellationCount; ++c) {
        const auto constellation = static_cast<Constellation>(c);
        const std::size_t met = begin_[c + 1];
        records[c] = purpose == WalkedFor::flags ? store.claimableFirst(constellation, met)
                                                 : store.writableFirst(constellation, met);
        begin_[c + 1] += begin_[c];
    }
    // The ConstellationCursor of each constellation: how many of its entries have been met.
    std::array<std::uint8_t, constellationCount> cursor{};
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t c = constellations[i];
        if (c == constellationCount) {
            continue;
        }
        const bool byChannel = c == indexOf(Constellation::glonass);
        const std::uint8_t position = cursor[c]++;
        entries_[begin_[c] + position] = {
            .record = position < records[c].size() ? &records[c][position] : nullptr,
            .number = byChannel ? list.frequencyChannel(i) : std::int32_t{list.satelliteNumber(i)},
            .rawNumber = list.satelliteNumber(i),
            .element = static_cast<std::uint8_t>(i),
            .position = position};
    }
}

}  // namespace orbconv
