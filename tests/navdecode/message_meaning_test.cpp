// What the decoders' own tests do not show: the rules where a decoder adds one of its own.
#include "navdecode/message_meaning.h"

#include <gtest/gtest.h>

namespace {

using namespace orbconv;

TEST(OffsetWeek, IsKeptIn16Bits) {
    EXPECT_EQ(offsetWeek(std::int16_t{300}, 2048), 2348);
    EXPECT_EQ(offsetWeek(std::int16_t{-1}, 2048), 2047);
    EXPECT_EQ(offsetWeek(std::int16_t{32767}, 2048), -30721);
    EXPECT_EQ(offsetWeek(std::int16_t{900}, 0), 900);
    EXPECT_EQ(offsetWeek(std::uint16_t{65535}, 2048), 2047);
}

TEST(SisaInMetres, NegativeIndexHasNone) {
    EXPECT_EQ(sisaInMetres(-1), std::nullopt);
    EXPECT_EQ(sisaInMetres(-128), std::nullopt);
    EXPECT_EQ(sisaInMetres(0), 0.0F);
}

TEST(NavTypeOf, NoKnownFlagTellsNoType) {
    EXPECT_EQ(navTypeOf(0xF0, gpsNavTypes), NavType::none);
    EXPECT_EQ(navTypeOf(0xF8, galileoNavTypes), NavType::none);
    EXPECT_EQ(beidouNavType(0x90, 3), NavType::none);
}

}  // namespace
