// A receiver at one site, through a stretch of time: it greets, then sends an epoch after the other.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "calendar.h"
#include "constellation.h"
#include "geometry.h"
#include "log_builder.h"
#include "observations.h"
#include "random.h"

namespace samplelog {

struct ScenarioOptions {
    std::int64_t epochCount = 600;
    std::int64_t intervalMs = 1000;
    std::uint64_t seed = 1;
    CivilTime start = {{2025, 6, 17}, 21600};
};

// A satellite that the receiver follows.
struct Track {
    std::size_t satellite = 0;  // place in the constellation
    std::int64_t sinceMs = 0;
    std::int64_t sentIssue = -1;  // the last ephemeris that went into the log
    LineOfSight view;
};

// What the receiver remembers from epoch to epoch. Its size doesn't depend on the length of the log.
struct Scenario {
    ScenarioOptions options;
    Site site;
    std::vector<SatelliteModel> satellites;
    std::vector<bool> isTracked;
    std::vector<Track> tracks;   // in the order of their rising
    std::int64_t startMs = 0;    // GPS milliseconds (from 1980-01-06) of the first epoch
    std::int64_t orbitZero = 0;  // GPS seconds of the orbits' time 0, the midnight before
    std::int64_t correctionsSent = -1;
    EpochArrays arrays;
    NoiseSource noise;
};

Scenario makeScenario(const ScenarioOptions& options);

// Appends the messages ahead of the first epoch: who records, with what, and where.
void writeIdentity(const Scenario& scenario, LogBuilder& log);

// Appends epoch `index`, counted from 0. Epochs have to be asked for in their order.
void writeEpoch(Scenario& scenario, std::int64_t index, LogBuilder& log);

}  // namespace samplelog
