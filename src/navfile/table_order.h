// The order of the ephemeris tables in the files. Each sort takes the slots below the table's count:
// ascending by time, then by satellite, with keys of 0 and below keeping to rules of their own.
#pragma once

#include "navdecode/navigation_tables.h"

namespace orbconv {

void sortGpsTable(NavigationTables& tables);
void sortGlonassTable(NavigationTables& tables);
// Also puts, among neighbouring entries of one satellite, those without bit 0 of their flags first: F/NAV
// ahead of the I/NAV that bit 0 tells, while I/NAV told by bit 2 alone counts with F/NAV.
void sortGalileoTable(NavigationTables& tables);
void sortBeidouTable(NavigationTables& tables);
void sortNavicTable(NavigationTables& tables);

}  // namespace orbconv
