// The decoders of the five ephemeris messages. Each takes the staged body of a message that has just been
// read and appends one entry to its table, unless the entry's key was seen. None verifies anything, and a
// full table takes nothing more.
#pragma once

#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "navdecode/navigation_tables.h"

namespace orbconv {

void decodeGpsEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeGlonassEphemeris(const MessageStaging& staging, const ReceiverClocks& clocks,
                            NavigationTables& tables);
void decodeGalileoEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeBeidouEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeNavicEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);

}  // namespace orbconv
