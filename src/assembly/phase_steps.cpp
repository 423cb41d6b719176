// Carrier phases (cp to lp), and the phase shifts and satellites that the header prints.
#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

constexpr std::size_t band3 = 3;
constexpr std::size_t bandL = 5;

// The carrier phase in cycles of a time in seconds, before any shift. The GLONASS products are formed in
// an order of their own.
double cyclesOf(double t, double carrier, std::int32_t channel) {
    if (carrier == glonassL1) {
        return hertzPerMegahertz * glonassL1Megahertz(channel) * t;
    }
    if (carrier == glonassL2) {
        return hertzPerMegahertz * glonassL2Megahertz(channel) * t;
    }
    if (carrier == glonassL3) {
        return hertzPerMegahertz * (t * glonassL3Megahertz);
    }
    return t * carrier;
}

// The header's bookkeeping, done for every walked satellite, also one whose phase is dropped.
void notePhase(SignalSurvey& survey, const WalkEntry& entry, std::size_t band) {
    const std::size_t c = entry.constellation;
    std::size_t column = band;
    std::optional<float> shift = phaseShifts[band][c];
    bool counts = phaseCountsUse[band][c];
    if (band == bandL && entry.system() == Constellation::galileo) {
        // Deliberate: this branch, which no run takes, stores and counts in the column of the 3 band.
        column = band3;
        shift = 0.0F;
        counts = true;
    }
    if (shift) {
        survey.phaseShiftValues[c][column] = *shift;
    }
    if (counts) {
        ++survey.signalUseCount[useCountRow(entry.system())][column];
    }
    if (phaseListsSatellite[band][c] && entry.position < phaseShiftEntries(entry.system(), band)) {
        survey.phaseShiftSatellites[c][band][entry.position] = entry.number;
    }
}

void storePhase(const WalkEntry& entry, std::size_t band, std::int32_t raw) {
    const double carrier = phaseCarriers[band][entry.constellation];
    SatEpochRecord& record = *entry.record;
    writeName(record, band, Kind::phase, phaseNames[band][entry.constellation]);
    if (carrier == noCarrier) {
        return;
    }
    const double t = raw * phaseUnit + record.clockOffset;
    double cycles = cyclesOf(t, carrier, record.number);
    cycles += static_cast<double>(phaseShifts[band][entry.constellation].value_or(0.0F));
    if (entry.system() == Constellation::beidou && beidouExtraPhases[band].satellites.holds(record.number)) {
        cycles += beidouExtraPhases[band].cycles;
    }
    record.at(ObsRow::phase, band) = cycles;
}

}  // namespace

void runPhaseStep(EpochAssembly& assembly, const StepInput& step) {
    SignalSurvey& survey = assembly.survey;
    enterPlaceholderCodes(assembly, step, Kind::phase);
    const auto enabled = enabledBy(phaseGates[step.band], assembly.options);
    if (step.band == bandL && enabled[indexOf(Constellation::glonass)] &&
        step.walk.holds(Constellation::glonass, step.count)) {
        survey.codes(Constellation::glonass)[slotOf(bandL, Kind::phase)] = {};
    }
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        notePhase(survey, entry, step.band);
        if (hasRecords(entry.system()) && entry.claim() != Claim::mismatch) {
            storePhase(entry, step.band, assembly.staging.element<std::int32_t>(step.row, i));
        }
    });
}

}  // namespace orbconv
