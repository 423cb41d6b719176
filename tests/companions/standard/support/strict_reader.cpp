#include "companions/standard/support/strict_reader.h"

#include <algorithm>
#include <set>
#include <sstream>

#include "companions/standard/support/line_columns.h"

namespace testsupport {

namespace {

using Lines = std::vector<std::string>;

class StrictReader {
public:
    explicit StrictReader(std::string_view text) {
        complainIf(!text.ends_with('\n'), "the last line has no end");
        std::istringstream stream{std::string(text)};
        for (std::string line; std::getline(stream, line);) {
            complainIf(std::ranges::any_of(line, [](char c) { return c < ' ' || c > '~'; }), line);
            lines_.push_back(line);
        }
    }

    StrictFile read() {
        readHeader();
        checkHeader();
        while (at_ < lines_.size()) {
            readEpoch();
        }
        checkTimes();
        return std::move(file_);
    }

private:
    void complainIf(bool wrong, const std::string& what) {
        if (wrong) {
            file_.complaints.push_back(what);
        }
    }

    void readHeader() {
        for (bool ended = false; !ended && at_ < lines_.size(); ++at_) {
            const std::string& line = lines_[at_];
            complainIf(line.size() > 80, "long header line: " + line);
            const std::string label = cutBlanks(columns(line, 61, 20));
            file_.header[label].push_back(columns(line, 1, 60));
            ended = label == "END OF HEADER";
        }
    }

    void checkHeader() {
        for (const char* const label :
             {"RINEX VERSION / TYPE", "PGM / RUN BY / DATE", "MARKER NAME", "OBSERVER / AGENCY",
              "REC # / TYPE / VERS", "ANT # / TYPE", "APPROX POSITION XYZ", "ANTENNA: DELTA H/E/N",
              "TIME OF FIRST OBS", "TIME OF LAST OBS", "SIGNAL STRENGTH UNIT", "RCV CLOCK OFFS APPL",
              "END OF HEADER"}) {
            complainIf(file_.header[label].size() != 1, std::string(label) + " does not stand once");
        }
        complainIf(lines_.empty() || columns(lines_[0], 61, 20) != "RINEX VERSION / TYPE", "first line");
        readCodes();
        const bool isVersion3 = columns(lines_.front(), 1, 9) == "     3.05";
        complainIf(!isVersion3 && columns(lines_.front(), 1, 9) != "     4.01", "version");
        const char letter = columns(lines_.front(), 41, 1)[0];
        complainIf(
            file_.codes.empty() || letter != (file_.codes.size() == 1 ? file_.codes.begin()->first : 'M'),
            "system letter");
        complainIf(file_.header["SYS / PHASE SHIFT"].empty() == isVersion3, "phase shifts");
        const bool hasGlonass = file_.codes.contains('R');
        complainIf(file_.header["GLONASS SLOT / FRQ #"].empty() == hasGlonass, "GLONASS slots");
        complainIf(file_.header["GLONASS COD/PHS/BIS"].size() != (hasGlonass && isVersion3 ? 1U : 0U),
                   "GLONASS biases");
        for (const std::string& line : file_.header["INTERVAL"]) {
            complainIf(!isFixed(columns(line, 1, 10), 3), "interval");
        }
        for (const char* const label : {"APPROX POSITION XYZ", "ANTENNA: DELTA H/E/N"}) {
            for (const std::size_t first : {1U, 15U, 29U}) {
                complainIf(!isFixed(columns(file_.header[label].front(), first, 14), 4), label);
            }
        }
        readSlots();
    }

    void readCodes() {
        char system = 0;
        std::map<char, std::size_t> counts;
        for (const std::string& line : file_.header["SYS / # / OBS TYPES"]) {
            if (line[0] != ' ') {
                system = line[0];
                complainIf(file_.codes.contains(system) || !isInteger(columns(line, 4, 3)), line);
                counts[system] = isInteger(columns(line, 4, 3)) ? std::stoul(columns(line, 4, 3)) : 0;
            }
            for (std::size_t i = 0; i < 13; ++i) {
                const std::string code = columns(line, 7 + 4 * i, 4);
                if (!isBlank(code)) {
                    complainIf(code[0] != ' ' || isBlank(code.substr(3)), line);
                    file_.codes[system].push_back(code.substr(1));
                }
            }
        }
        for (const auto& [letter, codes] : file_.codes) {
            complainIf(codes.size() != counts[letter], "number of codes");
            complainIf(std::set(codes.begin(), codes.end()).size() != codes.size(), "code twice");
        }
    }

