// What the program tells at the end: what it wrote, and what did not go into the files and why.
#pragma once

#include <string>
#include <vector>

#include "standard/columns.h"
#include "standard/survey.h"

namespace orbconv::standard {

// "G, 12 satellites ..." and so on, each line without its end.
std::vector<std::string> contentLines(const ContentSurvey& content, const Columns& columns);

// A line for each reason for which something was left out.
std::vector<std::string> lossLines(const LossCounts& lost);

// Whether something that should have gone in is not there: to damage, missing dates, or times that the file
// cannot have.
bool hasLoss(const LossCounts& lost);

}  // namespace orbconv::standard
