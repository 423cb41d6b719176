#include "text/number_format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "text/exact_decimal.h"

namespace orbconv {

namespace {

using decimal::Binary;
using decimal::scaledToInteger;
using decimal::takeApart;

// The three powers that keep a 53-bit significand times the power below 2^63.
constexpr std::array<std::uint64_t, 4> smallPowersOfTen = {1, 10, 100, 1000};

char* copyText(char* out, const char* text) {
    const std::size_t length = std::strlen(text);
    std::memcpy(out, text, length);
    return out + length;
}

// The sign of a not-a-number is printed too, as the stream does.
char* formatNotFinite(char* out, double value) {
    if (std::signbit(value)) {
        *out++ = '-';
    }
    return copyText(out, std::isnan(value) ? "nan" : "inf");
}

char* formatExactly(char* out, const Binary& binary, int decimals) {
    const std::uint64_t power = smallPowersOfTen[static_cast<std::size_t>(decimals)];
    const std::uint64_t scaled = scaledToInteger(binary, power);
    if (binary.negative) {
        *out++ = '-';
    }
    out = std::to_chars(out, out + 20, scaled / power).ptr;
    if (decimals > 0) {
        // A leading 1 keeps the zeros directly behind the point, which then takes its place.
        char* const point = out;
        out = std::to_chars(out, out + 20, scaled % power + power).ptr;
        *point = '.';
    }
    return out;
}

}  // namespace

char* formatInteger(char* out, std::int64_t value) {
    return std::to_chars(out, out + 20, value).ptr;
}

char* formatFixed(char* out, double value, int decimals) {
    const Binary binary = takeApart(value);
    if (!binary.finite) {
        return formatNotFinite(out, value);
    }
    if (binary.exponent < 0 && decimals < static_cast<int>(smallPowersOfTen.size())) {
        return formatExactly(out, binary, decimals);
    }
    return std::to_chars(out, out + maxNumberText, value, std::chars_format::fixed, decimals).ptr;
}

char* formatScientific(char* out, double value, int precision, char exponentLetter) {
    if (!std::isfinite(value)) {
        return formatNotFinite(out, value);
    }
    char* const end =
        std::to_chars(out, out + maxNumberText, value, std::chars_format::scientific, precision).ptr;
    // The exponent is e, a sign and two or three digits.
    char* const letter = end[-4] == 'e' ? end - 4 : end - 5;
    *letter = exponentLetter;
    return end;
}

char* formatRightIntoBlanks(char* field, double value, int decimals, int width) {
    std::array<char, maxNumberText> text;  // NOLINT(*-member-init): filled by the formatter
    const char* const end = formatFixed(text.data(), value, decimals);
    const auto length = static_cast<int>(end - text.data());
    char* const out = length < width ? field + (width - length) : field;
    std::memcpy(out, text.data(), static_cast<std::size_t>(length));
    return out + length;
}

}  // namespace orbconv
