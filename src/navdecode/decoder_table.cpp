#include "navdecode/decoder_table.h"

#include <algorithm>
#include <array>

#include "navdecode/ephemeris_decoders.h"
#include "navdecode/iono_and_time_decoders.h"

namespace orbconv {

namespace {

struct DecoderRow {
    MessageId id;
    void (*decode)(const MessageStaging& staging, ReceiverClocks& clocks, NavigationTables& tables);
};

constexpr std::array<DecoderRow, 13> decoders = {{
    {"GE", decodeGpsEphemeris},
    {"NE", decodeGlonassEphemeris},
    {"EN", decodeGalileoEphemeris},
    {"CN", decodeBeidouEphemeris},
    {"IE", decodeNavicEphemeris},
    {"IO", decodeGpsIono},
    {"II", decodeNavicIono},
    {"CI", decodeBeidouIono},
    {"UO", decodeGpsTimeOffset},
    {"CU", decodeBeidouTimeOffset},
    {"IU", decodeNavicTimeOffset},
    {"EU", decodeGalileoTimeOffset},
    {"NU", decodeGlonassTimeOffset},
}};

}  // namespace

void decodeNavigation(MessageId id, const MessageStaging& staging, ReceiverClocks& clocks,
                      NavigationTables& tables) {
    const auto row = std::ranges::find(decoders, id, &DecoderRow::id);
    if (row != decoders.end()) {
        row->decode(staging, clocks, tables);
    }
}

}  // namespace orbconv
