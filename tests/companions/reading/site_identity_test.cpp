#include "reading/site_identity.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

#include "companions/support/reading_items.h"
#include "samplelog/log_builder.h"

namespace orbconv::reading {
namespace {

using samplelog::LogBuilder;
using namespace std::string_literals;

SiteIdentity identityOf(const LogBuilder& log) {
    SiteIdentity identity;
    LogReader reader(testsupport::bytesOf(log.bytes()));
    for (LogItem item = reader.next(); item != LogItem::end; item = reader.next()) {
        if (item == LogItem::message) {
            identity.take(reader.message());
        }
    }
    return identity;
}

// "-" where the log does not tell.
std::string textOf(const std::optional<LogText>& text) {
    return text ? text->text : "-";
}
std::string markerOf(const LogBuilder& log) {
    return textOf(identityOf(log).markerName);
}
std::string antennaOf(const LogBuilder& log) {
    return textOf(identityOf(log).antennaType);
}

TEST(SiteIdentityTest, EmptyLog_TellsNothing) {
    const SiteIdentity identity = identityOf(LogBuilder().td());
    EXPECT_FALSE(identity.markerName);
    EXPECT_FALSE(identity.receiverNumber);
    EXPECT_FALSE(identity.receiverType);
    EXPECT_FALSE(identity.receiverVersion);
    EXPECT_FALSE(identity.antennaType);
    EXPECT_FALSE(identity.position);
}

TEST(SiteIdentityTest, Marker_FirstWordThatIsNotKvs) {
    EXPECT_EQ(markerOf(LogBuilder().kv("KVS ABC DEF \0"s)), "ABC");
    EXPECT_EQ(markerOf(LogBuilder().kv("ABC DEF \0"s)), "ABC");
    EXPECT_EQ(markerOf(LogBuilder().kv("  KVS   ABC \0"s)), "ABC");
    EXPECT_EQ(markerOf(LogBuilder().kv("KVSX ABC \0"s)), "KVSX");
    EXPECT_EQ(markerOf(LogBuilder().kv("KVS !z{|}~ \0"s)), "!z{|}~");
}

TEST(SiteIdentityTest, Marker_EndsWithTheTextToo) {
    EXPECT_EQ(markerOf(LogBuilder().kv("KVS ABC\0"s)), "ABC");
    EXPECT_EQ(markerOf(LogBuilder().kv("KVS ABC"s)), "ABC");
    EXPECT_EQ(markerOf(LogBuilder().kv("ABC\0DEF "s)), "ABC");
}

TEST(SiteIdentityTest, Marker_NoWordIsNone) {
    EXPECT_EQ(markerOf(LogBuilder().kv("KVS \0"s)), "-");
    EXPECT_EQ(markerOf(LogBuilder().kv("KVS"s)), "-");
    EXPECT_EQ(markerOf(LogBuilder().kv(""s)), "-");
    EXPECT_EQ(markerOf(LogBuilder().kv("\0ABC "s)), "-");
    EXPECT_EQ(markerOf(LogBuilder().message("KV", "1234")), "-");
}

TEST(SiteIdentityTest, Marker_LastOneCounts) {
    LogBuilder log;
    log.kvMarker("FIRST");
    const std::size_t second = log.size();
    log.kvMarker("SECOND").kv("KVS \0"s);
    EXPECT_EQ(identityOf(log).markerName, (LogText{.text = "SECOND", .offset = second}));
}

TEST(SiteIdentityTest, Parameters_NumberTypeAndVersion) {
    LogBuilder log;
    log.time(1);
    const std::size_t first = log.size();
    log.pmParameters({{"rcv/id=", "8QQ0"}});
    const std::size_t second = log.size();
    log.pmParameters({{"rcv/igs=", "TYPE X-3 "}, {"rcv/ver/main=", " 4.5 Mar,05,2024"}});
    const SiteIdentity identity = identityOf(log);
    EXPECT_EQ(identity.receiverNumber, (LogText{.text = "8QQ0", .offset = first}));
    EXPECT_EQ(identity.receiverType, (LogText{.text = "TYPE X-3", .offset = second}));
    EXPECT_EQ(identity.receiverVersion, (LogText{.text = "4.5 Mar,05,2024", .offset = second}));
}

TEST(SiteIdentityTest, Parameters_LongNumberKeepsAllItsCharacters) {
    const std::string number = "0123456789ABCDEFGHIJKLMNOPQRSTUV";
    EXPECT_EQ(textOf(identityOf(LogBuilder().pmParameters({{"rcv/id=", number}})).receiverNumber), number);
}

TEST(SiteIdentityTest, Parameters_AmongOthers) {
    const SiteIdentity identity = identityOf(LogBuilder().pm("{\"x=\"1\",\"rcv/igs=\"ABC\",\"y=\"2\"}\0"s));
    EXPECT_EQ(textOf(identity.receiverType), "ABC");
    EXPECT_FALSE(identity.receiverNumber);
}

// Its quote is the start of the text.
TEST(SiteIdentityTest, Parameters_NameThatBeginsTheText) {
    EXPECT_EQ(textOf(identityOf(LogBuilder().pm("rcv/igs=\"ABC\""s)).receiverType), "ABC");
    EXPECT_FALSE(identityOf(LogBuilder().pm(" rcv/igs=\"ABC\""s)).receiverType);
}

TEST(SiteIdentityTest, Parameters_NameWithoutAValueIsNone) {
    EXPECT_FALSE(identityOf(LogBuilder().pm("\"rcv/igs=\""s)).receiverType);
    EXPECT_FALSE(identityOf(LogBuilder().pm("\"rcv/igs=\"cut"s)).receiverType);
    EXPECT_FALSE(identityOf(LogBuilder().pm("\"rcv/igs=\"cut\0by a zero\""s)).receiverType);
    EXPECT_FALSE(identityOf(LogBuilder().pm("\"rcv/igs=\"\""s)).receiverType);
    EXPECT_FALSE(identityOf(LogBuilder().pm("\"rcv/igs=\"   \""s)).receiverType);
    EXPECT_FALSE(identityOf(LogBuilder().pm("\"rcv/igs\"ABC\""s)).receiverType);
    EXPECT_FALSE(identityOf(LogBuilder().pm(""s)).receiverType);
}

TEST(SiteIdentityTest, Parameters_EmptyValueLeavesTheEarlierOne) {
    EXPECT_EQ(
        textOf(identityOf(LogBuilder().pmParameters({{"rcv/igs=", "ABC"}}).pmParameters({{"rcv/igs=", ""}}))
                   .receiverType),
        "ABC");
}

// The value goes to the next quote, whatever it is.
TEST(SiteIdentityTest, Parameters_ValueThatReadsAsAName) {
    const SiteIdentity identity = identityOf(LogBuilder().pm("\"rcv/igs=\"rcv/id=\"X\""s));
    EXPECT_EQ(textOf(identity.receiverType), "rcv/id=");
}

TEST(SiteIdentityTest, WhatDoesNotPrint_BecomesAQuestionMark) {
    EXPECT_EQ(textOf(identityOf(LogBuilder().pmParameters({{"rcv/igs=", "A\x01\xC3\xA9\x7F"}})).receiverType),
              "A????");
    EXPECT_EQ(markerOf(LogBuilder().kv("KVS A\nB \0"s)), "A?B");
}

TEST(SiteIdentityTest, Antenna_TypeAndRadome) {
    EXPECT_EQ(antennaOf(LogBuilder().antennaType("ABC")), "ABC");
    EXPECT_EQ(antennaOf(LogBuilder().antennaType("  ABC ")), "ABC");
    EXPECT_EQ(antennaOf(LogBuilder().assignment(0, "_ANT=ABC")), "ABC");
}

TEST(SiteIdentityTest, Antenna_KindZeroAndItsNameAlone) {
    EXPECT_EQ(antennaOf(LogBuilder().assignment(1, "_ANT=ABC\0"s)), "-");
    EXPECT_EQ(antennaOf(LogBuilder().assignment(0, "_ANX=ABC\0"s)), "-");
    EXPECT_EQ(antennaOf(LogBuilder().assignment(0, "_ANT\0"s)), "-");
    EXPECT_EQ(antennaOf(LogBuilder().assignment(0, "_ANT=\0"s)), "-");
    EXPECT_EQ(antennaOf(LogBuilder().assignment(0, "")), "-");
    EXPECT_EQ(antennaOf(LogBuilder().message("==", "123")), "-");
    EXPECT_EQ(antennaOf(LogBuilder().antennaType("ABC").assignment(0, "_OTHER=X\0"s)), "ABC");
}

TEST(SiteIdentityTest, Position_LastOneCounts) {
    const SiteIdentity identity =
        identityOf(LogBuilder().pv({1, 2, 3}).pv({-2700123.5, 4500000.0625, 3600000.25}, 5.0F));
    EXPECT_EQ(identity.position, (std::array{-2700123.5, 4500000.0625, 3600000.25}));
}

TEST(SiteIdentityTest, Position_ThatIsNoneIsPassedOver) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    const std::array<double, 3> good = {3500000, 800000, 5200000};
    for (const samplelog::Vector3& bad : {samplelog::Vector3{none, 1, 1},
                                          {1, none, 1},
                                          {1, 1, none},
                                          {endless, 1, 1},
                                          {5e7, 1, 1},
                                          {0, 0, 0}}) {
        LogBuilder log;
        log.pv({good[0], good[1], good[2]}).pv(bad);
        EXPECT_EQ(identityOf(log).position, good) << bad.x << bad.y << bad.z;
    }
    EXPECT_FALSE(identityOf(LogBuilder().message("PV", std::string(23, '\x01'))).position);
    EXPECT_TRUE(identityOf(LogBuilder().message("PV", std::string(24, '\x01'))).position);
}

TEST(SiteIdentityTest, OtherMessages_ArePassedOver) {
    EXPECT_EQ(markerOf(LogBuilder().message("kV", "12345ABC ")), "-");
    EXPECT_EQ(antennaOf(LogBuilder().message("=?", "\0\0\0\0\0_ANT=ABC\0"s)), "-");
}

}  // namespace
}  // namespace orbconv::reading
