// Numbers to characters, exactly as a classic-locale C++ stream prints them for the same notation and
// precision: rounded half-even on the exact binary value, "inf", "nan" and "-nan" for what is no number.
// Nothing here depends on a locale, on the C library's printf or on a stream.
#pragma once

#include <cstdint>
#include <cstring>

#include "text/exact_decimal.h"

namespace orbconv {

// The longest text that formatFixed or formatScientific produces: the largest double has 309 digits
// ahead of the point.
inline constexpr int maxNumberText = 352;

// The most decimals and the highest precision that the formatters take.
inline constexpr int maxDecimals = 20;

// Writes `value` in decimal and returns the end of the text. Needs room for 20 characters.
char* formatInteger(char* out, std::int64_t value);

// Fixed-point notation with `decimals` digits behind the point, and no point when there are none.
// Needs room for maxNumberText characters; returns the end of the text.
char* formatFixed(char* out, double value, int decimals);

// Scientific notation with `precision` decimals and `exponentLetter` ahead of the exponent, which has a
// sign and at least two digits. Needs room for maxNumberText characters; returns the end of the text.
char* formatScientific(char* out, double value, int precision, char exponentLetter);

// The same as formatFixed, right-justified into `width` columns that the caller has already filled with
// blanks: returns field + width, or further if the text is wider than its field. Needs room for
// maxNumberText characters from `field`.
char* formatRightIntoBlanks(char* field, double value, int decimals, int width);

// formatRightIntoBlanks with three decimals, made in place wherever the number fits. This is the hot path of
// the program.
inline char* formatFixed3IntoBlanks(char* field, double value, int width) {
    constexpr std::uint32_t thousand = 1000;
    constexpr std::uint32_t million = 1'000'000;
    const decimal::Binary binary = decimal::takeApart(value);
    if (binary.exponent >= 0 || width < decimal::narrowestField) [[unlikely]] {  // huge, or no number
        return formatRightIntoBlanks(field, value, 3, width);
    }
    const std::uint64_t scaled = decimal::scaledToInteger(binary, thousand);
    if (scaled >= decimal::scaledLimit(width)) [[unlikely]] {
        return formatRightIntoBlanks(field, value, 3, width);
    }
    // From the end, three digits a group. A group's first character is overwritten by the group ahead of it.
    char* const end = field + width;
    const auto putGroup = [](char* out, std::uint32_t digits) {
        std::memcpy(out, decimal::digitGroups.behindPoint[digits].data(), 4);
    };
    // Six digits at a time fit 32 bits, and their divisions run side by side.
    auto low = static_cast<std::uint32_t>(scaled);
    std::uint32_t leading = low / thousand;
    char* out = end - 4;
    if (scaled >= million) {
        const auto high = static_cast<std::uint32_t>(scaled / million);
        low -= high * million;  // of the lower 32 bits of both: the difference fits
        putGroup(end - 8, low / thousand);
        leading = high;
        out = end - 7;
        if (high >= thousand) {
            leading = high / thousand;
            putGroup(end - 11, high % thousand);
            out = end - 10;
        }
    }
    putGroup(end - 4, low % thousand);
    const auto& leadingGroups =
        binary.negative ? decimal::digitGroups.negative : decimal::digitGroups.leading;
    std::memcpy(out - 4, leadingGroups[leading].data(), 4);
    return end;
}

}  // namespace orbconv
