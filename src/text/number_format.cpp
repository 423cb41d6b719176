#include "text/number_format.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

namespace orbconv {

namespace {

constexpr int significandBits = 52;
constexpr int exponentBias = 1075;  // of the significand taken as an integer
constexpr std::uint64_t hiddenBit = std::uint64_t{1} << significandBits;

// The three powers that keep a 53-bit significand times the power below 2^63.
constexpr std::array<std::uint64_t, 4> smallPowersOfTen = {1, 10, 100, 1000};

// "00", "01" .. "99", two digits a step.
constexpr auto digitPairs = []() {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Writes the digits of `value` so that they end at `end`, and returns where they begin.
char* digitsBackwards(char* end, std::uint64_t value) {
    while (value >= 100) {
        const std::uint64_t quotient = value / 100;
        end -= 2;
        std::memcpy(end, &digitPairs[2 * (value - quotient * 100)], 2);
        value = quotient;
    }
    if (value >= 10) {
        end -= 2;
        std::memcpy(end, &digitPairs[2 * value], 2);
    } else {
        *--end = static_cast<char>('0' + value);
    }
    return end;
}

// Widths in which a number with three decimals is made in place. The narrowest holds "-0.000"; from the
// widest on every value below 2^53 fits.
constexpr int minWidthInPlace = 6;
constexpr int maxWidthInPlace = 21;

// The whole part that no longer fits beside a sign, the point and three decimals, by the field's width.
constexpr auto wholeLimit = []() {
    std::array<std::uint64_t, maxWidthInPlace> limit{};
    std::uint64_t power = 10;
    for (std::size_t width = minWidthInPlace; width < limit.size(); ++width, power *= 10) {
        limit[width] = power;
    }
    return limit;
}();

// A double taken apart: value = significand * 2^exponent, the sign aside.
struct Binary {
    std::uint64_t significand;
    int exponent;
    bool negative;
    bool finite;
};

Binary takeApart(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const auto biased = static_cast<int>((bits >> significandBits) & 0x7FF);
    const std::uint64_t fraction = bits & (hiddenBit - 1);
    return {.significand = biased == 0 ? fraction : fraction | hiddenBit,
            .exponent = (biased == 0 ? 1 : biased) - exponentBias,
            .negative = (bits >> 63) != 0,
            .finite = biased != 0x7FF};
}

// |value| * power, rounded half-even to an integer. Exact: the product stays below 2^63, so that the
// bits shifted out are the whole remainder. Only for a negative exponent.
std::uint64_t scaledToInteger(const Binary& binary, std::uint64_t power) {
    const std::uint64_t product = binary.significand * power;
    const int shift = -binary.exponent;
    if (shift > 63) {
        return 0;  // the product is below 2^63, so below half a unit
    }
    const std::uint64_t quotient = product >> shift;
    const std::uint64_t remainder = product & ((std::uint64_t{1} << shift) - 1);
    const std::uint64_t half = std::uint64_t{1} << (shift - 1);
    const bool roundUp = remainder > half || (remainder == half && (quotient & 1) != 0);
    return quotient + (roundUp ? 1 : 0);
}

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

char* formatExactly(char* out, double value, int decimals) {
    const Binary binary = takeApart(value);
    const std::uint64_t power = smallPowersOfTen[static_cast<std::size_t>(decimals)];
    const std::uint64_t scaled = scaledToInteger(binary, power);
    if (binary.negative) {
        *out++ = '-';
    }
    std::array<char, 24> digits;  // NOLINT(*-member-init): filled from the end
    char* const end = digits.data() + digits.size();
    char* begin = digitsBackwards(end, scaled / power);
    std::memcpy(out, begin, static_cast<std::size_t>(end - begin));
    out += end - begin;
    if (decimals > 0) {
        *out++ = '.';
        // A leading 1 keeps the zeros directly behind the point.
        begin = digitsBackwards(end, scaled % power + power) + 1;
        std::memcpy(out, begin, static_cast<std::size_t>(end - begin));
        out += end - begin;
    }
    return out;
}

// The careful way for what does not fit its field, or may not.
char* placeRight(char* field, double value, int width) {
    std::array<char, maxNumberText> text;  // NOLINT(*-member-init): filled by the formatter
    const char* const end = formatFixed(text.data(), value, 3);
    const auto length = static_cast<int>(end - text.data());
    char* const out = length < width ? field + (width - length) : field;
    std::memcpy(out, text.data(), static_cast<std::size_t>(length));
    return out + length;
}

bool fitsInPlace(std::uint64_t whole, int width) {
    return width >= minWidthInPlace &&
           (width >= maxWidthInPlace || whole < wholeLimit[static_cast<std::size_t>(width)]);
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
        return formatExactly(out, value, decimals);
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

char* formatFixed3IntoBlanks(char* field, double value, int width) {
    const Binary binary = takeApart(value);
    if (binary.exponent >= 0) [[unlikely]] {  // 2^53 and above, or no number
        return placeRight(field, value, width);
    }
    const std::uint64_t scaled = scaledToInteger(binary, 1000);
    const std::uint64_t whole = scaled / 1000;
    const std::uint64_t thousandths = scaled - whole * 1000;
    if (!fitsInPlace(whole, width)) [[unlikely]] {
        return placeRight(field, value, width);
    }
    char* const end = field + width;
    char* out = end - 2;
    std::memcpy(out, &digitPairs[2 * (thousandths % 100)], 2);
    *--out = static_cast<char>('0' + thousandths / 100);
    *--out = '.';
    out = digitsBackwards(out, whole);
    if (binary.negative) {
        *--out = '-';
    }
    return end;
}

}  // namespace orbconv
