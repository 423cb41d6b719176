// What orbconv makes of the navigation messages of a log.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "inspect/findings.h"
#include "inspect/navigation_kinds.h"
#include "reading/log_time.h"

namespace orbconv::inspect {

class NavigationFindings {
public:
    // A message that the converter meets.
    void take(const reading::Message& message, FindingTally& tally);
    void tell(FindingTally& tally) const;

private:
    // The records of one constellation that the converter keeps: what is compared of an ephemeris by its key.
    using Records = std::unordered_map<std::uint64_t, std::uint64_t>;

    void takeDate(const reading::Message& message);
    void takeKind(NavigationKind index, const reading::Message& message, FindingTally& tally);
    void takeKepler(const NavigationKindRow& kind, const reading::Message& message, FindingTally& tally);
    void takeNewRecord(const NavigationKindRow& kind, const reading::Message& message, FindingTally& tally);
    void takeNewGps(const NavigationKindRow& kind, const reading::Message& message, std::int16_t week,
                    FindingTally& tally);
    void takeGlonass(const reading::Message& message, FindingTally& tally);
    void takeIonosphere(const NavigationKindRow& kind, const reading::Message& message, FindingTally& tally);
    void takeTimeOffset(const NavigationKindRow& kind, const reading::Message& message, FindingTally& tally);
    void takeShiftedOffsets(const NavigationKindRow& kind, const reading::Message& message,
                            FindingTally& tally);
    bool keep(Constellation constellation, std::uint64_t key, std::uint64_t content,
              const reading::Message& message, FindingTally& tally);

    std::optional<reading::LogDate> date_;  // of the last RD: the converter rolls no midnight
    bool beidouCame_ = false;
    PerConstellation<Records> records_;
    PerConstellation<std::uint64_t> ionospheres_{};  // hash of the last set; 0: none
    PerConstellation<std::uint64_t> ionosphereSets_{};
    PerConstellation<std::uint64_t> timeOffsets_{};  // hash of the last one; 0: none
    PerConstellation<std::uint64_t> timeOffsetSets_{};
    PerConstellation<bool> ionosphereEnded_{};
    PerConstellation<bool> timeOffsetsEnded_{};
    bool galileoGpsEnded_ = false;
    std::optional<std::string> glonassShifted_;         // where the last NU is, if its line is shifted
    std::optional<std::int16_t> firstWeek_, lastWeek_;  // of GPS
};

}  // namespace orbconv::inspect
