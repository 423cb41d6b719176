// The program when what is around it fails: a log that cannot be read or is another at the second reading,
// folders and disks that take nothing. It comes to an end with the status and the texts of the manual,
// and the log stays as it was.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "posix/watched_program.h"
#include "support/conversion.h"
#include "support/log_passes.h"
#include "support/obs_text.h"
#include "support/random_log.h"

namespace {

namespace fs = std::filesystem;
using testsupport::contentsOf;
using testsupport::feedThroughPipe;
using testsupport::RandomLog;
using testsupport::runWatched;
using testsupport::splitLines;
using testsupport::TestFolder;
using testsupport::WatchedProgram;
using testsupport::WatchedRun;
using testsupport::withoutRunDate;
using testsupport::write;
using Names = std::vector<std::string>;

constexpr std::string_view logName = "site0010.log";
constexpr std::string_view lettersBelow4 = "oNIGLC";
constexpr std::string_view start = "Rinex Version: 3.05\nKVS File: site0010.log\n";
constexpr std::string_view surveying = "Conversion in progress\n";
constexpr std::string_view writing =
    "Preparing Observation data\n"
    "Preparing Navigation data\n"
    "The process is complete\n";

const std::string& goodLog() {
    static const RandomLog log({.seed = 51, .fullDopplers = false});
    return log.bytes();
}

const std::string& otherLog() {
    static const RandomLog log({.seed = 52, .epochs = 2, .fullDopplers = false});
    return log.bytes();
}

std::string outputName(char letter) {
    const std::time_t now = std::time(nullptr);
    return "site0010." + std::to_string(std::gmtime(&now)->tm_year - 100) + letter;
}

// The log and the outputs of these letters, sorted.
Names namesWith(std::string_view letters) {
    Names names = {std::string(logName)};
    for (const char letter : letters) {
        names.push_back(outputName(letter));
    }
    std::ranges::sort(names);
    return names;
}

std::vector<std::string> linesOf(std::string_view text) {
    return withoutRunDate(splitLines(text));
}

WatchedRun convert(const TestFolder& folder, const testsupport::Surroundings& surroundings = {}) {
    return runWatched(folder, {"-f", std::string(logName)}, surroundings);
}

// What an undisturbed run leaves.
class WholeRun {
public:
    explicit WholeRun(std::string_view log) {
        write(folder_ / std::string(logName), log);
        EXPECT_EQ(convert(folder_).exitStatus, 0);
    }
    [[nodiscard]] std::string file(char letter) const { return contentsOf(folder_ / outputName(letter)); }

private:
    TestFolder folder_;
};

// The run went through its stages to the end, without a word on what it could not do.
void expectComplete(const WatchedRun& run) {
    EXPECT_FALSE(run.hung);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.standardOutput, std::string(start) + std::string(surveying) + std::string(writing));
    EXPECT_EQ(run.standardError, "");
}

// The run ended where it could not open the log.
void expectFileError(const WatchedRun& run, std::string_view printedBefore, std::string_view reason) {
    const std::string help = testsupport::runProgram({"-h"}).standardOutput;
    EXPECT_FALSE(run.hung);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.standardOutput, std::string(printedBefore) + help + "\n");
    EXPECT_EQ(run.standardError, "File Error: : " + std::string(reason) + "\n");
}

void expectFilesOfAnEmptyLog(const TestFolder& folder) {
    const WholeRun empty("");
    EXPECT_EQ(folder.names(), namesWith(lettersBelow4));
    for (const char letter : lettersBelow4) {
        EXPECT_EQ(linesOf(contentsOf(folder / outputName(letter))), linesOf(empty.file(letter))) << letter;
    }
}

// ---- a log that cannot be opened or read ----

TEST(UnopenedLog, WithoutTheRightToReadItIsReported) {
    const TestFolder folder;
    write(folder / std::string(logName), goodLog());
    fs::permissions(folder / std::string(logName), fs::perms::none);
    const WatchedRun run = convert(folder, {.asNobody = true});
    if (run.notStarted) {
        GTEST_SKIP() << "a user who owns nothing may not run " ORBCONV_BINARY;
    }
    expectFileError(run, start, "Permission denied");
    EXPECT_EQ(folder.names(), namesWith(""));
}

