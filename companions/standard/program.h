// What the program calls itself.
#pragma once

#include <string_view>

#include "run/run_options.h"

namespace orbconv::standard {

inline constexpr std::string_view programName = "orbconv-standard";

// The version of the whole project, without the letter that the converter shows ahead of it.
inline constexpr std::string_view versionNumber = programVersion.substr(programVersion.find('.') + 1);

}  // namespace orbconv::standard
