// Logs that are cut off, overfull, damaged or of announced lengths that their bodies do not have: the
// converter ends, and gives what the part of the log that it could read gives.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "support/log_passes.h"
#include "support/obs_logs.h"

namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::Satellite;
using samplelog::SystemCode;
using testing::ElementsAre;
using testsupport::blanks;
using Lines = std::vector<std::string>;

constexpr std::uint16_t on = 0x40;

// The observation file of a log, less the run's date; neither pass may fail.
Lines observationFile(std::string_view log) {
    testsupport::Passes passes;
    std::string file;
    EXPECT_NO_THROW(file = passes.convert(log));
    return testsupport::withoutRunDate(testsupport::splitLines(file));
}

// The epoch lines and the satellite lines.
Lines bodyOf(std::string_view log) {
    Lines lines = observationFile(log);
    const auto end =
        std::ranges::find_if(lines, [](const std::string& line) { return line.ends_with("END OF HEADER"); });
    return {end == lines.end() ? end : end + 1, lines.end()};
}

void addEpoch(LogBuilder& log, std::uint32_t second) {
    log.time(3600000 + 1000 * second).rd(2024, 3, 5);
    testsupport::addEpoch(
        log, {.satellites = {{SystemCode::gps, 7}, {SystemCode::glonass, -4}, {SystemCode::galileo, 11}},
              .slots = {5},
              .ranges = {0, 500000000, 250000000},
              .referenceDopplers = {-10000, 20000, -30000},
              .bands = {{Band::c, {}, {1, 2, 3}, {4, 5, 6}, {100, 110, 120}, {on, on, on}},
                        {Band::b2, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 20, 30}, {on, on, on}}}});
}

// ---- cut off ----

// A log of three epochs and a last time, with all identity messages, and the places that matter to how many
// epochs a log that ends early has: the first epoch comes at the second time, the others at their ends.
struct CutLog {
    std::string bytes;
    std::vector<std::size_t> epochIds;  // an epoch is written once its place and two bytes are in the log

    CutLog() {
        LogBuilder log;
        testsupport::addIdentity(log);
        addEpoch(log, 0);
        epochIds.push_back(log.size());
        for (const std::uint32_t second : {1U, 2U}) {
            addEpoch(log, second);
            constexpr std::size_t endOfEpoch = 2 + 3 + 4 + 2;  // id, length, body and line end of TD
            epochIds.push_back(log.size() - endOfEpoch);
        }
        bytes = log.bytes();
        for (std::size_t i = 0; i < epochIds.size(); ++i) {
            EXPECT_EQ(bytes.substr(epochIds[i], 2), i == 0 ? "~~" : "TD");
        }
    }
    [[nodiscard]] std::size_t epochsIn(std::size_t length) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(epochIds, [length](std::size_t id) { return id + 2 <= length; }));
    }
};

std::size_t epochLines(const Lines& lines) {
    return static_cast<std::size_t>(
        std::ranges::count_if(lines, [](const std::string& line) { return line.starts_with("> "); }));
}

// Every length of the log, in eighths so that they can run side by side.
class CutOffLog : public testing::TestWithParam<std::size_t> {};

