// What the reader has read: a fixed area for each row of the message table, overwritten by the next message
// of that id and never cleared, not between messages, epochs or passes. A shorter body leaves the bytes
// behind it as they were, and a message that stops coming leaves its last values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "log/little_endian.h"
#include "log/message_table.h"

namespace orbconv {

// The staged elements of an array message, as numbers of type T.
template <class T>
class ElementArray {
public:
    explicit ElementArray(const std::uint8_t* bytes) : bytes_(bytes) {}
    // i below the room of the message's area.
    [[nodiscard]] T operator[](std::size_t i) const { return loadLittleEndian<T>(bytes_ + i * sizeof(T)); }

private:
    const std::uint8_t* bytes_;
};

struct MessageStaging {
    std::array<std::uint8_t, areaOffsets.back()> bytes{};

    // By row of messageTable: the elements of the last message of an array kind (at most what its area has
    // room for), the length field of the last message of a kind with forms.
    std::array<std::int32_t, messageTable.size()> elementCount{};
    std::array<std::int32_t, messageTable.size()> bodyLength{};

    std::uint32_t timeOfDayMs = 0;  // of the last ~~, milliseconds; a pass sets it to 0 at its start
    std::uint32_t lastEpochMs = 0;  // a copy that only a ~~ sets

    // Satellites of the epoch line: the second copy of the SX count, computed anew when an epoch is sorted.
    std::int32_t satellitesInEpoch = 0;

    [[nodiscard]] std::span<const std::uint8_t> area(std::size_t row) const {
        return std::span(bytes).subspan(areaOffsets[row],
                                        static_cast<std::size_t>(messageTable[row].areaBytes));
    }
    [[nodiscard]] std::span<std::uint8_t> area(std::size_t row) {
        return std::span(bytes).subspan(areaOffsets[row],
                                        static_cast<std::size_t>(messageTable[row].areaBytes));
    }
    // The start of an area, for the loads of fields at known offsets.
    [[nodiscard]] const std::uint8_t* body(std::size_t row) const { return bytes.data() + areaOffsets[row]; }

    // The elements of an array message.
    template <class T>
    [[nodiscard]] ElementArray<T> elements(std::size_t row) const {
        return ElementArray<T>(body(row));
    }
};

}  // namespace orbconv
