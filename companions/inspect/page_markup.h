// The text of the page as it is put together. Markup can only be a literal of the program, everything else is
// escaped: no text of a log becomes markup.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "inspect/log_summary.h"

namespace orbconv::inspect {

// A text that stands in the program.
class Literal {
public:
    // NOLINTNEXTLINE(*-explicit-*): markup is written as its text
    consteval Literal(const char* text) : text_(text) {}
    [[nodiscard]] constexpr std::string_view view() const { return text_; }

private:
    std::string_view text_;
};

class Markup {
public:
    // cppcheck-suppress passedByValue ; two words, as a view is
    Markup& raw(Literal literal) {
        out_ += literal.view();
        return *this;
    }
    // Any bytes. The characters that mean something to HTML, in text or in a quoted attribute, are escaped;
    // controls and what is no UTF-8 become U+FFFD, one a byte.
    Markup& text(std::string_view text);
    // At most `most` bytes of a text, an ellipsis behind it where it is longer.
    Markup& shortText(std::string_view text, std::size_t most = 200);
    // For attributes: nothing but digits and a sign.
    template <class Number>
    Markup& number(Number value) {
        static_assert(std::is_integral_v<Number>);
        out_ += std::to_string(value);
        return *this;
    }

    [[nodiscard]] const std::string& str() const { return out_; }
    [[nodiscard]] std::size_t bytes() const { return out_.size(); }

private:
    std::string out_;
};

// "1,234,567".
std::string grouped(std::uint64_t value);
// With a fixed number of decimals: "44.25".
std::string decimal(double value, int decimals);
// A share as "98 %"; below 100 and above 0 it is neither: "<1 %", ">99 %". Of nothing: "".
std::string percent(std::uint64_t part, std::uint64_t whole);
// "1 d 2 h", "59 min 30 s", "0.1 s": the two largest units.
std::string durationText(Milliseconds duration);
// "1 gap", "2 gaps".
std::string counted(std::uint64_t count, std::string_view one, std::string_view many);
// With a date if the log has one: "2024-05-06 23:00:00.000", else the time of day; days behind an undated
// log's first one as "+1 d 23:00:00.000".
std::string timeText(LogTime time, bool dated);

}  // namespace orbconv::inspect
