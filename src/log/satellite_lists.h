// The lists that give every per-satellite message its order: SX says which satellites the arrays of an
// epoch hold, NN adds the orbit slots of the GLONASS ones.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "log/message_staging.h"
#include "run/run_options.h"

namespace orbconv {

// The staged SX list. Element i of every per-satellite message belongs to element i of this list; entries
// past `count` are those of earlier, longer lists.
class SatelliteList {
public:
    explicit SatelliteList(const MessageStaging& staging)
        : pairs_(staging.body(rowOf("SX"))), count_(staging.elementCount[rowOf("SX")]) {}

    static constexpr std::size_t capacity = 180;
    static_assert(messageTable[rowOf("SX")].areaBytes == 2 * capacity, "a pair of bytes for each entry");

    // At most `capacity`; negative or 0 for an empty list.
    [[nodiscard]] int count() const { return count_; }
    // i below `capacity`.
    [[nodiscard]] std::uint8_t systemCode(std::size_t i) const { return pairs_[2 * i]; }
    // Unsigned for most systems; for GLONASS the frequency channel, a signed byte.
    [[nodiscard]] std::uint8_t satelliteNumber(std::size_t i) const { return pairs_[2 * i + 1]; }
    [[nodiscard]] std::int8_t frequencyChannel(std::size_t i) const {
        return static_cast<std::int8_t>(pairs_[2 * i + 1]);
    }

private:
    const std::uint8_t* pairs_;
    int count_;
};

inline constexpr std::uint8_t glonassSystemCode = 2;
inline constexpr std::size_t nnCapacity = 24;
inline constexpr std::uint8_t unknownSlot = 255;

// The walk of NN: visit(position, channel, slot) for each GLONASS element of the list, in its order, with its
// position among them. NN has a byte for the first 24; elements beyond are passed over, and where the last NN
// was shorter the slot is what an earlier one left.
template <class Visit>
void forEachGlonassSlot(const MessageStaging& staging, Visit visit) {
    const SatelliteList list(staging);
    const std::uint8_t* const slots = staging.body(rowOf("NN"));
    std::size_t position = 0;
    for (int i = 0; i < list.count() && position < nnCapacity; ++i) {
        const auto element = static_cast<std::size_t>(i);
        if (list.systemCode(element) == glonassSystemCode) {
            visit(position, list.frequencyChannel(element), slots[position]);
            ++position;
        }
    }
}

// Slots and channels of the whole log, for "GLONASS SLOT / FRQ #". An entry whose slot is 0 is free.
struct GlonassSlotTable {
    static constexpr std::size_t capacity = 32;
    std::array<std::int32_t, capacity> frequencyNumber{};
    std::array<std::int32_t, capacity> slot{};
    std::int32_t count = 0;  // entries with a slot; no output depends on it
};

// The systems that the last SX list showed, as the header's first line tells them.
struct SystemPresence {
    static constexpr std::size_t systems = 7;
    std::array<bool, systems> present{};
    std::array<std::int32_t, systems> satellites{};  // no output depends on them
    std::int32_t systemCount = 0;
    char letter = 0;  // 0 while no list has set one

    // satelliteSystemLetter: empty, or the one letter.
    [[nodiscard]] std::string_view satelliteSystemLetter() const {
        return letter == 0 ? std::string_view{} : std::string_view(&letter, 1);
    }
};

// SX: which systems are present, and the letter: that of the only system met, or M.
void handleSx(const SatelliteList& list, const RunOptions& options, SystemPresence& presence);

// The first half of NN: enters slots that the table does not know yet. Slot 0 and 255 are never entered,
// and a full table takes no more.
void noteGlonassSlots(const MessageStaging& staging, GlonassSlotTable& table);

}  // namespace orbconv
