// The line forms of the Kepler-type ephemeris records: which value stands where, one row an orbit line, for
// every message type of GPS, Galileo, BeiDou and NavIC. One walker (ephemeris_records.cpp) prints them all;
// a further message type is further rows.
#pragma once

#include <array>
#include <concepts>
#include <span>

#include "navdecode/navigation_tables.h"

namespace orbconv {

// One printed value of an entry.
template <class Entry>
using Column = double (*)(const Entry&);

// Up to four values; a line ends at its first empty column.
template <class Entry>
using OrbitLine = std::array<Column<Entry>, 4>;

// A record: the three values of its epoch line and its orbit lines.
template <class Entry>
struct RecordForm {
    NavType type;
    std::array<Column<Entry>, 3> epochLine;
    std::span<const OrbitLine<Entry>> orbitLines;
};

namespace columns {

// Integers pass through single precision on their way to the file.
template <std::integral Integer>
constexpr double printed(Integer value) {
    return static_cast<double>(static_cast<float>(value));
}
constexpr double printed(float value) {
    return value;
}
constexpr double printed(double value) {
    return value;
}

using K = KeplerElements;

// A field of the common elements, and one of the entry itself.
template <auto Field>
inline constexpr auto k = [](const auto& entry) -> double { return printed(entry.kepler.*Field); };
template <auto Field>
inline constexpr auto own = [](const auto& entry) -> double { return printed(entry.*Field); };
// The same, narrowed to single precision.
template <auto Field>
inline constexpr auto narrowK =
    [](const auto& entry) -> double { return static_cast<float>(entry.kepler.*Field); };
template <auto Field>
inline constexpr auto narrowOwn =
    [](const auto& entry) -> double { return static_cast<float>(entry.*Field); };
// One bit of the L2 flags, as 0 or 1.
template <int Bit>
inline constexpr auto l2Bit = [](const auto& entry) -> double { return (entry.kepler.l2Flags >> Bit) & 1; };

inline constexpr auto zero = [](const auto& /*entry*/) -> double { return 0.0; };
inline constexpr auto shiftedAf0 = [](const GpsEphemeris& entry) -> double {
    return entry.kepler.af0 + entry.af0Delta;  // in single precision
};

}  // namespace columns

namespace forms {

using columns::k;
using columns::K;
using columns::l2Bit;
using columns::narrowK;
using columns::narrowOwn;
using columns::own;
using columns::zero;

// ---- shared lines ----

template <class E>
inline constexpr std::array<Column<E>, 3> clock = {k<&K::af0>, k<&K::af1>, k<&K::af2>};
template <class E>
inline constexpr OrbitLine<E> anomaly = {k<&K::iode>, k<&K::Crs>, k<&K::deltaN>, k<&K::M0>};
template <class E>
inline constexpr OrbitLine<E> shape = {k<&K::Cuc>, k<&K::e>, k<&K::Cus>, k<&K::sqrtA>};
template <class E>
inline constexpr OrbitLine<E> node = {k<&K::toe>, k<&K::Cic>, k<&K::Omega0>, k<&K::Cis>};
// Deliberate: i0 alone loses its low digits.
template <class E>
inline constexpr OrbitLine<E> inclination = {narrowK<&K::i0>, k<&K::Crc>, k<&K::omega>, k<&K::OmegaDot>};

// ---- GPS and NavIC ----

template <class E>
inline constexpr std::array<OrbitLine<E>, 7> lnav = {{
    anomaly<E>,
    shape<E>,
    node<E>,
    inclination<E>,
    {k<&K::IDOT>, l2Bit<2>, k<&K::week>, l2Bit<1>},
    {k<&K::accuracy>, k<&K::health>, k<&K::tgd>, k<&K::iodc>},
    {k<&K::tot>, own<&E::fitInterval>},
}};

using G = GpsEphemeris;
inline constexpr std::array<Column<G>, 3> gpsShiftedClock = {columns::shiftedAf0, k<&K::af1>, k<&K::af2>};
inline constexpr OrbitLine<G> gpsRateAnomaly = {narrowOwn<&G::adot>, k<&K::Crs>, k<&K::deltaN>, k<&K::M0>};
inline constexpr OrbitLine<G> gpsCnavNode = {own<&G::cnavToe>, k<&K::Cic>, k<&K::Omega0>, k<&K::Cis>};
inline constexpr OrbitLine<G> gpsRates = {k<&K::IDOT>, own<&G::deltaNDot>, own<&G::uraiNed0>,
                                          own<&G::uraiNed1>};
inline constexpr OrbitLine<G> gpsHealth = {own<&G::uraiEd>, k<&K::health>, k<&K::tgd>, own<&G::uraiNed2>};
inline constexpr OrbitLine<G> gpsIsc = {own<&G::iscL1ca>, own<&G::iscL2c>, own<&G::iscL5i5>,
                                        own<&G::iscL5q5>};
// Deliberate: the fit interval stands where the standard has the transmission time, which is not printed.
inline constexpr OrbitLine<G> gpsFitAndWeek = {own<&G::fitInterval>, k<&K::week>};

inline constexpr std::array<OrbitLine<G>, 8> gpsCnav = {{
    gpsRateAnomaly,
    shape<G>,
    gpsCnavNode,
    inclination<G>,
    gpsRates,
    gpsHealth,
    gpsIsc,
    gpsFitAndWeek,
}};
inline constexpr std::array<OrbitLine<G>, 9> gpsCnv2 = {{
    gpsRateAnomaly,
    shape<G>,
    gpsCnavNode,
    inclination<G>,
    gpsRates,
    gpsHealth,
    gpsIsc,
    {own<&G::iscL1cd>, own<&G::iscL1cp>},
    gpsFitAndWeek,
}};
inline constexpr std::array<RecordForm<G>, 3> gps = {{
    {NavType::lnav, clock<G>, lnav<G>},
    {NavType::cnav, gpsShiftedClock, gpsCnav},
    {NavType::cnv2, gpsShiftedClock, gpsCnv2},
}};

inline constexpr RecordForm<NavicEphemeris> navic = {NavType::lnav, clock<NavicEphemeris>,
                                                     lnav<NavicEphemeris>};

// ---- Galileo ----

using E = GalileoEphemeris;
inline constexpr std::array<OrbitLine<E>, 7> galileoLines = {{
    anomaly<E>,
    shape<E>,
    node<E>,
    inclination<E>,
    {k<&K::IDOT>, own<&E::dataSources>, k<&K::week>, zero},
    {own<&E::sisa>, k<&K::health>, own<&E::bgdE5a>, own<&E::bgdE5b>},
    {k<&K::tot>},
}};
inline constexpr RecordForm<E> galileo = {NavType::inav, clock<E>, galileoLines};

// ---- BeiDou ----

using C = BeidouEphemeris;
inline constexpr std::array<OrbitLine<C>, 7> beidouD = {{
    {own<&C::aode>, k<&K::Crs>, k<&K::deltaN>, k<&K::M0>},
    shape<C>,
    node<C>,
    inclination<C>,
    {k<&K::IDOT>, zero, k<&K::week>, zero},
    {k<&K::accuracy>, k<&K::health>, k<&K::tgd>, own<&C::tgd2>},
    {k<&K::tot>, own<&C::aodc>},
}};

// Deliberate: line 6 has three values, and line 8 of CNV2 has tot where CNV1 has the accuracy.
inline constexpr OrbitLine<C> beidouRateAnomaly = {narrowOwn<&C::adot>, k<&K::Crs>, k<&K::deltaN>, k<&K::M0>};
inline constexpr OrbitLine<C> beidouRates = {k<&K::IDOT>, own<&C::deltaNDot>, own<&C::satType>, zero};
inline constexpr OrbitLine<C> beidouSisai = {own<&C::sisai>, zero, own<&C::sisai>};
inline constexpr OrbitLine<C> beidouDelays = {own<&C::sisai>, zero, k<&K::tgd>, own<&C::tgd2>};
inline constexpr OrbitLine<C> beidouTotAndIode = {k<&K::tot>, zero, zero, k<&K::iode>};

inline constexpr std::array<OrbitLine<C>, 9> beidouCnv1 = {{
    beidouRateAnomaly,
    shape<C>,
    node<C>,
    inclination<C>,
    beidouRates,
    beidouSisai,
    beidouDelays,
    {k<&K::accuracy>, k<&K::health>, zero, k<&K::iodc>},
    beidouTotAndIode,
}};
inline constexpr std::array<OrbitLine<C>, 9> beidouCnv2 = {{
    beidouRateAnomaly,
    shape<C>,
    node<C>,
    inclination<C>,
    beidouRates,
    beidouSisai,
    beidouDelays,
    {k<&K::tot>, k<&K::health>, zero, k<&K::iodc>},
    beidouTotAndIode,
}};
inline constexpr std::array<OrbitLine<C>, 8> beidouCnv3 = {{
    beidouRateAnomaly,
    shape<C>,
    node<C>,
    inclination<C>,
    beidouRates,
    beidouSisai,
    {zero, k<&K::health>, zero, own<&C::tgd2>},
    {k<&K::tot>},
}};
inline constexpr std::array<RecordForm<C>, 5> beidou = {{
    {NavType::d1, clock<C>, beidouD},
    {NavType::d2, clock<C>, beidouD},
    {NavType::cnv1, clock<C>, beidouCnv1},
    {NavType::cnv2, clock<C>, beidouCnv2},
    {NavType::cnv3, clock<C>, beidouCnv3},
}};

}  // namespace forms

}  // namespace orbconv
