// The decoders of the ionosphere messages (IO, II, CI) and the time-offset messages (UO, CU, IU, EU, NU). A
// message that repeats the record before it is dropped, but for NU; floating-point fields are compared for
// equality, so that a NaN always differs. All leave the clocks as they are.
#pragma once

#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "navdecode/navigation_tables.h"

namespace orbconv {

// The counts start over behind record 499; readers then see the old records behind the new ones.
void decodeGpsIono(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeNavicIono(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
// The count starts over behind record 99. A message that agrees with any record in alpha0, alpha1, hour
// letter and satellite is dropped too: its record stays behind the count, without a satellite, for the next
// message.
void decodeBeidouIono(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);

// GPS, BeiDou and Galileo store up to 100 records and then take nothing more; NavIC's count starts over
// behind record 99. GPS and Galileo set the leap seconds of the headers.
void decodeGpsTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeBeidouTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeNavicTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeGalileoTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
// One record, overwritten by every message.
void decodeGlonassTimeOffset(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);

// The letter of a BeiDou ionosphere record's hour: A for 0 to 1, B for above 1 to 2, and so on to X.
char hourLetterOf(std::uint32_t tot);

}  // namespace orbconv
