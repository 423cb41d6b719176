// EN and CN.
#include "log/navigation_bodies.h"
#include "navdecode/ephemeris_decoders.h"
#include "navdecode/ephemeris_entry.h"
#include "navdecode/field_rows.h"

namespace orbconv {

namespace {

// clang-format off
constexpr std::tuple galileoRows{
    FieldRow{bodies::en::bgdE5a,   &GalileoEphemeris::bgdE5a},
    FieldRow{bodies::en::bgdE5b,   &GalileoEphemeris::bgdE5b},
    FieldRow{bodies::en::ai0,      &GalileoEphemeris::ai0},
    FieldRow{bodies::en::ai1,      &GalileoEphemeris::ai1},
    FieldRow{bodies::en::ai2,      &GalileoEphemeris::ai2},
    FieldRow{bodies::en::ionFlags, &GalileoEphemeris::ionFlags},
    FieldRow{bodies::en::navFlags, &GalileoEphemeris::navFlags},
};

constexpr std::tuple beidouRows{
    FieldRow{bodies::cn::tgd2,     &BeidouEphemeris::tgd2},
    FieldRow{bodies::cn::navFlags, &BeidouEphemeris::navFlags},
};
constexpr std::tuple beidouAgeRows{
    FieldRow{bodies::cn134::aodc, &BeidouEphemeris::aodc},
    FieldRow{bodies::cn134::aode, &BeidouEphemeris::aode},
};
constexpr std::tuple beidouRateRows{
    FieldRow{staged(bodies::cn152::adot, cnRatesShift),      &BeidouEphemeris::adot},
    FieldRow{staged(bodies::cn152::deltaNDot, cnRatesShift), &BeidouEphemeris::deltaNDot},
    FieldRow{staged(bodies::cn152::sisai, cnRatesShift),     &BeidouEphemeris::sisai},
};
// clang-format on

// Deliberate: the data sources of a slot that a dropped message used stay in it.
void addDataSources(std::int32_t& sources, NavType type) {
    if (type != NavType::none) {
        sources |= type == NavType::inav ? inavDataSources : fnavDataSources;
    }
}

}  // namespace

void decodeGalileoEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    GalileoEphemeris* const entry = tables.galileo.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const body = staging.body(rowOf("EN"));
    entry->kepler.sv = bodies::kepler::sv.load(body);
    decodeKeplerBlock(body, galileoWeekOffset, entry->kepler);
    const std::int8_t sisaIndex = bodies::kepler::uraIndex.load(body);
    entry->kepler.accuracy = sisaIndex;
    entry->sisa = sisaInMetres(sisaIndex).value_or(entry->sisa);  // Deliberate: the slot keeps what it held
    loadFields(body, galileoRows, *entry);
    const NavType type = navTypeOf(entry->navFlags, galileoNavTypes);
    setNavType(entry->navType, type);
    addDataSources(entry->dataSources, type);
    stampNewEntry(tables.galileo, clocks);
    appendUnlessSeen(tables.galileo, duplicateKey(entry->kepler, entry->navFlags));
}

void decodeBeidouEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    BeidouEphemeris* const entry = tables.beidou.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const area = staging.body(rowOf("CN"));
    const std::int32_t length = staging.bodyLength[rowOf("CN")];
    entry->kepler.sv = bodies::kepler::sv.load(area);
    decodeKeplerBlock(area, beidouWeekOffset, entry->kepler);
    entry->kepler.accuracy = accuracyInMetres(bodies::kepler::uraIndex.load(area));
    loadFields(area, beidouRows, *entry);
    setNavType(entry->navType, beidouNavType(entry->navFlags, entry->kepler.sv));
    if (length == bodies::lengthOf(bodies::cn134::bytes)) {
        loadFields(area, beidouAgeRows, *entry);
    } else if (length == bodies::lengthOf(bodies::cn152::bytes)) {
        loadFields(area, beidouRateRows, *entry);
    }
    // Deliberate: of length 160 nothing further is taken, and the entry keeps what its slot held.
    stampNewEntry(tables.beidou, clocks);
    appendUnlessSeen(tables.beidou, duplicateKey(entry->kepler, entry->navFlags));
}

}  // namespace orbconv
