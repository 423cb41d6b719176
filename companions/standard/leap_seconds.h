// The leap seconds of GPS time against UTC, by date.
#pragma once

#include <algorithm>
#include <array>
#include <chrono>

#include "reading/log_time.h"

namespace orbconv::standard {

// The days that began with one second more.
inline constexpr auto leapDays = std::to_array<std::chrono::year_month_day>({
    std::chrono::year{1981} / 7 / 1,
    std::chrono::year{1982} / 7 / 1,
    std::chrono::year{1983} / 7 / 1,
    std::chrono::year{1985} / 7 / 1,
    std::chrono::year{1988} / 1 / 1,
    std::chrono::year{1990} / 1 / 1,
    std::chrono::year{1991} / 1 / 1,
    std::chrono::year{1992} / 7 / 1,
    std::chrono::year{1993} / 7 / 1,
    std::chrono::year{1994} / 7 / 1,
    std::chrono::year{1996} / 1 / 1,
    std::chrono::year{1997} / 7 / 1,
    std::chrono::year{1999} / 1 / 1,
    std::chrono::year{2006} / 1 / 1,
    std::chrono::year{2009} / 1 / 1,
    std::chrono::year{2012} / 7 / 1,
    std::chrono::year{2015} / 7 / 1,
    std::chrono::year{2017} / 1 / 1,
});

// Those of a time from 1980 on. What was announced later than the last row is not known.
constexpr int leapSecondsAt(reading::LogTime time) {
    return static_cast<int>(std::ranges::count_if(
        leapDays, [time](const auto& day) { return std::chrono::local_days{day} <= time; }));
}

}  // namespace orbconv::standard
