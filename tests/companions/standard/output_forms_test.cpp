// The forms that the files can have: compressed, on standard output, under short names.
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <random>
#include <sstream>

#include "companions/standard/support/hourly_logs.h"
#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "standard/file_names.h"
#include "standard/gzip_buffer.h"
#include "standard/output_stream.h"

namespace {
namespace outputFormsTest {

using orbconv::standard::FileKind;
using orbconv::standard::FileNameFacts;
using orbconv::standard::shortNameOf;
using orbconv::standard::Split;
using testsupport::hourlyLog;
using testsupport::linesOf;
using testsupport::logOfTimes;
using testsupport::OwnFolder;
using testsupport::runStandard;
using testsupport::runWithArguments;
using testsupport::StandardRun;
using Lines = std::vector<std::string>;

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

// What a compressed file holds; empty for one that ends early or is none.
std::string unpacked(const std::filesystem::path& path) {
    gzFile const file = gzopen(path.string().c_str(), "rb");
    std::string text;
    std::array<char, 4096> piece{};
    int bytes = 0;
    while ((bytes = gzread(file, piece.data(), piece.size())) > 0) {
        text.append(piece.data(), static_cast<std::size_t>(bytes));
    }
    return gzclose(file) == Z_OK && bytes == 0 ? text : "";
}

Lines withoutRunTime(const std::string& text) {
    Lines lines = linesOf(text);
    std::erase_if(lines, [](const std::string& line) { return line.ends_with("PGM / RUN BY / DATE"); });
    return lines;
}

// ---- compressed ----

TEST(Gzip, FilesAreThoseThatAreNotCompressed) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", hourlyLog(2));
    std::string errors;
    ASSERT_EQ(runWithArguments({"-q", "--gzip", folder.file("site.kvs")}, errors), 0) << errors;
    const Lines names = {"HOUR00XXX_R_20250050200_01H_30S_MO.rnx.gz", "HOUR00XXX_R_20250050200_01H_MN.rnx.gz",
                         "site.kvs"};
    EXPECT_EQ(folder.names(), names);
    const StandardRun plain = runStandard(hourlyLog(2));
    EXPECT_EQ(withoutRunTime(unpacked(folder.path() / names[0])), withoutRunTime(plain.text()));
    EXPECT_EQ(withoutRunTime(unpacked(folder.path() / names[1])), withoutRunTime(plain.navigationText()));
    EXPECT_FALSE(contains(unpacked(folder.path() / names[0]), "\r"));
}

TEST(Gzip, ExistingOneIsRefused) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", hourlyLog(2));
    std::string errors;
    EXPECT_EQ(runWithArguments({"-q", "--gzip", folder.file("site.kvs")}, errors), 0);
    EXPECT_EQ(runWithArguments({"-q", "--gzip", folder.file("site.kvs")}, errors), 1);
    EXPECT_TRUE(contains(errors, ".rnx.gz exists; --force overwrites it"));
    EXPECT_EQ(runWithArguments({"-q", "--gzip", "--force", folder.file("site.kvs")}, errors), 0);
}

TEST(Gzip, HeadHasNeitherNameNorTime) {
    std::ostringstream packed;
    {
        orbconv::standard::GzipBuffer buffer(packed);
        std::ostream text(&buffer);
        text << "abc";
        text.put('d');
        buffer.finish();
    }
    const std::string bytes = packed.str();
    // Two bytes that name the format, deflate, no flags, no time, no mark of the level, no system.
    EXPECT_EQ(bytes.substr(0, 10), std::string("\x1F\x8B\x08\0\0\0\0\0\0\xFF", 10));
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "a.gz", bytes);
    EXPECT_EQ(unpacked(folder.path() / "a.gz"), "abcd");
}

TEST(Gzip, WhatCannotBeMadeSmallerGoesOutInPieces) {
    std::mt19937 random(1952);
    std::string text(500'000, ' ');
    std::ranges::generate(text, [&] { return static_cast<char>(random()); });
    std::ostringstream packed;
    orbconv::standard::GzipBuffer buffer(packed);
    EXPECT_EQ(buffer.sputn(text.data(), static_cast<std::streamsize>(text.size())), 500'000);
    buffer.finish();
    EXPECT_GT(packed.str().size(), text.size());
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "a.gz", packed.str());
    EXPECT_EQ(unpacked(folder.path() / "a.gz"), text);
}

TEST(Gzip, StreamThatFailsIsTold) {
    std::ostringstream sink;
    orbconv::standard::OutputStream out(sink, "a name", true);
    out.writer().text("text");
    sink.setstate(std::ios::badbit);
    try {
        out.finish();
        FAIL() << "nothing was told";
    } catch (const std::runtime_error& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("a name: "));
    }
    orbconv::standard::GzipBuffer buffer(sink);
    EXPECT_EQ(buffer.sputn("abc", 3), 0);
    EXPECT_EQ(buffer.sputc('a'), std::char_traits<char>::eof());
}

