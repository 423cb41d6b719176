// Navigation messages as the log holds them.
#include "reading/broadcast.h"

#include <gtest/gtest.h>

#include "companions/support/navigation_messages.h"

namespace {

using namespace orbconv::reading;
using orbconv::Constellation;
using orbconv::NavType;
using samplelog::LogBuilder;
using testsupport::broadcastIn;
using testsupport::broadcastsIn;
using testsupport::pi;

template <class Body>
Body bodyOf(const Broadcast& broadcast) {
    EXPECT_EQ(broadcast.state, BroadcastState::decoded);
    const auto* const body = std::get_if<Body>(&broadcast.body);
    EXPECT_NE(body, nullptr);
    return body != nullptr ? *body : Body{};
}

void expectOrbit(const KeplerOrbit& orbit, std::int32_t week) {
    EXPECT_EQ(orbit.tot, 7000);
    EXPECT_EQ(orbit.toc, 7200);
    EXPECT_EQ(orbit.toe, 7200);
    EXPECT_EQ(orbit.week, week);
    EXPECT_EQ(orbit.flags, 2);
    EXPECT_EQ(orbit.iodc, 100);
    EXPECT_EQ(orbit.iode, 33);
    EXPECT_EQ(orbit.accuracyIndex, 1);
    EXPECT_EQ(orbit.health, 5);
    EXPECT_EQ(orbit.tgd, 0x1p-30);
    EXPECT_EQ(orbit.af0, 0x1p-12);
    EXPECT_EQ(orbit.af1, 0x1p-40);
    EXPECT_EQ(orbit.af2, 0x1p-60);
    EXPECT_EQ(orbit.sqrtA, 5153.5);
    EXPECT_EQ(orbit.e, 0.0078125);
    EXPECT_EQ(orbit.M0, 0.5 * pi);
    EXPECT_EQ(orbit.Omega0, -0.25 * pi);
    EXPECT_EQ(orbit.i0, 0.3125 * pi);
    EXPECT_EQ(orbit.omega, pi);
    EXPECT_EQ(orbit.deltaN, 0x1p-28 * pi);
    EXPECT_EQ(orbit.OmegaDot, -0x1p-27 * pi);
    EXPECT_EQ(orbit.IDOT, 0x1p-29 * pi);
    EXPECT_EQ(orbit.Crc, 200.5);
    EXPECT_EQ(orbit.Crs, -10.25);
    EXPECT_EQ(orbit.Cuc, 0x1p-20);
    EXPECT_EQ(orbit.Cus, 0x1p-21);
    EXPECT_EQ(orbit.Cic, 0x1p-22);
    EXPECT_EQ(orbit.Cis, -0x1p-23);
}

// ---- ephemerides ----

TEST(Broadcast, ShortGpsFormIsLnav) {
    const auto broadcast = broadcastIn(LogBuilder().ge123(testsupport::keplerOfWeek(300)).take());
    EXPECT_EQ(broadcast.constellation, Constellation::gps);
    EXPECT_EQ(broadcast.sv, 7);
    const auto gps = bodyOf<GpsEphemeris>(broadcast);
    EXPECT_EQ(gps.type, NavType::lnav);
    expectOrbit(gps.orbit, 2348);
    EXPECT_FALSE(gps.iscL1ca || gps.iscL2c || gps.iscL5i5 || gps.iscL5q5 || gps.iscL1cp || gps.iscL1cd);
}

TEST(Broadcast, LongGpsFormsBringTheirOwnDelays) {
    for (const bool isLonger : {false, true}) {
        LogBuilder log;
        const auto body = testsupport::modernGps(2);
        const auto gps =
            bodyOf<GpsEphemeris>(broadcastIn((isLonger ? log.ge168(body) : log.ge160(body)).take()));
        EXPECT_EQ(gps.type, NavType::cnav);
        expectOrbit(gps.orbit, 2348);
        EXPECT_EQ(gps.top, 3600);
        EXPECT_EQ(gps.adot, 0.125);  // metres a second: no angle
        EXPECT_EQ(gps.deltaNDot, 0x1p-44 * pi);
        EXPECT_EQ(gps.uraiEd, -2);
        EXPECT_EQ(gps.uraiNed0, -16);
        EXPECT_EQ(gps.uraiNed1, 3);
        EXPECT_EQ(gps.uraiNed2, 7);
        EXPECT_EQ(gps.af0Delta, 0x1p-36);
        const std::optional<double> none;
        EXPECT_EQ(gps.iscL1cp, isLonger ? none : 0x1p-31);
        EXPECT_EQ(gps.iscL1cd, isLonger ? none : 0x1p-32);
        EXPECT_EQ(gps.iscL1ca, isLonger ? 0x1p-33 : none);
        EXPECT_EQ(gps.iscL2c, isLonger ? 0x1p-34 : none);
        EXPECT_EQ(gps.iscL5i5, isLonger ? 0x1p-35 : none);
        EXPECT_EQ(gps.iscL5q5, isLonger ? 0x1p-36 : none);
    }
}

TEST(Broadcast, FlagsTellTheGpsMessage) {
    const std::vector<std::pair<std::uint8_t, NavType>> rows = {
        {1, NavType::lnav}, {2, NavType::cnav}, {4, NavType::cnav}, {3, NavType::cnav}, {8, NavType::cnv2}};
    for (const auto& [flags, type] : rows) {
        const auto broadcast = broadcastIn(LogBuilder().ge160(testsupport::modernGps(flags)).take());
        EXPECT_EQ(bodyOf<GpsEphemeris>(broadcast).type, type) << int{flags};
    }
    const auto broadcast = broadcastIn(LogBuilder().ge168(testsupport::modernGps(0xF0)).take());
    EXPECT_EQ(broadcast.state, BroadcastState::unknownForm);
    EXPECT_EQ(broadcast.constellation, Constellation::gps);
}

TEST(Broadcast, BothFormsOfGlonassAreAlike) {
    LogBuilder log;
    log.ne88(testsupport::glonassOf2025()).ne103(testsupport::glonassOf2025());
    const auto found = broadcastsIn(log.bytes());
    ASSERT_EQ(found.size(), 2U);
    for (const Broadcast& broadcast : found) {
        EXPECT_EQ(broadcast.constellation, Constellation::glonass);
        EXPECT_EQ(broadcast.sv, 8);
        const auto glonass = bodyOf<GlonassEphemeris>(broadcast);
        EXPECT_EQ(glonass.frequency, -7);
        EXPECT_EQ(glonass.dayNumber, 371);
        EXPECT_EQ(glonass.tk, 18030);
        EXPECT_EQ(glonass.tb, 18900);
        EXPECT_EQ(glonass.health, 1);  // the lowest bit
        EXPECT_EQ(glonass.age, 2);
        EXPECT_EQ(glonass.x, 10000.5);
        EXPECT_EQ(glonass.y, -20000.25);
        EXPECT_EQ(glonass.z, 3000.125);
        EXPECT_EQ(glonass.vx, 1.5);
        EXPECT_EQ(glonass.vy, -2.5);
        EXPECT_EQ(glonass.vz, 3.5);
        EXPECT_EQ(glonass.ax, 0x1p-30);
        EXPECT_EQ(glonass.ay, -0x1p-29);
        EXPECT_EQ(glonass.az, 0x1p-28);
        EXPECT_EQ(glonass.tauN, 0x1p-14);
        EXPECT_EQ(glonass.gamma, 0x1p-40);
    }
}

TEST(Broadcast, GalileoBringsItsIonosphere) {
    const std::vector<std::pair<std::uint8_t, NavType>> rows = {
        {1, NavType::inav}, {4, NavType::inav}, {5, NavType::inav}, {7, NavType::inav}, {2, NavType::fnav}};
    for (const auto& [flags, type] : rows) {
        const auto broadcast = broadcastIn(LogBuilder().en(testsupport::galileoOf(flags)).take());
        EXPECT_EQ(broadcast.constellation, Constellation::galileo);
        EXPECT_EQ(broadcast.sv, 7);
        const auto galileo = bodyOf<GalileoEphemeris>(broadcast);
        EXPECT_EQ(galileo.type, type) << int{flags};
        expectOrbit(galileo.orbit, 2348);
        EXPECT_EQ(galileo.bgdE5a, 0x1p-32);
        EXPECT_EQ(galileo.bgdE5b, 0x1p-33);
        EXPECT_EQ(galileo.ionosphere.ai, (std::array{75.5, 0.25, 0x1p-7}));
        EXPECT_EQ(galileo.ionosphere.flags, 9);
        EXPECT_EQ(galileo.navFlags, flags);
    }
    const auto unknown = broadcastIn(LogBuilder().en(testsupport::galileoOf(0xF8)).take());
    EXPECT_EQ(unknown.state, BroadcastState::unknownForm);
    EXPECT_EQ(unknown.constellation, Constellation::galileo);
}

TEST(Broadcast, FormsOfBeidouDifferInWhatTheyBring) {
    const auto body = testsupport::beidouOf(1, 20);
    const auto shortForm = bodyOf<BeidouEphemeris>(broadcastIn(LogBuilder().cn134(body).take()));
    expectOrbit(shortForm.orbit, 992);
    EXPECT_EQ(shortForm.tgd2, 0x1p-31);
    EXPECT_EQ(shortForm.aodc, 11.0);
    EXPECT_EQ(shortForm.aode, 12.0);
    EXPECT_FALSE(shortForm.adot || shortForm.deltaNDot);
    LogBuilder log;
    log.cn152(body).cn160(body);
    const auto found = broadcastsIn(log.bytes());
    ASSERT_EQ(found.size(), 2U);
    for (const Broadcast& broadcast : found) {
        const auto beidou = bodyOf<BeidouEphemeris>(broadcast);
        expectOrbit(beidou.orbit, 992);
        EXPECT_EQ(beidou.tgd2, 0x1p-31);
        EXPECT_FALSE(beidou.aodc || beidou.aode);
        EXPECT_EQ(beidou.adot, 0.25);
        EXPECT_EQ(beidou.deltaNDot, 0x1p-45 * pi);
    }
}

TEST(Broadcast, FlagsAndSatelliteTellTheBeidouMessage) {
    struct Row {
        std::uint8_t flags;
        std::uint8_t sv;
        NavType type;
    };
    for (const auto& [flags, sv, type] : std::vector<Row>{{1, 5, NavType::d2},
                                                          {1, 6, NavType::d1},
                                                          {4, 58, NavType::d1},
                                                          {2, 59, NavType::d2},
                                                          {9, 20, NavType::d1},
                                                          {8, 20, NavType::cnv1},
                                                          {0x20, 59, NavType::cnv2},
                                                          {0x40, 3, NavType::cnv3}}) {
        const auto broadcast = broadcastIn(LogBuilder().cn152(testsupport::beidouOf(flags, sv)).take());
        EXPECT_EQ(broadcast.constellation, Constellation::beidou);
        EXPECT_EQ(broadcast.sv, sv);
        EXPECT_EQ(bodyOf<BeidouEphemeris>(broadcast).type, type) << int{flags} << ' ' << int{sv};
    }
    const auto unknown = broadcastIn(LogBuilder().cn134(testsupport::beidouOf(0x10, 20)).take());
    EXPECT_EQ(unknown.state, BroadcastState::unknownForm);
    EXPECT_EQ(unknown.constellation, Constellation::beidou);
}

TEST(Broadcast, NavicIsOrbitAndClockAlone) {
    const auto broadcast = broadcastIn(LogBuilder().ie(testsupport::keplerOfWeek(300)).take());
    EXPECT_EQ(broadcast.constellation, Constellation::navic);
    EXPECT_EQ(broadcast.sv, 7);
    expectOrbit(bodyOf<NavicEphemeris>(broadcast).orbit, 2348);
}

// ---- terms ----

TEST(Broadcast, IonosphereOfThreeSystems) {
    LogBuilder log;
    const auto body = testsupport::ionoTerms();
    log.io(body).ci(body).ii(body);
    const auto found = broadcastsIn(log.bytes());
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].constellation, Constellation::gps);
    EXPECT_EQ(found[1].constellation, Constellation::beidou);
    EXPECT_EQ(found[2].constellation, Constellation::navic);
    for (const Broadcast& broadcast : found) {
        const auto terms = bodyOf<KlobucharTerms>(broadcast);
        EXPECT_EQ(terms.alpha, (std::array{0x1p-26, 0x1p-25, -0x1p-24, 0x1p-23}));
        EXPECT_EQ(terms.beta, (std::array{0x1p16, 0x1p15, -0x1p16, 0x1p17}));
    }
}

