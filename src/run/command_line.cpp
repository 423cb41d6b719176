#include "run/command_line.h"

#include <array>
#include <string>

namespace orbconv {

namespace {

struct ExcludeFlag {
    const char* name;
    const char* help;
    bool RunOptions::*include;
};

// Deliberate: -W, -J and -GC clear flags that are clear already.
constexpr std::array<ExcludeFlag, 8> excludeFlags = {{
    {"-G", "Exclude all GPS SVs", &RunOptions::includeGps},
    {"-R", "Exclude all GLONASS SVs", &RunOptions::includeGlonass},
    {"-W", "Exclude all SBAS SVs", &RunOptions::includeSbas},
    {"-E", "Exclude all Galileo SVs", &RunOptions::includeGalileo},
    {"-C", "Exclude all BeiDou SVs", &RunOptions::includeBeidou},
    {"-J", "Exclude all QZSS SVs", &RunOptions::includeQzss},
    {"-I", "Exclude all NavIC SVs", &RunOptions::includeNavic},
    {"-GC", "Exclude all GLCDMA SVs", &RunOptions::includeGlonassCdma},
}};

}  // namespace

CommandLine::CommandLine(RunOptions& options)
    : options_(options), parser_("ORBCONV", std::string(programVersion)) {
    parser_.add_description("ORBCONV " + std::string(programVersion) + ", ZENTA GNSS, Inc");
    parser_.add_epilog("ORBCONV -h of --help for help");

    parser_.add_argument("-f", "--filename")
        .help("Input file name (with extension)")
        .store_into(options.inputFileName);
    // Deliberate: the text says 4.01 and the default is 3.05.
    parser_.add_argument("-rv", "--rinexver")
        .help("3.05|4.00|4.01 - rinex version,default version - 4.01")
        .store_into(options.rinexVersion);
    for (const ExcludeFlag& flag : excludeFlags) {
        parser_.add_argument(flag.name).help(flag.help).flag();
    }
    parser_.add_argument("-DH").help("AntennaDeltaH").store_into(options.antennaDeltaH);
    parser_.add_argument("-DE").help("AntennaDeltaE").store_into(options.antennaDeltaE);
    parser_.add_argument("-DN").help("AntennaDeltaN").store_into(options.antennaDeltaN);
    parser_.add_argument("-AN").help("AntennaNumber").store_into(options.antennaNumber);
}

void CommandLine::parse(int argc, const char* const* argv) {
    parser_.parse_args(argc, argv);
    for (const ExcludeFlag& flag : excludeFlags) {
        if (parser_.get<bool>(flag.name)) {
            options_.*(flag.include) = false;
        }
    }
}

void CommandLine::printHelp(std::ostream& out) const {
    out << parser_;
}

}  // namespace orbconv
