// Decoding as rows: a field of a body and the member of an entry that takes it. A further field is a further
// row.
#pragma once

#include <concepts>
#include <cstdint>
#include <tuple>

#include "log/little_endian.h"
#include "navdecode/message_meaning.h"

namespace orbconv {

enum class Unit : std::uint8_t { asSent, semicircles };

template <class Wire, class Entry, class Member>
struct FieldRow {
    BodyField<Wire> field;
    Member Entry::*member;
    Unit unit = Unit::asSent;  // semicircles become radians
};
template <class Wire, class Entry, class Member>
FieldRow(BodyField<Wire>, Member Entry::*, Unit = Unit::asSent) -> FieldRow<Wire, Entry, Member>;

template <class Wire, class Entry, class Member>
void loadField(const std::uint8_t* body, const FieldRow<Wire, Entry, Member>& row, Entry& entry) {
    Wire value = row.field.load(body);
    if constexpr (std::floating_point<Wire>) {
        value = row.unit == Unit::semicircles ? toRadians(value) : value;
    }
    entry.*row.member = value;
}

// Fills the members of all rows, which are constants for the compiler.
template <class Entry, class... Rows>
void loadFields(const std::uint8_t* body, const std::tuple<Rows...>& rows, Entry& entry) {
    std::apply([&](const auto&... row) { (loadField(body, row, entry), ...); }, rows);
}

}  // namespace orbconv
