#include <gtest/gtest.h>

#include <limits>

#include "support/nav_survey.h"

namespace {
namespace timeOffsetDecodersTest {

using namespace orbconv;
using samplelog::GalileoTimeOffsetBody;
using samplelog::GlonassTimeOffsetBody;
using samplelog::LogBuilder;
using samplelog::TimeOffsetBody;
using testsupport::bitsOf;
using testsupport::bodyWithField;
using testsupport::NavSurvey;

// The four tables of records with a0 and a1: how a message gets into each and what it does with its body.
struct PlainRecords {
    static const TimeOffsetRecord& utc(const TimeOffsetRecord& record) { return record; }
    static constexpr std::size_t bodyBytes = 23;
};
struct Gps : PlainRecords {
    static LogBuilder message(const TimeOffsetBody& body) { return LogBuilder().uo(body); }
    static auto& table(NavSurvey& survey) { return survey.tables().gpsTimeOffset; }
    static constexpr const char* id = "UO";
    static constexpr int weekOffset = 2048;
    static constexpr bool setsLeapSeconds = true;
    static constexpr bool wraps = false;
};
struct Beidou : PlainRecords {
    static LogBuilder message(const TimeOffsetBody& body) { return LogBuilder().cu(body); }
    static auto& table(NavSurvey& survey) { return survey.tables().beidouTimeOffset; }
    static constexpr const char* id = "CU";
    static constexpr int weekOffset = 0;
    static constexpr bool setsLeapSeconds = false;
    static constexpr bool wraps = false;
};
struct Navic : PlainRecords {
    static LogBuilder message(const TimeOffsetBody& body) { return LogBuilder().iu(body); }
    static auto& table(NavSurvey& survey) { return survey.tables().navicTimeOffset; }
    static constexpr const char* id = "IU";
    static constexpr int weekOffset = 2048;
    static constexpr bool setsLeapSeconds = false;
    static constexpr bool wraps = true;
};
struct Galileo {
    static LogBuilder message(const TimeOffsetBody& body) { return LogBuilder().eu({.utc = body}); }
    static auto& table(NavSurvey& survey) { return survey.tables().galileoTimeOffset; }
    static const TimeOffsetRecord& utc(const GalileoTimeOffsetRecord& record) { return record.utc; }
    static constexpr const char* id = "EU";
    static constexpr std::size_t bodyBytes = 37;
    static constexpr int weekOffset = 2048;
    static constexpr bool setsLeapSeconds = true;
    static constexpr bool wraps = false;
};

template <class System>
class TimeOffsets : public testing::Test {
protected:
    NavSurvey survey;

    void add(const TimeOffsetBody& body) { survey.feed(System::message(body)); }
    std::int32_t count() { return System::table(survey).count; }
    const TimeOffsetRecord& record(std::size_t i) { return System::utc(System::table(survey).records.at(i)); }
    std::int32_t leapSeconds() { return survey.tables().lastLeapSeconds; }