TEST_P(CutOffLog, EndsWellAndHasTheEpochsWhoseIdsItHolds) {
    const CutLog log;
    for (std::size_t length = GetParam(); length <= log.bytes.size(); length += 8) {
        const auto run = testsupport::convert(log.bytes.substr(0, length));
        ASSERT_EQ(run.exitStatus, 0) << length;
        const Lines lines = run.lines('o');
        ASSERT_EQ(epochLines(lines), log.epochsIn(length)) << length;
        ASSERT_EQ(run.labelled('o', "END OF HEADER").size(), log.epochsIn(length) > 0 ? 1U : 0U) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Eighths, CutOffLog, testing::Range(std::size_t{0}, std::size_t{8}));

TEST(CutOffLog, EpochsAheadOfTheCutAreThoseOfTheWholeLog) {
    const CutLog log;
    const Lines whole = bodyOf(log.bytes);
    ASSERT_EQ(whole.size(), 12U);
    for (std::size_t length = 0; length <= log.bytes.size(); ++length) {
        const Lines body = bodyOf(log.bytes.substr(0, length));
        const std::size_t complete = log.epochsIn(length) * 4;
        ASSERT_EQ(body.size(), complete) << length;
        // The first epoch is due with the header, later ones with their own end.
        ASSERT_TRUE(std::ranges::equal(body, Lines(whole.begin(), whole.begin() + std::ptrdiff_t(complete))))
            << length;
    }
}

TEST(CutOffLog, LosingItsStartItStillEnds) {
    const CutLog log;
    for (std::size_t first = 0; first < log.bytes.size(); ++first) {
        const std::string rest = log.bytes.substr(first);
        ASSERT_EQ(observationFile(rest), observationFile(rest)) << first;
    }
}

// ---- overfull ----

struct Crowd {
    std::uint8_t systemCode;
    std::string epochCount;  // of 180 satellites, in its three columns
    std::size_t lines;
    std::string total;
};

std::ostream& operator<<(std::ostream& out, const Crowd& crowd) {
    return out << "system " << static_cast<int>(crowd.systemCode);
}

class CrowdedLog : public testing::TestWithParam<Crowd> {};

std::vector<Satellite> satellites(std::uint8_t systemCode, int count) {
    std::vector<Satellite> list;
    for (int number = 1; number <= count; ++number) {
        list.push_back({systemCode, number});
    }
    return list;
}

LogBuilder crowdedLog(const std::vector<Satellite>& list) {
    LogBuilder log;
    for (const std::uint32_t second : {0U, 1U}) {
        log.time(3600000 + 1000 * second).rd(2024, 3, 5);
        testsupport::addEpoch(log, {.satellites = list,
                                    .ranges = std::vector<std::int32_t>(list.size(), 0),
                                    .bands = {{.band = Band::c,
                                               .phases = std::vector<std::int32_t>(list.size(), 0),
                                               .flags = std::vector<std::uint16_t>(list.size(), on)}}});
    }
    return log;
}

TEST_P(CrowdedLog, KeepsTheSatellitesThatItsTablesHold) {
    const LogBuilder log = crowdedLog(satellites(GetParam().systemCode, 180));
    const auto run = testsupport::convert(log.bytes());
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_THAT(run.labelled('o', "# OF SATELLITES"),
                ElementsAre(testsupport::headerLine("    " + GetParam().total, "# OF SATELLITES")));
    const Lines body = run.body('o');
    ASSERT_EQ(body.size(), 2 * (1 + GetParam().lines));
    EXPECT_EQ(body[0], "> 2024 03 05 01 00  0.0000000  0" + GetParam().epochCount + "       0.000000000000");
    EXPECT_EQ(body[1 + GetParam().lines],
              "> 2024 03 05 01 00  1.0000000  0" + GetParam().epochCount + "       0.000000000000");
}

// GPS has 32 records, BeiDou 61, NavIC 30, Galileo 37 but a survey that looks at 32 entries; 30 of each are
// written. Systems that are switched off aren't counted, code 8 never, codes of no system always.
INSTANTIATE_TEST_SUITE_P(
    Systems, CrowdedLog,
    testing::Values(Crowd{SystemCode::gps, "180", 30, "32"}, Crowd{SystemCode::galileo, "180", 30, "32"},
                    Crowd{SystemCode::beidou, "180", 30, "61"}, Crowd{SystemCode::navic, "180", 30, "30"},
                    Crowd{SystemCode::sbas, "  0", 0, " 0"}, Crowd{SystemCode::qzss, "  0", 0, " 0"},
                    Crowd{SystemCode::glonassCdma, "  0", 0, " 0"}, Crowd{8, "  0", 0, " 0"},
                    Crowd{0, "180", 0, " 0"}, Crowd{10, "180", 0, " 0"}, Crowd{255, "180", 0, " 0"}));

TEST(CrowdedLog, GlonassBeyondItsRecordsAndSlotsEnds) {
    const auto run = testsupport::convert(crowdedLog(satellites(SystemCode::glonass, 180)).bytes());
    EXPECT_EQ(run.exitStatus, 0);
    const Lines body = run.body('o');
    ASSERT_EQ(body.size(), 62U);
    EXPECT_TRUE(body[1].starts_with("R01"));
    EXPECT_TRUE(body[30].starts_with("R30"));
}

TEST(CrowdedLog, AllSystemsAtOnceKeepThirtyLinesEach) {
    std::vector<Satellite> list;
    for (const std::uint8_t code :
         {SystemCode::gps, SystemCode::glonass, SystemCode::galileo, SystemCode::beidou, SystemCode::navic}) {
        const auto more = satellites(code, 36);
        list.insert(list.end(), more.begin(), more.end());
    }
    const Lines body = bodyOf(crowdedLog(list).bytes());
    ASSERT_EQ(body.size(), 302U);
    for (std::size_t system = 0; system < 5; ++system) {
        EXPECT_EQ(body[1 + 30 * system].substr(0, 3), std::string(1, "GRECI"[system]) + "01");
        EXPECT_EQ(body[30 + 30 * system].substr(0, 3), std::string(1, "GRECI"[system]) + "30");
    }
}

TEST(CrowdedLog, AListOfTheLongestLengthCountsAs180) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    std::string pairs;
    for (int i = 0; i < 2047; ++i) {
        pairs.append({1, static_cast<char>(1 + i % 32)});
    }
    log.messageWithLength("SX", 0xFFF, pairs).flags(Band::c, std::vector<std::uint16_t>(180, on)).td();
    log.time(3601000);
    const Lines body = bodyOf(log.bytes());
    ASSERT_EQ(body.size(), 31U);
    EXPECT_EQ(body[0], "> 2024 03 05 01 00  0.0000000  0180       0.000000000000");
}

