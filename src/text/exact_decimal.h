// Exact decimal formatting by integer arithmetic: the core of the number formatters, inline because the
// hot path of the program is one such number after another.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orbconv::decimal {

inline constexpr int significandBits = 52;
inline constexpr int exponentBias = 1075;  // of the significand taken as an integer
inline constexpr std::uint64_t hiddenBit = std::uint64_t{1} << significandBits;

// A double taken apart: value = significand * 2^exponent, the sign aside. Zero and subnormal numbers get the
// hidden bit too: so far below all that is printed of a number, it makes no difference.
struct Binary {
    std::uint64_t significand;
    int exponent;
    bool negative;
    bool finite;
};

inline Binary takeApart(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const auto biased = static_cast<int>((bits >> significandBits) & 0x7FF);
    return {.significand = (bits & (hiddenBit - 1)) | hiddenBit,
            .exponent = biased - exponentBias,
            .negative = (bits >> 63) != 0,
            .finite = biased != 0x7FF};
}

// |value| * power, rounded half-even to an integer, for a negative exponent and a power of at most 1000.
// Exact: the product stays below 2^63, so that the bits shifted out are the whole remainder.
inline std::uint64_t scaledToInteger(const Binary& binary, std::uint64_t power) {
    const std::uint64_t product = binary.significand * power;
    const int shift = -binary.exponent;
    if (shift > 63) {
        return 0;  // the product is below 2^63, so below half a unit
    }
    const std::uint64_t quotient = product >> shift;
    const std::uint64_t remainder = product << (64 - shift);  // the lowest bit is free
    constexpr std::uint64_t half = std::uint64_t{1} << 63;
    // One comparison: an odd quotient tips a tie over. Which way a number is rounded is a coin toss, and a
    // branch on it would cost as much as all the rest.
    return quotient + static_cast<std::uint64_t>(remainder + (quotient & 1) > half);
}

// The numbers 0 to 999 as four characters: behind a point with all their digits, and as the first digits of
// a number, behind blanks, or blanks and a minus sign.
struct DigitGroups {
    using Group = std::array<char, 4>;
    std::array<Group, 1000> behindPoint;
    std::array<Group, 1000> leading;
    std::array<Group, 1000> negative;
};
inline constexpr DigitGroups digitGroups = []() {
    DigitGroups groups{};
    for (std::size_t i = 0; i < groups.leading.size(); ++i) {
        const auto hundreds = static_cast<char>('0' + i / 100);
        const auto tens = static_cast<char>('0' + i / 10 % 10);
        const auto ones = static_cast<char>('0' + i % 10);
        groups.behindPoint[i] = {'.', hundreds, tens, ones};
        groups.leading[i] = {' ', i >= 100 ? hundreds : ' ', i >= 10 ? tens : ' ', ones};
        groups.negative[i] = groups.leading[i];
        groups.negative[i][i >= 100 ? 0 : i >= 10 ? 1 : 2] = '-';
    }
    return groups;
}();

// A number is made in place out of whole groups if its field has this width at least, and its thousandfold is
// below the limit of the width: six or nine digits ahead of the point.
inline constexpr int narrowestField = 11;
constexpr std::uint64_t scaledLimit(int width) {
    return width < 14 ? 1'000'000'000 : 1'000'000'000'000;
}

}  // namespace orbconv::decimal
