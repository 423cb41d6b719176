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

// Station, source, start and period.
std::string stemOf(const ObservationFileName& name) {
    const reading::CalendarTime start = reading::calendarOf(name.first);
    std::string text = name.station + "_R_";
    text +=
        padded(start.year, 4) + padded(start.dayOfYear, 3) + padded(start.hour, 2) + padded(start.minute, 2);
    const std::int64_t span = (name.last - name.first).count();
    return text + '_' + periodField(name.intervalMs ? span + *name.intervalMs : span);
}

}  // namespace

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

std::string textOf(const ObservationFileName& name) {
    return stemOf(name) + '_' + rateField(name.intervalMs) + "_MO.rnx";
}

std::string navigationNameBeside(const ObservationFileName& name) {
    return stemOf(name) + "_MN.rnx";
}

}  // namespace orbconv::standard
