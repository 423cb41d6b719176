// GE and IE.
#include "log/navigation_bodies.h"
#include "navdecode/ephemeris_decoders.h"
#include "navdecode/ephemeris_entry.h"
#include "navdecode/field_rows.h"

namespace orbconv {

namespace {

// clang-format off
constexpr std::tuple modernRows{
    FieldRow{bodies::ge::navFlags,            &GpsEphemeris::navFlags},
    FieldRow{bodies::ge::cnavToe,             &GpsEphemeris::cnavToe},
    FieldRow{bodies::ge::cnavTop,             &GpsEphemeris::cnavTop},
    FieldRow{bodies::ge::adot,                &GpsEphemeris::adot},
    FieldRow{bodies::ge::deltaNDot,           &GpsEphemeris::deltaNDot},
    FieldRow{bodies::ge::uraiEd,              &GpsEphemeris::uraiEd},
    FieldRow{bodies::ge::uraiNed0,            &GpsEphemeris::uraiNed0},
    FieldRow{bodies::ge::uraiNed1,            &GpsEphemeris::uraiNed1},
    FieldRow{bodies::ge::uraiNed2,            &GpsEphemeris::uraiNed2},
    FieldRow{staged(bodies::ge160::af0Delta, ge160Shift), &GpsEphemeris::af0Delta},  // of both long forms
};
constexpr std::tuple pairRows{
    FieldRow{staged(bodies::ge160::iscL1cp, ge160Shift), &GpsEphemeris::iscL1cp},
    FieldRow{staged(bodies::ge160::iscL1cd, ge160Shift), &GpsEphemeris::iscL1cd},
};
constexpr std::tuple quartetRows{
    FieldRow{bodies::ge168::iscL1ca, &GpsEphemeris::iscL1ca},
    FieldRow{bodies::ge168::iscL2c,  &GpsEphemeris::iscL2c},
    FieldRow{bodies::ge168::iscL5i5, &GpsEphemeris::iscL5i5},
    FieldRow{bodies::ge168::iscL5q5, &GpsEphemeris::iscL5q5},
};
// clang-format on

constexpr std::int32_t legacyLength = bodies::lengthOf(bodies::kepler::bytes);
constexpr std::int32_t lengthWithPair = bodies::lengthOf(bodies::ge160::bytes);
constexpr std::int32_t lengthWithQuartet = bodies::lengthOf(bodies::ge168::bytes);

constexpr std::int16_t fitIntervalLimit = 240;  // of iodc
constexpr float shortFitInterval = 4.0F;        // hours

void loadModernFields(const std::uint8_t* area, GpsEphemeris& entry) {
    entry.kepler.sv = bodies::kepler::sv.load(area);
    loadFields(area, modernRows, entry);
    setNavType(entry.navType, navTypeOf(entry.navFlags, gpsNavTypes));
}

// Deliberate: a message of length 160 brings the pair and stores the quartet, one of length 168 the other
// way round, so what an entry gets is what the last message of the other length brought. And only length
// 160 turns two rates to radians.
void loadCrossedFields(const std::uint8_t* area, std::int32_t length, GpsEphemeris& entry) {
    if (length == lengthWithPair) {
        entry.adot = toRadians(entry.adot);
        entry.deltaNDot = toRadians(entry.deltaNDot);
        loadFields(area, quartetRows, entry);
    } else {
        loadFields(area, pairRows, entry);
    }
}

}  // namespace

void decodeGpsEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    GpsEphemeris* const entry = tables.gps.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const area = staging.body(rowOf("GE"));
    const std::int32_t length = staging.bodyLength[rowOf("GE")];
    if (length == legacyLength) {
        entry->navType = NavType::lnav;
        entry->kepler.sv = bodies::kepler::sv.load(area);
    }
    // Deliberate: a length that the reader knows no form for repeats the body before it into the next slot,
    // under the satellite that the slot held.
    decodeKeplerBlock(area, gpsWeekOffset, entry->kepler);
    entry->kepler.accuracy = accuracyInMetres(bodies::kepler::uraIndex.load(area));
    if (entry->kepler.iodc < fitIntervalLimit) {
        entry->fitInterval = shortFitInterval;
    }
    if (length == lengthWithPair || length == lengthWithQuartet) {
        loadModernFields(area, *entry);
        loadCrossedFields(area, length, *entry);
    }
    stampNewEntry(tables.gps, clocks);
    appendUnlessSeen(tables.gps, duplicateKey(entry->kepler));
}

void decodeNavicEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    NavicEphemeris* const entry = tables.navic.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const body = staging.body(rowOf("IE"));
    entry->kepler.sv = bodies::kepler::sv.load(body);
    decodeKeplerBlock(body, navicWeekOffset, entry->kepler);
    entry->kepler.accuracy = accuracyInMetres(bodies::kepler::uraIndex.load(body));
    // Deliberate: unlike GPS, the flags are asked too.
    if ((entry->kepler.l2Flags & 0x01U) != 0 && entry->kepler.iodc < fitIntervalLimit) {
        entry->fitInterval = shortFitInterval;
    }
    stampNewEntry(tables.navic, clocks);
    appendUnlessSeen(tables.navic, duplicateKey(entry->kepler));
}

}  // namespace orbconv
