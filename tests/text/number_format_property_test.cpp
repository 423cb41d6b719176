// The formatters against the C library and C++ streams over millions of doubles, with those that lie on or
// beside a rounding boundary taken on purpose.
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iomanip>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "text/number_format.h"

namespace {

using Limits = std::numeric_limits<double>;

// Counts disagreements and keeps the first for the message.
class Agreement {
public:
    void check(std::string_view got, std::string_view expected, double value, int argument) {
        if (got != expected && disagreements_++ == 0) {
            std::ostringstream text;
            text << "value " << std::hexfloat << value << ", argument " << argument << ": got \"" << got
                 << "\", expected \"" << expected << '"';
            first_ = text.str();
        }
    }
    void expectNone() const { EXPECT_EQ(disagreements_, 0) << first_; }

private:
    int disagreements_ = 0;
    std::string first_;
};

// A text of the C library's printf.
template <class... Arguments>
std::string_view printed(std::array<char, 512>& buffer, const char* form, Arguments... arguments) {
    return {buffer.data(),
            static_cast<std::size_t>(std::snprintf(buffer.data(), buffer.size(), form, arguments...))};
}

// At every width from 1 to 20 in turn. Nothing ahead of the field may change.
void checkFixed3(Agreement& agreement, double value, int turn) {
    static std::array<char, 512> reference;
    static std::array<char, orbconv::maxNumberText + 20> text;
    const int width = turn % 20 + 1;
    std::memset(text.data(), '#', 8);
    char* const field = text.data() + 8;
    std::memset(field, ' ', 20);
    const char* const end = orbconv::formatFixed3IntoBlanks(field, value, width);
    agreement.check({text.data(), end}, printed(reference, "########%*.3f", width, value), value, width);
}

void checkRight(Agreement& agreement, double value, int decimals, int width) {
    static std::array<char, 512> reference;
    static std::array<char, orbconv::maxNumberText + 20> text;
    std::memset(text.data(), ' ', 20);
    const char* const end = orbconv::formatRightIntoBlanks(text.data(), value, decimals, width);
    agreement.check({text.data(), end}, printed(reference, "%*.*f", width, decimals, value), value, decimals);
}

void checkFixed(Agreement& agreement, double value, int decimals) {
    static std::array<char, 512> reference;
    static std::array<char, orbconv::maxNumberText> text;
    const char* const end = orbconv::formatFixed(text.data(), value, decimals);
    agreement.check({text.data(), end}, printed(reference, "%.*f", decimals, value), value, decimals);
}

void checkScientific(Agreement& agreement, double value, int precision) {
    static std::array<char, 512> reference;
    static std::array<char, orbconv::maxNumberText> text;
    const char* const end = orbconv::formatScientific(text.data(), value, precision, 'e');
    agreement.check({text.data(), end}, printed(reference, "%.*e", precision, value), value, precision);
}

// A value, its two neighbours, and the same with a minus sign.
template <class Check>
void withNeighbours(double value, Check check) {
    for (const double near :
         {std::nextafter(value, -Limits::infinity()), value, std::nextafter(value, Limits::infinity())}) {
        check(near);
        check(-near);
    }
}

// Values on and beside the boundaries of rounding with few decimals.
template <class Check>
void forBoundaries(Check check) {
    for (double scale = 1e-8; scale < 1e18; scale *= 10.0) {
        for (const double digits : {0.99999999, 9.9994, 9.9995, 9.9996, 9.99949999, 9.5, 9.05, 1.0, 5.0}) {
            withNeighbours(digits * scale, check);
        }
    }
    for (int exponent = -1074; exponent < 1024; ++exponent) {
        withNeighbours(std::ldexp(1.0, exponent), check);
    }
    for (const double value :
         {Limits::max(), Limits::min(), Limits::denorm_min(), 9007199254740992.0, 9223372036854775.0,
          9223372036854775.8, 9223372036854775807.0, 18446744073709551615.0, 18446744073709551.615}) {
        withNeighbours(value, check);
    }
}

// Exact ties at `decimals` decimals: an odd number of halves of the last digit is a binary fraction only if
// it is an odd multiple of 2 to the power -(decimals + 1).
template <class Check>
void forTies(std::mt19937_64& random, int decimals, int count, Check check) {
    for (int i = 0; i < count; ++i) {
        const auto odd = static_cast<double>((random() >> (random() % 40 + 13)) | 1U);
        withNeighbours(std::ldexp(odd, -decimals - 1), check);
    }
}

double anyDouble(std::mt19937_64& random) {
    for (;;) {
        const auto value = std::bit_cast<double>(random());
        if (std::isfinite(value)) {
            return value;
        }
    }
}

double subnormal(std::mt19937_64& random) {
    return std::bit_cast<double>(random() >> 12U);
}

// The numbers that measurements are: up to some 1e8, and multiples of a ten-thousandth. One in four is of
// any magnitude around them, beyond where thousandths fit in 64 bits.
double measurement(std::mt19937_64& random) {
    const auto number = static_cast<double>(static_cast<std::int64_t>(random() >> 24U) - (1LL << 39));
    switch (random() % 4) {
        case 0: return number / 1024.0;
        case 1: return number / 10000.0;
        case 2: return std::ldexp(number, static_cast<int>(random() % 90) - 60);
        default: return number * 299.792458e-6 * 0.7;
    }
}

}  // namespace

