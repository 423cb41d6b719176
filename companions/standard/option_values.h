// The values of options: from the text of the command line to what the run works with. A text that is none is
// a std::runtime_error that says what is wanted.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "reading/log_time.h"
#include "standard/file_names.h"
#include "standard/selection.h"

namespace orbconv::standard {

RinexVersion versionOf(std::string_view text);

// "1h", "1d".
Split splitOf(std::string_view text);

// "obs", "nav".
FileKind fileKindOf(std::string_view text);

// "yes", "no".
bool longNamesOf(std::string_view text);

// Letters of G, R, E, C and I, in any order.
PerConstellation<bool> systemsOf(std::string_view text);

reading::LogTime timeOf(std::string_view text);
reading::LogDate dateOf(std::string_view text);

// Seconds with at most three decimals, from 0.001 to a day, as milliseconds.
std::int64_t intervalMsOf(std::string_view text);

// Nine letters and digits, as capitals.
std::string stationNameOf(std::string_view text);

// Three numbers with commas between them, each small enough for fourteen columns with four decimals.
std::array<double, 3> threeNumbersOf(std::string_view text);

}  // namespace orbconv::standard
