#include "standard/header_opening.h"

#include "reading/version.h"
#include "standard/header_fields.h"

namespace orbconv::standard {

std::string versionField(RinexVersion version, std::string_view fileType, char systemLetter) {
    return leftField(version == RinexVersion::v305 ? "     3.05" : "     4.01", 20) +
           leftField(fileType, 20) + systemLetter;
}

std::string programFields(const RunTime& time) {
    std::string stamp = integerField(time.year, 4) + twoDigits(time.month) + twoDigits(time.day) + ' ';
    stamp += twoDigits(time.hour) + twoDigits(time.minute) + twoDigits(time.second) + " UTC";
    // The name in full would leave no room for the version.
    const std::string program = "orbconv-std " + std::string(reading::versionNumber);
    return leftField(leftField(program, 20).substr(0, 20), 40) + stamp;
}

}  // namespace orbconv::standard
