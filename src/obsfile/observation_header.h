// The header of the observation file. The record set, the order and every column are the same for all
// versions: the version shows only as the number in the first line.
#pragma once

#include <cstdint>

#include "assembly/signal_survey.h"
#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "log/receiver_identity.h"
#include "log/satellite_lists.h"
#include "run/run_options.h"
#include "text/header_lines.h"
#include "text/text_writer.h"

namespace orbconv {

// What the header prints, as it stands when the header is due.
struct ObservationHeaderTables {
    const RunOptions& options;
    const RunStamp& runStamp;
    const ReceiverInfo& receiver;
    const ReceiverClocks& clocks;
    const SystemPresence& presence;
    std::int32_t lastLeapSeconds;
    SignalSurvey& survey;                // BeiDou's code count, the use counts and a phase shift are changed
    GlonassSlotTable& glonassSlotTable;  // sorted in place
};

// Writes the whole header, with `interval` in seconds for "INTERVAL", and sets `headerDone`. While
// `lastEpochMs` is 0 nothing is written and `headerDone` stays as it is. Once the header stands, a call
// writes "LEAP SECONDS" alone.
//
// An antenna number of more than 20 or an antenna type of more than 40 characters throws
// std::length_error, with the lines up to there written: the run ends abnormally.
void writeObservationHeader(TextWriter& out, float interval, std::uint32_t lastEpochMs,
                            const ObservationHeaderTables& tables, bool& headerDone);

// "SYS / # / OBS TYPES" for all constellations.
void writeObsTypes(TextWriter& out, const RunOptions& options, SignalSurvey& survey);

}  // namespace orbconv
