// The navigation files of versions below 4.0: one for each constellation, its header built from the
// ionosphere and time tables, then its records.
#pragma once

#include <string_view>

#include "navdecode/navigation_tables.h"
#include "text/header_lines.h"
#include "text/text_writer.h"

namespace orbconv {

// What the navigation files print.
struct NavFileTables {
    double rinexVersion;
    const RunStamp& runStamp;
    std::string_view satelliteSystemLetter;
    const NavigationTables& navigation;
};

// One whole file each, from the tables as they stand.
void writeGpsNavFile(TextWriter& out, const NavFileTables& tables);
void writeNavicNavFile(TextWriter& out, const NavFileTables& tables);
void writeGlonassNavFile(TextWriter& out, const NavFileTables& tables);
void writeGalileoNavFile(TextWriter& out, const NavFileTables& tables);
void writeBeidouNavFile(TextWriter& out, const NavFileTables& tables);

}  // namespace orbconv