    void readSlots() {
        std::size_t count = 0;
        for (const std::string& line : file_.header["GLONASS SLOT / FRQ #"]) {
            count += isBlank(columns(line, 1, 3)) ? 0 : std::stoul(columns(line, 1, 3));
            for (std::size_t i = 0; i < 8; ++i) {
                const std::string entry = columns(line, 5 + 7 * i, 7);
                if (!isBlank(entry)) {
                    complainIf(!isInteger(entry.substr(4, 2)) || entry[3] != ' ' || entry[6] != ' ', line);
                    slots_.insert(entry.substr(0, 3));
                }
            }
        }
        complainIf(count != slots_.size(), "number of slots");
    }

    void readEpoch() {
        const std::string line = lines_[at_++];
        StrictEpoch epoch{.time = columns(line, 3, 27), .satellites = {}};
        const bool hasForm = line.starts_with("> ") && areDigits(columns(line, 3, 4)) &&
                             areDigits(columns(line, 8, 2)) && areDigits(columns(line, 11, 2)) &&
                             areDigits(columns(line, 14, 2)) && areDigits(columns(line, 17, 2)) &&
                             isFixed(columns(line, 19, 11), 7) && columns(line, 30, 3) == "  0" &&
                             isInteger(columns(line, 33, 3)) && isBlank(columns(line, 36, 6)) &&
                             line.size() <= 56 &&
                             (isBlank(columns(line, 42, 15)) || isFixed(columns(line, 42, 15), 12));
        complainIf(!hasForm, line);
        complainIf(!file_.epochs.empty() && file_.epochs.back().time >= epoch.time, "order: " + line);
        std::size_t count = hasForm ? std::stoul(columns(line, 33, 3)) : 0;
        complainIf(count == 0, "an epoch without satellites: " + line);
        for (; count > 0 && at_ < lines_.size(); --count) {
            readSatellite(lines_[at_++], epoch);
        }
        complainIf(count != 0, "satellites missing");
        file_.epochs.push_back(epoch);
    }

    void readSatellite(const std::string& line, StrictEpoch& epoch) {
        const std::string name = columns(line, 1, 3);
        const auto codes = file_.codes.find(name[0]);
        if (codes == file_.codes.end() || !areDigits(name.substr(1)) || name.ends_with("00")) {
            file_.complaints.push_back("no satellite: " + line);
            return;
        }
        complainIf(name[0] == 'R' && !slots_.contains(name), "no channel: " + line);
        complainIf(!epoch.satellites.emplace(name, line.substr(3)).second, "twice: " + line);
        complainIf(line.size() > 3 + 16 * codes->second.size() || isBlank(line.substr(3)), "length: " + line);
        for (std::size_t i = 0; i < codes->second.size(); ++i) {
            const std::string field = columns(line, 4 + 16 * i, 16);
            const bool isPhase = codes->second[i][0] == 'L';
            complainIf(!isBlank(field) && !isFixed(field.substr(0, 14), 3), line);
            complainIf(field[14] != ' ', line);
            complainIf(field[15] != ' ' && (!isPhase || !isFixed(field.substr(0, 14), 3)), line);
        }
    }

    // The header's forms of the first and the last epoch's time.
    void checkTimes() {
        if (file_.epochs.empty()) {
            file_.complaints.emplace_back("no epoch");
            return;
        }
        checkTime("TIME OF FIRST OBS", file_.epochs.front().time);
        checkTime("TIME OF LAST OBS", file_.epochs.back().time);
    }
    void checkTime(const char* label, const std::string& epochTime) {
        std::istringstream header(file_.header[label].front());
        std::istringstream epoch(epochTime);
        for (int i = 0; i < 6; ++i) {
            double inHeader = -1;
            double inEpoch = -2;
            header >> inHeader;
            epoch >> inEpoch;
            complainIf(inHeader != inEpoch, label);
        }
        std::string system;
        header >> system;
        complainIf(system != "GPS" && system != "GLO", label);
    }

    Lines lines_;
    std::size_t at_ = 0;
    std::set<std::string> slots_;
    StrictFile file_;
};

}  // namespace

StrictFile readStrictly(std::string_view text) {
    return StrictReader(text).read();
}

}  // namespace testsupport
