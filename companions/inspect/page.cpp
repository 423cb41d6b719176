#include "inspect/page.h"

#include <algorithm>
#include <ostream>

#include "inspect/page_markup.h"
#include "inspect/page_numbers.h"
#include "inspect/page_pictures.h"
#include "inspect/page_style.h"
#include "reading/version.h"

namespace orbconv::inspect {

namespace {

// The page has less than 2 MB unless the tables of its logs alone have more.
constexpr std::size_t mostBytes = 1'900'000;

// A path's last part.
std::string_view nameOf(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

void addHead(Markup& page, std::span<const LogSummary> logs) {
    page.raw(pageOpening);
    page.raw(
        "\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">\n"
        "<meta name=\"generator\" content=\"orbconv-inspect ");
    page.text(reading::versionNumber).raw("\">\n<title>");
    if (logs.size() == 1) {
        page.shortText(nameOf(logs.front().file));
    } else {
        page.text(counted(logs.size(), "log", "logs"));
    }
    page.raw(" \u2013 orbconv-inspect</title>\n<style>");
    addStyle(page);
    page.raw("</style>\n</head>\n<body>\n<header>\n<h1>orbconv-inspect</h1>\n");
    if (logs.size() > 1) {
        page.raw("<nav aria-label=\"Logs\"><ul>");
        for (std::size_t i = 0; i < logs.size(); ++i) {
            page.raw("<li><a href=\"#log-").number(i + 1).raw("\">").text(logs[i].file).raw("</a></li>");
        }
        page.raw("</ul></nav>\n");
    }
    page.raw("</header>\n<main>\n");
}

// What the pictures show and what they leave out.
void addExplanation(Markup& page, const LogPicture& picture, std::size_t fold) {
    const Timeline& timeline = picture.timeline;
    const auto bins = static_cast<std::int64_t>(std::min(fold, timeline.bins));
    page.raw("<p class=\"faint\">From ")
        .text(timeText(timeline.start, picture.log.dated))
        .raw(" on, in steps of ");
    page.text(durationText(timeline.binWidth * bins)).raw(".");
    if (timeline.epochsLeftOut > 0) {
        page.raw(" ").text(counted(timeline.epochsLeftOut, "epoch", "epochs"));
        page.raw(" without a time, or with one out of order or far ahead, not shown.");
    }
    page.raw("</p>\n");
}

void addPictures(Markup& page, const LogSummary& log, std::size_t number, std::size_t fold) {
    page.raw("<h3>Satellites and their signals</h3>\n");
    if (!log.timeline || log.timeline->bins == 0) {
        page.raw("<p>No picture: no epoch of the log has a time.</p>\n");
        return;
    }
    const Timeline& timeline = *log.timeline;
    const LogPicture picture{.log = log,
                             .timeline = timeline,
                             .columns = makeColumns(timeline, log.interval, fold),
                             .ticks = ticksOf(timeline, log.dated),
                             .number = number};
    addSharedParts(page, picture);
    addExplanation(page, picture, fold);
    addTimeline(page, picture);
    page.raw("<h3>Number of satellites</h3>\n");
    addSatelliteChart(page, picture);
    if (!timeline.signals.empty()) {
        page.raw(
            "<h3>Carrier-to-noise density</h3>\n<p class=\"faint\">Mean of all satellites, in dB-Hz.</p>\n");
        addStrengthCharts(page, picture);
    }
}

void addLog(Markup& page, const LogSummary& log, std::size_t number, std::size_t fold) {
    page.raw("<section id=\"log-").number(number).raw("\">\n<h2>").text(nameOf(log.file)).raw("</h2>\n");
    page.raw("<p class=\"faint path\">").text(log.file).raw("</p>\n");
    addNumbers(page, log);
    addTables(page, log);
    addPictures(page, log, number, fold);
    addFindings(page, log);
    addMessages(page, log);
    page.raw("</section>\n");
}

// A log's part of the page, drawn the coarser, the more it would be above `most` bytes.
Markup logWithin(const LogSummary& log, std::size_t number, std::size_t most) {
    const std::size_t bins = log.timeline ? log.timeline->bins : 0;
    for (std::size_t fold = 1;; fold *= 2) {
        Markup page;
        addLog(page, log, number, fold);
        if (page.bytes() <= most || fold >= bins) {
            return page;
        }
    }
}

}  // namespace

void writePage(std::ostream& out, std::span<const LogSummary> logs) {
    Markup head;
    addHead(head, logs);
    out << head.str();
    std::size_t left = mostBytes - std::min(mostBytes, head.bytes());
    for (std::size_t i = 0; i < logs.size(); ++i) {
        const Markup log = logWithin(logs[i], i + 1, left / (logs.size() - i));
        out << log.str();
        left -= std::min(left, log.bytes());
    }
    out << "</main>\n</body>\n</html>\n";
}

}  // namespace orbconv::inspect
