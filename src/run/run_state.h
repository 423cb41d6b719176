// Everything that lives as long as a run: the tables that one stage fills and the next reads.
#pragma once

#include <iosfwd>

#include "assembly/epoch_store.h"
#include "assembly/signal_survey.h"
#include "log/message_staging.h"
#include "log/passes.h"
#include "log/receiver_clock.h"
#include "log/receiver_identity.h"
#include "log/satellite_lists.h"
#include "navdecode/navigation_tables.h"
#include "run/run_options.h"
#include "text/header_lines.h"

namespace orbconv {

// Half a megabyte: not for the stack.
struct RunState {
    RunOptions options;
    RunStamp runStamp;

    MessageStaging staging;
    ReceiverClocks clocks;
    ReceiverInfo receiver;
    SystemPresence presence;
    GlonassSlotTable glonassSlotTable;

    EpochStore store;
    SignalSurvey survey;

    NavigationTables navigation;

    std::ostream* console = nullptr;  // standard output; must be set
};

// What of it each pass reads and fills.
inline SurveyTables surveyTables(RunState& state) {
    return {.options = state.options,
            .staging = state.staging,
            .clocks = state.clocks,
            .glonassSlotTable = state.glonassSlotTable,
            .store = state.store,
            .survey = state.survey,
            .navigation = state.navigation,
            .console = *state.console};
}
inline WritingTables writingTables(RunState& state) {
    return {.options = state.options,
            .runStamp = state.runStamp,
            .lastLeapSeconds = state.navigation.lastLeapSeconds,
            .staging = state.staging,
            .clocks = state.clocks,
            .receiver = state.receiver,
            .presence = state.presence,
            .glonassSlotTable = state.glonassSlotTable,
            .store = state.store,
            .survey = state.survey,
            .console = *state.console};
}

}  // namespace orbconv
