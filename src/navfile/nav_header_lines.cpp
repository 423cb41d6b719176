#include "navfile/nav_header_lines.h"

#include "run/run_options.h"

namespace orbconv {

void writeNavFirstLines(TextWriter& out, const NavFileTables& tables, std::string_view systemText,
                        int blanksBehind) {
    out.fixed(tables.rinexVersion, 2, 9)
        .blanks(11)
        .text("N: GNSS NAV DATA")
        .blanks(4)
        .text(systemText)
        .blanks(blanksBehind)
        .text("RINEX VERSION / TYPE")
        .endLine();
    writeProgramLine(out, programVersion, tables.runStamp);
    writeLeapSeconds(out, tables.navigation.lastLeapSeconds);
}

}  // namespace orbconv
