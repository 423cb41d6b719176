#include "standard/navigation_parts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orbconv::standard {

std::vector<NavigationPart> partsOf(const NavigationSet& navigation,
                                    std::span<const reading::LogTime> starts) {
    std::vector<NavigationPart> parts(starts.size());
    if (parts.empty()) {
        return parts;
    }
    for (std::size_t next = 1; next < starts.size(); ++next) {
        parts[next - 1].end = starts[next];
    }
    const auto partOf = [&](reading::LogTime time) -> NavigationPart& {
        const auto begun = std::ranges::upper_bound(starts, time) - starts.begin();
        return parts[static_cast<std::size_t>(std::max<std::ptrdiff_t>(begun - 1, 0))];
    };
    for (const NavigationRecord* record : navigation.sortedRecords()) {
        partOf(record->epoch).records.push_back(record);
    }
    for (const IonosphereTerms& terms : navigation.ionosphere()) {
        partOf(terms.sent).ionosphere.push_back(&terms);
    }
    for (const TimeOffsetTerms& terms : navigation.offsets()) {
        partOf(terms.sent).offsets.push_back(&terms);
    }
    return parts;
}

NavigationPart wholeOf(const NavigationSet& navigation) {
    return std::move(partsOf(navigation, std::array{reading::LogTime{}}).front());
}

}  // namespace orbconv::standard
