// The summary of a log for a person at a terminal of 80 columns.
#pragma once

#include <iosfwd>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

void writeScreen(std::ostream& out, const LogSummary& log);

}  // namespace orbconv::inspect
