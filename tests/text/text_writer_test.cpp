// Fields to characters: justification, fill, what a text wider than its field does, and the buffer between
// the fields and the stream.
#include "text/text_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>

#include "navfile/rinex_number.h"
#include "support/staging.h"

namespace {

using orbconv::TextWriter;
using testsupport::written;
using Limits = std::numeric_limits<double>;

std::string rinexNumber(double value, int precision, int width) {
    return written([&](TextWriter& out) { orbconv::writeRinexNumber(out, value, precision, width); });
}

// A stream locale with a decimal comma and points between groups of three digits.
class CommaPoint : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

}  // namespace

TEST(TextField, LeftJustifiedIsFilledWithBlanksBehind) {
    EXPECT_EQ(written([](TextWriter& out) { out.left("ABC", 5); }), "ABC  ");
    EXPECT_EQ(written([](TextWriter& out) { out.left("", 3); }), "   ");
    EXPECT_EQ(written([](TextWriter& out) { out.left("ABC", 3); }), "ABC");
}

TEST(TextField, RightJustifiedIsFilledWithBlanksAhead) {
    EXPECT_EQ(written([](TextWriter& out) { out.right("ABC", 5); }), "  ABC");
    EXPECT_EQ(written([](TextWriter& out) { out.right("", 2); }), "  ");
    EXPECT_EQ(written([](TextWriter& out) { out.right("ABC", 3); }), "ABC");
}

TEST(TextField, WiderThanItsFieldIsNotCutAndMovesTheRest) {
    EXPECT_EQ(written([](TextWriter& out) { out.left("ABCDE", 3).text("|"); }), "ABCDE|");
    EXPECT_EQ(written([](TextWriter& out) { out.right("ABCDE", 3).text("|"); }), "ABCDE|");
    EXPECT_EQ(written([](TextWriter& out) { out.left("A", 0).right("B", 0).text("|"); }), "AB|");
}

TEST(TextField, KeepsZeroBytesAndBytesAboveAscii) {
    const std::string text{'a', '\0', '\xE9', '\n', 'b'};
    EXPECT_EQ(written([&](TextWriter& out) { out.text(text).left(text, 6).right(text, 6); }),
              text + text + " " + " " + text);
}

TEST(BlankField, HasNoBlanksForACountBelowOne) {
    EXPECT_EQ(written([](TextWriter& out) { out.text("<").blanks(0).blanks(-7).text(">"); }), "<>");
    EXPECT_EQ(written([](TextWriter& out) { out.text("<").blanks(1).blanks(2).text(">"); }), "<   >");
}

TEST(IntegerField, IsRightJustified) {
    EXPECT_EQ(written([](TextWriter& out) { out.integer(18, 6); }), "    18");
    EXPECT_EQ(written([](TextWriter& out) { out.integer(-18, 6); }), "   -18");
    EXPECT_EQ(written([](TextWriter& out) { out.integer(0, 1); }), "0");
}

TEST(IntegerField, ZeroFillStandsAheadOfTheSign) {
    EXPECT_EQ(written([](TextWriter& out) { out.integer(5, 2, '0'); }), "05");
    EXPECT_EQ(written([](TextWriter& out) { out.integer(-7, 2, '0'); }), "-7");
    EXPECT_EQ(written([](TextWriter& out) { out.integer(-7, 3, '0'); }), "0-7");
}

TEST(IntegerField, WiderThanItsFieldMovesTheRest) {
    EXPECT_EQ(written([](TextWriter& out) { out.integer(255, 2, '0').text("|"); }), "255|");
    EXPECT_EQ(
        written([](TextWriter& out) { out.integer(std::numeric_limits<std::int64_t>::min(), 3).text("|"); }),
        "-9223372036854775808|");
}

TEST(FixedField, IsRightJustifiedWithItsFill) {
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(3.05, 2, 9); }), "     3.05");
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(-12.5, 4, 14); }), "      -12.5000");
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(3.0, 0, 2, '0'); }), "03");
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(-3.0, 0, 4, '0'); }), "00-3");
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(-0.0, 3, 8); }), "  -0.000");
}

