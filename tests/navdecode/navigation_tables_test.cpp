// The rules that the ephemeris tables share: appending, dates, duplicates, capacity.
#include "navdecode/navigation_tables.h"

#include <gtest/gtest.h>

#include <random>

#include "support/nav_survey.h"

namespace {
namespace navigationTablesTest {

using namespace orbconv;
using samplelog::Closing;
using samplelog::KeplerBlock;
using samplelog::LogBuilder;
using testsupport::NavSurvey;

// The four tables of Kepler-type ephemerides: how a message gets into each, which of its flags count as
// part of the key and where an entry keeps them.
struct Gps {
    static constexpr unsigned comparedFlags = 0;
    static unsigned flags(const GpsEphemeris& /*entry*/) { return 0; }
    static LogBuilder message(const KeplerBlock& block, std::uint8_t /*flags*/ = 0) {
        return LogBuilder().ge123(block);
    }
    static auto& table(NavSurvey& survey) { return survey.tables().gps; }
};
struct Galileo {
    static constexpr unsigned comparedFlags = 7;
    static unsigned flags(const GalileoEphemeris& entry) { return entry.navFlags; }
    static LogBuilder message(const KeplerBlock& block, std::uint8_t flags = 0) {
        return LogBuilder().en({.kepler = block, .navFlags = flags});
    }
    static auto& table(NavSurvey& survey) { return survey.tables().galileo; }
};
struct Beidou {
    static constexpr unsigned comparedFlags = 7;
    static unsigned flags(const BeidouEphemeris& entry) { return entry.navFlags; }
    static LogBuilder message(const KeplerBlock& block, std::uint8_t flags = 0) {
        return LogBuilder().cn134({.kepler = block, .navFlags = flags});
    }
    static auto& table(NavSurvey& survey) { return survey.tables().beidou; }
};
struct Navic {
    static constexpr unsigned comparedFlags = 0;
    static unsigned flags(const NavicEphemeris& /*entry*/) { return 0; }
    static LogBuilder message(const KeplerBlock& block, std::uint8_t /*flags*/ = 0) {
        return LogBuilder().ie(block);
    }
    static auto& table(NavSurvey& survey) { return survey.tables().navic; }
};

template <class System>
class KeplerTable : public testing::Test {
protected:
    NavSurvey survey;

