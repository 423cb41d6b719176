#include "standard/observations.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace orbconv::standard {

namespace {

using reading::Epoch;
using reading::EpochSatellite;

// GLONASS has had channels up to 13; today's are -7 to 6.
constexpr int lowestChannel = -7;
constexpr int highestChannel = 13;

// The rows of a band's messages.
struct BandRows {
    std::size_t flag, range, phase, doppler, strength;
};
constexpr std::array<BandRows, bandCount> bandRows = []() {
    std::array<BandRows, bandCount> rows{};
    for (std::size_t band = 0; band < bandCount; ++band) {
        const BandMessages& messages = bandMessages[band];
        rows[band] = {.flag = findRow(messages.flag).value(),
                      .range = findRow(messages.range).value(),
                      .phase = findRow(messages.phase).value(),
                      .doppler = findRow(messages.doppler).value(),
                      .strength = findRow(messages.strength).value()};
    }
    return rows;
}();

constexpr std::size_t referenceRangeRow = rowOf(referenceMessages.range);
constexpr std::size_t referenceDopplerRow = rowOf(referenceMessages.doppler);
constexpr std::size_t fullDopplerRow = rowOf(referenceMessages.fullDoppler);

// As many satellites as a list has room for.
constexpr auto mostListed =
    static_cast<std::size_t>(messageTable[rowOf("SX")].areaBytes / messageTable[rowOf("SX")].elementBytes);

// ---- which satellites ----

std::optional<LeftOut> reasonToLeaveOut(const EpochSatellite& satellite) {
    if (!satellite.constellation) {
        return LeftOut::unknownSystem;
    }
    switch (*satellite.constellation) {
        case Constellation::qzss: return LeftOut::qzss;
        case Constellation::sbas: return LeftOut::sbas;
        case Constellation::glonassCdma: return LeftOut::glonassCdma;
        case Constellation::glonass:
            if (satellite.slot == 0) {
                return LeftOut::glonassWithoutSlot;
            }
            if (satellite.channel() < lowestChannel || satellite.channel() > highestChannel) {
                return LeftOut::glonassWithoutChannel;
            }
            break;
        default: break;
    }
    if (satellite.nameNumber() == 0 || satellite.nameNumber() > highestNumber) {
        return LeftOut::withoutNumber;
    }
    return std::nullopt;
}

bool isLeftOutByChoice(const EpochSatellite& satellite, const Selection& selection) {
    return satellite.constellation && writableConstellations[indexOf(*satellite.constellation)] &&
           !selection.systems[indexOf(*satellite.constellation)];
}

// A satellite that gets a line if it has a value. Ordered by name, then by place in the list.
struct Named {
    Constellation constellation;
    int number;
    std::size_t element;

    [[nodiscard]] std::tuple<Constellation, int, std::size_t> order() const {
        return {constellation, number, element};
    }
    [[nodiscard]] bool hasNameOf(const Named& other) const {
        return constellation == other.constellation && number == other.number;
    }
};

// ---- values ----

double carrierHertz(const Carrier& carrier, int channel) {
    return carrier.kind == CarrierKind::fixed ? carrier.hertz
                                              : hertzPerMegahertz * glonassMegahertz(carrier.kind, channel);
}

// The reference of all times of an epoch: rx, or rc in an epoch without rx.
std::size_t referenceRowOf(const Epoch& epoch) {
    return epoch.elementCount(referenceRangeRow) > 0 ? referenceRangeRow : bandRows[bands::c].range;
}

// Seconds of flight.
std::optional<double> referenceTime(const Epoch& epoch, std::size_t row, std::size_t element,
                                    Constellation constellation) {
    const auto count = epoch.element<std::int32_t>(row, element);
    if (!count) {
        return std::nullopt;
    }
    const RangeScale& scale = rangeScales[indexOf(constellation)];
    return *count * scale.unit + scale.offset;
}

// A Doppler that prints as 0 is 0: the last digit of the print is the fifth of the unit.
double withoutLeastDoppler(double hertz) {
    constexpr double leastPrinted = 0.0005;
    return std::abs(hertz) < leastPrinted ? 0.0 : hertz;
}

struct Satellite {
    const Epoch& epoch;
    Constellation constellation;
    int number;
    int channel;
    std::size_t element;
    std::optional<double> referenceTime;
    std::optional<std::int32_t> referenceDoppler;

