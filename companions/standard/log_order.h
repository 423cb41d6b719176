// The logs of a call in the order of their times.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "standard/navigation_record.h"
#include "standard/options.h"

namespace orbconv::standard {

struct LogStart {
    std::string name;
    ReceptionTime firstDated;                    // when the log told its first date, in GPS time
    std::optional<reading::LogTime> firstEpoch;  // the first one with a time
};

// By their first epochs, of the same time by their names, so that the order of the arguments says nothing;
// logs without an epoch behind the others, by their first dates. Reads each log up to that epoch. One that
// cannot be opened is a std::runtime_error.
std::vector<LogStart> logsInOrder(const Options& options);

}  // namespace orbconv::standard
