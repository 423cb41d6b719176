#include "log/message_reader.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "log/message_lookup.h"

namespace orbconv {

namespace {

// The length field as strtol takes it in base 16: leading blanks, a sign and a 0x prefix count, and the
// number ends where the digits do. -0xFF to 0xFFF.
int readLength(LogStream& stream) {
    const auto field = stream.take(3);
    if (field.size() == 3) {
        const int high = digitValue[field[0]];
        const int middle = digitValue[field[1]];
        const int low = digitValue[field[2]];
        if ((high | middle | low) >= 0) {
            return high * 256 + middle * 16 + low;
        }
    }
    std::array<char, 4> text{};
    std::copy(field.begin(), field.end(), text.begin());
    return static_cast<int>(std::strtol(text.data(), nullptr, 16));
}

// Reads `count` bytes, keeps as many as the area takes and passes the rest.
void readInto(LogStream& stream, std::span<std::uint8_t> area, int count) {
    if (count > 0) {
        const auto got = stream.take(static_cast<std::size_t>(count));
        const std::size_t kept = std::min(got.size(), area.size());
        if (kept > 0) {
            std::memcpy(area.data(), got.data(), kept);
        }
    }
}

void skip(LogStream& stream, int count) {
    readInto(stream, {}, count);
}

void readForms(LogStream& stream, MessageStaging& staging, const MessageRow& row, std::size_t index,
               int length) {
    staging.bodyLength[index] = length;
    const auto form = std::ranges::find(row.forms, length, &BodyForm::length);
    if (form == row.forms.end()) {
        skip(stream, row.closingBytesOfOtherLengths);
        return;
    }
    for (const FormPiece& piece : form->pieces) {
        readInto(stream, staging.area(index).subspan(piece.areaOffset, piece.bytes), piece.bytes);
    }
    skip(stream, row.closingBytes);
}

void readArray(LogStream& stream, MessageStaging& staging, const MessageRow& row, std::size_t index,
               int length) {
    const int count = (length - 1) / row.elementBytes;
    readInto(stream, staging.area(index), count * row.elementBytes);
    skip(stream, row.closingBytes);
    staging.elementCount[index] = std::min(count, row.areaBytes / row.elementBytes);
}

void readBody(LogStream& stream, MessageStaging& staging, std::size_t index, int length) {
    const MessageRow& row = messageTable[index];
    switch (row.reading) {
        case Reading::array: readArray(stream, staging, row, index, length); break;
        case Reading::forms: readForms(stream, staging, row, index, length); break;
        case Reading::block:
        case Reading::fixedBlock: {
            const std::size_t area = row.id == row.area ? index : findRowQuickly(row.area);
            const int taken = row.reading == Reading::fixedBlock ? row.assumedLength : length;
            readInto(stream, staging.area(area), taken + row.lineEndBytes - row.closingBytes);
            skip(stream, row.closingBytes);
            break;
        }
    }
}

// What a message brings beside its area.
void keepReaderValues(MessageStaging& staging, std::size_t index) {
    if (index == rowOf("~~")) {
        staging.timeOfDayMs = loadLittleEndian<std::uint32_t>(staging.body(index));
        staging.lastEpochMs = staging.timeOfDayMs;
    } else if (index == rowOf("SX")) {
        staging.satellitesInEpoch = staging.elementCount[index];
    }
}

}  // namespace

MessageId readMessage(LogStream& stream, MessageStaging& staging) {
    const auto idBytes = stream.take(2);
    if (idBytes.size() < 2) {
        return {};
    }
    const MessageId id{static_cast<char>(idBytes[0]), static_cast<char>(idBytes[1])};
    const std::size_t index = findRowQuickly(id);
    if (index != noRow) {
        readBody(stream, staging, index, readLength(stream));
        keepReaderValues(staging, index);
    } else if (id.first != '>') {  // of an id with '>' that has no row only the two characters are taken
        skip(stream, readLength(stream) + binaryLineEnd);
    }
    return id;
}

}  // namespace orbconv
