// What leaving constellations out does to the files: it takes their lines away and lowers the counts of
// satellites, and changes no line of the others. That holds for a log in which the last satellite of every
// list is of a constellation that stays (its range difference is what all second bands take).
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <vector>

#include "support/all_files.h"
#include "support/effort.h"
#include "support/random_log.h"

namespace {

using testsupport::allFiles;
using testsupport::Files;
using testsupport::partsBehindArrows;
using testsupport::RandomLog;
using testsupport::splitLines;
using Lines = std::vector<std::string>;

struct System {
    char letter;
    std::uint8_t code;
    bool orbconv::RunOptions::*include;
    char file;  // letter of its navigation file below version 4.0
};
constexpr std::array<System, 5> systems = {{
    {'G', 1, &orbconv::RunOptions::includeGps, 'N'},
    {'R', 2, &orbconv::RunOptions::includeGlonass, 'G'},
    {'E', 4, &orbconv::RunOptions::includeGalileo, 'L'},
    {'C', 6, &orbconv::RunOptions::includeBeidou, 'C'},
    {'I', 7, &orbconv::RunOptions::includeNavic, 'I'},
}};

// Bits of a set of systems, in the order of the table.
using SystemSet = unsigned;
constexpr SystemSet allSystems = 31;
bool holds(SystemSet set, std::size_t system) {
    return (set >> system & 1U) != 0;
}
bool holdsLetter(SystemSet set, char letter) {
    for (std::size_t i = 0; i < systems.size(); ++i) {
        if (holds(set, i) && systems[i].letter == letter) {
            return true;
        }
    }
    return false;
}

orbconv::RunOptions without(SystemSet excluded, double version) {
    orbconv::RunOptions options;
    options.rinexVersion = version;
    for (std::size_t i = 0; i < systems.size(); ++i) {
        options.*systems[i].include = !holds(excluded, i);
    }
    return options;
}

// Ahead of "END OF HEADER", with that line, and behind it.
struct ObservationFile {
    Lines header;
    Lines body;
};

ObservationFile parted(const Files& files) {
    ObservationFile file;
    bool inBody = false;
    for (std::string& line : splitLines(files.at('o'))) {
        const bool last = line.ends_with("END OF HEADER");
        (inBody ? file.body : file.header).push_back(std::move(line));
        inBody = inBody || last;
    }
    return file;
}

int satellitesIn(const std::vector<samplelog::Satellite>& list, SystemSet set) {
    int count = 0;
    for (const samplelog::Satellite& satellite : list) {
        for (std::size_t i = 0; i < systems.size(); ++i) {
            count += holds(set, i) && systems[i].code == satellite.systemCode ? 1 : 0;
        }
    }
    return count;
}

// The lines of the whole file, less those of the excluded systems; epoch lines count fewer satellites.
Lines bodyLess(const Lines& whole, const RandomLog& log, SystemSet excluded) {
    Lines body;
    std::size_t epoch = 0;
    for (std::string line : whole) {
        if (line.starts_with("> ")) {
            constexpr std::size_t countColumn = 32;
            const int count = std::stoi(line.substr(countColumn, 3));
            std::string fewer = std::to_string(count - satellitesIn(log.lists().at(epoch), excluded));
            fewer.insert(0, 3 - fewer.size(), ' ');
            line.replace(countColumn, 3, fewer);
            ++epoch;
        } else if (holdsLetter(excluded, line[0])) {
            continue;
        }
        body.push_back(line);
    }
    return body;
}

// The header less the systems' lines, with those that continue them, and less what stands for all systems
// together: the letter of the first line and the number of satellites.
Lines headerLess(const Lines& whole, SystemSet excluded) {
    Lines header;
    char system = ' ';
    for (std::string line : whole) {
        if (line.ends_with("RINEX VERSION / TYPE")) {
            line.resize(40);
        } else if (line.ends_with("# OF SATELLITES") ||
                   (line.ends_with("GLONASS SLOT / FRQ #") && holdsLetter(excluded, 'R')) ||
                   (line.ends_with("GLONASS COD/PHS/BIS") && holdsLetter(excluded, 'R'))) {
            continue;
        } else if (line.ends_with("SYS / # / OBS TYPES") || line.ends_with("SYS / PHASE SHIFT")) {
            system = line[0] == ' ' ? system : line[0];
            if (holdsLetter(excluded, system)) {
                continue;
            }
        }
        header.push_back(line);
    }
    return header;
}

int satelliteTotal(const Lines& header) {
    for (const std::string& line : header) {
        if (line.ends_with("# OF SATELLITES")) {
            return std::stoi(line.substr(0, 6));
        }
    }
    return -1;
}

// A log whose lists end with a satellite of a system that stays; GPS where none stays but NavIC, which
// prints no second band.
RandomLog logFor(unsigned seed, SystemSet excluded) {
    std::uint8_t last = systems[0].code;
    for (std::size_t i = 0; i < 4; ++i) {
        if (!holds(excluded, i)) {
            last = systems[i].code;
            break;
        }
    }
    return RandomLog({.seed = seed, .mostOfASystem = 14, .lastSystem = last});
}

struct Case {
    double version;
    unsigned seed;
};

void PrintTo(const Case& one, std::ostream* out) {
    *out << one.version << ", seed " << one.seed;
}

class Exclusion : public testing::TestWithParam<Case> {};

std::vector<Case> cases() {
    std::vector<Case> all;
    for (unsigned seed = 1; seed <= testsupport::effort(6U, 1U); ++seed) {
        for (const double version : {3.05, 4.0, 4.01}) {
            all.push_back({version, seed});
        }
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(RandomLogs, Exclusion, testing::ValuesIn(cases()));

TEST_P(Exclusion, TakesLinesOutOfTheObservationFileAndChangesNoOther) {
    for (SystemSet excluded = 0; excluded <= allSystems; ++excluded) {
        const RandomLog log = logFor(GetParam().seed, excluded);
        const ObservationFile whole = parted(allFiles(log.bytes(), without(0, GetParam().version)));
        const ObservationFile less = parted(allFiles(log.bytes(), without(excluded, GetParam().version)));
        ASSERT_GT(whole.body.size(), log.lists().size() * 5) << "too little to exclude from";
        ASSERT_EQ(less.body, bodyLess(whole.body, log, excluded)) << excluded;
        ASSERT_EQ(headerLess(less.header, excluded), headerLess(whole.header, excluded)) << excluded;
        for (const std::string& line : less.header) {
            ASSERT_FALSE(line.ends_with("OBS TYPES") && holdsLetter(excluded, line[0])) << line;
            ASSERT_FALSE(line.ends_with("PHASE SHIFT") && holdsLetter(excluded, line[0])) << line;
        }
    }
}

TEST_P(Exclusion, NumberOfSatellitesIsTheSumOverTheSystemsThatStay) {
    const RandomLog log = logFor(GetParam().seed, 0);
    const auto total = [&](SystemSet excluded) {
        return satelliteTotal(parted(allFiles(log.bytes(), without(excluded, GetParam().version))).header);
    };
    std::array<int, systems.size()> alone{};
    for (std::size_t i = 0; i < systems.size(); ++i) {
        alone[i] = total(allSystems & ~(1U << i));
        ASSERT_GE(alone[i], 0);
    }
    for (SystemSet excluded = 0; excluded <= allSystems; ++excluded) {
        int sum = 0;
        for (std::size_t i = 0; i < systems.size(); ++i) {
            sum += holds(excluded, i) ? 0 : alone[i];
        }
        ASSERT_EQ(total(excluded), sum) << excluded;
    }
}

// Ephemeris records of the systems of a set.
bool isEphemerisOf(const std::string& record, SystemSet set) {
    return record.starts_with("> EPH ") && holdsLetter(set, record[6]);
}

TEST_P(Exclusion, OfNavigationFilesLeavesOutWholeOnesOrOnlyTheirOrder) {
    const RandomLog log = logFor(GetParam().seed, 0);
    const Files whole = allFiles(log.bytes(), without(0, GetParam().version));
    for (SystemSet excluded = 0; excluded <= allSystems; ++excluded) {
        const Files less = allFiles(log.bytes(), without(excluded, GetParam().version));
        if (GetParam().version < 4.0) {
            for (std::size_t i = 0; i < systems.size(); ++i) {
                ASSERT_EQ(less.contains(systems[i].file), !holds(excluded, i));
                if (!holds(excluded, i)) {
                    ASSERT_EQ(less.at(systems[i].file), whole.at(systems[i].file)) << excluded;
                }
            }
            continue;
        }
        // The mixed file has every record; those of an excluded system are not put in order.
        std::array<std::vector<std::string>, 2> others;
        std::array<std::multiset<std::string>, 2> own;
        for (const std::size_t side : {0U, 1U}) {
            for (const std::string& record : partsBehindArrows((side == 0 ? whole : less).at('p'))) {
                if (isEphemerisOf(record, excluded)) {
                    own[side].insert(record);
                } else {
                    others[side].push_back(record);
                }
            }
        }
        ASSERT_EQ(others[1], others[0]) << excluded;
        ASSERT_EQ(own[1], own[0]) << excluded;
        ASSERT_GE(own[0].size() + others[0].size(), 5 * log.lists().size());
    }
}

}  // namespace
