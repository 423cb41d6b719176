// All that the logs of one call say for a navigation file: every distinct record once, the ionosphere terms
// and the time offsets. Memory grows with what is distinct, not with the logs.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "reading/broadcast.h"
#include "standard/navigation_record.h"

namespace orbconv::standard {

// When a message came: in the log's own time, and in GPS time. Nothing where no date is known.
struct Reception {
    ReceptionTime logTime;
    ReceptionTime gpsTime;
};

// Ionosphere terms: Klobuchar's alpha0 to alpha3 and beta0 to beta3, or NeQuick's ai0 to ai2 with the
// disturbance flags behind them.
struct IonosphereTerms {
    Constellation constellation{};
    std::array<double, 8> values{};
    std::int32_t sv = 0;    // the satellite that sent them, or the one that was heard last; 0 unknown
    reading::LogTime sent;  // in the constellation's own time
};

struct TimeOffsetTerms {
    Constellation constellation{};
    std::string_view pair;    // such as GPUT
    double a0 = 0, a1 = 0;    // s, s/s
    double reference = 0;     // seconds of week; 0 for GLONASS
    std::int32_t week = 0;    // of the reference, in the constellation's count; 0 for GLONASS
    reading::LogTime epoch;   // the reference as a date, for GLONASS the day of reception
    double transmission = 0;  // seconds of the week of `epoch`
};

// What did not become a record, and why.
struct NavigationLosses {
    std::uint64_t repeated = 0;     // the numbers of an earlier message of the satellite
    std::uint64_t unknownForm = 0;  // a length or flags that the format does not know
    std::uint64_t unusable = 0;     // no satellite, time or number that a record could show
    std::uint64_t withoutDate = 0;  // the log has no date
};

class NavigationSet {
public:
    void add(const reading::Broadcast& broadcast, const Reception& received);

    [[nodiscard]] bool empty() const { return records_.empty() && ionosphere_.empty() && offsets_.empty(); }
    [[nodiscard]] const NavigationLosses& losses() const { return losses_; }

    // By epoch, then constellation and satellite, then as they came.
    [[nodiscard]] std::vector<const NavigationRecord*> sortedRecords() const;
    // As they came; those of one constellation or pair that came last hold.
    [[nodiscard]] const std::vector<IonosphereTerms>& ionosphere() const { return ionosphere_; }
    [[nodiscard]] const std::vector<TimeOffsetTerms>& offsets() const { return offsets_; }
    // Leap seconds of GPS against UTC as the last message has them.
    [[nodiscard]] std::optional<std::int32_t> leapSeconds() const { return leapSeconds_; }

private:
    void addRecord(const reading::Broadcast& broadcast, const Reception& received);
    void addIonosphere(IonosphereTerms terms);
    void addOffset(TimeOffsetTerms terms);
    void addTerms(const reading::Broadcast& broadcast, const Reception& received);

    std::vector<NavigationRecord> records_;
    std::unordered_multimap<std::uint64_t, std::size_t> byContent_;
    std::vector<IonosphereTerms> ionosphere_;
    std::vector<TimeOffsetTerms> offsets_;
    PerConstellation<std::int32_t> lastSatellite_{};
    std::optional<std::int32_t> leapSeconds_;
    NavigationLosses losses_;
};

}  // namespace orbconv::standard
