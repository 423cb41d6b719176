// Runs the two passes over a log in memory, with everything that a run does between them.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "assembly/record_order.h"
#include "log/log_stream.h"
#include "log/passes.h"
#include "run/run_state.h"
#include "text/text_writer.h"

namespace testsupport {

class Passes {
public:
    Passes() {
        state->console = &console;
        state->runStamp = {.year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5};
    }

    // The survey pass, and what a run does before the writing pass.
    void survey(std::string_view log) {
        orbconv::LogStream stream(bytes(log));
        orbconv::surveyPass(stream, orbconv::surveyTables(*state));
        state->survey.signalUseCount = {};
        orbconv::sortSignalSatelliteLists(state->survey);
    }

    // The writing pass; returns what it wrote.
    std::string write(std::string_view log) {
        std::ostringstream file;
        {
            orbconv::TextWriter out(file);
            orbconv::LogStream stream(bytes(log));
            orbconv::writingPass(out, stream, orbconv::writingTables(*state));
        }
        return file.str();
    }

    // The writing pass into a file that could not be opened.
    void writeNowhere(std::string_view log) {
        orbconv::TextWriter out(nullptr);
        orbconv::LogStream stream(bytes(log));
        orbconv::writingPass(out, stream, orbconv::writingTables(*state));
    }

    // Both passes over one log; returns the observation file.
    std::string convert(std::string_view log) {
        survey(log);
        return write(log);
    }

    std::unique_ptr<orbconv::RunState> state = std::make_unique<orbconv::RunState>();
    std::ostringstream console;

private:
    static std::span<const std::uint8_t> bytes(std::string_view log) {
        return {reinterpret_cast<const std::uint8_t*>(log.data()), log.size()};
    }
};

}  // namespace testsupport
