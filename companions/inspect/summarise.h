// One pass over a log.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "inspect/converter_walk.h"
#include "inspect/log_summary.h"
#include "reading/log_reader.h"

namespace orbconv::inspect {

// Told now and then how many bytes of the log have been taken.
using Progress = std::function<void(std::uint64_t)>;

struct SummaryWishes {
    bool timeline = false;
    Progress progress;  // may be empty
};

// What the reader gives of a log, up to its end; `bytes` gives the same log's bytes at any place. File name
// and notes stay empty.
LogSummary summarise(reading::LogReader& reader, LogBytes bytes, const SummaryWishes& wishes);

}  // namespace orbconv::inspect
