#include "scenario.h"

#include <algorithm>

#include "broadcast.h"

namespace samplelog {

namespace {

// A place from which all five systems are in view.
constexpr double siteLatitude = 11.5;    // degrees
constexpr double siteLongitude = 79.25;  // degrees
constexpr double siteHeight = 62.0;      // metres

// Satellites come in a little higher than they go, so that none flickers at the mask.
constexpr double sineOfRise = 0.2588;  // 15 degrees
constexpr double sineOfSet = 0.2419;   // 14 degrees

// What a reader of the log has room for in each system.
constexpr std::ptrdiff_t mostTracksOfSystem = 30;

constexpr std::int64_t ephemerisDelayMs = 30000;  // a satellite's first ephemeris takes that long to come in
constexpr std::int64_t repeatSeconds = 600;
constexpr std::int64_t positionSeconds = 60;

struct Now {
    std::int64_t ms = 0;     // GPS milliseconds
    double orbitTime = 0.0;  // seconds since the orbits' time 0
};

Now nowOf(const Scenario& scenario, std::int64_t index) {
    const std::int64_t ms = scenario.startMs + index * scenario.options.intervalMs;
    return {ms, static_cast<double>(ms - scenario.orbitZero * 1000) * 1e-3};
}

ReceiverClock receiverClockAt(double time) {
    constexpr double size = 3e-6;
    constexpr double period = 9000.0;
    constexpr double rate = 2.0 * pi / period;
    const SineCosine swing = sineCosine(rate * time);
    return {size * swing.sine, size * rate * swing.cosine};
}

// Something passes in front of a satellite for a while, a minute and a half in eight hours.
bool isHidden(const Scenario& scenario, std::size_t satellite, std::int64_t ms) {
    constexpr std::int64_t spellMs = 90000;
    constexpr double share = 0.003;
    const auto spell = static_cast<std::uint64_t>(ms / spellMs);
    return toUnit(hashOf(scenario.options.seed, satellite, spell, 11)) < share;
}

// The bands that are tracked: each needs a little longer after the rise than the one before, and low signals
// are lost now and then.
BandMask presentBands(const Scenario& scenario, const Track& track, std::int64_t ms) {
    constexpr std::int64_t acquisitionMs = 4000;
    constexpr std::int64_t spellMs = 16000;
    constexpr double shareAtHorizon = 0.06;
    const auto spell = static_cast<std::uint64_t>(ms / spellMs);
    const double height = 1.0 - track.view.sineOfElevation;
    const double share = shareAtHorizon * height * height;
    BandMask present = scenario.satellites[track.satellite].bands;
    for (std::size_t band = 0; band < bandCount; ++band) {
        const bool isAcquired = track.sinceMs == scenario.startMs ||
                                ms - track.sinceMs >= acquisitionMs * static_cast<std::int64_t>(band);
        const std::uint64_t key =
            hashOf(scenario.options.seed, track.satellite * bandCount + band, spell, 12);
        if (!isAcquired || toUnit(key) < share) {
            present &= ~bandBit(band);
        }
    }
    return present;
}

void dropLostTracks(Scenario& scenario, const Now& now) {
    std::erase_if(scenario.tracks, [&](Track& track) {
        track.view = lineOfSight(scenario.satellites[track.satellite].orbit, scenario.site, now.orbitTime);
        const bool isLost =
            track.view.sineOfElevation < sineOfSet || isHidden(scenario, track.satellite, now.ms);
        if (isLost) {
            scenario.isTracked[track.satellite] = false;
        }
        return isLost;
    });
}

bool hasRoom(const Scenario& scenario, std::uint8_t systemCode) {
    const auto count = std::ranges::count_if(scenario.tracks, [&](const Track& track) {
        return scenario.satellites[track.satellite].systemCode == systemCode;
    });
    return count < mostTracksOfSystem;
}

void addNewTracks(Scenario& scenario, const Now& now) {
    for (std::size_t i = 0; i < scenario.satellites.size(); ++i) {
        const SatelliteModel& satellite = scenario.satellites[i];
        if (scenario.isTracked[i] ||
            roughSineOfElevation(satellite.orbit, scenario.site, now.orbitTime) < sineOfRise ||
            isHidden(scenario, i, now.ms) || !hasRoom(scenario, satellite.systemCode)) {
            continue;
        }
        scenario.isTracked[i] = true;
        scenario.tracks.push_back({
            .satellite = i,
            .sinceMs = now.ms,
            .view = lineOfSight(satellite.orbit, scenario.site, now.orbitTime),
        });
    }
}

// Ephemerides go into the log when they are new and, for the systems whose readers know a repeat when they
// see one, every ten minutes. GLONASS ephemerides carry the time of their frame, so that none repeats
// another.
void writeNavigation(Scenario& scenario, const Now& now, LogBuilder& log) {
    const BroadcastTime time = {scenario.orbitZero, now.ms / 1000};
    const std::int64_t repeat = time.now / repeatSeconds;
    const bool isRepeatDue = repeat != scenario.correctionsSent;
    scenario.correctionsSent = repeat;
    if (isRepeatDue) {
        writeCorrections(time.now, scenario.options.seed, log);
        writeAlmanacs(time.now, scenario.options.seed, log);
    }
    for (Track& track : scenario.tracks) {
        const SatelliteModel& satellite = scenario.satellites[track.satellite];
        const bool isKnown = track.sinceMs == scenario.startMs || now.ms - track.sinceMs >= ephemerisDelayMs;
        const std::int64_t issue = issueAt(satellite, time.now);
        const bool repeats = isRepeatDue && satellite.systemCode != SystemCode::glonass;
        if (isKnown && (repeats || issue != track.sentIssue)) {
            writeEphemeris(satellite, time, scenario.options.seed, log);
            track.sentIssue = issue;
        }
    }
}

void writeMeasurements(Scenario& scenario, const Now& now, const ReceiverClock& clock, LogBuilder& log) {
    clearArrays(scenario.arrays);
    for (const Track& track : scenario.tracks) {
        const Sighting sighting = {
            .satellite = scenario.satellites[track.satellite],
            .view = track.view,
            .time = now.orbitTime,
            .present = presentBands(scenario, track, now.ms),
            .phaseKey =
                hashOf(scenario.options.seed, track.satellite, static_cast<std::uint64_t>(track.sinceMs)),
        };
        addSighting(scenario.arrays, sighting, clock, scenario.noise);
    }
    writeArrays(scenario.arrays, log);
}

}  // namespace

Scenario makeScenario(const ScenarioOptions& options) {
    constexpr double degree = pi / 180.0;
    Scenario scenario;
    scenario.options = options;
    scenario.site = makeSite(siteLatitude * degree, siteLongitude * degree, siteHeight);
    scenario.satellites = makeConstellation(options.seed);
    scenario.isTracked.assign(scenario.satellites.size(), false);
    scenario.orbitZero = dayNumberOf(options.start.date) * secondsOfDay;
    scenario.startMs = (scenario.orbitZero + options.start.secondOfDay) * 1000;
    scenario.noise.state = hashOf(options.seed, 13);
    return scenario;
}

void writeIdentity(const Scenario& scenario, LogBuilder& log) {
    log.kvMarker("SAMPLE");
    // The number is cut behind 20 characters, and must not be shorter.
    log.pmParameters({{"rcv/id=", "SAMPLE-0001         "}});
    log.pmParameters({{"rcv/igs=", "SAMPLE RECEIVER"}});
    log.pmParameters({{"rcv/ver/main=", "1.0.0"}});
    log.antennaType("SAMPLE_ANTENNA  NONE");
    log.pv(scenario.site.position, 0.9F, 1);
}

void writeEpoch(Scenario& scenario, std::int64_t index, LogBuilder& log) {
    const Now now = nowOf(scenario, index);
    const ReceiverClock clock = receiverClockAt(now.orbitTime);
    const std::int64_t second = now.ms / 1000;
    const bool isWholeSecond = now.ms % 1000 == 0;

    log.time(static_cast<std::uint32_t>(now.ms % (secondsOfDay * 1000)));
    // The date sets a reader's clock to a whole second, so it belongs to epochs on whole seconds only.
    if (isWholeSecond) {
        const CivilDate date = dateOf(second / secondsOfDay);
        log.rd(static_cast<unsigned>(date.year), date.month, date.day);
    }
    log.to(clock.offset);
    if (isWholeSecond && second % positionSeconds == 0) {
        log.pv(scenario.site.position, 0.9F, 1);
    }
    dropLostTracks(scenario, now);
    addNewTracks(scenario, now);
    writeNavigation(scenario, now, log);
    writeMeasurements(scenario, now, clock, log);
    log.td();
}

}  // namespace samplelog
