// The log's own time: a calendar date and a time of day to the millisecond, in the time scale that its date
// messages name. Nothing here knows of leap seconds: each scale counts its own days of 86400 seconds.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orbconv::reading {

using LogDate = std::chrono::local_days;
using LogTime = std::chrono::local_time<std::chrono::milliseconds>;

inline constexpr std::uint32_t millisecondsPerDay = 86'400'000;

// The date of three calendar numbers; nothing for numbers that are none, or of a year outside 1980 to 2099,
// which no receiver of these systems can mean.
std::optional<LogDate> dateOf(int year, unsigned month, unsigned day);

// The calendar numbers of a time.
struct CalendarTime {
    int year;
    unsigned month, day, hour, minute, second, millisecond;
    unsigned dayOfYear;  // from 1
};
CalendarTime calendarOf(LogTime time);

// "2024-05-06T23:00:00.000".
std::string isoText(LogTime time);

// The time of "2024-05-06", "2024-05-06T23:00", "...:30" or "...:30.5" (a blank may stand for the T, and a Z
// behind it is passed over); nothing for any other text.
std::optional<LogTime> timeOfIsoText(std::string_view text);

}  // namespace orbconv::reading
