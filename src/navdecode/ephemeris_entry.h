// The steps of a new ephemeris that do not depend on its message: type, date and time of day, the date of
// entries that came too early for one, duplicates. A new entry stands in slot `count` of its table until it
// counts.
#pragma once

#include <algorithm>
#include <cstdint>

#include "log/receiver_clock.h"
#include "navdecode/navigation_tables.h"

namespace orbconv {

// Sets the message type of a slot. Deliberate: where no flag tells it, the slot keeps the type that it held.
inline void setNavType(NavType& held, NavType told) {
    held = told != NavType::none ? told : held;
}

// The date and time base of the epoch clock; hour, minute and second are left as they were.
void setRecordDate(ClockReading& epoch, const EpochClock& clock);

// Hour, minute and second of `toe`'s day, in single precision.
void setTimeOfDay(ClockReading& epoch, std::int32_t toe);

// If the new entry has a date, gives it to the entries that came before the first date of their table; if it
// has none, leaves the mark of a date that is still missing. For every table but GLONASS.
template <class Entry>
void backFillDate(EphemerisTable<Entry>& table, ReceiverClocks& clocks) {
    const auto entry = static_cast<std::size_t>(table.count);
    if (table.slots[entry].epoch.year == 0.0F) {
        clocks.dateStillMissing = true;
        return;
    }
    if (clocks.dateStillMissing) {
        return;
    }
    for (std::size_t k = 0; k < entry && table.slots[k].epoch.year == 0.0F; ++k) {
        setRecordDate(table.slots[k].epoch, clocks.epoch);
    }
}

// Date, back-fill and time of day of the new entry of a table with Kepler elements.
template <class Entry>
void stampNewEntry(EphemerisTable<Entry>& table, ReceiverClocks& clocks) {
    Entry& entry = table.slots[static_cast<std::size_t>(table.count)];
    setRecordDate(entry.epoch, clocks.epoch);
    backFillDate(table, clocks);
    setTimeOfDay(entry.epoch, entry.kepler.toe);
}

// Ends the decoding of the new entry: drops it if its key was seen, otherwise counts it. The first entry of a
// key stays. The keys below the count all differ, so there is one hit at most. For every table but GLONASS.
template <class Entry>
void appendUnlessSeen(EphemerisTable<Entry>& table, std::uint64_t key) {
    const auto i = static_cast<std::size_t>(table.count);
    const auto end = table.keys.begin() + table.count;
    if (std::find(table.keys.begin(), end, key) != end) {
        table.slots[i].kepler.sv = 0;  // the slot is used again by the next message
        return;
    }
    table.keys[i] = key;
    ++table.count;
}

}  // namespace orbconv
