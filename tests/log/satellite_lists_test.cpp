// The list that gives every message its order, with its own numbering of the systems, and the GLONASS slots.
#include "log/satellite_lists.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "assembly/epoch_store.h"
#include "samplelog/log_builder.h"
#include "support/staging.h"

namespace {

using orbconv::Constellation;
using orbconv::EpochStore;
using orbconv::GlonassSlotTable;
using orbconv::MessageStaging;
using orbconv::RunOptions;
using orbconv::SatelliteList;
using orbconv::SystemPresence;
using samplelog::LogBuilder;
using samplelog::Satellite;
using samplelog::SystemCode;
using Slots = std::vector<std::uint8_t>;
using Channels = std::vector<int>;

// Everything that a run can have on, also what no run has.
RunOptions everythingIncluded() {
    RunOptions options;
    options.includeQzss = true;
    options.includeSbas = true;
    options.includeGlonassCdma = true;
    return options;
}

// A list with one satellite for each code.
std::vector<Satellite> listOf(const std::vector<std::uint8_t>& codes) {
    std::vector<Satellite> satellites;
    for (const std::uint8_t code : codes) {
        satellites.push_back({code, 11});
    }
    return satellites;
}

// A GLONASS satellite on each channel.
std::vector<Satellite> glonass(const Channels& channels) {
    std::vector<Satellite> satellites;
    for (const int channel : channels) {
        satellites.push_back({SystemCode::glonass, channel});
    }
    return satellites;
}

struct Presence {
    explicit Presence(const RunOptions& runOptions = {}) : options(runOptions) {}
    Presence& sx(const std::vector<std::uint8_t>& codes) {
        testsupport::stage(staging, LogBuilder().sx(listOf(codes)));
        orbconv::handleSx(SatelliteList(staging), options, presence);
        return *this;
    }
    [[nodiscard]] std::string letter() const { return std::string(presence.satelliteSystemLetter()); }

    RunOptions options;
    MessageStaging staging;
    SystemPresence presence;
};

std::string letterOf(const std::vector<std::uint8_t>& codes, const RunOptions& options = {}) {
    return Presence(options).sx(codes).letter();
}

// The staged list and slots with the two tables that take them.
struct SlotTables {
    SlotTables& nn(const std::vector<Satellite>& satellites, const Slots& slots) {
        return handled(LogBuilder().sx(satellites).nn(slots));
    }
    SlotTables& handled(const LogBuilder& log) {
        testsupport::stage(staging, log);
        orbconv::noteGlonassSlots(staging, table);
        orbconv::assignGlonassSlots(staging, *store);
        return *this;
    }
    // The table's entries up to the first free one, as "slot/channel" texts.
    [[nodiscard]] std::string entries() const {
        std::string text;
        for (std::size_t i = 0; i < GlonassSlotTable::capacity && table.slot[i] != 0; ++i) {
            text += std::to_string(table.slot[i]) + "/" + std::to_string(table.frequencyNumber[i]) + " ";
        }
        return text;
    }
    [[nodiscard]] std::span<const orbconv::SatEpochRecord> records() const {
        return store->records(Constellation::glonass);
    }
    // The same, to be filled by a test.
    orbconv::SatEpochRecord& preset(std::size_t i) {
        return store->useFirst(Constellation::glonass, i + 1)[i];
    }
    // The first records as "channel:slot" texts.
    [[nodiscard]] std::string firstRecords(std::size_t count) const {
        std::string text;
        for (const auto& record : records().first(count)) {
            text += std::to_string(record.number) + ":" + std::to_string(record.gloSlotNumber) + " ";
        }
        return text;
    }

    MessageStaging staging;
    GlonassSlotTable table;
    std::shared_ptr<EpochStore> store = std::make_shared<EpochStore>();
};

struct NumberingCase {
    std::uint8_t code;
    char letter;
    bool RunOptions::*flag;
    std::size_t count;
};

void PrintTo(const NumberingCase& numbering, std::ostream* out) {
    *out << "Code" << int{numbering.code};
}

class ListNumbering : public testing::TestWithParam<NumberingCase> {};

constexpr NumberingCase numbering[] = {
    {1, 'G', &RunOptions::includeGps, 0},     {2, 'R', &RunOptions::includeGlonass, 1},
    {3, 'E', &RunOptions::includeGalileo, 2}, {4, 'J', &RunOptions::includeQzss, 3},
    {5, 'C', &RunOptions::includeBeidou, 4},  {6, 'I', &RunOptions::includeNavic, 5},
    {7, 'S', &RunOptions::includeSbas, 6},
};

}  // namespace

TEST(SatelliteList, ElementsAreSystemAndNumberInTheOrderOfTheMessage) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().sx({{1, 5}, {2, -3}, {6, 200}}));
    const SatelliteList list(staging);
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.systemCode(0), 1);
    EXPECT_EQ(list.satelliteNumber(0), 5);
    EXPECT_EQ(list.systemCode(1), 2);
    EXPECT_EQ(list.frequencyChannel(1), -3);
    EXPECT_EQ(list.satelliteNumber(1), 253);
    EXPECT_EQ(list.satelliteNumber(2), 200);
}

