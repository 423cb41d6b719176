// The files of a conversion made in memory, through the stages that a run takes, and their parts. For tests
// that convert too many logs to start the program for each.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "navfile/mixed_nav_file.h"
#include "navfile/nav_files.h"
#include "navfile/table_order.h"
#include "support/conversion.h"
#include "support/log_passes.h"
#include "support/staging.h"

namespace testsupport {

// By the letter that ends their name.
using Files = std::map<char, std::string>;

inline Files allFiles(std::string_view log, const orbconv::RunOptions& options = {}) {
    Passes passes;
    passes.state->options = options;
    Files files = {{'o', passes.convert(log)}};
    orbconv::NavigationTables& navigation = passes.state->navigation;
    const orbconv::NavFileTables tables{
        .rinexVersion = options.rinexVersion,
        .runStamp = passes.state->runStamp,
        .satelliteSystemLetter = passes.state->presence.satelliteSystemLetter(),
        .navigation = navigation};
    const auto add = [&](char letter, bool included, auto sort, auto write) {
        if (included) {
            sort(navigation);
            files[letter] = written([&](auto& out) { write(out, tables); });
        }
    };
    if (!orbconv::isRinex4(options.rinexVersion)) {
        add('N', options.includeGps, orbconv::sortGpsTable, orbconv::writeGpsNavFile);
        add('I', options.includeNavic, orbconv::sortNavicTable, orbconv::writeNavicNavFile);
        add('G', options.includeGlonass, orbconv::sortGlonassTable, orbconv::writeGlonassNavFile);
        add('L', options.includeGalileo, orbconv::sortGalileoTable, orbconv::writeGalileoNavFile);
        add('C', options.includeBeidou, orbconv::sortBeidouTable, orbconv::writeBeidouNavFile);
        return files;
    }
    const auto sortAll = [&options](orbconv::NavigationTables& sorted) {
        using Sort = void (*)(orbconv::NavigationTables&);
        for (const auto& [included, sort] : {std::pair<bool, Sort>{options.includeGps, orbconv::sortGpsTable},
                                             {options.includeNavic, orbconv::sortNavicTable},
                                             {options.includeGlonass, orbconv::sortGlonassTable},
                                             {options.includeBeidou, orbconv::sortBeidouTable}}) {
            if (included) {
                sort(sorted);
            }
        }
    };
    add('p', true, sortAll, orbconv::writeMixedNavFile);
    return files;
}

// Parts of a text that each begin with a line of which `begins` holds; lines ahead of the first are dropped.
template <class Begins>
std::vector<std::string> partsOf(std::string_view text, Begins begins) {
    std::vector<std::string> parts;
    for (const std::string& line : splitLines(text)) {
        if (begins(line)) {
            parts.emplace_back();
        }
        if (!parts.empty()) {
            parts.back() += line + '\n';
        }
    }
    return parts;
}

// The records of a mixed navigation file, and the epochs of an observation file.
inline std::vector<std::string> partsBehindArrows(std::string_view text) {
    return partsOf(text, [](const std::string& line) { return line.starts_with("> "); });
}

}  // namespace testsupport
