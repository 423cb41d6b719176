// What the fields of the navigation messages mean: message types by flags, accuracy by index, offsets of
// weeks, angles. Knowledge alone: what a decoder makes of it stands there.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orbconv {

// The navigation message that an ephemeris came in; `none` where no flag tells it.
enum class NavType : std::uint8_t { none, lnav, cnav, cnv2, inav, fnav, d1, d2, cnv1, cnv3 };

constexpr std::string_view navTypeName(NavType type) {
    constexpr std::array<std::string_view, 10> names = {"",     "LNAV", "CNAV", "CNV2", "INAV",
                                                        "FNAV", "D1",   "D2",   "CNV1", "CNV3"};
    return names[static_cast<std::size_t>(type)];
}

// ---- message types by navFlags: of several flags the upper row wins ----

struct NavTypeRow {
    std::uint8_t flags;  // any of these
    NavType type;
};

// The long forms of GE. The short form is LNAV and has no flags.
inline constexpr std::array<NavTypeRow, 3> gpsNavTypes = {{
    {0x06, NavType::cnav},
    {0x01, NavType::lnav},
    {0x08, NavType::cnv2},
}};
inline constexpr std::array<NavTypeRow, 2> galileoNavTypes = {{
    {0x05, NavType::inav},
    {0x02, NavType::fnav},
}};
// The flags tell D1 and D2 not apart: beidouNavType does.
inline constexpr std::array<NavTypeRow, 4> beidouNavTypes = {{
    {0x07, NavType::d1},
    {0x08, NavType::cnv1},
    {0x20, NavType::cnv2},
    {0x40, NavType::cnv3},
}};

template <std::size_t Rows>
constexpr NavType navTypeOf(std::uint8_t navFlags, const std::array<NavTypeRow, Rows>& rows) {
    for (const NavTypeRow& row : rows) {
        if ((navFlags & row.flags) != 0) {
            return row.type;
        }
    }
    return NavType::none;
}

// D2 is the message of the geostationary satellites, of which this knows 1 to 5.
constexpr NavType beidouNavType(std::uint8_t navFlags, std::int32_t sv) {
    constexpr std::int32_t lastGeostationary = 5;
    const NavType type = navTypeOf(navFlags, beidouNavTypes);
    return type == NavType::d1 && sv <= lastGeostationary ? NavType::d2 : type;
}

// The data sources of Galileo's message types as a record shows them.
inline constexpr std::int32_t inavDataSources = 0x205;
inline constexpr std::int32_t fnavDataSources = 0x102;

// ---- accuracy ----

// Galileo's SISA in metres: `start` and so many steps as the index lies above `first`.
struct SisaRow {
    int first;
    int last;
    double step;
    float start;
};
inline constexpr std::array<SisaRow, 4> sisaRows = {{
    {0, 49, 0.01, 0.0F},
    {50, 74, 0.02, 0.5F},
    {75, 99, 0.04, 1.0F},
    {100, 125, 0.16, 2.0F},
}};
inline constexpr float noAccuracy = -1.0F;

// Nothing for a negative index, noAccuracy for one behind the rows. The steps are narrowed to single
// precision ahead of the sum.
constexpr std::optional<float> sisaInMetres(std::int8_t index) {
    if (index < 0) {
        return std::nullopt;
    }
    for (const SisaRow& row : sisaRows) {
        if (index <= row.last) {
            return static_cast<float>((index - row.first) * row.step) + row.start;
        }
    }
    return noAccuracy;
}

// ---- weeks ----

// What makes the week of an ephemeris one that never rolls over: weeks of GPS for GPS, Galileo and NavIC, of
// BeiDou's own time for BeiDou.
inline constexpr std::int32_t gpsWeekOffset = 2048;
inline constexpr std::int32_t galileoWeekOffset = 1024;
inline constexpr std::int32_t beidouWeekOffset = 0;
inline constexpr std::int32_t navicWeekOffset = 2048;

// A week number and its offset, kept in 16 bits.
template <class Week>
constexpr Week offsetWeek(Week week, std::int32_t offset) {
    return static_cast<Week>(static_cast<std::uint32_t>(week) + static_cast<std::uint32_t>(offset));
}

// ---- angles ----

// Semicircles to radians, in double precision whatever the width of the field.
inline constexpr double pi = 3.141592653589793;
template <class Real>
constexpr Real toRadians(Real semicircles) {
    return static_cast<Real>(static_cast<double>(semicircles) * pi);
}

}  // namespace orbconv
