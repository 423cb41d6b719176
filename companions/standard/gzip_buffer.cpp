#include "standard/gzip_buffer.h"

#include <new>

namespace orbconv::standard {

namespace {

constexpr std::size_t roomBytes = std::size_t{64} * 1024;
constexpr int largestWindowAsGzip = 15 + 16;
constexpr int usualMemory = 8;
constexpr int unknownSystem = 255;  // else the head names the system that the library was built for

}  // namespace

GzipBuffer::GzipBuffer(std::ostream& sink) : sink_(sink), compressed_(roomBytes) {
    if (deflateInit2(&stream_, Z_DEFAULT_COMPRESSION, Z_DEFLATED, largestWindowAsGzip, usualMemory,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::bad_alloc();
    }
    head_.os = unknownSystem;
    deflateSetHeader(&stream_, &head_);
}

GzipBuffer::~GzipBuffer() {
    deflateEnd(&stream_);
}

void GzipBuffer::compress(const char* text, std::size_t size, int flush) {
    // The library takes what it compresses through a pointer to what it could change, and changes nothing.
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text));  // NOLINT(*-const-cast)
    stream_.avail_in = static_cast<uInt>(size);
    do {
        stream_.next_out = reinterpret_cast<Bytef*>(compressed_.data());
        stream_.avail_out = static_cast<uInt>(compressed_.size());
        deflate(&stream_, flush);
        sink_.write(compressed_.data(), static_cast<std::streamsize>(compressed_.size() - stream_.avail_out));
    } while (stream_.avail_out == 0);
}

std::streamsize GzipBuffer::xsputn(const char* text, std::streamsize size) {
    compress(text, static_cast<std::size_t>(size), Z_NO_FLUSH);
    return sink_.good() ? size : 0;
}

GzipBuffer::int_type GzipBuffer::overflow(int_type character) {
    const char text = traits_type::to_char_type(character);
    return xsputn(&text, 1) == 1 ? character : traits_type::eof();
}

void GzipBuffer::finish() {
    compress(nullptr, 0, Z_FINISH);
}

}  // namespace orbconv::standard
