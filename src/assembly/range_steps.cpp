// Pseudoranges: the full values rc and rx, and the differences 1r to lr.
#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

constexpr std::size_t band1 = 1;
constexpr std::size_t band2 = 2;
constexpr std::size_t band3 = 3;

// The time of flight in seconds of a full range field.
double timeOfFlight(std::int32_t raw, std::uint8_t constellation) {
    const RangeScale& scale = rangeScales[constellation];
    return raw * scale.unit + scale.offset;
}

}  // namespace

void runFullRangeStep(EpochAssembly& assembly, const StepInput& step) {
    const auto enabled = enabledBy(fullRangeGates, assembly.options);
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        // Deliberate: this step alone takes the satellite byte unsigned for GLONASS too, so that a negative
        // channel does not match the record that an earlier step claimed.
        if (claimRecord(entry.record, entry.rawNumber) != Claim::mismatch) {
            const auto raw = assembly.staging.element<std::int32_t>(step.row, i);
            entry.record->at(ObsRow::pseudorange, 0) = timeOfFlight(raw, entry.constellation) * speedOfLight;
        }
    });
}

void runClockOffsetStep(EpochAssembly& assembly, const StepInput& step) {
    EnabledConstellations enabled{};
    const PerConstellation<bool> included = includedConstellations(assembly.options);
    for (std::size_t c = 0; c < constellationCount; ++c) {
        enabled[c] = included[c] && hasRecords(static_cast<Constellation>(c));
    }
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        if (entry.record == nullptr) {
            return;
        }
        // Deliberate: the record at the position is written whichever satellite has claimed it.
        SatEpochRecord& record = *entry.record;
        const double t =
            timeOfFlight(assembly.staging.element<std::int32_t>(step.row, i), entry.constellation);
        record.touched = true;
        record.clockOffset = t;
        record.at(ObsRow::pseudorange, 0) = t * speedOfLight;
    });
}

void runRangeDeltaStep(EpochAssembly& assembly, const StepInput& step) {
    SignalSurvey& survey = assembly.survey;
    enterPlaceholderCodes(assembly, step, Kind::code);
    if (step.band == band3 && step.walk.holds(Constellation::glonass, step.count)) {
        // Deliberate: any 3r of a GLONASS satellite lists the code, whatever the flags say.
        survey.codes(Constellation::glonass)[slotOf(band3, Kind::code)] = "C2P";
    }
    const auto enabled = enabledBy(rangeDeltaGates[step.band], assembly.options);
    step.walk.forEach(step.count, enabled, [&](std::size_t i, const WalkEntry& entry) {
        auto delta = assembly.staging.element<std::int16_t>(step.row, i);
        if (step.band == band1) {
            survey.lastRangeDelta = delta;
        } else if (step.band == band2) {
            // Deliberate: the second band's own difference has no effect. All its satellites take the last
            // one that 1r left.
            survey.secondRangeDelta = delta;
            delta = survey.lastRangeDelta;
        }
        if (hasRecords(entry.system()) && entry.claim() != Claim::mismatch) {
            SatEpochRecord& record = *entry.record;
            record.at(ObsRow::pseudorange, step.band) =
                (delta * rangeDeltaUnit + rangeDeltaOffset + record.clockOffset) * speedOfLight;
        }
    });
}

}  // namespace orbconv
