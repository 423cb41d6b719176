// The knowledge of the signals, written again by hand. What the assembly makes of it is tested step by step.
#include "assembly/signals.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace {

using enum orbconv::Constellation;

std::string codesOf(orbconv::Constellation constellation) {
    std::string text;
    for (const auto& band : orbconv::signalCodes) {
        const std::string_view code = band[orbconv::indexOf(constellation)].view();
        text += (text.empty() ? "" : " ") + std::string(code.empty() ? "--" : code);
    }
    return text;
}

TEST(SignalCodes, AreBandAndAttributeWithoutPlaceholders) {
    EXPECT_EQ(codesOf(gps), "1C 1W 2W 2X 5X 1X");
    EXPECT_EQ(codesOf(glonass), "1C 1P 2C 2P 3X --");
    EXPECT_EQ(codesOf(galileo), "1X 8X 7X 6X 5X --");
    EXPECT_EQ(codesOf(qzss), "-- -- -- -- -- --");
    EXPECT_EQ(codesOf(beidou), "2I 8X 7I 6I 5X 1X");
    EXPECT_EQ(codesOf(navic), "9A -- -- -- 5A 1X");
    EXPECT_EQ(codesOf(sbas), "-- -- -- -- -- --");
    EXPECT_EQ(codesOf(glonassCdma), "4X -- -- 6X 3X --");
}

// What a message's name says of its band: c or a capital stand for the first.
constexpr std::string_view families = "c1235l";

TEST(BandMessages, AreNamedAfterTheirBand) {
    for (std::size_t band = 0; band < orbconv::bandCount; ++band) {
        const char family = families[band];
        const bool first = band == 0;
        const orbconv::BandMessages& messages = orbconv::bandMessages[band];
        EXPECT_EQ(messages.flag, orbconv::MessageId('F', first ? 'C' : family)) << family;
        EXPECT_EQ(messages.range, first ? orbconv::MessageId("rc") : orbconv::MessageId(family, 'r'))
            << family;
        EXPECT_EQ(messages.phase, orbconv::MessageId(family, 'p')) << family;
        EXPECT_EQ(messages.doppler, orbconv::MessageId(first ? '0' : family, 'd')) << family;
        EXPECT_EQ(messages.strength, orbconv::MessageId(first ? 'C' : family, 'E')) << family;
    }
}

int elementBytes(orbconv::MessageId id) {
    return orbconv::messageTable.at(orbconv::findRow(id).value()).elementBytes;
}

TEST(BandMessages, HaveElementsOfTheirKindsSize) {
    for (const orbconv::BandMessages& messages : orbconv::bandMessages) {
        EXPECT_EQ(elementBytes(messages.flag), 2);
        EXPECT_EQ(elementBytes(messages.range), messages.range == orbconv::MessageId("rc") ? 4 : 2);
        EXPECT_EQ(elementBytes(messages.phase), 4);
        EXPECT_EQ(elementBytes(messages.doppler), 2);
        EXPECT_EQ(elementBytes(messages.strength), 1);
    }
    EXPECT_EQ(elementBytes(orbconv::referenceMessages.range), 4);
    EXPECT_EQ(elementBytes(orbconv::referenceMessages.doppler), 4);
    EXPECT_EQ(elementBytes(orbconv::referenceMessages.fullDoppler), 4);
}

TEST(BandOfAMessage, IsThatOfItsRowAndBandCForTheReferences) {
    EXPECT_EQ(orbconv::bandOf("FC"), orbconv::bands::c);
    EXPECT_EQ(orbconv::bandOf("1r"), orbconv::bands::b1);
    EXPECT_EQ(orbconv::bandOf("2p"), orbconv::bands::b2);
    EXPECT_EQ(orbconv::bandOf("3d"), orbconv::bands::b3);
    EXPECT_EQ(orbconv::bandOf("5E"), orbconv::bands::b5);
    EXPECT_EQ(orbconv::bandOf("Fl"), orbconv::bands::l);
    for (const orbconv::MessageId id :
         {orbconv::MessageId("rx"), orbconv::MessageId("DX"), orbconv::MessageId("DC")}) {
        EXPECT_EQ(orbconv::bandOf(id), orbconv::bands::c);
    }
}

TEST(BandOfAMessage, IsNothingForMessagesOfNoSignal) {
    for (const orbconv::MessageId id : {orbconv::MessageId("SX"), orbconv::MessageId("cr"),
                                        orbconv::MessageId("TC"), orbconv::MessageId("~~")}) {
        EXPECT_EQ(orbconv::bandOf(id), std::nullopt);
    }
}

TEST(GlonassCarriers, DependOnTheChannelButForTheThird) {
    using enum orbconv::CarrierKind;
    EXPECT_EQ(orbconv::glonassMegahertz(glonassL1, -7), 1598.0625);
    EXPECT_EQ(orbconv::glonassMegahertz(glonassL1, 0), 1602.0);
    EXPECT_EQ(orbconv::glonassMegahertz(glonassL2, 6), 1248.625);
    EXPECT_EQ(orbconv::glonassMegahertz(glonassL3, -7), 1202.025);
}

TEST(StrengthDigit, CountsInSixesFromOneToNine) {
    EXPECT_EQ(orbconv::strengthDigit(0.0), 1);
    EXPECT_EQ(orbconv::strengthDigit(11.75), 1);
    EXPECT_EQ(orbconv::strengthDigit(12.0), 2);
    EXPECT_EQ(orbconv::strengthDigit(47.75), 7);
    EXPECT_EQ(orbconv::strengthDigit(54.0), 9);
    EXPECT_EQ(orbconv::strengthDigit(63.75), 9);
}

}  // namespace
