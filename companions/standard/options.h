// What the command line asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "reading/log_time.h"
#include "standard/file_names.h"
#include "standard/header_texts.h"
#include "standard/selection.h"

namespace orbconv::standard {

struct Options {
    std::vector<std::string> logNames;           // at least one
    std::optional<std::string> outputDirectory;  // else the log's
    std::optional<std::string> station;          // nine characters; else out of the marker's name
    bool longNames = true;
    bool gzip = false;
    std::optional<FileKind> toStandardOutput;  // that file alone, and none on disk
    Selection selection;
    HeaderTexts texts;
    std::optional<reading::LogDate> firstDate;  // of each log's first epoch, as long as the log tells none
    bool force = false;
    bool quiet = false;
};

// Reads the arguments. -h and --version print and end the process; a bad line is a std::runtime_error whose
// text names the option.
Options optionsOf(int argc, const char* const* argv);

}  // namespace orbconv::standard
