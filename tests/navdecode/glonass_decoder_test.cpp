#include <gtest/gtest.h>

#include <cmath>

#include "support/nav_survey.h"

namespace {
namespace glonassDecoderTest {

using namespace orbconv;
using samplelog::Closing;
using samplelog::GlonassBody;
using samplelog::LogBuilder;
using testsupport::bitsOf;
using testsupport::bodyWithField;
using testsupport::NavSurvey;

GlonassEphemeris firstOf(const LogBuilder& log) {
    NavSurvey survey;
    survey.feed(log);
    return survey.tables().glonass.slots.at(0);
}

// Satellite numbers of the slots that messages have touched, also past the count.
std::vector<std::int32_t> satellites(NavSurvey& survey) {
    std::vector<std::int32_t> numbers;
    for (const GlonassEphemeris& entry : survey.tables().glonass.slots) {
        numbers.push_back(entry.sv);
    }
    return numbers;
}

using Satellites = std::vector<std::int32_t>;

using FieldRow = testsupport::WireField<GlonassEphemeris>;

// clang-format off
const FieldRow fieldRows[] = {
    {"sv",          0, 1, 0x12,              [](const GlonassEphemeris& r) -> double { return r.sv; },         18},
    {"frequency",   1, 1, 0xF9,              [](const GlonassEphemeris& r) -> double { return r.frequency; },  -7},
    {"dayNumber",   2, 2, 0x0123,            [](const GlonassEphemeris& r) -> double { return r.dayNumber; },  291},
    {"tk",          4, 4, 0x12345678,        [](const GlonassEphemeris& r) -> double { return r.tk; },         305419896},
    {"tb",          8, 4, 0x12345678,        [](const GlonassEphemeris& r) -> double { return r.tb; },         305419896},
    {"healthByte", 12, 1, 0xA6,              [](const GlonassEphemeris& r) -> double { return r.healthByte; }, 166},
    {"age",        13, 1, 0xC8,              [](const GlonassEphemeris& r) -> double { return r.age; },        200},
    {"x",          15, 8, bitsOf(0.1),       [](const GlonassEphemeris& r) -> double { return r.x; },          0.1},
    {"y",          23, 8, bitsOf(-0.2),      [](const GlonassEphemeris& r) -> double { return r.y; },          -0.2},
    {"z",          31, 8, bitsOf(0.3),       [](const GlonassEphemeris& r) -> double { return r.z; },          0.3},
    {"vx",         39, 4, bitsOf(1.5F),      [](const GlonassEphemeris& r) -> double { return r.vx; },         1.5},
    {"vy",         43, 4, bitsOf(2.5F),      [](const GlonassEphemeris& r) -> double { return r.vy; },         2.5},
    {"vz",         47, 4, bitsOf(3.5F),      [](const GlonassEphemeris& r) -> double { return r.vz; },         3.5},
    {"ax",         51, 4, bitsOf(4.5F),      [](const GlonassEphemeris& r) -> double { return r.ax; },         4.5},
    {"ay",         55, 4, bitsOf(5.5F),      [](const GlonassEphemeris& r) -> double { return r.ay; },         5.5},
    {"az",         59, 4, bitsOf(6.5F),      [](const GlonassEphemeris& r) -> double { return r.az; },         6.5},
    {"tauN",       71, 4, bitsOf(-7.5F),     [](const GlonassEphemeris& r) -> double { return r.tauN; },       -7.5},
    {"gamma",      75, 4, bitsOf(8.5F),      [](const GlonassEphemeris& r) -> double { return r.gamma; },      8.5},
};
// clang-format on

class GlonassField : public testing::TestWithParam<FieldRow> {};

TEST_P(GlonassField, StandsAtItsOffsetWithItsWidthInBothForms) {
    const FieldRow& row = GetParam();
    for (const std::size_t bytes : {87U, 102U}) {
        const std::string body = bodyWithField(bytes, row.offset, row.width, row.put);
        EXPECT_EQ(row.read(firstOf(LogBuilder().message("NE", body))), row.expected) << bytes;
    }
}

INSTANTIATE_TEST_SUITE_P(AllFields, GlonassField, testing::ValuesIn(fieldRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(GlonassEphemeris, DayNumberReadsBackAsNonNegative) {
    EXPECT_EQ(firstOf(LogBuilder().ne88({.dayNumber = -1})).dayNumber, 65535);
}

TEST(GlonassEphemeris, DateAndTimeBaseAreThoseOfTheEpochClock) {
    const GlonassEphemeris entry = firstOf(LogBuilder().rd(2024, 3, 5, 2).ne88({}));
    EXPECT_EQ(entry.epoch.year, 2024.0F);
    EXPECT_EQ(entry.epoch.month, 3.0F);
    EXPECT_EQ(entry.epoch.day, 5.0F);
    EXPECT_EQ(entry.epoch.timeBase, 2.0F);
}

TEST(GlonassEphemeris, EntriesAheadOfTheFirstDateAreNeverBackFilled) {
    NavSurvey survey;
    survey.feed(LogBuilder().ne88({.tk = 1}).rd(2024, 3, 5).ne88({.tk = 2}).ne88({.tk = 3}));
    EXPECT_EQ(survey.tables().glonass.slots.at(0).epoch.year, 0.0F);
    EXPECT_EQ(survey.tables().glonass.slots.at(1).epoch.year, 2024.0F);
}

TEST(GlonassEphemeris, UndatedEntryLeavesNoMarkOfAMissingDate) {
    NavSurvey survey;
    survey.clocks.dateStillMissing = false;
    survey.feed(LogBuilder().ne88({}));
    EXPECT_FALSE(survey.clocks.dateStillMissing);
}

// ---- time of day ----

struct TimeRow {
    std::int32_t tb;
    float hour;
    float minute;
    float second;
};

class GlonassTimeOfDay : public testing::TestWithParam<TimeRow> {};

TEST_P(GlonassTimeOfDay, IsThatOfTbWithTheHourThreeLower) {
    const GlonassEphemeris entry = firstOf(LogBuilder().ne88({.tb = GetParam().tb}));
    EXPECT_EQ(entry.epoch.hour, GetParam().hour);
    EXPECT_EQ(entry.epoch.minute, GetParam().minute);
    EXPECT_EQ(entry.epoch.second, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(FromThreeHoursOn, GlonassTimeOfDay,
                         testing::Values(TimeRow{10800, 0, 0, 0}, TimeRow{14400, 1, 0, 0},
                                         TimeRow{45015, 9, 30, 15}, TimeRow{86399, 20, 59, 59}));
INSTANTIATE_TEST_SUITE_P(BelowThreeHours_NothingWraps, GlonassTimeOfDay,
                         testing::Values(TimeRow{0, -3, 0, 0}, TimeRow{3600, -2, 0, 0},
                                         TimeRow{3601, -1, 0, 1}, TimeRow{7200, -1, 0, 0},
                                         TimeRow{7201, 0, 0, 1}, TimeRow{9000, 0, 30, 0},
                                         TimeRow{10799, 0, 59, 59}));
INSTANTIATE_TEST_SUITE_P(DaysAreTakenOff, GlonassTimeOfDay,
                         testing::Values(TimeRow{86400, -3, 0, 0}, TimeRow{97261, 0, 1, 1},
                                         TimeRow{-5400, -4, -30, 0}));

TEST(GlonassTimeOfDaySign, HourOfAFractionBelowZeroIsPlainZero) {
    EXPECT_FALSE(std::signbit(firstOf(LogBuilder().ne88({.tb = 9000})).epoch.hour));
}

TEST(GlonassEphemeris, DateDoesNotStepBackWithANegativeHour) {
    const GlonassEphemeris entry = firstOf(LogBuilder().rd(2024, 3, 5).ne88({.tb = 3600}));
    EXPECT_EQ(entry.epoch.hour, -2.0F);
    EXPECT_EQ(entry.epoch.day, 5.0F);
}

// ---- forms ----

TEST(GlonassLongForm, IsFollowedByTheNextMessage) {
    NavSurvey survey;
    survey.feed(LogBuilder().ne103({.sv = 3, .tk = 1}).ne88({.sv = 4, .tk = 1}));
    EXPECT_EQ(satellites(survey), (Satellites{3, 4}));
}

TEST(GlonassOtherLength, StoresThePreviousBodyOnceMore) {
    NavSurvey survey;
    survey.feed(
        LogBuilder().ne88({.sv = 3, .tk = 1, .x = 0.5}).messageWithLength("NE", 90, "", Closing::none));
    EXPECT_EQ(survey.tables().glonass.count, 1);  // a duplicate
    EXPECT_EQ(survey.tables().glonass.slots.at(1).sv, 3);
    EXPECT_EQ(survey.tables().glonass.slots.at(1).x, 0.5);
    EXPECT_EQ(survey.tables().glonass.slots.at(0).sv, 0);  // which is how it kills the first entry
}

TEST(GlonassOtherLength, OfTheFirstMessageStoresZeros) {
    NavSurvey survey;
    survey.feed(LogBuilder().messageWithLength("NE", 90, "", Closing::none));
    EXPECT_EQ(survey.tables().glonass.count, 1);
    EXPECT_EQ(satellites(survey), Satellites{0});
}

// ---- duplicates: the slot numbered by NavIC's count dies, and not the new entry ----

TEST(GlonassDuplicate, WithoutNavicTheFirstEntryDies) {
    NavSurvey survey;
    survey.feed(LogBuilder().ne88({.sv = 1, .tk = 9}).ne88({.sv = 2, .tk = 9}).ne88({.sv = 2, .tk = 9}));
    EXPECT_EQ(survey.tables().glonass.count, 2);
    EXPECT_EQ(satellites(survey), (Satellites{0, 2, 2}));
}

TEST(GlonassDuplicate, SlotIsUsedByTheNextMessage) {
    NavSurvey survey;
    survey.feed(LogBuilder().ne88({.sv = 1, .tk = 9}).ne88({.sv = 1, .tk = 9}).ne88({.sv = 5, .tk = 9}));
    EXPECT_EQ(survey.tables().glonass.count, 2);
    EXPECT_EQ(satellites(survey), (Satellites{0, 5}));
}

TEST(GlonassDuplicate, NavicCountPicksTheSlotThatDies) {
    NavSurvey survey;
    survey.feed(LogBuilder().ie({.toe = 1}).ne88({.sv = 1}).ne88({.sv = 2}).ne88({.sv = 3}).ne88({.sv = 3}));
    EXPECT_EQ(satellites(survey), (Satellites{1, 0, 3, 3}));
}

TEST(GlonassDuplicate, NavicCountAtTheNewSlotKillsTheNewEntry) {
    NavSurvey survey;
    survey.feed(LogBuilder().ie({.toe = 1}).ne88({.sv = 1}).ne88({.sv = 1}));
    EXPECT_EQ(survey.tables().glonass.count, 1);
    EXPECT_EQ(satellites(survey), (Satellites{1, 0}));
}

class GlonassDuplicateBehindTheTable : public testing::TestWithParam<std::int32_t> {};

TEST_P(GlonassDuplicateBehindTheTable, LargeNavicCountKillsNoEntry) {
    NavSurvey survey;
    survey.tables().navic.count = GetParam();
    survey.feed(LogBuilder().ne88({.sv = 1}).ne88({.sv = 1}));
    EXPECT_EQ(survey.tables().glonass.count, 1);
    EXPECT_EQ(satellites(survey), (Satellites{1, 1}));
}

INSTANTIATE_TEST_SUITE_P(Counts, GlonassDuplicateBehindTheTable, testing::Values(2, 9999, 10000));

TEST(GlonassDuplicate, KeyIsTkAndNotTb) {
    NavSurvey survey;
    survey.feed(LogBuilder().ne88({.sv = 1, .tk = 1, .tb = 7}).ne88({.sv = 1, .tk = 2, .tb = 7}));
    EXPECT_EQ(survey.tables().glonass.count, 2);
    survey.feed(LogBuilder().ne88({.sv = 1, .tk = 2, .tb = 8}));
    EXPECT_EQ(survey.tables().glonass.count, 2);
}

TEST(GlonassDuplicate, OtherSatelliteOfTheSameTkIsNone) {
    NavSurvey survey;
    survey.feed(LogBuilder().ne88({.sv = 1, .tk = 1}).ne88({.sv = 2, .tk = 1}));
    EXPECT_EQ(satellites(survey), (Satellites{1, 2}));
    EXPECT_EQ(survey.tables().glonass.count, 2);
}

}  // namespace glonassDecoderTest
}  // namespace
