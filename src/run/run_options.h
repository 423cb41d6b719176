// The settings of a run, and the values that the run itself sets for everyone.
#pragma once

#include <string>
#include <string_view>

#include "run/constellation.h"

namespace orbconv {

inline constexpr std::string_view programVersion = "v.0.0.10a";

struct RunOptions {
    // 3.05, 4.0 or 4.01, compared for exact equality everywhere.
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

    // As given; the run cuts its last four characters after the survey pass.
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

// The computer's clock in UTC, taken once after the survey pass. Not the time of the observations.
struct RunStamp {
    int year = 0;  // four digits
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

}  // namespace orbconv
