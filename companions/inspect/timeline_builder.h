// Puts the timeline of a log together while the log is read: the bins widen as the log goes on.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "inspect/log_summary.h"
#include "inspect/signal_counts.h"
#include "reading/epoch.h"

namespace orbconv::inspect {

class TimelineBuilder {
public:
    TimelineBuilder();

    // The next epoch; `time` as the summary counts it.
    void add(const reading::Epoch& epoch, LogTime time);
    // An epoch without a time.
    void leaveOut() { ++timeline_.epochsLeftOut; }
    // Damage behind the last epoch that was added.
    void addDamage(std::uint64_t bytes);

    // The timeline, with the gaps that the summary tells.
    Timeline tell(const LogSummary& summary);

private:
    [[nodiscard]] bool isPart(LogTime time);
    void halve();
    SatelliteTrack* track(const reading::EpochSatellite& satellite);
    std::vector<StrengthBin>& signal(Constellation constellation, std::size_t band);
    void addSatellites(const reading::Epoch& epoch);
    void addBand(const reading::Epoch& epoch, std::size_t band);

    static constexpr std::int16_t noTrack = -1;
    static constexpr std::int16_t leftOut = -2;

    Timeline timeline_;
    std::size_t bin_ = 0;  // of the last epoch
    std::optional<LogTime> last_;
    std::optional<LogTime> farAhead_;  // of the epoch before, if that was left out for being far ahead
    PerConstellation<std::array<std::int16_t, satelliteKeys>> trackOf_;
    std::array<std::array<std::int16_t, constellationCount>, bandCount> signalOf_;
};

}  // namespace orbconv::inspect