TEST(SatelliteList, HoldsAtMost180Satellites) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().sx(std::vector<Satellite>(300, {1, 7})));
    const SatelliteList list(staging);
    EXPECT_EQ(list.count(), 180);
    EXPECT_EQ(list.satelliteNumber(179), 7);
    EXPECT_EQ(staging.satellitesInEpoch, 180);
}

TEST(SatelliteList, KeepsTheEntriesOfALongerOneBehindItsCount) {
    MessageStaging staging;
    testsupport::stage(staging, LogBuilder().sx({{1, 5}, {1, 6}}).sx({{1, 7}}));
    const SatelliteList list(staging);
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(list.satelliteNumber(0), 7);
    EXPECT_EQ(list.satelliteNumber(1), 6);
}

TEST_P(ListNumbering, SetsItsLetterAndRaisesItsCount) {
    const auto& [code, letter, flag, count] = GetParam();
    const Presence only = Presence(everythingIncluded()).sx({code, code, code});
    EXPECT_EQ(only.letter(), std::string(1, letter));
    EXPECT_EQ(only.presence.systemCount, 1);
    for (std::size_t i = 0; i < SystemPresence::systems; ++i) {
        EXPECT_EQ(only.presence.satellites[i], i == count ? 3 : 0) << i;
        EXPECT_EQ(only.presence.present[i], i == count) << i;
    }
}

