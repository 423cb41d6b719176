// Files as only such a system has them, and the program itself.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "companions/support/inspected.h"
#include "inspect/inspect_run.h"

namespace orbconv::inspect {
namespace {

namespace fs = std::filesystem;

TEST(InspectFilesTest, AFileWhoseReadingFails) {
    const char* const memory = "/proc/self/mem";  // its first bytes are not there
    if (!fs::exists(memory)) {
        GTEST_SKIP() << "no " << memory;
    }
    EXPECT_EQ(inspectLog(memory, {}).error, "reading failed behind 0 bytes");
}

TEST(InspectFilesTest, APipe) {
    const std::string path = (fs::path(testing::TempDir()) / "inspect_pipe").string();
    fs::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const std::string bytes = testsupport::cleanLog(100).take();
    std::thread writer([&] { std::ofstream(path, std::ios::binary) << bytes; });
    std::ostringstream progress;
    const LogResult result = inspectLog(path, {.progress = &progress});
    writer.join();
    fs::remove(path);
    ASSERT_TRUE(result.summary) << result.error;
    EXPECT_EQ(result.summary->epochs, 100);
    EXPECT_EQ(result.summary->bytes, bytes.size());
}

// Damage, and other GLONASS satellites from epoch to epoch, would send the program back to the log's bytes.
TEST(InspectFilesTest, APipeOfADamagedLog_IsReadOnce) {
    const std::string path = (fs::path(testing::TempDir()) / "inspect_damaged_pipe").string();
    fs::remove(path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    auto log = testsupport::cleanLog(3);
    log.raw(std::string(40, 'x'));
    for (std::uint32_t i = 0; i < 3; ++i) {
        testsupport::putCleanEpoch(log, testsupport::cleanStart + 4000 + 1000 * i);
    }
    const std::string bytes = log.take();
    std::thread writer([&] { std::ofstream(path, std::ios::binary) << bytes; });
    const LogResult result = inspectLog(path, {});
    writer.join();
    fs::remove(path);
    ASSERT_TRUE(result.summary) << result.error;
    EXPECT_EQ(result.summary->epochs, 6);
    EXPECT_EQ(result.summary->damageBytes, 40);
    EXPECT_EQ(result.summary->notes,
              std::vector<std::string>{"this can be read only once: O26 and O32 are not told in full"});
}

TEST(InspectFilesTest, TheProgram_ItsStatusAndItsStreams) {
    const fs::path folder = testing::TempDir();
    const std::string log = (folder / "inspect_program.kvs").string();
    const std::string out = (folder / "inspect_program.out").string();
    std::ofstream(log, std::ios::binary) << testsupport::cleanLog().take() << std::string(20, '\0');
    const std::string command =
        std::string("\"") + ORBCONV_INSPECT_BINARY + "\" --json \"" + log + "\" >\"" + out + "\" 2>&1";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 2);
    std::ifstream file(out);
    EXPECT_EQ(file.get(), '{');
    fs::remove(log);
    fs::remove(out);
}

}  // namespace
}  // namespace orbconv::inspect
