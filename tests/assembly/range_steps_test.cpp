// Pseudoranges: the full ones of rc and rx, and the differences of 1r, 2r, 3r, 5r and lr.
#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::Cell;
using testsupport::Constellation;
using testsupport::everyVersion;
using testsupport::Gate;
using testsupport::ObsRow;
using testsupport::satellite;
using testsupport::satellites;
using testsupport::SatEpochRecord;
using enum testsupport::Constellation;

constexpr double lightSpeed = 299792458.0;

constexpr auto ranges = ObsRow::pseudorange;

// ---- full ranges ----

struct ScaleRow : Cell {
    double scale;
    double offset;
    Gate rcGate;
};

// clang-format off
constexpr auto scaleRows = std::to_array<ScaleRow>({
    {{"rc", gps},         1e-11, 0.075, testsupport::always},
    {{"rc", glonass},     1e-11, 0.075, testsupport::always},
    {{"rc", galileo},     2e-11, 0.085, testsupport::always},
    {{"rc", beidou},      2e-11, 0.105, testsupport::always},
    {{"rc", navic},       2e-11, 0.105, testsupport::only3And4},
    {{"rc", glonassCdma}, 1e-11, 0.075, testsupport::always},
});
// clang-format on

const std::vector<std::int64_t> fullRanges = {
    0, 1, -1, 12345, -98765, 1999999999, -2000000000, 65536, 2147483647, -2147483648, 123456789};

class FullRanges : public testsupport::AssemblyTable<ScaleRow> {
protected:
    SatEpochRecord& theRecord() { return record(GetParam().system); }
    void run(std::string_view id, std::int64_t value) {
        restart();
        list({satellite(GetParam().system, 5)});
        put(id, {value});
        assemble();
    }
    [[nodiscard]] static double time(std::int64_t value) {
        return static_cast<double>(value) * GetParam().scale + GetParam().offset;
    }
};

TEST_P(FullRanges, OfRcAreTimesTheSpeedOfLight) {
    includeEverySystem();
    for (const std::int64_t value : fullRanges) {
        run("rc", value);
        EXPECT_EQ(theRecord().at(ranges, 0), time(value) * lightSpeed) << value;
    }
}

TEST_P(FullRanges, OfRcLeaveTheClockOffsetAlone) {
    includeEverySystem();
    run("rc", 777);
    EXPECT_EQ(theRecord().clockOffset, 0.0);
}

TEST_P(FullRanges, OfRxAreTimesTheSpeedOfLightToo) {
    includeEverySystem();
    for (const std::int64_t value : fullRanges) {
        run("rx", value);
        EXPECT_EQ(theRecord().at(ranges, 0), time(value) * lightSpeed) << value;
    }
}

TEST_P(FullRanges, OfRxAreTheClockOffset) {
    includeEverySystem();
    for (const std::int64_t value : fullRanges) {
        run("rx", value);
        EXPECT_EQ(theRecord().clockOffset, time(value)) << value;
    }
}

TEST_P(FullRanges, OfRcNeedTheVersionOnlyForNavic) {
    includeEverySystem();
    for (const double version : everyVersion) {
        options.rinexVersion = version;
        run("rc", 500);
        const double expected = GetParam().rcGate.opensFor(version) ? time(500) * lightSpeed : 0.0;
        EXPECT_EQ(theRecord().at(ranges, 0), expected) << version;
    }
}

TEST_P(FullRanges, OfRxNeedNoVersion) {
    includeEverySystem();
    for (const double version : everyVersion) {
        options.rinexVersion = version;
        run("rx", 500);
        EXPECT_EQ(theRecord().clockOffset, time(500)) << version;
        EXPECT_EQ(theRecord().at(ranges, 0), time(500) * lightSpeed) << version;
    }
}

