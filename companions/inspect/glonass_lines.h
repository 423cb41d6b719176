// Which epochs of an observation file have lines of GLONASS satellites that are not in the epoch's list. The
// converter's records of GLONASS keep their slots when they are emptied, and one with a slot has a line.
#pragma once

#include <array>
#include <cstdint>

#include "reading/epoch.h"

namespace orbconv::inspect {

// The slots of the records, from the first pass of the converter through its second.
class GlonassLines {
public:
    // An epoch of the first pass: its satellites' slots go to the records in the order of the list.
    void survey(const reading::Epoch& epoch) { fill(epoch); }
    // An epoch of the second pass: whether it has a line that is not its own. The records stay sorted.
    bool write(const reading::Epoch& epoch);

private:
    static constexpr std::size_t records = 32;
    static constexpr std::size_t recordsWritten = 30;
    struct Record {
        std::uint8_t slot = 0;  // 255: unknown
        bool own = false;       // of a satellite of this epoch
    };

    std::size_t fill(const reading::Epoch& epoch);
    void sort();

    std::array<Record, records> records_{};
    std::array<std::uint8_t, 24> slots_{};  // of the last NN, as they are staged
    std::size_t listed_ = 0;                // of the last list
};

}  // namespace orbconv::inspect
