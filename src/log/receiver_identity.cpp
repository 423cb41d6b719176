#include "log/receiver_identity.h"

namespace orbconv {

namespace {

// KV and == carry their text behind five bytes; the last of these is the kind byte of ==.
constexpr std::size_t textOffset = 5;
constexpr std::size_t kindOffset = 4;

// Bytes of a receiver number that are cut out, from the 21st character on.
constexpr std::size_t receiverNumberField = 20;
constexpr std::size_t receiverNumberCut = 6;

namespace pvBody {
constexpr BodyField<double> x{0};
constexpr BodyField<double> y{8};
constexpr BodyField<double> z{16};
static_assert(tileBody(0, 24, x, y, z));
}  // namespace pvBody

namespace toBody {
constexpr BodyField<double> clockOffset{0};
}

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
    for (const char c : stagedText(staging.area(rowOf("KV")), textOffset)) {
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
    const bool kindOfText = area[kindOffset] == 0;
    const std::string text = stagedText(area, textOffset);
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
    info.approxPosition = {pvBody::x.load(pv), pvBody::y.load(pv), pvBody::z.load(pv)};
}

void handleTo(const MessageStaging& staging, ReceiverInfo& info) {
    info.receiverClockOffset = toBody::clockOffset.load(staging.body(rowOf("TO")));
}

}  // namespace orbconv
