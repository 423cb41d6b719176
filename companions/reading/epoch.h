// The epochs of a log: what came between two TD, with its own list of satellites and just those arrays that
// came in this epoch. Nothing of an earlier epoch shows through but the date, which stays until the next RD.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "log/little_endian.h"
#include "log/message_table.h"
#include "reading/log_reader.h"
#include "reading/log_time.h"
#include "run/constellation.h"

namespace orbconv::reading {

// One entry of an epoch's list SX.
struct EpochSatellite {
    std::optional<Constellation> constellation;  // nothing for a system code that the format does not know
    std::uint8_t systemCode = 0;
    std::uint8_t number = 0;  // as the list has it; for GLONASS the frequency channel, as a signed byte
    std::uint8_t slot = 0;    // GLONASS: the orbit slot that NN gives; 0 where it gives none
    std::size_t element = 0;  // index in the list and in every array of the epoch

    [[nodiscard]] int channel() const { return static_cast<std::int8_t>(number); }
    // The number in the satellite's RINEX name; 0 for a GLONASS satellite without a slot.
    [[nodiscard]] int nameNumber() const { return constellation == Constellation::glonass ? slot : number; }
};

// The slot byte of NN that says "unknown".
inline constexpr std::uint8_t unknownSlot = 255;

class Epoch {
public:
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): plain facts stand beside the arrays
    // Nothing as long as no date or no time of day has come.
    std::optional<LogTime> time;
    std::optional<std::uint32_t> timeOfDayMs;  // as the last ~~ has it
    bool hasOwnTime = false;                   // a ~~ came in this epoch
    bool hasOwnDate = false;                   // an RD came in this epoch
    std::uint8_t timeBase = 0;                 // of the last RD: index into timeScaleNames
    std::optional<double> clockOffset;         // seconds, of the epoch's TO
    std::uint64_t offset = 0;                  // of the epoch's first message in the log
    std::uint64_t endOffset = 0;               // behind its TD
    // NOLINTEND(misc-non-private-member-variables-in-classes)

    // In the order of SX; empty without one.
    [[nodiscard]] std::span<const EpochSatellite> satellites() const { return satellites_; }

    // How many elements the epoch's message of this row holds; 0 if none came.
    [[nodiscard]] std::size_t elementCount(std::size_t row) const {
        return came_[row] ? elementCounts_[row] : 0;
    }
    [[nodiscard]] bool has(std::size_t row) const { return came_[row]; }

    // Element i of an array; nothing where the epoch has none.
    template <class T>
    [[nodiscard]] std::optional<T> element(std::size_t row, std::size_t i) const {
        if (i >= elementCount(row)) {
            return std::nullopt;
        }
        return loadLittleEndian<T>(arrays_.data() + areaOffsets[row] + i * sizeof(T));
    }
    // The bytes of an array, whole elements; empty where the epoch has none.
    [[nodiscard]] std::span<const std::uint8_t> bytes(std::size_t row) const {
        return std::span(arrays_).subspan(
            areaOffsets[row], elementCount(row) * static_cast<std::size_t>(messageTable[row].elementBytes));
    }

private:
    friend class EpochCollector;

    std::vector<EpochSatellite> satellites_;
    std::array<bool, messageTable.size()> came_{};
    std::array<std::uint16_t, messageTable.size()> elementCounts_{};
    std::array<std::uint8_t, areaOffsets.back()> arrays_{};
};

// What an epoch takes over from the ones before it: enough to go on collecting at any epoch's first message.
struct CarriedTime {
    std::optional<LogDate> date;               // of the last RD, moved on at each midnight since
    std::optional<std::uint32_t> timeOfDayMs;  // of the last ~~
    std::uint8_t timeBase = 0;                 // of the last RD
};

// Puts epochs together out of messages.
class EpochCollector {
public:
    EpochCollector() = default;
    explicit EpochCollector(const CarriedTime& carried);

    // Whether the message closed an epoch, which then stands in epoch() until the next call. Messages behind
    // the last TD make none.
    bool add(const Message& message);

    [[nodiscard]] const Epoch& epoch() const { return epoch_; }

    // The date of the last RD, moved on at each midnight since; for what comes between epochs.
    [[nodiscard]] std::optional<LogDate> date() const { return date_; }

    // The date and time of day as the messages so far tell them, for what comes in an epoch that is not
    // closed; midnight as long as no time of day has come. Nothing without a date.
    [[nodiscard]] std::optional<LogTime> timeSoFar() const;

    // What the next epoch takes over. Means something between epochs alone: behind add() that closed one.
    [[nodiscard]] CarriedTime carriedTime() const { return {date_, epoch_.timeOfDayMs, epoch_.timeBase}; }

private:
    void begin(const Message& message);
    void takeTime(const Message& message);
    void takeDate(const Message& message);
    void takeClockOffset(const Message& message);
    void takeArray(const Message& message);
    void takeList(const Message& message);
    void close(const Message& message);
    void listSatellites();
    // Whether midnight has passed since the epoch before, and no date has told so.
    [[nodiscard]] bool passedMidnight() const;

    Epoch epoch_;
    bool closed_ = true;  // the next message begins an epoch
    std::optional<LogDate> date_;
    std::optional<std::uint32_t> previousTimeOfDayMs_;  // of the epoch before
};

}  // namespace orbconv::reading
