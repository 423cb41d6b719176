// The observations of the epoch being built: one record a satellite, in eight fixed arrays. The reader
// leaves an epoch's values in the order of its satellite list; the steps of the assembly turn them into
// numbers in these records, by position; the epoch writer prints them.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <string_view>

#include "assembly/signals.h"
#include "log/message_staging.h"
#include "run/constellation.h"

namespace orbconv {

// An observable's code or a signal's name: up to three characters, empty as long as nothing wrote it.
class SignalText {
public:
    constexpr SignalText() = default;
    // From a literal of exactly three characters, such as "C1C".
    // NOLINTNEXTLINE(*-explicit-*, *-avoid-c-arrays): a code is written as its text
    constexpr SignalText(const char (&text)[4]) : text_{text[0], text[1], text[2]} {}
    // The kind's letter ahead of a signal's band and attribute.
    constexpr SignalText(char kind, const SignalCode& signal)
        : text_{kind, signal.view()[0], signal.view()[1]} {}

    [[nodiscard]] constexpr bool empty() const { return *this == SignalText{}; }
    [[nodiscard]] constexpr std::string_view view() const { return {text_.data(), empty() ? 0U : length}; }
    friend constexpr bool operator==(const SignalText& a, const SignalText& b) {
        return std::bit_cast<std::uint32_t>(a.text_) == std::bit_cast<std::uint32_t>(b.text_);
    }

private:
    static constexpr std::size_t length = 3;
    std::array<char, length + 1> text_{};  // handled as one word
};

// What a band holds, and the order of its codes in a list: slot = band * 5 + kind.
inline constexpr std::size_t kindsPerBand = 5;
enum class Kind : std::uint8_t { code, phase, doppler, strength, secondPhase };

constexpr std::size_t slotOf(std::size_t band, Kind kind) {
    return band * kindsPerBand + static_cast<std::size_t>(kind);
}

// Rows of SatEpochRecord::obs.
enum class ObsRow : std::uint8_t { pseudorange, doppler, phase, strength };
inline constexpr std::size_t obsRows = 4;
inline constexpr std::size_t obsColumns = 11;  // 6 to 10 are for merged GLONASS CDMA signals only

// What every step asks for stands ahead, in one cache line; what nothing prints comes last.
struct alignas(64) SatEpochRecord {
    // The satellite, for GLONASS its frequency channel. 0: the record is free.
    std::int32_t number = 0;
    std::int32_t gloSlotNumber = 0;     // GLONASS only: the slot from NN
    double clockOffset = 0.0;           // seconds; what differences and phases refer to
    std::int32_t referenceDoppler = 0;  // raw, 1e-4 Hz; what Doppler differences refer to
    // By band; bit 6: the signal is present.
    std::array<std::uint32_t, obsColumns> signalFlags{};
    // Pseudorange in metres, Doppler in hertz, phase in cycles, strength in dB-Hz: row * obsColumns + band.
    // 0.0 is a missing measurement.
    std::array<double, obsRows * obsColumns> obs{};
    // RINEX strength digit by band, 1 to 9.
    std::array<std::int32_t, 22> strengthIndex{};
    // Name of the signal behind a value, by slot. Nothing prints it.
    std::array<SignalText, bandCount * kindsPerBand> signalName{};
    std::array<std::uint8_t, obsColumns> columnBytes{};  // nothing writes them

    [[nodiscard]] double& at(ObsRow row, std::size_t column) {
        return obs[static_cast<std::size_t>(row) * obsColumns + column];
    }
    [[nodiscard]] double at(ObsRow row, std::size_t column) const {
        return obs[static_cast<std::size_t>(row) * obsColumns + column];
    }
};

// Records of each constellation's array.
inline constexpr PerConstellation<std::size_t> storeCapacity = {32, 32, 37, 30, 61, 30, 30, 30};

// Deliberate: an epoch's clearing stops here in every array, whatever its capacity. A record behind it
// keeps its satellite and its values from the epoch that last wrote them.
inline constexpr std::size_t clearedRecords = 30;

inline constexpr auto storeOffset = []() {
    PerConstellation<std::size_t> offset{};
    for (std::size_t c = 1; c < constellationCount; ++c) {
        offset[c] = offset[c - 1] + storeCapacity[c - 1];
    }
    return offset;
}();

struct EpochStore {
    std::array<SatEpochRecord, storeOffset.back() + storeCapacity.back()> all{};

    // By constellation: how many records, from the first, have ever been given to be written. Only grows. The
    // records behind are as at the start.
    PerConstellation<std::size_t> used{};

    [[nodiscard]] std::span<const SatEpochRecord> records(Constellation constellation) const {
        const std::size_t c = indexOf(constellation);
        return std::span(all).subspan(storeOffset[c], storeCapacity[c]);
    }
    [[nodiscard]] std::span<const SatEpochRecord> usedRecords(Constellation constellation) const {
        return records(constellation).first(used[indexOf(constellation)]);
    }
    // The one way to records that can be written: the first `count` of an array, or all of them if it has
    // fewer. They count as used from now on.
    [[nodiscard]] std::span<SatEpochRecord> useFirst(Constellation constellation, std::size_t count) {
        const std::size_t c = indexOf(constellation);
        const std::size_t within = std::min(count, storeCapacity[c]);
        used[c] = std::max(used[c], within);
        return std::span(all).subspan(storeOffset[c], within);
    }
};

// Frees a record: number, observations, references and the presence of band 0. Deliberate: names, strength
// digits, the GLONASS slot and the flags of the other bands stay, and the next satellite inherits them.
void clearRecord(SatEpochRecord& record);

// Clears the first 30 records of every array. Those that were never used need none.
void clearEpochRecords(EpochStore& store);

// What claimRecord found.
enum class Claim : std::uint8_t {
    mismatch,  // another satellite's record, or none: the value is dropped
    own,       // this satellite's record already
    fresh,     // a free record, now this satellite's
};

// The position rule of the assembly: a free record becomes `number`'s, an equal one is its own. A satellite
// beyond the capacity of its array has no record (null). GLONASS channel 0 looks like a free record to
// every step, and so does any satellite of number 0.
inline Claim claimRecord(SatEpochRecord* record, std::int32_t number) {
    if (record == nullptr) {
        return Claim::mismatch;
    }
    if (record->number == 0) {
        record->number = number;
        return Claim::fresh;
    }
    return record->number == number ? Claim::own : Claim::mismatch;
}

// The second half of NN: gives the GLONASS records, in the order of the satellite list, their channels
// (where free) and their slots. Elements beyond the array's or NN's capacity are passed over.
void assignGlonassSlots(const MessageStaging& staging, EpochStore& store);

}  // namespace orbconv
