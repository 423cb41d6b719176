#include "obsfile/observation_header.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "obsfile/header_tables.h"

namespace orbconv {

namespace {

void writeVersionLine(TextWriter& out, double rinexVersion, std::string_view satelliteSystemLetter) {
    // Deliberate: an empty letter takes no column, so that the rest of the line stands one column to the
    // left.
    out.fixed(rinexVersion, 2, 9)
        .blanks(11)
        .text("OBSERVATION DATA")
        .blanks(4)
        .text(satelliteSystemLetter)
        .blanks(19)
        .text("RINEX VERSION / TYPE")
        .endLine();
}

// A text and the blanks that it falls short of its field by. Deliberate: a longer one is a failure.
void writeStrictField(TextWriter& out, std::string_view text, std::size_t width) {
    out.text(text);
    if (text.size() > width) {
        throw std::length_error("string too long");
    }
    out.blanks(static_cast<int>(width - text.size()));
}

// Three lengths in metres.
void writeThreeLengths(TextWriter& out, double first, double second, double third, std::string_view label) {
    out.fixed(first, 4, 14).fixed(second, 4, 14).fixed(third, 4, 14).blanks(18).text(label).endLine();
}

void writeFirstLines(TextWriter& out, const ObservationHeaderTables& tables) {
    const ReceiverInfo& receiver = tables.receiver;
    const RunOptions& options = tables.options;
    writeVersionLine(out, options.rinexVersion, tables.presence.satelliteSystemLetter());
    writeProgramLine(out, programVersion, tables.runStamp);
    out.blanks(60).text("OBSERVER / AGENCY").endLine();  // nothing ever fills observer and agency
    out.left(receiver.markerName, 60).text("MARKER NAME").endLine();
    // Only the third field is cut.
    out.left(receiver.receiverNumber, 20)
        .left(receiver.receiverType, 20)
        .left(std::string_view(receiver.receiverVersion).substr(0, 20), 20)
        .text("REC # / TYPE / VERS")
        .endLine();
    // Deliberate: the position stands ahead of the antenna, as the interval does of the two times.
    const auto& position = receiver.approxPosition;
    writeThreeLengths(out, position[0], position[1], position[2], "APPROX POSITION XYZ");
    writeStrictField(out, options.antennaNumber, 20);
    writeStrictField(out, receiver.antennaType, 40);
    out.text("ANT # / TYPE").endLine();
    writeThreeLengths(out, options.antennaDeltaH, options.antennaDeltaE, options.antennaDeltaN,
                      "ANTENNA: DELTA H/E/N");
}

constexpr std::size_t obsTypeRows = 3;
constexpr std::size_t codesPerRow = 13;

// The codes of one constellation. Deliberate: for BeiDou the count in the line, the codes listed and the
// rows' limits do not agree, so that codes can be missing and a second row can repeat some of the first.
class ObsTypeLines {
public:
    ObsTypeLines(TextWriter& out, Constellation constellation, const ObsCodeList& codes, std::size_t count)
        : out_(out), codes_(codes), count_(count), beidou_(constellation == Constellation::beidou) {}

    void writeRow(std::size_t row) {
        const std::size_t base = codesPerRow * row;
        const std::size_t limit = base + (beidou_ ? 15 + row : codesPerRow);
        for (std::size_t i = base; i < count_ && i < limit; ++i) {
            while (i + skip_ < codes_.size() && codes_[i + skip_].empty()) {
                ++skip_;
            }
            const std::size_t slot = i + skip_;
            if (slot < codes_.size() && !isSecondPhase(slot)) {
                writeCode(codes_[slot].view(), row);
                ++written_;
            }
        }
        out_.blanks(padding(row)).text("SYS / # / OBS TYPES").endLine();
    }

private:
    // BeiDou's alternative phase names. Deliberate: the last one, slot 29, is not among them.
    [[nodiscard]] bool isSecondPhase(std::size_t slot) const {
        return beidou_ && slot <= 24 && slot % kindsPerBand == 4;
    }

    void writeCode(std::string_view code, std::size_t row) {
        if (row == 0) {
            out_.right(code, 4);
        } else {
            out_.left(code, 4);
        }
    }

    // Blanks up to the label. Counted over all rows, as the codes are; with at most 13 codes in each row
    // the label stands in column 61.
    [[nodiscard]] int padding(std::size_t row) const {
        const auto base = static_cast<int>(codesPerRow * row);
        if (written_ == 26) {
            return 1;
        }
        if (written_ > 26) {
            return 53 + 4 * (base - written_);
        }
        return std::max(2, 54 + 51 * static_cast<int>(row) - 4 * written_);
    }

    TextWriter& out_;
    const ObsCodeList& codes_;
    std::size_t count_;
    bool beidou_;
    std::size_t skip_ = 0;
    int written_ = 0;
};

void writeTime(TextWriter& out, const ClockReading& clock, std::string_view label) {
    out.fixed(clock.year, 0, 6)
        .fixed(clock.month, 0, 6)
        .fixed(clock.day, 0, 6)
        .fixed(clock.hour, 0, 6)
        .fixed(clock.minute, 0, 6)
        .fixed(clock.second, 7, 13)
        .right(timeScaleName(clock.timeBase), 8)
        .blanks(9)
        .text(label)
        .endLine();
}

}  // namespace

void writeObsTypes(TextWriter& out, const RunOptions& options, SignalSurvey& survey) {
    const PerConstellation<bool> included = includedConstellations(options);
    for (std::size_t c = 0; c < countedConstellations; ++c) {
        const auto constellation = static_cast<Constellation>(c);
        if (constellation == Constellation::beidou) {
            // Deliberate: BeiDou's count leaves out four of its codes, and keeps that value until the next
            // epoch is assembled.
            survey.obsCodeCount[c] -= 4;
        }
        const std::int32_t count = survey.obsCodeCount[c];
        if (count < 1 || !included[c]) {
            continue;
        }
        out.left({&systemLetters[c], 1}, 3).integer(count, 3);
        ObsTypeLines lines(out, constellation, survey.obsCodeList[c], static_cast<std::size_t>(count));
        lines.writeRow(0);
        for (std::size_t row = 1; row < obsTypeRows; ++row) {
            if (count <= static_cast<std::int32_t>(codesPerRow * row)) {
                break;
            }
            out.blanks(7);
            lines.writeRow(row);
        }
    }
}

void writeObservationHeader(TextWriter& out, float interval, std::uint32_t lastEpochMs,
                            const ObservationHeaderTables& tables, bool& headerDone) {
    if (lastEpochMs == 0) {
        return;
    }
    if (headerDone) {
        writeLeapSeconds(out, tables.lastLeapSeconds);
        return;
    }
    const RunOptions& options = tables.options;
    writeFirstLines(out, tables);
    writeObsTypes(out, options, tables.survey);
    if (options.includeGlonass) {
        writeGlonassSlots(out, tables.glonassSlotTable);
        writeGlonassBiases(out, tables.survey.codes(Constellation::glonass));
    }
    out.fixed(interval, 3, 10).blanks(50).text("INTERVAL").endLine();
    writeTime(out, tables.clocks.epoch, "TIME OF FIRST OBS");
    writeTime(out, tables.clocks.lastObs, "TIME OF LAST OBS");
    writeLeapSeconds(out, tables.lastLeapSeconds);
    writePhaseShift(out, options, tables.survey);
    out.integer(tables.survey.satelliteTotal, 6).blanks(54).text("# OF SATELLITES").endLine();
    writeEndOfHeader(out);
    headerDone = true;
}

}  // namespace orbconv
