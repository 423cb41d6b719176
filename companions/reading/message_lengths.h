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

// The bytes between the body and the next message: two behind a text, one behind every other.
constexpr int lineEndBytes(const MessageRow& row) {
    return row.reading == Reading::block ? row.adjust + row.closingBytes : 1;
}

// The room of the area that the row's messages fill. Almanacs of GPS share that of its ephemerides.
constexpr int roomOf(const MessageRow& row) {
    return row.id == row.area ? row.areaBytes : std::ranges::find(messageTable, row.area, &MessageRow::id)->areaBytes;
}

// Whether a body of `length` bytes can belong to the row's id: it fits the area that the format gives it, it
// is made of whole elements, or it is one of the forms.
constexpr bool lengthIsPossible(const MessageRow& row, int length) {
    if (length < (lineEndBytes(row) == 2 ? leastLengthOfText : leastLength)) {
        return false;
    }
    switch (row.reading) {
        case Reading::block: return length + row.adjust >= 0 && length + row.adjust <= roomOf(row);
        case Reading::fixedBlock: return length == row.adjust + 1;  // and the checksum
        case Reading::array: return (length - 1) % row.elementBytes == 0 && length - 1 <= row.areaBytes;
        case Reading::forms:
            return std::ranges::any_of(row.forms,
                                       [&](const BodyForm& form) { return form.length == length; });
    }
    return false;
}

}  // namespace orbconv::reading
