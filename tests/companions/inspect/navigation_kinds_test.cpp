// The kinds of navigation messages: by id, by the bits of the flag byte, by the satellite's number.
#include "inspect/navigation_kinds.h"

#include <gtest/gtest.h>

#include <vector>

namespace orbconv::inspect {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Where the flag byte stands: behind the orbit and clock of GPS, behind the terms that Galileo and BeiDou
// add.
constexpr std::size_t gpsFlags = 122;
constexpr std::size_t galileoFlags = 143;
constexpr std::size_t beidouFlags = 126;

// A body whose other bytes are zero.
Bytes bodyWith(std::uint8_t number, std::size_t flagOffset, std::uint8_t flags) {
    Bytes body(160);
    body[0] = number;
    body[flagOffset] = flags;
    return body;
}

std::string_view nameOf(MessageId id, const Bytes& body) {
    const auto kind = navigationKindOf(id, body);
    return kind ? rowOf(*kind).name : "none";
}

TEST(NavigationKindsTest, Gps_ByFlags) {
    const auto name = [](std::uint8_t flags) { return nameOf("GE", bodyWith(0, gpsFlags, flags)); };
    EXPECT_EQ(name(0x01), "LNAV");
    EXPECT_EQ(name(0x02), "CNAV");
    EXPECT_EQ(name(0x04), "CNAV");
    EXPECT_EQ(name(0x08), "CNV2");
    EXPECT_EQ(name(0x0F), "CNAV");
    EXPECT_EQ(name(0x09), "LNAV");
    EXPECT_EQ(name(0x00), "untyped");
    EXPECT_EQ(name(0xF0), "untyped");
    EXPECT_EQ(nameOf("GE", bodyWith(255, gpsFlags, 0x08)), "CNV2");
}

TEST(NavigationKindsTest, GpsWithoutFlagByte_IsLnav) {
    EXPECT_EQ(nameOf("GE", Bytes(gpsFlags)), "LNAV");
    EXPECT_EQ(nameOf("GE", Bytes(gpsFlags + 1)), "untyped");
}

TEST(NavigationKindsTest, Galileo_ByFlags) {
    const auto name = [](std::uint8_t flags) { return nameOf("EN", bodyWith(0, galileoFlags, flags)); };
    EXPECT_EQ(name(0x01), "INAV");
    EXPECT_EQ(name(0x02), "FNAV");
    EXPECT_EQ(name(0x04), "INAV");
    EXPECT_EQ(name(0x07), "INAV");
    EXPECT_EQ(name(0x00), "untyped");
    EXPECT_EQ(name(0xF8), "untyped");
    EXPECT_EQ(nameOf("EN", Bytes(galileoFlags)), "untyped");
}

TEST(NavigationKindsTest, Beidou_ByFlagsAndNumber) {
    const auto name = [](std::uint8_t number, std::uint8_t flags) {
        return nameOf("CN", bodyWith(number, beidouFlags, flags));
    };
    for (const std::uint8_t flags : Bytes{0x01, 0x02, 0x04}) {
        EXPECT_EQ(name(0, flags), "D2");
        EXPECT_EQ(name(5, flags), "D2");
        EXPECT_EQ(name(6, flags), "D1");
        EXPECT_EQ(name(255, flags), "D1");
    }
    for (const std::uint8_t number : Bytes{0, 5, 6, 255}) {
        EXPECT_EQ(name(number, 0x08), "CNV1");
        EXPECT_EQ(name(number, 0x20), "CNV2");
        EXPECT_EQ(name(number, 0x40), "CNV3");
        EXPECT_EQ(name(number, 0x90), "untyped");
    }
    EXPECT_EQ(nameOf("CN", Bytes(beidouFlags)), "untyped");
}

TEST(NavigationKindsTest, Others_ById) {
    struct Case {
        MessageId id;
        Constellation constellation;
        NavigationContent content;
        std::string_view name;
    };
    using enum Constellation;
    using enum NavigationContent;
    for (const Case& each : std::vector<Case>{{"GE", gps, ephemeris, "LNAV"},
                                              {"NE", glonass, ephemeris, "FDMA"},
                                              {"EN", galileo, ephemeris, "untyped"},
                                              {"QE", qzss, ephemeris, "ephemerides"},
                                              {"CN", beidou, ephemeris, "untyped"},
                                              {"IE", navic, ephemeris, "LNAV"},
                                              {"WE", sbas, ephemeris, "ephemerides"},
                                              {"GA", gps, almanac, "almanacs"},
                                              {"NA", glonass, almanac, "almanacs"},
                                              {"EA", galileo, almanac, "almanacs"},
                                              {"QA", qzss, almanac, "almanacs"},
                                              {"CA", beidou, almanac, "almanacs"},
                                              {"IA", navic, almanac, "almanacs"},
                                              {"WA", sbas, almanac, "almanacs"},
                                              {"IO", gps, ionosphere, "ionosphere"},
                                              {"QI", qzss, ionosphere, "ionosphere"},
                                              {"CI", beidou, ionosphere, "ionosphere"},
                                              {"II", navic, ionosphere, "ionosphere"},
                                              {"UO", gps, timeOffset, "time offsets"},
                                              {"NU", glonass, timeOffset, "time offsets"},
                                              {"EU", galileo, timeOffset, "time offsets"},
                                              {"QU", qzss, timeOffset, "time offsets"},
                                              {"CU", beidou, timeOffset, "time offsets"},
                                              {"IU", navic, timeOffset, "time offsets"},
                                              {"WU", sbas, timeOffset, "time offsets"}}) {
        const auto kind = navigationKindOf(each.id, Bytes(20));
        ASSERT_TRUE(kind) << each.id.first << each.id.second;
        EXPECT_EQ(rowOf(*kind).constellation, each.constellation) << each.id.first << each.id.second;
        EXPECT_EQ(rowOf(*kind).content, each.content) << each.id.first << each.id.second;
        EXPECT_EQ(rowOf(*kind).name, each.name) << each.id.first << each.id.second;
    }
    EXPECT_FALSE(navigationKindOf("SX", Bytes(20)));
}

TEST(NavigationKindsTest, SeveralKindsOfAMessage_AreEphemeridesOfItsConstellation) {
    for (const NavigationKindRow& row : navigationKinds) {
        const bool several = row.type != NavType::none || row.name == "untyped";
        if (several) {
            const Constellation expected = row.id == MessageId("GE")   ? Constellation::gps
                                           : row.id == MessageId("EN") ? Constellation::galileo
                                                                       : Constellation::beidou;
            EXPECT_EQ(row.constellation, expected) << row.name;
            EXPECT_EQ(row.content, NavigationContent::ephemeris) << row.name;
        }
    }
}

TEST(NavigationKindsTest, EphemeridesAndAlmanacs_NameTheirSatellite) {
    for (const NavigationKindRow& row : navigationKinds) {
        const bool ofOne =
            row.content == NavigationContent::ephemeris || row.content == NavigationContent::almanac;
        EXPECT_EQ(row.namesSatellite, ofOne) << row.id.first << row.id.second << ' ' << row.name;
    }
}

}  // namespace
}  // namespace orbconv::inspect
