// Reads a navigation file by columns and counts, and complains of whatever the standard does not allow or
// orbconv-standard does not write. Independent of the writer: it knows the text alone.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

struct StrictNavigation {
    std::vector<std::string> complaints;
    std::map<std::string, std::vector<std::string>> header;  // the 60 columns of each line, by label
    // How many there are, by class, system and message type: "EPH G LNAV". 3.05 does not tell the types of
    // Galileo and BeiDou apart: "EPH E INAV" and "EPH C D1" stand for all.
    std::map<std::string, std::size_t> records;
};

StrictNavigation readNavigationStrictly(std::string_view text);

}  // namespace testsupport
