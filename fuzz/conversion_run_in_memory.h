// A whole conversion without files: the stages of a run in their order, over a log in memory, the output
// files counted and thrown away.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string_view>

#include "assembly/record_order.h"
#include "fuzz_input.h"
#include "log/log_stream.h"
#include "log/passes.h"
#include "navfile/mixed_nav_file.h"
#include "navfile/nav_files.h"
#include "navfile/table_order.h"
#include "run/run_state.h"

namespace fuzzing {

// A stream that keeps nothing of what is written but how much it was.
class Discard : private std::streambuf, public std::ostream {
public:
    Discard() : std::ostream(static_cast<std::streambuf*>(this)) {}
    std::uint64_t size = 0;

private:
    std::streamsize xsputn(const char* /*text*/, std::streamsize count) override {
        size += static_cast<std::uint64_t>(count);
        return count;
    }
    std::streambuf::int_type overflow(std::streambuf::int_type character) override {
        ++size;
        return std::streambuf::traits_type::not_eof(character);
    }
};

// The ends that a damaged log may bring beside the usual one. Anything else that is thrown is a defect.
inline bool isKnownEnd(const std::exception& error) {
    const std::string_view text = error.what();
    // An antenna number or type too long for its field, and a receiver number too short to be cut.
    return (dynamic_cast<const std::length_error*>(&error) != nullptr && text == "string too long") ||
           (dynamic_cast<const std::out_of_range*>(&error) != nullptr &&
            text.starts_with("basic_string::erase"));
}

class ConversionInMemory {
public:
    // Converts the log; afterwards the tables are as a run leaves them at its end.
    void run(const LogInput& input) {
        orbconv::RunState& state = state_.emplace();
        state.options = optionsOf(input);
        state.console = &console;
        try {
            orbconv::LogStream firstReading(input.log);
            orbconv::surveyPass(firstReading, orbconv::surveyTables(state));
            state.runStamp = {.year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5};
            state.survey.signalUseCount = {};
            orbconv::sortSignalSatelliteLists(state.survey);

            const bool isOpen = (input.choice[1] & noOutputFile) == 0;
            orbconv::TextWriter observations(isOpen ? &out : nullptr);
            orbconv::LogStream secondReading(input.log);
            orbconv::writingPass(observations, secondReading, orbconv::writingTables(state));
        } catch (const std::exception& error) {
            if (!isKnownEnd(error)) {
                throw;
            }
            return;
        }
        writeNavigation(state);
    }

    Discard out;
    Discard console;

private:
    void writeNavigation(orbconv::RunState& state) {
        const orbconv::NavFileTables tables{.rinexVersion = state.options.rinexVersion,
                                            .runStamp = state.runStamp,
                                            .satelliteSystemLetter = state.presence.satelliteSystemLetter(),
                                            .navigation = state.navigation};
        const bool rinex4 = orbconv::isRinex4(state.options.rinexVersion);
        const auto file = [&](bool included, auto sortTable, auto write) {
            if (included) {
                sortTable(state.navigation);
            }
            if (included && !rinex4) {
                orbconv::TextWriter writer(out);
                write(writer, tables);
            }
        };
        const orbconv::RunOptions& options = state.options;
        file(options.includeGps, orbconv::sortGpsTable, orbconv::writeGpsNavFile);
        file(options.includeNavic, orbconv::sortNavicTable, orbconv::writeNavicNavFile);
        file(options.includeGlonass, orbconv::sortGlonassTable, orbconv::writeGlonassNavFile);
        if (!rinex4) {  // the mixed file has Galileo in the order of the log
            file(options.includeGalileo, orbconv::sortGalileoTable, orbconv::writeGalileoNavFile);
        }
        file(options.includeBeidou, orbconv::sortBeidouTable, orbconv::writeBeidouNavFile);
        if (rinex4) {
            orbconv::TextWriter writer(out);
            orbconv::writeMixedNavFile(writer, tables);
        }
    }

    std::optional<orbconv::RunState> state_;
};

}  // namespace fuzzing
