// The printing order of an epoch's records, the epoch's satellite count, and the one-off sort of the
// survey's satellite lists.
#pragma once

#include "assembly/epoch_store.h"
#include "assembly/signal_survey.h"
#include "run/run_options.h"

namespace orbconv {

// Copies every field, so that a copy is a full move of a record's content.
SatEpochRecord& copyRecord(SatEpochRecord& destination, const SatEpochRecord& source);

// Sorts the records of GPS, Galileo, BeiDou and NavIC by number and those of GLONASS by slot, and takes
// the count of the epoch's satellites: that of the list less the entries of left-out systems. Deliberate:
// records whose key is 0 stay where they are and part the array into runs that are sorted by themselves.
void sortEpochRecords(const RunOptions& options, MessageStaging& staging, EpochStore& store,
                      SignalSurvey& survey);

// Sorts the six lists of GPS, NavIC, GLONASS, Galileo and BeiDou, not the seventh.
void sortSignalSatelliteLists(SignalSurvey& survey);

// Folds the GLONASS CDMA records, codes and lists into the GLONASS ones. No run switches this on.
void mergeGlonassCdma(EpochStore& store, SignalSurvey& survey);

}  // namespace orbconv
