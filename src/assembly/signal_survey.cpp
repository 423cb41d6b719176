#include "assembly/signal_survey.h"

#include <algorithm>

namespace orbconv {

namespace {

void writeCodes(ObsCodeList& list, std::size_t band, const ObsCodes& codes, std::size_t firstKind = 0) {
    for (std::size_t kind = firstKind; kind < codes.size(); ++kind) {
        list[band * kindsPerBand + kind] = codes[kind];
    }
}

void enterBeidouCodes(ObsCodeList& list, std::size_t band, const ObsCodes& codes, std::int32_t number) {
    const BeidouRule& rule = beidouRules[band];
    SignalText& code = list[slotOf(band, Kind::code)];
    SignalText& secondPhase = list[slotOf(band, Kind::secondPhase)];
    const BeidouEntry entry = rule.insideClass.holds(number) ? rule.entry : BeidouEntry::asOthers;
    switch (entry) {
        case BeidouEntry::asOthers:
            if (code.empty()) {
                writeCodes(list, band, codes);
            }
            break;
        case BeidouEntry::secondPhaseOnly:
            if (secondPhase.empty()) {
                secondPhase = rule.secondPhase;
            }
            break;
        case BeidouEntry::withSecondPhase:
            if (secondPhase.empty()) {
                writeCodes(list, band, codes);
                secondPhase = rule.secondPhase;
            }
            break;
        case BeidouEntry::codeOnly:
            if (code.empty()) {
                code = codes[0];
            }
            break;
    }
    if (rule.rewritesTail) {
        writeCodes(list, band, codes, 1);
        secondPhase = rule.secondPhase;
    }
}

void enterCodes(SignalSurvey& survey, const SurveyedSignal& signal) {
    ObsCodeList& list = survey.codes(signal.constellation);
    const ObsCodes& codes = obsCodes[signal.band][indexOf(signal.constellation)];
    if (signal.constellation == Constellation::beidou) {
        enterBeidouCodes(list, signal.band, codes, signal.record.number);
    } else if (list[slotOf(signal.band, Kind::code)].empty()) {
        writeCodes(list, signal.band, codes);
    }
}

// Entries of a SignalSatelliteList that the search for a key looks at. Deliberate: 32 also for Galileo.
std::size_t searchedEntries(Constellation constellation) {
    return constellation == Constellation::beidou ? satelliteListRoom : 32;
}

void enterPhaseShiftSatellite(SignalSurvey& survey, const SurveyedSignal& signal) {
    SatelliteNumbers& list = survey.phaseShiftSatellites[indexOf(signal.constellation)][signal.band];
    const std::size_t entries = phaseShiftEntries(signal.constellation, signal.band);
    if (signal.position < entries &&
        (list[signal.position] == 0 || list[signal.position] == signal.satelliteNumber)) {
        list[signal.position] = signal.satelliteNumber;
    } else {
        enterSatellite(list, entries, signal.satelliteNumber);
    }
}

}  // namespace

void countObsCodes(SignalSurvey& survey) {
    for (std::size_t c = 0; c < countedConstellations; ++c) {
        std::int32_t count = 0;
        for (const SignalText& code : survey.obsCodeList[c]) {
            count += code.empty() ? 0 : 1;
        }
        survey.obsCodeCount[c] = count;
    }
}

void enterSatellite(SatelliteNumbers& list, std::size_t entries, std::int32_t key) {
    for (std::size_t i = 0; i < entries; ++i) {
        if (list[i] == key) {
            return;
        }
        if (list[i] == 0) {
            list[i] = key;
            return;
        }
    }
}

void enterSignal(SignalSurvey& survey, const SurveyedSignal& signal) {
    const std::size_t c = indexOf(signal.constellation);
    enterCodes(survey, signal);
    const bool listed = signal.constellation != Constellation::beidou ||
                        beidouRules[signal.band].listed.holds(signal.record.number);
    if (listed) {
        const bool bySlot = signal.constellation == Constellation::glonass;
        enterSatellite(survey.signalSatelliteList[c][signal.band], searchedEntries(signal.constellation),
                       bySlot ? signal.record.gloSlotNumber : signal.record.number);
    }
    enterPhaseShiftSatellite(survey, signal);
}

}  // namespace orbconv
