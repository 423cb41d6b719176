// Where the converter's reader stands in a log, beside the careful reader: which messages it meets at their
// start, and what it loses where a length takes it out of step. Behind such a place the converter's own
// reader is run over the bytes until it stands at the start of a message again.
#pragma once

#include <cstdint>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "inspect/findings.h"
#include "log/message_staging.h"
#include "reading/log_reader.h"

namespace orbconv::inspect {

// The bytes of a log at any place: a window that slides over a file of its own, or memory.
class LogBytes {
public:
    explicit LogBytes(std::string path) : path_(std::move(path)) {}
    explicit LogBytes(std::span<const std::uint8_t> memory) : memory_(memory) {}

    // What stands at `offset`: at least as much as one message can take, less at the end of the log, nothing
    // where the file is gone.
    std::span<const std::uint8_t> at(std::uint64_t offset);

    // A reader that begins the log once more; of a file that is gone, one at its end.
    [[nodiscard]] reading::LogReader reader() const;

private:
    std::span<const std::uint8_t> memory_;  // the window
    std::uint64_t offset_ = 0;              // of the window
    std::string path_;                      // empty: the memory is all
    std::ifstream file_;                    // opened at the first need
    std::vector<std::uint8_t> buffer_;
};

// How many bytes the converter's reader takes for a message of this id and body length.
std::uint64_t convertedBytes(MessageId id, std::size_t row, int length);

class ConverterWalk {
public:
    explicit ConverterWalk(LogBytes bytes) : bytes_(std::move(bytes)) {}

    // Whether the converter meets the message at its start.
    bool meets(const reading::Message& message);
    // Damage: the converter reads it as messages.
    void passDamage(const reading::Damage& damage);

    void tell(FindingTally& tally) const;

    [[nodiscard]] const LogBytes& bytes() const { return bytes_; }

private:
    void readOn(std::uint64_t offset);

    LogBytes bytes_;
    MessageStaging staging_;  // what the converter stages out of step; nobody reads it
    std::uint64_t position_ = 0;
    std::uint64_t lost_ = 0;
    std::uint64_t lostEpochs_ = 0;
    std::string cause_;  // of the stretch at hand
    std::string example_;
};

}  // namespace orbconv::inspect
