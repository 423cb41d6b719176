// The program: arguments, statuses, bad input.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "companions/support/inspected.h"
#include "inspect/inspect_run.h"

namespace orbconv::inspect {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testsupport::cleanLog;

struct Ran {
    int status = -1;
    std::string out;
    std::string errors;
};

class InspectRunTest : public testing::Test {
protected:
    void SetUp() override {
        const auto* const info = testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::path(testing::TempDir()) / ("inspect_" + std::string(info->name()));
        fs::remove_all(folder);
        fs::create_directory(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder / name).string(); }
    std::string put(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return path(name);
    }
    static Ran run(std::vector<std::string> arguments, bool terminal = false) {
        std::vector<const char*> pointers = {"orbconv-inspect"};
        for (const std::string& argument : arguments) {
            pointers.push_back(argument.c_str());
        }
        std::ostringstream out;
        std::ostringstream errors;
        const int status = inspect(static_cast<int>(pointers.size()), pointers.data(), out, errors, terminal);
        return {status, out.str(), errors.str()};
    }

    fs::path folder;
};

std::string damagedLog() {
    auto log = cleanLog();
    log.raw(std::string(40, '\0'));
    testsupport::putCleanEpoch(log, testsupport::cleanStart + 4000);
    return log.take();
}

TEST_F(InspectRunTest, UndamagedLog_Status0) {
    const Ran ran = run({put("a.kvs", cleanLog().take())});
    EXPECT_EQ(ran.status, 0);
    EXPECT_THAT(ran.out, StartsWith(path("a.kvs") + "\nSize "));
    EXPECT_THAT(ran.errors, IsEmpty());
}

TEST_F(InspectRunTest, DamagedLog_Status2) {
    const Ran ran = run({put("a.kvs", damagedLog())});
    EXPECT_EQ(ran.status, 2);
    EXPECT_THAT(ran.out, HasSubstr("Damage      1 place, 40 bytes"));
}

TEST_F(InspectRunTest, MissingLog_Status1_AndTheOthersAreDone) {
    const Ran ran = run({path("none.kvs"), put("a.kvs", damagedLog()), put("b.kvs", cleanLog().take())});
    EXPECT_EQ(ran.status, 1);
    EXPECT_EQ(ran.errors, "orbconv-inspect: " + path("none.kvs") + ": No such file or directory\n");
    EXPECT_THAT(ran.out, HasSubstr("a.kvs\n"));
    EXPECT_THAT(ran.out, HasSubstr("\n\n" + path("b.kvs") + "\n"));
    EXPECT_EQ(run({put("a.kvs", damagedLog()), path("none.kvs")}).status, 1);
}

TEST_F(InspectRunTest, DirectoryAndEmptyFile_Status1) {
    const Ran directory = run({folder.string()});
    EXPECT_EQ(directory.status, 1);
    EXPECT_EQ(directory.errors, "orbconv-inspect: " + folder.string() + ": is a directory\n");
    const Ran empty = run({put("e.kvs", "")});
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.errors, "orbconv-inspect: " + path("e.kvs") + ": the file is empty\n");
}

TEST_F(InspectRunTest, NoLogAtAll_IsOneDamage) {
    const Ran ran = run({"--json", put("noise.bin", std::string(1000, '\7'))});
    EXPECT_EQ(ran.status, 2);
    const auto log = nlohmann::json::parse(ran.out)["logs"][0];
    EXPECT_EQ(log["messages"], 0);
    EXPECT_EQ(log["damage"], nlohmann::json::parse(R"([{"offset": 0, "bytes": 1000}])"));
}

TEST_F(InspectRunTest, Json_OfAllLogsThatCanBeRead) {
    const Ran ran =
        run({"--json", put("a.kvs", cleanLog().take()), path("none"), put("b.kvs", damagedLog())});
    EXPECT_EQ(ran.status, 1);
    const auto logs = nlohmann::json::parse(ran.out)["logs"];
    ASSERT_EQ(logs.size(), 2);
    EXPECT_EQ(logs[0]["file"], path("a.kvs"));
    EXPECT_EQ(logs[1]["epochs"], 5);
}

TEST_F(InspectRunTest, Quiet_PrintsNothingButJson) {
    const std::string log = put("a.kvs", damagedLog());
    EXPECT_THAT(run({"-q", log}).out, IsEmpty());
    EXPECT_EQ(run({"--quiet", log}).status, 2);
    EXPECT_THAT(run({"-q", "--json", log}).out, StartsWith("{"));
}

TEST_F(InspectRunTest, Html_IsWritten) {
    const std::string log = put("a.kvs", cleanLog().take());
    EXPECT_EQ(run({"-q", "--html=" + path("a.html"), log}).status, 0);
    EXPECT_GT(fs::file_size(path("a.html")), 50);
    EXPECT_EQ(run({"-q", "--html", path("b.html"), log}).status, 0);
    EXPECT_TRUE(fs::exists(path("b.html")));
}

TEST_F(InspectRunTest, Html_ThatCannotBeWritten_Status1) {
    const Ran ran = run({"-q", "--html=" + path("no/folder.html"), put("a.kvs", cleanLog().take())});
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.errors, HasSubstr("folder.html: the page can't be written: "));
}

