#include "inspect/page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <span>
#include <sstream>
#include <stack>
#include <string>
#include <string_view>
#include <vector>

namespace orbconv::inspect {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

std::string pageOf(std::span<const LogSummary> logs) {
    std::ostringstream out;
    writePage(out, logs);
    return out.str();
}

std::string pageOf(const LogSummary& log) {
    return pageOf(std::span(&log, 1));
}

std::size_t timesOf(std::string_view text, std::string_view part) {
    std::size_t times = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
        ++times;
    }
    return times;
}

constexpr LogTime start{std::chrono::days{19849} + std::chrono::hours{23}};  // 2024-05-06T23:00

// GPS satellite 7 in all of four bins of two epochs but the third, which is a gap; its signal 1C in both
// epochs of the first bin, in one of the second. GLONASS on channel -3 is in the list of the last bin.
LogSummary tinyLog() {
    LogSummary log;
    log.file = "tiny.kvs";
    log.bytes = 1234567;
    log.messages = 42;
    log.epochs = 6;
    log.dated = true;
    log.timeScale = "GPS";
    log.first = start;
    log.last = start + std::chrono::seconds{7};
    log.interval = std::chrono::seconds{1};
    log.missingEpochs = 2;
    log.gaps = {{.from = start + std::chrono::seconds{3}, .to = start + std::chrono::seconds{6}}};
    log.gapCount = 1;
    log.damage = {{.offset = 5000, .bytes = 17}};
    log.damageCount = 1;
    log.damageBytes = 17;

    Timeline timeline;
    timeline.start = start;
    timeline.binWidth = std::chrono::seconds{2};
    timeline.bins = 4;
    timeline.epochs = {2, 2, 0, 2};
    timeline.gaps = {0, 1, 0, 0};
    timeline.damages = {0, 0, 0, 1};
    timeline.damageBytes = {0, 0, 0, 17};
    timeline.satellites = {{.sum = 2, .least = 1, .most = 1},
                           {.sum = 2, .least = 1, .most = 1},
                           {},
                           {.sum = 4, .least = 2, .most = 2}};
    timeline.satellitesBySystem[0] = {2, 2, 0, 2};
    timeline.satellitesBySystem[1] = {0, 0, 0, 2};
    timeline.tracks = {{.satellite = {.constellation = Constellation::gps, .number = 7},
                        .listed = {2, 2, 0, 2},
                        .present = {{{2, 1, 0, 0}}}},
                       {.satellite = {.constellation = Constellation::glonass, .number = 0, .channel = -3},
                        .listed = {0, 0, 0, 2},
                        .present = {}}};
    // 40 dB-Hz, 45 dB-Hz.
    timeline.signals = {{.constellation = Constellation::gps,
                         .band = bands::c,
                         .bins = {{.sum = 320, .count = 2, .least = 150, .most = 170},
                                  {.sum = 180, .count = 1, .least = 180, .most = 180},
                                  {},
                                  {}}}};
    log.timeline = timeline;
    return log;
}

// The part of the page between two texts.
std::string between(const std::string& page, std::string_view from, std::string_view to) {
    const std::size_t first = page.find(from);
    return first == std::string::npos ? "" : page.substr(first, page.find(to, first) - first);
}

// Every element that is opened is closed in the right order, every id stands once.
void expectWellFormed(const std::string& page) {
    static const std::set<std::string> empty = {"!DOCTYPE", "meta"};
    std::stack<std::string> open;
    std::set<std::string> ids;
    std::size_t at = page.find('<');
    while (at != std::string::npos) {
        const std::size_t end = page.find('>', at);
        ASSERT_NE(end, std::string::npos);
        const std::string tag = page.substr(at + 1, end - at - 1);
        const std::string name = tag.substr(0, tag.find_first_of(" /\n", 1));
        if (tag[0] == '/') {
            ASSERT_FALSE(open.empty()) << tag;
            ASSERT_EQ(open.top(), tag.substr(1)) << "at " << page.substr(at, 200);
            open.pop();
        } else if (tag.back() != '/' && !empty.contains(name)) {
            open.push(name);
        }
        if (const std::size_t id = tag.find(" id=\""); id != std::string::npos) {
            EXPECT_TRUE(ids.insert(tag.substr(id + 5, tag.find('"', id + 5) - id - 5)).second) << tag;
        }
        at = page.find('<', end);
    }
    EXPECT_TRUE(open.empty()) << open.top();
}

