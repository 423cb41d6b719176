// What of a log goes into the files: the version that they are written in, systems, window, thinning.
#pragma once

#include <cstdint>
#include <optional>

#include "assembly/signals.h"
#include "reading/log_time.h"
#include "run/constellation.h"

namespace orbconv::standard {

enum class RinexVersion : std::uint8_t { v305, v401 };

// The constellations that can be written: those with observation messages and letters in the standard.
inline constexpr PerConstellation<bool> writableConstellations = {
    // GPS GLONASS Galileo QZSS BeiDou NavIC SBAS CDMA
    true, true, true, false, true, true, false, false};

struct Selection {
    RinexVersion version = RinexVersion::v305;
    PerConstellation<bool> systems = writableConstellations;
    std::optional<reading::LogTime> start;   // the first time that is taken
    std::optional<reading::LogTime> end;     // the last time that is taken
    std::optional<std::int64_t> intervalMs;  // epochs on whole multiples of it since midnight; above 0
};

// Whether a signal has a code in the version: NavIC L1 has one from 4.01 on.
constexpr bool isWritable(Constellation constellation, std::size_t band, RinexVersion version) {
    const bool isNavicL1 = constellation == Constellation::navic && band == bands::l;
    return !signalCodes[band][indexOf(constellation)].empty() &&
           (!isNavicL1 || version == RinexVersion::v401);
}

}  // namespace orbconv::standard
