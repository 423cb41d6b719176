#include "assembly/epoch_store.h"

#include <algorithm>

#include "log/satellite_lists.h"

namespace orbconv {

void clearRecord(SatEpochRecord& record) {
    // One fill for all rows would become a string instruction, which takes its time to start.
    for (std::size_t row = 0; row < obsRows; ++row) {
        std::fill_n(&record.obs[row * obsColumns], obsColumns, 0.0);
    }
    record.clockOffset = 0.0;
    record.referenceDoppler = 0;
    record.signalFlags[bands::c] &= ~signalPresentBit;
    record.number = 0;
}

void clearEpochRecords(EpochStore& store) {
    for (std::size_t c = 0; c < constellationCount; ++c) {
        const std::size_t due = std::min(store.used[c], clearedRecords);
        for (SatEpochRecord& record : store.useFirst(static_cast<Constellation>(c), due)) {
            clearRecord(record);
        }
    }
}

static_assert(nnCapacity <= storeCapacity[indexOf(Constellation::glonass)], "NN's records are all there");

void assignGlonassSlots(const MessageStaging& staging, EpochStore& store) {
    forEachGlonassSlot(staging, [&store](std::size_t position, std::int8_t channel, std::uint8_t slot) {
        SatEpochRecord& record = store.useFirst(Constellation::glonass, position + 1).back();
        if (claimRecord(&record, channel) != Claim::mismatch) {
            record.gloSlotNumber = slot;
        }
    });
}

}  // namespace orbconv
