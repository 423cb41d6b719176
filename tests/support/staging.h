// Short ways for unit tests: messages into a staging, writers into a text.
#pragma once

#include <gtest/gtest.h>

#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "log/log_stream.h"
#include "log/message_reader.h"
#include "log/message_staging.h"
#include "samplelog/log_builder.h"
#include "text/text_writer.h"

namespace testsupport {

inline std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Reads every message of `log` into the staging, as a pass would, dispatching nothing.
inline void stage(orbconv::MessageStaging& staging, std::string_view log) {
    orbconv::LogStream stream(bytesOf(log));
    while (!stream.atEnd()) {
        orbconv::readMessage(stream, staging);
    }
}

inline void stage(orbconv::MessageStaging& staging, const samplelog::LogBuilder& log) {
    stage(staging, log.bytes());
}

// What `write(out)` writes to a TextWriter.
template <class Write>
std::string written(Write write) {
    std::ostringstream stream;
    {
        orbconv::TextWriter out(stream);
        write(out);
    }
    return stream.str();
}

}  // namespace testsupport
