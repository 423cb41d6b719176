// The number formatters against a stream in the classic locale, for every form that a file has and for random
// further ones: the same characters, nothing written ahead of a field, nothing behind its text that a later
// one would not overwrite.
//
// An input: two bytes that choose a form of their own, then numbers of eight bytes each.
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <locale>
#include <random>
#include <sstream>
#include <string>

#include "fuzz_input.h"
#include "run_limits.h"
#include "text/number_format.h"
#include "text/text_writer.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

struct Form {
    bool scientific;
    int decimals;
    int width;
    char letter;  // 0 without an exponent
};

// The forms that the files have.
constexpr std::array<Form, 16> forms = {{
    {false, 3, 14, 0},   // pseudorange, Doppler
    {false, 3, 16, 0},   // phase
    {false, 3, 13, 0},   // strength
    {false, 3, 10, 0},   // interval
    {false, 0, 2, 0},    // parts of a date
    {false, 0, 6, 0},    //
    {false, 2, 9, 0},    // version
    {false, 4, 14, 0},   // position
    {false, 5, 8, 0},    // phase shift
    {false, 7, 10, 0},   // seconds
    {false, 12, 15, 0},  // receiver clock offset
    {true, 12, 19, 'D'},
    {true, 12, 19, 'e'},
    {true, 4, 12, 'D'},
    {true, 10, 12, 'D'},
    {true, 9, 16, 'D'},
}};

std::string streamed(const Form& form, double value) {
    static std::ostringstream stream = [] {
        std::ostringstream made;
        made.imbue(std::locale::classic());
        return made;
    }();
    stream.str({});
    stream << (form.scientific ? std::scientific : std::fixed) << std::setprecision(form.decimals) << value;
    return stream.str();
}

std::string rightIn(const std::string& text, int width) {
    const auto columns = static_cast<std::size_t>(width);
    return text.size() < columns ? std::string(columns - text.size(), ' ') + text : text;
}

void requireSame(const std::string& got, const std::string& expected, const Form& form, double value) {
    if (got != expected) {
        std::cerr << "value " << std::hexfloat << value << ", decimals " << form.decimals << ", width "
                  << form.width << ": got \"" << got << "\", expected \"" << expected << "\"\n";
        std::abort();
    }
}

// Room on both sides that must stay as it was.
class Field {
public:
    Field() {
        text_.fill('#');
        std::fill_n(begin(), 40, ' ');
    }
    char* begin() { return text_.data() + margin; }
    std::string upTo(const char* end) {
        for (std::size_t i = 0; i < margin; ++i) {
            if (text_[i] != '#' || text_[text_.size() - 1 - i] != '#') {
                std::abort();
            }
        }
        return {begin(), static_cast<std::size_t>(end - begin())};
    }

private:
    static constexpr std::size_t margin = 8;
    std::array<char, orbconv::maxNumberText + 40 + 2 * margin> text_;
};

void checkForm(const Form& form, double value) {
    const std::string text = streamed(form, value);
    if (form.scientific) {
        std::string expected = text;
        if (std::isfinite(value)) {
            expected[expected.find('e')] = form.letter;
        }
        Field field;
        requireSame(field.upTo(orbconv::formatScientific(field.begin(), value, form.decimals, form.letter)),
                    expected, form, value);
        return;
    }
    Field plain;
    requireSame(plain.upTo(orbconv::formatFixed(plain.begin(), value, form.decimals)), text, form, value);
    Field right;
    requireSame(right.upTo(orbconv::formatRightIntoBlanks(right.begin(), value, form.decimals, form.width)),
                rightIn(text, form.width), form, value);
    if (form.decimals == 3) {
        Field quick;
        requireSame(quick.upTo(orbconv::formatFixed3IntoBlanks(quick.begin(), value, form.width)),
                    rightIn(text, form.width), form, value);
    }
}

void checkInteger(std::int64_t value) {
    std::array<char, 20> text{};
    const std::string got(text.data(), orbconv::formatInteger(text.data(), value));
    if (got != std::to_string(value)) {
        std::abort();
    }
}

// A number on or beside a boundary of rounding, or one of the special ones.
double mutatedNumber(std::minstd_rand& random) {
    const auto below = [&](std::uint64_t bound) {
        return (std::uint64_t{random()} << 31 ^ random()) % bound;
    };
    double value = 0.0;
    switch (below(5)) {
        case 0:  // an odd number of halves of the last digit
            value = std::ldexp(static_cast<double>((below(1ULL << 50) >> below(45)) | 1U),
                               -static_cast<int>(below(16)) - 1);
            break;
        case 1:  // a decimal fraction that ends in 5
            value = (static_cast<double>(below(1ULL << 50) >> below(48)) + 0.5) *
                    std::pow(10.0, -static_cast<double>(below(15)));
            break;
        case 2:  // nines, or a power of ten
            value = std::pow(10.0, static_cast<double>(below(40)) - 20.0);
            break;
        case 3: value = std::bit_cast<double>(below(1ULL << 62) << 2); break;
        default:
            value = static_cast<float>(std::bit_cast<float>(static_cast<std::uint32_t>(below(1ULL << 32))));
    }
    const std::uint64_t neighbour = below(5);
    if (neighbour < 2) {
        value = std::nextafter(value, neighbour == 0 ? -INFINITY : INFINITY);
    }
    return below(4) == 0 ? -value : value;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    constexpr std::size_t head = 2;
    std::minstd_rand random(seed);
    const std::size_t places = maxSize > head ? std::min<std::size_t>((maxSize - head) / 8, 16) : 0;
    if (random() % 3 == 0 || places == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    const std::size_t end = head + 8 * (random() % places + 1);
    for (std::size_t i = size; i < end; ++i) {
        data[i] = 0;
    }
    for (std::size_t i = head; i < end; i += 8) {
        const double value = mutatedNumber(random);
        std::memcpy(data + i, &value, sizeof(value));
    }
    return end;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::TimeLimit timeLimit(size);
    fuzzing::ByteSource input({data, size});
    const int decimals = input.number<std::uint8_t>() % (orbconv::maxDecimals + 1);
    const int width = input.number<std::uint8_t>() % 31;
    while (!input.empty()) {
        const auto value = input.number<double>();
        for (const Form& form : forms) {
            checkForm(form, value);
        }
        checkForm({.scientific = false, .decimals = decimals, .width = width, .letter = 0}, value);
        checkForm({.scientific = true, .decimals = decimals, .width = width, .letter = 'D'}, value);
        checkForm({.scientific = false, .decimals = 3, .width = width, .letter = 0}, value);
        checkInteger(std::bit_cast<std::int64_t>(value));
    }
    return 0;
}
