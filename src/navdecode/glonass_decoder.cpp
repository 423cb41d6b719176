// NE.
#include "log/navigation_bodies.h"
#include "navdecode/ephemeris_decoders.h"
#include "navdecode/ephemeris_entry.h"
#include "navdecode/field_rows.h"

namespace orbconv {

namespace {

// clang-format off
constexpr std::tuple glonassRows{
    FieldRow{bodies::ne::sv,         &GlonassEphemeris::sv},
    FieldRow{bodies::ne::frequency,  &GlonassEphemeris::frequency},
    FieldRow{bodies::ne::dayNumber,  &GlonassEphemeris::dayNumber},
    FieldRow{bodies::ne::tk,         &GlonassEphemeris::tk},
    FieldRow{bodies::ne::tb,         &GlonassEphemeris::tb},
    FieldRow{bodies::ne::healthByte, &GlonassEphemeris::healthByte},
    FieldRow{bodies::ne::age,        &GlonassEphemeris::age},
    FieldRow{bodies::ne::x,          &GlonassEphemeris::x},
    FieldRow{bodies::ne::y,          &GlonassEphemeris::y},
    FieldRow{bodies::ne::z,          &GlonassEphemeris::z},
    FieldRow{bodies::ne::vx,         &GlonassEphemeris::vx},
    FieldRow{bodies::ne::vy,         &GlonassEphemeris::vy},
    FieldRow{bodies::ne::vz,         &GlonassEphemeris::vz},
    FieldRow{bodies::ne::ax,         &GlonassEphemeris::ax},
    FieldRow{bodies::ne::ay,         &GlonassEphemeris::ay},
    FieldRow{bodies::ne::az,         &GlonassEphemeris::az},
    FieldRow{bodies::ne::tauN,       &GlonassEphemeris::tauN},
    FieldRow{bodies::ne::gamma,      &GlonassEphemeris::gamma},
};
// clang-format on

constexpr float moscowHours = 3.0F;

// Deliberate: the three hours are taken from the hour alone. The date stays, and early times give an hour
// that is negative or 0.
void setGlonassTimeOfDay(ClockReading& epoch, std::int32_t tb) {
    setTimeOfDay(epoch, tb);
    const auto secondOfDay = static_cast<float>(tb % 86400);
    epoch.hour = static_cast<float>(static_cast<std::int32_t>(secondOfDay / 3600.0F - moscowHours));
}

std::uint64_t glonassKey(std::int32_t sv, std::int32_t tk) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(sv)) << 32 | static_cast<std::uint32_t>(tk);
}

// Deliberate: a hit clears not the new entry but the slot numbered by the NavIC table's count, and the
// scan goes on with the entry before. Cleared entries can then equal others, so that one message can have
// several hits and a live entry can stand past the count.
void appendGlonass(EphemerisTable<GlonassEphemeris>& table, std::int32_t navicCount) {
    auto& keys = table.keys;
    std::int32_t i = table.count;
    const GlonassEphemeris& entry = table.slots[static_cast<std::size_t>(i)];
    keys[static_cast<std::size_t>(i)] = glonassKey(entry.sv, entry.tk);
    for (std::int32_t k = 0; k < i; ++k) {
        if (keys[static_cast<std::size_t>(i)] != keys[static_cast<std::size_t>(k)]) {
            continue;
        }
        const auto cleared = static_cast<std::size_t>(navicCount);
        if (cleared < table.slots.size()) {
            table.slots[cleared].sv = 0;
            keys[cleared] = glonassKey(0, table.slots[cleared].tk);
        }
        --i;
    }
    table.count = i + 1;
}

}  // namespace

void decodeGlonassEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    GlonassEphemeris* const entry = tables.glonass.nextSlot();
    if (entry == nullptr) {
        return;
    }
    loadFields(staging.body(rowOf("NE")), glonassRows, *entry);
    setRecordDate(entry->epoch, clocks.epoch);
    setGlonassTimeOfDay(entry->epoch, entry->tb);
    appendGlonass(tables.glonass, tables.navic.count);
}

}  // namespace orbconv
