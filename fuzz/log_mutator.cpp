// Mutations that know what a log is made of. An input is cut into messages where the converter's own reader
// would cut it, changed in whole messages, in fields or in lengths, and put together again; now and then it
// is left to libFuzzer, which knows nothing of messages.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "fuzz_input.h"
#include "log/message_reader.h"
#include "log_pieces.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using fuzzing::Bytes;
using fuzzing::Chance;
using fuzzing::LogCourse;
using samplelog::LogBuilder;

constexpr std::size_t headBytes = 5;  // id and length

// A log as a list of messages; the last can be cut off.
struct MessageList {
    std::string options;
    std::vector<std::string> messages;

    [[nodiscard]] std::string joined() const {
        std::string bytes = options;
        for (const std::string& message : messages) {
            bytes += message;
        }
        return bytes;
    }
};

MessageList parse(Bytes input) {
    static const auto staging = std::make_unique<orbconv::MessageStaging>();
    MessageList list;
    const fuzzing::LogInput split = fuzzing::splitInput(input);
    list.options.assign(split.choice.begin(), split.choice.end());
    orbconv::LogStream log(split.log);
    while (!log.atEnd()) {
        const std::uint8_t* const begin = log.take(0).data();
        orbconv::readMessage(log, *staging);
        const std::uint8_t* const end = log.take(0).data();
        if (end > begin) {
            list.messages.emplace_back(reinterpret_cast<const char*>(begin),
                                       static_cast<std::size_t>(end - begin));
        }
    }
    return list;
}

// What the log says up to a place, for pieces that are put in there.
LogCourse courseUpTo(const MessageList& list, std::size_t place) {
    LogCourse course;
    for (std::size_t i = 0; i < place; ++i) {
        const std::string& message = list.messages[i];
        if (message.starts_with("~~") && message.size() >= headBytes + 4) {
            std::memcpy(&course.timeOfDayMs, message.data() + headBytes, 4);
        } else if (message.starts_with("SX")) {
            course.satellites.clear();
            for (std::size_t k = headBytes; k + 3 < message.size() && course.satellites.size() < 180;
                 k += 2) {
                course.satellites.push_back({static_cast<std::uint8_t>(message[k]), message[k + 1]});
            }
        }
    }
    return course;
}

std::string randomPiece(Chance& chance, LogCourse course, std::size_t room) {
    LogBuilder log;
    switch (chance.below(12)) {
        case 0:
        case 1: fuzzing::appendEpoch(log, chance, course); break;
        case 2:
            for (std::size_t i = chance.below(4) + 2; i > 0; --i) {
                fuzzing::appendEpoch(log, chance, course);
            }
            break;
        case 3: fuzzing::appendIdentity(log, chance); break;
        case 4:
            fuzzing::appendTableFill(log, chance, chance.oneIn(4) ? room : std::min<std::size_t>(room, 4096));
            break;
        case 5:
        case 6: fuzzing::appendNavigation(log, chance); break;
        case 7:
        case 8: fuzzing::appendMeasurements(log, chance, course); break;
        case 9: log.td(); break;
        default: fuzzing::appendAnyMessage(log, chance, course); break;
    }
    return log.take();
}

// Changes a number somewhere in a body, on a boundary of its own width more often than not.
void changeField(std::string& message, Chance& chance) {
    if (message.size() <= headBytes) {
        return;
    }
    const std::size_t width = std::size_t{1} << chance.below(4);
    std::size_t offset = chance.below(message.size() - headBytes);
    if (!chance.oneIn(3)) {
        offset -= offset % width;
    }
    const std::string field = fuzzing::randomField(chance, width);
    for (std::size_t i = 0; i < width && headBytes + offset + i < message.size(); ++i) {
        message[headBytes + offset + i] = field[i];
    }
}

// The length field says something else; the body stays as it is or follows.
void changeLength(std::string& message, Chance& chance) {
    if (message.size() < headBytes) {
        return;
    }
    constexpr std::array<const char*, 10> texts = {"-01", "-FF", " 1 ", "0x7", "FFF",
                                                   "7b ", "zzz", "000", "001", "+7F"};
    constexpr std::array<int, 12> usual = {123, 160, 168, 88, 103, 134, 152, 2, 5, 39, 361, 721};
    if (chance.oneIn(3)) {
        std::memcpy(message.data() + 2, chance.of(texts), 3);
        return;
    }
    const auto bodySize = static_cast<int>(message.size() - headBytes);
    const int length =
        chance.oneIn(2) ? chance.of(usual) : std::clamp(bodySize + chance.between(-3, 3), 0, 0xFFF);
    std::array<char, 4> text{};
    std::snprintf(text.data(), text.size(), "%03X", static_cast<unsigned>(length) & 0xFFFU);
    std::memcpy(message.data() + 2, text.data(), 3);
    if (chance.oneIn(2)) {
        message.resize(headBytes + static_cast<std::size_t>(length) + chance.below(3));
    }
}

