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
    std::size_t band;
    void (*run)(EpochAssembly&, const StepInput&);
    WalkedCount walked;
};

consteval AssemblyStep step(MessageId id, void (*run)(EpochAssembly&, const StepInput&),
                            WalkedCount walked = WalkedCount::own) {
    return {.row = rowOf(id), .band = bandOf(id).value(), .run = run, .walked = walked};
}

// The order decides which value stays: rx comes after rc and 0d after DC. rx comes ahead of the range
// differences and phases, DX ahead of the Doppler differences, as they refer to them.
// clang-format off
constexpr auto assemblySteps = std::to_array<AssemblyStep>({
    step("FC", runFlagStep, WalkedCount::list),
    step("F1", runFlagStep, WalkedCount::list),
    step("F2", runFlagStep, WalkedCount::list),
    step("F3", runFlagStep, WalkedCount::list),
    step("F5", runFlagStep, WalkedCount::list),
    step("Fl", runFlagStep, WalkedCount::list),
    step("rc", runFullRangeStep),
    step("rx", runClockOffsetStep, WalkedCount::listIfAnyOwn),
    step("1r", runRangeDeltaStep),
    step("2r", runRangeDeltaStep),
    step("3r", runRangeDeltaStep),
    step("5r", runRangeDeltaStep),
    step("lr", runRangeDeltaStep),
    step("DX", runReferenceDopplerStep),
    step("DC", runFullDopplerStep),
    step("0d", runDopplerDeltaStep),
    step("1d", runDopplerDeltaStep),
    step("2d", runDopplerDeltaStep),
    step("3d", runDopplerDeltaStep),
    step("5d", runDopplerDeltaStep),
    step("ld", runDopplerDeltaStep),
    step("cp", runPhaseStep),
    step("1p", runPhaseStep),
    step("2p", runPhaseStep),
    step("3p", runPhaseStep),
    step("5p", runPhaseStep),
    step("lp", runPhaseStep),
    step("CE", runStrengthStep),
    step("1E", runStrengthStep),
    step("2E", runStrengthStep),
    step("3E", runStrengthStep),
    step("5E", runStrengthStep),
    step("lE", runStrengthStep),
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

void runSteps(EpochAssembly& assembly, std::span<const AssemblyStep> steps) {
    int longest = 0;
    for (const AssemblyStep& step : steps) {
        longest = std::max(longest, entriesToWalk(step, assembly.staging));
    }
    const SatelliteWalk walk(assembly.staging, assembly.store, longest);
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
    runSteps(assembly, assemblySteps);
    countObsCodes(assembly.survey);
}

void assembleFlags(EpochAssembly& assembly) {
    runSteps(assembly, std::span(assemblySteps).first(flagSteps));
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
