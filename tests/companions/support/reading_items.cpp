#include "companions/support/reading_items.h"

#include <fstream>
#include <random>
#include <stdexcept>

namespace testsupport {
namespace {

using orbconv::reading::LogItem;
using orbconv::reading::LogReader;

FoundItems takeAll(LogReader& reader, std::size_t size) {
    FoundItems items;
    std::uint64_t end = 0;
    for (LogItem item = reader.next(); item != LogItem::end; item = reader.next()) {
        const bool isMessage = item == LogItem::message;
        const std::uint64_t offset = isMessage ? reader.message().offset : reader.damage().offset;
        const std::uint64_t bytes = isMessage ? reader.message().bytes : reader.damage().bytes;
        items.tiled = items.tiled && offset == end && bytes > 0 && reader.position() == offset + bytes;
        const bool isSecondOfTwo = !isMessage && !items.damages.empty() &&
                                   items.damages.back().offset + items.damages.back().bytes == offset;
        items.tiled = items.tiled && !isSecondOfTwo;
        end = offset + bytes;
        if (isMessage) {
            const auto& message = reader.message();
            items.messages.push_back({.id = {message.id.first, message.id.second},
                                      .offset = offset,
                                      .bytes = bytes,
                                      .body = std::string(message.body.begin(), message.body.end())});
        } else {
            items.damages.push_back(reader.damage());
        }
    }
    items.tiled = items.tiled && end == size && reader.next() == LogItem::end;
    items.failed = reader.failed();
    return items;
}

}  // namespace

std::string FoundItems::ids() const {
    std::string text;
    for (const FoundMessage& message : messages) {
        text += (text.empty() ? "" : " ") + message.id;
    }
    return text;
}

std::span<const std::uint8_t> bytesOf(std::string_view text) {
    // NOLINTNEXTLINE(*-reinterpret-cast): characters as bytes
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

FoundItems itemsOf(std::string_view log) {
    LogReader reader(bytesOf(log));
    return takeAll(reader, log.size());
}

FoundItems itemsOfFile(std::string_view log) {
    const LogFile file(log);
    LogReader reader(file.open());
    return takeAll(reader, log.size());
}

LogFile::LogFile(std::string_view bytes)
    : path_(std::filesystem::temp_directory_path() /
            ("orbconv-log-" + std::to_string(std::random_device()()) +
             std::to_string(std::random_device()()))) {
    std::ofstream file(path_, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path_.string());
    }
}

LogFile::~LogFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
}

std::FILE* LogFile::open() const {
    std::FILE* file = std::fopen(path_.string().c_str(), "rb");
    if (file == nullptr) {
        throw std::runtime_error("cannot open " + path_.string());
    }
    return file;
}

}  // namespace testsupport
