// Numeric constants of the observation assembly, formed so that the rounding is the same everywhere:
// a frequency is a power of ten times the value in MHz, a doubled unit is a unit added to itself.
#pragma once

namespace orbconv {

inline constexpr double speedOfLight = 299792458.0;  // m/s

inline constexpr double hertzPerMegahertz = 1e6;

// Carrier frequencies in Hz.
inline constexpr double carrierGpsL1 = hertzPerMegahertz * 1575.42;
inline constexpr double carrierGpsL2 = hertzPerMegahertz * 1227.6;
inline constexpr double carrierGpsL5 = hertzPerMegahertz * 1176.45;
inline constexpr double carrierGalileoE5a = hertzPerMegahertz * 1176.45;
inline constexpr double carrierGalileoE5b = hertzPerMegahertz * 1207.14;
inline constexpr double carrierGalileoE5 = hertzPerMegahertz * 1191.795;
inline constexpr double carrierGalileoE6 = hertzPerMegahertz * 1278.75;
inline constexpr double carrierBeidouB1I = hertzPerMegahertz * 1561.098;
inline constexpr double carrierBeidouB1C = hertzPerMegahertz * 1575.42;
inline constexpr double carrierBeidouB2a = hertzPerMegahertz * 1176.45;
inline constexpr double carrierBeidouB2b = hertzPerMegahertz * 1207.14;
inline constexpr double carrierBeidouB2ab = hertzPerMegahertz * 1191.795;
inline constexpr double carrierBeidouB3I = hertzPerMegahertz * 1268.52;
inline constexpr double carrierNavicL1 = hertzPerMegahertz * 1575.42;
inline constexpr double carrierNavicL5 = hertzPerMegahertz * 1176.45;
inline constexpr double carrierNavicS = hertzPerMegahertz * 2492.028;
inline constexpr double carrierGlonassCdmaL1 = hertzPerMegahertz * 1600.995;
inline constexpr double carrierGlonassCdmaL2 = hertzPerMegahertz * 1248.06;

// GLONASS carriers in MHz. `channel` is the frequency channel, -7 to 6 in a sound log.
constexpr double glonassL1Megahertz(int channel) {
    return channel * 0.5625 + 1602.0;
}
constexpr double glonassL2Megahertz(int channel) {
    return channel * 0.4375 + 1246.0;
}
inline constexpr double glonassL3Megahertz = 1202.025;
inline constexpr double carrierGlonassCdmaL3 = hertzPerMegahertz * glonassL3Megahertz;

// Units of the full range fields, seconds per count (receiver's format).
inline constexpr double rangeUnitGps = 1e-11;
inline constexpr double rangeUnitGlonass = 1e-11;
inline constexpr double rangeUnitGlonassCdma = 1e-11;
inline constexpr double rangeUnitGalileo = 1e-11 + 1e-11;
inline constexpr double rangeUnitBeidou = 1e-11 + 1e-11;
inline constexpr double rangeUnitNavic = 1e-11 + 1e-11;

// Offsets of the full range fields, seconds (receiver's format).
inline constexpr double rangeOffsetGpsGlonass = 0.075;
inline constexpr double rangeOffsetGalileo = 0.085;
inline constexpr double rangeOffsetBeidouNavic = 0.105;

// The range differences: seconds per count, and the offset that every difference carries.
inline constexpr double rangeDeltaUnit = 1e-11;
inline constexpr double rangeDeltaOffset = 2e-7;

inline constexpr double dopplerUnit = 1e-4;                 // Hz per count
inline constexpr double phaseUnit = 9.094947017729282e-13;  // 2^-40 s per count
inline constexpr double strengthUnit = 0.25;                // dB-Hz per count
inline constexpr double strengthPerDigit = 6.0;             // dB-Hz per RINEX strength digit

static_assert(phaseUnit * 1099511627776.0 == 1.0, "the phase unit is 2 to the power -40");

}  // namespace orbconv