    // The record of a body with one field at its place.
    const TimeOffsetRecord& withField(std::size_t offset, std::size_t width, std::uint64_t value) {
        survey.feed(LogBuilder().message(System::id, bodyWithField(System::bodyBytes, offset, width, value)));
        return record(static_cast<std::size_t>(count() - 1));
    }
};

using TimeSystems = testing::Types<Gps, Beidou, Navic, Galileo>;
using TypesThatFill = testing::Types<Gps, Beidou, Galileo>;
TYPED_TEST_SUITE(TimeOffsets, TimeSystems);

TYPED_TEST(TimeOffsets, FieldsStandAtTheirOffsets) {
    EXPECT_EQ(this->withField(0, 8, bitsOf(0.1)).a0, 0.1);
    EXPECT_EQ(this->withField(8, 4, bitsOf(0.5F)).a1, 0.5F);
    EXPECT_EQ(this->withField(12, 4, 0xFEDCBA98).tot, 4275878552U);
    EXPECT_EQ(this->withField(16, 2, 0x0100).week, 256 + TypeParam::weekOffset);
    const std::int32_t before = this->leapSeconds();
    this->withField(18, 1, 18);
    EXPECT_EQ(this->leapSeconds(), TypeParam::setsLeapSeconds ? 18 : before);
}

TYPED_TEST(TimeOffsets, WeekOffsetIsKeptIn16Bits) {
    this->add({.a0 = 1.0, .week = 65535});
    EXPECT_EQ(this->record(0).week, TypeParam::weekOffset == 0 ? 65535 : 2047);
}

TYPED_TEST(TimeOffsets, RecordTakesTheClock) {
    this->survey.feed(LogBuilder().time(3723000).rd(2024, 3, 5, 1));
    this->add({.a0 = 1.0, .a1 = 2.0F});
    ASSERT_EQ(this->count(), 1);
    const ClockReading& stamp = this->record(0).stamp;
    EXPECT_EQ(stamp.year, 2024.0F);
    EXPECT_EQ(stamp.month, 3.0F);
    EXPECT_EQ(stamp.day, 5.0F);
    EXPECT_EQ(stamp.hour, 1.0F);
    EXPECT_EQ(stamp.minute, 2.0F);
    EXPECT_EQ(stamp.second, 3.0F);
    EXPECT_EQ(stamp.timeBase, 1.0F);
}

TYPED_TEST(TimeOffsets, RepeatOfTheRecordBeforeAddsNothing) {
    this->add({.a0 = 1.0, .a1 = 2.0F, .tot = 3});
    this->add({.a0 = 1.0, .a1 = 2.0F, .tot = 3, .week = 9});
    EXPECT_EQ(this->count(), 1);
    EXPECT_EQ(this->record(0).week, TypeParam::weekOffset);
}

TYPED_TEST(TimeOffsets, EachOfA0A1AndTotTellsAMessageApart) {
    this->add({.a0 = 1.0, .a1 = 2.0F, .tot = 3});
    this->add({.a0 = 1.5, .a1 = 2.0F, .tot = 3});
    this->add({.a0 = 1.5, .a1 = 2.5F, .tot = 3});
    this->add({.a0 = 1.5, .a1 = 2.5F, .tot = 4});
    EXPECT_EQ(this->count(), 4);
}

TYPED_TEST(TimeOffsets, RecordBeforeTheLastOneIsStoredAgain) {
    this->add({.a0 = 1.0});
    this->add({.a0 = 2.0});
    this->add({.a0 = 1.0});
    EXPECT_EQ(this->count(), 3);
}

TYPED_TEST(TimeOffsets, FirstMessageIsStoredEvenIfAllZero) {
    this->add({});
    EXPECT_EQ(this->count(), 1);
}

TYPED_TEST(TimeOffsets, NotANumberIsNeverARepeat) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    this->add({.a0 = nan});
    this->add({.a0 = nan});
    EXPECT_EQ(this->count(), 2);
}

// ---- leap seconds ----

TYPED_TEST(TimeOffsets, LeapSecondsAreThoseOfTheLastStoredMessage) {
    this->add({.a0 = 1.0, .leapSeconds = 17});
    this->add({.a0 = 2.0, .leapSeconds = 18});
    EXPECT_EQ(this->leapSeconds(), TypeParam::setsLeapSeconds ? 18 : 0);
}

TYPED_TEST(TimeOffsets, RepeatLeavesTheLeapSeconds) {
    this->add({.a0 = 1.0, .leapSeconds = 17});
    this->add({.a0 = 1.0, .leapSeconds = 18});
    EXPECT_EQ(this->leapSeconds(), TypeParam::setsLeapSeconds ? 17 : 0);
}

TYPED_TEST(TimeOffsets, LeapSecondsAreSigned) {
    this->add({.a0 = 1.0, .leapSeconds = -3});
    EXPECT_EQ(this->leapSeconds(), TypeParam::setsLeapSeconds ? -3 : 0);
}

// ---- capacity ----

TYPED_TEST(TimeOffsets, Takes100RecordsOrReturnsTo0At99) {
    for (int i = 1; i <= 98; ++i) {
        this->add({.a0 = static_cast<double>(i), .leapSeconds = 18});
    }
    EXPECT_EQ(this->count(), 98);
    this->add({.a0 = 99.0});
    EXPECT_EQ(this->count(), TypeParam::wraps ? 0 : 99);
    EXPECT_EQ(this->record(98).a0, 99.0);
    this->add({.a0 = 100.0});
    EXPECT_EQ(this->count(), TypeParam::wraps ? 1 : 100);
    EXPECT_EQ(this->record(0).a0, TypeParam::wraps ? 100.0 : 1.0);
}

// The message behind the return has no record before it.
TEST(NavicTimeOffsets, MessageBehindTheReturnIsAlwaysStored) {
    NavSurvey survey;
    for (int i = 1; i <= 99; ++i) {
        survey.feed(LogBuilder().iu({.a0 = static_cast<double>(i)}));
    }
    survey.feed(LogBuilder().iu({.a0 = 99.0}));
    EXPECT_EQ(survey.tables().navicTimeOffset.count, 1);
    EXPECT_EQ(survey.tables().navicTimeOffset.records[0].a0, 99.0);
    EXPECT_EQ(survey.tables().navicTimeOffset.records[98].a0, 99.0);
}

template <class System>
class FullTimeOffsets : public TimeOffsets<System> {};
TYPED_TEST_SUITE(FullTimeOffsets, TypesThatFill);

TYPED_TEST(FullTimeOffsets, TakeNothingNotEvenLeapSeconds) {
    for (int i = 1; i <= 100; ++i) {
        this->add({.a0 = static_cast<double>(i), .leapSeconds = 18});
    }
    this->add({.a0 = 101.0, .leapSeconds = 19});
    EXPECT_EQ(this->count(), 100);
    EXPECT_EQ(this->record(99).a0, 100.0);
    EXPECT_EQ(this->leapSeconds(), TypeParam::setsLeapSeconds ? 18 : 0);
}

TEST(TimeOffsetTables, LeapSecondsComeFromEitherOfTheTwoThatSetThem) {
    NavSurvey survey;
    survey.feed(LogBuilder().uo({.a0 = 1.0, .leapSeconds = 17}).eu({.utc = {.a0 = 1.0, .leapSeconds = 18}}));
    EXPECT_EQ(survey.tables().lastLeapSeconds, 18);
    survey.feed(LogBuilder().uo({.a0 = 2.0, .leapSeconds = 16}).cu({.a0 = 2.0, .leapSeconds = 4}));
    EXPECT_EQ(survey.tables().lastLeapSeconds, 16);
}

// ---- Galileo against GPS time ----

// The Galileo record of a body with one field at its place.
GalileoTimeOffsetRecord galileoWithField(std::size_t offset, std::size_t width, std::uint64_t value) {
    NavSurvey survey;
    survey.feed(LogBuilder().message("EU", bodyWithField(37, offset, width, value)));
    return survey.tables().galileoTimeOffset.records[0];
}

TEST(GalileoTimeOffsets, SecondHalfStandsBehindTheFirst) {
    EXPECT_EQ(galileoWithField(23, 4, bitsOf(1.5F)).a0Gps, 1.5F);
    EXPECT_EQ(galileoWithField(27, 4, bitsOf(2.5F)).a1Gps, 2.5F);
    EXPECT_EQ(galileoWithField(31, 4, 0xFEDCBA98).totGps, 4275878552U);
    EXPECT_EQ(galileoWithField(35, 2, 0x0100).weekGps, 2304);
}

TEST(GalileoTimeOffsets, SecondHalfTellsNoMessageApart) {
    NavSurvey survey;
    survey.feed(LogBuilder().eu({.utc = {.a0 = 1.0}, .a0Gps = 1.0F}));
    survey.feed(LogBuilder().eu({.utc = {.a0 = 1.0}, .a0Gps = 2.0F, .a1Gps = 2.0F, .totGps = 2}));
    EXPECT_EQ(survey.tables().galileoTimeOffset.count, 1);
    EXPECT_EQ(survey.tables().galileoTimeOffset.records[0].a0Gps, 1.0F);
}

// ---- GLONASS ----

TEST(GlonassTimeOffsets, FieldsStandAtTheirOffsets) {
    NavSurvey survey;
    survey.feed(LogBuilder().message("NU", bodyWithField(20, 0, 8, bitsOf(0.1))));
    EXPECT_EQ(survey.tables().glonassTimeOffset.tauC, 0.1);
    survey.feed(LogBuilder().message("NU", bodyWithField(20, 8, 4, bitsOf(1.5F))));
    EXPECT_EQ(survey.tables().glonassTimeOffset.tauGps, 1.5F);
}

TEST(GlonassTimeOffsets, EveryMessageOverwritesTheOneRecord) {
    NavSurvey survey;
    survey.feed(LogBuilder().rd(2024, 3, 5, 2).nu({.tauC = 1.0, .tauGps = 2.0F}));
    EXPECT_EQ(survey.tables().glonassTimeOffset.stamp.day, 5.0F);
    EXPECT_EQ(survey.tables().glonassTimeOffset.stamp.timeBase, 2.0F);
    survey.feed(LogBuilder().rd(2024, 3, 6).nu({.tauC = 1.0, .tauGps = 2.0F}));
    EXPECT_EQ(survey.tables().glonassTimeOffset.stamp.day, 6.0F);
    survey.feed(LogBuilder().nu({}));
    EXPECT_EQ(survey.tables().glonassTimeOffset.tauC, 0.0);
    EXPECT_EQ(survey.tables().glonassTimeOffset.tauGps, 0.0F);
}

TEST(GlonassTimeOffsets, SetNoLeapSeconds) {
    NavSurvey survey;
    survey.feed(LogBuilder().uo({.a0 = 1.0, .leapSeconds = 18}).message("NU", std::string(20, '\7')));
    EXPECT_EQ(survey.tables().lastLeapSeconds, 18);
}

}  // namespace timeOffsetDecodersTest
}  // namespace
