// The fixed knowledge of which message of the log is which RINEX observable for each constellation: codes,
// names, carriers, phase shifts, and the gates of version and option that a step puts before each of them.
//
// Every table has one row a band (c, 1, 2, 3, 5, l) and one column a constellation, in the order
// GPS, GLONASS, Galileo, QZSS, BeiDou, NavIC, SBAS, GLONASS CDMA.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "assembly/epoch_store.h"
#include "run/constants.h"
#include "run/constellation.h"

namespace orbconv {

template <class T>
using PerBand = std::array<PerConstellation<T>, bandCount>;

// The constellation behind a system code of the observation messages; nothing for code 8 and any other.
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

// ---- gates ----

// For which RINEX versions a signal is taken. The comparisons are exact. No run has the versions 8.0, 135.0
// and 136.0: a signal behind one of them is switched off while its code stays in place.
enum class VersionRule : std::uint8_t {
    never,
    always,
    any3Or4,  // 3.05, 4.0 or 4.01
    any4,     // 4.0 or 4.01
    only401,
    atLeast305,
    atLeast401,
    off8,
    off135,
    off136,
};
inline constexpr std::size_t versionRules = static_cast<std::size_t>(VersionRule::off136) + 1;

constexpr bool passes(VersionRule rule, double version) {
    switch (rule) {
        case VersionRule::never: return false;
        case VersionRule::always: return true;
        case VersionRule::any3Or4: return version == 3.05 || version == 4.0 || version == 4.01;
        case VersionRule::any4: return version == 4.0 || version == 4.01;
        case VersionRule::only401: return version == 4.01;
        case VersionRule::atLeast305: return version >= 3.05;
        case VersionRule::atLeast401: return version >= 4.01;
        case VersionRule::off8: return version == 8.0;
        case VersionRule::off135: return version == 135.0;
        case VersionRule::off136: return version == 136.0;
    }
    return false;
}

// What a step asks before it takes a constellation's values.
struct StepGate {
    bool needsInclude = false;
    VersionRule versions = VersionRule::never;
};

// The gates that a run opens: known once, asked for each constellation in each step.
class OpenGates {
public:
    explicit OpenGates(const RunOptions& options) : included_(includedConstellations(options)) {
        for (std::size_t rule = 0; rule < open_.size(); ++rule) {
            open_[rule] = passes(static_cast<VersionRule>(rule), options.rinexVersion);
        }
    }
    [[nodiscard]] bool lets(Constellation constellation, const StepGate& gate) const {
        return open(gate.versions) && (!gate.needsInclude || included_[indexOf(constellation)]);
    }
    [[nodiscard]] bool open(VersionRule rule) const { return open_[static_cast<std::size_t>(rule)]; }

private:
    PerConstellation<bool> included_;
    std::array<bool, versionRules> open_{};
};

namespace gates {
inline constexpr StepGate none{};
inline constexpr StepGate always{.versions = VersionRule::always};
inline constexpr StepGate any3Or4{.versions = VersionRule::any3Or4};
inline constexpr StepGate any4{.versions = VersionRule::any4};
inline constexpr StepGate only401{.versions = VersionRule::only401};
inline constexpr StepGate from401{.versions = VersionRule::atLeast401};
inline constexpr StepGate off135{.versions = VersionRule::off135};
inline constexpr StepGate off136{.versions = VersionRule::off136};
// These ask for the constellation's include flag too.
inline constexpr StepGate included{.needsInclude = true, .versions = VersionRule::always};
inline constexpr StepGate incl3Or4{.needsInclude = true, .versions = VersionRule::any3Or4};
inline constexpr StepGate incl401{.needsInclude = true, .versions = VersionRule::only401};
inline constexpr StepGate inclFrom305{.needsInclude = true, .versions = VersionRule::atLeast305};
inline constexpr StepGate inclFrom401{.needsInclude = true, .versions = VersionRule::atLeast401};
inline constexpr StepGate inclOff8{.needsInclude = true, .versions = VersionRule::off8};
inline constexpr StepGate inclOff136{.needsInclude = true, .versions = VersionRule::off136};
}  // namespace gates

// clang-format off

// FC, F1, F2, F3, F5, Fl. SBAS and QZSS have no part in these steps.
inline constexpr PerBand<StepGate> flagGates = {{
    //     GPS              GLONASS             Galileo             QZSS         BeiDou           NavIC               SBAS         CDMA
    {{gates::included, gates::included,    gates::inclFrom305, gates::none, gates::included, gates::incl3Or4,    gates::none, gates::included}},
    {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::inclOff136,  gates::none, gates::none}},
    {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::inclOff136,  gates::none, gates::none}},
    {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::inclOff136,  gates::none, gates::included}},
    {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::included,    gates::none, gates::included}},
    {{gates::included, gates::inclOff8,    gates::inclOff136,  gates::none, gates::included, gates::inclFrom401, gates::none, gates::none}},
}};

