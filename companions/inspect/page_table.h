// Tables of the page, from texts that are escaped as they are written.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/page_markup.h"

namespace orbconv::inspect {

enum class CellKind : std::uint8_t {
    words,   // break where they have to
    number,  // to the right
    code,    // of the log, its blanks kept
};
struct TableColumn {
    std::string_view title;
    CellKind kind{};
};
struct TableRow {
    std::vector<std::string> cells;  // one a column; the first heads the row
    bool faint = false;
};

// A row becomes a block of lines on a narrow screen if `stacked`; else a table that is too wide scrolls.
void addTable(Markup& page, std::string_view caption, std::span<const TableColumn> columns,
              std::span<const TableRow> rows, bool stacked = false);

}  // namespace orbconv::inspect
