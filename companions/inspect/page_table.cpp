#include "inspect/page_table.h"

namespace orbconv::inspect {

namespace {

Literal classOf(CellKind kind) {
    switch (kind) {
        case CellKind::number: return " class=\"n\"";
        case CellKind::words: return " class=\"w\"";
        default: return "";
    }
}

void addRow(Markup& page, std::span<const TableColumn> columns, const TableRow& row) {
    page.raw(row.faint ? Literal("<tr class=\"every\">") : Literal("<tr>"));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool isCode = columns[i].kind == CellKind::code;
        page.raw(i == 0 ? Literal("<th scope=\"row\"") : Literal("<td"))
            .raw(classOf(columns[i].kind))
            .raw(isCode ? Literal("><code>") : Literal(">"))
            .text(row.cells[i])
            .raw(isCode ? Literal("</code>") : Literal(""))
            .raw(i == 0 ? Literal("</th>") : Literal("</td>"));
    }
    page.raw("</tr>\n");
}

}  // namespace

void addTable(Markup& page, std::string_view caption, std::span<const TableColumn> columns,
              std::span<const TableRow> rows, bool stacked) {
    page.raw("<div class=\"scroll\"><table class=\"data")
        .raw(stacked ? Literal(" stack") : Literal(""))
        .raw("\">");
    if (!caption.empty()) {
        page.raw("<caption>").text(caption).raw("</caption>");
    }
    page.raw("<thead><tr>");
    for (const TableColumn& column : columns) {
        page.raw("<th scope=\"col\"").raw(classOf(column.kind)).raw(">").text(column.title).raw("</th>");
    }
    page.raw("</tr></thead><tbody>\n");
    for (const TableRow& row : rows) {
        addRow(page, columns, row);
    }
    page.raw("</tbody></table></div>\n");
}

}  // namespace orbconv::inspect