TEST(Broadcast, OffsetsAgainstUtc) {
    const samplelog::TimeOffsetBody body{
        .a0 = 0x1p-30, .a1 = -0x1p-50F, .tot = 345600, .week = 300, .leapSeconds = -18};
    LogBuilder log;
    log.uo(body).cu(body).iu(body);
    const auto found = broadcastsIn(log.bytes());
    ASSERT_EQ(found.size(), 3U);
    const std::array constellations = {Constellation::gps, Constellation::beidou, Constellation::navic};
    const std::array weeks = {2348, 300, 2348};
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].constellation, constellations[i]);
        const auto utc = bodyOf<UtcOffset>(found[i]);
        EXPECT_EQ(utc.offset.a0, 0x1p-30);
        EXPECT_EQ(utc.offset.a1, -0x1p-50);
        EXPECT_EQ(utc.offset.reference, 345600);
        EXPECT_EQ(utc.offset.week, weeks[i]);
        EXPECT_EQ(utc.leapSeconds, -18);
    }
}

TEST(Broadcast, GalileoOffsetsCountWeeksAsGps) {
    const auto broadcast = broadcastIn(
        LogBuilder()
            .eu({.utc = {.a0 = 0x1p-30, .a1 = 0x1p-50F, .tot = 3600, .week = 300, .leapSeconds = 18},
                 .a0Gps = -0x1p-31F,
                 .a1Gps = 0x1p-51F,
                 .totGps = 7200,
                 .weekGps = 301})
            .take());
    EXPECT_EQ(broadcast.constellation, Constellation::galileo);
    const auto offsets = bodyOf<GalileoOffsets>(broadcast);
    EXPECT_EQ(offsets.utc.offset.a0, 0x1p-30);
    EXPECT_EQ(offsets.utc.offset.week, 2348);
    EXPECT_EQ(offsets.utc.leapSeconds, 18);
    EXPECT_EQ(offsets.gps.a0, -0x1p-31);
    EXPECT_EQ(offsets.gps.a1, 0x1p-51);
    EXPECT_EQ(offsets.gps.reference, 7200);
    EXPECT_EQ(offsets.gps.week, 2349);
}

