// One record of a navigation file as its lines hold it: the epoch, and the numbers line by line. A number
// that the log does not tell is a blank.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "navdecode/message_meaning.h"
#include "reading/broadcast.h"
#include "reading/log_time.h"

namespace orbconv::standard {

inline constexpr std::size_t valuesOfEpochLine = 3;
inline constexpr std::size_t valuesOfLine = 4;
inline constexpr std::size_t mostOrbitLines = 9;
inline constexpr std::size_t mostValues = valuesOfEpochLine + mostOrbitLines * valuesOfLine;

// Three values of the epoch line, then four of each orbit line; a NaN is a blank.
using RecordValues = std::array<double, mostValues>;
inline constexpr double blankValue = std::numeric_limits<double>::quiet_NaN();

struct NavigationRecord {
    Constellation constellation{};
    std::int32_t sv = 0;
    NavType type{};
    std::string_view typeName{};  // of the record's head at 4.x
    reading::LogTime epoch{};     // in the constellation's own time, for GLONASS in UTC
    std::size_t orbitLines = 0;
    RecordValues values{};
    std::size_t transmission = 0;  // index of the value that a repetition may have otherwise
};

// What a record says beside its message: its times, settled.
struct RecordTimes {
    reading::LogTime epoch;
    double week = 0;          // of the record, in the constellation's own count
    double transmission = 0;  // seconds of that week, of a GLONASS frame the seconds of the UTC week
};

// When the message came, in the log's own time; nothing where neither it nor the log has any date.
using ReceptionTime = std::optional<reading::LogTime>;

// The record of an ephemeris. Nothing for a message that cannot be one: a satellite number or a time that is
// none, a value that is no number or too large for its field, no date for GLONASS.
std::optional<NavigationRecord> recordOf(const reading::Broadcast& broadcast, const ReceptionTime& received);

}  // namespace orbconv::standard
