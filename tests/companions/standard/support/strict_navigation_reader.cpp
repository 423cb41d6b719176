#include "companions/standard/support/strict_navigation_reader.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>
#include <set>
#include <sstream>

#include "companions/standard/support/line_columns.h"

namespace testsupport {

namespace {

using Words = std::vector<std::string_view>;

// The lines of a record, four letters each:
//   t time   n number   ? number, or blank if unknown   _ blank   p pair of time systems   u name of UTC
// Unknown, too, is what an index stands for that is beyond the last one with a meaning.
struct RecordForm {
    std::string_view name;  // class, system, message type
    Words lines;
    std::string_view pairs;  // that an STO can have
    std::string_view utc;    // the name of UTC in those against it
};

// A record of a new kind needs a row here.
const std::vector<RecordForm>& recordForms() {
    static const Words lnav = {"tnnn", "nnnn", "nnnn", "nnnn", "nnnn", "nnnn", "?nnn", "n?__"};
    static const Words galileo = {"tnnn", "nnnn", "nnnn", "nnnn", "nnnn", "nnn_", "nnnn", "n___"};
    static const Words beidou = {"tnnn", "?nnn", "nnnn", "nnnn", "nnnn", "n_n_", "?nnn", "n?__"};
    static const Words offset = {"tp_u", "nnnn"};
    static const Words klobuchar = {"tnnn", "nnnn", "n___"};
    // clang-format off
    static const std::vector<RecordForm> forms = {
        {"EPH G LNAV", lnav, "", ""},
        {"EPH G CNAV", {"tnnn", "nnnn", "nnnn", "nnnn", "nnnn", "nnnn", "nn?n", "????", "n?__"}, "", ""},
        {"EPH G CNV2", {"tnnn", "nnnn", "nnnn", "nnnn", "nnnn", "nnnn", "nn?n", "????", "??__", "n?__"}, "", ""},
        {"EPH R FDMA", {"tnnn", "nnnn", "nnnn", "nnnn", "?nn?"}, "", ""},
        {"EPH E INAV", galileo, "", ""},
        {"EPH E FNAV", galileo, "", ""},
        {"EPH C D1", beidou, "", ""},
        {"EPH C D2", beidou, "", ""},
        {"EPH C CNV1", {"tnnn", "?nnn", "nnnn", "nnnn", "nnnn", "n???", "????", "?_??", "????", "n__n"}, "", ""},
        {"EPH C CNV2", {"tnnn", "?nnn", "nnnn", "nnnn", "nnnn", "n???", "????", "_???", "????", "n__n"}, "", ""},
        {"EPH C CNV3", {"tnnn", "?nnn", "nnnn", "nnnn", "nnnn", "n???", "????", "????", "n___"}, "", ""},
        {"EPH I LNAV", {"tnnn", "nnnn", "nnnn", "nnnn", "nnnn", "n_n_", "?nn_", "n___"}, "", ""},
        {"STO G LNAV", offset, "GPUT",      "UTC(USNO)"},
        {"STO R FDMA", offset, "GLUT GLGP", "UTC(SU)"},
        {"STO E IFNV", offset, "GAUT GAGP", "UTCGAL"},
        {"STO C D1D2", offset, "BDUT",      "UTC(NTSC)"},
        {"STO C CNVX", offset, "BDUT",      "UTC(NTSC)"},
        {"STO I LNAV", offset, "IRUT",      "UTCIRN"},
        {"ION G LNAV", klobuchar, "", ""},
        {"ION G CNVX", klobuchar, "", ""},
        {"ION E IFNV", {"tnnn", "n___"}, "", ""},
        {"ION C D1D2", klobuchar, "", ""},
        {"ION C CNVX", {"tnnn", "nnnn", "nn__"}, "", ""},
        {"ION I LNAV", klobuchar, "", ""},
    };
    // clang-format on
    return forms;
}

// The kinds that 3.05 knows, by the letter of their system.
const std::map<char, std::string> kindsOf305 = {
    {'G', "EPH G LNAV"}, {'R', "EPH R FDMA"}, {'E', "EPH E INAV"}, {'C', "EPH C D1"}, {'I', "EPH I LNAV"}};

struct LabelRule {
    std::string_view label;
    std::size_t least, most;  // lines
};
constexpr std::size_t anyNumber = 1000;
const std::vector<LabelRule> labelsOf305 = {{"RINEX VERSION / TYPE", 1, 1},
                                            {"PGM / RUN BY / DATE", 1, 1},
                                            {"COMMENT", 0, anyNumber},
                                            {"IONOSPHERIC CORR", 0, anyNumber},
                                            {"TIME SYSTEM CORR", 0, anyNumber},
                                            {"LEAP SECONDS", 0, 1},
                                            {"END OF HEADER", 1, 1}};
const std::vector<LabelRule> labelsOf401 = {{"RINEX VERSION / TYPE", 1, 1},
                                            {"PGM / RUN BY / DATE", 1, 1},
                                            {"COMMENT", 0, anyNumber},
                                            {"LEAP SECONDS", 1, 1},
                                            {"END OF HEADER", 1, 1}};

constexpr std::string_view systemOrder = "GRECI";

// Field 0 to 3 of a line; that of 0 is the time of a first line.
std::string fieldOf(const std::string& line, std::size_t field) {
    return columns(line, 5 + 19 * field, 19);
}

double valueOf(const std::string& line, std::size_t field) {
    std::string text = fieldOf(line, field);
    std::ranges::replace(text, 'D', 'E');
    return isBlank(text) ? 0.0 : std::stod(text);
}

// "2025 01 05 02 00 00"; nothing for what is no time.
std::optional<std::chrono::sys_seconds> secondsOf(const std::string& text) {
    for (const std::size_t blank : {4U, 7U, 10U, 13U, 16U}) {
        if (text[blank] != ' ') {
            return std::nullopt;
        }
    }
    std::array<int, 6> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::string part = i == 0 ? text.substr(0, 4) : text.substr(2 + 3 * i, 2);
        if (!areDigits(part)) {
            return std::nullopt;
        }
        parts[i] = std::stoi(part);
    }
    const std::chrono::year_month_day date{std::chrono::year{parts[0]},
                                           std::chrono::month{static_cast<unsigned>(parts[1])},
                                           std::chrono::day{static_cast<unsigned>(parts[2])}};
    if (!date.ok() || parts[3] > 23 || parts[4] > 59 || parts[5] > 59) {
        return std::nullopt;
    }
    return std::chrono::sys_days{date} + std::chrono::hours{parts[3]} + std::chrono::minutes{parts[4]} +
           std::chrono::seconds{parts[5]};
}

class StrictNavigationReader {
public:
    explicit StrictNavigationReader(std::string_view text) {
        complainIf(!text.ends_with('\n'), "the last line has no end");
        std::istringstream stream{std::string(text)};
        for (std::string line; std::getline(stream, line);) {
            complainIf(std::ranges::any_of(line, [](char c) { return c < ' ' || c > '~'; }), line);
            complainIf(line.size() > 80, "more than 80 columns: " + line);
            lines_.push_back(line);
        }
    }

