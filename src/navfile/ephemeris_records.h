// The records of the ephemeris tables, in table order: the classic form below version 4.0, "> EPH" records
// from 4.0 on. Dead entries are skipped; every slot that a message has touched is looked at, not only those
// below the count.
#pragma once

#include "navdecode/navigation_tables.h"
#include "text/text_writer.h"

namespace orbconv {

// Below 4.0 only LNAV.
void writeGpsRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation);
void writeGlonassRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation);
void writeGalileoRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation);
// Below 4.0 only D1 and D2.
void writeBeidouRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation);
// Satellites 1 to 256.
void writeNavicRecords(TextWriter& out, double rinexVersion, const NavigationTables& navigation);

}  // namespace orbconv
