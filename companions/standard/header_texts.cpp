#include "standard/header_texts.h"

#include <algorithm>

namespace orbconv::standard {

namespace {

std::string cutWarning(const TextRow& row, const reading::LogText& told) {
    return "the " + std::string(row.message) + " message at byte " + std::to_string(told.offset) +
           " tells a text of " + std::to_string(told.text.size()) + " characters, cut to " +
           std::to_string(row.width) + "; " + row.option + " gives another";
}

HeaderText fromLog(const TextRow& row, const reading::SiteIdentity& site,
                   std::vector<std::string>& warnings) {
    if (row.logText == nullptr || !(site.*(row.logText))) {
        return std::nullopt;
    }
    const reading::LogText& told = *(site.*(row.logText));
    if (told.text.size() > row.width) {
        warnings.push_back(cutWarning(row, told));
    }
    return told.text.substr(0, row.width);
}

}  // namespace

std::optional<std::string> refusalOf(std::string_view text, std::size_t width) {
    if (std::ranges::any_of(text, [](char c) { return c < ' ' || c > '~'; })) {
        return "holds characters that are no printable ASCII";
    }
    if (text.size() > width) {
        return "has " + std::to_string(text.size()) + " characters; the header has room for " +
               std::to_string(width);
    }
    return std::nullopt;
}

HeaderTexts headerTextsOf(const HeaderTexts& given, const reading::SiteIdentity& site,
                          std::vector<std::string>& warnings) {
    HeaderTexts texts = given;
    for (const TextRow& row : textRows) {
        if (!(texts.*(row.text))) {
            texts.*(row.text) = fromLog(row, site, warnings);
        }
    }
    if (!texts.position) {
        texts.position = site.position;
    }
    return texts;
}

}  // namespace orbconv::standard
