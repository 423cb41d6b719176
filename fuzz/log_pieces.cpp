#include "log_pieces.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>

#include "log/message_table.h"

namespace fuzzing {

namespace {

using samplelog::Band;
using samplelog::LogBuilder;
using samplelog::Satellite;
using samplelog::SystemCode;

constexpr std::array<Band, 6> everyBand = {Band::c, Band::b1, Band::b2, Band::b3, Band::b5, Band::l};

std::string littleEndian(std::uint64_t value, std::size_t width) {
    std::string bytes;
    for (std::size_t i = 0; i < width; ++i) {
        bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    }
    return bytes;
}

// A float that an ephemeris could hold, or any.
float randomFloat(Chance& chance) {
    switch (chance.below(8)) {
        case 0: return std::bit_cast<float>(static_cast<std::uint32_t>(chance.bits()));
        case 1: return std::numeric_limits<float>::quiet_NaN();
        case 2: return std::numeric_limits<float>::infinity();
        case 3: return -0.0F;
        case 4: return 0.0F;
        default:
            return std::ldexp(static_cast<float>(chance.between(-1000000, 1000000)), chance.between(-60, 10));
    }
}

double randomDouble(Chance& chance) {
    switch (chance.below(8)) {
        case 0: return std::bit_cast<double>(chance.bits());
        case 1: return std::numeric_limits<double>::max();
        case 2: return std::numeric_limits<double>::denorm_min();
        case 3: return -0.0;
        default:
            return std::ldexp(static_cast<double>(chance.between(-1 << 30, 1 << 30)),
                              chance.between(-60, 10));
    }
}

std::string randomBody(Chance& chance, std::size_t size) {
    std::string body;
    if (chance.oneIn(3)) {
        body.assign(size, static_cast<char>(chance.of(std::array{0x00, 0xFF, 0x40, 0x01, 0x80})));
    }
    while (body.size() < size) {
        body += randomField(chance, std::size_t{1} << chance.below(4));
    }
    body.resize(size);
    return body;
}

// Seconds of week or day; a few values only, so that tables meet the same key again.
std::int32_t randomTime(Chance& chance) {
    switch (chance.below(10)) {
        case 0: return 0;
        case 1: return -chance.between(1, 10);
        case 2: return chance.between(0, 604799);
        case 3: return static_cast<std::int32_t>(chance.bits());
        default: return 3600 * chance.between(0, 24);
    }
}

std::uint8_t randomByte(Chance& chance) {
    return static_cast<std::uint8_t>(chance.bits());
}

samplelog::KeplerBlock randomKepler(Chance& chance) {
    samplelog::KeplerBlock block;
    block.sv = chance.oneIn(20) ? randomByte(chance) : static_cast<std::uint8_t>(chance.between(0, 64));
    block.tot = static_cast<std::uint32_t>(randomTime(chance));
    block.flags = randomByte(chance);
    block.iodc = static_cast<std::int16_t>(chance.bits());
    block.toc = randomTime(chance);
    block.uraIndex =
        static_cast<std::int8_t>(chance.oneIn(4) ? chance.between(-128, 127) : chance.between(0, 15));
    block.health = randomByte(chance);
    block.week = static_cast<std::int16_t>(chance.oneIn(4) ? chance.between(-32768, 32767) : 252);
    block.tgd = randomFloat(chance);
    block.af0 = randomFloat(chance);
    block.af1 = randomFloat(chance);
    block.af2 = randomFloat(chance);
    block.toe = randomTime(chance);
    block.iode = static_cast<std::int16_t>(chance.bits());
    block.sqrtA = randomDouble(chance);
    block.e = randomDouble(chance);
    block.M0 = randomDouble(chance);
    block.Omega0 = randomDouble(chance);
    block.i0 = randomDouble(chance);
    block.omega = randomDouble(chance);
    block.deltaN = randomFloat(chance);
    block.OmegaDot = randomFloat(chance);
    block.Cis = randomFloat(chance);
    return block;
}

std::uint8_t randomNavFlags(Chance& chance) {
    return chance.oneIn(4) ? randomByte(chance) : static_cast<std::uint8_t>(1U << chance.below(8));
}

void appendGps(LogBuilder& log, Chance& chance) {
    samplelog::GpsBody body{.kepler = randomKepler(chance), .navFlags = randomNavFlags(chance)};
    body.adot = randomDouble(chance);
    body.deltaNDot = randomFloat(chance);
    body.iscL1cp = randomFloat(chance);
    body.iscL5q5 = randomFloat(chance);
    body.af0Delta = randomFloat(chance);
    switch (chance.below(3)) {
        case 0: log.ge123(body.kepler); break;
        case 1: log.ge160(body); break;
        default: log.ge168(body); break;
    }
}

void appendGlonass(LogBuilder& log, Chance& chance) {
    samplelog::GlonassBody body;
    body.sv = static_cast<std::uint8_t>(chance.oneIn(10) ? chance.below(256) : chance.below(25));
    body.frequency = static_cast<std::int8_t>(chance.between(-8, 7));
    body.dayNumber = static_cast<std::int16_t>(chance.oneIn(4) ? chance.between(-32768, 32767) : 700);
    body.tk = randomTime(chance);
    body.tb = randomTime(chance);
    body.healthByte = randomByte(chance);
    body.age = randomByte(chance);
    body.x = randomDouble(chance);
    body.z = randomDouble(chance);
    body.vy = randomFloat(chance);
    body.ax = randomFloat(chance);
    body.tauN = randomFloat(chance);
    body.gamma = randomFloat(chance);
    if (chance.oneIn(2)) {
        log.ne88(body);
    } else {
        log.ne103(body, chance.oneIn(4) ? samplelog::LongNeEnd::bare : samplelog::LongNeEnd::padded);
    }
}

void appendGalileo(LogBuilder& log, Chance& chance) {
    log.en({.kepler = randomKepler(chance),
            .bgdE5a = randomFloat(chance),
            .bgdE5b = randomFloat(chance),
            .ai0 = randomFloat(chance),
            .ai1 = randomFloat(chance),
            .ai2 = randomFloat(chance),
            .ionFlags = randomByte(chance),
            .navFlags = randomNavFlags(chance)});
}

void appendBeidou(LogBuilder& log, Chance& chance) {
    samplelog::BeidouBody body{.kepler = randomKepler(chance), .tgd2 = randomFloat(chance)};
    body.navFlags = randomNavFlags(chance);
    body.aodc = randomByte(chance);
    body.aode = randomByte(chance);
    body.adot = randomDouble(chance);
    body.sisai = randomFloat(chance);
    switch (chance.below(3)) {
        case 0: log.cn134(body); break;
        case 1: log.cn152(body); break;
        default: log.cn160(body); break;
    }
}

samplelog::IonoBody randomIono(Chance& chance) {
    return {.tot = static_cast<std::uint32_t>(randomTime(chance)),
            .alpha0 = randomFloat(chance),
            .alpha1 = randomFloat(chance),
            .alpha3 = randomFloat(chance),
            .beta0 = randomFloat(chance),
            .beta2 = randomFloat(chance)};
}

samplelog::TimeOffsetBody randomOffset(Chance& chance) {
    return {.a0 = randomDouble(chance),
            .a1 = randomFloat(chance),
            .tot = static_cast<std::uint32_t>(randomTime(chance)),
            .week = static_cast<std::uint16_t>(chance.bits()),
            .leapSeconds = static_cast<std::int8_t>(chance.oneIn(4) ? chance.between(-128, 127) : 18)};
}

// A text with what the identity messages look for, or with too much of it.
std::string randomText(Chance& chance) {
    static const std::vector<std::string> words = {"KVS ",
                                                   "site0001 ",
                                                   "rcv/igs=",
                                                   "rcv/id=",
                                                   "rcv/ver/main=",
                                                   "_ANT",
                                                   "=",
                                                   "\"",
                                                   " ",
                                                   "A",
                                                   "RECEIVER 12",
                                                   "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                                                   "ANTENNA NAME OF MORE THAN FORTY CHARACTERS IN ALL"};
    std::string text;
    for (std::size_t i = chance.below(6); i > 0; --i) {
        text += chance.of(words);
    }
    if (!chance.oneIn(3)) {
        text.push_back('\0');
    }
    return text;
}

// As many values as the list has satellites; now and then fewer or more.
template <class Element>
std::vector<Element> values(Chance& chance, const LogCourse& course, int low, int high) {
    std::size_t count = course.satellites.size();
    if (chance.oneIn(8)) {
        count = chance.below(chance.oneIn(4) ? 400 : 200);
    }
    std::vector<Element> made(count);
    const bool wild = chance.oneIn(6);
    for (Element& value : made) {
        value = static_cast<Element>(wild ? static_cast<int>(chance.bits()) : chance.between(low, high));
    }
    return made;
}

std::vector<std::uint16_t> flagWords(Chance& chance, const LogCourse& course) {
    std::vector<std::uint16_t> words = values<std::uint16_t>(chance, course, 0, 0xFF);
    if (!chance.oneIn(4)) {
        for (std::uint16_t& word : words) {
            word |= 0x40U;
        }
    }
    return words;
}

void appendSystem(std::vector<Satellite>& list, Chance& chance, std::uint8_t code, int first, int last) {
    const int count = chance.oneIn(6) ? chance.between(0, 70) : chance.between(0, 12);
    for (int i = 0; i < count; ++i) {
        const bool inOrder = !chance.oneIn(4);
        list.push_back({code, inOrder ? first + i % (last - first + 1) : chance.between(first, last)});
    }
}

}  // namespace

std::string randomField(Chance& chance, std::size_t width) {
    constexpr std::array<std::uint64_t, 14> edges = {
        0,          1,          0x7F,       0x80,       0xFF,       0x7FFF,     0x8000,
        0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x7F800000, 0x7FC00000, 0x00000001, 0x3F800000};
    constexpr std::array<double, 8> edgeNumbers = {0.0,
                                                   -0.0,
                                                   1.0,
                                                   -1.0,
                                                   1e300,
                                                   4.9e-324,
                                                   std::numeric_limits<double>::infinity(),
                                                   std::numeric_limits<double>::quiet_NaN()};
    switch (chance.below(5)) {
        case 0: return littleEndian(chance.of(edges), width);
        case 1: return littleEndian(~std::uint64_t{0} << chance.below(64), width);
        case 2:
            if (width == 8) {
                return littleEndian(std::bit_cast<std::uint64_t>(chance.of(edgeNumbers)), width);
            }
            return littleEndian(std::bit_cast<std::uint32_t>(randomFloat(chance)), width);
        case 3: return littleEndian(chance.below(300), width);
        default: return littleEndian(chance.bits(), width);
    }
}

std::vector<Satellite> randomSky(Chance& chance) {
    std::vector<Satellite> list;
    appendSystem(list, chance, SystemCode::gps, 1, 32);
    appendSystem(list, chance, SystemCode::glonass, -7, 6);
    appendSystem(list, chance, SystemCode::galileo, 1, 36);
    appendSystem(list, chance, SystemCode::beidou, 1, 63);
    appendSystem(list, chance, SystemCode::navic, 1, 14);
    if (chance.oneIn(3)) {
        appendSystem(list, chance, SystemCode::sbas, 20, 58);
        appendSystem(list, chance, SystemCode::qzss, 1, 10);
        appendSystem(list, chance, SystemCode::glonassCdma, 1, 24);
        appendSystem(list, chance, randomByte(chance), 0, 255);
    }
    const bool crowded = chance.oneIn(8);
    while (crowded && list.size() < 175) {
        const std::array<std::uint8_t, 5> systems = {
            SystemCode::gps, SystemCode::glonass, SystemCode::galileo, SystemCode::beidou, SystemCode::navic};
        appendSystem(list, chance, chance.of(systems), 1, 60);
    }
    if (chance.oneIn(2)) {
        for (std::size_t i = list.size(); i > 1; --i) {
            std::swap(list[i - 1], list[chance.below(i)]);
        }
    }
    list.resize(std::min<std::size_t>(list.size(), crowded ? 250 : 120));
    return list;
}

void appendNavigation(LogBuilder& log, Chance& chance) {
    switch (chance.below(16)) {
        case 0:
        case 1: appendGps(log, chance); break;
        case 2:
        case 3: appendGlonass(log, chance); break;
        case 4:
        case 5: appendGalileo(log, chance); break;
        case 6:
        case 7: appendBeidou(log, chance); break;
        case 8: log.ie(randomKepler(chance)); break;
        case 9: log.io(randomIono(chance)); break;
        case 10: log.ii(randomIono(chance)); break;
        case 11: log.ci(randomIono(chance)); break;
        case 12: log.uo(randomOffset(chance)); break;
        case 13: log.cu(randomOffset(chance)); break;
        case 14: log.iu(randomOffset(chance)); break;
        default:
            if (chance.oneIn(2)) {
                log.eu({.utc = randomOffset(chance),
                        .a0Gps = randomFloat(chance),
                        .a1Gps = randomFloat(chance),
                        .totGps = static_cast<std::uint32_t>(randomTime(chance)),
                        .weekGps = static_cast<std::uint16_t>(chance.bits())});
            } else {
                log.nu({.tauC = randomDouble(chance), .tauGps = randomFloat(chance)});
            }
            break;
    }
}

void appendIdentity(LogBuilder& log, Chance& chance) {
    log.kvMarker(chance.oneIn(4) ? randomText(chance) : "SITE0001 ");
    if (chance.oneIn(4)) {
        log.kv(randomText(chance));
    }
    log.pmParameters({{"rcv/igs=", chance.oneIn(4) ? randomText(chance) : "RECEIVER"},
                      {"rcv/ver/main=", chance.oneIn(4) ? randomText(chance) : "1.2.3"},
                      {"rcv/id=", "0123456789ABCDEFGHIJ" + (chance.oneIn(2) ? randomText(chance) : "")}});
    if (chance.oneIn(4)) {
        log.pm(randomText(chance) + randomText(chance));
    }
    log.antennaType(chance.oneIn(8) ? randomText(chance) : "ANT1        NONE");
    if (chance.oneIn(4)) {
        log.assignment(chance.oneIn(2) ? 0 : randomByte(chance), randomText(chance) + randomText(chance));
    }
    log.pv({randomDouble(chance), randomDouble(chance), randomDouble(chance)}, randomFloat(chance));
    log.to(randomDouble(chance));
}

void appendMeasurements(LogBuilder& log, Chance& chance, const LogCourse& course) {
    constexpr int large = 1'000'000'000;
    const Band band = chance.of(everyBand);
    switch (chance.below(11)) {
        case 0: log.rc(values<std::int32_t>(chance, course, 0, large)); break;
        case 1: log.rx(values<std::int32_t>(chance, course, 0, large)); break;
        case 2: log.rangeDeltas(band, values<std::int16_t>(chance, course, -30000, 30000)); break;
        case 3: log.phases(band, values<std::int32_t>(chance, course, -large, large)); break;
        case 4: log.dc(values<std::int32_t>(chance, course, -large, large)); break;
        case 5: log.dx(values<std::int32_t>(chance, course, -large, large)); break;
        case 6: log.dopplerDeltas(band, values<std::int16_t>(chance, course, -30000, 30000)); break;
        case 7: log.strengths(band, values<std::uint8_t>(chance, course, 0, 255)); break;
        case 8: {
            std::vector<std::uint8_t> slots;
            for (const Satellite& satellite : course.satellites) {
                if (satellite.systemCode == SystemCode::glonass && slots.size() < 40) {
                    slots.push_back(chance.oneIn(6) ? randomByte(chance)
                                                    : static_cast<std::uint8_t>(slots.size() % 24 + 1));
                }
            }
            log.nn(slots);
            break;
        }
        default: log.flags(band, flagWords(chance, course)); break;
    }
}

void appendEpoch(LogBuilder& log, Chance& chance, LogCourse& course) {
    constexpr std::array<std::uint32_t, 6> steps = {1000, 1000, 30000, 0, 86'000'000, 7};
    course.timeOfDayMs =
        chance.oneIn(20) ? static_cast<std::uint32_t>(chance.bits()) : course.timeOfDayMs + chance.of(steps);
    log.time(course.timeOfDayMs);
    if (!chance.oneIn(4)) {
        log.rd(chance.oneIn(8) ? static_cast<unsigned>(chance.below(65536)) : 2024,
               static_cast<unsigned>(chance.between(0, 13)), static_cast<unsigned>(chance.between(0, 32)),
               static_cast<unsigned>(chance.oneIn(8) ? chance.below(256) : chance.below(4)));
    }
    if (course.satellites.empty() || chance.oneIn(3)) {
        course.satellites = randomSky(chance);
    }
    log.sx(course.satellites);
    const bool whole = chance.oneIn(4);
    if (whole) {
        log.rx(values<std::int32_t>(chance, course, 0, 1'000'000'000));
        log.dx(values<std::int32_t>(chance, course, -50'000'000, 50'000'000));
        for (const Band band : everyBand) {
            log.flags(band, flagWords(chance, course));
            log.strengths(band, values<std::uint8_t>(chance, course, 100, 220));
            log.phases(band, values<std::int32_t>(chance, course, -1'000'000, 1'000'000));
        }
    }
    for (std::size_t i = chance.below(whole ? 10 : 20); i > 0; --i) {
        appendMeasurements(log, chance, course);
    }
    if (chance.oneIn(3)) {
        appendNavigation(log, chance);
    }
    if (chance.oneIn(6)) {
        log.to(randomDouble(chance));
    }
    log.td();
}

void appendAnyMessage(LogBuilder& log, Chance& chance, const LogCourse& course) {
    switch (chance.below(8)) {
        case 0:
        case 1: appendNavigation(log, chance); break;
        case 2:
        case 3: appendMeasurements(log, chance, course); break;
        case 4:
            log.time(chance.oneIn(4) ? 0
                                     : course.timeOfDayMs + static_cast<std::uint32_t>(chance.below(60000)));
            break;
        case 5: log.sx(randomSky(chance)); break;
        case 6: {
            constexpr std::array<const char*, 8> others = {"TD", ">>", "ZZ",       ">x",
                                                           "QQ", "A>", "\xFF\xFE", "MF"};
            log.message(chance.of(others), randomBody(chance, chance.below(40)));
            break;
        }
        default: {
            const orbconv::MessageRow& row = chance.of(orbconv::messageTable);
            const std::array<char, 2> id = {row.id.first, row.id.second};
            const std::size_t usual = static_cast<std::size_t>(std::max(row.areaBytes, 32));
            const std::size_t size = chance.oneIn(3) ? chance.below(600) : chance.below(usual) + 1;
            log.message({id.data(), id.size()}, randomBody(chance, size));
            break;
        }
    }
}

void appendTableFill(LogBuilder& log, Chance& chance, std::size_t mostBytes) {
    const std::size_t kind = chance.below(13);
    const std::size_t messages = chance.of(std::array<std::size_t, 5>{20, 101, 110, 499, 505});
    for (std::size_t i = 0; i < messages && log.size() < mostBytes; ++i) {
        const auto number = static_cast<float>(i);
        samplelog::KeplerBlock kepler{.sv = static_cast<std::uint8_t>(i % 30 + 1),
                                      .toe = static_cast<std::int32_t>(chance.below(100)) * 3600};
        const samplelog::IonoBody iono{.tot = static_cast<std::uint32_t>(3600 * i), .alpha0 = number};
        const samplelog::TimeOffsetBody offset{.a0 = number, .leapSeconds = 18};
        switch (kind) {
            case 0: log.ge123(kepler); break;
            case 1: log.ge168({.kepler = kepler, .navFlags = 2}); break;
            case 2: log.en({.kepler = kepler, .navFlags = randomNavFlags(chance)}); break;
            case 3: log.cn134({.kepler = kepler, .navFlags = 1}); break;
            case 4: log.ie(kepler); break;
            case 5: log.ne88({.sv = kepler.sv, .tk = static_cast<std::int32_t>(i), .tb = kepler.toe}); break;
            case 6: log.io(iono); break;
            case 7: log.ii(iono); break;
            case 8: log.ci(iono); break;
            case 9: log.uo(offset); break;
            case 10: log.cu(offset); break;
            case 11: log.iu(offset); break;
            default: log.eu({.utc = offset}); break;
        }
    }
}

}  // namespace fuzzing
