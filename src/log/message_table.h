// The framing of the receiver's log (KVS format), one row a message: which lengths it has, how its body is
// read, and how much room its staging area has.
//
// A message is two characters of id, three characters of length (hexadecimal), the body of that many bytes,
// and one line-end byte after binary messages, two after text messages. The last body byte of a binary
// message is its checksum, which nobody looks at.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "log/navigation_bodies.h"

namespace orbconv {

// The two characters that open a message, comparable and usable in a switch through key().
struct MessageId {
    char first = 0;
    char second = 0;

    constexpr MessageId() = default;
    constexpr MessageId(char firstCharacter, char secondCharacter)
        : first(firstCharacter), second(secondCharacter) {}
    // From a literal of exactly two characters, such as "TD".
    // NOLINTNEXTLINE(*-explicit-*, *-avoid-c-arrays): an id is written as its text
    constexpr MessageId(const char (&text)[3]) : first(text[0]), second(text[1]) {}

    friend constexpr bool operator==(MessageId, MessageId) = default;

    [[nodiscard]] constexpr std::uint16_t key() const {
        return static_cast<std::uint16_t>((static_cast<unsigned char>(first) << 8) |
                                          static_cast<unsigned char>(second));
    }
};

inline constexpr int binaryLineEnd = 1;
inline constexpr int textLineEnd = 2;

// How body and line end are read, and so which lengths a message has.
enum class Reading : std::uint8_t {
    // Of any length: body and line end but for their closing bytes into the area, then the closing bytes.
    block,
    // Of any length too, but read as a block of `assumedLength`.
    fixedBlock,
    // Elements and a checksum: the length is 1 + n * elementBytes. The n elements into the area, then the
    // closing bytes. Of another length the bytes that make up no element stay unread, and the next id is
    // taken from there.
    array,
    // Of the lengths that its forms have: the pieces of the form into the area, then the closing bytes.
    forms,
};

// One read of a message with forms: `bytes` bytes to `areaOffset` of the area.
struct FormPiece {
    std::uint16_t areaOffset;
    std::uint16_t bytes;
};

struct BodyForm {
    int length;  // the length field that picks this form
    std::span<const FormPiece> pieces;
    int bytesBeyondEnd = 0;  // that the reader takes although they are the next message's
};

struct MessageRow {
    MessageId id;
    Reading reading{};
    int lineEndBytes = binaryLineEnd;   // they follow the body and are not in the length
    int assumedLength = 0;              // fixedBlock only
    int elementBytes = 1;               // array only
    std::span<const BodyForm> forms{};  // forms only