TEST_P(FullRanges, AreNotTakenForALeftOutConstellation) {
    includeEverySystem();
    include(GetParam().system, false);
    for (const std::string_view id : {"rc", "rx"}) {
        run(id, 500);
        EXPECT_EQ(theRecord().at(ranges, 0), 0.0);
        EXPECT_EQ(theRecord().clockOffset, 0.0);
        EXPECT_EQ(theRecord().number, 0);
    }
}

TEST_P(FullRanges, OfRcAreDroppedInAnotherSatellitesRecord) {
    includeEverySystem();
    list({satellite(GetParam().system, 5)});
    put("rc", {500});
    theRecord().number = 6;
    assemble();
    EXPECT_EQ(theRecord().at(ranges, 0), 0.0);
    EXPECT_EQ(theRecord().number, 6);
}

TEST_P(FullRanges, OfRxAreWrittenIntoWhateverRecordStandsThere) {
    includeEverySystem();
    list({satellite(GetParam().system, 5)});
    put("rx", {500});
    theRecord().number = 6;
    assemble();
    EXPECT_EQ(theRecord().clockOffset, time(500));
    EXPECT_EQ(theRecord().at(ranges, 0), time(500) * lightSpeed);
    EXPECT_EQ(theRecord().number, 6);
}

TEST_P(FullRanges, OfRcClaimAFreeRecordAndOfRxNever) {
    includeEverySystem();
    staleList({satellite(GetParam().system, 5)});
    put("rc", {500});
    assemble();
    EXPECT_EQ(theRecord().number, 5);

    restart();
    options.rinexVersion = 8.0;  // no flag step of NavIC claims
    list({satellite(GetParam().system, 0)});
    put("rx", {500});
    assemble();
    EXPECT_EQ(theRecord().number, 0);
    EXPECT_EQ(theRecord().clockOffset, time(500));
}

TEST_P(FullRanges, OfRxReplaceThoseOfRc) {
    includeEverySystem();
    list({satellite(GetParam().system, 5)});
    put("rx", {2000});
    put("rc", {1000});
    assemble();
    EXPECT_EQ(theRecord().at(ranges, 0), time(2000) * lightSpeed);
}

INSTANTIATE_TEST_SUITE_P(EverySystem, FullRanges, testing::ValuesIn(scaleRows), testsupport::nameOfCell);

class RangeSteps : public testsupport::AssemblyTest {
protected:
    static double difference(std::int64_t delta, double clockOffset) {
        return (static_cast<double>(delta) * 1e-11 + 2e-7 + clockOffset) * lightSpeed;
    }
};

TEST_F(RangeSteps, RcTakesANegativeChannelForAnotherSatellite) {
    list({satellite(glonass, -3), satellite(glonass, 4)});
    put("rc", {1000, 2000});
    assemble();
    EXPECT_EQ(record(glonass, 0).number, -3);
    EXPECT_EQ(record(glonass, 0).at(ranges, 0), 0.0);
    EXPECT_EQ(record(glonass, 1).at(ranges, 0), (2000 * 1e-11 + 0.075) * lightSpeed);
}

TEST_F(RangeSteps, RxReachesANegativeChannel) {
    list({satellite(glonass, -3)});
    put("rc", {1000});
    put("rx", {3000});
    assemble();
    EXPECT_EQ(record(glonass).at(ranges, 0), (3000 * 1e-11 + 0.075) * lightSpeed);
}

TEST_F(RangeSteps, RcClaimsAFreeRecordWithTheUnsignedChannel) {
    staleList({satellite(glonass, -3)});
    put("rc", {1000});
    assemble();
    EXPECT_EQ(record(glonass).number, 253);
    EXPECT_EQ(record(glonass).at(ranges, 0), (1000 * 1e-11 + 0.075) * lightSpeed);
}

TEST_F(RangeSteps, NumbersOfOtherSystemsAreUnsigned) {
    for (const Constellation system : {gps, galileo, beidou, navic}) {
        staleList({satellite(system, 200)});
        put("rc", {1000});
        put("CE", {80});
        assemble();
        EXPECT_EQ(record(system).number, 200);
        EXPECT_EQ(record(system).at(ObsRow::strength, 0), 20.0);
    }
}

