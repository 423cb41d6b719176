#include "constellation.h"

#include <array>
#include <cstddef>

#include "random.h"

namespace samplelog {

namespace {

constexpr double radians(double degrees) {
    return degrees * (pi / 180.0);
}

// Bands by their family, so that the tables below read like the log.
constexpr BandMask c = bandBit(0);
constexpr BandMask b1 = bandBit(1);
constexpr BandMask b2 = bandBit(2);
constexpr BandMask b3 = bandBit(3);
constexpr BandMask b5 = bandBit(4);
constexpr BandMask l = bandBit(5);

// Planes of satellites at even distances, each plane a little ahead of the one before.
struct Shell {
    std::uint8_t systemCode;
    double radius;       // metres
    double inclination;  // degrees
    int planes;
    int slotsPerPlane;
    double lead;  // degrees from a satellite to its neighbour in the next plane
};

constexpr Shell gpsShell = {SystemCode::gps, 26560e3, 55.0, 6, 6, 10.0};
constexpr Shell glonassShell = {SystemCode::glonass, 25508e3, 64.8, 3, 8, 15.0};
constexpr Shell galileoShell = {SystemCode::galileo, 29600e3, 56.0, 3, 9, 13.3};
constexpr Shell beidouShell = {SystemCode::beidou, 27906e3, 55.0, 3, 8, 15.0};

// Channels of the GLONASS slots, four a plane: satellites on opposite sides of a plane share one.
constexpr std::array<int, 12> glonassChannels = {1, -4, 5, 6, -2, -7, 0, -1, 4, -3, 3, 2};

// Medium orbits of BeiDou, by place in the shell.
constexpr std::array<int, 24> beidouMediumNumbers = {11, 12, 14, 19, 20, 21, 22, 23, 24, 25, 26, 27,
                                                     28, 29, 30, 32, 33, 34, 35, 36, 37, 41, 42, 43};

// A satellite that keeps to one longitude.
struct Synchronous {
    std::uint8_t systemCode;
    int number;
    double inclination;  // degrees; 0 for a fixed point
    double longitude;    // degrees east
    double argument;     // degrees; where in its figure of eight at time 0
    BandMask bands;
};

constexpr BandMask olderBeidou = c | b2 | b3;
constexpr BandMask newerBeidou = c | b1 | b3 | b5 | l;

constexpr std::array synchronousSatellites = {
    Synchronous{SystemCode::beidou, 1, 0.0, 140.0, 0.0, olderBeidou},
    Synchronous{SystemCode::beidou, 2, 0.0, 84.0, 0.0, olderBeidou},
    Synchronous{SystemCode::beidou, 3, 0.0, 110.5, 0.0, olderBeidou},
    Synchronous{SystemCode::beidou, 4, 0.0, 160.0, 0.0, olderBeidou},
    Synchronous{SystemCode::beidou, 5, 0.0, 58.8, 0.0, olderBeidou},
    Synchronous{SystemCode::beidou, 6, 54.0, 118.0, 0.0, olderBeidou},
    Synchronous{SystemCode::beidou, 7, 54.0, 118.0, 120.0, olderBeidou},
    Synchronous{SystemCode::beidou, 8, 54.0, 118.0, 240.0, olderBeidou},
    Synchronous{SystemCode::beidou, 9, 54.0, 95.0, 60.0, olderBeidou},
    Synchronous{SystemCode::beidou, 10, 54.0, 95.0, 180.0, olderBeidou},
    Synchronous{SystemCode::beidou, 38, 55.0, 110.0, 20.0, newerBeidou},
    Synchronous{SystemCode::beidou, 39, 55.0, 110.0, 140.0, newerBeidou},
    Synchronous{SystemCode::beidou, 40, 55.0, 110.0, 260.0, newerBeidou},
    Synchronous{SystemCode::beidou, 59, 0.0, 144.5, 0.0, c | b3 | l},
    Synchronous{SystemCode::navic, 2, 29.0, 55.0, 40.0, c | b5},
    Synchronous{SystemCode::navic, 3, 0.0, 83.0, 0.0, c | b5},
    Synchronous{SystemCode::navic, 4, 29.0, 111.8, 100.0, c | b5},
    Synchronous{SystemCode::navic, 5, 29.0, 111.8, 280.0, c | b5},
    Synchronous{SystemCode::navic, 6, 0.0, 32.5, 0.0, c | b5},
    Synchronous{SystemCode::navic, 9, 29.0, 55.0, 220.0, c | b5},
    Synchronous{SystemCode::navic, 10, 0.0, 129.5, 0.0, c | b5 | l},
};

// Generations: one satellite in four is of the newest, with every band; the others have fewer.
BandMask gpsBands(int number) {
    switch (number % 4) {
        case 0: return c | b1 | b2 | b3 | b5 | l;
        case 1: return c | b1 | b2 | b3 | b5;
        case 2: return c | b1 | b2 | b3;
        default: return c | b1 | b2;
    }
}

BandMask glonassBands(int slot) {
    return slot % 3 == 0 ? (c | b1 | b2 | b3 | b5) : (c | b1 | b2 | b3);
}

BandMask beidouBands(int number) {
    return number < 19 ? olderBeidou : newerBeidou;
}

struct Maker {
    std::uint64_t seed;
    std::vector<SatelliteModel> satellites;

