// The sorts against the passes that define them, sweep by sweep.
#include "navfile/table_order.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <random>

#include "support/nav_survey.h"

namespace {

using namespace orbconv;

// What a sort looks at of an entry, and a number that tells entries apart.
struct Key {
    std::int32_t time = 0;
    std::int32_t sv = 0;
    unsigned navFlags = 0;
    unsigned tag = 0;
    bool operator==(const Key&) const = default;
};
using Keys = std::vector<Key>;

std::ostream& operator<<(std::ostream& out, const Key& key) {
    return out << "{" << key.time << ", " << key.sv << ", " << key.navFlags << " #" << key.tag << "}";
}

// ---- the passes as the rules tell them ----

using Rule = bool (*)(const Key& left, const Key& right);

bool byTime(const Key& left, const Key& right) {
    return left.time > right.time && left.time != 0;
}
bool bySatellite(const Key& left, const Key& right) {
    return left.sv > right.sv && left.time == right.time && left.time != 0;
}
bool byInavFlag(const Key& left, const Key& right) {
    return (left.navFlags & 1U) != 0 && (right.navFlags & 1U) == 0 && left.sv == right.sv && left.sv != 0;
}

// As many sweeps as the table has entries, none ended early.
Keys literalPass(Keys keys, Rule rule) {
    for (std::size_t sweep = 0; sweep < keys.size(); ++sweep) {
        for (std::size_t k = 0; k + 1 < keys.size(); ++k) {
            if (rule(keys[k], keys[k + 1])) {
                std::swap(keys[k], keys[k + 1]);
            }
        }
    }
    return keys;
}

Keys literalSort(const Keys& keys, const std::vector<Rule>& rules) {
    Keys sorted = keys;
    for (const Rule rule : rules) {
        sorted = literalPass(sorted, rule);
    }
    return sorted;
}

// ---- the five tables ----

// How keys get into a table and out of it again. The tag rides in a field that no sort looks at.
template <auto Sort, auto Table>
struct KeplerSystem {
    static void sort(NavigationTables& tables) { Sort(tables); }
    static auto& table(NavigationTables& tables) { return tables.*Table; }
    static std::vector<Rule> rules() { return {byTime, bySatellite}; }

    // NavIC has no flags of its own.
    static auto& flagsOf(auto& entry) {
        if constexpr (requires { entry.navFlags; }) {
            return entry.navFlags;
        } else {
            return entry.kepler.l2Flags;
        }
    }
    static void put(auto& entry, const Key& key) {
        entry.kepler.toe = key.time;
        entry.kepler.sv = key.sv;
        flagsOf(entry) = static_cast<std::uint8_t>(key.navFlags);
        entry.kepler.tot = key.tag;
        entry.epoch.year = static_cast<float>(key.tag);
    }
    // An entry moves as a whole.
    static Key get(const auto& entry) {
        EXPECT_EQ(entry.epoch.year, static_cast<float>(entry.kepler.tot));
        return {entry.kepler.toe, entry.kepler.sv, flagsOf(entry), entry.kepler.tot};
    }
};

using Gps = KeplerSystem<sortGpsTable, &NavigationTables::gps>;
using Beidou = KeplerSystem<sortBeidouTable, &NavigationTables::beidou>;
using Navic = KeplerSystem<sortNavicTable, &NavigationTables::navic>;
struct Galileo : KeplerSystem<sortGalileoTable, &NavigationTables::galileo> {
    static std::vector<Rule> rules() { return {byTime, bySatellite, byInavFlag}; }
};
struct Glonass {
    static void sort(NavigationTables& tables) { sortGlonassTable(tables); }
    static auto& table(NavigationTables& tables) { return tables.glonass; }
    static std::vector<Rule> rules() { return {byTime, bySatellite}; }

    static void put(GlonassEphemeris& entry, const Key& key) {
        entry.tb = key.time;
        entry.sv = key.sv;
        entry.healthByte = static_cast<std::uint8_t>(key.navFlags);
        entry.tk = -static_cast<std::int32_t>(key.tag);  // not what the sort goes by
    }
    static Key get(const GlonassEphemeris& entry) {
        return {entry.tb, entry.sv, entry.healthByte, static_cast<unsigned>(-entry.tk)};
    }
};

template <class System>
class TableOrder : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();