// rc, and rx, which asks for the include flag alone, whatever the version.
inline constexpr PerConstellation<StepGate> fullRangeGates =
    {gates::included, gates::included, gates::included, gates::none, gates::included, gates::incl3Or4, gates::none, gates::included};
inline constexpr PerConstellation<StepGate> clockOffsetGates =
    {gates::included, gates::included, gates::included, gates::none, gates::included, gates::included, gates::none, gates::included};

// 1r, 2r, 3r, 5r, lr; band c has the full range. Deliberate: only 1r looks at the include flags. A QZSS or
// SBAS entry has no record; what passes here is only remembered as the last range difference.
inline constexpr PerBand<StepGate> rangeDeltaGates = {{
    //     GPS              GLONASS             Galileo             QZSS         BeiDou           NavIC           SBAS         CDMA
    {{gates::none,     gates::none,     gates::none,     gates::none, gates::none,     gates::none,    gates::none, gates::none}},
    {{gates::included, gates::included, gates::included, gates::any4, gates::included, gates::off135,  gates::off135, gates::off135}},
    {{gates::always,   gates::always,   gates::always,   gates::none, gates::always,   gates::any4,    gates::none, gates::off135}},
    {{gates::always,   gates::always,   gates::always,   gates::none, gates::always,   gates::off135,  gates::none, gates::off135}},
    {{gates::always,   gates::always,   gates::always,   gates::none, gates::always,   gates::always,  gates::none, gates::always}},
    {{gates::always,   gates::any4,     gates::none,     gates::none, gates::always,   gates::only401, gates::none, gates::always}},
}};

// 0d, 1d, 2d, 3d, 5d, ld. No Doppler step looks at an include flag.
inline constexpr PerBand<StepGate> dopplerGates = {{
    //     GPS            GLONASS        Galileo        QZSS         BeiDou         NavIC           SBAS         CDMA
    {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::any3Or4, gates::none, gates::off135}},
    {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::any4,    gates::none, gates::none}},
    {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::off136,  gates::none, gates::none}},
    {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::off136,  gates::none, gates::always}},
    {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::always,  gates::none, gates::always}},
    {{gates::always, gates::none,   gates::none,   gates::none, gates::always, gates::only401, gates::none, gates::none}},
}};

// DX. Deliberate: no flag, no version and no satellite number is looked at.
inline constexpr PerConstellation<StepGate> referenceDopplerGates =
    {gates::always, gates::always, gates::always, gates::none, gates::always, gates::always, gates::none, gates::always};

// DC.
inline constexpr PerConstellation<StepGate> fullDopplerGates =
    {gates::always, gates::always, gates::always, gates::none, gates::always, gates::any3Or4, gates::none, gates::always};

