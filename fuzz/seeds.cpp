// orbconv-fuzz-seeds: writes the inputs that the fuzz targets begin with.
//
//   orbconv-fuzz-seeds FOLDER    fills FOLDER/logs, FOLDER/decoders, FOLDER/records and FOLDER/numbers
#include <array>
#include <bit>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "log_pieces.h"
#include "samplelog/scenario.h"

namespace {

using fuzzing::Chance;
using samplelog::LogBuilder;

constexpr std::size_t mostSeedBytes = std::size_t{64} * 1024;

void save(const std::filesystem::path& folder, const std::string& name, const std::string& bytes) {
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / name, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + (folder / name).string());
    }
}

std::string optionsFor(std::size_t i) {
    return {static_cast<char>(i), 0, 0};
}

// The start of a sample log: identity, and epochs of a whole sky.
std::string realisticLog(std::uint64_t seed) {
    samplelog::ScenarioOptions options;
    options.epochCount = 3;
    options.seed = seed;
    options.intervalMs = 30'000;
    samplelog::Scenario scenario = samplelog::makeScenario(options);
    LogBuilder log;
    samplelog::writeIdentity(scenario, log);
    for (std::int64_t epoch = 0; epoch < options.epochCount; ++epoch) {
        samplelog::writeEpoch(scenario, epoch, log);
    }
    return log.take();
}

// Identity and a few epochs, small enough to be run thousands of times a second.
std::string smallLog(std::uint64_t seed) {
    Chance chance(seed);
    fuzzing::LogCourse course;
    LogBuilder log;
    if (chance.oneIn(2)) {
        fuzzing::appendIdentity(log, chance);
    }
    for (std::size_t i = chance.below(4) + 1; i > 0; --i) {
        fuzzing::appendNavigation(log, chance);
        fuzzing::appendEpoch(log, chance, course);
    }
    log.time(course.timeOfDayMs + 1000);
    return log.take();
}

std::string tableLog(std::uint64_t seed) {
    Chance chance(seed);
    fuzzing::LogCourse course;
    LogBuilder log;
    fuzzing::appendTableFill(log, chance, mostSeedBytes / 2);
    fuzzing::appendEpoch(log, chance, course);
    fuzzing::appendEpoch(log, chance, course);
    return log.take();
}

void saveLogs(const std::filesystem::path& folder) {
    save(folder, "empty", optionsFor(0));
    for (std::size_t i = 0; i < 3; ++i) {
        save(folder, "realistic-" + std::to_string(i),
             (optionsFor(i) + realisticLog(i)).substr(0, mostSeedBytes));
    }
    for (std::size_t i = 0; i < 120; ++i) {
        save(folder, "small-" + std::to_string(i), optionsFor(i) + smallLog(i));
    }
    for (std::size_t i = 0; i < 30; ++i) {
        save(folder, "table-" + std::to_string(i), optionsFor(i) + tableLog(1000 + i));
    }
}

// The places of the messages in the list of the target, their length fields and the sizes of their bodies.
struct DecoderInput {
    int place;
    int lengthChoice;
    std::size_t body;
};
constexpr std::array<DecoderInput, 16> decoderInputs = {{{0, 0, 122},
                                                         {0, 1, 159},
                                                         {0, 2, 167},
                                                         {1, 0, 87},
                                                         {2, 0, 148},
                                                         {3, 0, 133},
                                                         {3, 1, 151},
                                                         {3, 2, 159},
                                                         {4, 0, 122},
                                                         {5, 0, 38},
                                                         {6, 0, 38},
                                                         {7, 0, 38},
                                                         {8, 0, 23},
                                                         {9, 0, 23},
                                                         {10, 0, 23},
                                                         {11, 0, 37}}};

// Bodies without the framing; every second input goes into tables that are nearly full.
void saveDecoderInputs(const std::filesystem::path& folder) {
    for (std::size_t i = 0; i < 4 * decoderInputs.size(); ++i) {
        Chance chance(i);
        const DecoderInput& form = decoderInputs[i % decoderInputs.size()];
        std::string bytes(1, static_cast<char>(i % 3 + (i / decoderInputs.size() % 2) * 128));
        for (int message = 0; message < 6; ++message) {
            bytes.push_back(static_cast<char>(form.place));
            bytes.push_back(static_cast<char>(form.lengthChoice));
            std::string body;
            while (body.size() < form.body) {
                body += fuzzing::randomField(chance, 4);
            }
            body.resize(form.body + 1);  // the checksum
            bytes.append(body);
        }
        save(folder, "seed-" + std::to_string(i), bytes);
    }
}

void saveRecordInputs(const std::filesystem::path& folder) {
    for (std::size_t i = 0; i < 42; ++i) {
        Chance chance(i);
        std::string bytes(1, static_cast<char>(i));
        while (bytes.size() < 600) {
            bytes += fuzzing::randomField(chance, 8);
        }
        save(folder, "seed-" + std::to_string(i), bytes);
    }
}

// Satellite lines of the longest numbers that there are, at several distances from the end of the buffer.
void saveLongLines(const std::filesystem::path& folder) {
    const std::string largest = "\xFF\xFF\xFF\xFF\xFF\xFF\xEF\xFF";
    for (int room = 100; room < 16384; room += 300) {
        std::string bytes = {13, static_cast<char>(room & 0xFF), static_cast<char>(room >> 8)};
        bytes.append(28 + 8 + 4, '\0');  // clock, offset, satellites
        for (char place = 0; place < 4; ++place) {
            bytes.append({0, place, 0x3F, static_cast<char>(place + 1)});
            for (int band = 0; band < 7; ++band) {
                bytes.append("\x09").append(largest).append(largest).append(largest).append(largest);
            }
        }
        save(folder, "long-" + std::to_string(room), bytes);
    }
}

void saveNumberInputs(const std::filesystem::path& folder) {
    constexpr double numbers[] = {0.0, -0.0, 0.0005, 0.5, 999.9995, 1e15, 1e300, 4.9e-324, -123456789.0625};
    std::string bytes = {3, 14};
    for (const double number : numbers) {
        const auto bits = std::bit_cast<std::uint64_t>(number);
        for (unsigned shift = 0; shift < 64; shift += 8) {
            bytes.push_back(static_cast<char>(bits >> shift & 0xFFU));
        }
    }
    save(folder, "seed", bytes);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: orbconv-fuzz-seeds FOLDER\n";
        return 2;
    }
    try {
        const std::filesystem::path folder = argv[1];
        saveLogs(folder / "logs");
        saveDecoderInputs(folder / "decoders");
        saveRecordInputs(folder / "records");
        saveLongLines(folder / "records");
        saveNumberInputs(folder / "numbers");
    } catch (const std::exception& error) {
        std::cerr << "orbconv-fuzz-seeds: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