TEST_F(RangeSteps, RxOfZeroIsTheOffsetAndNotAMissingValue) {
    list({satellite(gps, 5)});
    put("rx", {0});
    assemble();
    EXPECT_EQ(record(gps).at(ranges, 0), 0.075 * lightSpeed);
}

TEST_F(RangeSteps, SbasAndQzssHaveNoFullRange) {
    includeEverySystem();
    list({satellite(sbas, 20), satellite(qzss, 3), satellite(gps, 5)});
    put("rc", {1000, 2000, 3000});
    put("rx", {1000, 2000, 3000});
    assemble();
    EXPECT_EQ(record(sbas).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(qzss).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(sbas).clockOffset + record(qzss).clockOffset, 0.0);
    EXPECT_EQ(record(gps).at(ranges, 0), (3000 * 1e-11 + 0.075) * lightSpeed);
}

// ---- differences ----

struct DeltaRow : Cell {
    Gate gate;
    bool needsInclude = false;
};

using testsupport::always;
using testsupport::only135;
using testsupport::only4;
using testsupport::only401;
using testsupport::shut;

// clang-format off
constexpr auto deltaRows = std::to_array<DeltaRow>({
    {{"1r", gps}, always, true},    {{"1r", glonass}, always, true}, {{"1r", galileo}, always, true},
    {{"1r", beidou}, always, true}, {{"1r", navic}, only135},        {{"1r", glonassCdma}, only135},
    {{"2r", gps}, always},          {{"2r", glonass}, always},       {{"2r", galileo}, always},
    {{"2r", beidou}, always},       {{"2r", navic}, only4},          {{"2r", glonassCdma}, only135},
    {{"3r", gps}, always},          {{"3r", glonass}, always},       {{"3r", galileo}, always},
    {{"3r", beidou}, always},       {{"3r", navic}, only135},        {{"3r", glonassCdma}, only135},
    {{"5r", gps}, always},          {{"5r", glonass}, always},       {{"5r", galileo}, always},
    {{"5r", beidou}, always},       {{"5r", navic}, always},         {{"5r", glonassCdma}, always},
    {{"lr", gps}, always},          {{"lr", glonass}, only4},        {{"lr", galileo}, shut},
    {{"lr", beidou}, always},       {{"lr", navic}, only401},        {{"lr", glonassCdma}, always},
});
// clang-format on

class RangeDifferences : public testsupport::AssemblyTable<DeltaRow> {
protected:
    // The row's message alone, for a satellite whose record may be free.
    SatEpochRecord& run(double version, bool included, std::int64_t delta, double clockOffset = 0.0) {
        restart();
        options.rinexVersion = version;
        includeEverySystem();
        include(GetParam().system, included);
        survey.lastRangeDelta = -4321;
        SatEpochRecord& record = this->record(GetParam().system);
        record.clockOffset = clockOffset;
        staleList({satellite(GetParam().system, 5)});
        put(GetParam().id, {delta});
        assemble();
        return record;
    }
    // The value of an element: 2r goes by the last difference of 1r, whatever it holds itself.
    static double expected(std::int64_t delta, double clockOffset) {
        const double d = GetParam().id == "2r" ? -4321.0 : static_cast<double>(delta);
        return (d * 1e-11 + 2e-7 + clockOffset) * lightSpeed;
    }
    // The first version that opens the row's gate, 0.0 for none.
    static double openVersion() {
        for (const double version : {4.01, 8.0, 135.0, 136.0}) {
            if (GetParam().gate.opensFor(version)) {
                return version;
            }
        }
        return 0.0;
    }
};

