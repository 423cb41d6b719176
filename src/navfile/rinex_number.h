// The number forms of navigation files: RINEX exponents have the letter D, and some records have the plain e.
#pragma once

#include "text/text_writer.h"

namespace orbconv {

inline constexpr char rinexExponent = 'D';
inline constexpr char plainExponent = 'e';

// Scientific notation with the letter D, right-justified in `width`: one digit ahead of the point, a sign
// and at least two digits behind the D. A text without an exponent ("inf", "nan") stands as it is. A 32-bit
// value is widened and shows its own digits.
inline void writeRinexNumber(TextWriter& out, double value, int precision, int width) {
    out.scientific(value, precision, width, rinexExponent);
}

// A value of a navigation record: 12 decimals, right-justified in 19 columns.
inline void writeRecordValue(TextWriter& out, double value, char exponentLetter) {
    out.scientific(value, 12, 19, exponentLetter);
}

}  // namespace orbconv