    StrictNavigation read() {
        readHeader();
        while (at_ < lines_.size()) {
            isVersion3_ ? readRecord305() : readRecord401();
        }
        checkLetter();
        complainIf(exponentLetters_.size() > 1, "more than one letter of exponents");
        return std::move(file_);
    }

private:
    void complainIf(bool wrong, const std::string& what) {
        if (wrong) {
            file_.complaints.push_back(what);
        }
    }
    void checkExponential(const std::string& field, std::size_t decimals, const std::string& line) {
        complainIf(!isExponential(field, decimals), "no number, or not right-justified: " + line);
        const std::size_t letter = field.find_first_of("EeDd");
        if (letter != std::string::npos) {
            exponentLetters_.insert(field[letter]);
        }
    }

    // ---- header ----

    void readHeader() {
        for (bool ended = false; !ended && at_ < lines_.size(); ++at_) {
            const std::string& line = lines_[at_];
            const std::string label = cutBlanks(columns(line, 61, 20));
            file_.header[label].push_back(columns(line, 1, 60));
            complainIf(at_ == 0 && label != "RINEX VERSION / TYPE", "first line");
            complainIf(at_ == 1 && label != "PGM / RUN BY / DATE", "second line");
            ended = label == "END OF HEADER";
            complainIf(ended && !isBlank(columns(line, 1, 60)), line);
        }
        const std::string first = lines_.empty() ? "" : lines_.front();
        isVersion3_ = columns(first, 1, 20) == "     3.05           ";
        complainIf(!isVersion3_ && columns(first, 1, 20) != "     4.01           ", "version");
        complainIf(columns(first, 21, 1) != "N", "file type");
        checkLabels(isVersion3_ ? labelsOf305 : labelsOf401);
        for (const std::string& line : file_.header["PGM / RUN BY / DATE"]) {
            complainIf(!areDigits(line.substr(40, 8)) || !areDigits(line.substr(49, 6)) ||
                           line.substr(55) != " UTC ",
                       line);
        }
        for (const std::string& line : file_.header["LEAP SECONDS"]) {
            complainIf(!isInteger(line.substr(0, 6)) || !isBlank(line.substr(6)), line);
        }
        for (const std::string& line : file_.header["IONOSPHERIC CORR"]) {
            readIonosphere(line);
        }
        for (const std::string& line : file_.header["TIME SYSTEM CORR"]) {
            readTimeOffset(line);
        }
    }