TEST(FormatInteger, EqualsTheLibraryForAllMagnitudes) {
    std::mt19937_64 random(1);
    int disagreements = 0;
    for (int i = 0; i < 200'000; ++i) {
        const auto value = static_cast<std::int64_t>(random()) >> (random() % 64);
        std::array<char, 20> text{};
        const char* const end = orbconv::formatInteger(text.data(), value);
        disagreements +=
            std::string(static_cast<const char*>(text.data()), end) != std::to_string(value) ? 1 : 0;
    }
    EXPECT_EQ(disagreements, 0);
}

TEST(FormatFixed, EqualsPrintfOnBoundariesForEveryNumberOfDecimals) {
    Agreement agreement;
    for (int decimals = 0; decimals <= orbconv::maxDecimals; ++decimals) {
        forBoundaries([&](double value) { checkFixed(agreement, value, decimals); });
    }
    agreement.expectNone();
}

TEST(FormatFixed, EqualsPrintfOnTiesAndRandomValues) {
    Agreement agreement;
    std::mt19937_64 random(2);
    for (int decimals = 0; decimals <= orbconv::maxDecimals; ++decimals) {
        const auto check = [&](double value) { checkFixed(agreement, value, decimals); };
        forTies(random, decimals, 3000, check);
        for (int i = 0; i < 20'000; ++i) {
            check(measurement(random));
        }
        for (int i = 0; i < 2000; ++i) {
            check(anyDouble(random));
            check(subnormal(random));
        }
    }
    agreement.expectNone();
}

TEST(FormatScientific, EqualsPrintfOnBoundariesAndRandomValues) {
    Agreement agreement;
    std::mt19937_64 random(3);
    for (int precision = 0; precision <= orbconv::maxDecimals; ++precision) {
        const auto check = [&](double value) { checkScientific(agreement, value, precision); };
        forBoundaries(check);
        for (int i = 0; i < 10'000; ++i) {
            check(measurement(random));
            check(anyDouble(random));
            check(subnormal(random));
        }
    }
    agreement.expectNone();
}

TEST(FormatFixed3IntoBlanks, EqualsPrintfOnBoundariesAtEveryWidth) {
    Agreement agreement;
    for (int width = 0; width < 20; ++width) {
        forBoundaries([&](double value) { checkFixed3(agreement, value, width); });
    }
    agreement.expectNone();
}

TEST(FormatFixed3IntoBlanks, EqualsPrintfOnMillionsOfMeasurementsAndTies) {
    Agreement agreement;
    std::mt19937_64 random(4);
    int turn = 0;
    const auto check = [&](double value) { checkFixed3(agreement, value, turn++); };
    for (int i = 0; i < 3'000'000; ++i) {
        check(measurement(random));
    }
    forTies(random, 3, 100'000, check);
    for (int i = 0; i < 200'000; ++i) {
        check(anyDouble(random));
        check(subnormal(random));
    }
    agreement.expectNone();
}

TEST(FormatRightIntoBlanks, EqualsPrintfForEveryNumberOfDecimalsAndWidth) {
    Agreement agreement;
    std::mt19937_64 random(6);
    for (int decimals = 0; decimals <= orbconv::maxDecimals; ++decimals) {
        for (int i = 0; i < 4000; ++i) {
            checkRight(agreement, measurement(random), decimals, i % 20 + 1);
            checkRight(agreement, anyDouble(random), decimals, i % 20 + 1);
        }
    }
    agreement.expectNone();
}

TEST(FormatFixed3IntoBlanks, EqualsAClassicStream) {
    Agreement agreement;
    std::mt19937_64 random(5);
    std::array<char, orbconv::maxNumberText> text{};
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << std::fixed << std::setprecision(3);
    for (int i = 0; i < 100'000; ++i) {
        const double value = measurement(random);
        const int width = i % 20 + 1;
        stream.str({});
        stream << std::setw(width) << value;
        text.fill(' ');
        const char* const end = orbconv::formatFixed3IntoBlanks(text.data(), value, width);
        agreement.check({text.data(), end}, stream.str(), value, width);
    }
    agreement.expectNone();
}
