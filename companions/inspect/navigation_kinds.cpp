#include "inspect/navigation_kinds.h"

#include "log/navigation_bodies.h"

namespace orbconv::inspect {

namespace {

// The short form of GE has no flags and is always LNAV.
NavType typeOf(MessageId id, std::span<const std::uint8_t> content) {
    const auto flags = navFlagsOf(id, content);
    if (id == MessageId("GE")) {
        return flags ? navTypeOf(*flags, gpsNavTypes) : NavType::lnav;
    }
    if (!flags) {
        return NavType::none;
    }
    return id == MessageId("EN") ? navTypeOf(*flags, galileoNavTypes)
                                 : beidouNavType(*flags, bodies::kepler::sv.load(content.data()));
}

}  // namespace

std::optional<std::uint8_t> navFlagsOf(MessageId id, std::span<const std::uint8_t> content) {
    struct Place {
        MessageId id;
        BodyField<std::uint8_t> flags;
    };
    constexpr auto places = std::to_array<Place>(
        {{"GE", bodies::ge::navFlags}, {"EN", bodies::en::navFlags}, {"CN", bodies::cn::navFlags}});
    for (const Place& place : places) {
        if (place.id == id && content.size() > place.flags.offset) {
            return place.flags.load(content.data());
        }
    }
    return std::nullopt;
}

std::optional<NavigationKind> navigationKindOf(MessageId id, std::span<const std::uint8_t> content) {
    const NavType type = typeOf(id, content);
    for (std::size_t i = 0; i < navigationKinds.size(); ++i) {
        if (navigationKinds[i].id == id && navigationKinds[i].type == type) {
            return static_cast<NavigationKind>(i);
        }
    }
    return std::nullopt;
}

}  // namespace orbconv::inspect