TEST(PageTest, Page_IsOneWellFormedDocument) {
    const std::string page = pageOf(tinyLog());
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">"));
    EXPECT_TRUE(page.ends_with("</main>\n</body>\n</html>\n"));
    expectWellFormed(page);
    EXPECT_THAT(page, HasSubstr("<title>tiny.kvs \u2013 orbconv-inspect</title>"));
}

TEST(PageTest, Page_NeedsNoScriptAndNothingFromOutside) {
    const std::string page = pageOf(tinyLog());
    for (const std::string_view foreign :
         {"<script", "http:", "https:", "//", "@import", "url(", "src=", "onclick"}) {
        EXPECT_THAT(page, Not(HasSubstr(std::string(foreign))));
    }
}

TEST(PageTest, TextsOfTheLog_AreEscaped) {
    LogSummary log = tinyLog();
    log.file = "<b>\"&'.kvs";
    log.identity.markerName = {.text = "<script>alert(1)</script>", .offset = 0};
    log.notes = {"a < b\x01\xFF"};
    log.messagesById = {{.id = MessageId('<', '&'), .count = 1, .bytes = 6}};
    log.findings = {{.code = "O13", .title = "a title", .count = 1, .counted = "epochs", .example = "</td>"}};
    const std::string page = pageOf(log);
    EXPECT_THAT(page, HasSubstr("<h2>&lt;b&gt;&quot;&amp;&#39;.kvs</h2>"));
    EXPECT_THAT(page, HasSubstr("<dd>&lt;script&gt;alert(1)&lt;/script&gt;</dd>"));
    EXPECT_THAT(page, HasSubstr("<p>a &lt; b\uFFFD\uFFFD</p>"));
    EXPECT_THAT(page, HasSubstr("<code>&lt;&amp;</code>"));
    EXPECT_THAT(page, HasSubstr("&lt;/td&gt;"));
    expectWellFormed(page);
}

TEST(PageTest, Numbers_StandAtTheTop) {
    LogSummary log = tinyLog();
    log.identity.position = {1.0, -2.5, 3.0};
    log.stepsBack = 3;
    log.epochsWithoutTime = 4;
    const std::string top = between(pageOf(log), "<section", "<h3>Satellites");
    for (const std::string_view part :
         {"<h2>tiny.kvs</h2>", "1 place of damage, 17 bytes", "1 gap, 2 epochs missing", "<dd>1,234,567</dd>",
          "<dt>First epoch</dt><dd>2024-05-06 23:00:00.000</dd>", "<dt>Interval</dt><dd>1 s</dd>",
          "<dt>From first to last</dt><dd>7 s</dd>", "1.0000 -2.5000 3.0000",
          "<dt>Steps back in time</dt><dd>3</dd>", "<dt>Epochs without a time</dt><dd>4</dd>",
          "<dt>Marker</dt><dd>\u2013</dd>"}) {
        EXPECT_THAT(top, HasSubstr(std::string(part)));
    }
    EXPECT_THAT(top, HasSubstr("2024-05-06 23:00:03.000</th><td class=\"w\">2024-05-06 23:00:06.000"));
    EXPECT_THAT(top, HasSubstr("5,000</th><td class=\"n\">17</td>"));
}

