// What the observation messages of the log stand for: the messages of each band, and for each band and
// constellation the RINEX signal, its carrier, the correction of its phase, and the scales of its values.
// Knowledge of the format alone: no option, no gate and no placeholder stands here.
//
// A table by band has one row a band (c, 1, 2, 3, 5, l) and one column a constellation, in the order
// GPS, GLONASS, Galileo, QZSS, BeiDou, NavIC, SBAS, GLONASS CDMA.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "log/message_table.h"
#include "run/constants.h"
#include "run/constellation.h"

namespace orbconv {

// ---- bands and their messages ----

// Message families of the log, the band columns: c, 1, 2, 3, 5, l. A family is no carrier: which signal it
// stands for differs by constellation.
inline constexpr std::size_t bandCount = 6;
namespace bands {
inline constexpr std::size_t c = 0;
inline constexpr std::size_t b1 = 1;
inline constexpr std::size_t b2 = 2;
inline constexpr std::size_t b3 = 3;
inline constexpr std::size_t b5 = 4;
inline constexpr std::size_t l = 5;
}  // namespace bands

template <class T>
using PerBand = std::array<PerConstellation<T>, bandCount>;

// The messages that carry a band, each with one element for each entry of the satellite list.
struct BandMessages {
    MessageId flag;      // 16-bit word; bit 6: the signal is present
    MessageId range;     // band c: signed 32-bit, of rangeScales; the others: signed 16-bit, a difference
    MessageId phase;     // signed 32-bit, a time beside the reference range
    MessageId doppler;   // signed 16-bit, a difference from the reference Doppler
    MessageId strength;  // unsigned byte
};
// clang-format off
inline constexpr std::array<BandMessages, bandCount> bandMessages = {{
    //       flag  range phase Dopp. strength
    /* c */ {"FC", "rc", "cp", "0d", "CE"},
    /* 1 */ {"F1", "1r", "1p", "1d", "1E"},
    /* 2 */ {"F2", "2r", "2p", "2d", "2E"},
    /* 3 */ {"F3", "3r", "3p", "3d", "3E"},
    /* 5 */ {"F5", "5r", "5p", "5d", "5E"},
    /* l */ {"Fl", "lr", "lp", "ld", "lE"},
}};
// clang-format on

// What the differences refer to, and a Doppler that refers to nothing; all of band c, all signed 32-bit.
struct ReferenceMessages {
    MessageId range;        // in the scale of rc, whose place it takes
    MessageId doppler;      // of the differences 0d to ld
    MessageId fullDoppler;  // what band c has where it has no difference
};
inline constexpr ReferenceMessages referenceMessages = {.range = "rx", .doppler = "DX", .fullDoppler = "DC"};

// The band that a message carries; nothing for one that stands in neither table.
constexpr std::optional<std::size_t> bandOf(MessageId id) {
    for (std::size_t band = 0; band < bandCount; ++band) {
        const BandMessages& of = bandMessages[band];
        if (id == of.flag || id == of.range || id == of.phase || id == of.doppler || id == of.strength) {
            return band;
        }
    }
    const ReferenceMessages& of = referenceMessages;
    const bool ofBandC = id == of.range || id == of.doppler || id == of.fullDoppler;
    return ofBandC ? std::optional(bands::c) : std::nullopt;
}

inline constexpr std::uint32_t signalPresentBit = 1U << 6;

// ---- constellations ----

// The constellation behind a system code of the satellite list; nothing for code 8 and any other.
constexpr std::optional<Constellation> constellationOfCode(std::uint8_t code) {
    switch (code) {
        case 1: return Constellation::gps;
        case 2: return Constellation::glonass;
        case 3: return Constellation::sbas;
        case 4: return Constellation::galileo;
        case 5: return Constellation::qzss;
        case 6: return Constellation::beidou;
        case 7: return Constellation::navic;
        case 9: return Constellation::glonassCdma;
        default: return std::nullopt;
    }
}

// A range of BeiDou satellite numbers.
struct SatelliteClass {
    std::int32_t first;
    std::int32_t last;
    [[nodiscard]] constexpr bool holds(std::int32_t number) const {
        return number >= first && number <= last;
    }
};
inline constexpr SatelliteClass beidou6To18{6, 18};
inline constexpr SatelliteClass beidou6To58{6, 58};

// ---- signals ----

// Band and attribute of a RINEX observation code, such as "1C"; empty for none.
class SignalCode {
public:
    constexpr SignalCode() = default;
    // From a literal of exactly two characters.
    // NOLINTNEXTLINE(*-explicit-*, *-avoid-c-arrays): a code is written as its text
    constexpr SignalCode(const char (&text)[3]) : text_{text[0], text[1]} {}

