// The lines of a navigation file: records, and what a header of 3.05 says of ionosphere and time offsets.
#pragma once

#include <cstdint>

#include "standard/navigation_set.h"
#include "text/text_writer.h"

namespace orbconv::standard {

// 4.01 has record heads, newer messages, and records of ionosphere terms and time offsets.
enum class NavigationVersion : std::uint8_t { rinex3, rinex4 };

// Whether the version knows records of the kind.
bool isKnownTo(NavigationVersion version, NavType type);

// The constellations of the file's records, for the letter of its first line.
PerConstellation<bool> constellationsOf(const NavigationSet& navigation, NavigationVersion version);

// IONOSPHERIC CORR and TIME SYSTEM CORR of a header of 3.05: the last set of each.
void writeCorrectionLines(TextWriter& out, const NavigationSet& navigation);

// All records: at 4.01 time offsets and ionosphere terms, then the ephemerides; at 3.05 the ephemerides that
// it knows.
void writeNavigationRecords(TextWriter& out, const NavigationSet& navigation, NavigationVersion version);

}  // namespace orbconv::standard
