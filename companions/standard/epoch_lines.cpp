#include "standard/epoch_lines.h"

#include <array>
#include <cmath>
#include <cstring>

#include "text/number_format.h"

namespace orbconv::standard {

namespace {

constexpr std::size_t nameColumns = 3;
constexpr std::size_t valueColumns = 16;  // F14.3, the loss of lock indicator, the strength digit
constexpr int numberColumns = 14;
constexpr std::size_t digitOffset = 15;

// A line of all columns, and room for the formatter behind it.
constexpr std::size_t lineRoom = nameColumns + bandCount * kindCount * valueColumns + maxNumberText;

// `digits` digits of a number below their power of ten.
char* putDigits(char* out, unsigned number, int digits) {
    for (int i = digits - 1; i >= 0; --i) {
        out[i] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
    return out + digits;
}

void writeEpochLine(TextWriter& out, const EpochObservations& epoch) {
    constexpr std::size_t room = 64;
    const reading::CalendarTime time = reading::calendarOf(epoch.time);
    char* const line = out.reserve(room);
    std::memset(line, ' ', room);
    char* at = line;
    *at = '>';
    at = putDigits(at + 2, static_cast<unsigned>(time.year), 4);
    for (const unsigned number : {time.month, time.day, time.hour, time.minute}) {
        at = putDigits(at + 1, number, 2);
    }
    at = putDigits(at + 1, time.second, 2);
    if (time.second < 10) {
        at[-2] = ' ';
    }
    *at = '.';
    at = putDigits(at + 1, time.millisecond, 3);
    at = putDigits(at, 0, 4);
    at = putDigits(at + 2, 0, 1);  // the flag: observations follow
    out.commit(at);
    out.integer(static_cast<std::int64_t>(epoch.satellites.size()), 3);
    if (epoch.clockOffset && isPrintable(*epoch.clockOffset)) {
        out.blanks(6).fixed(*epoch.clockOffset, 12, 15);
    }
    out.endLine();
}

// All values fit their fourteen columns: a time of flight is below 0.2 s, and no carrier is above 2.5 GHz.
void writeSatelliteLine(TextWriter& out, const SatelliteObservations& satellite,
                        const std::vector<Column>& columns) {
    char* const line = out.reserve(lineRoom);
    std::memset(line, ' ', nameColumns + columns.size() * valueColumns + 1);
    *line = systemLetters[orbconv::indexOf(satellite.constellation)];
    char* end = putDigits(line + 1, static_cast<unsigned>(satellite.number), 2);
    char* field = end;
    for (const Column& column : columns) {
        const SignalValues& signal = satellite.signals[column.band];
        if (const auto& value = signal[column.kind]) {
            end = formatFixed3IntoBlanks(field, *value, numberColumns);
            if (column.kind == Kind::phase && signal[Kind::strength]) {
                const std::int32_t digit = strengthDigit(*signal[Kind::strength]);
                field[digitOffset] = static_cast<char>('0' + digit);
                end = field + valueColumns;
            }
        }
        field += valueColumns;
    }
    *end = '\n';
    out.commit(end + 1);
}

}  // namespace

bool isPrintable(double clockOffset) {
    // Beyond it, the rounded number could have a digit more than there is room for.
    constexpr double largest = 9.0;
    return std::abs(clockOffset) < largest;
}

void writeEpoch(TextWriter& out, const EpochObservations& epoch, const Columns& columns) {
    writeEpochLine(out, epoch);
    for (const SatelliteObservations& satellite : epoch.satellites) {
        writeSatelliteLine(out, satellite, columns[orbconv::indexOf(satellite.constellation)]);
    }
}

}  // namespace orbconv::standard
