// What belongs to an epoch.
#include "reading/epoch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "companions/support/epochs_of.h"
#include "samplelog/log_builder.h"

namespace orbconv::reading {
namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::epochsOf;

constexpr std::size_t rx = rowOf("rx");

std::vector<std::optional<std::int32_t>> rangesOf(const Epoch& epoch) {
    std::vector<std::optional<std::int32_t>> values;
    for (const EpochSatellite& satellite : epoch.satellites()) {
        values.push_back(epoch.element<std::int32_t>(rx, satellite.element));
    }
    return values;
}

std::vector<int> slotsOf(const Epoch& epoch) {
    std::vector<int> slots;
    for (const EpochSatellite& satellite : epoch.satellites()) {
        slots.push_back(satellite.slot);
    }
    return slots;
}

LogBuilder startedLog() {
    LogBuilder log;
    log.time(1000).rd(2024, 3, 5);
    return log;
}

TEST(EpochTest, FirstEpoch_BeginsWithItsFirstMessageBehindDamage) {
    LogBuilder log;
    log.raw(std::string(30, '\0')).time(1000).rd(2024, 3, 5).sx({{1, 2}}).td();
    const auto epochs = epochsOf(log);
    ASSERT_EQ(epochs.size(), 1);
    EXPECT_EQ(epochs[0].offset, 30);
    EXPECT_EQ(epochs[0].endOffset, log.size());
}

TEST(EpochTest, LogWithoutTd_HasNone) {
    EXPECT_THAT(epochsOf(startedLog().sx({{1, 2}}).rx({7})), IsEmpty());
    EXPECT_THAT(epochsOf(LogBuilder()), IsEmpty());
}

TEST(EpochTest, MessagesBehindTheLastTd_MakeNone) {
    EXPECT_EQ(epochsOf(startedLog().sx({{1, 2}}).td().time(2000).sx({{1, 2}}).rx({7})).size(), 1U);
}

TEST(EpochTest, TdAlone_ClosesAnEmptyEpoch) {
    const auto epochs = epochsOf(LogBuilder().td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_THAT(epochs[0].satellites(), IsEmpty());
    EXPECT_FALSE(epochs[0].time);
}

TEST(EpochTest, Offsets_FromItsFirstMessageToBehindTd) {
    LogBuilder log = startedLog();
    log.td();
    const std::size_t first = log.size();
    log.time(2000).td();
    const auto epochs = epochsOf(log);
    ASSERT_EQ(epochs.size(), 2U);
    EXPECT_EQ(epochs[0].offset, 0U);
    EXPECT_EQ(epochs[0].endOffset, first);
    EXPECT_EQ(epochs[1].offset, first);
    EXPECT_EQ(epochs[1].endOffset, log.size());
}

TEST(EpochTest, Satellites_InTheOrderOfTheList) {
    const auto epochs = epochsOf(startedLog()
                                     .sx({{SystemCode::gps, 31},
                                          {SystemCode::glonass, -7},
                                          {SystemCode::sbas, 120},
                                          {SystemCode::galileo, 36},
                                          {SystemCode::qzss, 193},
                                          {SystemCode::beidou, 63},
                                          {SystemCode::navic, 14},
                                          {SystemCode::glonassCdma, 5},
                                          {8, 77},
                                          {0, 1}})
                                     .td());
    ASSERT_EQ(epochs.size(), 1U);
    const auto satellites = epochs[0].satellites();
    ASSERT_EQ(satellites.size(), 10U);
    const std::vector<std::optional<Constellation>> constellations = {
        Constellation::gps,   Constellation::glonass,
        Constellation::sbas,  Constellation::galileo,
        Constellation::qzss,  Constellation::beidou,
        Constellation::navic, Constellation::glonassCdma,
        std::nullopt,         std::nullopt};
    const std::vector<int> codes = {1, 2, 3, 4, 5, 6, 7, 9, 8, 0};
    const std::vector<int> names = {31, 0, 120, 36, 193, 63, 14, 5, 77, 1};
    for (std::size_t i = 0; i < satellites.size(); ++i) {
        EXPECT_EQ(satellites[i].constellation, constellations[i]) << i;
        EXPECT_EQ(satellites[i].systemCode, codes[i]) << i;
        EXPECT_EQ(satellites[i].nameNumber(), names[i]) << i;
        EXPECT_EQ(satellites[i].element, i);
    }
    EXPECT_EQ(satellites[1].channel(), -7);
}

TEST(EpochTest, Satellites_AsManyAsAListHolds) {
    const std::vector<samplelog::Satellite> many(180, {SystemCode::gps, 3});
    const auto epochs = epochsOf(startedLog().sx(many).rx(std::vector<std::int32_t>(180, -5)).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_EQ(epochs[0].satellites().size(), 180U);
    EXPECT_EQ(epochs[0].element<std::int32_t>(rx, 179), -5);
    EXPECT_FALSE(epochs[0].element<std::int32_t>(rx, 180));
}

TEST(EpochTest, EarlierList_DoesNotShowThrough) {
    const auto epochs = epochsOf(startedLog().sx({{1, 2}}).td().rx({7}).td());
    ASSERT_EQ(epochs.size(), 2U);
    EXPECT_THAT(epochs[1].satellites(), IsEmpty());
}

TEST(EpochTest, EarlierArrays_DoNotShowThrough) {
    const auto epochs = epochsOf(startedLog()
                                     .sx({{1, 2}, {1, 3}})
                                     .rx({7, 8})
                                     .strengths(Band::c, {160, 161})
                                     .td()
                                     .sx({{1, 2}, {1, 3}})
                                     .rx({9})
                                     .td());
    ASSERT_EQ(epochs.size(), 2U);
    EXPECT_THAT(rangesOf(epochs[0]), ElementsAre(7, 8));
    EXPECT_TRUE(epochs[0].has(rowOf("CE")));
    EXPECT_THAT(rangesOf(epochs[1]), ElementsAre(9, std::nullopt));
    EXPECT_FALSE(epochs[1].has(rowOf("CE")));
    EXPECT_EQ(epochs[1].elementCount(rowOf("CE")), 0U);
    EXPECT_FALSE(epochs[1].element<std::uint8_t>(rowOf("CE"), 0));
    EXPECT_THAT(epochs[1].bytes(rowOf("CE")), IsEmpty());
}

TEST(EpochTest, Elements_OfEveryWidthAndSign) {
    const auto epochs = epochsOf(startedLog()
                                     .sx({{1, 2}, {1, 3}})
                                     .rx({-2'000'000'000, 2'000'000'000})
                                     .rangeDeltas(Band::b1, {-32768, 32767})
                                     .strengths(Band::l, {0, 255})
                                     .flags(Band::l, {0x0140, 0xFFFF})
                                     .td());
    ASSERT_EQ(epochs.size(), 1U);
    const Epoch& epoch = epochs[0];
    EXPECT_THAT(rangesOf(epoch), ElementsAre(-2'000'000'000, 2'000'000'000));
    EXPECT_EQ(epoch.element<std::int16_t>(rowOf("1r"), 0), -32768);
    EXPECT_EQ(epoch.element<std::int16_t>(rowOf("1r"), 1), 32767);
    EXPECT_EQ(epoch.element<std::uint8_t>(rowOf("lE"), 1), 255);
    EXPECT_EQ(epoch.element<std::uint16_t>(rowOf("Fl"), 0), 0x0140);
    EXPECT_THAT(epoch.bytes(rowOf("Fl")), ElementsAre(0x40, 0x01, 0xFF, 0xFF));
}

TEST(EpochTest, MoreElementsThanSatellites_AreKept) {
    const auto epochs = epochsOf(startedLog().sx({{1, 2}}).rx({7, 8, 9}).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_THAT(rangesOf(epochs[0]), ElementsAre(7));
    EXPECT_EQ(epochs[0].elementCount(rx), 3U);
}

TEST(EpochTest, SameArrayTwice_TheLastCountsWithoutATailOfTheFirst) {
    const auto epochs = epochsOf(startedLog().sx({{1, 2}, {1, 3}}).rx({7, 8}).rx({9}).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_THAT(rangesOf(epochs[0]), ElementsAre(9, std::nullopt));
}

TEST(EpochTest, EmptyArray_CameWithoutElements) {
    const auto epochs = epochsOf(startedLog().sx({{1, 2}}).rx({}).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_TRUE(epochs[0].has(rx));
    EXPECT_EQ(epochs[0].elementCount(rx), 0U);
}

// The list says whose the elements are: those that came for another list are nobody's.
TEST(EpochTest, AnotherListInTheEpoch_DropsWhatCameForTheFirst) {
    const auto epochs = epochsOf(startedLog()
                                     .sx({{1, 2}, {1, 3}})
                                     .rx({7, 8})
                                     .nn({5})
                                     .time(2000)
                                     .sx({{2, 1}})
                                     .strengths(Band::c, {9})
                                     .td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_EQ(epochs[0].satellites().size(), 1U);
    EXPECT_THAT(rangesOf(epochs[0]), ElementsAre(std::nullopt));
    EXPECT_THAT(slotsOf(epochs[0]), ElementsAre(0));
    EXPECT_EQ(epochs[0].element<std::uint8_t>(rowOf("CE"), 0), 9);
}

TEST(EpochTest, ArrayAheadOfTheFirstList_BelongsToIt) {
    const auto epochs = epochsOf(startedLog().nn({11}).rx({7}).sx({{2, 2}}).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_THAT(rangesOf(epochs[0]), ElementsAre(7));
    EXPECT_THAT(slotsOf(epochs[0]), ElementsAre(11));
}

TEST(EpochTest, Slots_InTheOrderOfTheGlonassSatellites) {
    const auto epochs =
        epochsOf(startedLog().sx({{1, 2}, {2, -7}, {9, 4}, {6, 3}, {2, 6}, {2, 0}}).nn({24, 1, 13}).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_THAT(slotsOf(epochs[0]), ElementsAre(0, 24, 0, 0, 1, 13));
    EXPECT_EQ(epochs[0].satellites()[1].nameNumber(), 24);
    EXPECT_EQ(epochs[0].satellites()[2].nameNumber(), 4);
}

TEST(EpochTest, Slots_UnknownZeroAndMissing_AreNone) {
    const auto epochs = epochsOf(startedLog().sx({{2, 1}, {2, 2}, {2, 3}, {2, 4}}).nn({255, 0, 8}).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_THAT(slotsOf(epochs[0]), ElementsAre(0, 0, 8, 0));
}

TEST(EpochTest, Slots_OfAnEarlierEpoch_DoNotCount) {
    const auto epochs = epochsOf(startedLog().sx({{2, 1}}).nn({8}).td().sx({{2, 1}}).td());
    ASSERT_EQ(epochs.size(), 2U);
    EXPECT_THAT(slotsOf(epochs[0]), ElementsAre(8));
    EXPECT_THAT(slotsOf(epochs[1]), ElementsAre(0));
}

TEST(EpochTest, ClockOffset_OfItsOwnEpochAlone) {
    const auto epochs =
        epochsOf(startedLog().to(-1.5e-4).sx({{1, 2}}).td().sx({{1, 2}}).td().to(1).to(2).td());
    ASSERT_EQ(epochs.size(), 3U);
    EXPECT_EQ(epochs[0].clockOffset, -1.5e-4);
    EXPECT_FALSE(epochs[1].clockOffset);
    EXPECT_EQ(epochs[2].clockOffset, 2.0);
}

TEST(EpochTest, ClockOffset_ShortBodyIsNone) {
    const auto epochs = epochsOf(startedLog().message("TO", "1234567").td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_FALSE(epochs[0].clockOffset);
}

TEST(EpochTest, ClockOffset_NoNumberIsNone) {
    const std::string notANumber = std::string(6, '\0') + "\xF8\x7F";
    const auto epochs = epochsOf(startedLog().message("TO", notANumber).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_FALSE(epochs[0].clockOffset);
}

TEST(EpochTest, OtherMessages_AreNotKept) {
    const auto epochs = epochsOf(startedLog().sx({{1, 2}}).message("zz", "abc").ge123({.sv = 1}).td());
    ASSERT_EQ(epochs.size(), 1U);
    EXPECT_EQ(epochs[0].elementCount(rowOf("GE")), 0U);
}

}  // namespace
}  // namespace orbconv::reading
