#include "companions/support/inspected.h"

#include "companions/support/reading_items.h"
#include "inspect/summarise.h"

namespace testsupport {

using orbconv::inspect::Finding;
using orbconv::inspect::LogSummary;
using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::SystemCode;

LogSummary inspected(std::string_view log, InspectedWith wishes) {
    orbconv::reading::LogReader reader(bytesOf(log));
    return orbconv::inspect::summarise(reader, orbconv::inspect::LogBytes(bytesOf(log)),
                                       {.timeline = wishes.timeline, .progress = {}});
}

LogSummary inspected(const LogBuilder& log, InspectedWith wishes) {
    return inspected(std::string_view(log.bytes()), wishes);
}

static std::string codesThat(const LogSummary& log, bool everySuch) {
    std::string codes;
    for (const Finding& finding : log.findings) {
        if (finding.everySuch == everySuch) {
            codes += (codes.empty() ? "" : " ") + std::string(finding.code);
        }
    }
    return codes;
}

std::string codes(const LogSummary& log) {
    return codesThat(log, false);
}
std::string codesOfEverySuch(const LogSummary& log) {
    return codesThat(log, true);
}

static const Finding* find(const LogSummary& log, std::string_view code, std::string_view words) {
    for (const Finding& finding : log.findings) {
        if (finding.code == code && finding.title.find(words) != std::string_view::npos) {
            return &finding;
        }
    }
    return nullptr;
}

std::uint64_t countOf(const LogSummary& log, std::string_view code, std::string_view words) {
    const Finding* const finding = find(log, code, words);
    return finding == nullptr ? 0 : finding->count;
}
std::string exampleOf(const LogSummary& log, std::string_view code, std::string_view words) {
    const Finding* const finding = find(log, code, words);
    return finding == nullptr ? "" : finding->example;
}

void putCleanStart(LogBuilder& log) {
    log.kvMarker("SITE")
        .pmParameters({{"rcv/id=", "12345678901234567890"}, {"rcv/igs=", "TYPE"}, {"rcv/ver/main=", "1.0"}})
        .antennaType("ANT")
        .pv({.x = 3'000'000.0, .y = 1.0, .z = 2.0})
        .uo({.a0 = 1e-9, .leapSeconds = 18});
}

void putCleanEpoch(LogBuilder& log, std::uint32_t timeOfDayMs) {
    log.time(timeOfDayMs)
        .rd(2024, 5, 6)
        .sx({{SystemCode::gps, 5}, {SystemCode::gps, 7}})
        .rx({100, 200})
        .phases(Band::c, {1, 2})
        .dx({10, 20})
        .dopplerDeltas(Band::c, {0, 0})
        .strengths(Band::c, {160, 180})
        .flags(Band::c, {0x40, 0x40})
        .to(1e-6)
        .td();
}

LogBuilder cleanLog(int epochs) {
    LogBuilder log;
    log.rd(2024, 5, 6);
    putCleanStart(log);
    for (int i = 0; i < epochs; ++i) {
        putCleanEpoch(log, cleanStart + static_cast<std::uint32_t>(i) * 1000U);
    }
    return log;
}

}  // namespace testsupport
