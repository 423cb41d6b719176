// Signals of a survey for the phase-shift lines of a header.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "obsfile/header_tables.h"
#include "support/conversion.h"
#include "support/staging.h"

namespace testsupport {

// A survey that gets its signals one by one.
struct Signals {
    orbconv::RunOptions options;
    std::unique_ptr<orbconv::SignalSurvey> survey = std::make_unique<orbconv::SignalSurvey>();

    Signals& signal(orbconv::Constellation system, std::size_t band, orbconv::SignalText phaseCode,
                    float shift, const std::vector<int>& satellites) {
        survey->codes(system)[band * 5 + 1] = phaseCode;
        survey->obsCodeCount[orbconv::indexOf(system)] += 1;
        survey->phaseShiftValues[orbconv::indexOf(system)][band] = shift;
        std::ranges::copy(satellites, survey->signalSatelliteList[orbconv::indexOf(system)][band].begin());
        return *this;
    }
    std::vector<std::string> lines() {
        return splitLines(
            written([this](orbconv::TextWriter& out) { orbconv::writePhaseShift(out, options, *survey); }));
    }
};

}  // namespace testsupport
