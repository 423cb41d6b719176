// A stage that throws a text ends the run with that text and status 1.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>

#include "run/conversion_run.h"
#include "samplelog/log_builder.h"

namespace {

namespace fs = std::filesystem;

// Takes the place of standard output, and throws a text ahead of what is printed behind `lastText`: by
// way of a tied stream, whose failure, unlike that of a stream's own buffer, reaches the one who prints.
class FailingConsole : private std::streambuf {
public:
    explicit FailingConsole(std::string lastText)
        : lastText_(std::move(lastText)), before_(std::cout.rdbuf(text_.rdbuf())) {
        fuse_.exceptions(std::ios::badbit);
        std::cout.tie(&fuse_);
    }
    ~FailingConsole() override {
        std::cout.tie(nullptr);
        std::cout.rdbuf(before_);
        std::cout.clear();
    }
    FailingConsole(const FailingConsole&) = delete;
    FailingConsole& operator=(const FailingConsole&) = delete;

    [[nodiscard]] std::string text() const { return text_.str(); }

private:
    int sync() override {
        if (text().ends_with(lastText_)) {
            std::cout.tie(nullptr);
            throw static_cast<const char*>("out of paper");
        }
        return 0;
    }

    std::string lastText_;
    std::ostringstream text_;
    std::ostream fuse_{this};
    std::streambuf* before_;
};

TEST(TextException, OfTheWritingPassIsPrintedAndEndsTheRunWithStatus1) {
    const fs::path folder =
        fs::temp_directory_path() / ("orbconv-text-" + std::to_string(std::random_device{}()));
    fs::create_directories(folder);
    const std::string log = (folder / "site0010.log").string();
    std::ofstream(log, std::ios::binary) << samplelog::LogBuilder().time(1000).td().time(2000).bytes();
    const std::array<const char*, 3> arguments = {"orbconv", "-f", log.c_str()};

    int status = -1;
    std::string printed;
    {
        FailingConsole console("Preparing Observation data");
        status = orbconv::convert(static_cast<int>(arguments.size()), arguments.data());
        printed = console.text();
    }
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(printed.ends_with("\nPreparing Observation dataout of paper\n")) << printed;
    // The observation file was open by then; no navigation file was begun.
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);
    fs::remove_all(folder);
}

}  // namespace
