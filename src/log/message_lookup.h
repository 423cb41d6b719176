// Looking at the five characters that open a message, without a branch: the row of an id and the value of a
// digit, each out of a table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "log/message_table.h"

namespace orbconv {

// What findRowQuickly() gives for an id without a row.
inline constexpr std::uint8_t noRow = 0xFF;
static_assert(messageTable.size() < noRow);

// Row of messageTable by the two characters of an id, both below 128.
inline constexpr auto rowByCharacters = []() {
    std::array<std::array<std::uint8_t, 128>, 128> rows{};
    for (auto& line : rows) {
        line.fill(noRow);
    }
    for (std::size_t i = 0; i < messageTable.size(); ++i) {
        const MessageId id = messageTable[i].id;
        rows[static_cast<std::size_t>(id.first)][static_cast<std::size_t>(id.second)] =
            static_cast<std::uint8_t>(i);
    }
    return rows;
}();

// The same as findRow(), at the cost of one load.
inline std::size_t findRowQuickly(MessageId id) {
    const auto first = static_cast<unsigned char>(id.first);
    const auto second = static_cast<unsigned char>(id.second);
    return first < 128 && second < 128 ? rowByCharacters[first][second] : noRow;
}

// The value of a hexadecimal digit of either case; -1 for what is none.
inline constexpr auto digitValue = []() {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (int i = 0; i < 10; ++i) {
        values[static_cast<std::size_t>('0' + i)] = static_cast<std::int8_t>(i);
    }
    for (int i = 0; i < 6; ++i) {
        values[static_cast<std::size_t>('A' + i)] = static_cast<std::int8_t>(10 + i);
        values[static_cast<std::size_t>('a' + i)] = static_cast<std::int8_t>(10 + i);
    }
    return values;
}();

}  // namespace orbconv
