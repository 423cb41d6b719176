// Chance for the sample log: the same numbers from the same seed on every machine, by integer arithmetic
// alone.

#pragma once

#include <cstdint>

namespace samplelog {

// Mixes 64 bits so that close inputs give unrelated outputs.
constexpr std::uint64_t mixBits(std::uint64_t value) {
    value += 0x9E3779B97F4A7C15U;
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31U);
}

// A number of its own for each combination of the arguments, at any time and in any order of asking.
constexpr std::uint64_t hashOf(std::uint64_t seed, std::uint64_t a, std::uint64_t b = 0,
                               std::uint64_t c = 0) {
    return mixBits(mixBits(mixBits(mixBits(seed) ^ a) ^ b) ^ c);
}

// 0 up to, not including, 1.
constexpr double toUnit(std::uint64_t bits) {
    return static_cast<double>(bits >> 11U) * 0x1p-53;
}

// -1 up to, not including, 1.
constexpr double toSymmetric(std::uint64_t bits) {
    return 2.0 * toUnit(bits) - 1.0;
}

// A stream of noise.
struct NoiseSource {
    std::uint64_t state = 0;

    constexpr std::uint64_t next() {
        state += 0x9E3779B97F4A7C15U;
        return mixBits(state);
    }

    // Nearly normal with mean 0 and deviation 1, never beyond 3.5: the sum of four even distributions.
    constexpr double normal() {
        const std::uint64_t bits = next();
        const std::uint64_t sum =
            (bits & 0xFFFFU) + ((bits >> 16U) & 0xFFFFU) + ((bits >> 32U) & 0xFFFFU) + (bits >> 48U);
        constexpr double mean = 2.0 * 65535.0;
        constexpr double deviation = 65536.0 / 1.7320508075688772;
        return (static_cast<double>(sum) - mean) / deviation;
    }
};

}  // namespace samplelog
