#include "assembly/epoch_store.h"

#include <algorithm>
#include <bit>

#include "log/satellite_lists.h"

namespace orbconv {

namespace {

void freeRecord(SatEpochRecord& record) {
    record.signalFlags[bands::c] &= ~signalPresentBit;
    record.number = 0;
}

}  // namespace

void clearRecord(SatEpochRecord& record) {
    // One fill for all rows would become a string instruction, which takes its time to start.
    for (std::size_t row = 0; row < obsRows; ++row) {
        std::fill_n(&record.obs[row * obsColumns], obsColumns, 0.0);
    }
    record.clockOffset = 0.0;
    record.referenceDoppler = 0;
    freeRecord(record);
}

void clearEpochRecords(EpochStore& store) {
    constexpr std::uint64_t cleared = (std::uint64_t{1} << clearedRecords) - 1;
    for (std::size_t c = 0; c < constellationCount; ++c) {
        for (std::uint64_t due = store.touched[c] & cleared; due != 0; due &= due - 1) {
            const int position = std::countr_zero(due);
            SatEpochRecord& record = store.all[storeOffset[c] + static_cast<std::size_t>(position)];
            if ((store.measured[c] >> position & 1) != 0) {
                clearRecord(record);
            } else {
                freeRecord(record);
            }
        }
        store.touched[c] &= ~cleared;
        store.measured[c] &= ~cleared;
    }
}

void assignGlonassSlots(const MessageStaging& staging, EpochStore& store) {
    forEachGlonassSlot(staging, [&store](std::size_t position, std::int8_t channel, std::uint8_t slot) {
        SatEpochRecord* const record = store.claimable(Constellation::glonass, position);
        if (claimRecord(record, channel) != Claim::mismatch) {
            record->gloSlotNumber = slot;
        }
    });
}

}  // namespace orbconv
