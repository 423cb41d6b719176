#include "assembly/satellite_walk.h"

namespace orbconv {

// NOLINTNEXTLINE(*-member-init): entries are filled as far as they are used
SatelliteWalk::SatelliteWalk(const MessageStaging& staging, EpochStore& store, int entries) {
    const SatelliteList list(staging);
    const auto count = static_cast<std::size_t>(entries);
    std::array<std::uint8_t, SatelliteList::capacity> constellations{};
    PerConstellation<std::size_t> met{};  // entries of each
    for (std::size_t i = 0; i < count; ++i) {
        const auto constellation = constellationOfCode(list.systemCode(i));
        constellations[i] =
            static_cast<std::uint8_t>(constellation ? indexOf(*constellation) : constellationCount);
        if (constellation) {
            ++met[constellations[i]];
        }
    }
    PerConstellation<std::span<SatEpochRecord>> records;
    for (std::size_t c = 0; c < constellationCount; ++c) {
        records[c] = store.useFirst(static_cast<Constellation>(c), met[c]);
        begin_[c + 1] = begin_[c] + met[c];
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
