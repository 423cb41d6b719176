// The observations of one epoch, in the units of RINEX.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "assembly/signals.h"
#include "reading/epoch.h"
#include "standard/selection.h"

namespace orbconv::standard {

// Pseudorange in metres, phase in full cycles with the corrections of the signal, Doppler in hertz, positive
// for an approaching satellite, strength in dB-Hz.
enum class Kind : std::uint8_t { range, phase, doppler, strength };
inline constexpr std::size_t kindCount = 4;
constexpr std::size_t indexOf(Kind kind) {
    return static_cast<std::size_t>(kind);
}

// The values of a signal, each there or not.
struct SignalValues {
    std::array<std::optional<double>, kindCount> values;

    [[nodiscard]] std::optional<double>& operator[](Kind kind) { return values[indexOf(kind)]; }
    [[nodiscard]] const std::optional<double>& operator[](Kind kind) const { return values[indexOf(kind)]; }
    [[nodiscard]] bool empty() const;
};

// A satellite has a name of a letter and two digits.
inline constexpr int highestNumber = 99;

struct SatelliteObservations {
    Constellation constellation{};
    int number = 0;   // 1 to highestNumber; of GLONASS the slot
    int channel = 0;  // GLONASS alone
    std::array<SignalValues, bandCount> signals;
};

// Why a satellite of an epoch's list has no line.
enum class LeftOut : std::uint8_t {
    glonassWithoutSlot,
    glonassWithoutChannel,  // a channel that no satellite can have
    withoutNumber,          // 0, or beyond two digits
    twice,                  // the name stands in the list already
    qzss,
    sbas,
    glonassCdma,
    unknownSystem,
};
inline constexpr std::size_t leftOutCount = 8;
using LeftOutCounts = std::array<std::uint64_t, leftOutCount>;

struct EpochObservations {
    reading::LogTime time;
    std::optional<double> clockOffset;              // seconds
    std::vector<SatelliteObservations> satellites;  // by constellation and number; each with a value at least
    LeftOutCounts leftOut{};                        // systems that are not selected are not counted
};

// The observations of an epoch that has a time. A signal is there if its flag says so, and of it what its own
// messages hold. `into` is overwritten; its storage is used again.
void observationsOf(const reading::Epoch& epoch, const Selection& selection, EpochObservations& into);

// The cycles that the phase of a signal has on top of what was received; of GLONASS by its slots.
double phaseCorrection(Constellation constellation, std::size_t band, int number);

}  // namespace orbconv::standard