// cp, 1p, 2p, 3p, 5p, lp. No phase step looks at an include flag.
inline constexpr PerBand<StepGate> phaseGates = {{
    //     GPS            GLONASS        Galileo        QZSS            BeiDou         NavIC           SBAS            CDMA
    {{gates::always, gates::always, gates::always, gates::always, gates::always, gates::any3Or4, gates::any3Or4, gates::always}},
    {{gates::always, gates::always, gates::always, gates::any4,   gates::always, gates::off136,  gates::any4,    gates::none}},
    {{gates::always, gates::always, gates::always, gates::always, gates::always, gates::any4,    gates::any4,    gates::none}},
    {{gates::always, gates::always, gates::always, gates::any4,   gates::always, gates::any4,    gates::any4,    gates::always}},
    {{gates::always, gates::always, gates::always, gates::always, gates::always, gates::always,  gates::any3Or4, gates::always}},
    {{gates::always, gates::any4,   gates::off136, gates::always, gates::always, gates::from401, gates::any4,    gates::none}},
}};

// CE, 1E, 2E, 3E, 5E, lE.
inline constexpr PerBand<StepGate> strengthGates = {{
    //     GPS              GLONASS          Galileo            QZSS         BeiDou           NavIC              SBAS         CDMA
    {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::incl3Or4,   gates::none, gates::included}},
    {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::inclOff136, gates::none, gates::none}},
    {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::inclOff136, gates::none, gates::none}},
    {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::inclOff136, gates::none, gates::included}},
    {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::included,   gates::none, gates::included}},
    {{gates::included, gates::none,     gates::inclOff136, gates::none, gates::included, gates::incl401,    gates::none, gates::none}},
}};

// ---- observable codes ----

// Code, phase, Doppler, strength of a signal; all empty where a constellation has none in the band.
using SignalCodes = std::array<SignalText, 4>;

// What a flag step enters into the code lists for a signal that is present. BeiDou has rules of its own
// beside this row: beidouRules.
inline constexpr PerBand<SignalCodes> signalCodes = {{
    {{ {{"C1C", "L1C", "D1C", "S1C"}}, {{"C1C", "L1C", "D1C", "S1C"}}, {{"C1X", "L1X", "D1X", "S1X"}}, {}, {{"C2I", "L2I", "D2I", "S2I"}}, {{"C9A", "L9A", "D9A", "S9A"}}, {}, {{"C4X", "L4X", "D4X", "S4X"}} }},
    {{ {{"C1W", "L1W", "D1W", "S1W"}}, {{"C1P", "L1P", "D1P", "S1P"}}, {{"C8X", "L8X", "D8X", "S8X"}}, {}, {{"C8X", "L8X", "D8X", "S8X"}}, {{"nan", "nan", "nan", "nan"}}, {}, {} }},
    {{ {{"C2W", "L2W", "D2W", "S2W"}}, {{"C2C", "L2C", "D2C", "S2C"}}, {{"C7X", "L7X", "D7X", "S7X"}}, {}, {{"C7I", "L7I", "D7I", "S7I"}}, {{"nan", "nan", "nan", "nan"}}, {}, {} }},
    {{ {{"C2X", "L2X", "D2X", "S2X"}}, {{"C2P", "L2P", "D2P", "S2P"}}, {{"C6X", "L6X", "D6X", "S6X"}}, {}, {{"C6I", "L6I", "D6I", "S6I"}}, {{"nan", "nan", "nan", "nan"}}, {}, {{"C6X", "L6X", "D6X", "S6X"}} }},
    {{ {{"C5X", "L5X", "D5X", "S5X"}}, {{"C3X", "L3X", "D3X", "S3X"}}, {{"C5X", "L5X", "D5X", "S5X"}}, {}, {{"C5X", "L5X", "D5X", "S5X"}}, {{"C5A", "L5A", "D5A", "S5A"}}, {}, {{"C3X", "L3X", "D3X", "S3X"}} }},
    {{ {{"C1X", "L1X", "D1X", "S1X"}}, {},                             {},                             {}, {{"C1X", "L1X", "D1X", "S1X"}}, {{"C1X", "L1X", "D1X", "S1X"}}, {}, {} }},
}};

// A range of BeiDou satellite numbers.
struct SatelliteClass {
    std::int32_t first;
    std::int32_t last;
    [[nodiscard]] constexpr bool holds(std::int32_t number) const { return number >= first && number <= last; }
};
inline constexpr SatelliteClass beidouNone{1, 0};
inline constexpr SatelliteClass beidou6To18{6, 18};
inline constexpr SatelliteClass beidou6To58{6, 58};
inline constexpr SatelliteClass beidouTo116{-2147483647 - 1, 116};

