// The epochs of all logs in the order of their times. Each stretch of a log ascends; those that overlap are
// read side by side.
#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "reading/epoch.h"
#include "reading/log_reader.h"
#include "standard/epoch_gate.h"
#include "standard/observations.h"
#include "standard/survey.h"

namespace orbconv::standard {

// Opens a log for reading; a std::runtime_error that names it and says why if that cannot be.
std::FILE* openLog(const std::string& name);

// The epochs of one stretch that are asked for.
class StretchReader {
public:
    StretchReader(const std::string& logName, const Stretch& stretch, const Selection& selection,
                  TimeScale scale);

    // Takes the next epoch; false behind the last one.
    bool next();
    [[nodiscard]] const EpochObservations& epoch() const { return observations_; }

private:
    bool takeEpoch();

    const Selection& selection_;
    TimeScale scale_;
    const Stretch& stretch_;
    reading::LogReader reader_;
    reading::EpochCollector collector_;
    std::optional<reading::LogTime> lastTime_;
    EpochObservations observations_;
};

// As many stretches can overlap at one time: each that is being read has an open file and its buffers.
inline constexpr std::size_t mostSideBySide = 40;

class EpochSequence {
public:
    // All that is given has to outlive the sequence.
    EpochSequence(const Survey& survey, const Selection& selection);

    // The next epoch, valid until the call behind; null behind the last one. Of several of the same time the
    // one counts whose stretch the survey found first. More overlaps than can be are a std::runtime_error.
    const EpochObservations* next();

    // What next() gave last; null ahead of its first call.
    [[nodiscard]] const EpochObservations* current() const { return current_; }

    // Those that came with a time that another stretch had already.
    [[nodiscard]] std::uint64_t repeatedEpochs() const { return repeatedEpochs_; }

private:
    struct OpenStretch {
        std::size_t index = 0;  // of the survey's stretches
        std::unique_ptr<StretchReader> reader;
    };

    void leave(reading::LogTime time);
    void openStretches();
    [[nodiscard]] std::vector<OpenStretch>::const_iterator earliest() const;

    const Survey& survey_;
    const Selection& selection_;
    std::vector<std::size_t> waiting_;  // indices of stretches that are not open yet, the earliest at the end
    std::vector<OpenStretch> open_;     // each stands on an epoch; by their indices
    const EpochObservations* current_ = nullptr;
    std::size_t handedOut_ = 0;  // the index of the stretch that `current_` is of
    std::uint64_t repeatedEpochs_ = 0;
};

}  // namespace orbconv::standard
