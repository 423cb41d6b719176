// A run of orbconv-inspect: its arguments, its logs, its status.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

inline constexpr int nothingWrong = 0;
inline constexpr int notReadable = 1;  // a log, the command line or the page; outdoes damage
inline constexpr int damageFound = 2;

// Of one log: what is in it, or the sentence that says why it can't be read.
struct LogResult {
    std::optional<LogSummary> summary;
    std::string error;
};

struct LogWishes {
    bool timeline = false;
    std::ostream* progress = nullptr;  // where a bar is drawn; null: none
};

LogResult inspectLog(const std::string& file, const LogWishes& wishes);

// The whole program; the status to exit with. `terminal` tells whether `errors` is one.
int inspect(int argc, const char* const* argv, std::ostream& out, std::ostream& errors, bool terminal);

}  // namespace orbconv::inspect
