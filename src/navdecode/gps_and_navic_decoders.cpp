// GE and IE.
#include "navdecode/ephemeris_decoders.h"
#include "navdecode/kepler_block.h"

namespace orbconv {

namespace {

constexpr std::int32_t weekOffset = 2048;  // GPS and NavIC

// The fields behind the block as the reader stages them: the pair of a body of length 160 and the quartet
// of one of length 168 have places of their own.
namespace geArea {
constexpr BodyField<std::uint8_t> navFlags{122};
constexpr BodyField<std::uint32_t> cnavToe{123};
constexpr BodyField<std::uint32_t> cnavTop{127};
constexpr BodyField<double> adot{131};
constexpr BodyField<float> deltaNDot{139};
constexpr BodyField<std::uint8_t> uraiEd{143};
constexpr BodyField<std::uint8_t> uraiNed0{144};
constexpr BodyField<std::uint8_t> uraiNed1{145};
constexpr BodyField<std::uint8_t> uraiNed2{146};
constexpr BodyField<float> quartet0{147};
constexpr BodyField<float> quartet1{151};
constexpr BodyField<float> quartet2{155};
constexpr BodyField<float> quartet3{159};
constexpr BodyField<float> pair0{163};
constexpr BodyField<float> pair1{167};
constexpr BodyField<float> af0Delta{171};
static_assert(tileBody(keplerBlock::bytes, 175, navFlags, cnavToe, cnavTop, adot, deltaNDot, uraiEd, uraiNed0,
                       uraiNed1, uraiNed2, quartet0, quartet1, quartet2, quartet3, pair0, pair1, af0Delta));
}  // namespace geArea

constexpr std::int32_t legacyLength = 123;
constexpr std::int32_t lengthWithPair = 160;
constexpr std::int32_t lengthWithQuartet = 168;

constexpr std::int16_t fitIntervalLimit = 240;  // of iodc
constexpr float shortFitInterval = 4.0F;        // hours

// The message type for the flag byte of the longer forms; without any flag the slot keeps its type.
NavType gpsNavType(std::uint8_t navFlags, NavType held) {
    if ((navFlags & 0x06U) != 0) {
        return NavType::cnav;
    }
    if ((navFlags & 0x01U) != 0) {
        return NavType::lnav;
    }
    return (navFlags & 0x08U) != 0 ? NavType::cnv2 : held;
}

void copyModernFields(const std::uint8_t* area, GpsEphemeris& entry) {
    entry.kepler.sv = keplerBlock::sv.load(area);
    entry.navFlags = geArea::navFlags.load(area);
    entry.navType = gpsNavType(entry.navFlags, entry.navType);
    entry.cnavToe = geArea::cnavToe.load(area);
    entry.cnavTop = geArea::cnavTop.load(area);
    entry.adot = geArea::adot.load(area);
    entry.deltaNDot = geArea::deltaNDot.load(area);
    entry.uraiEd = geArea::uraiEd.load(area);
    entry.uraiNed0 = geArea::uraiNed0.load(area);
    entry.uraiNed1 = geArea::uraiNed1.load(area);
    entry.uraiNed2 = geArea::uraiNed2.load(area);
    entry.af0Delta = geArea::af0Delta.load(area);
}

// Deliberate: a message of length 160 brings the pair and stores the quartet, one of length 168 the other
// way round, so what an entry gets is what the last message of the other length brought. And only length
// 160 turns two rates to radians.
void copyCrossedFields(const std::uint8_t* area, std::int32_t length, GpsEphemeris& entry) {
    if (length == lengthWithPair) {
        entry.adot = toRadians(entry.adot);
        entry.deltaNDot = toRadians(entry.deltaNDot);
        entry.iscL1ca = geArea::quartet0.load(area);
        entry.iscL2c = geArea::quartet1.load(area);
        entry.iscL5i5 = geArea::quartet2.load(area);
        entry.iscL5q5 = geArea::quartet3.load(area);
    } else {
        entry.iscL1cp = geArea::pair0.load(area);
        entry.iscL1cd = geArea::pair1.load(area);
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
        entry->kepler.sv = keplerBlock::sv.load(area);
    }
    // Deliberate: a length that the reader knows no form for repeats the body before it into the next slot.
    decodeKeplerBlock(area, weekOffset, entry->kepler);
    entry->kepler.accuracy = accuracyInMetres(keplerBlock::uraIndex.load(area));
    setRecordDate(entry->epoch, clocks.epoch);
    backFillDate(tables.gps, tables.gps.count, clocks);
    setTimeOfDay(entry->epoch, entry->kepler.toe);
    entry->epoch.timeBase = clocks.epoch.timeBase;
    if (entry->kepler.iodc < fitIntervalLimit) {
        entry->fitInterval = shortFitInterval;
    }
    if (length == lengthWithPair || length == lengthWithQuartet) {
        copyModernFields(area, *entry);
        copyCrossedFields(area, length, *entry);
    }
    appendUnlessSeen(tables.gps, duplicateKey(entry->kepler));
}

void decodeNavicEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    NavicEphemeris* const entry = tables.navic.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const area = staging.body(rowOf("IE"));
    entry->kepler.sv = keplerBlock::sv.load(area);
    decodeKeplerBlock(area, weekOffset, entry->kepler);
    entry->kepler.accuracy = accuracyInMetres(keplerBlock::uraIndex.load(area));
    setRecordDate(entry->epoch, clocks.epoch);
    backFillDate(tables.navic, tables.navic.count, clocks);
    setTimeOfDay(entry->epoch, entry->kepler.toe);
    entry->epoch.timeBase = clocks.epoch.timeBase;
    // Deliberate: unlike GPS, the flags are asked too.
    if ((entry->kepler.l2Flags & 0x01U) != 0 && entry->kepler.iodc < fitIntervalLimit) {
        entry->fitInterval = shortFitInterval;
    }
    appendUnlessSeen(tables.navic, duplicateKey(entry->kepler));
}

}  // namespace orbconv
