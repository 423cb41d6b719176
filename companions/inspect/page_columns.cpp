#include "inspect/page_columns.h"

#include <algorithm>
#include <array>

namespace orbconv::inspect {

namespace {

// Whether `bins` empty ones behind an epoch's column are more than its interval leaves.
bool isGap(const Timeline& timeline, const Column& ahead, std::size_t bins,
           std::optional<Milliseconds> interval) {
    return sumOver(timeline.gaps, ahead) > 0 ||
           timeline.binWidth * static_cast<std::int64_t>(bins) >= 2 * interval.value_or(Milliseconds{0});
}

Presence presenceIn(const Timeline& timeline, const Column& column,
                    const std::vector<std::uint32_t>& present) {
    const std::uint64_t count = sumOver(present, column);
    return count == 0                                 ? Presence::never
           : count < sumOver(timeline.epochs, column) ? Presence::sometimes
                                                      : Presence::always;
}

constexpr std::int64_t second = 1000;
constexpr std::int64_t minute = 60 * second;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;
// clang-format off
constexpr auto tickSteps = std::to_array<std::int64_t>({
    second,   2 * second, 5 * second, 10 * second, 15 * second, 30 * second,
    minute,   2 * minute, 5 * minute, 10 * minute, 15 * minute, 30 * minute,
    hour,     2 * hour,   3 * hour,   6 * hour,    12 * hour,
    day,      2 * day,    5 * day,    10 * day,    20 * day,    50 * day,
    100 * day, 200 * day, 500 * day,  1000 * day,  2000 * day,  5000 * day,
});
// clang-format on

// A text with seconds or a year takes more room.
constexpr std::int64_t mostTicks(std::int64_t step) {
    return step < minute || step >= 100 * day ? 6 : 9;
}

std::string tickText(LogTime time, std::int64_t step, bool dated) {
    const std::string iso = reading::isoText(time);
    const bool isMidnight = time.time_since_epoch().count() % day == 0;
    if (isMidnight && dated) {
        return step >= 100 * day ? iso.substr(0, 10) : iso.substr(5, 5);
    }
    if (isMidnight && step >= day) {
        return "+" + std::to_string(time.time_since_epoch().count() / day) + " d";
    }
    return iso.substr(11, step < minute ? 8 : 5);
}

void append(std::string& path, char command, std::int64_t a) {
    path += command;
    path += std::to_string(a);
}

void append(std::string& path, char command, std::int64_t a, std::int64_t b) {
    append(path, command, a);
    append(path, ' ', b);
}

std::int64_t signedOf(std::size_t value) {
    return static_cast<std::int64_t>(value);
}

// Columns of `fold` bins, those without an epoch put together.
std::vector<Column> evenColumns(const Timeline& timeline, std::size_t fold) {
    std::vector<Column> columns;
    for (std::size_t first = 0; first < timeline.bins; first += fold) {
        Column column{.first = first, .end = std::min(first + fold, timeline.bins)};
        column.gap = sumOver(timeline.epochs, column) == 0;
        if (column.gap && !columns.empty() && columns.back().gap) {
            columns.back().end = column.end;
        } else {
            columns.push_back(column);
        }
    }
    return columns;
}

}  // namespace

std::vector<Column> makeColumns(const Timeline& timeline, std::optional<Milliseconds> interval,
                                std::size_t fold) {
    std::vector<Column> columns;
    for (const Column& column : evenColumns(timeline, fold)) {
        if (column.gap && !columns.empty() &&
            !isGap(timeline, columns.back(), column.end - column.first, interval)) {
            columns.back().end = column.end;
        } else {
            columns.push_back(column);
        }
    }
    return columns;
}

std::vector<ColumnRun> runsOf(const Timeline& timeline, std::span<const Column> columns,
                              const std::vector<std::uint32_t>& present, Presence least, Presence most) {
    std::vector<ColumnRun> runs;
    for (const Column& column : columns) {
        const Presence here = presenceIn(timeline, column, present);
        if (here < least || here > most) {
            continue;
        }
        if (!runs.empty() && runs.back().end == column.first) {
            runs.back().end = column.end;
        } else {
            runs.push_back({.first = column.first, .end = column.end});
        }
    }
    return runs;
}

std::vector<Tick> ticksOf(const Timeline& timeline, bool dated) {
    const std::int64_t start = timeline.start.time_since_epoch().count();
    const std::int64_t width = timeline.binWidth.count() * signedOf(timeline.bins);
    const auto fits = [&](std::int64_t step) { return width / step < mostTicks(step); };
    const auto found = std::ranges::find_if(tickSteps, fits);
    const std::int64_t step = found == tickSteps.end() ? tickSteps.back() : *found;
    std::vector<Tick> ticks;
    for (std::int64_t time = (start + step - 1) / step * step; time <= start + width; time += step) {
        ticks.push_back({.share = static_cast<double>(time - start) / static_cast<double>(width),
                         .text = tickText(LogTime(Milliseconds(time)), step, dated)});
    }
    return ticks;
}

std::string runsPath(std::span<const ColumnRun> runs, std::int64_t y) {
    std::string path;
    std::int64_t at = 0;
    for (const ColumnRun& run : runs) {
        const std::int64_t first = signedOf(run.first);
        if (path.empty()) {
            append(path, 'M', first, y);
        } else {
            append(path, 'm', first - at, 0);
        }
        at = signedOf(run.end);
        append(path, 'h', at - first);
    }
    return path;
}

std::string stairsPath(std::span<const Column> columns,
                       std::span<const std::optional<std::int64_t>> heights) {
    std::string path;
    std::optional<std::int64_t> last;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::optional<std::int64_t>& height = heights[i];
        if (height && !last) {
            append(path, 'M', signedOf(columns[i].first), *height);
        } else if (height && *height != *last) {
            append(path, 'V', *height);
        }
        if (height) {
            append(path, 'H', signedOf(columns[i].end));
        }
        last = height;
    }
    return path;
}

std::string areaPath(std::span<const Column> columns, std::span<const std::optional<std::int64_t>> heights,
                     std::int64_t base) {
    std::string path;
    for (std::size_t first = 0; first < columns.size();) {
        std::size_t end = first;
        while (end < columns.size() && heights[end]) {
            ++end;
        }
        if (end > first) {
            path += stairsPath(columns.subspan(first, end - first), heights.subspan(first, end - first));
            append(path, 'V', base);
            append(path, 'H', signedOf(columns[first].first));
            path += 'z';
        }
        first = end + 1;
    }
    return path;
}

}  // namespace orbconv::inspect
