#include "standard/options.h"

#include <argparse/argparse.hpp>
#include <stdexcept>
#include <vector>

#include "reading/version.h"
#include "standard/option_values.h"
#include "standard/program.h"

namespace orbconv::standard {

namespace {

// An option with a value that is no text of the header.
struct ValueRow {
    const char* option;
    const char* metavar;
    const char* help;
    void (*set)(Options& options, const std::string& text);
};

// clang-format off
constexpr auto fileRows = std::to_array<ValueRow>({
    {"--rinex",      "3.05|4.01", "version of the files [3.05]",
     [](Options& options, const std::string& text) { options.selection.version = versionOf(text); }},
    {"--output-dir", "DIR",       "where the files go [beside the first log]",
     [](Options& options, const std::string& text) { options.outputDirectory = text; }},
    {"--station",    "XXXXMRCCC", "station in the files' names [the marker's first four letters, 00XXX]",
     [](Options& options, const std::string& text) { options.station = stationNameOf(text); }},
    {"--long-names", "yes|no",    "XXXXMRCCC_R_YYYYDDDHHMM_..., or ssssdddf.yyo and .yyp [yes]",
     [](Options& options, const std::string& text) { options.longNames = longNamesOf(text); }},
    {"--split",      "1h|1d",     "files of a whole hour or day each",
     [](Options& options, const std::string& text) { options.selection.split = splitOf(text); }},
    {"--stdout",     "obs|nav",   "that one file to standard output, and none on disk",
     [](Options& options, const std::string& text) { options.toStandardOutput = fileKindOf(text); }},
});
constexpr auto selectionRows = std::to_array<ValueRow>({
    {"--systems",  "GRECI",   "constellations: GPS, GLONASS, Galileo, BeiDou, NavIC [all]",
     [](Options& options, const std::string& text) { options.selection.systems = systemsOf(text); }},
    {"--start",    "TIME",    "first time of the observations, as 2024-05-06T23:00:30",
     [](Options& options, const std::string& text) { options.selection.start = timeOf(text); }},
    {"--end",      "TIME",    "last time of the observations",
     [](Options& options, const std::string& text) { options.selection.end = timeOf(text); }},
    {"--interval", "SECONDS", "epochs on whole multiples of it since midnight",
     [](Options& options, const std::string& text) { options.selection.intervalMs = intervalMsOf(text); }},
    {"--date",     "DATE",    "date of a log's first epoch, if it tells none: 2024-05-06",
     [](Options& options, const std::string& text) { options.firstDate = dateOf(text); }},
});
constexpr auto lengthRows = std::to_array<ValueRow>({
    {"--antenna-delta", "H,E,N", "height over the marker, east, north; metres",
     [](Options& options, const std::string& text) { options.texts.antennaDelta = threeNumbersOf(text); }},
    {"--position",      "X,Y,Z", "geocentric position of the marker; metres",
     [](Options& options, const std::string& text) { options.texts.position = threeNumbersOf(text); }},
});
// clang-format on

// Without the blank that guards a minus sign.
std::string checkedText(const std::string& given, std::size_t width) {
    std::string text = given.starts_with(" -") ? given.substr(1) : given;
    if (const auto refusal = refusalOf(text, width)) {
        throw std::runtime_error("'" + text + "' " + *refusal);
    }
    return text;
}

// What an action throws says what is wrong; the name of its option goes ahead of it.
template <class Action>
auto named(const char* option, Action action) {
    return [option, action](const std::string& text) {
        try {
            action(text);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(std::string(option) + ": " + error.what());
        }
    };
}

template <class Rows>
void declareValues(argparse::ArgumentParser& parser, Options& options, const Rows& rows) {
    for (const ValueRow& row : rows) {
        parser.add_argument(row.option)
            .metavar(row.metavar)
            .help(row.help)
            .action(named(row.option, [&options, &row](const std::string& text) { row.set(options, text); }));
    }
}

void declareTexts(argparse::ArgumentParser& parser, Options& options) {
    for (const TextRow& row : textRows) {
        parser.add_argument(row.option)
            .metavar(row.metavar)
            .help(row.help)
            .action(named(row.option, [&options, &row](const std::string& text) {
                options.texts.*(row.text) = checkedText(text, row.width);
            }));
    }
    parser.add_argument("--comment")
        .metavar("TEXT")
        .help("a line of comment; can be given several times")
        .append()
        .action(named("--comment", [&options](const std::string& text) {
            options.texts.comments.push_back(checkedText(text, commentWidth));
        }));
}

bool isNegativeNumber(std::string_view argument) {
    constexpr std::string_view behindSign = "0123456789.";
    return argument.size() > 1 && argument[0] == '-' &&
           behindSign.find(argument[1]) != std::string_view::npos;
}

// The parser takes what begins with a minus sign for an option. A blank ahead of it makes it a value.
std::vector<std::string> withGuardedValues(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    for (int i = 0; i < argc; ++i) {
        const std::string_view argument(argv[i]);
        const std::size_t equality = argument.find('=');
        if (argument.starts_with("--") && equality != std::string_view::npos) {
            const std::string_view value = argument.substr(equality + 1);
            arguments.emplace_back(argument.substr(0, equality));
            arguments.push_back((value.starts_with('-') ? " " : "") + std::string(value));
        } else {
            arguments.push_back((isNegativeNumber(argument) ? " " : "") + std::string(argument));
        }
    }
    return arguments;
}

}  // namespace

Options optionsOf(int argc, const char* const* argv) {
    constexpr std::size_t usageColumns = 80;
    Options options;
    const std::string name(programName);
    argparse::ArgumentParser parser(name, name + ' ' + std::string(reading::versionNumber));
    parser.add_description(
        "Writes the observations and the navigation messages of a receiver's logs as RINEX\n"
        "files, to the letter of the standard and with every value that the logs hold.");
    parser.add_epilog(
        "Exit status: 0 all is written, 2 written, but something was lost to damage or missing\n"
        "dates, 1 not written. Times are in the file's time system.");
    parser.set_usage_max_line_width(usageColumns);
    parser.add_argument("logs")
        .metavar("LOG")
        .help("logs of one receiver, in any order; together they give one pair of files")
        .nargs(argparse::nargs_pattern::at_least_one)
        .store_into(options.logNames);
    declareValues(parser, options, fileRows);
    parser.add_argument("--gzip").help("compress the files: .gz behind each name").store_into(options.gzip);
    parser.add_argument("--force").help("overwrite files").store_into(options.force);
    parser.add_argument("-q", "--quiet")
        .help("nothing but errors on the error stream")
        .store_into(options.quiet);
    parser.add_group("What goes into the files");
    declareValues(parser, options, selectionRows);
    parser.add_group("Header (else what the log tells)");
    declareTexts(parser, options);
    declareValues(parser, options, lengthRows);
    parser.parse_args(withGuardedValues(argc, argv));
    if (options.toStandardOutput && options.selection.split) {
        throw std::runtime_error("--stdout: one file alone can go there, and --split makes several");
    }
    return options;
}

}  // namespace orbconv::standard
