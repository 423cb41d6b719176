// The option table, the texts of help and version, and how a bad line leaves.
#include "run/command_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <exception>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/conversion.h"

namespace {

using orbconv::RunOptions;
using testsupport::runProgram;

constexpr std::string_view longAntennaNumber = "an antenna number of far more than twenty characters";

RunOptions parsed(const std::vector<std::string>& arguments) {
    RunOptions options;
    orbconv::CommandLine line(options);
    std::vector<const char*> argv = {"orbconv"};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    line.parse(static_cast<int>(argv.size()), argv.data());
    return options;
}

// What the exception of a bad line says; empty if the line was good.
std::string complaint(const std::vector<std::string>& arguments) {
    try {
        parsed(arguments);
    } catch (const std::exception& exception) {
        return exception.what();
    }
    return {};
}

std::string helpText() {
    RunOptions options;
    std::ostringstream text;
    orbconv::CommandLine(options).printHelp(text);
    return text.str();
}

// In the order GPS, GLONASS, Galileo, BeiDou, NavIC, then QZSS, SBAS, GLONASS CDMA.
std::array<bool, 8> includeFlags(const RunOptions& options) {
    return {options.includeGps,   options.includeGlonass, options.includeGalileo, options.includeBeidou,
            options.includeNavic, options.includeQzss,    options.includeSbas,    options.includeGlonassCdma};
}

struct ExcludeCase {
    const char* flag;
    std::array<bool, 8> left;
};

void PrintTo(const ExcludeCase& exclude, std::ostream* out) {
    *out << exclude.flag;
}

class ExcludeFlag : public testing::TestWithParam<ExcludeCase> {};

constexpr ExcludeCase excludeCases[] = {
    {"-G", {false, true, true, true, true, false, false, false}},
    {"-R", {true, false, true, true, true, false, false, false}},
    {"-E", {true, true, false, true, true, false, false, false}},
    {"-C", {true, true, true, false, true, false, false, false}},
    {"-I", {true, true, true, true, false, false, false, false}},
    {"-W", {true, true, true, true, true, false, false, false}},
    {"-J", {true, true, true, true, true, false, false, false}},
    {"-GC", {true, true, true, true, true, false, false, false}},
};

}  // namespace

TEST(CommandLine, WithoutArgumentsEveryFieldKeepsItsStart) {
    const RunOptions options = parsed({});
    EXPECT_EQ(options.rinexVersion, 3.05);
    EXPECT_EQ(options.inputFileName, "");
    EXPECT_EQ(options.antennaDeltaH, 0.0);
    EXPECT_EQ(options.antennaDeltaE, 0.0);
    EXPECT_EQ(options.antennaDeltaN, 0.0);
    EXPECT_EQ(options.antennaNumber, "-Unknown-");
    EXPECT_EQ(includeFlags(options), (std::array{true, true, true, true, true, false, false, false}));
}

TEST(CommandLine, AbsentOptionKeepsWhatTheFieldHeldBefore) {
    RunOptions options;
    options.rinexVersion = 4.01;
    options.antennaNumber = "earlier";
    orbconv::CommandLine line(options);
    const std::array<const char*, 3> argv = {"orbconv", "-DH", "2"};
    line.parse(static_cast<int>(argv.size()), argv.data());
    EXPECT_EQ(options.rinexVersion, 4.01);
    EXPECT_EQ(options.antennaNumber, "earlier");
    EXPECT_EQ(options.antennaDeltaH, 2.0);
}

TEST(CommandLine, FileNameHasAShortAndALongForm) {
    EXPECT_EQ(parsed({"-f", "a.log"}).inputFileName, "a.log");
    EXPECT_EQ(parsed({"--filename", "some folder/b.log"}).inputFileName, "some folder/b.log");
}

TEST(CommandLine, VersionHasAShortAndALongForm) {
    EXPECT_EQ(parsed({"-rv", "4"}).rinexVersion, 4.0);
    EXPECT_EQ(parsed({"-rv", "4.010"}).rinexVersion, 4.01);
    EXPECT_EQ(parsed({"--rinexver", "3.05"}).rinexVersion, 3.05);
}

TEST(CommandLine, VersionIsNotCheckedHere) {
    EXPECT_EQ(parsed({"-rv", "2.11"}).rinexVersion, 2.11);
}

TEST(CommandLine, AntennaOffsetsAreStoredAsGiven) {
    const RunOptions options = parsed({"-DH", "1.2345", "-DE", "-0.25", "-DN", "123456.5"});
    EXPECT_EQ(options.antennaDeltaH, 1.2345);
    EXPECT_EQ(options.antennaDeltaE, -0.25);
    EXPECT_EQ(options.antennaDeltaN, 123456.5);
}

TEST(CommandLine, AntennaNumberOfMoreThanTwentyCharactersIsStoredWhole) {
    EXPECT_EQ(parsed({"-AN", std::string(longAntennaNumber)}).antennaNumber, longAntennaNumber);
}

TEST_P(ExcludeFlag, ClearsOnlyItsOwnConstellation) {
    EXPECT_EQ(includeFlags(parsed({GetParam().flag})), GetParam().left);
}

