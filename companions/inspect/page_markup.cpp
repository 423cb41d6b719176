#include "inspect/page_markup.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace orbconv::inspect {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

std::string_view escapeOf(char character) {
    switch (character) {
        case '&': return "&amp;";
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '"': return "&quot;";
        case '\'': return "&#39;";
        default: return {};
    }
}

// The rows of well-formed UTF-8: the first byte, the second byte's range, and how many bytes there are.
struct Utf8Row {
    std::uint8_t first, last;
    std::uint8_t secondLeast, secondMost;
    std::size_t bytes;
};
constexpr auto utf8Rows = std::to_array<Utf8Row>({
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
});

constexpr bool isWithin(char character, std::uint8_t least, std::uint8_t most) {
    const auto byte = static_cast<std::uint8_t>(character);
    return byte >= least && byte <= most;
}

// The length of the character that the text begins with if it is a printing one; else 0. C1 controls are
// C2 80 to C2 9F.
std::size_t characterBytes(std::string_view text) {
    if (isWithin(text[0], 0x20, 0x7E)) {
        return 1;
    }
    const auto row = std::ranges::find_if(
        utf8Rows, [&](const Utf8Row& each) { return isWithin(text[0], each.first, each.last); });
    if (row == utf8Rows.end() || text.size() < row->bytes ||
        !isWithin(text[1], row->secondLeast, row->secondMost) ||
        (text[0] == '\xC2' && isWithin(text[1], 0x80, 0x9F))) {
        return 0;
    }
    const bool whole = std::ranges::all_of(text.substr(2, row->bytes - 2),
                                           [](char byte) { return isWithin(byte, 0x80, 0xBF); });
    return whole ? row->bytes : 0;
}

struct Unit {
    std::int64_t milliseconds;
    std::string_view name;
};
constexpr auto units = std::to_array<Unit>({{86'400'000, " d"}, {3'600'000, " h"}, {60'000, " min"}});

}  // namespace

Markup& Markup::text(std::string_view text) {
    while (!text.empty()) {
        const std::size_t bytes = characterBytes(text);
        const std::string_view escape = escapeOf(text[0]);
        out_ += bytes == 0 ? replacement : !escape.empty() ? escape : text.substr(0, bytes);
        text.remove_prefix(std::max<std::size_t>(bytes, 1));
    }
    return *this;
}

Markup& Markup::shortText(std::string_view text, std::size_t most) {
    this->text(text.substr(0, most));
    return text.size() > most ? raw("\u2026") : *this;
}

std::string grouped(std::uint64_t value) {
    std::string digits = std::to_string(value);
    for (std::size_t place = digits.size(); place > 3;) {
        place -= 3;
        digits.insert(place, 1, ',');
    }
    return digits;
}

std::string decimal(double value, int decimals) {
    std::array<char, 400> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals)
            .ptr;
    return {digits.data(), end};
}

std::string percent(std::uint64_t part, std::uint64_t whole) {
    if (whole == 0) {
        return {};
    }
    if (part == 0 || part >= whole) {
        return part == 0 ? "0 %" : "100 %";
    }
    const double share = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    return share < 1.0 ? "<1 %" : share > 99.0 ? ">99 %" : decimal(share, 0) + " %";
}

std::string durationText(Milliseconds duration) {
    std::int64_t rest = duration.count();
    std::string text;
    std::size_t parts = 0;
    for (const Unit& unit : units) {
        if (rest >= unit.milliseconds && parts < 2) {
            text += (parts > 0 ? " " : "") + std::to_string(rest / unit.milliseconds).append(unit.name);
            ++parts;
        }
        rest %= unit.milliseconds;
    }
    if (parts == 2 || (parts == 1 && rest == 0)) {
        return text;
    }
    const bool whole = rest % 1000 == 0;
    const int decimals = whole ? 0 : rest % 100 == 0 ? 1 : 3;
    return text + (parts > 0 ? " " : "") + decimal(static_cast<double>(rest) / 1000.0, decimals) + " s";
}

std::string counted(std::uint64_t count, std::string_view one, std::string_view many) {
    return grouped(count).append(" ").append(count == 1 ? one : many);
}

std::string timeText(LogTime time, bool dated) {
    std::string text = reading::isoText(time);
    text[10] = ' ';
    if (dated) {
        return text;
    }
    const auto days = std::chrono::floor<std::chrono::days>(time).time_since_epoch().count();
    return (days != 0 ? "+" + std::to_string(days) + " d " : std::string{}) + text.substr(11);
}

}  // namespace orbconv::inspect
