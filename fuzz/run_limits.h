// Which inputs are worth a run, and how long a run may take.
#pragma once

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <tuple>

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

// Ends the target if a run takes more than its share of processor time, which has to stay in proportion to
// the input. libFuzzer's own limit is by the clock on the wall, which says nothing on a machine that is busy
// with something else.
class TimeLimit {
public:
    explicit TimeLimit(std::size_t inputSize) {
        static const auto formerHandler = std::signal(SIGPROF, endTarget);
        if (formerHandler != SIG_DFL) {
            std::abort();
        }
        arm(secondsForAny + secondsForEachByte * static_cast<double>(inputSize));
    }
    ~TimeLimit() { arm(0.0); }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

private:
    static constexpr double secondsForAny = 0.5;
    static constexpr double secondsForEachByte = 30e-6;

    static void arm(double seconds) {
        const auto whole = static_cast<std::time_t>(seconds);
        const itimerval limit{
            .it_interval = {},
            .it_value = {.tv_sec = whole,
                         .tv_usec = static_cast<suseconds_t>((seconds - static_cast<double>(whole)) * 1e6)}};
        setitimer(ITIMER_PROF, &limit, nullptr);
    }
    static void endTarget(int /*signal*/) {
        constexpr std::string_view text = "the run takes more processor time than an input of its size may\n";
        std::ignore = write(STDERR_FILENO, text.data(), text.size());
        std::abort();
    }
};

}  // namespace fuzzing
