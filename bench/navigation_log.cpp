// Writes a log that is nearly all ephemerides, for the measure of how the navigation tables behave when they
// are full: so many messages of each of the five systems, so many of them distinct, in no order of time.
//
//     orbconv_navigation_log FILE MESSAGES DISTINCT
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "samplelog/log_builder.h"

namespace {

// Distinct satellites and times one after the other in an order that looks like none: 7919 is a prime.
struct Place {
    std::uint8_t sv;
    std::int32_t time;
};
Place placeOf(long message, long distinct) {
    const long shuffled = message % distinct * 7919 % distinct;
    return {.sv = static_cast<std::uint8_t>(1 + shuffled % 24),
            .time = static_cast<std::int32_t>(16 * (shuffled / 24))};
}

void addEphemerides(samplelog::LogBuilder& log, const Place& place) {
    const samplelog::KeplerBlock kepler{
        .sv = place.sv, .toc = place.time, .week = 300, .toe = place.time, .sqrtA = 5153.6, .e = 0.01};
    log.ge123(kepler).ie(kepler);
    log.en({.kepler = kepler, .navFlags = 1});
    log.cn134({.kepler = kepler, .navFlags = 1});
    log.ne88({.sv = place.sv, .dayNumber = 100, .tk = place.time, .tb = place.time, .x = 12345.678});
}

}  // namespace

int main(int argc, char* argv[]) {
    const long messages = argc == 4 ? std::atol(argv[2]) : 0;
    const long distinct = argc == 4 ? std::atol(argv[3]) : 0;
    if (messages <= 0 || distinct <= 0) {
        std::fputs("usage: orbconv_navigation_log FILE MESSAGES DISTINCT\n", stderr);
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary);
    samplelog::LogBuilder log;
    log.rd(2025, 6, 17);
    for (long i = 0; i < messages; ++i) {
        addEphemerides(log, placeOf(i, distinct));
        if (i % 1000 == 999 || i + 1 == messages) {
            file << log.take();
        }
    }
    return file.good() ? 0 : 1;
}