    // The table's slots after its sort; the last `uncounted` of the keys stand past the count.
    Keys sorted(const Keys& keys, int uncounted = 0) {
        auto& table = System::table(*tables);
        table = {};
        for (const Key& key : keys) {
            System::put(testsupport::append(table), key);
        }
        table.count -= uncounted;
        System::sort(*tables);
        Keys result;
        for (const auto& entry : table.slots) {
            result.push_back(System::get(entry));
        }
        return result;
    }

    void expectLiteral(const Keys& keys) { ASSERT_EQ(sorted(keys), literalSort(keys, System::rules())); }
};

using Systems = testing::Types<Gps, Glonass, Galileo, Beidou, Navic>;
TYPED_TEST_SUITE(TableOrder, Systems);

// ---- cases by hand ----

TYPED_TEST(TableOrder, EmptyTableIsLeftAlone) {
    EXPECT_EQ(this->sorted({}), Keys{});
}

TYPED_TEST(TableOrder, OneEntryStaysAsItIs) {
    EXPECT_EQ(this->sorted({{7200, 5, 1, 1}}), (Keys{{7200, 5, 1, 1}}));
}

TYPED_TEST(TableOrder, IsByTimeAndThenBySatellite) {
    EXPECT_EQ(this->sorted({{7200, 9, 0, 1}, {3600, 5, 0, 2}, {7200, 2, 0, 3}, {3600, 1, 0, 4}}),
              (Keys{{3600, 1, 0, 4}, {3600, 5, 0, 2}, {7200, 2, 0, 3}, {7200, 9, 0, 1}}));
}

TYPED_TEST(TableOrder, EqualEntriesKeepTheirOrder) {
    const Keys keys = {{7200, 5, 2, 1}, {7200, 5, 4, 2}, {7200, 5, 2, 3}};
    EXPECT_EQ(this->sorted(keys), keys);
}

TYPED_TEST(TableOrder, TimesOf0ComeFirstInTheOrderOfTheTable) {
    EXPECT_EQ(this->sorted({{7200, 9, 0, 1}, {0, 8, 0, 2}, {3600, 1, 0, 3}, {0, 3, 0, 4}}),
              (Keys{{0, 8, 0, 2}, {0, 3, 0, 4}, {3600, 1, 0, 3}, {7200, 9, 0, 1}}));
}

// A zero on the left is never exchanged, so that a negative time does not get past it.
TYPED_TEST(TableOrder, TimeOf0IsABarrierForNegativeTimes) {
    EXPECT_EQ(this->sorted({{5, 1, 0, 1}, {0, 1, 0, 2}, {-5, 1, 0, 3}, {-7, 1, 0, 4}}),
              (Keys{{0, 1, 0, 2}, {-7, 1, 0, 4}, {-5, 1, 0, 3}, {5, 1, 0, 1}}));
}

TYPED_TEST(TableOrder, NegativeTimesAreInOrderOfSatelliteToo) {
    EXPECT_EQ(this->sorted({{-5, 9, 0, 1}, {-5, 2, 0, 2}}), (Keys{{-5, 2, 0, 2}, {-5, 9, 0, 1}}));
}

TYPED_TEST(TableOrder, DeadEntriesTakePart) {
    EXPECT_EQ(this->sorted({{7200, 5, 0, 1}, {7200, 0, 0, 2}, {3600, 0, 0, 3}}),
              (Keys{{3600, 0, 0, 3}, {7200, 0, 0, 2}, {7200, 5, 0, 1}}));
}

TYPED_TEST(TableOrder, SlotPastTheCountStaysWhereItIs) {
    EXPECT_EQ(this->sorted({{7200, 5, 0, 1}, {3600, 5, 0, 2}, {1800, 5, 0, 3}}, 1),
              (Keys{{3600, 5, 0, 2}, {7200, 5, 0, 1}, {1800, 5, 0, 3}}));
}

TYPED_TEST(TableOrder, ComparisonIsSignedOverTheWholeRange) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(this->sorted({{highest, 1, 0, 1}, {lowest, 1, 0, 2}, {1, 1, 0, 3}}),
              (Keys{{lowest, 1, 0, 2}, {1, 1, 0, 3}, {highest, 1, 0, 1}}));
}

TEST(BeidouOrder, FlagsHaveNoSay) {
    auto tables = std::make_unique<NavigationTables>();
    for (const unsigned flags : {1U, 8U, 2U}) {
        Beidou::put(testsupport::append(tables->beidou), {7200, 6, flags, flags});
    }
    sortBeidouTable(*tables);
    EXPECT_EQ(tables->beidou.slots[0].navFlags, 1);
    EXPECT_EQ(tables->beidou.slots[1].navFlags, 8);
    EXPECT_EQ(tables->beidou.slots[2].navFlags, 2);
}

