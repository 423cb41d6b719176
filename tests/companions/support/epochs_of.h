// The epochs of a log that a test has built.
#pragma once

#include <vector>

#include "companions/support/reading_items.h"
#include "reading/epoch.h"
#include "samplelog/log_builder.h"

namespace testsupport {

inline std::vector<orbconv::reading::Epoch> epochsOf(const samplelog::LogBuilder& log) {
    using orbconv::reading::LogItem;
    std::vector<orbconv::reading::Epoch> epochs;
    orbconv::reading::LogReader reader(bytesOf(log.bytes()));
    orbconv::reading::EpochCollector collector;
    for (LogItem item = reader.next(); item != LogItem::end; item = reader.next()) {
        if (item == LogItem::message && collector.add(reader.message())) {
            epochs.push_back(collector.epoch());
        }
    }
    return epochs;
}

}  // namespace testsupport
