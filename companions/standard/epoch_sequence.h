// The epochs of a log in the order of their times: its stretches side by side, each of which ascends.
#pragma once

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
    Stretch stretch_;
    reading::LogReader reader_;
    reading::EpochCollector collector_;
    std::optional<reading::LogTime> lastTime_;
    EpochObservations observations_;
};

// All epochs of a log. Of two of the same time the one that stands first in the log counts.
class EpochSequence {
public:
    EpochSequence(const std::string& logName, const Survey& survey, const Selection& selection);

    // The next epoch, valid until the call behind; null behind the last one.
    const EpochObservations* next();

    // Those that came with a time that another stretch had already.
    [[nodiscard]] std::uint64_t repeatedEpochs() const { return repeatedEpochs_; }

private:
    void drop(std::size_t index);

    std::vector<std::unique_ptr<StretchReader>> readers_;  // that stand on an epoch, in the order of the log
    std::optional<std::size_t> handedOut_;                 // index of the reader whose epoch was taken
    std::uint64_t repeatedEpochs_ = 0;
};

}  // namespace orbconv::standard
