#include "navfile/nav_files.h"

#include <array>
#include <span>

#include "navfile/ephemeris_records.h"
#include "navfile/nav_header_lines.h"
#include "navfile/rinex_number.h"
#include "text/header_lines.h"

namespace orbconv {

namespace {

void writeCoefficients(TextWriter& out, std::string_view name, std::span<const float, 4> coefficients) {
    out.left(name, 5);
    for (const float coefficient : coefficients) {
        writeRinexNumber(out, coefficient, 4, 12);
    }
}

constexpr std::string_view ionosphericLabel = "IONOSPHERIC CORR";

// The walks of this file end at a zero, wherever it stands, and never at the table's count. Deliberate: a
// genuine first coefficient of 0 ends its list.

// GPS and NavIC: the records up to the first whose leading coefficient is 0.
void writeIonosphericCorr(TextWriter& out, const IonoTable& table, std::string_view alphaName,
                          std::string_view betaName) {
    for (const IonoRecord& record : table.records) {
        if (record.alpha[0] == 0.0F) {
            return;
        }
        writeCoefficients(out, alphaName, record.alpha);
        out.blanks(7).text(ionosphericLabel).endLine();
        writeCoefficients(out, betaName, record.beta);
        out.blanks(7).text(ionosphericLabel).endLine();
    }
}

// BeiDou: the same, with hour and satellite, and a dropped record ends the list too.
void writeBeidouIonosphericCorr(TextWriter& out, const BeidouIonoTable& table) {
    const auto writeLine = [&out](std::string_view name, const std::array<float, 4>& coefficients,
                                  const BeidouIonoRecord& record) {
        writeCoefficients(out, name, coefficients);
        out.right({&record.hourLetter, 1}, 2)
            .integer(record.sv, 3)
            .blanks(2)
            .text(ionosphericLabel)
            .endLine();
    };
    for (const BeidouIonoRecord& record : table.records) {
        if (record.alpha[0] == 0.0F || record.sv == 0) {
            return;
        }
        writeLine("BDSA", record.alpha, record);
        writeLine("BDSB", record.beta, record);
    }
}

void writeGalileoIonosphericCorr(TextWriter& out, const NavigationTables& navigation) {
    const GalileoEphemeris first = firstGalileoEphemeris(navigation);
    writeCoefficients(out, "GAL", std::array{first.ai0, first.ai1, first.ai2, 0.0F});
    out.blanks(7).text(ionosphericLabel).endLine();
}

// Name and coefficients of a time-offset line. Deliberate: the first coefficient is wider than its field,
// so the name's width and the coefficient's sign decide where the label stands.
void beginTimeSystemCorr(TextWriter& out, std::string_view name, int nameWidth, double first, double second) {
    out.left(name, nameWidth);
    writeRinexNumber(out, first, 10, 12);
    writeRinexNumber(out, second, 9, 16);
}

void endTimeSystemCorr(TextWriter& out) {
    out.blanks(10).text("TIME SYSTEM CORR").endLine();
}

void writeTimeSystemCorr(TextWriter& out, std::string_view name, int nameWidth,
                         const TimeOffsetRecord& record) {
    beginTimeSystemCorr(out, name, nameWidth, record.a0, record.a1);
    out.integer(static_cast<std::int64_t>(record.tot), 7).integer(record.week, 5);
    endTimeSystemCorr(out);
}

// The records up to the first whose leading coefficient is 0.
void writeTimeSystemCorrs(TextWriter& out, std::string_view name, int nameWidth,
                          const TimeOffsetTable& table) {
    for (const TimeOffsetRecord& record : table.records) {
        if (record.a0 == 0.0) {
            return;
        }
        writeTimeSystemCorr(out, name, nameWidth, record);
    }
}

// Deliberate: GPS alone asks for both coefficients to be 0.
void writeGpsTimeSystemCorrs(TextWriter& out, const TimeOffsetTable& table) {
    for (const TimeOffsetRecord& record : table.records) {
        if (record.a0 == 0.0 && record.a1 == 0.0F) {
            return;
        }
        writeTimeSystemCorr(out, "GPUT", 6, record);
    }
}

void writeGalileoTimeSystemCorrs(TextWriter& out, const GalileoTimeOffsetTable& table) {
    for (const GalileoTimeOffsetRecord& record : table.records) {
        if (record.utc.a0 == 0.0) {
            break;
        }
        writeTimeSystemCorr(out, "GAUT", 5, record.utc);
    }
    for (const GalileoTimeOffsetRecord& record : table.records) {
        if (record.a0Gps == 0.0F) {
            break;
        }
        beginTimeSystemCorr(out, "GAGP", 5, record.a0Gps, record.a1Gps);
        // Deliberate: the week is that of the UTC part.
        out.integer(record.totGps, 7).integer(record.utc.week, 5);
        endTimeSystemCorr(out);
    }
}

void writeGlonassTimeSystemCorr(TextWriter& out, std::string_view name, double first, double second) {
    beginTimeSystemCorr(out, name, 6, first, second);
    out.right("0", 7).right("0", 5);
    endTimeSystemCorr(out);
}

}  // namespace

void writeGpsNavFile(TextWriter& out, const NavFileTables& tables) {
    const NavigationTables& navigation = tables.navigation;
    writeNavFirstLines(out, tables, "G: GPS", 14);
    writeIonosphericCorr(out, navigation.gpsIono, "GPSA", "GPSB");
    writeGpsTimeSystemCorrs(out, navigation.gpsTimeOffset);
    writeEndOfHeader(out);
    writeGpsRecords(out, tables.rinexVersion, navigation);
}

void writeNavicNavFile(TextWriter& out, const NavFileTables& tables) {
    const NavigationTables& navigation = tables.navigation;
    writeNavFirstLines(out, tables, "I: IRNSS", 12);
    writeIonosphericCorr(out, navigation.navicIono, "IRSA", "IRSB");
    writeTimeSystemCorrs(out, "IRUT", 6, navigation.navicTimeOffset);
    writeEndOfHeader(out);
    writeNavicRecords(out, tables.rinexVersion, navigation);
}

void writeGlonassNavFile(TextWriter& out, const NavFileTables& tables) {
    const NavigationTables& navigation = tables.navigation;
    writeNavFirstLines(out, tables, "R: GLONASS", 10);
    writeGlonassTimeSystemCorr(out, "GLUT", 0.0, 0.0);  // Deliberate: always zeros
    writeGlonassTimeSystemCorr(out, "GLGP", navigation.glonassTimeOffset.tauGps,
                               navigation.glonassTimeOffset.tauC);
    writeEndOfHeader(out);
    writeGlonassRecords(out, tables.rinexVersion, navigation);
}

void writeGalileoNavFile(TextWriter& out, const NavFileTables& tables) {
    const NavigationTables& navigation = tables.navigation;
    writeNavFirstLines(out, tables, "E: Galileo", 10);
    writeGalileoIonosphericCorr(out, navigation);
    writeGalileoTimeSystemCorrs(out, navigation.galileoTimeOffset);
    writeEndOfHeader(out);
    writeGalileoRecords(out, tables.rinexVersion, navigation);
}

void writeBeidouNavFile(TextWriter& out, const NavFileTables& tables) {
    const NavigationTables& navigation = tables.navigation;
    writeNavFirstLines(out, tables, "C: BDS", 14);
    writeBeidouIonosphericCorr(out, navigation.beidouIono);
    writeTimeSystemCorrs(out, "BDUT", 5, navigation.beidouTimeOffset);
    writeEndOfHeader(out);
    writeBeidouRecords(out, tables.rinexVersion, navigation);
}

}  // namespace orbconv
