// Any bytes through the message reader, from memory and from a file side by side: both give the same messages
// and the same staging, and what the reader counts keeps within its areas.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "fuzz_input.h"
#include "log/message_reader.h"
#include "log_filler.h"
#include "run_limits.h"

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void checkCounts(const orbconv::MessageStaging& staging) {
    for (std::size_t row = 0; row < orbconv::messageTable.size(); ++row) {
        const orbconv::MessageRow& form = orbconv::messageTable[row];
        require(staging.elementCount[row] * form.elementBytes <= form.areaBytes);
        require(form.reading == orbconv::Reading::array || staging.elementCount[row] == 0);
        require(staging.bodyLength[row] >= -0xFF && staging.bodyLength[row] <= 0xFFF);
    }
}

// Reads all messages; returns how many there were.
std::size_t readAll(orbconv::LogStream& log, orbconv::MessageStaging& staging) {
    std::size_t messages = 0;
    while (!log.atEnd()) {
        orbconv::readMessage(log, staging);
        ++messages;
    }
    checkCounts(staging);
    return messages;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    constexpr std::size_t window = std::size_t{256} * 1024;
    static const auto fromMemory = std::make_unique<orbconv::MessageStaging>();
    static const auto fromFile = std::make_unique<orbconv::MessageStaging>();
    const fuzzing::LogInput input = fuzzing::splitInput({data, size});
    *fromMemory = {};
    orbconv::LogStream memory(input.log);
    const std::size_t messages = readAll(memory, *fromMemory);
    // The second reading takes much longer: it is done for one input in eight.
    if (input.choice[0] % 8 != 7) {
        return 0;
    }
    *fromFile = {};
    const std::size_t reach = input.log.size() * input.choice[1] / 256;
    std::size_t fillers = 0;
    std::string bytes = fuzzing::filler(window - std::min(reach, window / 2), fillers);
    bytes.append(fuzzing::textOf(input.log));
    orbconv::LogStream file(fmemopen(bytes.data(), bytes.size(), "rb"));
    require(readAll(file, *fromFile) == fillers + messages);
    require(fromFile->bytes == fromMemory->bytes && fromFile->elementCount == fromMemory->elementCount &&
            fromFile->bodyLength == fromMemory->bodyLength);
    return 0;
}
