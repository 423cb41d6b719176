// Carrier phases (cp to lp), and the phase shifts and satellites that the header prints.
#include <algorithm>
#include <span>

#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

// The carrier phase in cycles of a time in seconds, before any shift. The GLONASS products are formed in
// an order of their own. Function objects, so that a loop is compiled for each.
constexpr auto glonassCycles = [](double t, const Carrier& carrier, std::int32_t channel) {
    const double megahertz = glonassMegahertz(carrier.kind, channel);
    return carrier.kind == CarrierKind::glonassL3 ? hertzPerMegahertz * (t * megahertz)
                                                  : hertzPerMegahertz * megahertz * t;
};
constexpr auto fixedCycles = [](double t, const Carrier& carrier, std::int32_t /*channel*/) {
    return t * carrier.hertz;
};

// What a step does beside the values, once for the constellation: the same constants again each time.
struct PhaseBookkeeping {
    std::size_t column;
    float shift;
    bool countsUse;
};

PhaseBookkeeping bookkeepingOf(Constellation constellation, std::size_t band) {
    const std::size_t c = indexOf(constellation);
    if (band == bands::l && constellation == Constellation::galileo) {
        // Deliberate: this branch, which no run takes, stores and counts in the column of the 3 band.
        return {.column = bands::b3, .shift = 0.0F, .countsUse = true};
    }
    return {.column = band, .shift = phaseShifts[band][c], .countsUse = phaseCountsUse[band][c]};
}

// The header's bookkeeping, done for every walked satellite, also one whose phase is dropped.
void notePhases(SignalSurvey& survey, Constellation constellation, std::size_t band,
                std::span<const WalkEntry> entries) {
    const std::size_t c = indexOf(constellation);
    const PhaseBookkeeping bookkeeping = bookkeepingOf(constellation, band);
    survey.phaseShiftValues[c][bookkeeping.column] = bookkeeping.shift;
    if (bookkeeping.countsUse) {
        survey.signalUseCount[useCountRow(constellation)][bookkeeping.column] +=
            static_cast<std::uint32_t>(entries.size());
    }
    if (phaseListsSatellite[band][c]) {
        const std::size_t listed = std::min(entries.size(), phaseShiftEntries(constellation, band));
        for (const WalkEntry& entry : entries.first(listed)) {
            survey.phaseShiftSatellites[c][band][entry.position] = entry.number;
        }
    }
}

// What is added to the cycles of some satellites behind the shift. Deliberate: the phase-shift table of the
// header does not show it.
BeidouExtraPhase extraPhaseOf(Constellation constellation, std::size_t band) {
    return constellation == Constellation::beidou ? beidouExtraPhases[band]
                                                  : BeidouExtraPhase{beidouNone, 0.0};
}

}  // namespace

void runPhaseStep(EpochAssembly& assembly, const StepInput& step) {
    const std::size_t band = step.band;
    SignalSurvey& survey = assembly.survey;
    const auto values = assembly.staging.elements<std::int32_t>(step.row);
    enterPlaceholderCodes(assembly, step, Kind::phase);
    forEachConstellation(step, phaseGates[band], [&](Constellation constellation, auto entries) {
        const std::size_t c = indexOf(constellation);
        notePhases(survey, constellation, band, entries);
        if (band == bands::l && constellation == Constellation::glonass) {
            survey.codes(constellation)[slotOf(bands::l, Kind::phase)] = {};
        }
        if (!hasRecords(constellation)) {
            return;
        }
        const Carrier carrier = signalCarriers[band][c];
        const auto shift = static_cast<double>(phaseShifts[band][c]);
        const RecordName name = phaseNames[band][c];
        const BeidouExtraPhase extra = extraPhaseOf(constellation, band);
        const auto store = [&](auto cyclesAt) {
            forEachMatch(entries, [&](SatEpochRecord& record, const WalkEntry& entry) {
                writeName(record, band, Kind::phase, name);
                if (carrier.kind != CarrierKind::none) {
                    const double t = values[entry.element] * phaseUnit + record.clockOffset;
                    record.at(ObsRow::phase, band) =
                        cyclesAt(t, carrier, record.number) + shift +
                        (extra.satellites.holds(record.number) ? extra.cycles : 0.0);
                }
            });
        };
        if (constellation == Constellation::glonass) {
            store(glonassCycles);
        } else {
            store(fixedCycles);
        }
    });
}

}  // namespace orbconv
