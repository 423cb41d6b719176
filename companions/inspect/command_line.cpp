#include "inspect/command_line.h"

#include <ostream>
#include <stdexcept>

namespace orbconv::inspect {

CommandLine::CommandLine(InspectOptions& options)
    : options_(options), parser_("orbconv-inspect", "", argparse::default_arguments::none, false) {
    parser_.add_description(
        "Tells what is in receiver logs, what is wrong with them, and what orbconv will make of "
        "them.");
    parser_.add_epilog("Exit status: 0 nothing wrong, 2 damage found, 1 a log can't be read.");
    parser_.add_argument("logs").help("logs to look at").metavar("LOG").nargs(argparse::nargs_pattern::any);
    parser_.add_argument("--json").help("print one JSON document").flag();
    parser_.add_argument("--html")
        .help("write a page with pictures")
        .metavar("FILE")
        .store_into(options.htmlFile);
    parser_.add_argument("-q", "--quiet").help("print nothing on standard output but JSON").flag();
    parser_.add_argument("-h", "--help").help("print this help").flag();
    parser_.add_argument("--version").help("print the version").flag();
}

void CommandLine::parse(int argc, const char* const* argv) {
    parser_.parse_args(argc, argv);
    options_.json = parser_.get<bool>("--json");
    options_.quiet = parser_.get<bool>("--quiet");
    if (parser_.is_used("--html") && (options_.htmlFile.empty() || options_.htmlFile == "-")) {
        throw std::runtime_error("--html: a page needs the name of a file");
    }
    if (parser_.is_used("logs")) {
        options_.logs = parser_.get<std::vector<std::string>>("logs");
    }
    if (options_.logs.empty() && !wantsHelp() && !wantsVersion()) {
        throw std::runtime_error("no log is named");
    }
}

void CommandLine::printHelp(std::ostream& out) const {
    out << parser_;
}

}  // namespace orbconv::inspect
