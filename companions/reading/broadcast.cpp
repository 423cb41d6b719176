#include "reading/broadcast.h"

#include <concepts>
#include <tuple>

#include "log/navigation_bodies.h"
#include "navdecode/field_rows.h"

namespace orbconv::reading {

namespace {

// Unlike the converter's, these members hold all digits: a field is widened ahead of its product with pi.
template <class Wire, class Entry, class Member>
void load(const std::uint8_t* body, const FieldRow<Wire, Entry, Member>& row, Entry& entry) {
    const Wire value = row.field.load(body);
    if constexpr (std::floating_point<Wire>) {
        const auto number = static_cast<double>(value);
        entry.*row.member = row.unit == Unit::semicircles ? toRadians(number) : number;
    } else {
        entry.*row.member = value;
    }
}

template <class Entry, class... Rows>
void loadAll(const std::uint8_t* body, const std::tuple<Rows...>& rows, Entry& entry) {
    std::apply([&](const auto&... row) { (load(body, row, entry), ...); }, rows);
}

constexpr std::tuple orbitRows{
    FieldRow{bodies::kepler::tot, &KeplerOrbit::tot},
    FieldRow{bodies::kepler::toc, &KeplerOrbit::toc},
    FieldRow{bodies::kepler::toe, &KeplerOrbit::toe},
    FieldRow{bodies::kepler::week, &KeplerOrbit::week},
    FieldRow{bodies::kepler::flags, &KeplerOrbit::flags},
    FieldRow{bodies::kepler::iodc, &KeplerOrbit::iodc},
    FieldRow{bodies::kepler::iode, &KeplerOrbit::iode},
    FieldRow{bodies::kepler::uraIndex, &KeplerOrbit::accuracyIndex},
    FieldRow{bodies::kepler::health, &KeplerOrbit::health},
    FieldRow{bodies::kepler::tgd, &KeplerOrbit::tgd},
    FieldRow{bodies::kepler::af0, &KeplerOrbit::af0},
    FieldRow{bodies::kepler::af1, &KeplerOrbit::af1},
    FieldRow{bodies::kepler::af2, &KeplerOrbit::af2},
    FieldRow{bodies::kepler::sqrtA, &KeplerOrbit::sqrtA},
    FieldRow{bodies::kepler::e, &KeplerOrbit::e},
    FieldRow{bodies::kepler::M0, &KeplerOrbit::M0, Unit::semicircles},
    FieldRow{bodies::kepler::Omega0, &KeplerOrbit::Omega0, Unit::semicircles},
    FieldRow{bodies::kepler::i0, &KeplerOrbit::i0, Unit::semicircles},
    FieldRow{bodies::kepler::omega, &KeplerOrbit::omega, Unit::semicircles},
    FieldRow{bodies::kepler::deltaN, &KeplerOrbit::deltaN, Unit::semicircles},
    FieldRow{bodies::kepler::OmegaDot, &KeplerOrbit::OmegaDot, Unit::semicircles},
    FieldRow{bodies::kepler::IDOT, &KeplerOrbit::IDOT, Unit::semicircles},
    FieldRow{bodies::kepler::Crc, &KeplerOrbit::Crc},
    FieldRow{bodies::kepler::Crs, &KeplerOrbit::Crs},
    FieldRow{bodies::kepler::Cuc, &KeplerOrbit::Cuc},
    FieldRow{bodies::kepler::Cus, &KeplerOrbit::Cus},
    FieldRow{bodies::kepler::Cic, &KeplerOrbit::Cic},
    FieldRow{bodies::kepler::Cis, &KeplerOrbit::Cis},
};

// URAI_ED and URAI_NED0 are signed in their message, and stay so in their byte.
constexpr std::tuple modernGpsRows{
    FieldRow{bodies::ge::cnavTop, &GpsEphemeris::top},
    FieldRow{bodies::ge::adot, &GpsEphemeris::adot},
    FieldRow{bodies::ge::deltaNDot, &GpsEphemeris::deltaNDot, Unit::semicircles},
    FieldRow{BodyField<std::int8_t>{bodies::ge::uraiEd.offset}, &GpsEphemeris::uraiEd},
    FieldRow{BodyField<std::int8_t>{bodies::ge::uraiNed0.offset}, &GpsEphemeris::uraiNed0},
    FieldRow{bodies::ge::uraiNed1, &GpsEphemeris::uraiNed1},
    FieldRow{bodies::ge::uraiNed2, &GpsEphemeris::uraiNed2},
};
constexpr std::tuple gps160Rows{
    FieldRow{bodies::ge160::iscL1cp, &GpsEphemeris::iscL1cp},
    FieldRow{bodies::ge160::iscL1cd, &GpsEphemeris::iscL1cd},
    FieldRow{bodies::ge160::af0Delta, &GpsEphemeris::af0Delta},
};
constexpr std::tuple gps168Rows{
    FieldRow{bodies::ge168::iscL1ca, &GpsEphemeris::iscL1ca},
    FieldRow{bodies::ge168::iscL2c, &GpsEphemeris::iscL2c},
    FieldRow{bodies::ge168::iscL5i5, &GpsEphemeris::iscL5i5},
    FieldRow{bodies::ge168::iscL5q5, &GpsEphemeris::iscL5q5},
    FieldRow{bodies::ge168::af0Delta, &GpsEphemeris::af0Delta},
};

constexpr std::tuple glonassRows{
    FieldRow{bodies::ne::frequency, &GlonassEphemeris::frequency},
    FieldRow{bodies::ne::dayNumber, &GlonassEphemeris::dayNumber},
    FieldRow{bodies::ne::tk, &GlonassEphemeris::tk},
    FieldRow{bodies::ne::tb, &GlonassEphemeris::tb},
    FieldRow{bodies::ne::healthByte, &GlonassEphemeris::health},
    FieldRow{bodies::ne::age, &GlonassEphemeris::age},
    FieldRow{bodies::ne::x, &GlonassEphemeris::x},
    FieldRow{bodies::ne::y, &GlonassEphemeris::y},
    FieldRow{bodies::ne::z, &GlonassEphemeris::z},
    FieldRow{bodies::ne::vx, &GlonassEphemeris::vx},
    FieldRow{bodies::ne::vy, &GlonassEphemeris::vy},
    FieldRow{bodies::ne::vz, &GlonassEphemeris::vz},
    FieldRow{bodies::ne::ax, &GlonassEphemeris::ax},
    FieldRow{bodies::ne::ay, &GlonassEphemeris::ay},
    FieldRow{bodies::ne::az, &GlonassEphemeris::az},
    FieldRow{bodies::ne::tauN, &GlonassEphemeris::tauN},
    FieldRow{bodies::ne::gamma, &GlonassEphemeris::gamma},
};

constexpr std::tuple galileoRows{
    FieldRow{bodies::en::navFlags, &GalileoEphemeris::navFlags},
    FieldRow{bodies::en::bgdE5a, &GalileoEphemeris::bgdE5a},
    FieldRow{bodies::en::bgdE5b, &GalileoEphemeris::bgdE5b},
};

constexpr std::tuple beidou134Rows{
    FieldRow{bodies::cn134::aodc, &BeidouEphemeris::aodc},
    FieldRow{bodies::cn134::aode, &BeidouEphemeris::aode},
};
constexpr std::tuple beidou152Rows{
    FieldRow{bodies::cn152::adot, &BeidouEphemeris::adot},
    FieldRow{bodies::cn152::deltaNDot, &BeidouEphemeris::deltaNDot, Unit::semicircles},
};

// D2 is the message of the geostationary satellites: 1 to 5, and of the third generation from 59 on.
NavType broadcastBeidouType(std::uint8_t navFlags, std::int32_t sv) {
    const NavType type = navTypeOf(navFlags, beidouNavTypes);
    const bool isGeostationary = sv <= 5 || sv >= 59;
    return type == NavType::d1 && isGeostationary ? NavType::d2 : type;
}

KeplerOrbit orbitOf(const std::uint8_t* body, std::int32_t weekOffset) {
    KeplerOrbit orbit{};
    loadAll(body, orbitRows, orbit);
    orbit.week += weekOffset;
    return orbit;
}

Broadcast ephemeris(Constellation constellation, std::int32_t sv, const NavigationBody& body) {
    return {.state = BroadcastState::decoded, .constellation = constellation, .sv = sv, .body = body};
}
Broadcast withoutSatellite(Constellation constellation, const NavigationBody& body) {
    return {.state = BroadcastState::decoded, .constellation = constellation, .body = body};
}
Broadcast unknownForm(Constellation constellation) {
    return {.state = BroadcastState::unknownForm, .constellation = constellation};
}

// Whether the fields of a form are all there; further bytes are passed over.
bool holds(const Message& message, std::size_t bytes) {
    return message.content().size() >= bytes;
}

Broadcast decodeGps(const Message& message) {
    const std::uint8_t* const body = message.body.data();
    const auto length = static_cast<int>(message.body.size());
    GpsEphemeris gps{.orbit = orbitOf(body, gpsWeekOffset), .type = NavType::lnav};
    if (length != bodies::lengthOf(bodies::kepler::bytes)) {
        gps.type = navTypeOf(bodies::ge::navFlags.load(body), gpsNavTypes);
        if (gps.type == NavType::none) {
            return unknownForm(Constellation::gps);
        }
        loadAll(body, modernGpsRows, gps);
        if (length == bodies::lengthOf(bodies::ge160::bytes)) {
            loadAll(body, gps160Rows, gps);
        } else {
            loadAll(body, gps168Rows, gps);
        }
    }
    return ephemeris(Constellation::gps, bodies::kepler::sv.load(body), gps);
}

Broadcast decodeGlonass(const Message& message) {
    const std::uint8_t* const body = message.body.data();
    GlonassEphemeris glonass{};
    loadAll(body, glonassRows, glonass);
    glonass.health &= 1;  // the upper bit of B_n stands lowest
    return ephemeris(Constellation::glonass, bodies::ne::sv.load(body), glonass);
}

Broadcast decodeGalileo(const Message& message) {
    if (!holds(message, bodies::en::bytes)) {
        return unknownForm(Constellation::galileo);
    }
    const std::uint8_t* const body = message.body.data();
    GalileoEphemeris galileo{.orbit = orbitOf(body, galileoWeekOffset)};
    loadAll(body, galileoRows, galileo);
    galileo.type = navTypeOf(galileo.navFlags, galileoNavTypes);
    if (galileo.type == NavType::none) {
        return unknownForm(Constellation::galileo);
    }
    galileo.ionosphere = {
        .ai = {bodies::en::ai0.load(body), bodies::en::ai1.load(body), bodies::en::ai2.load(body)},
        .flags = bodies::en::ionFlags.load(body)};
    return ephemeris(Constellation::galileo, bodies::kepler::sv.load(body), galileo);
}

Broadcast decodeBeidou(const Message& message) {
    const std::uint8_t* const body = message.body.data();
    const std::int32_t sv = bodies::kepler::sv.load(body);
    BeidouEphemeris beidou{.orbit = orbitOf(body, beidouWeekOffset),
                           .type = broadcastBeidouType(bodies::cn::navFlags.load(body), sv),
                           .tgd2 = static_cast<double>(bodies::cn::tgd2.load(body))};
    if (beidou.type == NavType::none) {
        return unknownForm(Constellation::beidou);
    }
    if (static_cast<int>(message.body.size()) == bodies::lengthOf(bodies::cn134::bytes)) {
        loadAll(body, beidou134Rows, beidou);
    } else {
        loadAll(body, beidou152Rows, beidou);
    }
    return ephemeris(Constellation::beidou, sv, beidou);
}

Broadcast decodeNavic(const Message& message) {
    if (!holds(message, bodies::kepler::bytes)) {
        return unknownForm(Constellation::navic);
    }
    const std::uint8_t* const body = message.body.data();
    return ephemeris(Constellation::navic, bodies::kepler::sv.load(body),
                     NavicEphemeris{.orbit = orbitOf(body, navicWeekOffset)});
}

Broadcast decodeKlobuchar(const Message& message, Constellation constellation) {
    if (!holds(message, bodies::iono::bytes)) {
        return unknownForm(constellation);
    }
    const std::uint8_t* const body = message.body.data();
    KlobucharTerms terms{};
    for (std::size_t i = 0; i < terms.alpha.size(); ++i) {
        terms.alpha[i] = static_cast<double>(bodies::iono::alpha[i].load(body));
        terms.beta[i] = static_cast<double>(bodies::iono::beta[i].load(body));
    }
    return withoutSatellite(constellation, terms);
}

UtcOffset utcOffsetOf(const std::uint8_t* body, std::int32_t weekOffset) {
    return {.offset = {.a0 = bodies::timeOffset::a0.load(body),
                       .a1 = static_cast<double>(bodies::timeOffset::a1.load(body)),
                       .reference = static_cast<double>(bodies::timeOffset::tot.load(body)),
                       .week = bodies::timeOffset::week.load(body) + weekOffset},
            .leapSeconds = bodies::timeOffset::leapSeconds.load(body)};
}

Broadcast decodeUtcOffset(const Message& message, Constellation constellation, std::int32_t weekOffset) {
    if (!holds(message, bodies::timeOffset::bytes)) {
        return unknownForm(constellation);
    }
    return withoutSatellite(constellation, utcOffsetOf(message.body.data(), weekOffset));
}

// Galileo's offsets count weeks as GPS does.
Broadcast decodeGalileoOffsets(const Message& message) {
    if (!holds(message, bodies::eu::bytes)) {
        return unknownForm(Constellation::galileo);
    }
    const std::uint8_t* const body = message.body.data();
    return withoutSatellite(
        Constellation::galileo,
        GalileoOffsets{.utc = utcOffsetOf(body, gpsWeekOffset),
                       .gps = {.a0 = static_cast<double>(bodies::eu::a0Gps.load(body)),
                               .a1 = static_cast<double>(bodies::eu::a1Gps.load(body)),
                               .reference = static_cast<double>(bodies::eu::totGps.load(body)),
                               .week = bodies::eu::weekGps.load(body) + gpsWeekOffset}});
}

Broadcast decodeGlonassOffsets(const Message& message) {
    if (!holds(message, bodies::nu::word1.offset)) {
        return unknownForm(Constellation::glonass);
    }
    const std::uint8_t* const body = message.body.data();
    return withoutSatellite(Constellation::glonass,
                            GlonassOffsets{.tauC = bodies::nu::tauC.load(body),
                                           .tauGps = static_cast<double>(bodies::nu::tauGps.load(body))});
}

}  // namespace

// The reader lets only lengths through that have a form of GE, NE and CN.
Broadcast decodeBroadcast(const Message& message) {
    switch (message.row) {
        case rowOf("GE"): return decodeGps(message);
        case rowOf("NE"): return decodeGlonass(message);
        case rowOf("EN"): return decodeGalileo(message);
        case rowOf("CN"): return decodeBeidou(message);
        case rowOf("IE"): return decodeNavic(message);
        case rowOf("IO"): return decodeKlobuchar(message, Constellation::gps);
        case rowOf("CI"): return decodeKlobuchar(message, Constellation::beidou);
        case rowOf("II"): return decodeKlobuchar(message, Constellation::navic);
        case rowOf("UO"): return decodeUtcOffset(message, Constellation::gps, gpsWeekOffset);
        case rowOf("CU"): return decodeUtcOffset(message, Constellation::beidou, beidouWeekOffset);
        case rowOf("IU"): return decodeUtcOffset(message, Constellation::navic, navicWeekOffset);
        case rowOf("EU"): return decodeGalileoOffsets(message);
        case rowOf("NU"): return decodeGlonassOffsets(message);
        default: return {};
    }
}

}  // namespace orbconv::reading
