#include "navdecode/kepler_block.h"

namespace orbconv {

void decodeKeplerBlock(const std::uint8_t* body, std::int32_t weekOffset, KeplerElements& kepler) {
    namespace block = keplerBlock;
    kepler.tot = block::tot.load(body);
    kepler.l2Flags = block::flags.load(body);
    kepler.iodc = block::iodc.load(body);
    kepler.toc = block::toc.load(body);
    kepler.health = block::health.load(body);
    kepler.week = offsetWeek(block::week.load(body), weekOffset);
    kepler.tgd = block::tgd.load(body);
    kepler.af2 = block::af2.load(body);
    kepler.af1 = block::af1.load(body);
    kepler.af0 = block::af0.load(body);
    kepler.toe = block::toe.load(body);
    kepler.iode = block::iode.load(body);
    kepler.sqrtA = block::sqrtA.load(body);
    kepler.e = block::e.load(body);
    kepler.M0 = toRadians(block::M0.load(body));
    kepler.Omega0 = toRadians(block::Omega0.load(body));
    kepler.i0 = toRadians(block::i0.load(body));
    kepler.omega = toRadians(block::omega.load(body));
    kepler.deltaN = toRadians(block::deltaN.load(body));
    kepler.OmegaDot = toRadians(block::OmegaDot.load(body));
    kepler.IDOT = toRadians(block::IDOT.load(body));
    kepler.Crc = block::Crc.load(body);
    kepler.Crs = block::Crs.load(body);
    kepler.Cuc = block::Cuc.load(body);
    kepler.Cus = block::Cus.load(body);
    kepler.Cic = block::Cic.load(body);
    kepler.Cis = block::Cis.load(body);
}

// Deliberate: whole powers of two (index 1 is 2 m, not 2.8), and above 15 the index itself.
std::int32_t accuracyInMetres(std::int8_t uraIndex) {
    if (uraIndex < 7) {
        const int exponent = uraIndex / 2 + 1;
        return exponent < 0 ? 0 : 1 << exponent;
    }
    return uraIndex <= 15 ? 1 << (uraIndex - 2) : uraIndex;
}

void setRecordDate(RecordEpoch& epoch, const EpochClock& clock) {
    epoch.year = clock.year;
    epoch.month = clock.month;
    epoch.day = clock.day;
}

void setTimeOfDay(RecordEpoch& epoch, std::int32_t toe) {
    const auto secondOfDay = static_cast<float>(toe % 86400);
    const std::int32_t secondOfHour = static_cast<std::int32_t>(secondOfDay) % 3600;
    epoch.hour = static_cast<float>(static_cast<std::int32_t>(secondOfDay / 3600.0F));
    epoch.minute = static_cast<float>(secondOfHour / 60);
    epoch.second = static_cast<float>(secondOfHour) - epoch.minute * 60.0F;
}

}  // namespace orbconv
