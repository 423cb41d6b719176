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

using Kepler = KeplerBlock;

// A member of an entry, or of the block that entries have in common.
template <class Entry, class Value>
constexpr const Value& valueOf(const Entry& entry, Value Entry::*member) {
    return entry.*member;
}
template <class Entry, class Value>
constexpr const Value& valueOf(const Entry& entry, Value Kepler::*member) {
    return entry.kepler.*member;
}

// The member as it is printed, and narrowed to single precision ahead of that.
template <auto Member>
inline constexpr auto field = [](const auto& entry) -> double { return printed(valueOf(entry, Member)); };
template <auto Member>
inline constexpr auto narrowed =
    [](const auto& entry) -> double { return static_cast<float>(valueOf(entry, Member)); };
// One bit of the L2 flags, as 0 or 1.
template <int Bit>
inline constexpr auto l2Bit = [](const auto& entry) -> double { return (entry.kepler.l2Flags >> Bit) & 1; };

inline constexpr auto zero = [](const auto& /*entry*/) -> double { return 0.0; };
inline constexpr auto shiftedAf0 = [](const GpsEphemeris& entry) -> double {
    return entry.kepler.af0 + entry.af0Delta;  // in single precision
};

}  // namespace columns

namespace forms {

using columns::field;
using columns::Kepler;
using columns::l2Bit;
using columns::narrowed;
using columns::zero;

// ---- shared lines ----

template <class Entry>
inline constexpr std::array<Column<Entry>, 3> clock = {field<&Kepler::af0>, field<&Kepler::af1>,
                                                       field<&Kepler::af2>};
template <class Entry>
inline constexpr OrbitLine<Entry> anomaly = {field<&Kepler::iode>, field<&Kepler::Crs>,
                                             field<&Kepler::deltaN>, field<&Kepler::M0>};
template <class Entry>
inline constexpr OrbitLine<Entry> shape = {field<&Kepler::Cuc>, field<&Kepler::e>, field<&Kepler::Cus>,
                                           field<&Kepler::sqrtA>};
template <class Entry>
inline constexpr OrbitLine<Entry> node = {field<&Kepler::toe>, field<&Kepler::Cic>, field<&Kepler::Omega0>,
                                          field<&Kepler::Cis>};
// Deliberate: i0 alone loses its low digits.
template <class Entry>
inline constexpr OrbitLine<Entry> inclination = {narrowed<&Kepler::i0>, field<&Kepler::Crc>,
                                                 field<&Kepler::omega>, field<&Kepler::OmegaDot>};

// ---- GPS and NavIC ----

template <class Entry>
inline constexpr std::array<OrbitLine<Entry>, 7> lnav = {{
    anomaly<Entry>,
    shape<Entry>,
    node<Entry>,
    inclination<Entry>,
    {field<&Kepler::IDOT>, l2Bit<2>, field<&Kepler::week>, l2Bit<1>},
    {field<&Kepler::accuracy>, field<&Kepler::health>, field<&Kepler::tgd>, field<&Kepler::iodc>},
    {field<&Kepler::tot>, field<&Entry::fitInterval>},
}};

using Gps = GpsEphemeris;
inline constexpr std::array<Column<Gps>, 3> gpsShiftedClock = {columns::shiftedAf0, field<&Kepler::af1>,
                                                               field<&Kepler::af2>};
inline constexpr OrbitLine<Gps> gpsRateAnomaly = {narrowed<&Gps::adot>, field<&Kepler::Crs>,
                                                  field<&Kepler::deltaN>, field<&Kepler::M0>};
inline constexpr OrbitLine<Gps> gpsCnavNode = {field<&Gps::cnavToe>, field<&Kepler::Cic>,
                                               field<&Kepler::Omega0>, field<&Kepler::Cis>};
inline constexpr OrbitLine<Gps> gpsRates = {field<&Kepler::IDOT>, field<&Gps::deltaNDot>,
                                            field<&Gps::uraiNed0>, field<&Gps::uraiNed1>};
inline constexpr OrbitLine<Gps> gpsHealth = {field<&Gps::uraiEd>, field<&Kepler::health>, field<&Kepler::tgd>,
                                             field<&Gps::uraiNed2>};
inline constexpr OrbitLine<Gps> gpsIsc = {field<&Gps::iscL1ca>, field<&Gps::iscL2c>, field<&Gps::iscL5i5>,
                                          field<&Gps::iscL5q5>};
// Deliberate: the fit interval stands where the standard has the transmission time, which is not printed.
inline constexpr OrbitLine<Gps> gpsFitAndWeek = {field<&Gps::fitInterval>, field<&Kepler::week>};

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
    {field<&Gps::iscL1cd>, field<&Gps::iscL1cp>},
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
    {field<&Kepler::IDOT>, field<&Galileo::dataSources>, field<&Kepler::week>, zero},
    {field<&Galileo::sisa>, field<&Kepler::health>, field<&Galileo::bgdE5a>, field<&Galileo::bgdE5b>},
    {field<&Kepler::tot>},
}};
inline constexpr RecordForm<Galileo> galileo = {NavType::inav, clock<Galileo>, galileoLines};

