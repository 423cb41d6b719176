// What orbconv makes of the satellites of a log and of their values.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>

#include "inspect/findings.h"
#include "reading/epoch.h"

namespace orbconv::inspect {

class SatelliteFindings {
public:
    void take(const reading::Epoch& epoch, FindingTally& tally);
    void tell(const LogSummary& summary, FindingTally& tally) const;

private:
    // Which bands of each entry of the list are present, a bit a band.
    using Presence = std::array<std::uint8_t, 256>;

    void takeList(const reading::Epoch& epoch, const Presence& presence, FindingTally& tally);
    void takeMissingMessages(const reading::Epoch& epoch, FindingTally& tally);
    void takeSecondRanges(const reading::Epoch& epoch, const Presence& presence, FindingTally& tally);
    void takeBand(const reading::Epoch& epoch, std::size_t band, Presence& presence, FindingTally& tally) const;
    [[nodiscard]] std::size_t elementsAtHand(const reading::Epoch& epoch, MessageId id) const;

    std::bitset<messageTable.size()> came_;  // arrays that came in some epoch
    std::int16_t lastRangeDelta_ = 0;
    bool glonassRangesOfSlot4_ = false;
    std::array<std::uint64_t, 181> glonassCounts_{};  // epochs, by the number of GLONASS satellites
};

}  // namespace orbconv::inspect
