// What the log's signals add up to: the observable codes that the header lists, the satellites seen on each
// signal, and the phase shifts. Fixed tables; a list of satellites ends at its first 0.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "assembly/epoch_store.h"
#include "assembly/signal_plan.h"

namespace orbconv {

// Observable codes of a constellation by slot (band * 5 + kind). Slots 30 to 59 take the GLONASS CDMA codes
// that a merge puts behind the GLONASS ones.
inline constexpr std::size_t obsCodeSlots = 60;
using ObsCodeList = std::array<SignalText, obsCodeSlots>;

// Constellations with a count of codes: all but GLONASS CDMA.
inline constexpr std::size_t countedConstellations = 7;

// Satellite numbers in the order in which they were met. Each kind of list uses a part of the room.
inline constexpr std::size_t satelliteListRoom = 61;
using SatelliteNumbers = std::array<std::int32_t, satelliteListRoom>;

// Entries of a SignalSatelliteList that are sorted and counted. Deliberate: of Galileo's 37 no more than 32
// are ever filled.
inline constexpr PerConstellation<std::size_t> satelliteListEntries = {32, 32, 37, 32, 61, 32, 32, 32};

// Entries of a PhaseShiftSatellites list.
constexpr std::size_t phaseShiftEntries(Constellation constellation, std::size_t band) {
    return constellation == Constellation::beidou && band != 0 ? satelliteListRoom : 60;
}

// Bands with a place for a merged GLONASS CDMA signal behind the six of the log.
inline constexpr std::size_t signalColumns = 12;

// What the survey last took in for a position of a band.
struct NotedSignal {
    static constexpr std::int32_t nothing = -1000;  // the number of no satellite and of no channel
    std::int32_t recordNumber = nothing;
    std::int32_t gloSlotNumber = 0;
    std::int32_t satelliteNumber = 0;
    friend constexpr bool operator==(const NotedSignal&, const NotedSignal&) = default;
};

struct SignalSurvey {
    PerConstellation<ObsCodeList> obsCodeList{};
    std::array<std::int32_t, countedConstellations> obsCodeCount{};

    // SignalSatelliteList: by constellation and band, satellites with the signal present. GLONASS entries
    // are slot numbers.
    PerConstellation<std::array<SatelliteNumbers, signalColumns>> signalSatelliteList{};
    // The satellites of each constellation's first list, and how many they are in all.
    PerConstellation<SatelliteNumbers> allSatelliteList{};
    std::int32_t satelliteTotal = 0;

    // PhaseShiftSatellites: by constellation and band. GLONASS entries are channels. No output depends on
    // them.
    PerConstellation<std::array<SatelliteNumbers, bandCount>> phaseShiftSatellites{};
    // Cycles; row 7 is GLONASS CDMA.
    PerConstellation<std::array<float, signalColumns>> phaseShiftValues{};
    // SignalUseCount: satellites on each signal, counted anew for the header. No output depends on what the
    // steps add ahead of that and behind it. GLONASS CDMA has no row of its own and counts in that of SBAS.
    std::array<std::array<std::uint32_t, signalColumns>, countedConstellations> signalUseCount{};

    // By constellation, band and position: lets the survey pass over what it has seen.
    PerConstellation<std::array<std::array<NotedSignal, satelliteListRoom>, bandCount>> notedSignals{};

    // The latest elements that the steps of 1r and 2r took. Never reset. No output depends on the second.
    std::int16_t lastRangeDelta = 0;
    std::int16_t secondRangeDelta = 0;

    // satellitesInEpoch is kept with the staging; this is its running maximum. No output depends on it.
    std::int32_t maxSatellitesInEpoch = 0;

    [[nodiscard]] ObsCodeList& codes(Constellation c) { return obsCodeList[indexOf(c)]; }
    [[nodiscard]] const ObsCodeList& codes(Constellation c) const { return obsCodeList[indexOf(c)]; }
};

// Counts the codes of the seven counted lists: their strings that are not empty, in all 60 slots.
void countObsCodes(SignalSurvey& survey);

// A signal that the survey pass met: `record` is the one at the satellite's position, `satelliteNumber`
// the list's number (a GLONASS channel is signed), `position` the satellite's place among those of its
// constellation.
struct SurveyedSignal {
    Constellation constellation;
    std::size_t band;
    const SatEpochRecord& record;
    std::int32_t satelliteNumber;
    std::size_t position;
};

// The column of SignalUseCount that a present signal counts in, if it counts at all.
constexpr std::optional<std::size_t> useCountColumn(Constellation constellation, std::size_t band) {
    if (band == bands::b5 && constellation == Constellation::galileo) {
        return bands::b3;  // Deliberate: Galileo's 5 band counts for its 3 band
    }
    if (band == bands::b5 && constellation == Constellation::navic) {
        return std::nullopt;  // Deliberate: NavIC's 5 band does not count
    }
    return band;
}

// Enters the signal into the code list and the satellite lists.
void enterSignal(SignalSurvey& survey, const SurveyedSignal& signal);

// Counts the signal, and enters it. The lists only grow, so the same signal at the same place a second time
// changes nothing in them. That is nearly every signal of nearly every epoch.
inline void noteSignal(SignalSurvey& survey, const SurveyedSignal& signal) {
    if (const auto column = useCountColumn(signal.constellation, signal.band)) {
        ++survey.signalUseCount[useCountRow(signal.constellation)][*column];
    }
    NotedSignal& noted = survey.notedSignals[indexOf(signal.constellation)][signal.band][signal.position];
    const NotedSignal now{signal.record.number, signal.record.gloSlotNumber, signal.satelliteNumber};
    if (noted != now) {
        noted = now;
        enterSignal(survey, signal);
    }
}

// Enters `key` into the first `entries` of a list: the search stops at an equal entry, and the first zero
// takes the key. A full list takes no more.
void enterSatellite(SatelliteNumbers& list, std::size_t entries, std::int32_t key);

}  // namespace orbconv
