#include "calendar.h"

#include <chrono>
#include <cstddef>

namespace samplelog {

namespace {

constexpr std::chrono::sys_days gpsStart = std::chrono::year{1980} / std::chrono::January / 6;

// The digits of `text` from `start` on; nothing if one of them is no digit.
std::optional<unsigned> number(std::string_view text, std::size_t start, std::size_t length) {
    unsigned value = 0;
    for (const char digit : text.substr(start, length)) {
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        value = value * 10 + static_cast<unsigned>(digit - '0');
    }
    return value;
}

std::chrono::sys_days sysDays(const CivilDate& date) {
    return std::chrono::year_month_day{std::chrono::year{date.year}, std::chrono::month{date.month},
                                       std::chrono::day{date.day}};
}

}  // namespace

std::optional<CivilTime> parseCivilTime(std::string_view text) {
    constexpr std::string_view form = "0000-00-00T00:00:00";
    if (text.size() != form.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (form[i] != '0' && text[i] != form[i]) {
            return std::nullopt;
        }
    }
    const auto year = number(text, 0, 4);
    const auto month = number(text, 5, 2);
    const auto day = number(text, 8, 2);
    const auto hour = number(text, 11, 2);
    const auto minute = number(text, 14, 2);
    const auto second = number(text, 17, 2);
    if (!year || !month || !day || !hour || !minute || !second) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year{static_cast<int>(*year)},
                                           std::chrono::month{*month}, std::chrono::day{*day}};
    if (!date.ok() || *hour > 23 || *minute > 59 || *second > 59) {
        return std::nullopt;
    }
    return CivilTime{{static_cast<int>(*year), *month, *day},
                     std::int64_t{*hour} * 3600 + std::int64_t{*minute} * 60 + *second};
}

std::int64_t dayNumberOf(const CivilDate& date) {
    return (sysDays(date) - gpsStart).count();
}

CivilDate dateOf(std::int64_t dayNumber) {
    const std::chrono::year_month_day date{gpsStart + std::chrono::days{dayNumber}};
    return {static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
            static_cast<unsigned>(date.day())};
}

std::int64_t glonassDayOf(const CivilDate& date) {
    return dayNumberOf(date) - dayNumberOf({date.year - date.year % 4, 1, 1}) + 1;
}

}  // namespace samplelog
