// Everything that lives as long as a run: the tables that one stage fills and the next reads.
#pragma once

#include <iosfwd>

#include "assembly/epoch_store.h"
#include "assembly/signal_survey.h"
#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "log/receiver_identity.h"
#include "log/satellite_lists.h"
#include "navdecode/navigation_tables.h"
#include "run/run_options.h"

namespace orbconv {

// Half a megabyte: not for the stack.
struct RunState {
    RunOptions options;
    bool surveying = true;  // from program start to the end of the survey pass
    RunStamp stamp;

    MessageStaging staging;
    ReceiverClocks clocks;
    ReceiverInfo receiver;
    SystemPresence presence;
    GlonassSlotTable glonassSlots;

    EpochStore store;
    SignalSurvey survey;
    bool headerDone = false;  // the observation header's last line has been written

    NavigationTables navigation;

    std::ostream* console = nullptr;  // standard output; must be set
};

}  // namespace orbconv
