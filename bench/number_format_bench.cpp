// The number formatters on values as an observation file and a navigation file hold them.
#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <vector>

#include "samplelog/random.h"
#include "text/number_format.h"

namespace {

constexpr std::size_t valueCount = 4096;

// Pseudorange, phase, Doppler and strength in turn, with their widths.
constexpr std::array<int, 4> widths = {14, 16, 14, 13};

std::vector<double> observations() {
    std::uint64_t state = 1;
    const auto next = [&state](std::uint64_t below) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>((state >> 33) % below);
    };
    std::vector<double> values;
    while (values.size() < valueCount) {
        values.push_back(2e7 + next(1000000000) * 0.0173);
        values.push_back(1e8 + next(1000000000) * 0.0571);
        values.push_back(next(100000000) * 1e-4 - 5000.0);
        values.push_back(next(220) * 0.25);
    }
    return values;
}

void Fixed3IntoBlanks(benchmark::State& state) {
    const std::vector<double> values = observations();
    std::vector<char> text(valueCount * 20, ' ');
    for (auto _ : state) {
        char* out = text.data();
        for (std::size_t i = 0; i < values.size(); ++i) {
            std::memset(out, ' ', 16);
            out = orbconv::formatFixed3IntoBlanks(out, values[i], widths[i % widths.size()]);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK(Fixed3IntoBlanks);

void Scientific12(benchmark::State& state) {
    const std::vector<double> values = observations();
    std::array<char, orbconv::maxNumberText> text{};
    for (auto _ : state) {
        for (const double value : values) {
            benchmark::DoNotOptimize(orbconv::formatScientific(text.data(), value, 12, 'D'));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK(Scientific12);

}  // namespace
