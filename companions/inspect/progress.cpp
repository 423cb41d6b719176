#include "inspect/progress.h"

#include <algorithm>
#include <ostream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace orbconv::inspect {

namespace {

constexpr std::chrono::milliseconds quietTime{1000};
constexpr std::chrono::milliseconds drawStep{100};
constexpr std::size_t barColumns = 40;
constexpr std::size_t nameColumns = 30;
constexpr std::size_t lineColumns = nameColumns + barColumns + 9;  // with "[] 100 %" and blanks

}  // namespace

bool errorStreamIsTerminal() {
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

ProgressBar::ProgressBar(std::ostream& out, std::string name, std::uint64_t bytes, Clock::time_point start)
    : out_(out), name_(std::move(name)), bytes_(std::max<std::uint64_t>(bytes, 1)), next_(start + quietTime) {
    name_.resize(nameColumns, ' ');
}

void ProgressBar::show(std::uint64_t taken, Clock::time_point now) {
    if (now < next_) {
        return;
    }
    next_ = now + drawStep;
    drawn_ = true;
    const std::uint64_t percent = std::min<std::uint64_t>(100 * taken / bytes_, 100);
    const auto filled = static_cast<std::size_t>(percent) * barColumns / 100;
    out_ << '\r' << name_ << '[' << std::string(filled, '#') << std::string(barColumns - filled, '.') << "] "
         << percent << " %" << std::flush;
}

void ProgressBar::clear() {
    if (drawn_) {
        out_ << '\r' << std::string(lineColumns, ' ') << '\r' << std::flush;
    }
}

}  // namespace orbconv::inspect
