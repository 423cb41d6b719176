#include "standard/contents.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <string>

namespace orbconv::standard {

namespace {

// INTERVAL has six digits ahead of the point.
constexpr std::int64_t longestStepMs = 999'999'999;
constexpr std::size_t mostSteps = 10'000;

}  // namespace

void StepCounts::add(std::int64_t stepMs) {
    if (stepMs <= longestStepMs && (counts_.size() < mostSteps || counts_.contains(stepMs))) {
        ++counts_[stepMs];
    }
}

std::optional<std::int64_t> StepCounts::mostFrequent() const {
    const auto most =
        std::ranges::max_element(counts_, [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == counts_.end() ? std::nullopt : std::optional(most->first);
}

std::uint64_t StepCounts::gaps() const {
    const auto step = mostFrequent();
    if (!step) {
        return 0;
    }
    return std::accumulate(counts_.upper_bound(*step), counts_.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const auto& count) { return sum + count.second; });
}

void ContentSurvey::take(const EpochObservations& observations) {
    for (const SatelliteObservations& satellite : observations.satellites) {
        const std::size_t column = orbconv::indexOf(satellite.constellation);
        const auto number = static_cast<std::size_t>(satellite.number);
        if (satellite.constellation == Constellation::glonass && !glonassChannels[number]) {
            glonassChannels[number] = satellite.channel;
        }
        for (std::size_t band = 0; band < bandCount; ++band) {
            if (!satellite.signals[band].empty()) {
                signals[band][column].set(number);
            }
        }
    }
    if (last) {
        steps.add((observations.time - *last).count());
    } else {
        first = observations.time;
    }
    last = observations.time;
    ++epochs;
}

SatelliteSet ContentSurvey::satellites(Constellation constellation) const {
    SatelliteSet all;
    for (const auto& bySystem : signals) {
        all |= bySystem[orbconv::indexOf(constellation)];
    }
    return all;
}

reading::LogTime Contents::partStart(reading::LogTime time) const {
    return split ? partStartOf(time, *split) : reading::LogTime{};
}

void Contents::take(const EpochObservations& observations) {
    const reading::LogTime start = partStart(observations.time);
    if (parts.empty() || parts.back().start != start) {
        if (parts.size() == mostParts) {
            throw std::runtime_error("--split: more than " + std::to_string(mostParts) +
                                     " files; --start and --end make them fewer");
        }
        parts.push_back({.start = start, .content = {}});
    }
    parts.back().content.take(observations);
    whole.take(observations);
}

void Contents::addEmptyPart(reading::LogTime time) {
    parts.push_back({.start = partStart(time), .content = {}});
    parts.back().content.first = time;
    parts.back().content.last = time;
}

}  // namespace orbconv::standard
