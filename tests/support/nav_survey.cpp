#include "support/nav_survey.h"

#include "log/message_reader.h"
#include "navdecode/decoder_table.h"
#include "support/staging.h"

namespace testsupport {

using namespace orbconv;

NavSurvey& NavSurvey::feed(std::string_view log) {
    LogStream stream(bytesOf(log));
    while (!stream.atEnd()) {
        const MessageId id = readMessage(stream, *staging_);
        if (id == MessageId("RD") || id == MessageId("~~")) {
            setEpochClockFromRd(clocks, *staging_);
        } else {
            decodeNavigation(id, *staging_, clocks, *tables_);
        }
    }
    return *this;
}

std::string bodyWithField(std::size_t size, std::size_t offset, std::size_t width, std::uint64_t value) {
    std::string body(size, '\xFF');
    for (std::size_t i = 0; i < width; ++i) {
        body[offset + i] = static_cast<char>(value >> (8 * i) & 0xFFU);
    }
    return body;
}

KeplerBlock numberedKepler(std::int32_t sv) {
    KeplerBlock kepler{};
    kepler.sv = sv;
    kepler.af0 = 1;
    kepler.af1 = 2;
    kepler.af2 = 3;
    kepler.iode = 4;
    kepler.Crs = 5;
    kepler.deltaN = 6;
    kepler.M0 = 7;
    kepler.Cuc = 8;
    kepler.e = 9;
    kepler.Cus = 10;
    kepler.sqrtA = 11;
    kepler.toe = 12;
    kepler.Cic = 13;
    kepler.Omega0 = 14;
    kepler.Cis = 15;
    kepler.i0 = 16;
    kepler.Crc = 17;
    kepler.omega = 18;
    kepler.OmegaDot = 19;
    kepler.IDOT = 20;
    kepler.week = 21;
    kepler.accuracy = 22;
    kepler.health = 23;
    kepler.tgd = 24;
    kepler.iodc = 25;
    kepler.tot = 26;
    return kepler;
}

ClockReading recordEpoch() {
    return {.year = 2024, .month = 3, .day = 5, .hour = 6, .minute = 7, .second = 8, .timeBase = 0};
}

}  // namespace testsupport
