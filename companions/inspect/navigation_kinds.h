// The kinds of navigation messages, one row a kind: which message brings it, and as which type, where a
// message brings several.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "log/message_table.h"
#include "navdecode/message_meaning.h"
#include "run/constellation.h"

namespace orbconv::inspect {

enum class NavigationContent : std::uint8_t { ephemeris, almanac, ionosphere, timeOffset };

struct NavigationKindRow {
    MessageId id;
    std::string_view name;  // of the kind, unique together with the constellation
    Constellation constellation{};
    NavigationContent content{};
    bool namesSatellite = false;   // the body's first byte is the satellite's number
    NavType type = NavType::none;  // by the body's flags; none: they tell no type, or there are none
};

// In the order in which they are shown.
// clang-format off
inline constexpr auto navigationKinds = std::to_array<NavigationKindRow>({
    {"GE", "CNAV",         Constellation::gps,     NavigationContent::ephemeris,  true, NavType::cnav},
    {"GE", "LNAV",         Constellation::gps,     NavigationContent::ephemeris,  true, NavType::lnav},
    {"GE", "CNV2",         Constellation::gps,     NavigationContent::ephemeris,  true, NavType::cnv2},
    {"GE", "untyped",      Constellation::gps,     NavigationContent::ephemeris,  true},
    {"NE", "FDMA",         Constellation::glonass, NavigationContent::ephemeris,  true},
    {"EN", "INAV",         Constellation::galileo, NavigationContent::ephemeris,  true, NavType::inav},
    {"EN", "FNAV",         Constellation::galileo, NavigationContent::ephemeris,  true, NavType::fnav},
    {"EN", "untyped",      Constellation::galileo, NavigationContent::ephemeris,  true},
    {"QE", "ephemerides",  Constellation::qzss,    NavigationContent::ephemeris,  true},
    {"CN", "D2",           Constellation::beidou,  NavigationContent::ephemeris,  true, NavType::d2},
    {"CN", "D1",           Constellation::beidou,  NavigationContent::ephemeris,  true, NavType::d1},
    {"CN", "CNV1",         Constellation::beidou,  NavigationContent::ephemeris,  true, NavType::cnv1},
    {"CN", "CNV2",         Constellation::beidou,  NavigationContent::ephemeris,  true, NavType::cnv2},
    {"CN", "CNV3",         Constellation::beidou,  NavigationContent::ephemeris,  true, NavType::cnv3},
    {"CN", "untyped",      Constellation::beidou,  NavigationContent::ephemeris,  true},
    {"IE", "LNAV",         Constellation::navic,   NavigationContent::ephemeris,  true},
    {"WE", "ephemerides",  Constellation::sbas,    NavigationContent::ephemeris,  true},
    {"GA", "almanacs",     Constellation::gps,     NavigationContent::almanac,    true},
    {"NA", "almanacs",     Constellation::glonass, NavigationContent::almanac,    true},
    {"EA", "almanacs",     Constellation::galileo, NavigationContent::almanac,    true},
    {"QA", "almanacs",     Constellation::qzss,    NavigationContent::almanac,    true},
    {"CA", "almanacs",     Constellation::beidou,  NavigationContent::almanac,    true},
    {"IA", "almanacs",     Constellation::navic,   NavigationContent::almanac,    true},
    {"WA", "almanacs",     Constellation::sbas,    NavigationContent::almanac,    true},
    {"IO", "ionosphere",   Constellation::gps,     NavigationContent::ionosphere, false},
    {"QI", "ionosphere",   Constellation::qzss,    NavigationContent::ionosphere, false},
    {"CI", "ionosphere",   Constellation::beidou,  NavigationContent::ionosphere, false},
    {"II", "ionosphere",   Constellation::navic,   NavigationContent::ionosphere, false},
    {"UO", "time offsets", Constellation::gps,     NavigationContent::timeOffset, false},
    {"NU", "time offsets", Constellation::glonass, NavigationContent::timeOffset, false},
    {"EU", "time offsets", Constellation::galileo, NavigationContent::timeOffset, false},
    {"QU", "time offsets", Constellation::qzss,    NavigationContent::timeOffset, false},
    {"CU", "time offsets", Constellation::beidou,  NavigationContent::timeOffset, false},
    {"IU", "time offsets", Constellation::navic,   NavigationContent::timeOffset, false},
    {"WU", "time offsets", Constellation::sbas,    NavigationContent::timeOffset, false},
});
// clang-format on

// A row of navigationKinds.
using NavigationKind = std::uint8_t;
static_assert(navigationKinds.size() < 256);

constexpr const NavigationKindRow& rowOf(NavigationKind kind) {
    return navigationKinds[kind];
}

// The byte of a GE, EN or CN that tells its type; nothing for other messages, and for the short form of GE.
std::optional<std::uint8_t> navFlagsOf(MessageId id, std::span<const std::uint8_t> content);

// The kind of a message by its id and its body (without checksum); nothing for a message that is none.
std::optional<NavigationKind> navigationKindOf(MessageId id, std::span<const std::uint8_t> content);

}  // namespace orbconv::inspect
