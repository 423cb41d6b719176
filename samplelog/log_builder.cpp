#include "log_builder.h"

#include <array>
#include <bit>
#include <stdexcept>
#include <type_traits>

namespace samplelog {

namespace {

constexpr std::size_t longestLength = 0xFFF;
constexpr std::size_t longNeBodySize = 102;

// Ids of the measurement families, in the order of Band.
constexpr std::array<std::string_view, 6> rangeDeltaIds = {"cr", "1r", "2r", "3r", "5r", "lr"};
constexpr std::array<std::string_view, 6> phaseIds = {"cp", "1p", "2p", "3p", "5p", "lp"};
constexpr std::array<std::string_view, 6> dopplerDeltaIds = {"0d", "1d", "2d", "3d", "5d", "ld"};
constexpr std::array<std::string_view, 6> strengthIds = {"CE", "1E", "2E", "3E", "5E", "lE"};
constexpr std::array<std::string_view, 6> flagIds = {"FC", "F1", "F2", "F3", "F5", "Fl"};

std::string_view idOf(const std::array<std::string_view, 6>& ids, Band band) {
    return ids[static_cast<std::size_t>(band)];
}

bool isText(std::string_view id) {
    return id == "KV" || id == "PM" || id == "MF" || id == "TD" || id == ">>";
}

char hexDigit(std::size_t value) {
    return "0123456789ABCDEF"[value & 0xFU];
}

// Exclusive or of all bytes.
unsigned checksumOf(std::string_view data) {
    unsigned char sum = 0;
    for (const char byte : data) {
        sum = static_cast<unsigned char>(sum ^ static_cast<unsigned char>(byte));
    }
    return sum;
}

void checkId(std::string_view id) {
    if (id.size() != 2) {
        throw std::invalid_argument("a message id has two characters");
    }
}

}  // namespace

LogBuilder& LogBuilder::clear() {
    buffer.clear();
    return *this;
}

void LogBuilder::put8(unsigned value) {
    buffer.push_back(static_cast<char>(value & 0xFFU));
}

void LogBuilder::put16(unsigned value) {
    put8(value);
    put8(value >> 8U);
}

void LogBuilder::put32(std::uint32_t value) {
    put16(value & 0xFFFFU);
    put16(value >> 16U);
}

void LogBuilder::put64(std::uint64_t value) {
    put32(static_cast<std::uint32_t>(value & 0xFFFFFFFFU));
    put32(static_cast<std::uint32_t>(value >> 32U));
}

void LogBuilder::putFloat(float value) {
    put32(std::bit_cast<std::uint32_t>(value));
}

void LogBuilder::putDouble(double value) {
    put64(std::bit_cast<std::uint64_t>(value));
}

void LogBuilder::beginMessage(std::string_view id, std::size_t length) {
    checkId(id);
    if (length > longestLength) {
        throw std::length_error("the length of a message has three hexadecimal digits");
    }
    messageStart = buffer.size();
    putText(id);
    put(hexDigit(length >> 8U));
    put(hexDigit(length >> 4U));
    put(hexDigit(length));
}

void LogBuilder::endBinary() {
    put8(checksumOf(std::string_view(buffer).substr(messageStart)));
    put('\n');
}

void LogBuilder::endText() {
    putText("\r\n");
}

LogBuilder& LogBuilder::message(std::string_view id, std::string_view body) {
    checkId(id);
    if (id == "PM") {
        return pm(body);
    }
    if (id[0] == '>' && id[1] != '>') {
        return raw(id);
    }
    if (isText(id)) {
        return messageWithLength(id, static_cast<unsigned>(body.size()), body);
    }
    messageWithLength(id, static_cast<unsigned>(body.size() + 1), body);
    if (id == "NE" && body.size() == longNeBodySize) {
        put('\n');
    }
    return *this;
}

LogBuilder& LogBuilder::messageWithLength(std::string_view id, unsigned length, std::string_view body,
                                          Closing closing) {
    beginMessage(id, length);
    putText(body);
    if (closing == Closing::asUsual) {
        if (isText(id)) {
            endText();
        } else {
            endBinary();
        }
    }
    return *this;
}

LogBuilder& LogBuilder::messageWithLengthText(std::string_view id, std::string_view lengthText,
                                              std::string_view body) {
    checkId(id);
    if (lengthText.size() != 3) {
        throw std::invalid_argument("a message length has three characters");
    }
    return raw(id).raw(lengthText).raw(body);
}

LogBuilder& LogBuilder::raw(std::string_view data) {
    putText(data);
    return *this;
}

LogBuilder& LogBuilder::time(std::uint32_t timeOfDayMs) {
    beginMessage("~~", 5);
    put32(timeOfDayMs);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::rd(unsigned year, unsigned month, unsigned day, unsigned timeBase) {
    beginMessage("RD", 6);
    put16(year);
    put8(month);
    put8(day);
    put8(timeBase);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::td(std::string_view body) {
    return message("TD", body);
}

LogBuilder& LogBuilder::kv(std::string_view text) {
    beginMessage("KV", 5 + text.size());
    buffer.append(5, '\0');
    putText(text);
    endText();
    return *this;
}

LogBuilder& LogBuilder::kvMarker(std::string_view name) {
    std::string text = "KVS ";
    text.append(name).append(" ").push_back('\0');
    return kv(text);
}

LogBuilder& LogBuilder::pm(std::string_view text) {
    beginMessage("PM", text.size() + 4);
    putText(text);
    put('@');
    const unsigned checksum = checksumOf(std::string_view(buffer).substr(messageStart));
    put(hexDigit(checksum >> 4U));
    put(hexDigit(checksum));
    put('\0');
    endText();
    return *this;
}

LogBuilder& LogBuilder::pmParameters(const std::vector<Parameter>& parameters) {
    std::string text;
    for (const auto& [name, value] : parameters) {
        text += quotedParameter(name, value);
    }
    text.push_back('\0');
    return pm(text);
}

std::string LogBuilder::quotedParameter(std::string_view name, std::string_view value) {
    std::string text = "\"";
    text.append(name).append("\"").append(value).append("\"");
    return text;
}

LogBuilder& LogBuilder::assignment(unsigned kind, std::string_view text) {
    beginMessage("==", 5 + text.size() + 1);
    buffer.append(4, '\0');
    put8(kind);
    putText(text);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::antennaType(std::string_view type) {
    std::string text = "_ANT=";
    text.append(type).push_back('\0');
    return assignment(0, text);
}

LogBuilder& LogBuilder::pv(const Vector3& position, float sigma, unsigned kind) {
    beginMessage("PV", 30);
    putDouble(position.x);
    putDouble(position.y);
    putDouble(position.z);
    putFloat(sigma);
    put8(kind);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::to(double offset) {
    beginMessage("TO", 9);
    putDouble(offset);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::ai(unsigned mark1, const Vector3& group1, unsigned mark2, const Vector3& group2) {
    beginMessage("AI", 51);
    put8(mark1);
    putDouble(group1.x);
    putDouble(group1.y);
    putDouble(group1.z);
    put8(mark2);
    putDouble(group2.x);
    putDouble(group2.y);
    putDouble(group2.z);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::sx(const std::vector<Satellite>& satellites) {
    beginMessage("SX", satellites.size() * 2 + 1);
    for (const Satellite& satellite : satellites) {
        put8(satellite.systemCode);
        put8(static_cast<unsigned>(satellite.number));
    }
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::nn(const std::vector<std::uint8_t>& slots) {
    return array("NN", slots);
}

// The arrays are nearly all of a log, so their room is made in one go.
template <typename Element>
LogBuilder& LogBuilder::array(std::string_view id, const std::vector<Element>& values) {
    beginMessage(id, values.size() * sizeof(Element) + 1);
    const std::size_t bodyStart = buffer.size();
    buffer.resize(bodyStart + values.size() * sizeof(Element));
    char* place = buffer.data() + bodyStart;
    for (const Element value : values) {
        const auto bits = static_cast<std::make_unsigned_t<Element>>(value);
        for (std::size_t byte = 0; byte < sizeof(Element); ++byte) {
            *place++ = static_cast<char>((bits >> (8 * byte)) & 0xFFU);
        }
    }
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::rc(const std::vector<std::int32_t>& values) {
    return array("rc", values);
}

LogBuilder& LogBuilder::rx(const std::vector<std::int32_t>& values) {
    return array("rx", values);
}

LogBuilder& LogBuilder::rangeDeltas(Band band, const std::vector<std::int16_t>& values) {
    return array(idOf(rangeDeltaIds, band), values);
}

LogBuilder& LogBuilder::phases(Band band, const std::vector<std::int32_t>& values) {
    return array(idOf(phaseIds, band), values);
}

LogBuilder& LogBuilder::dc(const std::vector<std::int32_t>& values) {
    return array("DC", values);
}

LogBuilder& LogBuilder::dx(const std::vector<std::int32_t>& values) {
    return array("DX", values);
}

LogBuilder& LogBuilder::dopplerDeltas(Band band, const std::vector<std::int16_t>& values) {
    return array(idOf(dopplerDeltaIds, band), values);
}

LogBuilder& LogBuilder::strengths(Band band, const std::vector<std::uint8_t>& values) {
    return array(idOf(strengthIds, band), values);
}

LogBuilder& LogBuilder::flags(Band band, const std::vector<std::uint16_t>& values) {
    return array(idOf(flagIds, band), values);
}

LogBuilder& LogBuilder::si(const std::vector<std::uint8_t>& values) {
    return array("SI", values);
}

LogBuilder& LogBuilder::el(const std::vector<std::uint8_t>& values) {
    return array("EL", values);
}

LogBuilder& LogBuilder::ss(const std::vector<std::uint8_t>& values, std::uint8_t lastByte) {
    beginMessage("SS", values.size() + 2);
    for (const std::uint8_t value : values) {
        put8(value);
    }
    put8(lastByte);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::se(std::uint32_t value, std::uint8_t lastByte) {
    beginMessage("SE", 6);
    put32(value);
    put8(lastByte);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::unreadArray(std::string_view id, const std::vector<std::uint16_t>& values) {
    return array(id, values);
}

}  // namespace samplelog
