#include "log/satellite_lists.h"

#include <algorithm>

namespace orbconv {

namespace {

// Deliberate: this numbering is not that of the assembly, where 3 is SBAS, 4 Galileo, 5 QZSS, 6 BeiDou
// and 7 NavIC. It decides the header's letter only.
struct PresenceRow {
    std::uint8_t systemCode;
    bool RunOptions::*included;
    char letter;
};
constexpr std::array<PresenceRow, SystemPresence::systems> presenceRows = {{
    {1, &RunOptions::includeGps, 'G'},
    {2, &RunOptions::includeGlonass, 'R'},
    {3, &RunOptions::includeGalileo, 'E'},
    {4, &RunOptions::includeQzss, 'J'},
    {5, &RunOptions::includeBeidou, 'C'},
    {6, &RunOptions::includeNavic, 'I'},
    {7, &RunOptions::includeSbas, 'S'},
}};

void enterSlot(GlonassSlotTable& table, std::int8_t channel, std::uint8_t slot) {
    for (std::size_t entry = 0; entry < GlonassSlotTable::capacity; ++entry) {
        if (table.slot[entry] == slot) {
            return;
        }
        if (table.slot[entry] == 0 && slot != unknownSlot) {
            table.frequencyNumber[entry] = channel;
            table.slot[entry] = slot;
            ++table.count;
            return;
        }
    }
}

}  // namespace

void handleSx(const SatelliteList& list, const RunOptions& options, SystemPresence& presence) {
    presence.present.fill(false);
    presence.satellites.fill(0);
    presence.systemCount = 0;
    for (int i = 0; i < list.count(); ++i) {
        const std::uint8_t code = list.systemCode(static_cast<std::size_t>(i));
        const auto row = std::ranges::find(presenceRows, code, &PresenceRow::systemCode);
        if (row != presenceRows.end() && options.*(row->included)) {
            const auto system = static_cast<std::size_t>(row - presenceRows.begin());
            presence.letter = row->letter;
            presence.present[system] = true;
            ++presence.satellites[system];
        }
    }
    presence.systemCount = static_cast<std::int32_t>(std::ranges::count(presence.present, true));
    if (presence.systemCount >= 2) {
        presence.letter = 'M';
    }
}

void noteGlonassSlots(const MessageStaging& staging, GlonassSlotTable& table) {
    forEachGlonassSlot(staging, [&table](std::size_t /*position*/, std::int8_t channel, std::uint8_t slot) {
        enterSlot(table, channel, slot);
    });
}

}  // namespace orbconv
