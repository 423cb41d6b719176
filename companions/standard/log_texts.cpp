#include "standard/log_texts.h"

#include <algorithm>

namespace orbconv::standard {

namespace {

// The last log that tells something; null if none does.
template <class Told>
const SurveyedLog* lastThatTells(std::span<const SurveyedLog> logs, Told reading::SiteIdentity::*told) {
    const auto found = std::find_if(logs.rbegin(), logs.rend(),
                                    [told](const SurveyedLog& log) { return (log.site.*told).has_value(); });
    return found == logs.rend() ? nullptr : &*found;
}

std::string cutWarning(const TextRow& row, const SurveyedLog& log, const reading::LogText& told) {
    return log.name + ": the " + std::string(row.message) + " message at byte " +
           std::to_string(told.offset) + " tells a text of " + std::to_string(told.text.size()) +
           " characters, cut to " + std::to_string(row.width) + "; " + row.option + " gives another";
}

HeaderText fromLogs(const TextRow& row, std::span<const SurveyedLog> logs,
                    std::vector<std::string>& warnings) {
    const SurveyedLog* const log = row.logText == nullptr ? nullptr : lastThatTells(logs, row.logText);
    if (log == nullptr) {
        return std::nullopt;
    }
    const reading::LogText& told = *(log->site.*(row.logText));
    if (told.text.size() > row.width) {
        warnings.push_back(cutWarning(row, *log, told));
    }
    return told.text.substr(0, row.width);
}

}  // namespace

HeaderTexts headerTextsOf(const HeaderTexts& given, std::span<const SurveyedLog> logs,
                          std::vector<std::string>& warnings) {
    HeaderTexts texts = given;
    for (const TextRow& row : textRows) {
        if (!(texts.*(row.text))) {
            texts.*(row.text) = fromLogs(row, logs, warnings);
        }
    }
    const SurveyedLog* const log = lastThatTells(logs, &reading::SiteIdentity::position);
    if (!texts.position && log != nullptr) {
        texts.position = log->site.position;
    }
    return texts;
}

std::vector<std::string> doubtsAbout(std::span<const SurveyedLog> logs) {
    std::vector<std::string> doubts;
    const SurveyedLog* latest = nullptr;  // of those that tell their receiver
    for (const SurveyedLog& log : logs) {
        if (logs.size() > 1 && log.epochs == 0) {
            doubts.push_back(log.name + ": it holds no epoch");
        }
        const auto& receiver = log.site.receiverNumber;
        if (!receiver) {
            continue;
        }
        if (latest != nullptr && latest->site.receiverNumber->text != receiver->text) {
            doubts.push_back(log.name + ": its receiver is " + receiver->text + ", that of " + latest->name +
                             " is " + latest->site.receiverNumber->text);
        }
        latest = &log;
    }
    return doubts;
}

}  // namespace orbconv::standard
