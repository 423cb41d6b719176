#include "text/text_writer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <ostream>

#include "text/number_format.h"

namespace orbconv {

TextWriter::TextWriter(std::ostream* sink)
    : sink_(sink), buffer_(std::make_unique_for_overwrite<char[]>(capacity)) {}

TextWriter::~TextWriter() {
    flush();
}

void TextWriter::flush() {
    if (sink_ != nullptr && size_ > 0) {
        sink_->write(buffer_.get(), static_cast<std::streamsize>(size_));
    }
    size_ = 0;
}

char* TextWriter::reserve(std::size_t size) {
    if (capacity - size_ < size) {
        flush();
    }
    return buffer_.get() + size_;
}

void TextWriter::commit(const char* end) {
    size_ = static_cast<std::size_t>(end - buffer_.get());
}

TextWriter& TextWriter::text(std::string_view text) {
    while (!text.empty()) {
        const std::size_t piece = std::min(text.size(), capacity);
        char* const out = reserve(piece);
        std::memcpy(out, text.data(), piece);
        commit(out + piece);
        text.remove_prefix(piece);
    }
    return *this;
}

TextWriter& TextWriter::fill(char character, int count) {
    for (auto left = static_cast<std::size_t>(std::max(count, 0)); left > 0;) {
        const std::size_t piece = std::min(left, capacity);
        char* const out = reserve(piece);
        std::memset(out, character, piece);
        commit(out + piece);
        left -= piece;
    }
    return *this;
}

TextWriter& TextWriter::blanks(int count) {
    return fill(' ', count);
}

TextWriter& TextWriter::left(std::string_view text, int width) {
    return this->text(text).blanks(width - static_cast<int>(text.size()));
}

TextWriter& TextWriter::right(std::string_view text, int width) {
    return padded(text, width, ' ');
}

TextWriter& TextWriter::padded(std::string_view text, int width, char character) {
    return fill(character, width - static_cast<int>(text.size())).text(text);
}

TextWriter& TextWriter::integer(std::int64_t value, int width, char fill) {
    std::array<char, 20> digits;  // NOLINT(*-member-init): filled by the formatter
    const char* const end = formatInteger(digits.data(), value);
    return padded({digits.data(), static_cast<std::size_t>(end - digits.data())}, width, fill);
}

TextWriter& TextWriter::fixed(double value, int decimals, int width, char fill) {
    std::array<char, maxNumberText> digits;  // NOLINT(*-member-init): filled by the formatter
    const char* const end = formatFixed(digits.data(), value, decimals);
    return padded({digits.data(), static_cast<std::size_t>(end - digits.data())}, width, fill);
}

TextWriter& TextWriter::scientific(double value, int precision, int width, char exponentLetter) {
    std::array<char, maxNumberText> digits;  // NOLINT(*-member-init): filled by the formatter
    const char* const end = formatScientific(digits.data(), value, precision, exponentLetter);
    return padded({digits.data(), static_cast<std::size_t>(end - digits.data())}, width, ' ');
}

TextWriter& TextWriter::endLine() {
    char* const out = reserve(1);
    *out = '\n';
    commit(out + 1);
    return *this;
}

}  // namespace orbconv
