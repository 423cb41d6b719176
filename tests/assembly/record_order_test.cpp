// The printing order of an epoch's records, the count of its satellites, and the sort of the survey's lists,
// against exchange sorts written out as the rule tells them.
#include "assembly/record_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::Constellation;
using testsupport::ObsRow;
using testsupport::rowOf;
using testsupport::satellite;
using testsupport::satellites;
using testsupport::SatEpochRecord;
using testsupport::Values;
using enum testsupport::Constellation;

struct Keyed {
    std::int32_t key;
    std::int32_t mark;
    friend bool operator==(const Keyed&, const Keyed&) = default;
};

// `passes` passes over the adjacent pairs: swapped if the first key is greater and neither is 0.
void exchangeSort(std::vector<Keyed>& entries, int passes) {
    for (int pass = 0; pass < passes; ++pass) {
        for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
            if (entries[i].key > entries[i + 1].key && entries[i].key != 0 && entries[i + 1].key != 0) {
                std::swap(entries[i], entries[i + 1]);
            }
        }
    }
}

// Keys with zeros, ties, negative and extreme values, more or less of each by turns.
std::int32_t randomKey(Values& values, int round) {
    if (values.between(0, 9) < round % 4) {
        return 0;
    }
    switch (round % 5) {
        case 0: return values.between(1, 61);
        case 1: return values.between(-7, 6);
        case 2: return values.between(1, 3);
        case 3: return values.int32();
        default: return values.between(0, 1) == 0 ? INT32_MIN : INT32_MAX;
    }
}

class RecordOrder : public testsupport::AssemblyTest {
protected:
    void sort() { orbconv::sortEpochRecords(options, staging, store, survey); }
    std::int32_t& keyOf(SatEpochRecord& record, Constellation system) {
        return system == glonass ? record.gloSlotNumber : record.number;
    }
    // Keys in the records of a constellation, in order, the others 0.
    void setKeys(Constellation system, const std::vector<std::int32_t>& keys) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            keyOf(record(system, i), system) = keys[i];
            record(system, i).clockOffset = static_cast<double>(keys[i]);
        }
    }
    std::vector<std::int32_t> keys(Constellation system, std::size_t count) {
        std::vector<std::int32_t> found;
        for (std::size_t i = 0; i < count; ++i) {
            found.push_back(keyOf(record(system, i), system));
            EXPECT_EQ(record(system, i).clockOffset, static_cast<double>(found.back()));
        }
        return found;
    }
};

// ---- copyRecord ----

// A record whose fields all tell `mark`.
SatEpochRecord markedRecord(std::int32_t mark) {
    SatEpochRecord record;
    record.number = mark;
    const char letter = static_cast<char>('A' + mark % 26);
    record.signalName.fill({{letter, 'x', 'y', '\0'}});
    record.obs.fill(mark + 0.5);
    record.strengthIndex.fill(mark + 1);
    record.clockOffset = mark + 0.25;
    record.referenceDoppler = -mark;
    record.gloSlotNumber = mark;
    record.columnBytes.fill(static_cast<std::uint8_t>(mark));
    record.signalFlags.fill(static_cast<std::uint32_t>(mark) << 3);
    return record;
}

void expectMarked(const SatEpochRecord& record, std::int32_t mark) {
    const SatEpochRecord expected = markedRecord(mark);
    EXPECT_EQ(record.number, expected.number);
    EXPECT_EQ(record.signalName, expected.signalName);
    EXPECT_EQ(record.obs, expected.obs);
    EXPECT_EQ(record.strengthIndex, expected.strengthIndex);
    EXPECT_EQ(record.clockOffset, expected.clockOffset);
    EXPECT_EQ(record.referenceDoppler, expected.referenceDoppler);
    EXPECT_EQ(record.gloSlotNumber, expected.gloSlotNumber);
    EXPECT_EQ(record.columnBytes, expected.columnBytes);
    EXPECT_EQ(record.signalFlags, expected.signalFlags);
}

TEST_F(RecordOrder, CopyTakesEveryField) {
    SatEpochRecord destination = markedRecord(3);
    const SatEpochRecord source = markedRecord(17);
    EXPECT_EQ(&orbconv::copyRecord(destination, source), &destination);
    expectMarked(destination, 17);
    expectMarked(source, 17);
}

TEST_F(RecordOrder, CopyOntoItselfChangesNothing) {
    SatEpochRecord record = markedRecord(3);
    orbconv::copyRecord(record, record);
    expectMarked(record, 3);
}

// ---- the sort of the records ----

TEST_F(RecordOrder, RecordsAreMovedInEachField) {
    for (const Constellation system : {gps, glonass, galileo, beidou, navic}) {
        const std::vector<std::int32_t> marks = {5, 3, 9, 2, 30, 1};
        for (std::size_t i = 0; i < marks.size(); ++i) {
            record(system, i) = markedRecord(marks[i]);
        }
        sort();
        std::size_t place = 0;
        for (const std::int32_t mark : {1, 2, 3, 5, 9, 30}) {
            expectMarked(record(system, place++), mark);
        }
    }
}

