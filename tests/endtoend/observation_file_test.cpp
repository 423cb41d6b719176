// Whole observation files of small logs, one for each constellation and one of all five, in every version.
//
// Ranges are (v * unit + offset) * 299792458 m, differences add d * 1e-11 s + 2e-7 s ahead of the product,
// phases are (p / 2^40 + time) * carrier + shift cycles, Dopplers -(reference + d) * carrier / reference
// carrier * 1e-4 Hz; the times in brackets below are the satellite's full range in seconds.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/obs_logs.h"

namespace {
namespace observationFileTest {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testing::ElementsAreArray;
using testsupport::addEpoch;
using testsupport::addIdentity;
using testsupport::blanks;
using testsupport::convertObservations;
using testsupport::emptyGlonassLines;
using testsupport::joined;
using testsupport::ObservedEpoch;
using testsupport::openingLines;
using Lines = std::vector<std::string>;

class ObservationFile : public testing::TestWithParam<std::string> {
protected:
    // The file of the log in this version, less the run's date.
    static Lines fileOf(const LogBuilder& log, const std::vector<std::string>& more = {}) {
        const auto run = convertObservations(log.bytes(), GetParam(), more);
        EXPECT_EQ(run.exitStatus, 0);
        return testsupport::withoutRunDate(run.lines('o'));
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, ObservationFile, testing::Values("3.05", "4.00", "4.01"),
                         [](const auto& version) {
                             return version.param.substr(0, 1) + "_" + version.param.substr(2);
                         });

// An epoch of one second, with its date.
void addDatedEpoch(LogBuilder& log, std::uint32_t second, const ObservedEpoch& epoch, unsigned timeBase = 0) {
    log.time(3600000 + 1000 * second).rd(2024, 3, 5, timeBase);
    addEpoch(log, epoch);
}

// From the interval to the leap seconds, for two dated epochs.
Lines timeLines() {
    return {"     1.000                                                  INTERVAL",
            "  2024     3     5     1     0    0.0000000     GPS         TIME OF FIRST OBS",
            "  2024     3     5     1     0    1.0000000     GPS         TIME OF LAST OBS",
            "    18                                                      LEAP SECONDS"};
}

constexpr std::uint16_t on = 0x40;

TEST_P(ObservationFile, OfGps) {
    LogBuilder log;
    addIdentity(log);
    // G07 [0.075 s], G03 [0.08 s]; the second band's ranges all take the last 1r value.
    addDatedEpoch(log, 0,
                  {.satellites = {{SystemCode::gps, 7}, {SystemCode::gps, 3}},
                   .ranges = {0, 500000000},
                   .referenceDopplers = {-12345678, 20000000},
                   .bands = {{Band::c, {}, {0, 1 << 30}, {0, 50}, {180, 200}, {on, on}},
                             {Band::b1, {5000, 10000}},
                             {Band::b2, {1, 2}, {1 << 20, -(1 << 30)}, {100, -50}, {100, 90}, {on, on}},
                             {Band::b5, {1000, 2000}, {-(1 << 20), 1024}, {-100, 10}, {191, 40}, {on, 0}}}});
    // G03 [0.07 s].
    addDatedEpoch(log, 1,
                  {.satellites = {{SystemCode::gps, 3}},
                   .ranges = {-500000000},
                   .referenceDopplers = {-70000},
                   .bands = {{Band::c, {}, {1 << 25}, {-5000}, {47}, {on}},
                             {Band::b1, {-3000}},
                             {Band::b2, {3}, {0}, {0}, {48}, {on}},
                             {Band::b5, {3000}, {1}, {20000}, {255}, {on}}}});
    EXPECT_THAT(fileOf(log),
                ElementsAreArray(joined(
                    {openingLines(GetParam(), "G"),
                     {"G   12 C1C L1C D1C S1C C2W L2W D2W S2W C5X L5X D5X S5X      SYS / # / OBS TYPES"},
                     emptyGlonassLines(),
                     timeLines(),
                     {"G L1C  0.00000  02 G03 G07                                  SYS / PHASE SHIFT",
                      "G L2W  0.00000  02 G03 G07                                  SYS / PHASE SHIFT",
                      "G L5X  0.25000  02 G03 G07                                  SYS / PHASE SHIFT",
                      "     2                                                      # OF SATELLITES",
                      "                                                            END OF HEADER",
                      "> 2024 03 05 01 00  0.0000000  0  2       0.000123456789",
                      "G03"
                      "  23983396.640   127572096.094 8     -2000.005          50.000  " +
                          blanks(64) + "  23983486.578    97009171.875 3     -1558.438          22.500  " +
                          blanks(192),
                      "G07"
                      "  22484434.350   118156500.000 7      1234.568          45.000  " +
                          blanks(64) + "  22484524.288    92071170.731 4       961.993          25.000  " +
                          blanks(64) + "  22484497.306    88232628.300 7       921.925          47.750  " +
                          blanks(64),
                      "> 2024 03 05 01 00  1.0000000  0  1       0.000123456789",
                      "G03"
                      "  20985472.060   110327478.003 1         7.500          11.750  " +
                          blanks(64) + "  20985523.025    85932000.000 2         5.455          12.000  " +
                          blanks(64) + "  20985541.012    82351500.251 9         3.734          63.750  " +
                          blanks(64)}})));
}

TEST_P(ObservationFile, OfGlonass) {
    LogBuilder log;
    addIdentity(log);
    // Channel 1 [0.075 s], -4 [0.08 s] and 0 [0.07 s]; the third one's slot is unknown. A 3r brings its code
    // into the header without any flag.
    addDatedEpoch(
        log, 0,
        {.satellites = {{SystemCode::glonass, 1}, {SystemCode::glonass, -4}, {SystemCode::glonass, 0}},
         .slots = {5, 2, 255},
         .ranges = {0, 500000000, -500000000},
         .referenceDopplers = {-10000000, 5000000, 0},
         .bands = {{Band::c, {}, {0, 1 << 28, -(1 << 25)}, {0, -300, 1230}, {24, 36, 48}, {on, on, on}},
                   {Band::b2, {9, 9, 9}, {1 << 22, 0, 1 << 24}, {1000, 0, -4560}, {60, 72, 84}, {on, on, on}},
                   {Band::b3, {7, 7, 7}}}},
        2);
    // The third record is free now, but keeps its slot, its second band's flag and its strength digits.
    addDatedEpoch(log, 1,
                  {.satellites = {{SystemCode::glonass, 1}, {SystemCode::glonass, -4}},
                   .slots = {5, 2},
                   .ranges = {1000, -1000},
                   .referenceDopplers = {-20000000, -30000},
                   .bands = {{Band::c, {}, {5, -5}, {7000, 30000}, {96, 108}, {on, on}},
                             {Band::b2, {9, 9}, {0, -5}, {0, 0}, {120, 132}, {on, 0}},
                             {Band::b3, {7, 7}}}},
                  2);
    EXPECT_THAT(
        fileOf(log),
        ElementsAreArray(joined(
            {openingLines(GetParam(), "R"),
             {"R    9 C1C L1C D1C S1C C2C L2C D2C S2C C2P                  SYS / # / OBS TYPES",
              "  2 R02 -4 R05  1                                           GLONASS SLOT / FRQ #",
              " C1C    0.000 C2C    0.000 C2P    0.000        GLONASS COD/PHS/BIS",
              "     1.000                                                  INTERVAL",
              "  2024     3     5     1     0    0.0000000 GLONASS         TIME OF FIRST OBS",
              "  2024     3     5     1     0    1.0000000 GLONASS         TIME OF LAST OBS",
              "    18                                                      LEAP SECONDS",
              "R L1C  0.00000  02 R02 R05 R255" + blanks(34) + "SYS / PHASE SHIFT",
              "R L2C  0.25000  02 R02 R05 R255" + blanks(34) + "SYS / PHASE SHIFT",
              "     3                                                      # OF SATELLITES",
              "                                                            END OF HEADER",
              "> 2024 03 05 01 00  0.0000000  0  3       0.000123456789",
              "R02"
              "  23983396.640   128370563.965 1      -499.970           9.000  " +
                  blanks(64) + "  23983456.598    99540000.250 3      -388.889          18.000  " +
                  blanks(128),
              "R05"
              "  22484434.350   120192187.500 1      1000.000           6.000  " +
                  blanks(64) + "  22484494.308    93487567.532 2       777.700          15.000  " +
                  blanks(128),
              "R255"
              "  20985472.060   112091110.840 2        -0.123          12.000  " +
                  blanks(64) + "  20985532.018    87239012.701 3         0.355          21.000  " +
                  blanks(128),
              "> 2024 03 05 01 00  1.0000000  0  2       0.000123456789",
              "R02"
              "  22484431.352   119981233.995 4         0.000          27.000  " +
                  blanks(256),
              "R05"
              "  22484437.348   120192203.533 4      1999.300          24.000  " +
                  blanks(64) + "  22484497.306    93482825.214 5      1555.556          30.000  " +
                  blanks(128),
              "R255" + blanks(128) + "         0.000           0.000 3         0.000           0.000  " +
                  blanks(128)}})));
}

TEST_P(ObservationFile, OfGalileo) {
    LogBuilder log;
    addIdentity(log);
    log.time(3600000).rd(2024, 3, 5);
    // E11 [0.085 s], E02 [0.09 s]. Galileo's code sets no letter. No date but the first: the clock moves on
    // by the interval of a fifth of a second.
    addEpoch(log, {.satellites = {{SystemCode::galileo, 11}, {SystemCode::galileo, 2}},
                   .ranges = {0, 250000000},
                   .referenceDopplers = {-10000000, 40000000},
                   .bands = {{Band::c, {}, {0, 1 << 30}, {0, 4}, {160, 164}, {on, on}},
                             {Band::b1, {0, 250}},
                             {Band::b2, {0, 0}, {1 << 20, 1024}, {0, 0}, {168, 172}, {0, on}},
                             {Band::b5, {0, 1000}, {0, 2048}, {0, 0}, {176, 180}, {on, on}}}});
    log.time(3600200);
    addEpoch(log, {.satellites = {{SystemCode::galileo, 11}},
                   .ranges = {250000001},
                   .referenceDopplers = {10000000},
                   .bands = {{Band::c, {}, {-(1 << 30)}, {0}, {0}, {on}},
                             {Band::b1, {-250}},
                             {Band::b2, {0}, {4096}, {20000}, {4}, {on}},
                             {Band::b5, {2000}, {8192}, {-20000}, {8}, {on}}}});
    log.time(3600400);
    addEpoch(log, {.satellites = {{SystemCode::galileo, 2}},
                   .ranges = {-250000000},
                   .referenceDopplers = {0},
                   .bands = {{Band::c, {}, {1 << 29}, {-32768}, {216}, {on}},
                             {Band::b1, {777}},
                             {Band::b2, {0}, {0}, {32767}, {215}, {on}},
                             {Band::b5, {-1000}, {0}, {1}, {214}, {0}}}});
    EXPECT_THAT(fileOf(log),
                ElementsAreArray(joined(
                    {openingLines(GetParam(), ""),
                     {"E   12 C1X L1X D1X S1X C7X L7X D7X S7X C5X L5X D5X S5X      SYS / # / OBS TYPES"},
                     emptyGlonassLines(),
                     {"     0.200                                                  INTERVAL",
                      "  2024     3     5     1     0    0.0000000     GPS         TIME OF FIRST OBS",
                      "  2024     3     5     1     0    0.0000000     GPS         TIME OF LAST OBS",
                      "    18                                                      LEAP SECONDS",
                      "E L1X  0.50000  02 E02 E11                                  SYS / PHASE SHIFT",
                      "E L7X  0.25000  02 E02 E11                                  SYS / PHASE SHIFT",
                      "E L5X  0.25000  02 E02 E11                                  SYS / PHASE SHIFT",
                      "     2                                                      # OF SATELLITES",
                      "                                                            END OF HEADER",
                      "> 2024 03 05 01 00  0.0000000  0  2       0.000123456789",
                      "E02"
                      "  26981321.220   143326296.594 6     -4000.000          41.000  " +
                          blanks(64) + "  26981381.928   108642601.374 7     -3064.935          43.000  " +
                          blanks(64) + "  26981384.176   105880502.441 7     -2987.013          45.000  ",
                      "E11"
                      "  25482358.930   133910700.500 6      1000.000          40.000  " +
                          blanks(192) + "  25482418.888    99998250.250 7       746.753          44.000  ",
                      "> 2024 03 05 01 00  0.2000000  0  1       0.000123456789",
                      "E11"
                      "  26981321.226   140249304.438 1     -1000.000           0.000  " +
                          blanks(64) + "  26981380.435   108642604.771 1      -767.766           1.000  " +
                          blanks(64) + "  26981387.180   105880509.039 1      -745.260           2.000  ",
                      "> 2024 03 05 01 00  0.4000000  0  1       0.000123456789",
                      "E02"
                      "  23983396.640   126802848.547 9         3.277          54.000  " +
                          blanks(64) + "  23983458.928    96571200.250 8        -2.511          53.750  " +
                          blanks(128)}})));
}

TEST_P(ObservationFile, OfBeidou) {
    LogBuilder log;
    addIdentity(log);
    // C03 [0.105 s], C20 [0.1 s], C10 [0.11 s]: of each of the kinds that phases tell apart.
    addDatedEpoch(
        log, 0,
        {.satellites = {{SystemCode::beidou, 3}, {SystemCode::beidou, 20}, {SystemCode::beidou, 10}},
         .ranges = {0, -250000000, 250000000},
         .referenceDopplers = {-10000000, 5000000, 0},
         .bands = {
             {Band::c, {}, {0, 1 << 28, -(1 << 25)}, {0, -300, 1230}, {100, 104, 108}, {on, on, on}},
             {Band::b1, {300, 200, -100}},
             {Band::b2, {0, 0, 0}, {1 << 20, 0, 1 << 24}, {1000, 0, -4560}, {112, 116, 120}, {0, on, on}}}});
    addDatedEpoch(log, 1,
                  {.satellites = {{SystemCode::beidou, 10}, {SystemCode::beidou, 3}},
                   .ranges = {5, -5},
                   .referenceDopplers = {-20000, 20000},
                   .bands = {{Band::c, {}, {0, 0}, {0, 0}, {124, 128}, {on, on}},
                             {Band::b1, {0, -100}},
                             {Band::b2, {0, 0}, {0, 0}, {0, 0}, {132, 136}, {on, on}}}});
    EXPECT_THAT(fileOf(log),
                ElementsAreArray(joined(
                    {openingLines(GetParam(), "I"),
                     {"C    6 C2I L2I D2I S2I C7I                                  SYS / # / OBS TYPES"},
                     emptyGlonassLines(),
                     timeLines(),
                     {"C L2I  0.00000  01 C03                                      SYS / PHASE SHIFT",
                      "C L2I  0.50000  02 C10 C20                                  SYS / PHASE SHIFT",
                      "C L7I  0.00000  02 C03 C20                                  SYS / PHASE SHIFT",
                      "C L7Z  0.25000  01 C10                                      SYS / PHASE SHIFT",
                      "     3                                                      # OF SATELLITES",
                      "                                                            END OF HEADER",
                      "> 2024 03 05 01 00  0.0000000  0  3       0.000123456789",
                      "C03"
                      "  31478208.090   163915290.000 4      1000.000          25.000  " +
                          blanks(320),
                      "C10"
                      "  32977170.380   171673139.570 4        -0.123          27.000  " +
                          blanks(64) + "  32977230.039   132803819.745 5         0.353          30.000  " +
                          blanks(192),
                      "C20"
                      "  29979245.800   156490927.941 4      -499.970          26.000  " +
                          blanks(64) + "  29979305.459   120714000.000 4      -386.632          29.000  " +
                          blanks(192),
                      "> 2024 03 05 01 00  1.0000000  0  2       0.000123456789",
                      "C03"
                      "  31478208.060   163915289.844 5        -2.000          32.000  " +
                          blanks(64) + "  31478267.719   126749699.879 5        -1.547          34.000  " +
                          blanks(192),
                      "C10"
                      "  31478208.120   163915290.656 5         2.000          31.000  " +
                          blanks(64) + "  31478267.779   126749700.371 5         1.547          33.000  " +
                          blanks(192)}})));
}

// Only the latest version has the last band.
TEST_P(ObservationFile, OfNavic) {
    LogBuilder log;
    addIdentity(log);
    // I09 [0.105 s], I02 [0.11 s]. The last band's digit is that of the first band.
    addDatedEpoch(log, 0,
                  {.satellites = {{SystemCode::navic, 9}, {SystemCode::navic, 2}},
                   .ranges = {0, 250000000},
                   .referenceDopplers = {-10000000, 40000000},
                   .bands = {{Band::c, {}, {0, 1 << 27}, {0, 4}, {140, 100}, {on, on}},
                             {Band::b5, {500, 250}, {1 << 20, 1024}, {0, 0}, {144, 104}, {on, on}},
                             {Band::l, {-500, 1000}, {0, 2048}, {0, 10}, {190, 96}, {on, 0}}}});
    addDatedEpoch(log, 1,
                  {.satellites = {{SystemCode::navic, 9}},
                   .ranges = {1000000},
                   .referenceDopplers = {-10},
                   .bands = {{Band::c, {}, {1}, {0}, {148}, {on}},
                             {Band::b5, {0}, {0}, {-10000}, {152}, {0}},
                             {Band::l, {-2000}, {1 << 30}, {21000}, {8}, {on}}}});
    const bool hasLastBand = GetParam() == "4.01";
    const auto lastBand = [&](const std::string& columns) { return hasLastBand ? columns : ""; };
    const std::string types = hasLastBand ? "I   12 C9A L9A D9A S9A C5A L5A D5A S5A C1X L1X D1X S1X      "
                                          : "I    8 C9A L9A D9A S9A C5A L5A D5A S5A                      ";
    Lines lastShift;
    if (hasLastBand) {
        lastShift = {"I L1X  0.00000  01 I09                                      SYS / PHASE SHIFT"};
    }
    EXPECT_THAT(fileOf(log),
                ElementsAreArray(joined(
                    {openingLines(GetParam(), ""),
                     {types + "SYS / # / OBS TYPES"},
                     emptyGlonassLines(),
                     timeLines(),
                     {"I L9A  0.00000  02 I02 I09                                  SYS / PHASE SHIFT",
                      "I L5A  0.00000  02 I02 I09                                  SYS / PHASE SHIFT"},
                     lastShift,
                     {"     2                                                      # OF SATELLITES",
                      "                                                            END OF HEADER",
                      "> 2024 03 05 01 00  0.0000000  0  2       0.000123456789",
                      "I02"
                      "  32977170.380   274427282.637 4     -6327.273          25.000  "
                      "  32977231.088   129409501.096 4     -2987.013          26.000  " +
                          lastBand(blanks(64)),
                      "I09"
                      "  31478208.090   261662940.000 5      1581.818          35.000  "
                      "  31478269.547   123528371.950 6       746.753          36.000  " +
                          lastBand("  31478266.550   165419100.000 5      1000.000          47.500  "),
                      "> 2024 03 05 01 00  1.0000000  0  1       0.000123456789",
                      "I09"
                      "  31484203.939   261712780.562 6         0.002          37.000  " +
                          blanks(64) +
                          lastBand("  31484257.902   166989104.494 6        -2.099           2.000  ")}})));
}

}  // namespace observationFileTest
}  // namespace
