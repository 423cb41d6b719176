// What the program tells at the end: what it wrote, and what did not go into the files and why.
#pragma once

#include <string>
#include <vector>

#include "standard/columns.h"
#include "standard/navigation_set.h"
#include "standard/survey.h"

namespace orbconv::standard {

// The epochs, and a line for each system, all without their ends.
std::vector<std::string> contentLines(const ContentSurvey& content, TimeScale scale, const Columns& columns);

// A line for each reason for which something was left out. A satellite counts in each of its epochs.
std::vector<std::string> lossLines(const LossCounts& lost);

// The navigation records by kind, a line for each system, and those that came again.
std::vector<std::string> navigationLines(const NavigationSet& navigation, RinexVersion version);

// A line for each reason for which navigation messages are not in the file.
std::vector<std::string> navigationLossLines(const NavigationSet& navigation, RinexVersion version);

// Whether something that should have gone in is not there: to damage, missing dates, or times that the file
// cannot have.
bool hasLoss(const LossCounts& lost);

}  // namespace orbconv::standard
