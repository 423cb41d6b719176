// What the assembly makes of the signals that signals.h tells: the gates of version and option that a step
// puts before each of them, the observable codes that it enters, and the names and lists that it keeps.
//
// A table by band has one row a band and one column a constellation, as in signals.h.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "assembly/epoch_store.h"
#include "assembly/signals.h"
#include "run/run_options.h"

namespace orbconv {

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
    //        GPS              GLONASS             Galileo             QZSS         BeiDou           NavIC               SBAS         CDMA
    /* c */ {{gates::included, gates::included,    gates::inclFrom305, gates::none, gates::included, gates::incl3Or4,    gates::none, gates::included}},
    /* 1 */ {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::inclOff136,  gates::none, gates::none}},
    /* 2 */ {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::inclOff136,  gates::none, gates::none}},
    /* 3 */ {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::inclOff136,  gates::none, gates::included}},
    /* 5 */ {{gates::included, gates::inclFrom305, gates::inclFrom305, gates::none, gates::included, gates::included,    gates::none, gates::included}},
    /* l */ {{gates::included, gates::inclOff8,    gates::inclOff136,  gates::none, gates::included, gates::inclFrom401, gates::none, gates::none}},
}};

// rc, and rx, which asks for the include flag alone, whatever the version.
inline constexpr PerConstellation<StepGate> fullRangeGates = {
    // GPS              GLONASS          Galileo          QZSS         BeiDou           NavIC            SBAS         CDMA
       gates::included, gates::included, gates::included, gates::none, gates::included, gates::incl3Or4, gates::none, gates::included};
inline constexpr PerConstellation<StepGate> clockOffsetGates = {
    // GPS              GLONASS          Galileo          QZSS         BeiDou           NavIC            SBAS         CDMA
       gates::included, gates::included, gates::included, gates::none, gates::included, gates::included, gates::none, gates::included};

// 1r, 2r, 3r, 5r, lr; band c has the full range. Deliberate: only 1r looks at the include flags. A QZSS or
// SBAS entry has no record; what passes here is only remembered as the last range difference.
inline constexpr PerBand<StepGate> rangeDeltaGates = {{
    //        GPS              GLONASS          Galileo          QZSS         BeiDou           NavIC           SBAS           CDMA
    /* c */ {{gates::none,     gates::none,     gates::none,     gates::none, gates::none,     gates::none,    gates::none,   gates::none}},
    /* 1 */ {{gates::included, gates::included, gates::included, gates::any4, gates::included, gates::off135,  gates::off135, gates::off135}},
    /* 2 */ {{gates::always,   gates::always,   gates::always,   gates::none, gates::always,   gates::any4,    gates::none,   gates::off135}},
    /* 3 */ {{gates::always,   gates::always,   gates::always,   gates::none, gates::always,   gates::off135,  gates::none,   gates::off135}},
    /* 5 */ {{gates::always,   gates::always,   gates::always,   gates::none, gates::always,   gates::always,  gates::none,   gates::always}},
    /* l */ {{gates::always,   gates::any4,     gates::none,     gates::none, gates::always,   gates::only401, gates::none,   gates::always}},
}};

// 0d, 1d, 2d, 3d, 5d, ld. No Doppler step looks at an include flag.
inline constexpr PerBand<StepGate> dopplerGates = {{
    //        GPS            GLONASS        Galileo        QZSS         BeiDou         NavIC           SBAS         CDMA
    /* c */ {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::any3Or4, gates::none, gates::off135}},
    /* 1 */ {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::any4,    gates::none, gates::none}},
    /* 2 */ {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::off136,  gates::none, gates::none}},
    /* 3 */ {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::off136,  gates::none, gates::always}},
    /* 5 */ {{gates::always, gates::always, gates::always, gates::none, gates::always, gates::always,  gates::none, gates::always}},
    /* l */ {{gates::always, gates::none,   gates::none,   gates::none, gates::always, gates::only401, gates::none, gates::none}},
}};

// DX. Deliberate: no flag, no version and no satellite number is looked at.
inline constexpr PerConstellation<StepGate> referenceDopplerGates = {
    // GPS            GLONASS        Galileo        QZSS         BeiDou         NavIC          SBAS         CDMA
       gates::always, gates::always, gates::always, gates::none, gates::always, gates::always, gates::none, gates::always};

