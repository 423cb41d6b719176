// NE.
#include "navdecode/ephemeris_decoders.h"
#include "navdecode/kepler_block.h"

namespace orbconv {

namespace {

// The body up to the last field that a file shows. flagsByte and tauSys go to no file and are named for
// the tiling alone.
namespace neBody {
constexpr BodyField<std::uint8_t> sv{0};
constexpr BodyField<std::int8_t> frequency{1};
constexpr BodyField<std::uint16_t> dayNumber{2};
constexpr BodyField<std::int32_t> tk{4};
constexpr BodyField<std::int32_t> tb{8};
constexpr BodyField<std::uint8_t> healthByte{12};
constexpr BodyField<std::uint8_t> age{13};
constexpr BodyField<std::uint8_t> flagsByte{14};
constexpr BodyField<double> x{15};
constexpr BodyField<double> y{23};
constexpr BodyField<double> z{31};
constexpr BodyField<float> vx{39};
constexpr BodyField<float> vy{43};
constexpr BodyField<float> vz{47};
constexpr BodyField<float> ax{51};
constexpr BodyField<float> ay{55};
constexpr BodyField<float> az{59};
constexpr BodyField<double> tauSys{63};
constexpr BodyField<float> tauN{71};
constexpr BodyField<float> gamma{75};
static_assert(tileBody(0, 79, sv, frequency, dayNumber, tk, tb, healthByte, age, flagsByte, x, y, z, vx, vy,
                       vz, ax, ay, az, tauSys, tauN, gamma));
}  // namespace neBody

constexpr float moscowHours = 3.0F;

// Deliberate: the three hours are taken from the hour alone. The date stays, and early times give an hour
// that is negative or 0.
void setGlonassTimeOfDay(RecordEpoch& epoch, std::int32_t tb) {
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

void decodeGlonassEphemeris(const MessageStaging& staging, const ReceiverClocks& clocks,
                            NavigationTables& tables) {
    GlonassEphemeris* const entry = tables.glonass.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const body = staging.body(rowOf("NE"));
    entry->sv = neBody::sv.load(body);
    entry->frequency = neBody::frequency.load(body);
    entry->dayNumber = neBody::dayNumber.load(body);
    entry->tk = neBody::tk.load(body);
    entry->tb = neBody::tb.load(body);
    entry->healthByte = neBody::healthByte.load(body);
    entry->age = neBody::age.load(body);
    entry->x = neBody::x.load(body);
    entry->y = neBody::y.load(body);
    entry->z = neBody::z.load(body);
    entry->vx = neBody::vx.load(body);
    entry->vy = neBody::vy.load(body);
    entry->vz = neBody::vz.load(body);
    entry->ax = neBody::ax.load(body);
    entry->ay = neBody::ay.load(body);
    entry->az = neBody::az.load(body);
    entry->tauN = neBody::tauN.load(body);
    entry->gamma = neBody::gamma.load(body);
    setRecordDate(entry->epoch, clocks.epoch);
    setGlonassTimeOfDay(entry->epoch, entry->tb);
    entry->epoch.timeBase = clocks.epoch.timeBase;
    appendGlonass(tables.glonass, tables.navic.count);
}

}  // namespace orbconv
