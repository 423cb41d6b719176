// Tests of the record writers: what one writer makes of the tables.
#pragma once

#include <string>
#include <vector>

#include "navdecode/navigation_tables.h"
#include "support/conversion.h"
#include "support/nav_lines.h"
#include "support/nav_survey.h"
#include "support/staging.h"

namespace testsupport {

using RecordWriter = void (*)(orbconv::TextWriter&, double, const orbconv::NavigationTables&);

inline std::vector<std::string> recordsOf(RecordWriter write, const orbconv::NavigationTables& tables,
                                          double version) {
    return splitLines(written([&](orbconv::TextWriter& out) { write(out, version, tables); }));
}

// A value in the columns of a line: place 0 to 2 of the epoch line stand where places 1 to 3 of an orbit line
// do.
inline std::string valueAt(const std::string& line, std::size_t place) {
    return line.substr(4 + 19 * place, 19);
}

}  // namespace testsupport
