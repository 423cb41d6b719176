#include "standard/log_order.h"

#include <algorithm>
#include <tuple>

#include "reading/epoch.h"
#include "reading/log_reader.h"
#include "standard/epoch_sequence.h"
#include "standard/stop_request.h"
#include "standard/survey.h"

namespace orbconv::standard {

namespace {

LogStart startOf(const std::string& name, std::optional<reading::LogDate> firstDate) {
    LogStart start{.name = name, .firstDated = {}, .firstEpoch = {}};
    reading::LogReader reader(openLog(name));
    reading::EpochCollector collector(reading::CarriedTime{.date = firstDate, .timeOfDayMs = {}});
    for (auto item = reader.next(); item != reading::LogItem::end && !start.firstEpoch;
         item = reader.next()) {
        endIfAsked();
        if (item != reading::LogItem::message) {
            continue;
        }
        const bool closed = collector.add(reader.message());
        if (!start.firstDated) {
            start.firstDated = inGpsTime(collector.timeSoFar(), collector.epoch().timeBase);
        }
        if (closed) {
            start.firstEpoch = collector.epoch().time;
        }
    }
    return start;
}

}  // namespace

std::vector<LogStart> logsInOrder(const Options& options) {
    std::vector<LogStart> logs;
    for (const std::string& name : options.logNames) {
        logs.push_back(startOf(name, options.firstDate));
    }
    std::ranges::sort(logs, {}, [](const LogStart& log) {
        return std::tuple(!log.firstEpoch, log.firstEpoch ? log.firstEpoch : log.firstDated, log.name);
    });
    return logs;
}

}  // namespace orbconv::standard
