#include "standard/file_names.h"

#include <algorithm>
#include <array>

namespace orbconv::standard {

namespace {

constexpr std::string_view unspecified = "00U";
constexpr std::int64_t mostOfUnit = 99;  // two digits
constexpr std::int64_t second = 1000;    // milliseconds
constexpr std::int64_t hundred = 100;    // hertz

struct Unit {
    std::int64_t milliseconds;
    char letter;
};
constexpr std::array<Unit, 4> rateUnits = {{
    {86'400'000, 'D'},
    {3'600'000, 'H'},
    {60'000, 'M'},
    {1'000, 'S'},
}};
constexpr std::array<Unit, 4> periodUnits = {{
    {60'000, 'M'},
    {3'600'000, 'H'},
    {86'400'000, 'D'},
    {std::int64_t{365} * 86'400'000, 'Y'},
}};

std::string padded(std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

std::string field(std::int64_t number, char unit) {
    return padded(number, 2) + unit;
}

// Year and day of the year, four and three digits.
std::string dayField(const reading::CalendarTime& time) {
    return padded(time.year, 4) + padded(time.dayOfYear, 3);
}

// Milliseconds from the first epoch to where the one behind the last would be.
std::int64_t spanOf(const FileNameFacts& facts) {
    return (facts.last - facts.first).count() + facts.intervalMs.value_or(0);
}

}  // namespace

char smallOf(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char capitalOf(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isNameCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::string stationOf(std::string_view marker) {
    constexpr std::size_t siteColumns = 4;
    std::string site;
    for (const char c : marker) {
        if (isNameCharacter(capitalOf(c)) && site.size() < siteColumns) {
            site += capitalOf(c);
        }
    }
    site.resize(siteColumns, 'X');
    return site + "00XXX";
}

std::string periodField(std::int64_t milliseconds) {
    if (milliseconds <= 0) {
        return std::string(unspecified);
    }
    // A number of a small unit that is whole in a larger one is told in that.
    std::int64_t number = 0;
    std::size_t unit = 0;
    const auto roundUpTo = [&](std::size_t index) {
        number = (milliseconds + periodUnits[index].milliseconds - 1) / periodUnits[index].milliseconds;
        unit = index;
    };
    roundUpTo(0);
    for (std::size_t next = 1; next < periodUnits.size(); ++next) {
        const std::int64_t rounded = number * periodUnits[unit].milliseconds;
        if (number > mostOfUnit || rounded % periodUnits[next].milliseconds == 0) {
            milliseconds = rounded;
            roundUpTo(next);
        }
    }
    return field(std::min(number, mostOfUnit), periodUnits[unit].letter);
}

std::string rateField(std::optional<std::int64_t> intervalMs) {
    if (!intervalMs) {
        return std::string(unspecified);
    }
    for (const Unit& unit : rateUnits) {
        const std::int64_t number = *intervalMs / unit.milliseconds;
        if (*intervalMs % unit.milliseconds == 0 && number <= mostOfUnit) {
            return field(number, unit.letter);
        }
    }
    if (second % *intervalMs != 0) {
        return std::string(unspecified);
    }
    const std::int64_t hertz = second / *intervalMs;
    if (hertz <= mostOfUnit) {
        return field(hertz, 'Z');
    }
    return hertz % hundred == 0 ? field(hertz / hundred, 'C') : std::string(unspecified);
}

std::string longNameOf(const FileNameFacts& facts, FileKind kind) {
    const reading::CalendarTime start =
        reading::calendarOf(facts.split ? partStartOf(facts.first, *facts.split) : facts.first);
    std::string name = facts.station + "_R_" + dayField(start) + padded(start.hour, 2) +
                       padded(start.minute, 2) + '_' +
                       periodField(facts.split ? lengthOf(*facts.split).count() : spanOf(facts)) + '_';
    if (kind == FileKind::observations) {
        name += rateField(facts.intervalMs) + '_';
    }
    return name + (kind == FileKind::observations ? "MO" : "MN") + ".rnx";
}

std::string shortNameOf(const FileNameFacts& facts, FileKind kind) {
    constexpr std::size_t siteColumns = 4;
    const bool isOfOneHour = facts.split != Split::day &&
                             partStartOf(facts.first, Split::hour) == partStartOf(facts.last, Split::hour);
    const reading::CalendarTime start = reading::calendarOf(facts.first);
    const std::string day = dayField(start);
    std::string name;
    for (const char c : facts.station.substr(0, siteColumns)) {
        name += smallOf(c);
    }
    name += day.substr(4);
    name += isOfOneHour ? static_cast<char>('a' + start.hour) : '0';
    return name + '.' + day.substr(2, 2) + (kind == FileKind::observations ? 'o' : 'p');
}

}  // namespace orbconv::standard
