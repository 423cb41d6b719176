// What the page says in numbers: the state of the log at a glance, its tables, and what orbconv makes of it.
#pragma once

#include "inspect/log_summary.h"
#include "inspect/page_markup.h"

namespace orbconv::inspect {

// Damage, gaps and findings in a word each, the file's notes, and the log's numbers.
void addNumbers(Markup& page, const LogSummary& log);

// Signals, constellations, navigation, gaps and damage.
void addTables(Markup& page, const LogSummary& log);

void addMessages(Markup& page, const LogSummary& log);

void addFindings(Markup& page, const LogSummary& log);

}  // namespace orbconv::inspect
