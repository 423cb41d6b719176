// The page: one self-contained HTML document with pictures of the logs, no script and no outside resource.
#pragma once

#include <iosfwd>
#include <span>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

void writePage(std::ostream& out, std::span<const LogSummary> logs);

}  // namespace orbconv::inspect