// DC.
inline constexpr PerConstellation<StepGate> fullDopplerGates = {
    // GPS            GLONASS        Galileo        QZSS         BeiDou         NavIC           SBAS         CDMA
       gates::always, gates::always, gates::always, gates::none, gates::always, gates::any3Or4, gates::none, gates::always};

// cp, 1p, 2p, 3p, 5p, lp. No phase step looks at an include flag.
inline constexpr PerBand<StepGate> phaseGates = {{
    //        GPS            GLONASS        Galileo        QZSS           BeiDou         NavIC           SBAS            CDMA
    /* c */ {{gates::always, gates::always, gates::always, gates::always, gates::always, gates::any3Or4, gates::any3Or4, gates::always}},
    /* 1 */ {{gates::always, gates::always, gates::always, gates::any4,   gates::always, gates::off136,  gates::any4,    gates::none}},
    /* 2 */ {{gates::always, gates::always, gates::always, gates::always, gates::always, gates::any4,    gates::any4,    gates::none}},
    /* 3 */ {{gates::always, gates::always, gates::always, gates::any4,   gates::always, gates::any4,    gates::any4,    gates::always}},
    /* 5 */ {{gates::always, gates::always, gates::always, gates::always, gates::always, gates::always,  gates::any3Or4, gates::always}},
    /* l */ {{gates::always, gates::any4,   gates::off136, gates::always, gates::always, gates::from401, gates::any4,    gates::none}},
}};

// CE, 1E, 2E, 3E, 5E, lE.
inline constexpr PerBand<StepGate> strengthGates = {{
    //        GPS              GLONASS          Galileo            QZSS         BeiDou           NavIC              SBAS         CDMA
    /* c */ {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::incl3Or4,   gates::none, gates::included}},
    /* 1 */ {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::inclOff136, gates::none, gates::none}},
    /* 2 */ {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::inclOff136, gates::none, gates::none}},
    /* 3 */ {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::inclOff136, gates::none, gates::included}},
    /* 5 */ {{gates::included, gates::included, gates::included,   gates::none, gates::included, gates::included,   gates::none, gates::included}},
    /* l */ {{gates::included, gates::none,     gates::inclOff136, gates::none, gates::included, gates::incl401,    gates::none, gates::none}},
}};

// ---- observable codes ----

// Code, phase, Doppler, strength of a signal; all empty where a constellation has none in the band.
using ObsCodes = std::array<SignalText, 4>;
inline constexpr std::array<char, 4> kindLetters = {'C', 'L', 'D', 'S'};

// Deliberate: where NavIC has no signal, its codes are placeholders. The gates of these flags never open.
inline constexpr ObsCodes navicPlaceholders = {"nan", "nan", "nan", "nan"};

constexpr ObsCodes obsCodesOf(Constellation constellation, const SignalCode& signal) {
    ObsCodes codes{};
    if (signal.empty()) {
        return constellation == Constellation::navic ? navicPlaceholders : codes;
    }
    for (std::size_t kind = 0; kind < codes.size(); ++kind) {
        codes[kind] = SignalText(kindLetters[kind], signal);
    }
    return codes;
}

// What a flag step enters into the code lists for a signal that is present. BeiDou has rules of its own
// beside this table: beidouRules.
inline constexpr auto obsCodes = []() {
    PerBand<ObsCodes> codes{};
    for (std::size_t band = 0; band < bandCount; ++band) {
        for (std::size_t c = 0; c < constellationCount; ++c) {
            codes[band][c] = obsCodesOf(static_cast<Constellation>(c), signalCodes[band][c]);
        }
    }
    return codes;
}();

