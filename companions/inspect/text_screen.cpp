#include "inspect/text_screen.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>
#include <string>

#include "inspect/message_meanings.h"

namespace orbconv::inspect {

namespace {

constexpr std::size_t columns = 80;
constexpr std::size_t labelColumns = 12;
constexpr std::size_t mostShown = 10;  // gaps and places of damage

// A text of the log or of the command line: what moves the cursor is shown as a question mark.
std::string shown(std::string_view text) {
    std::string result(text);
    std::ranges::replace_if(
        result, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, '?');
    return result;
}

std::string decimals(double value, int count) {
    std::array<char, 350> text{};
    std::snprintf(text.data(), text.size(), "%.*f", count, value);
    return text.data();
}

std::string left(std::string_view text, std::size_t width) {
    std::string result(text);
    result.resize(std::max(width, result.size()), ' ');
    return result;
}

std::string right(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}
std::string right(std::uint64_t number, std::size_t width) {
    return right(std::to_string(number), width);
}

// "1 epoch", "3 epochs"; the name as the plural has it.
std::string counted(std::uint64_t count, std::string_view name) {
    if (count == 1 && name.ends_with("ies")) {
        return "1 " + std::string(name.substr(0, name.size() - 3)) + "y";
    }
    const bool drop = count == 1 && name.ends_with('s');
    return std::to_string(count) + " " + std::string(drop ? name.substr(0, name.size() - 1) : name);
}

// A label and words behind it, in as many lines as they need.
void writeWords(std::ostream& out, std::string_view label, std::span<const std::string> words) {
    std::string line = left(label, labelColumns);
    for (const std::string& word : words) {
        if (line.size() + 1 + word.size() > columns && line.size() > labelColumns) {
            out << line << '\n';
            line.assign(labelColumns, ' ');
        }
        line += line.size() == labelColumns ? word : " " + word;
    }
    out << line << '\n';
}

void writeLine(std::ostream& out, std::string_view label, const std::string& text) {
    out << left(label, labelColumns) << text << '\n';
}

std::string timeText(const LogSummary& log, LogTime time) {
    const std::string text = reading::isoText(time);
    return log.dated ? text
                     : "day " +
                           std::to_string(
                               std::chrono::floor<std::chrono::days>(time).time_since_epoch().count() + 1) +
                           " " + text.substr(11);
}

void writeTimes(std::ostream& out, const LogSummary& log) {
    if (!log.first) {
        writeLine(out, "Time", "none");
    } else {
        const std::string scale = log.timeScale.empty() ? "no date" : std::string(log.timeScale);
        writeLine(out, "Time",
                  timeText(log, *log.first) + " to " + timeText(log, *log.last) + " (" + scale + ")");
    }
    std::string epochs = counted(log.epochs, "epochs");
    if (log.interval) {
        epochs += ", every " + decimals(static_cast<double>(log.interval->count()) / 1000.0, 3) + " s, " +
                  std::to_string(log.missingEpochs) + " missing";
    }
    if (log.epochsWithoutTime > 0) {
        epochs += ", " + std::to_string(log.epochsWithoutTime) + " without a time";
    }
    writeLine(out, "Epochs", epochs);
    if (log.stepsBack > 0) {
        writeLine(out, "", "the time goes back " + counted(log.stepsBack, "times"));
    }
}

void writeGaps(std::ostream& out, const LogSummary& log) {
    writeLine(out, "Gaps", log.gapCount == 0 ? "none" : std::to_string(log.gapCount));
    for (std::size_t i = 0; i < std::min(log.gaps.size(), mostShown); ++i) {
        const Gap& gap = log.gaps[i];
        writeLine(out, "",
                  timeText(log, gap.from) + " to " + timeText(log, gap.to) + ", " +
                      decimals(static_cast<double>((gap.to - gap.from).count()) / 1000.0, 3) + " s");
    }
    if (log.gapCount > mostShown) {
        writeLine(out, "", "and " + std::to_string(log.gapCount - mostShown) + " more");
    }
}

void writeIdentity(std::ostream& out, const reading::SiteIdentity& identity) {
    const auto textOf = [](const std::optional<reading::LogText>& text) {
        return text ? shown(text->text) : std::string("-");
    };
    writeLine(out, "Marker", textOf(identity.markerName));
    writeLine(out, "Receiver",
              textOf(identity.receiverType) + ", number " + textOf(identity.receiverNumber) + ", version " +
                  textOf(identity.receiverVersion));
    writeLine(out, "Antenna", textOf(identity.antennaType));
    std::string position = "-";
    if (identity.position) {
        const auto& [x, y, z] = *identity.position;
        position = decimals(x, 4) + " " + decimals(y, 4) + " " + decimals(z, 4) + " m";
    }
    writeLine(out, "Position", position);
}

void writeSatellites(std::ostream& out, const LogSummary& log) {
    out << "\nSatellites\n";
    for (const ConstellationSummary& system : log.constellations) {
        std::vector<std::string> words = {right(system.satellites.size(), 3) + " "};
        for (const SatelliteName& satellite : system.satellites) {
            words.push_back(nameText(satellite));
        }
        const std::string_view name = constellationName(system.constellation);
        writeWords(out, "  " + std::string(name.substr(0, labelColumns - 3)), words);
    }
    if (log.constellations.empty()) {
        out << "  none\n";
    }
    if (log.unknownSystems > 0) {
        out << "  " << counted(log.unknownSystems, "entries") << " of unknown systems\n";
    }
}

void writeSignals(std::ostream& out, const LogSummary& log) {
    if (log.signals.empty()) {
        return;
    }
    out << '\n' << left("Signals", 20) << "satellites   epochs     C/N0 median   range (dB-Hz)\n";
    for (const SignalSummary& signal : log.signals) {
        const double share = 100.0 * static_cast<double>(signal.epochs) / static_cast<double>(log.epochs);
        out << "  " << left(signalText(signal.constellation, signal.band), 18)
            << right(signal.satelliteCount, 10) << right(decimals(share, 1), 7) << " %";
        if (const auto range = strengthRange(signal)) {
            out << right(decimals(range->median, 2), 16) << right(decimals(range->least, 2), 8) << " to "
                << decimals(range->most, 2);
        }
        out << '\n';
    }
}

void writeNavigation(std::ostream& out, const LogSummary& log) {
    out << '\n' << left("Navigation", 26) << "messages  satellites\n";
    for (const NavigationSummary& kind : log.navigation) {
        const NavigationKindRow& row = rowOf(kind.kind);
        out << "  "
            << left(std::string(constellationName(row.constellation)) + " " + std::string(row.name), 22)
            << right(kind.messages, 10);
        if (row.namesSatellite) {
            out << right(kind.satellites.count(), 12);
        }
        out << '\n';
    }
    if (log.navigation.empty()) {
        out << "  none\n";
    }
}

// Two ids a line: a log has some sixty.
void writeMessages(std::ostream& out, const LogSummary& log) {
    out << "\nMessages    " << log.messages << " by id: count, bytes\n";
    for (const MessageCount& count : log.messagesById) {
        out << "  " << count.id.first << count.id.second << right(count.count, 10) << right(count.bytes, 14)
            << "  " << messageMeaning(count.id) << '\n';
    }
}

void writeDamage(std::ostream& out, const LogSummary& log) {
    out << '\n';
    if (log.damageCount == 0) {
        writeLine(out, "Damage", "none");
        return;
    }
    writeLine(out, "Damage", counted(log.damageCount, "places") + ", " + counted(log.damageBytes, "bytes"));
    for (std::size_t i = 0; i < std::min(log.damage.size(), mostShown); ++i) {
        writeLine(out, "",
                  "offset " + right(log.damage[i].offset, 12) + right(log.damage[i].bytes, 10) + " bytes");
    }
    if (log.damageCount > mostShown) {
        writeLine(out, "", "and " + std::to_string(log.damageCount - mostShown) + " more");
    }
}

void writeFindings(std::ostream& out, const LogSummary& log) {
    out << "\nWhat orbconv will make of it (the codes are those of docs/differences.md)\n";
    std::vector<std::string> others;
    for (const Finding& finding : log.findings) {
        if (finding.everySuch) {
            others.emplace_back(finding.code);
            continue;
        }
        const std::string count = "       " + counted(finding.count, finding.counted) + "; ";
        out << "  " << left(finding.code, 5) << finding.title << '\n'
            << count << shown(finding.example).substr(0, columns - std::min(columns, count.size())) << '\n';
    }
    if (!others.empty()) {
        writeWords(out, "  also", others);
    }
    if (log.findings.empty()) {
        out << "  nothing\n";
    }
}

}  // namespace

void writeScreen(std::ostream& out, const LogSummary& log) {
    out << shown(log.file) << '\n';
    writeLine(out, "Size", counted(log.bytes, "bytes") + ", " + counted(log.messages, "messages"));
    writeTimes(out, log);
    writeGaps(out, log);
    writeIdentity(out, log.identity);
    writeSatellites(out, log);
    writeSignals(out, log);
    writeNavigation(out, log);
    writeMessages(out, log);
    writeDamage(out, log);
    writeFindings(out, log);
    for (const std::string& note : log.notes) {
        out << "\nNote: " << shown(note) << '\n';
    }
}

}  // namespace orbconv::inspect
