// Input of the benchmarks: a stretch of the sample log, and the state of a run that has surveyed it.
#pragma once

#include <memory>
#include <ostream>
#include <span>
#include <string>

#include "log/log_stream.h"
#include "log/passes.h"
#include "run/run_state.h"
#include "samplelog/scenario.h"

namespace bench {

inline std::string sampleLog(std::int64_t epochs) {
    samplelog::Scenario scenario = samplelog::makeScenario({.epochCount = epochs});
    samplelog::LogBuilder log;
    samplelog::writeIdentity(scenario, log);
    for (std::int64_t epoch = 0; epoch < epochs; ++epoch) {
        samplelog::writeEpoch(scenario, epoch, log);
    }
    return log.take();
}

inline std::span<const std::uint8_t> bytesOf(const std::string& log) {
    return {reinterpret_cast<const std::uint8_t*>(log.data()), log.size()};
}

// A stream that takes everything and keeps nothing.
class NullStream : public std::ostream {
public:
    NullStream() : std::ostream(&sink_) {}

private:
    class Sink : public std::streambuf {
        int_type overflow(int_type character) override { return traits_type::not_eof(character); }
        std::streamsize xsputn(const char* /*text*/, std::streamsize count) override { return count; }
    };
    Sink sink_;
};

// A run after its survey pass over `log`; `console` must outlive it.
inline std::unique_ptr<orbconv::RunState> surveyedRun(const std::string& log, std::ostream& console) {
    auto state = std::make_unique<orbconv::RunState>();
    state->console = &console;
    orbconv::LogStream stream(bytesOf(log));
    orbconv::surveyPass(stream, orbconv::surveyTables(*state));
    return state;
}

}  // namespace bench
