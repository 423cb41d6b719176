#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "navdecode/iono_and_time_decoders.h"
#include "support/nav_survey.h"

namespace {

using namespace orbconv;
using samplelog::IonoBody;
using samplelog::LogBuilder;
using testsupport::bitsOf;
using testsupport::bodyWithField;
using testsupport::NavSurvey;

constexpr IonoBody numbered(float first = 1.0F) {
    return {.alpha0 = first,
            .alpha1 = 2.0F,
            .alpha2 = 3.0F,
            .alpha3 = 4.0F,
            .beta0 = 5.0F,
            .beta1 = 6.0F,
            .beta2 = 7.0F,
            .beta3 = 8.0F};
}

// The tables of IO, II and CI: how a message gets into each, and where its count returns to 0.
struct Gps {
    static LogBuilder message(const IonoBody& body) { return LogBuilder().io(body); }
    static auto& table(NavSurvey& survey) { return survey.tables().gpsIono; }
    static constexpr const char* id = "IO";
    static constexpr int wrap = 499;
};
struct Navic {
    static LogBuilder message(const IonoBody& body) { return LogBuilder().ii(body); }
    static auto& table(NavSurvey& survey) { return survey.tables().navicIono; }
    static constexpr const char* id = "II";
    static constexpr int wrap = 499;
};
struct Beidou {
    static LogBuilder message(const IonoBody& body) { return LogBuilder().ci(body); }
    static auto& table(NavSurvey& survey) { return survey.tables().beidouIono; }
    static constexpr const char* id = "CI";
    static constexpr int wrap = 99;
};

template <class System>
class IonoTables : public testing::Test {
protected:
    NavSurvey survey;

    void add(const IonoBody& body) { survey.feed(System::message(body)); }
    auto& table() { return System::table(survey); }
    auto& record(std::size_t i) { return table().records.at(i); }
};

using IonoSystems = testing::Types<Gps, Navic, Beidou>;
TYPED_TEST_SUITE(IonoTables, IonoSystems);

TYPED_TEST(IonoTables, CoefficientsStandBehindSixBytes) {
    for (std::size_t i = 0; i < 8; ++i) {
        NavSurvey one;
        const std::string body = bodyWithField(38, 6 + 4 * i, 4, bitsOf(1.5F));
        one.feed(LogBuilder().message(TypeParam::id, body));
        const auto& record = TypeParam::table(one).records.at(0);
        EXPECT_EQ(i < 4 ? record.alpha[i] : record.beta[i - 4], 1.5F) << i;
    }
}

TYPED_TEST(IonoTables, RecordTakesCoefficientsAndClock) {
    this->survey.feed(LogBuilder().time(3723000).rd(2024, 3, 5, 2));
    this->add(numbered());
    ASSERT_EQ(this->table().count, 1);
    const auto& record = this->record(0);
    EXPECT_EQ(record.alpha, (std::array<float, 4>{1, 2, 3, 4}));
    EXPECT_EQ(record.beta, (std::array<float, 4>{5, 6, 7, 8}));
    EXPECT_EQ(record.stamp.year, 2024.0F);
    EXPECT_EQ(record.stamp.month, 3.0F);
    EXPECT_EQ(record.stamp.day, 5.0F);
    EXPECT_EQ(record.stamp.hour, 1.0F);
    EXPECT_EQ(record.stamp.minute, 2.0F);
    EXPECT_EQ(record.stamp.second, 3.0F);
    EXPECT_EQ(record.stamp.timeBase, 2.0F);
}

TYPED_TEST(IonoTables, StampAheadOfTheFirstDateIsTheTimeAlone) {
    this->survey.feed(LogBuilder().time(3723000));
    this->add(numbered());
    EXPECT_EQ(this->record(0).stamp.year, 0.0F);
    EXPECT_EQ(this->record(0).stamp.hour, 1.0F);
}

TYPED_TEST(IonoTables, RepeatOfTheRecordBeforeAddsNothing) {
    this->add(numbered());
    this->survey.feed(LogBuilder().rd(2024, 3, 5));
    this->add(numbered());
    EXPECT_EQ(this->table().count, 1);
    EXPECT_EQ(this->record(0).stamp.year, 0.0F);
}

TYPED_TEST(IonoTables, OnlyAlpha0Alpha1AndBeta0TellARepeat) {
    this->add(numbered());
    IonoBody other = numbered();
    other.alpha2 = other.alpha3 = other.beta1 = other.beta2 = other.beta3 = 9.0F;
    this->add(other);
    EXPECT_EQ(this->table().count, 1);
}

// BeiDou also looks at earlier records, but not at beta0; the satellite of a CN keeps the two apart.
TYPED_TEST(IonoTables, EachOfThoseThreeTellsAMessageApart) {
    for (float IonoBody::*const field : {&IonoBody::alpha0, &IonoBody::alpha1, &IonoBody::beta0}) {
        NavSurvey one;
        IonoBody other = numbered();
        other.*field = 9.0F;
        one.feed(TypeParam::message(numbered())).feed(LogBuilder().cn134({.kepler = {.sv = 7}}));
        one.feed(TypeParam::message(other));
        EXPECT_EQ(TypeParam::table(one).count, 2);
    }
}

TYPED_TEST(IonoTables, RecordBeforeTheLastOneIsStoredAgain) {
    std::uint8_t sv = 0;
    for (const float first : {1.0F, 2.0F, 1.0F}) {
        this->survey.feed(LogBuilder().cn134({.kepler = {.sv = ++sv}}));
        this->add(numbered(first));
    }
    EXPECT_EQ(this->table().count, 3);
}

TYPED_TEST(IonoTables, NotANumberIsNeverARepeat) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    this->add(numbered(nan));
    this->add(numbered(nan));
    EXPECT_EQ(this->table().count, 2);
}

