// Any log through a whole conversion in memory, in every version and with every option. The output of a run
// keeps within a bound in proportion to the log.
#include <cstdlib>

#include "conversion_run_in_memory.h"
#include "run_limits.h"

namespace {

// An epoch is written for each TD, which takes five bytes at least: up to 30 records of each of seven
// constellations, with a line of up to 3 + 7 * 64 columns each. Messages of navigation data give less. Twice
// that leaves room for numbers that are too wide for their fields.
constexpr std::uint64_t outputForHeaders = 1'000'000;
constexpr std::uint64_t outputForEachByte = 2 * 30 * 7 * (3 + 7 * 64) / 5;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    static fuzzing::ConversionInMemory conversion;
    const fuzzing::LogInput input = fuzzing::splitInput({data, size});
    if (!fuzzing::isWorthRunning(input.log)) {
        return 0;
    }
    conversion.out.size = 0;
    conversion.run(input);
    if (conversion.out.size > outputForHeaders + outputForEachByte * size) {
        std::abort();
    }
    return 0;
}
