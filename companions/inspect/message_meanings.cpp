#include "inspect/message_meanings.h"

#include <algorithm>
#include <array>

namespace orbconv::inspect {

namespace {

struct Meaning {
    MessageId id;
    std::string_view text;
};

// clang-format off
constexpr auto meanings = std::to_array<Meaning>({
    {"~~", "time of day"},
    {"RD", "date"},
    {"PV", "position"},
    {"TO", "receiver clock offset"},
    {"AI", "antenna coordinates"},
    {"KV", "site text: marker"},
    {"PM", "receiver parameters"},
    {"==", "assignment: antenna"},
    {"TD", "end of an epoch"},
    {"MF", "text, not converted"},
    {">>", "text, not converted"},

    {"SX", "satellites of the epoch"},
    {"NN", "GLONASS slots"},
    {"SI", "satellite indices, not converted"},
    {"EL", "elevations, not converted"},
    {"SS", "satellite states, not converted"},
    {"SE", "not converted"},
    {"ST", "not converted"},
    {"DP", "not converted"},
    {"DO", "not converted"},

    {"rc", "ranges"},
    {"rx", "reference ranges"},
    {"1r", "range differences, band 1"},
    {"2r", "range differences, band 2"},
    {"3r", "range differences, band 3"},
    {"5r", "range differences, band 5"},
    {"lr", "range differences, band l"},
    {"cp", "phases, band c"},
    {"1p", "phases, band 1"},
    {"2p", "phases, band 2"},
    {"3p", "phases, band 3"},
    {"5p", "phases, band 5"},
    {"lp", "phases, band l"},
    {"DC", "Doppler"},
    {"DX", "reference Doppler"},
    {"0d", "Doppler differences, band c"},
    {"1d", "Doppler differences, band 1"},
    {"2d", "Doppler differences, band 2"},
    {"3d", "Doppler differences, band 3"},
    {"5d", "Doppler differences, band 5"},
    {"ld", "Doppler differences, band l"},
    {"CE", "signal strengths, band c"},
    {"1E", "signal strengths, band 1"},
    {"2E", "signal strengths, band 2"},
    {"3E", "signal strengths, band 3"},
    {"5E", "signal strengths, band 5"},
    {"lE", "signal strengths, band l"},
    {"FC", "signal flags, band c"},
    {"F1", "signal flags, band 1"},
    {"F2", "signal flags, band 2"},
    {"F3", "signal flags, band 3"},
    {"F5", "signal flags, band 5"},
    {"Fl", "signal flags, band l"},
    {"cr", "range corrections, not converted"},
    {"cc", "corrections, band c, not converted"},
    {"c1", "corrections, band 1, not converted"},
    {"c2", "corrections, band 2, not converted"},
    {"c3", "corrections, band 3, not converted"},
    {"c5", "corrections, band 5, not converted"},
    {"cl", "corrections, band l, not converted"},
    {"TC", "tracking times, not converted"},

    {"GE", "GPS ephemerides"},
    {"NE", "GLONASS ephemerides"},
    {"EN", "Galileo ephemerides"},
    {"CN", "BeiDou ephemerides"},
    {"IE", "NavIC ephemerides"},
    {"QE", "QZSS ephemerides, not converted"},
    {"WE", "SBAS ephemerides, not converted"},
    {"GA", "GPS almanacs, not converted"},
    {"NA", "GLONASS almanacs, not converted"},
    {"EA", "Galileo almanacs, not converted"},
    {"CA", "BeiDou almanacs, not converted"},
    {"IA", "NavIC almanacs, not converted"},
    {"QA", "QZSS almanacs, not converted"},
    {"WA", "SBAS almanacs, not converted"},
    {"IO", "GPS ionosphere"},
    {"CI", "BeiDou ionosphere"},
    {"II", "NavIC ionosphere"},
    {"QI", "QZSS ionosphere, not converted"},
    {"UO", "GPS time offsets"},
    {"NU", "GLONASS time offsets"},
    {"EU", "Galileo time offsets"},
    {"CU", "BeiDou time offsets"},
    {"IU", "NavIC time offsets"},
    {"QU", "QZSS time offsets, not converted"},
    {"WU", "SBAS time offsets, not converted"},
});
// clang-format on

static_assert(std::ranges::all_of(messageTable,
                                  [](const MessageRow& row) {
                                      return std::ranges::count(meanings, row.id, &Meaning::id) == 1;
                                  }),
              "every message of the format has its words");

}  // namespace

std::string_view messageMeaning(MessageId id) {
    const auto* const meaning = std::ranges::find(meanings, id, &Meaning::id);
    return meaning == meanings.end() ? "unknown" : meaning->text;
}

}  // namespace orbconv::inspect
