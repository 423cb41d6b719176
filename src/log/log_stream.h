// The receiver's log as a stream of bytes: a window of fixed size that slides over the file, with the end
// of file told as the C library's streams tell it: only after a read that asked for more than was left.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <vector>

namespace orbconv {

class LogStream {
public:
    // Reads from an open file and closes it at the end. A null file is an empty log.
    explicit LogStream(std::FILE* file);
    // Reads from memory, which must outlive the stream.
    explicit LogStream(std::span<const std::uint8_t> bytes);

    // The most bytes that may be asked for at once.
    static constexpr std::size_t maxTake = 8192;

    // The next `count` bytes (count <= maxTake) in one piece, valid until the next call. Fewer if the log
    // ends ahead of that, and then atEnd() is true. Asking for exactly what is left does not reach the end.
    std::span<const std::uint8_t> take(std::size_t count) {
        if (count > static_cast<std::size_t>(end_ - next_)) [[unlikely]] {
            refill(count);
        }
        const auto available = static_cast<std::size_t>(end_ - next_);
        if (count > available) [[unlikely]] {
            atEnd_ = true;
            count = available;
        }
        const std::uint8_t* const first = next_;
        next_ += count;
        return {first, count};
    }

    [[nodiscard]] bool atEnd() const { return atEnd_; }

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    // Moves the rest of the window to its front and fills it up, until `count` bytes are there or the file
    // gives no more.
    void refill(std::size_t count);

    std::unique_ptr<std::FILE, CloseFile> file_;
    std::vector<std::uint8_t> window_;
    const std::uint8_t* next_ = nullptr;
    const std::uint8_t* end_ = nullptr;
    bool atEnd_ = false;
};

}  // namespace orbconv
