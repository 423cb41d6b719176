// What orbconv makes of a log's times: its clock, its interval, where its header comes.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "inspect/findings.h"
#include "log/receiver_clock.h"

namespace orbconv::inspect {

class TimeFindings {
public:
    // A message that the converter meets, ahead of the epoch that it may close.
    void take(const reading::Message& message);
    // The epoch that this TD closed.
    void take(const reading::Epoch& epoch, FindingTally& tally);
    // The header comes with the message that was taken last.
    [[nodiscard]] bool headerComes() const { return headerComes_; }
    [[nodiscard]] bool headerDone() const { return headerDone_; }
    // Epochs ahead of the first that is written: of those ahead of the header the last one is.
    [[nodiscard]] std::uint64_t unwrittenEpochs() const {
        return epochsAheadOfHeader_ > 1 ? epochsAheadOfHeader_ - 1 : 0;
    }

    void tell(const LogSummary& summary, FindingTally& tally) const;

private:
    void takeTime(std::uint32_t timeOfDayMs);
    void takeDated(const reading::Epoch& epoch, FindingTally& tally);
    void takeUndated(const reading::Epoch& epoch, FindingTally& tally);

    std::uint64_t times_ = 0;  // ~~
    std::uint64_t dates_ = 0;  // RD
    std::uint32_t firstTime_ = 0;
    std::uint32_t previousTime_ = 0;  // of the message before; the converter keeps no other
    float interval_ = 0.0F;           // as the converter has it
    bool headerDone_ = false;
    bool headerComes_ = false;
    std::uint64_t epochs_ = 0;
    std::uint64_t epochsAheadOfHeader_ = 0;
    std::uint64_t epochsAheadOfDate_ = 0;
    bool timeCame_ = false;         // since the last TD
    bool dateAheadOfTime_ = false;  // since the last TD
    std::uint8_t timeBase_ = 0;

    std::optional<LogTime> dated_;     // the last epoch with a date of its own
    std::optional<LogTime> previous_;  // the epoch before
    std::unordered_map<std::int64_t, std::uint64_t> undatedSteps_;
    static constexpr std::size_t mostDifferentSteps = 4096;
};

}  // namespace orbconv::inspect
