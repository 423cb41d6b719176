#include "navfile/ephemeris_records.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "navfile/record_forms.h"
#include "navfile/rinex_number.h"
#include "run/run_options.h"

namespace orbconv {

namespace {

void writeEphLine(TextWriter& out, char letter, std::int32_t sv, std::string_view type) {
    out.left(">", 2).left("EPH", 4).text({&letter, 1}).integer(sv, 2, '0').right(type, 5).endLine();
}

// Letter, satellite, date and time; the values and the line end follow.
void beginEpochLine(TextWriter& out, char letter, std::int32_t sv, const ClockReading& epoch) {
    out.text({&letter, 1}).integer(sv, 2, '0').fixed(epoch.year, 0, 5);
    for (const float field : {epoch.month, epoch.day, epoch.hour, epoch.minute, epoch.second}) {
        out.blanks(1).fixed(field, 0, 2, '0');
    }
}

void writeOrbitLine(TextWriter& out, std::initializer_list<double> values, char exponentLetter) {
    out.blanks(4);
    for (const double value : values) {
        writeRecordValue(out, value, exponentLetter);
    }
    out.endLine();
}

// How one record is written.
struct RecordStyle {
    char letter;
    bool ephLine;
    char exponentLetter;
};

// The walker of the line forms.
template <class Entry>
void writeRecord(TextWriter& out, const Entry& entry, const RecordForm<Entry>& form, NavType type,
                 const RecordStyle& style) {
    if (style.ephLine) {
        writeEphLine(out, style.letter, entry.kepler.sv, navTypeName(type));
    }
    beginEpochLine(out, style.letter, entry.kepler.sv, entry.epoch);
    for (const Column<Entry> column : form.epochLine) {
        writeRecordValue(out, column(entry), style.exponentLetter);
    }
    out.endLine();
    for (const OrbitLine<Entry>& line : form.orbitLines) {
        out.blanks(4);
        for (const Column<Entry> column : line) {
            if (column == nullptr) {
                break;
            }
            writeRecordValue(out, column(entry), style.exponentLetter);
        }
        out.endLine();
    }
}

// Day and second of the frame less three hours, modulo a week, in 32 bits that wrap. Negative times keep
// their sign.
double messageFrameTime(const GlonassEphemeris& entry) {
    constexpr std::uint32_t secondsPerDay = 86400;
    constexpr std::uint32_t threeHours = 10800;
    constexpr std::int32_t secondsPerWeek = 604800;
    const std::uint32_t day = entry.dayNumber * secondsPerDay - threeHours;
    return static_cast<std::int32_t>(day + static_cast<std::uint32_t>(entry.tk)) % secondsPerWeek;
}

// A real multiplication: 0 becomes -0, and a not-a-number keeps its sign, which a change of sign would turn.
double timesMinusOne(double value) {
    return std::isnan(value) ? value : -value;
}

double narrowed(double value) {
    return static_cast<float>(value);
}

}  // namespace

void writeGpsRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation) {
    const bool eph = isRinex4(rinexVersion);
    for (const GpsEphemeris& entry : navigation.gps.slots) {
        const auto form = std::ranges::find(forms::gps, entry.navType, &RecordForm<GpsEphemeris>::type);
        const bool printed = eph ? form != forms::gps.end() : entry.navType == NavType::lnav;
        if (entry.kepler.sv != 0 && printed) {
            writeRecord(
                out, entry, *form, entry.navType,
                {.letter = 'G', .ephLine = eph, .exponentLetter = eph ? plainExponent : rinexExponent});
        }
    }
}

void writeGlonassRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation) {
    constexpr char letter = 'R';
    for (const GlonassEphemeris& entry : navigation.glonass.slots) {
        if (entry.sv == 0) {
            continue;
        }
        if (isRinex4(rinexVersion)) {
            writeEphLine(out, letter, entry.sv, "FDMA");
        }
        beginEpochLine(out, letter, entry.sv, entry.epoch);
        writeRecordValue(out, timesMinusOne(entry.tauN), rinexExponent);
        writeRecordValue(out, entry.gamma, rinexExponent);
        writeRecordValue(out, messageFrameTime(entry), rinexExponent);
        out.endLine();
        // Deliberate: x and z pass through single precision and y does not.
        const double health = entry.healthByte & 1;
        const double frequency = entry.frequency;
        const double age = entry.age;
        writeOrbitLine(out, {narrowed(entry.x), entry.vx, entry.ax, health}, rinexExponent);
        writeOrbitLine(out, {entry.y, entry.vy, entry.ay, frequency}, rinexExponent);
        writeOrbitLine(out, {narrowed(entry.z), entry.vz, entry.az, age}, rinexExponent);
    }
}

void writeGalileoRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation) {
    const RecordStyle style{
        .letter = 'E', .ephLine = isRinex4(rinexVersion), .exponentLetter = rinexExponent};
    for (const GalileoEphemeris& entry : navigation.galileo.slots) {
        if (entry.kepler.sv != 0) {
            writeRecord(out, entry, forms::galileo, entry.navType, style);
        }
    }
}

void writeBeidouRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation) {
    const bool eph = isRinex4(rinexVersion);
    const RecordStyle style{.letter = 'C', .ephLine = eph, .exponentLetter = rinexExponent};
    for (const BeidouEphemeris& entry : navigation.beidou.slots) {
        const bool printed = eph || entry.navType == NavType::d1 || entry.navType == NavType::d2;
        if (entry.kepler.sv == 0 || !printed) {
            continue;
        }
        const auto form = std::ranges::find(forms::beidou, entry.navType, &RecordForm<BeidouEphemeris>::type);
        writeRecord(out, entry, form != forms::beidou.end() ? *form : forms::beidouWithoutOrbit,
                    entry.navType, style);
    }
}

void writeNavicRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation) {
    constexpr std::int32_t lastSatellite = 256;
    const bool eph = isRinex4(rinexVersion);
    const RecordStyle style{
        .letter = 'I', .ephLine = eph, .exponentLetter = eph ? plainExponent : rinexExponent};
    for (const NavicEphemeris& entry : navigation.navic.slots) {
        if (entry.kepler.sv >= 1 && entry.kepler.sv <= lastSatellite) {
            writeRecord(out, entry, forms::navic, forms::navic.type, style);
        }
    }
}

}  // namespace orbconv
