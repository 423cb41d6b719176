#include "standard/columns.h"

namespace orbconv::standard {

namespace {

constexpr std::array<Kind, kindCount> kindsInOrder = {Kind::range, Kind::phase, Kind::doppler,
                                                      Kind::strength};
constexpr std::array<char, kindCount> kindLetters = {'C', 'L', 'D', 'S'};

}  // namespace

Columns columnsOf(const ContentSurvey& content) {
    Columns columns;
    for (std::size_t system = 0; system < constellationCount; ++system) {
        for (std::size_t band = 0; band < bandCount; ++band) {
            if (content.signals[band][system].none()) {
                continue;
            }
            for (const Kind kind : kindsInOrder) {
                columns[system].push_back({band, kind});
            }
        }
    }
    return columns;
}

char systemLetterOf(const Columns& columns) {
    char letter = 0;
    for (std::size_t system = 0; system < constellationCount; ++system) {
        if (!columns[system].empty()) {
            letter = letter == 0 ? systemLetters[system] : 'M';
        }
    }
    return letter;
}

std::string codeOf(Constellation constellation, const Column& column) {
    return kindLetters[indexOf(column.kind)] +
           std::string(signalCodes[column.band][orbconv::indexOf(constellation)].view());
}

}  // namespace orbconv::standard
