// Compression on the way to a stream, in the gzip format.
#pragma once

#include <ostream>
#include <streambuf>
#include <vector>

#include <zlib.h>

namespace orbconv::standard {

// A standard stream over it compresses what is written to it; the sink must outlive it. The bytes depend on
// the text alone: neither a name nor a time stands in the head.
class GzipBuffer : public std::streambuf {
public:
    explicit GzipBuffer(std::ostream& sink);
    ~GzipBuffer() override;
    GzipBuffer(const GzipBuffer&) = delete;
    GzipBuffer& operator=(const GzipBuffer&) = delete;

    // Hands out the rest; nothing can be written behind it.
    void finish();

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int_type overflow(int_type character) override;

private:
    void compress(const char* text, std::size_t size, int flush);

    std::ostream& sink_;
    std::vector<char> compressed_;
    z_stream stream_{};
    gz_header head_{};
};

}  // namespace orbconv::standard
