#include "assembly/epoch_store.h"

#include "log/satellite_lists.h"

namespace orbconv {

void clearRecord(SatEpochRecord& record) {
    record.obs.fill(0.0);
    record.clockOffset = 0.0;
    record.referenceDoppler = 0;
    record.signalFlags[0] &= ~signalPresentBit;
    record.number = 0;
    record.touched = false;
}

void clearEpochRecords(EpochStore& store) {
    for (std::size_t c = 0; c < constellationCount; ++c) {
        for (SatEpochRecord& record : std::span(store.all).subspan(storeOffset[c], clearedRecords)) {
            if (record.touched) {
                clearRecord(record);
            }
        }
    }
}

void assignGlonassSlots(const MessageStaging& staging, EpochStore& store) {
    const SatelliteList list(staging);
    const std::uint8_t* const slots = staging.body(rowOf("NN"));
    const auto records = store.records(Constellation::glonass);
    std::size_t next = 0;  // into the records and the NN bytes: moves at GLONASS elements only
    for (int i = 0; i < list.count() && next < nnCapacity; ++i) {
        const auto element = static_cast<std::size_t>(i);
        if (list.systemCode(element) != glonassSystemCode) {
            continue;
        }
        const std::uint8_t slot = slots[next];
        SatEpochRecord& record = records[next++];
        if (claimRecord(&record, list.frequencyChannel(element)) != Claim::mismatch) {
            record.gloSlotNumber = slot;
        }
    }
}

}  // namespace orbconv
