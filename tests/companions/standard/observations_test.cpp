// The values of an epoch, each worked out from its own message.
#include "standard/observations.h"

#include <gtest/gtest.h>

#include <cmath>

#include "companions/standard/support/small_logs.h"
#include "reading/log_reader.h"

namespace {

using namespace orbconv;            // NOLINT(google-build-using-namespace)
using namespace orbconv::standard;  // NOLINT(google-build-using-namespace)
using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testsupport::present;

// The observations of the log's first epoch.
EpochObservations observationsIn(LogBuilder log, const Selection& selection = {}) {
    const std::string bytes = log.td().take();
    // NOLINTNEXTLINE(*-reinterpret-cast): characters as bytes
    reading::LogReader reader({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    reading::EpochCollector collector;
    EpochObservations observations;
    while (reader.next() == reading::LogItem::message) {
        if (collector.add(reader.message())) {
            observationsOf(collector.epoch(), selection, observations);
            return observations;
        }
    }
    ADD_FAILURE() << "no epoch";
    return observations;
}

LogBuilder begun() {
    LogBuilder log;
    log.time(3600000).rd(2024, 3, 5);
    return log;
}

std::uint64_t leftOut(const EpochObservations& epoch, LeftOut reason) {
    return epoch.leftOut[static_cast<std::size_t>(reason)];
}

TEST(StandardObservations, RangeOfEachSystemHasItsScaleAndOffset) {
    // 1000 counts are 1e-8 s, or 2e-8 s, behind 0.075, 0.085 or 0.105 s of flight.
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5},
                                               {SystemCode::glonass, -3},
                                               {SystemCode::galileo, 11},
                                               {SystemCode::beidou, 19},
                                               {SystemCode::navic, 4}})
                                          .nn({7})
                                          .flags(Band::c, {present, present, present, present, present})
                                          .rx({1000, 1000, 1000, 1000, 1000}));
    ASSERT_EQ(epoch.satellites.size(), 5U);
    constexpr double c = 299792458.0;
    const double seconds[] = {0.07500001, 0.07500001, 0.08500002, 0.10500002, 0.10500002};
    const int numbers[] = {5, 7, 11, 19, 4};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(*epoch.satellites[i].signals[bands::c][Kind::range], seconds[i] * c, 1e-6);
        EXPECT_EQ(epoch.satellites[i].number, numbers[i]);
    }
    EXPECT_EQ(epoch.satellites[1].channel, -3);
}

TEST(StandardObservations, EachBandTakesItsOwnRangeDifference) {
    // d 1e-11 s + 2e-7 s behind the reference.
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5}})
                                          .flags(Band::b1, {present})
                                          .flags(Band::b2, {present})
                                          .rx({0})
                                          .rangeDeltas(Band::b1, {100})
                                          .rangeDeltas(Band::b2, {-32768}));
    const auto& signals = epoch.satellites.at(0).signals;
    EXPECT_NEAR(*signals[bands::b1][Kind::range], 0.075000201 * 299792458.0, 1e-6);
    EXPECT_NEAR(*signals[bands::b2][Kind::range], 0.07499987232 * 299792458.0, 1e-6);
    EXPECT_TRUE(signals[bands::c].empty());
}

TEST(StandardObservations, ReferenceIsRxAndRcWhereNoRxCame) {
    LogBuilder both = begun();
    both.sx({{SystemCode::gps, 5}}).flags(Band::c, {present}).rc({5000}).rx({1000});
    EXPECT_NEAR(*observationsIn(both).satellites.at(0).signals[bands::c][Kind::range],
                0.07500001 * 299792458.0, 1e-6);
    LogBuilder alone = begun();
    alone.sx({{SystemCode::gps, 5}}).flags(Band::b1, {present}).rc({5000}).rangeDeltas(Band::b1, {0});
    EXPECT_NEAR(*observationsIn(alone).satellites.at(0).signals[bands::b1][Kind::range],
                0.07500025 * 299792458.0, 1e-6);
}