// Numbers in the satellite list are bytes.
inline constexpr SatelliteClass beidouNone{1, 0};
inline constexpr SatelliteClass beidouTo116{0, 116};
inline constexpr SatelliteClass beidouAll{0, 255};

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
    SatelliteClass listed = beidouAll;
};
// Deliberate: the class of a band is not everywhere the same. Here, in beidouExtraPhases and in beidouPasses
// of the header's phase shifts, band 1 has none, 6 to 58 and 6 to 18; band l up to 116, 6 to 58 and none.
inline constexpr std::array<BeidouRule, bandCount> beidouRules = {{
    //       class                       what a satellite inside it enters      fifth slot
    /* c */ {.insideClass = beidou6To58, .entry = BeidouEntry::secondPhaseOnly, .secondPhase = "L2I"},
    /* 1 */ {.insideClass = beidouNone,  .entry = BeidouEntry::asOthers,        .secondPhase = {}, .listed = beidou6To58},
    /* 2 */ {.insideClass = beidou6To18, .entry = BeidouEntry::withSecondPhase, .secondPhase = "L7Z"},
    /* 3 */ {.insideClass = beidou6To58, .entry = BeidouEntry::withSecondPhase, .secondPhase = "L6I"},
    /* 5 */ {.insideClass = beidou6To18, .entry = BeidouEntry::codeOnly,        .secondPhase = "L5x", .rewritesTail = true},
    /* l */ {.insideClass = beidouTo116, .entry = BeidouEntry::withSecondPhase, .secondPhase = "L1X"},
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
    //         code                               phase                          Doppler                        strength
    /* c */ {{ {},                                {"L1C", VersionRule::any3Or4}, {"D1C", VersionRule::any3Or4}, {"S1C", VersionRule::any3Or4} }},
    /* 1 */ {{ {"n1n", VersionRule::off135},      {"---", VersionRule::any4},    {"nAn", VersionRule::any4},    {"nEn", VersionRule::any4} }},
    /* 2 */ {{ {"n2n", VersionRule::any4},        {"nan", VersionRule::any4},    {"nAn", VersionRule::any4},    {"nEn", VersionRule::any4} }},
    /* 3 */ {{ {"C2L", VersionRule::any4},        {"nan", VersionRule::any4},    {"nAn", VersionRule::any4},    {"nEn", VersionRule::any4} }},
    /* 5 */ {{ {"C5I", VersionRule::any3Or4},     {"L5I", VersionRule::any3Or4}, {"D5I", VersionRule::any3Or4}, {"S5I", VersionRule::any3Or4} }},
    /* l */ {{ {"nan", VersionRule::any4},        {"nSn", VersionRule::any4},    {"nAn", VersionRule::any4},    {"---", VersionRule::any4} }},
}};
inline constexpr PlaceholderCodes qzssCodes = {{
    //         code                               phase                          Doppler                        strength
    /* c */ {{ {},                                {"L1C", VersionRule::always},  {"D1C", VersionRule::always},  {"S1C", VersionRule::always} }},
    /* 1 */ {{ {"nan", VersionRule::any4},        {"nan", VersionRule::any4},    {"nOn", VersionRule::any4},    {"S1C", VersionRule::any4} }},
    /* 2 */ {{ {"C2X", VersionRule::always},      {"L2X", VersionRule::always},  {"D2X", VersionRule::always},  {"S2X", VersionRule::always} }},
    /* 3 */ {{ {"nan", VersionRule::any4},        {"nUn", VersionRule::any4},    {"nOn", VersionRule::any4},    {"nan", VersionRule::any4} }},
    /* 5 */ {{ {"C5X", VersionRule::always},      {"L5X", VersionRule::always},  {"D5X", VersionRule::always},  {"S5X", VersionRule::always} }},
    /* l */ {{ {"C1X", VersionRule::always},      {"L1X", VersionRule::always},  {"D1X", VersionRule::always},  {"S1X", VersionRule::always} }},
}};

// ---- signal names in the records ----

// A name that a step writes when it stores a value; nothing where it leaves the name alone.
using RecordName = std::optional<SignalText>;
inline constexpr RecordName keep{};
inline constexpr RecordName erased{SignalText{}};

// Deliberate: these names disagree with the code lists in places (BeiDou 0d, NavIC band c).
inline constexpr PerConstellation<RecordName> fullDopplerNames = {
    // GPS   GLONASS Galileo QZSS  BeiDou NavIC  SBAS  CDMA
       keep, "D1C",  "D1X",  keep, "D2I", "D9C", keep, keep};
