#include "reading/site_identity.h"

#include <algorithm>
#include <cmath>

#include "log/epoch_bodies.h"

namespace orbconv::reading {

namespace {

namespace siteText = bodies::siteText;

constexpr std::uint8_t kindOfText = 0;

// Metres: farther from the Earth's centre than any orbit of these systems.
constexpr double farthestPosition = 5e7;

// The text from `offset` on, to the first zero byte or the end.
std::string_view textOf(const Message& message, std::size_t offset) {
    const auto content = message.content();
    if (content.size() <= offset) {
        return {};
    }
    // NOLINTNEXTLINE(*-reinterpret-cast): bytes that are characters
    const std::string_view text(reinterpret_cast<const char*>(content.data()) + offset,
                                content.size() - offset);
    return text.substr(0, text.find('\0'));
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string printable(std::string_view text) {
    std::string result(text);
    std::ranges::replace_if(
        result, [](char c) { return c < ' ' || c > '~'; }, '?');
    return result;
}

void set(std::optional<LogText>& field, std::string_view text, const Message& message) {
    const std::string_view kept = trimmed(text);
    if (!kept.empty()) {
        field = LogText{.text = printable(kept), .offset = message.offset};
    }
}

// The first word that is not "KVS".
std::string_view markerIn(std::string_view text) {
    while (!text.empty()) {
        text = trimmed(text);
        const std::string_view word = text.substr(0, text.find(' '));
        if (word != "KVS") {
            return word;
        }
        text.remove_prefix(word.size());
    }
    return {};
}

struct Parameter {
    std::string_view name;
    std::optional<LogText> SiteIdentity::*field;
};
constexpr Parameter parameters[] = {
    {"rcv/id=", &SiteIdentity::receiverNumber},
    {"rcv/igs=", &SiteIdentity::receiverType},
    {"rcv/ver/main=", &SiteIdentity::receiverVersion},
};

// Parameters stand as "name="value" with a quote, or the start of the text, ahead of the name, around the
// value and behind it. What no quote ends is cut off.
void takeParameters(const Message& message, SiteIdentity& identity) {
    std::string_view text = textOf(message, 0);
    auto named = std::end(parameters);
    for (std::size_t quote = text.find('"'); quote != std::string_view::npos; quote = text.find('"')) {
        const std::string_view token = text.substr(0, quote);
        text.remove_prefix(quote + 1);
        if (named != std::end(parameters)) {
            set(identity.*(named->field), token, message);
            named = std::end(parameters);
        } else {
            named = std::ranges::find(parameters, token, &Parameter::name);
        }
    }
}

void takeAntenna(const Message& message, SiteIdentity& identity) {
    constexpr std::string_view name = "_ANT=";
    const std::string_view text = textOf(message, siteText::textOffset);
    if (message.body.size() > siteText::kind.offset && message.body[siteText::kind.offset] == kindOfText &&
        text.starts_with(name)) {
        set(identity.antennaType, text.substr(name.size()), message);
    }
}

void takePosition(const Message& message, SiteIdentity& identity) {
    if (message.content().size() < bodies::pv::bytes) {
        return;
    }
    const std::uint8_t* const body = message.body.data();
    const std::array<double, 3> position = {bodies::pv::x.load(body), bodies::pv::y.load(body),
                                            bodies::pv::z.load(body)};
    const bool isKnown = std::ranges::any_of(position, [](double metres) { return metres != 0.0; });
    const bool isSound =
        std::ranges::all_of(position, [](double metres) { return std::abs(metres) < farthestPosition; });
    if (isKnown && isSound) {
        identity.position = position;
    }
}

}  // namespace

void SiteIdentity::take(const Message& message) {
    switch (message.row) {
        case rowOf("KV"): set(markerName, markerIn(textOf(message, siteText::textOffset)), message); break;
        case rowOf("PM"): takeParameters(message, *this); break;
        case rowOf("=="): takeAntenna(message, *this); break;
        case rowOf("PV"): takePosition(message, *this); break;
        default: break;
    }
}

}  // namespace orbconv::reading
