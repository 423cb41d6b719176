// The writers of navigation and observation records over tables full of any bits: numbers that are none,
// denormal, infinite or negative where none is ever expected, and types that no decoder sets.
//
// An input: one byte that picks version and table, two for the place in the writer's buffer, then the
// entries' own bytes.
#include <algorithm>
#include <memory>
#include <type_traits>

#include "conversion_run_in_memory.h"
#include "obsfile/epoch_writer.h"
#include "run_limits.h"

namespace {

using orbconv::NavigationTables;

constexpr std::size_t mostEntries = 64;

template <class Entry>
Entry entryOf(fuzzing::ByteSource& input) {
    static_assert(std::is_trivially_copyable_v<Entry>);
    Entry entry{};
    const fuzzing::Bytes bytes = input.take(sizeof(Entry));
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<std::uint8_t*>(&entry));
    if constexpr (requires { entry.navType; }) {
        // Of the ten types that there are.
        const auto type = static_cast<std::uint8_t>(entry.navType);
        entry.navType = static_cast<orbconv::NavType>(type % 10);
    }
    return entry;
}

template <class Entry>
void fill(orbconv::EphemerisTable<Entry>& table, fuzzing::ByteSource& input) {
    table.slots.clear();
    table.keys.clear();
    table.count = 0;
    while (!input.empty() && table.slots.size() < mostEntries) {
        table.nextSlot();
        table.slots.back() = entryOf<Entry>(input);
        table.count = static_cast<std::int32_t>(table.slots.size());
    }
}

template <class Record, std::size_t Slots>
void fill(orbconv::RecordTable<Record, Slots>& table, fuzzing::ByteSource& input) {
    table = {};
    for (std::size_t i = 0; i < Slots && !input.empty(); ++i) {
        table.records[i] = entryOf<Record>(input);
        table.count = static_cast<std::int32_t>(i + 1);
    }
}

void fillTable(NavigationTables& tables, unsigned table, fuzzing::ByteSource& input) {
    switch (table) {
        case 0: fill(tables.gps, input); break;
        case 1: fill(tables.glonass, input); break;
        case 2: fill(tables.galileo, input); break;
        case 3: fill(tables.beidou, input); break;
        case 4: fill(tables.navic, input); break;
        case 5: fill(tables.gpsIono, input); break;
        case 6: fill(tables.navicIono, input); break;
        case 7: fill(tables.beidouIono, input); break;
        case 8: fill(tables.gpsTimeOffset, input); break;
        case 9: fill(tables.beidouTimeOffset, input); break;
        case 10: fill(tables.navicTimeOffset, input); break;
        case 11: fill(tables.galileoTimeOffset, input); break;
        default:
            tables.glonassTimeOffset = entryOf<orbconv::GlonassTimeOffset>(input);
            tables.lastLeapSeconds = input.number<std::int32_t>();
            break;
    }
}

// Leaves a stretch of the writer's buffer, so that what comes meets the buffer's end.
void leaveRoom(orbconv::TextWriter& out, fuzzing::ByteSource& input) {
    constexpr std::size_t mostRoom = 16384;
    const std::size_t room = input.number<std::uint16_t>() % mostRoom;
    out.blanks(static_cast<int>(orbconv::TextWriter::capacity - room));
}

void writeNavigation(std::size_t versionIndex, unsigned table, fuzzing::ByteSource& input) {
    static fuzzing::Discard out;
    static const auto tables = std::make_unique<NavigationTables>();
    orbconv::TextWriter writer(out);
    leaveRoom(writer, input);
    fillTable(*tables, table, input);
    const orbconv::RunStamp runStamp{.year = 2026, .month = 1, .day = 2};
    const orbconv::NavFileTables file{.rinexVersion = fuzzing::versions[versionIndex],
                                      .runStamp = runStamp,
                                      .satelliteSystemLetter = "M",
                                      .navigation = *tables};
    if (orbconv::isRinex4(file.rinexVersion)) {
        orbconv::writeMixedNavFile(writer, file);
    } else {
        orbconv::writeGpsNavFile(writer, file);
        orbconv::writeNavicNavFile(writer, file);
        orbconv::writeGlonassNavFile(writer, file);
        orbconv::writeGalileoNavFile(writer, file);
        orbconv::writeBeidouNavFile(writer, file);
    }
    // An empty table again for the next input, which may fill another.
    fuzzing::ByteSource nothing({});
    fillTable(*tables, table, nothing);
}

// The lines of NavIC have a place more than there are bands.
constexpr std::size_t printedSignals = orbconv::bandCount + 1;

// A record in few bytes: which one, its satellite, the signals that it has, and their measurements.
void fillRecord(orbconv::EpochStore& store, fuzzing::ByteSource& input) {
    const auto system =
        static_cast<orbconv::Constellation>(input.number<std::uint8_t>() % orbconv::constellationCount);
    const std::size_t position = input.number<std::uint8_t>() % 64;
    const auto records = store.useFirst(system, position + 1);
    if (position >= records.size()) {
        return;
    }
    orbconv::SatEpochRecord& record = records[position];
    const auto signals = input.number<std::uint8_t>();
    const bool anyNumber = (signals & 0x80U) != 0;
    record.number = anyNumber ? input.number<std::int32_t>() : input.number<std::int8_t>();
    record.gloSlotNumber = (signals & 0x40U) != 0 ? input.number<std::int8_t>() : 0;
    for (std::size_t band = 0; band < printedSignals; ++band) {
        if ((signals >> band % orbconv::bandCount & 1U) != 0) {
            record.signalFlags[band] = orbconv::signalPresentBit;
            record.strengthIndex[band] = input.number<std::int8_t>();
            for (const auto row : {orbconv::ObsRow::pseudorange, orbconv::ObsRow::doppler,
                                   orbconv::ObsRow::phase, orbconv::ObsRow::strength}) {
                record.at(row, band) = input.number<double>();
            }
        }
    }
}

// An epoch whose records hold any measurements.
void writeObservations(fuzzing::ByteSource& input) {
    static fuzzing::Discard out;
    static const auto store = std::make_unique<orbconv::EpochStore>();
    static const auto survey = std::make_unique<orbconv::SignalSurvey>();
    orbconv::TextWriter writer(out);
    leaveRoom(writer, input);
    const auto clock = entryOf<orbconv::EpochClock>(input);
    const auto offset = input.number<double>();
    const auto satellites = input.number<std::int32_t>();
    *store = {};
    while (!input.empty()) {
        fillRecord(*store, input);
    }
    // A code in every slot, so that no constellation and no signal is passed over.
    for (orbconv::ObsCodeList& codes : survey->obsCodeList) {
        codes.fill("C1C");
    }
    survey->obsCodeCount.fill(1);
    orbconv::writeEpoch(writer, 0,
                        {.options = {},
                         .clock = clock,
                         .satellitesInEpoch = satellites,
                         .receiverClockOffset = offset,
                         .store = *store,
                         .survey = *survey});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    constexpr unsigned tableCount = 14;
    fuzzing::ByteSource input({data, size});
    const auto choice = input.number<std::uint8_t>();
    const unsigned table = choice % tableCount;
    if (table == tableCount - 1) {
        writeObservations(input);
    } else {
        writeNavigation(choice / tableCount % fuzzing::versions.size(), table, input);
    }
    return 0;
}
