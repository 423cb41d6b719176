// How the page looks: its colours as a table, the rest of its style as text.
#pragma once

#include <array>
#include <string_view>

#include "assembly/signals.h"
#include "inspect/page_markup.h"
#include "run/constellation.h"

namespace orbconv::inspect {

// A colour by its name in the style, by day and by night. Print takes the one of the day.
struct ColourRow {
    std::string_view name;
    std::string_view light;
    std::string_view dark;
};

// The eight colours of Masataka Okabe and Kei Ito ("Color Universal Design", 2008), which people with any
// kind of colour blindness can tell apart: black #000000, orange #E69F00, sky blue #56B4E9, bluish green
// #009E73, yellow #F0E442, blue #0072B2, vermillion #D55E00, reddish purple #CC79A7. Blue is too dark by
// night, yellow too light by day. No picture tells things apart by colour alone: lanes and areas have their
// fixed order, lines their dashes.
// clang-format off
inline constexpr auto signalColours = std::to_array<ColourRow>({
    // band     light      dark
    {"band-c", "#0072B2", "#56B4E9"},
    {"band-1", "#E69F00", "#E69F00"},
    {"band-2", "#009E73", "#009E73"},
    {"band-3", "#CC79A7", "#CC79A7"},
    {"band-5", "#D55E00", "#D55E00"},
    {"band-l", "#56B4E9", "#F0E442"},
});
inline constexpr auto systemColours = std::to_array<ColourRow>({
    // constellation
    {"system-gps",     "#0072B2", "#0072B2"},
    {"system-glonass", "#D55E00", "#D55E00"},
    {"system-galileo", "#009E73", "#009E73"},
    {"system-qzss",    "#CC79A7", "#CC79A7"},
    {"system-beidou",  "#E69F00", "#E69F00"},
    {"system-navic",   "#56B4E9", "#56B4E9"},
    {"system-sbas",    "#F0E442", "#F0E442"},
    {"system-cdma",    "#000000", "#C8CCD0"},
});
inline constexpr auto pageColours = std::to_array<ColourRow>({
    {"page",    "#FFFFFF", "#14171A"},
    {"card",    "#F5F6F7", "#1E2226"},
    {"ink",     "#1A1D20", "#E6E8EA"},
    {"faint",   "#5C6268", "#A0A6AC"},
    {"line",    "#D5D9DD", "#363C42"},
    {"listed",  "#E4E7EA", "#2A2F35"},
    {"gap",     "#B4BAC0", "#50575F"},
    {"good",    "#00694D", "#3CC79C"},
    {"bad",     "#A84300", "#FF8A3D"},
});
// clang-format on
static_assert(signalColours.size() == bandCount);
static_assert(systemColours.size() == constellationCount);

// The content of the page's style element.
void addStyle(Markup& page);

}  // namespace orbconv::inspect