TEST(FixedField, WiderThanItsFieldMovesTheRest) {
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(123456.0, 3, 4).text("|"); }), "123456.000|");
    const std::string largest =
        written([](TextWriter& out) { out.fixed(-std::numeric_limits<double>::max(), 20, 3).text("|"); });
    EXPECT_EQ(largest.size(), 1U + 309U + 1U + 20U + 1U);
}

TEST(FixedField, JustifiesWhatIsNoNumber) {
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(std::nan(""), 3, 6); }), "   nan");
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(std::copysign(std::nan(""), -1.0), 3, 6); }), "  -nan");
    EXPECT_EQ(written([](TextWriter& out) { out.fixed(-Limits::infinity(), 0, 2, '0'); }), "-inf");
}

TEST(ScientificField, TakesTheExponentLetterOfItsCaller) {
    EXPECT_EQ(written([](TextWriter& out) { out.scientific(5153.5, 12, 19, 'e'); }), " 5.153500000000e+03");
    EXPECT_EQ(written([](TextWriter& out) { out.scientific(5153.5, 12, 19, 'D'); }), " 5.153500000000D+03");
}

TEST(RinexNumber, FillsAnEphemerisField) {
    EXPECT_EQ(rinexNumber(0.0, 12, 19), " 0.000000000000D+00");
    EXPECT_EQ(rinexNumber(-1.5, 12, 19), "-1.500000000000D+00");
    EXPECT_EQ(rinexNumber(1.0E-100, 12, 19), "1.000000000000D-100");
    EXPECT_EQ(rinexNumber(-1.0E-100, 12, 19), "-1.000000000000D-100");
}

TEST(RinexNumber, FillsAHeaderCoefficient) {
    EXPECT_EQ(rinexNumber(1234.5, 4, 12), "  1.2345D+03");
    EXPECT_EQ(rinexNumber(-2.5e-7, 9, 16), "-2.500000000D-07");
    EXPECT_EQ(rinexNumber(2.5e-7, 9, 16), " 2.500000000D-07");
}

TEST(RinexNumber, IsNotPaddedWhereTheFieldIsNarrowerThanTheText) {
    EXPECT_EQ(rinexNumber(0.0, 10, 12), "0.0000000000D+00");
    EXPECT_EQ(rinexNumber(-1.0, 10, 12), "-1.0000000000D+00");
}

TEST(RinexNumber, ShowsTheDigitsOfAWidenedSinglePrecisionValue) {
    EXPECT_EQ(rinexNumber(static_cast<double>(12345.678F), 12, 19), " 1.234567773438D+04");
}

TEST(RinexNumber, HasNoExponentLetterInWhatIsNoNumber) {
    EXPECT_EQ(rinexNumber(Limits::infinity(), 12, 19), "                inf");
    EXPECT_EQ(rinexNumber(std::nan(""), 12, 19), "                nan");
}

TEST(TextWriter, AppendsInTheOrderOfTheCalls) {
    EXPECT_EQ(written([](TextWriter& out) {
                  out.text("G").integer(7, 2, '0').blanks(1).fixed(1.5, 1, 5).left("x", 2).right("y", 2);
                  out.endLine().text("z").endLine();
              }),
              "G07   1.5x  y\nz\n");
}

TEST(TextWriter, WritesNothingOfItsOwn) {
    EXPECT_EQ(written([](TextWriter&) {}), "");
}

TEST(TextWriter, LineEndIsOneCharacter) {
    EXPECT_EQ(written([](TextWriter& out) { out.endLine(); }), "\n");
}

TEST(TextWriter, HandsItsTextOnWhenFlushed) {
    std::ostringstream sink;
    TextWriter out(sink);
    out.text("abc");
    out.flush();
    EXPECT_EQ(sink.str(), "abc");
    out.flush();
    EXPECT_EQ(sink.str(), "abc");
    out.text("d");
    out.flush();
    EXPECT_EQ(sink.str(), "abcd");
}

