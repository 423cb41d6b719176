// The bodies of the messages of time, clock, position and site as they stand in the log (receiver's format):
// where each field starts. The checksum follows the last field of those that have one.
#pragma once

#include <cstddef>
#include <cstdint>

#include "log/little_endian.h"

namespace orbconv::bodies {

// ~~
namespace timeOfDay {
inline constexpr BodyField<std::uint32_t> milliseconds{0};
inline constexpr std::size_t bytes = 4;
static_assert(tileBody(0, bytes, milliseconds));
}  // namespace timeOfDay

namespace rd {
inline constexpr BodyField<std::uint16_t> year{0};
inline constexpr BodyField<std::uint8_t> month{2};
inline constexpr BodyField<std::uint8_t> day{3};
inline constexpr BodyField<std::uint8_t> timeBase{4};  // index into timeScaleNames
inline constexpr std::size_t bytes = 5;
static_assert(tileBody(0, bytes, year, month, day, timeBase));
}  // namespace rd

// TO
namespace clock {
inline constexpr BodyField<double> offset{0};  // seconds
inline constexpr std::size_t bytes = 8;
static_assert(tileBody(0, bytes, offset));
}  // namespace clock

// PV: metres.
namespace pv {
inline constexpr BodyField<double> x{0};
inline constexpr BodyField<double> y{8};
inline constexpr BodyField<double> z{16};
inline constexpr std::size_t bytes = 24;
static_assert(tileBody(0, bytes, x, y, z));
}  // namespace pv

// KV and ==: five bytes ahead of the text, of which the last one is the kind of ==.
namespace siteText {
inline constexpr BodyField<std::uint8_t> kind{4};
inline constexpr std::size_t textOffset = 5;
}  // namespace siteText

}  // namespace orbconv::bodies
