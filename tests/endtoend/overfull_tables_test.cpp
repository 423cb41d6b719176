// A log with more navigation messages of every kind than its table has room for: the run ends well, and the
// file has what the table holds.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "samplelog/log_builder.h"
#include "support/conversion.h"

namespace {

using samplelog::LogBuilder;

// No two of one satellite and time.
void addEphemerides(LogBuilder& log, int count) {
    for (int i = 0; i < count; ++i) {
        const samplelog::KeplerBlock orbit = {.sv = static_cast<std::uint8_t>(1 + i % 30), .toe = 16 * i};
        log.ge123(orbit)
            .en({.kepler = orbit, .navFlags = 1})
            .cn134({.kepler = orbit, .navFlags = 1})
            .ie(orbit);
        log.ne88({.sv = orbit.sv, .tk = orbit.toe, .tb = orbit.toe});
    }
}

// No two alike, no coefficient 0.
void addIonosphere(LogBuilder& log, int count) {
    for (int i = 1; i <= count; ++i) {
        const samplelog::IonoBody body = {.alpha0 = static_cast<float>(i)};
        log.io(body).ii(body).ci(body);
    }
}
void addTimeOffsets(LogBuilder& log, int count) {
    for (int i = 1; i <= count; ++i) {
        const samplelog::TimeOffsetBody body = {.a0 = static_cast<double>(i)};
        log.uo(body).cu(body).iu(body).eu({.utc = body});
    }
}

TEST(OverfullTables, GiveAsManyRecordsAsTheyHaveRoomFor) {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    addEphemerides(log, 10050);
    addIonosphere(log, 600);
    addTimeOffsets(log, 150);
    const auto run = testsupport::convert(log.bytes(), {"-rv", "4.01"});
    EXPECT_EQ(run.exitStatus, 0);

    std::map<std::string, int> records;
    for (const std::string& line : run.lines('p')) {
        if (line.starts_with("> ")) {
            ++records[line.substr(2, 5)];
        }
    }
    // The ionosphere tables start over at 499 and 99 records, those of the NavIC time offset at 99; the other
    // time offsets stop at 100. GLONASS has one time offset, and Galileo's ionosphere is one record that
    // bears the letter of BeiDou.
    const std::map<std::string, int> expected = {
        {"EPH G", 10000}, {"EPH R", 10000}, {"EPH E", 10000},  {"EPH C", 10000}, {"EPH I", 10000},
        {"ION G", 499},   {"ION I", 499},   {"ION C", 99 + 1}, {"STO G", 100},   {"STO C", 100},
        {"STO I", 99},    {"STO E", 100},   {"STO R", 1}};
    EXPECT_EQ(records, expected);
}

}  // namespace