TEST_P(RangeDifferences, AreStoredForTheVersionsOfTheSignal) {
    for (const double version : everyVersion) {
        const SatEpochRecord& record = run(version, true, 1234, 0.0712345);
        for (std::size_t column = 0; column < 11; ++column) {
            const bool stored =
                column == testsupport::bandOf(GetParam().id) && GetParam().gate.opensFor(version);
            EXPECT_EQ(record.at(ranges, column), stored ? expected(1234, 0.0712345) : 0.0)
                << "column " << column << ", version " << version;
        }
    }
}

TEST_P(RangeDifferences, ClaimAFreeRecord) {
    for (const double version : everyVersion) {
        const SatEpochRecord& record = run(version, true, 1234);
        EXPECT_EQ(record.number, GetParam().gate.opensFor(version) ? 5 : 0) << version;
    }
}

TEST_P(RangeDifferences, OnlyThoseOf1rNeedTheConstellationIncluded) {
    for (const double version : everyVersion) {
        const SatEpochRecord& record = run(version, false, 1234);
        const bool stored = GetParam().gate.opensFor(version) && !GetParam().needsInclude;
        EXPECT_EQ(record.at(ranges, testsupport::bandOf(GetParam().id)), stored ? expected(1234, 0.0) : 0.0)
            << version;
    }
}

TEST_P(RangeDifferences, AreExactForAnyValue) {
    const double version = openVersion();
    const bool stored = version != 0.0;
    testsupport::Values values(1);
    for (int i = 0; i < 200; ++i) {
        const std::int16_t delta = values.int16();
        const double clockOffset = values.int32() * 2e-11 + 0.085;
        const SatEpochRecord& record = run(version, true, delta, clockOffset);
        ASSERT_EQ(record.at(ranges, testsupport::bandOf(GetParam().id)),
                  stored ? expected(delta, clockOffset) : 0.0)
            << delta << " " << clockOffset;
    }
}

TEST_P(RangeDifferences, AreDroppedInAnotherSatellitesRecord) {
    const double version = openVersion();
    restart();
    options.rinexVersion = version;
    includeEverySystem();
    SatEpochRecord& record = this->record(GetParam().system);
    record.number = 6;
    list({satellite(GetParam().system, 5), satellite(GetParam().system, 7)});
    put(GetParam().id, {100, 100});
    assemble();
    EXPECT_EQ(record.number, 6);
    EXPECT_EQ(record.obs, SatEpochRecord{}.obs);
    // The next satellite has the next record all the same.
    EXPECT_EQ(this->record(GetParam().system, 1).at(ranges, testsupport::bandOf(GetParam().id)) != 0.0,
              version != 0.0);
}

INSTANTIATE_TEST_SUITE_P(EveryCell, RangeDifferences, testing::ValuesIn(deltaRows), testsupport::nameOfCell);

TEST_F(RangeSteps, DifferenceOf32768BelowZeroIsTakenAsItStands) {
    list({satellite(gps, 5)});
    put("1r", {-32768});
    assemble();
    EXPECT_EQ(record(gps).at(ranges, 1), difference(-32768, 0.0));
}

TEST_F(RangeSteps, DifferencesReferToTheClockOffsetOfTheSameEpoch) {
    list({satellite(gps, 5), satellite(beidou, 30)});
    put("rx", {111111, 222222});
    put("1r", {100, 200});
    put("5r", {-300, -400});
    assemble();
    EXPECT_EQ(record(gps).at(ranges, 1), difference(100, 111111 * 1e-11 + 0.075));
    EXPECT_EQ(record(gps).at(ranges, 4), difference(-300, 111111 * 1e-11 + 0.075));
    EXPECT_EQ(record(beidou).at(ranges, 1), difference(200, 222222 * 2e-11 + 0.105));
    EXPECT_EQ(record(beidou).at(ranges, 4), difference(-400, 222222 * 2e-11 + 0.105));
}

TEST_F(RangeSteps, DifferencesOfALogWithRcAloneReferToZero) {
    list({satellite(gps, 5)});
    put("rc", {111111});
    put("3r", {77});
    assemble();
    EXPECT_EQ(record(gps).at(ranges, 3), difference(77, 0.0));
}

}  // namespace
