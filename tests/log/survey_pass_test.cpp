// What each pass dispatches, what the survey collects for the header, and what is left when the observation
// file cannot be written.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "log/passes.h"
#include "samplelog/log_builder.h"
#include "support/log_passes.h"

namespace {

using orbconv::Constellation;
using orbconv::NavigationTables;
using orbconv::RunOptions;
using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::Satellite;
using samplelog::SystemCode;
using testsupport::Passes;
using Numbers = std::vector<std::int32_t>;

// An epoch whose satellites all have their first signal.
LogBuilder& epoch(LogBuilder& log, const std::vector<Satellite>& satellites) {
    return log.sx(satellites)
        .rx(std::vector<std::int32_t>(satellites.size(), 0))
        .flags(Band::c, std::vector<std::uint16_t>(satellites.size(), 0x40))
        .td();
}

std::vector<Satellite> gps(int first, int last) {
    std::vector<Satellite> satellites;
    for (int number = first; number <= last; ++number) {
        satellites.push_back({SystemCode::gps, number});
    }
    return satellites;
}

// A list of satellites up to the zero that ends it.
Numbers listed(const orbconv::SatelliteNumbers& list) {
    return {list.begin(), std::ranges::find(list, 0)};
}

Passes surveyed(const LogBuilder& log, const RunOptions& options = {}) {
    Passes passes;
    passes.state->options = options;
    passes.survey(log.bytes());
    return passes;
}

Numbers firstSignalList(const LogBuilder& log) {
    return listed(surveyed(log).state->survey.signalSatelliteList[0][0]);
}

std::int32_t satelliteTotal(const LogBuilder& log, const RunOptions& options = {}) {
    return surveyed(log, options).state->survey.satelliteTotal;
}

// One satellite of each system.
LogBuilder everySystem() {
    LogBuilder log;
    log.sx({{1, 11}, {2, 1}, {3, 11}, {4, 11}, {5, 11}, {6, 11}, {7, 11}, {9, 11}}).nn({12});
    log.flags(Band::c, std::vector<std::uint16_t>(8, 0x40)).td();
    return log;
}

struct NavigationCase {
    std::string_view id;
    void (*append)(LogBuilder& log);
    int (*count)(const NavigationTables& tables);
};

class NavigationMessage : public testing::TestWithParam<NavigationCase> {};

const NavigationCase navigationCases[] = {
    {"GE", [](LogBuilder& log) { log.ge123({}); }, [](const NavigationTables& t) { return t.gps.count; }},
    {"NE", [](LogBuilder& log) { log.ne88({}); }, [](const NavigationTables& t) { return t.glonass.count; }},
    {"EN", [](LogBuilder& log) { log.en({}); }, [](const NavigationTables& t) { return t.galileo.count; }},
    {"CN", [](LogBuilder& log) { log.cn134({}); }, [](const NavigationTables& t) { return t.beidou.count; }},
    {"IE", [](LogBuilder& log) { log.ie({}); }, [](const NavigationTables& t) { return t.navic.count; }},
    {"IO", [](LogBuilder& log) { log.io({.alpha0 = 1}); },
     [](const NavigationTables& t) { return t.gpsIono.count; }},
    {"II", [](LogBuilder& log) { log.ii({.alpha0 = 1}); },
     [](const NavigationTables& t) { return t.navicIono.count; }},
    {"CI", [](LogBuilder& log) { log.cn134({}).ci({.alpha0 = 1}); },
     [](const NavigationTables& t) { return t.beidouIono.count; }},
    {"UO", [](LogBuilder& log) { log.uo({.a0 = 1}); },
     [](const NavigationTables& t) { return t.gpsTimeOffset.count; }},
    {"CU", [](LogBuilder& log) { log.cu({.a0 = 1}); },
     [](const NavigationTables& t) { return t.beidouTimeOffset.count; }},
    {"IU", [](LogBuilder& log) { log.iu({.a0 = 1}); },
     [](const NavigationTables& t) { return t.navicTimeOffset.count; }},
    {"EU", [](LogBuilder& log) { log.eu({.utc = {.a0 = 1}}); },
     [](const NavigationTables& t) { return t.galileoTimeOffset.count; }},
    {"NU", [](LogBuilder& log) { log.nu({.tauC = 1}); },
     [](const NavigationTables& t) { return t.glonassTimeOffset.tauC == 1.0 ? 1 : 0; }},
};

void PrintTo(const NavigationCase& navigation, std::ostream* out) {
    *out << navigation.id;
}

struct TotalCase {
    bool RunOptions::*flag;
    std::int32_t total;
};

constexpr TotalCase totals[] = {
    {&RunOptions::includeGps, 4},    {&RunOptions::includeGlonass, 4}, {&RunOptions::includeGalileo, 4},
    {&RunOptions::includeBeidou, 4}, {&RunOptions::includeNavic, 4},
};

}  // namespace

