// What is known of one log after one pass over it: the one thing that the text screen, the JSON document and
// the page are made of. Plain values, bounded whatever the log: every list says how long it can get, and
// beside each stands how many there are in all.
//
// Times are those of the log's own scale, to the millisecond. A log that gives no date has times of day only:
// they are counted from 1970-01-01, which stands for its first day, and `dated` is false.
#pragma once

#include <array>
#include <bitset>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assembly/signals.h"
#include "inspect/navigation_kinds.h"
#include "log/message_table.h"
#include "reading/log_reader.h"
#include "reading/log_time.h"
#include "reading/site_identity.h"
#include "run/constellation.h"

namespace orbconv::inspect {

using reading::Damage;
using reading::LogTime;
using Milliseconds = std::chrono::milliseconds;

// ---- messages ----

// One id of the log. messageMeaning(id) of message_meanings.h says what it is.
struct MessageCount {
    MessageId id;
    bool known = false;  // the format has a row for it
    std::uint64_t count = 0;
    std::uint64_t bytes = 0;  // headers and line ends included
};

// ---- time ----

// A step between two epochs that is longer than the interval.
struct Gap {
    LogTime from;  // of the last epoch ahead of it
    LogTime to;    // of the first one behind it

    friend bool operator==(const Gap&, const Gap&) = default;
};
inline constexpr std::size_t mostGapsKept = 1000;
inline constexpr std::size_t mostDamageKept = 1000;

// ---- satellites and signals ----

// A satellite of the log. GLONASS satellites go by their slot; those whose slot the log never gives go by
// their frequency channel and have the number 0.
struct SatelliteName {
    Constellation constellation{};
    std::uint8_t number = 0;
    std::int8_t channel = 0;  // GLONASS; the one it was first seen on

    friend bool operator==(const SatelliteName&, const SatelliteName&) = default;
};
// "G07", "R05", "E12"; "R(-3)" for GLONASS on channel -3 without a slot.
std::string nameText(const SatelliteName& satellite);

// What the log holds of one constellation; only those that it lists stand in LogSummary::constellations.
struct ConstellationSummary {
    Constellation constellation{};
    std::vector<SatelliteName> satellites;  // by number, then channel; at most 512
    std::uint64_t listings = 0;             // entries of satellite lists, over all epochs
    std::uint64_t epochs = 0;               // with at least one satellite of it in the list
    std::uint32_t mostInOneEpoch = 0;
};

// One signal of a constellation: that of one band. It is present for a satellite in an epoch if bit 6 of the
// flag word that came in this epoch says so.
struct SignalSummary {
    Constellation constellation{};
    std::size_t band = 0;            // column of the tables of assembly/signals.h: c, 1, 2, 3, 5, l
    std::bitset<256> satellites;     // by number; GLONASS by slot
    std::size_t satelliteCount = 0;  // with GLONASS satellites without a slot, which the set has not
    std::uint64_t epochs = 0;        // in which at least one satellite has it
    std::uint64_t observations = 0;  // satellite epochs that have it
    // Of the carrier-to-noise density, one count a step of 0.25 dB-Hz; the value 0 means none and is not
    // counted. Median and range follow from it exactly.
    std::array<std::uint64_t, 256> strengths{};

