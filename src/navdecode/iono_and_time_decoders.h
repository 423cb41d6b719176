// The decoders of the ionosphere messages (IO, II, CI) and the time-offset messages (UO, CU, IU, EU, NU).
// A message that repeats the record before it is dropped; floating-point fields are compared for equality,
// so that a NaN always differs.
#pragma once

#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "navdecode/navigation_tables.h"

namespace orbconv {

// The counts wrap to 0 at 499 records; readers then see the old records behind the new ones.
void decodeGpsIono(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables);
void decodeNavicIono(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables);
// The count wraps at 99.
void decodeBeidouIono(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables);

// GPS, BeiDou and Galileo store up to 100 records and then take nothing more; NavIC's count wraps at 99.
// GPS and Galileo set the leap seconds of the headers.
void decodeGpsTimeOffset(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables);
void decodeBeidouTimeOffset(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables);
void decodeNavicTimeOffset(const MessageStaging& staging, const EpochClock& clock, NavigationTables& tables);
void decodeGalileoTimeOffset(const MessageStaging& staging, const EpochClock& clock,
                             NavigationTables& tables);
// One record, overwritten by every message.
void decodeGlonassTimeOffset(const MessageStaging& staging, const EpochClock& clock,
                             NavigationTables& tables);

// The letter of a BeiDou ionosphere record's hour: A for 0 to 1, B for above 1 to 2, and so on to X.
char hourLetterOf(std::uint32_t tot);

}  // namespace orbconv
