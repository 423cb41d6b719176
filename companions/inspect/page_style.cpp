#include "inspect/page_style.h"

#include <span>

namespace orbconv::inspect {

namespace {

constexpr const char* layout = R"(
*{box-sizing:border-box}
html{-webkit-text-size-adjust:100%;text-size-adjust:100%}
body{margin:0 auto;padding:1rem;max-width:75rem;font:15px/1.45 system-ui,sans-serif;color:var(--ink);background:var(--page)}
h1{font-size:1.25rem;margin:0 0 .75rem}
h2{font-size:1.35rem;margin:2.5rem 0 0;overflow-wrap:anywhere}
h3{font-size:1.05rem;margin:2rem 0 .5rem;border-bottom:1px solid var(--line);padding-bottom:.25rem}
p{margin:.4rem 0}
a{color:inherit}
nav ul{display:flex;flex-wrap:wrap;gap:.25rem 1.25rem;padding:0;margin:0;list-style:none}
nav li{overflow-wrap:anywhere}
.faint{color:var(--faint)}
.path{margin:0;overflow-wrap:anywhere}
.state{display:flex;flex-wrap:wrap;gap:.4rem;padding:0;margin:.6rem 0;list-style:none}
.state li{border:1.5px solid var(--line);border-radius:1rem;padding:.1rem .7rem}
.state .good{border-color:var(--good);color:var(--good)}
.state .bad{border-color:var(--bad);color:var(--bad);font-weight:600}
.numbers{display:grid;grid-template-columns:repeat(auto-fill,minmax(9.5rem,1fr));gap:.5rem;margin:1rem 0}
.numbers div{background:var(--card);border-radius:.4rem;padding:.4rem .7rem;min-width:0}
.numbers .wide{grid-column:span 2}
.numbers dt{color:var(--faint);font-size:.8rem}
.numbers dd{margin:0;overflow-wrap:anywhere;font-variant-numeric:tabular-nums}
.pair{display:grid;grid-template-columns:repeat(auto-fit,minmax(min(100%,26rem),1fr));gap:0 2rem;align-items:start}
.pair>*{min-width:0}
.scroll{overflow-x:auto}
table{border-collapse:collapse;width:100%}
caption{text-align:left;color:var(--faint);padding-bottom:.3rem}
.data{font-size:.87rem}
.data th,.data td{text-align:left;vertical-align:top;padding:.22rem .5rem .22rem 0;border-bottom:1px solid var(--line)}
.data thead th{color:var(--faint);font-weight:500;vertical-align:bottom}
.data .n{text-align:right;white-space:nowrap;font-variant-numeric:tabular-nums}
.data thead .n{white-space:normal}
.data td.w,.stack .w{overflow-wrap:anywhere}
.data .every{color:var(--faint)}
code{font-family:ui-monospace,monospace;font-size:.95em;white-space:pre}
.key{display:inline-flex;flex-wrap:wrap;gap:.1rem .9rem;padding:0;margin:0;list-style:none;font-size:.8rem;font-weight:400;color:var(--faint)}
.key li{display:inline-flex;align-items:center;gap:.35rem;white-space:nowrap}
.key svg{width:22px;height:10px;flex:none}
.timeline{table-layout:fixed;font-size:.75rem;line-height:1.15;font-variant-numeric:tabular-nums}
.timeline th,.timeline td{padding:0;font-weight:400}
.timeline .name{width:3.2rem;text-align:left}
.timeline .share{width:3.2rem;text-align:right;color:var(--faint)}
.timeline tr{break-inside:avoid}
.timeline .system th{text-align:left;padding:.9rem 0 .25rem;break-after:avoid}
.timeline .system b{font-size:.95rem;margin-right:.9rem}
.timeline tbody td,.timeline tbody th{border-bottom:3px solid var(--page);text-align:left}
.timeline tbody .share{text-align:right}
.timeline thead th{color:var(--faint);text-align:left}
.timeline thead .share{text-align:right}
.chart{display:grid;grid-template-columns:3.2rem 1fr 3.2rem;font-size:.75rem;break-inside:avoid;margin:0 0 .6rem}
.chart figcaption{grid-column:1/-1;display:flex;flex-wrap:wrap;gap:.2rem .9rem;align-items:baseline;padding:.4rem 0 .25rem}
.chart figcaption b{font-size:.95rem}
.chart .scale{grid-column:1}
.chart .plot,.chart .axis{grid-column:2}
svg{display:block}
.parts{position:absolute}
.plot,.axis,.scale{width:100%}
svg text{font-size:11px;fill:var(--faint);font-variant-numeric:tabular-nums}
.plot{background:var(--card)}
.timeline .plot{background:none}
.lane{fill:none;stroke-width:6}
.some{stroke-opacity:.45}
.listed{fill:none;stroke:var(--listed)}
.gaps{fill:var(--gap)}
.grid{fill:none;stroke:var(--line);stroke-width:1px;vector-effect:non-scaling-stroke}
.hurt{fill:none;stroke:var(--ink);stroke-width:2px;vector-effect:non-scaling-stroke}
.mark{fill:none;stroke:var(--ink);stroke-width:2px;vector-effect:non-scaling-stroke}
.area{stroke:var(--page);stroke-width:1px;vector-effect:non-scaling-stroke}
.curve{fill:none;stroke-width:1.6px;vector-effect:non-scaling-stroke}
.dash-band-1{stroke-dasharray:7 2}
.dash-band-2{stroke-dasharray:2 2}
.dash-band-3{stroke-dasharray:9 2 2 2}
.dash-band-5{stroke-dasharray:4 2}
.dash-band-l{stroke-dasharray:9 2 2 2 2 2}
@media (max-width:40rem){body{padding:.75rem;font-size:14px}.odd{display:none}.timeline,.chart{font-size:.7rem}.data{font-size:.8rem}.data th,.data td{padding-right:.35rem}
.chart{grid-template-columns:2.9rem 1fr 2.7rem}.timeline .name{width:2.9rem}.timeline .share{width:2.7rem}
.data.stack thead{display:none}.data.stack tr{display:block;border-bottom:1px solid var(--line);padding:.35rem 0}
.data.stack td,.data.stack th{display:inline;border:0;padding:0 .4rem 0 0}.data.stack .w{display:block}}
@media print{body{padding:0;max-width:none;font-size:10pt;print-color-adjust:exact;-webkit-print-color-adjust:exact}
nav{display:none}section{break-before:page}section:first-of-type{break-before:auto}h3{break-after:avoid}.scroll{overflow:visible}:root{color-scheme:light}}
)";

// Colours that the style takes by their variables: lanes, areas and lines.
void addUses(Markup& page, std::span<const ColourRow> colours) {
    for (const ColourRow& colour : colours) {
        page.raw(".fill-").text(colour.name).raw("{fill:var(--").text(colour.name).raw(")}");
        page.raw(".stroke-").text(colour.name).raw("{stroke:var(--").text(colour.name).raw(")}");
    }
}

void addVariables(Markup& page, std::string_view ColourRow::*shade) {
    for (const std::span<const ColourRow> table :
         {std::span<const ColourRow>(signalColours), std::span<const ColourRow>(systemColours),
          std::span<const ColourRow>(pageColours)}) {
        for (const ColourRow& colour : table) {
            page.raw("--").text(colour.name).raw(":").text(colour.*shade).raw(";");
        }
    }
}

}  // namespace

void addStyle(Markup& page) {
    page.raw(":root{color-scheme:light dark;");
    addVariables(page, &ColourRow::light);
    page.raw("}\n@media screen and (prefers-color-scheme:dark){:root{");
    addVariables(page, &ColourRow::dark);
    page.raw("}}");
    page.raw(layout);
    addUses(page, signalColours);
    addUses(page, systemColours);
}

}  // namespace orbconv::inspect
