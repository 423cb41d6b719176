#include "reading/log_time.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace orbconv::reading {

namespace {

constexpr int firstYear = 1980;
constexpr int lastYear = 2099;

// Appends `value` in `width` digits, filled up with zeros.
void appendDigits(std::string& text, unsigned value, std::size_t width) {
    std::array<char, 10> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    const auto count = static_cast<std::size_t>(end - digits.data());
    text.append(width > count ? width - count : 0, '0');
    text.append(digits.data(), count);
}

// Takes the characters of a text from the left.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    [[nodiscard]] bool done() const { return text_.empty(); }

    bool skip(char character) {
        if (text_.empty() || text_.front() != character) {
            return false;
        }
        text_.remove_prefix(1);
        return true;
    }
    // Exactly `width` digits.
    bool digits(std::size_t width, unsigned& value) {
        const bool taken = text_.size() >= width &&
                           text_.substr(0, width).find_first_not_of("0123456789") == std::string_view::npos;
        if (taken) {
            std::from_chars(text_.data(), text_.data() + width, value);
            text_.remove_prefix(width);
        }
        return taken;
    }
    // One to three digits behind a point, as thousandths.
    bool thousandths(unsigned& value) {
        const std::size_t width = std::min(text_.find_first_not_of("0123456789"), text_.size());
        if (width == 0 || width > 3 || !digits(width, value)) {
            return false;
        }
        for (std::size_t i = width; i < 3; ++i) {
            value *= 10;
        }
        return true;
    }

private:
    std::string_view text_;
};

}  // namespace

std::optional<LogDate> dateOf(int year, unsigned month, unsigned day) {
    // Greater numbers than these would lose their upper bits on the way into a date.
    if (year < firstYear || year > lastYear || month > 12 || day > 31) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{month},
                                           std::chrono::day{day}};
    return date.ok() ? std::optional(LogDate{date}) : std::nullopt;
}

CalendarTime calendarOf(LogTime time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clock{time - day};
    const LogDate newYear{date.year() / std::chrono::January / 1};
    return {.year = static_cast<int>(date.year()),
            .month = static_cast<unsigned>(date.month()),
            .day = static_cast<unsigned>(date.day()),
            .hour = static_cast<unsigned>(clock.hours().count()),
            .minute = static_cast<unsigned>(clock.minutes().count()),
            .second = static_cast<unsigned>(clock.seconds().count()),
            .millisecond = static_cast<unsigned>(clock.subseconds().count()),
            .dayOfYear = static_cast<unsigned>((day - newYear).count()) + 1};
}

std::string isoText(LogTime time) {
    const CalendarTime calendar = calendarOf(time);
    std::string text;
    appendDigits(text, static_cast<unsigned>(calendar.year), 4);
    text += '-';
    appendDigits(text, calendar.month, 2);
    text += '-';
    appendDigits(text, calendar.day, 2);
    text += 'T';
    appendDigits(text, calendar.hour, 2);
    text += ':';
    appendDigits(text, calendar.minute, 2);
    text += ':';
    appendDigits(text, calendar.second, 2);
    text += '.';
    appendDigits(text, calendar.millisecond, 3);
    return text;
}

std::optional<LogTime> timeOfIsoText(std::string_view text) {
    Scanner scanner(text);
    unsigned year = 0;
    unsigned month = 0;
    unsigned day = 0;
    if (!scanner.digits(4, year) || !scanner.skip('-') || !scanner.digits(2, month) || !scanner.skip('-') ||
        !scanner.digits(2, day)) {
        return std::nullopt;
    }
    const std::optional<LogDate> date = dateOf(static_cast<int>(year), month, day);
    unsigned hour = 0;
    unsigned minute = 0;
    unsigned second = 0;
    unsigned millisecond = 0;
    if (scanner.skip('T') || scanner.skip(' ')) {
        if (!scanner.digits(2, hour) || !scanner.skip(':') || !scanner.digits(2, minute)) {
            return std::nullopt;
        }
        if (scanner.skip(':') &&
            (!scanner.digits(2, second) || (scanner.skip('.') && !scanner.thousandths(millisecond)))) {
            return std::nullopt;
        }
        scanner.skip('Z');
    }
    if (!scanner.done() || !date || hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    return *date + std::chrono::hours{hour} + std::chrono::minutes{minute} + std::chrono::seconds{second} +
           std::chrono::milliseconds{millisecond};
}

}  // namespace orbconv::reading
