// Numbers to characters, exactly as a classic-locale C++ stream prints them for the same notation and
// precision: rounded half-even on the exact binary value, "inf", "nan" and "-nan" for what is no number.
// Nothing here depends on a locale, on the C library's printf or on a stream.
#pragma once

#include <cstdint>

namespace orbconv {

// The longest text that formatFixed or formatScientific produces: the largest double has 309 digits
// ahead of the point.
inline constexpr int maxNumberText = 352;

// The most decimals and the highest precision that the formatters take.
inline constexpr int maxDecimals = 20;

// Writes `value` in decimal and returns the end of the text. Needs room for 20 characters.
char* formatInteger(char* out, std::int64_t value);

// Fixed-point notation with `decimals` digits behind the point, and no point when there are none.
// Needs room for maxNumberText characters; returns the end of the text.
char* formatFixed(char* out, double value, int decimals);

// Scientific notation with `precision` decimals and `exponentLetter` ahead of the exponent, which has a
// sign and at least two digits. Needs room for maxNumberText characters; returns the end of the text.
char* formatScientific(char* out, double value, int precision, char exponentLetter);

// Writes `value` with three decimals right-justified into `width` columns that the caller has already
// filled with blanks, and returns the end of the text: field + width, or further if the text is wider than
// its field. Needs room for maxNumberText characters from `field`. This is the hot path of the program.
char* formatFixed3IntoBlanks(char* field, double value, int width);

}  // namespace orbconv
