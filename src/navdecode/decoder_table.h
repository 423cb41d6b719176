// Which decoder takes which message.
#pragma once

#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "navdecode/navigation_tables.h"

namespace orbconv {

// Hands a message that has just been read to its decoder. A message without one is passed over.
void decodeNavigation(MessageId id, const MessageStaging& staging, ReceiverClocks& clocks,
                      NavigationTables& tables);

}  // namespace orbconv
