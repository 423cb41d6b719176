// Header lines that the observation file and the navigation files share.
#pragma once

#include <cstdint>

#include "run/run_options.h"
#include "text/text_writer.h"

namespace orbconv {

// "PGM / RUN BY / DATE".
void writeProgramLine(TextWriter& out, const RunStamp& stamp);

// "LEAP SECONDS".
void writeLeapSeconds(TextWriter& out, std::int32_t leapSeconds);

// "END OF HEADER".
void writeEndOfHeader(TextWriter& out);

}  // namespace orbconv
