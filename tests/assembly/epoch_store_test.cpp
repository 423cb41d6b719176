// The records of an epoch: their arrays, the rule that finds them, and what a clear leaves behind.
#include "assembly/epoch_store.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "assembly/record_order.h"
#include "assembly/signal_plan.h"
#include "support/assembly_bench.h"

namespace {

using orbconv::Claim;
using orbconv::claimRecord;
using orbconv::clearEpochRecords;
using orbconv::clearRecord;
using testsupport::Constellation;
using testsupport::everyConstellation;
using testsupport::ObsRow;
using testsupport::satellite;
using testsupport::Satellite;
using testsupport::satellites;
using testsupport::SatEpochRecord;

class EpochStore : public testsupport::AssemblyTest {};

// A record with a value of its own in every field.
SatEpochRecord filledRecord() {
    SatEpochRecord record;
    record.number = 17;
    record.signalName.fill("C1C");
    for (std::size_t i = 0; i < record.obs.size(); ++i) {
        record.obs[i] = 1.5 + static_cast<double>(i);
    }
    for (std::size_t i = 0; i < record.strengthIndex.size(); ++i) {
        record.strengthIndex[i] = 100 + static_cast<std::int32_t>(i);
    }
    record.clockOffset = 0.071;
    record.referenceDoppler = -4321;
    record.gloSlotNumber = 24;
    record.columnBytes.fill(0xAB);
    record.signalFlags.fill(0xFFFFFFFFU);
    return record;
}

bool hasClearedFields(const SatEpochRecord& record) {
    for (const double value : record.obs) {
        if (value != 0.0) {
            return false;
        }
    }
    return record.number == 0 && record.clockOffset == 0.0 && record.referenceDoppler == 0 &&
           (record.signalFlags[0] & 0x40U) == 0;
}

TEST(EpochStoreLayout, ArraysHaveTheCapacityOfTheirConstellation) {
    const orbconv::EpochStore store;
    const std::array<std::size_t, 8> capacities = {32, 32, 37, 30, 61, 30, 30, 30};
    for (std::size_t i = 0; i < everyConstellation.size(); ++i) {
        EXPECT_EQ(store.records(everyConstellation[i]).size(), capacities[i]) << i;
    }
}

TEST(EpochStoreLayout, StoreStartsZeroed) {
    const orbconv::EpochStore store;
    for (const SatEpochRecord& record : store.all) {
        EXPECT_TRUE(hasClearedFields(record));
        EXPECT_EQ(record.gloSlotNumber, 0);
        EXPECT_EQ(record.strengthIndex, (std::array<std::int32_t, 22>{}));
        EXPECT_EQ(record.signalFlags, (std::array<std::uint32_t, 11>{}));
    }
}

TEST(EpochStoreUse, ReachesAsFarAsTheLastRecordEverGivenToBeWritten) {
    orbconv::EpochStore store;
    EXPECT_TRUE(store.usedRecords(Constellation::galileo).empty());
    EXPECT_EQ(store.useFirst(Constellation::galileo, 5).size(), 5U);
    EXPECT_EQ(store.usedRecords(Constellation::galileo).size(), 5U);
    EXPECT_EQ(store.useFirst(Constellation::galileo, 2).size(), 2U);
    EXPECT_EQ(store.usedRecords(Constellation::galileo).size(), 5U);
    EXPECT_TRUE(store.useFirst(Constellation::galileo, 0).empty());
    clearEpochRecords(store);
    EXPECT_EQ(store.usedRecords(Constellation::galileo).size(), 5U);
    EXPECT_TRUE(store.usedRecords(Constellation::gps).empty());
}

TEST(EpochStoreUse, AClearReachesTheLastRecordThatItMay) {
    orbconv::EpochStore store;
    const auto records = store.useFirst(Constellation::galileo, 37);
    records[29] = filledRecord();
    records[30] = filledRecord();
    clearEpochRecords(store);
    EXPECT_TRUE(hasClearedFields(records[29]));
    EXPECT_EQ(records[30].number, 17);  // behind what an epoch's clearing reaches
}

TEST(EpochStoreLayout, SlotIsFiveTimesTheBandAndTheKind) {
    EXPECT_EQ(orbconv::slotOf(0, orbconv::Kind::code), 0U);
    EXPECT_EQ(orbconv::slotOf(0, orbconv::Kind::phase), 1U);
    EXPECT_EQ(orbconv::slotOf(1, orbconv::Kind::doppler), 7U);
    EXPECT_EQ(orbconv::slotOf(4, orbconv::Kind::strength), 23U);
    EXPECT_EQ(orbconv::slotOf(5, orbconv::Kind::secondPhase), 29U);
}

TEST(EpochStoreLayout, RowsAreRangeDopplerPhaseStrengthOfElevenColumns) {
    SatEpochRecord record = filledRecord();
    EXPECT_EQ(record.at(ObsRow::pseudorange, 0), 1.5);
    EXPECT_EQ(record.at(ObsRow::doppler, 0), 12.5);
    EXPECT_EQ(record.at(ObsRow::phase, 5), 28.5);
    EXPECT_EQ(record.at(ObsRow::strength, 10), 44.5);
}

TEST(SystemCode, NumbersOfTheObservationPath) {
    EXPECT_EQ(orbconv::constellationOfCode(1), Constellation::gps);
    EXPECT_EQ(orbconv::constellationOfCode(2), Constellation::glonass);
    EXPECT_EQ(orbconv::constellationOfCode(3), Constellation::sbas);
    EXPECT_EQ(orbconv::constellationOfCode(4), Constellation::galileo);
    EXPECT_EQ(orbconv::constellationOfCode(5), Constellation::qzss);
    EXPECT_EQ(orbconv::constellationOfCode(6), Constellation::beidou);
    EXPECT_EQ(orbconv::constellationOfCode(7), Constellation::navic);
    EXPECT_EQ(orbconv::constellationOfCode(9), Constellation::glonassCdma);
    for (const int unknown : {0, 8, 10, 11, 128, 255}) {
        EXPECT_FALSE(orbconv::constellationOfCode(static_cast<std::uint8_t>(unknown))) << unknown;
    }
}

TEST(ClaimRecord, FreeRecordTakesTheNumber) {
    SatEpochRecord record;
    EXPECT_EQ(claimRecord(&record, 12), Claim::fresh);
    EXPECT_EQ(record.number, 12);
}

TEST(ClaimRecord, OwnRecordIsFoundAgain) {
    SatEpochRecord record{.number = 12};
    EXPECT_EQ(claimRecord(&record, 12), Claim::own);
    EXPECT_EQ(record.number, 12);
}

TEST(ClaimRecord, RecordOfAnotherSatelliteIsLeftAlone) {
    SatEpochRecord record{.number = 12};
    EXPECT_EQ(claimRecord(&record, 13), Claim::mismatch);
    EXPECT_EQ(record.number, 12);
}

TEST(ClaimRecord, NumberZeroFindsAFreeRecordEachTime) {
    SatEpochRecord record;
    EXPECT_EQ(claimRecord(&record, 0), Claim::fresh);
    EXPECT_EQ(claimRecord(&record, 0), Claim::fresh);
    EXPECT_EQ(claimRecord(&record, -3), Claim::fresh);
    EXPECT_EQ(record.number, -3);
}

TEST(ClaimRecord, SatelliteWithoutARecordNeverMatches) {
    EXPECT_EQ(claimRecord(nullptr, 12), Claim::mismatch);
    EXPECT_EQ(claimRecord(nullptr, 0), Claim::mismatch);
}

TEST(ClearRecord, ResetsNumberObservationsAndReferences) {
    SatEpochRecord record = filledRecord();
    clearRecord(record);
    EXPECT_TRUE(hasClearedFields(record));
}

TEST(ClearRecord, ClearsOnlyBitSixOfTheFirstFlagWord) {
    SatEpochRecord record = filledRecord();
    clearRecord(record);
    EXPECT_EQ(record.signalFlags[0], 0xFFFFFFBFU);
    for (std::size_t band = 1; band < record.signalFlags.size(); ++band) {
        EXPECT_EQ(record.signalFlags[band], 0xFFFFFFFFU) << band;
    }
}

TEST(ClearRecord, LeavesNamesDigitsSlotAndColumnBytes) {
    const SatEpochRecord before = filledRecord();
    SatEpochRecord record = before;
    clearRecord(record);
    EXPECT_EQ(record.signalName, before.signalName);
    EXPECT_EQ(record.strengthIndex, before.strengthIndex);
    EXPECT_EQ(record.gloSlotNumber, 24);
    EXPECT_EQ(record.columnBytes, before.columnBytes);
}

TEST_F(EpochStore, ClearStopsBehindIndex29InEveryArray) {
    for (const Constellation constellation : everyConstellation) {
        for (std::size_t i = 0; i < store.records(constellation).size(); ++i) {
            record(constellation, i) = filledRecord();
        }
    }
    clearEpochRecords(store);
    for (const Constellation constellation : everyConstellation) {
        const auto records = store.records(constellation);
        for (std::size_t i = 0; i < records.size(); ++i) {
            const bool cleared = i < 30;
            EXPECT_EQ(hasClearedFields(records[i]), cleared) << i;
            EXPECT_EQ(records[i].number, cleared ? 0 : 17) << i;
            EXPECT_EQ(records[i].obs[43], cleared ? 0.0 : 44.5) << i;
            EXPECT_EQ(records[i].signalFlags[0], cleared ? 0xFFFFFFBFU : 0xFFFFFFFFU) << i;
        }
    }
}

// Whatever wrote into a record, a clear finds it.
class EpochStoreClear : public EpochStore {
protected:
    void expectClearedAfterAClear(Constellation constellation, std::size_t i = 0) {
        EXPECT_FALSE(hasClearedFields(record(constellation, i)));
        clearEpochRecords(store);
        EXPECT_TRUE(hasClearedFields(record(constellation, i)));
    }
};

TEST_F(EpochStoreClear, FindsAClockOffsetWrittenWithoutAClaim) {
    // A satellite of number 0 leaves its record looking free.
    list({satellite(Constellation::gps, 0)});
    put("rx", {12345});
    assemble();
    EXPECT_EQ(record(Constellation::gps).number, 0);
    expectClearedAfterAClear(Constellation::gps);
}

TEST_F(EpochStoreClear, FindsAClockOffsetOfAVersionThatClaimsNothing) {
    options.rinexVersion = 8.0;
    list({satellite(Constellation::navic, 3)});
    put("rx", {12345});
    assemble();
    expectClearedAfterAClear(Constellation::navic);
}

TEST_F(EpochStoreClear, FindsAReferenceDopplerWrittenWithoutAClaim) {
    staleList({satellite(Constellation::beidou, 30)});
    put("DX", {777});
    assemble();
    EXPECT_EQ(record(Constellation::beidou).number, 0);
    expectClearedAfterAClear(Constellation::beidou);
}

TEST_F(EpochStoreClear, FindsAPresenceBitOfChannelZero) {
    list({satellite(Constellation::glonass, 0)});
    put("FC", {0x40});
    assemble();
    expectClearedAfterAClear(Constellation::glonass);
}

TEST_F(EpochStoreClear, FindsAValueOfEachMeasurementStep) {
    for (const std::string_view id :
         {"rc", "1r", "2r", "3r", "5r", "lr", "DC", "0d", "1d", "2d", "3d", "5d", "ld",
          "cp", "1p", "2p", "3p", "5p", "lp", "CE", "1E", "2E", "3E", "5E", "lE"}) {
        restart();
        staleList({satellite(Constellation::gps, 9)});
        put(id, {100});
        assemble();
        expectClearedAfterAClear(Constellation::gps);
    }
}

TEST_F(EpochStoreClear, FindsARecordThatASortMoved) {
    list({satellite(Constellation::gps, 9), satellite(Constellation::gps, 4)});
    put("rx", {500});
    put("1r", {5});
    assemble();
    sortEpochRecords(options, staging, store, survey);
    EXPECT_EQ(record(Constellation::gps, 1).number, 9);
    expectClearedAfterAClear(Constellation::gps, 1);
    EXPECT_TRUE(hasClearedFields(record(Constellation::gps, 0)));
}

TEST_F(EpochStoreClear, FindsARecordThatASortMovedBehindAFreeOne) {
    // The second epoch has one satellite; the free record behind it still has the slot 9 of the first.
    list({satellite(Constellation::glonass, 1), satellite(Constellation::glonass, 2)});
    put("NN", {5, 9});
    orbconv::assignGlonassSlots(staging, store);
    clearEpochRecords(store);
    list({satellite(Constellation::glonass, 3)});
    put("NN", {20});
    orbconv::assignGlonassSlots(staging, store);
    put("rx", {500});
    assemble();
    sortEpochRecords(options, staging, store, survey);
    EXPECT_EQ(record(Constellation::glonass, 0).gloSlotNumber, 9);
    EXPECT_EQ(record(Constellation::glonass, 1).gloSlotNumber, 20);
    expectClearedAfterAClear(Constellation::glonass, 1);
}

TEST_F(EpochStoreClear, FindsAChannelThatTheSlotsOfNnSet) {
    list({satellite(Constellation::glonass, -2)});
    put("NN", {11});
    orbconv::assignGlonassSlots(staging, store);
    expectClearedAfterAClear(Constellation::glonass);
    EXPECT_EQ(record(Constellation::glonass).gloSlotNumber, 11);
}

TEST_F(EpochStore, ThirtyFirstSatelliteSurvivesTheClearAndKeepsOthersOut) {
    list(satellites(Constellation::gps, 1, 31));
    put("rx", std::vector<std::int64_t>(31, 1000));
    assemble();
    clearEpochRecords(store);
    const SatEpochRecord& last = record(Constellation::gps, 30);
    EXPECT_EQ(last.number, 31);
    EXPECT_EQ(last.clockOffset, 1000 * 1e-11 + 0.075);

    auto next = satellites(Constellation::gps, 1, 30);
    next.push_back(satellite(Constellation::gps, 32));
    list(next);
    put("rx", {});
    put("1p", std::vector<std::int64_t>(31, 5));
    put("CE", std::vector<std::int64_t>(31, 160));
    assemble();
    EXPECT_EQ(last.number, 31);
    EXPECT_EQ(last.at(ObsRow::phase, 1), 0.0);
    EXPECT_EQ(last.at(ObsRow::strength, 0), 0.0);
    EXPECT_EQ(record(Constellation::gps, 29).at(ObsRow::strength, 0), 40.0);
}

TEST_F(EpochStore, ThirtyFirstSatelliteThatStaysKeepsTheValuesOfMissingMessages) {
    list(satellites(Constellation::galileo, 1, 31));
    put("5r", std::vector<std::int64_t>(31, 1000));
    assemble();
    clearEpochRecords(store);
    put("5r", {});
    assemble();
    EXPECT_EQ(record(Constellation::galileo, 29).at(ObsRow::pseudorange, 4), 0.0);
    EXPECT_EQ(record(Constellation::galileo, 30).at(ObsRow::pseudorange, 4),
              (1000 * 1e-11 + 2e-7 + 0.0) * 299792458.0);
}

TEST_F(EpochStore, ChannelZeroIsClaimedByEveryStepAnew) {
    list({satellite(Constellation::glonass, 0)});
    put("rx", {2000});
    put("1E", {100});
    put("2E", {120});
    assemble();
    EXPECT_EQ(record(Constellation::glonass).number, 0);
    EXPECT_EQ(record(Constellation::glonass).clockOffset, 2000 * 1e-11 + 0.075);
    EXPECT_EQ(record(Constellation::glonass).at(ObsRow::strength, 1), 25.0);
    EXPECT_EQ(record(Constellation::glonass).at(ObsRow::strength, 2), 30.0);
}

TEST_F(EpochStore, FlagOfAFurtherBandPassesToTheNextSatelliteAtThePlace) {
    list({satellite(Constellation::gps, 5)});
    put("FC", {0x40});
    put("F2", {0x40});
    put("CE", {200});
    assemble();
    clearEpochRecords(store);
    // A list without any GPS flag step: F2 is not taken for a constellation that is left out.
    options.includeGps = false;
    list({satellite(Constellation::gps, 6)});
    put("1p", {3});
    assemble();
    const SatEpochRecord& taken = record(Constellation::gps);
    EXPECT_EQ(taken.number, 6);
    EXPECT_EQ(taken.signalFlags[0], 0U);
    EXPECT_EQ(taken.signalFlags[2], 0x40U);
    EXPECT_EQ(taken.strengthIndex[0], 8);
}

TEST_F(EpochStore, SatellitesBeyondTheCapacityOfAnArrayAreDropped) {
    includeEverySystem();
    const std::array<std::size_t, 8> capacities = {32, 32, 37, 30, 61, 30, 30, 30};
    for (std::size_t c = 0; c < everyConstellation.size(); ++c) {
        restart();
        list(satellites(everyConstellation[c], 1, 180));
        for (const std::string_view id : {"rc", "rx", "DX", "DC"}) {
            put(id, std::vector<std::int64_t>(180, 1000));
        }
        for (const std::string_view id : {"FC", "3r", "3d", "3p", "3E"}) {
            put(id, std::vector<std::int64_t>(180, 0x40));
        }
        assemble();
        const bool filled =
            everyConstellation[c] != Constellation::qzss && everyConstellation[c] != Constellation::sbas;
        for (const Constellation other : everyConstellation) {
            const auto records = store.records(other);
            for (std::size_t i = 0; i < records.size(); ++i) {
                const bool own = other == everyConstellation[c] && filled;
                EXPECT_EQ(records[i].number, own ? static_cast<std::int32_t>(i) + 1 : 0);
                EXPECT_EQ(records[i].referenceDoppler, own ? 1000 : 0);
                EXPECT_EQ(hasClearedFields(records[i]), !own);
            }
        }
        EXPECT_EQ(store.records(everyConstellation[c]).size(), capacities[c]);
    }
}

TEST_F(EpochStore, UnknownSystemCodesArePassedOver) {
    std::vector<Satellite> entries;
    for (const int code : {0, 8, 10, 255}) {
        entries.push_back({.systemCode = static_cast<std::uint8_t>(code), .number = 3});
    }
    entries.push_back(satellite(Constellation::gps, 7));
    list(entries);
    put("CE", {40, 44, 48, 52, 56});
    put("rx", {1, 2, 3, 4, 5});
    assemble();
    EXPECT_EQ(record(Constellation::gps).number, 7);
    EXPECT_EQ(record(Constellation::gps).at(ObsRow::strength, 0), 14.0);
    EXPECT_EQ(record(Constellation::gps).clockOffset, 5 * 1e-11 + 0.075);
    for (std::size_t i = 1; i < store.all.size(); ++i) {
        EXPECT_TRUE(hasClearedFields(store.all[i])) << i;
    }
}

}  // namespace
