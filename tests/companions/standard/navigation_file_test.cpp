// The navigation file that stands beside the observations.
#include <gtest/gtest.h>

#include <algorithm>

#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "companions/support/navigation_messages.h"
#include "standard/file_names.h"

namespace {

using samplelog::LogBuilder;
using testsupport::addEpoch;
using testsupport::runStandard;
using testsupport::StandardRun;
using Lines = std::vector<std::string>;

constexpr std::uint32_t twoHours = 7200000;

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

// The records of the files below, by their columns.
const Lines gpsRecord = {"G07 2025 01 05 02 00 00 2.441406250000E-04 9.094947017729E-13 8.673617379884E-19",
                         "     3.300000000000E+01-1.025000000000E+01 1.170334463414E-08 1.570796326795E+00",
                         "     9.536743164062E-07 7.812500000000E-03 4.768371582031E-07 5.153500000000E+03",
                         "     7.200000000000E+03 2.384185791016E-07-7.853981633974E-01-1.192092895508E-07",
                         "     9.817477042468E-01 2.005000000000E+02 3.141592653590E+00-2.340668926827E-08",
                         "     5.851672317069E-09 0.000000000000E+00 2.348000000000E+03 1.000000000000E+00",
                         "     2.800000000000E+00 5.000000000000E+00 9.313225746155E-10 1.000000000000E+02",
                         "     7.000000000000E+03 4.000000000000E+00"};
const Lines glonassRecord = {
    "R08 2025 01 05 02 15 00-6.103515625000E-05 9.094947017729E-13 7.230000000000E+03",
    "     1.000050000000E+04 1.500000000000E+00 9.313225746155E-10 1.000000000000E+00",
    "    -2.000025000000E+04-2.500000000000E+00-1.862645149231E-09-7.000000000000E+00",
    "     3.000125000000E+03 3.500000000000E+00 3.725290298462E-09 2.000000000000E+00",
    "                        9.999999999990E+08 1.500000000000E+01"};

// An epoch of 2025-01-05 behind messages of GPS and GLONASS.
LogBuilder smallLog() {
    LogBuilder log;
    log.rd(2025, 1, 5).ne88(testsupport::glonassOf2025()).ge123(testsupport::keplerOfWeek(300));
    log.io(testsupport::ionoTerms());
    log.uo({.a0 = 0x1p-30, .a1 = 0x1p-50F, .tot = 345600, .week = 300, .leapSeconds = 18});
    addEpoch(log, twoHours);
    return log;
}

// Without the line that tells the time of the run.
Lines linesOf(const StandardRun& run) {
    Lines lines = run.navigationLines();
    std::erase_if(lines, [](const std::string& line) { return line.ends_with("PGM / RUN BY / DATE"); });
    return lines;
}

Lines labelled(const StandardRun& run, std::string_view label) {
    Lines found;
    for (const std::string& line : run.navigationLines()) {
        if (line.ends_with(label)) {
            found.push_back(line.substr(0, 60));
        }
    }
    return found;
}

Lines recordsOf(const StandardRun& run) {
    const Lines lines = run.navigationLines();
    const auto end =
        std::ranges::find_if(lines, [](const std::string& line) { return line.ends_with("END OF HEADER"); });
    return end == lines.end() ? Lines{} : Lines(end + 1, lines.end());
}

Lines joined(std::initializer_list<Lines> parts) {
    Lines all;
    for (const Lines& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

// ---- whole files ----

TEST(NavigationFile, WholeFileOfVersion305) {
    const StandardRun run = runStandard(smallLog().take());
    ASSERT_EQ(run.exitStatus, 0) << run.errors;
    ASSERT_EQ(run.files.size(), 2U);
    EXPECT_EQ(run.files.begin()->first, "XXXX00XXX_R_20250050200_00U_00U_MO.rnx");
    EXPECT_EQ(run.files.rbegin()->first, "XXXX00XXX_R_20250050200_00U_MN.rnx");
    const Lines header = {
        "     3.05           N: GNSS NAV DATA    M                   RINEX VERSION / TYPE",
        "GPSA   1.4901E-08  2.9802E-08 -5.9605E-08  1.1921E-07       IONOSPHERIC CORR",
        "GPSB   6.5536E+04  3.2768E+04 -6.5536E+04  1.3107E+05       IONOSPHERIC CORR",
        "GPUT  9.3132257462E-10 8.881784197E-16 345600 2348        2 TIME SYSTEM CORR",
        "    18                                                      LEAP SECONDS",
        "                                                            END OF HEADER",
    };
    EXPECT_EQ(linesOf(run), joined({header, gpsRecord, glonassRecord}));
    const Lines program = labelled(run, "PGM / RUN BY / DATE");
    ASSERT_EQ(program.size(), 1U);
    EXPECT_TRUE(program[0].starts_with("orbconv-std 0."));
    EXPECT_TRUE(program[0].ends_with(" UTC "));
}

TEST(NavigationFile, WholeFileOfVersion401) {
    LogBuilder log = smallLog();
    log.en(testsupport::galileoOf(5)).nu({.tauC = 0x1p-27});
    const StandardRun run =
        runStandard(log.take(), {"--rinex", "4.01", "--comment", "first", "--comment", "second"});
    const Lines expected = {
        "     4.01           N: GNSS NAV DATA    M                   RINEX VERSION / TYPE",
        "first                                                       COMMENT",
        "second                                                      COMMENT",
        "    18                                                      LEAP SECONDS",
        "                                                            END OF HEADER",
        "> STO G07 LNAV",
        "    2025 01 09 00 00 00 GPUT                                  UTC(USNO)",
        "     0.000000000000E+00 9.313225746155E-10 8.881784197001E-16 0.000000000000E+00",
        "> STO R08 FDMA",
        "    2025 01 05 00 00 00 GLUT                                  UTC(SU)",
        "     7.182000000000E+03-7.450580596924E-09 0.000000000000E+00 0.000000000000E+00",
        "> ION G07 LNAV",
        "    2025 01 05 00 00 00 1.490116119385E-08 2.980232238770E-08-5.960464477539E-08",
        "     1.192092895508E-07 6.553600000000E+04 3.276800000000E+04-6.553600000000E+04",
        "     1.310720000000E+05",
        "> ION E07 IFNV",
        "    2025 01 05 02 00 00 7.550000000000E+01 2.500000000000E-01 7.812500000000E-03",
        "     9.000000000000E+00",
        "> EPH G07 LNAV",
    };
    Lines lines = linesOf(run);
    const auto galileo = std::ranges::find(lines, "> EPH E07 INAV");
    ASSERT_EQ(lines.end() - galileo, 9 + 6);
    EXPECT_TRUE((galileo + 1)->starts_with("E07 2025 01 05 02 00 00 2.441406250000E-04"));
    lines.erase(galileo, galileo + 9);
    EXPECT_EQ(lines, joined({expected, gpsRecord, {"> EPH R08 FDMA"}, glonassRecord}));
}

TEST(NavigationFile, HeaderTermsOfEverySystem) {
    LogBuilder log = smallLog();
    auto last = testsupport::ionoTerms();
    last.alpha0 = 0x1p-27F;
    log.cn134(testsupport::beidouOf(1, 20)).ci(last).ii(last).ci(testsupport::ionoTerms());
    log.en(testsupport::galileoOf(2)).cu({.a0 = -0x1p-29, .tot = 14, .week = 435});
    log.iu({.a0 = 0x1p-28, .tot = 7, .week = 300}).nu({.tauC = 0x1p-27, .tauGps = 0x1p-28F});
    log.eu({.utc = {.a0 = 0x1p-31, .tot = 8, .week = 300, .leapSeconds = 18},
            .a0Gps = 0x1p-32F,
            .totGps = 9,
            .weekGps = 300});
    const StandardRun run = runStandard(log.take());
    // 2 h of GPS time are 1:59:46 h of BeiDou time: the second hour, B.
    EXPECT_EQ(labelled(run, "IONOSPHERIC CORR"),
              (Lines{"GPSA   1.4901E-08  2.9802E-08 -5.9605E-08  1.1921E-07       ",
                     "GPSB   6.5536E+04  3.2768E+04 -6.5536E+04  1.3107E+05       ",
                     "GAL    7.5500E+01  2.5000E-01  7.8125E-03  0.0000E+00       ",
                     "BDSA   1.4901E-08  2.9802E-08 -5.9605E-08  1.1921E-07 B 20  ",
                     "BDSB   6.5536E+04  3.2768E+04 -6.5536E+04  1.3107E+05 B 20  ",
                     "IRNA   7.4506E-09  2.9802E-08 -5.9605E-08  1.1921E-07       ",
                     "IRNB   6.5536E+04  3.2768E+04 -6.5536E+04  1.3107E+05       "}));
    EXPECT_EQ(labelled(run, "TIME SYSTEM CORR"),
              (Lines{"GPUT  9.3132257462E-10 8.881784197E-16 345600 2348        2 ",
                     "GLUT -7.4505805969E-09 0.000000000E+00      0    0        3 ",
                     "GLGP -3.7252902985E-09 0.000000000E+00      0    0        0 ",
                     "GAUT  4.6566128731E-10 0.000000000E+00      8 2348        5 ",
                     "GAGP  2.3283064365E-10 0.000000000E+00      9 2348        0 ",
                     "BDUT -1.8626451492E-09 0.000000000E+00     14  435        7 ",
                     "IRUT  3.7252902985E-09 0.000000000E+00      7 2348        0 "}));
}

TEST(NavigationFile, NewerKindsStandAt401Alone) {
    LogBuilder log = smallLog();
    log.ge168(testsupport::modernGps(2)).ge160(testsupport::modernGps(8));
    for (const std::uint8_t flags : std::initializer_list<std::uint8_t>{0x08, 0x20, 0x40}) {
        log.cn152(testsupport::beidouOf(flags, 20));
    }
    const StandardRun old = runStandard(log.bytes());
    EXPECT_EQ(recordsOf(old), joined({gpsRecord, glonassRecord}));
    EXPECT_TRUE(
        contains(old.errors, "    records of kinds that 3.05 does not know (--rinex 4.01 has them): 5\n"));
    const StandardRun run = runStandard(log.bytes(), {"--rinex", "4.01"});
    std::map<std::string, std::ptrdiff_t> lengths;
    const Lines records = recordsOf(run);
    for (auto line = records.begin(); line != records.end();) {
        const auto next =
            std::find_if(line + 1, records.end(), [](const std::string& other) { return other[0] == '>'; });
        lengths[*line] = next - line - 1;
        line = next;
    }
    EXPECT_EQ(lengths, (std::map<std::string, std::ptrdiff_t>{{"> STO G07 LNAV", 2},
                                                              {"> ION G07 LNAV", 3},
                                                              {"> EPH G07 LNAV", 8},
                                                              {"> EPH G07 CNAV", 9},
                                                              {"> EPH G07 CNV2", 10},
                                                              {"> EPH C20 CNV1", 10},
                                                              {"> EPH C20 CNV2", 10},
                                                              {"> EPH C20 CNV3", 9},
                                                              {"> EPH R08 FDMA", 5}}));
    EXPECT_TRUE(contains(run.errors,
                         "  G: records CNAV 1 CNV2 1 ION 1 LNAV 1 STO 1\n"
                         "  R: records FDMA 1\n"
                         "  C: records CNV1 1 CNV2 1 CNV3 1\n"));
    EXPECT_FALSE(contains(run.errors, "left out:"));
}

TEST(NavigationFile, TermsWithoutSatelliteLeaveItBlank) {
    LogBuilder log;
    log.rd(2025, 1, 5).io(testsupport::ionoTerms());
    addEpoch(log, twoHours);
    const StandardRun run = runStandard(log.bytes(), {"--rinex", "4.01"});
    EXPECT_TRUE(run.files.contains("XXXX00XXX_R_20250050200_00U_MN.rnx"));
    EXPECT_EQ(labelled(run, "RINEX VERSION / TYPE"),
              Lines{"     4.01           N: GNSS NAV DATA    G                   "});
    ASSERT_EQ(recordsOf(run).size(), 4U);
    EXPECT_EQ(recordsOf(run)[0], "> ION G   LNAV");
}

TEST(NavigationFile, OffsetThatIsNotAgainstUtcNamesNone) {
    LogBuilder log;
    log.rd(2025, 1, 5).eu({.a0Gps = 0x1p-32F, .totGps = 7200, .weekGps = 300});
    addEpoch(log, twoHours);
    const Lines records = recordsOf(runStandard(log.bytes(), {"--rinex", "4.01"}));
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[0], "> STO E   IFNV");
    EXPECT_EQ(records[1], "    2025 01 05 02 00 00 GAGP");
}

// ---- leap seconds ----

TEST(NavigationFile, LeapSecondsOfTheDateWhereTheyMustStand) {
    LogBuilder log;
    log.rd(2016, 12, 31).ge123(testsupport::keplerOfWeek(300));
    addEpoch(log, twoHours);
    EXPECT_EQ(labelled(runStandard(log.bytes()), "LEAP SECONDS"), Lines{});
    EXPECT_EQ(labelled(runStandard(log.bytes(), {"--rinex", "4.01"}), "LEAP SECONDS"),
              Lines{"    17" + std::string(54, ' ')});
}

TEST(NavigationFile, NoLeapSecondsWithGlonassAloneWhereTheyMayBeLeftOut) {
    LogBuilder log;
    log.rd(2025, 1, 5).ne88(testsupport::glonassOf2025()).uo({.leapSeconds = 18});
    addEpoch(log, twoHours);
    const StandardRun old = runStandard(log.bytes());
    EXPECT_EQ(labelled(old, "RINEX VERSION / TYPE"),
              Lines{"     3.05           N: GNSS NAV DATA    R                   "});
    EXPECT_EQ(labelled(old, "LEAP SECONDS"), Lines{});
    EXPECT_EQ(labelled(runStandard(log.bytes(), {"--rinex", "4.01"}), "LEAP SECONDS"),
              Lines{"    18" + std::string(54, ' ')});
}

// ---- which file ----

TEST(NavigationFile, LogWithoutNavigationGivesNone) {
    const StandardRun run = runStandard(testsupport::logOfTimes({0}));
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_EQ(run.files.size(), 1U);
    EXPECT_TRUE(
        contains(run.errors, "orbconv-standard: no navigation file: the log holds no record for it\n"));
}

TEST(NavigationFile, RecordsOfNewerKindsAloneGiveNoneAt305) {
    LogBuilder log;
    log.rd(2025, 1, 5).ge168(testsupport::modernGps(2));
    addEpoch(log, twoHours);
    EXPECT_EQ(runStandard(log.bytes()).files.size(), 1U);
    EXPECT_EQ(runStandard(log.bytes(), {"--rinex", "4.01"}).files.size(), 2U);
}

TEST(NavigationFile, SystemsActOnIt) {
    LogBuilder log = smallLog();
    log.en(testsupport::galileoOf(0));  // of no known form
    const StandardRun run = runStandard(log.bytes(), {"--systems", "G"});
    EXPECT_EQ(recordsOf(run), gpsRecord);
    EXPECT_TRUE(run.files.contains("XXXX00XXX_R_20250050200_00U_MN.rnx"));
    EXPECT_FALSE(contains(run.errors, "form that is not known"));
    EXPECT_TRUE(contains(runStandard(log.bytes()).errors,
                         "  left out:\n    messages of a form that is not known: 1\n"));
}

TEST(NavigationFile, WindowAndIntervalDoNotActOnIt) {
    LogBuilder log = smallLog();
    addEpoch(log, twoHours + 30000);
    const StandardRun run = runStandard(log.take(), {"--start", "2025-01-05T02:00:30", "--interval", "30"});
    EXPECT_EQ(recordsOf(run), joined({gpsRecord, glonassRecord}));
    EXPECT_TRUE(run.files.contains("XXXX00XXX_R_20250050200_00U_MN.rnx"));
}

TEST(NavigationFile, LogWithoutAnEpochGivesItAlone) {
    LogBuilder log;
    log.rd(2025, 1, 5).time(twoHours).ge123(testsupport::keplerOfWeek(300));
    const StandardRun run = runStandard(log.bytes());
    EXPECT_EQ(run.exitStatus, 0);
    ASSERT_EQ(run.files.size(), 1U);
    EXPECT_EQ(run.files.begin()->first, "XXXX00XXX_R_20250050000_00U_MN.rnx");  // the time with the date
    EXPECT_EQ(recordsOf(run), gpsRecord);
    EXPECT_TRUE(
        run.errors.starts_with("orbconv-standard: no observation file: no epoch in it\n"
                               "orbconv-standard: written: "));
    EXPECT_EQ(runStandard(log.bytes(), {"--split", "1h"}).files.begin()->first,
              "XXXX00XXX_R_20250050000_01H_MN.rnx");
    EXPECT_EQ(runStandard(log.bytes(), {"--stdout", "nav", "-q"}).exitStatus, 0);
    const StandardRun refused = runStandard(log.bytes(), {"--stdout", "obs"});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_TRUE(contains(refused.errors, "--stdout: there is no epoch for an observation file\n"));
}

TEST(NavigationFile, DoesNotComeAloneWhereNoEpochIsAskedFor) {
    const StandardRun run = runStandard(smallLog().bytes(), {"--end", "2025-01-04"});
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_TRUE(run.files.empty());
    EXPECT_TRUE(contains(run.errors, "none of the 1 epochs in it can be written"));
}

TEST(NavigationFile, NameHasNoRate) {
    const orbconv::standard::FileNameFacts facts{
        .station = "ABCD00DNK",
        .first = *orbconv::reading::timeOfIsoText("2025-01-05T02:00"),
        .last = *orbconv::reading::timeOfIsoText("2025-01-05T02:59:30"),
        .intervalMs = 30000,
        .split = {}};
    EXPECT_EQ(orbconv::standard::longNameOf(facts, orbconv::standard::FileKind::navigation),
              "ABCD00DNK_R_20250050200_01H_MN.rnx");
}

TEST(NavigationFile, ExistingOneIsAnErrorUnlessForced) {
    const testsupport::OwnFolder folder;
    testsupport::writeBytes(folder.path() / "site.kvs", smallLog().bytes());
    const std::string navigation = "XXXX00XXX_R_20250050200_00U_MN.rnx";
    testsupport::writeBytes(folder.path() / navigation, "mine\n");
    std::string errors;
    EXPECT_EQ(testsupport::runWithArguments({folder.file("site.kvs")}, errors), 1);
    EXPECT_TRUE(contains(errors, navigation + " exists; --force overwrites it"));
    EXPECT_EQ(folder.names(), (Lines{navigation, "site.kvs"}));
    EXPECT_EQ(testsupport::runWithArguments({"-q", "--force", folder.file("site.kvs")}, errors), 0);
    EXPECT_EQ(errors, "");
    EXPECT_TRUE(testsupport::textOfFile(folder.path() / navigation).starts_with("     3.05 "));
}

// ---- reception ----

TEST(NavigationFile, MessagesAheadOfTheDateTakeTheFirstOne) {
    LogBuilder log;
    log.ge123(testsupport::keplerOfWeek(300 - 2048)).ne88(testsupport::glonassOf2025());
    addEpoch(log, twoHours);
    log.rd(2025, 1, 5);
    addEpoch(log, twoHours + 1000);
    EXPECT_EQ(recordsOf(runStandard(log.take())), joined({gpsRecord, glonassRecord}));
}

TEST(NavigationFile, GivenDateCountsFromTheFirstMessageOn) {
    LogBuilder log;
    log.ne88(testsupport::glonassOf2025());
    addEpoch(log, twoHours);
    EXPECT_EQ(recordsOf(runStandard(log.take(), {"--date", "2025-01-05"})), glonassRecord);
}

TEST(NavigationFile, MidnightInsideAnEpochIsTheNextDay) {
    // The day number is none, so the day is that of the reception.
    LogBuilder log;
    log.rd(2025, 1, 4);
    addEpoch(log, 86399000);
    auto glonass = testsupport::glonassOf2025();
    glonass.dayNumber = 0;
    glonass.tb = 4 * 3600;
    log.time(1000).ne88(glonass);
    testsupport::addRangeOfGps7(log);
    const Lines records = recordsOf(runStandard(log.td().take()));
    ASSERT_EQ(records.size(), 5U);
    EXPECT_TRUE(records[0].starts_with("R08 2025 01 05 01 00 00"));
}

TEST(NavigationFile, LogsOnUtcAreTakenToGpsTime) {
    // 23:59:52 of UTC is ten seconds behind midnight of GPS time.
    LogBuilder log;
    log.rd(2025, 1, 4, 1).io(testsupport::ionoTerms());
    addEpoch(log, 86392000);
    log.io(testsupport::ionoTerms());
    auto other = testsupport::ionoTerms();
    other.beta3 = 0;
    log.io(other);
    const Lines records = recordsOf(runStandard(log.take(), {"--rinex", "4.01"}));
    ASSERT_EQ(records.size(), 8U);
    EXPECT_TRUE(records[1].starts_with("    2025 01 04 00 00 18 "));
    EXPECT_TRUE(records[5].starts_with("    2025 01 05 00 00 10 "));
}

TEST(NavigationFile, SummaryTellsOfRepetitionsAndUnusableMessages) {
    auto wrong = testsupport::keplerOfWeek(300);
    wrong.sqrtA = 1e200;
    LogBuilder log = smallLog();
    log.ge123(testsupport::keplerOfWeek(300)).ge123(wrong);
    const StandardRun run = runStandard(log.take());
    EXPECT_EQ(run.exitStatus, 0);
    const std::size_t observations = run.errors.find("orbconv-standard: written: ");
    EXPECT_NE(run.errors.find("orbconv-standard: written: ", observations + 1), std::string::npos);
    EXPECT_TRUE(contains(run.errors,
                         "XXXX00XXX_R_20250050200_00U_MN.rnx\n"
                         "  G: records LNAV 1\n"
                         "  R: records FDMA 1\n"
                         "  repetitions of these: 1\n"
                         "  left out:\n"
                         "    messages with a satellite, time or number that a record cannot show: 1\n"));
}

}  // namespace