TEST_P(NavigationMessage, CountsInTheSurveyPassOnly) {
    LogBuilder log;
    GetParam().append(log);
    Passes passes;
    passes.write(log.bytes());
    EXPECT_EQ(GetParam().count(passes.state->navigation), 0);
    passes.survey(log.bytes());
    EXPECT_EQ(GetParam().count(passes.state->navigation), 1);
    passes.write(log.bytes());
    EXPECT_EQ(GetParam().count(passes.state->navigation), 1);
}

TEST_P(NavigationMessage, CountsForAnExcludedConstellationToo) {
    LogBuilder log;
    GetParam().append(log);
    RunOptions options;
    options.includeGps = options.includeGlonass = options.includeGalileo = false;
    options.includeBeidou = options.includeNavic = false;
    EXPECT_EQ(GetParam().count(surveyed(log, options).state->navigation), 1);
}

INSTANTIATE_TEST_SUITE_P(Passes, NavigationMessage, testing::ValuesIn(navigationCases),
                         [](const auto& instance) { return std::string(instance.param.id); });

TEST(PassDispatch, IdentityCountsInTheWritingPassOnly) {
    LogBuilder log;
    log.kvMarker("MARK").pmParameters({{"rcv/igs=", "TYPE"}}).antennaType("ANT");
    log.pv({1, 2, 3}).to(0.5).sx({{SystemCode::gps, 5}});
    Passes passes = surveyed(log);
    const orbconv::ReceiverInfo& receiver = passes.state->receiver;
    EXPECT_EQ(receiver.markerName + receiver.receiverType + receiver.antennaType, "");
    EXPECT_EQ(receiver.approxPosition, (std::array{0.0, 0.0, 0.0}));
    EXPECT_EQ(receiver.receiverClockOffset, 0.0);
    EXPECT_EQ(passes.state->presence.satelliteSystemLetter(), "");

    passes.write(log.bytes());
    EXPECT_EQ(receiver.markerName, "MARK");
    EXPECT_EQ(receiver.receiverType, "TYPE");
    EXPECT_EQ(receiver.antennaType, "ANT");
    EXPECT_EQ(receiver.approxPosition, (std::array{1.0, 2.0, 3.0}));
    EXPECT_EQ(receiver.receiverClockOffset, 0.5);
    EXPECT_EQ(passes.state->presence.satelliteSystemLetter(), "G");
}

TEST(PassDispatch, DateAndTimeSetBothClocksInTheSurveyPass) {
    Passes passes = surveyed(LogBuilder().rd(2024, 3, 5).time(3661000));
    EXPECT_EQ(passes.state->clocks.lastObs.second, 1.0F);
    EXPECT_EQ(passes.state->clocks.epoch.second, 1.0F);
    EXPECT_EQ(passes.state->clocks.lastObs.day, 5.0F);
    EXPECT_EQ(passes.state->clocks.epoch.day, 5.0F);
    EXPECT_FALSE(passes.state->clocks.dateStillMissing);
}

TEST(PassDispatch, TimeAloneClearsTheMissingDateInTheSurveyPass) {
    EXPECT_FALSE(surveyed(LogBuilder().time(1000)).state->clocks.dateStillMissing);
    EXPECT_TRUE(surveyed(LogBuilder().td()).state->clocks.dateStillMissing);
}

TEST(PassDispatch, DateSetsOnlyTheEpochClockInTheWritingPass) {
    Passes passes;
    passes.write(LogBuilder().rd(2024, 3, 5).time(3661000).bytes());
    EXPECT_EQ(passes.state->clocks.epoch.day, 5.0F);
    EXPECT_EQ(passes.state->clocks.epoch.second, 0.0F);
    EXPECT_EQ(passes.state->clocks.lastObs.day, 0.0F);
}

