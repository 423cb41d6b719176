// The pictures of a log: which signal of which satellite is there when, how many satellites, how strong.
#pragma once

#include <vector>

#include "inspect/log_summary.h"
#include "inspect/page_columns.h"
#include "inspect/page_markup.h"

namespace orbconv::inspect {

// What all pictures of a log share. The parts that repeat stand once in the page: behind the data the gaps
// and the lines of the axis, ahead of it the damage.
struct LogPicture {
    const LogSummary& log;
    const Timeline& timeline;
    std::vector<Column> columns;
    std::vector<Tick> ticks;
    std::size_t number = 0;  // of the log in the page, from 1
};
void addSharedParts(Markup& page, const LogPicture& picture);

// Uses of the shared parts.
void addBehind(Markup& page, const LogPicture& picture);
void addAhead(Markup& page, const LogPicture& picture);

// The axis of time, 16 pixels high.
void addAxis(Markup& page, const LogPicture& picture);

// One row a satellite, one lane a signal (page_timeline.cpp).
void addTimeline(Markup& page, const LogPicture& picture);

// Number of satellites, and one picture a constellation with the mean strength of its signals
// (page_charts.cpp).
void addSatelliteChart(Markup& page, const LogPicture& picture);
void addStrengthCharts(Markup& page, const LogPicture& picture);

}  // namespace orbconv::inspect
