// Pseudoranges: the full values rc and rx, and the differences 1r to lr.
#include <algorithm>

#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

// The time of flight in seconds of a full range field.
double timeOfFlight(std::int32_t raw, const RangeScale& scale) {
    return raw * scale.unit + scale.offset;
}

// Remembers the elements of 1r and 2r: what stays is the last one in the order of the list.
class LastDelta {
public:
    void note(std::span<const WalkEntry> entries) { last_ = std::max(last_, int{entries.back().element}); }
    void store(ElementArray<std::int16_t> values, std::int16_t& cell) const {
        if (last_ >= 0) {
            cell = values[static_cast<std::size_t>(last_)];
        }
    }

private:
    int last_ = -1;
};

}  // namespace

void runFullRangeStep(EpochAssembly& assembly, const StepInput& step) {
    const auto values = assembly.staging.elements<std::int32_t>(step.row);
    forEachConstellation(step, fullRangeGates, [&](Constellation constellation, auto entries) {
        const RangeScale scale = rangeScales[indexOf(constellation)];
        for (const WalkEntry& entry : entries) {
            // Deliberate: this step alone takes the satellite byte unsigned for GLONASS too, so that a
            // negative channel does not match the record that an earlier step claimed.
            if (claimRecord(entry.record, entry.rawNumber) != Claim::mismatch) {
                const double t = timeOfFlight(values[entry.element], scale);
                entry.record->at(ObsRow::pseudorange, bands::c) = t * speedOfLight;
            }
        }
    });
}

void runClockOffsetStep(EpochAssembly& assembly, const StepInput& step) {
    const auto values = assembly.staging.elements<std::int32_t>(step.row);
    forEachConstellation(step, clockOffsetGates, [&](Constellation constellation, auto entries) {
        const RangeScale scale = rangeScales[indexOf(constellation)];
        for (const WalkEntry& entry : entries) {
            if (entry.record == nullptr) {
                continue;
            }
            // Deliberate: the record at the position is written whichever satellite has claimed it.
            const double t = timeOfFlight(values[entry.element], scale);
            entry.record->clockOffset = t;
            entry.record->at(ObsRow::pseudorange, bands::c) = t * speedOfLight;
        }
    });
}

void runRangeDeltaStep(EpochAssembly& assembly, const StepInput& step) {
    const std::size_t band = step.band;
    SignalSurvey& survey = assembly.survey;
    const auto values = assembly.staging.elements<std::int16_t>(step.row);
    enterPlaceholderCodes(assembly, step, Kind::code);
    if (band == bands::b3 && walks(step, Constellation::glonass)) {
        // Deliberate: any 3r of a GLONASS satellite lists the code, whatever the flags say.
        survey.codes(Constellation::glonass)[slotOf(bands::b3, Kind::code)] = "C2P";
    }
    LastDelta last;
    forEachConstellation(step, rangeDeltaGates[band], [&](Constellation constellation, auto entries) {
        last.note(entries);
        if (!hasRecords(constellation)) {
            return;
        }
        forEachMatch(entries, [&](SatEpochRecord& record, const WalkEntry& entry) {
            // Deliberate: the second band's own difference has no effect. All its satellites take the
            // last one that 1r left.
            const std::int16_t delta = band == bands::b2 ? survey.lastRangeDelta : values[entry.element];
            record.at(ObsRow::pseudorange, band) =
                (delta * rangeDeltaUnit + rangeDeltaOffset + record.clockOffset) * speedOfLight;
        });
    });
    if (band == bands::b1) {
        last.store(values, survey.lastRangeDelta);
    } else if (band == bands::b2) {
        last.store(values, survey.secondRangeDelta);
    }
}

}  // namespace orbconv
