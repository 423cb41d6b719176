#include "log/receiver_identity.h"

#include "log/epoch_bodies.h"

namespace orbconv {

namespace {

// Bytes of a receiver number that are cut out, from the 21st character on.
constexpr std::size_t receiverNumberField = 20;
constexpr std::size_t receiverNumberCut = 6;

// The text from `offset` to the first zero byte, or to the end of the area where none is. It can run on
// into what an earlier, longer message left there.
std::string stagedText(std::span<const std::uint8_t> area, std::size_t offset) {
    std::string text;
    for (std::size_t i = offset; i < area.size() && area[i] != 0; ++i) {
        text.push_back(static_cast<char>(area[i]));
    }
    return text;
}

}  // namespace

void handleKv(const MessageStaging& staging, ReceiverInfo& info) {
    std::string token;
    for (const char c : stagedText(staging.area(rowOf("KV")), bodies::siteText::textOffset)) {
        if (c != ' ') {
            token.push_back(c);
        } else if (token == "KVS") {
            token.clear();
        } else if (!token.empty()) {
            info.markerName = token;
            break;
        }
    }
}

void handlePm(const MessageStaging& staging, ReceiverInfo& info) {
    std::string token;
    bool versionNext = false;
    bool idNext = false;
    bool typeNext = false;
    for (const char c : stagedText(staging.area(rowOf("PM")), 0)) {
        if (c != '"') {
            token.push_back(c);
            continue;
        }
        if (versionNext) {
            info.receiverVersion = token;
            versionNext = false;
        }
        if (idNext) {
            info.receiverNumber = token;
            idNext = false;
            // Deliberate: what stands behind the cut stays, and a shorter number throws.
            info.receiverNumber.erase(receiverNumberField, receiverNumberCut);
        }
        if (typeNext) {
            info.receiverType = token;
            typeNext = false;
        }
        versionNext = versionNext || token == "rcv/ver/main=";
        idNext = idNext || token == "rcv/id=";
        typeNext = typeNext || token == "rcv/igs=";
        token.clear();
    }
}

void handleEquals(const MessageStaging& staging, ReceiverInfo& info) {
    const auto area = staging.area(rowOf("=="));
    const bool kindOfText = area[bodies::siteText::kind.offset] == 0;
    const std::string text = stagedText(area, bodies::siteText::textOffset);
    std::string token;
    bool antennaNext = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool last = i + 1 == text.size();
        if (text[i] != '=' && !last) {
            token.push_back(text[i]);
            continue;
        }
        if (antennaNext) {
            info.antennaType = token + text[i];
            antennaNext = false;
            token = info.antennaType;
        }
        if (kindOfText && token == "_ANT") {
            antennaNext = true;
        }
        token.clear();
    }
}

void handlePv(const MessageStaging& staging, ReceiverInfo& info) {
    const std::uint8_t* const pv = staging.body(rowOf("PV"));
    info.approxPosition = {bodies::pv::x.load(pv), bodies::pv::y.load(pv), bodies::pv::z.load(pv)};
}

void handleTo(const MessageStaging& staging, ReceiverInfo& info) {
    info.receiverClockOffset = bodies::clock::offset.load(staging.body(rowOf("TO")));
}

}  // namespace orbconv
