// Pieces of lines of the observation file, put together by plain text arithmetic.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/signal_survey.h"

namespace testsupport {

inline std::string blanks(std::size_t count) {
    return std::string(count, ' ');
}

// `content` blank-filled to column 60, then the label.
inline std::string headerLine(std::string content, std::string_view label) {
    content.resize(std::max(content.size(), std::size_t{60}), ' ');
    return content.append(label);
}

// The columns of a signal that is not there.
inline std::string absentSignal() {
    return blanks(64);
}

// Puts the codes in the places of a list, from `slot` on.
inline void setCodes(orbconv::ObsCodeList& list, std::size_t slot,
                     std::initializer_list<orbconv::SignalText> codes) {
    std::ranges::copy(codes, list.begin() + static_cast<std::ptrdiff_t>(slot));
}

// The date and time of the run (columns 41 to 55 of the second line) with all digits replaced by 0. A
// carriage return may still stand at the end of the lines.
inline std::vector<std::string> withoutRunDate(std::vector<std::string> lines) {
    for (std::string& line : lines) {
        if (line.find("PGM / RUN BY / DATE") == 60) {
            for (std::size_t i = 40; i < 55; ++i) {
                if (std::isdigit(static_cast<unsigned char>(line[i])) != 0) {
                    line[i] = '0';
                }
            }
        }
    }
    return lines;
}

}  // namespace testsupport
