#include "standard/output_stream.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace orbconv::standard {

OutputStream::OutputStream(std::ostream& sink, std::string name, bool gzip)
    : sink_(sink), name_(std::move(name)), text_(sink.rdbuf()), writer_(text_) {
    if (gzip) {
        text_.rdbuf(&gzip_.emplace(sink));
    }
}

void OutputStream::check() const {
    if (text_.fail() || sink_.fail()) {
        failToWrite(name_);
    }
}

void OutputStream::finish() {
    writer_.flush();
    if (gzip_) {
        gzip_->finish();
    }
    sink_.flush();
    check();
}

void failToWrite(const std::string& name) {
    const std::string reason = errno != 0 ? std::generic_category().message(errno) : "it cannot be written";
    throw std::runtime_error(name + ": " + reason);
}

}  // namespace orbconv::standard
