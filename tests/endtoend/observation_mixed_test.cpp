// The observation file of a log of all five constellations, whole and with constellations left out.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <tuple>

#include "support/obs_logs.h"

namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testing::ElementsAreArray;
using testsupport::blanks;
using testsupport::headerLine;
using testsupport::joined;
using Lines = std::vector<std::string>;

// Two epochs of C10, G07, I02, R05 on channel 1 and E11, in this order: raw ranges and phases of 0, a raw
// Doppler of -1 Hz. BeiDou alone has its third band too, whose range takes the last difference of the second
// band, in the order of the list, of a constellation that is not left out; NavIC's is never taken.
LogBuilder mixedLog() {
    constexpr std::uint16_t on = 0x40;
    LogBuilder log;
    testsupport::addIdentity(log);
    for (const std::uint32_t second : {0U, 1U}) {
        log.time(3600000 + 1000 * second).rd(2024, 3, 5);
        testsupport::addEpoch(log, {.satellites = {{SystemCode::beidou, 10},
                                                   {SystemCode::gps, 7},
                                                   {SystemCode::navic, 2},
                                                   {SystemCode::glonass, 1},
                                                   {SystemCode::galileo, 11}},
                                    .slots = {5},
                                    .ranges = {0, 0, 0, 0, 0},
                                    .referenceDopplers = {-10000, -10000, -10000, -10000, -10000},
                                    .bands = {{Band::c,
                                               {},
                                               {0, 0, 0, 0, 0},
                                               {0, 0, 0, 0, 0},
                                               {180, 184, 188, 192, 196},
                                               {on, on, on, on, on}},
                                              {Band::b1, {100, 200, 300, 400, 500}},
                                              {Band::b2,
                                               {0, 0, 0, 0, 0},
                                               {0, 0, 0, 0, 0},
                                               {0, 0, 0, 0, 0},
                                               {96, 0, 0, 0, 0},
                                               {on, 0, 0, 0, 0}}}});
    }
    return log;
}

// The lines of one constellation.
struct SystemLines {
    std::string types;
    std::string shift;
    std::string epoch;
};

const std::map<char, SystemLines>& systemLines() {
    static const std::map<char, SystemLines> lines = {
        {'G',
         {"G    4 C1C L1C D1C S1C", "G L1C  0.00000  01 G07",
          "G07  22484434.350   118156500.000 7         1.000          46.000  " + blanks(320)}},
        {'R',
         {"R    4 C1C L1C D1C S1C", "R L1C  0.00000  01 R05",
          "R05  22484434.350   120192187.500 8         1.000          48.000  " + blanks(256)}},
        {'E',
         {"E    4 C1X L1X D1X S1X", "E L1X  0.50000  01 E11",
          "E11  25482358.930   133910700.500 8         1.000          49.000  " + blanks(256)}},
        {'C',
         {"C    2 C7I", "C L7Z  0.25000  01 C10",
          "C10  31478208.090   163915290.500 7         1.000          45.000  " + blanks(64) +
              "  @@@   126749700.250 4         0.773          24.000  " + blanks(192)}},
        {'I',
         {"I    4 C9A L9A D9A S9A", "I L9A  0.00000  01 I02",
          "I02  31478208.090   261662940.000 7         1.582          47.000  "}}};
    return lines;
}

// The range of C10's third band: (0.105 s + 2e-7 s + d * 1e-11 s) * 299792458 m/s.
std::string thirdRange(const std::string& letters) {
    const auto has = [&](char letter) { return letters.find(letter) != std::string::npos; };
    return has('E') ? "31478269.547" : has('R') ? "31478269.248" : has('G') ? "31478268.648" : "31478268.348";
}

// The whole file with the constellations of `letters`, which stand in the order of the file.
Lines expectedFile(const std::string& version, const std::string& firstLetter, const std::string& letters) {
    Lines types;
    Lines shifts;
    Lines epoch;
    for (const char letter : letters) {
        const SystemLines& lines = systemLines().at(letter);
        types.push_back(headerLine(lines.types, "SYS / # / OBS TYPES"));
        shifts.push_back(headerLine(lines.shift, "SYS / PHASE SHIFT"));
        epoch.push_back(lines.epoch);
        if (const auto place = epoch.back().find("@@@"); place != std::string::npos) {
            epoch.back().replace(place, 3, thirdRange(letters));
        }
    }
    Lines glonass;
    if (letters.find('R') != std::string::npos) {
        glonass = {headerLine("  1 R05  1", "GLONASS SLOT / FRQ #"),
                   " C1C    0.000        GLONASS COD/PHS/BIS"};
    }
    const std::string count = std::to_string(letters.size());
    return joined({testsupport::openingLines(version, firstLetter),
                   types,
                   glonass,
                   {headerLine("     1.000", "INTERVAL"),
                    "  2024     3     5     1     0    0.0000000     GPS         TIME OF FIRST OBS",
                    "  2024     3     5     1     0    1.0000000     GPS         TIME OF LAST OBS",
                    headerLine("    18", "LEAP SECONDS")},
                   shifts,
                   {headerLine("     " + count, "# OF SATELLITES"), headerLine("", "END OF HEADER"),
                    "> 2024 03 05 01 00  0.0000000  0  " + count + "       0.000123456789"},
                   epoch,
                   {"> 2024 03 05 01 00  1.0000000  0  " + count + "       0.000123456789"},
                   epoch});
}

struct LeftOut {
    std::vector<std::string> options;
    std::string firstLetter;
    std::string rest;
};

class MixedObservationFile : public testing::TestWithParam<std::tuple<std::string, LeftOut>> {};

TEST_P(MixedObservationFile, HoldsTheConstellationsThatAreNotLeftOut) {
    const auto& [version, leftOut] = GetParam();
    const auto run = testsupport::convertObservations(mixedLog().bytes(), version, leftOut.options);
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_THAT(testsupport::withoutRunDate(run.lines('o')),
                ElementsAreArray(expectedFile(version, leftOut.firstLetter, leftOut.rest)));
}

// The first line's letter goes by a numbering of its own, in which BeiDou's code means NavIC and the codes
// of Galileo and NavIC systems that are switched off.
INSTANTIATE_TEST_SUITE_P(
    VersionsAndOptions, MixedObservationFile,
    testing::Combine(testing::Values("3.05", "4.00", "4.01"),
                     testing::Values(LeftOut{{}, "M", "GRECI"}, LeftOut{{"-J", "-W", "-GC"}, "M", "GRECI"},
                                     LeftOut{{"-G"}, "M", "RECI"}, LeftOut{{"-R"}, "M", "GECI"},
                                     LeftOut{{"-E"}, "M", "GRCI"}, LeftOut{{"-C"}, "M", "GREI"},
                                     LeftOut{{"-I"}, "M", "GREC"}, LeftOut{{"-G", "-R"}, "I", "ECI"},
                                     LeftOut{{"-R", "-I"}, "G", "GEC"}, LeftOut{{"-G", "-I"}, "R", "REC"},
                                     LeftOut{{"-G", "-R", "-I"}, "", "EC"}, LeftOut{{"-R", "-E"}, "M", "GCI"},
                                     LeftOut{{"-G", "-R", "-E"}, "I", "CI"},
                                     LeftOut{{"-G", "-R", "-E", "-C", "-I"}, "", ""})));

}  // namespace
