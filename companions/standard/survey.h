// The first reading of a log: what the header tells of the epochs behind it, where the stretches of the log
// begin that ascend in time, and what does not go into the files.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "reading/epoch.h"
#include "reading/log_reader.h"
#include "reading/site_identity.h"
#include "standard/epoch_gate.h"
#include "standard/navigation_set.h"
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

private:
    std::map<std::int64_t, std::uint64_t> counts_;
};

// What the epochs of the file hold.
struct ContentSurvey {
    PerBand<SatelliteSet> signals{};  // the satellites with a value of the signal
    std::array<std::optional<int>, highestNumber + 1> glonassChannels{};  // by slot; the first one told
    std::optional<reading::LogTime> first;
    std::optional<reading::LogTime> last;
    std::optional<TimeScale> scale;
    std::uint64_t epochs = 0;
    StepCounts steps;

    void take(const EpochObservations& observations);
    // Those with a value of any signal.
    [[nodiscard]] SatelliteSet satellites(Constellation constellation) const;
};

// A part of the log whose epochs ascend in time, up to where the next one begins.
struct Stretch {
    std::uint64_t offset = 0;      // of its first epoch in the log
    std::uint64_t endOffset = 0;   // behind its last epoch
    reading::CarriedTime carried;  // what its first epoch takes over
    reading::LogReader::Habits habits{};
};

// Each stretch is read beside the others when the file is written.
inline constexpr std::size_t mostStretches = 40;

struct LossCounts {
    LeftOutCounts satellites{};  // of the epochs that are asked for
    std::uint64_t damagedStretches = 0;
    std::uint64_t damagedBytes = 0;
    std::uint64_t epochsWithoutDate = 0;
    std::uint64_t epochsOfOtherScale = 0;
    std::uint64_t epochsNotAskedFor = 0;
    std::uint64_t epochsWithoutSatellites = 0;
    std::uint64_t repeatedEpochs = 0;
    std::uint64_t disorderedEpochs = 0;  // beyond the most stretches
    std::uint64_t unprintableClockOffsets = 0;
    bool hasOpenEpoch = false;  // satellites behind the last TD
};

struct Survey {
    ContentSurvey content;
    reading::SiteIdentity site;
    NavigationSet navigation;        // of the systems that are asked for
    std::optional<int> leapSeconds;  // of the log's last UO or EU
    std::vector<Stretch> stretches;
    LossCounts lost;
    std::uint64_t messages = 0;
    std::uint64_t epochs = 0;  // that the log closed
};

// A time of the log in GPS time: one on a time base of UTC lacks the leap seconds of its date.
ReceptionTime inGpsTime(std::optional<reading::LogTime> time, std::uint8_t timeBase);

// Takes the log's items one by one.
class Surveyor {
public:
    // `firstDate` is that of the first epoch if the log has no date ahead of its end. A navigation message
    // ahead of every date counts as received at `firstTime`, in GPS time.
    Surveyor(const Selection& selection, std::optional<reading::LogDate> firstDate,
             ReceptionTime firstTime = {});

    // The habits are those of the reader that took the message.
    void take(const reading::Message& message, const reading::LogReader::Habits& habits);
    void take(const reading::Damage& damage);
    // At the end of the log.
    Survey finish();

private:
    void takeNavigation(const reading::Message& message);
    void takeEpoch(const reading::Epoch& epoch);
    void takeInOrder(const reading::Epoch& epoch);
    bool continuesStretch(const reading::Epoch& epoch);

    const Selection& selection_;
    ReceptionTime firstTime_;
    reading::EpochCollector collector_;
    reading::CarriedTime carried_;              // by the epoch that is being collected
    reading::LogReader::Habits habits_{};       // ahead of it
    std::optional<reading::LogTime> lastTime_;  // of the stretch
    EpochObservations observations_;
    Survey survey_;
};

}  // namespace orbconv::standard
