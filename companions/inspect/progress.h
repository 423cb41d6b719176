// A bar on the error stream for logs that take their time.
#pragma once

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace orbconv::inspect {

// Whether the error stream is a terminal.
bool errorStreamIsTerminal();

// Draws nothing in the first second, and at most ten times in each that follows.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    ProgressBar(std::ostream& out, std::string name, std::uint64_t bytes, Clock::time_point start);

    // How far the log has been taken, and when.
    void show(std::uint64_t taken, Clock::time_point now);
    // Takes the bar away, if there is one.
    void clear();

private:
    std::ostream& out_;
    std::string name_;
    std::uint64_t bytes_;
    Clock::time_point next_;  // nothing is drawn ahead of it
    bool drawn_ = false;
};

}  // namespace orbconv::inspect
