// Presence flags (FC to Fl) and signal strengths (CE to lE).
#include <algorithm>

#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

constexpr std::size_t band1 = 1;
constexpr std::size_t band5 = 4;
constexpr std::size_t bandL = 5;

// The bits of a flag word that a record takes over.
std::uint32_t takenFlagBits(Constellation constellation, std::size_t band) {
    const bool takesBit7 = constellation == Constellation::beidou && band == band1;
    return takesBit7 ? 0xC0U : signalPresentBit;
}

// The strength that the digit is made of. Deliberate: in band l it is not always the band's own.
double strengthForDigit(const SatEpochRecord& record, Constellation constellation, std::size_t band,
                        Claim claim) {
    std::size_t source = band;
    if (band == bandL) {
        const bool takesBand5IfFresh =
            constellation == Constellation::gps || constellation == Constellation::beidou;
        if (constellation == Constellation::navic) {
            source = 0;
        } else if (takesBand5IfFresh && claim == Claim::fresh) {
            source = band5;
        }
    }
    return record.at(ObsRow::strength, source);
}

std::int32_t strengthDigit(double strength) {
    return std::clamp(static_cast<std::int32_t>(strength / strengthPerDigit), 1, 9);
}

}  // namespace

void runFlagStep(EpochAssembly& assembly, const StepInput& step) {
    const auto enabled = enabledBy(flagGates[step.band], assembly.options);
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        if (entry.record == nullptr) {
            return;
        }
        std::uint32_t& flags = entry.record->signalFlags[step.band];
        if (entry.claim() != Claim::mismatch) {
            const std::uint32_t taken = takenFlagBits(entry.system(), step.band);
            flags = (flags & ~taken) | (assembly.staging.element<std::uint16_t>(step.row, i) & taken);
        }
        // The word as it now stands counts, also after a mismatch.
        if (assembly.surveying && (flags & signalPresentBit) != 0) {
            noteSignal(assembly.survey, {.constellation = entry.system(),
                                         .band = step.band,
                                         .record = *entry.record,
                                         .satelliteNumber = entry.number,
                                         .position = entry.position});
        }
    });
}

void runStrengthStep(EpochAssembly& assembly, const StepInput& step) {
    enterPlaceholderCodes(assembly, step, Kind::strength);
    const auto enabled = enabledBy(strengthGates[step.band], assembly.options);
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        const Claim claim = entry.claim();
        if (claim == Claim::mismatch) {
            return;
        }
        SatEpochRecord& record = *entry.record;
        writeName(record, step.band, Kind::strength, strengthNames[step.band][entry.constellation]);
        record.at(ObsRow::strength, step.band) =
            assembly.staging.element<std::uint8_t>(step.row, i) * strengthUnit;
        record.strengthIndex[step.band] =
            strengthDigit(strengthForDigit(record, entry.system(), step.band, claim));
    });
}

}  // namespace orbconv
