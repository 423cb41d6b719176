// The values of the command line as text, and what they mean.

#pragma once

#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "calendar.h"

namespace samplelog {

// A value that the option can't have; the text says which and why.
struct ArgumentError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Whole numbers from `least` to `most`.
std::int64_t parseCount(std::string_view option, std::string_view text, std::int64_t least,
                        std::int64_t most);

// Any unsigned 64-bit number.
std::uint64_t parseSeed(std::string_view option, std::string_view text);

// Seconds with up to three decimals, from 0.001 to 3600, as milliseconds.
std::int64_t parseInterval(std::string_view option, std::string_view text);

// A date and time of the years 2020 to 2099, in which all systems can count their weeks.
CivilTime parseStart(std::string_view option, std::string_view text);

}  // namespace samplelog
