// What a log says of the station: marker, receiver, antenna, position. The last word of each counts, since a
// receiver repeats them as they change.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "reading/log_reader.h"

namespace orbconv::reading {

// A text of the log and where its message stands.
struct LogText {
    std::string text;
    std::uint64_t offset = 0;

    friend bool operator==(const LogText&, const LogText&) = default;
};

struct SiteIdentity {
    std::optional<LogText> markerName;              // KV
    std::optional<LogText> receiverNumber;          // PM, rcv/id
    std::optional<LogText> receiverType;            // PM, rcv/igs
    std::optional<LogText> receiverVersion;         // PM, rcv/ver/main
    std::optional<LogText> antennaType;             // ==, _ANT: type in 16 columns, radome in 4
    std::optional<std::array<double, 3>> position;  // PV: geocentric x, y, z in metres

    // Takes what the message says; other messages are passed over. Texts lose the blanks around them; what
    // does not print becomes a question mark.
    void take(const Message& message);
};

}  // namespace orbconv::reading
