// From a log to its files: the survey, and the writing of what it found.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "standard/observation_header.h"
#include "standard/options.h"
#include "standard/output_file.h"
#include "standard/progress.h"
#include "standard/survey.h"

namespace orbconv::standard {

// Thrown when the process has been asked to end; see stop_request.h.
struct Stopped {};

// Reads the whole log. A log that cannot be read to its end is a std::runtime_error.
Survey surveyOf(const Options& options, ProgressBar& progress);

// Why no file can be made of a log; empty if one can.
std::string hindranceOf(const Survey& survey);

// The path of the observation file.
std::filesystem::path observationPathOf(const Options& options, const HeaderTexts& texts,
                                        const ContentSurvey& content);

// The path of the navigation file beside it; nothing if the log holds no record for it.
std::optional<std::filesystem::path> navigationPathOf(const Options& options, const HeaderTexts& texts,
                                                      const Survey& survey);

// The header and all epochs. Counts in `survey` the epochs whose time came twice.
void writeObservations(OutputFile& file, const Options& options, const HeaderTexts& texts, Survey& survey,
                       ProgressBar& progress);

// The header and all records.
void writeNavigation(OutputFile& file, const Options& options, const HeaderTexts& texts,
                     const Survey& survey);

}  // namespace orbconv::standard
