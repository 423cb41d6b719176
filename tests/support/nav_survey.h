// Navigation tests: messages into the navigation tables, as the survey of a log puts them there.
#pragma once

#include <bit>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "log/message_staging.h"
#include "log/receiver_clock.h"
#include "navdecode/navigation_tables.h"
#include "samplelog/log_builder.h"

namespace testsupport {

// Staging, clocks and tables of one survey. Messages can come in portions.
class NavSurvey {
public:
    // Reads the messages in order: RD and ~~ set the epoch clock, navigation messages go to their decoders.
    NavSurvey& feed(std::string_view log);
    NavSurvey& feed(const samplelog::LogBuilder& log) { return feed(log.bytes()); }

    orbconv::NavigationTables& tables() { return *tables_; }
    orbconv::ReceiverClocks clocks;

private:
    std::unique_ptr<orbconv::MessageStaging> staging_ = std::make_unique<orbconv::MessageStaging>();
    std::unique_ptr<orbconv::NavigationTables> tables_ = std::make_unique<orbconv::NavigationTables>();
};

// A body of `size` bytes, all 0xFF but for `value`, little-endian in `width` bytes at `offset`: a field that
// reads one byte too far to either side shows.
std::string bodyWithField(std::size_t size, std::size_t offset, std::size_t width, std::uint64_t value);

// The same for a number of type T as it stands.
template <class T>
std::uint64_t bitsOf(T value);
template <>
inline std::uint64_t bitsOf(float value) {
    return std::bit_cast<std::uint32_t>(value);
}
template <>
inline std::uint64_t bitsOf(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

// One row of a body: where a field stands, and what a value put there becomes in the entry.
template <class Entry>
struct WireField {
    const char* name;
    std::size_t offset;
    std::size_t width;
    std::uint64_t put;
    double (*read)(const Entry&);
    double expected;
};

// One more entry of a table, all zeros, counted.
template <class Entry>
Entry& append(orbconv::EphemerisTable<Entry>& table) {
    Entry* const slot = table.nextSlot();
    if (slot == nullptr) {
        throw std::length_error("the table is full");
    }
    ++table.count;
    return *slot = {};
}

// An orbit whose printed fields all differ: 1, 2, 3 in the order of the epoch line and of the lines of an
// LNAV record, the L2 bits left out (af0 1, af1 2, af2 3, iode 4, Crs 5, ... health 23, tgd 24, iodc 25, tot
// 26).
orbconv::KeplerBlock numberedKepler(std::int32_t sv);

// 2024-03-05 06:07:08.
orbconv::ClockReading recordEpoch();

}  // namespace testsupport
