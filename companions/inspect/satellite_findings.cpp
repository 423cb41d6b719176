#include "inspect/satellite_findings.h"

#include <numeric>
#include <optional>

#include "inspect/signal_counts.h"

namespace orbconv::inspect {

namespace {

constexpr std::size_t satellitesWritten = 30;  // of a constellation, in an epoch

// Written constellations.
constexpr PerConstellation<bool> isWritten = {true, true, true, false, true, true, false, false};

bool written(const reading::EpochSatellite& satellite) {
    return satellite.constellation && isWritten[indexOf(*satellite.constellation)];
}

SatelliteName nameOf(const reading::EpochSatellite& satellite) {
    SatelliteName name = nameOfKey(*satellite.constellation, satelliteKey(satellite));
    name.channel = static_cast<std::int8_t>(satellite.channel());
    return name;
}

std::string at(const reading::EpochSatellite& satellite, const reading::Epoch& epoch) {
    return nameText(nameOf(satellite)) + " " + placeText(epoch);
}

}  // namespace

void SatelliteFindings::take(const reading::Epoch& epoch, FindingTally& tally) {
    takeMissingMessages(epoch, tally);
    takeGlonass(epoch);
    Presence presence{};
    for (std::size_t band = 0; band < bandCount; ++band) {
        takeBand(epoch, band, presence, tally);
    }
    takeSecondRanges(epoch, presence, tally);
    takeList(epoch, presence, tally);
}

void SatelliteFindings::takeMissingMessages(const reading::Epoch& epoch, FindingTally& tally) {
    for (std::size_t row = orbconv::rowOf("SX"); row <= orbconv::rowOf("Fl"); ++row) {
        if (epoch.has(row)) {
            came_[row] = true;
        } else if (!came_[row]) {
            ++epochsAhead_[row];
        } else {
            tally.add(FindingId::missingMessages, 1, [&] {
                const MessageId id = messageTable[row].id;
                return std::string{id.first, id.second} + " " + placeText(epoch);
            });
        }
    }
}

// How many elements the converter has for a message of this epoch: all of an earlier one where none came.
std::size_t SatelliteFindings::elementsAtHand(const reading::Epoch& epoch, MessageId id) const {
    const std::size_t row = findRowQuickly(id);
    if (epoch.has(row)) {
        return epoch.elementCount(row);
    }
    return came_[row] ? epoch.satellites().size() : 0;
}

void SatelliteFindings::takeBand(const reading::Epoch& epoch, std::size_t band, Presence& presence,
                                 FindingTally& tally) const {
    const BandMessages& messages = bandMessages[band];
    std::size_t ranges = elementsAtHand(epoch, messages.range);
    std::size_t dopplers = elementsAtHand(epoch, messages.doppler);
    if (band == bands::c) {
        ranges = std::max(ranges, elementsAtHand(epoch, referenceMessages.range));
        dopplers = std::max(dopplers, elementsAtHand(epoch, referenceMessages.fullDoppler));
    }
    const std::size_t phases = elementsAtHand(epoch, messages.phase);
    const auto satellites = epoch.satellites();
    forSignals(epoch, band, [&](const SignalSighting& sighting) {
        const std::size_t i = sighting.satellite;
        if (!written(satellites[i])) {
            return;
        }
        presence[i] = static_cast<std::uint8_t>(presence[i] | (1U << band));
        const std::uint64_t missing = (i >= ranges ? 1U : 0U) + (i >= phases ? 1U : 0U) +
                                      (i >= dopplers ? 1U : 0U) + (sighting.strength == 0 ? 1U : 0U);
        if (missing > 0) {
            tally.add(FindingId::missingValues, missing, [&] {
                return nameText(nameOf(satellites[i])) + ", " +
                       signalText(*satellites[i].constellation, band) + ", " + placeText(epoch);
            });
        }
    });
}

// All ranges of slot 3 are made with the element of slot 2 that was taken last.
void SatelliteFindings::takeSecondRanges(const reading::Epoch& epoch, const Presence& presence,
                                         FindingTally& tally) {
    const auto satellites = epoch.satellites();
    const std::size_t firsts = std::min(epoch.elementCount(orbconv::rowOf("1r")), satellites.size());
    for (std::size_t i = firsts; i > 0; --i) {
        if (written(satellites[i - 1]) && satellites[i - 1].constellation != Constellation::navic) {
            lastRangeDelta_ = epoch.element<std::int16_t>(orbconv::rowOf("1r"), i - 1).value_or(0);
            break;
        }
    }
    const auto seconds = epoch.bytes(orbconv::rowOf("2r"));
    const std::size_t count = std::min(seconds.size() / 2, satellites.size());
    for (std::size_t i = 0; i < count; ++i) {
        const bool present = ((presence[i] >> bands::b2) & 1U) != 0;
        const auto own = loadLittleEndian<std::int16_t>(seconds.data() + 2 * i);
        if (present && satellites[i].constellation != Constellation::navic && own != lastRangeDelta_) {
            tally.add(FindingId::secondRanges, 1, [&] { return at(satellites[i], epoch); });
        }
    }
}

void SatelliteFindings::takeList(const reading::Epoch& epoch, const Presence& presence, FindingTally& tally) {
    PerConstellation<std::size_t> counts{};
    for (const reading::EpochSatellite& satellite : epoch.satellites()) {
        if (!written(satellite)) {
            continue;
        }
        const std::size_t number = ++counts[indexOf(*satellite.constellation)];
        const bool slotless = satellite.constellation == Constellation::glonass && satellite.slot == 0;
        tally.add(FindingId::beyondThirty, number > satellitesWritten ? 1 : 0,
                  [&] { return at(satellite, epoch); });
        tally.add(FindingId::noSignal, presence[satellite.element] == 0 ? 1 : 0,
                  [&] { return at(satellite, epoch); });
        tally.add(FindingId::noSlot, slotless ? 1 : 0, [&] { return at(satellite, epoch); });
    }
    const std::size_t glonass = counts[indexOf(Constellation::glonass)];
    glonassRangesOfSlot4_ = glonassRangesOfSlot4_ || (glonass > 0 && epoch.has(orbconv::rowOf("3r")));
    const auto all = std::accumulate(counts.begin(), counts.end(), std::size_t{0});
    // Without a list of its own it has the last one.
    tally.add(FindingId::emptyEpochs, all == 0 && epoch.has(orbconv::rowOf("SX")) ? 1 : 0,
              [&] { return placeText(epoch); });
}

// The records' slots after the converter's first pass. As long as all epochs have the same slots, no line is
// left over.
void SatelliteFindings::takeGlonass(const reading::Epoch& epoch) {
    glonassLines_.survey(epoch);
    std::vector<std::uint8_t> slots;
    for (const reading::EpochSatellite& satellite : epoch.satellites()) {
        if (satellite.constellation == Constellation::glonass) {
            slots.push_back(satellite.slot);
        }
    }
    glonassChanges_ = glonassChanges_ || (glonassCame_ && slots != glonassSlots_);
    glonassCame_ = true;
    glonassSlots_.swap(slots);
}

void SatelliteFindings::walkGlonass(reading::LogReader reader, std::uint64_t end, std::uint64_t unwritten,
                                    FindingTally& tally) {
    reading::EpochCollector epochs;
    auto item = reading::LogItem::message;
    while (item != reading::LogItem::end && reader.position() < end) {
        item = reader.next();
        if (item != reading::LogItem::message || !epochs.add(reader.message())) {
            continue;
        }
        const bool other = glonassLines_.write(epochs.epoch());
        const bool inFile = unwritten == 0;
        unwritten -= inFile ? 0 : 1;
        tally.add(FindingId::leftoverLines, other && inFile ? 1 : 0,
                  [&] { return placeText(epochs.epoch()); });
    }
}

// The converter reads the log twice: ahead of the first message of an id it has the log's last one.
void SatelliteFindings::tellMessagesAhead(FindingTally& tally) const {
    for (std::size_t row = orbconv::rowOf("SX"); row <= orbconv::rowOf("Fl"); ++row) {
        tally.add(FindingId::missingMessages, came_[row] ? epochsAhead_[row] : 0, [&] {
            const MessageId id = messageTable[row].id;
            return std::string{id.first, id.second} + " ahead of its first one";
        });
    }
    const std::size_t list = orbconv::rowOf("SX");
    tally.add(FindingId::emptyEpochs, came_[list] ? 0 : epochsAhead_[list],
              [] { return std::string("the log has no list"); });
}

void SatelliteFindings::tell(const LogSummary& summary, FindingTally& tally) const {
    tellMessagesAhead(tally);
    const bool slot4 = std::ranges::any_of(summary.signals, [](const SignalSummary& signal) {
        return signal.constellation == Constellation::glonass && signal.band == bands::b3;
    });
    tally.add(FindingId::c2pAlone, glonassRangesOfSlot4_ && !slot4 ? 1 : 0,
              [] { return std::string("the log has 3r, and no F3 with the signal"); });
}

}  // namespace orbconv::inspect