TEST(TextWriter, KeepsTheOrderAcrossManyFullBuffers) {
    std::string expected;
    const std::string text = written([&](TextWriter& out) {
        for (int i = 0; i < 60'000; ++i) {
            out.integer(i, 7).text(i % 3 == 0 ? "abc" : "").endLine();
            const std::string digits = std::to_string(i);
            expected += std::string(7 - digits.size(), ' ') + digits + (i % 3 == 0 ? "abc\n" : "\n");
        }
    });
    EXPECT_GT(text.size(), 3 * TextWriter::capacity);
    EXPECT_TRUE(text == expected);
}

TEST(TextWriter, TakesATextLongerThanItsBuffer) {
    const std::string longText(3 * TextWriter::capacity + 1, 'x');
    EXPECT_TRUE(written([&](TextWriter& out) { out.text("a").text(longText).text("b"); }) ==
                "a" + longText + "b");
}

TEST(TextWriter, TakesATextThatJustFillsItsBuffer) {
    for (const std::size_t size :
         {TextWriter::capacity - 1, TextWriter::capacity, TextWriter::capacity + 1}) {
        const std::string text(size, 'x');
        EXPECT_TRUE(written([&](TextWriter& out) { out.text(text).text("b"); }) == text + "b") << size;
    }
}

TEST(TextWriter, PadsBeyondItsBuffer) {
    constexpr int wide = 3 * static_cast<int>(TextWriter::capacity);
    const std::string blanks(wide, ' ');
    EXPECT_TRUE(written([](TextWriter& out) { out.text("a").blanks(wide).text("b"); }) == "a" + blanks + "b");
    EXPECT_TRUE(written([](TextWriter& out) { out.left("a", wide + 1); }) == "a" + blanks);
    EXPECT_TRUE(written([](TextWriter& out) { out.right("a", wide + 1); }) == blanks + "a");
}

TEST(TextWriter, ReservedTextCountsUpToItsCommittedEnd) {
    EXPECT_EQ(written([](TextWriter& out) {
                  out.text("<");
                  char* const room = out.reserve(100);
                  std::fill_n(room, 100, 'x');
                  out.commit(room + 3);
                  out.reserve(100);
                  out.text(">");
              }),
              "<xxx>");
}

TEST(TextWriter, ReservesInOnePieceUpToItsWholeBuffer) {
    const std::string text = written([](TextWriter& out) {
        out.text("<");
        char* const room = out.reserve(TextWriter::capacity);
        std::fill_n(room, TextWriter::capacity, 'x');
        out.commit(room + TextWriter::capacity);
        out.text(">");
    });
    EXPECT_TRUE(text == "<" + std::string(TextWriter::capacity, 'x') + ">");
}

TEST(TextWriter, IgnoresTheLocaleOfItsStream) {
    std::ostringstream sink;
    sink.imbue(std::locale(std::locale::classic(), new CommaPoint));
    {
        TextWriter out(sink);
        out.fixed(1234567.5, 3, 1).blanks(1).integer(1234567, 1).blanks(1).scientific(0.5, 2, 1, 'D');
    }
    EXPECT_EQ(sink.str(), "1234567.500 1234567 5.00D-01");
}

TEST(TextWriter, WithoutASinkIsClosedAndTakesEverything) {
    TextWriter out(nullptr);
    EXPECT_FALSE(out.isOpen());
    for (int i = 0; i < 100'000; ++i) {
        out.text("some text").integer(i, 6).fixed(1.5, 3, 14).blanks(3).endLine();
    }
    out.commit(out.reserve(400) + 400);
    out.flush();
    EXPECT_FALSE(out.isOpen());
}

TEST(TextWriter, WithASinkIsOpen) {
    std::ostringstream sink;
    EXPECT_TRUE(TextWriter(sink).isOpen());
    EXPECT_TRUE(TextWriter(&sink).isOpen());
}

TEST(TextWriter, WritesOnSilentlyWhenItsSinkHasFailed) {
    std::ostringstream sink;
    TextWriter out(sink);
    out.text("before");
    out.flush();
    sink.setstate(std::ios::badbit);
    out.text("after");
    out.flush();
    EXPECT_EQ(sink.str(), "before");
    EXPECT_TRUE(out.isOpen());
}
