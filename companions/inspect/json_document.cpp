#include "inspect/json_document.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace orbconv::inspect {

namespace {

using Json = nlohmann::ordered_json;

constexpr int indent = 2;

Json timeOf(const std::optional<LogTime>& time) {
    return time ? Json(reading::isoText(*time)) : Json();
}

double secondsOf(Milliseconds time) {
    return static_cast<double>(time.count()) / 1000.0;
}

Json textOf(const std::optional<reading::LogText>& text) {
    return text ? Json(text->text) : Json();
}

Json identityOf(const reading::SiteIdentity& identity) {
    return {{"marker", textOf(identity.markerName)},
            {"receiverNumber", textOf(identity.receiverNumber)},
            {"receiverType", textOf(identity.receiverType)},
            {"receiverVersion", textOf(identity.receiverVersion)},
            {"antenna", textOf(identity.antennaType)},
            {"position", identity.position ? Json(*identity.position) : Json()}};
}

Json gapsOf(const LogSummary& log) {
    Json gaps = Json::array();
    for (const Gap& gap : log.gaps) {
        gaps.push_back({{"from", reading::isoText(gap.from)}, {"to", reading::isoText(gap.to)}});
    }
    return gaps;
}

Json damageOf(const LogSummary& log) {
    Json damage = Json::array();
    for (const Damage& place : log.damage) {
        damage.push_back({{"offset", place.offset}, {"bytes", place.bytes}});
    }
    return damage;
}

std::string letterOf(Constellation constellation) {
    return {systemLetters[indexOf(constellation)]};
}

Json satelliteCounts(const LogSummary& log) {
    Json counts = Json::object();
    for (const ConstellationSummary& system : log.constellations) {
        counts[letterOf(system.constellation)] = system.satellites.size();
    }
    return counts;
}

Json satelliteNames(const LogSummary& log) {
    Json names = Json::object();
    for (const ConstellationSummary& system : log.constellations) {
        Json& list = names[letterOf(system.constellation)] = Json::array();
        for (const SatelliteName& satellite : system.satellites) {
            list.push_back(nameText(satellite));
        }
    }
    return names;
}

Json signalsOf(const LogSummary& log) {
    Json signals = Json::array();
    for (const SignalSummary& signal : log.signals) {
        const auto range = strengthRange(signal);
        signals.push_back(
            {{"system", letterOf(signal.constellation)},
             {"band", std::string_view(bandNames[signal.band])},
             {"code", signal.code().empty() ? Json() : Json(signal.code())},
             {"satellites", signal.satelliteCount},
             {"epochs", signal.epochs},
             {"epochShare", static_cast<double>(signal.epochs) / static_cast<double>(log.epochs)},
             {"observations", signal.observations},
             {"strength", range ? Json{{"median", range->median}, {"min", range->least}, {"max", range->most}}
                                : Json()}});
    }
    return signals;
}

Json navigationOf(const LogSummary& log) {
    Json navigation = Json::array();
    for (const NavigationSummary& kind : log.navigation) {
        const NavigationKindRow& row = rowOf(kind.kind);
        navigation.push_back({{"system", letterOf(row.constellation)},
                              {"kind", row.name},
                              {"id", std::string{row.id.first, row.id.second}},
                              {"messages", kind.messages},
                              {"satellites", row.namesSatellite ? Json(kind.satellites.count()) : Json()}});
    }
    return navigation;
}

Json findingsOf(const LogSummary& log) {
    Json findings = Json::array();
    for (const Finding& finding : log.findings) {
        findings.push_back({{"code", finding.code},
                            {"title", finding.title},
                            {"count", finding.count},
                            {"counted", finding.counted},
                            {"example", finding.example},
                            {"everySuchLog", finding.everySuch}});
    }
    return findings;
}

Json messagesOf(const LogSummary& log, std::uint64_t MessageCount::*number) {
    Json numbers = Json::object();
    for (const MessageCount& count : log.messagesById) {
        numbers[std::string{count.id.first, count.id.second}] = count.*number;
    }
    return numbers;
}

Json unknownIds(const LogSummary& log) {
    Json ids = Json::array();
    for (const MessageCount& count : log.messagesById) {
        if (!count.known) {
            ids.push_back(std::string{count.id.first, count.id.second});
        }
    }
    return ids;
}

Json documentOf(const LogSummary& log) {
    return {{"file", log.file},
            {"bytes", log.bytes},
            {"messages", log.messages},
            {"messagesById", messagesOf(log, &MessageCount::count)},
            {"bytesById", messagesOf(log, &MessageCount::bytes)},
            {"unknownIds", unknownIds(log)},
            {"epochs", log.epochs},
            {"epochsWithoutTime", log.epochsWithoutTime},
            {"dated", log.dated},
            {"timeScale", log.timeScale.empty() ? Json() : Json(log.timeScale)},
            {"first", timeOf(log.first)},
            {"last", timeOf(log.last)},
            {"interval", log.interval ? Json(secondsOf(*log.interval)) : Json()},
            {"missingEpochs", log.missingEpochs},
            {"stepsBack", log.stepsBack},
            {"gaps", gapsOf(log)},
            {"gapCount", log.gapCount},
            {"identity", identityOf(log.identity)},
            {"satellites", satelliteCounts(log)},
            {"satelliteNames", satelliteNames(log)},
            {"unknownSystems", log.unknownSystems},
            {"signals", signalsOf(log)},
            {"navigation", navigationOf(log)},
            {"damage", damageOf(log)},
            {"damageCount", log.damageCount},
            {"damageBytes", log.damageBytes},
            {"findings", findingsOf(log)},
            {"notes", log.notes}};
}

}  // namespace

void writeJson(std::ostream& out, std::span<const LogSummary> logs) {
    Json list = Json::array();
    for (const LogSummary& log : logs) {
        list.push_back(documentOf(log));
    }
    // Bytes of file names and of the logs' own texts that are no UTF-8 become U+FFFD.
    out << Json{{"logs", list}}.dump(indent, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace orbconv::inspect
