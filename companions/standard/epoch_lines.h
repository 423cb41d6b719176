// Epochs as the lines of an observation file.
#pragma once

#include "standard/columns.h"
#include "standard/observations.h"
#include "text/text_writer.h"

namespace orbconv::standard {

// Whether a clock offset, in seconds, has a place in the epoch line: fifteen columns with twelve decimals.
bool isPrintable(double clockOffset);

// The epoch line and a line for each satellite. A value whose code is in no column is not written.
void writeEpoch(TextWriter& out, const EpochObservations& epoch, const Columns& columns);

}  // namespace orbconv::standard
