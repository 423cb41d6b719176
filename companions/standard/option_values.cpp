#include "standard/option_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>

#include "standard/file_names.h"

namespace orbconv::standard {

namespace {

[[noreturn]] void refuse(std::string_view text, std::string_view wanted) {
    throw std::runtime_error("'" + std::string(text) + "' is not " + std::string(wanted));
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

// The whole text as a finite number. A plus sign may stand ahead of it.
std::optional<double> numberOf(std::string_view text) {
    text = withoutLeadingBlanks(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

template <class Value>
struct Choice {
    std::string_view text;
    Value value;
};

template <class Value>
Value chosen(std::string_view text, const Choice<Value>& one, const Choice<Value>& other) {
    for (const Choice<Value>& choice : {one, other}) {
        if (text == choice.text) {
            return choice.value;
        }
    }
    refuse(text, std::string(one.text) + " or " + std::string(other.text));
}

}  // namespace

RinexVersion versionOf(std::string_view text) {
    return chosen<RinexVersion>(text, {"3.05", RinexVersion::v305}, {"4.01", RinexVersion::v401});
}

Split splitOf(std::string_view text) {
    return chosen<Split>(text, {"1h", Split::hour}, {"1d", Split::day});
}

FileKind fileKindOf(std::string_view text) {
    return chosen<FileKind>(text, {"obs", FileKind::observations}, {"nav", FileKind::navigation});
}

bool longNamesOf(std::string_view text) {
    return chosen<bool>(text, {"yes", true}, {"no", false});
}

PerConstellation<bool> systemsOf(std::string_view text) {
    constexpr std::string_view wanted = "one or several letters of GRECI";
    PerConstellation<bool> systems{};
    for (const char letter : text) {
        const auto found = std::ranges::find(systemLetters, letter);
        const auto index = static_cast<std::size_t>(found - systemLetters.begin());
        if (index == systemLetters.size() || !writableConstellations[index]) {
            refuse(text, wanted);
        }
        systems[index] = true;
    }
    if (text.empty()) {
        refuse(text, wanted);
    }
    return systems;
}

reading::LogTime timeOf(std::string_view text) {
    const auto time = reading::timeOfIsoText(text);
    if (!time) {
        refuse(text, "a time such as 2024-05-06T23:00:30");
    }
    return *time;
}

reading::LogDate dateOf(std::string_view text) {
    constexpr std::size_t dateColumns = 10;
    const auto time = reading::timeOfIsoText(text);
    if (!time || text.size() != dateColumns) {
        refuse(text, "a date such as 2024-05-06");
    }
    return std::chrono::floor<std::chrono::days>(*time);
}

std::int64_t intervalMsOf(std::string_view text) {
    constexpr double perSecond = 1000.0;
    constexpr double least = 1.0;
    constexpr double tolerance = 1e-6;  // of the binary form of a decimal number
    const double milliseconds = numberOf(text).value_or(0.0) * perSecond;
    const double rounded = std::round(milliseconds);
    if (rounded < least || rounded > reading::millisecondsPerDay ||
        std::abs(milliseconds - rounded) > tolerance) {
        refuse(text, "a number of seconds from 0.001 to 86400 with at most three decimals");
    }
    return static_cast<std::int64_t>(rounded);
}

std::string stationNameOf(std::string_view text) {
    std::string name(text);
    std::ranges::transform(name, name.begin(), capitalOf);
    if (name.size() != stationNameColumns || !std::ranges::all_of(name, isNameCharacter)) {
        refuse(text, "a name of nine letters and digits such as ALGO00CAN");
    }
    return name;
}

std::array<double, 3> threeNumbersOf(std::string_view text) {
    constexpr double limit = 99'999'999.0;  // metres; with a minus sign and four decimals fourteen columns
    std::array<double, 3> numbers{};
    std::string_view left = text;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::string_view piece = left.substr(0, left.find(','));
        const auto number = numberOf(piece);
        const bool isLast = piece.size() == left.size();
        if (!number || std::abs(*number) >= limit || isLast != (i + 1 == numbers.size())) {
            refuse(text, "three numbers of metres with commas between them, each below 99999999");
        }
        numbers[i] = *number;
        left.remove_prefix(isLast ? piece.size() : piece.size() + 1);
    }
    return numbers;
}

}  // namespace orbconv::standard