// ---- announced lengths ----

struct ArrayMessage {
    std::string id;
    unsigned elementBytes;
};

std::ostream& operator<<(std::ostream& out, const ArrayMessage& message) {
    return out << message.id;
}

// An epoch of three GPS and three GLONASS satellites whose six flag words are `on` and whose message `id`
// has the length and as many bytes of body as `body` has, each 0x40.
std::string logWithMessage(const std::string& id, unsigned length, std::size_t body) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    log.sx({{1, 1}, {1, 2}, {1, 3}, {2, 1}, {2, 2}, {2, 3}});
    for (const Band band : {Band::c, Band::b1, Band::b2, Band::b3, Band::b5, Band::l}) {
        log.flags(band, {on, on, on, on, on, on});
    }
    log.messageWithLength(id, length, std::string(body, '\x40')).td();
    log.time(3601000).rd(2024, 3, 5).td().time(3602000);
    return log.bytes();
}

class AnnouncedLength : public testing::TestWithParam<ArrayMessage> {};

TEST_P(AnnouncedLength, ElementsBeyondTheListChangeNothing) {
    const ArrayMessage& message = GetParam();
    const auto withElements = [&](unsigned count) {
        const unsigned bytes = count * message.elementBytes;
        return observationFile(logWithMessage(message.id, bytes + 1, bytes));
    };
    const Lines six = withElements(6);
    ASSERT_EQ(std::ranges::count_if(six, [](const std::string& l) { return l.starts_with("> "); }), 2);
    EXPECT_NE(six, withElements(0));
    EXPECT_NE(six, withElements(1));
    for (unsigned count = 7; count * message.elementBytes < 0xFFF; ++count) {
        ASSERT_EQ(withElements(count), six) << count;
    }
}

INSTANTIATE_TEST_SUITE_P(Arrays, AnnouncedLength,
                         testing::Values(ArrayMessage{"rc", 4}, ArrayMessage{"rx", 4}, ArrayMessage{"1r", 2},
                                         ArrayMessage{"2r", 2}, ArrayMessage{"3r", 2}, ArrayMessage{"5r", 2},
                                         ArrayMessage{"lr", 2}, ArrayMessage{"cp", 4}, ArrayMessage{"1p", 4},
                                         ArrayMessage{"2p", 4}, ArrayMessage{"3p", 4}, ArrayMessage{"5p", 4},
                                         ArrayMessage{"lp", 4}, ArrayMessage{"DC", 4}, ArrayMessage{"0d", 2},
                                         ArrayMessage{"1d", 2}, ArrayMessage{"2d", 2}, ArrayMessage{"3d", 2},
                                         ArrayMessage{"5d", 2}, ArrayMessage{"ld", 2}, ArrayMessage{"CE", 1},
                                         ArrayMessage{"1E", 1}, ArrayMessage{"2E", 1}, ArrayMessage{"3E", 1},
                                         ArrayMessage{"5E", 1}, ArrayMessage{"lE", 1}));

class AnnouncedLengthOfAny : public testing::TestWithParam<std::string> {};

