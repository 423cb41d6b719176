// What orbconv makes of the satellites of a log and of their values.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

#include "inspect/findings.h"
#include "inspect/glonass_lines.h"
#include "reading/epoch.h"
#include "reading/log_reader.h"

namespace orbconv::inspect {

class SatelliteFindings {
public:
    void take(const reading::Epoch& epoch, FindingTally& tally);
    void tell(const LogSummary& summary, FindingTally& tally) const;

    // Whether epochs can have lines of GLONASS satellites that are not in their lists: only a walk through
    // the log, from what its end leaves, tells which.
    [[nodiscard]] bool glonassChanges() const { return glonassChanges_; }
    // The walk, up to `end`; `unwritten` epochs ahead of the first one that is written.
    void walkGlonass(reading::LogReader reader, std::uint64_t end, std::uint64_t unwritten,
                     FindingTally& tally);

private:
    // Which bands of each entry of the list are present, a bit a band.
    using Presence = std::array<std::uint8_t, 256>;

    void takeList(const reading::Epoch& epoch, const Presence& presence, FindingTally& tally);
    void takeGlonass(const reading::Epoch& epoch);
    void takeMissingMessages(const reading::Epoch& epoch, FindingTally& tally);
    void tellMessagesAhead(FindingTally& tally) const;
    void takeSecondRanges(const reading::Epoch& epoch, const Presence& presence, FindingTally& tally);
    void takeBand(const reading::Epoch& epoch, std::size_t band, Presence& presence,
                  FindingTally& tally) const;
    [[nodiscard]] std::size_t elementsAtHand(const reading::Epoch& epoch, MessageId id) const;

    std::bitset<messageTable.size()> came_;                         // arrays that came in some epoch
    std::array<std::uint64_t, messageTable.size()> epochsAhead_{};  // by array: epochs ahead of its first one
    std::int16_t lastRangeDelta_ = 0;
    bool glonassRangesOfSlot4_ = false;
    GlonassLines glonassLines_;
    std::vector<std::uint8_t> glonassSlots_;  // of the epoch before
    bool glonassCame_ = false;
    bool glonassChanges_ = false;
};

}  // namespace orbconv::inspect
