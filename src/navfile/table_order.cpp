#include "navfile/table_order.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace orbconv {

namespace {

std::int32_t satelliteOf(const GlonassEphemeris& entry) {
    return entry.sv;
}
template <class Entry>
std::int32_t satelliteOf(const Entry& entry) {
    return entry.kepler.sv;
}

std::int32_t timeOf(const GlonassEphemeris& entry) {
    return entry.tb;
}
template <class Entry>
std::int32_t timeOf(const Entry& entry) {
    return entry.kepler.toe;
}

// The order is made over slot numbers; each entry then moves once. Every pass gives what as many sweeps of
// exchanges of neighbours as there are entries would give, ties included.
using Slots = std::vector<std::size_t>;
using SlotIterator = Slots::iterator;

// Calls action(begin, end) for each maximal run of neighbours of which `joins` holds pairwise.
template <class Joins, class Action>
void forEachRun(SlotIterator begin, SlotIterator end, Joins joins, Action action) {
    while (begin != end) {
        auto runEnd = begin + 1;
        while (runEnd != end && joins(*(runEnd - 1), *runEnd)) {
            ++runEnd;
        }
        action(begin, runEnd);
        begin = runEnd;
    }
}

// Pass 1: neighbours change places if the left time is later and not 0. So positive times pass everything
// before them and end up in order at the end, while a 0 stays put and no negative time passes it.
template <class Entry>
void orderByTime(Slots& order, const std::vector<Entry>& entries) {
    const auto time = [&](std::size_t slot) { return timeOf(entries[slot]); };
    const auto earlier = [&](std::size_t a, std::size_t b) { return time(a) < time(b); };
    const auto positives =
        std::stable_partition(order.begin(), order.end(), [&](std::size_t slot) { return time(slot) <= 0; });
    std::stable_sort(positives, order.end(), earlier);
    const auto bothNegative = [&](std::size_t a, std::size_t b) { return time(a) < 0 && time(b) < 0; };
    forEachRun(order.begin(), positives, bothNegative,
               [&](SlotIterator begin, SlotIterator end) { std::stable_sort(begin, end, earlier); });
}

// Pass 2: neighbours of one time that is not 0 are put in order of satellite.
template <class Entry>
void orderBySatellite(Slots& order, const std::vector<Entry>& entries) {
    const auto sameTime = [&](std::size_t a, std::size_t b) {
        return timeOf(entries[a]) == timeOf(entries[b]) && timeOf(entries[a]) != 0;
    };
    const auto bySatellite = [&](std::size_t a, std::size_t b) {
        return satelliteOf(entries[a]) < satelliteOf(entries[b]);
    };
    forEachRun(order.begin(), order.end(), sameTime,
               [&](SlotIterator begin, SlotIterator end) { std::stable_sort(begin, end, bySatellite); });
}

// Pass 3: neighbours of one live satellite, whatever their times: those without flag bit 0 go first.
void orderByType(Slots& order, const std::vector<GalileoEphemeris>& entries) {
    const auto sameSatellite = [&](std::size_t a, std::size_t b) {
        return satelliteOf(entries[a]) == satelliteOf(entries[b]) && satelliteOf(entries[a]) != 0;
    };
    const auto withoutBit0 = [&](std::size_t slot) { return (entries[slot].navFlags & 0x01U) == 0; };
    forEachRun(order.begin(), order.end(), sameSatellite,
               [&](SlotIterator begin, SlotIterator end) { std::stable_partition(begin, end, withoutBit0); });
}

template <class Entry>
Slots orderOf(const EphemerisTable<Entry>& table) {
    Slots order(static_cast<std::size_t>(std::max(table.count, 0)));
    std::iota(order.begin(), order.end(), std::size_t{0});
    orderByTime(order, table.slots);
    orderBySatellite(order, table.slots);
    return order;
}

template <class Entry>
void arrange(EphemerisTable<Entry>& table, const Slots& order) {
    std::vector<Entry> arranged;
    arranged.reserve(order.size());
    for (const std::size_t slot : order) {
        arranged.push_back(table.slots[slot]);
    }
    std::copy(arranged.begin(), arranged.end(), table.slots.begin());
}

}  // namespace

void sortGpsTable(NavigationTables& tables) {
    arrange(tables.gps, orderOf(tables.gps));
}

void sortGlonassTable(NavigationTables& tables) {
    arrange(tables.glonass, orderOf(tables.glonass));
}

void sortGalileoTable(NavigationTables& tables) {
    Slots order = orderOf(tables.galileo);
    orderByType(order, tables.galileo.slots);
    arrange(tables.galileo, order);
}

void sortBeidouTable(NavigationTables& tables) {
    arrange(tables.beidou, orderOf(tables.beidou));
}

void sortNavicTable(NavigationTables& tables) {
    arrange(tables.navic, orderOf(tables.navic));
}

}  // namespace orbconv
