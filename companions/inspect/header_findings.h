// What orbconv makes of a log in the header of the observation file, and of its constellations as a whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "inspect/findings.h"
#include "log/message_staging.h"
#include "log/receiver_identity.h"
#include "log/satellite_lists.h"

namespace orbconv::inspect {

class HeaderFindings {
public:
    // A message that the converter meets.
    void take(const reading::Message& message, FindingTally& tally);
    // The header is written behind the message that was taken last: what comes later is not in it.
    void takeHeader(FindingTally& tally);

    void tell(const LogSummary& summary, FindingTally& tally) const;

private:
    void stage(const reading::Message& message);
    void takeParameters(const reading::Message& message, FindingTally& tally);
    void takeLetter();
    void takeTexts(FindingTally& tally);

    MessageStaging staging_;
    ReceiverInfo info_;
    SystemPresence presence_;
    PerConstellation<bool> inList_{};  // of the last SX
    bool positionCame_ = false;
    bool leapSecondsCame_ = false;
    bool headerDone_ = false;
};

}  // namespace orbconv::inspect