TEST_F(InspectRunTest, Html_OverwritesPagesAlone) {
    const std::string log = put("a.kvs", cleanLog().take());
    const std::string other = put("b.kvs", cleanLog().take());
    const auto size = fs::file_size(log);
    const Ran same = run({"--html=" + log, log});
    EXPECT_EQ(same.status, 1);
    EXPECT_THAT(same.out, IsEmpty());
    EXPECT_EQ(same.errors,
              "orbconv-inspect: " + log + ": is one of the logs; the page needs a file of its own\n");
    EXPECT_EQ(run({"--html", log, other}).errors,
              "orbconv-inspect: " + log + ": is there already and is no page; it is left as it is\n");
    EXPECT_EQ(fs::file_size(log), size);

    put("page.html", "");
    EXPECT_EQ(run({"-q", "--html=" + path("page.html"), log}).status, 0);
    const auto pageOfOne = fs::file_size(path("page.html"));
    EXPECT_EQ(run({"-q", "--html=" + path("page.html"), log, other}).status, 0);
    EXPECT_GT(fs::file_size(path("page.html")), pageOfOne);
}

TEST_F(InspectRunTest, Html_WithoutTheNameOfAFile_Status1) {
    for (const char* const option : {"--html=", "--html=-"}) {
        const Ran ran = run({option, put("a.kvs", cleanLog().take())});
        EXPECT_EQ(ran.status, 1);
        EXPECT_THAT(ran.errors, HasSubstr("--html: a page needs the name of a file\n"));
        EXPECT_THAT(ran.out, IsEmpty());
    }
}

TEST_F(InspectRunTest, StandardOutputThatCannotBeWritten_Status1) {
    const std::string log = put("a.kvs", cleanLog().take());
    const std::array<const char*, 2> arguments = {"orbconv-inspect", log.c_str()};
    std::ostringstream out;
    std::ostringstream errors;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(inspect(2, arguments.data(), out, errors, false), 1);
    EXPECT_EQ(errors.str(), "orbconv-inspect: standard output can't be written\n");
}

TEST_F(InspectRunTest, HelpAndVersion) {
    for (const char* const option : {"-h", "--help"}) {
        const Ran ran = run({option});
        EXPECT_EQ(ran.status, 0);
        EXPECT_THAT(ran.out, HasSubstr("--html"));
        EXPECT_THAT(ran.out, HasSubstr("Exit status"));
    }
    const Ran version = run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, "orbconv-inspect 0.0.10a\n");
}

TEST_F(InspectRunTest, BadCommandLine_Status1) {
    const Ran none = run({});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.errors, "orbconv-inspect: no log is named\nTry orbconv-inspect --help.\n");
    EXPECT_EQ(run({"--nonsense"}).status, 1);
    EXPECT_EQ(run({"--html"}).status, 1);
}

TEST_F(InspectRunTest, Terminal_ShortLogsHaveNoBar) {
    EXPECT_THAT(run({"-q", put("a.kvs", cleanLog().take())}, true).errors, IsEmpty());
}

TEST_F(InspectRunTest, LongLog_TellsItsProgress) {
    std::string bytes;
    while (bytes.size() < (std::size_t{9} << 20)) {
        bytes += cleanLog(1000).take();
    }
    EXPECT_EQ(run({"-q", put("long.kvs", bytes)}, true).status, 0);
}

TEST_F(InspectRunTest, AFileThatGrows_HasASentence) {
    std::string bytes;
    while (bytes.size() < (std::size_t{9} << 20)) {
        bytes += cleanLog(1000).take();
    }
    const std::string log = put("grows.kvs", bytes);
    const std::string epoch = cleanLog(1).take();
    std::atomic<bool> done = false;
    std::thread writer([&] {
        std::ofstream file(log, std::ios::binary | std::ios::app);
        for (int i = 0; i < 5000 && !done; ++i) {
            file << epoch << std::flush;
            std::this_thread::sleep_for(std::chrono::microseconds{200});
        }
    });
    Ran ran;
    for (int i = 0; i < 20 && ran.errors.empty(); ++i) {
        ran = run({"-q", log});
    }
    done = true;
    writer.join();
    EXPECT_THAT(ran.errors, HasSubstr(": the file grew while it was read: "));
    EXPECT_NE(ran.status, 1);
}

TEST_F(InspectRunTest, DamageTakesTheConverterOutOfStep_InAFile) {
    auto log = cleanLog();
    log.raw("zz300");
    for (std::uint32_t i = 0; i < 20; ++i) {
        testsupport::putCleanEpoch(log, testsupport::cleanStart + 4000 + i * 1000);
    }
    const Ran ran = run({"--json", put("a.kvs", log.bytes())});
    const LogSummary inMemory = testsupport::inspected(log);
    const auto summary = nlohmann::json::parse(ran.out)["logs"][0];
    ASSERT_GT(testsupport::countOf(inMemory, "O32"), 0);
    for (const auto& finding : summary["findings"]) {
        if (finding["code"] == "O32") {
            EXPECT_EQ(finding["count"], testsupport::countOf(inMemory, "O32"));
        }
    }
}

TEST(JudgedTest, WhatTheSizesSay) {
    LogSummary summary;
    summary.bytes = 100;
    EXPECT_EQ(judged(summary, {100, 100}, true).error, "reading failed behind 100 bytes");
    EXPECT_EQ(judged(LogSummary{}, {0, 0}, false).error, "the file is empty");
    EXPECT_EQ(judged(summary, {200, 100}, false).error, "the file was cut to 100 bytes while it was read");
    EXPECT_THAT(judged(summary, {100, 100}, false).summary->notes, IsEmpty());
    EXPECT_THAT(judged(summary, {{}, {}}, false).summary->notes, IsEmpty());  // a pipe
    EXPECT_THAT(judged(summary, {100, {}}, false).summary->notes,
                testing::ElementsAre("the file was removed while it was read; all of it was read"));
    EXPECT_THAT(
        judged(summary, {90, 120}, false).summary->notes,
        testing::ElementsAre("the file grew while it was read: its first 100 bytes are told, and its last "
                             "message may be cut"));
}

}  // namespace
}  // namespace orbconv::inspect
