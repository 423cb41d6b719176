// What of a log goes into the files: the version that they are written in, systems, window, thinning.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "assembly/signals.h"
#include "reading/log_time.h"
#include "run/constellation.h"

namespace orbconv::standard {

enum class RinexVersion : std::uint8_t { v305, v401 };

// Files of a whole hour or a whole day each.
enum class Split : std::uint8_t { hour, day };
constexpr std::chrono::milliseconds lengthOf(Split split) {
    return split == Split::hour ? std::chrono::hours{1} : std::chrono::hours{24};
}
// The start of the whole hour or day that a time is of.
constexpr reading::LogTime partStartOf(reading::LogTime time, Split split) {
    const auto sinceDay = time - std::chrono::floor<std::chrono::days>(time);
    return time - sinceDay % lengthOf(split);
}

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
    std::optional<Split> split;              // else all goes into one pair of files
};

// Whether a signal has a code in the version: NavIC L1 has one from 4.01 on.
constexpr bool isWritable(Constellation constellation, std::size_t band, RinexVersion version) {
    const bool isNavicL1 = constellation == Constellation::navic && band == bands::l;
    return !signalCodes[band][indexOf(constellation)].empty() &&
           (!isNavicL1 || version == RinexVersion::v401);
}

}  // namespace orbconv::standard
