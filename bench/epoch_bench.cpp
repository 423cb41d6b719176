// The pieces of an epoch's road: reading its messages, assembling it, writing it.
#include <benchmark/benchmark.h>

#include "assembly/epoch_assembly.h"
#include "assembly/record_order.h"
#include "log/message_reader.h"
#include "obsfile/epoch_writer.h"
#include "sample_epochs.h"

namespace {

constexpr std::int64_t epochs = 200;

void ReadMessages(benchmark::State& state) {
    const std::string log = bench::sampleLog(epochs);
    const auto staging = std::make_unique<orbconv::MessageStaging>();
    std::int64_t messages = 0;
    for (auto _ : state) {
        orbconv::LogStream stream(bench::bytesOf(log));
        while (!stream.atEnd()) {
            benchmark::DoNotOptimize(orbconv::readMessage(stream, *staging));
            ++messages;
        }
    }
    state.SetItemsProcessed(messages);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(log.size()));
}
BENCHMARK(ReadMessages);

orbconv::EpochAssembly assemblyOf(orbconv::RunState& run, bool surveying) {
    return {.options = run.options,
            .surveying = surveying,
            .staging = run.staging,
            .store = run.store,
            .survey = run.survey,
            .console = *run.console};
}

// The latest epoch of the log, assembled again and again.
void AssembleEpoch(benchmark::State& state) {
    bench::NullStream console;
    const auto run = bench::surveyedRun(bench::sampleLog(epochs), console);
    orbconv::EpochAssembly assembly = assemblyOf(*run, false);
    for (auto _ : state) {
        orbconv::assembleEpoch(assembly);
        orbconv::sortEpochRecords(run->options, run->staging, run->store, run->survey);
        orbconv::clearEpochRecords(run->store);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(AssembleEpoch);

void SurveyEpoch(benchmark::State& state) {
    bench::NullStream console;
    const auto run = bench::surveyedRun(bench::sampleLog(epochs), console);
    orbconv::EpochAssembly assembly = assemblyOf(*run, true);
    for (auto _ : state) {
        orbconv::assembleFlags(assembly);
        orbconv::clearEpochRecords(run->store);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(SurveyEpoch);

void WriteEpoch(benchmark::State& state) {
    bench::NullStream sink;
    const auto run = bench::surveyedRun(bench::sampleLog(epochs), sink);
    orbconv::EpochAssembly assembly = assemblyOf(*run, false);
    orbconv::assembleEpoch(assembly);
    orbconv::sortEpochRecords(run->options, run->staging, run->store, run->survey);
    orbconv::TextWriter out(sink);
    for (auto _ : state) {
        orbconv::writeEpoch(out, 0,
                            {.options = run->options,
                             .clock = run->clocks.epoch,
                             .satellitesInEpoch = run->staging.satellitesInEpoch,
                             .receiverClockOffset = 0.0,
                             .store = run->store,
                             .survey = run->survey});
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(WriteEpoch);

// Both passes in memory, without a file.
void WholeRun(benchmark::State& state) {
    const std::string log = bench::sampleLog(epochs);
    bench::NullStream sink;
    for (auto _ : state) {
        const auto run = bench::surveyedRun(log, sink);
        orbconv::sortSignalSatelliteLists(run->survey);
        orbconv::LogStream stream(bench::bytesOf(log));
        orbconv::TextWriter out(sink);
        orbconv::writingPass(out, stream, orbconv::writingTables(*run));
    }
    state.SetItemsProcessed(state.iterations() * epochs);
}
BENCHMARK(WholeRun)->Unit(benchmark::kMillisecond);

}  // namespace
