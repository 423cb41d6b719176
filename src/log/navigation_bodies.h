// The bodies of the navigation messages as they stand in the log (receiver's format): where each field
// starts. The checksum follows the last field and counts in the message's length field. What the reader
// stages elsewhere than it stands is told in message_table.h.
//
// Numbers are engineering values: no scale factor is applied anywhere. Angles and their rates are in
// semicircles, times in seconds (of the week where nothing else is said), lengths in metres, weeks are the
// system's own with the roll-overs taken off. Fields without a name of their own have no known meaning.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "log/little_endian.h"

namespace orbconv::bodies {

// The length field of a message whose fields take `bytes` bytes.
constexpr int lengthOf(std::size_t bytes) {
    return static_cast<int>(bytes) + 1;
}

// Orbit and clock: they open GE, EN, CN and IE, and are all of IE and of the short form of GE.
namespace kepler {
inline constexpr BodyField<std::uint8_t> sv{0};
inline constexpr BodyField<std::uint32_t> tot{1};
inline constexpr BodyField<std::uint8_t> flags{5};
inline constexpr BodyField<std::int16_t> iodc{6};
inline constexpr BodyField<std::int32_t> toc{8};
inline constexpr BodyField<std::int8_t> uraIndex{12};  // EN: the SISA index
inline constexpr BodyField<std::uint8_t> health{13};
inline constexpr BodyField<std::int16_t> week{14};
inline constexpr BodyField<float> tgd{16};
inline constexpr BodyField<float> af2{20};
inline constexpr BodyField<float> af1{24};
inline constexpr BodyField<float> af0{28};
inline constexpr BodyField<std::int32_t> toe{32};
inline constexpr BodyField<std::uint16_t> iode{36};
inline constexpr BodyField<double> sqrtA{38};
inline constexpr BodyField<double> e{46};
inline constexpr BodyField<double> M0{54};
inline constexpr BodyField<double> Omega0{62};
inline constexpr BodyField<double> i0{70};
inline constexpr BodyField<double> omega{78};
inline constexpr BodyField<float> deltaN{86};
inline constexpr BodyField<float> OmegaDot{90};
inline constexpr BodyField<float> IDOT{94};
inline constexpr BodyField<float> Crc{98};
inline constexpr BodyField<float> Crs{102};
inline constexpr BodyField<float> Cuc{106};
inline constexpr BodyField<float> Cus{110};
inline constexpr BodyField<float> Cic{114};
inline constexpr BodyField<float> Cis{118};
inline constexpr std::size_t bytes = 122;
static_assert(tileBody(0, bytes, sv, tot, flags, iodc, toc, uraIndex, health, week, tgd, af2, af1, af0, toe,
                       iode, sqrtA, e, M0, Omega0, i0, omega, deltaN, OmegaDot, IDOT, Crc, Crs, Cuc, Cus, Cic,
                       Cis));
}  // namespace kepler

// GE: what the two long forms have in common. The short form is the block of orbit and clock alone.
namespace ge {
inline constexpr BodyField<std::uint8_t> navFlags{122};  // bit 0 LNAV; bits 1, 2 CNAV; bit 3 CNV2
inline constexpr BodyField<std::uint32_t> cnavToe{123};
inline constexpr BodyField<std::uint32_t> cnavTop{127};
inline constexpr BodyField<double> adot{131};
inline constexpr BodyField<float> deltaNDot{139};
inline constexpr BodyField<std::uint8_t> uraiEd{143};
inline constexpr BodyField<std::uint8_t> uraiNed0{144};
inline constexpr BodyField<std::uint8_t> uraiNed1{145};
inline constexpr BodyField<std::uint8_t> uraiNed2{146};
inline constexpr std::size_t bytes = 147;
static_assert(tileBody(kepler::bytes, bytes, navFlags, cnavToe, cnavTop, adot, deltaNDot, uraiEd, uraiNed0,
                       uraiNed1, uraiNed2));
}  // namespace ge

namespace ge160 {
inline constexpr BodyField<float> iscL1cp{147};
inline constexpr BodyField<float> iscL1cd{151};
inline constexpr BodyField<float> af0Delta{155};
inline constexpr std::size_t bytes = 159;
static_assert(tileBody(ge::bytes, bytes, iscL1cp, iscL1cd, af0Delta));
}  // namespace ge160

namespace ge168 {
inline constexpr BodyField<float> iscL1ca{147};
inline constexpr BodyField<float> iscL2c{151};
inline constexpr BodyField<float> iscL5i5{155};
inline constexpr BodyField<float> iscL5q5{159};
inline constexpr BodyField<float> af0Delta{163};
inline constexpr std::size_t bytes = 167;
static_assert(tileBody(ge::bytes, bytes, iscL1ca, iscL2c, iscL5i5, iscL5q5, af0Delta));
}  // namespace ge168

// NE: both forms. Positions in km, velocities in km/s, accelerations in km/s^2.
namespace ne {
inline constexpr BodyField<std::uint8_t> sv{0};
inline constexpr BodyField<std::int8_t> frequency{1};
inline constexpr BodyField<std::uint16_t> dayNumber{2};
inline constexpr BodyField<std::int32_t> tk{4};  // seconds of the day, as tb
inline constexpr BodyField<std::int32_t> tb{8};
inline constexpr BodyField<std::uint8_t> healthByte{12};
inline constexpr BodyField<std::uint8_t> age{13};
inline constexpr BodyField<std::uint8_t> flagsByte{14};
inline constexpr BodyField<double> x{15};
inline constexpr BodyField<double> y{23};
inline constexpr BodyField<double> z{31};
inline constexpr BodyField<float> vx{39};
inline constexpr BodyField<float> vy{43};
inline constexpr BodyField<float> vz{47};
inline constexpr BodyField<float> ax{51};
inline constexpr BodyField<float> ay{55};
inline constexpr BodyField<float> az{59};
inline constexpr BodyField<double> tauSys{63};
inline constexpr BodyField<float> tauN{71};
inline constexpr BodyField<float> gamma{75};
inline constexpr BodyField<float> extra1{79};
inline constexpr BodyField<std::uint8_t> extra2{83};
inline constexpr BodyField<std::uint8_t> extra3{84};
inline constexpr BodyField<std::uint16_t> extra4{85};
inline constexpr std::size_t bytes = 87;
static_assert(tileBody(0, bytes, sv, frequency, dayNumber, tk, tb, healthByte, age, flagsByte, x, y, z, vx,
                       vy, vz, ax, ay, az, tauSys, tauN, gamma, extra1, extra2, extra3, extra4));
}  // namespace ne

namespace ne103 {
inline constexpr BodyField<std::uint8_t> ext1{87};
inline constexpr BodyField<std::uint32_t> ext2{88};
inline constexpr BodyField<std::uint32_t> ext3{92};
inline constexpr BodyField<std::uint8_t> ext4{96};
inline constexpr BodyField<std::uint8_t> ext5{97};
inline constexpr BodyField<std::uint8_t> ext6{98};
inline constexpr BodyField<std::uint8_t> ext7{99};
inline constexpr BodyField<std::uint16_t> ext8{100};
inline constexpr std::size_t bytes = 102;
static_assert(tileBody(ne::bytes, bytes, ext1, ext2, ext3, ext4, ext5, ext6, ext7, ext8));
}  // namespace ne103

namespace en {
inline constexpr BodyField<float> bgdE5a{122};
inline constexpr BodyField<float> bgdE5b{126};
inline constexpr BodyField<float> ai0{130};
inline constexpr BodyField<float> ai1{134};
inline constexpr BodyField<float> ai2{138};
inline constexpr BodyField<std::uint8_t> ionFlags{142};
inline constexpr BodyField<std::uint8_t> navFlags{143};  // bits 0, 2 INAV; bit 1 FNAV
inline constexpr BodyField<std::uint32_t> lastWord{144};
inline constexpr std::size_t bytes = 148;
static_assert(tileBody(kepler::bytes, bytes, bgdE5a, bgdE5b, ai0, ai1, ai2, ionFlags, navFlags, lastWord));
}  // namespace en

// CN: what the three forms have in common. `tgd` of the block is TGD1.
namespace cn {
inline constexpr BodyField<float> tgd2{122};
inline constexpr BodyField<std::uint8_t> navFlags{126};  // bits 0 to 2 D1 or D2; 3 CNV1; 5 CNV2; 6 CNV3
inline constexpr BodyField<std::uint32_t> tailWord{127};
inline constexpr std::size_t bytes = 131;
static_assert(tileBody(kepler::bytes, bytes, tgd2, navFlags, tailWord));
}  // namespace cn

namespace cn134 {
inline constexpr BodyField<std::uint8_t> aodc{131};
inline constexpr BodyField<std::uint8_t> aode{132};
inline constexpr std::size_t bytes = 133;
static_assert(tileBody(cn::bytes, bytes, aodc, aode));
}  // namespace cn134

// Length 160 has these fields too.
namespace cn152 {
inline constexpr BodyField<double> adot{131};
inline constexpr BodyField<float> deltaNDot{139};
inline constexpr BodyField<float> sisai{143};
inline constexpr BodyField<float> cnavWord1{147};
inline constexpr std::size_t bytes = 151;
static_assert(tileBody(cn::bytes, bytes, adot, deltaNDot, sisai, cnavWord1));
}  // namespace cn152

namespace cn160 {
inline constexpr BodyField<float> cnavWord2{151};
inline constexpr BodyField<float> cnavWord3{155};
inline constexpr std::size_t bytes = 159;
static_assert(tileBody(cn152::bytes, bytes, cnavWord2, cnavWord3));
}  // namespace cn160

// IO, II and CI.
namespace iono {
inline constexpr BodyField<std::uint32_t> tot{0};  // CI alone
inline constexpr BodyField<std::uint16_t> unread{4};
inline constexpr std::array<BodyField<float>, 4> alpha = {{{6}, {10}, {14}, {18}}};
inline constexpr std::array<BodyField<float>, 4> beta = {{{22}, {26}, {30}, {34}}};
inline constexpr std::size_t bytes = 38;
static_assert(tileBody(0, bytes, tot, unread, alpha[0], alpha[1], alpha[2], alpha[3], beta[0], beta[1],
                       beta[2], beta[3]));
}  // namespace iono

// UO, CU and IU are these fields alone; they open EU.
namespace timeOffset {
inline constexpr BodyField<double> a0{0};
inline constexpr BodyField<float> a1{8};
inline constexpr BodyField<std::uint32_t> tot{12};  // the reference time
inline constexpr BodyField<std::uint16_t> week{16};
inline constexpr BodyField<std::int8_t> leapSeconds{18};
inline constexpr BodyField<std::uint8_t> leapWord1{19};
inline constexpr BodyField<std::uint16_t> leapWord2{20};
inline constexpr BodyField<std::uint8_t> leapWord3{22};
inline constexpr std::size_t bytes = 23;
static_assert(tileBody(0, bytes, a0, a1, tot, week, leapSeconds, leapWord1, leapWord2, leapWord3));
}  // namespace timeOffset

// EU: Galileo time against GPS time, behind the offset against UTC.
namespace eu {
inline constexpr BodyField<float> a0Gps{23};
inline constexpr BodyField<float> a1Gps{27};
inline constexpr BodyField<std::uint32_t> totGps{31};
inline constexpr BodyField<std::uint16_t> weekGps{35};
inline constexpr std::size_t bytes = 37;
static_assert(tileBody(timeOffset::bytes, bytes, a0Gps, a1Gps, totGps, weekGps));
}  // namespace eu

namespace nu {
inline constexpr BodyField<double> tauC{0};
inline constexpr BodyField<float> tauGps{8};
inline constexpr BodyField<std::uint32_t> word1{12};
inline constexpr BodyField<std::uint32_t> word2{16};
inline constexpr std::size_t bytes = 20;
static_assert(tileBody(0, bytes, tauC, tauGps, word1, word2));
}  // namespace nu

}  // namespace orbconv::bodies
