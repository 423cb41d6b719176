// Small logs of observations, and the header lines that their identity messages give.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "samplelog/log_builder.h"
#include "support/conversion.h"
#include "support/obs_text.h"

namespace testsupport {

// One message family of an epoch, an element a satellite in the order of the list. A message without
// elements is left out. The full ranges of the first family stand in ObservedEpoch.
struct BandValues {
    samplelog::Band band = samplelog::Band::c;
    std::vector<std::int16_t> ranges = {};
    std::vector<std::int32_t> phases = {};
    std::vector<std::int16_t> dopplers = {};
    std::vector<std::uint8_t> strengths = {};
    std::vector<std::uint16_t> flags = {};
};

struct ObservedEpoch {
    std::vector<samplelog::Satellite> satellites = {};
    std::vector<std::uint8_t> slots = {};  // NN
    std::vector<std::int32_t> ranges = {};
    std::vector<std::int32_t> referenceDopplers = {};
    std::vector<BandValues> bands = {};
};

// The epoch's messages from its list to its TD.
inline void addEpoch(samplelog::LogBuilder& log, const ObservedEpoch& epoch) {
    log.sx(epoch.satellites);
    const auto add = [&log](const auto& values, auto message) {
        if (!values.empty()) {
            message(log, values);
        }
    };
    using samplelog::LogBuilder;
    add(epoch.slots, [](LogBuilder& to, const auto& values) { to.nn(values); });
    add(epoch.ranges, [](LogBuilder& to, const auto& values) { to.rx(values); });
    add(epoch.referenceDopplers, [](LogBuilder& to, const auto& values) { to.dx(values); });
    for (const BandValues& family : epoch.bands) {
        const samplelog::Band band = family.band;
        add(family.ranges, [band](LogBuilder& to, const auto& values) { to.rangeDeltas(band, values); });
        add(family.phases, [band](LogBuilder& to, const auto& values) { to.phases(band, values); });
        add(family.dopplers, [band](LogBuilder& to, const auto& values) { to.dopplerDeltas(band, values); });
        add(family.strengths, [band](LogBuilder& to, const auto& values) { to.strengths(band, values); });
        add(family.flags, [band](LogBuilder& to, const auto& values) { to.flags(band, values); });
    }
    log.td();
}

// Marker, receiver, antenna, position, clock offset 0.000123456789 s and 18 leap seconds.
inline void addIdentity(samplelog::LogBuilder& log) {
    log.kvMarker("PIER");
    log.pmParameters(
        {{"rcv/id=", "ABCDEFGHIJKLMNOPQRST"}, {"rcv/igs=", "TYPE-7"}, {"rcv/ver/main=", "4.2 build 11"}});
    log.antennaType("DISC NONE");
    log.pv({-2700123.5, 12.25, 4500000.0625});
    log.to(0.000123456789);
    log.uo({.a0 = 1e-9, .leapSeconds = 18});
}

// Converts with antenna options and the version ("3.05", "4.00", "4.01").
inline Conversion convertObservations(const std::string& log, const std::string& version,
                                      const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments = {"-rv", version, "-DH", "1.2345", "-DE",
                                          "0.5", "-DN",   "2",   "-AN",    "A-17"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return convert(log, arguments);
}

// Records 1 to 8 of the header behind addIdentity and convertObservations, with the run's date in zeros.
inline std::vector<std::string> openingLines(const std::string& version, const std::string& letter) {
    return {
        "     " + version + "           OBSERVATION DATA    " + letter + blanks(19) + "RINEX VERSION / TYPE",
        "ORBCONV v.0.0.10a   ZENTA GNSS          00000000 000000 UTC PGM / RUN BY / DATE",
        "                                                            OBSERVER / AGENCY",
        "PIER                                                        MARKER NAME",
        "ABCDEFGHIJKLMNOPQRSTTYPE-7              4.2 build 11        REC # / TYPE / VERS",
        " -2700123.5000       12.2500  4500000.0625                  APPROX POSITION XYZ",
        "A-17                DISC NONE                               ANT # / TYPE",
        "        1.2345        0.5000        2.0000                  ANTENNA: DELTA H/E/N"};
}

// The two GLONASS records of a log that holds no GLONASS satellite.
inline std::vector<std::string> emptyGlonassLines() {
    return {"  0                                                         GLONASS SLOT / FRQ #",
            "        GLONASS COD/PHS/BIS"};
}

inline std::vector<std::string> joined(std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> all;
    for (const std::vector<std::string>& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

}  // namespace testsupport