TEST(PageTest, TinyTimeline_HasTheseCoordinates) {
    const std::string page = pageOf(tinyLog());
    // One lane: half pixels from 10 to 16, in the middle of a row of 26.
    const std::string row = between(page, "<tr data-satellite=\"G07\">", "</tr>");
    EXPECT_THAT(row, HasSubstr("viewBox=\"0 0 4 26\""));
    EXPECT_THAT(row, HasSubstr("<title>G07: in 6 of 6 epochs; 1C in 3</title>"));
    EXPECT_THAT(row, HasSubstr("<path class=\"listed\" stroke-width=\"26\" d=\"M0 13h2m1 0h1\"/>"));
    EXPECT_THAT(row, HasSubstr("<path class=\"lane stroke-band-c\" d=\"M0 13h1\"/>"));
    EXPECT_THAT(row, HasSubstr("<path class=\"lane some stroke-band-c\" d=\"M1 13h1\"/>"));
    EXPECT_THAT(row, HasSubstr("<td class=\"share\">100 %</td>"));

    const std::string other = between(page, "<tr data-satellite=\"R(-3)\">", "</tr>");
    EXPECT_THAT(other, HasSubstr("d=\"M3 13h1\"/>"));
    EXPECT_THAT(other, Not(HasSubstr("lane")));
    EXPECT_THAT(other, HasSubstr("<td class=\"share\">33 %</td>"));
    EXPECT_THAT(page, HasSubstr("listed only"));
}

TEST(PageTest, TinyTimeline_ShowsItsGapAndItsDamage) {
    const std::string page = pageOf(tinyLog());
    EXPECT_THAT(page, HasSubstr("<path class=\"gaps\" d=\"M0 0M2 0h1v9999H2z\"/>"));
    EXPECT_THAT(page, HasSubstr("<path class=\"hurt\" d=\"M0 0M3.5 0V9999\"/>"));
    EXPECT_THAT(
        page, HasSubstr("<path class=\"mark\" d=\"M1.5 0v26\"><title>2024-05-06 23:00:02.000: 1 gap begins"));
    EXPECT_THAT(page, HasSubstr("<path class=\"hurt\" d=\"M3.5 0v26\"><title>2024-05-06 23:00:06.000: "
                                "1 place of damage, 17 bytes"));
    // Seconds 0 to 8: a tick each two seconds, the last at the end.
    EXPECT_THAT(page, HasSubstr("<text x=\"0.00%\" y=\"12\" text-anchor=\"start\">23:00:00</text>"));
    EXPECT_THAT(page, HasSubstr("<text x=\"50.00%\" y=\"12\" text-anchor=\"middle\">23:00:04</text>"));
    EXPECT_THAT(page, HasSubstr("<text x=\"100.00%\" y=\"12\" text-anchor=\"end\">23:00:08</text>"));
}

// A chart has 1300 tenths of a pixel, 80 of them free above and below.
TEST(PageTest, TinyTimeline_HasTheseCharts) {
    const std::string page = pageOf(tinyLog());
    // One satellite is half of the scale, which goes to 2: 80 + 1140 / 2. GLONASS stands on GPS.
    EXPECT_THAT(page,
                HasSubstr("<path class=\"area fill-system-gps\" d=\"M0 650H1H2V1220H0zM3 650H4V1220H3z\"/>"));
    EXPECT_THAT(
        page,
        HasSubstr("<path class=\"area fill-system-glonass\" d=\"M0 650H1H2V1220H0zM3 80H4V1220H3z\"/>"));
    EXPECT_THAT(page, HasSubstr("from 1 to 2 in an epoch, 1.3 on average"));
    // 40 and 45 dB-Hz, the ends of the scale.
    EXPECT_THAT(page, HasSubstr("<path class=\"curve stroke-band-c dash-band-c\" d=\"M0 1220H1V80H2\">"));
}

TEST(PageTest, LogWithoutTimes_HasNoPicture) {
    LogSummary log;
    log.file = "bare.kvs";
    log.timeline.emplace();
    const std::string page = pageOf(log);
    EXPECT_THAT(page, HasSubstr("No picture: no epoch of the log has a time."));
    EXPECT_THAT(page, HasSubstr("no damage"));
    EXPECT_THAT(page, HasSubstr("<p>Nothing.</p>"));
    expectWellFormed(page);
    log.timeline.reset();
    EXPECT_EQ(pageOf(log), page);
}

