// The program from start to exit status: its stages as standard output tells them, the files it leaves, and
// how it ends when something is wrong.
#include "run/conversion_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "samplelog/log_builder.h"
#include "support/conversion.h"

namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::Conversion;
using testsupport::convert;
using testsupport::runProgram;
using Arguments = std::vector<std::string>;
using Names = std::vector<std::string>;

constexpr std::string_view complete =
    "Conversion in progress\n"
    "Preparing Observation data\n"
    "Preparing Navigation data\n"
    "The process is complete\n";

// The present time in UTC, in the form of a file header's date.
std::string utcNow(const char* form = "%Y%m%d %H%M%S UTC ") {
    const std::time_t now = std::time(nullptr);
    std::string text(32, '\0');
    text.resize(std::strftime(text.data(), text.size(), form, std::gmtime(&now)));
    return text;
}

// The year in output names: without its century, and here without a leading zero.
std::string yearText() {
    return std::to_string(std::stoi(utcNow("%Y")) - 2000);
}

// The names that a conversion leaves, the log's too, sorted.
Names expectedNames(const std::string& log, const std::string& base, std::string_view letters) {
    Names names = {log};
    for (const char letter : letters) {
        names.push_back(base + "." + yearText() + letter);
    }
    std::ranges::sort(names);
    return names;
}

LogBuilder twoEpochs() {
    LogBuilder log;
    for (const std::uint32_t time : {3600000U, 3601000U}) {
        log.time(time).rd(2024, 3, 5).sx({{SystemCode::gps, 5}}).rx({0}).flags(Band::c, {0x40}).td();
    }
    return log;
}

samplelog::KeplerBlock orbit(std::uint8_t sv, std::int32_t toe) {
    return {.sv = sv, .toe = toe};
}

// Two ephemerides of each constellation, the later and higher first.
LogBuilder ephemerides() {
    LogBuilder log;
    for (const auto& [sv, toe] : std::map<std::uint8_t, std::int32_t, std::greater<>>{{9, 7200}, {8, 3600}}) {
        log.ge123(orbit(sv, toe)).ie(orbit(sv, toe));
        log.ne88({.sv = sv, .tk = toe, .tb = toe});
        log.en({.kepler = orbit(sv, toe), .navFlags = 1}).cn134({.kepler = orbit(sv, toe), .navFlags = 1});
    }
    return log;
}

// The satellites of a constellation in the order of a file's records: in a mixed file those of the lines
// that open a record, in the others those of the epoch lines.
std::string recordOrder(const Conversion& run, char file, char constellation) {
    const std::string opening =
        file == 'p' ? std::string("> EPH ") + constellation : std::string(1, constellation);
    std::string order;
    for (const std::string& line : run.body(file)) {
        if (line.starts_with(opening)) {
            order += line.substr(opening.size(), 2) + ' ';
        }
    }
    return order;
}

struct VersionCase {
    const char* argument;
    const char* printed;
    const char* letters;  // of the output files
};

void PrintTo(const VersionCase& version, std::ostream* out) {
    *out << version.argument;
}

class SupportedVersion : public testing::TestWithParam<VersionCase> {};

struct ExclusionCase {
    const char* flag;
    const char* letters;  // of the output files below version 4.0
};

void PrintTo(const ExclusionCase& exclude, std::ostream* out) {
    *out << exclude.flag;
}

class ExclusionFromARun : public testing::TestWithParam<ExclusionCase> {};

struct SortCase {
    const char* flag;
    char constellation;
    char file;  // letter of its file below version 4.0
};

void PrintTo(const SortCase& sort, std::ostream* out) {
    *out << sort.constellation;
}

class TableSort : public testing::TestWithParam<SortCase> {};

class BadCommandLine : public testing::TestWithParam<Arguments> {};

const std::string ascending = "08 09 ";
const std::string orderOfTheLog = "09 08 ";

constexpr VersionCase versions[] = {
    {"3.05", "3.05", "oNIGLC"}, {"3.050", "3.05", "oNIGLC"}, {"4", "4", "op"},
    {"4.00", "4", "op"},        {"4.01", "4.01", "op"},      {"4.010", "4.01", "op"},
};

