// The header records that are built from tables: "GLONASS SLOT / FRQ #", "GLONASS COD/PHS/BIS" and
// "SYS / PHASE SHIFT".
#pragma once

#include "assembly/signal_survey.h"
#include "log/satellite_lists.h"
#include "run/run_options.h"
#include "text/text_writer.h"

namespace orbconv {

// Sorts the table by slot and writes as many of its first entries as have a slot, eight a line. A free entry
// stays where it is and parts the table into stretches that are sorted by themselves; no run leaves one ahead
// of an entry with a slot.
void writeGlonassSlots(TextWriter& out, GlonassSlotTable& table);

// The four GLONASS code biases, always 0.000. An absent code leaves no gap: the label moves to the left.
void writeGlonassBiases(TextWriter& out, const ObsCodeList& glonassCodes);

// The phase corrections of every signal with its satellites, at most 30. SignalUseCount is counted anew.
void writePhaseShift(TextWriter& out, const RunOptions& options, SignalSurvey& survey);

// The lines of one BeiDou signal, whose phase code stands at `position` of the code list: satellites of
// different kinds need different corrections. Lowers the stored phase shift of band 2 if satellites of the
// second pass have the signal.
void writeBeidouPhaseShift(TextWriter& out, std::size_t position, std::size_t band, SignalSurvey& survey);

}  // namespace orbconv