TEST_P(AnnouncedLengthOfAny, EndsWithABodyOfAnySizeAndGivesTheSameFileAgain) {
    for (unsigned length = 0; length < 0x1000; length += length < 200 ? 1 : 61) {
        for (const std::size_t body : {std::size_t{0}, std::size_t{25}, std::size_t{length}}) {
            const std::string log = logWithMessage(GetParam(), length, body);
            ASSERT_EQ(observationFile(log), observationFile(log)) << length << ' ' << body;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Messages, AnnouncedLengthOfAny,
                         testing::Values("~~", "RD", "TD", "KV", "PM", "==", "PV", "TO", "AI", "MF", ">>",
                                         ">A", "SX", "NN", "rc", "rx", "1r", "2r", "3r", "5r", "lr", "cp",
                                         "1p", "2p", "3p", "5p", "lp", "DC", "DX", "0d", "1d", "2d", "3d",
                                         "5d", "ld"));
INSTANTIATE_TEST_SUITE_P(MoreMessages, AnnouncedLengthOfAny,
                         testing::Values("CE", "1E", "2E", "3E", "5E", "lE", "FC", "F1", "F2", "F3", "F5",
                                         "Fl", "SI", "EL", "SS", "SE", "cr", "cc", "c1", "c2", "c3", "c5",
                                         "cl", "TC", "GE", "GA", "NE", "EN", "CN", "IE", "UO", "IO", "NU",
                                         "EU", "CU", "CI", "II", "IU", "ST", "DP", "zz", "dd"));

// ---- damaged bytes ----

TEST(DamagedLog, AnyByteOfAnyValueEndsAndGivesTheSameFileAgain) {
    LogBuilder log;
    addEpoch(log, 0);
    addEpoch(log, 1);
    std::mt19937 random(401);
    for (std::size_t place = 0; place < log.size(); ++place) {
        for (int i = 0; i < 4; ++i) {
            std::string damaged = log.bytes();
            damaged[place] = static_cast<char>(random());
            ASSERT_EQ(observationFile(damaged), observationFile(damaged)) << place;
        }
    }
}

TEST(DamagedLog, BytesWithoutAnySenseEnd) {
    std::mt19937 random(4);
    for (int i = 0; i < 200; ++i) {
        std::string noise(random() % 5000, '\0');
        std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
        ASSERT_EQ(observationFile(noise), observationFile(noise)) << i;
    }
}

// ---- the program leaves nothing behind and changes nothing ----

TEST(RepeatedRun, GivesTheSameFiles) {
    const CutLog log;
    for (const std::string version : {"3.05", "4.00", "4.01"}) {
        const auto first = testsupport::convertObservations(log.bytes, version);
        const auto second = testsupport::convertObservations(log.bytes, version);
        EXPECT_EQ(first.names, second.names);
        EXPECT_EQ(testsupport::withoutRunDate(first.lines('o')),
                  testsupport::withoutRunDate(second.lines('o')));
        EXPECT_GT(first.lines('o').size(), 30U);
    }
}

TEST(RepeatedRun, ASecondRunInTheFolderOfTheFirstLeavesLogAndFilesAsTheyWere) {
    namespace fs = std::filesystem;
    const CutLog log;
    const fs::path folder =
        fs::temp_directory_path() / ("orbconv-twice-" + std::to_string(std::random_device{}()));
    fs::create_directories(folder);
    const fs::path input = folder / "site0010.log";
    std::ofstream(input, std::ios::binary) << log.bytes;
    const auto contents = [&] {
        EXPECT_EQ(testsupport::exitStatusOfRun({"-f", input.string()}, folder, folder / "progress.txt",
                                               folder / "errors.txt"),
                  0);
        std::vector<std::pair<std::string, Lines>> files;
        for (const auto& entry : fs::directory_iterator(folder)) {
            std::ostringstream text;
            text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            files.emplace_back(entry.path().filename().string(),
                               testsupport::withoutRunDate(testsupport::splitLines(text.str())));
        }
        std::ranges::sort(files);
        return files;
    };
    const auto first = contents();
    const auto second = contents();
    EXPECT_EQ(first, second);
    EXPECT_EQ(first.size(), 9U);  // the log, the two streams, an observation and five navigation files
    std::ostringstream after;
    after << std::ifstream(input, std::ios::binary).rdbuf();
    EXPECT_EQ(after.str(), log.bytes);
    fs::remove_all(folder);
}

}  // namespace
