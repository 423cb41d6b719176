// What the targets that take a log share: how an input is laid out, and how bytes are handed out.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "run/run_options.h"

namespace fuzzing {

using Bytes = std::span<const std::uint8_t>;

inline std::string_view textOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}
inline Bytes bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// An input for a target that converts a log: three bytes that choose the run's options, then the log.
inline constexpr std::size_t optionBytes = 3;

struct LogInput {
    std::array<std::uint8_t, optionBytes> choice{};
    Bytes log;
};

inline LogInput splitInput(Bytes input) {
    LogInput split;
    const std::size_t taken = std::min(input.size(), optionBytes);
    std::copy_n(input.begin(), taken, split.choice.begin());
    split.log = input.subspan(taken);
    return split;
}

inline constexpr std::array<double, 3> versions = {3.05, 4.0, 4.01};
inline constexpr std::array<const char*, 3> versionTexts = {"3.05", "4.00", "4.01"};
inline std::size_t versionIndex(const LogInput& input) {
    return input.choice[0] % versions.size();
}

// Bits of the second byte: the constellations that are left out, in the order of these options.
inline constexpr std::array<const char*, 5> leaveOutOptions = {"-G", "-R", "-E", "-C", "-I"};
// Further bits of it.
inline constexpr std::uint8_t noOutputFile = 0x20;    // the observation file cannot be opened
inline constexpr std::uint8_t dormantSystems = 0x40;  // SBAS, QZSS and GLONASS CDMA are switched on

// The third byte: antenna offsets and number. The longest number is too long for the header.
inline constexpr std::array<const char*, 6> antennaOffsets = {"0",     "1.2345",  "-0.00004",
                                                              "1e300", "-1e-300", "-0.0"};
inline constexpr std::array<double, 6> antennaOffsetValues = {0.0, 1.2345, -0.00004, 1e300, -1e-300, -0.0};
inline constexpr std::array<const char*, 4> antennaNumbers = {"-Unknown-", "A 1", "12345678901234567890",
                                                              "123456789012345678901"};
// 0 is the height, then east and north.
inline std::size_t offsetIndex(const LogInput& input, std::size_t direction) {
    return (input.choice[2] + direction) % antennaOffsets.size();
}
inline std::size_t numberIndex(const LogInput& input) {
    return input.choice[2] / 16 % antennaNumbers.size();
}

inline orbconv::RunOptions optionsOf(const LogInput& input) {
    const auto included = [&](unsigned bit) { return (input.choice[1] >> bit & 1U) == 0; };
    const bool dormant = (input.choice[1] & dormantSystems) != 0;
    return {.rinexVersion = versions[versionIndex(input)],
            .includeGps = included(0),
            .includeGlonass = included(1),
            .includeGalileo = included(2),
            .includeBeidou = included(3),
            .includeNavic = included(4),
            .includeQzss = dormant,
            .includeSbas = dormant,
            .includeGlonassCdma = dormant,
            .inputFileName = "fuzz.log",
            .antennaDeltaH = antennaOffsetValues[offsetIndex(input, 0)],
            .antennaDeltaE = antennaOffsetValues[offsetIndex(input, 1)],
            .antennaDeltaN = antennaOffsetValues[offsetIndex(input, 2)],
            .antennaNumber = antennaNumbers[numberIndex(input)]};
}

// Hands out an input piece by piece; zeros once it is used up.
class ByteSource {
public:
    explicit ByteSource(Bytes bytes) : left_(bytes) {}

    [[nodiscard]] bool empty() const { return left_.empty(); }

    Bytes take(std::size_t count) {
        const Bytes taken = left_.first(std::min(count, left_.size()));
        left_ = left_.subspan(taken.size());
        return taken;
    }
    template <class T>
    T number() {
        std::array<std::uint8_t, sizeof(T)> raw{};
        const Bytes taken = take(sizeof(T));
        std::copy(taken.begin(), taken.end(), raw.begin());
        T value;
        std::memcpy(&value, raw.data(), sizeof(T));
        return value;
    }

private:
    Bytes left_;
};

}  // namespace fuzzing
