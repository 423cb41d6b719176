// The summaries of logs as one JSON document. Its layout is told in docs/inspect.md and does not change:
// names can be added, none is taken away or given another meaning.
#pragma once

#include <iosfwd>
#include <span>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

void writeJson(std::ostream& out, std::span<const LogSummary> logs);

}  // namespace orbconv::inspect