    // The signal's RINEX band and attribute, such as "1C"; empty where the constellation has none here.
    [[nodiscard]] std::string_view code() const { return signalCodes[band][indexOf(constellation)].view(); }
};

struct StrengthRange {
    double least, median, most;  // dB-Hz
};
// Nothing for a signal without any strength. The median of an even number is the mean of the two middle ones.
std::optional<StrengthRange> strengthRange(const SignalSummary& signal);

// The bands' names in the ids of the log: "c", "1", "2", "3", "5", "l".
inline constexpr std::array<std::string_view, bandCount> bandNames = {"c", "1", "2", "3", "5", "l"};

// "GPS 1C", or "QZSS band c" where the signal has no code.
std::string signalText(Constellation constellation, std::size_t band);

// ---- navigation ----

// Navigation messages of one kind; only kinds that came stand in LogSummary::navigation, in the order of
// navigationKinds.
struct NavigationSummary {
    NavigationKind kind{};
    std::uint64_t messages = 0;
    std::bitset<256> satellites;  // empty for kinds that name none (see NavigationKindRow::namesSatellite)
};

// ---- what orbconv makes of it ----

// One of the differences between the log and the files that the converter makes of it, or between these and
// the standard, that this very log sets off.
struct Finding {
    std::string_view code;     // of docs/differences.md, such as "O13"
    std::string_view title;    // one line
    std::uint64_t count = 0;   // of what `counted` names
    std::string_view counted;  // "epochs", "satellites", "messages", ...
    std::string example;       // where it shows for the first time
    bool everySuch = false;    // any log with such satellites or messages sets it off, whatever their content
};

// ---- timeline, for the pictures ----

// Strength of a signal within a bin, over all its satellites, in steps of 0.25 dB-Hz.
struct StrengthBin {
    std::uint64_t sum = 0;
    std::uint32_t count = 0;
    std::uint8_t least = 255;
    std::uint8_t most = 0;
};

// Satellites in the list of an epoch, over the epochs of a bin.
struct SatelliteBin {
    std::uint64_t sum = 0;  // over the epochs; the mean is sum / Timeline::epochs of the bin
    std::uint32_t least = UINT32_MAX;
    std::uint32_t most = 0;
};

// A row of the picture: one satellite, one list a band. A band that the satellite never has is an empty list;
// the others have one number a bin, the epochs in which the signal was present.
struct SatelliteTrack {
    SatelliteName satellite;
    std::vector<std::uint32_t> listed;                          // epochs with the satellite in the list
    std::array<std::vector<std::uint32_t>, bandCount> present;  // at most `listed` of the bin
};

struct SignalTrack {
    Constellation constellation{};
    std::size_t band = 0;
    std::vector<StrengthBin> bins;
};

// The log over time, in at most `mostBins` bins of equal width. The width starts at one second and doubles as
// often as the log outgrows the bins. Every list below has `bins` elements unless it says otherwise; bin i
// covers start + i * binWidth up to the next one. Only filled if it is asked for.
struct Timeline {
    static constexpr std::size_t mostBins = 512;
    static constexpr std::size_t mostTracks = 400;

    LogTime start{};
    Milliseconds binWidth{1000};
    std::size_t bins = 0;  // 0: no epoch had a time

    std::vector<std::uint32_t> epochs;       // 0: a gap as long as the bin
    std::vector<std::uint32_t> gaps;         // of LogSummary::gaps, those that begin in the bin
    std::vector<std::uint32_t> damages;      // places of damage behind an epoch of this bin
    std::vector<std::uint64_t> damageBytes;  // their bytes

    std::vector<SatelliteBin> satellites;                               // of all constellations together
    PerConstellation<std::vector<std::uint64_t>> satellitesBySystem{};  // sums; empty: none in the whole log

    std::vector<SatelliteTrack> tracks;   // by constellation, then number, then channel; at most mostTracks
    std::vector<SignalTrack> signals;     // by constellation, then band; those with a strength
    std::uint64_t satellitesLeftOut = 0;  // beyond mostTracks
    // Epochs that are no part of the picture: without a time, ahead of the first one, or alone more than a
    // day behind the one before (a broken date must not squeeze all others into one bin).
    std::uint64_t epochsLeftOut = 0;
};

// ---- the log ----

struct LogSummary {
    std::string file;  // as it was named
    std::uint64_t bytes = 0;

    std::uint64_t messages = 0;
    std::vector<MessageCount>
        messagesById;  // most bytes first, then by id; at most one for any two characters

    std::uint64_t epochs = 0;              // closed by a TD
    std::uint64_t epochsWithoutTime = 0;   // of these
    bool dated = false;                    // times have a date
    std::string_view timeScale;            // of the last date: "GPS", "UTC_USNO", ...; empty without one
    std::optional<LogTime> first;          // of the first epoch with a time
    std::optional<LogTime> last;           // of the last one
    std::optional<Milliseconds> interval;  // most frequent step forward; the shortest of equally frequent
    std::uint64_t missingEpochs = 0;       // intervals skipped in gaps
    std::vector<Gap> gaps;                 // in the log's order; the first mostGapsKept
    std::uint64_t gapCount = 0;            // all
    std::uint64_t stepsBack = 0;           // epochs earlier than the one before

    reading::SiteIdentity identity;

    std::vector<ConstellationSummary> constellations;  // in the order of Constellation
    std::vector<SignalSummary> signals;                // by constellation, then band; those that are present
    std::vector<NavigationSummary> navigation;
    std::uint64_t unknownSystems = 0;  // list entries of system codes that the format does not have

    std::vector<Damage> damage;     // in the log's order; the first mostDamageKept
    std::uint64_t damageCount = 0;  // all
    std::uint64_t damageBytes = 0;  // of all

    std::vector<Finding> findings;  // in the order of findingRows (findings.h); those that are set off

    std::optional<Timeline> timeline;  // if it was asked for

    std::vector<std::string> notes;  // sentences on the file itself, such as that it grew meanwhile
};

// The constellation's name in a sentence: "GPS", "GLONASS", "Galileo", "QZSS", "BeiDou", "NavIC", "SBAS",
// "GLONASS CDMA".
std::string_view constellationName(Constellation constellation);

}  // namespace orbconv::inspect
