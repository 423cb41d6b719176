#include "arguments.h"

#include <charconv>
#include <string>
#include <system_error>

namespace samplelog {

namespace {

[[noreturn]] void refuse(std::string_view option, std::string_view text, std::string_view wanted) {
    std::string message(option);
    message.append(": '").append(text).append("' is not ").append(wanted);
    throw ArgumentError(message);
}

// The whole text as a number without sign; false if it is anything else or too large.
bool readNumber(std::string_view text, std::uint64_t& value) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc{} && stop == end;
}

}  // namespace

std::int64_t parseCount(std::string_view option, std::string_view text, std::int64_t least,
                        std::int64_t most) {
    std::uint64_t value = 0;
    if (!readNumber(text, value) || value < static_cast<std::uint64_t>(least) ||
        value > static_cast<std::uint64_t>(most)) {
        refuse(option, text, "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    }
    return static_cast<std::int64_t>(value);
}

std::uint64_t parseSeed(std::string_view option, std::string_view text) {
    std::uint64_t value = 0;
    if (!readNumber(text, value)) {
        refuse(option, text, "a whole number below 2^64");
    }
    return value;
}

std::int64_t parseInterval(std::string_view option, std::string_view text) {
    constexpr std::string_view wanted = "a number of seconds from 0.001 to 3600 with at most three decimals";
    constexpr std::int64_t longest = 3'600'000;
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    const bool hasPoint = point != std::string_view::npos;
    std::string decimals(hasPoint ? text.substr(point + 1) : std::string_view{});
    if (decimals.size() > 3 || (hasPoint && decimals.empty()) || whole.size() > 4) {
        refuse(option, text, wanted);
    }
    decimals.resize(3, '0');
    std::uint64_t seconds = 0;
    std::uint64_t thousandths = 0;
    if (!readNumber(whole, seconds) || !readNumber(decimals, thousandths)) {
        refuse(option, text, wanted);
    }
    const auto interval = static_cast<std::int64_t>(seconds * 1000 + thousandths);
    if (interval < 1 || interval > longest) {
        refuse(option, text, wanted);
    }
    return interval;
}

CivilTime parseStart(std::string_view option, std::string_view text) {
    const std::optional<CivilTime> time = parseCivilTime(text);
    if (!time || time->date.year < 2020 || time->date.year > 2099) {
        refuse(option, text, "a time of the years 2020 to 2099, written YYYY-MM-DDTHH:MM:SS");
    }
    return *time;
}

}  // namespace samplelog
