// The texts of the header, each from the command line or else from the log, and their widths.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reading/site_identity.h"

namespace orbconv::standard {

using HeaderText = std::optional<std::string>;

struct HeaderTexts {
    HeaderText markerName, markerNumber, markerType, observer, agency;
    HeaderText receiverNumber, receiverType, receiverVersion;
    HeaderText antennaNumber, antennaType;
    std::vector<std::string> comments;
    std::optional<std::array<double, 3>> antennaDelta;  // H, E, N, metres
    std::optional<std::array<double, 3>> position;      // X, Y, Z, metres
};

// A text of the header.
struct TextRow {
    const char* option;
    const char* metavar;
    const char* help;
    HeaderText HeaderTexts::*text;
    std::size_t width;                                                          // columns
    std::optional<reading::LogText> reading::SiteIdentity::*logText = nullptr;  // null: no log tells it
    std::string_view message = {};                                              // that tells it
};
inline constexpr std::size_t commentWidth = 60;

// clang-format off
inline constexpr auto textRows = std::to_array<TextRow>({
    {"--marker-name",      "TEXT", "name of the marker",           &HeaderTexts::markerName,      60, &reading::SiteIdentity::markerName,      "KV"},
    {"--marker-number",    "TEXT", "number of the marker (DOMES)", &HeaderTexts::markerNumber,    20},
    {"--marker-type",      "TEXT", "GEODETIC, GROUND_CRAFT ...",   &HeaderTexts::markerType,      20},
    {"--observer",         "TEXT", "who observed",                 &HeaderTexts::observer,        20},
    {"--agency",           "TEXT", "for whom",                     &HeaderTexts::agency,          40},
    {"--receiver-number",  "TEXT", "serial number",                &HeaderTexts::receiverNumber,  20, &reading::SiteIdentity::receiverNumber,  "PM"},
    {"--receiver-type",    "TEXT", "type of the receiver",         &HeaderTexts::receiverType,    20, &reading::SiteIdentity::receiverType,    "PM"},
    {"--receiver-version", "TEXT", "its firmware",                 &HeaderTexts::receiverVersion, 20, &reading::SiteIdentity::receiverVersion, "PM"},
    {"--antenna-number",   "TEXT", "serial number",                &HeaderTexts::antennaNumber,   20},
    {"--antenna-type",     "TEXT", "type, radome in columns 17-20", &HeaderTexts::antennaType,    20, &reading::SiteIdentity::antennaType,     "=="},
});
// clang-format on

// What an option's text is refused for: it is wider than its columns, or it holds what is no printable ASCII
// character. Nothing for a text that can stand.
std::optional<std::string> refusalOf(std::string_view text, std::size_t width);

}  // namespace orbconv::standard
