// What the epochs of the files hold: of all of them together, and of each pair of files of its own.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "standard/observations.h"
#include "standard/selection.h"

namespace orbconv::standard {

using SatelliteSet = std::bitset<highestNumber + 1>;

// How often each step between neighbouring epochs comes. Steps that the header has no room for are not
// counted, nor is a new one when there are very many kinds already.
class StepCounts {
public:
    void add(std::int64_t stepMs);
    // The most frequent step; of several the shortest. Nothing without a step.
    [[nodiscard]] std::optional<std::int64_t> mostFrequent() const;
    // How many steps are longer than the most frequent one.
    [[nodiscard]] std::uint64_t gaps() const;

private:
    std::map<std::int64_t, std::uint64_t> counts_;
};

// What epochs hold that ascend in time.
struct ContentSurvey {
    PerBand<SatelliteSet> signals{};  // the satellites with a value of the signal
    std::array<std::optional<int>, highestNumber + 1> glonassChannels{};  // by slot; the first one told
    std::optional<reading::LogTime> first;
    std::optional<reading::LogTime> last;
    std::uint64_t epochs = 0;
    StepCounts steps;

    void take(const EpochObservations& observations);
    // Those with a value of any signal.
    [[nodiscard]] SatelliteSet satellites(Constellation constellation) const;
};

// The epochs of one pair of files.
struct Part {
    reading::LogTime start;
    ContentSurvey content;
};

// No call writes more pairs of files.
inline constexpr std::size_t mostParts = 10'000;

struct Contents {
    std::optional<Split> split;
    ContentSurvey whole;
    std::vector<Part> parts;  // in order of time, each with an epoch at least; see addEmptyPart()

    // The start of the part that a time is of; without a split all times are of one.
    [[nodiscard]] reading::LogTime partStart(reading::LogTime time) const;
    // Epochs ascend in time. Beyond the most parts, a std::runtime_error.
    void take(const EpochObservations& observations);
    // A part at a time, for a navigation file of logs without an epoch.
    void addEmptyPart(reading::LogTime time);
};

}  // namespace orbconv::standard