TEST(StandardObservations, ElementThatItsMessageDoesNotHoldIsMissing) {
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5}, {SystemCode::gps, 6}})
                                          .flags(Band::c, {present, present})
                                          .flags(Band::b1, {present, present})
                                          .rx({0})  // of the first satellite alone
                                          .rangeDeltas(Band::b1, {0, 0})
                                          .phases(Band::b1, {0, 0})
                                          .strengths(Band::b1, {160, 160}));
    ASSERT_EQ(epoch.satellites.size(), 2U);
    const SignalValues& second = epoch.satellites[1].signals[bands::b1];
    EXPECT_FALSE(second[Kind::range]);
    EXPECT_FALSE(second[Kind::phase]);  // without a reference it is no phase
    EXPECT_FALSE(second[Kind::doppler]);
    EXPECT_EQ(second[Kind::strength], 40.0);
    EXPECT_TRUE(epoch.satellites[1].signals[bands::c].empty());
    EXPECT_FALSE(epoch.satellites[0].signals[bands::c][Kind::phase]);
}

TEST(StandardObservations, RangeDifferenceThatIsNotThereIsMissing) {
    const auto epoch = observationsIn(
        begun().sx({{SystemCode::gps, 5}}).flags(Band::b2, {present}).rx({0}).phases(Band::b2, {0}));
    EXPECT_FALSE(epoch.satellites.at(0).signals[bands::b2][Kind::range]);
    EXPECT_TRUE(epoch.satellites.at(0).signals[bands::b2][Kind::phase]);
}

TEST(StandardObservations, PhaseIsTimeByCarrierWithTheSignalsCorrection) {
    // 2^20 counts of 2^-40 s are 2^-20 s.
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5}, {SystemCode::beidou, 10}})
                                          .flags(Band::b1, {present, 0})
                                          .flags(Band::b5, {0, present})
                                          .rx({0, 0})
                                          .phases(Band::b1, {1 << 20, 0})
                                          .phases(Band::b5, {0, 1 << 20}));
    EXPECT_NEAR(*epoch.satellites.at(0).signals[bands::b1][Kind::phase],
                (0.075 + 1.0 / 1048576) * 1575.42e6 - 0.25, 1e-5);
    // BeiDou 10 has a quarter of a cycle as all and a half as one of 6 to 18.
    EXPECT_NEAR(*epoch.satellites.at(1).signals[bands::b5][Kind::phase],
                (0.105 + 1.0 / 1048576) * 1176.45e6 + 0.75, 1e-5);
}

TEST(StandardObservations, CarrierOfGlonassIsThatOfItsChannel) {
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::glonass, -7}})
                                          .nn({10})
                                          .flags(Band::c, {present})
                                          .flags(Band::b2, {present})
                                          .flags(Band::b5, {present})
                                          .rx({0})
                                          .phases(Band::c, {0})
                                          .phases(Band::b2, {0})
                                          .phases(Band::b5, {0}));
    const auto& signals = epoch.satellites.at(0).signals;
    EXPECT_NEAR(*signals[bands::c][Kind::phase], 0.075 * 1598.0625e6, 1e-5);
    EXPECT_NEAR(*signals[bands::b2][Kind::phase], 0.075 * 1242.9375e6 + 0.25, 1e-5);
    EXPECT_NEAR(*signals[bands::b5][Kind::phase], 0.075 * 1202.025e6 + 0.25, 1e-5);
}

TEST(StandardObservations, CorrectionOfBeidouDependsOnTheSatellite) {
    EXPECT_EQ(phaseCorrection(Constellation::beidou, bands::c, 5), 0.0);
    EXPECT_EQ(phaseCorrection(Constellation::beidou, bands::c, 6), 0.5);
    EXPECT_EQ(phaseCorrection(Constellation::beidou, bands::c, 58), 0.5);
    EXPECT_EQ(phaseCorrection(Constellation::beidou, bands::c, 59), 0.0);
    EXPECT_EQ(phaseCorrection(Constellation::beidou, bands::b2, 18), 0.25);
    EXPECT_EQ(phaseCorrection(Constellation::beidou, bands::b2, 19), 0.0);
    EXPECT_EQ(phaseCorrection(Constellation::gps, bands::c, 10), 0.0);
    EXPECT_EQ(phaseCorrection(Constellation::galileo, bands::c, 10), 0.5);
}

