#include "text/header_lines.h"

#include <string>

namespace orbconv {

void writeProgramLine(TextWriter& out, std::string_view programVersion, const RunStamp& runStamp) {
    out.left("ORBCONV " + std::string(programVersion), 20)
        .left("ZENTA GNSS", 20)
        .integer(runStamp.year, 4)
        .integer(runStamp.month, 2, '0')
        .integer(runStamp.day, 2, '0')
        .blanks(1)
        .integer(runStamp.hour, 2, '0')
        .integer(runStamp.minute, 2, '0')
        .integer(runStamp.second, 2, '0')
        .blanks(1)
        .left("UTC", 4)
        .text("PGM / RUN BY / DATE")
        .endLine();
}

void writeLeapSeconds(TextWriter& out, std::int32_t leapSeconds) {
    out.integer(leapSeconds, 6).blanks(54).text("LEAP SECONDS").endLine();
}

void writeEndOfHeader(TextWriter& out) {
    out.blanks(60).text("END OF HEADER").endLine();
}

}  // namespace orbconv
