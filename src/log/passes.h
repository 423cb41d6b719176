// The two passes over the log: the same loop around the reader with different dispatch tables. They alone
// in this room look outward, to the decoders, the assembly and the observation writers.
//
// A pass reads to the end of the log and has no result. Two texts of the log can end the writing pass sooner,
// as exceptions that end the run: a receiver number too short to be cut, and an antenna type too long for its
// field (as is an antenna number of the command line).
#pragma once

#include <cstdint>
#include <iosfwd>

#include "assembly/epoch_store.h"
#include "assembly/signal_survey.h"
#include "log/log_stream.h"
#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "log/receiver_identity.h"
#include "log/satellite_lists.h"
#include "navdecode/navigation_tables.h"
#include "run/run_options.h"
#include "text/header_lines.h"
#include "text/text_writer.h"

namespace orbconv {

// What the survey pass reads and fills.
struct SurveyTables {
    const RunOptions& options;
    MessageStaging& staging;
    ReceiverClocks& clocks;
    GlonassSlotTable& glonassSlotTable;
    EpochStore& store;
    SignalSurvey& survey;
    NavigationTables& navigation;
    std::ostream& console;
};

// Collects what a header needs to know of the whole log, and all navigation data.
void surveyPass(LogStream& log, const SurveyTables& tables);

// What the writing pass reads and fills.
struct WritingTables {
    const RunOptions& options;
    const RunStamp& runStamp;
    std::int32_t lastLeapSeconds;
    MessageStaging& staging;
    ReceiverClocks& clocks;
    ReceiverInfo& receiver;
    SystemPresence& presence;
    GlonassSlotTable& glonassSlotTable;
    EpochStore& store;
    SignalSurvey& survey;
    std::ostream& console;
};

// Writes header and epochs. A writer that is not open only lets the pass read and assemble.
void writingPass(TextWriter& out, LogStream& log, const WritingTables& tables);

}  // namespace orbconv