TEST(UnopenedLog, LinkThatLeadsNowhereOrInACircleIsReported) {
    for (const auto& [target, reason] : {std::pair{"missing", "No such file or directory"},
                                         {"site0010.log", "Too many levels of symbolic links"}}) {
        const TestFolder folder;
        fs::create_symlink(target, folder / std::string(logName));
        expectFileError(convert(folder), start, reason);
        EXPECT_EQ(folder.names(), namesWith(""));
    }
}

TEST(UnreadableLog, FolderOfItsNameIsTakenForAnEmptyLog) {
    const TestFolder folder;
    fs::create_directory(folder / std::string(logName));
    write(folder / (std::string(logName) + "/kept"), "kept");
    expectComplete(convert(folder));
    expectFilesOfAnEmptyLog(folder);
    EXPECT_EQ(contentsOf(folder / (std::string(logName) + "/kept")), "kept");
}

#ifdef __linux__
TEST(UnreadableLog, ReadErrorIsTakenForItsEnd) {
    // Its first bytes stand for an address that no process has.
    const TestFolder folder;
    fs::create_symlink("/proc/self/mem", folder / std::string(logName));
    expectComplete(convert(folder));
    expectFilesOfAnEmptyLog(folder);
}
#endif

// ---- a log that is another at the second reading ----

// A pipe of the log's name gives the first reading and is gone, or another's, before that ends.
class SecondReading : public testing::Test {
protected:
    template <class Replace>
    WatchedRun run(Replace replace) {
        EXPECT_EQ(mkfifo(log_.c_str(), 0600), 0);
        WatchedProgram program(folder, {"-f", std::string(logName)});
        feedThroughPipe(log_, goodLog(), [&] {
            fs::remove(log_);
            replace(log_);
            replaced_ = true;
        });
        EXPECT_TRUE(replaced_);
        return program.wait();
    }
    // What the passes make of two logs.
    static std::string expectedObservations(std::string_view second) {
        testsupport::Passes passes;
        passes.survey(goodLog());
        return passes.write(second);
    }
    void expectObservations(std::string_view second) const {
        EXPECT_EQ(linesOf(contentsOf(folder / outputName('o'))), linesOf(expectedObservations(second)));
    }
    void expectNavigationOfTheFirst() const {
        const WholeRun whole(goodLog());
        for (const char letter : lettersBelow4.substr(1)) {
            EXPECT_EQ(linesOf(contentsOf(folder / outputName(letter))), linesOf(whole.file(letter)))
                << letter;
        }
    }

    TestFolder folder;

private:
    fs::path log_ = folder / std::string(logName);
    bool replaced_ = false;
};

TEST_F(SecondReading, OfALogThatIsGoneIsReportedAndLeavesNoFile) {
    const WatchedRun ended = run([](const fs::path&) {});
    expectFileError(ended, std::string(start) + std::string(surveying), "No such file or directory");
    EXPECT_EQ(folder.names(), Names());
}

TEST_F(SecondReading, GivesTheEpochsOfWhatItFindsUnderTheHeaderOfWhatWasSurveyed) {
    expectComplete(run([](const fs::path& log) { write(log, otherLog()); }));
    expectObservations(otherLog());
    expectNavigationOfTheFirst();
    EXPECT_EQ(contentsOf(folder / std::string(logName)), otherLog());
}

TEST_F(SecondReading, OfALogThatWasCutGivesTheEpochsThatAreLeft) {
    const std::string_view half = std::string_view(goodLog()).substr(0, goodLog().size() / 2);
    expectComplete(run([&](const fs::path& log) { write(log, half); }));
    expectObservations(half);
    EXPECT_LT(expectedObservations(half).size(), expectedObservations(goodLog()).size());
    EXPECT_GT(expectedObservations(half).size(), 1000U);
}

TEST_F(SecondReading, OfAFolderGivesNoEpochs) {
    expectComplete(run([](const fs::path& log) { fs::create_directory(log); }));
    EXPECT_EQ(contentsOf(folder / outputName('o')), "");
    expectNavigationOfTheFirst();
}