    int areaBytes = 0;                   // a longer body fills the area, and the rest of it is dropped
    int closingBytes = 0;                // the last ones of body and line end together: read and dropped
    int closingBytesOfOtherLengths = 0;  // forms only: read for a length that no form has
    MessageId area{};                    // whose area is filled: its own, but for one message
};

// What is staged behind its place in the body. In GE the pair of length 160 and what follows it make room for
// the quartet of length 168, so that each outlives messages of the other form; af0Delta has the place behind
// the pair in both. In CN the rates of lengths 152 and 160 make room for the ages of length 134.
inline constexpr std::size_t ge160Shift = bodies::ge168::af0Delta.offset - bodies::ge::bytes;
inline constexpr std::size_t cnRatesShift = bodies::cn134::bytes - bodies::cn::bytes;

template <class T>
consteval BodyField<T> staged(BodyField<T> field, std::size_t shift) {
    return {field.offset + shift};
}

static_assert(tileBody(bodies::ge::bytes, 175, bodies::ge168::iscL1ca, bodies::ge168::iscL2c,
                       bodies::ge168::iscL5i5, bodies::ge168::iscL5q5,
                       staged(bodies::ge160::iscL1cp, ge160Shift), staged(bodies::ge160::iscL1cd, ge160Shift),
                       staged(bodies::ge160::af0Delta, ge160Shift)));
static_assert(
    tileBody(bodies::cn::bytes, 161, bodies::cn134::aodc, bodies::cn134::aode,
             staged(bodies::cn152::adot, cnRatesShift), staged(bodies::cn152::deltaNDot, cnRatesShift),
             staged(bodies::cn152::sisai, cnRatesShift), staged(bodies::cn152::cnavWord1, cnRatesShift),
             staged(bodies::cn160::cnavWord2, cnRatesShift), staged(bodies::cn160::cnavWord3, cnRatesShift)));

namespace rows {

// Row makers. Whole: the line end goes into the area with the body.
consteval MessageRow block(MessageId id, int areaBytes, int closingBytes) {
    return {.id = id,
            .reading = Reading::block,
            .areaBytes = areaBytes,
            .closingBytes = closingBytes,
            .area = id};
}
consteval MessageRow textBlock(MessageId id, int areaBytes, int closingBytes) {
    return {.id = id,
            .reading = Reading::block,
            .lineEndBytes = textLineEnd,
            .areaBytes = areaBytes,
            .closingBytes = closingBytes,
            .area = id};
}
consteval MessageRow whole(MessageId id, int areaBytes) {
    return {.id = id, .reading = Reading::block, .areaBytes = areaBytes, .area = id};
}
consteval MessageRow wholeText(MessageId id, int areaBytes) {
    return {
        .id = id, .reading = Reading::block, .lineEndBytes = textLineEnd, .areaBytes = areaBytes, .area = id};
}
consteval MessageRow wholeInto(MessageId id, MessageId area) {
    return {.id = id, .reading = Reading::block, .area = area};
}
consteval MessageRow fixedBlock(MessageId id, int assumedLength, int closingBytes) {
    return {.id = id,
            .reading = Reading::fixedBlock,
            .assumedLength = assumedLength,
            .areaBytes = assumedLength + binaryLineEnd - closingBytes,
            .closingBytes = closingBytes,
            .area = id};
}
consteval MessageRow array(MessageId id, int elementBytes, int room = 180) {
    return {.id = id,
            .reading = Reading::array,
            .elementBytes = elementBytes,
            .areaBytes = elementBytes * room,
            .closingBytes = 2,
            .area = id};
}
consteval MessageRow withForms(MessageId id, std::span<const BodyForm> forms, int areaBytes,
                               int closingBytesOfOtherLengths) {
    return {.id = id,
            .reading = Reading::forms,
            .forms = forms,
            .areaBytes = areaBytes,
            .closingBytes = 2,
            .closingBytesOfOtherLengths = closingBytesOfOtherLengths,
            .area = id};
}

using bodies::lengthOf;

inline constexpr std::array<FormPiece, 1> ge123 = {{{0, bodies::kepler::bytes}}};
inline constexpr std::array<FormPiece, 2> ge160 = {
    {{0, bodies::ge::bytes}, {bodies::ge::bytes + ge160Shift, bodies::ge160::bytes - bodies::ge::bytes}}};
inline constexpr std::array<FormPiece, 2> ge168 = {{{0, bodies::ge168::af0Delta.offset},
                                                    {staged(bodies::ge160::af0Delta, ge160Shift).offset,
                                                     bodies::ge168::bytes - bodies::ge168::af0Delta.offset}}};
inline constexpr std::array<BodyForm, 3> geForms = {{
    {lengthOf(bodies::kepler::bytes), ge123},
    {lengthOf(bodies::ge160::bytes), ge160},
    {lengthOf(bodies::ge168::bytes), ge168},
}};

// Deliberate: NE of length 103 reads one byte more than every other message of its length takes, so the
// stream stands one byte past the message's end from then on.
inline constexpr std::array<FormPiece, 1> ne88 = {{{0, bodies::ne::bytes}}};
inline constexpr std::array<FormPiece, 1> ne103 = {{{0, bodies::ne103::bytes + 1}}};
inline constexpr std::array<BodyForm, 2> neForms = {{
    {lengthOf(bodies::ne::bytes), ne88},
    {lengthOf(bodies::ne103::bytes), ne103, 1},
}};

// Deliberate: of a length that has no form, NE reads nothing of the body, and GE and CN only the two closing
// bytes; the rest is taken for further messages.
inline constexpr std::array<FormPiece, 1> cn134 = {{{0, bodies::cn134::bytes}}};
inline constexpr std::array<FormPiece, 2> cn152 = {
    {{0, bodies::cn::bytes}, {bodies::cn::bytes + cnRatesShift, bodies::cn152::bytes - bodies::cn::bytes}}};
inline constexpr std::array<FormPiece, 2> cn160 = {
    {{0, bodies::cn::bytes}, {bodies::cn::bytes + cnRatesShift, bodies::cn160::bytes - bodies::cn::bytes}}};
inline constexpr std::array<BodyForm, 3> cnForms = {{
    {lengthOf(bodies::cn134::bytes), cn134},
    {lengthOf(bodies::cn152::bytes), cn152},
    {lengthOf(bodies::cn160::bytes), cn160},
}};

}  // namespace rows

// Every id with a reading of its own. Ids in no row are skipped by their length.
// clang-format off
inline constexpr auto messageTable = std::to_array<MessageRow>({
    // time, identity and position
    rows::whole("~~", 12),
    rows::whole("RD", 20),
    rows::whole("PV", 48),
    rows::whole("TO", 24),
    rows::whole("AI", 108),
    rows::wholeText("KV", 96),
    rows::textBlock("PM", 100, 6),
    rows::block("==", 105, 2),
    rows::wholeText("TD", 304),  // only its id counts
    rows::wholeText("MF", 24),   // nobody reads it

    // navigation
    rows::withForms("GE", rows::geForms, 177, 2),
    rows::withForms("NE", rows::neForms, 105, 0),
    rows::withForms("CN", rows::cnForms, 163, 2),
    rows::whole("EN", 160),
    rows::whole("IE", 432),
    rows::whole("UO", 32),
    rows::whole("IO", 40),
    rows::whole("NU", 32),
    rows::whole("EU", 48),
    rows::whole("CU", 32),
    rows::whole("CI", 40),
    rows::whole("II", 40),
    rows::whole("IU", 32),
    rows::wholeInto("GA", "GE"),  // Deliberate: an almanac overwrites the staged GPS ephemeris

    // satellite lists
    rows::array("SX", 2),
    rows::array("NN", 1, 24),

    // ranges, phases, Doppler, strengths and flags, in the order of SX
    rows::array("rc", 4), rows::array("rx", 4),
    rows::array("1r", 2), rows::array("2r", 2), rows::array("3r", 2), rows::array("5r", 2), rows::array("lr", 2),
    rows::array("cp", 4), rows::array("1p", 4), rows::array("2p", 4), rows::array("3p", 4), rows::array("5p", 4), rows::array("lp", 4),
    rows::array("DC", 4), rows::array("DX", 4),
    rows::array("0d", 2), rows::array("1d", 2), rows::array("2d", 2), rows::array("3d", 2), rows::array("5d", 2), rows::array("ld", 2),
    rows::array("CE", 1), rows::array("1E", 1), rows::array("2E", 1), rows::array("3E", 1), rows::array("5E", 1), rows::array("lE", 1),
    rows::array("FC", 2, 360), rows::array("F1", 2, 360), rows::array("F2", 2, 360), rows::array("F3", 2, 360), rows::array("F5", 2, 360), rows::array("Fl", 2, 360),

    // nobody reads these: they matter for the bytes that they take
    rows::array("SI", 1), rows::array("EL", 1),
    rows::array("cr", 2), rows::array("cc", 2), rows::array("c5", 2), rows::array("cl", 2), rows::array("TC", 2),
    rows::array("c1", 2), rows::array("c2", 2), rows::array("c3", 2),
    rows::block("SS", 180, 3),
    rows::fixedBlock("SE", 6, 2),  // Deliberate: whatever its length says
    rows::whole("ST", 8), rows::whole("DP", 24), rows::whole("DO", 24),
    rows::whole("NA", 304), rows::whole("WE", 304), rows::whole("WA", 304), rows::whole("WU", 304),
    rows::whole("EA", 304), rows::whole("QE", 304), rows::whole("QA", 304), rows::whole("QU", 32),
    rows::whole("QI", 48), rows::whole("CA", 304), rows::whole("IA", 300),
    rows::wholeText(">>", 0),
});
// clang-format on

// The index of an id's row in messageTable, or nothing for an id without one.
constexpr std::optional<std::size_t> findRow(MessageId id) {
    for (std::size_t i = 0; i < messageTable.size(); ++i) {
        if (messageTable[i].id == id) {
            return i;
        }
    }
    return std::nullopt;
}

// The same for an id that is known to have one; an unknown id does not compile.
consteval std::size_t rowOf(MessageId id) {
    return findRow(id).value();
}

// Where each row's area starts in the staging, and behind the last one the size of them all.
inline constexpr auto areaOffsets = []() {
    std::array<std::size_t, messageTable.size() + 1> offsets{};
    for (std::size_t i = 0; i < messageTable.size(); ++i) {
        offsets[i + 1] = offsets[i] + static_cast<std::size_t>(messageTable[i].areaBytes);
    }
    return offsets;
}();

static_assert(std::ranges::all_of(messageTable,
                                  [](const MessageRow& row) {
                                      return std::ranges::count(messageTable, row.id, &MessageRow::id) == 1;
                                  }),
              "every id has one row");

static_assert(std::ranges::all_of(messageTable,
                                  [](const MessageRow& row) {
                                      return std::ranges::all_of(row.forms, [&](const BodyForm& form) {
                                          return std::ranges::all_of(
                                              form.pieces, [&](const FormPiece& piece) {
                                                  return piece.areaOffset + piece.bytes <= row.areaBytes;
                                              });
                                      });
                                  }),
              "the pieces of every form keep within their area");

static_assert(std::ranges::all_of(messageTable,
                                  [](const MessageRow& row) {
                                      return std::ranges::all_of(row.forms, [&](const BodyForm& form) {
                                          int bytes = row.closingBytes;
                                          for (const FormPiece& piece : form.pieces) {
                                              bytes += piece.bytes;
                                          }
                                          return bytes ==
                                                 form.length + row.lineEndBytes + form.bytesBeyondEnd;
                                      });
                                  }),
              "every form takes its length and the line end, and what is said of it beyond");

}  // namespace orbconv