TEST(Broadcast, GlonassOffsets) {
    const auto broadcast = broadcastIn(LogBuilder().nu({.tauC = 0x1p-27, .tauGps = -0x1p-28F}).take());
    EXPECT_EQ(broadcast.constellation, Constellation::glonass);
    const auto offsets = bodyOf<GlonassOffsets>(broadcast);
    EXPECT_EQ(offsets.tauC, 0x1p-27);
    EXPECT_EQ(offsets.tauGps, -0x1p-28);
}

// ---- what is none ----

TEST(Broadcast, MessagesTooShortForTheirFieldsAreOfNoKnownForm) {
    const std::vector<std::pair<std::string, Constellation>> rows = {
        {"EN", Constellation::galileo}, {"IE", Constellation::navic}, {"IO", Constellation::gps},
        {"CI", Constellation::beidou},  {"II", Constellation::navic}, {"UO", Constellation::gps},
        {"CU", Constellation::beidou},  {"IU", Constellation::navic}, {"EU", Constellation::galileo},
        {"NU", Constellation::glonass}};
    for (const auto& [id, constellation] : rows) {
        const auto found = broadcastsIn(LogBuilder().message(id, std::string(3, '\1')).rd(2025, 1, 5).take());
        ASSERT_FALSE(found.empty()) << id;
        EXPECT_EQ(found.front().state, BroadcastState::unknownForm) << id;
        EXPECT_EQ(found.front().constellation, constellation) << id;
    }
}

TEST(Broadcast, OtherMessagesAreNone) {
    for (const Broadcast& broadcast : broadcastsIn(LogBuilder().rd(2025, 1, 5).td().take())) {
        EXPECT_EQ(broadcast.state, BroadcastState::none);
    }
}

}  // namespace
