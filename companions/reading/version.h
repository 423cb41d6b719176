// The version of the whole project, as the companions tell it.
#pragma once

#include <string_view>

#include "run/run_options.h"

namespace orbconv::reading {

// Without the letter that the converter shows ahead of it.
inline constexpr std::string_view versionNumber = programVersion.substr(programVersion.find('.') + 1);

}  // namespace orbconv::reading
