// The first three lines of every navigation file.
#pragma once

#include <string_view>

#include "navfile/nav_files.h"

namespace orbconv {

// "RINEX VERSION / TYPE" with the system's text and the blanks behind it, "PGM / RUN BY / DATE" and
// "LEAP SECONDS".
void writeNavFirstLines(TextWriter& out, const NavFileTables& tables, std::string_view systemText,
                        int blanksBehind);

}  // namespace orbconv
