#include "navdecode/ephemeris_entry.h"

namespace orbconv {

void setRecordDate(ClockReading& epoch, const EpochClock& clock) {
    epoch.year = clock.year;
    epoch.month = clock.month;
    epoch.day = clock.day;
    epoch.timeBase = clock.timeBase;
}

void setTimeOfDay(ClockReading& epoch, std::int32_t toe) {
    const auto secondOfDay = static_cast<float>(toe % 86400);
    const std::int32_t secondOfHour = static_cast<std::int32_t>(secondOfDay) % 3600;
    epoch.hour = static_cast<float>(static_cast<std::int32_t>(secondOfDay / 3600.0F));
    epoch.minute = static_cast<float>(secondOfHour / 60);
    epoch.second = static_cast<float>(secondOfHour) - epoch.minute * 60.0F;
}

}  // namespace orbconv