void changeId(std::string& message, Chance& chance) {
    if (message.size() >= 2) {
        const orbconv::MessageId id = chance.of(orbconv::messageTable).id;
        message[0] = id.first;
        message[1] = id.second;
    }
}

void changeBytes(std::string& message) {
    const std::size_t size = message.size();
    message.resize(size + 64);
    message.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(message.data()), size, message.size()));
}

// Copies with a field counted up, so that tables take each of them.
void multiply(MessageList& list, std::size_t place, Chance& chance) {
    const std::size_t copies = chance.oneIn(4) ? chance.below(120) : chance.below(8) + 1;
    const std::string message = list.messages[place];
    const bool counting = message.size() > headBytes && chance.oneIn(2);
    const std::size_t counter = counting ? headBytes + chance.below(message.size() - headBytes) : 0;
    std::vector<std::string> made(copies, message);
    for (std::size_t i = 0; counting && i < copies; ++i) {
        made[i][counter] = static_cast<char>(static_cast<unsigned char>(made[i][counter]) + i + 1);
    }
    list.messages.insert(list.messages.begin() + static_cast<std::ptrdiff_t>(place), made.begin(),
                         made.end());
}

void mutate(MessageList& list, Chance& chance, std::size_t room) {
    std::vector<std::string>& messages = list.messages;
    const auto at = [&](std::size_t place) { return messages.begin() + static_cast<std::ptrdiff_t>(place); };
    const std::size_t action = messages.empty() ? 0 : chance.below(20);
    if (action < 6) {
        const std::size_t place = chance.below(messages.size() + 1);
        messages.insert(at(place), randomPiece(chance, courseUpTo(list, place), room));
        return;
    }
    const std::size_t place = chance.below(messages.size());
    std::string& message = messages[place];
    switch (action) {
        case 6:
        case 7:
        case 8: changeField(message, chance); break;
        case 9: changeLength(message, chance); break;
        case 10: changeId(message, chance); break;
        case 11:
        case 12: changeBytes(message); break;
        case 13: messages.erase(at(place)); break;
        case 14: {
            const std::size_t count = std::min(chance.below(messages.size()) + 1, messages.size() - place);
            messages.erase(at(place), at(place + count));
            break;
        }
        case 15: std::swap(message, messages[chance.below(messages.size())]); break;
        case 16: multiply(list, place, chance); break;
        case 17: message.resize(chance.below(message.size() + 1)); break;
        case 18: list.options[chance.below(list.options.size())] = static_cast<char>(chance.bits()); break;
        default: {  // a stretch once more, elsewhere
            const std::size_t count = std::min(chance.below(12) + 1, messages.size() - place);
            const std::vector<std::string> copy(at(place), at(place + count));
            messages.insert(at(chance.below(messages.size() + 1)), copy.begin(), copy.end());
            break;
        }
    }
}

// Whole messages from the end are left out until the rest fits.
std::size_t store(MessageList& list, std::uint8_t* data, std::size_t maxSize) {
    std::string bytes = list.joined();
    while (bytes.size() > maxSize && !list.messages.empty()) {
        bytes.resize(bytes.size() - list.messages.back().size());
        list.messages.pop_back();
    }
    const std::size_t size = std::min(bytes.size(), maxSize);
    std::memcpy(data, bytes.data(), size);
    return size;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    Chance chance(seed);
    if (chance.oneIn(16)) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    MessageList list = parse({data, size});
    do {
        mutate(list, chance, maxSize);
    } while (!chance.oneIn(3));
    return store(list, data, maxSize);
}

// The beginning of one log and the end of the other.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data1, std::size_t size1,
                                                 const std::uint8_t* data2, std::size_t size2,
                                                 std::uint8_t* out, std::size_t maxOutSize, unsigned seed) {
    Chance chance(seed);
    MessageList list = parse({data1, size1});
    const MessageList other = parse({data2, size2});
    list.messages.resize(chance.below(list.messages.size() + 1));
    const std::size_t from = chance.below(other.messages.size() + 1);
    list.messages.insert(list.messages.end(), other.messages.begin() + static_cast<std::ptrdiff_t>(from),
                         other.messages.end());
    return store(list, out, maxOutSize);
}
