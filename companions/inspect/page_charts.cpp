// The pictures with a scale: number of satellites and strength of the signals over time.

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "inspect/page_pictures.h"
#include "inspect/page_style.h"

namespace orbconv::inspect {

namespace {

// In tenths of a pixel. The edge leaves room for the numbers at the ends of the scale.
constexpr std::int64_t chartHeight = 1300;
constexpr std::int64_t chartEdge = 80;

// Values from `least` to `most` with a line each `step`, all of them whole.
struct Scale {
    std::int64_t least = 0;
    std::int64_t most = 1;
    std::int64_t step = 1;
};

// Wide enough for both values, with five lines at most, no two closer than `leastStep`.
Scale scaleFor(double least, double most, std::int64_t leastStep) {
    Scale scale;
    for (const std::int64_t step : {1, 2, 5, 10, 20, 50, 100}) {
        const auto size = static_cast<double>(step);
        scale = {.least = static_cast<std::int64_t>(std::floor(least / size)) * step,
                 .most = static_cast<std::int64_t>(std::ceil(most / size)) * step,
                 .step = step};
        if (step >= leastStep && scale.most - scale.least <= 4 * step) {
            break;
        }
    }
    scale.most = std::max(scale.most, scale.least + scale.step);
    return scale;
}

std::int64_t heightOf(const Scale& scale, double value) {
    const double share =
        (static_cast<double>(scale.most) - value) / static_cast<double>(scale.most - scale.least);
    return chartEdge + std::llround(share * static_cast<double>(chartHeight - 2 * chartEdge));
}

std::int64_t heightOf(const Scale& scale, std::int64_t value) {
    return heightOf(scale, static_cast<double>(value));
}

void addScale(Markup& page, const Scale& scale) {
    page.raw("<svg class=\"scale\" height=\"").number(chartHeight / 10).raw("\" aria-hidden=\"true\">");
    for (std::int64_t value = scale.least; value <= scale.most; value += scale.step) {
        page.raw("<text x=\"88%\" text-anchor=\"end\" y=\"").number(heightOf(scale, value) / 10 + 4);
        page.raw("\">").number(value).raw("</text>");
    }
    page.raw("</svg>");
}

void openPlot(Markup& page, const LogPicture& picture, const Scale& scale, std::string_view title,
              std::string_view description) {
    page.raw("<svg class=\"plot\" viewBox=\"0 0 ").number(picture.timeline.bins).raw(" ").number(chartHeight);
    page.raw("\" preserveAspectRatio=\"none\" height=\"")
        .number(chartHeight / 10)
        .raw("\" role=\"img\"><title>");
    page.text(title).raw("</title><desc>").text(description).raw("</desc>");
    addBehind(page, picture);
    page.raw("<path class=\"grid\" d=\"");
    for (std::int64_t value = scale.least; value <= scale.most; value += scale.step) {
        page.raw("M0 ").number(heightOf(scale, value)).raw("H").number(picture.timeline.bins);
    }
    page.raw("\"/>");
}

void closePlot(Markup& page, const LogPicture& picture) {
    addAhead(page, picture);
    page.raw("</svg>");
    addAxis(page, picture);
    page.raw("</figure>\n");
}

// ---- number of satellites ----

// The mean number of satellites in each column, 0 in a gap.
std::vector<double> means(const LogPicture& picture, const std::vector<std::uint64_t>& sums) {
    std::vector<double> result;
    for (const Column& column : picture.columns) {
        const std::uint64_t epochs = sumOver(picture.timeline.epochs, column);
        result.push_back(
            epochs == 0 ? 0.0 : static_cast<double>(sumOver(sums, column)) / static_cast<double>(epochs));
    }
    return result;
}

// Areas that stand on each other, the lowest first.
struct Layer {
    std::size_t system;
    std::vector<double> tops;
};

std::vector<Layer> layersOf(const LogPicture& picture) {
    std::vector<Layer> layers;
    std::vector<double> tops(picture.columns.size());
    for (std::size_t system = 0; system < constellationCount; ++system) {
        const auto& sums = picture.timeline.satellitesBySystem[system];
        if (sums.empty()) {
            continue;
        }
        const std::vector<double> own = means(picture, sums);
        std::ranges::transform(tops, own, tops.begin(), std::plus<>{});
        layers.push_back({.system = system, .tops = tops});
    }
    return layers;
}

void addLayer(Markup& page, const LogPicture& picture, const Scale& scale, const Layer& layer) {
    std::vector<std::optional<std::int64_t>> heights;
    for (std::size_t i = 0; i < layer.tops.size(); ++i) {
        heights.push_back(picture.columns[i].gap ? std::nullopt
                                                 : std::optional(heightOf(scale, layer.tops[i])));
    }
    page.raw("<path class=\"area fill-").text(systemColours[layer.system].name).raw("\" d=\"");
    page.text(areaPath(picture.columns, heights, heightOf(scale, std::int64_t{0}))).raw("\"/>");
}

void addSystemKey(Markup& page, std::span<const Layer> layers) {
    page.raw("<ul class=\"key\">");
    for (const Layer& layer : layers) {
        page.raw("<li><svg viewBox=\"0 0 22 10\" aria-hidden=\"true\"><path class=\"fill-");
        page.text(systemColours[layer.system].name).raw("\" d=\"M0 0h22v10H0z\"/></svg>");
        page.text(constellationName(static_cast<Constellation>(layer.system))).raw("</li>");
    }
    page.raw("</ul>");
}

// "from 12 to 48 in an epoch, 40.3 on average".
std::string countsInWords(const Timeline& timeline) {
    SatelliteBin all;
    std::uint64_t epochs = 0;
    for (std::size_t i = 0; i < timeline.bins; ++i) {
        all.sum += timeline.satellites[i].sum;
        all.least = std::min(all.least, timeline.satellites[i].least);
        all.most = std::max(all.most, timeline.satellites[i].most);
        epochs += timeline.epochs[i];
    }
    const double mean =
        static_cast<double>(all.sum) / static_cast<double>(std::max<std::uint64_t>(epochs, 1));
    return "from " + std::to_string(all.least) + " to " + std::to_string(all.most) + " in an epoch, " +
           decimal(mean, 1) + " on average";
}

// ---- strength ----

// The mean strength of a signal in each column, in dB-Hz; nothing where it has none.
std::vector<std::optional<double>> meansOf(const LogPicture& picture, const SignalTrack& signal) {
    std::vector<std::optional<double>> result;
    for (const Column& column : picture.columns) {
        std::uint64_t sum = 0;
        std::uint64_t count = 0;
        for (std::size_t i = column.first; i < column.end; ++i) {
            sum += signal.bins[i].sum;
            count += signal.bins[i].count;
        }
        result.push_back(
            count == 0 ? std::nullopt
                       : std::optional(static_cast<double>(sum) * strengthUnit / static_cast<double>(count)));
    }
    return result;
}

struct Curve {
    const SignalTrack* signal;
    std::vector<std::optional<double>> means;
};

Scale scaleOf(std::span<const Curve> curves) {
    double least = 100.0;
    double most = 0.0;
    for (const Curve& curve : curves) {
        for (const auto& mean : curve.means) {
            least = std::min(least, mean.value_or(least));
            most = std::max(most, mean.value_or(most));
        }
    }
    return scaleFor(std::min(least, most), most, 5);
}

void addCurve(Markup& page, const LogPicture& picture, const Scale& scale, const Curve& curve) {
    std::vector<std::optional<std::int64_t>> heights;
    for (const auto& mean : curve.means) {
        heights.push_back(mean ? std::optional(heightOf(scale, *mean)) : std::nullopt);
    }
    const std::string_view colour = signalColours[curve.signal->band].name;
    page.raw("<path class=\"curve stroke-").text(colour).raw(" dash-").text(colour).raw("\" d=\"");
    page.text(stairsPath(picture.columns, heights)).raw("\"><title>");
    page.text(signalText(curve.signal->constellation, curve.signal->band)).raw("</title></path>");
}

void addCurveKey(Markup& page, std::span<const Curve> curves) {
    page.raw("<ul class=\"key\">");
    for (const Curve& curve : curves) {
        const std::string_view colour = signalColours[curve.signal->band].name;
        const std::string text = signalText(curve.signal->constellation, curve.signal->band);
        page.raw("<li><svg viewBox=\"0 0 22 10\" aria-hidden=\"true\"><path class=\"curve stroke-")
            .text(colour);
        page.raw(" dash-").text(colour).raw("\" d=\"M0 5h22\"/></svg>");
        page.text(text.substr(constellationName(curve.signal->constellation).size() + 1)).raw("</li>");
    }
    page.raw("</ul>");
}

void addStrengthChart(Markup& page, const LogPicture& picture, const Scale& scale,
                      std::span<const Curve> curves) {
    const std::string name(constellationName(curves.front().signal->constellation));
    page.raw("<figure class=\"chart\"><figcaption><b>").text(name).raw("</b>");
    addCurveKey(page, curves);
    page.raw("</figcaption>");
    addScale(page, scale);
    openPlot(page, picture, scale, "Carrier-to-noise density of " + name,
             "Mean of all satellites, in dB-Hz, one line a signal.");
    for (const Curve& curve : curves) {
        addCurve(page, picture, scale, curve);
    }
    closePlot(page, picture);
}

}  // namespace

void addSatelliteChart(Markup& page, const LogPicture& picture) {
    const std::vector<Layer> layers = layersOf(picture);
    const double most = layers.empty() ? 0.0 : *std::ranges::max_element(layers.back().tops);
    const Scale scale = scaleFor(0.0, most, 1);
    const std::string words = countsInWords(picture.timeline);
    page.raw("<figure class=\"chart\"><figcaption>");
    addSystemKey(page, layers);
    page.raw("<span class=\"faint\">").text(words).raw("</span></figcaption>");
    addScale(page, scale);
    openPlot(page, picture, scale, "Number of satellites over time",
             "Satellites in the list, " + words + ".");
    for (std::size_t i = layers.size(); i > 0; --i) {
        addLayer(page, picture, scale, layers[i - 1]);
    }
    closePlot(page, picture);
}

void addStrengthCharts(Markup& page, const LogPicture& picture) {
    std::vector<Curve> curves;
    for (const SignalTrack& signal : picture.timeline.signals) {
        curves.push_back({.signal = &signal, .means = meansOf(picture, signal)});
    }
    const Scale scale = scaleOf(curves);
    for (auto first = curves.begin(); first != curves.end();) {
        const auto end = std::find_if(first, curves.end(), [&](const Curve& curve) {
            return curve.signal->constellation != first->signal->constellation;
        });
        addStrengthChart(page, picture, scale, {first, end});
        first = end;
    }
}

}  // namespace orbconv::inspect
