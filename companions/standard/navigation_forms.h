// Which value stands where in the records of a navigation file (RINEX 3.05 and 4.01): one row an orbit line,
// for every kind of message. One walker (navigation_record.cpp) fills them all; a further kind is further
// rows.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <type_traits>

#include "standard/navigation_record.h"
#include "standard/navigation_time.h"
#include "standard/navigation_values.h"

namespace orbconv::standard {

// One printed value of a message.
template <class Entry>
using Column = std::optional<double> (*)(const Entry&, const RecordTimes&);

template <class Entry>
using OrbitLine = std::array<Column<Entry>, valuesOfLine>;

template <class Entry>
struct RecordForm {
    NavType type;
    std::array<Column<Entry>, valuesOfEpochLine> epochLine;
    std::span<const OrbitLine<Entry>> lines;
};

namespace columns {

using reading::BeidouEphemeris;
using reading::GalileoEphemeris;
using reading::GlonassEphemeris;
using reading::GpsEphemeris;
using reading::KeplerOrbit;
using reading::NavicEphemeris;

inline std::optional<double> valueOf(const std::optional<double>& value) {
    return value;
}
template <class Number>
requires std::is_arithmetic_v<Number> std::optional<double> valueOf(Number value) {
    return static_cast<double>(value);
}

// A field of the message or of the orbit that it opens with.
template <class Entry, auto Member>
std::optional<double> field(const Entry& entry, const RecordTimes& /*times*/) {
    if constexpr (requires { entry.*Member; }) {
        return valueOf(entry.*Member);
    } else {
        return valueOf(entry.orbit.*Member);
    }
}
template <class Entry, auto Member>
std::optional<double> negated(const Entry& entry, const RecordTimes& /*times*/) {
    return 0.0 - static_cast<double>(entry.*Member);
}
// A spare field, or a value that the log does not tell.
template <class Entry>
std::optional<double> blank(const Entry& /*entry*/, const RecordTimes& /*times*/) {
    return std::nullopt;
}
template <class Entry>
std::optional<double> week(const Entry& /*entry*/, const RecordTimes& times) {
    return times.week;
}
template <class Entry>
std::optional<double> transmission(const Entry& /*entry*/, const RecordTimes& times) {
    return times.transmission;
}
// The nominal value of a URA index.
template <class Entry>
std::optional<double> accuracy(const Entry& entry, const RecordTimes& /*times*/) {
    return nominalAccuracy(entry.orbit.accuracyIndex);
}

inline std::optional<double> codesOnL2(const GpsEphemeris& gps, const RecordTimes& /*times*/) {
    return (gps.orbit.flags >> 2U) & 1U;
}
inline std::optional<double> l2PDataFlag(const GpsEphemeris& gps, const RecordTimes& /*times*/) {
    return (gps.orbit.flags >> 1U) & 1U;
}
// The log does not tell the flag of the fit interval: only issues below 240 have one for sure, four hours.
inline std::optional<double> fitInterval(const GpsEphemeris& gps, const RecordTimes& /*times*/) {
    constexpr std::int32_t firstOtherIssue = 240;
    constexpr double hours = 4.0;
    return gps.orbit.iodc >= 0 && gps.orbit.iodc < firstOtherIssue ? std::optional(hours) : std::nullopt;
}
inline std::optional<double> wholeAf0(const GpsEphemeris& gps, const RecordTimes& /*times*/) {
    return gps.orbit.af0 + gps.af0Delta;
}

inline std::optional<double> dataSource(const GalileoEphemeris& galileo, const RecordTimes& /*times*/) {
    return galileoDataSource(galileo.type, galileo.navFlags);
}
inline std::optional<double> sisa(const GalileoEphemeris& galileo, const RecordTimes& /*times*/) {
    return sisaOf(galileo.orbit.accuracyIndex);
}
// F/NAV brings no delay of E5b: 0.
inline std::optional<double> delayOfE5b(const GalileoEphemeris& galileo, const RecordTimes& /*times*/) {
    return galileo.type == NavType::inav ? galileo.bgdE5b : 0.0;
}

// Fields of a GLONASS record that the log does not tell, as the standard writes them.
inline std::optional<double> unknownGroupDelay(const GlonassEphemeris& /*glonass*/,
                                               const RecordTimes& /*times*/) {
    return unknownTransmission;
}
inline std::optional<double> unknownAccuracy(const GlonassEphemeris& /*glonass*/,
                                             const RecordTimes& /*times*/) {
    constexpr double unknownIndex = 15.0;
    return unknownIndex;
}

}  // namespace columns

// The orbit and clock, alike in the records of four constellations.
template <class Entry>
struct KeplerColumns {
    using Orbit = reading::KeplerOrbit;
    static constexpr Column<Entry> af0 = columns::field<Entry, &Orbit::af0>;
    static constexpr Column<Entry> af1 = columns::field<Entry, &Orbit::af1>;
    static constexpr Column<Entry> af2 = columns::field<Entry, &Orbit::af2>;
    static constexpr Column<Entry> iode = columns::field<Entry, &Orbit::iode>;
    static constexpr Column<Entry> iodc = columns::field<Entry, &Orbit::iodc>;
    static constexpr Column<Entry> toe = columns::field<Entry, &Orbit::toe>;
    static constexpr Column<Entry> health = columns::field<Entry, &Orbit::health>;
    static constexpr Column<Entry> tgd = columns::field<Entry, &Orbit::tgd>;
    static constexpr Column<Entry> sqrtA = columns::field<Entry, &Orbit::sqrtA>;
    static constexpr Column<Entry> e = columns::field<Entry, &Orbit::e>;
    static constexpr Column<Entry> M0 = columns::field<Entry, &Orbit::M0>;
    static constexpr Column<Entry> Omega0 = columns::field<Entry, &Orbit::Omega0>;
    static constexpr Column<Entry> i0 = columns::field<Entry, &Orbit::i0>;
    static constexpr Column<Entry> omega = columns::field<Entry, &Orbit::omega>;
    static constexpr Column<Entry> deltaN = columns::field<Entry, &Orbit::deltaN>;
    static constexpr Column<Entry> OmegaDot = columns::field<Entry, &Orbit::OmegaDot>;
    static constexpr Column<Entry> IDOT = columns::field<Entry, &Orbit::IDOT>;
    static constexpr Column<Entry> Crc = columns::field<Entry, &Orbit::Crc>;
    static constexpr Column<Entry> Crs = columns::field<Entry, &Orbit::Crs>;
    static constexpr Column<Entry> Cuc = columns::field<Entry, &Orbit::Cuc>;
    static constexpr Column<Entry> Cus = columns::field<Entry, &Orbit::Cus>;
    static constexpr Column<Entry> Cic = columns::field<Entry, &Orbit::Cic>;
    static constexpr Column<Entry> Cis = columns::field<Entry, &Orbit::Cis>;
    static constexpr Column<Entry> accuracy = columns::accuracy<Entry>;
    static constexpr Column<Entry> week = columns::week<Entry>;
    static constexpr Column<Entry> tot = columns::transmission<Entry>;
    static constexpr Column<Entry> spare = columns::blank<Entry>;
    static constexpr Column<Entry> unknown = columns::blank<Entry>;

