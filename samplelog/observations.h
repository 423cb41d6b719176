// One epoch's measurements as the arrays of the log hold them.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "constellation.h"
#include "geometry.h"
#include "log_builder.h"
#include "random.h"
#include "signals.h"

namespace samplelog {

// Element i of every array belongs to element i of `satellites`, but for `slots`, which has an element for
// each GLONASS satellite. Arrays by family are in the order of Band.
struct EpochArrays {
    std::vector<Satellite> satellites;
    std::vector<std::uint8_t> slots;
    std::vector<std::int32_t> codeRanges;                          // `rc`
    std::vector<std::int32_t> ranges;                              // `rx`
    std::vector<std::int32_t> dopplers;                            // `DC`
    std::vector<std::int32_t> dopplerReferences;                   // `DX`
    std::array<std::vector<std::int16_t>, bandCount> rangeDeltas;  // the first stays unused
    std::array<std::vector<std::int32_t>, bandCount> phases;
    std::array<std::vector<std::int16_t>, bandCount> dopplerDeltas;
    std::array<std::vector<std::uint8_t>, bandCount> strengths;
    std::array<std::vector<std::uint16_t>, bandCount> flags;
};

// The receiver's clock at an epoch.
struct ReceiverClock {
    double offset = 0.0;  // seconds ahead of system time
    double rate = 0.0;    // s/s
};

// What an epoch's measurement of one satellite starts from.
struct Sighting {
    const SatelliteModel& satellite;
    LineOfSight view;
    double time = 0.0;           // seconds since time 0 of the orbits
    BandMask present = 0;        // bands that the receiver tracks now
    std::uint64_t phaseKey = 0;  // stands for the satellite's pass: each pass has its own phase ambiguities
};

// Empties the arrays and keeps their storage.
void clearArrays(EpochArrays& arrays);

// Appends one satellite to all arrays.
void addSighting(EpochArrays& arrays, const Sighting& sighting, const ReceiverClock& clock,
                 NoiseSource& noise);

// Writes the list and all arrays, in the order in which a receiver sends them.
void writeArrays(const EpochArrays& arrays, LogBuilder& log);

}  // namespace samplelog
