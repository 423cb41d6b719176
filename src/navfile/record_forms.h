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

using Kepler = KeplerElements;

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
using columns::Kepler;
using columns::l2Bit;
using columns::narrowK;
using columns::narrowOwn;
using columns::own;
using columns::zero;

// ---- shared lines ----

template <class Entry>
inline constexpr std::array<Column<Entry>, 3> clock = {k<&Kepler::af0>, k<&Kepler::af1>, k<&Kepler::af2>};
template <class Entry>
inline constexpr OrbitLine<Entry> anomaly = {k<&Kepler::iode>, k<&Kepler::Crs>, k<&Kepler::deltaN>,
                                             k<&Kepler::M0>};
template <class Entry>
inline constexpr OrbitLine<Entry> shape = {k<&Kepler::Cuc>, k<&Kepler::e>, k<&Kepler::Cus>,
                                           k<&Kepler::sqrtA>};
template <class Entry>
inline constexpr OrbitLine<Entry> node = {k<&Kepler::toe>, k<&Kepler::Cic>, k<&Kepler::Omega0>,
                                          k<&Kepler::Cis>};
// Deliberate: i0 alone loses its low digits.
template <class Entry>
inline constexpr OrbitLine<Entry> inclination = {narrowK<&Kepler::i0>, k<&Kepler::Crc>, k<&Kepler::omega>,
                                                 k<&Kepler::OmegaDot>};

// ---- GPS and NavIC ----

template <class Entry>
inline constexpr std::array<OrbitLine<Entry>, 7> lnav = {{
    anomaly<Entry>,
    shape<Entry>,
    node<Entry>,
    inclination<Entry>,
    {k<&Kepler::IDOT>, l2Bit<2>, k<&Kepler::week>, l2Bit<1>},
    {k<&Kepler::accuracy>, k<&Kepler::health>, k<&Kepler::tgd>, k<&Kepler::iodc>},
    {k<&Kepler::tot>, own<&Entry::fitInterval>},
}};

using Gps = GpsEphemeris;
inline constexpr std::array<Column<Gps>, 3> gpsShiftedClock = {columns::shiftedAf0, k<&Kepler::af1>,
                                                               k<&Kepler::af2>};
inline constexpr OrbitLine<Gps> gpsRateAnomaly = {narrowOwn<&Gps::adot>, k<&Kepler::Crs>, k<&Kepler::deltaN>,
                                                  k<&Kepler::M0>};
inline constexpr OrbitLine<Gps> gpsCnavNode = {own<&Gps::cnavToe>, k<&Kepler::Cic>, k<&Kepler::Omega0>,
                                               k<&Kepler::Cis>};
inline constexpr OrbitLine<Gps> gpsRates = {k<&Kepler::IDOT>, own<&Gps::deltaNDot>, own<&Gps::uraiNed0>,
                                            own<&Gps::uraiNed1>};
inline constexpr OrbitLine<Gps> gpsHealth = {own<&Gps::uraiEd>, k<&Kepler::health>, k<&Kepler::tgd>,
                                             own<&Gps::uraiNed2>};
inline constexpr OrbitLine<Gps> gpsIsc = {own<&Gps::iscL1ca>, own<&Gps::iscL2c>, own<&Gps::iscL5i5>,
                                          own<&Gps::iscL5q5>};
// Deliberate: the fit interval stands where the standard has the transmission time, which is not printed.
inline constexpr OrbitLine<Gps> gpsFitAndWeek = {own<&Gps::fitInterval>, k<&Kepler::week>};

inline constexpr std::array<OrbitLine<Gps>, 8> gpsCnav = {{
    gpsRateAnomaly,
    shape<Gps>,
    gpsCnavNode,
    inclination<Gps>,
    gpsRates,
    gpsHealth,
    gpsIsc,
    gpsFitAndWeek,
}};
inline constexpr std::array<OrbitLine<Gps>, 9> gpsCnv2 = {{
    gpsRateAnomaly,
    shape<Gps>,
    gpsCnavNode,
    inclination<Gps>,
    gpsRates,
    gpsHealth,
    gpsIsc,
    {own<&Gps::iscL1cd>, own<&Gps::iscL1cp>},
    gpsFitAndWeek,
}};
inline constexpr std::array<RecordForm<Gps>, 3> gps = {{
    {NavType::lnav, clock<Gps>, lnav<Gps>},
    {NavType::cnav, gpsShiftedClock, gpsCnav},
    {NavType::cnv2, gpsShiftedClock, gpsCnv2},
}};