TEST_P(ListNumbering, IsSwitchedOffByItsFlagAlone) {
    RunOptions options = everythingIncluded();
    options.*GetParam().flag = false;
    EXPECT_EQ(letterOf({GetParam().code}, options), "");
    for (const NumberingCase& other : numbering) {
        if (other.code != GetParam().code) {
            EXPECT_EQ(letterOf({other.code}, options), std::string(1, other.letter));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(SxMessage, ListNumbering, testing::ValuesIn(numbering),
                         [](const auto& instance) { return "Code" + std::to_string(instance.param.code); });

TEST(SxMessage, InARunTheListsOwnNumberingLeavesGalileoAndNavicWithoutALetter) {
    EXPECT_EQ(letterOf({SystemCode::galileo}), "");
    EXPECT_EQ(letterOf({SystemCode::navic}), "");
    EXPECT_EQ(letterOf({SystemCode::beidou}), "I");
    EXPECT_EQ(letterOf({SystemCode::qzss}), "C");
    EXPECT_EQ(letterOf({SystemCode::sbas}), "E");
}

TEST(SxMessage, TwoSystemsMakeItMixed) {
    EXPECT_EQ(letterOf({1, 2}), "M");
    EXPECT_EQ(letterOf({2, 1, 1, 2}), "M");
    EXPECT_EQ(letterOf({1, 2, 3, 5, 6}), "M");
    EXPECT_EQ(Presence().sx({1, 2, 3, 5, 6, 4, 7}).presence.systemCount, 5);
}

TEST(SxMessage, ExcludedSystemsDoNotMakeItMixed) {
    RunOptions options;
    options.includeGlonass = false;
    EXPECT_EQ(letterOf({1, 2}, options), "G");
}

TEST(SxMessage, OtherCodesSetNothingAndCountNothing) {
    for (const int code : {0, 8, 9, 10, 255}) {
        const Presence presence = Presence(everythingIncluded()).sx({static_cast<std::uint8_t>(code)});
        EXPECT_EQ(presence.letter(), "") << code;
        EXPECT_EQ(presence.presence.systemCount, 0) << code;
        EXPECT_EQ(presence.presence.satellites, (std::array<std::int32_t, 7>{})) << code;
    }
    EXPECT_EQ(letterOf({1, 8, 9}), "G");
}

TEST(SxMessage, LetterAndCountsAreThoseOfTheLatestList) {
    Presence presence;
    EXPECT_EQ(presence.sx({1, 2}).letter(), "M");
    EXPECT_EQ(presence.sx({2}).letter(), "R");
    EXPECT_EQ(presence.presence.systemCount, 1);
    EXPECT_EQ(presence.presence.satellites, (std::array<std::int32_t, 7>{0, 1}));
}

TEST(SxMessage, ListWithoutAKnownSystemKeepsTheLetter) {
    EXPECT_EQ(Presence().sx({1}).sx({8}).letter(), "G");
    EXPECT_EQ(Presence().sx({1, 2}).sx({}).letter(), "M");
}

TEST(NnMessage, EntersSlotAndChannelOfEachGlonassSatellite) {
    const SlotTables tables = SlotTables().nn({{1, 5}, {2, -3}, {6, 9}, {2, 4}}, {12, 7});
    EXPECT_EQ(tables.entries(), "12/-3 7/4 ");
    EXPECT_EQ(tables.table.count, 2);
}

TEST(NnMessage, KeyOfTheTableIsTheSlot) {
    const SlotTables tables = SlotTables().nn(glonass({1, 1}), {3, 7});
    EXPECT_EQ(tables.entries(), "3/1 7/1 ");
    const SlotTables known = SlotTables().nn(glonass({1, 2}), {3, 3});
    EXPECT_EQ(known.entries(), "3/1 ");
    EXPECT_EQ(known.table.count, 1);
}

TEST(NnMessage, TableGrowsInTheOrderOfTheLog) {
    SlotTables tables;
    tables.nn(glonass({1, 2}), {20, 3}).nn(glonass({3, 2, 4}), {11, 3, 5});
    EXPECT_EQ(tables.entries(), "20/1 3/2 11/3 5/4 ");
    EXPECT_EQ(tables.table.count, 4);
}

TEST(NnMessage, UnknownSlotIsNotEnteredButReachesTheRecord) {
    const SlotTables tables = SlotTables().nn(glonass({1, 2}), {255, 8});
    EXPECT_EQ(tables.entries(), "8/2 ");
    EXPECT_EQ(tables.firstRecords(3), "1:255 2:8 0:0 ");
}

TEST(NnMessage, SlotZeroIsNotEnteredButReachesTheRecord) {
    const SlotTables tables = SlotTables().nn(glonass({1, 2}), {0, 8});
    EXPECT_EQ(tables.entries(), "8/2 ");
    EXPECT_EQ(tables.firstRecords(3), "1:0 2:8 0:0 ");
}

TEST(NnMessage, FullTableTakesNoMore) {
    SlotTables tables;
    std::string expected;
    for (int slot = 1; slot <= 40; ++slot) {
        tables.nn(glonass({slot % 7}), {static_cast<std::uint8_t>(slot)});
        expected += slot <= 32 ? std::to_string(slot) + "/" + std::to_string(slot % 7) + " " : "";
    }
    EXPECT_EQ(tables.entries(), expected);
    EXPECT_EQ(tables.table.count, 32);
}

TEST(NnMessage, ShorterThanTheListLeavesItsStaleBytesToTheLaterSatellites) {
    const SlotTables tables = SlotTables().nn(glonass({1, 2, 3}), {4, 5, 6}).nn(glonass({1, 2, 3}), {9});
    EXPECT_EQ(tables.entries(), "4/1 5/2 6/3 9/1 ");
    EXPECT_EQ(tables.firstRecords(4), "1:9 2:5 3:6 0:0 ");
}

TEST(NnMessage, ActsOnStaleBytesWhenItIsEmpty) {
    // Not its own count is asked for but that of the list.
    SlotTables tables;
    testsupport::stage(tables.staging, LogBuilder().nn({4}));
    EXPECT_EQ(tables.nn(glonass({1}), {}).entries(), "4/1 ");
}

TEST(NnMessage, DoesNothingOnAnEmptyList) {
    SlotTables tables;
    testsupport::stage(tables.staging, LogBuilder().sx(glonass({1})));
    tables.nn({}, {4});
    EXPECT_EQ(tables.entries(), "");
    EXPECT_EQ(tables.firstRecords(1), "0:0 ");
}

TEST(NnMessage, PassesOverGlonassSatellitesBehindIts24thByte) {
    Channels channels;
    Slots slots;
    for (int i = 1; i <= 30; ++i) {
        channels.push_back(i);
        slots.push_back(static_cast<std::uint8_t>(i));
    }
    const SlotTables tables = SlotTables().nn(glonass(channels), slots);
    EXPECT_EQ(tables.table.count, 24);
    EXPECT_EQ(tables.records()[23].gloSlotNumber, 24);
    EXPECT_EQ(tables.records()[24].gloSlotNumber, 0);
}

TEST(NnMessage, ClaimsFreeRecordsAndKeepsThoseOfOtherSatellites) {
    SlotTables tables;
    tables.preset(0).number = 2;
    tables.preset(1).number = -5;
    tables.nn(glonass({2, 3, -4}), {10, 11, 12});
    EXPECT_EQ(tables.firstRecords(4), "2:10 -5:0 -4:12 0:0 ");
}

TEST(NnMessage, GivesTheRecordOnChannelZeroItsSlot) {
    const SlotTables tables = SlotTables().nn(glonass({0, 3}), {10, 11});
    EXPECT_EQ(tables.entries(), "10/0 11/3 ");
    EXPECT_EQ(tables.firstRecords(3), "0:10 3:11 0:0 ");
}

TEST(NnMessage, RecordsThatItClaimedAreFreedWithTheEpochAndKeepTheirSlots) {
    SlotTables tables;
    tables.nn(glonass({1, 2}), {10, 11});
    orbconv::clearEpochRecords(*tables.store);
    EXPECT_EQ(tables.firstRecords(3), "0:10 0:11 0:0 ");
    EXPECT_EQ(tables.nn(glonass({3}), {12}).firstRecords(3), "3:12 0:11 0:0 ");
}

TEST(NnMessage, TouchesNoRecordOfAnotherConstellation) {
    const SlotTables tables = SlotTables().nn({{1, 5}, {2, 3}, {9, 6}}, {10});
    for (const orbconv::SatEpochRecord& record : tables.store->all) {
        if (&record != &tables.records()[0]) {
            ASSERT_EQ(record.number, 0);
            ASSERT_EQ(record.gloSlotNumber, 0);
        }
    }
}
