// What orbconv makes of a log: the differences of docs/differences.md that a log can set off, one row each.
// A code can have several rows, where it tells of several things.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/log_summary.h"
#include "reading/epoch.h"
#include "reading/log_reader.h"

namespace orbconv::inspect {

enum class FindingId : std::uint8_t {
    slotGaps,
    beidouCodes,
    secondRanges,
    missingValues,
    beyondThirty,
    noSignal,
    noSlot,
    leftoverLines,
    navicDigits,
    shiftedPhases,
    c2pAlone,
    missingMessages,
    leftOutSystems,
    outOfStep,
    fractions,
    dateAheadOfTime,
    hiddenSteps,
    clockFallsBack,
    wrongInterval,
    midnightStart,
    noHeader,
    epochsAheadOfHeader,
    oldClockOffsets,
    emptyEpochs,
    wrongLetter,
    missingIdentity,
    emptySlotLines,
    cutPhaseShifts,
    timeScale,
    lateDate,
    noLeapSeconds,
    notCounted,
    longTexts,
    abnormalEnd,
    wrongDay,
    wrongHour,
    shiftedOffsets,
    glonassOffsets,
    threeLines,
    roundedInclinations,
    cutAccuracies,
    droppedRepeats,
    removedGlonass,
    severalWeeks,
    noFitInterval,
    fnavRecords,
    severalIonospheres,
    beidouIonosphereLost,
    ionosphereEnds,
    yearZero,
    galileoHealth,
    fullTables,
    navicIonosphere,
    mixedExponents,
    galileoIonosphere,
    timeOffsetForms,
    cnavRecords,
    beidouCnavRecords,
    noRecords,
    timeOffsetDates,
    negativeAccuracies,
    beidouTypes,
    geostationaryD1,
    count
};
inline constexpr auto findingCount = static_cast<std::size_t>(FindingId::count);

struct FindingRow {
    FindingId id;
    std::string_view code;
    std::string_view title;    // at most 64 characters
    std::string_view counted;  // what the count counts
    bool everySuch = false;    // any log with such satellites or messages sets it off, whatever their content
};

// clang-format off
inline constexpr auto findingRows = std::to_array<FindingRow>({
    {FindingId::slotGaps,             "O1",  "Unused slots ahead of used ones keep their columns",          "signals"},
    {FindingId::beidouCodes,          "O2",  "BeiDou's list of codes is not what the lines hold",           "signals"},
    {FindingId::secondRanges,         "O3",  "Ranges of slot 3 with another satellite's difference",        "ranges"},
    {FindingId::missingValues,        "O5",  "Missing values of present signals print as 0.000",            "values"},
    {FindingId::beyondThirty,         "O6",  "Satellites beyond the thirtieth of a constellation are lost", "lines"},
    {FindingId::noSignal,             "O7",  "Satellites without any signal have a line",                   "lines"},
    {FindingId::noSlot,               "O8",  "GLONASS satellites without a slot have other names",          "lines"},
    {FindingId::leftoverLines,        "O26", "Lines of GLONASS satellites that are not in the list",        "epochs"},
    {FindingId::navicDigits,          "O28", "The strength digit of NavIC 1X is that of 9A",                "values",  true},
    {FindingId::shiftedPhases,        "O29", "Phases have corrections that are not the standard's",         "signals", true},
    {FindingId::c2pAlone,             "O33", "GLONASS C2P is listed without a signal",                      "codes"},
    {FindingId::missingMessages,      "O30", "Missing messages are replaced by their last ones",            "messages"},
    {FindingId::leftOutSystems,       "O31", "QZSS, SBAS and GLONASS CDMA are left out",                    "satellites"},
    {FindingId::outOfStep,            "O32", "Messages lost because the converter is out of step",          "messages"},
    {FindingId::fractions,            "O10", "Fractions of a second are dropped",                           "epochs"},
    {FindingId::dateAheadOfTime,      "O10", "A date ahead of its epoch's time: time of the one before",    "epochs"},
    {FindingId::hiddenSteps,          "O10", "Steps that are not the interval do not show without dates",   "epochs"},
    {FindingId::clockFallsBack,       "O11", "Without dates the clock falls back at each minute",           "epochs"},
    {FindingId::wrongInterval,        "O12", "INTERVAL is that of the log's last two epochs",               "headers"},
    {FindingId::midnightStart,        "O13", "The first epoch, at 00:00:00, is lost and spoils the next",   "epochs"},
    {FindingId::noHeader,             "O14", "Too few times of day: the observation file is empty",         "epochs"},
    {FindingId::epochsAheadOfHeader,  "O14", "Epochs ahead of the header are lost",                         "epochs"},
    {FindingId::oldClockOffsets,      "O16", "Epochs without a clock offset print the last one, or 0",      "epochs"},
    {FindingId::emptyEpochs,          "O27", "Epochs without any satellite are written",                    "epochs"},
    {FindingId::wrongLetter,          "O17", "The letter of the first line names other constellations",     "files"},
    {FindingId::missingIdentity,      "O18", "Header values that the log does not give in time are blank",  "values"},
    {FindingId::emptySlotLines,       "O20", "GLONASS SLOT / FRQ # has a line without entries",             "lines",   true},
    {FindingId::cutPhaseShifts,       "O21", "SYS / PHASE SHIFT is cut or has codes of its own",            "signals"},
    {FindingId::timeScale,            "O22", "The header's time system has more than three characters",     "files"},
    {FindingId::lateDate,             "O22", "No date ahead of the first epochs: they get the last time",   "files"},
    {FindingId::noLeapSeconds,        "O23", "LEAP SECONDS is 0: the log has none",                         "files"},
    {FindingId::notCounted,           "O24", "Satellites that # OF SATELLITES does not count",              "satellites"},
    {FindingId::longTexts,            "O25", "Texts too long for their place in the header",                "texts"},
    {FindingId::abnormalEnd,          "O25", "A receiver number of less than 20 characters ends the run",   "messages"},
    {FindingId::wrongDay,             "N1",  "Ephemerides dated on another day than theirs",                "records"},
    {FindingId::wrongHour,            "N2",  "GLONASS ephemerides of an hour below 0, or 23 printed as 0",  "records"},
    {FindingId::shiftedOffsets,       "N3",  "TIME SYSTEM CORR stands one column off",                      "lines"},
    {FindingId::glonassOffsets,       "N4",  "GLUT is 0, GLGP has the offset from UTC for a drift",         "messages", true},
    {FindingId::threeLines,           "N5",  "GLONASS records have three orbit lines, x and z are rounded", "messages", true},
    {FindingId::roundedInclinations,  "N6",  "The inclination i0 is rounded to single precision",           "messages", true},
    {FindingId::cutAccuracies,        "N7",  "Accuracies are cut to whole metres",                          "messages", true},
    {FindingId::droppedRepeats,       "N8",  "Later ephemerides of one toe, with other content, dropped",   "messages"},
    {FindingId::removedGlonass,       "N8",  "GLONASS ephemerides removed by the repetition of others",     "repetitions"},
    {FindingId::severalWeeks,         "N9",  "Ephemerides of several weeks are sorted within the week",     "weeks"},
    {FindingId::noFitInterval,        "N10", "GPS ephemerides whose fit interval prints as 0",              "messages"},
    {FindingId::fnavRecords,          "N11", "Galileo FNAV and INAV are records of their own",              "messages", true},
    {FindingId::severalIonospheres,   "N12", "More than one set of ionosphere coefficients",                "sets"},
    {FindingId::beidouIonosphereLost, "N12", "BeiDou's ionosphere ahead of its first ephemeris is lost",    "messages"},
    {FindingId::ionosphereEnds,       "N12", "A first ionosphere coefficient of 0 ends the list",           "sets"},
    {FindingId::yearZero,             "N21", "Navigation messages ahead of the first date",                 "messages"},
    {FindingId::galileoHealth,        "N26", "Galileo's health has eight bits of nine",                      "messages", true},
    {FindingId::fullTables,           "N28", "Navigation tables are full",                                  "messages"},
    {FindingId::navicIonosphere,      "N22", "NavIC's ionosphere lines are labelled IRSA and IRSB",         "messages", true},
    {FindingId::mixedExponents,       "N14", "4.x: exponents with e and with D in one file",                "messages", true},
    {FindingId::galileoIonosphere,    "N16", "4.x: Galileo's ionosphere is headed ION C00 IFNV",            "messages", true},
    {FindingId::timeOffsetForms,      "N17", "4.x: STO records are not of the standard's form",             "messages", true},
    {FindingId::cnavRecords,          "N18", "GPS CNAV and CNV2: not at 3.05, other corrections at 4.x",    "messages"},
    {FindingId::beidouCnavRecords,    "N19", "BeiDou CNV1 to CNV3: not at 3.05, lines of their own at 4.x", "messages"},
    {FindingId::noRecords,            "N20", "QZSS and SBAS navigation messages are left out",              "messages"},
    {FindingId::timeOffsetDates,      "N23", "4.x: STO records have the date of reception",                 "messages", true},
    {FindingId::negativeAccuracies,   "N24", "4.x: negative accuracy indices of CNAV print 256 higher",     "messages"},
    {FindingId::beidouTypes,          "N25", "4.x: D1 and D2 stand two columns to the right",               "messages", true},
    {FindingId::geostationaryD1,      "N27", "BeiDou satellites 59 to 63 are labelled D1",                  "messages"},
});
// clang-format on

static_assert(findingRows.size() == findingCount);
static_assert(
    [] {
        for (std::size_t i = 0; i < findingCount; ++i) {
            if (static_cast<std::size_t>(findingRows[i].id) != i) {
                return false;
            }
        }
        return true;
    }(),
    "the rows stand in the order of their ids");
static_assert(std::ranges::all_of(findingRows, [](const FindingRow& row) { return row.title.size() <= 64; }));

constexpr const FindingRow& rowOf(FindingId id) {
    return findingRows[static_cast<std::size_t>(id)];
}

// Counts what is found. The example of the first one of each kind stays, and is made only for it.
class FindingTally {
public:
    template <class MakeExample>
    void add(FindingId id, std::uint64_t count, MakeExample&& makeExample) {
        Entry& entry = entries_[static_cast<std::size_t>(id)];
        if (entry.count == 0 && count > 0) {
            entry.example = makeExample();
        }
        entry.count += count;
    }

    // Those that were found, in the order of the rows.
    [[nodiscard]] std::vector<Finding> findings() const;

private:
    struct Entry {
        std::uint64_t count = 0;
        std::string example;
    };
    std::array<Entry, findingCount> entries_{};
};

// "at 2024-05-06T23:00:00.000", or the offset where the epoch has no time; "GE at offset 4711".
std::string placeText(const reading::Epoch& epoch);
std::string placeText(const reading::Message& message);

}  // namespace orbconv::inspect