inline constexpr RecordForm<NavicEphemeris> navic = {NavType::lnav, clock<NavicEphemeris>,
                                                     lnav<NavicEphemeris>};

// ---- Galileo ----

using Galileo = GalileoEphemeris;
inline constexpr std::array<OrbitLine<Galileo>, 7> galileoLines = {{
    anomaly<Galileo>,
    shape<Galileo>,
    node<Galileo>,
    inclination<Galileo>,
    {k<&Kepler::IDOT>, own<&Galileo::dataSources>, k<&Kepler::week>, zero},
    {own<&Galileo::sisa>, k<&Kepler::health>, own<&Galileo::bgdE5a>, own<&Galileo::bgdE5b>},
    {k<&Kepler::tot>},
}};
inline constexpr RecordForm<Galileo> galileo = {NavType::inav, clock<Galileo>, galileoLines};

// ---- BeiDou ----

using Beidou = BeidouEphemeris;
inline constexpr std::array<OrbitLine<Beidou>, 7> beidouD = {{
    {own<&Beidou::aode>, k<&Kepler::Crs>, k<&Kepler::deltaN>, k<&Kepler::M0>},
    shape<Beidou>,
    node<Beidou>,
    inclination<Beidou>,
    {k<&Kepler::IDOT>, zero, k<&Kepler::week>, zero},
    {k<&Kepler::accuracy>, k<&Kepler::health>, k<&Kepler::tgd>, own<&Beidou::tgd2>},
    {k<&Kepler::tot>, own<&Beidou::aodc>},
}};

// Deliberate: line 6 has three values, and line 8 of CNV2 has tot where CNV1 has the accuracy.
inline constexpr OrbitLine<Beidou> beidouRateAnomaly = {narrowOwn<&Beidou::adot>, k<&Kepler::Crs>,
                                                        k<&Kepler::deltaN>, k<&Kepler::M0>};
inline constexpr OrbitLine<Beidou> beidouRates = {k<&Kepler::IDOT>, own<&Beidou::deltaNDot>,
                                                  own<&Beidou::satType>, zero};
inline constexpr OrbitLine<Beidou> beidouSisai = {own<&Beidou::sisai>, zero, own<&Beidou::sisai>};
inline constexpr OrbitLine<Beidou> beidouDelays = {own<&Beidou::sisai>, zero, k<&Kepler::tgd>,
                                                   own<&Beidou::tgd2>};
inline constexpr OrbitLine<Beidou> beidouTotAndIode = {k<&Kepler::tot>, zero, zero, k<&Kepler::iode>};

inline constexpr std::array<OrbitLine<Beidou>, 9> beidouCnv1 = {{
    beidouRateAnomaly,
    shape<Beidou>,
    node<Beidou>,
    inclination<Beidou>,
    beidouRates,
    beidouSisai,
    beidouDelays,
    {k<&Kepler::accuracy>, k<&Kepler::health>, zero, k<&Kepler::iodc>},
    beidouTotAndIode,
}};
inline constexpr std::array<OrbitLine<Beidou>, 9> beidouCnv2 = {{
    beidouRateAnomaly,
    shape<Beidou>,
    node<Beidou>,
    inclination<Beidou>,
    beidouRates,
    beidouSisai,
    beidouDelays,
    {k<&Kepler::tot>, k<&Kepler::health>, zero, k<&Kepler::iodc>},
    beidouTotAndIode,
}};
inline constexpr std::array<OrbitLine<Beidou>, 8> beidouCnv3 = {{
    beidouRateAnomaly,
    shape<Beidou>,
    node<Beidou>,
    inclination<Beidou>,
    beidouRates,
    beidouSisai,
    {zero, k<&Kepler::health>, zero, own<&Beidou::tgd2>},
    {k<&Kepler::tot>},
}};
inline constexpr std::array<RecordForm<Beidou>, 5> beidou = {{
    {NavType::d1, clock<Beidou>, beidouD},
    {NavType::d2, clock<Beidou>, beidouD},
    {NavType::cnv1, clock<Beidou>, beidouCnv1},
    {NavType::cnv2, clock<Beidou>, beidouCnv2},
    {NavType::cnv3, clock<Beidou>, beidouCnv3},
}};

}  // namespace forms

}  // namespace orbconv
