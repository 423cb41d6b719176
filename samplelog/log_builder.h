// Builds receiver logs: one function for every message of the format, each appending one message with correct
// framing to a buffer. The functions return the builder, so that calls chain:
//
//     LogBuilder log;
//     log.time(3600000).rd(2024, 3, 5).sx({{SystemCode::gps, 7}}).rx({1000}).flags(Band::c, {0x40}).td();
//
// A message is an id of two characters, its length as three upper-case hexadecimal digits, the body, and a
// line end. In a binary message the body's last byte is a checksum, which the length counts, and the line end
// is one byte; in a text message the line end is two bytes. The checksum is the exclusive or of all bytes
// ahead of it, from the id on; the converter never looks at it. Numbers are little-endian whatever the
// machine.
//
// Deliberately independent of the converter's sources: tests check the one against the other.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "message_bodies.h"

namespace samplelog {

// The six families of measurement messages. A family is a place in the log; which signal it holds depends on
// the system.
enum class Band { c, b1, b2, b3, b5, l };

// What stands behind the body of a damaged message.
enum class Closing {
    asUsual,  // what the id has in an undamaged log: checksum and line end, or the line end of a text message
    none,     // nothing: the next message follows the body at once
};

// How a long `NE` message ends. The converter reads one byte more than that message has.
enum class LongNeEnd {
    padded,  // two line-end bytes: the reader comes out at the next message
    bare,    // one line-end byte: the reader loses the first character of the next message's id
};

class LogBuilder {
public:
    // The log built so far.
    const std::string& bytes() const { return buffer; }
    std::size_t size() const { return buffer.size(); }

    // Hands the log out and starts a new one.
    std::string take() { return std::exchange(buffer, {}); }

    // Starts a new log in the same storage.
    LogBuilder& clear();
    void reserve(std::size_t byteCount) { buffer.reserve(byteCount); }

    // --- Any message ------------------------------------------------------------------------------------

    // A message of any id with a correct length and end. `body` has no checksum. `PM` gets its four closing
    // bytes, a long `NE` its padded end. An id of `>` and another character is only those two characters: it
    // has neither length nor body. Throws std::length_error if the length needs more than three digits.
    LogBuilder& message(std::string_view id, std::string_view body = {});

    // A message that announces `length` (0 to 0xFFF) whatever its body holds. An undamaged binary message
    // announces its body's size plus 1 for the checksum, a text message its body's size.
    LogBuilder& messageWithLength(std::string_view id, unsigned length, std::string_view body,
                                  Closing closing = Closing::asUsual);

    // The same with three characters of any kind in place of the length, and no closing at all.
    LogBuilder& messageWithLengthText(std::string_view id, std::string_view lengthText,
                                      std::string_view body = {});

    // Bytes as they stand.
    LogBuilder& raw(std::string_view data);

    // --- Time -------------------------------------------------------------------------------------------

    // `~~`: time of day, milliseconds.
    LogBuilder& time(std::uint32_t timeOfDayMs);

    // `RD`: date. timeBase: 0 GPS, 1 UTC(USNO), 2 GLONASS, 3 UTC(SU).
    LogBuilder& rd(unsigned year, unsigned month, unsigned day, unsigned timeBase = 0);

    // `TD`: end of the epoch. A text message whose body nobody reads.
    LogBuilder& td(std::string_view body = "0000");

    // --- Identity ---------------------------------------------------------------------------------------

    // `KV`: site text, at body offset 5, exactly as given: the reader takes words that a blank ends, up to
    // the first zero byte of its area. Without a zero byte in `text` the tail of a longer earlier text shows.
    LogBuilder& kv(std::string_view text);

    // `KV` that names the marker: "KVS name " and a zero byte.
    LogBuilder& kvMarker(std::string_view name);

    // `PM`: parameter text at body offset 0, exactly as given, then the four closing bytes of its own ("@",
    // two hexadecimal digits of checksum, a zero byte), which the length counts.
    LogBuilder& pm(std::string_view text);

    // `PM` of quoted parameters, ended by a zero byte. A name is written with its equals sign:
    // pmParameters({{"rcv/igs=", "TYPE"}}).
    using Parameter = std::pair<std::string_view, std::string_view>;
    LogBuilder& pmParameters(const std::vector<Parameter>& parameters);

    // The text of one parameter: quote, name, quote, value, quote. Texts of several can be joined.
    static std::string quotedParameter(std::string_view name, std::string_view value);

    // `==`: four zero bytes, the kind byte, the text exactly as given (no zero byte is added).
    LogBuilder& assignment(unsigned kind, std::string_view text);

    // `==` of kind 0 with "_ANT=type" and a zero byte.
    LogBuilder& antennaType(std::string_view type);

    // `PV`: position in metres, then its error in metres and a kind byte that nobody reads.
    LogBuilder& pv(const Vector3& position, float sigma = 0.0F, unsigned kind = 0);

    // `TO`: receiver clock offset, seconds.
    LogBuilder& to(double offset);

    // `AI`: two groups of a mark and three coordinates.
    LogBuilder& ai(unsigned mark1, const Vector3& group1, unsigned mark2, const Vector3& group2);

    // --- Satellite lists --------------------------------------------------------------------------------

    // `SX`: the satellites of the epoch, in the order of all measurement arrays.
    LogBuilder& sx(const std::vector<Satellite>& satellites);

    // `NN`: orbit slots of the GLONASS satellites of the list, in its order; 255 is unknown.
    LogBuilder& nn(const std::vector<std::uint8_t>& slots);

    // --- Measurements, one element a satellite in the order of the list -----------------------------------

