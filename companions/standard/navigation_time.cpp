#include "standard/navigation_time.h"

#include <array>
#include <chrono>
#include <cmath>

namespace orbconv::standard {

namespace {

using reading::LogDate;
using reading::LogTime;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr LogDate gpsStart{std::chrono::year{1980} / 1 / 6};
constexpr LogDate beidouStart{std::chrono::year{2006} / 1 / 1};

// GLONASS counts the days of four years, from the first of January of a leap year, in Moscow's calendar.
constexpr LogDate fourYearsStart{std::chrono::year{1996} / 1 / 1};
constexpr std::int64_t daysOfFourYears = 1461;
constexpr std::int64_t moscowAheadOfUtc = std::int64_t{3} * 3600;
constexpr std::int64_t contradictionHours = 36;

// Weeks of UTC begin on Sunday.
constexpr LogDate aSunday{std::chrono::year{1980} / 1 / 6};

// The difference of two seconds of a week, taken the short way round.
double shortWay(double difference) {
    const auto week = static_cast<double>(secondsPerWeek);
    return difference - week * std::round(difference / week);
}

LogTime weekStart(std::int32_t week, const WeekCount& weeks) {
    return weeks.start + std::chrono::days{7} * std::int64_t{week};
}

milliseconds inMilliseconds(double second) {
    return milliseconds{std::llround(second * 1000.0)};
}

// How many times `step` brings `from` as near as possible to `to`.
std::int64_t stepsBetween(LogTime from, LogTime to, milliseconds step) {
    return std::llround(static_cast<double>((to - from).count()) / static_cast<double>(step.count()));
}

}  // namespace

bool isSecondOfWeek(double second) {
    return second >= 0.0 && second <= static_cast<double>(secondsPerWeek);
}

WeekCount weekCountOf(Constellation constellation) {
    switch (constellation) {
        case Constellation::beidou: return {.start = beidouStart, .rollOver = 8192};
        case Constellation::galileo: return {.start = gpsStart, .rollOver = 4096};
        default: return {.start = gpsStart, .rollOver = 1024};
    }
}

double secondsOf(LogTime time, LogTime weekStart) {
    return static_cast<double>((time - weekStart).count()) / 1000.0;
}

std::int32_t settledWeek(std::int32_t week, double secondOfWeek, const WeekCount& weeks,
                         const ReceptionTime& received) {
    if (!received) {
        return week;
    }
    const LogTime time = weekStart(week, weeks) + inMilliseconds(secondOfWeek);
    const milliseconds era = std::chrono::days{7} * std::int64_t{weeks.rollOver};
    return week + static_cast<std::int32_t>(stepsBetween(time, *received, era)) * weeks.rollOver;
}

std::optional<RecordTimes> timesOf(const reading::KeplerOrbit& orbit, const WeekCount& weeks, WeekField field,
                                   const ReceptionTime& received) {
    if (!isSecondOfWeek(orbit.toc) || !isSecondOfWeek(orbit.toe)) {
        return std::nullopt;
    }
    std::int32_t week = settledWeek(orbit.week, orbit.toe, weeks, received);
    if (field == WeekField::missing && received) {
        const LogTime toe = weekStart(week, weeks) + inMilliseconds(orbit.toe);
        week += static_cast<std::int32_t>(stepsBetween(toe, *received, seconds{secondsPerWeek}));
    }
    const LogTime start = weekStart(week, weeks);
    const LogTime toe = start + inMilliseconds(orbit.toe);
    const LogTime toc = toe + inMilliseconds(shortWay(orbit.toc - orbit.toe));
    RecordTimes times{.epoch = toc, .week = static_cast<double>(week), .transmission = unknownTransmission};
    if (isSecondOfWeek(orbit.tot)) {
        const LogTime sent = toe + inMilliseconds(shortWay(orbit.tot - orbit.toe));
        const auto tocWeek = std::chrono::floor<std::chrono::days>(toc - weeks.start).count() / 7;
        times.transmission = secondsOf(
            sent, field == WeekField::printed ? start : weekStart(static_cast<std::int32_t>(tocWeek), weeks));
    }
    return times;
}

std::optional<RecordTimes> timesOf(const reading::GlonassEphemeris& glonass, const ReceptionTime& received) {
    if (!received || glonass.tb < 0 || glonass.tb > secondsPerDay) {
        return std::nullopt;
    }
    const seconds sinceMidnight{glonass.tb - moscowAheadOfUtc};
    LogTime day = fourYearsStart + std::chrono::days{glonass.dayNumber - 1};
    day += std::chrono::days{daysOfFourYears} *
           stepsBetween(day + sinceMidnight, *received, std::chrono::days{daysOfFourYears});
    const auto distance = std::chrono::abs(day + sinceMidnight - *received);
    const bool isDayNumber = glonass.dayNumber >= 1 && glonass.dayNumber <= daysOfFourYears;
    if (!isDayNumber || distance > std::chrono::hours{contradictionHours}) {
        day += std::chrono::days{1} * stepsBetween(day + sinceMidnight, *received, std::chrono::days{1});
    }
    RecordTimes times{.epoch = day + sinceMidnight, .transmission = unknownTransmission};
    if (glonass.tk >= 0 && glonass.tk <= secondsPerDay) {
        const auto frame = std::chrono::floor<seconds>(day - aSunday).count() + glonass.tk - moscowAheadOfUtc;
        times.transmission = static_cast<double>((frame % secondsPerWeek + secondsPerWeek) % secondsPerWeek);
    }
    return times;
}

}  // namespace orbconv::standard
