// Constellations, satellites and signals of a log, counted epoch by epoch.
#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <vector>

#include "inspect/log_summary.h"
#include "log/message_lookup.h"
#include "reading/epoch.h"

namespace orbconv::inspect {

// A satellite's place in tables: its number, for GLONASS its slot, and behind these the channel of a GLONASS
// satellite without a slot.
inline constexpr std::size_t satelliteKeys = 512;
constexpr std::size_t satelliteKey(const reading::EpochSatellite& satellite) {
    const bool byChannel = satellite.constellation == Constellation::glonass && satellite.nameNumber() == 0;
    return byChannel ? 256U + satellite.number : static_cast<std::size_t>(satellite.nameNumber());
}
SatelliteName nameOfKey(Constellation constellation, std::size_t key);

// One signal of one satellite in an epoch.
struct SignalSighting {
    std::size_t satellite;  // index in the epoch's list
    std::uint8_t strength;  // in steps of 0.25 dB-Hz; 0: none
};

// Calls `take` for each satellite of a known constellation whose flag word of this epoch says that the band's
// signal is present.
template <class Take>
void forSignals(const reading::Epoch& epoch, std::size_t band, Take&& take) {
    const auto flags = epoch.bytes(findRowQuickly(bandMessages[band].flag));
    if (flags.empty()) {
        return;
    }
    const auto strengths = epoch.bytes(findRowQuickly(bandMessages[band].strength));
    const auto satellites = epoch.satellites();
    const std::size_t count = std::min(satellites.size(), flags.size() / 2);
    for (std::size_t i = 0; i < count; ++i) {
        if ((flags[2 * i] & signalPresentBit) != 0 && satellites[i].constellation) {
            take(SignalSighting{.satellite = i,
                                .strength = i < strengths.size() ? strengths[i] : std::uint8_t{0}});
        }
    }
}

class SignalCounts {
public:
    SignalCounts();
    void add(const reading::Epoch& epoch);
    void tell(LogSummary& summary) const;

private:
    using Keys = std::bitset<satelliteKeys>;
    struct Signal {
        Keys keys;
        std::uint64_t epochs = 0;
        std::uint64_t lastEpoch = 0;  // the number of the last one that has it, from 1
        std::uint64_t observations = 0;
        std::array<std::uint64_t, 256> strengths{};
    };
    struct System {
        Keys keys;
        std::array<std::int8_t, satelliteKeys> channels{};
        std::uint64_t listings = 0;
        std::uint64_t epochs = 0;
        std::uint32_t most = 0;
    };

    void addList(const reading::Epoch& epoch);
    void addBand(const reading::Epoch& epoch, std::size_t band);
    [[nodiscard]] static Keys distinct(const Keys& keys, const System& system);

    std::vector<PerConstellation<Signal>> signals_;  // by band
    PerConstellation<System> systems_{};
    std::uint64_t epochs_ = 0;
    std::uint64_t unknownSystems_ = 0;
};

}  // namespace orbconv::inspect
