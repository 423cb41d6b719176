// orbconv-standard's options, each from the command line to the file, and what ends without one.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"

namespace {
namespace optionsTest {

using samplelog::LogBuilder;
using testsupport::fullLog;
using testsupport::logOfTimes;
using testsupport::OwnFolder;
using testsupport::runStandard;
using testsupport::runWithArguments;
using testsupport::StandardRun;
using Lines = std::vector<std::string>;

constexpr std::uint32_t hour = 3600000;

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

// ---- options ----

TEST(StandardOptions, OptionsReplaceTheLogsTexts) {
    const StandardRun run = runStandard(fullLog(), {"--marker-name=NEW NAME",
                                                    "--marker-number",
                                                    "12345M001",
                                                    "--marker-type",
                                                    "GEODETIC",
                                                    "--observer",
                                                    "ME",
                                                    "--agency",
                                                    "US",
                                                    "--receiver-number",
                                                    "2",
                                                    "--receiver-type",
                                                    "T",
                                                    "--receiver-version",
                                                    "V",
                                                    "--antenna-number",
                                                    "3",
                                                    "--antenna-type",
                                                    "A",
                                                    "--antenna-delta",
                                                    "-0.5,0.25,1",
                                                    "--position",
                                                    "-1.5,+2,3e3",
                                                    "--comment",
                                                    "first",
                                                    "--comment=-second"});
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    EXPECT_EQ(run.files.begin()->first.substr(0, 9), "NEWN00XXX");
    EXPECT_EQ(run.labelled("MARKER NAME"), Lines{"NEW NAME"});
    EXPECT_EQ(run.labelled("MARKER NUMBER"), Lines{"12345M001"});
    EXPECT_EQ(run.labelled("MARKER TYPE"), Lines{"GEODETIC"});
    EXPECT_EQ(run.labelled("OBSERVER / AGENCY"), Lines{"ME                  US"});
    EXPECT_EQ(run.labelled("REC # / TYPE / VERS"), Lines{"2                   T                   V"});
    EXPECT_EQ(run.labelled("ANT # / TYPE"), Lines{"3                   A"});
    EXPECT_EQ(run.labelled("ANTENNA: DELTA H/E/N"), Lines{"       -0.5000        0.2500        1.0000"});
    EXPECT_EQ(run.labelled("APPROX POSITION XYZ"), Lines{"       -1.5000        2.0000     3000.0000"});
    EXPECT_EQ(run.labelled("COMMENT"), (Lines{"first", "-second"}));
}

TEST(StandardOptions, StationAndFolderNameTheFile) {
    const OwnFolder folder;
    const StandardRun run =
        runStandard(fullLog(), {"--station", "algo00can", "--output-dir", folder.path().string()});
    EXPECT_TRUE(run.files.empty());
    EXPECT_EQ(folder.names(), Lines{"ALGO00CAN_R_20240650100_00U_00U_MO.rnx"});
}

TEST(StandardOptions, SystemsWindowAndIntervalSelect) {
    EXPECT_EQ(runStandard(fullLog(), {"--systems", "ECR"}).body().size(), 2U);
    const std::string log = logOfTimes({hour, hour + 10000, hour + 15000, hour + 20000, hour + 30000});
    const StandardRun window =
        runStandard(log, {"--start", "2024-03-05T01:00:10", "--end", "2024-03-05T01:00:20"});
    EXPECT_EQ(window.exitStatus, 0);
    EXPECT_EQ(window.body().size(), 6U);
    EXPECT_TRUE(window.errors.starts_with("orbconv-standard: written: ")) << window.errors;
    EXPECT_TRUE(contains(window.errors,
                         "  left out (a satellite counts in each of its epochs):\n"
                         "    epochs outside the window or the interval: 2\n"))
        << window.errors;
    EXPECT_TRUE(window.body()[0].starts_with("> 2024 03 05 01 00 10.0000000  0")) << window.body()[0];
    EXPECT_EQ(runStandard(log, {"--interval", "10"}).body().size(), 8U);
    EXPECT_EQ(runStandard(log, {"--interval", "0.001"}).body().size(), 10U);
    EXPECT_EQ(runStandard(log, {"--interval", "30"}).labelled("INTERVAL"), Lines{"    30.000"});
}

TEST(StandardOptions, NothingSelectedIsAnErrorAndNoFile) {
    for (const Lines& arguments : {Lines{"--start", "2025-01-01"}, Lines{"--systems", "C"}}) {
        const StandardRun run = runStandard(fullLog(), arguments);
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_TRUE(run.files.empty());
        EXPECT_TRUE(contains(run.errors, "none of the 1 epochs in it can be written; epochs "));
    }
}

TEST(StandardOptions, QuietSaysNothing) {
    EXPECT_EQ(runStandard(fullLog(), {"-q"}).errors, "");
    EXPECT_EQ(runStandard(fullLog(), {"--quiet"}).errors, "");
}

TEST(StandardOptions, SummaryTellsWhatWasWritten) {
    const StandardRun run = runStandard(fullLog());
    EXPECT_TRUE(contains(run.errors,
                         "MO.rnx\n"
                         "  epochs: 1, 2024-03-05T01:00:00.500 to 2024-03-05T01:00:00.500 GPS\n"
                         "  G: satellites 1, signals 1C 2W\n"
                         "  R: satellites 1, signals 1C\n"))
        << run.errors;
    EXPECT_FALSE(contains(run.errors, "left out"));
}

// ---- failures ----

TEST(StandardOptions, ExistingFileNeedsForce) {
    const OwnFolder folder;
    const std::string name = "ABCD00XXX_R_20240650100_00U_00U_MO.rnx";
    testsupport::writeBytes(folder.path() / "site.kvs", fullLog());
    testsupport::writeBytes(folder.path() / name, "old");
    std::string errors;
    EXPECT_EQ(runWithArguments({folder.file("site.kvs")}, errors), 1);
    EXPECT_TRUE(contains(errors, name + " exists; --force overwrites it"));
    EXPECT_EQ(testsupport::textOfFile(folder.path() / name), "old");
    EXPECT_EQ(runWithArguments({"--force", folder.file("site.kvs")}, errors), 0) << errors;
    EXPECT_GT(testsupport::textOfFile(folder.path() / name).size(), 1000U);
    EXPECT_EQ(folder.names(), (Lines{name, "site.kvs"}));
}

TEST(StandardOptions, LogsWithoutAnEpochAreErrors) {
    const struct {
        std::string log;
        const char* reason;
    } cases[] = {{"", "no message of a receiver in it"},
                 {"a letter to someone", "no message of a receiver in it"},
                 {LogBuilder().rd(2024, 3, 5).take(), "no epoch in it"}};
    for (const auto& [log, reason] : cases) {
        const StandardRun run = runStandard(log);
        EXPECT_EQ(run.exitStatus, 1);
        EXPECT_TRUE(run.files.empty());
        EXPECT_TRUE(contains(run.errors, std::string("site.kvs: ") + reason)) << run.errors;
    }
}

TEST(StandardOptions, LogThatIsNotThereIsAnErrorThatNamesIt) {
    std::string errors;
    EXPECT_EQ(runWithArguments({"/no/such/log.kvs"}, errors), 1);
    EXPECT_TRUE(contains(errors, "/no/such/log.kvs: No such file or directory")) << errors;
}

TEST(StandardOptions, FolderThatIsNotThereIsMade) {
    const OwnFolder folder;
    const std::filesystem::path inner = folder.path() / "a" / "b";
    EXPECT_EQ(runStandard(fullLog(), {"--output-dir", inner.string()}).exitStatus, 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(inner), {}), 1);
}

TEST(StandardOptions, FolderThatCannotBeMadeIsAnErrorThatNamesTheFile) {
    const OwnFolder folder;
    const std::filesystem::path file = folder.path() / "file";
    std::ofstream(file) << "text";
    const StandardRun run = runStandard(fullLog(), {"--output-dir", (file / "folder").string()});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_TRUE(contains(run.errors, "MO.rnx: ")) << run.errors;
    EXPECT_EQ(folder.names(), Lines{"file"});
}

TEST(StandardOptions, WrongOptionsAreErrorsThatNameThem) {
    const std::string wide(61, 'x');
    const Lines lines[] = {{"--rinex", "4.00"},
                           {"--systems", "GX"},
                           {"--systems", "J"},
                           {"--systems", ""},
                           {"--start", "yesterday"},
                           {"--end", "2024-13-01"},
                           {"--date", "2024-03-05T01:00"},
                           {"--date", "2024-02-30"},
                           {"--interval", "0"},
                           {"--interval", "0.0005"},
                           {"--interval", "86401"},
                           {"--interval", "1x"},
                           {"--interval", "-1"},
                           {"--interval", "nan"},
                           {"--station", "TOO00SHO"},
                           {"--station", "ALGO-0CAN"},
                           {"--position", "1,2"},
                           {"--position", "1,2,3,4"},
                           {"--position", "1,2,x"},
                           {"--position", "1e9,2,3"},
                           {"--antenna-delta", "1,2,"},
                           {"--antenna-delta", "inf,1,2"},
                           {"--marker-name", wide},
                           {"--comment", wide},
                           {"--observer", "J\xC3\xB8rn"},
                           {"--agency", "two\nlines"}};
    for (const Lines& arguments : lines) {
        const StandardRun run = runStandard(fullLog(), arguments);
        EXPECT_EQ(run.exitStatus, 1) << arguments[1];
        EXPECT_TRUE(run.files.empty());
        EXPECT_TRUE(contains(run.errors, "orbconv-standard: " + arguments[0] + ": '")) << run.errors;
    }
    std::string errors;
    EXPECT_EQ(runWithArguments({}, errors), 1);
    EXPECT_TRUE(contains(errors, "logs: 1 or more argument(s) expected. 0 provided.")) << errors;
    EXPECT_EQ(runWithArguments({"--nonsense", "log"}, errors), 1);
    EXPECT_TRUE(contains(errors, "--nonsense")) << errors;
}

TEST(StandardOptions, TextThatIsTooWideIsToldWithItsWidth) {
    const StandardRun run = runStandard(fullLog(), {"--observer", "Twenty-one characters"});
    EXPECT_TRUE(contains(run.errors,
                         "--observer: 'Twenty-one characters' has 21 characters; the header has "
                         "room for 20\n"))
        << run.errors;
}

}  // namespace optionsTest
}  // namespace
