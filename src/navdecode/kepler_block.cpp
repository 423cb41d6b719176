#include "navdecode/kepler_block.h"

#include "log/navigation_bodies.h"
#include "navdecode/field_rows.h"

namespace orbconv {

namespace {

// clang-format off
constexpr std::tuple keplerRows{
    FieldRow{bodies::kepler::tot,      &KeplerBlock::tot},
    FieldRow{bodies::kepler::flags,    &KeplerBlock::l2Flags},
    FieldRow{bodies::kepler::iodc,     &KeplerBlock::iodc},
    FieldRow{bodies::kepler::toc,      &KeplerBlock::toc},
    FieldRow{bodies::kepler::health,   &KeplerBlock::health},
    FieldRow{bodies::kepler::week,     &KeplerBlock::week},
    FieldRow{bodies::kepler::tgd,      &KeplerBlock::tgd},
    FieldRow{bodies::kepler::af2,      &KeplerBlock::af2},
    FieldRow{bodies::kepler::af1,      &KeplerBlock::af1},
    FieldRow{bodies::kepler::af0,      &KeplerBlock::af0},
    FieldRow{bodies::kepler::toe,      &KeplerBlock::toe},
    FieldRow{bodies::kepler::iode,     &KeplerBlock::iode},
    FieldRow{bodies::kepler::sqrtA,    &KeplerBlock::sqrtA},
    FieldRow{bodies::kepler::e,        &KeplerBlock::e},
    FieldRow{bodies::kepler::M0,       &KeplerBlock::M0,       Unit::semicircles},
    FieldRow{bodies::kepler::Omega0,   &KeplerBlock::Omega0,   Unit::semicircles},
    FieldRow{bodies::kepler::i0,       &KeplerBlock::i0,       Unit::semicircles},
    FieldRow{bodies::kepler::omega,    &KeplerBlock::omega,    Unit::semicircles},
    FieldRow{bodies::kepler::deltaN,   &KeplerBlock::deltaN,   Unit::semicircles},
    FieldRow{bodies::kepler::OmegaDot, &KeplerBlock::OmegaDot, Unit::semicircles},
    FieldRow{bodies::kepler::IDOT,     &KeplerBlock::IDOT,     Unit::semicircles},
    FieldRow{bodies::kepler::Crc,      &KeplerBlock::Crc},
    FieldRow{bodies::kepler::Crs,      &KeplerBlock::Crs},
    FieldRow{bodies::kepler::Cuc,      &KeplerBlock::Cuc},
    FieldRow{bodies::kepler::Cus,      &KeplerBlock::Cus},
    FieldRow{bodies::kepler::Cic,      &KeplerBlock::Cic},
    FieldRow{bodies::kepler::Cis,      &KeplerBlock::Cis},
};
// clang-format on

}  // namespace

void decodeKeplerBlock(const std::uint8_t* body, std::int32_t weekOffset, KeplerBlock& kepler) {
    loadFields(body, keplerRows, kepler);
    kepler.week = offsetWeek(kepler.week, weekOffset);
}

// Deliberate: whole powers of two (index 1 is 2 m, not 2.8), and above 15 the index itself.
std::int32_t accuracyInMetres(std::int8_t uraIndex) {
    if (uraIndex < 7) {
        const int exponent = uraIndex / 2 + 1;
        return exponent < 0 ? 0 : 1 << exponent;
    }
    return uraIndex <= 15 ? 1 << (uraIndex - 2) : uraIndex;
}

}  // namespace orbconv