TYPED_TEST(IonoTables, ZerosOfBothSignsAreEqual) {
    this->add(numbered(0.0F));
    this->add(numbered(-0.0F));
    EXPECT_EQ(this->table().count, 1);
}

TYPED_TEST(IonoTables, CountReturnsTo0AndOldRecordsStay) {
    for (int i = 1; i < TypeParam::wrap; ++i) {
        this->add(numbered(static_cast<float>(i)));
    }
    EXPECT_EQ(this->table().count, TypeParam::wrap - 1);
    this->add(numbered(1000.0F));
    EXPECT_EQ(this->table().count, 0);
    EXPECT_EQ(this->record(TypeParam::wrap - 1).alpha[0], 1000.0F);
    EXPECT_EQ(this->record(0).alpha[0], 1.0F);
}

// There is no record before it then, so that even a repeat goes to slot 0.
TYPED_TEST(IonoTables, MessageBehindTheReturnIsAlwaysStored) {
    for (int i = 1; i <= TypeParam::wrap; ++i) {
        this->add(numbered(static_cast<float>(i)));
    }
    this->add(numbered(static_cast<float>(TypeParam::wrap)));
    EXPECT_EQ(this->table().count, 1);
    EXPECT_EQ(this->record(0).alpha[0], static_cast<float>(TypeParam::wrap));
    EXPECT_EQ(this->record(1).alpha[0], 2.0F);
}

// ---- what BeiDou's records have besides ----

TEST(BeidouIono, TotStandsAtTheStart) {
    NavSurvey survey;
    survey.feed(LogBuilder().message("CI", bodyWithField(38, 0, 4, 0x12345678)));
    EXPECT_EQ(survey.tables().beidouIono.records.at(0).tot, 0x12345678U);
}

TEST(BeidouIono, SatelliteIsThatOfTheLatestStoredEphemeris) {
    NavSurvey survey;
    survey.feed(LogBuilder().cn134({.kepler = {.sv = 7}}).cn134({.kepler = {.sv = 9}}).ci(numbered()));
    EXPECT_EQ(survey.tables().beidouIono.records.at(0).sv, 9);
    // A dropped ephemeris is none.
    survey.feed(LogBuilder().cn134({.kepler = {.sv = 7}}).ci(numbered(2.0F)));
    EXPECT_EQ(survey.tables().beidouIono.records.at(1).sv, 9);
}

TEST(BeidouIono, SatelliteIs0AheadOfTheFirstEphemeris) {
    NavSurvey survey;
    survey.feed(LogBuilder().ci(numbered()));
    EXPECT_EQ(survey.tables().beidouIono.count, 1);
    EXPECT_EQ(survey.tables().beidouIono.records.at(0).sv, 0);
}

// alpha0, alpha1, hour and satellite of an earlier record: dropped, and its slot is used again.
TEST(BeidouIono, RepeatOfAnEarlierRecordIsDropped) {
    NavSurvey survey;
    survey.feed(LogBuilder().cn134({.kepler = {.sv = 7}}));
    survey.feed(LogBuilder().ci(numbered(1.0F)).ci(numbered(2.0F)).ci(numbered(1.0F)));
    EXPECT_EQ(survey.tables().beidouIono.count, 2);
    EXPECT_EQ(survey.tables().beidouIono.records.at(2).sv, 0);
    EXPECT_EQ(survey.tables().beidouIono.records.at(2).alpha[0], 1.0F);
    survey.feed(LogBuilder().ci(numbered(3.0F)));
    EXPECT_EQ(survey.tables().beidouIono.count, 3);
    EXPECT_EQ(survey.tables().beidouIono.records.at(2).sv, 7);
}

TEST(BeidouIono, OtherHourOrOtherAlpha1IsNoRepeatOfAnEarlierRecord) {
    NavSurvey survey;
    IonoBody laterHour = numbered(1.0F);
    laterHour.tot = 3601;
    IonoBody otherAlpha1 = numbered(1.0F);
    otherAlpha1.alpha1 = 9.0F;
    survey.feed(LogBuilder().ci(numbered(1.0F)).ci(numbered(2.0F)).ci(laterHour));
    survey.feed(LogBuilder().ci(numbered(4.0F)).ci(otherAlpha1));
    EXPECT_EQ(survey.tables().beidouIono.count, 5);
}

