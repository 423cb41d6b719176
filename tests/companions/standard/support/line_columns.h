// The columns of a RINEX line, counted from 1, and what stands in them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace testsupport {

inline bool isBlank(std::string_view text) {
    return text.find_first_not_of(' ') == std::string_view::npos;
}

inline bool areDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// `count` columns from `first` on, blank beyond the end of the line.
inline std::string columns(const std::string& line, std::size_t first, std::size_t count) {
    std::string piece = line.size() >= first ? line.substr(first - 1, count) : "";
    piece.resize(count, ' ');
    return piece;
}

// Without the blanks at its end.
inline std::string cutBlanks(std::string text) {
    text.resize(text.find_last_not_of(' ') + 1);
    return text;
}

// Without the blanks ahead of a right-justified number, and without its minus.
inline std::string_view unsignedPart(std::string_view field) {
    field.remove_prefix(std::min(field.find_first_not_of(' '), field.size()));
    return field.starts_with('-') ? field.substr(1) : field;
}

inline bool isInteger(std::string_view field) {
    return areDigits(unsignedPart(field));
}

// Digits, and `decimals` digits behind a point.
inline bool isFixed(std::string_view field, std::size_t decimals) {
    const std::string_view number = unsignedPart(field);
    if (number.size() < decimals + 2) {
        return false;
    }
    const std::size_t point = number.size() - decimals - 1;
    return number[point] == '.' && areDigits(number.substr(0, point)) && areDigits(number.substr(point + 1));
}

// A point with one digit ahead of it, or none, and `decimals` behind; then a letter, a sign and two digits.
inline bool isExponential(std::string_view field, std::size_t decimals) {
    const std::string_view number = unsignedPart(field);
    const std::size_t point = number.find('.');
    if (point > 1 || number.size() != point + 1 + decimals + 4) {
        return false;
    }
    const std::string_view exponent = number.substr(point + 1 + decimals);
    return (point == 0 || areDigits(number.substr(0, 1))) && areDigits(number.substr(point + 1, decimals)) &&
           std::string_view("EeDd").find(exponent[0]) != std::string_view::npos &&
           (exponent[1] == '+' || exponent[1] == '-') && areDigits(exponent.substr(2));
}

}  // namespace testsupport
