#include "reading/log_reader.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "reading/message_lengths.h"

namespace orbconv::reading {

namespace {

constexpr std::size_t headerBytes = 5;   // an id and three digits
constexpr std::size_t digitsOffset = 2;  // of the first digit

// A long body, the line end of a text and the one byte that may follow.
constexpr std::size_t longestMessage = headerBytes + longestLength + 2 + 1;

// What is looked at to believe or to refuse a message: the message, and a chain of three from any place in
// it.
constexpr std::size_t chainMessages = 3;
constexpr std::size_t lookahead = longestMessage * (1 + chainMessages) + headerBytes;

constexpr std::size_t bufferBytes = std::size_t{512} * 1024;
static_assert(bufferBytes > 4 * lookahead);

constexpr std::uint8_t lineFeed = '\n';
constexpr std::uint8_t carriageReturn = '\r';

// Characters of an id: what prints and is no blank.
constexpr bool isIdCharacter(std::uint8_t character) {
    return character > ' ' && character < 0x7F;
}

// The length of three digits; negative if one is none.
int lengthOf(const std::uint8_t* digits) {
    const int high = digitValue[digits[0]];
    const int middle = digitValue[digits[1]];
    const int low = digitValue[digits[2]];
    return (high | middle | low) >= 0 ? high * 256 + middle * 16 + low : -1;
}

// The bytes between the body and the next message.
std::size_t lineEndOf(std::size_t row) {
    return static_cast<std::size_t>(row == noRow ? binaryLineEnd : messageTable[row].lineEndBytes);
}

constexpr bool isLineEnd(std::uint8_t character) {
    return character == lineFeed || character == carriageReturn;
}

}  // namespace

std::span<const std::uint8_t> Message::content() const {
    return lineEndOf(row) == textLineEnd ? body : body.first(body.size() - 1);
}

std::size_t LogReader::Start::bytes() const {
    return headerBytes + length + lineEnd;
}

LogReader::LogReader(std::FILE* file) : file_(file), buffer_(bufferBytes) {
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);  // the window is the buffer
    window_ = buffer_.data();
}

LogReader::LogReader(std::FILE* file, const Habits& habits) : LogReader(file) {
    habits_ = habits;
}

LogReader::LogReader(std::span<const std::uint8_t> bytes)
    : window_(bytes.data()), windowBytes_(bytes.size()), atEnd_(true) {}

// Slides the window so that it holds all that is looked at from the next byte on, or reaches to the end.
void LogReader::fill() {
    if (atEnd_ || windowBytes_ - at_ >= lookahead) {
        return;
    }
    const std::size_t held = windowBytes_ - at_;
    std::memmove(buffer_.data(), buffer_.data() + at_, held);
    windowOffset_ += at_;
    at_ = 0;
    windowBytes_ = held;
    while (windowBytes_ < buffer_.size()) {
        const std::size_t got =
            std::fread(buffer_.data() + windowBytes_, 1, buffer_.size() - windowBytes_, file_.get());
        if (got == 0) {
            atEnd_ = true;
            failed_ = std::ferror(file_.get()) != 0;
            break;
        }
        windowBytes_ += got;
    }
}

// Whether five characters at `place` can open a message.
bool LogReader::startsAt(std::size_t place, Start& start) const {
    start.row = noRow;
    if (place + headerBytes > windowBytes_) {
        return false;
    }
    const std::uint8_t* const header = window_ + place;
    const int length = lengthOf(header + digitsOffset);
    if (length < 0 || !isIdCharacter(header[0]) || !isIdCharacter(header[1])) {
        return false;
    }
    const MessageId id{static_cast<char>(header[0]), static_cast<char>(header[1])};
    start.row = findRowQuickly(id);
    start.length = static_cast<std::size_t>(length);
    start.lineEnd = lineEndOf(start.row);
    return start.row == noRow ? length >= leastLength : lengthIsPossible(messageTable[start.row], length);
}

// The end of the message at `place` if another one or the end of the log stands there, else 0. Where the
// plain length leads nowhere, one byte more may: a long GLONASS ephemeris can bring it. An unknown id, of
// which any length is possible, is easily met by chance: on either side of one the line end counts, too.
std::size_t LogReader::followedEnd(std::size_t place, const Start& start, Start& follower) const {
    const std::size_t plain = place + start.bytes();
    for (std::size_t end = plain; end <= std::min(plain + 1, windowBytes_); ++end) {
        const bool leadsOn = startsAt(end, follower) || (end == windowBytes_ && atEnd_);
        const bool bothKnown = start.row != noRow && follower.row != noRow;
        if (leadsOn && (bothKnown || isLineEnd(window_[end - 1]))) {
            return end;
        }
    }
    return 0;
}

// Whether the message of a known id at `place` is all there and ends with a line feed.
bool LogReader::isWhole(std::size_t place, const Start& start) const {
    const std::size_t end = place + start.bytes();
    return start.row != noRow && end <= windowBytes_ && window_[end - 1] == lineFeed;
}

