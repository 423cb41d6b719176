#include "standard/header_texts.h"

#include <algorithm>

namespace orbconv::standard {

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

}  // namespace orbconv::standard
