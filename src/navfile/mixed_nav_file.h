// The one navigation file of versions 4.00 and 4.01, with the ionosphere and time-offset data as records
// between the ephemerides.
#pragma once

#include "navfile/nav_files.h"

namespace orbconv {

// The whole file, from the tables as they stand. No include flag is looked at.
void writeMixedNavFile(TextWriter& out, const NavFileTables& tables);

// "STO" records: time offsets, in plain notation.
void writeGpsStoRecords(TextWriter& out, const NavigationTables& navigation);
void writeGlonassStoRecords(TextWriter& out, const NavigationTables& navigation);
void writeGalileoStoRecords(TextWriter& out, const NavigationTables& navigation);
void writeBeidouStoRecords(TextWriter& out, const NavigationTables& navigation);
void writeNavicStoRecords(TextWriter& out, const NavigationTables& navigation);

// "ION" records: ionosphere coefficients, in plain notation. GLONASS has none.
void writeGpsIonRecords(TextWriter& out, const NavigationTables& navigation);
void writeGalileoIonRecords(TextWriter& out, const NavigationTables& navigation);
void writeBeidouIonRecords(TextWriter& out, const NavigationTables& navigation);
void writeNavicIonRecords(TextWriter& out, const NavigationTables& navigation);

}  // namespace orbconv
