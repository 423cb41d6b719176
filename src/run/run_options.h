// The settings of a run.
#pragma once

#include <string>
#include <string_view>

#include "run/constellation.h"

namespace orbconv {

inline constexpr std::string_view programVersion = "v.0.0.10a";

struct RunOptions {
    // 3.05, 4.0 or 4.01; a run with another ends at once.
    double rinexVersion = 3.05;

    bool includeGps = true;
    bool includeGlonass = true;
    bool includeGalileo = true;
    bool includeBeidou = true;
    bool includeNavic = true;
    // Deliberate: nothing ever sets these three, so QZSS, SBAS and GLONASS CDMA reach no output, and
    // their options clear what is clear already.
    bool includeQzss = false;
    bool includeSbas = false;
    bool includeGlonassCdma = false;

    // As given. The names of the output files begin with it, without its last four characters.
    std::string inputFileName;

    // Metres.
    double antennaDeltaH = 0.0;
    double antennaDeltaE = 0.0;
    double antennaDeltaN = 0.0;
    std::string antennaNumber = "-Unknown-";
};

constexpr PerConstellation<bool> includedConstellations(const RunOptions& options) {
    return {options.includeGps,  options.includeGlonass,    options.includeGalileo,
            options.includeQzss, options.includeBeidou,     options.includeNavic,
            options.includeSbas, options.includeGlonassCdma};
}

// From this version on there is one mixed navigation file, and its records have "> EPH" lines.
constexpr bool isRinex4(double rinexVersion) {
    return rinexVersion >= 4.0;
}

}  // namespace orbconv
