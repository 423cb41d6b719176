// Doppler: the reference DX, the full value DC, and the differences 0d to ld.
#include <ostream>

#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

constexpr std::size_t bandL = 5;

// The 32-bit sum and negation of raw Doppler counts, which wrap.
std::int32_t negatedSum(std::int32_t a, std::int32_t b) {
    const std::uint32_t sum = static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b);
    return static_cast<std::int32_t>(0U - sum);
}

double glonassCarrierMegahertz(double carrier, std::int32_t channel) {
    if (carrier == glonassL1) {
        return glonassL1Megahertz(channel);
    }
    return carrier == glonassL2 ? glonassL2Megahertz(channel) : glonassL3Megahertz;
}

// Every formula turns the sign of the log's value. Where both carriers are the same the two operations are
// carried out all the same: their rounding is part of the result.
double scaledDoppler(std::int32_t raw, const WalkEntry& entry, std::size_t band) {
    double carrier = dopplerCarriers[band][entry.constellation];
    double reference = dopplerReferences[entry.constellation];
    if (entry.system() == Constellation::glonass) {
        const std::int32_t channel = entry.record->number;
        carrier = glonassCarrierMegahertz(carrier, channel);
        reference = glonassL1Megahertz(channel);
    }
    return raw * carrier / reference * dopplerUnit;
}

}  // namespace

void runReferenceDopplerStep(EpochAssembly& assembly, const StepInput& step) {
    // Deliberate: no flag, no version and no satellite number is looked at.
    constexpr EnabledConstellations everyRecord = {true, true, true, false, true, true, false, true, false};
    step.walk.forEach(step.count, everyRecord, [&](std::size_t i, const WalkEntry& entry) {
        if (entry.record != nullptr) {
            entry.record->touched = true;
            entry.record->referenceDoppler = assembly.staging.element<std::int32_t>(step.row, i);
        }
    });
}

void runFullDopplerStep(EpochAssembly& assembly, const StepInput& step) {
    enterPlaceholderCodes(assembly, step, Kind::doppler);
    const auto enabled = enabledBy(fullDopplerGates, assembly.options);
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        if (entry.record == nullptr) {
            return;
        }
        if (entry.claim() == Claim::mismatch) {
            if (entry.system() == Constellation::glonass) {
                assembly.console << "----->>> "
                                 << "Error glo dc" << '\n';
            }
            return;
        }
        SatEpochRecord& record = *entry.record;
        writeName(record, 0, Kind::doppler, fullDopplerNames[entry.constellation]);
        const auto raw = assembly.staging.element<std::int32_t>(step.row, i);
        record.at(ObsRow::doppler, 0) = negatedSum(raw, 0) * dopplerUnit;
    });
}

void runDopplerDeltaStep(EpochAssembly& assembly, const StepInput& step) {
    enterPlaceholderCodes(assembly, step, Kind::doppler);
    if (step.band == bandL && passes(VersionRule::any4, assembly.options.rinexVersion) &&
        step.walk.holds(Constellation::glonass, step.count)) {
        assembly.survey.codes(Constellation::glonass)[slotOf(bandL, Kind::doppler)] = {};
    }
    const auto enabled = enabledBy(dopplerGates[step.band], assembly.options);
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        if (entry.claim() == Claim::mismatch) {
            return;
        }
        SatEpochRecord& record = *entry.record;
        writeName(record, step.band, Kind::doppler, dopplerNames[step.band][entry.constellation]);
        const std::int32_t delta = assembly.staging.element<std::int16_t>(step.row, i);
        record.at(ObsRow::doppler, step.band) =
            scaledDoppler(negatedSum(record.referenceDoppler, delta), entry, step.band);
    });
}

}  // namespace orbconv
