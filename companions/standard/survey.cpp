#include "standard/survey.h"

#include <algorithm>
#include <utility>

#include "reading/broadcast.h"
#include "standard/epoch_lines.h"
#include "standard/leap_seconds.h"

namespace orbconv::standard {

namespace {

// INTERVAL has six digits ahead of the point.
constexpr std::int64_t longestStepMs = 999'999'999;
constexpr std::size_t mostSteps = 10'000;

// The time offsets that tell the leap seconds (receiver's format).
constexpr BodyField<std::int8_t> leapSecondsField{18};

std::optional<int> leapSecondsIn(const reading::Message& message) {
    const bool tells = message.row == rowOf("UO") || message.row == rowOf("EU");
    if (!tells || message.content().size() <= leapSecondsField.offset) {
        return std::nullopt;
    }
    return leapSecondsField.load(message.body.data());
}

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
    ++epochs;
    first = std::min(first.value_or(observations.time), observations.time);
    last = std::max(last.value_or(observations.time), observations.time);
}

SatelliteSet ContentSurvey::satellites(Constellation constellation) const {
    SatelliteSet all;
    for (const auto& bySystem : signals) {
        all |= bySystem[orbconv::indexOf(constellation)];
    }
    return all;
}

ReceptionTime inGpsTime(std::optional<reading::LogTime> time, std::uint8_t timeBase) {
    if (time && timeScaleOf(timeBase) == TimeScale::utc) {
        *time += std::chrono::seconds{leapSecondsAt(*time)};
    }
    return time;
}

Surveyor::Surveyor(const Selection& selection, std::optional<reading::LogDate> firstDate,
                   ReceptionTime firstTime)
    : selection_(selection),
      firstTime_(firstTime),
      collector_(reading::CarriedTime{.date = firstDate, .timeOfDayMs = {}}),
      carried_{.date = firstDate, .timeOfDayMs = {}} {}

void Surveyor::take(const reading::Message& message, const reading::LogReader::Habits& habits) {
    ++survey_.messages;
    survey_.site.take(message);
    if (const auto leapSeconds = leapSecondsIn(message)) {
        survey_.leapSeconds = leapSeconds;
    }
    survey_.lost.hasOpenEpoch = survey_.lost.hasOpenEpoch || message.row == rowOf("SX");
    takeNavigation(message);
    if (collector_.add(message)) {
        survey_.lost.hasOpenEpoch = false;
        takeEpoch(collector_.epoch());
        carried_ = collector_.carriedTime();
        habits_ = habits;
    }
}

void Surveyor::take(const reading::Damage& damage) {
    ++survey_.lost.damagedStretches;
    survey_.lost.damagedBytes += damage.bytes;
}

void Surveyor::takeNavigation(const reading::Message& message) {
    const reading::Broadcast broadcast = reading::decodeBroadcast(message);
    if (broadcast.state != reading::BroadcastState::none &&
        selection_.systems[orbconv::indexOf(broadcast.constellation)]) {
        const auto time = inGpsTime(collector_.timeSoFar(), collector_.epoch().timeBase);
        survey_.navigation.add(broadcast, time ? time : firstTime_);
    }
}

void Surveyor::takeEpoch(const reading::Epoch& epoch) {
    ++survey_.epochs;
    switch (gateOf(epoch, selection_, survey_.content.scale)) {
        case Gate::withoutDate: ++survey_.lost.epochsWithoutDate; break;
        case Gate::otherScale: ++survey_.lost.epochsOfOtherScale; break;
        case Gate::notAskedFor: ++survey_.lost.epochsNotAskedFor; break;
        case Gate::open:
            survey_.content.scale = timeScaleOf(epoch.timeBase);
            takeInOrder(epoch);
            break;
    }
}

void Surveyor::takeInOrder(const reading::Epoch& epoch) {
    observationsOf(epoch, selection_, observations_);
    for (std::size_t reason = 0; reason < leftOutCount; ++reason) {
        survey_.lost.satellites[reason] += observations_.leftOut[reason];
    }
    if (observations_.satellites.empty()) {
        ++survey_.lost.epochsWithoutSatellites;
        return;
    }
    if (lastTime_ == observations_.time) {
        ++survey_.lost.repeatedEpochs;
        return;
    }
    if (!continuesStretch(epoch)) {
        ++survey_.lost.disorderedEpochs;
        return;
    }
    if (observations_.clockOffset && !isPrintable(*observations_.clockOffset)) {
        ++survey_.lost.unprintableClockOffsets;
    }
    survey_.content.take(observations_);
}

// Whether the epoch stands in a stretch: behind the last epoch, or as the first of a new one.
bool Surveyor::continuesStretch(const reading::Epoch& epoch) {
    if (lastTime_ && *lastTime_ < observations_.time) {
        survey_.content.steps.add((observations_.time - *lastTime_).count());
    } else if (survey_.stretches.size() == mostStretches) {
        return false;
    } else {
        survey_.stretches.push_back({.offset = epoch.offset, .carried = carried_, .habits = habits_});
    }
    lastTime_ = observations_.time;
    survey_.stretches.back().endOffset = epoch.endOffset;
    return true;
}

Survey Surveyor::finish() {
    return std::move(survey_);
}

}  // namespace orbconv::standard
