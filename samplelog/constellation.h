// The satellites of the five systems: numbers, orbits, clocks and signals.

#pragma once

#include <cstdint>
#include <vector>

#include "geometry.h"
#include "signals.h"

namespace samplelog {

struct SatelliteModel {
    std::uint8_t systemCode = 0;
    int number = 0;   // satellite number; for GLONASS the orbit slot
    int channel = 0;  // GLONASS frequency channel
    Orbit orbit;
    double clockOffset = 0.0;  // seconds at time 0
    double clockRate = 0.0;    // s/s
    BandMask bands = 0;
    SignalPlan signals;
};

// All satellites, system by system. The seed turns the orbits and sets the clocks; numbers, channels and
// bands are always the same.
std::vector<SatelliteModel> makeConstellation(std::uint64_t seed);

}  // namespace samplelog
