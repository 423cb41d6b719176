// The two passes over the log: the same loop around the reader with different dispatch tables. They alone
// in this room look outward, to the decoders, the assembly and the observation writers. End of file is the
// only stop; a pass cannot fail.
#pragma once

#include "log/log_stream.h"
#include "run/run_state.h"
#include "text/text_writer.h"

namespace orbconv {

// Collects what a header needs to know of the whole log, and all navigation data.
void surveyPass(LogStream& log, RunState& state);

// Writes header and epochs. A writer that is not open only lets the pass read and assemble.
void writingPass(TextWriter& out, LogStream& log, RunState& state);

}  // namespace orbconv
