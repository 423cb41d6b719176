#include "inspect/navigation_kinds.h"

namespace orbconv::inspect {

namespace {

bool isOfKind(const NavigationKindRow& row, std::span<const std::uint8_t> content) {
    if (row.flagOffset == 0) {
        return true;
    }
    if (row.flagOffset >= content.size()) {  // the short form of GE is always LNAV
        return row.id == MessageId("GE") && row.name == "LNAV";
    }
    return (content[row.flagOffset] & row.flags) != 0 && content[0] >= row.leastNumber &&
           content[0] <= row.mostNumber;
}

}  // namespace

std::optional<NavigationKind> navigationKindOf(MessageId id, std::span<const std::uint8_t> content) {
    for (std::size_t i = 0; i < navigationKinds.size(); ++i) {
        if (navigationKinds[i].id == id && isOfKind(navigationKinds[i], content)) {
            return static_cast<NavigationKind>(i);
        }
    }
    return std::nullopt;
}

}  // namespace orbconv::inspect
