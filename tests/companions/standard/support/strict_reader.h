// Reads an observation file by columns and counts, and complains of whatever the standard does not allow.
// Independent of the writer: it knows the text alone.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

struct StrictEpoch {
    std::string time;                               // columns 3 to 29 of the epoch line
    std::map<std::string, std::string> satellites;  // by name; the text behind it
};

struct StrictFile {
    std::vector<std::string> complaints;
    std::map<char, std::vector<std::string>> codes;          // by system
    std::map<std::string, std::vector<std::string>> header;  // the 60 columns of each line, by label
    std::vector<StrictEpoch> epochs;
};

StrictFile readStrictly(std::string_view text);

}  // namespace testsupport
