// The program from start to exit status.
#pragma once

namespace orbconv::standard {

// 0: all is written that should be; 2: written, but something was lost to damage or missing dates; 1: not
// written, after a word on the error stream.
int run(int argc, const char* const* argv);

}  // namespace orbconv::standard
