#include "observations.h"

#include <algorithm>
#include <limits>

namespace samplelog {

namespace {

constexpr double deltaOffset = 2e-7;  // seconds that a range difference of 0 stands for
constexpr double deltasPerSecond = 1e11;
constexpr double phasesPerSecond = 0x1p40;
constexpr double dopplersPerHertz = 1e4;
constexpr double strengthsPerDecibel = 4.0;

// Bit 6 says that the signal is present. The low bits vary in a real log, and a reader has to pass them over.
constexpr std::uint16_t presentFlags = 0x0043;
constexpr std::uint16_t absentFlags = 0x0001;

constexpr double noiseOfRange = 0.25;       // metres, in the zenith
constexpr double noiseOfRawRange = 0.6;     // metres: `rc` is not smoothed
constexpr double noiseOfPhase = 0.0015;     // metres
constexpr double noiseOfRangeRate = 0.004;  // m/s
constexpr double noiseOfStrength = 0.3;     // dB

// dB-Hz of each family at the horizon.
constexpr std::array<double, bandCount> horizonStrength = {35.0, 31.0, 32.5, 34.0, 36.0, 34.5};

// The nearest count that the element of a message can hold.
template <typename Count>
Count toCount(double value) {
    constexpr double low = std::numeric_limits<Count>::min();
    constexpr double high = std::numeric_limits<Count>::max();
    const double rounded = value < 0.0 ? value - 0.5 : value + 0.5;
    return static_cast<Count>(std::clamp(rounded, low, high));
}

// What the atmosphere and the clocks add to the geometry, in metres and m/s.
struct Path {
    double range = 0.0;
    double rangeRate = 0.0;
    double ionosphere = 0.0;  // delay of the codes at the carrier of L1
    double ionosphereRate = 0.0;
    double noiseScale = 1.0;
};

Path pathOf(const Sighting& sighting, const ReceiverClock& clock) {
    const SatelliteModel& satellite = sighting.satellite;
    const LineOfSight& view = sighting.view;
    // Layers of air are crossed at a slant: 1 / (sine + a little), which stays finite at the horizon.
    const double air = 1.0 / (view.sineOfElevation + 0.02);
    const double shell = 1.0 / (view.sineOfElevation + 0.2);
    constexpr double airZenith = 2.4;
    constexpr double shellZenith = 3.5;
    const double clocks = clock.offset - satellite.clockOffset - satellite.clockRate * sighting.time;
    const double clockRates = clock.rate - satellite.clockRate;
    const double climb = view.sineOfElevationRate;
    return {
        .range = view.range + speedOfLight * clocks + airZenith * air,
        .rangeRate = view.rangeRate + speedOfLight * clockRates - airZenith * air * air * climb,
        .ionosphere = shellZenith * shell,
        .ionosphereRate = -shellZenith * shell * shell * climb,
        .noiseScale = 0.6 + 0.4 * air,
    };
}

// Delays grow with the square of the wavelength.
double ionosphereRatio(double carrier) {
    constexpr double l1 = 1575.42e6;
    return (l1 / carrier) * (l1 / carrier);
}

void addAbsent(EpochArrays& arrays, std::size_t band) {
    arrays.rangeDeltas[band].push_back(0);
    arrays.phases[band].push_back(0);
    arrays.dopplerDeltas[band].push_back(0);
    arrays.strengths[band].push_back(0);
    arrays.flags[band].push_back(absentFlags);
}

// The values that the differences of a satellite refer to.
struct References {
    double flight = 0.0;       // seconds, as the converter computes it from `rx`
    std::int32_t doppler = 0;  // the `DX` count
};

// Phases carry no alignment between the signals of a carrier: the converter adds that.
void addPresent(EpochArrays& arrays, std::size_t band, const Sighting& sighting, const Path& path,
                const References& references, NoiseSource& noise) {
    const SatelliteModel& satellite = sighting.satellite;
    const double carrier = satellite.signals.carrier[band];
    const double ratio = ionosphereRatio(carrier);
    const std::uint64_t key = hashOf(sighting.phaseKey, band);
    const double codeBias = 1.5 * toSymmetric(key);
    const double ambiguity = static_cast<double>(key % 2001U) - 1000.0;

    const double codeRange =
        path.range + ratio * path.ionosphere + codeBias + noiseOfRange * path.noiseScale * noise.normal();
    const double phaseRange = path.range - ratio * path.ionosphere + noiseOfPhase * noise.normal();
    const double phaseRate = path.rangeRate - ratio * path.ionosphereRate + noiseOfRangeRate * noise.normal();
    const double sine = sighting.view.sineOfElevation;
    const double strength =
        horizonStrength[band] + 16.0 * sine * (2.0 - sine) + noiseOfStrength * noise.normal();

    arrays.rangeDeltas[band].push_back(toCount<std::int16_t>(
        (codeRange / speedOfLight - references.flight - deltaOffset) * deltasPerSecond));
    arrays.phases[band].push_back(toCount<std::int32_t>(
        (phaseRange / speedOfLight + ambiguity / carrier - references.flight) * phasesPerSecond));
    const double doppler = phaseRate / speedOfLight * satellite.signals.dopplerReference * dopplersPerHertz;
    arrays.dopplerDeltas[band].push_back(toCount<std::int16_t>(doppler - references.doppler));
    arrays.strengths[band].push_back(toCount<std::uint8_t>(strength * strengthsPerDecibel));
    arrays.flags[band].push_back(presentFlags);
}

}  // namespace

void clearArrays(EpochArrays& arrays) {
    arrays.satellites.clear();
    arrays.slots.clear();
    arrays.codeRanges.clear();
    arrays.ranges.clear();
    arrays.dopplers.clear();
    arrays.dopplerReferences.clear();
    for (std::size_t band = 0; band < bandCount; ++band) {
        arrays.rangeDeltas[band].clear();
        arrays.phases[band].clear();
        arrays.dopplerDeltas[band].clear();
        arrays.strengths[band].clear();
        arrays.flags[band].clear();
    }
}

void addSighting(EpochArrays& arrays, const Sighting& sighting, const ReceiverClock& clock,
                 NoiseSource& noise) {
    const SatelliteModel& satellite = sighting.satellite;
    const SignalPlan& signals = satellite.signals;
    const Path path = pathOf(sighting, clock);
    const bool isGlonass = satellite.systemCode == SystemCode::glonass;
    arrays.satellites.push_back({satellite.systemCode, isGlonass ? satellite.channel : satellite.number});
    if (isGlonass) {
        arrays.slots.push_back(static_cast<std::uint8_t>(satellite.number));
    }

    // The references stand for the first signal, whether or not it is tracked at the moment: all other
    // signals hang on them.
    const double firstRange = path.range + ionosphereRatio(signals.carrier[0]) * path.ionosphere;
    const auto rangeCount = [&](double deviation) {
        const double range = firstRange + deviation * path.noiseScale * noise.normal();
        return toCount<std::int32_t>((range / speedOfLight - signals.rangeOffset) / signals.rangeUnit);
    };
    arrays.codeRanges.push_back(rangeCount(noiseOfRawRange));
    arrays.ranges.push_back(rangeCount(noiseOfRange));
    const double relativeRate = path.rangeRate / speedOfLight;
    arrays.dopplers.push_back(toCount<std::int32_t>(relativeRate * signals.carrier[0] * dopplersPerHertz));
    arrays.dopplerReferences.push_back(
        toCount<std::int32_t>(relativeRate * signals.dopplerReference * dopplersPerHertz));
    const References references = {
        .flight = arrays.ranges.back() * signals.rangeUnit + signals.rangeOffset,
        .doppler = arrays.dopplerReferences.back(),
    };
    for (std::size_t band = 0; band < bandCount; ++band) {
        if ((sighting.present & bandBit(band)) != 0) {
            addPresent(arrays, band, sighting, path, references, noise);
        } else {
            addAbsent(arrays, band);
        }
    }
}

void writeArrays(const EpochArrays& arrays, LogBuilder& log) {
    constexpr std::array<Band, bandCount> bands = {Band::c, Band::b1, Band::b2, Band::b3, Band::b5, Band::l};
    log.sx(arrays.satellites).nn(arrays.slots);
    log.rc(arrays.codeRanges).rx(arrays.ranges);
    for (std::size_t band = 1; band < bandCount; ++band) {
        log.rangeDeltas(bands[band], arrays.rangeDeltas[band]);
    }
    for (std::size_t band = 0; band < bandCount; ++band) {
        log.phases(bands[band], arrays.phases[band]);
    }
    log.dc(arrays.dopplers).dx(arrays.dopplerReferences);
    for (std::size_t band = 0; band < bandCount; ++band) {
        log.dopplerDeltas(bands[band], arrays.dopplerDeltas[band]);
    }
    for (std::size_t band = 0; band < bandCount; ++band) {
        log.strengths(bands[band], arrays.strengths[band]);
    }
    for (std::size_t band = 0; band < bandCount; ++band) {
        log.flags(bands[band], arrays.flags[band]);
    }
}

}  // namespace samplelog
