// Compares the formatter of the hot path with the standard library's on every 32-bit float widened to a
// double, and on random and adversarial doubles. Takes minutes: no part of the suite.
//
//     orbconv_format_check [DOUBLES]      a billion doubles unless told otherwise
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "text/number_format.h"

namespace {

constexpr std::array<int, 3> widths = {13, 14, 16};  // those of the epoch lines
constexpr std::uint64_t mostReports = 20;

class Comparison {
public:
    void check(double value) {
        const int width = widths[compared_ % widths.size()];
        std::memset(ours_.data(), ' ', 32);
        const char* const end = orbconv::formatFixed3IntoBlanks(ours_.data(), value, width);
        const std::string_view ours(ours_.data(), static_cast<std::size_t>(end - ours_.data()));
        const std::string_view standard = expected(value, width);
        ++compared_;
        if (ours != standard && ++differences_ <= mostReports) {
            std::printf("%a in %d columns: [%.*s] instead of [%.*s]\n", value, width,
                        static_cast<int>(ours.size()), ours.data(), static_cast<int>(standard.size()),
                        standard.data());
        }
    }

    [[nodiscard]] std::uint64_t compared() const { return compared_; }
    [[nodiscard]] std::uint64_t differences() const { return differences_; }

private:
    // The standard's text, right-justified as a stream does it. Where the formatter itself falls back on
    // to_chars, printf is asked instead.
    std::string_view expected(double value, int width) {
        char* const text = standard_.data() + 32;
        const bool shared = !(std::fabs(value) < 0x1p53);
        const int length =
            shared ? std::snprintf(text, 400, "%.3f", value)
                   : static_cast<int>(
                         std::to_chars(text, text + 400, value, std::chars_format::fixed, 3).ptr - text);
        const int padding = length < width ? width - length : 0;
        std::memset(text - padding, ' ', static_cast<std::size_t>(padding));
        return {text - padding, static_cast<std::size_t>(length + padding)};
    }

    std::array<char, 512> ours_{};
    std::array<char, 512> standard_{};
    std::uint64_t compared_ = 0;
    std::uint64_t differences_ = 0;
};

// splitmix64.
class Random {
public:
    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return z ^ (z >> 31);
    }

private:
    std::uint64_t state_ = 2026;
};

// Doubles of the kinds that matter, in turn.
double adversarial(Random& random, std::uint64_t i) {
    const std::uint64_t bits = random.next();
    const auto count = static_cast<double>(static_cast<std::int64_t>(bits >> 20) - (std::int64_t{1} << 43));
    switch (i % 8) {
        case 0: return std::bit_cast<double>(bits);  // any bits at all
        case 1:
            return static_cast<double>(bits % 2'000'000'000'000) * 1e-4 - 1e8;  // the log's unit of Doppler
        case 2: return count / 16384.0;                                         // exact ties among them
        case 3: return std::ldexp(1.0, static_cast<int>(bits % 120) - 60);      // powers of two
        case 4: return (static_cast<double>(bits % 1'000'000'000'000) + 0.5) / 1000.0;  // next to ties
        case 5:
            return std::nextafter((static_cast<double>(bits % 100'000'000) + 0.5) / 1000.0,
                                  (bits >> 63) != 0 ? 1e30 : -1e30);
        case 6:
            return std::bit_cast<double>((bits % (std::uint64_t{200} << 52)) + (std::uint64_t{960} << 52));
        default: return -static_cast<double>(bits % 10'000'000'000) * 1e-3;  // carries, signs
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::uint64_t doubles = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1'000'000'000;
    Comparison comparison;
    for (std::uint64_t bits = 0; bits <= 0xFFFFFFFF; ++bits) {
        comparison.check(static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits))));
    }
    std::printf("%llu floats, %llu differences\n", static_cast<unsigned long long>(comparison.compared()),
                static_cast<unsigned long long>(comparison.differences()));
    Random random;
    for (std::uint64_t i = 0; i < doubles; ++i) {
        comparison.check(adversarial(random, i));
    }
    std::printf("%llu values in all, %llu differences\n",
                static_cast<unsigned long long>(comparison.compared()),
                static_cast<unsigned long long>(comparison.differences()));
    return comparison.differences() == 0 ? 0 : 1;
}
