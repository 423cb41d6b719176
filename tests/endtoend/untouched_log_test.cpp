// The program reads its log and changes nothing of it.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include "support/conversion.h"
#include "support/random_log.h"

namespace {

namespace fs = std::filesystem;

std::string contentsOf(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

class UntouchedLog : public testing::TestWithParam<std::string> {
protected:
    UntouchedLog() { fs::create_directories(folder); }
    ~UntouchedLog() override {
        std::error_code ignored;
        fs::permissions(log, fs::perms::owner_all, ignored);
        fs::remove_all(folder, ignored);
    }
    const fs::path folder =
        fs::temp_directory_path() / ("orbconv-untouched-" + std::to_string(std::random_device{}()));
    const fs::path log = folder / "site0010.log";
};

TEST_P(UntouchedLog, KeepsItsBytesItsTimeAndItsRights) {
    const testsupport::RandomLog content({.seed = 61});
    std::ofstream(log, std::ios::binary) << content.bytes();
    const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
    fs::last_write_time(log, yesterday);
    fs::permissions(log, fs::perms::owner_read);
    const auto time = fs::last_write_time(log);
    const auto rights = fs::status(log).permissions();

    EXPECT_EQ(testsupport::exitStatusOfRun({"-f", log.string(), "-rv", GetParam()}, folder,
                                           folder / "progress.txt", folder / "errors.txt"),
              0);
    EXPECT_EQ(fs::last_write_time(log), time);
    EXPECT_EQ(fs::status(log).permissions(), rights);
    EXPECT_EQ(contentsOf(log), content.bytes());
}

INSTANTIATE_TEST_SUITE_P(Versions, UntouchedLog, testing::Values("3.05", "4.00", "4.01"));

}  // namespace
