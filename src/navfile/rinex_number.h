// The number form of RINEX navigation data, whose exponents have the letter D.
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

}  // namespace orbconv