    void checkLabels(const std::vector<LabelRule>& rules) {
        for (const LabelRule& rule : rules) {
            const std::size_t count = file_.header[std::string(rule.label)].size();
            complainIf(count < rule.least || count > rule.most, "number of " + std::string(rule.label));
        }
        for (const auto& [label, lines] : file_.header) {
            complainIf(std::ranges::find(rules, label, &LabelRule::label) == rules.end(), "label: " + label);
        }
    }

    // The first columns of a term of the header, of which none stands twice.
    void takeTerm(const std::set<std::string>& names, const std::string& line) {
        const std::string name = line.substr(0, 4);
        complainIf(!names.contains(name) || line[4] != ' ', line);
        complainIf(!terms_.insert(name).second, "twice: " + line);
    }

    // A4,1X,4D12.4,1X,A1,1X,I2: BeiDou's alone has the hour and the satellite.
    void readIonosphere(const std::string& line) {
        static const std::set<std::string> names = {"GAL ", "GPSA", "GPSB", "BDSA", "BDSB", "IRNA", "IRNB"};
        takeTerm(names, line);
        for (std::size_t first = 5; first < 53; first += 12) {
            checkExponential(line.substr(first, 12), 4, line);
        }
        const std::string sender = line.substr(53);
        const bool namesSender = sender[0] == ' ' && sender[1] >= 'A' && sender[1] <= 'X' &&
                                 sender[2] == ' ' && isInteger(sender.substr(3, 2)) &&
                                 isBlank(sender.substr(5));
        complainIf(line.starts_with("BDS") ? !namesSender : !isBlank(sender), line);
    }

    // A4,1X,D17.10,D16.9,1X,I6,1X,I4,1X,A5,1X,I2,1X
    void readTimeOffset(const std::string& line) {
        static const std::set<std::string> names = {"GPUT", "GLUT", "GLGP", "GAUT", "GAGP", "BDUT", "IRUT"};
        takeTerm(names, line);
        checkExponential(line.substr(5, 17), 10, line);
        checkExponential(line.substr(22, 16), 9, line);
        complainIf(!isInteger(line.substr(38, 7)) || !isInteger(line.substr(45, 5)), line);
        complainIf(line.starts_with("GL") && line.substr(38, 12) != "      0    0", line);
        const std::string satellite = line.substr(53, 3);
        complainIf(!isBlank(line.substr(50, 3)), line);
        complainIf(!isBlank(satellite) && satelliteOf(satellite) == 0, line);
        complainIf(!isInteger(line.substr(56, 3)) || line[59] != ' ', line);
        complainIf(isInteger(line.substr(56, 3)) && std::stoi(line.substr(56, 3)) > 7, line);
    }

    // One system of records stands for itself, more than one for M.
    void checkLetter() {
        const char letter = lines_.empty() ? ' ' : columns(lines_.front(), 41, 1)[0];
        complainIf(systems_.empty() || letter != (systems_.size() == 1 ? *systems_.begin() : 'M'),
                   "system letter");
        complainIf(isVersion3_ && letter == 'R' && !file_.header["LEAP SECONDS"].empty(),
                   "leap seconds of GLONASS alone");
    }

    // ---- records ----

    // "G07": the number; 0 for anything else.
    static int satelliteOf(const std::string& name) {
        const std::string number = columns(name, 2, 2);
        const bool isOne = systemOrder.find(name[0]) != std::string_view::npos && areDigits(number);
        return isOne ? std::stoi(number) : 0;
    }

    void readRecord305() {
        const auto kind = kindsOf305.find(columns(lines_[at_], 1, 1)[0]);
        if (kind == kindsOf305.end()) {
            complainIf(true, "no record: " + lines_[at_++]);
            return;
        }
        readLines(kind->second, columns(lines_[at_], 1, 3));
    }

    // `> EPH G01 LNAV`; the satellite of an STO or ION can be unknown.
    void readRecord401() {
        const std::string head = lines_[at_++];
        const std::string satellite = columns(head, 7, 3);
        const bool isEphemeris = columns(head, 3, 3) == "EPH";
        complainIf(satelliteOf(satellite) == 0 && (isEphemeris || !isBlank(satellite.substr(1))), head);
        const std::string name =
            columns(head, 3, 3) + " " + satellite[0] + " " + cutBlanks(columns(head, 11, 4));
        if (head != cutBlanks("> " + columns(head, 3, 3) + " " + satellite + " " + columns(head, 11, 4)) ||
            !readLines(name, isEphemeris ? satellite : "   ")) {
            complainIf(true, "no head of a record: " + head);
            while (at_ < lines_.size() && !lines_[at_].starts_with('>')) {
                ++at_;
            }
        }
    }

