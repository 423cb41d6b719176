// The picture of the satellites: a table with one row a satellite, in it one lane a signal.

#include <algorithm>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "inspect/page_pictures.h"
#include "inspect/page_style.h"

namespace orbconv::inspect {

namespace {

// In half pixels: a lane and the space between two, and the least height of a row, that of its name.
constexpr std::size_t laneWidth = 6;
constexpr std::size_t laneStep = 8;
constexpr std::size_t laneEdge = laneStep - laneWidth;
constexpr std::size_t leastHeight = 26;

// The lanes of a constellation: the bands that any of its satellites has.
struct Lanes {
    std::vector<std::size_t> bands;
    std::size_t height = leastHeight;
    std::size_t firstMiddle = 0;  // of the topmost lane
};

Lanes lanesOf(const Timeline& timeline, Constellation constellation) {
    Lanes lanes;
    for (std::size_t band = 0; band < bandCount; ++band) {
        if (std::ranges::any_of(timeline.tracks, [&](const SatelliteTrack& track) {
                return track.satellite.constellation == constellation && !track.present[band].empty();
            })) {
            lanes.bands.push_back(band);
        }
    }
    const std::size_t full = lanes.bands.size() * laneStep + laneEdge;
    lanes.height = std::max(leastHeight, full);
    lanes.firstMiddle = (lanes.height - full) / 2 + laneEdge + laneWidth / 2;
    return lanes;
}

// The code alone: the constellation stands beside it.
std::string laneText(Constellation constellation, std::size_t band) {
    return signalText(constellation, band).substr(constellationName(constellation).size() + 1);
}

std::uint64_t total(const std::vector<std::uint32_t>& bins) {
    return std::accumulate(bins.begin(), bins.end(), std::uint64_t{0});
}

void openPlot(Markup& page, const LogPicture& picture, std::size_t height) {
    page.raw("<svg class=\"plot\" viewBox=\"0 0 ").number(picture.timeline.bins).raw(" ").number(height);
    page.raw("\" preserveAspectRatio=\"none\" height=\"").number(height / 2).raw("\" role=\"img\">");
}

void addKey(Markup& page, Constellation constellation, const Lanes& lanes) {
    page.raw("<ul class=\"key\">");
    for (const std::size_t band : lanes.bands) {
        page.raw("<li><svg viewBox=\"0 0 22 10\" aria-hidden=\"true\"><path class=\"lane stroke-");
        page.text(signalColours[band].name)
            .raw("\" d=\"M0 5h22\"/></svg>")
            .text(laneText(constellation, band));
        page.raw("</li>");
    }
    page.raw(lanes.bands.empty() ? Literal("<li>listed only</li></ul>") : Literal("</ul>"));
}

void addRuns(Markup& page, const std::string& path, Literal kind, std::size_t band) {
    if (!path.empty()) {
        page.raw("<path class=\"lane").raw(kind).raw(" stroke-").text(signalColours[band].name);
        page.raw("\" d=\"").text(path).raw("\"/>");
    }
}

void addLane(Markup& page, const LogPicture& picture, const std::vector<std::uint32_t>& present,
             std::size_t band, std::size_t middle) {
    const auto pathOf = [&](Presence presence) {
        return runsPath(runsOf(picture.timeline, picture.columns, present, presence, presence),
                        static_cast<std::int64_t>(middle));
    };
    addRuns(page, pathOf(Presence::always), "", band);
    addRuns(page, pathOf(Presence::sometimes), " some", band);
}

void addListed(Markup& page, const LogPicture& picture, const SatelliteTrack& track, std::size_t height) {
    const std::vector<ColumnRun> runs =
        runsOf(picture.timeline, picture.columns, track.listed, Presence::sometimes, Presence::always);
    page.raw("<path class=\"listed\" stroke-width=\"").number(height).raw("\" d=\"");
    page.text(runsPath(runs, static_cast<std::int64_t>(height / 2))).raw("\"/>");
}

// The row in words: "G07: in 118 of 120 epochs; 1C in 118, 2W in 110".
void addRowTitle(Markup& page, const LogPicture& picture, const SatelliteTrack& track, const Lanes& lanes) {
    page.raw("<title>").text(nameText(track.satellite)).raw(": in ").text(grouped(total(track.listed)));
    page.raw(" of ").text(counted(total(picture.timeline.epochs), "epoch", "epochs"));
    Literal between = "; ";
    for (const std::size_t band : lanes.bands) {
        page.raw(between).text(laneText(track.satellite.constellation, band)).raw(" in ");
        page.text(grouped(total(track.present[band])));
        between = ", ";
    }
    page.raw("</title>");
}

void addSatellite(Markup& page, const LogPicture& picture, const SatelliteTrack& track, const Lanes& lanes) {
    const std::string name = nameText(track.satellite);
    page.raw("<tr data-satellite=\"").text(name).raw("\"><th scope=\"row\">").text(name).raw("</th><td>");
    openPlot(page, picture, lanes.height);
    addRowTitle(page, picture, track, lanes);
    addListed(page, picture, track, lanes.height);
    addBehind(page, picture);
    std::size_t middle = lanes.firstMiddle;
    for (const std::size_t band : lanes.bands) {
        addLane(page, picture, track.present[band], band, middle);
        middle += laneStep;
    }
    addAhead(page, picture);
    page.raw("</svg></td><td class=\"share\">");
    page.text(percent(total(track.listed), total(picture.timeline.epochs))).raw("</td></tr>\n");
}

void addAxisRow(Markup& page, const LogPicture& picture) {
    page.raw("<tr><td></td><td>");
    addAxis(page, picture);
    page.raw("</td><td></td></tr>\n");
}

// ---- gaps and damage ----

// A row of marks, one a column that has any; `describe` says what its title is.
template <class Describe>
void addMarks(Markup& page, const LogPicture& picture, std::string_view name, Literal kind,
              const std::vector<std::uint32_t>& bins, std::uint64_t count, Describe&& describe) {
    if (count == 0) {
        return;
    }
    page.raw("<tr><th scope=\"row\">").text(name).raw("</th><td>");
    openPlot(page, picture, leastHeight);
    addBehind(page, picture);
    for (const Column& column : picture.columns) {
        if (const std::uint64_t here = sumOver(bins, column); here > 0) {
            page.raw("<path class=\"").raw(kind).raw("\" d=\"M").number(column.first).raw(".5 0v");
            page.number(leastHeight).raw("\"><title>").text(describe(column, here)).raw("</title></path>");
        }
    }
    page.raw("</svg></td><td class=\"share\">").text(grouped(count)).raw("</td></tr>\n");
}

std::string timeOf(const LogPicture& picture, const Column& column) {
    const LogTime time =
        picture.timeline.start + picture.timeline.binWidth * static_cast<std::int64_t>(column.first);
    return timeText(time, picture.log.dated);
}

void addEvents(Markup& page, const LogPicture& picture) {
    if (picture.log.gapCount + picture.log.damageCount == 0) {
        return;
    }
    page.raw("<tbody>\n");
    addMarks(page, picture, "gaps", "mark", picture.timeline.gaps, picture.log.gapCount,
             [&](const Column& column, std::uint64_t count) {
                 return timeOf(picture, column) + ": " + counted(count, "gap begins", "gaps begin");
             });
    addMarks(page, picture, "damage", "hurt", picture.timeline.damages, picture.log.damageCount,
             [&](const Column& column, std::uint64_t count) {
                 return timeOf(picture, column) + ": " +
                        counted(count, "place of damage", "places of damage") + ", " +
                        counted(sumOver(picture.timeline.damageBytes, column), "byte", "bytes");
             });
    addAxisRow(page, picture);
    page.raw("</tbody>\n");
}

void addLegend(Markup& page) {
    page.raw(
        "<ul class=\"key\"><li><svg viewBox=\"0 0 22 10\" aria-hidden=\"true\"><path class=\"listed\" "
        "stroke-width=\"10\" d=\"M0 5h22\"/></svg>in the list of satellites</li><li><svg viewBox=\"0 0 22 "
        "10\" "
        "aria-hidden=\"true\"><path class=\"lane stroke-band-c\" d=\"M0 5h11\"/><path class=\"lane some "
        "stroke-band-c\" d=\"M11 5h11\"/></svg>signal in all, in some epochs</li><li><svg viewBox=\"0 0 22 "
        "10\" "
        "aria-hidden=\"true\"><path class=\"gaps\" d=\"M0 0h22v10H0z\"/></svg>no epoch</li><li><svg "
        "viewBox=\"0 0 "
        "22 10\" aria-hidden=\"true\"><path class=\"hurt\" d=\"M11 0v10\"/></svg>damage</li></ul>\n");
}

}  // namespace

void addTimeline(Markup& page, const LogPicture& picture) {
    addLegend(page);
    page.raw(
        "<table class=\"timeline\"><thead><tr><th class=\"name\" scope=\"col\">name</th><th scope=\"col\">"
        "signals over time</th><th class=\"share\" scope=\"col\">epochs</th></tr></thead>\n");
    addEvents(page, picture);
    std::optional<Constellation> open;
    Lanes lanes;
    for (const SatelliteTrack& track : picture.timeline.tracks) {
        const Constellation constellation = track.satellite.constellation;
        if (open != constellation) {
            if (open) {
                addAxisRow(page, picture);
                page.raw("</tbody>\n");
            }
            open = constellation;
            lanes = lanesOf(picture.timeline, constellation);
            page.raw("<tbody><tr class=\"system\"><th colspan=\"3\" scope=\"rowgroup\"><b>");
            page.text(constellationName(constellation)).raw("</b>");
            addKey(page, constellation, lanes);
            page.raw("</th></tr>\n");
        }
        addSatellite(page, picture, track, lanes);
    }
    if (open) {
        addAxisRow(page, picture);
        page.raw("</tbody>");
    }
    page.raw("</table>\n");
    if (picture.timeline.satellitesLeftOut > 0) {
        page.raw("<p>").text(counted(picture.timeline.satellitesLeftOut, "satellite has", "satellites have"));
        page.raw(" no row: the log has too many.</p>\n");
    }
}

}  // namespace orbconv::inspect