TEST_F(RecordOrder, RecordWithoutAKeyStaysAndSplitsTheOthers) {
    setKeys(gps, {7, 0, 3});
    sort();
    EXPECT_EQ(keys(gps, 3), (std::vector<std::int32_t>{7, 0, 3}));
    setKeys(gps, {9, 8, 0, 5, 4, 3, 0, 0, 2, 1});
    sort();
    EXPECT_EQ(keys(gps, 10), (std::vector<std::int32_t>{8, 9, 0, 3, 4, 5, 0, 0, 1, 2}));
}

TEST_F(RecordOrder, GlonassIsOrderedBySlot) {
    record(glonass, 0) = {.number = -7, .gloSlotNumber = 24};
    record(glonass, 1) = {.number = 6, .gloSlotNumber = 1};
    sort();
    EXPECT_EQ(record(glonass, 0).number, 6);
    EXPECT_EQ(record(glonass, 1).number, -7);
}

TEST_F(RecordOrder, GlonassRecordWithoutASlotStaysWhereItIs) {
    record(glonass, 0) = {.number = 1, .gloSlotNumber = 24};
    record(glonass, 1) = {.number = 2, .gloSlotNumber = 7};
    record(glonass, 2) = {.number = 3};
    record(glonass, 3) = {.number = 4, .gloSlotNumber = 9};
    record(glonass, 4) = {.number = 5, .gloSlotNumber = 8};
    sort();
    std::vector<std::int32_t> channels;
    for (std::size_t i = 0; i < 5; ++i) {
        channels.push_back(record(glonass, i).number);
    }
    EXPECT_EQ(channels, (std::vector<std::int32_t>{2, 1, 3, 5, 4}));
}

TEST_F(RecordOrder, FreeGlonassRecordWithALeftSlotIsSortedLikeTheOthers) {
    record(glonass, 0) = {.number = 1, .gloSlotNumber = 20};
    record(glonass, 1) = {.gloSlotNumber = 9};
    sort();
    EXPECT_EQ(record(glonass, 0).gloSlotNumber, 9);
    EXPECT_EQ(record(glonass, 1).number, 1);
}

TEST_F(RecordOrder, WholeArraysAreSorted) {
    for (const auto& [system, capacity] :
         {std::pair{gps, 32}, {glonass, 32}, {galileo, 37}, {beidou, 61}, {navic, 30}}) {
        std::vector<std::int32_t> descending;
        std::vector<std::int32_t> ascending;
        for (int i = 0; i < capacity; ++i) {
            descending.push_back(capacity - i);
            ascending.push_back(i + 1);
        }
        setKeys(system, descending);
        sort();
        EXPECT_EQ(keys(system, static_cast<std::size_t>(capacity)), ascending);
    }
}

TEST_F(RecordOrder, QzssSbasAndGlonassCdmaStayUnsorted) {
    for (const Constellation system : {qzss, glonassCdma}) {
        setKeys(system, {3, 2, 1});
        sort();
        EXPECT_EQ(keys(system, 3), (std::vector<std::int32_t>{3, 2, 1}));
    }
    // The first two SBAS records are neighbours of the NavIC ones; theirs are free in every run.
    for (std::size_t i = 2; i < 5; ++i) {
        record(sbas, i).number = 9 - static_cast<std::int32_t>(i);
    }
    sort();
    EXPECT_EQ(record(sbas, 2).number, 7);
    EXPECT_EQ(record(sbas, 4).number, 5);
}

TEST_F(RecordOrder, IsThatOfTheExchangeSortForAnyKeys) {
    Values values(6);
    for (const auto& [system, capacity, passes] : {std::tuple{gps, 32U, 32},
                                                   {glonass, 32U, 32},
                                                   {galileo, 37U, 37},
                                                   {beidou, 61U, 61},
                                                   {navic, 30U, 32}}) {
        for (int round = 0; round < 60; ++round) {
            std::vector<Keyed> expected;
            for (std::size_t i = 0; i < capacity; ++i) {
                const Keyed entry{randomKey(values, round), static_cast<std::int32_t>(i)};
                record(system, i) = markedRecord(entry.mark);
                keyOf(record(system, i), system) = entry.key;
                expected.push_back(entry);
            }
            exchangeSort(expected, passes);
            sort();
            for (std::size_t i = 0; i < capacity; ++i) {
                SatEpochRecord& found = record(system, i);
                ASSERT_EQ((Keyed{keyOf(found, system), -found.referenceDoppler}), expected[i])
                    << rowOf(system) << " round " << round << " place " << i;
                keyOf(found, system) = expected[i].mark;  // the only field that told the key
                expectMarked(found, expected[i].mark);
            }
        }
    }
}

// ---- the count of the epoch ----

TEST_F(RecordOrder, SatellitesOfLeftOutSystemsAreNotCounted) {
    auto entries = satellites(gps, 1, 12);
    const auto others = satellites(glonass, -4, 8);
    entries.insert(entries.end(), others.begin(), others.end());
    list(entries);
    sort();
    EXPECT_EQ(staging.satellitesInEpoch, 20);
    options.includeGlonass = false;
    sort();
    EXPECT_EQ(staging.satellitesInEpoch, 12);
}