    // `rc`, `rx`: times of flight less the system's offset, in 1e-11 s for GPS and GLONASS and in 2e-11 s for
    // the others.
    LogBuilder& rc(const std::vector<std::int32_t>& values);
    LogBuilder& rx(const std::vector<std::int32_t>& values);

    // `1r`, `2r`, `3r`, `5r`, `lr`: time of flight less that of `rx` and less 2e-7 s, in 1e-11 s. Band::c
    // gives `cr`, which has the same form and which nobody reads.
    LogBuilder& rangeDeltas(Band band, const std::vector<std::int16_t>& values);

    // `cp`, `1p`, `2p`, `3p`, `5p`, `lp`: carrier phase as a time less that of `rx`, in 2^-40 s.
    LogBuilder& phases(Band band, const std::vector<std::int32_t>& values);

    // `DC`, `DX`: Doppler with the sign turned, in 1e-4 Hz.
    LogBuilder& dc(const std::vector<std::int32_t>& values);
    LogBuilder& dx(const std::vector<std::int32_t>& values);

    // `0d`, `1d`, `2d`, `3d`, `5d`, `ld`: Doppler scaled to the reference carrier, sign turned, less that of
    // `DX`, in 1e-4 Hz. Band::c gives `0d`.
    LogBuilder& dopplerDeltas(Band band, const std::vector<std::int16_t>& values);

    // `CE`, `1E`, `2E`, `3E`, `5E`, `lE`: signal strength in 0.25 dB-Hz.
    LogBuilder& strengths(Band band, const std::vector<std::uint8_t>& values);

    // `FC`, `F1`, `F2`, `F3`, `F5`, `Fl`: flag words; bit 6 says that the signal is present.
    LogBuilder& flags(Band band, const std::vector<std::uint16_t>& values);

    // --- Ephemerides ------------------------------------------------------------------------------------

    // `GE`: the short form (length 123), and the long forms (lengths 160 and 168).
    LogBuilder& ge123(const KeplerBlock& body);
    LogBuilder& ge160(const GpsBody& body);
    LogBuilder& ge168(const GpsBody& body);

    // `NE`: lengths 88 and 103.
    LogBuilder& ne88(const GlonassBody& body);
    LogBuilder& ne103(const GlonassBody& body, LongNeEnd end = LongNeEnd::padded);

    // `EN`.
    LogBuilder& en(const GalileoBody& body);

    // `CN`: lengths 134, 152 and 160.
    LogBuilder& cn134(const BeidouBody& body);
    LogBuilder& cn152(const BeidouBody& body);
    LogBuilder& cn160(const BeidouBody& body);

    // `IE`.
    LogBuilder& ie(const KeplerBlock& body);

    // --- Ionosphere and time offsets ----------------------------------------------------------------------

    LogBuilder& io(const IonoBody& body);               // `IO`, GPS
    LogBuilder& ii(const IonoBody& body);               // `II`, NavIC
    LogBuilder& ci(const IonoBody& body);               // `CI`, BeiDou
    LogBuilder& uo(const TimeOffsetBody& body);         // `UO`, GPS
    LogBuilder& cu(const TimeOffsetBody& body);         // `CU`, BeiDou
    LogBuilder& iu(const TimeOffsetBody& body);         // `IU`, NavIC
    LogBuilder& eu(const GalileoTimeOffsetBody& body);  // `EU`, Galileo
    LogBuilder& nu(const GlonassTimeOffsetBody& body);  // `NU`, GLONASS

    // --- Messages that are read past -----------------------------------------------------------------------
    //
    // Those without an entry here (`ST`, `DP`, `GA`, `NA`, `WE`, `QE`, `MF` and the rest) go through
    // message().

    // `SI`, `EL`: one byte a satellite.
    LogBuilder& si(const std::vector<std::uint8_t>& values);
    LogBuilder& el(const std::vector<std::uint8_t>& values);

    // `SS`: one byte a satellite and one more byte behind the last.
    LogBuilder& ss(const std::vector<std::uint8_t>& values, std::uint8_t lastByte = 0);

    // `SE`: five bytes, always; the reader takes that many whatever the length says.
    LogBuilder& se(std::uint32_t value = 0, std::uint8_t lastByte = 0);

    // Arrays of two bytes an element: `cr`, `cc`, `c1`, `c2`, `c3`, `c5`, `cl`, `TC`.
    LogBuilder& unreadArray(std::string_view id, const std::vector<std::uint16_t>& values);

private:
    void beginMessage(std::string_view id, std::size_t length);
    void endBinary();
    void endText();

    template <typename Element>
    LogBuilder& array(std::string_view id, const std::vector<Element>& values);

    LogBuilder& ionosphere(std::string_view id, const IonoBody& body);
    LogBuilder& timeOffset(std::string_view id, const TimeOffsetBody& body);

    void put(char byte) { buffer.push_back(byte); }
    void putText(std::string_view text) { buffer.append(text); }
    void put8(unsigned value);
    void put16(unsigned value);
    void put32(std::uint32_t value);
    void put64(std::uint64_t value);
    void putI16(std::int16_t value) { put16(static_cast<std::uint16_t>(value)); }
    void putI32(std::int32_t value) { put32(static_cast<std::uint32_t>(value)); }
    void putFloat(float value);
    void putDouble(double value);
    void putKepler(const KeplerBlock& block);
    void putTimeOffset(const TimeOffsetBody& body);
    void putGpsCommon(const GpsBody& body);
    void putGlonassCommon(const GlonassBody& body);
    void putBeidouCommon(const BeidouBody& body);

    std::string buffer;
    std::size_t messageStart = 0;
};

}  // namespace samplelog
