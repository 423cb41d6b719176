#include "inspect/signal_counts.h"

namespace orbconv::inspect {

namespace {

constexpr std::size_t firstChannelKey = 256;

}  // namespace

SatelliteName nameOfKey(Constellation constellation, std::size_t key) {
    SatelliteName name{.constellation = constellation};
    if (key < firstChannelKey) {
        name.number = static_cast<std::uint8_t>(key);
    } else {
        name.channel = static_cast<std::int8_t>(key - firstChannelKey);
    }
    return name;
}

SignalCounts::SignalCounts() : signals_(bandCount) {}

void SignalCounts::add(const reading::Epoch& epoch) {
    ++epochs_;
    addList(epoch);
    for (std::size_t band = 0; band < bandCount; ++band) {
        addBand(epoch, band);
    }
}

void SignalCounts::addList(const reading::Epoch& epoch) {
    PerConstellation<std::uint32_t> here{};
    for (const reading::EpochSatellite& satellite : epoch.satellites()) {
        if (!satellite.constellation) {
            ++unknownSystems_;
            continue;
        }
        const std::size_t system = indexOf(*satellite.constellation);
        const std::size_t key = satelliteKey(satellite);
        ++here[system];
        if (!systems_[system].keys[key]) {
            systems_[system].keys[key] = true;
            systems_[system].channels[key] = static_cast<std::int8_t>(satellite.channel());
        }
    }
    for (std::size_t i = 0; i < constellationCount; ++i) {
        systems_[i].listings += here[i];
        systems_[i].epochs += here[i] > 0 ? 1U : 0U;
        systems_[i].most = std::max(systems_[i].most, here[i]);
    }
}

void SignalCounts::addBand(const reading::Epoch& epoch, std::size_t band) {
    const auto satellites = epoch.satellites();
    forSignals(epoch, band, [&](const SignalSighting& sighting) {
        const reading::EpochSatellite& satellite = satellites[sighting.satellite];
        Signal& signal = signals_[band][indexOf(*satellite.constellation)];
        signal.keys[satelliteKey(satellite)] = true;
        ++signal.observations;
        ++signal.strengths[sighting.strength];
        if (signal.lastEpoch != epochs_) {
            signal.lastEpoch = epochs_;
            ++signal.epochs;
        }
    });
}

// A GLONASS satellite on a channel is taken for one whose slot other epochs give, if there is one on it.
SignalCounts::Keys SignalCounts::distinct(const Keys& keys, const System& system) {
    Keys result = keys;
    for (std::size_t slot = 1; slot < firstChannelKey; ++slot) {
        if (keys[slot]) {
            result[firstChannelKey + static_cast<std::uint8_t>(system.channels[slot])] = false;
        }
    }
    return result;
}

void SignalCounts::tell(LogSummary& summary) const {
    summary.unknownSystems = unknownSystems_;
    for (std::size_t i = 0; i < constellationCount; ++i) {
        const System& system = systems_[i];
        const auto constellation = static_cast<Constellation>(i);
        const bool bySlot = constellation == Constellation::glonass;
        if (system.listings == 0) {
            continue;
        }
        ConstellationSummary& told = summary.constellations.emplace_back();
        told.constellation = constellation;
        told.listings = system.listings;
        told.epochs = system.epochs;
        told.mostInOneEpoch = system.most;
        const Keys keys = bySlot ? distinct(system.keys, system) : system.keys;
        for (std::size_t key = 0; key < satelliteKeys; ++key) {
            if (keys[key]) {
                told.satellites.push_back(nameOfKey(constellation, key));
                told.satellites.back().channel = bySlot ? system.channels[key] : std::int8_t{0};
            }
        }
        for (std::size_t band = 0; band < bandCount; ++band) {
            const Signal& signal = signals_[band][i];
            if (signal.observations == 0) {
                continue;
            }
            SignalSummary& out = summary.signals.emplace_back();
            out.constellation = constellation;
            out.band = band;
            out.epochs = signal.epochs;
            out.observations = signal.observations;
            out.satelliteCount = (bySlot ? distinct(signal.keys, system) : signal.keys).count();
            out.strengths = signal.strengths;
            out.strengths[0] = 0;
            for (std::size_t key = 0; key < firstChannelKey; ++key) {
                out.satellites[key] = signal.keys[key];
            }
        }
    }
}

}  // namespace orbconv::inspect
