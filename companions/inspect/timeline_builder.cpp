#include "inspect/timeline_builder.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace orbconv::inspect {

namespace {

constexpr Milliseconds farAheadStep = std::chrono::days{1};

// Folds each two bins into one and empties the other half. A list that is not in use stays empty.
template <class Bin, class Fold>
void fold(std::vector<Bin>& bins, Fold&& both) {
    const std::size_t half = bins.size() / 2;
    for (std::size_t i = 0; i < half; ++i) {
        bins[i] = both(bins[2 * i], bins[2 * i + 1]);
    }
    std::fill(bins.begin() + static_cast<std::ptrdiff_t>(half), bins.end(), Bin{});
}

template <class Number>
void foldSums(std::vector<Number>& bins) {
    fold(bins, [](Number a, Number b) { return a + b; });
}

StrengthBin bothStrengths(const StrengthBin& a, const StrengthBin& b) {
    return {.sum = a.sum + b.sum,
            .count = a.count + b.count,
            .least = std::min(a.least, b.least),
            .most = std::max(a.most, b.most)};
}

SatelliteBin bothCounts(const SatelliteBin& a, const SatelliteBin& b) {
    return {.sum = a.sum + b.sum, .least = std::min(a.least, b.least), .most = std::max(a.most, b.most)};
}

template <class Bins>
void cut(Bins& bins, std::size_t count) {
    if (!bins.empty()) {
        bins.resize(count);
    }
}

}  // namespace

TimelineBuilder::TimelineBuilder() {
    for (auto& tracks : trackOf_) {
        tracks.fill(noTrack);
    }
    for (auto& signals : signalOf_) {
        signals.fill(noTrack);
    }
    timeline_.epochs.resize(Timeline::mostBins);
    timeline_.damages.resize(Timeline::mostBins);
    timeline_.damageBytes.resize(Timeline::mostBins);
    timeline_.satellites.resize(Timeline::mostBins);
}

void TimelineBuilder::halve() {
    timeline_.binWidth *= 2;
    foldSums(timeline_.epochs);
    foldSums(timeline_.damages);
    foldSums(timeline_.damageBytes);
    fold(timeline_.satellites, bothCounts);
    for (auto& sums : timeline_.satellitesBySystem) {
        foldSums(sums);
    }
    for (SatelliteTrack& track : timeline_.tracks) {
        foldSums(track.listed);
        for (auto& present : track.present) {
            foldSums(present);
        }
    }
    for (SignalTrack& signal : timeline_.signals) {
        fold(signal.bins, bothStrengths);
    }
    timeline_.bins = (timeline_.bins + 1) / 2;
}

// Whether an epoch belongs into the picture. One far ahead does once a second one stands beside it.
bool TimelineBuilder::isPart(LogTime time) {
    if (!last_) {
        timeline_.start = time;
        return true;
    }
    if (time < timeline_.start) {
        return false;
    }
    const bool follows = time <= *last_ + farAheadStep;
    const bool followsOther = farAhead_ && time >= *farAhead_ && time <= *farAhead_ + farAheadStep;
    farAhead_.reset();
    if (!follows && !followsOther) {
        farAhead_ = time;
        return false;
    }
    return true;
}

void TimelineBuilder::add(const reading::Epoch& epoch, LogTime time) {
    if (!isPart(time)) {
        leaveOut();
        return;
    }
    last_ = time;
    const Milliseconds since = time - timeline_.start;
    while (since / timeline_.binWidth >= static_cast<std::int64_t>(Timeline::mostBins)) {
        halve();
    }
    bin_ = static_cast<std::size_t>(since / timeline_.binWidth);
    timeline_.bins = std::max(timeline_.bins, bin_ + 1);
    ++timeline_.epochs[bin_];
    addSatellites(epoch);
    for (std::size_t band = 0; band < bandCount; ++band) {
        addBand(epoch, band);
    }
}

void TimelineBuilder::addDamage(std::uint64_t bytes) {
    ++timeline_.damages[bin_];
    timeline_.damageBytes[bin_] += bytes;
}

