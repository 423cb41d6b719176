#include "companions/support/observed_log.h"

namespace testsupport {

using samplelog::Band;
using samplelog::LogBuilder;

Satellites satellitesOf(std::uint8_t systemCode, int count) {
    Satellites list;
    for (int number = 1; number <= count; ++number) {
        list.push_back({systemCode, number});
    }
    return list;
}

void putBand(LogBuilder& log, Band band, std::size_t count) {
    if (band == Band::c) {
        log.rx(std::vector<std::int32_t>(count, 100)).dx(std::vector<std::int32_t>(count, 1));
    } else {
        log.rangeDeltas(band, std::vector<std::int16_t>(count, 7));
    }
    log.phases(band, std::vector<std::int32_t>(count, 1))
        .dopplerDeltas(band, std::vector<std::int16_t>(count, 1));
    log.strengths(band, std::vector<std::uint8_t>(count, 160))
        .flags(band, std::vector<std::uint16_t>(count, 0x40));
}

void putEpoch(LogBuilder& log, int index, const Satellites& satellites, const std::vector<Band>& bands,
              const std::vector<std::uint8_t>& slots) {
    log.time(cleanStart + static_cast<std::uint32_t>(index) * 1000U).rd(2024, 5, 6).sx(satellites).to(0);
    if (!slots.empty()) {
        log.nn(slots);
    }
    for (const Band band : bands) {
        putBand(log, band, satellites.size());
    }
    log.td();
}

LogBuilder startedLog() {
    LogBuilder log;
    log.rd(2024, 5, 6);
    putCleanStart(log);
    return log;
}

orbconv::inspect::LogSummary threeEpochs(const Satellites& satellites, const std::vector<Band>& bands,
                                         const std::vector<std::uint8_t>& slots) {
    LogBuilder log = startedLog();
    for (int i = 0; i < 3; ++i) {
        putEpoch(log, i, satellites, bands, slots);
    }
    return inspected(log);
}

}  // namespace testsupport
