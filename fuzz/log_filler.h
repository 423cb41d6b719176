// What stands ahead of an input in a file, so that the end of a reader's window falls somewhere into the
// input.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

namespace fuzzing {

// Messages that nobody reads, `size` bytes of them in all; how many they are is counted in `messages`.
inline std::string filler(std::size_t size, std::size_t& messages) {
    constexpr std::size_t framing = 6;
    constexpr std::size_t longest = 4000;
    std::string bytes;
    while (size - bytes.size() >= framing) {
        std::size_t body = std::min(size - bytes.size() - framing, longest);
        if (size - bytes.size() - framing - body < framing) {
            body = std::min(size - bytes.size() - framing, longest - framing);
        }
        std::array<char, 8> head{};
        std::snprintf(head.data(), head.size(), "ZZ%03X", static_cast<unsigned>(body));
        bytes.append(head.data()).append(body, '-').append(1, '\n');
        ++messages;
    }
    return bytes;
}

}  // namespace fuzzing
