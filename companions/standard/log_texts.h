// The texts of the header as the command line and the logs tell them.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "standard/header_texts.h"
#include "standard/survey.h"

namespace orbconv::standard {

// The texts of the command line, and where it has none those of the last log that tells them. What of the
// logs' texts is too wide is cut, with a line in `warnings`.
HeaderTexts headerTextsOf(const HeaderTexts& given, std::span<const SurveyedLog> logs,
                          std::vector<std::string>& warnings);

// A line for each log that adds nothing and for each that tells another receiver than the one ahead of it.
// Nothing for a single log.
std::vector<std::string> doubtsAbout(std::span<const SurveyedLog> logs);

}  // namespace orbconv::standard
