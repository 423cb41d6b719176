#include "reading/log_time.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace orbconv::reading {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

LogTime at(int year, unsigned month, unsigned day, milliseconds timeOfDay = milliseconds(0)) {
    return dateOf(year, month, day).value() + timeOfDay;
}

TEST(LogTimeTest, DateOf_CountsDays) {
    EXPECT_EQ(*dateOf(1980, 1, 6) - *dateOf(1980, 1, 1), days(5));
    EXPECT_EQ(*dateOf(2024, 3, 1) - *dateOf(2024, 2, 28), days(2));
    EXPECT_EQ(*dateOf(2023, 3, 1) - *dateOf(2023, 2, 28), days(1));
    EXPECT_EQ(*dateOf(2000, 3, 1) - *dateOf(2000, 2, 28), days(2));
    EXPECT_EQ(*dateOf(2025, 1, 1) - *dateOf(2024, 1, 1), days(366));
}

TEST(LogTimeTest, DateOf_NumbersThatAreNone) {
    EXPECT_FALSE(dateOf(2024, 0, 1));
    EXPECT_FALSE(dateOf(2024, 13, 1));
    EXPECT_FALSE(dateOf(2024, 1, 0));
    EXPECT_FALSE(dateOf(2024, 1, 32));
    EXPECT_FALSE(dateOf(2024, 4, 31));
    EXPECT_FALSE(dateOf(2023, 2, 29));
    EXPECT_TRUE(dateOf(2024, 2, 29));
    EXPECT_FALSE(dateOf(2024, 255, 255));
    EXPECT_FALSE(dateOf(2024, 1, 257));  // more than a byte
    EXPECT_FALSE(dateOf(2024, 257, 1));
}

TEST(LogTimeTest, DateOf_YearsOfTheSystems) {
    EXPECT_FALSE(dateOf(1979, 12, 31));
    EXPECT_TRUE(dateOf(1980, 1, 1));
    EXPECT_TRUE(dateOf(2099, 12, 31));
    EXPECT_FALSE(dateOf(2100, 1, 1));
    EXPECT_FALSE(dateOf(0, 1, 1));
    EXPECT_FALSE(dateOf(65535, 1, 1));
}

TEST(LogTimeTest, CalendarOf_EveryNumber) {
    const CalendarTime time = calendarOf(at(2024, 12, 31, hours(23) + minutes(59) + milliseconds(58'007)));
    EXPECT_EQ(time.year, 2024);
    EXPECT_EQ(time.month, 12U);
    EXPECT_EQ(time.day, 31U);
    EXPECT_EQ(time.hour, 23U);
    EXPECT_EQ(time.minute, 59U);
    EXPECT_EQ(time.second, 58U);
    EXPECT_EQ(time.millisecond, 7U);
    EXPECT_EQ(time.dayOfYear, 366U);
    EXPECT_EQ(calendarOf(at(2023, 1, 1)).dayOfYear, 1U);
    EXPECT_EQ(calendarOf(at(2023, 3, 1)).dayOfYear, 60U);
    EXPECT_EQ(calendarOf(at(2024, 3, 1)).dayOfYear, 61U);
}

TEST(LogTimeTest, IsoText_HasMillisecondsAlways) {
    EXPECT_EQ(isoText(at(2024, 5, 6, hours(23))), "2024-05-06T23:00:00.000");
    EXPECT_EQ(isoText(at(1980, 1, 1, milliseconds(1))), "1980-01-01T00:00:00.001");
    EXPECT_EQ(isoText(at(2099, 12, 31, milliseconds(86'399'999))), "2099-12-31T23:59:59.999");
}

TEST(LogTimeTest, TimeOfIsoText_EveryForm) {
    const LogTime day = at(2024, 5, 6);
    EXPECT_EQ(timeOfIsoText("2024-05-06"), day);
    EXPECT_EQ(timeOfIsoText("2024-05-06T23:04"), day + hours(23) + minutes(4));
    EXPECT_EQ(timeOfIsoText("2024-05-06 23:04"), day + hours(23) + minutes(4));
    EXPECT_EQ(timeOfIsoText("2024-05-06T23:04:30"), day + hours(23) + minutes(4) + seconds(30));
    EXPECT_EQ(timeOfIsoText("2024-05-06T23:04:30Z"), day + hours(23) + minutes(4) + seconds(30));
    EXPECT_EQ(timeOfIsoText("2024-05-06T23:04Z"), day + hours(23) + minutes(4));
    EXPECT_EQ(timeOfIsoText("2024-05-06T00:00:30.5"), day + milliseconds(30'500));
    EXPECT_EQ(timeOfIsoText("2024-05-06 00:00:30.25"), day + milliseconds(30'250));
    EXPECT_EQ(timeOfIsoText("2024-05-06T00:00:00.001Z"), day + milliseconds(1));
    EXPECT_EQ(timeOfIsoText("2024-05-06T23:59:59.999"), day + milliseconds(86'399'999));
}

TEST(LogTimeTest, TimeOfIsoText_WhatIsoTextMakes) {
    const LogTime time = at(2031, 10, 9, milliseconds(45'296'789));
    EXPECT_EQ(timeOfIsoText(isoText(time)), time);
}

TEST(LogTimeTest, TimeOfIsoText_AnyOtherTextIsNone) {
    for (const std::string_view text : {"",
                                        " ",
                                        "2024",
                                        "2024-05",
                                        "2024-5-6",
                                        "2024-05-6",
                                        "2024/05/06",
                                        "2024-05-06T",
                                        "2024-05-06T23",
                                        "2024-05-06T23:",
                                        "2024-05-06T23:0",
                                        "2024-05-06T23:00:",
                                        "2024-05-06T23:00:1",
                                        "2024-05-06T23:00:00.",
                                        "2024-05-06T23:00:00.x",
                                        "2024-05-06T23:00:00.0000001x",
                                        "2024-05-06x23:00",
                                        "2024-05-06T24:00",
                                        "2024-05-06T23:60",
                                        "2024-05-06T23:00:60",
                                        "2024-02-30",
                                        "2024-13-01",
                                        "2024-00-10",
                                        "1979-12-31",
                                        "2100-01-01",
                                        "+024-05-06",
                                        "-2024-05-06",
                                        "2024-05-06T+1:00",
                                        "2024-05-06T 1:00",
                                        " 2024-05-06",
                                        "2024-05-06 ",
                                        "2024-05-06T23:00ZZ",
                                        "2024-05-06T23:00:00.5 ",
                                        "12024-05-06",
                                        "2024-05-06T23:00:00,5",
                                        "2024-05-06T23:00.5",
                                        "2024-05-06T23:00:00.0001",
                                        "yesterday"}) {
        EXPECT_FALSE(timeOfIsoText(text)) << text;
    }
}

// Every cut of a good text and every character of it changed to a letter: a time or nothing, no crash.
TEST(LogTimeTest, TimeOfIsoText_CutAndChangedTexts) {
    const std::string good = "2024-05-06T23:04:30.125";
    for (std::size_t size = 0; size < good.size(); ++size) {
        const bool isForm = size == 10 || size == 16 || size == 19 || size >= 21;
        EXPECT_EQ(timeOfIsoText(good.substr(0, size)).has_value(), isForm) << size;
        std::string changed = good;
        changed[size] = 'x';
        EXPECT_FALSE(timeOfIsoText(changed)) << changed;
    }
}

}  // namespace
}  // namespace orbconv::reading
