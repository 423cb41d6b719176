// The one way from fields to an output file: a buffer of fixed size in front of a text stream. Every
// member appends; nothing is cut, so a text wider than its field moves the rest of the line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string_view>

namespace orbconv {

class TextWriter {
public:
    // The sink must outlive the writer. A null sink is a file that could not be opened: isOpen() is false
    // and everything written goes nowhere.
    explicit TextWriter(std::ostream* sink);
    explicit TextWriter(std::ostream& sink) : TextWriter(&sink) {}
    ~TextWriter();
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;

    [[nodiscard]] bool isOpen() const { return sink_ != nullptr; }

    // As it stands.
    TextWriter& text(std::string_view text);
    // Blank-filled to `width` columns at least.
    TextWriter& left(std::string_view text, int width);
    TextWriter& right(std::string_view text, int width);
    // `count` blanks; none for a count below 1.
    TextWriter& blanks(int count);
    // Right-justified in `width`. The fill stands ahead of a minus sign: -7 in width 3 with '0' is "0-7".
    TextWriter& integer(std::int64_t value, int width, char fill = ' ');
    TextWriter& fixed(double value, int decimals, int width, char fill = ' ');
    TextWriter& scientific(double value, int precision, int width, char exponentLetter);
    // One character '\n'; the stream below turns it into the platform's line end.
    TextWriter& endLine();

    // For writers of whole lines: at least `size` bytes of room in one piece, size <= capacity. The text
    // written there counts once commit() has been told its end.
    char* reserve(std::size_t size);
    void commit(const char* end);

    // Hands what is buffered to the sink.
    void flush();

    static constexpr std::size_t capacity = std::size_t{128} * 1024;

private:
    TextWriter& fill(char character, int count);
    TextWriter& padded(std::string_view text, int width, char character);

    std::ostream* sink_;
    std::unique_ptr<char[]> buffer_;  // NOLINT(*-avoid-c-arrays): uninitialised on purpose
    std::size_t size_ = 0;
};

}  // namespace orbconv
