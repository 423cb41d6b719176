#include "inspect/time_findings.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "log/epoch_bodies.h"

namespace orbconv::inspect {

namespace {

std::string secondsText(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f", seconds);
    return text.data();
}

}  // namespace

void TimeFindings::take(const reading::Message& message) {
    headerComes_ = false;
    const auto content = message.content();
    if (message.row == orbconv::rowOf("~~") && content.size() >= bodies::timeOfDay::bytes) {
        takeTime(bodies::timeOfDay::milliseconds.load(content.data()));
    } else if (message.row == orbconv::rowOf("RD") && content.size() >= bodies::rd::bytes) {
        ++dates_;
        timeBase_ = bodies::rd::timeBase.load(content.data());
        dateAheadOfTime_ = dateAheadOfTime_ || !timeCame_;
    }
}

// The header waits for a time of day that is not 0 with one that is not 0 ahead of it.
void TimeFindings::takeTime(std::uint32_t timeOfDayMs) {
    if (times_++ == 0) {
        firstTime_ = timeOfDayMs;
    }
    timeCame_ = true;
    if (previousTime_ != 0) {
        interval_ = intervalBetween(previousTime_, timeOfDayMs);
        headerComes_ = !headerDone_ && timeOfDayMs != 0;
        headerDone_ = headerDone_ || timeOfDayMs != 0;
    }
    previousTime_ = timeOfDayMs;
}

void TimeFindings::take(const reading::Epoch& epoch, FindingTally& tally) {
    ++epochs_;
    epochsAheadOfHeader_ += headerDone_ ? 0 : 1;
    epochsAheadOfDate_ += dates_ == 0 ? 1 : 0;
    if (!epoch.clockOffset) {
        tally.add(FindingId::oldClockOffsets, 1, [&] { return placeText(epoch); });
    }
    if (epoch.hasOwnDate && epoch.time) {
        takeDated(epoch, tally);
    } else if (dated_ && epoch.time) {
        takeUndated(epoch, tally);
    }
    previous_ = epoch.time;
    timeCame_ = false;
    dateAheadOfTime_ = false;
}

void TimeFindings::takeDated(const reading::Epoch& epoch, FindingTally& tally) {
    const bool late = dateAheadOfTime_ && previous_ && *previous_ != *epoch.time;
    const bool fraction = *epoch.timeOfDayMs % 1000 != 0;
    tally.add(FindingId::dateAheadOfTime, late ? 1 : 0, [&] { return placeText(epoch); });
    tally.add(FindingId::fractions, fraction ? 1 : 0, [&] { return placeText(epoch); });
    dated_ = epoch.time;
}

void TimeFindings::takeUndated(const reading::Epoch& epoch, FindingTally& tally) {
    using std::chrono::minutes;
    const auto minute = std::chrono::floor<minutes>(*epoch.time);
    const bool otherMinute = minute != std::chrono::floor<minutes>(*dated_);
    tally.add(FindingId::clockFallsBack, otherMinute ? 1 : 0, [&] { return placeText(epoch); });
    const std::int64_t step = (*epoch.time - previous_.value_or(*epoch.time)).count();
    if (undatedSteps_.size() < mostDifferentSteps || undatedSteps_.contains(step)) {
        ++undatedSteps_[step];
    }
}

void TimeFindings::tell(const LogSummary& summary, FindingTally& tally) const {
    std::uint64_t hidden = 0;
    for (const auto& [step, count] : undatedSteps_) {
        hidden += std::abs(static_cast<double>(step) / 1000.0 - static_cast<double>(interval_)) < 0.0005
                      ? 0
                      : count;
    }
    tally.add(FindingId::hiddenSteps, hidden,
              [&] { return "the clock goes on by " + secondsText(interval_) + " s at each epoch"; });

    const double interval = summary.interval ? static_cast<double>(summary.interval->count()) / 1000.0 : 0.0;
    const bool wrong = summary.interval && std::abs(interval - static_cast<double>(interval_)) >= 0.0005;
    tally.add(FindingId::wrongInterval, wrong ? 1 : 0,
              [&] { return secondsText(interval_) + " in place of " + secondsText(interval); });

    if (!headerDone_) {
        tally.add(FindingId::noHeader, epochs_, [&] { return std::to_string(times_) + " times of day"; });
        return;
    }
    const std::uint64_t lost = unwrittenEpochs();
    const bool fromMidnight = firstTime_ == 0 && lost > 0;
    tally.add(fromMidnight ? FindingId::midnightStart : FindingId::epochsAheadOfHeader, lost, [&] {
        return fromMidnight ? std::string("the first time of day is 00:00:00.000")
                            : "the first " + std::to_string(lost) + " of the log";
    });
    tally.add(FindingId::lateDate, epochsAheadOfDate_ > 0 ? 1 : 0,
              [&] { return std::to_string(epochsAheadOfDate_) + " epochs ahead of the first date"; });
    tally.add(FindingId::timeScale, timeBase_ != 0 ? 1 : 0,
              [&] { return std::string(timeScaleName(timeBase_)); });
}

}  // namespace orbconv::inspect
