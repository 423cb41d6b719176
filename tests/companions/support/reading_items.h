// All that a log reader takes from a log, to be looked at afterwards.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "reading/log_reader.h"

namespace testsupport {

struct FoundMessage {
    std::string id;
    std::uint64_t offset = 0;
    std::uint64_t bytes = 0;
    std::string body;

    friend bool operator==(const FoundMessage&, const FoundMessage&) = default;
};

struct FoundItems {
    std::vector<FoundMessage> messages;
    std::vector<orbconv::reading::Damage> damages;
    // Whether each item began where the one before ended, the last ended with the log, and no two stretches
    // of damage stood side by side.
    bool tiled = true;
    bool failed = false;

    // "RD TD SX".
    [[nodiscard]] std::string ids() const;
};

std::span<const std::uint8_t> bytesOf(std::string_view text);

FoundItems itemsOf(std::string_view log);

// The same through a file of its own.
FoundItems itemsOfFile(std::string_view log);

// A file that is there as long as this is.
class LogFile {
public:
    explicit LogFile(std::string_view bytes);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    [[nodiscard]] std::FILE* open() const;

private:
    std::filesystem::path path_;
};

}  // namespace testsupport