inline constexpr PerBand<RecordName> dopplerNames = {{
    //        GPS   GLONASS Galileo QZSS  BeiDou NavIC  SBAS  CDMA
    /* c */ {{keep, "D1C",  "D1X",  keep, "D8X", "D9C", keep, "D9C"}},
    /* 1 */ {{keep, "D1P",  "D8X",  keep, "D7X", "nAn", keep, keep}},
    /* 2 */ {{keep, "D2C",  "D7X",  keep, "D7X", "nAn", keep, keep}},
    /* 3 */ {{keep, "D2P",  "D6X",  keep, "D6I", "nAn", keep, keep}},
    /* 5 */ {{keep, "D3X",  "D5X",  keep, "D5X", "D5A", keep, keep}},
    /* l */ {{keep, keep,   keep,   keep, keep,  keep,  keep, keep}},
}};
inline constexpr PerBand<RecordName> phaseNames = {{
    //        GPS   GLONASS Galileo QZSS  BeiDou NavIC  SBAS  CDMA
    /* c */ {{keep, "L1C",  "L1X",  keep, "L2I", "L9C", keep, "L9C"}},
    /* 1 */ {{keep, "L1P",  "L8X",  keep, "L8X", "nan", keep, keep}},
    /* 2 */ {{keep, "L2C",  "L7X",  keep, "L7I", "nan", keep, keep}},
    /* 3 */ {{keep, keep,   "L6X",  keep, "L6I", "nEn", keep, keep}},
    /* 5 */ {{keep, keep,   "L5X",  keep, "L5X", "L5A", keep, "L5A"}},
    /* l */ {{keep, erased, keep,   keep, "L1X", keep,  keep, keep}},
}};
inline constexpr PerBand<RecordName> strengthNames = {{
    //        GPS   GLONASS Galileo QZSS  BeiDou NavIC  SBAS  CDMA
    /* c */ {{keep, "S1C",  "S1X",  keep, keep,  "S9C", keep, "GL1"}},
    /* 1 */ {{keep, "S1P",  "S8X",  keep, "S8X", "nEn", keep, keep}},
    /* 2 */ {{keep, "S2C",  "S7X",  keep, "S7X", "nEn", keep, keep}},
    /* 3 */ {{keep, "S2P",  "S6X",  keep, "S6I", "nEn", keep, "GL2"}},
    /* 5 */ {{keep, "S3X",  "S5X",  keep, "S5X", "S5A", keep, "GL3"}},
    /* l */ {{keep, keep,   keep,   keep, "S1X", "S9X", keep, keep}},
}};

// ---- bookkeeping of the phase steps ----

// Which phase steps enter the satellite into PhaseShiftSatellites at its position.
inline constexpr PerBand<bool> phaseListsSatellite = {{
    //        GPS    GLONASS Galileo QZSS  BeiDou NavIC  SBAS  CDMA
    /* c */ {{false, true,   false,  true, false, false, true, false}},
    /* 1 */ {{true,  true,   true,   true, false, true,  true, false}},
    /* 2 */ {{true,  true,   true,   true, false, true,  true, false}},
    /* 3 */ {{true,  true,   true,   true, false, true,  true, true}},
    /* 5 */ {{true,  true,   true,   true, false, true,  true, true}},
    /* l */ {{true,  true,   false,  true, false, true,  true, false}},
}};
// Which phase steps add to SignalUseCount, in the row of useCountRow.
inline constexpr PerBand<bool> phaseCountsUse = {{
    //        GPS    GLONASS Galileo QZSS  BeiDou NavIC  SBAS  CDMA
    /* c */ {{false, false,  false,  true, false, false, true, false}},
    /* 1 */ {{false, false,  false,  true, false, true,  true, false}},
    /* 2 */ {{false, false,  true,   true, false, true,  true, false}},
    /* 3 */ {{false, false,  true,   true, false, true,  true, true}},
    /* 5 */ {{false, false,  true,   true, false, true,  true, true}},
    /* l */ {{false, true,   false,  true, false, true,  true, false}},
}};

// clang-format on

// The row of SignalUseCount: GLONASS CDMA shares that of SBAS.
constexpr std::size_t useCountRow(Constellation constellation) {
    return indexOf(constellation == Constellation::glonassCdma ? Constellation::sbas : constellation);
}

}  // namespace orbconv