constexpr ExclusionCase exclusions[] = {
    {"-G", "oIGLC"}, {"-I", "oNGLC"},  {"-R", "oNILC"},  {"-E", "oNIGC"},
    {"-C", "oNIGL"}, {"-W", "oNIGLC"}, {"-J", "oNIGLC"}, {"-GC", "oNIGLC"},
};

constexpr SortCase sorts[] = {{"-G", 'G', 'N'}, {"-I", 'I', 'I'}, {"-R", 'R', 'G'}, {"-C", 'C', 'C'}};

const Arguments badLines[] = {
    {"--bogus"}, {"-Z"}, {"-f"}, {"-DH", "abc"}, {"-rv", "0x4"}, {"-f", "site0010.log", "-AN"},
};

}  // namespace

TEST(OutputName, IsBaseDotYearAndLetter) {
    EXPECT_EQ(orbconv::outputName("site0650", {.year = 2026}, 'o'), "site0650.26o");
    EXPECT_EQ(orbconv::outputName("in/site0650", {.year = 2026}, 'N'), "in/site0650.26N");
    EXPECT_EQ(orbconv::outputName("", {.year = 2031}, 'p'), ".31p");
}

TEST(OutputName, YearHasNoLeadingZero) {
    EXPECT_EQ(orbconv::outputName("site", {.year = 2009}, 'o'), "site.9o");
    EXPECT_EQ(orbconv::outputName("site", {.year = 2000}, 'o'), "site.0o");
    EXPECT_EQ(orbconv::outputName("site", {.year = 2100}, 'o'), "site.100o");
}

TEST(OutputBaseName, LosesFourCharactersWhateverTheyAre) {
    EXPECT_EQ(orbconv::outputBaseName("site0650.log"), "site0650");
    EXPECT_EQ(orbconv::outputBaseName("logfile"), "log");
    EXPECT_EQ(orbconv::outputBaseName("site.x"), "si");
    EXPECT_EQ(orbconv::outputBaseName("site.data"), "site.");
    EXPECT_EQ(orbconv::outputBaseName("four"), "");
}

TEST(OutputBaseName, CannotBeCutFromAShorterName) {
    EXPECT_THROW(orbconv::outputBaseName("log"), std::out_of_range);
    EXPECT_THROW(orbconv::outputBaseName(""), std::out_of_range);
}

TEST(ConversionRun, WithoutAVersionWritesVersion305) {
    const Conversion run = convert("");
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.standardOutput, "Rinex Version: 3.05\nKVS File: site0010.log\n" + std::string(complete));
    EXPECT_EQ(run.standardError, "");
}

TEST_P(SupportedVersion, IsPrintedAndPicksTheFiles) {
    const VersionCase& version = GetParam();
    const Conversion run = convert("", {"-rv", version.argument});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.standardOutput, std::string("Rinex Version: ") + version.printed +
                                      "\nKVS File: site0010.log\n" + std::string(complete));
    EXPECT_EQ(run.names, expectedNames("site0010.log", "site0010", version.letters));
}

INSTANTIATE_TEST_SUITE_P(ConversionRun, SupportedVersion, testing::ValuesIn(versions));

TEST(ConversionRun, UnsupportedVersionEndsBeforeAnythingIsOpened) {
    for (const char* const version : {"3.04", "3.06", "3.0500001", "4.02", "4.1", "0", "-4.01", "40"}) {
        const Conversion run = convert("", {"-rv", version});
        EXPECT_EQ(run.exitStatus, 1) << version;
        EXPECT_EQ(run.standardOutput, "Unsupported Rinex Version\n") << version;
        EXPECT_EQ(run.standardError, "") << version;
        EXPECT_EQ(run.names, Names{"site0010.log"}) << version;
    }
    EXPECT_EQ(runProgram({"-f", "missing.log", "-rv", "3"}).standardOutput, "Unsupported Rinex Version\n");
}

