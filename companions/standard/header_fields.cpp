#include "standard/header_fields.h"

#include <array>

#include "text/number_format.h"

namespace orbconv::standard {

namespace {

std::string rightField(std::string_view text, std::size_t width, char fill = ' ') {
    return std::string(width > text.size() ? width - text.size() : 0, fill) + std::string(text);
}

}  // namespace

std::string leftField(std::string_view text, std::size_t width) {
    return std::string(text) + std::string(width > text.size() ? width - text.size() : 0, ' ');
}

std::string integerField(std::int64_t value, std::size_t width) {
    return rightField(std::to_string(value), width);
}

std::string twoDigits(std::int64_t value) {
    return rightField(std::to_string(value), 2, '0');
}

std::string fixedField(double value, int decimals, std::size_t width) {
    std::array<char, maxNumberText> text{};
    const char* const end = formatFixed(text.data(), value, decimals);
    return rightField({text.data(), static_cast<std::size_t>(end - text.data())}, width);
}

std::string timeField(reading::LogTime time) {
    const reading::CalendarTime calendar = reading::calendarOf(time);
    std::string text = integerField(calendar.year, 6);
    for (const unsigned number : {calendar.month, calendar.day, calendar.hour, calendar.minute}) {
        text += integerField(number, 6);
    }
    return text + fixedField(calendar.second + calendar.millisecond / 1000.0, 7, 13);
}

std::vector<std::string> listLines(const std::vector<std::string>& items, std::size_t perLine,
                                   std::string_view first, std::string_view further) {
    std::vector<std::string> lines{std::string(first)};
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0 && i % perLine == 0) {
            lines.emplace_back(further);
        }
        lines.back() += items[i];
    }
    return lines;
}

}  // namespace orbconv::standard