    void add(const KeplerBlock& block, std::uint8_t flags = 0) { survey.feed(System::message(block, flags)); }
    void date(unsigned year, unsigned month = 1, unsigned day = 1, unsigned timeBase = 0) {
        survey.feed(LogBuilder().rd(year, month, day, timeBase));
    }
    auto& table() { return System::table(survey); }
    const orbconv::KeplerBlock& kepler(std::size_t i) { return table().slots.at(i).kepler; }
    float year(std::size_t i) { return table().slots.at(i).epoch.year; }
};

using KeplerSystems = testing::Types<Gps, Galileo, Beidou, Navic>;
TYPED_TEST_SUITE(KeplerTable, KeplerSystems);

TEST(NavigationTables, AreEmptyAtFirst) {
    NavSurvey survey;
    EXPECT_EQ(survey.tables().gps.count, 0);
    EXPECT_EQ(survey.tables().glonass.count, 0);
    EXPECT_EQ(survey.tables().galileo.count, 0);
    EXPECT_EQ(survey.tables().beidou.count, 0);
    EXPECT_EQ(survey.tables().navic.count, 0);
    EXPECT_EQ(survey.tables().lastLeapSeconds, 0);
    EXPECT_TRUE(survey.clocks.dateStillMissing);
}

TEST(NavigationTables, NamesOfTheMessageTypes) {
    EXPECT_EQ(navTypeName(NavType::none), "");
    EXPECT_EQ(navTypeName(NavType::lnav), "LNAV");
    EXPECT_EQ(navTypeName(NavType::cnav), "CNAV");
    EXPECT_EQ(navTypeName(NavType::cnv2), "CNV2");
    EXPECT_EQ(navTypeName(NavType::inav), "INAV");
    EXPECT_EQ(navTypeName(NavType::fnav), "FNAV");
    EXPECT_EQ(navTypeName(NavType::d1), "D1");
    EXPECT_EQ(navTypeName(NavType::d2), "D2");
    EXPECT_EQ(navTypeName(NavType::cnv1), "CNV1");
    EXPECT_EQ(navTypeName(NavType::cnv3), "CNV3");
}

// ---- duplicates ----

TYPED_TEST(KeplerTable, FirstEntryOfAKeyStays) {
    this->add({.sv = 4, .tot = 1, .toe = 7200, .sqrtA = 5153.5});
    this->add({.sv = 4, .tot = 2, .health = 1, .toe = 7200, .sqrtA = 5154.5});
    ASSERT_EQ(this->table().count, 1);
    EXPECT_EQ(this->kepler(0).tot, 1U);
    EXPECT_EQ(this->kepler(0).health, 0);
    EXPECT_EQ(this->kepler(0).sqrtA, 5153.5);
    EXPECT_EQ(this->kepler(0).sv, 4);
}

TYPED_TEST(KeplerTable, OtherSatelliteOrOtherToeIsAnotherEntry) {
    this->add({.sv = 4, .toe = 7200});
    this->add({.sv = 5, .toe = 7200});
    this->add({.sv = 4, .toe = 14400});
    this->add({.sv = 4, .toe = -7200});
    EXPECT_EQ(this->table().count, 4);
}

TYPED_TEST(KeplerTable, KeyOfAnyEarlierEntryCounts) {
    this->add({.sv = 4, .toe = 7200});
    this->add({.sv = 5, .toe = 7200});
    this->add({.sv = 6, .toe = 7200});
    this->add({.sv = 4, .toe = 7200});
    this->add({.sv = 5, .toe = 7200});
    EXPECT_EQ(this->table().count, 3);
}

TYPED_TEST(KeplerTable, DroppedEntryStaysDeadAtTheEnd) {
    this->add({.sv = 4, .toe = 7200});
    this->add({.sv = 4, .toe = 7200});
    EXPECT_EQ(this->kepler(1).sv, 0);
    EXPECT_EQ(this->kepler(1).toe, 7200);
}

TYPED_TEST(KeplerTable, SlotOfADroppedEntryIsUsedByTheNext) {
    this->add({.sv = 4, .toe = 7200});
    this->add({.sv = 4, .toe = 7200});
    this->add({.sv = 7, .toe = 7200});
    EXPECT_EQ(this->table().count, 2);
    EXPECT_EQ(this->kepler(1).sv, 7);
}

TYPED_TEST(KeplerTable, TablesAreApart) {
    this->add({.sv = 4, .toe = 7200});
    const auto& tables = this->survey.tables();
    EXPECT_EQ(tables.gps.count + tables.galileo.count + tables.beidou.count + tables.navic.count, 1);
    EXPECT_EQ(tables.glonass.count, 0);
}

// ---- dates ----

TYPED_TEST(KeplerTable, DateIsThatOfReceptionAndTheTimeOfDayThatOfToe) {
    this->survey.feed(LogBuilder().time(86399000).rd(2024, 3, 5, 1));
    this->add({.toe = 86400 + 3725});
    const ClockReading& epoch = this->table().slots.at(0).epoch;
    EXPECT_EQ(epoch.year, 2024.0F);
    EXPECT_EQ(epoch.month, 3.0F);
    EXPECT_EQ(epoch.day, 5.0F);
    EXPECT_EQ(epoch.hour, 1.0F);
    EXPECT_EQ(epoch.minute, 2.0F);
    EXPECT_EQ(epoch.second, 5.0F);
    EXPECT_EQ(epoch.timeBase, 1.0F);
}

TYPED_TEST(KeplerTable, WithoutADateTheYearIs0) {
    this->survey.feed(LogBuilder().time(3600000));
    this->add({.toe = 7200});
    EXPECT_EQ(this->year(0), 0.0F);
    EXPECT_EQ(this->table().slots.at(0).epoch.month, 0.0F);
    EXPECT_EQ(this->table().slots.at(0).epoch.hour, 2.0F);
    EXPECT_TRUE(this->survey.clocks.dateStillMissing);
}

TYPED_TEST(KeplerTable, FirstDatedEntryGivesItsDateToThoseBefore) {
    this->add({.toe = 7200});
    this->add({.toe = 10800});
    this->date(2024, 3, 5, 2);
    EXPECT_EQ(this->year(0), 0.0F);  // only an entry brings it
    this->add({.toe = 14400});
    for (const std::size_t i : {0U, 1U}) {
        const ClockReading& epoch = this->table().slots.at(i).epoch;
        EXPECT_EQ(epoch.year, 2024.0F);
        EXPECT_EQ(epoch.month, 3.0F);
        EXPECT_EQ(epoch.day, 5.0F);
        EXPECT_EQ(epoch.timeBase, 2.0F);
        EXPECT_EQ(epoch.hour, i == 0 ? 2.0F : 3.0F);
    }
}

TYPED_TEST(KeplerTable, DatedDuplicateBackFillsToo) {
    this->add({.toe = 7200});
    this->date(2024);
    this->add({.toe = 7200});
    EXPECT_EQ(this->table().count, 1);
    EXPECT_EQ(this->year(0), 2024.0F);
}

TYPED_TEST(KeplerTable, BackFillTakesTheDateOfTheMomentAndNotTheFirstOne) {
    this->add({.toe = 7200});
    this->date(2023);
    this->date(2024, 3, 5);
    this->add({.toe = 14400});
    EXPECT_EQ(this->year(0), 2024.0F);
}

TYPED_TEST(KeplerTable, DatedFirstEntryKeepsLaterYearsOf0) {
    this->date(2024);
    this->add({.toe = 1});
    this->date(0);
    this->add({.toe = 2});
    this->date(2025);
    this->add({.toe = 3});
    EXPECT_EQ(this->year(0), 2024.0F);
    EXPECT_EQ(this->year(1), 0.0F);
    EXPECT_EQ(this->year(2), 2025.0F);
}

// The mark of a missing date is set anew by each entry without one; here it hides the date of slot 1.
TYPED_TEST(KeplerTable, BackFillWaitsForTheMarkAndStopsAtTheFirstDatedSlot) {
    this->add({.toe = 1});
    this->survey.clocks.epoch.year = 2024;
    this->survey.clocks.dateStillMissing = true;
    this->add({.toe = 2});
    EXPECT_EQ(this->year(0), 0.0F);
    EXPECT_EQ(this->year(1), 2024.0F);
    this->survey.clocks.epoch.year = 0;
    this->add({.toe = 3});
    this->date(2025);
    this->add({.toe = 4});
    EXPECT_EQ(this->year(0), 2025.0F);
    EXPECT_EQ(this->year(1), 2024.0F);
    EXPECT_EQ(this->year(2), 0.0F);
}

TEST(NavigationTables, EntryOfOneTableBackFillsNoOther) {
    NavSurvey survey;
    survey.feed(LogBuilder().ge123({}).ie({}).rd(2024, 3, 5).en({}).ie({.toe = 1}));
    EXPECT_EQ(survey.tables().gps.slots.at(0).epoch.year, 0.0F);
    EXPECT_EQ(survey.tables().navic.slots.at(0).epoch.year, 2024.0F);
}

// ---- capacity ----

KeplerBlock distinct(std::int32_t i) {
    return {.sv = static_cast<std::uint8_t>(i % 100 + 1), .tot = static_cast<std::uint32_t>(i), .toe = i};
}

TYPED_TEST(KeplerTable, Takes10000EntriesAndNoMore) {
    for (std::int32_t i = 0; i < 10000; ++i) {
        this->add(distinct(i));
    }
    ASSERT_EQ(this->table().count, 10000);
    this->add(distinct(10000));
    this->add(distinct(3));
    EXPECT_EQ(this->table().count, 10000);
    ASSERT_EQ(this->table().slots.size(), 10000U);
    for (const std::size_t i : {0U, 3U, 9999U}) {
        EXPECT_EQ(this->kepler(i).tot, i);
        EXPECT_EQ(this->kepler(i).sv, i % 100 + 1);
    }
}

TEST(GlonassTable, Takes10000EntriesAndNoMore) {
    NavSurvey survey;
    for (std::int32_t tk = 0; tk <= 10000; ++tk) {
        survey.feed(LogBuilder().ne88({.sv = 5, .tk = tk}));
    }
    EXPECT_EQ(survey.tables().glonass.count, 10000);
    ASSERT_EQ(survey.tables().glonass.slots.size(), 10000U);
    EXPECT_EQ(survey.tables().glonass.slots.back().tk, 9999);
    survey.feed(LogBuilder().ne88({.sv = 5, .tk = 0}));  // a duplicate for which there is no slot
    EXPECT_EQ(survey.tables().glonass.slots.front().sv, 5);
}

TEST(GlonassTable, LastSlotIsDroppedAndTakenLikeAnyOther) {
    NavSurvey survey;
    survey.tables().navic.count = 9999;
    for (std::int32_t tk = 0; tk < 9999; ++tk) {
        survey.feed(LogBuilder().ne88({.sv = 5, .tk = tk}));
    }
    survey.feed(LogBuilder().ne88({.sv = 5, .tk = 0}));
    EXPECT_EQ(survey.tables().glonass.count, 9999);
    EXPECT_EQ(survey.tables().glonass.slots.at(9999).sv, 0);
    survey.feed(LogBuilder().ne88({.sv = 6, .tk = 0}));
    EXPECT_EQ(survey.tables().glonass.count, 10000);
    EXPECT_EQ(survey.tables().glonass.slots.at(9999).sv, 6);
}

// ---- the scan, literally, against the tables on random messages ----

// One slot as the scan sees it. `tag` tells the messages apart.
struct Slot {
    std::int32_t sv = 0;
    std::int32_t time = 0;
    unsigned flags = 0;
    std::uint32_t tag = 0;
    bool operator==(const Slot&) const = default;
};

// A table as the rules tell it: a new entry in slot `count`, then the scan from slot 0. A hit clears the
// satellite of the new entry, or of the slot `cleared` where a table has that fault.
struct LiteralTable {
    std::vector<Slot> slots = std::vector<Slot>(400);
    int count = 0;
    unsigned comparedFlags = 0;