SatelliteTrack* TimelineBuilder::track(const reading::EpochSatellite& satellite) {
    const Constellation constellation = *satellite.constellation;
    const std::size_t key = satelliteKey(satellite);
    std::int16_t& index = trackOf_[indexOf(constellation)][key];
    if (index == noTrack && timeline_.tracks.size() == Timeline::mostTracks) {
        index = leftOut;
        ++timeline_.satellitesLeftOut;
    }
    if (index == leftOut) {
        return nullptr;
    }
    if (index == noTrack) {
        index = static_cast<std::int16_t>(timeline_.tracks.size());
        SatelliteTrack& made = timeline_.tracks.emplace_back();
        made.satellite = nameOfKey(constellation, key);
        if (constellation == Constellation::glonass) {
            made.satellite.channel = static_cast<std::int8_t>(satellite.channel());
        }
        made.listed.resize(Timeline::mostBins);
    }
    return &timeline_.tracks[static_cast<std::size_t>(index)];
}

std::vector<StrengthBin>& TimelineBuilder::signal(Constellation constellation, std::size_t band) {
    std::int16_t& index = signalOf_[band][indexOf(constellation)];
    if (index == noTrack) {
        index = static_cast<std::int16_t>(timeline_.signals.size());
        timeline_.signals.push_back({.constellation = constellation,
                                     .band = band,
                                     .bins = std::vector<StrengthBin>(Timeline::mostBins)});
        return timeline_.signals.back().bins;
    }
    return timeline_.signals[static_cast<std::size_t>(index)].bins;
}

void TimelineBuilder::addSatellites(const reading::Epoch& epoch) {
    std::uint32_t count = 0;
    for (const reading::EpochSatellite& satellite : epoch.satellites()) {
        if (!satellite.constellation) {
            continue;
        }
        ++count;
        auto& sums = timeline_.satellitesBySystem[indexOf(*satellite.constellation)];
        sums.resize(Timeline::mostBins);
        ++sums[bin_];
        if (SatelliteTrack* const row = track(satellite)) {
            ++row->listed[bin_];
        }
    }
    SatelliteBin& bin = timeline_.satellites[bin_];
    bin.sum += count;
    bin.least = std::min(bin.least, count);
    bin.most = std::max(bin.most, count);
}

void TimelineBuilder::addBand(const reading::Epoch& epoch, std::size_t band) {
    const auto satellites = epoch.satellites();
    forSignals(epoch, band, [&](const SignalSighting& sighting) {
        const reading::EpochSatellite& satellite = satellites[sighting.satellite];
        if (SatelliteTrack* const row = track(satellite)) {
            row->present[band].resize(Timeline::mostBins);
            ++row->present[band][bin_];
        }
        if (sighting.strength > 0) {
            StrengthBin& bin = signal(*satellite.constellation, band)[bin_];
            bin.sum += sighting.strength;
            ++bin.count;
            bin.least = std::min(bin.least, sighting.strength);
            bin.most = std::max(bin.most, sighting.strength);
        }
    });
}

Timeline TimelineBuilder::tell(const LogSummary& summary) {
    Timeline told = std::move(timeline_);
    told.gaps.resize(told.bins);
    for (const Gap& gap : summary.gaps) {
        const auto bin = (gap.from - told.start) / told.binWidth;
        if (gap.from >= told.start && bin < static_cast<std::int64_t>(told.bins)) {
            ++told.gaps[static_cast<std::size_t>(bin)];
        }
    }
    cut(told.epochs, told.bins);
    cut(told.damages, told.bins);
    cut(told.damageBytes, told.bins);
    cut(told.satellites, told.bins);
    for (auto& sums : told.satellitesBySystem) {
        cut(sums, told.bins);
    }
    for (SatelliteTrack& row : told.tracks) {
        cut(row.listed, told.bins);
        for (auto& present : row.present) {
            cut(present, told.bins);
        }
    }
    for (SignalTrack& row : told.signals) {
        cut(row.bins, told.bins);
    }
    std::ranges::sort(told.tracks, {}, [](const SatelliteTrack& row) {
        return std::tuple(indexOf(row.satellite.constellation), row.satellite.number == 0,
                          row.satellite.number, row.satellite.channel);
    });
    std::ranges::sort(told.signals, {},
                      [](const SignalTrack& row) { return std::pair(indexOf(row.constellation), row.band); });
    return told;
}

}  // namespace orbconv::inspect