// How a BeiDou satellite inside a band's class enters its codes; one outside enters the four codes if the
// code slot is empty, like every other constellation.
enum class BeidouEntry : std::uint8_t {
    asOthers,           // the band has no class
    secondPhaseOnly,    // only the fifth slot, if it is empty
    withSecondPhase,    // the four codes and the fifth slot, if the fifth is empty
    codeOnly,           // only the code slot, if it is empty
};
struct BeidouRule {
    SatelliteClass insideClass;
    BeidouEntry entry;
    SignalText secondPhase;
    // Deliberate: after any satellite the slots behind the code are written again, and the fifth slot takes
    // its name with the lower-case letter.
    bool rewritesTail = false;
    // Satellites that enter the band's satellite list.
    SatelliteClass listed = {-2147483647 - 1, 2147483647};
};
inline constexpr std::array<BeidouRule, bandCount> beidouRules = {{
    {.insideClass = beidou6To58, .entry = BeidouEntry::secondPhaseOnly, .secondPhase = "L2I"},
    {.insideClass = beidouNone,  .entry = BeidouEntry::asOthers,        .secondPhase = {}, .listed = beidou6To58},
    {.insideClass = beidou6To18, .entry = BeidouEntry::withSecondPhase, .secondPhase = "L7Z"},
    {.insideClass = beidou6To58, .entry = BeidouEntry::withSecondPhase, .secondPhase = "L6I"},
    {.insideClass = beidou6To18, .entry = BeidouEntry::codeOnly,        .secondPhase = "L5x", .rewritesTail = true},
    {.insideClass = beidouTo116, .entry = BeidouEntry::withSecondPhase, .secondPhase = "L1X"},
}};

// SBAS and QZSS take their codes from the measurement steps, without any flag. Some are placeholders for a
// signal that the constellation does not have: a plain string that nothing ever compares.
struct PlaceholderCode {
    SignalText text;
    VersionRule versions = VersionRule::never;
};
// By band and kind: code (the range step), phase, Doppler, strength.
using PlaceholderCodes = std::array<std::array<PlaceholderCode, 4>, bandCount>;
inline constexpr PlaceholderCodes sbasCodes = {{
    {{ {},                                {"L1C", VersionRule::any3Or4}, {"D1C", VersionRule::any3Or4}, {"S1C", VersionRule::any3Or4} }},
    {{ {"n1n", VersionRule::off135},      {"---", VersionRule::any4},    {"nAn", VersionRule::any4},    {"nEn", VersionRule::any4} }},
    {{ {"n2n", VersionRule::any4},        {"nan", VersionRule::any4},    {"nAn", VersionRule::any4},    {"nEn", VersionRule::any4} }},
    {{ {"C2L", VersionRule::any4},        {"nan", VersionRule::any4},    {"nAn", VersionRule::any4},    {"nEn", VersionRule::any4} }},
    {{ {"C5I", VersionRule::any3Or4},     {"L5I", VersionRule::any3Or4}, {"D5I", VersionRule::any3Or4}, {"S5I", VersionRule::any3Or4} }},
    {{ {"nan", VersionRule::any4},        {"nSn", VersionRule::any4},    {"nAn", VersionRule::any4},    {"---", VersionRule::any4} }},
}};
inline constexpr PlaceholderCodes qzssCodes = {{
    {{ {},                                {"L1C", VersionRule::always},  {"D1C", VersionRule::always},  {"S1C", VersionRule::always} }},
    {{ {"nan", VersionRule::any4},        {"nan", VersionRule::any4},    {"nOn", VersionRule::any4},    {"S1C", VersionRule::any4} }},
    {{ {"C2X", VersionRule::always},      {"L2X", VersionRule::always},  {"D2X", VersionRule::always},  {"S2X", VersionRule::always} }},
    {{ {"nan", VersionRule::any4},        {"nUn", VersionRule::any4},    {"nOn", VersionRule::any4},    {"nan", VersionRule::any4} }},
    {{ {"C5X", VersionRule::always},      {"L5X", VersionRule::always},  {"D5X", VersionRule::always},  {"S5X", VersionRule::always} }},
    {{ {"C1X", VersionRule::always},      {"L1X", VersionRule::always},  {"D1X", VersionRule::always},  {"S1X", VersionRule::always} }},
}};