// A log of which little is known: one epoch with a list that names nobody, without a date.
TEST(PageTest, BareLog_HasNoRowsForWhatItLacks) {
    LogSummary log = tinyLog();
    log.dated = false;
    log.timeScale = {};
    log.first = LogTime(std::chrono::hours{2});
    log.last = LogTime(std::chrono::hours{1});
    log.interval.reset();
    log.gaps.clear();
    log.damage.clear();
    log.gapCount = log.damageCount = log.damageBytes = 0;
    log.timeline->tracks.clear();
    log.timeline->signals.clear();
    log.timeline->satellitesBySystem = {};
    const std::string page = pageOf(log);
    EXPECT_THAT(page, HasSubstr("<dt>Time scale</dt><dd>no date</dd>"));
    EXPECT_THAT(page, HasSubstr("<dt>First epoch</dt><dd>02:00:00.000</dd>"));
    EXPECT_THAT(page, HasSubstr("<dt>Interval</dt><dd>\u2013</dd>"));
    for (const std::string_view lacking :
         {"From first to last", "<h3>Gaps", "<h3>Damage", "<h3>Carrier-to-noise",
          "<tbody>\n<tr><th scope=\"row\">", "class=\"mark\" d="}) {
        EXPECT_THAT(page, Not(HasSubstr(std::string(lacking))));
    }
    expectWellFormed(page);
}

TEST(PageTest, GapsAndDamage_HaveTheirPlaceWithoutEachOther) {
    LogSummary gapAlone = tinyLog();
    gapAlone.damageCount = 0;
    EXPECT_THAT(pageOf(gapAlone), AllOf(HasSubstr("<h3>Gaps</h3>"), Not(HasSubstr("<h3>Damage</h3>"))));
    LogSummary damageAlone = tinyLog();
    damageAlone.gapCount = 0;
    EXPECT_THAT(pageOf(damageAlone), AllOf(HasSubstr("<h3>Damage</h3>"), Not(HasSubstr("<h3>Gaps</h3>"))));
}

// 900 satellites: the widest step, of 100, has ten lines then.
TEST(PageTest, Scale_GoesBeyondItsLines) {
    LogSummary log = tinyLog();
    log.timeline->satellitesBySystem[0] = {1800, 2, 0, 2};
    const std::string page = pageOf(log);
    EXPECT_THAT(page, HasSubstr(">900</text>"));
    EXPECT_THAT(page, HasSubstr(">100</text>"));
    EXPECT_THAT(page, HasSubstr("fill-system-gps\" d=\"M0 80H1V"));
}

TEST(PageTest, Heading_IsTheLastPartOfThePath) {
    LogSummary log = tinyLog();
    log.file = "/data/2024/tiny.kvs";
    EXPECT_THAT(pageOf(log), HasSubstr("<h2>tiny.kvs</h2>\n<p class=\"faint path\">/data/2024/tiny.kvs</p>"));
    log.file = "C:\\data\\tiny.kvs";
    EXPECT_THAT(pageOf(log), HasSubstr("<h2>tiny.kvs</h2>"));
}

TEST(PageTest, LongTexts_AreCut) {
    LogSummary log = tinyLog();
    log.identity.markerName = {.text = std::string(4000, 'm'), .offset = 0};
    log.findings = {
        {.code = "O25", .title = "", .count = 2, .counted = "texts", .example = std::string(4000, 'e')}};
    const std::string page = pageOf(log);
    EXPECT_THAT(page, HasSubstr("<dd>" + std::string(200, 'm') + "\u2026</dd>"));
    EXPECT_THAT(page, HasSubstr("<td class=\"w\">" + std::string(200, 'e') + "\u2026</td>"));
}

TEST(PageTest, SeveralLogs_FollowEachOther) {
    const std::vector<LogSummary> logs = {tinyLog(), tinyLog()};
    const std::string page = pageOf(logs);
    expectWellFormed(page);
    EXPECT_THAT(page, HasSubstr("<title>2 logs \u2013"));
    EXPECT_THAT(page, HasSubstr("<a href=\"#log-2\">tiny.kvs</a>"));
    EXPECT_THAT(page, HasSubstr("<section id=\"log-2\">"));
    EXPECT_THAT(page, HasSubstr("<use href=\"#behind-2\"/>"));
    EXPECT_EQ(timesOf(page, "<tr data-satellite="), 4);
}

