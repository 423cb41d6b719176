#include "standard/epoch_gate.h"

namespace orbconv::standard {

namespace {

bool isAskedFor(reading::LogTime time, const Selection& selection) {
    if ((selection.start && time < *selection.start) || (selection.end && time > *selection.end)) {
        return false;
    }
    if (!selection.intervalMs) {
        return true;
    }
    const auto sinceMidnight = time - std::chrono::floor<std::chrono::days>(time);
    return sinceMidnight.count() % *selection.intervalMs == 0;
}

}  // namespace

TimeScale timeScaleOf(std::uint8_t timeBase) {
    constexpr std::uint8_t firstUtcBase = 1;
    constexpr std::uint8_t lastUtcBase = 3;
    return timeBase >= firstUtcBase && timeBase <= lastUtcBase ? TimeScale::utc : TimeScale::gps;
}

Gate gateOf(const reading::Epoch& epoch, const Selection& selection, std::optional<TimeScale> scale) {
    if (!epoch.time) {
        return Gate::withoutDate;
    }
    if (timeScaleOf(epoch.timeBase) != scale.value_or(timeScaleOf(epoch.timeBase))) {
        return Gate::otherScale;
    }
    return isAskedFor(*epoch.time, selection) ? Gate::open : Gate::notAskedFor;
}

}  // namespace orbconv::standard