    static constexpr std::array<Column<Entry>, valuesOfEpochLine> clock = {af0, af1, af2};
    static consteval OrbitLine<Entry> line1(Column<Entry> first) { return {first, Crs, deltaN, M0}; }
    static constexpr OrbitLine<Entry> line2 = {Cuc, e, Cus, sqrtA};
    static consteval OrbitLine<Entry> line3(Column<Entry> first) { return {first, Cic, Omega0, Cis}; }
    static constexpr OrbitLine<Entry> line4 = {i0, Crc, omega, OmegaDot};
};

// ---- GPS ----

namespace gpsForms {
using Gps = reading::GpsEphemeris;
using G = KeplerColumns<Gps>;
template <auto Member>
inline constexpr Column<Gps> own = columns::field<Gps, Member>;

inline constexpr std::array<OrbitLine<Gps>, 7> lnav = {{
    G::line1(G::iode),
    G::line2,
    G::line3(G::toe),
    G::line4,
    {G::IDOT, columns::codesOnL2, G::week, columns::l2PDataFlag},
    {G::accuracy, G::health, G::tgd, G::iodc},
    {G::tot, columns::fitInterval, G::spare, G::spare},
}};
inline constexpr OrbitLine<Gps> modern5 = {G::IDOT, own<&Gps::deltaNDot>, own<&Gps::uraiNed0>,
                                           own<&Gps::uraiNed1>};
inline constexpr OrbitLine<Gps> modern6 = {own<&Gps::uraiEd>, G::health, G::tgd, own<&Gps::uraiNed2>};
inline constexpr OrbitLine<Gps> modern7 = {own<&Gps::iscL1ca>, own<&Gps::iscL2c>, own<&Gps::iscL5i5>,
                                           own<&Gps::iscL5q5>};
inline constexpr OrbitLine<Gps> modernLast = {G::tot, G::unknown, G::spare, G::spare};  // WN_op is not told
inline constexpr std::array<OrbitLine<Gps>, 8> cnav = {{
    G::line1(own<&Gps::adot>),
    G::line2,
    G::line3(own<&Gps::top>),
    G::line4,
    modern5,
    modern6,
    modern7,
    modernLast,
}};
inline constexpr std::array<OrbitLine<Gps>, 9> cnv2 = {{
    G::line1(own<&Gps::adot>),
    G::line2,
    G::line3(own<&Gps::top>),
    G::line4,
    modern5,
    modern6,
    modern7,
    {own<&Gps::iscL1cd>, own<&Gps::iscL1cp>, G::spare, G::spare},
    modernLast,
}};
inline constexpr std::array<Column<Gps>, valuesOfEpochLine> modernClock = {columns::wholeAf0, G::af1, G::af2};
}  // namespace gpsForms

inline constexpr std::array<RecordForm<reading::GpsEphemeris>, 3> gpsRecordForms = {{
    {NavType::lnav, gpsForms::G::clock, gpsForms::lnav},
    {NavType::cnav, gpsForms::modernClock, gpsForms::cnav},
    {NavType::cnv2, gpsForms::modernClock, gpsForms::cnv2},
}};

// ---- GLONASS ----

namespace glonassForms {
using Glonass = reading::GlonassEphemeris;
template <auto Member>
inline constexpr Column<Glonass> own = columns::field<Glonass, Member>;
inline constexpr Column<Glonass> unknown = columns::blank<Glonass>;

inline constexpr std::array<OrbitLine<Glonass>, 4> fdma = {{
    {own<&Glonass::x>, own<&Glonass::vx>, own<&Glonass::ax>, own<&Glonass::health>},
    {own<&Glonass::y>, own<&Glonass::vy>, own<&Glonass::ay>, own<&Glonass::frequency>},
    {own<&Glonass::z>, own<&Glonass::vz>, own<&Glonass::az>, own<&Glonass::age>},
    {unknown, columns::unknownGroupDelay, columns::unknownAccuracy, unknown},
}};
}  // namespace glonassForms

inline constexpr std::array<RecordForm<reading::GlonassEphemeris>, 1> glonassRecordForms = {{
    {NavType::none,
     {columns::negated<reading::GlonassEphemeris, &reading::GlonassEphemeris::tauN>,
      columns::field<reading::GlonassEphemeris, &reading::GlonassEphemeris::gamma>,
      columns::transmission<reading::GlonassEphemeris>},
     glonassForms::fdma},
}};

// ---- Galileo ----

namespace galileoForms {
using Galileo = reading::GalileoEphemeris;
using G = KeplerColumns<Galileo>;

inline constexpr std::array<OrbitLine<Galileo>, 7> inav = {{
    G::line1(G::iode),
    G::line2,
    G::line3(G::toe),
    G::line4,
    {G::IDOT, columns::dataSource, G::week, G::spare},
    {columns::sisa, G::health, columns::field<Galileo, &Galileo::bgdE5a>, columns::delayOfE5b},
    {G::tot, G::spare, G::spare, G::spare},
}};
}  // namespace galileoForms

inline constexpr std::array<RecordForm<reading::GalileoEphemeris>, 2> galileoRecordForms = {{
    {NavType::inav, galileoForms::G::clock, galileoForms::inav},
    {NavType::fnav, galileoForms::G::clock, galileoForms::inav},
}};

// ---- BeiDou ----

namespace beidouForms {
using Beidou = reading::BeidouEphemeris;
using G = KeplerColumns<Beidou>;
template <auto Member>
inline constexpr Column<Beidou> own = columns::field<Beidou, Member>;

inline constexpr std::array<OrbitLine<Beidou>, 7> d1 = {{
    G::line1(own<&Beidou::aode>),
    G::line2,
    G::line3(G::toe),
    G::line4,
    {G::IDOT, G::spare, G::week, G::spare},
    {G::accuracy, G::health, G::tgd, own<&Beidou::tgd2>},
    {G::tot, own<&Beidou::aodc>, G::spare, G::spare},
}};
// The log tells neither SatType nor t_op, none of the accuracy indices, no delay of the satellite's own
// signal and no integrity flag.
inline constexpr OrbitLine<Beidou> modern5 = {G::IDOT, own<&Beidou::deltaNDot>, G::unknown, G::unknown};
inline constexpr OrbitLine<Beidou> modern6 = {G::unknown, G::unknown, G::unknown, G::unknown};
inline constexpr OrbitLine<Beidou> modern7 = {G::unknown, G::unknown, G::tgd, own<&Beidou::tgd2>};
inline constexpr OrbitLine<Beidou> modern8 = {G::unknown, G::health, G::unknown, G::iodc};
inline constexpr OrbitLine<Beidou> modern9 = {G::tot, G::spare, G::spare, G::iode};
inline constexpr std::array<OrbitLine<Beidou>, 9> cnv1 = {{
    G::line1(own<&Beidou::adot>),
    G::line2,
    G::line3(G::toe),
    G::line4,
    modern5,
    modern6,
    modern7,
    modern8,
    modern9,
}};
inline constexpr std::array<OrbitLine<Beidou>, 8> cnv3 = {{
    G::line1(own<&Beidou::adot>),
    G::line2,
    G::line3(G::toe),
    G::line4,
    modern5,
    modern6,
    {G::unknown, G::health, G::unknown, own<&Beidou::tgd2>},
    {G::tot, G::spare, G::spare, G::spare},
}};
}  // namespace beidouForms

inline constexpr std::array<RecordForm<reading::BeidouEphemeris>, 5> beidouRecordForms = {{
    {NavType::d1, beidouForms::G::clock, beidouForms::d1},
    {NavType::d2, beidouForms::G::clock, beidouForms::d1},
    {NavType::cnv1, beidouForms::G::clock, beidouForms::cnv1},
    {NavType::cnv2, beidouForms::G::clock, beidouForms::cnv1},
    {NavType::cnv3, beidouForms::G::clock, beidouForms::cnv3},
}};

// ---- NavIC ----

namespace navicForms {
using Navic = reading::NavicEphemeris;
using G = KeplerColumns<Navic>;

inline constexpr std::array<OrbitLine<Navic>, 7> lnav = {{
    G::line1(G::iode),
    G::line2,
    G::line3(G::toe),
    G::line4,
    {G::IDOT, G::spare, G::week, G::spare},
    {G::accuracy, G::health, G::tgd, G::spare},
    {G::tot, G::spare, G::spare, G::spare},
}};
}  // namespace navicForms

inline constexpr std::array<RecordForm<reading::NavicEphemeris>, 1> navicRecordForms = {{
    {NavType::lnav, navicForms::G::clock, navicForms::lnav},
}};

}  // namespace orbconv::standard