TEST(PassDispatch, IdThatDiffersInItsHighestBitIsAnother) {
    Passes passes;
    passes.survey(LogBuilder().rd(2024, 3, 5).bytes());
    passes.state->clocks.epoch.day = 9.0F;
    passes.survey(LogBuilder().message("\322D", "12345").bytes());  // R with its highest bit
    EXPECT_EQ(passes.state->clocks.epoch.day, 9.0F);
    passes.survey(LogBuilder().message("R\304", "12345").bytes());  // D with it
    EXPECT_EQ(passes.state->clocks.epoch.day, 9.0F);
    passes.survey(LogBuilder().rd(2024, 3, 5).bytes());
    EXPECT_EQ(passes.state->clocks.epoch.day, 5.0F);
}

TEST(PassDispatch, TimeOfDayIsZeroAtTheStartOfEachPass) {
    Passes passes;
    passes.state->staging.timeOfDayMs = 3661000;
    passes.survey(LogBuilder().rd(2024, 3, 5).bytes());
    EXPECT_EQ(passes.state->clocks.epoch.hour, 0.0F);
    passes.state->staging.timeOfDayMs = 3661000;
    passes.write(LogBuilder().rd(2024, 3, 5).bytes());
    EXPECT_EQ(passes.state->clocks.epoch.hour, 0.0F);
    EXPECT_EQ(passes.state->clocks.epoch.day, 5.0F);
}

TEST(PassDispatch, GlonassSlotsActAtNnInTheSurveyPassAndAtTdInTheWritingPass) {
    LogBuilder log;
    log.sx({{SystemCode::glonass, 1}}).nn({12});
    EXPECT_EQ(surveyed(log).state->glonassSlotTable.count, 1);
    Passes passes;
    passes.write(log.bytes());
    EXPECT_EQ(passes.state->glonassSlotTable.count, 0);
    passes.write(log.td().bytes());
    EXPECT_EQ(passes.state->glonassSlotTable.count, 1);

    log.clear().nn({12}).sx({{SystemCode::glonass, 1}}).td();
    EXPECT_EQ(surveyed(log).state->glonassSlotTable.count, 0);
}

TEST(PassDispatch, TdRunsOnlyTheFlagStepsInTheSurveyPass) {
    LogBuilder log;
    epoch(log, gps(5, 5));
    Passes passes = surveyed(log);
    EXPECT_EQ(passes.state->survey.obsCodeCount[0], 0);
    EXPECT_EQ(passes.state->survey.codes(Constellation::gps)[0].view(), "C1C");
    passes.write(log.bytes());
    EXPECT_EQ(passes.state->survey.obsCodeCount[0], 4);
}

TEST(SurveyPass, ListsTheSatellitesOfEachSignalWithoutLosingAny) {
    LogBuilder log;
    epoch(log, {{SystemCode::gps, 9}, {SystemCode::gps, 5}});
    epoch(log, {{SystemCode::gps, 7}});
    epoch(log, {});
    epoch(log, {{SystemCode::gps, 5}, {SystemCode::gps, 3}});
    EXPECT_EQ(firstSignalList(log), (Numbers{3, 5, 7, 9}));
    EXPECT_EQ(satelliteTotal(log), 4);
}

TEST(SurveyPass, SeventhListIsTheFirstAsTheLogFilledIt) {
    LogBuilder log;
    epoch(log, {{SystemCode::gps, 9}, {SystemCode::gps, 5}});
    EXPECT_EQ(listed(surveyed(log).state->survey.allSatelliteList[0]), (Numbers{9, 5}));
}

TEST(SurveyPass, RecordBehindThe30thIsNotClearedBetweenEpochs) {
    // In the second epoch the record at the 31st place is still number 31's, which hides number 32.
    LogBuilder log;
    epoch(log, gps(1, 31));
    std::vector<Satellite> next = gps(1, 30);
    next.push_back({SystemCode::gps, 32});
    EXPECT_EQ(satelliteTotal(epoch(log, next)), 31);
}

