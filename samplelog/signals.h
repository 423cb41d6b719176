// What the log's measurement messages mean for each system: the signal behind each message family, and the
// units and references in which its values are told.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace samplelog {

inline constexpr std::size_t bandCount = 6;

// A bit for each of the six families, family `c` in bit 0.
using BandMask = unsigned;

constexpr BandMask bandBit(std::size_t band) {
    return 1U << band;
}

// The bands of one satellite. Every measurement of the log is the sum of a reference and a small difference:
// ranges and phases refer to the `rx` value, Doppler to the `DX` value.
struct SignalPlan {
    double rangeUnit = 0.0;                      // seconds per count of the full range
    double rangeOffset = 0.0;                    // seconds that a count of 0 stands for
    double dopplerReference = 0.0;               // Hz: carrier to which all Doppler values are scaled
    std::array<double, bandCount> carrier = {};  // Hz; 0 where the system has no such band
};

// `channel` is the frequency channel of a GLONASS satellite; the other systems have none.
SignalPlan signalPlanOf(std::uint8_t systemCode, int channel);

}  // namespace samplelog
