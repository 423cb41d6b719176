// A bar on the error stream that shows how far a long run is.
#pragma once

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace orbconv::standard {

// "[##########          ] 50 %".
std::string progressBar(double fraction);

class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    // Nothing is shown without a stream, nor until `delay` has passed.
    ProgressBar(std::ostream* out, double total, Clock::duration delay = std::chrono::seconds{1});
    ~ProgressBar() { clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void show(double done);
    // Takes the bar away.
    void clear();

private:
    std::ostream* out_;
    double total_;
    Clock::time_point from_;
    std::string shown_;
};

}  // namespace orbconv::standard
