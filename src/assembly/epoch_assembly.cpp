#include "assembly/epoch_assembly.h"

#include <algorithm>

#include "assembly/assembly_steps.h"

namespace orbconv {

namespace {

// How many list entries a step walks.
enum class WalkedCount : std::uint8_t {
    own,           // as many as its message's last count
    list,          // as many as the list has
    listIfAnyOwn,  // the same, if its message's last count was positive
};

struct AssemblyStep {
    std::size_t row;
    void (*run)(EpochAssembly&, const StepInput&);
    std::size_t band = 0;
    WalkedCount walked = WalkedCount::own;
};

// The order decides which value stays: rx comes after rc and 0d after DC. rx comes ahead of the range
// differences and phases, DX ahead of the Doppler differences, as they refer to them.
// clang-format off
constexpr auto assemblySteps = std::to_array<AssemblyStep>({
    {rowOf("FC"), runFlagStep, 0, WalkedCount::list},
    {rowOf("F1"), runFlagStep, 1, WalkedCount::list},
    {rowOf("F2"), runFlagStep, 2, WalkedCount::list},
    {rowOf("F3"), runFlagStep, 3, WalkedCount::list},
    {rowOf("F5"), runFlagStep, 4, WalkedCount::list},
    {rowOf("Fl"), runFlagStep, 5, WalkedCount::list},
    {rowOf("rc"), runFullRangeStep},
    {rowOf("rx"), runClockOffsetStep, 0, WalkedCount::listIfAnyOwn},
    {rowOf("1r"), runRangeDeltaStep, 1},
    {rowOf("2r"), runRangeDeltaStep, 2},
    {rowOf("3r"), runRangeDeltaStep, 3},
    {rowOf("5r"), runRangeDeltaStep, 4},
    {rowOf("lr"), runRangeDeltaStep, 5},
    {rowOf("DX"), runReferenceDopplerStep},
    {rowOf("DC"), runFullDopplerStep},
    {rowOf("0d"), runDopplerDeltaStep, 0},
    {rowOf("1d"), runDopplerDeltaStep, 1},
    {rowOf("2d"), runDopplerDeltaStep, 2},
    {rowOf("3d"), runDopplerDeltaStep, 3},
    {rowOf("5d"), runDopplerDeltaStep, 4},
    {rowOf("ld"), runDopplerDeltaStep, 5},
    {rowOf("cp"), runPhaseStep, 0},
    {rowOf("1p"), runPhaseStep, 1},
    {rowOf("2p"), runPhaseStep, 2},
    {rowOf("3p"), runPhaseStep, 3},
    {rowOf("5p"), runPhaseStep, 4},
    {rowOf("lp"), runPhaseStep, 5},
    {rowOf("CE"), runStrengthStep, 0},
    {rowOf("1E"), runStrengthStep, 1},
    {rowOf("2E"), runStrengthStep, 2},
    {rowOf("3E"), runStrengthStep, 3},
    {rowOf("5E"), runStrengthStep, 4},
    {rowOf("lE"), runStrengthStep, 5},
});
// clang-format on
constexpr std::size_t flagSteps = bandCount;

int entriesToWalk(const AssemblyStep& step, const MessageStaging& staging) {
    const int own = staging.elementCount[step.row];
    const int list = staging.elementCount[rowOf("SX")];
    switch (step.walked) {
        case WalkedCount::own: return own;
        case WalkedCount::list: return list;
        case WalkedCount::listIfAnyOwn: return own > 0 ? list : 0;
    }
    return 0;
}

void runSteps(EpochAssembly& assembly, std::span<const AssemblyStep> steps, WalkedFor purpose) {
    int longest = 0;
    for (const AssemblyStep& step : steps) {
        longest = std::max(longest, entriesToWalk(step, assembly.staging));
    }
    const SatelliteWalk walk(assembly.staging, assembly.store, longest, purpose);
    const OpenGates gates(assembly.options);
    for (const AssemblyStep& step : steps) {
        const int count = entriesToWalk(step, assembly.staging);
        if (count > 0) {
            step.run(assembly,
                     {.walk = walk, .gates = gates, .row = step.row, .band = step.band, .count = count});
        }
    }
}

}  // namespace

void assembleEpoch(EpochAssembly& assembly) {
    runSteps(assembly, assemblySteps, WalkedFor::measurements);
    countObsCodes(assembly.survey);
}

void assembleFlags(EpochAssembly& assembly) {
    runSteps(assembly, std::span(assemblySteps).first(flagSteps), WalkedFor::flags);
}

void enterPlaceholderCodes(EpochAssembly& assembly, const StepInput& step, Kind kind) {
    const auto enter = [&](Constellation constellation, const PlaceholderCodes& codes, bool included) {
        const PlaceholderCode& code = codes[step.band][static_cast<std::size_t>(kind)];
        // The strengths of all bands but the first ask for the include flag too.
        const bool asksFlag = kind == Kind::strength && step.band != 0;
        if (walks(step, constellation) && step.gates.open(code.versions) && (included || !asksFlag)) {
            assembly.survey.codes(constellation)[slotOf(step.band, kind)] = code.text;
        }
    };
    enter(Constellation::sbas, sbasCodes, assembly.options.includeSbas);
    enter(Constellation::qzss, qzssCodes, assembly.options.includeQzss);
}

}  // namespace orbconv
