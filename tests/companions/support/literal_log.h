// An undamaged log once more, as the format tells it: message behind message by their lengths, epochs between
// TD and TD. Shares nothing with what it is compared to.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companions/support/reading_items.h"

namespace testsupport {

// The messages of a log that is whole from its first byte to its last; nothing if anything in it is not as
// the format has it.
std::optional<std::vector<FoundMessage>> literalMessages(std::string_view log);

struct LiteralEpoch {
    // Days since 1970 and milliseconds, as one number; nothing without a date or a time of day.
    std::optional<std::int64_t> milliseconds;
    std::vector<std::string> satellites;  // "1-7": system code and number, GLONASS by channel
    std::map<std::string, std::vector<std::int64_t>> elements;  // rx, CE and FC, of this epoch

    friend bool operator==(const LiteralEpoch&, const LiteralEpoch&) = default;
};

std::vector<LiteralEpoch> literalEpochs(const std::vector<FoundMessage>& messages);

}  // namespace testsupport
