#include "assembly/record_order.h"

#include <algorithm>
#include <bit>

#include "assembly/signal_plan.h"
#include "log/satellite_lists.h"

namespace orbconv {

namespace {

constexpr std::size_t largestArray = *std::ranges::max_element(storeCapacity);

using RecordKey = std::int32_t SatEpochRecord::*;

// Sorts one run of records with non-zero keys, equal keys in their order: the order of the places first,
// then each record moved once.
void sortRun(std::span<SatEpochRecord> run, RecordKey key) {
    std::array<std::int32_t, largestArray> keys;   // NOLINT(*-member-init): filled as far as they are used
    std::array<std::uint8_t, largestArray> order;  // NOLINT(*-member-init)
    for (std::size_t i = 0; i < run.size(); ++i) {
        const std::int32_t own = run[i].*key;
        std::size_t place = i;
        for (; place > 0 && keys[place - 1] > own; --place) {
            keys[place] = keys[place - 1];
            order[place] = order[place - 1];
        }
        keys[place] = own;
        order[place] = static_cast<std::uint8_t>(i);
    }
    for (std::size_t start = 0; start < run.size(); ++start) {
        if (order[start] == start) {
            continue;
        }
        const SatEpochRecord held = run[start];  // follow the cycle that begins here
        std::size_t place = start;
        while (order[place] != start) {
            const std::size_t from = order[place];
            copyRecord(run[place], run[from]);
            order[place] = static_cast<std::uint8_t>(place);
            place = from;
        }
        copyRecord(run[place], held);
        order[place] = static_cast<std::uint8_t>(place);
    }
}

void sortRecords(EpochStore& store, Constellation constellation, RecordKey key) {
    const auto records = store.usedRecords(constellation);
    const auto hasKeyZero = [key](const SatEpochRecord& record) { return record.*key == 0; };
    const auto byKey = [key](const SatEpochRecord& a, const SatEpochRecord& b) { return a.*key < b.*key; };
    auto begin = records.begin();
    while (begin != records.end()) {
        begin = std::find_if_not(begin, records.end(), hasKeyZero);
        const auto end = std::find_if(begin, records.end(), hasKeyZero);
        if (!std::is_sorted(begin, end, byKey)) {
            const auto first = static_cast<std::size_t>(begin - records.begin());
            const auto count = static_cast<std::size_t>(end - begin);
            sortRun(store.useFirst(constellation, first + count).last(count), key);
        }
        begin = end;
    }
}

bool countsForEpoch(std::uint8_t systemCode, const PerConstellation<bool>& included) {
    constexpr std::uint8_t unusedCode = 8;
    if (systemCode == unusedCode) {
        return false;
    }
    const auto constellation = constellationOfCode(systemCode);
    if (constellation == Constellation::glonassCdma) {
        return false;  // Deliberate: never counted, whatever the flag says
    }
    return !constellation || included[indexOf(*constellation)];
}

void copyBit(std::uint32_t& destination, std::uint32_t source, std::uint32_t bit) {
    destination = (destination & ~bit) | (source & bit);
}

// Folds one CDMA record into the GLONASS record of the same number. Deliberate: a row has eleven columns
// and the six bands go to columns 6 to 11, so that the last value of a row lands one place behind it: in
// column 0 of the next row, for the last row in the first two strength digits, for the flags in the number
// of the next record.
void foldRecord(SatEpochRecord& glonass, SatEpochRecord& nextGlonass, const SatEpochRecord& cdma) {
    for (std::size_t b = 0; b < bandCount; ++b) {
        const std::size_t column = bandCount + b;
        if (column < obsColumns) {
            copyBit(glonass.signalFlags[column], cdma.signalFlags[b], signalPresentBit);
        } else {
            auto number = static_cast<std::uint32_t>(nextGlonass.number);
            copyBit(number, cdma.signalFlags[b], signalPresentBit);
            nextGlonass.number = static_cast<std::int32_t>(number);
        }
        glonass.strengthIndex[column] = cdma.strengthIndex[b];
        for (std::size_t row = 0; row < obsRows; ++row) {
            const double value = cdma.obs[row * obsColumns + b];
            const std::size_t place = row * obsColumns + column;
            if (place < glonass.obs.size()) {
                glonass.obs[place] = value;
            } else {
                const auto bits = std::bit_cast<std::uint64_t>(value);
                glonass.strengthIndex[0] = static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
                glonass.strengthIndex[1] = static_cast<std::int32_t>(static_cast<std::uint32_t>(bits >> 32));
            }
        }
    }
}

}  // namespace

SatEpochRecord& copyRecord(SatEpochRecord& destination, const SatEpochRecord& source) {
    destination = source;
    return destination;
}

void sortEpochRecords(const RunOptions& options, MessageStaging& staging, EpochStore& store,
                      SignalSurvey& survey) {
    sortRecords(store, Constellation::gps, &SatEpochRecord::number);
    sortRecords(store, Constellation::glonass, &SatEpochRecord::gloSlotNumber);
    sortRecords(store, Constellation::galileo, &SatEpochRecord::number);
    sortRecords(store, Constellation::beidou, &SatEpochRecord::number);
    sortRecords(store, Constellation::navic, &SatEpochRecord::number);

    const SatelliteList list(staging);
    const PerConstellation<bool> included = includedConstellations(options);
    std::int32_t satellites = list.count();
    for (int i = 0; i < list.count(); ++i) {
        if (!countsForEpoch(list.systemCode(static_cast<std::size_t>(i)), included)) {
            --satellites;
        }
    }
    staging.satellitesInEpoch = satellites;
    survey.maxSatellitesInEpoch = std::max(survey.maxSatellitesInEpoch, satellites);
}

void sortSignalSatelliteLists(SignalSurvey& survey) {
    constexpr std::array sorted = {Constellation::gps, Constellation::navic, Constellation::glonass,
                                   Constellation::galileo, Constellation::beidou};
    for (const Constellation constellation : sorted) {
        const std::size_t c = indexOf(constellation);
        for (std::size_t band = 0; band < bandCount; ++band) {
            // Lists fill from the start without gaps, so the first zero ends what there is to sort.
            auto& list = survey.signalSatelliteList[c][band];
            const auto end = list.begin() + static_cast<std::ptrdiff_t>(satelliteListEntries[c]);
            std::sort(list.begin(), std::find(list.begin(), end, 0));
        }
    }
}

void mergeGlonassCdma(EpochStore& store, SignalSurvey& survey) {
    constexpr std::size_t ownSlots = bandCount * kindsPerBand;
    constexpr std::size_t foldedRecords = 6;
    const ObsCodeList& cdmaCodes = survey.codes(Constellation::glonassCdma);
    ObsCodeList& codes = survey.codes(Constellation::glonass);
    std::copy_n(cdmaCodes.begin(), ownSlots, codes.begin() + ownSlots);

    const auto& cdmaLists = survey.signalSatelliteList[indexOf(Constellation::glonassCdma)];
    auto& lists = survey.signalSatelliteList[indexOf(Constellation::glonass)];
    std::copy_n(cdmaLists.begin(), bandCount, lists.begin() + bandCount);

    // One more: the last folded record writes into the next one's number.
    const auto glonass = store.useFirst(Constellation::glonass, foldedRecords + 1);
    for (std::size_t i = 0; i < foldedRecords; ++i) {
        for (const SatEpochRecord& cdma : store.records(Constellation::glonassCdma)) {
            if (cdma.number == glonass[i].number) {
                foldRecord(glonass[i], glonass[i + 1], cdma);
            }
        }
    }
}

}  // namespace orbconv