TEST(StandardObservations, DopplerIsDifferenceFromDxScaledToTheCarrier) {
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5}})
                                          .flags(Band::c, {present})
                                          .flags(Band::b2, {present})
                                          .dc({777})
                                          .dx({12000000})
                                          .dopplerDeltas(Band::c, {345})
                                          .dopplerDeltas(Band::b2, {-20000}));
    const auto& signals = epoch.satellites.at(0).signals;
    EXPECT_NEAR(*signals[bands::c][Kind::doppler], -1200.0345, 1e-9);
    EXPECT_NEAR(*signals[bands::b2][Kind::doppler], -1198.0 * 1227.6 / 1575.42, 1e-9);
}

TEST(StandardObservations, DopplerOfTheFirstBandIsDcWhereADifferenceIsMissing) {
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5}, {SystemCode::gps, 6}})
                                          .flags(Band::c, {present, present})
                                          .flags(Band::b1, {present, present})
                                          .rx({0, 0})
                                          .dc({-12345})
                                          .dopplerDeltas(Band::c, {345})     // without DX: of nothing
                                          .dopplerDeltas(Band::b1, {345}));  // the same
    EXPECT_NEAR(*epoch.satellites.at(0).signals[bands::c][Kind::doppler], 1.2345, 1e-12);
    EXPECT_FALSE(epoch.satellites.at(0).signals[bands::b1][Kind::doppler]);
    EXPECT_FALSE(epoch.satellites.at(1).signals[bands::c][Kind::doppler]);
}

TEST(StandardObservations, SumOfDopplersHasNoEnd) {
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5}})
                                          .flags(Band::c, {present})
                                          .dx({2147483647})
                                          .dopplerDeltas(Band::c, {32767}));
    EXPECT_NEAR(*epoch.satellites.at(0).signals[bands::c][Kind::doppler], -214751.6414, 1e-6);
}

TEST(StandardObservations, DopplerThatPrintsAsZeroHasNoSign) {
    const auto epoch = observationsIn(begun().sx({{SystemCode::gps, 5}}).flags(Band::c, {present}).dc({4}));
    EXPECT_FALSE(std::signbit(*epoch.satellites.at(0).signals[bands::c][Kind::doppler]));
    EXPECT_EQ(*epoch.satellites.at(0).signals[bands::c][Kind::doppler], 0.0);
    const auto least = observationsIn(begun().sx({{SystemCode::gps, 5}}).flags(Band::c, {present}).dc({5}));
    EXPECT_EQ(*least.satellites.at(0).signals[bands::c][Kind::doppler], -0.0005);
}

TEST(StandardObservations, StrengthOfZeroIsNone) {
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::gps, 5}, {SystemCode::gps, 6}})
                                          .flags(Band::c, {present, present})
                                          .rx({0, 0})
                                          .strengths(Band::c, {0, 191}));
    EXPECT_FALSE(epoch.satellites.at(0).signals[bands::c][Kind::strength]);
    EXPECT_EQ(epoch.satellites.at(1).signals[bands::c][Kind::strength], 47.75);
}

TEST(StandardObservations, SignalIsThereByBitSixOfItsFlagAlone) {
    const auto epoch = observationsIn(
        begun().sx({{SystemCode::gps, 5}, {SystemCode::gps, 6}}).flags(Band::c, {0xFFBF, 0x40}).rx({0, 0}));
    ASSERT_EQ(epoch.satellites.size(), 1U);
    EXPECT_EQ(epoch.satellites[0].number, 6);
}

TEST(StandardObservations, NavicL1NeedsVersion401) {
    LogBuilder log = begun();
    log.sx({{SystemCode::navic, 4}}).flags(Band::l, {present}).rx({0}).rangeDeltas(Band::l, {0});
    EXPECT_TRUE(observationsIn(log).satellites.empty());
    Selection version401;
    version401.version = RinexVersion::v401;
    EXPECT_EQ(observationsIn(log, version401).satellites.size(), 1U);
}

TEST(StandardObservations, BandWithoutSignalOfTheSystemIsNone) {
    const auto epoch = observationsIn(
        begun().sx({{SystemCode::galileo, 4}}).flags(Band::l, {present}).rx({0}).rangeDeltas(Band::l, {0}));
    EXPECT_TRUE(epoch.satellites.empty());
}