// ---- signal names in the records ----

// A name that a step writes when it stores a value; nothing where it leaves the name alone.
using RecordName = std::optional<SignalText>;
inline constexpr RecordName keep{};
inline constexpr RecordName erased{SignalText{}};

// Deliberate: these names disagree with the code lists in places (BeiDou 0d, NavIC band c).
inline constexpr PerConstellation<RecordName> fullDopplerNames = {keep, "D1C", "D1X", keep, "D2I", "D9C", keep, keep};
inline constexpr PerBand<RecordName> dopplerNames = {{
    {{keep, "D1C", "D1X", keep, "D8X", "D9C", keep, "D9C"}},
    {{keep, "D1P", "D8X", keep, "D7X", "nAn", keep, keep}},
    {{keep, "D2C", "D7X", keep, "D7X", "nAn", keep, keep}},
    {{keep, "D2P", "D6X", keep, "D6I", "nAn", keep, keep}},
    {{keep, "D3X", "D5X", keep, "D5X", "D5A", keep, keep}},
    {{keep, keep,  keep,  keep, keep,  keep,  keep, keep}},
}};
inline constexpr PerBand<RecordName> phaseNames = {{
    {{keep, "L1C",  "L1X", keep, "L2I", "L9C", keep, "L9C"}},
    {{keep, "L1P",  "L8X", keep, "L8X", "nan", keep, keep}},
    {{keep, "L2C",  "L7X", keep, "L7I", "nan", keep, keep}},
    {{keep, keep,   "L6X", keep, "L6I", "nEn", keep, keep}},
    {{keep, keep,   "L5X", keep, "L5X", "L5A", keep, "L5A"}},
    {{keep, erased, keep,  keep, "L1X", keep,  keep, keep}},
}};
inline constexpr PerBand<RecordName> strengthNames = {{
    {{keep, "S1C", "S1X", keep, keep,  "S9C", keep, "GL1"}},
    {{keep, "S1P", "S8X", keep, "S8X", "nEn", keep, keep}},
    {{keep, "S2C", "S7X", keep, "S7X", "nEn", keep, keep}},
    {{keep, "S2P", "S6X", keep, "S6I", "nEn", keep, "GL2"}},
    {{keep, "S3X", "S5X", keep, "S5X", "S5A", keep, "GL3"}},
    {{keep, keep,  keep,  keep, "S1X", "S9X", keep, keep}},
}};

// ---- ranges ----

