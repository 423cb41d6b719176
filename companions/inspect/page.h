// The page: one self-contained HTML document with pictures of the logs, no script and no outside resource.
#pragma once

#include <iosfwd>
#include <span>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

// What every page begins with.
inline constexpr const char* pageOpening = "<!DOCTYPE html>";

void writePage(std::ostream& out, std::span<const LogSummary> logs);

}  // namespace orbconv::inspect