INSTANTIATE_TEST_SUITE_P(CommandLine, ExcludeFlag, testing::ValuesIn(excludeCases),
                         [](const auto& instance) { return std::string(instance.param.flag + 1); });

TEST(ExcludeFlags, CanAllBeGiven) {
    const RunOptions options = parsed({"-GC", "-I", "-J", "-C", "-E", "-W", "-R", "-G"});
    EXPECT_EQ(includeFlags(options), (std::array<bool, 8>{}));
}

TEST(ExcludeFlags, OnlyClearTheFlagsOfTheSwitchedOffConstellations) {
    RunOptions options;
    options.includeQzss = true;
    options.includeSbas = true;
    options.includeGlonassCdma = true;
    orbconv::CommandLine line(options);
    const std::array<const char*, 3> argv = {"orbconv", "-W", "-GC"};
    line.parse(static_cast<int>(argv.size()), argv.data());
    EXPECT_TRUE(options.includeQzss);
    EXPECT_FALSE(options.includeSbas);
    EXPECT_FALSE(options.includeGlonassCdma);
    EXPECT_TRUE(options.includeGps);
}

TEST(BadLine, NamesAnUnknownArgument) {
    EXPECT_EQ(complaint({"--bogus"}), "Unknown argument: --bogus");
    EXPECT_NE(complaint({"-Z"}).find("Unknown argument: "), std::string::npos);
}

TEST(BadLine, NamesAnOptionWithoutItsValue) {
    for (const char* const option : {"-f", "-rv", "-DH", "-DE", "-DN", "-AN"}) {
        EXPECT_NE(complaint({option}).find("Too few arguments for '"), std::string::npos) << option;
    }
}

TEST(BadLine, RefusesWhatIsNoDecimalNumber) {
    for (const char* const option : {"-rv", "-DH", "-DE", "-DN"}) {
        for (const char* const value : {"abc", "1.5x", "0x4", "0b1"}) {
            EXPECT_NE(complaint({option, value}), "") << option << ' ' << value;
        }
    }
}

TEST(Help, OpensWithUsageAndDescriptionAndClosesWithTheEpilog) {
    const std::string text = helpText();
    EXPECT_TRUE(text.starts_with("Usage: ORBCONV ")) << text;
    EXPECT_NE(text.find("\nORBCONV v.0.0.10a, ZENTA GNSS, Inc\n"), std::string::npos) << text;
    const std::vector<std::string> lines = testsupport::splitLines(text);
    const auto last =
        std::find_if(lines.rbegin(), lines.rend(), [](const auto& line) { return !line.empty(); });
    ASSERT_NE(last, lines.rend());
    EXPECT_EQ(*last, "ORBCONV -h of --help for help");
}

TEST(Help, ListsTheOptionsWithTheirTextsInTheOrderOfDeclaration) {
    const std::vector<std::pair<std::string, std::string>> options = {
        {"-h, --help", "shows help message and exits"},
        {"-v, --version", "prints version information and exits"},
        {"-f, --filename", "Input file name (with extension)"},
        {"-rv, --rinexver", "3.05|4.00|4.01 - rinex version,default version - 4.01"},
        {"-G", "Exclude all GPS SVs"},
        {"-R", "Exclude all GLONASS SVs"},
        {"-W", "Exclude all SBAS SVs"},
        {"-E", "Exclude all Galileo SVs"},
        {"-C", "Exclude all BeiDou SVs"},
        {"-J", "Exclude all QZSS SVs"},
        {"-I", "Exclude all NavIC SVs"},
        {"-GC", "Exclude all GLCDMA SVs"},
        {"-DH", "AntennaDeltaH"},
        {"-DE", "AntennaDeltaE"},
        {"-DN", "AntennaDeltaN"},
        {"-AN", "AntennaNumber"},
    };
    std::size_t next = 0;
    const std::vector<std::string> lines = testsupport::splitLines(helpText());
    for (const auto& [name, text] : options) {
        while (next < lines.size() && !lines[next].starts_with("  " + name + " ")) {
            ++next;
        }
        ASSERT_LT(next, lines.size()) << name;
        EXPECT_NE(lines[next].find("  " + text), std::string::npos) << lines[next];
    }
}

TEST(Help, OptionPrintsTheHelpTextAndEndsWithSuccess) {
    for (const char* const option : {"-h", "--help"}) {
        const auto run = runProgram({"-f", "site0010.log", option}, "", "site0010.log");
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_EQ(run.standardOutput, helpText());
        EXPECT_EQ(run.names, std::vector<std::string>{"site0010.log"});
    }
}

TEST(Version, OptionPrintsTheVersionTextAndEndsWithSuccess) {
    for (const char* const option : {"-v", "--version"}) {
        const auto run = runProgram({"-f", "site0010.log", option}, "", "site0010.log");
        EXPECT_EQ(run.exitStatus, 0);
        EXPECT_EQ(run.standardOutput, "v.0.0.10a\n");
        EXPECT_EQ(run.names, std::vector<std::string>{"site0010.log"});
    }
}