// ---- BeiDou ----

using Beidou = BeidouEphemeris;
inline constexpr std::array<OrbitLine<Beidou>, 7> beidouD = {{
    {field<&Beidou::aode>, field<&Kepler::Crs>, field<&Kepler::deltaN>, field<&Kepler::M0>},
    shape<Beidou>,
    node<Beidou>,
    inclination<Beidou>,
    {field<&Kepler::IDOT>, zero, field<&Kepler::week>, zero},
    {field<&Kepler::accuracy>, field<&Kepler::health>, field<&Kepler::tgd>, field<&Beidou::tgd2>},
    {field<&Kepler::tot>, field<&Beidou::aodc>},
}};

// Deliberate: line 6 has three values, and line 8 of CNV2 has tot where CNV1 has the accuracy.
inline constexpr OrbitLine<Beidou> beidouRateAnomaly = {narrowed<&Beidou::adot>, field<&Kepler::Crs>,
                                                        field<&Kepler::deltaN>, field<&Kepler::M0>};
inline constexpr OrbitLine<Beidou> beidouRates = {field<&Kepler::IDOT>, field<&Beidou::deltaNDot>,
                                                  field<&Beidou::satType>, zero};
inline constexpr OrbitLine<Beidou> beidouSisai = {field<&Beidou::sisai>, zero, field<&Beidou::sisai>};
inline constexpr OrbitLine<Beidou> beidouDelays = {field<&Beidou::sisai>, zero, field<&Kepler::tgd>,
                                                   field<&Beidou::tgd2>};
inline constexpr OrbitLine<Beidou> beidouTotAndIode = {field<&Kepler::tot>, zero, zero, field<&Kepler::iode>};

inline constexpr std::array<OrbitLine<Beidou>, 9> beidouCnv1 = {{
    beidouRateAnomaly,
    shape<Beidou>,
    node<Beidou>,
    inclination<Beidou>,
    beidouRates,
    beidouSisai,
    beidouDelays,
    {field<&Kepler::accuracy>, field<&Kepler::health>, zero, field<&Kepler::iodc>},
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
    {field<&Kepler::tot>, field<&Kepler::health>, zero, field<&Kepler::iodc>},
    beidouTotAndIode,
}};
inline constexpr std::array<OrbitLine<Beidou>, 8> beidouCnv3 = {{
    beidouRateAnomaly,
    shape<Beidou>,
    node<Beidou>,
    inclination<Beidou>,
    beidouRates,
    beidouSisai,
    {zero, field<&Kepler::health>, zero, field<&Beidou::tgd2>},
    {field<&Kepler::tot>},
}};
inline constexpr std::array<RecordForm<Beidou>, 5> beidou = {{
    {NavType::d1, clock<Beidou>, beidouD},
    {NavType::d2, clock<Beidou>, beidouD},
    {NavType::cnv1, clock<Beidou>, beidouCnv1},
    {NavType::cnv2, clock<Beidou>, beidouCnv2},
    {NavType::cnv3, clock<Beidou>, beidouCnv3},
}};
// Of any other type: a record ends with its epoch line.
inline constexpr RecordForm<Beidou> beidouWithoutOrbit = {NavType::none, clock<Beidou>, {}};

}  // namespace forms

}  // namespace orbconv
