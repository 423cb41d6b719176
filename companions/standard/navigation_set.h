// All that the logs of one call say for a navigation file: every distinct record once, the ionosphere terms
// and the time offsets. Memory grows with what is distinct, not with the logs.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "reading/broadcast.h"
#include "standard/navigation_record.h"

namespace orbconv::standard {

// Ionosphere terms: Klobuchar's alpha0 to alpha3 and beta0 to beta3, or NeQuick's ai0 to ai2 with the
// disturbance flags behind them.
struct IonosphereTerms {
    Constellation constellation{};
    std::array<double, 8> values{};
    std::int32_t sv = 0;      // the satellite that sent them, or the one that was heard last; 0 unknown
    reading::LogTime sent;    // for the first time, in the constellation's own time
    std::uint64_t heard = 0;  // counts the terms that came: those of the greatest number came last
};

struct TimeOffsetTerms {
    Constellation constellation{};
    std::int32_t sv = 0;      // the one that was heard last; 0 unknown
    std::string_view pair;    // such as GPUT
    double a0 = 0, a1 = 0;    // s, s/s
    double reference = 0;     // seconds of week; 0 for GLONASS
    std::int32_t week = 0;    // of the reference, in the constellation's count; 0 for GLONASS
    reading::LogTime epoch;   // the reference as a date, for GLONASS the day of reception
    reading::LogTime sent;    // for the first time, in the constellation's own time
    double transmission = 0;  // seconds of the week of `epoch`
    std::uint64_t heard = 0;  // as above
};

// What did not become a record, and why.
struct NavigationLosses {
    std::uint64_t repeated = 0;     // the numbers of an earlier message of the satellite
    std::uint64_t unknownForm = 0;  // a length or flags that the format does not know
    std::uint64_t unusable = 0;     // no satellite, time or number that a record could show
    std::uint64_t withoutDate = 0;  // the log has no date
};

// An order in which two records are equal that say the same: all but the time of transmission.
struct ByContent {
    bool operator()(const NavigationRecord* one, const NavigationRecord* other) const;
};

class NavigationSet {
public:
    NavigationSet() = default;
    ~NavigationSet() = default;
    // Records are pointed at.
    NavigationSet(const NavigationSet&) = delete;
    NavigationSet& operator=(const NavigationSet&) = delete;
    NavigationSet(NavigationSet&&) = default;
    NavigationSet& operator=(NavigationSet&&) = default;

    // The time of reception is GPS time; a message without one is only counted.
    void add(const reading::Broadcast& broadcast, const ReceptionTime& received);

    [[nodiscard]] const NavigationLosses& losses() const { return losses_; }

    // As they came.
    [[nodiscard]] const std::deque<NavigationRecord>& records() const { return records_; }
    // By epoch, then constellation and satellite, then as they came.
    [[nodiscard]] std::vector<const NavigationRecord*> sortedRecords() const;
    // As they came for the first time.
    [[nodiscard]] const std::vector<IonosphereTerms>& ionosphere() const { return ionosphere_; }
    [[nodiscard]] const std::vector<TimeOffsetTerms>& offsets() const { return offsets_; }

private:
    // False if the message is no record.
    bool addRecord(const reading::Broadcast& broadcast, reading::LogTime received);
    void addIonosphere(IonosphereTerms terms);
    void addOffset(TimeOffsetTerms terms);
    void addTerms(const reading::Broadcast& broadcast, reading::LogTime received);

    std::deque<NavigationRecord> records_;                   // a record stays where it is
    std::set<const NavigationRecord*, ByContent> contents_;  // the same records
    std::vector<IonosphereTerms> ionosphere_;
    std::map<std::pair<Constellation, std::array<double, 8>>, std::size_t> ionosphereByContent_;
    std::vector<TimeOffsetTerms> offsets_;
    std::map<std::tuple<std::string_view, double, double, reading::LogTime>, std::size_t> offsetsByContent_;
    std::uint64_t heard_ = 0;
    PerConstellation<std::int32_t> lastSatellite_{};
    NavigationLosses losses_;
};

}  // namespace orbconv::standard
