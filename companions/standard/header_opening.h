// The two lines that open the header of every file, without their labels.
#pragma once

#include <string>
#include <string_view>

#include "standard/selection.h"

namespace orbconv::standard {

// The computer's clock in UTC.
struct RunTime {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

std::string versionField(RinexVersion version, std::string_view fileType, char systemLetter);
std::string programFields(const RunTime& time);

}  // namespace orbconv::standard
