// The orbit and clock that open the bodies of GE, EN, CN and IE.
#pragma once

#include <cstdint>

namespace orbconv {

// What GPS, Galileo, BeiDou and NavIC ephemerides have in common. Angles in radians, rates in radians per
// second, times in seconds (of week), lengths in metres.
struct KeplerBlock {
    std::int32_t sv;
    std::uint32_t tot;
    std::uint8_t l2Flags;  // bit 1: L2 P data flag, bit 2: codes on L2
    std::int16_t iodc;
    std::int32_t toc;       // no record of this program shows it
    std::int32_t accuracy;  // metres; for Galileo the raw index, which no record shows
    std::int32_t health;
    std::int16_t week;
    float tgd, af2, af1, af0;
    std::int32_t toe;  // key of duplicates and of the sort
    std::uint16_t iode;
    double sqrtA, e, M0, Omega0, i0, omega;
    float deltaN, OmegaDot, IDOT;
    float Crc, Crs, Cuc, Cus, Cic, Cis;
};

// Decodes all of the block but `sv` and `accuracy`, which are left as they were. `weekOffset` is added in 16
// bits.
void decodeKeplerBlock(const std::uint8_t* body, std::int32_t weekOffset, KeplerBlock& kepler);

// The accuracy in metres for an index of GPS, BeiDou or NavIC.
std::int32_t accuracyInMetres(std::int8_t uraIndex);

// What makes two ephemerides of a table the same one: satellite, toe, and three flag bits where a table
// compares them.
constexpr std::uint64_t duplicateKey(const KeplerBlock& kepler, std::uint8_t flags = 0) {
    return static_cast<std::uint64_t>(flags & 7U) << 40 |
           static_cast<std::uint64_t>(static_cast<std::uint8_t>(kepler.sv)) << 32 |
           static_cast<std::uint32_t>(kepler.toe);
}

}  // namespace orbconv
