#include "inspect/page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/page_style.h"

namespace orbconv::inspect {
namespace {
namespace pageLimitsTest {

using ::testing::HasSubstr;

std::string pageOf(std::span<const LogSummary> logs) {
    std::ostringstream out;
    writePage(out, logs);
    return out.str();
}

std::size_t rowsOf(std::string_view page) {
    constexpr std::string_view row = "<tr data-satellite=";
    std::size_t rows = 0;
    for (std::size_t at = page.find(row); at != std::string_view::npos; at = page.find(row, at + 1)) {
        ++rows;
    }
    return rows;
}

// The most that a summary can hold, every signal there or not by chance.
LogSummary hugeLog() {
    LogSummary log;
    log.file = "huge.kvs";
    log.epochs = Timeline::mostBins;
    log.gapCount = log.damageCount = Timeline::mostBins;
    log.interval = std::chrono::seconds{1};
    Timeline& timeline = log.timeline.emplace();
    std::minstd_rand random(12);
    const auto chance = [&] { return static_cast<std::uint32_t>(random() % 2); };
    timeline.bins = Timeline::mostBins;
    timeline.epochs.assign(timeline.bins, 1);
    timeline.gaps.assign(timeline.bins, 1);
    timeline.damages.assign(timeline.bins, 1);
    timeline.damageBytes.assign(timeline.bins, 123456789);
    timeline.satellites.assign(timeline.bins, {.sum = 20, .least = 20, .most = 20});
    for (std::size_t i = 0; i < Timeline::mostTracks; ++i) {
        SatelliteTrack& track = timeline.tracks.emplace_back();
        track.satellite = {.constellation = static_cast<Constellation>(i / 50),
                           .number = static_cast<std::uint8_t>(i % 50 + 1)};
        track.listed.assign(timeline.bins, 1);
        for (auto& present : track.present) {
            for (std::size_t bin = 0; bin < timeline.bins; ++bin) {
                present.push_back(chance());
            }
        }
    }
    for (std::size_t i = 0; i < constellationCount * bandCount; ++i) {
        SignalTrack& signal = timeline.signals.emplace_back();
        signal.constellation = static_cast<Constellation>(i / bandCount);
        signal.band = i % bandCount;
        for (std::size_t bin = 0; bin < timeline.bins; ++bin) {
            signal.bins.push_back({.sum = random() % 200, .count = 1});
        }
    }
    return log;
}

TEST(PageLimitsTest, LargestLogs_StayBelowTwoMegabytes) {
    const std::vector<LogSummary> logs(3, hugeLog());
    for (std::size_t count = 1; count <= logs.size(); ++count) {
        const std::string page = pageOf(std::span(logs).first(count));
        EXPECT_LT(page.size(), 2'000'000);
        EXPECT_EQ(rowsOf(page), count * Timeline::mostTracks);
        EXPECT_THAT(page, HasSubstr("<tr data-satellite=\"G01\">"));
        EXPECT_THAT(page, HasSubstr("<tr data-satellite=\"M50\">"));
    }
}

// Of two colours, the share of the lighter one's brightness as people see it.
double luminance(std::string_view colour) {
    const auto part = [&](std::size_t at) {
        const double value = std::stoi(std::string(colour.substr(at, 2)), nullptr, 16) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(1) + 0.7152 * part(3) + 0.0722 * part(5);
}

double contrast(std::string_view one, std::string_view other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

const ColourRow& colourOf(std::string_view name) {
    return *std::ranges::find(pageColours, name, &ColourRow::name);
}

TEST(PageLimitsTest, Texts_StandOutFromThePageByDayAndNight) {
    const ColourRow& page = colourOf("page");
    for (const std::string_view name : {"ink", "faint", "good", "bad"}) {
        EXPECT_GE(contrast(colourOf(name).light, page.light), 4.5) << name;
        EXPECT_GE(contrast(colourOf(name).dark, page.dark), 4.5) << name;
    }
    for (const ColourRow& row : signalColours) {
        EXPECT_GE(contrast(row.light, page.light), 2.0) << row.name;
        EXPECT_GE(contrast(row.dark, page.dark), 3.0) << row.name;
    }
}

}  // namespace pageLimitsTest
}  // namespace
}  // namespace orbconv::inspect
