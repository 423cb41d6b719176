#include "inspect/page_markup.h"

#include <gtest/gtest.h>

namespace orbconv::inspect {
namespace {

std::string escaped(std::string_view text) {
    return Markup().text(text).str();
}

TEST(PageMarkupTest, Text_EscapesWhatMeansSomethingToHtml) {
    EXPECT_EQ(escaped("a<b>&\"c\"'d'"), "a&lt;b&gt;&amp;&quot;c&quot;&#39;d&#39;");
}

TEST(PageMarkupTest, Text_KeepsWellFormedUtf8) {
    for (const std::string_view text : {"\u00A0", "\u07FF", "\u0800", "\u20AC", "\uD7FF", "\uE000", "\uFFFC",
                                        "\U00010000", "\U00040000", "\U0010FFFF"}) {
        EXPECT_EQ(escaped(text), text);
    }
}

TEST(PageMarkupTest, Text_ReplacesControlsAndWhatIsNoUtf8ByteByByte) {
    const std::string one = "\uFFFD";
    EXPECT_EQ(escaped("\n"), one);
    EXPECT_EQ(escaped("\x7F"), one);
    EXPECT_EQ(escaped(std::string_view("\0", 1)), one);
    EXPECT_EQ(escaped("\xC2\x85"), one + one);                      // a control of the upper half
    EXPECT_EQ(escaped("\x80"), one);                                // a later byte alone
    EXPECT_EQ(escaped("\xC3"), one);                                // cut
    EXPECT_EQ(escaped("\xE2\x82"), one + one);                      // cut
    EXPECT_EQ(escaped("\xC3("), one + "(");                         // no later byte
    EXPECT_EQ(escaped("\xE2\x82("), one + one + "(");               // no third byte
    EXPECT_EQ(escaped("\xC0\xAF"), one + one);                      // longer than it has to be
    EXPECT_EQ(escaped("\xE0\x80\xBC"), one + one + one);            // longer than it has to be
    EXPECT_EQ(escaped("\xED\xA0\x80"), one + one + one);            // half a surrogate pair
    EXPECT_EQ(escaped("\xF4\x90\x80\x80"), one + one + one + one);  // beyond the last character
    EXPECT_EQ(escaped("\xFF<"), one + "&lt;");
}

TEST(PageMarkupTest, ShortText_EndsInAnEllipsis) {
    EXPECT_EQ(Markup().shortText("abcd", 4).str(), "abcd");
    EXPECT_EQ(Markup().shortText("abc<e", 4).str(), "abc&lt;\u2026");
}

TEST(PageMarkupTest, Number_IsPlain) {
    EXPECT_EQ(Markup().raw("<a b=\"").number(-1234567).raw("\">").str(), "<a b=\"-1234567\">");
}

TEST(PageMarkupTest, Grouped_HasACommaBetweenThousands) {
    EXPECT_EQ(grouped(0), "0");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1000), "1,000");
    EXPECT_EQ(grouped(1234567), "1,234,567");
    EXPECT_EQ(grouped(18446744073709551615U), "18,446,744,073,709,551,615");
}

TEST(PageMarkupTest, Percent_IsWholeOnlyIfItIsWhole) {
    EXPECT_EQ(percent(0, 0), "");
    EXPECT_EQ(percent(0, 10), "0 %");
    EXPECT_EQ(percent(10, 10), "100 %");
    EXPECT_EQ(percent(1, 1000), "<1 %");
    EXPECT_EQ(percent(999, 1000), ">99 %");
    EXPECT_EQ(percent(1, 3), "33 %");
    EXPECT_EQ(percent(99, 100), "99 %");
}

TEST(PageMarkupTest, Duration_HasItsTwoLargestUnits) {
    EXPECT_EQ(durationText(Milliseconds{0}), "0 s");
    EXPECT_EQ(durationText(Milliseconds{5}), "0.005 s");
    EXPECT_EQ(durationText(Milliseconds{100}), "0.1 s");
    EXPECT_EQ(durationText(Milliseconds{30'000}), "30 s");
    EXPECT_EQ(durationText(Milliseconds{60'000}), "1 min");
    EXPECT_EQ(durationText(Milliseconds{90'500}), "1 min 30.5 s");
    EXPECT_EQ(durationText(Milliseconds{3'600'000}), "1 h");
    EXPECT_EQ(durationText(Milliseconds{3'601'000}), "1 h 1 s");
    EXPECT_EQ(durationText(Milliseconds{86'400'000 + 7'200'000 + 60'000}), "1 d 2 h");
}

TEST(PageMarkupTest, Time_HasADateIfTheLogHasOne) {
    const LogTime first{std::chrono::hours{23}};
    EXPECT_EQ(timeText(first, true), "1970-01-01 23:00:00.000");
    EXPECT_EQ(timeText(first, false), "23:00:00.000");
    EXPECT_EQ(timeText(first + std::chrono::hours{2}, false), "+1 d 01:00:00.000");
}

TEST(PageMarkupTest, Counted_NamesOneAndMany) {
    EXPECT_EQ(counted(0, "gap", "gaps"), "0 gaps");
    EXPECT_EQ(counted(1, "gap", "gaps"), "1 gap");
    EXPECT_EQ(counted(2000, "gap", "gaps"), "2,000 gaps");
}

}  // namespace
}  // namespace orbconv::inspect
