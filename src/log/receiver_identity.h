// What recorded the log and where: the handlers of the identity and position messages. They run in the
// writing pass only. None checks a checksum or a form; a later message of a kind overwrites the field.
#pragma once

#include <array>
#include <string>

#include "log/message_staging.h"

namespace orbconv {

struct ReceiverInfo {
    std::string markerName;
    std::string receiverNumber;
    std::string receiverType;
    std::string receiverVersion;
    std::string antennaType;
    std::array<double, 3> approxPosition{};  // metres, x y z
    double receiverClockOffset = 0.0;        // seconds
};

// KV: the marker name, the first word that is not "KVS" and that a blank closes.
void handleKv(const MessageStaging& staging, ReceiverInfo& info);

// PM: receiver number, type and version out of the quoted parameters. A receiver number of fewer than 20
// characters cannot be cut and throws std::out_of_range, which ends the run abnormally.
void handlePm(const MessageStaging& staging, ReceiverInfo& info);

// ==: the antenna type out of "_ANT=...", under kind byte 0.
void handleEquals(const MessageStaging& staging, ReceiverInfo& info);

// PV: the approximate position.
void handlePv(const MessageStaging& staging, ReceiverInfo& info);

// TO: the receiver clock offset of the epoch lines.
void handleTo(const MessageStaging& staging, ReceiverInfo& info);

}  // namespace orbconv
