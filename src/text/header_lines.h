// Header lines that the observation file and the navigation files share.
#pragma once

#include <cstdint>
#include <string_view>

#include "text/text_writer.h"

namespace orbconv {

// The computer's clock in UTC, taken once after the survey pass. Not the time of the observations.
struct RunStamp {
    int year = 0;  // four digits
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// "PGM / RUN BY / DATE", with the program's name ahead of `programVersion`.
void writeProgramLine(TextWriter& out, std::string_view programVersion, const RunStamp& runStamp);

// "LEAP SECONDS".
void writeLeapSeconds(TextWriter& out, std::int32_t leapSeconds);

// "END OF HEADER".
void writeEndOfHeader(TextWriter& out);

}  // namespace orbconv
