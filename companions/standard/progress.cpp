#include "standard/progress.h"

#include <algorithm>
#include <ostream>

namespace orbconv::standard {

std::string progressBar(double fraction) {
    constexpr int columns = 20;
    constexpr int percents = 100;
    const double sound = std::clamp(fraction, 0.0, 1.0);
    const auto filled = static_cast<std::size_t>(sound * columns);
    return '[' + std::string(filled, '#') + std::string(columns - filled, ' ') + "] " +
           std::to_string(static_cast<int>(sound * percents)) + " %";
}

ProgressBar::ProgressBar(std::ostream* out, double total, Clock::duration delay)
    : out_(out), total_(total), from_(Clock::now() + delay) {}

void ProgressBar::clear() {
    if (!shown_.empty()) {
        *out_ << '\r' << std::string(shown_.size(), ' ') << '\r' << std::flush;
        shown_.clear();
    }
}

void ProgressBar::show(double done) {
    if (out_ == nullptr || Clock::now() < from_) {
        return;
    }
    std::string bar = progressBar(done / total_);
    if (bar != shown_) {
        *out_ << '\r' << bar << std::flush;
        shown_ = std::move(bar);
    }
}

}  // namespace orbconv::standard
