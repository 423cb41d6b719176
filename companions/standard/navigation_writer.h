// The records of a navigation file.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>

#include "standard/navigation_parts.h"
#include "standard/selection.h"
#include "text/text_writer.h"

namespace orbconv::standard {

// Whether the version knows records of the kind.
bool isKnownTo(RinexVersion version, NavType type);

// How many records of each kind a file of a version holds: LNAV and so on, at 4.01 STO and ION, too.
struct NavigationContent {
    PerConstellation<std::map<std::string_view, std::uint64_t>> records;
    std::uint64_t leftOut = 0;  // of kinds that the version does not know

    // Without a record there is no file.
    [[nodiscard]] bool empty() const;
    // The letter of the file: that of its only system, or M.
    [[nodiscard]] char systemLetter() const;
};
NavigationContent contentOf(const NavigationPart& part, RinexVersion version);

// All records: at 4.01 time offsets and ionosphere terms, then the ephemerides; at 3.05 the ephemerides that
// it knows.
void writeNavigationRecords(TextWriter& out, const NavigationPart& part, RinexVersion version);

}  // namespace orbconv::standard