TEST(SurveyPass, ExcludedConstellationHasNoSignals) {
    RunOptions options;
    options.includeGps = false;
    LogBuilder log;
    epoch(log, gps(5, 6));
    const Passes passes = surveyed(log, options);
    EXPECT_TRUE(passes.state->survey.codes(Constellation::gps)[0].empty());
    EXPECT_EQ(listed(passes.state->survey.signalSatelliteList[0][0]), Numbers{});
    EXPECT_EQ(passes.state->survey.satelliteTotal, 0);
}

TEST(SatelliteTotal, CountsFiveConstellations) {
    EXPECT_EQ(satelliteTotal(everySystem()), 5);
    for (const TotalCase& c : totals) {
        RunOptions options;
        options.*c.flag = false;
        EXPECT_EQ(satelliteTotal(everySystem(), options), c.total);
    }
}

TEST(SatelliteTotal, LeavesOutSatellitesWithoutTheFirstSignal) {
    LogBuilder log;
    log.sx(gps(5, 6)).flags(Band::c, {0x40, 0xFFBF}).flags(Band::b1, {0x40, 0x40}).td();
    const Passes passes = surveyed(log);
    EXPECT_EQ(passes.state->survey.satelliteTotal, 1);
    EXPECT_EQ(listed(passes.state->survey.signalSatelliteList[0][1]), (Numbers{5, 6}));
}

TEST(SatelliteTotal, CountsGlonassByKnownAndUnknownSlots) {
    LogBuilder log;
    log.sx({{2, 1}, {2, 2}, {2, 3}, {2, 4}}).nn({12, 255, 255, 0});
    log.flags(Band::c, {0x40, 0x40, 0x40, 0x40}).td();
    // Slots 12 and 255; the second 255 is listed already, and 0 is no entry.
    EXPECT_EQ(satelliteTotal(log), 2);
}

TEST(SatelliteTotal, ListsTake32SatellitesAndThoseOfBeidou61) {
    for (const auto& [system, room] : std::vector<std::pair<std::uint8_t, int>>{
             {SystemCode::gps, 32}, {SystemCode::galileo, 32}, {SystemCode::beidou, 61}}) {
        LogBuilder log;
        std::vector<Satellite> satellites;
        for (int i = 1; i <= 70; ++i) {
            satellites.push_back({system, i});
        }
        EXPECT_EQ(satelliteTotal(epoch(log, satellites)), room) << int{system};
    }
}

TEST(ClosedObservationFile, LetsTheWritingPassReadAndAssemble) {
    LogBuilder log;
    for (const std::uint32_t time : {1000U, 2000U, 3000U}) {
        epoch(log.time(time).rd(2024, 3, 5), gps(5, 5));
    }
    Passes passes = surveyed(log.antennaType("ANT"));
    passes.writeNowhere(log.bytes());
    const orbconv::RunState& state = *passes.state;
    EXPECT_EQ(state.receiver.antennaType, "ANT");
    // Nothing was written, so nothing was cleared and the clock was not moved on.
    EXPECT_EQ(state.store.records(Constellation::gps)[0].number, 5);
    EXPECT_EQ(state.clocks.epoch.second, 3.0F);
}

TEST(MergeInTheWritingPass, RunsBehindEveryMessageOfAnOpenFileWhenSwitchedOn) {
    Passes passes;
    passes.state->options.includeGlonassCdma = true;
    passes.state->survey.codes(Constellation::glonassCdma)[0] = "C4X";
    passes.writeNowhere(LogBuilder().rd(2024, 3, 5).bytes());
    EXPECT_EQ(passes.state->survey.codes(Constellation::glonass)[30].view(), "");
    passes.write(LogBuilder().rd(2024, 3, 5).bytes());
    EXPECT_EQ(passes.state->survey.codes(Constellation::glonass)[30].view(), "C4X");
}

TEST(MergeInTheWritingPass, DoesNotRunWhenSwitchedOff) {
    Passes passes;
    passes.state->survey.codes(Constellation::glonassCdma)[0] = "C4X";
    passes.write(LogBuilder().rd(2024, 3, 5).bytes());
    EXPECT_EQ(passes.state->survey.codes(Constellation::glonass)[30].view(), "");
}
