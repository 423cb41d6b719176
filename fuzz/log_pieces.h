// Messages and stretches of a log, valid in their form and random in what they say: what the mutator puts
// into an input and what the first inputs are made of.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "samplelog/log_builder.h"
#include "samplelog/random.h"

namespace fuzzing {

// Chance of a mutation: the same choices from the same seed.
class Chance {
public:
    explicit Chance(std::uint64_t seed) : noise_{seed} {}

    std::uint64_t bits() { return noise_.next(); }
    // 0 to bound - 1; bound above 0.
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(bits() % bound); }
    int between(int low, int high) {
        const auto width = static_cast<std::size_t>(std::int64_t{high} - low) + 1;
        return static_cast<int>(low + static_cast<std::int64_t>(below(width)));
    }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <class List>
    const auto& of(const List& list) {
        return list[below(list.size())];
    }

private:
    samplelog::NoiseSource noise_;
};

// A log as it goes on: what later pieces refer to.
struct LogCourse {
    std::uint32_t timeOfDayMs = 3'600'000;
    std::vector<samplelog::Satellite> satellites;
};

// A number of `width` bytes (1, 2, 4 or 8), little-endian: often one at the edge of something, as an integer
// or as floating point.
std::string randomField(Chance& chance, std::size_t width);

// A satellite list: a few satellites, a usual sky, or more than the tables take.
std::vector<samplelog::Satellite> randomSky(Chance& chance);

// One message of any id, with a body of the size that goes with it.
void appendAnyMessage(samplelog::LogBuilder& log, Chance& chance, const LogCourse& course);

// One navigation message: ephemeris, ionosphere or time offset.
void appendNavigation(samplelog::LogBuilder& log, Chance& chance);

// Site, receiver, antenna and position; some of them in forms that a receiver would not send.
void appendIdentity(samplelog::LogBuilder& log, Chance& chance);

// One measurement or flag message for the course's satellites.
void appendMeasurements(samplelog::LogBuilder& log, Chance& chance, const LogCourse& course);

// Time, date, list, measurements and end of an epoch.
void appendEpoch(samplelog::LogBuilder& log, Chance& chance, LogCourse& course);

// Navigation messages of one kind in great number, each different from the others, to fill a table.
void appendTableFill(samplelog::LogBuilder& log, Chance& chance, std::size_t mostBytes);

}  // namespace fuzzing
