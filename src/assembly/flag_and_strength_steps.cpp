// Presence flags (FC to Fl) and signal strengths (CE to lE).
#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

// The bits of a flag word that a record takes over. No output depends on bit 7.
std::uint32_t takenFlagBits(Constellation constellation, std::size_t band) {
    const bool takesBit7 = constellation == Constellation::beidou && band == bands::b1;
    constexpr std::uint32_t bit7 = 1U << 7;
    return takesBit7 ? signalPresentBit | bit7 : signalPresentBit;
}

// The strength that the digit is made of. Deliberate: in band l it is not always the band's own.
double strengthForDigit(const SatEpochRecord& record, Constellation constellation, std::size_t band,
                        Claim claim) {
    std::size_t source = band;
    if (band == bands::l) {
        const bool takesBand5IfFresh =
            constellation == Constellation::gps || constellation == Constellation::beidou;
        if (constellation == Constellation::navic) {
            source = bands::c;
        } else if (takesBand5IfFresh && claim == Claim::fresh) {
            source = bands::b5;
        }
    }
    return record.at(ObsRow::strength, source);
}

}  // namespace

void runFlagStep(EpochAssembly& assembly, const StepInput& step) {
    const std::size_t band = step.band;
    const auto values = assembly.staging.elements<std::uint16_t>(step.row);
    forEachConstellation(step, flagGates[band], [&](Constellation constellation, auto entries) {
        const std::uint32_t taken = takenFlagBits(constellation, band);
        for (const WalkEntry& entry : entries) {
            if (entry.claim() != Claim::mismatch) {
                std::uint32_t& flags = entry.record->signalFlags[band];
                flags = (flags & ~taken) | (values[entry.element] & taken);
            }
        }
        if (!assembly.surveying) {
            return;
        }
        for (const WalkEntry& entry : entries) {
            // The word as it now stands counts, also after a mismatch.
            if (entry.record != nullptr && (entry.record->signalFlags[band] & signalPresentBit) != 0) {
                noteSignal(assembly.survey, {.constellation = constellation,
                                             .band = band,
                                             .record = *entry.record,
                                             .satelliteNumber = entry.number,
                                             .position = entry.position});
            }
        }
    });
}

void runStrengthStep(EpochAssembly& assembly, const StepInput& step) {
    const std::size_t band = step.band;
    const auto values = assembly.staging.elements<std::uint8_t>(step.row);
    enterPlaceholderCodes(assembly, step, Kind::strength);
    forEachConstellation(step, strengthGates[band], [&](Constellation constellation, auto entries) {
        const RecordName name = strengthNames[band][indexOf(constellation)];
        for (const WalkEntry& entry : entries) {
            const Claim claim = entry.claim();
            if (claim == Claim::mismatch) {
                continue;
            }
            SatEpochRecord& record = *entry.record;
            writeName(record, band, Kind::strength, name);
            record.at(ObsRow::strength, band) = values[entry.element] * strengthUnit;
            record.strengthIndex[band] = strengthDigit(strengthForDigit(record, constellation, band, claim));
        }
    });
}

}  // namespace orbconv
