#include "obsfile/header_tables.h"

#include <algorithm>
#include <cstdlib>
#include <span>

#include "assembly/signal_plan.h"

namespace orbconv {

namespace {

constexpr std::size_t satellitesPerLine = 10;
// Only so many entries of a satellite list are counted and listed, also where the list has more.
constexpr std::size_t listedEntries = 32;

// Bands whose phase code a constellation's list can hold: GLONASS has those of the CDMA signals too.
constexpr std::size_t bandsInList(Constellation constellation) {
    return constellation == Constellation::glonass ? 2 * bandCount : bandCount;
}

void sortSlots(GlonassSlotTable& table) {
    // A free entry is not moved, and none passes it. The table is small and sorted once.
    for (std::size_t pass = 0; pass < GlonassSlotTable::capacity; ++pass) {
        for (std::size_t i = 0; i + 1 < GlonassSlotTable::capacity; ++i) {
            if (table.slot[i] > table.slot[i + 1] && table.slot[i] != 0 && table.slot[i + 1] != 0) {
                std::swap(table.slot[i], table.slot[i + 1]);
                std::swap(table.frequencyNumber[i], table.frequencyNumber[i + 1]);
            }
        }
    }
}

// Entries from `first` on, at most eight, and the label.
void writeSlotEntries(TextWriter& out, const GlonassSlotTable& table, std::size_t first, std::size_t count) {
    const std::size_t end = std::min({first + 8, count, GlonassSlotTable::capacity});
    for (std::size_t i = first; i < end; ++i) {
        out.right("R", 2).integer(table.slot[i], 2, '0').integer(table.frequencyNumber[i], 3);
    }
    const int entries = end > first ? static_cast<int>(end - first) : 0;
    out.blanks(57 - 7 * entries).text("GLONASS SLOT / FRQ #").endLine();
}

void writeSatellite(TextWriter& out, char letter, std::int32_t number) {
    out.right({&letter, 1}, 2).integer(number, 2, '0');
}

// Blanks behind the satellites of a line up to the label.
void endPhaseShiftLine(TextWriter& out, int satellites) {
    out.blanks(std::max(2, 42 - 4 * satellites)).text("SYS / PHASE SHIFT").endLine();
}

void beginPhaseShiftLine(TextWriter& out, char letter, std::string_view code, double shift,
                         std::uint32_t satellites) {
    out.left({&letter, 1}, 2).left(code, 4).fixed(shift, 5, 8).blanks(2).integer(satellites, 2, '0');
}

void beginContinuationLine(TextWriter& out) {
    out.blanks(18);
}

// What one line listed: how many satellites, and the entry behind the last of them.
struct Listed {
    std::size_t satellites;
    std::size_t end;
};

// Writes the satellites among entries [first, end) that `belongs` takes, at most ten.
template <class Belongs>
Listed writeListedSatellites(TextWriter& out, char letter, const SatelliteNumbers& list, std::size_t first,
                             std::size_t end, Belongs belongs) {
    Listed listed{.satellites = 0, .end = first};
    for (std::size_t i = first; i < std::min(end, list.size()) && listed.satellites < satellitesPerLine;
         ++i) {
        if (belongs(list[i])) {
            writeSatellite(out, letter, list[i]);
            listed = {.satellites = listed.satellites + 1, .end = i + 1};
        }
    }
    return listed;
}

// The satellites on each signal among the first 32 entries of its list. QZSS and SBAS stay at zero.
void countUses(SignalSurvey& survey) {
    survey.signalUseCount = {};
    const auto count = [&survey](Constellation constellation, std::size_t bands) {
        const std::size_t c = indexOf(constellation);
        for (std::size_t band = 0; band < bands; ++band) {
            const auto entries = std::span(survey.signalSatelliteList[c][band]).first(listedEntries);
            const auto used = std::ranges::count_if(entries, [&](std::int32_t number) {
                // Deliberate: an unknown slot is listed, but not counted.
                const bool unknown =
                    constellation == Constellation::glonass && band < bandCount && number == unknownSlot;
                return number != 0 && !unknown;
            });
            survey.signalUseCount[c][band] = static_cast<std::uint32_t>(used);
        }
    };
    count(Constellation::gps, bandCount);
    count(Constellation::glonass, 2 * bandCount);  // the CDMA lists stand behind the first six
    count(Constellation::galileo, bandCount);
    count(Constellation::beidou, bandCount);
    count(Constellation::navic, bandCount);
}

// The lines of one signal of any constellation but BeiDou: at most three, so at most 30 satellites.
void writeSignalPhaseShift(TextWriter& out, Constellation constellation, std::size_t band,
                           std::string_view code, const SignalSurvey& survey) {
    const std::size_t c = indexOf(constellation);
    const char letter = systemLetters[c];
    const SatelliteNumbers& list = survey.signalSatelliteList[c][band];
    const std::uint32_t count = survey.signalUseCount[c][band];
    const auto belongs = [](std::int32_t number) { return number != 0; };
    beginPhaseShiftLine(out, letter, code, survey.phaseShiftValues[c][band], count);
    writeListedSatellites(out, letter, list, 0, listedEntries, belongs);
    endPhaseShiftLine(out, static_cast<int>(count));
    for (std::size_t first = satellitesPerLine; first <= 2 * satellitesPerLine && count > first;
         first += satellitesPerLine) {
        beginContinuationLine(out);
        writeListedSatellites(out, letter, list, first, count, belongs);
        endPhaseShiftLine(out, static_cast<int>(count - first));
    }
}

// How the satellites of a BeiDou band part into two passes: those inside the class go to the second.
struct BeidouPasses {
    SatelliteClass secondPass;
    // Deliberate: the shift of the second pass of band 2 is first lowered by this, and stays lowered.
    double loweredBy = 0.0;
};
// Deliberate: in bands 1 and l the class is not that of beidouRules, nor that of beidouExtraPhases.
constexpr std::array<BeidouPasses, bandCount> beidouPasses = {{
    //       class                      shift
    /* c */ {.secondPass = beidou6To58},
    /* 1 */ {.secondPass = beidou6To18},
    /* 2 */ {.secondPass = beidou6To18, .loweredBy = 0.25},
    /* 3 */ {.secondPass = beidou6To58},
    /* 5 */ {.secondPass = beidou6To18},
    /* l */ {.secondPass = beidouNone},
}};
constexpr double secondPassShift = 0.5;  // cycles

// Entries behind the phase code where the code of the second pass stands.
constexpr std::size_t secondPhaseBehindPhase = 3;

// Writes one pass of a BeiDou signal: the satellites that `belongs` takes.
template <class Belongs>
void writeBeidouPass(TextWriter& out, std::string_view code, double shift, const SatelliteNumbers& list,
                     std::uint32_t useCount, std::uint32_t satellites, Belongs belongs) {
    constexpr char letter = 'C';
    beginPhaseShiftLine(out, letter, code, shift, satellites);
    const Listed listed = writeListedSatellites(out, letter, list, 0, listedEntries, belongs);
    endPhaseShiftLine(out, static_cast<int>(satellites));
    if (listed.satellites != satellitesPerLine) {
        return;
    }
    // Deliberate: the walk ends at the place of the list that the count of satellites names, whoever of them
    // stands behind it.
    beginContinuationLine(out);
    writeListedSatellites(out, letter, list, listed.end, std::size_t{useCount} + 1, belongs);
    endPhaseShiftLine(out, std::abs(static_cast<int>(satellitesPerLine) - static_cast<int>(satellites)));
}

}  // namespace

void writeGlonassSlots(TextWriter& out, GlonassSlotTable& table) {
    sortSlots(table);
    const auto count = static_cast<std::size_t>(
        std::ranges::count_if(table.slot, [](std::int32_t slot) { return slot != 0; }));
    out.integer(static_cast<std::int64_t>(count), 3);
    writeSlotEntries(out, table, 0, count);
    // Deliberate: a count of exactly 8, 16 or 24 gives a further line without entries.
    for (const std::size_t first : {8U, 16U, 24U}) {
        if (count >= first) {
            out.blanks(3);
            writeSlotEntries(out, table, first, count);
        }
    }
}

void writeGlonassBiases(TextWriter& out, const ObsCodeList& glonassCodes) {
    // Deliberate: always 0.000, and an absent code moves the label 13 columns to the left.
    constexpr std::size_t biasedBands = 4;
    for (std::size_t band = 0; band < biasedBands; ++band) {
        const SignalText& code = glonassCodes[slotOf(band, Kind::code)];
        if (!code.empty()) {
            out.right(code.view(), 4).fixed(0.0, 3, 9);
        }
    }
    out.blanks(8).text("GLONASS COD/PHS/BIS").endLine();
}

void writePhaseShift(TextWriter& out, const RunOptions& options, SignalSurvey& survey) {
    countUses(survey);
    const PerConstellation<bool> included = includedConstellations(options);
    for (std::size_t c = 0; c < countedConstellations; ++c) {
        if (!included[c] || survey.obsCodeCount[c] <= 0) {
            continue;
        }
        const auto constellation = static_cast<Constellation>(c);
        for (std::size_t band = 0; band < bandsInList(constellation); ++band) {
            const std::size_t position = slotOf(band, Kind::phase);
            const SignalText& code = survey.obsCodeList[c][position];
            if (code.empty()) {
                continue;
            }
            if (constellation == Constellation::beidou) {
                writeBeidouPhaseShift(out, position, band, survey);
            } else {
                writeSignalPhaseShift(out, constellation, band, code.view(), survey);
            }
        }
    }
}

void writeBeidouPhaseShift(TextWriter& out, std::size_t position, std::size_t band, SignalSurvey& survey) {
    const std::size_t c = indexOf(Constellation::beidou);
    const BeidouPasses& passes = beidouPasses[band];
    const SatelliteNumbers& list = survey.signalSatelliteList[c][band];
    const ObsCodeList& codes = survey.obsCodeList[c];
    const std::uint32_t useCount = survey.signalUseCount[c][band];
    float& storedShift = survey.phaseShiftValues[c][band];

    const auto inFirst = [&](std::int32_t number) { return number != 0 && !passes.secondPass.holds(number); };
    const auto inSecond = [&](std::int32_t number) { return passes.secondPass.holds(number); };
    // Deliberate: counted over the whole list, while only its first 32 entries are listed.
    const auto countOf = [&](const auto& belongs) {
        return useCount == 0 ? 0U : static_cast<std::uint32_t>(std::ranges::count_if(list, belongs));
    };

    if (const std::uint32_t satellites = countOf(inFirst); satellites != 0) {
        writeBeidouPass(out, codes[position].view(), storedShift, list, useCount, satellites, inFirst);
    }
    if (const std::uint32_t satellites = countOf(inSecond); satellites != 0) {
        storedShift = static_cast<float>(static_cast<double>(storedShift) - passes.loweredBy);
        writeBeidouPass(out, codes[position + secondPhaseBehindPhase].view(),
                        static_cast<double>(storedShift) + secondPassShift, list, useCount, satellites,
                        inSecond);
    }
}

}  // namespace orbconv
