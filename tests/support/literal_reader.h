// The reader of the log once more, as the format tells it and without any short cut: one read a field, arrays
// byte by byte. For tests that run both over the same bytes. Shares nothing with the program.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

class LiteralReader {
public:
    struct Area {
        std::vector<std::uint8_t> bytes;
        int room = 0;   // elements, of array messages
        int count = 0;  // of the last one
    };
    using Areas = std::map<std::string, Area, std::less<>>;

    LiteralReader() {
        for (const auto& [id, size] : sizes()) {
            areas_[std::string(id)].bytes.resize(size);
        }
        for (const auto& [id, element] : elements()) {
            const int room = id == "NN" ? 24 : id[0] == 'F' ? 360 : 180;
            areas_[std::string(id)] = {
                .bytes = std::vector<std::uint8_t>(static_cast<std::size_t>(room * element)), .room = room};
        }
    }

    // Starts a log. What earlier logs left in the areas stays.
    void open(std::string_view log) {
        log_ = log;
        position_ = 0;
        atEnd_ = false;
    }
    // One message; its id, or nothing at the end.
    std::string read() {
        const std::string_view id = take(2);
        if (id.size() == 2) {
            readBehindId(id);
        }
        return id.size() == 2 ? std::string(id) : std::string();
    }
    [[nodiscard]] bool atEnd() const { return atEnd_; }
    [[nodiscard]] std::size_t position() const { return position_; }
    [[nodiscard]] const Areas& areas() const { return areas_; }

    // The area that a message fills; null for one that is skipped.
    [[nodiscard]] const Area* areaOf(std::string_view id) const {
        const auto area = areas_.find(id == "GA" ? "GE" : id);
        return area == areas_.end() ? nullptr : &area->second;
    }
    [[nodiscard]] std::uint32_t timeOfDay() const {
        const auto& bytes = areas_.at("~~").bytes;
        return bytes[0] | (std::uint32_t{bytes[1]} << 8) | (std::uint32_t{bytes[2]} << 16) |
               (std::uint32_t{bytes[3]} << 24);
    }

    // Every id with a reading of its own but GA, which has no area.
    [[nodiscard]] std::vector<std::string> ids() const {
        std::vector<std::string> all;
        for (const auto& [id, area] : areas_) {
            all.push_back(id);
        }
        return all;
    }

private:
    using Numbers = std::map<std::string_view, int>;

    // Bytes of the areas of messages that are read in one go and of those with a reading of their own.
    static const std::map<std::string_view, std::size_t>& sizes() {
        static const std::map<std::string_view, std::size_t> table = {
            {"~~", 12},  {"RD", 20},  {"PV", 48},  {"TO", 24},  {"AI", 108}, {"UO", 32},  {"IO", 40},
            {"NU", 32},  {"EN", 160}, {"EU", 48},  {"CU", 32},  {"CI", 40},  {"II", 40},  {"IU", 32},
            {"ST", 8},   {"IE", 432}, {"KV", 96},  {"TD", 304}, {"MF", 24},  {"DP", 24},  {"DO", 24},
            {"QU", 32},  {"NA", 304}, {"WE", 304}, {"WA", 304}, {"WU", 304}, {"EA", 304}, {"QE", 304},
            {"QI", 48},  {"QA", 304}, {"CA", 304}, {"IA", 300}, {"==", 105}, {"PM", 100}, {"SE", 5},
            {"SS", 180}, {"NE", 103}, {"GE", 175}, {"CN", 161}};
        return table;
    }
    // Bytes of an element of the array messages.
    static const Numbers& elements() {
        static const Numbers table = {
            {"rc", 4}, {"rx", 4}, {"cp", 4}, {"1p", 4}, {"2p", 4}, {"3p", 4}, {"5p", 4}, {"lp", 4},
            {"DC", 4}, {"DX", 4}, {"1r", 2}, {"2r", 2}, {"3r", 2}, {"5r", 2}, {"lr", 2}, {"0d", 2},
            {"1d", 2}, {"2d", 2}, {"3d", 2}, {"5d", 2}, {"ld", 2}, {"CE", 1}, {"1E", 1}, {"2E", 1},
            {"3E", 1}, {"5E", 1}, {"lE", 1}, {"FC", 2}, {"F1", 2}, {"F2", 2}, {"F3", 2}, {"F5", 2},
            {"Fl", 2}, {"SX", 2}, {"NN", 1}, {"SI", 1}, {"EL", 1}, {"cr", 2}, {"cc", 2}, {"c5", 2},
            {"cl", 2}, {"TC", 2}, {"c1", 2}, {"c2", 2}, {"c3", 2}};
        return table;
    }