TEST(PageTest, Findings_OfEverySuchLogStandBehindTheOthers) {
    LogSummary log = tinyLog();
    log.findings = {
        {.code = "O28",
         .title = "first row",
         .count = 7,
         .counted = "values",
         .example = "",
         .everySuch = true},
        {.code = "O13", .title = "second row", .count = 1, .counted = "epochs", .example = "there"}};
    const std::string table = between(pageOf(log), "<h3>What orbconv", "</table>");
    EXPECT_THAT(table, HasSubstr("<tr><th scope=\"row\" class=\"w\">O13</th><td class=\"w\">1 epoch</td>"
                                 "<td class=\"w\">second row</td><td class=\"w\">there</td></tr>"));
    EXPECT_THAT(
        table,
        HasSubstr("<tr class=\"every\"><th scope=\"row\" class=\"w\">O28</th><td class=\"w\">7 values"));
    EXPECT_LT(table.find("O13"), table.find("O28"));
}

NavigationKind kindOf(MessageId id, std::string_view name) {
    const auto row = std::ranges::find_if(
        navigationKinds, [&](const NavigationKindRow& each) { return each.id == id && each.name == name; });
    return static_cast<NavigationKind>(row - navigationKinds.begin());
}

TEST(PageTest, Tables_TellEverySignalAndKind) {
    LogSummary log = tinyLog();
    log.constellations = {{.constellation = Constellation::gps,
                           .satellites = {{.constellation = Constellation::gps, .number = 7}},
                           .listings = 6,
                           .epochs = 6,
                           .mostInOneEpoch = 1}};
    log.signals.resize(2);
    for (SignalSummary& signal : log.signals) {
        signal.constellation = Constellation::gps;
        signal.satelliteCount = 1;
    }
    log.signals[0].band = bands::c;
    log.signals[0].epochs = 2;
    log.signals[0].strengths[160] = 2;  // 40 dB-Hz
    log.signals[0].strengths[182] = 1;  // 45.5 dB-Hz
    log.signals[1].band = bands::l;
    log.signals[1].epochs = 6;
    log.navigation = {{.kind = kindOf("GE", "LNAV"), .messages = 1500, .satellites = 1U << 7},
                      {.kind = kindOf("IO", "ionosphere"), .messages = 2, .satellites = {}}};
    log.unknownSystems = 2;
    log.messagesById.assign(101, {.id = "TD", .known = true, .count = 1000, .bytes = 11000});
    const std::string page = pageOf(log);
    EXPECT_THAT(page,
                HasSubstr("GPS</th><td class=\"n\">1</td><td class=\"n\">100 %</td><td class=\"n\">1</td>"));
    EXPECT_THAT(
        page, HasSubstr("GPS 1C</th><td class=\"n\">1</td><td class=\"n\">33 %</td><td class=\"n\">40.00</td>"
                        "<td class=\"n\">40.00\u201345.50</td>"));
    EXPECT_THAT(
        page, HasSubstr("GPS 1X</th><td class=\"n\">1</td><td class=\"n\">100 %</td><td class=\"n\"></td>"));
    EXPECT_THAT(page, HasSubstr("GPS LNAV</th><td class=\"n\">1,500</td><td class=\"n\">1</td>"));
    EXPECT_THAT(page, HasSubstr("GPS ionosphere</th><td class=\"n\">2</td><td class=\"n\"></td>"));
    EXPECT_THAT(page, HasSubstr("2 entries of unknown systems"));
    EXPECT_THAT(page, HasSubstr("<caption>101 ids, the first 100</caption>"));
    EXPECT_THAT(
        page,
        HasSubstr("<code>TD</code></th><td class=\"w\">end of an epoch</td><td class=\"n\">1,000</td>"));
    expectWellFormed(page);
}

TEST(PageTest, Timeline_SaysWhatItLeavesOut) {
    LogSummary log = tinyLog();
    EXPECT_THAT(pageOf(log), Not(HasSubstr("not shown")));
    log.timeline->epochsLeftOut = 1;
    log.timeline->satellitesLeftOut = 3;
    const std::string page = pageOf(log);
    EXPECT_THAT(page, HasSubstr("1 epoch without a time, or with one out of order or far ahead, not shown."));
    EXPECT_THAT(page, HasSubstr("<p>3 satellites have no row: the log has too many.</p>"));
}

}  // namespace
}  // namespace orbconv::inspect