    [[nodiscard]] double hertz(const Carrier& carrier) const { return carrierHertz(carrier, channel); }
};

std::optional<double> rangeOf(const Satellite& satellite, std::size_t band) {
    if (!satellite.referenceTime) {
        return std::nullopt;
    }
    if (band == bands::c) {
        return *satellite.referenceTime * speedOfLight;
    }
    const auto count = satellite.epoch.element<std::int16_t>(bandRows[band].range, satellite.element);
    if (!count) {
        return std::nullopt;
    }
    return (*count * rangeDeltaUnit + rangeDeltaOffset + *satellite.referenceTime) * speedOfLight;
}

std::optional<double> phaseOf(const Satellite& satellite, std::size_t band) {
    const auto count = satellite.epoch.element<std::int32_t>(bandRows[band].phase, satellite.element);
    if (!count || !satellite.referenceTime) {
        return std::nullopt;
    }
    const Carrier& carrier = signalCarriers[band][indexOf(satellite.constellation)];
    return (*count * phaseUnit + *satellite.referenceTime) * satellite.hertz(carrier) +
           phaseCorrection(satellite.constellation, band, satellite.number);
}

// The log's Doppler has the opposite sign.
std::optional<double> dopplerOf(const Satellite& satellite, std::size_t band) {
    const auto count = satellite.epoch.element<std::int16_t>(bandRows[band].doppler, satellite.element);
    if (count && satellite.referenceDoppler) {
        const std::size_t column = indexOf(satellite.constellation);
        const double sum = static_cast<double>(-(std::int64_t{*satellite.referenceDoppler} + *count));
        return withoutLeastDoppler(sum * satellite.hertz(signalCarriers[band][column]) /
                                   satellite.hertz(dopplerReferences[column]) * dopplerUnit);
    }
    if (band != bands::c) {
        return std::nullopt;
    }
    const auto full = satellite.epoch.element<std::int32_t>(fullDopplerRow, satellite.element);
    if (!full) {
        return std::nullopt;
    }
    return withoutLeastDoppler(static_cast<double>(-std::int64_t{*full}) * dopplerUnit);
}

// Nothing where the element is 0: no signal is that weak.
std::optional<double> strengthOf(const Satellite& satellite, std::size_t band) {
    const auto count = satellite.epoch.element<std::uint8_t>(bandRows[band].strength, satellite.element);
    if (count.value_or(0) == 0) {
        return std::nullopt;
    }
    return *count * strengthUnit;
}

// Whether it has any value at all.
bool takeSignals(const Satellite& satellite, RinexVersion version,
                 std::array<SignalValues, bandCount>& signals) {
    bool hasValue = false;
    for (std::size_t band = 0; band < bandCount; ++band) {
        const auto flag = satellite.epoch.element<std::uint16_t>(bandRows[band].flag, satellite.element);
        if ((flag.value_or(0) & signalPresentBit) == 0 ||
            !isWritable(satellite.constellation, band, version)) {
            signals[band] = {};
            continue;
        }
        signals[band][Kind::range] = rangeOf(satellite, band);
        signals[band][Kind::phase] = phaseOf(satellite, band);
        signals[band][Kind::doppler] = dopplerOf(satellite, band);
        signals[band][Kind::strength] = strengthOf(satellite, band);
        hasValue = hasValue || !signals[band].empty();
    }
    return hasValue;
}

}  // namespace

bool SignalValues::empty() const {
    return std::ranges::none_of(values, [](const auto& value) { return value.has_value(); });
}

double phaseCorrection(Constellation constellation, std::size_t band, int number) {
    const double shift = phaseShifts[band][indexOf(constellation)];
    const BeidouExtraPhase& extra = beidouExtraPhases[band];
    const bool hasExtra = constellation == Constellation::beidou && extra.satellites.holds(number);
    return hasExtra ? shift + extra.cycles : shift;
}

void observationsOf(const Epoch& epoch, const Selection& selection, EpochObservations& into) {
    into.time = epoch.time.value_or(reading::LogTime{});
    into.clockOffset = epoch.clockOffset;
    into.leftOut = {};
    into.satellites.clear();

    std::array<Named, mostListed> named{};
    std::size_t count = 0;
    for (const EpochSatellite& satellite : epoch.satellites()) {
        if (isLeftOutByChoice(satellite, selection)) {
            continue;
        }
        if (const auto reason = reasonToLeaveOut(satellite)) {
            ++into.leftOut[static_cast<std::size_t>(*reason)];
            continue;
        }
        named[count++] = {*satellite.constellation, satellite.nameNumber(), satellite.element};
    }
    const auto last = named.begin() + static_cast<std::ptrdiff_t>(count);
    std::sort(named.begin(), last, [](const Named& a, const Named& b) { return a.order() < b.order(); });

    const std::size_t reference = referenceRowOf(epoch);
    const Named* previous = nullptr;
    for (auto one = named.begin(); one != last; ++one) {
        if (previous != nullptr && one->hasNameOf(*previous)) {
            ++into.leftOut[static_cast<std::size_t>(LeftOut::twice)];
            continue;
        }
        previous = &*one;
        const int channel = epoch.satellites()[one->element].channel();
        const Satellite satellite{
            .epoch = epoch,
            .constellation = one->constellation,
            .number = one->number,
            .channel = channel,
            .element = one->element,
            .referenceTime = referenceTime(epoch, reference, one->element, one->constellation),
            .referenceDoppler = epoch.element<std::int32_t>(referenceDopplerRow, one->element)};
        SatelliteObservations& line = into.satellites.emplace_back();
        line.constellation = one->constellation;
        line.number = one->number;
        line.channel = channel;
        if (!takeSignals(satellite, selection.version, line.signals)) {
            into.satellites.pop_back();
        }
    }
}

}  // namespace orbconv::standard
