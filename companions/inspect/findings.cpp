#include "inspect/findings.h"

namespace orbconv::inspect {

std::vector<Finding> FindingTally::findings() const {
    std::vector<Finding> found;
    for (const FindingRow& row : findingRows) {
        const Entry& entry = entries_[static_cast<std::size_t>(row.id)];
        if (entry.count > 0) {
            found.push_back({.code = row.code,
                             .title = row.title,
                             .count = entry.count,
                             .counted = row.counted,
                             .example = entry.example,
                             .everySuch = row.everySuch});
        }
    }
    return found;
}

std::string placeText(const reading::Epoch& epoch) {
    return epoch.time ? "at " + reading::isoText(*epoch.time)
                      : "in the epoch at offset " + std::to_string(epoch.offset);
}

std::string placeText(const reading::Message& message) {
    return std::string{message.id.first, message.id.second} + " at offset " + std::to_string(message.offset);
}

}  // namespace orbconv::inspect