    void store(const Slot& entry, int cleared = -1) {
        int i = count;
        slots[static_cast<std::size_t>(i)] = entry;
        for (int k = 0; k < i; ++k) {
            const Slot& newest = slots[static_cast<std::size_t>(i)];
            const Slot& other = slots[static_cast<std::size_t>(k)];
            if (newest.sv == other.sv && newest.time == other.time &&
                (newest.flags & comparedFlags) == (other.flags & comparedFlags)) {
                slots[static_cast<std::size_t>(cleared < 0 ? i : cleared)].sv = 0;
                --i;
            }
        }
        count = i + 1;
    }
};

using Random = std::mt19937;

int below(Random& random, int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
}

// The slots of a table in the form of the literal one, untouched ones as zeros.
template <class Table, class View>
std::vector<Slot> view(const Table& table, View viewOf) {
    std::vector<Slot> slots(400);
    for (std::size_t i = 0; i < table.slots.size(); ++i) {
        slots[i] = viewOf(table.slots[i]);
    }
    return slots;
}

TYPED_TEST(KeplerTable, ScanOfRandomMessagesIsTheLiteralOne) {
    Random random(20240305);
    for (int run = 0; run < 40; ++run) {
        NavSurvey messages;
        LiteralTable literal;
        literal.comparedFlags = TypeParam::comparedFlags;
        const int satellites = below(random, 8) + 1;
        const int times = below(random, 8) + 1;
        for (std::uint32_t tag = 0; tag < 300; ++tag) {
            const int sv = below(random, satellites);  // 0 too: a dead entry
            const int toe = below(random, times) - 2;
            const int flags = TypeParam::comparedFlags == 0 ? 0 : below(random, 16);
            messages.feed(TypeParam::message({.sv = static_cast<std::uint8_t>(sv), .tot = tag, .toe = toe},
                                             static_cast<std::uint8_t>(flags)));
            literal.store({sv, toe, static_cast<unsigned>(flags), tag});
        }
        const auto& table = TypeParam::table(messages);
        ASSERT_EQ(table.count, literal.count);
        ASSERT_EQ(view(table,
                       [](const auto& entry) {
                           const orbconv::KeplerBlock& kepler = entry.kepler;
                           return Slot{kepler.sv, kepler.toe, TypeParam::flags(entry), kepler.tot};
                       }),
                  literal.slots);
    }
}

TEST(GpsTable, ScanOfRandomMessagesOfAllLengthsIsTheLiteralOne) {
    Random random(7);
    for (int run = 0; run < 60; ++run) {
        NavSurvey survey;
        LiteralTable literal;
        Slot staged;
        for (std::uint32_t tag = 1; tag < 200; ++tag) {
            Slot entry = {below(random, 5), below(random, 6), 0, tag};
            const KeplerBlock block = {
                .sv = static_cast<std::uint8_t>(entry.sv), .tot = tag, .toe = entry.time};
            const int form = below(random, 5);
            if (form == 0) {
                survey.feed(LogBuilder().messageWithLength("GE", 9, ""));
                entry = staged;
                entry.sv = literal.slots[static_cast<std::size_t>(literal.count)].sv;
            } else if (form == 1) {
                survey.feed(LogBuilder().ge160({.kepler = block}));
            } else if (form == 2) {
                survey.feed(LogBuilder().ge168({.kepler = block}));
            } else {
                survey.feed(LogBuilder().ge123(block));
            }
            staged = form == 0 ? staged : entry;
            literal.store(entry);
        }
        ASSERT_EQ(survey.tables().gps.count, literal.count);
        ASSERT_EQ(view(survey.tables().gps,
                       [](const GpsEphemeris& entry) {
                           return Slot{entry.kepler.sv, entry.kepler.toe, 0, entry.kepler.tot};
                       }),
                  literal.slots);
    }
}

// Hits can come in series here: the fault makes dead entries of different satellites equal.
TEST(GlonassTable, ScanOfRandomMessagesIsTheLiteralOne) {
    Random random(11);
    for (int run = 0; run < 300; ++run) {
        NavSurvey survey;
        LiteralTable literal;
        int navicCount = 0;
        Slot staged;
        const int satellites = below(random, 6) + 1;
        const int navicEvery = below(random, 40) + 2;
        for (int tag = 1; tag < 250; ++tag) {
            if (below(random, navicEvery) == 0) {
                survey.feed(LogBuilder().ie({.toe = ++navicCount}));
            }
            if (below(random, 12) == 0) {
                survey.feed(LogBuilder().messageWithLength("NE", 5, "", Closing::none));
            } else {
                staged = {below(random, satellites), below(random, 5), 0, static_cast<std::uint32_t>(tag)};
                survey.feed(LogBuilder().ne88(
                    {.sv = static_cast<std::uint8_t>(staged.sv), .tk = staged.time, .tb = tag}));
            }
            literal.store(staged, navicCount);
        }
        ASSERT_EQ(survey.tables().glonass.count, literal.count);
        ASSERT_EQ(view(survey.tables().glonass,
                       [](const GlonassEphemeris& entry) {
                           return Slot{entry.sv, entry.tk, 0, static_cast<std::uint32_t>(entry.tb)};
                       }),
                  literal.slots);
    }
}

}  // namespace navigationTablesTest
}  // namespace
