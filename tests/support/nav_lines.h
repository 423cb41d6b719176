// Lines of navigation files, put together by the classic streams: the form that they are defined by.
#pragma once

#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/conversion.h"

namespace testsupport {

// Scientific notation, right-justified, with 'D' or 'e' ahead of the exponent.
inline std::string navNumber(double value, char letter = 'D', int precision = 12, int width = 19) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << std::scientific << std::setprecision(precision) << std::setw(width);
    if (std::isnan(value)) {
        out << (std::signbit(value) ? "-nan" : "nan");  // MinGW's streams leave out the sign
    } else {
        out << value;
    }
    std::string text = out.str();
    if (const auto e = text.find('e'); e != std::string::npos) {
        text[e] = letter;
    }
    return text;
}

// Four blanks and the values.
inline std::string orbitLine(const std::vector<double>& values, char letter = 'D') {
    std::string line = "    ";
    for (const double value : values) {
        line += navNumber(value, letter);
    }
    return line;
}

// The head (satellite and epoch) and the orbit lines of a record: values[0] are those of the epoch line.
inline std::vector<std::string> recordLines(const std::string& head,
                                            const std::vector<std::vector<double>>& values,
                                            char letter = 'D') {
    std::vector<std::string> lines;
    for (const auto& row : values) {
        lines.push_back(lines.empty() ? head + orbitLine(row, letter).substr(4) : orbitLine(row, letter));
    }
    return lines;
}

// The same behind a line of its own.
inline std::vector<std::string> withFirstLine(const std::string& first, std::vector<std::string> lines) {
    lines.insert(lines.begin(), first);
    return lines;
}

}  // namespace testsupport
