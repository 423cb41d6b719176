// The steps of the assembly by their kinds. Each takes the row of its message in the staging, the band that
// it fills, and the number of list entries to walk.
#pragma once

#include <cstddef>
#include <span>

#include "assembly/epoch_assembly.h"
#include "assembly/satellite_walk.h"

namespace orbconv {

struct StepInput {
    const SatelliteWalk& walk;
    const OpenGates& gates;
    std::size_t row;
    std::size_t band;
    int count;  // 1 to 180
};

// FC to Fl: presence of a signal, and in the survey pass what the header needs to know of it.
void runFlagStep(EpochAssembly& assembly, const StepInput& step);

// rc: the full range into band c.
void runFullRangeStep(EpochAssembly& assembly, const StepInput& step);
// rx: the clock offset that every difference refers to, and the full range into band c.
void runClockOffsetStep(EpochAssembly& assembly, const StepInput& step);
// 1r to lr: range differences.
void runRangeDeltaStep(EpochAssembly& assembly, const StepInput& step);

// DX: the Doppler that the differences refer to.
void runReferenceDopplerStep(EpochAssembly& assembly, const StepInput& step);
// DC: the full Doppler into band c.
void runFullDopplerStep(EpochAssembly& assembly, const StepInput& step);
// 0d to ld: Doppler differences.
void runDopplerDeltaStep(EpochAssembly& assembly, const StepInput& step);

// cp to lp: carrier phases, and the phase shifts of the header.
void runPhaseStep(EpochAssembly& assembly, const StepInput& step);

// CE to lE: signal strengths and their RINEX digits.
void runStrengthStep(EpochAssembly& assembly, const StepInput& step);

// ---- shared by the steps ----

// Calls action(constellation, entries) for every constellation that has entries in the step's walk and
// passes its gate.
template <class Action>
void forEachConstellation(const StepInput& step, const PerConstellation<StepGate>& gates, Action action) {
    for (std::size_t c = 0; c < constellationCount; ++c) {
        const auto constellation = static_cast<Constellation>(c);
        const auto entries = step.walk.of(constellation, step.count);
        if (!entries.empty() && step.gates.lets(constellation, gates[c])) {
            action(constellation, entries);
        }
    }
}

// Calls action(record, entry) for every entry whose record is that of its satellite, or was free and is now.
template <class Action>
void forEachMatch(std::span<const WalkEntry> entries, Action action) {
    for (const WalkEntry& entry : entries) {
        if (entry.claim() != Claim::mismatch) {
            action(*entry.record, entry);
        }
    }
}

// Whether the walked entries hold one of the constellation.
inline bool walks(const StepInput& step, Constellation constellation) {
    return !step.walk.of(constellation, step.count).empty();
}

// Enters the SBAS and QZSS codes of a band and kind, for those of the two that the walked entries hold.
void enterPlaceholderCodes(EpochAssembly& assembly, const StepInput& step, Kind kind);

// Writes the name that a step gives a stored value, if it gives one.
inline void writeName(SatEpochRecord& record, std::size_t band, Kind kind, const RecordName& name) {
    if (name) {
        record.signalName[slotOf(band, kind)] = *name;
    }
}

}  // namespace orbconv
