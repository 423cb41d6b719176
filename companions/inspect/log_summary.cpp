#include "inspect/log_summary.h"

#include <numeric>

namespace orbconv::inspect {

namespace {

constexpr PerConstellation<std::string_view> constellationNames = {
    "GPS", "GLONASS", "Galileo", "QZSS", "BeiDou", "NavIC", "SBAS", "GLONASS CDMA"};

// The strength whose place in the order is `place`, from 0.
double strengthAt(const SignalSummary& signal, std::uint64_t place) {
    std::size_t value = 0;
    for (std::uint64_t passed = signal.strengths[0]; passed <= place; passed += signal.strengths[value]) {
        ++value;
    }
    return static_cast<double>(value) * strengthUnit;
}

}  // namespace

std::string_view constellationName(Constellation constellation) {
    return constellationNames[indexOf(constellation)];
}

std::string nameText(const SatelliteName& satellite) {
    std::string text(1, systemLetters[indexOf(satellite.constellation)]);
    if (satellite.constellation == Constellation::glonass && satellite.number == 0) {
        return text + "(" + std::to_string(satellite.channel) + ")";
    }
    if (satellite.number < 10) {
        text += '0';
    }
    return text + std::to_string(satellite.number);
}

std::string signalText(Constellation constellation, std::size_t band) {
    const std::string name(constellationName(constellation));
    const std::string_view code = signalCodes[band][indexOf(constellation)].view();
    return code.empty() ? name + " band " + std::string(bandNames[band]) : name + " " + std::string(code);
}

std::optional<StrengthRange> strengthRange(const SignalSummary& signal) {
    const auto total = std::accumulate(signal.strengths.begin(), signal.strengths.end(), std::uint64_t{0});
    if (total == 0) {
        return std::nullopt;
    }
    return StrengthRange{
        .least = strengthAt(signal, 0),
        .median = (strengthAt(signal, (total - 1) / 2) + strengthAt(signal, total / 2)) / 2.0,
        .most = strengthAt(signal, total - 1)};
}

}  // namespace orbconv::inspect
