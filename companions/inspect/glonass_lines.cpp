#include "inspect/glonass_lines.h"

#include <algorithm>
#include <utility>

namespace orbconv::inspect {

// Returns how many records the epoch has.
std::size_t GlonassLines::fill(const reading::Epoch& epoch) {
    const auto slots = epoch.bytes(rowOf("NN"));
    std::copy_n(slots.begin(), std::min(slots.size(), slots_.size()), slots_.begin());
    if (epoch.has(rowOf("SX"))) {
        const auto listed = std::ranges::count(epoch.satellites(), Constellation::glonass,
                                               &reading::EpochSatellite::constellation);
        listed_ = std::min(static_cast<std::size_t>(listed), records);
    }
    for (std::size_t i = 0; i < std::min(listed_, slots_.size()); ++i) {
        records_[i].slot = slots_[i];
    }
    return listed_;
}

// Neighbours change places by slot; a record without one stays where it is and parts the others.
void GlonassLines::sort() {
    for (bool swapped = true; swapped;) {
        swapped = false;
        for (std::size_t i = 0; i + 1 < records; ++i) {
            if (records_[i].slot > records_[i + 1].slot && records_[i + 1].slot != 0) {
                std::swap(records_[i], records_[i + 1]);
                swapped = true;
            }
        }
    }
}

bool GlonassLines::write(const reading::Epoch& epoch) {
    const std::size_t count = fill(epoch);
    for (std::size_t i = 0; i < records; ++i) {
        records_[i].own = i < count;
    }
    sort();
    int previous = -1;
    bool other = false;
    for (std::size_t i = 0; i < recordsWritten; ++i) {
        const Record& record = records_[i];
        const bool line = record.own || (record.slot != 0 && record.slot != previous);
        other = other || (line && !record.own);
        previous = line ? record.slot : previous;
    }
    return other;
}

}  // namespace orbconv::inspect
