// What the pictures are drawn from: the timeline's bins put together into columns, the runs of columns that
// look alike, and the times at the axis. A picture is as wide as the timeline has bins.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

// Bins of the timeline, from `first` up to `end`, that are drawn as one. Columns follow each other without a
// hole.
struct Column {
    std::size_t first = 0;
    std::size_t end = 0;
    bool gap = false;  // holds no epoch, and is no mere part of an interval

    friend bool operator==(const Column&, const Column&) = default;
};

// Columns of `fold` bins each. Behind them, bins without an epoch belong to the column of the epoch ahead of
// them if it is only the interval that leaves them empty; else they are a column of their own, a gap.
std::vector<Column> makeColumns(const Timeline& timeline, std::optional<Milliseconds> interval,
                                std::size_t fold);

// The sum of a list of the timeline over a column's bins; 0 for an empty list.
template <class Number>
std::uint64_t sumOver(const std::vector<Number>& bins, const Column& column) {
    std::uint64_t sum = 0;
    for (std::size_t i = column.first; i < column.end && i < bins.size(); ++i) {
        sum += bins[i];
    }
    return sum;
}

// In how many of a column's epochs something is there.
enum class Presence : std::uint8_t { never, sometimes, always };

// Columns side by side, in bins.
struct ColumnRun {
    std::size_t first = 0;
    std::size_t end = 0;

    friend bool operator==(const ColumnRun&, const ColumnRun&) = default;
};
// The runs of columns that have no less than `least` and no more than `most`.
std::vector<ColumnRun> runsOf(const Timeline& timeline, std::span<const Column> columns,
                              const std::vector<std::uint32_t>& present, Presence least, Presence most);

// A time written at the axis.
struct Tick {
    double share = 0;  // of the picture's width
    std::string text;
};
// At most nine (of centuries more), at round times. The date stands instead of 00:00 in a log that has one.
std::vector<Tick> ticksOf(const Timeline& timeline, bool dated);

// Path data, each in whole units. A horizontal line at `y` over each run.
std::string runsPath(std::span<const ColumnRun> runs, std::int64_t y);
// Stairs over the columns: one height each, nothing where the line breaks.
std::string stairsPath(std::span<const Column> columns, std::span<const std::optional<std::int64_t>> heights);
// The areas between such stairs and `base`.
std::string areaPath(std::span<const Column> columns, std::span<const std::optional<std::int64_t>> heights,
                     std::int64_t base);

}  // namespace orbconv::inspect
