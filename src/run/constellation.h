// The constellations, in the order that the tables of the program and the lines of its files keep.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace orbconv {

enum class Constellation : std::uint8_t { gps, glonass, galileo, qzss, beidou, navic, sbas, glonassCdma };

inline constexpr std::size_t constellationCount = 8;

// One value for each constellation, in the order of the enumeration.
template <class T>
using PerConstellation = std::array<T, constellationCount>;

// RINEX system letters. GLONASS CDMA has none in the standard; no line shows the M.
inline constexpr PerConstellation<char> systemLetters = {'G', 'R', 'E', 'J', 'C', 'I', 'S', 'M'};

constexpr std::size_t indexOf(Constellation constellation) {
    return static_cast<std::size_t>(constellation);
}

}  // namespace orbconv
