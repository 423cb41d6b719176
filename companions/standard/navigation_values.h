// Indices and flags of the navigation messages as RINEX prints them.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "navdecode/message_meaning.h"

namespace orbconv::standard {

// Numbers beyond have three digits in their exponent, for which no field has room. The greatest one is less
// than 1e100 when it is rounded to four decimals.
inline constexpr double greatestValue = 9.9999e99;
inline constexpr double leastValue = 1e-99;

// A value as its field can hold it: what is too small is 0, which has no sign. Nothing for what no field can
// hold.
inline std::optional<double> printable(double value) {
    if (!(std::abs(value) <= greatestValue)) {
        return std::nullopt;
    }
    return std::abs(value) < leastValue ? 0.0 : value;
}

// Metres of a URA index of GPS, BeiDou (D1, D2) and NavIC: the nominal values, not the upper bounds of the
// interface documents (RINEX). An index outside 0 to 15 is unknown.
inline constexpr std::array<double, 16> nominalAccuracies = {
    2.0, 2.8, 4.0, 5.7, 8.0, 11.3, 16.0, 32.0, 64.0, 128.0, 256.0, 512.0, 1024.0, 2048.0, 4096.0, 8192.0};
constexpr std::optional<double> nominalAccuracy(std::int32_t index) {
    if (index < 0 || index >= static_cast<std::int32_t>(nominalAccuracies.size())) {
        return std::nullopt;
    }
    return nominalAccuracies[static_cast<std::size_t>(index)];
}

// Metres of Galileo's SISA index; -1 where no accuracy is predicted.
inline double sisaOf(std::int32_t index) {
    for (const SisaRow& row : sisaRows) {
        if (index >= row.first && index <= row.last) {
            // In hundredths, so that the quotient is the number that is nearest to the decimal one.
            const auto hundredths = [](double metres) { return std::lround(metres * 100.0); };
            const long whole =
                hundredths(static_cast<double>(row.start)) + (index - row.first) * hundredths(row.step);
            return static_cast<double>(whole) / 100.0;
        }
    }
    return static_cast<double>(noAccuracy);
}

// The data source of a Galileo record: which message, on which signals, for which pair the clock is.
constexpr double galileoDataSource(NavType type, std::uint8_t navFlags) {
    constexpr std::uint32_t clockOfE5a = 1U << 8;
    constexpr std::uint32_t clockOfE5b = 1U << 9;
    constexpr std::uint32_t inavSignals = 0b101;
    constexpr std::uint32_t fnavSignal = 0b010;
    return type == NavType::inav ? clockOfE5b | (navFlags & inavSignals) : clockOfE5a | fnavSignal;
}

}  // namespace orbconv::standard
