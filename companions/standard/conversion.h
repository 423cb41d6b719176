// From logs to files: the survey, what all files share, and the writing of each.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "standard/columns.h"
#include "standard/epoch_sequence.h"
#include "standard/header_opening.h"
#include "standard/header_texts.h"
#include "standard/navigation_parts.h"
#include "standard/options.h"
#include "standard/output_stream.h"
#include "standard/progress.h"
#include "standard/survey.h"

namespace orbconv::standard {

// Reads all logs. One that cannot be read to its end is a std::runtime_error.
Survey surveyOf(const Options& options, ProgressBar& progress);

// What the logs are called together.
std::string namesOf(const Survey& survey);

// Why no observation file can be made of the logs; empty if one can.
std::string hindranceOf(const Survey& survey);

// What all files of a call share. A pair of files comes of each part of the survey's contents.
struct Conversion {
    const Options& options;
    const Survey& survey;
    HeaderTexts texts;
    Columns columns;
    std::vector<NavigationPart> navigation;  // for each part
    RunTime runTime;                         // the time of this call
};
// Options and survey have to outlive it.
Conversion conversionOf(const Options& options, const Survey& survey, HeaderTexts texts);

// Whether a part has a file of the kind: an epoch or a record at least.
bool hasFile(const Conversion& conversion, std::size_t part, FileKind kind);

std::filesystem::path pathOf(const Conversion& conversion, std::size_t part, FileKind kind);

// The header and all epochs of a part. The sequence stands on the first of them, and is left behind the last.
void writeObservations(OutputStream& out, const Conversion& conversion, std::size_t part,
                       EpochSequence& epochs, ProgressBar& progress);

// The header and all records of a part.
void writeNavigation(OutputStream& out, const Conversion& conversion, std::size_t part);

}  // namespace orbconv::standard
