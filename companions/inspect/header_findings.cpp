#include "inspect/header_findings.h"

#include <array>
#include <stdexcept>

#include "assembly/signals.h"
#include "log/log_stream.h"
#include "log/message_reader.h"
#include "run/run_options.h"

namespace orbconv::inspect {

namespace {

constexpr std::size_t headerBytes = 5;  // of a message

struct HeaderText {
    std::string_view name;
    std::string ReceiverInfo::*text;
    std::size_t room;  // characters
};
constexpr std::array<HeaderText, 5> headerTexts = {{
    {"marker name", &ReceiverInfo::markerName, 60},
    {"receiver number", &ReceiverInfo::receiverNumber, 20},
    {"receiver type", &ReceiverInfo::receiverType, 20},
    {"receiver version", &ReceiverInfo::receiverVersion, 20},
    {"antenna type", &ReceiverInfo::antennaType, 20},
}};

// The letter of RINEX for the constellations of a list; 0 for none that is written.
char letterOf(const PerConstellation<bool>& inList) {
    char letter = 0;
    for (const Constellation constellation :
         {Constellation::gps, Constellation::glonass, Constellation::galileo, Constellation::beidou,
          Constellation::navic}) {
        if (inList[indexOf(constellation)]) {
            letter = letter == 0 ? systemLetters[indexOf(constellation)] : 'M';
        }
    }
    return letter;
}

// The signals of a constellation of the log: the bands that it has, and one behind the last.
struct Bands {
    std::array<bool, bandCount> present{};
    std::size_t end = 0;
};
Bands bandsOf(const LogSummary& summary, Constellation constellation) {
    Bands bands;
    for (const SignalSummary& signal : summary.signals) {
        if (signal.constellation == constellation && !signal.code().empty()) {
            bands.present[signal.band] = true;
            bands.end = signal.band + 1;
        }
    }
    return bands;
}

void tellSlotGaps(const LogSummary& summary, FindingTally& tally) {
    for (const Constellation constellation :
         {Constellation::gps, Constellation::glonass, Constellation::galileo, Constellation::beidou}) {
        const Bands bands = bandsOf(summary, constellation);
        for (std::size_t band = 0; band < bands.end; ++band) {
            tally.add(FindingId::slotGaps, bands.present[band] ? 0 : 1,
                      [&] { return signalText(constellation, band) + " has no satellite"; });
        }
    }
}

void tellSignal(const SignalSummary& signal, FindingTally& tally) {
    const auto text = [&] { return signalText(signal.constellation, signal.band); };
    const bool beidou = signal.constellation == Constellation::beidou;
    const float shift = phaseShifts[signal.band][indexOf(signal.constellation)];
    bool secondRecord = false;
    for (std::size_t n = 0; beidou && n < signal.satellites.size(); ++n) {
        const BeidouExtraPhase& extra = beidouExtraPhases[signal.band];
        secondRecord = secondRecord || (signal.satellites[n] && extra.cycles != 0.0 &&
                                        extra.satellites.holds(static_cast<std::int32_t>(n)));
    }
    const bool slotless =
        signal.constellation == Constellation::glonass &&
        signal.satelliteCount > signal.satellites.count() - (signal.satellites[0] ? 1U : 0U);
    const std::size_t room = beidou ? 20 : 30;  // satellites that SYS / PHASE SHIFT shows
    const bool cut = signal.satelliteCount > room || secondRecord || slotless;
    tally.add(FindingId::beidouCodes, beidou ? 1 : 0, text);
    tally.add(
        FindingId::navicDigits,
        signal.constellation == Constellation::navic && signal.band == bands::l ? signal.observations : 0,
        text);
    tally.add(FindingId::shiftedPhases, shift != 0.0F || secondRecord ? 1 : 0, text);
    tally.add(FindingId::cutPhaseShifts, cut ? 1 : 0, text);
}

// Satellites that never have the signal of slot 1.
void tellNotCounted(const LogSummary& summary, const ConstellationSummary& system, FindingTally& tally) {
    const auto first = std::ranges::find_if(summary.signals, [&](const SignalSummary& signal) {
        return signal.constellation == system.constellation && signal.band == bands::c;
    });
    for (const SatelliteName& satellite : system.satellites) {
        const bool counted = first != summary.signals.end() && first->satellites[satellite.number];
        tally.add(FindingId::notCounted, counted ? 0 : 1, [&] { return nameText(satellite); });
    }
}

void tellSlotLines(const ConstellationSummary* glonass, FindingTally& tally) {
    std::size_t slots = 0;
    if (glonass != nullptr) {
        slots = static_cast<std::size_t>(
            std::ranges::count_if(glonass->satellites, [](const SatelliteName& s) { return s.number != 0; }));
    }
    tally.add(FindingId::emptySlotLines, slots % 8 == 0 && slots <= 24 ? 1 : 0,
              [&] { return std::to_string(slots) + " slots"; });
}

}  // namespace

// The message as the converter stages it.
void HeaderFindings::stage(const reading::Message& message) {
    LogStream stream(std::span(message.body.data() - headerBytes, message.bytes));
    readMessage(stream, staging_);
}

void HeaderFindings::take(const reading::Message& message, FindingTally& tally) {
    switch (message.row) {
        case orbconv::rowOf("KV"):
            stage(message);
            handleKv(staging_, info_);
            break;
        case orbconv::rowOf("PM"): takeParameters(message, tally); break;
        case orbconv::rowOf("=="):
            stage(message);
            handleEquals(staging_, info_);
            break;
        case orbconv::rowOf("PV"): positionCame_ = true; break;
        case orbconv::rowOf("UO"):
        case orbconv::rowOf("EU"): leapSecondsCame_ = true; break;
        case orbconv::rowOf("SX"):
            if (!headerDone_) {
                stage(message);
                takeLetter();
            }
            break;
        default: break;
    }
}

void HeaderFindings::takeParameters(const reading::Message& message, FindingTally& tally) {
    stage(message);
    try {
        handlePm(staging_, info_);
    } catch (const std::out_of_range&) {
        tally.add(FindingId::abnormalEnd, 1,
                  [&] { return placeText(message) + ": \"" + info_.receiverNumber + "\""; });
    }
}

void HeaderFindings::takeLetter() {
    const SatelliteList list(staging_);
    handleSx(list, RunOptions{}, presence_);
    inList_ = {};
    for (int i = 0; i < list.count(); ++i) {
        if (const auto constellation = constellationOfCode(list.systemCode(static_cast<std::size_t>(i)))) {
            inList_[indexOf(*constellation)] = true;
        }
    }
}

void HeaderFindings::takeHeader(FindingTally& tally) {
    headerDone_ = true;
    const char right = letterOf(inList_);
    const std::string given(presence_.satelliteSystemLetter());
    tally.add(FindingId::wrongLetter, right != 0 && given != std::string(1, right) ? 1 : 0,
              [&] { return (given.empty() ? "none" : given) + " in place of " + std::string(1, right); });
    takeTexts(tally);
    tally.add(FindingId::missingIdentity, positionCame_ ? 0 : 1, [] { return std::string("position"); });
}

void HeaderFindings::takeTexts(FindingTally& tally) {
    for (const HeaderText& row : headerTexts) {
        const std::string& text = info_.*row.text;
        tally.add(FindingId::missingIdentity, text.empty() ? 1 : 0, [&] { return std::string(row.name); });
        tally.add(FindingId::longTexts, text.size() > row.room ? 1 : 0,
                  [&] { return std::string(row.name) + ": \"" + text + "\""; });
    }
}

void HeaderFindings::tell(const LogSummary& summary, FindingTally& tally) const {
    tellSlotGaps(summary, tally);
    for (const SignalSummary& signal : summary.signals) {
        tellSignal(signal, tally);
    }
    const ConstellationSummary* glonass = nullptr;
    for (const ConstellationSummary& system : summary.constellations) {
        const bool leftOut = system.constellation == Constellation::qzss ||
                             system.constellation == Constellation::sbas ||
                             system.constellation == Constellation::glonassCdma;
        if (leftOut) {
            tally.add(FindingId::leftOutSystems, system.satellites.size(),
                      [&] { return nameText(system.satellites.front()); });
        } else {
            tellNotCounted(summary, system, tally);
        }
        glonass = system.constellation == Constellation::glonass ? &system : glonass;
    }
    if (headerDone_) {
        tellSlotLines(glonass, tally);
        tally.add(FindingId::noLeapSeconds, leapSecondsCame_ ? 0 : 1,
                  [] { return std::string("no UO and no EU"); });
    }
}

}  // namespace orbconv::inspect
