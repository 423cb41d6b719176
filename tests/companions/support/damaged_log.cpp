#include "companions/support/damaged_log.h"

#include <algorithm>
#include <cstddef>

namespace testsupport {
namespace {

std::ptrdiff_t step(std::size_t count) {
    return static_cast<std::ptrdiff_t>(count);
}

}  // namespace

DamagedLog::DamagedLog(std::string_view log, const std::vector<FoundMessage>& messages)
    : bytes_(log), origins_(log.size()) {
    for (const FoundMessage& message : messages) {
        for (std::size_t i = 0; i < message.bytes; ++i) {
            origins_[message.offset + i] = {.message = &message, .byte = i};
        }
    }
}

void DamagedLog::drop(std::size_t begin, std::size_t count) {
    bytes_.erase(begin, count);
    const auto first = origins_.begin() + step(begin);
    origins_.erase(first, first + step(std::min(count, origins_.size() - begin)));
}

void DamagedLog::repeat(std::size_t begin, std::size_t count) {
    const std::string again = bytes_.substr(begin, count);
    const std::vector<Origin> origins(origins_.begin() + step(begin),
                                      origins_.begin() + step(begin + again.size()));
    bytes_.insert(begin, again);
    origins_.insert(origins_.begin() + step(begin), origins.begin(), origins.end());
}

void DamagedLog::flip(std::size_t place, std::uint8_t bits) {
    bytes_[place] = static_cast<char>(static_cast<std::uint8_t>(bytes_[place]) ^ bits);
    origins_[place] = {};
}

void DamagedLog::zero(std::size_t begin, std::size_t count) {
    for (std::size_t i = begin; i < std::min(begin + count, bytes_.size()); ++i) {
        bytes_[i] = '\0';
        origins_[i] = {};
    }
}

void DamagedLog::insert(std::size_t place, std::string_view bytes) {
    bytes_.insert(place, bytes);
    origins_.insert(origins_.begin() + step(place), bytes.size(), Origin());
}

void DamagedLog::cut(std::size_t size) {
    bytes_.resize(size);
    origins_.resize(size);
}

void DamagedLog::join(std::size_t size, const DamagedLog& other, std::size_t begin) {
    cut(size);
    bytes_.append(other.bytes_, begin);
    origins_.insert(origins_.end(), other.origins_.begin() + step(begin), other.origins_.end());
}

void DamagedLog::damageOnce(std::mt19937& random, const DamagedLog& other) {
    const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random()) % bound; };
    if (bytes_.empty()) {
        return;
    }
    const std::size_t place = below(bytes_.size());
    const std::size_t count = 1 + (below(2) == 0 ? below(8) : below(400));
    switch (below(7)) {
        case 0: drop(place, count); break;
        case 1: repeat(place, count); break;
        case 2: flip(place, static_cast<std::uint8_t>(1 + below(255))); break;
        case 3: zero(place, count); break;
        case 4: {
            std::string noise(count, '\0');
            std::ranges::generate(noise, [&] { return static_cast<char>(random()); });
            insert(place, noise);
            break;
        }
        case 5: cut(place); break;
        default: join(place, other, below(other.bytes_.size())); break;
    }
}

std::vector<FoundMessage> DamagedLog::untouched() const {
    std::vector<FoundMessage> messages;
    for (std::size_t place = 0; place < origins_.size();) {
        const Origin& first = origins_[place];
        std::size_t whole = 0;
        while (first.message != nullptr && whole < first.message->bytes && place + whole < origins_.size() &&
               origins_[place + whole].message == first.message && origins_[place + whole].byte == whole) {
            ++whole;
        }
        if (first.message != nullptr && whole == first.message->bytes) {
            messages.push_back(*first.message);
            messages.back().offset = place;
        }
        place += std::max<std::size_t>(whole, 1);
    }
    return messages;
}

}  // namespace testsupport