    [[nodiscard]] constexpr bool empty() const { return text_[0] == 0; }
    [[nodiscard]] constexpr std::string_view view() const { return {text_.data(), empty() ? 0U : 2U}; }

private:
    std::array<char, 2> text_{};
};

// clang-format off

inline constexpr SignalCode noSignal{};
// None is told for QZSS and SBAS, which no run of the converter takes in.
inline constexpr PerBand<SignalCode> signalCodes = {{
    //        GPS   GLONASS   Galileo   QZSS      BeiDou NavIC     SBAS      CDMA
    /* c */ {{"1C", "1C",     "1X",     noSignal, "2I",  "9A",     noSignal, "4X"}},
    /* 1 */ {{"1W", "1P",     "8X",     noSignal, "8X",  noSignal, noSignal, noSignal}},
    /* 2 */ {{"2W", "2C",     "7X",     noSignal, "7I",  noSignal, noSignal, noSignal}},
    /* 3 */ {{"2X", "2P",     "6X",     noSignal, "6I",  noSignal, noSignal, "6X"}},
    /* 5 */ {{"5X", "3X",     "5X",     noSignal, "5X",  "5A",     noSignal, "3X"}},
    /* l */ {{"1X", noSignal, noSignal, noSignal, "1X",  "1X",     noSignal, noSignal}},
}};

// ---- carriers ----

// A carrier: fixed, or one of the three of GLONASS, the first two of which depend on the channel.
enum class CarrierKind : std::uint8_t { none, fixed, glonassL1, glonassL2, glonassL3 };
struct Carrier {
    CarrierKind kind = CarrierKind::none;
    double hertz = 0.0;  // of a fixed one
    constexpr Carrier() = default;
    // NOLINTNEXTLINE(*-explicit-*): a fixed carrier is written as its constant
    consteval Carrier(double fixedHertz) : kind(CarrierKind::fixed), hertz(fixedHertz) {}
    // NOLINTNEXTLINE(*-explicit-*): the others as their kind
    consteval Carrier(CarrierKind carrierKind) : kind(carrierKind) {}
};
inline constexpr CarrierKind noCarrier = CarrierKind::none;
inline constexpr CarrierKind glonassL1 = CarrierKind::glonassL1;
inline constexpr CarrierKind glonassL2 = CarrierKind::glonassL2;
inline constexpr CarrierKind glonassL3 = CarrierKind::glonassL3;

// The carrier that turns a phase from seconds to cycles, and to which a Doppler difference is scaled. NavIC
// has the S band in every band but 5 and l.
inline constexpr PerBand<Carrier> signalCarriers = {{
    //        GPS           GLONASS    Galileo            QZSS       BeiDou             NavIC           SBAS       CDMA
    /* c */ {{carrierGpsL1, glonassL1, carrierGpsL1,      noCarrier, carrierBeidouB1I,  carrierNavicS,  noCarrier, carrierGlonassCdmaL1}},
    /* 1 */ {{carrierGpsL1, glonassL1, carrierGalileoE5,  noCarrier, carrierBeidouB2ab, carrierNavicS,  noCarrier, noCarrier}},
    /* 2 */ {{carrierGpsL2, glonassL2, carrierGalileoE5b, noCarrier, carrierBeidouB2b,  carrierNavicS,  noCarrier, noCarrier}},
    /* 3 */ {{carrierGpsL2, glonassL2, carrierGalileoE6,  noCarrier, carrierBeidouB3I,  carrierNavicS,  noCarrier, carrierGlonassCdmaL2}},
    /* 5 */ {{carrierGpsL5, glonassL3, carrierGalileoE5a, noCarrier, carrierBeidouB2a,  carrierNavicL5, noCarrier, carrierGlonassCdmaL3}},
    /* l */ {{carrierGpsL1, noCarrier, noCarrier,         noCarrier, carrierBeidouB1C,  carrierNavicL1, noCarrier, noCarrier}},
}};

// The carrier that the reference Doppler refers to. That of NavIC is L1, though its band c is the S band.
inline constexpr PerConstellation<Carrier> dopplerReferences = {
  // GPS           GLONASS    Galileo       QZSS       BeiDou            NavIC           SBAS       CDMA
     carrierGpsL1, glonassL1, carrierGpsL1, noCarrier, carrierBeidouB1I, carrierNavicL1, noCarrier, carrierGlonassCdmaL1};

// A carrier of GLONASS in MHz; `channel` as the satellite list has it, signed.
constexpr double glonassMegahertz(CarrierKind kind, std::int32_t channel) {
    switch (kind) {
        case CarrierKind::glonassL1: return glonassL1Megahertz(channel);
        case CarrierKind::glonassL2: return glonassL2Megahertz(channel);
        default: return glonassL3Megahertz;
    }
}

// ---- corrections of the phase ----

// Cycles, added to the phase.
inline constexpr PerBand<float> phaseShifts = {{
    //        GPS     GLONASS Galileo QZSS    BeiDou NavIC SBAS   CDMA
    /* c */ {{0.0F,   0.0F,   0.5F,   0.0F,   0.0F,  0.0F, 0.0F,  0.0F}},
    /* 1 */ {{-0.25F, -0.25F, 0.25F,  0.0F,   0.25F, 0.0F, 0.0F,  0.0F}},
    /* 2 */ {{0.0F,   0.25F,  0.25F,  0.25F,  0.0F,  0.0F, 0.0F,  0.0F}},
    /* 3 */ {{0.25F,  0.0F,   0.5F,   0.0F,   0.0F,  0.0F, 0.0F,  0.0F}},
    /* 5 */ {{0.25F,  0.25F,  0.25F,  0.25F,  0.25F, 0.0F, 0.25F, 0.0F}},
    /* l */ {{-0.25F, 0.0F,   0.0F,   -0.25F, 0.0F,  0.0F, 0.0F,  0.0F}},
}};

// Cycles that a class of BeiDou satellites takes behind its shift.
struct BeidouExtraPhase {
    SatelliteClass satellites;
    double cycles;
};
inline constexpr std::array<BeidouExtraPhase, bandCount> beidouExtraPhases = {{
    //       class        cycles
    /* c */ {beidou6To58, 0.5},
    /* 1 */ {beidou6To58, 0.0},
    /* 2 */ {beidou6To18, 0.25},
    /* 3 */ {beidou6To58, 0.5},
    /* 5 */ {beidou6To18, 0.5},
    /* l */ {beidou6To58, 0.0},
}};

// ---- scales ----

// A full range is a time of flight: count * unit + offset. That of a band behind c, and the time that its
// phase turns into cycles, is the reference range's with a difference: count * rangeDeltaUnit +
// rangeDeltaOffset and count * phaseUnit. Doppler has dopplerUnit, its sign turned; strength strengthUnit.
struct RangeScale {
    double unit;    // seconds per count
    double offset;  // seconds
};
inline constexpr PerConstellation<RangeScale> rangeScales = {{
    /* GPS     */ {rangeUnitGps, rangeOffsetGpsGlonass},
    /* GLONASS */ {rangeUnitGlonass, rangeOffsetGpsGlonass},
    /* Galileo */ {rangeUnitGalileo, rangeOffsetGalileo},
    /* QZSS    */ {},
    /* BeiDou  */ {rangeUnitBeidou, rangeOffsetBeidouNavic},
    /* NavIC   */ {rangeUnitNavic, rangeOffsetBeidouNavic},
    /* SBAS    */ {},
    /* CDMA    */ {rangeUnitGlonassCdma, rangeOffsetGpsGlonass},
}};

// clang-format on

// The RINEX digit of a strength in dB-Hz.
constexpr std::int32_t strengthDigit(double strength) {
    return std::clamp(static_cast<std::int32_t>(strength / strengthPerDigit), 1, 9);
}

}  // namespace orbconv
