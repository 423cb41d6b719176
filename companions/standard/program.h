// What the program calls itself.
#pragma once

#include <string_view>

namespace orbconv::standard {

inline constexpr std::string_view programName = "orbconv-standard";

}  // namespace orbconv::standard
