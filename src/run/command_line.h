// The command line: the program's whole configuration.
#pragma once

#include <argparse/argparse.hpp>
#include <iosfwd>

#include "run/run_options.h"

namespace orbconv {

class CommandLine {
public:
    // Declares the options. Value options write straight into `options`, which must outlive this.
    explicit CommandLine(RunOptions& options);

    // Parses the arguments and applies the exclude flags. -h and -v print and end the process; a bad line
    // leaves as one of the library's exceptions.
    void parse(int argc, const char* const* argv);

    void printHelp(std::ostream& out) const;

private:
    RunOptions& options_;
    argparse::ArgumentParser parser_;
};

}  // namespace orbconv
