// Numbers in message bodies: little-endian, unaligned, whatever the host's byte order is.
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace orbconv {

namespace detail {
template <std::size_t Width>
struct UnsignedOfWidth;
template <>
struct UnsignedOfWidth<1> {
    using Type = std::uint8_t;
};
template <>
struct UnsignedOfWidth<2> {
    using Type = std::uint16_t;
};
template <>
struct UnsignedOfWidth<4> {
    using Type = std::uint32_t;
};
template <>
struct UnsignedOfWidth<8> {
    using Type = std::uint64_t;
};
}  // namespace detail

// The number of type T whose lowest byte stands at `bytes`.
template <class T>
requires std::integral<T> || std::floating_point<T>
constexpr T loadLittleEndian(const std::uint8_t* bytes) {
    using Unsigned = typename detail::UnsignedOfWidth<sizeof(T)>::Type;
    if (std::endian::native == std::endian::little && !std::is_constant_evaluated()) {
        T value;
        std::memcpy(&value, bytes, sizeof value);  // one load, where GCC makes a loop of the shifts
        return value;
    }
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        value |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
    }
    return std::bit_cast<T>(static_cast<Unsigned>(value));
}

// One field of a message body: its type and where it starts.
template <class T>
struct BodyField {
    std::size_t offset;
    static constexpr std::size_t width = sizeof(T);

    [[nodiscard]] constexpr T load(const std::uint8_t* body) const {
        return loadLittleEndian<T>(body + offset);
    }
};

// Whether the fields, in the order given, cover the bytes from `begin` to `end` without gap or overlap.
template <class... Fields>
consteval bool tileBody(std::size_t begin, std::size_t end, Fields... fields) {
    std::size_t next = begin;
    const bool joined = ((fields.offset == next ? (next += fields.width, true) : false) && ...);
    return joined && next == end;
}

}  // namespace orbconv