    // The lines of a record of this name, the first of which begins with the satellite; false if there is no
    // record of the name.
    bool readLines(const std::string& name, const std::string& satellite) {
        const auto form = std::ranges::find(recordForms(), name, &RecordForm::name);
        if (form == recordForms().end()) {
            return false;
        }
        const std::size_t first = at_;
        for (const std::string_view fields : form->lines) {
            if (at_ == lines_.size()) {
                complainIf(true, "a record is cut: " + name);
                return true;
            }
            const std::string& line = lines_[at_++];
            complainIf(columns(line, 1, 4) != (fields[0] == 't' ? satellite + " " : "    "), line);
            for (std::size_t i = 0; i < fields.size(); ++i) {
                checkField(*form, fields[i], fieldOf(line, i), line);
            }
        }
        ++file_.records[name];
        systems_.insert(name[4]);
        if (name.starts_with("EPH") && file_.complaints.empty()) {
            checkEphemeris(name, first);
        }
        return true;
    }

    void checkField(const RecordForm& form, char kind, const std::string& field, const std::string& line) {
        switch (kind) {
            case 't': complainIf(!secondsOf(field), "no time: " + line); break;
            case '?':
            case 'n':
                if (kind == 'n' || !isBlank(field)) {
                    checkExponential(field, 12, line);
                }
                break;
            case 'p':
                complainIf(!isBlank(field.substr(5)) || isBlank(field.substr(1, 4)) || field[0] != ' ' ||
                               form.pairs.find(field.substr(1, 4)) == std::string_view::npos,
                           "no pair: " + line);
                break;
            case 'u': {
                const bool isOfUtc = columns(line, 27, 2) == "UT";
                complainIf(cutBlanks(field) != (isOfUtc ? " " + std::string(form.utc) : ""), line);
                break;
            }
            default: complainIf(!isBlank(field), "not blank: " + line); break;
        }
    }

    void checkEphemeris(const std::string& name, std::size_t first) {
        const std::string& line = lines_[first];
        const std::string satellite = columns(line, 1, 3);
        complainIf(satelliteOf(satellite) == 0, "no satellite: " + line);
        const std::string place =
            fieldOf(line, 0) + static_cast<char>('0' + systemOrder.find(satellite[0])) + satellite.substr(1);
        complainIf(place < lastPlace_, "order: " + line);
        lastPlace_ = place;
        if (name != "EPH R FDMA" && !name.starts_with("EPH G CN") && !name.starts_with("EPH C CN")) {
            checkWeek(first);
        }
        if (satellite[0] == 'E') {
            checkSource(name, first);
        }
    }

    // The epoch lies within half a week of the week and the seconds of toe.
    void checkWeek(std::size_t first) {
        constexpr double secondsOfWeek = 604800.0;
        const bool isBeidou = lines_[first].starts_with('C');
        const auto zero = *secondsOf(isBeidou ? "2006 01 01 00 00 00" : "1980 01 06 00 00 00");
        const double toe = valueOf(lines_[first + 5], 2) * secondsOfWeek + valueOf(lines_[first + 3], 0);
        const std::chrono::duration<double> toc = *secondsOf(fieldOf(lines_[first], 0)) - zero;
        complainIf(std::abs(toc.count() - toe) > secondsOfWeek / 2, "week: " + lines_[first]);
    }

    // Data source of Galileo: I/NAV of E1-B, E5b-I or both, or F/NAV.
    void checkSource(const std::string& name, std::size_t first) {
        const double source = valueOf(lines_[first + 5], 1);
        const bool isInav = source == 513 || source == 516 || source == 517;
        const bool isFnav = source == 258;
        complainIf(isVersion3_              ? !isInav && !isFnav
                   : name.ends_with("INAV") ? !isInav
                                            : !isFnav,
                   "data source: " + lines_[first]);
    }

    std::vector<std::string> lines_;
    std::size_t at_ = 0;
    bool isVersion3_ = false;
    std::set<std::string> terms_;
    std::set<char> systems_;
    std::set<char> exponentLetters_;
    std::string lastPlace_;  // of an ephemeris in the file's order: time, system, satellite
    StrictNavigation file_;
};

}  // namespace

StrictNavigation readNavigationStrictly(std::string_view text) {
    return StrictNavigationReader(text).read();
}

}  // namespace testsupport
