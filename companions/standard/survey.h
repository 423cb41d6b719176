// The first reading of the logs: what the headers tell of the epochs behind them, where the stretches begin
// that ascend in time, and what does not go into the files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "reading/epoch.h"
#include "reading/log_reader.h"
#include "reading/site_identity.h"
#include "standard/contents.h"
#include "standard/epoch_gate.h"
#include "standard/navigation_set.h"
#include "standard/observations.h"
#include "standard/selection.h"

namespace orbconv::standard {

// A part of a log whose epochs ascend in time, up to where the next one begins.
struct Stretch {
    std::size_t log = 0;           // index of its log
    reading::LogTime first;        // the time of its first epoch
    std::uint64_t offset = 0;      // of that in the log
    std::uint64_t endOffset = 0;   // behind its last epoch
    reading::CarriedTime carried;  // what its first epoch takes over
    reading::LogReader::Habits habits{};
};

// Of one log. Those that overlap in time are read side by side when the files are written.
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
    std::uint64_t openEpochs = 0;  // satellites behind the last TD of a log
};

struct SurveyedLog {
    std::string name;
    reading::SiteIdentity site;
    std::uint64_t messages = 0;
    std::uint64_t epochs = 0;  // that the log closed
};

struct Survey {
    std::vector<SurveyedLog> logs;   // in the order of their times
    std::optional<TimeScale> scale;  // that of the first epoch that is taken
    Contents contents;               // what it holds is valid if the epochs ascend
    bool epochsAscend = true;        // from each stretch to the next
    NavigationSet navigation;        // of the systems that are asked for
    std::optional<int> leapSeconds;  // of the last UO or EU
    std::vector<Stretch> stretches;
    LossCounts lost;

    [[nodiscard]] std::uint64_t messages() const;
    [[nodiscard]] std::uint64_t epochs() const;
};

// A time of the log in GPS time: one on a time base of UTC lacks the leap seconds of its date.
ReceptionTime inGpsTime(std::optional<reading::LogTime> time, std::uint8_t timeBase);

// Takes the items of one log, one by one.
class Surveyor {
public:
    // What is found goes into `survey`, as that of its last log. `firstDate` is that of the log's first epoch
    // if the log has no date ahead of its end. A navigation message ahead of every date counts as received at
    // `firstTime`, in GPS time.
    Surveyor(const Selection& selection, Survey& survey, std::optional<reading::LogDate> firstDate,
             ReceptionTime firstTime = {});
    // The habits are those of the reader that took the message.
    void take(const reading::Message& message, const reading::LogReader::Habits& habits);
    void take(const reading::Damage& damage);
    // At the end of the log.
    void finish();

private:
    void takeNavigation(const reading::Message& message);
    void takeEpoch(const reading::Epoch& epoch);
    void takeInOrder(const reading::Epoch& epoch);
    bool continuesStretch(const reading::Epoch& epoch);

    const Selection& selection_;
    Survey& survey_;
    ReceptionTime firstTime_;
    reading::EpochCollector collector_;
    reading::CarriedTime carried_;              // by the epoch that is being collected
    reading::LogReader::Habits habits_{};       // ahead of it
    std::optional<reading::LogTime> lastTime_;  // of the stretch
    std::size_t stretches_ = 0;                 // of this log
    bool hasOpenEpoch_ = false;                 // satellites behind the last TD
    EpochObservations observations_;
};

}  // namespace orbconv::standard
