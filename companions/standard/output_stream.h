// The text of one output file on its way to a stream, compressed if that is asked for.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "standard/gzip_buffer.h"
#include "text/text_writer.h"

namespace orbconv::standard {

class OutputStream {
public:
    // `name` is what a failure calls it. The sink must outlive the stream.
    OutputStream(std::ostream& sink, std::string name, bool gzip);
    OutputStream(const OutputStream&) = delete;
    OutputStream& operator=(const OutputStream&) = delete;

    TextWriter& writer() { return writer_; }

    // If something could not be written so far, a std::runtime_error that says why. Cheap enough to ask after
    // each epoch.
    void check() const;
    // Hands all out to the sink.
    void finish();

private:
    std::ostream& sink_;
    std::string name_;
    std::optional<GzipBuffer> gzip_;
    std::ostream text_;
    TextWriter writer_;
};

// Fails for the reason that the system gave last.
[[noreturn]] void failToWrite(const std::string& name);

}  // namespace orbconv::standard