TEST(StandardObservations, SatellitesStandByConstellationAndNumber) {
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::beidou, 2},
                                               {SystemCode::glonass, 1},
                                               {SystemCode::gps, 30},
                                               {SystemCode::gps, 4}})
                                          .nn({8})
                                          .flags(Band::c, {present, present, present, present})
                                          .rx({0, 0, 3, 4}));
    ASSERT_EQ(epoch.satellites.size(), 4U);
    EXPECT_EQ(epoch.satellites[0].number, 4);
    EXPECT_NEAR(*epoch.satellites[0].signals[bands::c][Kind::range], 0.07500000004 * 299792458.0, 1e-6);
    EXPECT_EQ(epoch.satellites[1].number, 30);
    EXPECT_EQ(epoch.satellites[2].constellation, Constellation::glonass);
    EXPECT_EQ(epoch.satellites[3].constellation, Constellation::beidou);
}

TEST(StandardObservations, EachSatelliteLeftOutHasItsReason) {
    const std::vector<samplelog::Satellite> list = {{SystemCode::glonass, 1},  // slot 0
                                                    {SystemCode::glonass, 2},  // slot 255
                                                    {SystemCode::glonass, -8},
                                                    {SystemCode::glonass, 14},
                                                    {SystemCode::glonass, 3},
                                                    {SystemCode::qzss, 1},
                                                    {SystemCode::sbas, 20},
                                                    {SystemCode::glonassCdma, 1},
                                                    {8, 1},
                                                    {SystemCode::gps, 0},
                                                    {SystemCode::gps, 100},
                                                    {SystemCode::gps, 99},
                                                    {SystemCode::gps, 99}};
    const std::vector<std::uint16_t> flags(list.size(), present);
    const std::vector<std::int32_t> ranges(list.size(), 0);
    const auto epoch =
        observationsIn(begun().sx(list).nn({0, 255, 4, 5, 100}).flags(Band::c, flags).rx(ranges));
    EXPECT_EQ(leftOut(epoch, LeftOut::glonassWithoutSlot), 2U);
    EXPECT_EQ(leftOut(epoch, LeftOut::glonassWithoutChannel), 2U);
    EXPECT_EQ(leftOut(epoch, LeftOut::withoutNumber), 3U);
    EXPECT_EQ(leftOut(epoch, LeftOut::twice), 1U);
    EXPECT_EQ(leftOut(epoch, LeftOut::qzss), 1U);
    EXPECT_EQ(leftOut(epoch, LeftOut::sbas), 1U);
    EXPECT_EQ(leftOut(epoch, LeftOut::glonassCdma), 1U);
    EXPECT_EQ(leftOut(epoch, LeftOut::unknownSystem), 1U);
    ASSERT_EQ(epoch.satellites.size(), 1U);
    EXPECT_EQ(epoch.satellites[0].number, 99);
}

TEST(StandardObservations, SystemThatIsNotSelectedIsNeitherThereNorCounted) {
    Selection selection;
    selection.systems[orbconv::indexOf(Constellation::glonass)] = false;
    const auto epoch = observationsIn(begun()
                                          .sx({{SystemCode::glonass, 1}, {SystemCode::gps, 2}})
                                          .flags(Band::c, {present, present})
                                          .rx({0, 0}),
                                      selection);
    EXPECT_EQ(epoch.satellites.size(), 1U);
    EXPECT_EQ(leftOut(epoch, LeftOut::glonassWithoutSlot), 0U);
}

TEST(StandardObservations, ListOfAllPlacesIsTaken) {
    std::vector<samplelog::Satellite> list(180);
    for (int i = 0; i < 180; ++i) {
        list[static_cast<std::size_t>(i)] = {i < 90 ? SystemCode::gps : SystemCode::galileo, 1 + i % 90};
    }
    const std::vector<std::uint16_t> flags(list.size(), present);
    const std::vector<std::int32_t> ranges(list.size(), 0);
    EXPECT_EQ(observationsIn(begun().sx(list).flags(Band::c, flags).rx(ranges)).satellites.size(), 180U);
}

TEST(StandardObservations, ClockOffsetIsThatOfTheEpoch) {
    EXPECT_EQ(observationsIn(begun().to(0.000125)).clockOffset, 0.000125);
    EXPECT_FALSE(observationsIn(begun()).clockOffset);
}

}  // namespace
