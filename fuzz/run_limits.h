// Which inputs are worth a run, and how long a run may take.
#pragma once

#include <cstdlib>
#include <ctime>
#include <iostream>

#include "fuzz_input.h"

namespace fuzzing {

// A log may have any number of epochs, and the converter writes each of them with all its satellites. So
// many are enough, and keep a run short.
inline constexpr std::size_t mostEpochEnds = 120;

inline bool isWorthRunning(Bytes log) {
    std::size_t ends = 0;
    for (std::size_t i = 0; i + 1 < log.size(); ++i) {
        ends += log[i] == 'T' && log[i + 1] == 'D' ? 1 : 0;
    }
    return ends <= mostEpochEnds;
}

// Ends the target if a run took more than its share of processor time, which has to stay in proportion to
// the input. libFuzzer's own limit is by the clock on the wall, which says little on a busy machine: it is
// there for runs that do not end at all.
class TimeLimit {
public:
    explicit TimeLimit(std::size_t inputSize)
        : limit_(secondsForAny + secondsForEachByte * static_cast<double>(inputSize)), begin_(std::clock()) {}
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;
    ~TimeLimit() {
        const double taken = static_cast<double>(std::clock() - begin_) / CLOCKS_PER_SEC;
        if (taken > limit_) {
            std::cerr << "the run took " << taken << " s of processor time, more than " << limit_ << '\n';
            std::abort();
        }
    }

private:
    static constexpr double secondsForAny = 0.5;
    static constexpr double secondsForEachByte = 30e-6;
    double limit_;
    std::clock_t begin_;
};

}  // namespace fuzzing
