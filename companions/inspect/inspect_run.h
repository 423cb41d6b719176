// A run of orbconv-inspect: its arguments, its logs, its status.
#pragma once

#include <cstdint>
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

// The file's sizes when it was opened and when its end was reached; nothing for what has none, such as a
// pipe, or for a file that is gone.
struct FileSizes {
    std::optional<std::uint64_t> before;
    std::optional<std::uint64_t> after;
};
// What the sizes say of a log that was read to its end: one that is empty or was cut meanwhile, or whose
// reading failed, can't be read; one that grew or went away meanwhile gets a note.
LogResult judged(LogSummary summary, FileSizes sizes, bool failed);

LogResult inspectLog(const std::string& file, const LogWishes& wishes);

// The whole program; the status to exit with. `terminal` tells whether `errors` is one.
int inspect(int argc, const char* const* argv, std::ostream& out, std::ostream& errors, bool terminal);

}  // namespace orbconv::inspect
