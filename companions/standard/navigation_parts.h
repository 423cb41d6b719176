// Which records go into which navigation file, where the output is cut into several.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "standard/navigation_set.h"

namespace orbconv::standard {

// What one navigation file holds. Points into the set.
struct NavigationPart {
    std::vector<const NavigationRecord*> records;    // by epoch, then constellation and satellite
    std::vector<const IonosphereTerms*> ionosphere;  // as they came
    std::vector<const TimeOffsetTerms*> offsets;     // as they came
    std::optional<reading::LogTime> end;             // the start of the next part; nothing for the last one
};

// A part for each start; the starts ascend. Records stand in the part of their epoch,
// ionosphere terms and time offsets in that in which they were sent first: each in just one, so that what no
// part holds goes into the one ahead of it, and what is older than all of them into the first.
std::vector<NavigationPart> partsOf(const NavigationSet& navigation,
                                    std::span<const reading::LogTime> starts);

// All of the set as one part.
NavigationPart wholeOf(const NavigationSet& navigation);

}  // namespace orbconv::standard
