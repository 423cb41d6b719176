// Dates, and the count of seconds that all systems' times hang on.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace samplelog {

inline constexpr std::int64_t secondsOfDay = 86400;
inline constexpr std::int64_t secondsOfWeek = 604800;
inline constexpr std::int64_t leapSecondsToUtc = 18;

struct CivilDate {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
};

// A whole second of GPS time.
struct CivilTime {
    CivilDate date;
    std::int64_t secondOfDay = 0;
};

// Reads "YYYY-MM-DDTHH:MM:SS"; nothing for any other form or an impossible date or time.
std::optional<CivilTime> parseCivilTime(std::string_view text);

// Days since 1980-01-06, where GPS time starts.
std::int64_t dayNumberOf(const CivilDate& date);
CivilDate dateOf(std::int64_t dayNumber);

// Day of the four-year period of GLONASS, which starts at 1 on the first day of a leap year.
std::int64_t glonassDayOf(const CivilDate& date);

}  // namespace samplelog
