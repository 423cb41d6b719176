// The header of a navigation file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "standard/header_opening.h"
#include "standard/navigation_set.h"
#include "text/text_writer.h"

namespace orbconv::standard {

struct NavigationFacts {
    RinexVersion version;
    char systemLetter;
    RunTime runTime;
    const std::vector<std::string>& comments;
    const NavigationSet& navigation;
    std::optional<reading::LogTime> end;  // what was sent first from then on is not of this file
    std::optional<int> leapSeconds;       // that the log tells
    reading::LogTime first;  // of the observations: else its date tells them, where they must stand
};

// 3.05 has the ionosphere terms and time offsets here, the last set of each; at 4.01 they are records.
void writeNavigationHeader(TextWriter& out, const NavigationFacts& facts);

}  // namespace orbconv::standard
