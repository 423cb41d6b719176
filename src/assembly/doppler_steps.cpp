// Doppler: the reference DX, the full value DC, and the differences 0d to ld.
#include <ostream>

#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

// The 32-bit sum and negation of raw Doppler counts, which wrap.
std::int32_t negatedSum(std::int32_t a, std::int32_t b) {
    const std::uint32_t sum = static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b);
    return static_cast<std::int32_t>(0U - sum);
}

// The carriers in the unit of their formula: GLONASS in MHz, all others in Hz. Function objects, so that a
// loop is compiled for each.
constexpr auto channelMegahertz = [](const Carrier& carrier, std::int32_t channel) {
    return glonassMegahertz(carrier.kind, channel);
};
constexpr auto fixedHertz = [](const Carrier& carrier, std::int32_t /*channel*/) { return carrier.hertz; };

}  // namespace

void runReferenceDopplerStep(EpochAssembly& assembly, const StepInput& step) {
    const auto values = assembly.staging.elements<std::int32_t>(step.row);
    forEachConstellation(step, referenceDopplerGates, [&](Constellation, auto entries) {
        for (const WalkEntry& entry : entries) {
            if (entry.record != nullptr) {
                entry.record->referenceDoppler = values[entry.element];
            }
        }
    });
}

void runFullDopplerStep(EpochAssembly& assembly, const StepInput& step) {
    const auto values = assembly.staging.elements<std::int32_t>(step.row);
    enterPlaceholderCodes(assembly, step, Kind::doppler);
    forEachConstellation(step, fullDopplerGates, [&](Constellation constellation, auto entries) {
        const RecordName name = fullDopplerNames[indexOf(constellation)];
        for (const WalkEntry& entry : entries) {
            if (entry.claim() == Claim::mismatch) {
                if (constellation == Constellation::glonass && entry.record != nullptr) {
                    assembly.console << "----->>> "
                                     << "Error glo dc" << '\n';
                }
                continue;
            }
            writeName(*entry.record, bands::c, Kind::doppler, name);
            entry.record->at(ObsRow::doppler, bands::c) = negatedSum(values[entry.element], 0) * dopplerUnit;
        }
    });
}

void runDopplerDeltaStep(EpochAssembly& assembly, const StepInput& step) {
    const std::size_t band = step.band;
    const auto values = assembly.staging.elements<std::int16_t>(step.row);
    enterPlaceholderCodes(assembly, step, Kind::doppler);
    if (band == bands::l && step.gates.open(VersionRule::any4) && walks(step, Constellation::glonass)) {
        assembly.survey.codes(Constellation::glonass)[slotOf(bands::l, Kind::doppler)] = {};
    }
    forEachConstellation(step, dopplerGates[band], [&](Constellation constellation, auto entries) {
        const std::size_t c = indexOf(constellation);
        const Carrier carrier = signalCarriers[band][c];
        const Carrier reference = dopplerReferences[c];
        const RecordName name = dopplerNames[band][c];
        const auto store = [&](auto frequencyOf) {
            forEachMatch(entries, [&](SatEpochRecord& record, const WalkEntry& entry) {
                writeName(record, band, Kind::doppler, name);
                // Every formula turns the sign of the log's value. Where both carriers are the same the two
                // operations are carried out all the same: their rounding is part of the result.
                const std::int32_t raw = negatedSum(record.referenceDoppler, values[entry.element]);
                record.at(ObsRow::doppler, band) = raw * frequencyOf(carrier, record.number) /
                                                   frequencyOf(reference, record.number) * dopplerUnit;
            });
        };
        if (constellation == Constellation::glonass) {
            store(channelMegahertz);
        } else {
            store(fixedHertz);
        }
    });
}

}  // namespace orbconv
