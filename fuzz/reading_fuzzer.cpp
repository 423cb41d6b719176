// Any bytes through the companions' reading room, reader, epochs and identity: every byte belongs to just one
// message or one stretch of damage, what is handed out keeps within its bounds and makes sense, and a file
// gives what memory gives.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz_input.h"
#include "log_filler.h"
#include "reading/epoch.h"
#include "reading/log_reader.h"
#include "reading/log_time.h"
#include "reading/message_lengths.h"
#include "reading/site_identity.h"
#include "run_limits.h"

namespace {

using orbconv::messageTable;
using orbconv::reading::LogItem;
using orbconv::reading::LogReader;
using orbconv::reading::Message;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

struct Item {
    bool isMessage = false;
    std::uint64_t offset = 0;
    std::uint64_t bytes = 0;

    friend bool operator==(const Item&, const Item&) = default;
};

void checkMessage(const Message& message) {
    constexpr std::size_t header = 5;
    const std::size_t length = message.body.size();
    require(message.bytes > header + length && message.bytes <= header + length + 3);
    require(message.content().size() <= length);
    if (message.row != orbconv::noRow) {
        const orbconv::MessageRow& row = messageTable[message.row];
        require(row.id == message.id);
        require(orbconv::reading::lengthIsPossible(row, static_cast<int>(length)));
    }
}

void checkEpoch(const orbconv::reading::Epoch& epoch) {
    require(epoch.offset < epoch.endOffset);
    if (epoch.time) {
        require(epoch.timeOfDayMs.has_value());
        require(orbconv::reading::timeOfIsoText(orbconv::reading::isoText(*epoch.time)) == epoch.time ||
                orbconv::reading::calendarOf(*epoch.time).year >= 2100);
    }
    require(!epoch.clockOffset || std::isfinite(*epoch.clockOffset));
    const auto satellites = epoch.satellites();
    require(satellites.size() == epoch.elementCount(orbconv::rowOf("SX")) && satellites.size() <= 180);
    for (std::size_t i = 0; i < satellites.size(); ++i) {
        require(satellites[i].element == i && satellites[i].slot != orbconv::reading::unknownSlot);
        require(satellites[i].slot == 0 || satellites[i].constellation == orbconv::Constellation::glonass);
    }
    for (std::size_t row = 0; row < messageTable.size(); ++row) {
        const std::size_t count = epoch.elementCount(row);
        const auto bytes = epoch.bytes(row);
        require(epoch.has(row) || count == 0);
        require(bytes.size() == count * static_cast<std::size_t>(messageTable[row].elementBytes));
        require(bytes.size() <= static_cast<std::size_t>(messageTable[row].areaBytes));
        require(!epoch.element<std::uint8_t>(row, count));
    }
}

void checkText(const std::optional<orbconv::reading::LogText>& text) {
    if (text) {
        require(!text->text.empty() && text->text.front() != ' ' && text->text.back() != ' ');
        require(std::ranges::all_of(text->text, [](char c) { return c >= ' ' && c <= '~'; }));
    }
}

// Reads all of a log of `size` bytes.
std::vector<Item> readAll(LogReader& reader, std::uint64_t size) {
    static orbconv::reading::EpochCollector collector;
    collector = {};
    orbconv::reading::SiteIdentity identity;
    std::vector<Item> items;
    std::uint64_t end = 0;
    std::uint64_t epochEnd = 0;
    for (LogItem kind = reader.next(); kind != LogItem::end; kind = reader.next()) {
        const bool isMessage = kind == LogItem::message;
        const Item item = {.isMessage = isMessage,
                           .offset = isMessage ? reader.message().offset : reader.damage().offset,
                           .bytes = isMessage ? reader.message().bytes : reader.damage().bytes};
        require(item.offset == end && item.bytes > 0);
        end += item.bytes;
        require(reader.position() == end);
        require(isMessage || items.empty() || items.back().isMessage);
        items.push_back(item);
        if (isMessage) {
            checkMessage(reader.message());
            identity.take(reader.message());
            if (collector.add(reader.message())) {
                checkEpoch(collector.epoch());
                require(collector.epoch().offset >= epochEnd && collector.epoch().endOffset == end);
                epochEnd = end;
            }
        }
    }
    require(end == size && !reader.failed() && reader.next() == LogItem::end);
    checkText(identity.markerName);
    checkText(identity.receiverNumber);
    checkText(identity.receiverType);
    checkText(identity.receiverVersion);
    checkText(identity.antennaType);
    require(!identity.position ||
            std::ranges::all_of(*identity.position, [](double x) { return std::isfinite(x); }));
    return items;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    constexpr std::size_t window = std::size_t{512} * 1024;
    const fuzzing::LogInput input = fuzzing::splitInput({data, size});
    if (!fuzzing::isWorthRunning(input.log)) {
        return -1;
    }
    LogReader fromMemory(input.log);
    readAll(fromMemory, input.log.size());
    // The second reading takes much longer: it is done for one input in sixteen.
    if (input.choice[0] % 16 != 7) {
        return 0;
    }
    const std::size_t reach = input.log.size() * input.choice[1] / 256;
    std::size_t fillers = 0;
    std::string bytes = fuzzing::filler(window - std::min(reach, window / 2), fillers);
    bytes.append(fuzzing::textOf(input.log));
    LogReader inOnePiece(fuzzing::bytesOf(bytes));
    LogReader fromFile(fmemopen(bytes.data(), bytes.size(), "rb"));
    require(readAll(fromFile, bytes.size()) == readAll(inOnePiece, bytes.size()));
    return 0;
}
