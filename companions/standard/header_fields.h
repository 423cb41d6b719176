// The fields that header lines are made of, as texts of their width.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "reading/log_time.h"

namespace orbconv::standard {

std::string leftField(std::string_view text, std::size_t width);
std::string integerField(std::int64_t value, std::size_t width);
// Two digits, with leading zero.
std::string twoDigits(std::int64_t value);
std::string fixedField(double value, int decimals, std::size_t width);
// Year, month, day, hour, minute, and seconds with seven decimals: 43 columns.
std::string timeField(reading::LogTime time);

// A list over lines: `first` ahead of the items of the first line, `further` ahead of those of each other,
// `perLine` items a line. One line for an empty list.
std::vector<std::string> listLines(const std::vector<std::string>& items, std::size_t perLine,
                                   std::string_view first, std::string_view further);

}  // namespace orbconv::standard
