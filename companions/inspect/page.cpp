#include "inspect/page.h"

#include <ostream>

namespace orbconv::inspect {

// The pictures are still to be written: until then the page says so, and names the logs.
void writePage(std::ostream& out, std::span<const LogSummary> logs) {
    out << "<!DOCTYPE html>\n<html lang=\"en\"><title>orbconv-inspect</title>\n<p>This version draws no "
           "pictures; "
        << logs.size() << " logs were read.\n";
}

}  // namespace orbconv::inspect