struct RangeScale {
    double unit;    // seconds per count
    double offset;  // seconds
};
inline constexpr PerConstellation<RangeScale> rangeScales = {{
    {rangeUnitGps, rangeOffsetGpsGlonass},
    {rangeUnitGlonass, rangeOffsetGpsGlonass},
    {rangeUnitGalileo, rangeOffsetGalileo},
    {},
    {rangeUnitBeidou, rangeOffsetBeidouNavic},
    {rangeUnitNavic, rangeOffsetBeidouNavic},
    {},
    {rangeUnitGlonassCdma, rangeOffsetGpsGlonass},
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

// The carrier that turns a phase from seconds to cycles. NavIC uses the S band for every band but 5 and l.
inline constexpr PerBand<Carrier> phaseCarriers = {{
    {{carrierGpsL1, glonassL1, carrierGpsL1,      noCarrier, carrierBeidouB1I,  carrierNavicS,  noCarrier, carrierGlonassCdmaL1}},
    {{carrierGpsL1, glonassL1, carrierGalileoE5,  noCarrier, carrierBeidouB2ab, carrierNavicS,  noCarrier, noCarrier}},
    {{carrierGpsL2, glonassL2, carrierGalileoE5b, noCarrier, carrierBeidouB2b,  carrierNavicS,  noCarrier, noCarrier}},
    {{carrierGpsL2, glonassL2, carrierGalileoE6,  noCarrier, carrierBeidouB3I,  carrierNavicS,  noCarrier, carrierGlonassCdmaL2}},
    {{carrierGpsL5, glonassL3, carrierGalileoE5a, noCarrier, carrierBeidouB2a,  carrierNavicL5, noCarrier, carrierGlonassCdmaL3}},
    {{carrierGpsL1, noCarrier, noCarrier,         noCarrier, carrierBeidouB1C,  carrierNavicL1, noCarrier, noCarrier}},
}};

// The carrier that a Doppler difference is scaled to; it comes from the reference below.
inline constexpr PerBand<Carrier> dopplerCarriers = phaseCarriers;
inline constexpr PerConstellation<Carrier> dopplerReferences =
    {carrierGpsL1, glonassL1, carrierGpsL1, noCarrier, carrierBeidouB1I, carrierNavicL1, noCarrier, carrierGlonassCdmaL1};

// ---- phase shifts ----

// Cycles, stored for the header and added to the phase; 0.0 as well where no gate is ever open.
inline constexpr PerBand<float> phaseShifts = {{
    //  GPS      GLONASS Galileo QZSS    BeiDou  NavIC  SBAS   CDMA
    {{0.0F,   0.0F,   0.5F,   0.0F,   0.0F,  0.0F, 0.0F,  0.0F}},
    {{-0.25F, -0.25F, 0.25F,  0.0F,   0.25F, 0.0F, 0.0F,  0.0F}},
    {{0.0F,   0.25F,  0.25F,  0.25F,  0.0F,  0.0F, 0.0F,  0.0F}},
    {{0.25F,  0.0F,   0.5F,   0.0F,   0.0F,  0.0F, 0.0F,  0.0F}},
    {{0.25F,  0.25F,  0.25F,  0.25F,  0.25F, 0.0F, 0.25F, 0.0F}},
    {{-0.25F, 0.0F,   0.0F,   -0.25F, 0.0F,  0.0F, 0.0F,  0.0F}},
}};

// Deliberate: an addition to the phase of a class of BeiDou satellites that the phase-shift table of the
// header does not show.
struct BeidouExtraPhase {
    SatelliteClass satellites;
    double cycles;
};
inline constexpr std::array<BeidouExtraPhase, bandCount> beidouExtraPhases = {{
    {beidou6To58, 0.5},
    {beidou6To58, 0.0},
    {beidou6To18, 0.25},
    {beidou6To58, 0.5},
    {beidou6To18, 0.5},
    {beidou6To58, 0.0},
}};

// Which phase steps enter the satellite into PhaseShiftSatellites at its position.
inline constexpr PerBand<bool> phaseListsSatellite = {{
    // GPS    GLO    GAL    QZSS  BDS    NavIC  SBAS  CDMA
    {{false, true,  false, true, false, false, true, false}},
    {{true,  true,  true,  true, false, true,  true, false}},
    {{true,  true,  true,  true, false, true,  true, false}},
    {{true,  true,  true,  true, false, true,  true, true}},
    {{true,  true,  true,  true, false, true,  true, true}},
    {{true,  true,  false, true, false, true,  true, false}},
}};
// Which phase steps add to SignalUseCount, in the row of useCountRow.
inline constexpr PerBand<bool> phaseCountsUse = {{
    {{false, false, false, true, false, false, true, false}},
    {{false, false, false, true, false, true,  true, false}},
    {{false, false, true,  true, false, true,  true, false}},
    {{false, false, true,  true, false, true,  true, true}},
    {{false, false, true,  true, false, true,  true, true}},
    {{false, true,  false, true, false, true,  true, false}},
}};

// clang-format on

// The row of SignalUseCount: GLONASS CDMA shares that of SBAS.
constexpr std::size_t useCountRow(Constellation constellation) {
    return indexOf(constellation == Constellation::glonassCdma ? Constellation::sbas : constellation);
}

}  // namespace orbconv
