// Each option that leaves out a constellation clears the flag of its own, also the three whose flags are
// clear in every run.
#include <gtest/gtest.h>

#include <array>
#include <utility>

#include "run/command_line.h"

namespace {

using orbconv::RunOptions;

struct OwnFlag {
    const char* option;
    bool RunOptions::*include;
};
constexpr std::array<OwnFlag, 8> ownFlags = {{
    {"-G", &RunOptions::includeGps},
    {"-R", &RunOptions::includeGlonass},
    {"-E", &RunOptions::includeGalileo},
    {"-C", &RunOptions::includeBeidou},
    {"-I", &RunOptions::includeNavic},
    {"-J", &RunOptions::includeQzss},
    {"-W", &RunOptions::includeSbas},
    {"-GC", &RunOptions::includeGlonassCdma},
}};

}  // namespace

TEST(ExcludeOptions, EachClearsItsOwnFlagAlone) {
    for (const OwnFlag& own : ownFlags) {
        RunOptions options;
        for (const OwnFlag& flag : ownFlags) {
            options.*(flag.include) = true;
        }
        orbconv::CommandLine line(options);
        const std::array<const char*, 2> arguments = {"orbconv", own.option};
        line.parse(static_cast<int>(arguments.size()), arguments.data());
        for (const OwnFlag& flag : ownFlags) {
            EXPECT_EQ(options.*(flag.include), flag.option != own.option) << own.option << " " << flag.option;
        }
    }
}
