#include "companions/support/literal_log.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <stdexcept>

namespace testsupport {
namespace {

using Ids = std::set<std::string, std::less<>>;

const Ids texts = {"KV", "PM", "MF", "TD", ">>"};

// The lengths of messages with several forms.
const std::map<std::string, std::set<std::size_t>, std::less<>> forms = {
    {"GE", {123, 160, 168}}, {"NE", {88, 103}}, {"CN", {134, 152, 160}}, {"SE", {6}}};

// Bytes of an element.
const std::map<std::string, std::size_t, std::less<>> arrays = {
    {"rc", 4}, {"rx", 4}, {"cp", 4}, {"1p", 4}, {"2p", 4}, {"3p", 4}, {"5p", 4}, {"lp", 4}, {"DC", 4},
    {"DX", 4}, {"1r", 2}, {"2r", 2}, {"3r", 2}, {"5r", 2}, {"lr", 2}, {"0d", 2}, {"1d", 2}, {"2d", 2},
    {"3d", 2}, {"5d", 2}, {"ld", 2}, {"FC", 2}, {"F1", 2}, {"F2", 2}, {"F3", 2}, {"F5", 2}, {"Fl", 2},
    {"SX", 2}, {"cr", 2}, {"cc", 2}, {"c1", 2}, {"c2", 2}, {"c3", 2}, {"c5", 2}, {"cl", 2}, {"TC", 2}};

// Longest bodies of what is read as a whole, the checksum included.
const std::map<std::string, std::size_t, std::less<>> longest = {
    {"~~", 11},  {"RD", 19},  {"PV", 47},  {"TO", 23},  {"AI", 107}, {"UO", 31}, {"IO", 39},  {"NU", 31},
    {"EN", 159}, {"EU", 47},  {"CU", 31},  {"CI", 39},  {"II", 39},  {"IU", 31}, {"IE", 431}, {"KV", 94},
    {"TD", 302}, {"MF", 22},  {"GA", 176}, {"ST", 7},   {"DP", 23},  {"DO", 23}, {"NA", 303}, {"WE", 303},
    {"WA", 303}, {"WU", 303}, {"EA", 303}, {"QE", 303}, {"QA", 303}, {"QU", 31}, {"QI", 47},  {"CA", 303},
    {"IA", 299}, {"==", 106}, {"PM", 104}, {"SS", 182}, {"NN", 25}};

bool isPossible(const std::string& id, std::size_t length) {
    if (const auto form = forms.find(id); form != forms.end()) {
        return form->second.contains(length);
    }
    if (const auto array = arrays.find(id); array != arrays.end()) {
        const std::size_t room = id[0] == 'F' ? 360 : 180;
        return length % array->second == 1 % array->second && length <= room * array->second + 1;
    }
    const auto most = longest.find(id);
    const std::size_t least = id == "PM" ? 4 : id == "SS" ? 2 : texts.contains(id) ? 0 : 1;
    return length >= least && (most == longest.end() || length <= most->second);
}

std::int64_t number(const std::string& body, std::size_t offset, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = width; i > 0; --i) {
        value = value * 256 + static_cast<std::uint8_t>(body[offset + i - 1]);
    }
    return static_cast<std::int64_t>(value);
}

// Days from 1970-01-01, by counting years and months.
std::int64_t daysTo(std::int64_t year, std::int64_t month, std::int64_t day) {
    const auto isLeap = [](std::int64_t y) { return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0); };
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    std::int64_t days = day - 1;
    for (std::int64_t y = 1970; y < year; ++y) {
        days += isLeap(y) ? 366 : 365;
    }
    for (std::int64_t m = 1; m < month; ++m) {
        days += lengths[m - 1] + (m == 2 && isLeap(year) ? 1 : 0);
    }
    return days;
}

}  // namespace

std::optional<std::vector<FoundMessage>> literalMessages(std::string_view log) {
    std::vector<FoundMessage> messages;
    std::size_t place = 0;
    while (place < log.size()) {
        if (place + 5 > log.size()) {
            return std::nullopt;
        }
        const std::string id(log.substr(place, 2));
        const std::string digits(log.substr(place + 2, 3));
        const auto isGraph = [](char c) { return std::isgraph(static_cast<unsigned char>(c)) != 0; };
        const auto isHex = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
        if (!std::ranges::all_of(id, isGraph) || !std::ranges::all_of(digits, isHex)) {
            return std::nullopt;
        }
        const std::size_t length = std::stoul(digits, nullptr, 16);
        const std::size_t lineEnd = texts.contains(id) ? 2 : 1;
        std::size_t bytes = 5 + length + lineEnd;
        if (!isPossible(id, length) || place + bytes > log.size() || log[place + bytes - 1] != '\n') {
            return std::nullopt;
        }
        // The long ephemeris of GLONASS may have a second line end.
        if (id == "NE" && length == 103 && place + bytes < log.size() && log[place + bytes] == '\n') {
            ++bytes;
        }
        messages.push_back({id, place, bytes, std::string(log.substr(place + 5, length))});
        place += bytes;
    }
    return messages;
}

std::vector<LiteralEpoch> literalEpochs(const std::vector<FoundMessage>& messages) {
    std::vector<LiteralEpoch> epochs;
    LiteralEpoch epoch;
    std::optional<std::int64_t> day;
    std::optional<std::int64_t> time;
    std::optional<std::int64_t> timeBefore;
    bool newDate = false;
    for (const FoundMessage& message : messages) {
        const std::string& body = message.body;
        if (message.id == "~~" && body.size() >= 5 && number(body, 0, 4) < 86'401'000) {
            time = number(body, 0, 4);
        } else if (message.id == "RD" && body.size() >= 6) {
            const std::int64_t year = number(body, 0, 2);
            const std::int64_t month = number(body, 2, 1);
            const std::int64_t date = number(body, 3, 1);
            if (year >= 1980 && year < 2100 && month >= 1 && month <= 12 && date >= 1 &&
                daysTo(year, month, date) < daysTo(month == 12 ? year + 1 : year, month % 12 + 1, 1)) {
                day = daysTo(year, month, date);
                newDate = true;
            }
        } else if (message.id == "SX") {
            std::vector<std::string> satellites;
            for (std::size_t i = 0; i + 2 < body.size(); i += 2) {
                satellites.push_back(std::to_string(number(body, i, 1)) + "-" +
                                     std::to_string(number(body, i + 1, 1)));
            }
            if (!epoch.satellites.empty() && epoch.satellites != satellites) {
                epoch.elements.clear();
            }
            epoch.satellites = satellites;
        } else if (message.id == "rx" || message.id == "CE" || message.id == "FC") {
            const std::size_t width = message.id == "rx" ? 4 : message.id == "CE" ? 1 : 2;
            std::vector<std::int64_t> values;
            for (std::size_t i = 0; i + width < body.size(); i += width) {
                values.push_back(number(body, i, width));
            }
            epoch.elements[message.id] = values;
        } else if (message.id == "TD") {
            if (day && time && timeBefore && *time < *timeBefore && !newDate) {
                ++*day;
            }
            if (day && time) {
                epoch.milliseconds = *day * 86'400'000 + *time;
            }
            timeBefore = time;
            newDate = false;
            epochs.push_back(epoch);
            epoch = {};
        }
    }
    return epochs;
}

}  // namespace testsupport
