// The names of RINEX files, long and short.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "reading/log_time.h"
#include "standard/selection.h"

namespace orbconv::standard {

inline constexpr std::size_t stationNameColumns = 9;

// Of ASCII, whatever the locale.
char capitalOf(char c);
char smallOf(char c);
// Whether a character can stand in a name: a capital or a digit.
bool isNameCharacter(char c);

// The nine characters for a marker: its first four letters or digits as capitals, filled up with X, and
// "00XXX".
std::string stationOf(std::string_view marker);

// The length of what is recorded, in the largest unit that makes it a whole number of two digits, rounded up
// to whole minutes, or to whole hours and so on beyond 99: "15M", "01H", "02D", "01Y". "00U" for 0.
std::string periodField(std::int64_t milliseconds);

// The interval in the largest unit that makes it a whole number of two digits: "30S", "05M", "01D"; below a
// second the number of epochs in a second, or hundreds of them: "05Z", "01C". "00U" for any other, and for
// none.
std::string rateField(std::optional<std::int64_t> intervalMs);

enum class FileKind : std::uint8_t { observations, navigation };

// What the names of a pair of files tell.
struct FileNameFacts {
    std::string station;     // nine characters
    reading::LogTime first;  // of the epochs
    reading::LogTime last;
    std::optional<std::int64_t> intervalMs;
    std::optional<Split> split;  // the whole hour or day stands in the name, whatever of it there is
};

// XXXXMRCCC_R_YYYYDDDHHMM_PPP_FFF_MO.rnx and XXXXMRCCC_R_YYYYDDDHHMM_PPP_MN.rnx. Named as mixed files
// whatever the log holds, so that the files of a station go on under one name when a constellation comes or
// goes. What is in one says its version line.
std::string longNameOf(const FileNameFacts& facts, FileKind kind);

// ssssdddf.yyo and ssssdddf.yyp: the station's first four characters as small letters, the day of the year,
// the year. f is the hour as a letter from a to x if all epochs stand in one hour and the file is not that of
// a whole day, else 0.
std::string shortNameOf(const FileNameFacts& facts, FileKind kind);

}  // namespace orbconv::standard