struct HourRow {
    std::uint32_t tot;
    char letter;
};

class HourLetter : public testing::TestWithParam<HourRow> {};

TEST_P(HourLetter, IsThatOfTheHourUpToItsEndInclusive) {
    EXPECT_EQ(hourLetterOf(GetParam().tot), GetParam().letter);
    NavSurvey survey;
    IonoBody body = numbered();
    body.tot = GetParam().tot;
    survey.feed(LogBuilder().ci(body));
    EXPECT_EQ(survey.tables().beidouIono.records.at(0).hourLetter, GetParam().letter);
}

INSTANTIATE_TEST_SUITE_P(FirstHours, HourLetter,
                         testing::Values(HourRow{0, 'A'}, HourRow{1, 'A'}, HourRow{3600, 'A'},
                                         HourRow{3601, 'B'}, HourRow{7200, 'B'}, HourRow{7201, 'C'}));
INSTANTIATE_TEST_SUITE_P(LastHours, HourLetter,
                         testing::Values(HourRow{79201, 'W'}, HourRow{82800, 'W'}, HourRow{82801, 'X'},
                                         HourRow{86399, 'X'}));
INSTANTIATE_TEST_SUITE_P(DaysAreTakenOff, HourLetter,
                         testing::Values(HourRow{86400, 'A'}, HourRow{90000, 'A'}, HourRow{90001, 'B'},
                                         HourRow{604800, 'A'}, HourRow{604799, 'X'}));
// 8209 hours and a second are 8209 hours in single precision, 342 days and one hour.
INSTANTIATE_TEST_SUITE_P(HoursAreNarrowed, HourLetter, testing::Values(HourRow{29552401, 'A'}));

TEST(HourLetter, FollowsTheAlphabetHourByHour) {
    for (std::uint32_t hour = 0; hour < 24; ++hour) {
        EXPECT_EQ(hourLetterOf(hour * 3600 + 1800), "ABCDEFGHIJKLMNOPQRSTUVWX"[hour]);
    }
}

// ---- the scan of BeiDou's records, literally, on random messages ----

struct LiteralRecord {
    float alpha0 = 0;
    float alpha1 = 0;
    float beta0 = 0;
    char hourLetter = '\0';
    std::int32_t sv = 0;
    bool operator==(const LiteralRecord&) const = default;
};

struct LiteralBeidouIono {
    std::array<LiteralRecord, 100> records{};
    int count = 0;

    void take(const LiteralRecord& body) {
        const auto at = [this](int i) -> LiteralRecord& { return records[static_cast<std::size_t>(i)]; };
        if (count > 0 && at(count - 1).alpha0 == body.alpha0 && at(count - 1).alpha1 == body.alpha1 &&
            at(count - 1).beta0 == body.beta0) {
            return;
        }
        at(count) = body;
        for (int k = 0; k < count; ++k) {
            if (at(count).alpha0 == at(k).alpha0 && at(count).alpha1 == at(k).alpha1 &&
                at(count).hourLetter == at(k).hourLetter && at(count).sv == at(k).sv) {
                at(count).sv = 0;
                --count;
            }
        }
        if (++count >= 99) {
            count = 0;
        }
    }
};

TEST(BeidouIono, ScanOfRandomMessagesIsTheLiteralOne) {
    std::mt19937 random(5);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int run = 0; run < 200; ++run) {
        NavSurvey survey;
        LiteralBeidouIono literal;
        const int range = below(40) + 2;
        std::int32_t toe = 0;
        std::int32_t latest = 0;
        for (int i = 0; i < 400; ++i) {
            if (below(6) == 0) {
                latest = below(3);
                const auto sv = static_cast<std::uint8_t>(latest);
                survey.feed(LogBuilder().cn134({.kepler = {.sv = sv, .toe = ++toe}}));
            }
            const int hour = below(3);
            const LiteralRecord body = {static_cast<float>(below(range)), static_cast<float>(below(2)),
                                        static_cast<float>(below(2)), "ABC"[hour], latest};
            survey.feed(LogBuilder().ci({.tot = static_cast<std::uint32_t>(hour * 3600 + 1),
                                         .alpha0 = body.alpha0,
                                         .alpha1 = body.alpha1,
                                         .beta0 = body.beta0}));
            literal.take(body);
        }
        const BeidouIonoTable& table = survey.tables().beidouIono;
        ASSERT_EQ(table.count, literal.count);
        for (std::size_t i = 0; i < literal.records.size(); ++i) {
            const BeidouIonoRecord& record = table.records[i];
            ASSERT_EQ((LiteralRecord{record.alpha[0], record.alpha[1], record.beta[0], record.hourLetter,
                                     record.sv}),
                      literal.records[i]);
        }
    }
}

}  // namespace
