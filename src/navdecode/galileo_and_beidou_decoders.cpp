// EN and CN.
#include "navdecode/ephemeris_decoders.h"
#include "navdecode/kepler_block.h"

namespace orbconv {

namespace {

constexpr std::int32_t galileoWeekOffset = 1024;
constexpr std::int32_t beidouWeekOffset = 0;

namespace enBody {
constexpr BodyField<float> bgdE5a{122};
constexpr BodyField<float> bgdE5b{126};
constexpr BodyField<float> ai0{130};
constexpr BodyField<float> ai1{134};
constexpr BodyField<float> ai2{138};
constexpr BodyField<std::uint8_t> ionFlags{142};
constexpr BodyField<std::uint8_t> navFlags{143};
static_assert(tileBody(keplerBlock::bytes, 144, bgdE5a, bgdE5b, ai0, ai1, ai2, ionFlags, navFlags));
}  // namespace enBody

// The staging area of CN: the fields of the three lengths side by side. Four bytes behind navFlags and two
// words behind sisai go to no file.
namespace cnArea {
constexpr BodyField<float> tgd2{122};
constexpr BodyField<std::uint8_t> navFlags{126};
constexpr BodyField<std::uint32_t> tailWord{127};
constexpr BodyField<std::uint8_t> aodc{131};
constexpr BodyField<std::uint8_t> aode{132};
constexpr BodyField<double> adot{133};
constexpr BodyField<float> deltaNDot{141};
constexpr BodyField<float> sisai{145};
static_assert(tileBody(keplerBlock::bytes, 149, tgd2, navFlags, tailWord, aodc, aode, adot, deltaNDot,
                       sisai));
}  // namespace cnArea

constexpr std::int32_t lengthWithAges = 134;
constexpr std::int32_t lengthWithRates = 152;

// The SISA of an index in metres, narrowed to single precision ahead of the constant; a negative index
// leaves what the slot held.
float sisaOf(std::int8_t index, float held) {
    const auto steps = [index](int first, double step) { return static_cast<float>((index - first) * step); };
    if (index < 0) {
        return held;
    }
    if (index < 50) {
        return steps(0, 0.01);
    }
    if (index < 75) {
        return steps(50, 0.02) + 0.5F;
    }
    if (index < 100) {
        return steps(75, 0.04) + 1.0F;
    }
    return index <= 125 ? steps(100, 0.16) + 2.0F : -1.0F;
}

constexpr std::uint8_t inavFlags = 0x05;
constexpr std::uint8_t fnavFlags = 0x02;
constexpr std::uint32_t inavSourceBits = 0x205;
constexpr std::uint32_t fnavSourceBits = 0x102;
constexpr std::uint32_t printedSourceBits = 0x307;

// Deliberate: the source bits of a slot that a dropped message used stay in it.
void setGalileoType(GalileoEphemeris& entry) {
    if ((entry.navFlags & inavFlags) != 0) {
        entry.navType = NavType::inav;
        entry.dataSourceBits |= inavSourceBits;
    } else if ((entry.navFlags & fnavFlags) != 0) {
        entry.navType = NavType::fnav;
        entry.dataSourceBits |= fnavSourceBits;
    }
    entry.dataSources = static_cast<std::int32_t>(entry.dataSourceBits & printedSourceBits);
}

// D1 and D2 win over the others; without any flag the slot keeps its type.
NavType beidouNavType(std::uint8_t navFlags, std::int32_t sv, NavType held) {
    if ((navFlags & 0x07U) != 0) {
        return sv > 5 ? NavType::d1 : NavType::d2;
    }
    if ((navFlags & 0x08U) != 0) {
        return NavType::cnv1;
    }
    if ((navFlags & 0x20U) != 0) {
        return NavType::cnv2;
    }
    return (navFlags & 0x40U) != 0 ? NavType::cnv3 : held;
}

}  // namespace

void decodeGalileoEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    GalileoEphemeris* const entry = tables.galileo.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const body = staging.body(rowOf("EN"));
    const std::int8_t sisaIndex = keplerBlock::uraIndex.load(body);
    entry->kepler.sv = keplerBlock::sv.load(body);
    decodeKeplerBlock(body, galileoWeekOffset, entry->kepler);
    entry->kepler.accuracy = sisaIndex;
    entry->sisa = sisaOf(sisaIndex, entry->sisa);
    entry->bgdE5a = enBody::bgdE5a.load(body);
    entry->bgdE5b = enBody::bgdE5b.load(body);
    entry->ai0 = enBody::ai0.load(body);
    entry->ai1 = enBody::ai1.load(body);
    entry->ai2 = enBody::ai2.load(body);
    entry->ionFlags = enBody::ionFlags.load(body);
    entry->navFlags = enBody::navFlags.load(body);
    setRecordDate(entry->epoch, clocks.epoch);
    setGalileoType(*entry);
    backFillDate(tables.galileo, tables.galileo.count, clocks);
    setTimeOfDay(entry->epoch, entry->kepler.toe);
    entry->epoch.timeBase = clocks.epoch.timeBase;
    appendUnlessSeen(tables.galileo, duplicateKey(entry->kepler, entry->navFlags));
}

void decodeBeidouEphemeris(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables) {
    BeidouEphemeris* const entry = tables.beidou.nextSlot();
    if (entry == nullptr) {
        return;
    }
    const std::uint8_t* const area = staging.body(rowOf("CN"));
    const std::int32_t length = staging.bodyLength[rowOf("CN")];
    entry->kepler.sv = keplerBlock::sv.load(area);
    decodeKeplerBlock(area, beidouWeekOffset, entry->kepler);
    entry->kepler.accuracy = accuracyInMetres(keplerBlock::uraIndex.load(area));
    entry->tgd2 = cnArea::tgd2.load(area);
    entry->navFlags = cnArea::navFlags.load(area);
    setRecordDate(entry->epoch, clocks.epoch);
    entry->navType = beidouNavType(entry->navFlags, entry->kepler.sv, entry->navType);
    if (length == lengthWithAges) {
        entry->aodc = cnArea::aodc.load(area);
        entry->aode = cnArea::aode.load(area);
    } else if (length == lengthWithRates) {
        entry->adot = cnArea::adot.load(area);
        entry->deltaNDot = cnArea::deltaNDot.load(area);
        entry->sisai = cnArea::sisai.load(area);
    }
    // Deliberate: of length 160 nothing further is taken, and the entry keeps what its slot held.
    backFillDate(tables.beidou, tables.beidou.count, clocks);
    setTimeOfDay(entry->epoch, entry->kepler.toe);
    entry->epoch.timeBase = clocks.epoch.timeBase;
    appendUnlessSeen(tables.beidou, duplicateKey(entry->kepler, entry->navFlags));
}

}  // namespace orbconv