TEST_F(RecordOrder, EachFlagTakesItsOwnSystemOut) {
    // Twice the system's row plus one of each, so that every system changes the count by its own number.
    std::vector<testsupport::Satellite> entries;
    int all = 0;
    for (const Constellation system : {gps, glonass, galileo, qzss, beidou, navic, sbas}) {
        const int count = 2 * static_cast<int>(rowOf(system)) + 1;
        const auto own = satellites(system, 1, count);
        entries.insert(entries.end(), own.begin(), own.end());
        all += count;
    }
    list(entries);
    for (const Constellation system : {gps, glonass, galileo, qzss, beidou, navic, sbas}) {
        includeEverySystem();
        sort();
        EXPECT_EQ(staging.satellitesInEpoch, all);
        include(system, false);
        sort();
        EXPECT_EQ(staging.satellitesInEpoch, all - 2 * static_cast<int>(rowOf(system)) - 1);
    }
}

TEST_F(RecordOrder, CodesEightAndNineAreNeverCountedAndUnknownOnesAlways) {
    for (const bool included : {true, false}) {
        options.includeGlonassCdma = included;
        list({satellite(gps, 1), {.systemCode = 8, .number = 1}, {.systemCode = 9, .number = 1}});
        sort();
        EXPECT_EQ(staging.satellitesInEpoch, 1);
        list({{.systemCode = 0, .number = 1},
              {.systemCode = 10, .number = 1},
              {.systemCode = 255, .number = 1}});
        sort();
        EXPECT_EQ(staging.satellitesInEpoch, 3);
    }
}

TEST_F(RecordOrder, ARunCountsNeitherQzssNorSbas) {
    list({satellite(gps, 1), satellite(qzss, 1), satellite(sbas, 1)});
    sort();
    EXPECT_EQ(staging.satellitesInEpoch, 1);
}

TEST_F(RecordOrder, CountIsThatOfTheListAndNotOfTheRecords) {
    setKeys(gps, {1, 2, 3});
    list({});
    sort();
    EXPECT_EQ(staging.satellitesInEpoch, 0);
    list(satellites(gps, 1, 40));
    sort();
    EXPECT_EQ(staging.satellitesInEpoch, 40);
}

TEST_F(RecordOrder, GreatestCountIsOnlyEverRaised) {
    for (const auto& [count, greatest] : {std::pair{5, 5}, {9, 9}, {3, 9}, {9, 9}, {10, 10}, {0, 10}}) {
        list(satellites(gps, 1, count));
        sort();
        EXPECT_EQ(survey.maxSatellitesInEpoch, greatest);
    }
}

// ---- the sort of the survey's lists ----

TEST_F(RecordOrder, SurveyListsAreThoseOfTheExchangeSort) {
    Values values(7);
    for (const auto& [system, entries] :
         {std::pair{gps, 32U}, {navic, 32U}, {glonass, 32U}, {galileo, 37U}, {beidou, 61U}}) {
        for (int round = 0; round < 60; ++round) {
            for (std::size_t band = 0; band < 6; ++band) {
                auto& numbers = survey.signalSatelliteList[rowOf(system)][band];
                // Lists fill from the start: any length, then zeros.
                const auto length = static_cast<std::size_t>(values.between(0, static_cast<int>(entries)));
                std::vector<Keyed> expected(entries);
                for (std::size_t i = 0; i < entries; ++i) {
                    const std::int32_t key = randomKey(values, 5 * round + static_cast<int>(band) % 4);
                    numbers[i] = i < length ? (key == 0 ? 255 : key) : 0;
                    expected[i] = {numbers[i], 0};
                }
                exchangeSort(expected, static_cast<int>(entries));
                orbconv::sortSignalSatelliteLists(survey);
                for (std::size_t i = 0; i < entries; ++i) {
                    ASSERT_EQ(numbers[i], expected[i].key) << rowOf(system) << " " << band << " " << i;
                }
            }
        }
    }
}

TEST_F(RecordOrder, SurveySortLeavesOtherListsAlone) {
    const orbconv::SatelliteNumbers descending = {3, 2, 1};
    for (std::size_t system = 0; system < 8; ++system) {
        survey.allSatelliteList[system] = descending;
        survey.signalSatelliteList[system].fill(descending);
        survey.phaseShiftSatellites[system].fill(descending);
    }
    orbconv::sortSignalSatelliteLists(survey);
    const orbconv::SatelliteNumbers ascending = {1, 2, 3};
    for (const Constellation system : testsupport::everyConstellation) {
        const bool sorted = system != qzss && system != sbas && system != glonassCdma;
        for (std::size_t band = 0; band < 12; ++band) {
            EXPECT_EQ(survey.signalSatelliteList[rowOf(system)][band],
                      sorted && band < 6 ? ascending : descending);
        }
        EXPECT_EQ(survey.allSatelliteList[rowOf(system)], descending);
        EXPECT_EQ(survey.phaseShiftSatellites[rowOf(system)][0], descending);
    }
}

}  // namespace
