// File names as they are on Windows: with backslashes, blanks and letters of any script, in the argument, in
// the names of the outputs and on standard output. And the line ends of Windows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "samplelog/log_builder.h"
#include "windows/start_program.h"

namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::u8string>;

std::string twoEpochs() {
    samplelog::LogBuilder log;
    for (const std::uint32_t time : {3600000U, 3601000U}) {
        log.time(time).rd(2024, 3, 5).sx({{samplelog::SystemCode::gps, 5}}).rx({0});
        log.flags(samplelog::Band::c, {0x40}).td();
    }
    return log.bytes();
}

std::string bytes(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

std::string asArgument(const std::u8string& name) {
    return {name.begin(), name.end()};
}

// Conversions in a folder of their own, gone with the test.
class Paths : public testing::Test {
protected:
    Paths() {
        fs::create_directories(folder);
        fs::create_directories(streams);
    }
    ~Paths() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        fs::remove_all(streams, ignored);
    }
    Paths(const Paths&) = delete;
    Paths& operator=(const Paths&) = delete;

    int run(const std::u8string& name) {
        return testsupport::startProgram(testsupport::besideThisProgram("orbconv.exe"),
                                         {"-f", asArgument(name), "-rv", "4.01"}, folder, output, error);
    }

    // Puts a log under a name relative to the folder and converts it by that name.
    int convert(const std::u8string& name) {
        const fs::path log = folder / name;
        fs::create_directories(log.parent_path());
        std::ofstream(log, std::ios::binary) << twoEpochs();
        return run(name);
    }

    // The files in a folder, sorted; the year in the name of an output is YY.
    [[nodiscard]] Names names(const std::u8string& subfolder = {}) const {
        Names found;
        for (const auto& entry : fs::directory_iterator(folder / subfolder)) {
            if (entry.is_regular_file()) {
                std::u8string name = entry.path().filename().u8string();
                const std::size_t year = name.rfind(u8'.') + 1;
                if (name.size() == year + 3 && std::isdigit(name[year]) != 0) {
                    name.replace(year, 2, u8"YY");
                }
                found.push_back(name);
            }
        }
        std::ranges::sort(found);
        return found;
    }

    const std::string number =
        std::to_string(std::random_device{}()) + "-" + std::to_string(std::random_device{}());
    const fs::path folder = fs::temp_directory_path() / ("orbconv-paths-" + number);
    const fs::path streams = fs::temp_directory_path() / ("orbconv-streams-" + number);
    const fs::path output = streams / "out";
    const fs::path error = streams / "err";
};

}  // namespace

TEST_F(Paths, MayHoldBlanks) {
    EXPECT_EQ(convert(u8"my log 1.log"), 0);
    EXPECT_EQ(names(), (Names{u8"my log 1.YYo", u8"my log 1.YYp", u8"my log 1.log"}));
}

TEST_F(Paths, MayHoldLettersOfTheWesternCodePage) {
    EXPECT_EQ(convert(u8"Straße é.log"), 0);
    EXPECT_EQ(names(), (Names{u8"Straße é.YYo", u8"Straße é.YYp", u8"Straße é.log"}));
}

TEST_F(Paths, MayHoldLettersOfSeveralScripts) {
    // The last character takes two units of UTF-16.
    EXPECT_EQ(convert(u8"Ωж 日本 🛰.log"), 0);
    EXPECT_EQ(names(), (Names{u8"Ωж 日本 🛰.YYo", u8"Ωж 日本 🛰.YYp", u8"Ωж 日本 🛰.log"}));
}

TEST_F(Paths, OutputsStandInTheFolderOfTheLogWhicheverSlashNamesIt) {
    EXPECT_EQ(convert(u8"Maß daten\\2026\\a.log"), 0);
    EXPECT_EQ(names(u8"Maß daten/2026"), (Names{u8"a.YYo", u8"a.YYp", u8"a.log"}));
    EXPECT_EQ(convert(u8"mixed\\x/b.log"), 0);
    EXPECT_EQ(names(u8"mixed/x"), (Names{u8"b.YYo", u8"b.YYp", u8"b.log"}));
    EXPECT_EQ(convert(u8".\\plain\\..\\plain\\c.log"), 0);
    EXPECT_EQ(names(u8"plain"), (Names{u8"c.YYo", u8"c.YYp", u8"c.log"}));
    EXPECT_EQ(names(), Names{});
}

TEST_F(Paths, MayStartAtADrive) {
    const fs::path subfolder = folder / u8"Laufwerk é";
    fs::create_directories(subfolder);
    std::ofstream(subfolder / u8"日 1.log", std::ios::binary) << twoEpochs();
    const std::u8string whole = (subfolder / u8"日 1.log").u8string();
    ASSERT_EQ(whole.find(u8":\\"), 1U);
    EXPECT_EQ(run(whole), 0);
    EXPECT_EQ(names(u8"Laufwerk é"), (Names{u8"日 1.YYo", u8"日 1.YYp", u8"日 1.log"}));
}

TEST_F(Paths, ArePrintedAsGiven) {
    EXPECT_EQ(convert(u8"sub\\é 日.log"), 0);
    EXPECT_TRUE(bytes(output).starts_with("Rinex Version: 4.01\r\nKVS File: sub\\é 日.log\r\n"))
        << bytes(output);
}

TEST_F(Paths, MissingFileOfAnyNameIsReportedWithTheHelpTextAndTheReason) {
    EXPECT_EQ(run(u8"nowhere\\日 1.log"), 1);
    EXPECT_NE(bytes(output).find("\r\nORBCONV -h of --help for help\r\n"), std::string::npos)
        << bytes(output);
    EXPECT_EQ(bytes(error), "File Error: : No such file or directory\r\n");
}

TEST_F(Paths, FolderInPlaceOfALogIsReportedWithTheReason) {
    fs::create_directories(folder / "some.log");
    EXPECT_EQ(run(u8"some.log"), 1);
    EXPECT_EQ(bytes(error), "File Error: : Permission denied\r\n");
}

TEST_F(Paths, EveryLineOfEveryTextEndsWithCarriageReturnAndLineFeed) {
    EXPECT_EQ(convert(u8"a.log"), 0);
    std::vector<fs::path> texts = {output};
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename() != "a.log") {
            texts.push_back(entry.path());
        }
    }
    EXPECT_EQ(texts.size(), 3U);
    for (const fs::path& path : texts) {
        const std::string text = bytes(path);
        EXPECT_TRUE(text.ends_with("\r\n")) << path;
        for (std::size_t i = 1; i < text.size(); ++i) {
            ASSERT_EQ(text[i - 1] == '\r', text[i] == '\n') << path << ", byte " << i;
        }
    }
}
