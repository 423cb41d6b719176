#include "inspect/page_numbers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "inspect/message_meanings.h"
#include "inspect/page_table.h"

namespace orbconv::inspect {

namespace {

constexpr std::size_t mostPlaces = 10;     // gaps and places of damage
constexpr std::size_t mostMessages = 100;  // a log has some sixty ids

void addState(Markup& page, Literal kind, const std::string& text) {
    page.raw("<li class=\"").raw(kind).raw("\">").text(text).raw("</li>");
}

void addNumber(Markup& page, std::string_view name, std::string_view value) {
    if (!value.empty()) {
        page.raw("<div><dt>").text(name).raw("</dt><dd>").shortText(value).raw("</dd></div>\n");
    }
}

void addNumber(Markup& page, std::string_view name, const std::optional<reading::LogText>& value) {
    addNumber(page, name, value ? std::string_view(value->text) : std::string_view("\u2013"));
}

void addTimes(Markup& page, const LogSummary& log) {
    if (log.first) {
        addNumber(page, "First epoch", timeText(*log.first, log.dated));
        addNumber(page, "Last epoch", timeText(*log.last, log.dated));
        addNumber(page, "Time scale", log.timeScale.empty() ? "no date" : log.timeScale);
        addNumber(page, "From first to last",
                  *log.last < *log.first ? "" : durationText(*log.last - *log.first));
    }
    addNumber(page, "Interval", log.interval ? durationText(*log.interval) : "\u2013");
    addNumber(page, "Epochs", grouped(log.epochs));
    addNumber(page, "Missing epochs", grouped(log.missingEpochs));
    if (log.epochsWithoutTime > 0) {
        addNumber(page, "Epochs without a time", grouped(log.epochsWithoutTime));
    }
    if (log.stepsBack > 0) {
        addNumber(page, "Steps back in time", grouped(log.stepsBack));
    }
}

void addIdentity(Markup& page, const reading::SiteIdentity& identity) {
    addNumber(page, "Marker", identity.markerName);
    addNumber(page, "Receiver", identity.receiverType);
    addNumber(page, "Receiver number", identity.receiverNumber);
    addNumber(page, "Receiver version", identity.receiverVersion);
    addNumber(page, "Antenna", identity.antennaType);
    std::string position = "\u2013";
    if (identity.position) {
        const auto& [x, y, z] = *identity.position;
        position = decimal(x, 4) + " " + decimal(y, 4) + " " + decimal(z, 4);
    }
    page.raw("<div class=\"wide\"><dt>Position x y z (m)</dt><dd>").text(position).raw("</dd></div>\n");
}

std::vector<TableRow> constellationRows(const LogSummary& log) {
    std::vector<TableRow> rows;
    for (const ConstellationSummary& system : log.constellations) {
        rows.push_back({.cells = {std::string(constellationName(system.constellation)),
                                  grouped(system.satellites.size()), percent(system.epochs, log.epochs),
                                  grouped(system.mostInOneEpoch)}});
    }
    return rows;
}

std::vector<TableRow> signalRows(const LogSummary& log) {
    std::vector<TableRow> rows;
    for (const SignalSummary& signal : log.signals) {
        const auto range = strengthRange(signal);
        rows.push_back(
            {.cells = {signalText(signal.constellation, signal.band), grouped(signal.satelliteCount),
                       percent(signal.epochs, log.epochs), range ? decimal(range->median, 2) : "",
                       range ? decimal(range->least, 2) + "\u2013" + decimal(range->most, 2) : ""}});
    }
    return rows;
}

std::vector<TableRow> navigationRows(const LogSummary& log) {
    std::vector<TableRow> rows;
    for (const NavigationSummary& kind : log.navigation) {
        const NavigationKindRow& row = rowOf(kind.kind);
        rows.push_back(
            {.cells = {std::string(constellationName(row.constellation)).append(" ").append(row.name),
                       grouped(kind.messages), row.namesSatellite ? grouped(kind.satellites.count()) : ""}});
    }
    return rows;
}

std::vector<TableRow> gapRows(const LogSummary& log) {
    std::vector<TableRow> rows;
    for (std::size_t i = 0; i < std::min(mostPlaces, log.gaps.size()); ++i) {
        const Gap& gap = log.gaps[i];
        rows.push_back({.cells = {timeText(gap.from, log.dated), timeText(gap.to, log.dated),
                                  durationText(gap.to - gap.from)}});
    }
    return rows;
}

std::vector<TableRow> damageRows(const LogSummary& log) {
    std::vector<TableRow> rows;
    for (std::size_t i = 0; i < std::min(mostPlaces, log.damage.size()); ++i) {
        rows.push_back({.cells = {grouped(log.damage[i].offset), grouped(log.damage[i].bytes)}});
    }
    return rows;
}

std::vector<TableRow> messageRows(const LogSummary& log) {
    std::vector<TableRow> rows;
    for (std::size_t i = 0; i < std::min(mostMessages, log.messagesById.size()); ++i) {
        const MessageCount& count = log.messagesById[i];
        rows.push_back({.cells = {{count.id.first, count.id.second},
                                  std::string(messageMeaning(count.id)),
                                  grouped(count.count),
                                  grouped(count.bytes)}});
    }
    return rows;
}

constexpr auto words = CellKind::words;
constexpr auto number = CellKind::number;
constexpr auto constellationColumns = std::to_array<TableColumn>(
    {{"Constellation", words}, {"Satellites", number}, {"Epochs", number}, {"Most at once", number}});
constexpr auto signalColumns = std::to_array<TableColumn>({{"Signal", words},
                                                           {"Satellites", number},
                                                           {"Epochs", number},
                                                           {"Median C/N0", number},
                                                           {"Range, dB-Hz", number}});
constexpr auto navigationColumns =
    std::to_array<TableColumn>({{"Kind", words}, {"Messages", number}, {"Satellites", number}});
constexpr auto gapColumns = std::to_array<TableColumn>({{"From", words}, {"To", words}, {"Length", number}});
constexpr auto damageColumns = std::to_array<TableColumn>({{"Offset", number}, {"Bytes", number}});
constexpr auto messageColumns = std::to_array<TableColumn>(
    {{"Id", CellKind::code}, {"What it is", words}, {"Count", number}, {"Bytes", number}});
constexpr auto findingColumns = std::to_array<TableColumn>(
    {{"Code", words}, {"Count", words}, {"What orbconv does", words}, {"First", words}});

// "the first 10 of 27", or nothing where all are shown.
std::string firstOf(std::size_t shown, std::uint64_t all) {
    return shown < all ? ", the first " + std::to_string(shown) : std::string{};
}

std::string cut(const std::string& text) {
    constexpr std::size_t most = 200;
    return text.size() > most ? text.substr(0, most) + "\u2026" : text;
}

// "3 epochs"; of one, the name without its s.
std::string countText(const Finding& finding) {
    return counted(finding.count, finding.counted.substr(0, finding.counted.size() - 1), finding.counted);
}

void addFindingRows(std::vector<TableRow>& rows, const LogSummary& log, bool everySuch) {
    for (const Finding& finding : log.findings) {
        if (finding.everySuch == everySuch) {
            rows.push_back({.cells = {std::string(finding.code), countText(finding),
                                      std::string(finding.title), cut(finding.example)},
                            .faint = everySuch});
        }
    }
}

}  // namespace

void addNumbers(Markup& page, const LogSummary& log) {
    page.raw("<ul class=\"state\">");
    if (log.damageCount == 0) {
        addState(page, "good", "no damage");
    } else {
        addState(page, "bad",
                 counted(log.damageCount, "place of damage, ", "places of damage, ") +
                     counted(log.damageBytes, "byte", "bytes"));
    }
    if (log.gapCount == 0) {
        addState(page, "good", "no gap");
    } else {
        addState(page, "bad",
                 counted(log.gapCount, "gap, ", "gaps, ") + counted(log.missingEpochs, "epoch", "epochs") +
                     " missing");
    }
    const auto own = static_cast<std::uint64_t>(
        std::ranges::count_if(log.findings, [](const Finding& finding) { return !finding.everySuch; }));
    addState(page, "plain", counted(own, "finding", "findings"));
    page.raw("</ul>\n");
    for (const std::string& note : log.notes) {
        page.raw("<p>").text(note).raw("</p>\n");
    }
    page.raw("<dl class=\"numbers\">\n");
    addNumber(page, "Bytes", grouped(log.bytes));
    addNumber(page, "Messages", grouped(log.messages));
    addTimes(page, log);
    addIdentity(page, log.identity);
    page.raw("</dl>\n");
}

void addTables(Markup& page, const LogSummary& log) {
    page.raw("<div class=\"pair\"><div>\n<h3>Signals</h3>\n");
    addTable(page, "", signalColumns, signalRows(log));
    page.raw("</div><div>\n<h3>Constellations</h3>\n");
    addTable(page, "", constellationColumns, constellationRows(log));
    if (log.unknownSystems > 0) {
        page.raw("<p>")
            .text(counted(log.unknownSystems, "entry", "entries"))
            .raw(" of unknown systems.</p>\n");
    }
    page.raw("<h3>Navigation messages</h3>\n");
    addTable(page, "", navigationColumns, navigationRows(log));
    page.raw("</div></div>\n");
    if (log.gapCount + log.damageCount > 0) {
        page.raw("<div class=\"pair\">\n");
        const auto gaps = gapRows(log);
        const auto damage = damageRows(log);
        if (log.gapCount > 0) {
            page.raw("<div><h3>Gaps</h3>\n");
            addTable(page, counted(log.gapCount, "gap", "gaps") + firstOf(gaps.size(), log.gapCount),
                     gapColumns, gaps);
            page.raw("</div>\n");
        }
        if (log.damageCount > 0) {
            page.raw("<div><h3>Damage</h3>\n");
            addTable(page,
                     counted(log.damageCount, "place", "places") + firstOf(damage.size(), log.damageCount),
                     damageColumns, damage);
            page.raw("</div>\n");
        }
        page.raw("</div>\n");
    }
}

void addMessages(Markup& page, const LogSummary& log) {
    const auto rows = messageRows(log);
    page.raw("<h3>Messages</h3>\n");
    addTable(page,
             counted(log.messagesById.size(), "id", "ids") + firstOf(rows.size(), log.messagesById.size()),
             messageColumns, rows);
}

void addFindings(Markup& page, const LogSummary& log) {
    page.raw(
        "<h3>What orbconv will make of it</h3>\n<p class=\"faint\">Where its files differ from the log or "
        "from "
        "the standard; the codes are those of docs/differences.md.");
    std::vector<TableRow> rows;
    addFindingRows(rows, log, false);
    const bool allOwn = rows.size() == log.findings.size();
    addFindingRows(rows, log, true);
    page.raw(allOwn ? Literal("") : Literal(" The pale ones come with every log that has such messages."))
        .raw("</p>\n");
    if (rows.empty()) {
        page.raw("<p>Nothing.</p>\n");
    } else {
        addTable(page, "", findingColumns, rows, true);
    }
}

}  // namespace orbconv::inspect