    void add(std::uint8_t systemCode, int number, int channel, const Orbit& orbit, BandMask bands) {
        const auto who = static_cast<std::uint64_t>(systemCode) * 100 + static_cast<std::uint64_t>(number);
        satellites.push_back({
            .systemCode = systemCode,
            .number = number,
            .channel = channel,
            .orbit = orbit,
            .clockOffset = 4e-4 * toSymmetric(hashOf(seed, who, 1)),
            .clockRate = 5e-12 * toSymmetric(hashOf(seed, who, 2)),
            .bands = bands,
            .signals = signalPlanOf(systemCode, channel),
        });
    }

    Orbit inShell(const Shell& shell, int plane, int slot) const {
        const double node = 360.0 / shell.planes * plane + 360.0 * toUnit(hashOf(seed, shell.systemCode, 3));
        const double argument = 360.0 / shell.slotsPerPlane * slot + shell.lead * plane +
                                360.0 * toUnit(hashOf(seed, shell.systemCode, 4));
        return makeOrbit(shell.radius, radians(shell.inclination), radians(node), radians(argument));
    }

    void addGps() {
        for (int number = 1; number <= 32; ++number) {
            const int place = number - 1;
            add(SystemCode::gps, number, 0, inShell(gpsShell, place % 6, place / 6), gpsBands(number));
        }
    }

    void addGlonass() {
        for (int slot = 1; slot <= 24; ++slot) {
            const int plane = (slot - 1) / 8;
            const int place = (slot - 1) % 8;
            const int channel = glonassChannels[static_cast<std::size_t>(4 * plane + place % 4)];
            add(SystemCode::glonass, slot, channel, inShell(glonassShell, plane, place), glonassBands(slot));
        }
    }

    void addGalileo() {
        for (int place = 0; place < 27; ++place) {
            // Numbers with gaps, up to 36.
            const int number = place + 1 + place / 3;
            add(SystemCode::galileo, number, 0, inShell(galileoShell, place % 3, place / 3),
                c | b1 | b2 | b3 | b5);
        }
    }

    void addBeidouMedium() {
        for (int place = 0; place < 24; ++place) {
            const int number = beidouMediumNumbers[static_cast<std::size_t>(place)];
            add(SystemCode::beidou, number, 0, inShell(beidouShell, place % 3, place / 3),
                beidouBands(number));
        }
    }

    void addSynchronous(std::uint8_t systemCode) {
        for (const Synchronous& s : synchronousSatellites) {
            if (s.systemCode == systemCode) {
                add(systemCode, s.number, 0,
                    makeSynchronousOrbit(radians(s.inclination), radians(s.longitude), radians(s.argument)),
                    s.bands);
            }
        }
    }
};

}  // namespace

std::vector<SatelliteModel> makeConstellation(std::uint64_t seed) {
    Maker maker = {seed, {}};
    maker.addGps();
    maker.addGlonass();
    maker.addGalileo();
    maker.addSynchronous(SystemCode::beidou);
    maker.addBeidouMedium();
    maker.addSynchronous(SystemCode::navic);
    return maker.satellites;
}

}  // namespace samplelog
