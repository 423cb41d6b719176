#include "navfile/mixed_nav_file.h"

#include <array>
#include <string>

#include "navfile/ephemeris_records.h"
#include "navfile/nav_header_lines.h"
#include "navfile/rinex_number.h"
#include "text/header_lines.h"

namespace orbconv {

namespace {

// A date in the columns 5 to 23 of a line.
void writeDateStamp(TextWriter& out, const ClockReading& clock) {
    out.blanks(4).fixed(clock.year, 0, 4);
    for (const float field : {clock.month, clock.day, clock.hour, clock.minute, clock.second}) {
        out.blanks(1).fixed(field, 0, 2, '0');
    }
}

void writeNumbers(TextWriter& out, std::initializer_list<double> values) {
    for (const double value : values) {
        writeRecordValue(out, value, plainExponent);
    }
    out.endLine();
}

struct StoForm {
    char letter;
    std::string_view code;
    std::string_view offsetName;
    std::string_view referenceText;
    int referenceWidth;  // a wider text has no padding
};
// Deliberate: the GLONASS reference text is that of Galileo.
constexpr StoForm gpsSto{'G', "LNAV", "GPUT", "UTC(USNO)", 9};
constexpr StoForm glonassSto{'R', "FDMA", "GLGP", "UTCGAL", 6};
constexpr StoForm galileoSto{'E', "IFNV", "GAUT", "UTCGAL", 6};
constexpr StoForm beidouSto{'C', "D1D2", "BDUT", "UTC(NTSC)", 6};
constexpr StoForm navicSto{'I', "LNAV", "IRUT", "UTCIRN", 6};

void writeSto(TextWriter& out, const StoForm& form, const EpochClock& stamp,
              std::initializer_list<double> numbers) {
    out.left(">", 2).left("STO", 4).left({&form.letter, 1}, 4).left(form.code, 4).endLine();
    writeDateStamp(out, stamp);
    out.right(form.offsetName, 5).blanks(34).right(form.referenceText, form.referenceWidth).endLine();
    out.blanks(4);
    writeNumbers(out, numbers);
}

void writeSto(TextWriter& out, const StoForm& form, const TimeOffsetRecord& record) {
    constexpr double thirdCoefficient = 0.0;  // no message brings one
    writeSto(out, form, record.stamp,
             {static_cast<double>(record.tot), record.a0, record.a1, thirdCoefficient});
}

void writeStoRecords(TextWriter& out, const StoForm& form, const TimeOffsetTable& table) {
    for (const TimeOffsetRecord& record : table.records) {
        if (record.a0 == 0.0) {
            return;
        }
        writeSto(out, form, record);
    }
}

void writeIonHead(TextWriter& out, char letter, std::string_view satellite, std::string_view code) {
    out.left(">", 2).left("ION", 4).text({&letter, 1}).left(satellite, 3).left(code, 4).endLine();
}

void writeIonNumbers(TextWriter& out, const EpochClock& stamp, const std::array<float, 4>& alpha,
                     const std::array<float, 4>& beta) {
    writeDateStamp(out, stamp);
    writeNumbers(out, {alpha[0], alpha[1], alpha[2]});
    out.blanks(4);
    writeNumbers(out, {alpha[3], beta[0], beta[1], beta[2]});
    out.blanks(4);
    writeNumbers(out, {beta[3]});
}

void writeIonRecords(TextWriter& out, char letter, const IonoTable& table) {
    for (const IonoRecord& record : table.records) {
        if (record.alpha[0] == 0.0F) {
            return;
        }
        writeIonHead(out, letter, "00", "LNAV");
        writeIonNumbers(out, record.stamp, record.alpha, record.beta);
    }
}

}  // namespace

void writeGpsStoRecords(TextWriter& out, const NavigationTables& navigation) {
    writeStoRecords(out, gpsSto, navigation.gpsTimeOffset);
}

void writeGlonassStoRecords(TextWriter& out, const NavigationTables& navigation) {
    const GlonassTimeOffset& record = navigation.glonassTimeOffset;
    writeSto(out, glonassSto, record.stamp, {record.tauGps, record.tauC, 0.0, 0.0});
}

void writeGalileoStoRecords(TextWriter& out, const NavigationTables& navigation) {
    for (const GalileoTimeOffsetRecord& record : navigation.galileoTimeOffset.records) {
        if (record.utc.a0 == 0.0) {
            return;
        }
        writeSto(out, galileoSto, record.utc);
    }
}

void writeBeidouStoRecords(TextWriter& out, const NavigationTables& navigation) {
    writeStoRecords(out, beidouSto, navigation.beidouTimeOffset);
}

void writeNavicStoRecords(TextWriter& out, const NavigationTables& navigation) {
    writeStoRecords(out, navicSto, navigation.navicTimeOffset);
}

void writeGpsIonRecords(TextWriter& out, const NavigationTables& navigation) {
    writeIonRecords(out, 'G', navigation.gpsIono);
}

void writeGalileoIonRecords(TextWriter& out, const NavigationTables& navigation) {
    constexpr std::uint8_t printedFlags = 0x1F;
    const GalileoEphemeris first = firstGalileoEphemeris(navigation);
    writeIonHead(out, 'C', "00", "IFNV");  // Deliberate: the letter is not E
    writeDateStamp(out, first.epoch);
    writeNumbers(out, {first.ai0, first.ai1, first.ai2});
    out.blanks(4);
    writeNumbers(out, {static_cast<double>(first.ionFlags & printedFlags)});
}

void writeBeidouIonRecords(TextWriter& out, const NavigationTables& navigation) {
    for (const BeidouIonoRecord& record : navigation.beidouIono.records) {
        if (record.alpha[0] == 0.0F || record.sv == 0) {
            return;
        }
        writeIonHead(out, 'C', std::to_string(record.sv), "D1D2");
        writeIonNumbers(out, record.stamp, record.alpha, record.beta);
    }
}

void writeNavicIonRecords(TextWriter& out, const NavigationTables& navigation) {
    writeIonRecords(out, 'I', navigation.navicIono);
}

void writeMixedNavFile(TextWriter& out, const NavFileTables& tables) {
    const NavigationTables& navigation = tables.navigation;
    const double rinexVersion = tables.rinexVersion;
    // Deliberate: no colon and no blank, and the label stands two columns to the left.
    writeNavFirstLines(out, tables, std::string(tables.satelliteSystemLetter) + "MIXED", 12);
    writeEndOfHeader(out);

    writeGpsRecords(out, rinexVersion, navigation);
    writeGpsStoRecords(out, navigation);
    writeGpsIonRecords(out, navigation);

    writeGlonassRecords(out, rinexVersion, navigation);
    writeGlonassStoRecords(out, navigation);

    writeGalileoRecords(out, rinexVersion, navigation);
    writeGalileoStoRecords(out, navigation);
    writeGalileoIonRecords(out, navigation);

    writeBeidouRecords(out, rinexVersion, navigation);
    writeBeidouStoRecords(out, navigation);
    writeBeidouIonRecords(out, navigation);

    writeNavicRecords(out, rinexVersion, navigation);
    writeNavicStoRecords(out, navigation);
    writeNavicIonRecords(out, navigation);
}

}  // namespace orbconv
