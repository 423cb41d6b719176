// One epoch of the observation file: the "> " line, and a line for each satellite, constellation after
// constellation. Deliberate: every band takes its 64 columns whether or not the header lists its signal; only
// NavIC's bands without a code take none.
#pragma once

#include <cstdint>
#include <span>

#include "assembly/epoch_store.h"
#include "assembly/signal_survey.h"
#include "log/receiver_clock.h"
#include "run/run_options.h"
#include "text/text_writer.h"

namespace orbconv {

// What an epoch prints.
struct EpochTables {
    const RunOptions& options;
    const EpochClock& clock;
    std::int32_t satellitesInEpoch;  // of the satellite list, not of the lines that follow
    double receiverClockOffset;      // seconds
    const EpochStore& store;
    const SignalSurvey& survey;
};

// Everything of the current epoch. `epochFlag` is 0 in every run.
void writeEpoch(TextWriter& out, std::int32_t epochFlag, const EpochTables& tables);

// The epoch's first line.
void writeEpochLine(TextWriter& out, std::int32_t epochFlag, const EpochTables& tables);

// The lines of one constellation's records, with their first `writtenBands` bands, at most 11. With a code
// list, a band whose code is empty there takes no columns at all.
void writeSatelliteLines(TextWriter& out, std::span<const SatEpochRecord> records, char letter,
                         std::size_t writtenBands, const ObsCodeList* codeList);

}  // namespace orbconv