// ---- standard output ----

TEST(StandardOutput, TakesTheOneFileAndNoneIsWritten) {
    const StandardRun files = runStandard(hourlyLog(2));
    const StandardRun observations = runStandard(hourlyLog(2), {"--stdout", "obs"});
    EXPECT_EQ(observations.exitStatus, 0);
    EXPECT_TRUE(observations.files.empty());
    EXPECT_EQ(withoutRunTime(observations.output), withoutRunTime(files.text()));
    EXPECT_TRUE(observations.errors.starts_with("  epochs: 120, "));
    EXPECT_FALSE(contains(observations.errors, "LNAV"));
    const StandardRun navigation = runStandard(hourlyLog(2), {"--stdout=nav"});
    EXPECT_TRUE(navigation.files.empty());
    EXPECT_EQ(withoutRunTime(navigation.output), withoutRunTime(files.navigationText()));
    EXPECT_TRUE(navigation.errors.starts_with("  G: records LNAV 1\n"));
    EXPECT_EQ(files.output, "");
    EXPECT_EQ(runStandard(hourlyLog(2), {"-q", "--stdout", "obs"}).errors, "");
}

TEST(StandardOutput, CanBeCompressed) {
    const OwnFolder folder;
    testsupport::writeBytes(folder.path() / "a.gz",
                            runStandard(hourlyLog(2), {"--gzip", "--stdout", "obs"}).output);
    EXPECT_EQ(withoutRunTime(unpacked(folder.path() / "a.gz")),
              withoutRunTime(runStandard(hourlyLog(2)).text()));
}

TEST(StandardOutput, WithoutARecordThereIsNoNavigationFile) {
    const StandardRun run = runStandard(logOfTimes({0}), {"--stdout", "nav"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(
        contains(run.errors, "orbconv-standard: --stdout: there is no record for a navigation file\n"));
}

TEST(StandardOutput, TakesNoSeveralFiles) {
    const StandardRun run = runStandard(logOfTimes({0}), {"--stdout", "obs", "--split", "1h"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_TRUE(contains(run.errors, "--stdout: one file alone can go there, and --split makes several\n"));
}

// ---- short names ----

TEST(ShortNames, TellStationDayAndYear) {
    const auto at = [](const char* time) { return orbconv::reading::timeOfIsoText(time).value(); };
    FileNameFacts facts{.station = "AZGO00CAN",
                        .first = at("2009-02-03T05:00"),
                        .last = at("2009-02-03T06:00"),
                        .intervalMs = 30000,
                        .split = {}};
    EXPECT_EQ(shortNameOf(facts, FileKind::observations), "azgo0340.09o");
    EXPECT_EQ(shortNameOf(facts, FileKind::navigation), "azgo0340.09p");
    facts.last = at("2009-02-03T05:59:59.999");
    EXPECT_EQ(shortNameOf(facts, FileKind::observations), "azgo034f.09o");
    facts.split = Split::hour;
    EXPECT_EQ(shortNameOf(facts, FileKind::observations), "azgo034f.09o");
    facts.split = Split::day;
    EXPECT_EQ(shortNameOf(facts, FileKind::observations), "azgo0340.09o");
    facts = {.station = "1X__00CAN",
             .first = at("1999-12-31T23:30"),
             .last = at("1999-12-31T23:45"),
             .intervalMs = {},
             .split = {}};
    EXPECT_EQ(shortNameOf(facts, FileKind::navigation), "1x__365x.99p");
}

TEST(ShortNames, AreGivenWhereTheyAreAskedFor) {
    const StandardRun run = runStandard(hourlyLog(2) + hourlyLog(3), {"--long-names", "no"});
    EXPECT_TRUE(run.files.contains("hour0050.25o"));
    EXPECT_TRUE(run.files.contains("hour0050.25p"));
    const StandardRun hours =
        runStandard(hourlyLog(2) + hourlyLog(3), {"--long-names=no", "--split=1h", "--station", "ESBC00DNK"});
    EXPECT_EQ(hours.files.size(), 4U);
    for (const char* const name : {"esbc005c.25o", "esbc005c.25p", "esbc005d.25o", "esbc005d.25p"}) {
        EXPECT_TRUE(hours.files.contains(name)) << name;
    }
    EXPECT_TRUE(runStandard(hourlyLog(2), {"--long-names", "yes"})
                    .files.contains("HOUR00XXX_R_20250050200_01H_30S_MO.rnx"));
}

}  // namespace outputFormsTest
}  // namespace
