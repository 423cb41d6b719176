#include "log/passes.h"

#include <algorithm>
#include <array>
#include <span>

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

void handleNn(const MessageStaging& staging, GlonassSlotTable& glonassSlotTable, EpochStore& store) {
    noteGlonassSlots(staging, glonassSlotTable);
    assignGlonassSlots(staging, store);
}

void dispatchInSurvey(MessageId id, const SurveyTables& tables) {
    const MessageStaging& staging = tables.staging;
    ReceiverClocks& clocks = tables.clocks;
    switch (id.key()) {
        case key("RD"):
        case key("~~"):
            setClockFromRd(clocks.lastObs, staging);
            setEpochClockFromRd(clocks, staging);
            break;
        case key("NN"): handleNn(staging, tables.glonassSlotTable, tables.store); break;
        case key("TD"): {
            EpochAssembly assembly{.options = tables.options,
                                   .surveying = true,
                                   .staging = staging,
                                   .store = tables.store,
                                   .survey = tables.survey,
                                   .console = tables.console};
            assembleFlags(assembly);
            break;
        }
        default: decodeNavigation(id, staging, clocks, tables.navigation); break;
    }
}

// AI needs no handler: nothing reads what it brings.
void dispatchInWriting(MessageId id, const WritingTables& tables) {
    const MessageStaging& staging = tables.staging;
    switch (id.key()) {
        case key("KV"):
            handleKv(staging, tables.receiver);
            clearEpochRecords(tables.store);  // Deliberate: the marker's message empties the records
            break;
        case key("PM"): handlePm(staging, tables.receiver); break;
        case key("=="): handleEquals(staging, tables.receiver); break;
        case key("SX"): handleSx(SatelliteList(staging), tables.options, tables.presence); break;
        case key("TO"): handleTo(staging, tables.receiver); break;
        case key("RD"): setEpochClockFromRd(tables.clocks, staging); break;
        case key("PV"): handlePv(staging, tables.receiver); break;
        case key("TD"): {
            handleNn(staging, tables.glonassSlotTable, tables.store);
            EpochAssembly assembly{.options = tables.options,
                                   .surveying = false,
                                   .staging = staging,
                                   .store = tables.store,
                                   .survey = tables.survey,
                                   .console = tables.console};
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
        survey.allSatelliteList[c] = survey.signalSatelliteList[c][0];
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
    bool headerDone = false;  // the header's last line has been written
    std::uint32_t headerTime = 0;
    std::uint32_t previousTime = 0;
    static constexpr std::int32_t epochFlag = 0;  // nothing ever sets another

    // The header is due at the first ~~ that follows a time of day that is not zero; if that ~~ brings a
    // zero, at which no header is written, again at the next such one.
    void note(MessageId id, std::uint32_t timeOfDayMs, float surveyInterval) {
        if (id == MessageId("~~") && !headerPending && previousTime != 0 && headerTime == 0) {
            interval = surveyInterval;
            headerTime = timeOfDayMs;
            headerPending = true;
        }
        previousTime = timeOfDayMs;
    }
};

void writeHeader(TextWriter& out, EpochSchedule& schedule, const WritingTables& tables) {
    writeObservationHeader(out, schedule.interval, tables.staging.lastEpochMs,
                           {.options = tables.options,
                            .runStamp = tables.runStamp,
                            .receiver = tables.receiver,
                            .clocks = tables.clocks,
                            .presence = tables.presence,
                            .lastLeapSeconds = tables.lastLeapSeconds,
                            .survey = tables.survey,
                            .glonassSlotTable = tables.glonassSlotTable},
                           schedule.headerDone);
}

// Writes what is due behind a message. The first epoch goes out with the header, out of the records that
// its TD left; from then on each TD gives one.
void writeWhatIsDue(TextWriter& out, MessageId id, EpochSchedule& schedule, const WritingTables& tables) {
    if (tables.options.includeGlonassCdma) {
        mergeGlonassCdma(tables.store, tables.survey);
    }
    bool justWritten = false;
    if (schedule.headerPending) {
        writeHeader(out, schedule, tables);
        schedule.headerPending = false;
        justWritten = true;
    }
    if (justWritten || (schedule.headerDone && id == MessageId("TD"))) {
        writeEpoch(out, EpochSchedule::epochFlag,
                   {.options = tables.options,
                    .clock = tables.clocks.epoch,
                    .satellitesInEpoch = tables.staging.satellitesInEpoch,
                    .receiverClockOffset = tables.receiver.receiverClockOffset,
                    .store = tables.store,
                    .survey = tables.survey});
        advanceEpochClock(tables.clocks.epoch, schedule.interval);
        clearEpochRecords(tables.store);
    }
}

}  // namespace

void surveyPass(LogStream& log, const SurveyTables& tables) {
    tables.staging.timeOfDayMs = 0;
    std::uint32_t heldTime = 0;
    while (!log.atEnd()) {
        const MessageId id = readMessage(log, tables.staging);
        dispatchInSurvey(id, tables);
        const std::uint32_t time = tables.staging.timeOfDayMs;
        if (id == MessageId("~~") && heldTime != 0) {
            tables.clocks.surveyInterval = intervalBetween(heldTime, time);
        }
        heldTime = time;
        if (id == MessageId("TD")) {
            clearEpochRecords(tables.store);
        }
    }
    countSatellites(tables.options, tables.survey);
}

void writingPass(TextWriter& out, LogStream& log, const WritingTables& tables) {
    tables.staging.timeOfDayMs = 0;
    EpochSchedule schedule;
    while (!log.atEnd()) {
        const MessageId id = readMessage(log, tables.staging);
        dispatchInWriting(id, tables);
        schedule.note(id, tables.staging.timeOfDayMs, tables.clocks.surveyInterval);
        if (id == MessageId("TD")) {
            sortEpochRecords(tables.options, tables.staging, tables.store, tables.survey);
        }
        if (out.isOpen()) {
            writeWhatIsDue(out, id, schedule, tables);
        }
    }
}

}  // namespace orbconv
