// Any bodies, of any length, through the decoders of the navigation messages, into tables that are empty or
// nearly full; then the writers of both kinds of navigation file.
//
// An input: one byte for the fill of the tables, then for each message one byte that picks it, one that picks
// its length field, and its body.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "conversion_run_in_memory.h"
#include "log/message_reader.h"
#include "navdecode/decoder_table.h"
#include "run_limits.h"

namespace {

using orbconv::MessageStaging;
using orbconv::NavigationTables;
using orbconv::ReceiverClocks;

// A message and the length fields that it is tried with: its forms, and one that it has no form for or that
// leaves old bytes behind. RD and ~~ set the epoch clock, GA only overwrites what GE has staged.
struct MessageKind {
    orbconv::MessageId id;
    std::array<int, 4> lengths;
};

constexpr std::int32_t nearlyFullCount = orbconv::ephemerisTableCapacity - 3;

constexpr std::array<MessageKind, 16> messageKinds = {{
    {"GE", {123, 160, 168, 9}},
    {"NE", {88, 103, 88, 90}},
    {"EN", {149, 149, 149, 100}},
    {"CN", {134, 152, 160, 9}},
    {"IE", {123, 123, 123, 40}},
    {"IO", {39, 39, 39, 10}},
    {"II", {39, 39, 39, 10}},
    {"CI", {39, 39, 39, 10}},
    {"UO", {24, 24, 24, 10}},
    {"CU", {24, 24, 24, 10}},
    {"IU", {24, 24, 24, 10}},
    {"EU", {38, 38, 38, 10}},
    {"NU", {21, 21, 21, 10}},
    {"GA", {2, 37, 123, 123}},
    {"RD", {6, 6, 6, 2}},
    {"~~", {5, 5, 5, 2}},
}};

// Tables whose counts stand shortly ahead of their ends, made once.
template <class Entry>
void fillNearly(orbconv::EphemerisTable<Entry>& table) {
    while (table.count < nearlyFullCount) {
        table.nextSlot();
        table.keys.back() = ~static_cast<std::uint64_t>(table.count);
        ++table.count;
    }
}
// What a run has put behind the fill is taken away again.
template <class Entry>
void cutBack(orbconv::EphemerisTable<Entry>& table, std::size_t filled) {
    table.slots.resize(filled);
    table.keys.resize(filled);
    table.count = static_cast<std::int32_t>(filled);
}

void makeNearlyFull(NavigationTables& tables) {
    fillNearly(tables.gps);
    fillNearly(tables.glonass);
    fillNearly(tables.galileo);
    fillNearly(tables.beidou);
    fillNearly(tables.navic);
}

void restart(NavigationTables& tables, bool nearlyFull) {
    const std::size_t filled = nearlyFull ? nearlyFullCount : 0;
    cutBack(tables.gps, filled);
    cutBack(tables.glonass, filled);
    cutBack(tables.galileo, filled);
    cutBack(tables.beidou, filled);
    cutBack(tables.navic, filled);
    tables.gpsIono = {};
    tables.navicIono = {};
    tables.beidouIono = {};
    tables.gpsTimeOffset = {};
    tables.beidouTimeOffset = {};
    tables.navicTimeOffset = {};
    tables.galileoTimeOffset = {};
    tables.glonassTimeOffset = {};
    tables.lastLeapSeconds = 0;
    if (nearlyFull) {
        tables.gpsIono.count = tables.navicIono.count = 497;
        tables.beidouIono.count = tables.navicTimeOffset.count = 97;
        tables.gpsTimeOffset.count = tables.beidouTimeOffset.count = tables.galileoTimeOffset.count = 98;
    }
}

void checkCounts(const NavigationTables& tables) {
    const auto within = [](const auto& table) {
        if (table.count < 0 || table.count > orbconv::ephemerisTableCapacity ||
            table.slots.size() != table.keys.size() ||
            table.slots.size() < static_cast<std::size_t>(table.count)) {
            std::abort();
        }
    };
    within(tables.gps);
    within(tables.glonass);
    within(tables.galileo);
    within(tables.beidou);
    within(tables.navic);
}

void writeAll(const NavigationTables& tables, std::uint8_t choice) {
    static fuzzing::Discard out;
    const orbconv::RunStamp runStamp{.year = 2026, .month = 1, .day = 2};
    const orbconv::NavFileTables file{.rinexVersion = fuzzing::versions[choice % fuzzing::versions.size()],
                                      .runStamp = runStamp,
                                      .satelliteSystemLetter = "M",
                                      .navigation = tables};
    orbconv::TextWriter writer(out);
    if (orbconv::isRinex4(file.rinexVersion)) {
        orbconv::writeMixedNavFile(writer, file);
        return;
    }
    orbconv::writeGpsNavFile(writer, file);
    orbconv::writeNavicNavFile(writer, file);
    orbconv::writeGlonassNavFile(writer, file);
    orbconv::writeGalileoNavFile(writer, file);
    orbconv::writeBeidouNavFile(writer, file);
}

void sortAll(NavigationTables& tables) {
    orbconv::sortGpsTable(tables);
    orbconv::sortGlonassTable(tables);
    orbconv::sortGalileoTable(tables);
    orbconv::sortBeidouTable(tables);
    orbconv::sortNavicTable(tables);
}

// Stages a body under a length field, as the reader does.
void stage(MessageStaging& staging, orbconv::MessageId id, int length, fuzzing::Bytes body) {
    std::array<char, 8> head{};
    const int size = std::snprintf(head.data(), head.size(), "%c%c%03X", id.first, id.second,
                                   static_cast<unsigned>(length));
    std::string message(head.data(), static_cast<std::size_t>(size));
    message.append(fuzzing::textOf(body));
    orbconv::LogStream log(fuzzing::bytesOf(message));
    orbconv::readMessage(log, staging);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    static const auto staging = std::make_unique<MessageStaging>();
    static const auto emptyTables = std::make_unique<NavigationTables>();
    static const auto fullTables = [] {
        auto tables = std::make_unique<NavigationTables>();
        makeNearlyFull(*tables);
        return tables;
    }();
    fuzzing::ByteSource input({data, size});
    const auto choice = input.number<std::uint8_t>();
    // The nearly full tables take long to sort and write: of them only the decoding is tried.
    const bool nearlyFull = (choice & 0x80U) != 0;
    NavigationTables& tables = nearlyFull ? *fullTables : *emptyTables;
    restart(tables, nearlyFull);
    *staging = {};
    ReceiverClocks clocks;
    while (!input.empty()) {
        const MessageKind& kind = messageKinds[input.number<std::uint8_t>() % messageKinds.size()];
        const int length = kind.lengths[input.number<std::uint8_t>() % kind.lengths.size()];
        stage(*staging, kind.id, length, input.take(static_cast<std::size_t>(length)));
        if (kind.id == orbconv::MessageId("RD") || kind.id == orbconv::MessageId("~~")) {
            orbconv::setEpochClockFromRd(clocks, *staging);
        } else {
            orbconv::decodeNavigation(kind.id, *staging, clocks, tables);
        }
    }
    checkCounts(tables);
    if (!nearlyFull) {
        writeAll(tables, choice);  // in the order of the messages
        sortAll(tables);
        writeAll(tables, choice);
    }
    return 0;
}
