// Which lengths a message of a known id can have, by the rows of the message table: what a careful reader
// asks before it takes five characters for the start of a message.
#pragma once

#include <algorithm>

#include "log/message_table.h"

namespace orbconv::reading {

// A binary message ends with a checksum, so that none is shorter than this. A text may be empty.
inline constexpr int leastLength = 1;
inline constexpr int leastLengthOfText = 0;
inline constexpr int longestLength = 0xFFF;

// The room of the area that body and line end fill, but for their closing bytes. Almanacs of GPS share that
// of its ephemerides; a text that nobody reads has none, and any length.
constexpr int roomOf(const MessageRow& row) {
    const int room = row.id == row.area
                         ? row.areaBytes
                         : std::ranges::find(messageTable, row.area, &MessageRow::id)->areaBytes;
    return room > 0 ? room : longestLength + row.lineEndBytes;
}

// Whether a body of `length` bytes can belong to the row's id: it fits the area that the format gives it, it
// is made of whole elements, or it is one of the forms.
constexpr bool lengthIsPossible(const MessageRow& row, int length) {
    if (length < (row.lineEndBytes == textLineEnd ? leastLengthOfText : leastLength)) {
        return false;
    }
    switch (row.reading) {
        case Reading::block: {
            const int bytes = length + row.lineEndBytes - row.closingBytes;
            return bytes >= 0 && bytes <= roomOf(row);
        }
        case Reading::fixedBlock: return length == row.assumedLength;
        case Reading::array: return (length - 1) % row.elementBytes == 0 && length - 1 <= row.areaBytes;
        case Reading::forms: break;
    }
    return std::ranges::any_of(row.forms, [&](const BodyForm& form) { return form.length == length; });
}

}  // namespace orbconv::reading