    void readBehindId(std::string_view id) {
        if (id[0] == '>' && id[1] != '>') {
            return;
        }
        const std::string digits(take(3));
        const int length = static_cast<int>(std::strtol(digits.c_str(), nullptr, 16));
        if (id == ">>") {
            skip(length + 2);
        } else if (id == "GA") {
            fill("GE", 0, length + 1);
        } else if (id == "KV" || id == "TD" || id == "MF") {
            fill(id, 0, length + 2);
        } else if (id == "==") {
            fill(id, 0, length - 1);
            skip(2);
        } else if (id == "PM") {
            fill(id, 0, length - 4);
            skip(6);
        } else if (id == "SE") {
            fill(id, 0, 5);
            skip(2);
        } else if (id == "SS") {
            fill(id, 0, length - 2);
            skip(3);
        } else if (id == "NE") {
            readNe(length);
        } else if (id == "GE") {
            readGe(length);
        } else if (id == "CN") {
            readCn(length);
        } else if (sizes().contains(id)) {
            fill(id, 0, length + 1);
        } else if (elements().contains(id)) {
            readArray(id, length);
        } else {
            skip(length + 1);
        }
    }
    void readNe(int length) {
        if (length == 88 || length == 103) {
            fill("NE", 0, 87);
            if (length == 103) {
                fill("NE", 87, 16);
            }
            skip(2);
        }
    }
    void readGe(int length) {
        if (length == 123) {
            fill("GE", 0, 122);
        } else if (length == 160 || length == 168) {
            fill("GE", 0, 122);
            fill("GE", 122, 1);
            fill("GE", 123, 4);
            fill("GE", 127, 4);
            fill("GE", 131, 8);
            fill("GE", 139, 4);
            for (const int offset : {143, 144, 145, 146}) {
                fill("GE", offset, 1);
            }
            if (length == 160) {
                fill("GE", 163, 8);
            } else {
                fill("GE", 147, 16);
            }
            fill("GE", 171, 4);
        }
        skip(2);
    }
    void readCn(int length) {
        if (length == 134 || length == 152 || length == 160) {
            fill("CN", 0, 122);
            fill("CN", 122, 4);
            fill("CN", 126, 1);
            fill("CN", 127, 4);
            if (length == 134) {
                fill("CN", 131, 2);
            } else if (length == 152) {
                fill("CN", 133, 8);
                fill("CN", 141, 4);
                fill("CN", 145, 4);
                fill("CN", 149, 4);
            } else {
                fill("CN", 133, 28);
            }
        }
        skip(2);
    }
    void readArray(std::string_view id, int length) {
        const int element = elements().at(id);
        Area& area = areas_.find(id)->second;
        area.count = (length - 1) / element;
        for (int i = 0; i < area.count; ++i) {
            for (int byte = 0; byte < element; ++byte) {
                const std::string_view got = take(1);
                const auto place = static_cast<std::size_t>(i * element + byte);
                if (!got.empty() && i < area.room) {
                    area.bytes[place] = static_cast<std::uint8_t>(got[0]);
                }
            }
        }
        skip(1);
        skip(1);
    }

    // One read, as the C library's fread: fewer bytes at the end, which only such a read finds.
    std::string_view take(int count) {
        const auto wanted = static_cast<std::size_t>(count < 0 ? 0 : count);
        const std::string_view got = log_.substr(position_, wanted);
        position_ += got.size();
        atEnd_ = atEnd_ || got.size() < wanted;
        return got;
    }
    void skip(int count) { take(count); }
    void fill(std::string_view id, int offset, int count) {
        auto& bytes = areas_.find(id)->second.bytes;
        auto place = static_cast<std::size_t>(offset);
        for (const char byte : take(count)) {
            if (place < bytes.size()) {
                bytes[place++] = static_cast<std::uint8_t>(byte);
            }
        }
    }

    std::string_view log_;
    std::size_t position_ = 0;
    bool atEnd_ = false;
    Areas areas_;
};

}  // namespace testsupport
