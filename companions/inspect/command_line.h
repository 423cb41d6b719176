// The command line of orbconv-inspect.
#pragma once

#include <argparse/argparse.hpp>
#include <iosfwd>
#include <string>
#include <vector>

namespace orbconv::inspect {

struct InspectOptions {
    std::vector<std::string> logs;
    bool json = false;
    bool quiet = false;
    std::string htmlFile;  // empty: no page
};

class CommandLine {
public:
    explicit CommandLine(InspectOptions& options);
    CommandLine(const CommandLine&) = delete;  // the parser stores into the options
    CommandLine& operator=(const CommandLine&) = delete;

    // Throws std::runtime_error with a sentence if the arguments are none.
    void parse(int argc, const char* const* argv);

    // -h and --version end the run when their text has been printed.
    [[nodiscard]] bool wantsHelp() const { return parser_.get<bool>("--help"); }
    [[nodiscard]] bool wantsVersion() const { return parser_.get<bool>("--version"); }

    void printHelp(std::ostream& out) const;

private:
    InspectOptions& options_;
    argparse::ArgumentParser parser_;
};

}  // namespace orbconv::inspect