TEST(ConversionRun, MissingInputIsReportedWithTheHelpTextAndTheReason) {
    const std::string help = runProgram({"-h"}).standardOutput;
    const Conversion run = runProgram({"-f", "missing.log"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.standardOutput, "Rinex Version: 3.05\nKVS File: missing.log\n" + help + "\n");
    EXPECT_EQ(run.standardError, "File Error: : No such file or directory\n");
    EXPECT_EQ(run.names, Names{});
}

TEST(ConversionRun, WithoutAFileNameFailsAtOpening) {
    const std::string help = runProgram({"-h"}).standardOutput;
    const Conversion run = runProgram({"-rv", "4.01"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.standardOutput, "Rinex Version: 4.01\nKVS File: \n" + help + "\n");
    EXPECT_TRUE(run.standardError.starts_with("File Error: : ")) << run.standardError;
}

TEST(ConversionRun, ADirectoryAsInputComesToAnEnd) {
    EXPECT_FALSE(runProgram({"-f", "./././."}).abnormal);
}

TEST_P(ExclusionFromARun, HasNoNavigationFileBelowVersion4) {
    const Conversion run = convert("", {GetParam().flag});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.names, expectedNames("site0010.log", "site0010", GetParam().letters));
}

TEST_P(ExclusionFromARun, ChangesNoFileNameFromVersion4On) {
    const Conversion run = convert("", {GetParam().flag, "-rv", "4.01"});
    EXPECT_EQ(run.names, expectedNames("site0010.log", "site0010", "op"));
}

INSTANTIATE_TEST_SUITE_P(ConversionRun, ExclusionFromARun, testing::ValuesIn(exclusions));

TEST(ConversionRun, WithEverythingExcludedOnlyTheObservationFileIsLeft) {
    const Conversion run = convert("", {"-G", "-R", "-W", "-E", "-C", "-J", "-I", "-GC"});
    EXPECT_EQ(run.names, expectedNames("site0010.log", "site0010", "o"));
}

TEST(ConversionRun, NamesFollowTheInputAndTheComputersYear) {
    const Conversion dotless = convert(twoEpochs().bytes(), {"-rv", "4.01"}, "logfile");
    EXPECT_EQ(dotless.names, expectedNames("logfile", "log", "op"));
    const Conversion four = convert("", {"-rv", "4.01"}, "four");
    EXPECT_EQ(four.names, expectedNames("four", "", "op"));
}

TEST(ConversionRun, OutputsStandBesideTheInput) {
    const Conversion run = runProgram({"-f", "./site0010.log", "-rv", "4.01"}, "", "site0010.log");
    EXPECT_TRUE(run.standardOutput.starts_with("Rinex Version: 4.01\nKVS File: ./site0010.log\n"));
    EXPECT_EQ(run.names, expectedNames("site0010.log", "site0010", "op"));
}

TEST(ConversionRun, EmptyLogLeavesWhatTheWritersPutOutForEmptyTables) {
    const Conversion run = convert("");
    EXPECT_EQ(run.lines('o').size(), 0U);
    // First lines and the end of the header; GLONASS adds two lines that always stand, Galileo one.
    EXPECT_EQ(run.lines('N').size(), 4U);
    EXPECT_EQ(run.lines('I').size(), 4U);
    EXPECT_EQ(run.lines('G').size(), 6U);
    EXPECT_EQ(run.lines('L').size(), 5U);
    EXPECT_EQ(run.lines('C').size(), 4U);
    // Four header lines, and the three of the GLONASS time offset and of the Galileo ionosphere.
    const Conversion mixed = convert("", {"-rv", "4.01"});
    EXPECT_EQ(mixed.lines('o').size(), 0U);
    EXPECT_EQ(mixed.lines('p').size(), 4U + 3U + 3U);
}

TEST(ConversionRun, EveryFileCarriesTheDateOfTheRun) {
    const std::string before = utcNow();
    const Conversion run = convert(twoEpochs().bytes());
    const std::string after = utcNow();
    const auto dates = run.labelled('o', "PGM / RUN BY / DATE");
    ASSERT_EQ(dates.size(), 1U);
    EXPECT_LE(before, dates[0].substr(40, 20));
    EXPECT_GE(after, dates[0].substr(40, 20));
    EXPECT_EQ(dates[0].substr(0, 40), "ORBCONV v.0.0.10a   ZENTA GNSS          ");
    for (const char letter : {'N', 'I', 'G', 'L', 'C'}) {
        EXPECT_EQ(run.labelled(letter, "PGM / RUN BY / DATE"), dates) << letter;
    }
}

TEST_P(TableSort, PutsTheRecordsInOrderInEveryVersion) {
    const auto [flag, constellation, file] = GetParam();
    EXPECT_EQ(recordOrder(convert(ephemerides().bytes()), file, constellation), ascending);
    EXPECT_EQ(recordOrder(convert(ephemerides().bytes(), {"-rv", "4.0"}), 'p', constellation), ascending);
}

TEST_P(TableSort, IsLeftOutForAnExclusionFromARunWhichIsWrittenAllTheSame) {
    const auto [flag, constellation, file] = GetParam();
    const Conversion run = convert(ephemerides().bytes(), {flag, "-rv", "4.01"});
    EXPECT_EQ(recordOrder(run, 'p', constellation), orderOfTheLog);
    for (const SortCase& other : sorts) {
        if (other.constellation != constellation) {
            EXPECT_EQ(recordOrder(run, 'p', other.constellation), ascending) << other.constellation;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(ConversionRun, TableSort, testing::ValuesIn(sorts));

TEST(ConversionRun, GalileoIsSortedOnlyBelowVersion4) {
    EXPECT_EQ(recordOrder(convert(ephemerides().bytes()), 'L', 'E'), ascending);
    EXPECT_EQ(recordOrder(convert(ephemerides().bytes(), {"-rv", "4.0"}), 'p', 'E'), orderOfTheLog);
    EXPECT_EQ(recordOrder(convert(ephemerides().bytes(), {"-rv", "4.01"}), 'p', 'E'), orderOfTheLog);
}

TEST(ConversionRun, MixedFileTakesTheConstellationsInItsOwnOrder) {
    std::string order;
    for (const std::string& line : convert(ephemerides().bytes(), {"-rv", "4.01"}).body('p')) {
        if (line.starts_with("> EPH ")) {
            order += line[6];
        }
    }
    EXPECT_EQ(order, "GGRREECCII");
}

TEST(ConversionRun, ConstellationsThatARunCannotSwitchOnHaveNoFile) {
    LogBuilder log = twoEpochs();
    log.message("QE", std::string(131, '\1')).message("WE", std::string(60, '\1'));
    EXPECT_EQ(convert(log.bytes()).names, expectedNames("site0010.log", "site0010", "oNIGLC"));
}

TEST_P(BadCommandLine, EndsAbnormallyWithoutTheHelpText) {
    const Conversion run = runProgram(GetParam());
    EXPECT_TRUE(run.abnormal);
    EXPECT_EQ(run.standardOutput, "");
    EXPECT_EQ(run.names, Names{});
}

INSTANTIATE_TEST_SUITE_P(ConversionRun, BadCommandLine, testing::ValuesIn(badLines));

TEST(ConversionRun, NameShorterThanFourCharactersEndsAbnormallyBehindTheSurvey) {
    const Conversion run = convert(twoEpochs().bytes(), {}, "log");
    EXPECT_TRUE(run.abnormal);
    EXPECT_EQ(run.standardOutput, "Rinex Version: 3.05\nKVS File: log\nConversion in progress\n");
    EXPECT_EQ(run.names, Names{"log"});
}

TEST(ConversionRun, ShortReceiverNumberEndsAbnormallyInTheWritingPass) {
    LogBuilder log;
    log.pmParameters({{"rcv/id=", "1234567890123456789"}});
    const Conversion run = convert(log.bytes());
    EXPECT_TRUE(run.abnormal);
    EXPECT_TRUE(run.standardOutput.ends_with("Preparing Observation data\n")) << run.standardOutput;
    EXPECT_EQ(run.names, expectedNames("site0010.log", "site0010", "o"));
}

#ifdef __linux__
TEST(ConversionRun, OutputsThatCannotBeOpenedAreNotReported) {
    // Nobody can create a file in this folder.
    const Conversion run = runProgram({"-f", "/proc/version"});
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.standardOutput, "Rinex Version: 3.05\nKVS File: /proc/version\n" + std::string(complete));
    EXPECT_EQ(run.standardError, "");
}
#endif