// ---- outputs that cannot be made ----

TEST(UnopenedOutput, NameThatIsAFolderIsPassedOver) {
    const WholeRun whole(goodLog());
    for (const char blocked : lettersBelow4) {
        const TestFolder folder;
        write(folder / std::string(logName), goodLog());
        fs::create_directory(folder / outputName(blocked));
        expectComplete(convert(folder));
        EXPECT_TRUE(fs::is_empty(folder / outputName(blocked))) << blocked;
        EXPECT_EQ(contentsOf(folder / std::string(logName)), goodLog()) << blocked;
        for (const char letter : lettersBelow4) {
            if (letter != blocked) {
                EXPECT_EQ(linesOf(contentsOf(folder / outputName(letter))), linesOf(whole.file(letter)))
                    << blocked << ' ' << letter;
            }
        }
    }
}

TEST(UnopenedOutput, FolderThatMayNotBeWrittenGetsNoFiles) {
    const TestFolder folder;
    write(folder / std::string(logName), goodLog());
    fs::permissions(folder / std::string(logName), fs::perms(0444));
    fs::permissions(folder.path(), fs::perms(0555));
    const WatchedRun run = convert(folder, {.asNobody = true});
    if (run.notStarted) {
        GTEST_SKIP() << "a user who owns nothing may not run " ORBCONV_BINARY;
    }
    expectComplete(run);
    EXPECT_EQ(folder.names(), namesWith(""));
    EXPECT_EQ(contentsOf(folder / std::string(logName)), goodLog());
}

// ---- a full disk ----

#ifdef __linux__
TEST(FullDisk, TakesNothingOfAFileAndAllOfTheOthers) {
    const WholeRun whole(goodLog());
    for (const char full : lettersBelow4) {
        const TestFolder folder;
        write(folder / std::string(logName), goodLog());
        fs::create_symlink("/dev/full", folder / outputName(full));
        expectComplete(convert(folder));
        EXPECT_EQ(contentsOf(folder / std::string(logName)), goodLog()) << full;
        EXPECT_TRUE(fs::is_symlink(folder / outputName(full))) << full;
        for (const char letter : lettersBelow4) {
            if (letter != full) {
                EXPECT_EQ(linesOf(contentsOf(folder / outputName(letter))), linesOf(whole.file(letter)))
                    << full << ' ' << letter;
            }
        }
    }
}

TEST(FullDisk, OfStandardOutputLosesTheTextsAndNoFile) {
    const WholeRun whole(goodLog());
    const TestFolder folder;
    write(folder / std::string(logName), goodLog());
    const WatchedRun run = convert(folder, {.standardOutput = "/dev/full"});
    EXPECT_FALSE(run.hung);
    EXPECT_EQ(run.exitStatus, 0);
    for (const char letter : lettersBelow4) {
        EXPECT_EQ(linesOf(contentsOf(folder / outputName(letter))), linesOf(whole.file(letter))) << letter;
    }
}
#endif

TEST(FullDisk, CutsAFileWhereItsRoomEnds) {
    constexpr std::size_t room = 4096;
    const WholeRun whole(goodLog());
    const TestFolder folder;
    write(folder / std::string(logName), goodLog());
    expectComplete(convert(folder, {.longestFile = room}));
    for (const char letter : lettersBelow4) {
        EXPECT_EQ(linesOf(contentsOf(folder / outputName(letter))),
                  linesOf(whole.file(letter).substr(0, room)))
            << letter;
    }
    EXPECT_GT(whole.file('o').size(), 2 * room);
    EXPECT_EQ(contentsOf(folder / std::string(logName)), goodLog());
}

// ---- a log that bears its own output's name ----

// The cut of four characters gives the observation file the log's own name: opening it empties the log ahead
// of the second reading.
TEST(OwnName, LogOfTheObservationFilesNameComesToAnEnd) {
    const TestFolder folder;
    write(folder / outputName('o'), goodLog());
    const WatchedRun run = runWatched(folder, {"-f", outputName('o')});
    EXPECT_FALSE(run.hung);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(contentsOf(folder / outputName('o')), "");
}

}  // namespace
