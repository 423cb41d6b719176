// The log as a careful reader takes it: message after message, each checked before it is believed, and every
// stretch that holds none reported as damage.
//
// A message is believed where an id stands, three hexadecimal digits, a body whose length is possible for the
// id, and behind its line end the start of another message or the end of the log. It is not believed if other
// messages inside it lead to that same place: then it has lost bytes, or a digit of its length is wrong; one
// of an unknown id is not if two messages of known ids follow each other anywhere inside it, unless it is a
// text. A message that is followed by damage is believed if it is whole: its line end stands where it should,
// and no other message begins inside it. Where nothing fits, the reader looks for the next place from which
// three messages follow each other, or messages of known ids up to the end of the log, or at which a whole
// message of a known id stands alone between two damages.
//
// A log that is whole may have one byte more behind a message than its line end. In a damaged one, a single
// byte that came between two messages is taken so, too.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <vector>

#include "log/message_lookup.h"

namespace orbconv::reading {

struct Message {
    MessageId id;
    std::size_t row = noRow;             // of messageTable; noRow for an id that the format does not know
    std::uint64_t offset = 0;            // of the id, from the start of the log
    std::uint32_t bytes = 0;             // of the whole message, the line end included
    std::span<const std::uint8_t> body;  // its `length` bytes, a binary message's checksum included

    // The body without the checksum that ends a binary one.
    [[nodiscard]] std::span<const std::uint8_t> content() const;
};

// A stretch of the log that holds no message.
struct Damage {
    std::uint64_t offset = 0;
    std::uint64_t bytes = 0;

    friend bool operator==(const Damage&, const Damage&) = default;
};

enum class LogItem : std::uint8_t { message, damage, end };

class LogReader {
public:
    // What the last message of a row was like. Receivers send the same messages in the same order, epoch
    // after epoch: only one that is unlike the last is looked through for others.
    struct Habit {
        std::uint16_t length = 0;
        std::uint8_t follower = noRow;  // the row behind it

        friend bool operator==(const Habit&, const Habit&) = default;
    };
    using Habits = std::array<Habit, messageTable.size()>;

    // Reads from an open file and closes it at the end.
    explicit LogReader(std::FILE* file);
    // Goes on where another reader stood, which had these habits, and takes what that one would have taken.
    LogReader(std::FILE* file, const Habits& habits);
    // Reads from memory, which must outlive the reader.
    explicit LogReader(std::span<const std::uint8_t> bytes);

    // Takes the next message or the next stretch of damage. A message's body is valid until the next call.
    // Every byte of the log belongs to just one item.
    LogItem next();

    [[nodiscard]] const Message& message() const { return message_; }
    [[nodiscard]] const Damage& damage() const { return damage_; }

    // How far the log has been taken, in bytes.
    [[nodiscard]] std::uint64_t position() const { return windowOffset_ + at_; }
    [[nodiscard]] const Habits& habits() const { return habits_; }
    // Whether the file gave an error instead of its next bytes. What came before is still handed out.
    [[nodiscard]] bool failed() const { return failed_; }

private:
    // The start of a message at a place of the window: its row and where it ends.
    struct Start {
        std::size_t row = noRow;  // noRow, too, where nothing starts
        std::size_t length = 0;
        std::size_t lineEnd = 0;  // bytes

        [[nodiscard]] std::size_t bytes() const;
    };
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    [[nodiscard]] bool startsAt(std::size_t place, Start& start) const;
    // The end of the message at `place` and what stands there.
    [[nodiscard]] std::size_t followedEnd(std::size_t place, const Start& start, Start& follower) const;
    [[nodiscard]] bool isWhole(std::size_t place, const Start& start) const;
    [[nodiscard]] bool opensChain(std::size_t place, const Start& start) const;
    [[nodiscard]] bool isCredible(std::size_t place) const;
    [[nodiscard]] bool holdsAnother(std::size_t place, const Start& start) const;
    [[nodiscard]] bool leadsTo(std::size_t end, std::size_t place) const;
    [[nodiscard]] bool opensPair(std::size_t place) const;
    [[nodiscard]] bool holdsOthers(std::size_t place, const Start& start, std::size_t end) const;
    [[nodiscard]] bool beginsAnew(std::size_t place, const Start& start) const;
    [[nodiscard]] bool standsAlone(std::size_t place, const Start& start) const;
    // The end of the message at `place` of the window if there is one that is believed, else 0.
    [[nodiscard]] std::size_t believedEnd(std::size_t place, Start& start);
    [[nodiscard]] std::size_t nextCandidate(std::size_t place, std::size_t end) const;

    void fill();
    void takeDamage();

    std::unique_ptr<std::FILE, CloseFile> file_;
    std::vector<std::uint8_t> buffer_;
    const std::uint8_t* window_ = nullptr;
    std::size_t windowBytes_ = 0;
    std::uint64_t windowOffset_ = 0;  // of the window in the log
    std::size_t at_ = 0;              // the next byte, in the window
    bool atEnd_ = false;              // the window reaches to the end of the log
    bool failed_ = false;
    Habits habits_{};
    Message message_;
    Damage damage_;
};

}  // namespace orbconv::reading
