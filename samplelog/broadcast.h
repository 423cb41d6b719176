// What the satellites broadcast: ephemerides of their orbits, the ionosphere, and time offsets.

#pragma once

#include <cstdint>

#include "constellation.h"
#include "log_builder.h"

namespace samplelog {

// Where the time of the orbits and the systems' own times meet.
struct BroadcastTime {
    std::int64_t orbitZero = 0;  // GPS seconds (from 1980-01-06) of the orbits' time 0
    std::int64_t now = 0;        // GPS seconds
};

// Number of the set that a satellite broadcasts at `gpsSeconds`; a new one means new ephemerides.
std::int64_t issueAt(const SatelliteModel& satellite, std::int64_t gpsSeconds);

// Writes the satellite's ephemeris in each form that it broadcasts: `GE`, `NE`, `EN`, `CN` or `IE`.
void writeEphemeris(const SatelliteModel& satellite, const BroadcastTime& time, std::uint64_t seed,
                    LogBuilder& log);

// Writes the ionosphere and time-offset messages of all systems. Their contents change every six hours.
void writeCorrections(std::int64_t gpsSeconds, std::uint64_t seed, LogBuilder& log);

// Writes almanac messages, which a receiver sends as they come in.
void writeAlmanacs(std::int64_t gpsSeconds, std::uint64_t seed, LogBuilder& log);

}  // namespace samplelog