class GalileoOrder : public TableOrder<Galileo> {};

TEST_F(GalileoOrder, EntryWithoutTheInavFlagStandsFirst) {
    EXPECT_EQ(sorted({{7200, 5, 1, 1}, {7200, 5, 2, 2}}), (Keys{{7200, 5, 2, 2}, {7200, 5, 1, 1}}));
}

TEST_F(GalileoOrder, OnlyBit0IsLookedAt) {
    const Keys keys = {{7200, 5, 4, 1}, {7200, 5, 2, 2}};
    EXPECT_EQ(sorted(keys), keys);
    EXPECT_EQ(sorted({{7200, 5, 5, 1}, {7200, 5, 6, 2}}), (Keys{{7200, 5, 6, 2}, {7200, 5, 5, 1}}));
}

TEST_F(GalileoOrder, FlagPassDoesNotLookAtTheTime) {
    EXPECT_EQ(sorted({{3600, 5, 1, 1}, {7200, 5, 2, 2}}), (Keys{{7200, 5, 2, 2}, {3600, 5, 1, 1}}));
}

TEST_F(GalileoOrder, FlagPassIsStoppedByAnotherSatellite) {
    const Keys keys = {{3600, 5, 1, 1}, {7200, 4, 2, 2}, {10800, 5, 2, 3}};
    EXPECT_EQ(sorted(keys), keys);
}

TEST_F(GalileoOrder, FlagPassLeavesDeadEntriesAlone) {
    const Keys keys = {{7200, 0, 1, 1}, {7200, 0, 2, 2}};
    EXPECT_EQ(sorted(keys), keys);
}

TEST_F(GalileoOrder, FlagPassTakesTimesOf0Too) {
    EXPECT_EQ(sorted({{0, 5, 1, 1}, {0, 5, 2, 2}}), (Keys{{0, 5, 2, 2}, {0, 5, 1, 1}}));
}

// ---- random tables ----

// Keys from narrow ranges: ties, zeros and dead entries abound.
Keys randomKeys(std::mt19937& random, std::size_t size, int lowestTime, int times, int satellites) {
    Keys keys(size);
    unsigned tag = 0;
    for (Key& key : keys) {
        key.time = lowestTime + static_cast<int>(random() % static_cast<unsigned>(times));
        key.sv = static_cast<int>(random() % static_cast<unsigned>(satellites));
        key.navFlags = random() % 8;
        key.tag = ++tag;
    }
    return keys;
}

TYPED_TEST(TableOrder, RandomTablesAreInTheOrderOfThePasses) {
    std::mt19937 random(64);
    for (int run = 0; run < 2000; ++run) {
        const std::size_t size = random() % 40;
        const int lowest = -static_cast<int>(random() % 6);  // 0: no negative times
        const int times = static_cast<int>(random() % 10) + 1;
        const int satellites = static_cast<int>(random() % 6) + 1;
        this->expectLiteral(randomKeys(random, size, lowest, times, satellites));
    }
}

TYPED_TEST(TableOrder, RandomTablesWithoutZerosAreInTheOrderOfThePasses) {
    std::mt19937 random(65);
    for (int run = 0; run < 500; ++run) {
        this->expectLiteral(randomKeys(random, random() % 60, 1, 100, 40));
        this->expectLiteral(randomKeys(random, random() % 60, -100, 100, 40));
    }
}

TYPED_TEST(TableOrder, SmallTablesOfAllKeysAreInTheOrderOfThePasses) {
    for (int code = 0; code < 6 * 6 * 6 * 6; ++code) {
        Keys keys;
        for (int rest = code, i = 0; i < 4; ++i, rest /= 6) {
            keys.push_back(
                {rest % 3 - 1, rest / 3 % 2 + 1, static_cast<unsigned>(i), static_cast<unsigned>(i)});
        }
        this->expectLiteral(keys);
    }
}

TYPED_TEST(TableOrder, FullTableInReverseIsSortedByTime) {
    Keys keys;
    for (std::int32_t i = 10000; i > 0; --i) {
        keys.push_back({i, i % 40 + 1, static_cast<unsigned>(i % 8), static_cast<unsigned>(i)});
    }
    const Keys result = this->sorted(keys);
    EXPECT_EQ(result.front().time, 1);
    EXPECT_EQ(result.back().time, 10000);
}

}  // namespace
