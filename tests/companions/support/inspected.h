// Logs that a test has built, as orbconv-inspect sees them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/log_summary.h"
#include "samplelog/log_builder.h"

namespace testsupport {

struct InspectedWith {
    bool timeline = false;
};
orbconv::inspect::LogSummary inspected(std::string_view log, InspectedWith wishes = {});
orbconv::inspect::LogSummary inspected(const samplelog::LogBuilder& log, InspectedWith wishes = {});

// "O13 N1", a code as often as it has rows; those that any such log sets off are left out.
std::string codes(const orbconv::inspect::LogSummary& log);
// The same of those that any such log sets off.
std::string codesOfEverySuch(const orbconv::inspect::LogSummary& log);

// Count of the finding of this code whose title has these words; 0 if there is none.
std::uint64_t countOf(const orbconv::inspect::LogSummary& log, std::string_view code,
                      std::string_view words = "");
std::string exampleOf(const orbconv::inspect::LogSummary& log, std::string_view code,
                      std::string_view words = "");

// Pieces of a log that sets off no finding but those of every such log: GPS satellites 5 and 7 on one signal.
inline constexpr std::uint32_t cleanStart = 36'000'000;  // 10:00:00
// Marker, receiver, antenna, position, leap seconds, date.
void putCleanStart(samplelog::LogBuilder& log);
// ~~, RD, the list, one array of each kind of band c, the offset, TD.
void putCleanEpoch(samplelog::LogBuilder& log, std::uint32_t timeOfDayMs);
// A start and epochs at one a second.
samplelog::LogBuilder cleanLog(int epochs = 4);

}  // namespace testsupport
