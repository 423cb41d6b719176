#include "inspect/page_pictures.h"

namespace orbconv::inspect {

namespace {

// Higher than any picture, which cuts it.
constexpr std::int64_t fullHeight = 9999;

Literal anchorOf(double share) {
    return share < 0.08 ? Literal("start") : share > 0.92 ? Literal("end") : Literal("middle");
}

void addBlock(Markup& page, const Column& column) {
    page.raw("M").number(column.first).raw(" 0h").number(column.end - column.first);
    page.raw("v").number(fullHeight).raw("H").number(column.first).raw("z");
}

}  // namespace

void addSharedParts(Markup& page, const LogPicture& picture) {
    page.raw("<svg class=\"parts\" width=\"0\" height=\"0\" aria-hidden=\"true\"><defs><g id=\"behind-");
    page.number(picture.number).raw("\"><path class=\"gaps\" d=\"M0 0");
    for (const Column& column : picture.columns) {
        if (column.gap) {
            addBlock(page, column);
        }
    }
    page.raw("\"/><path class=\"grid\" d=\"M0 0");
    for (const Tick& tick : picture.ticks) {
        const double x = tick.share * static_cast<double>(picture.timeline.bins);
        page.raw("M").text(decimal(x, 2)).raw(" 0V").number(fullHeight);
    }
    page.raw("\"/></g><g id=\"ahead-").number(picture.number).raw("\"><path class=\"hurt\" d=\"M0 0");
    for (const Column& column : picture.columns) {
        if (sumOver(picture.timeline.damages, column) > 0) {
            page.raw("M").number(column.first).raw(".5 0V").number(fullHeight);
        }
    }
    page.raw("\"/></g></defs></svg>\n");
}

void addBehind(Markup& page, const LogPicture& picture) {
    page.raw("<use href=\"#behind-").number(picture.number).raw("\"/>");
}

void addAhead(Markup& page, const LogPicture& picture) {
    page.raw("<use href=\"#ahead-").number(picture.number).raw("\"/>");
}

void addAxis(Markup& page, const LogPicture& picture) {
    page.raw("<svg class=\"axis\" height=\"16\" aria-hidden=\"true\">");
    for (std::size_t i = 0; i < picture.ticks.size(); ++i) {
        const Tick& tick = picture.ticks[i];
        page.raw("<text").raw(i % 2 == 1 ? Literal(" class=\"odd\"") : Literal(""));
        page.raw(" x=\"").text(decimal(100.0 * tick.share, 2)).raw("%\" y=\"12\" text-anchor=\"");
        page.raw(anchorOf(tick.share)).raw("\">").text(tick.text).raw("</text>");
    }
    page.raw("</svg>");
}

}  // namespace orbconv::inspect
