#include "standard/survey.h"

#include <numeric>

#include "reading/broadcast.h"
#include "standard/epoch_lines.h"
#include "standard/leap_seconds.h"

namespace orbconv::standard {

namespace {

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

std::uint64_t Survey::messages() const {
    return std::accumulate(logs.begin(), logs.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const SurveyedLog& log) { return sum + log.messages; });
}

std::uint64_t Survey::epochs() const {
    return std::accumulate(logs.begin(), logs.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const SurveyedLog& log) { return sum + log.epochs; });
}

ReceptionTime inGpsTime(std::optional<reading::LogTime> time, std::uint8_t timeBase) {
    if (time && timeScaleOf(timeBase) == TimeScale::utc) {
        *time += std::chrono::seconds{leapSecondsAt(*time)};
    }
    return time;
}

Surveyor::Surveyor(const Selection& selection, Survey& survey, std::optional<reading::LogDate> firstDate,
                   ReceptionTime firstTime)
    : selection_(selection),
      survey_(survey),
      firstTime_(firstTime),
      collector_(reading::CarriedTime{.date = firstDate, .timeOfDayMs = {}}),
      carried_{.date = firstDate, .timeOfDayMs = {}} {}

void Surveyor::take(const reading::Message& message, const reading::LogReader::Habits& habits) {
    SurveyedLog& log = survey_.logs.back();
    ++log.messages;
    log.site.take(message);
    if (const auto leapSeconds = leapSecondsIn(message)) {
        survey_.leapSeconds = leapSeconds;
    }
    hasOpenEpoch_ = hasOpenEpoch_ || message.row == rowOf("SX");
    takeNavigation(message);
    if (collector_.add(message)) {
        hasOpenEpoch_ = false;
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
    ++survey_.logs.back().epochs;
    switch (gateOf(epoch, selection_, survey_.scale)) {
        case Gate::withoutDate: ++survey_.lost.epochsWithoutDate; break;
        case Gate::otherScale: ++survey_.lost.epochsOfOtherScale; break;
        case Gate::notAskedFor: ++survey_.lost.epochsNotAskedFor; break;
        case Gate::open:
            survey_.scale = timeScaleOf(epoch.timeBase);
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
    if (survey_.epochsAscend) {
        survey_.contents.take(observations_);
    }
}

// Whether the epoch stands in a stretch: behind the last epoch, or as the first of a new one.
bool Surveyor::continuesStretch(const reading::Epoch& epoch) {
    if (!lastTime_ || *lastTime_ >= observations_.time) {
        if (stretches_ == mostStretches) {
            return false;
        }
        ++stretches_;
        const auto& lastOfAll = survey_.contents.whole.last;
        survey_.epochsAscend = survey_.epochsAscend && (!lastOfAll || *lastOfAll < observations_.time);
        survey_.stretches.push_back({.log = survey_.logs.size() - 1,
                                     .first = observations_.time,
                                     .offset = epoch.offset,
                                     .carried = carried_,
                                     .habits = habits_});
    }
    lastTime_ = observations_.time;
    survey_.stretches.back().endOffset = epoch.endOffset;
    return true;
}

void Surveyor::finish() {
    survey_.lost.openEpochs += static_cast<std::uint64_t>(hasOpenEpoch_);
}

}  // namespace orbconv::standard
