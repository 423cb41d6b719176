#include "log/passes.h"

#include <algorithm>

#include "assembly/epoch_assembly.h"
#include "assembly/record_order.h"
#include "log/message_reader.h"
#include "navdecode/decoder_table.h"
#include "obsfile/epoch_writer.h"
#include "obsfile/observation_header.h"

namespace orbconv {

namespace {

consteval std::uint16_t key(MessageId id) {
    return id.key();
}

EpochAssembly assemblyOf(RunState& state) {
    return {.options = state.options,
            .surveying = state.surveying,
            .staging = state.staging,
            .store = state.store,
            .survey = state.survey,
            .console = *state.console};
}

void handleNn(RunState& state) {
    noteGlonassSlots(state.staging, state.glonassSlots);
    assignGlonassSlots(state.staging, state.store);
}

void dispatchInSurvey(MessageId id, RunState& state) {
    const MessageStaging& staging = state.staging;
    ReceiverClocks& clocks = state.clocks;
    switch (id.key()) {
        case key("RD"):
        case key("~~"):
            clocks.lastObs = clockFromRd(staging);
            setEpochClockFromRd(clocks, staging);
            break;
        case key("NN"): handleNn(state); break;
        case key("TD"): {
            EpochAssembly assembly = assemblyOf(state);
            assembleFlags(assembly);
            break;
        }
        default: decodeNavigation(id, staging, clocks, state.navigation); break;
    }
}

// AI needs no handler: nothing reads what it brings.
void dispatchInWriting(MessageId id, RunState& state) {
    const MessageStaging& staging = state.staging;
    switch (id.key()) {
        case key("KV"):
            handleKv(staging, state.receiver);
            clearEpochRecords(state.store);  // Deliberate: the marker's message empties the records
            break;
        case key("PM"): handlePm(staging, state.receiver); break;
        case key("=="): handleEquals(staging, state.receiver); break;
        case key("SX"): handleSx(SatelliteList(staging), state.options, state.presence); break;
        case key("TO"): handleTo(staging, state.receiver); break;
        case key("RD"): setEpochClockFromRd(state.clocks, staging); break;
        case key("PV"): handlePv(staging, state.receiver); break;
        case key("TD"): {
            handleNn(state);
            EpochAssembly assembly = assemblyOf(state);
            assembleEpoch(assembly);
            break;
        }
        default: break;
    }
}

// The satellites of the log: the first list of each constellation, and how many they are.
void countSatellites(const RunOptions& options, SignalSurvey& survey) {
    constexpr std::array counted = {Constellation::gps, Constellation::navic, Constellation::glonass,
                                    Constellation::galileo, Constellation::beidou};
    const PerConstellation<bool> included = includedConstellations(options);
    survey.satelliteTotal = 0;
    for (const Constellation constellation : counted) {
        const std::size_t c = indexOf(constellation);
        survey.allSatelliteList[c] = survey.signalSatellites[c][0];
        if (included[c]) {
            const auto all = std::span(survey.allSatelliteList[c]).first(satelliteListEntries[c]);
            survey.satelliteTotal += static_cast<std::int32_t>(
                std::ranges::count_if(all, [](std::int32_t number) { return number != 0; }));
        }
    }
}

// When the header and the epochs of the observation file are due.
struct EpochSchedule {
    float interval = 0;  // seconds, copied from the survey when the header is due
    bool headerPending = false;
    std::uint32_t headerTime = 0;
    std::uint32_t previousTime = 0;
    static constexpr std::int32_t epochFlag = 0;  // nothing ever sets another

    // The header is due at the first ~~ that follows a time of day that is not zero.
    void note(MessageId id, std::uint32_t timeOfDayMs, float surveyInterval) {
        if (id == MessageId("~~") && !headerPending && previousTime != 0 && headerTime == 0) {
            interval = surveyInterval;
            headerTime = timeOfDayMs;
            headerPending = true;
        }
        previousTime = timeOfDayMs;
    }
};

void writeHeader(TextWriter& out, float interval, RunState& state) {
    writeObservationHeader(out, interval, state.staging.lastEpochMs,
                           {.options = state.options,
                            .stamp = state.stamp,
                            .receiver = state.receiver,
                            .clocks = state.clocks,
                            .presence = state.presence,
                            .lastLeapSeconds = state.navigation.lastLeapSeconds,
                            .survey = state.survey,
                            .slots = state.glonassSlots},
                           state.headerDone);
}

// Writes what is due behind a message. The first epoch goes out with the header, out of the records that
// its TD left; from then on each TD gives one.
void writeWhatIsDue(TextWriter& out, MessageId id, EpochSchedule& schedule, RunState& state) {
    if (state.options.includeGlonassCdma) {
        mergeGlonassCdma(state.store, state.survey);
    }
    bool justWritten = false;
    if (schedule.headerPending) {
        writeHeader(out, schedule.interval, state);
        schedule.headerPending = false;
        justWritten = true;
    }
    if (justWritten || (state.headerDone && id == MessageId("TD"))) {
        writeEpoch(out, EpochSchedule::epochFlag,
                   {.options = state.options,
                    .clock = state.clocks.epoch,
                    .satellitesInEpoch = state.staging.satellitesInEpoch,
                    .receiverClockOffset = state.receiver.receiverClockOffset,
                    .store = state.store,
                    .survey = state.survey});
        advanceEpochClock(state.clocks.epoch, schedule.interval);
        clearEpochRecords(state.store);
    }
}

}  // namespace

void surveyPass(LogStream& log, RunState& state) {
    state.staging.timeOfDayMs = 0;
    std::uint32_t heldTime = 0;
    while (!log.atEnd()) {
        const MessageId id = readMessage(log, state.staging);
        dispatchInSurvey(id, state);
        const std::uint32_t time = state.staging.timeOfDayMs;
        if (id == MessageId("~~") && heldTime != 0) {
            state.clocks.surveyInterval = intervalBetween(heldTime, time);
        }
        heldTime = time;
        if (id == MessageId("TD")) {
            clearEpochRecords(state.store);
        }
    }
    countSatellites(state.options, state.survey);
}

void writingPass(TextWriter& out, LogStream& log, RunState& state) {
    state.staging.timeOfDayMs = 0;
    EpochSchedule schedule;
    while (!log.atEnd()) {
        const MessageId id = readMessage(log, state.staging);
        dispatchInWriting(id, state);
        schedule.note(id, state.staging.timeOfDayMs, state.clocks.surveyInterval);
        if (id == MessageId("TD")) {
            sortEpochRecords(state.options, state.staging, state.store, state.survey);
        }
        if (out.isOpen()) {
            writeWhatIsDue(out, id, schedule, state);
        }
    }
}

}  // namespace orbconv
