// The steps between the epochs of a log: its interval, its gaps and its first and last time, in bounded
// memory. The interval is known only at the end, so steps are kept as runs of equal ones: a regular log has
// few.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

class EpochSteps {
public:
    // More different steps than these are not counted, more runs are not listed.
    static constexpr std::size_t mostDifferentSteps = 4096;
    static constexpr std::size_t mostRuns = 65536;

    // The next epoch's time.
    void add(LogTime time);

    // Tells times, interval and gaps of all epochs so far.
    void tell(LogSummary& summary);

private:
    struct Run {
        LogTime from;
        Milliseconds step;
        std::uint64_t steps;
    };

    void closeRun();
    [[nodiscard]] std::optional<Milliseconds> mostFrequent() const;

    std::optional<LogTime> first_;
    LogTime last_{};
    Run run_{};
    std::vector<Run> runs_;
    std::unordered_map<std::int64_t, std::uint64_t> counts_;  // of steps forward, by milliseconds
    std::uint64_t stepsBack_ = 0;
};

}  // namespace orbconv::inspect
