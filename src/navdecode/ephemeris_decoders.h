// The decoders of the five ephemeris messages. Each takes the staged body of a message that has just been
// read into the slot behind its table's last entry; the entry counts unless its key was seen. GLONASS has a
// rule of its own for keys that were seen, which clears other slots than the new one. None verifies anything,
// and a full table takes nothing more.
#pragma once

#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "navdecode/navigation_tables.h"

namespace orbconv {

void decodeGpsEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeGlonassEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeGalileoEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeBeidouEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
void decodeNavicEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);

}  // namespace orbconv