// Whether three messages follow each other from `place` on, or messages of known ids up to the very end of
// the log.
bool LogReader::opensChain(std::size_t place, const Start& start) const {
    Start link = start;
    Start next;
    bool allKnown = true;
    std::size_t end = place;
    for (std::size_t messages = 1; messages <= chainMessages; ++messages) {
        end = followedEnd(end, link, next);
        allKnown = allKnown && link.row != noRow;
        if (end == 0 || end == windowBytes_) {
            return end != 0 && (allKnown || messages == chainMessages);
        }
        link = next;
    }
    return true;
}

// Whether a whole message of a known id stands at `place`. The five characters of an unknown one are met too
// often.
bool LogReader::isCredible(std::size_t place) const {
    Start start;
    return startsAt(place, start) && isWhole(place, start);
}

// Whether another message begins inside the one at `place`: then this one has lost bytes.
bool LogReader::holdsAnother(std::size_t place, const Start& start) const {
    const std::size_t end = std::min(place + start.bytes(), windowBytes_);
    for (std::size_t inner = nextCandidate(place + 1, end); inner < end;
         inner = nextCandidate(inner + 1, end)) {
        if (isCredible(inner)) {
            return true;
        }
    }
    return false;
}

// Whether whole messages of known ids, one or more, fill the log from `place` to `end`.
bool LogReader::leadsTo(std::size_t end, std::size_t place) const {
    Start link;
    while (place < end && startsAt(place, link) && isWhole(place, link)) {
        place += link.bytes();
    }
    return place == end;
}

// Whether two whole messages of known ids follow each other, the first at `place`.
bool LogReader::opensPair(std::size_t place) const {
    Start first;
    return startsAt(place, first) && isWhole(place, first) && isCredible(place + first.bytes());
}

// Whether what the message at `place` takes for its body is other messages. They lead to its end; in a binary
// message of an unknown id, which three digits and two characters make out of nothing, a pair of them is
// enough.
bool LogReader::holdsOthers(std::size_t place, const Start& start, std::size_t end) const {
    const bool isDoubtful = start.row == noRow;
    for (std::size_t inner = nextCandidate(place + 1, end); inner < end;
         inner = nextCandidate(inner + 1, end)) {
        if (leadsTo(end, inner) || (isDoubtful && opensPair(inner))) {
            return true;
        }
    }
    return false;
}

// Whether the message at `place`, which nothing follows, can be believed all the same.
bool LogReader::standsAlone(std::size_t place, const Start& start) const {
    return isWhole(place, start) && !holdsAnother(place, start);
}

// Whether the message at `place`, with damage ahead of it, begins a chain.
bool LogReader::beginsAnew(std::size_t place, const Start& start) const {
    Start follower;
    return opensChain(place, start) && !holdsOthers(place, start, followedEnd(place, start, follower));
}

std::size_t LogReader::believedEnd(std::size_t place, Start& start) {
    if (!startsAt(place, start)) {
        return 0;
    }
    Start follower;
    const std::size_t end = followedEnd(place, start, follower);
    if (end == 0) {
        return standsAlone(place, start) ? place + start.bytes() : 0;
    }
    const Habit habit = {static_cast<std::uint16_t>(start.length), static_cast<std::uint8_t>(follower.row)};
    if (start.row == noRow || habits_[start.row] != habit) {
        if (holdsOthers(place, start, end)) {
            return 0;
        }
        if (start.row != noRow) {
            habits_[start.row] = habit;
        }
    }
    return end;
}

// The first place from `place` on, and ahead of `end`, with three digits where a length would stand; `end` if
// there is none.
std::size_t LogReader::nextCandidate(std::size_t place, std::size_t end) const {
    while (place < end && place + headerBytes <= windowBytes_) {
        const std::uint8_t* const digits = window_ + place + digitsOffset;
        if (digitValue[digits[2]] < 0) {
            place += 3;  // no place whose digits this character is among
        } else if (digitValue[digits[1]] < 0) {
            place += 2;
        } else if (digitValue[digits[0]] < 0) {
            place += 1;
        } else {
            return place;
        }
    }
    return end;
}

// Passes over what holds no message, from the next byte on.
void LogReader::takeDamage() {
    damage_.offset = position();
    ++at_;
    for (bool found = false; !found;) {
        fill();
        const std::size_t end = atEnd_ ? windowBytes_ : windowBytes_ - lookahead + 1;
        std::size_t place = nextCandidate(at_, end);
        while (place < end && !found) {
            Start start;
            found = startsAt(place, start) && (beginsAnew(place, start) || standsAlone(place, start));
            if (!found) {
                place = nextCandidate(place + 1, end);
            }
        }
        at_ = place;
        found = found || atEnd_;
    }
    damage_.bytes = position() - damage_.offset;
}

LogItem LogReader::next() {
    fill();
    if (at_ == windowBytes_) {
        return LogItem::end;
    }
    Start start;
    const std::size_t end = believedEnd(at_, start);
    if (end == 0) {
        takeDamage();
        return LogItem::damage;
    }
    const std::uint8_t* const header = window_ + at_;
    message_ = {.id = {static_cast<char>(header[0]), static_cast<char>(header[1])},
                .row = start.row,
                .offset = position(),
                .bytes = static_cast<std::uint32_t>(end - at_),
                .body = {header + headerBytes, start.length}};
    at_ = end;
    return LogItem::message;
}

}  // namespace orbconv::reading
