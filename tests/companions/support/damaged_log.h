// Logs with bytes dropped, doubled, flipped, zeroed, put in or cut off at random, and which of their messages
// came through untouched.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "companions/support/reading_items.h"

namespace testsupport {

class DamagedLog {
public:
    // An undamaged log and where its messages stand.
    DamagedLog(std::string_view log, const std::vector<FoundMessage>& messages);

    void drop(std::size_t begin, std::size_t count);
    void repeat(std::size_t begin, std::size_t count);
    void flip(std::size_t place, std::uint8_t bits);
    void zero(std::size_t begin, std::size_t count);
    void insert(std::size_t place, std::string_view bytes);
    void cut(std::size_t size);
    // The other log, from `begin` of it on, in place of what stands behind `size` bytes of this one.
    void join(std::size_t size, const DamagedLog& other, std::size_t begin);

    // One damage of any kind, of any size up to a few hundred bytes, at any place.
    void damageOnce(std::mt19937& random, const DamagedLog& other);

    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    // The messages whose bytes all stand together, none of them touched, in their order.
    [[nodiscard]] std::vector<FoundMessage> untouched() const;

private:
    // Where a byte comes from: the message's place among those of its log and the byte's in the message.
    struct Origin {
        const FoundMessage* message = nullptr;
        std::size_t byte = 0;
    };

    std::string bytes_;
    std::vector<Origin> origins_;
};

}  // namespace testsupport
