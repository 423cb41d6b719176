// The strict reader of navigation files takes good ones, and refuses each that a little damage made bad.
#include "companions/standard/support/strict_navigation_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {
namespace strictNavigationReaderTest {

using testsupport::readNavigationStrictly;
using testsupport::StrictNavigation;
using Complaints = std::vector<std::string>;

const std::string programLine =
    "me                                      20250105 120000 UTC PGM / RUN BY / DATE\n";
const std::string endOfHeader = "                                                            END OF HEADER\n";

// 2025-01-05 is the first day of week 2348 of GPS.
const std::string gpsRecord =
    "G07 2025 01 05 02 00 00 2.441406250000E-04 9.094947017729E-13 0.000000000000E+00\n"
    "     3.300000000000E+01-1.025000000000E+01 1.170334463414E-08 1.570796326795E+00\n"
    "     9.536743164062E-07 7.812500000000E-03 4.768371582031E-07 5.153500000000E+03\n"
    "     7.200000000000E+03 2.384185791016E-07-7.853981633974E-01-1.192092895508E-07\n"
    "     9.817477042468E-01 2.005000000000E+02 3.141592653590E+00-2.340668926827E-08\n"
    "     5.851672317069E-09 0.000000000000E+00 2.348000000000E+03 1.000000000000E+00\n"
    "     2.800000000000E+00 5.000000000000E+00 9.313225746155E-10 1.000000000000E+02\n"
    "     7.000000000000E+03 4.000000000000E+00\n";
const std::string galileoRecord =
    "E12 2025 01 05 02 00 00 2.441406250000E-04 9.094947017729E-13 0.000000000000E+00\n"
    "     3.300000000000E+01-1.025000000000E+01 1.170334463414E-08 1.570796326795E+00\n"
    "     9.536743164062E-07 7.812500000000E-03 4.768371582031E-07 5.153500000000E+03\n"
    "     7.200000000000E+03 2.384185791016E-07-7.853981633974E-01-1.192092895508E-07\n"
    "     9.817477042468E-01 2.005000000000E+02 3.141592653590E+00-2.340668926827E-08\n"
    "     5.851672317069E-09 5.170000000000E+02 2.348000000000E+03\n"
    "     3.120000000000E+00 0.000000000000E+00 9.313225746155E-10 1.000000000000E-10\n"
    "     7.000000000000E+03\n";
const std::string glonassRecord =
    "R08 2025 01 05 02 15 00-6.103515625000E-05 9.094947017729E-13 7.230000000000E+03\n"
    "     1.000050000000E+04 1.500000000000E+00 9.313225746155E-10 1.000000000000E+00\n"
    "    -2.000025000000E+04-2.500000000000E+00-1.862645149231E-09-7.000000000000E+00\n"
    "     3.000125000000E+03 3.500000000000E+00 3.725290298462E-09 2.000000000000E+00\n"
    "                        9.999999999990E+08 1.500000000000E+01\n";

std::string file305() {
    return "     3.05           N: GNSS NAV DATA    M                   RINEX VERSION / TYPE\n" +
           programLine +
           "GPSA   1.4901E-08  2.9802E-08 -5.9605E-08  1.1921E-07       IONOSPHERIC CORR\n"
           "BDSA   1.4901E-08  2.9802E-08 -5.9605E-08  1.1921E-07 B 20  IONOSPHERIC CORR\n"
           "GPUT  9.3132257462E-10 8.881784197E-16 345600 2348   G10  2 TIME SYSTEM CORR\n"
           "GLUT -7.4505805969E-09 0.000000000E+00      0    0        3 TIME SYSTEM CORR\n"
           "    18                                                      LEAP SECONDS\n" +
           endOfHeader + gpsRecord + galileoRecord + glonassRecord;
}

std::string file401() {
    return "     4.01           N: GNSS NAV DATA    M                   RINEX VERSION / TYPE\n" +
           programLine +
           "anything                                                    COMMENT\n"
           "    18                                                      LEAP SECONDS\n" +
           endOfHeader +
           "> STO G07 LNAV\n"
           "    2025 01 09 00 00 00 GPUT                                  UTC(USNO)\n"
           "     0.000000000000E+00 9.313225746155E-10 8.881784197001E-16 0.000000000000E+00\n"
           "> STO E   IFNV\n"
           "    2025 01 05 02 00 00 GAGP\n"
           "     0.000000000000E+00 9.313225746155E-10 8.881784197001E-16 0.000000000000E+00\n"
           "> ION E12 IFNV\n"
           "    2025 01 05 02 00 00 7.550000000000E+01 2.500000000000E-01 7.812500000000E-03\n"
           "     9.000000000000E+00\n"
           "> EPH G07 LNAV\n" +
           gpsRecord + "> EPH E12 INAV\n" + galileoRecord + "> EPH R08 FDMA\n" + glonassRecord;
}

struct Damage {
    const char* what;
    std::string_view good, bad;
};

// Each of the damages alone, at the first place that it fits, must be noticed.
void expectRefused(const std::string& file, const std::vector<Damage>& damages) {
    for (const Damage& damage : damages) {
        std::string damaged = file;
        const std::size_t place = damaged.find(damage.good);
        ASSERT_NE(place, std::string::npos) << damage.what;
        damaged.replace(place, damage.good.size(), damage.bad);
        EXPECT_NE(readNavigationStrictly(damaged).complaints, Complaints{}) << damage.what;
    }
}

TEST(StrictNavigationReader, TakesGoodFiles) {
    const StrictNavigation old = readNavigationStrictly(file305());
    EXPECT_EQ(old.complaints, Complaints{});
    EXPECT_EQ(old.records,
              (std::map<std::string, std::size_t>{{"EPH G LNAV", 1}, {"EPH E INAV", 1}, {"EPH R FDMA", 1}}));
    const StrictNavigation newer = readNavigationStrictly(file401());
    EXPECT_EQ(newer.complaints, Complaints{});
    EXPECT_EQ(newer.records, (std::map<std::string, std::size_t>{{"STO G LNAV", 1},
                                                                 {"STO E IFNV", 1},
                                                                 {"ION E IFNV", 1},
                                                                 {"EPH G LNAV", 1},
                                                                 {"EPH E INAV", 1},
                                                                 {"EPH R FDMA", 1}}));
}

TEST(StrictNavigationReader, RefusesOtherHeaders) {
    expectRefused(file305(), {{"version", "3.05", "3.04"},
                              {"type of file", "N: GNSS", "O: GNSS"},
                              {"system letter", "M                   RINEX", "G                   RINEX"},
                              {"label of 4.01 alone", "IONOSPHERIC CORR", "STATION INFORMATION"},
                              {"label off by a column", "    LEAP SECONDS", "     LEAP SECONDS"},
                              {"date", "20250105 120000", "2025 105 120000"},
                              {"second line", "PGM / RUN BY / DATE", "COMMENT"},
                              {"term twice", "BDSA", "GPSA"},
                              {"unknown term", "GLUT", "GLGA"},
                              {"BeiDou without hour", "B 20", "  20"},
                              {"GPS with hour", "1.1921E-07       IONO", "1.1921E-07 B 20  IONO"},
                              {"digits of a term", "  2.9802E-08", " 2.98023E-08"},
                              {"week of GLONASS", "     0    0 ", "     0 2348 "},
                              {"name of a satellite", "  G10  2", "  X10  2"},
                              {"clock of UTC", "  G10  2", "  G10  9"},
                              {"leap seconds", "    18  ", "    18 1"},
                              {"second end", "END OF HEADER\n", "END OF HEADER\n" + endOfHeader},
                              {"letter of exponents", "1.4901E-08", "1.4901D-08"}});
    expectRefused(file401(), {{"label of 3.05 alone", "COMMENT", "IONOSPHERIC CORR"},
                              {"no leap seconds", "    18", "COMMENT\n"}});
}

TEST(StrictNavigationReader, RefusesOtherRecords) {
    expectRefused(file305(),
                  {{"satellite", "G07 2025", "G00 2025"},
                   {"system", "G07 2025", "J07 2025"},
                   {"month", "2025 01 05 02 00", "2025 13 05 02 00"},
                   {"day", "2025 01 05 02 00", "2025 01 32 02 00"},
                   {"second", "02 15 00", "02 15 60"},
                   {"blank for zero", " 01 05 02", "  1  5  2"},
                   {"blank field", "-1.025000000000E+01", std::string_view("                   ")},
                   {"column", " 7.812500000000E-03 4", "  7.812500000000E-03 4"},
                   {"three digits of exponent", " 9.817477042468E-01", " 9.81747704247E-001"},
                   {"infinity", " 9.817477042468E-01", "                inf"},
                   {"spare filled", "4.000000000000E+00\n", "4.000000000000E+00 0.000000000000E+00\n"},
                   {"line lost", "     2.800000000000E+00 5", "COMMENT\n     2.8E+00 5"},
                   {"week", "2.348000000000E+03 1", "2.349000000000E+03 1"},
                   {"data source", "5.170000000000E+02", "5.120000000000E+02"},
                   {"order", "G07 2025 01 05 02 00", "G07 2025 01 05 02 30"},
                   {"order of systems", "E12 2025", "G06 2025"},
                   {"three lines of GLONASS",
                    "                        9.999999999990E+08 "
                    "1.500000000000E+01\n",
                    ""},
                   {"letter of exponents", "2.441406250000E-04", "2.441406250000D-04"}});
}

TEST(StrictNavigationReader, RefusesOtherHeads) {
    expectRefused(file401(),
                  {{"no head", "> EPH G07 LNAV\n", ""},
                   {"type", "> EPH G07 LNAV", "> EPH G07 CNAV"},
                   {"unknown type", "> EPH G07 LNAV", "> EPH G07 L1NV"},
                   {"satellite", "> EPH G07 LNAV", "> EPH G08 LNAV"},
                   {"no satellite", "> EPH G07 LNAV", "> EPH G   LNAV"},
                   {"column of the type", "> EPH G07 LNAV", "> EPH G07  LNAV"},
                   {"class", "> STO G07 LNAV", "> EOP G07 LNAV"},
                   {"pair of another system", "00 GPUT ", "00 GAUT "},
                   {"name of UTC", "UTC(USNO)", "UTC(SU)"},
                   {"no name of UTC", "UTC(USNO)", "         "},
                   {"name of UTC without sense", "GAGP\n", "GAGP                                  UTCGAL\n"},
                   {"line of an ionosphere", "     9.000000000000E+00\n", ""},
                   {"source of the other kind", "> EPH E12 INAV", "> EPH E12 FNAV"}});
}

TEST(StrictNavigationReader, RefusesCutFiles) {
    const std::string file = file401();
    for (std::size_t end = file.find('\n'); end + 1 < file.size(); end = file.find('\n', end + 1)) {
        // A whole record less is a good file again, once there is one.
        if (end < file.find("> STO E") || !file.substr(end + 1).starts_with('>')) {
            EXPECT_NE(readNavigationStrictly(file.substr(0, end + 1)).complaints, Complaints{}) << end;
        }
    }
    EXPECT_NE(readNavigationStrictly(file.substr(0, file.size() - 1)).complaints, Complaints{});
    EXPECT_NE(readNavigationStrictly("").complaints, Complaints{});
}

}  // namespace strictNavigationReaderTest
}  // namespace
