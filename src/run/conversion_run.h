// The program from start to exit status: options, survey pass, writing pass, navigation output.
#pragma once

#include <string>

#include "run/run_state.h"

namespace orbconv {

// Converts one log and returns the exit status: 0, or 1 after a report. A bad command line, a name that
// cannot be cut and the failures that the passes know leave as exceptions.
int convert(int argc, const char* const* argv);

// The name of an output file: the base, a dot, the year of the run less 2000, and the file's letter.
std::string outputName(const std::string& baseName, const RunStamp& runStamp, char letter);

// The input's name without its last four characters, whatever these are. A shorter name throws
// std::out_of_range.
std::string outputBaseName(const std::string& inputFileName);

}  // namespace orbconv
