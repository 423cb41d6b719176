#include "log/log_stream.h"

#include <algorithm>

namespace orbconv {

namespace {
constexpr std::size_t windowBytes = std::size_t{256} * 1024;
}

LogStream::LogStream(std::FILE* file) : file_(file) {
    if (file_ != nullptr) {
        std::setvbuf(file_.get(), nullptr, _IONBF, 0);  // the window is the buffer
        window_.resize(windowBytes);
        next_ = end_ = window_.data();
    }
}

LogStream::LogStream(std::span<const std::uint8_t> bytes)
    : next_(bytes.data()), end_(bytes.data() + bytes.size()) {}

void LogStream::refill(std::size_t count) {
    if (file_ == nullptr) {
        return;
    }
    auto held = static_cast<std::size_t>(end_ - next_);
    std::copy(next_, end_, window_.data());
    // A read that gives nothing is the end, an error (a directory, say) as well as a true end of file.
    while (held < count) {
        const std::size_t got = std::fread(window_.data() + held, 1, window_.size() - held, file_.get());
        if (got == 0) {
            break;
        }
        held += got;
    }
    next_ = window_.data();
    end_ = next_ + held;
}

}  // namespace orbconv
