// Turns an epoch's staged messages into the records of the epoch store: 33 steps, one a message, always in
// the same order. Every step walks the satellite list and finds a record by its position alone.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>

#include "assembly/epoch_store.h"
#include "assembly/signal_survey.h"
#include "log/message_staging.h"
#include "run/run_options.h"

namespace orbconv {

// What the assembly reads and writes.
struct EpochAssembly {
    const RunOptions& options;
    bool surveying;  // true in the survey pass: only then are signals collected
    const MessageStaging& staging;
    EpochStore& store;
    SignalSurvey& survey;
    std::ostream& console;  // takes the one diagnostic that the assembly has
};

// All 33 steps, then the count of the observable codes. For a TD of the writing pass.
//
// A step walks as many entries of the list as its message's last count says, and none if that is not
// positive. The flag steps walk the whole list, whatever came of their messages; rx walks the whole list if
// its message's last count is positive. Nothing clears the staging between epochs, so a message that is
// missing applies its last values to the present list again.
void assembleEpoch(EpochAssembly& assembly);

// The six flag steps alone. For a TD of the survey pass.
void assembleFlags(EpochAssembly& assembly);

}  // namespace orbconv
