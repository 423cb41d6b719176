// The times of navigation messages, settled: weeks whose roll-overs are told by the moment of reception,
// GLONASS days in their four years, transmission times in the week of their record.
#pragma once

#include <cstdint>
#include <optional>

#include "reading/broadcast.h"
#include "standard/navigation_record.h"

namespace orbconv::standard {

inline constexpr std::int64_t secondsPerDay = 86'400;
inline constexpr std::int64_t secondsPerWeek = 7 * secondsPerDay;

// Printed where a transmission time is not known (RINEX).
inline constexpr double unknownTransmission = 999999999.999;

bool isSecondOfWeek(double second);

// Where a constellation's weeks begin, and after how many of them the number in the message starts anew.
struct WeekCount {
    reading::LogDate start;
    std::int32_t rollOver;
};
WeekCount weekCountOf(Constellation constellation);

// Whether the record prints its week. One that does keeps the week of its message; one that does not is put
// into the week that is nearest to its reception.
enum class WeekField : std::uint8_t { printed, missing };

// The times of an ephemeris with Kepler elements: the epoch is toc, within half a week of toe. Nothing if toc
// or toe is no second of a week.
std::optional<RecordTimes> timesOf(const reading::KeplerOrbit& orbit, const WeekCount& weeks, WeekField field,
                                   const ReceptionTime& received);

// The times of a GLONASS ephemeris, in UTC: tb on the day of its day number, in the four years that lie
// nearest to the reception. A day more than 36 hours from it, or no day number, gives way to the nearest day.
std::optional<RecordTimes> timesOf(const reading::GlonassEphemeris& glonass, const ReceptionTime& received);

// A week with the roll-overs that put it nearest to the reception.
std::int32_t settledWeek(std::int32_t week, double secondOfWeek, const WeekCount& weeks,
                         const ReceptionTime& received);

// The seconds of the week that begins `weekStart` at a time; below 0 or above a week for other weeks.
double secondsOf(reading::LogTime time, reading::LogTime weekStart);

}  // namespace orbconv::standard
