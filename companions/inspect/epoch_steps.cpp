#include "inspect/epoch_steps.h"

namespace orbconv::inspect {

void EpochSteps::add(LogTime time) {
    if (!first_) {
        first_ = last_ = time;
        return;
    }
    const Milliseconds step = time - last_;
    if (step != run_.step) {
        closeRun();
        run_ = {.from = last_, .step = step, .steps = 0};
    }
    ++run_.steps;
    last_ = time;
}

void EpochSteps::closeRun() {
    const std::int64_t step = run_.step.count();
    if (step < 0) {
        stepsBack_ += run_.steps;
    }
    if (step <= 0) {
        return;
    }
    if (counts_.size() < mostDifferentSteps || counts_.contains(step)) {
        counts_[step] += run_.steps;
    }
    if (runs_.size() < mostRuns) {
        runs_.push_back(run_);
    }
}

std::optional<Milliseconds> EpochSteps::mostFrequent() const {
    std::optional<Milliseconds> best;
    std::uint64_t bestCount = 0;
    for (const auto& [step, count] : counts_) {
        if (count > bestCount || (count == bestCount && Milliseconds{step} < best)) {
            best = Milliseconds{step};
            bestCount = count;
        }
    }
    return best;
}

void EpochSteps::tell(LogSummary& summary) {
    closeRun();
    run_ = {};
    if (!first_) {
        return;
    }
    summary.first = first_;
    summary.last = last_;
    summary.stepsBack = stepsBack_;
    summary.interval = mostFrequent();
    if (!summary.interval) {
        return;
    }
    const std::int64_t interval = summary.interval->count();
    for (const auto& [step, count] : counts_) {
        if (step > interval) {
            summary.gapCount += count;
            summary.missingEpochs += static_cast<std::uint64_t>((step + interval / 2) / interval - 1) * count;
        }
    }
    for (const Run& run : runs_) {
        LogTime from = run.from;
        for (std::uint64_t i = 0;
             run.step > *summary.interval && i < run.steps && summary.gaps.size() < mostGapsKept; ++i) {
            summary.gaps.push_back({.from = from, .to = from + run.step});
            from += run.step;
        }
    }
}

}  // namespace orbconv::inspect
