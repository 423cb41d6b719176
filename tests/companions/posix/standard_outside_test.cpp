// What comes from outside: a full disk, no permission, a request to end, -h and --version.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <limits>

#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "standard/conversion.h"
#include "standard/epoch_sequence.h"
#include "standard/stop_request.h"

namespace {

using testsupport::OwnFolder;
using Lines = std::vector<std::string>;

std::string manyEpochs() {
    std::vector<std::uint32_t> times(20000);
    for (std::uint32_t i = 0; i < times.size(); ++i) {
        times[i] = 1000 * i;
    }
    return testsupport::logOfTimes(times);
}

// Starts the program in a process of its own, which `prepare` gets ready.
template <class Prepare>
pid_t start(const std::string& log, Prepare prepare) {
    const pid_t child = fork();
    if (child == 0) {
        prepare();
        std::string errors;
        const int status = testsupport::runWithArguments({"-q", log}, errors);
        std::ofstream(log + ".errors") << errors;
        _exit(status);
    }
    return child;
}

int waitStatusOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

TEST(StandardOutside, FullDiskIsAnErrorAndLeavesNothing) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", manyEpochs());
    const int status = waitStatusOf(start(folder.file("site.kvs"), [] {
        std::signal(SIGXFSZ, SIG_IGN);  // a limit on the size of a file stands for the disk
        const rlimit limit{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    }));
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 1);
    EXPECT_EQ(folder.names(), (Lines{"site.kvs", "site.kvs.errors"}));
    EXPECT_NE(testsupport::textOfFile(folder.path() / "site.kvs.errors").find("File too large"),
              std::string::npos);
}

TEST(StandardOutside, FolderWithoutPermissionIsAnError) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "the superuser may write anywhere";
    }
    const OwnFolder folder;
    const std::filesystem::path closed = folder.path() / "closed";
    std::filesystem::create_directory(closed);
    chmod(closed.c_str(), S_IRUSR | S_IXUSR);
    const auto run =
        testsupport::runStandard(testsupport::logOfTimes({0}), {"--output-dir", closed.string()});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_NE(run.errors.find("Permission denied"), std::string::npos);
}

TEST(StandardOutside, RequestToEndTakesTheHalfFileAway) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const OwnFolder folder;
        testsupport::writeBytes(folder.path() / "site.kvs", manyEpochs());
        // A pipe in the file's place: the program cannot come to its end before it is emptied.
        const std::string part = folder.file("XXXX00XXX_R_20240650000_06H_01S_MO.rnx.part");
        ASSERT_EQ(mkfifo(part.c_str(), S_IRUSR | S_IWUSR), 0);
        const pid_t child = start(folder.file("site.kvs"), [] {});
        std::ifstream pipe(part, std::ios::binary);
        pipe.get();
        kill(child, signal);
        pipe.ignore(std::numeric_limits<std::streamsize>::max());
        const int status = waitStatusOf(child);
        EXPECT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_EQ(folder.names(), Lines{"site.kvs"});
    }
}

TEST(StandardOutside, RequestToEndStopsTheFirstReadingToo) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", testsupport::logOfTimes({0}));
    const int status = waitStatusOf(start(folder.file("site.kvs"), [] {
        orbconv::standard::noteStopRequests();
        std::raise(SIGTERM);
    }));
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(folder.names(), Lines{"site.kvs"});
}

// It could be anything, and as long as a disk.
TEST(StandardOutside, RequestToEndStopsTheReadingOfWhatHasNoEpoch) {
    const OwnFolder folder;
    samplelog::LogBuilder log;
    testsupport::writeBytes(folder.path() / "site.kvs", log.rd(2024, 3, 5).time(0).rd(2024, 3, 5).take());
    const int status = waitStatusOf(start(folder.file("site.kvs"), [] {
        orbconv::standard::noteStopRequests();
        std::raise(SIGTERM);
    }));
    EXPECT_TRUE(WIFSIGNALED(status));
}

TEST(StandardOutside, RequestToEndStopsWhereNoEpochIsAskedFor) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", testsupport::logOfTimes({0, 1000}));
    const pid_t child = fork();
    if (child == 0) {
        orbconv::standard::ProgressBar progress(nullptr, 1.0);
        orbconv::standard::Options options;
        options.logNames = {folder.file("site.kvs")};
        const auto survey = orbconv::standard::surveyOf(options, progress);
        orbconv::standard::Selection nothing;
        nothing.end = orbconv::reading::LogTime{};
        orbconv::standard::EpochSequence epochs(survey, nothing);
        orbconv::standard::noteStopRequests();
        std::raise(SIGTERM);
        int status = 0;
        try {
            epochs.next();
        } catch (const orbconv::standard::Stopped&) {
            status = 1;
        }
        _exit(status);
    }
    EXPECT_EQ(WEXITSTATUS(waitStatusOf(child)), 1);
}

TEST(StandardOutside, HangUpThatIsIgnoredStaysIgnored) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", testsupport::logOfTimes({0}));
    const int status = waitStatusOf(start(folder.file("site.kvs"), [] {
        std::signal(SIGHUP, SIG_IGN);
        orbconv::standard::noteStopRequests();
        std::raise(SIGHUP);
    }));
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(StandardOutside, PipeHasNoSecondReading) {
    const OwnFolder folder;
    const std::string name = folder.file("pipe");
    ASSERT_EQ(mkfifo(name.c_str(), S_IRUSR | S_IWUSR), 0);
    const std::fstream bothEnds(name);  // so that opening it does not wait for a writer
    orbconv::standard::Survey survey;
    survey.logs.push_back({.name = name, .site = {}});
    survey.stretches.resize(1);
    const orbconv::standard::Selection selection;
    orbconv::standard::EpochSequence epochs(survey, selection);
    EXPECT_THROW(epochs.next(), std::runtime_error);
}

TEST(StandardOutside, HelpAndVersionEndWithZero) {
    const OwnFolder folder;
    const std::string out = folder.file("out");
    const auto outputOf = [&](const std::string& arguments) {
        const std::string command = "\"" ORBCONV_STANDARD_BINARY "\" " + arguments + " > \"" + out + "\"";
        EXPECT_EQ(std::system(command.c_str()), 0);  // NOLINT(cert-env33-c): of the test's own making
        return testsupport::textOfFile(out);
    };
    EXPECT_TRUE(outputOf("-h").starts_with("Usage: orbconv-standard "));
    EXPECT_EQ(outputOf("--help"), outputOf("-h"));
    EXPECT_EQ(outputOf("--version"), "orbconv-standard 0.0.10a\n");
}

}  // namespace
