#include "obsfile/header_lines.h"

#include <string>

namespace orbconv {

void writeProgramLine(TextWriter& out, const RunStamp& stamp) {
    out.left("ORBCONV " + std::string(programVersion), 20)
        .left("ZENTA GNSS", 20)
        .integer(stamp.year, 4)
        .integer(stamp.month, 2, '0')
        .integer(stamp.day, 2, '0')
        .blanks(1)
        .integer(stamp.hour, 2, '0')
        .integer(stamp.minute, 2, '0')
        .integer(stamp.second, 2, '0')
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
