// The handlers that parse what the receiver says of itself. They are plain character loops, and what they
// make of odd texts is part of the format.
#include "log/receiver_identity.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

#include "samplelog/log_builder.h"
#include "support/staging.h"

namespace {

using orbconv::MessageStaging;
using orbconv::ReceiverInfo;
using samplelog::LogBuilder;

// A staging and the info that the handlers fill, message after message.
class Receiver {
public:
    Receiver& kv(std::string_view text) { return handled(LogBuilder().kv(text), orbconv::handleKv); }
    Receiver& pm(std::string_view text) { return handled(LogBuilder().pm(text), orbconv::handlePm); }
    // With a zero byte behind the text, so that nothing older shows through.
    Receiver& pmEnded(std::string_view text) { return pm(std::string(text) + '\0'); }
    Receiver& assignment(unsigned kind, std::string_view text) {
        return handled(LogBuilder().assignment(kind, text), orbconv::handleEquals);
    }
    Receiver& handled(const LogBuilder& log, void (*handle)(const MessageStaging&, ReceiverInfo&)) {
        testsupport::stage(staging, log);
        handle(staging, info);
        return *this;
    }

    MessageStaging staging;
    ReceiverInfo info;
};

std::string markerOf(std::string_view text) {
    return Receiver().kv(text).info.markerName;
}

std::string typeOf(std::string_view parameters) {
    return Receiver().pmEnded(parameters).info.receiverType;
}

std::string numberOf(std::string_view value) {
    return Receiver().pmEnded(LogBuilder::quotedParameter("rcv/id=", value)).info.receiverNumber;
}

std::string antennaOf(std::string_view text, unsigned kind = 0) {
    return Receiver().assignment(kind, text).info.antennaType;
}

constexpr std::string_view twenty = "12345678901234567890";

}  // namespace

TEST(ReceiverInfo, StartsEmpty) {
    const ReceiverInfo info;
    EXPECT_EQ(
        info.markerName + info.receiverNumber + info.receiverType + info.receiverVersion + info.antennaType,
        "");
    EXPECT_EQ(info.approxPosition, (std::array{0.0, 0.0, 0.0}));
    EXPECT_EQ(info.receiverClockOffset, 0.0);
}

TEST(KvMessage, MarkerIsTheFirstWordBehindKvs) {
    EXPECT_EQ(markerOf("KVS ABC DEF "), "ABC");
    EXPECT_EQ(markerOf("ABC DEF "), "ABC");
    EXPECT_EQ(markerOf("ABC KVS "), "ABC");
}

TEST(KvMessage, WordThatNoBlankClosesIsDropped) {
    EXPECT_EQ(markerOf("KVS ABC"), "");
    EXPECT_EQ(markerOf("ABC"), "");
    EXPECT_EQ(Receiver().kv("KVS OLD ").kv(std::string("KVS ABC\0", 8)).info.markerName, "OLD");
}

TEST(KvMessage, OnlyTheExactWordKvsIsThrownAway) {
    EXPECT_EQ(markerOf("KVS KVS ABC "), "ABC");
    EXPECT_EQ(markerOf("KVSX ABC "), "KVSX");
    EXPECT_EQ(markerOf("KV ABC "), "KV");
    EXPECT_EQ(markerOf("kvs ABC "), "kvs");
}

TEST(KvMessage, BlanksAheadOfAWordArePassedOver) {
    EXPECT_EQ(markerOf("   ABC "), "ABC");
    EXPECT_EQ(markerOf("KVS    ABC DEF "), "ABC");
    EXPECT_EQ(markerOf("KVS      "), "");
}

TEST(KvMessage, ZeroByteEndsTheScan) {
    EXPECT_EQ(markerOf(std::string("KVS A\0BC ", 9)), "");
    EXPECT_EQ(markerOf(std::string("\0KVS ABC ", 9)), "");
}

TEST(KvMessage, OnlyBlanksSeparateWords) {
    EXPECT_EQ(markerOf("KVS\tABC DEF "), "KVS\tABC");
}

TEST(KvMessage, TextStartsBehindFiveBytes) {
    Receiver receiver;
    receiver.handled(LogBuilder().message("KV", "A BCDKVS NAME "), orbconv::handleKv);
    EXPECT_EQ(receiver.info.markerName, "NAME");
}

TEST(KvMessage, LaterMessageOverwrites) {
    EXPECT_EQ(Receiver().kv("KVS FIRST ").kv("KVS SECOND ").info.markerName, "SECOND");
}

TEST(KvMessage, TailOfALongerEarlierTextShowsThrough) {
    // The line end belongs to what is read. Of the earlier text, the name's last three characters and its
    // blank are left.
    EXPECT_EQ(Receiver().kv("KVS LONGNAME ").kv("KVS ABC").info.markerName, "ABC\r\nAME");
}

TEST(KvMessage, TextIsBoundedByItsArea) {
    // 91 characters of the text fit behind the first five bytes; the blank that closes the word does not.
    EXPECT_EQ(markerOf("KVS " + std::string(87, 'A') + " "), "");
    EXPECT_EQ(markerOf("KVS " + std::string(86, 'A') + " "), std::string(86, 'A'));
    EXPECT_EQ(markerOf(std::string(3000, 'A')), "");
}

TEST(KvMessage, TouchesNoOtherField) {
    const Receiver receiver = Receiver().kv("KVS ABC ");
    EXPECT_EQ(receiver.info.receiverType + receiver.info.antennaType, "");
}

TEST(PmMessage, ThreeParametersFillThreeFields) {
    Receiver receiver;
    receiver.pmEnded(R"("rcv/id="12345678901234567890"rcv/igs="TYPE"rcv/ver/main="VERSION")");
    EXPECT_EQ(receiver.info.receiverNumber, twenty);
    EXPECT_EQ(receiver.info.receiverType, "TYPE");
    EXPECT_EQ(receiver.info.receiverVersion, "VERSION");
}

TEST(PmMessage, ValueStandsBetweenTheNextTwoQuotes) {
    EXPECT_EQ(typeOf(R"("rcv/igs="ABC")"), "ABC");
    EXPECT_EQ(typeOf(R"("rcv/igs="A B,C=D")"), "A B,C=D");
    EXPECT_EQ(typeOf(R"("rcv/igs=""rcv/x="Y")"), "");
}

TEST(PmMessage, NameStandsBehindAQuoteOrAtTheStart) {
    EXPECT_EQ(typeOf(R"(rcv/igs="ABC")"), "ABC");
    EXPECT_EQ(typeOf(R"(xrcv/igs="ABC")"), "");
    EXPECT_EQ(typeOf(R"({rcv/igs="ABC"})"), "");
    EXPECT_EQ(typeOf(R"(text"rcv/igs="ABC")"), "ABC");
}

TEST(PmMessage, NameMatchesExactly) {
    EXPECT_EQ(typeOf(R"("rcv/igs"ABC")"), "");
    EXPECT_EQ(typeOf(R"("rcv/igs= "ABC")"), "");
    EXPECT_EQ(typeOf(R"("rcv/IGS="ABC")"), "");
    EXPECT_EQ(Receiver().pmEnded(R"("rcv/ver/main"V")").info.receiverVersion, "");
}

TEST(PmMessage, ValueThatNoQuoteClosesIsDropped) {
    EXPECT_EQ(typeOf(R"("rcv/igs="ABC)"), "");
    EXPECT_EQ(typeOf(std::string("\"rcv/igs=\"AB\0C\"", 15)), "");
}

TEST(PmMessage, ValueThatIsANameSetsThatMarkToo) {
    Receiver receiver;
    receiver.pmEnded(R"("rcv/igs="rcv/ver/main="V1")");
    EXPECT_EQ(receiver.info.receiverType, "rcv/ver/main=");
    EXPECT_EQ(receiver.info.receiverVersion, "V1");
}

TEST(PmMessage, EmptyValueOverwrites) {
    EXPECT_EQ(Receiver().pmEnded(R"("rcv/igs="OLD")").pmEnded(R"("rcv/igs="")").info.receiverType, "");
}

TEST(PmMessage, LaterMessageOverwritesOnlyWhatItNames) {
    Receiver receiver;
    receiver.pmEnded(R"("rcv/igs="TYPE"rcv/ver/main="V1")").pmEnded(R"("rcv/ver/main="V2")");
    EXPECT_EQ(receiver.info.receiverType, "TYPE");
    EXPECT_EQ(receiver.info.receiverVersion, "V2");
}

TEST(PmMessage, MarkDoesNotSurviveItsMessage) {
    EXPECT_EQ(Receiver().pmEnded(R"("rcv/igs=")").pmEnded(R"(ABC")").info.receiverType, "");
}

TEST(PmMessage, ReceiverNumberLosesItsCharacters21To26) {
    const std::string number(twenty);
    EXPECT_EQ(numberOf(number), number);
    EXPECT_EQ(numberOf(number + "a"), number);
    EXPECT_EQ(numberOf(number + "abcdef"), number);
    EXPECT_EQ(numberOf(number + "abcdefGH"), number + "GH");
}

TEST(PmMessage, ShortReceiverNumberCannotBeCut) {
    EXPECT_THROW(numberOf(twenty.substr(0, 19)), std::out_of_range);
    EXPECT_THROW(numberOf(""), std::out_of_range);
}

TEST(PmMessage, VersionIsKeptWhole) {
    const std::string version(40, 'V');
    EXPECT_EQ(Receiver().pmEnded("\"rcv/ver/main=\"" + version + "\"").info.receiverVersion, version);
}

TEST(PmMessage, TailOfALongerEarlierTextShowsThrough) {
    // The earlier quote behind the value closes the later one, which itself has none.
    Receiver receiver;
    receiver.pm(R"("rcv/igs="ABCDEFGH")").pm(R"("rcv/igs="xyz)");
    EXPECT_EQ(receiver.info.receiverType, "xyzDEFGH");
}

TEST(PmMessage, TextIsBoundedByItsArea) {
    // 100 characters: the closing quote is the last that fits, or the first that does not.
    EXPECT_EQ(typeOf("\"rcv/igs=\"" + std::string(89, 'A') + "\""), std::string(89, 'A'));
    EXPECT_EQ(typeOf("\"rcv/igs=\"" + std::string(90, 'A') + "\""), "");
    EXPECT_EQ(typeOf(std::string(4000, '"')), "");
}

TEST(EqualsMessage, AntennaTypeFollowsItsName) {
    EXPECT_EQ(antennaOf(std::string("_ANT=XYZ\0", 9)), "XYZ");
    EXPECT_EQ(antennaOf("_ANT=XYZ"), "XYZ");
    EXPECT_EQ(antennaOf("_ANT=X Y-Z/1"), "X Y-Z/1");
    EXPECT_EQ(antennaOf("_ANT=Q"), "Q");
}

TEST(EqualsMessage, OnlyKindZeroNamesTheAntenna) {
    EXPECT_EQ(antennaOf("_ANT=XYZ", 1), "");
    EXPECT_EQ(antennaOf("_ANT=XYZ", 48), "");
    EXPECT_EQ(Receiver().assignment(0, "_ANT=OLD").assignment(1, "_ANT=XYZ").info.antennaType, "OLD");
}

TEST(EqualsMessage, OnlyTheExactNameCounts) {
    EXPECT_EQ(antennaOf("ANT=XYZ"), "");
    EXPECT_EQ(antennaOf("_ANTX=XYZ"), "");
    EXPECT_EQ(antennaOf("X_ANT=XYZ"), "");
    EXPECT_EQ(antennaOf("_ant=XYZ"), "");
}

TEST(EqualsMessage, ValueEndsWithTheEqualsSignInIt) {
    EXPECT_EQ(antennaOf("_ANT=AB=CD"), "AB=");
    EXPECT_EQ(antennaOf("_ANT=="), "=");
    EXPECT_EQ(antennaOf("_ANT=AB=_ANT=CD"), "CD");
}

TEST(EqualsMessage, NameMayFollowAnotherAssignment) {
    EXPECT_EQ(antennaOf("X=_ANT=Q"), "Q");
    EXPECT_EQ(antennaOf("=_ANT=Q"), "Q");
    EXPECT_EQ(antennaOf("_RCV=A=_ANT=Q"), "Q");
}

TEST(EqualsMessage, NameWithoutAValueStoresNothing) {
    EXPECT_EQ(antennaOf("_ANT="), "");
    EXPECT_EQ(antennaOf("_ANT"), "");
    EXPECT_EQ(antennaOf(std::string("\0_ANT=XYZ", 9)), "");
    EXPECT_EQ(Receiver().assignment(0, "_ANT=OLD").assignment(0, std::string("_ANT=\0", 6)).info.antennaType,
              "OLD");
}

TEST(EqualsMessage, ValueMayBeTheNameItself) {
    EXPECT_EQ(antennaOf("_ANT=_ANT"), "_ANT");
}

TEST(EqualsMessage, TailOfALongerEarlierTextShowsThrough) {
    EXPECT_EQ(Receiver().assignment(0, "_ANT=LONGNAME").assignment(0, "_ANT=AB").info.antennaType,
              "ABNGNAME");
}

TEST(EqualsMessage, TextIsBoundedByItsArea) {
    // 95 characters of the value fit; whether the text's cut end counts as its end is open.
    EXPECT_LE(antennaOf("_ANT=" + std::string(3000, 'A')).size(), 95U);
    EXPECT_EQ(antennaOf("_ANT=" + std::string(94, 'A')), std::string(94, 'A'));
}

TEST(PvMessage, ThreeNumbersAreThePosition) {
    Receiver receiver;
    receiver.handled(LogBuilder().pv({2849829.12345, -5e-3, 1e300}, 2.5F, 7), orbconv::handlePv);
    EXPECT_EQ(receiver.info.approxPosition, (std::array{2849829.12345, -5e-3, 1e300}));
    receiver.handled(LogBuilder().pv({1, 2, 3}), orbconv::handlePv);
    EXPECT_EQ(receiver.info.approxPosition, (std::array{1.0, 2.0, 3.0}));
}

TEST(ToMessage, NumberIsTheClockOffset) {
    Receiver receiver;
    receiver.handled(LogBuilder().to(-1.25e-4), orbconv::handleTo);
    EXPECT_EQ(receiver.info.receiverClockOffset, -1.25e-4);
    receiver.handled(LogBuilder().to(std::numeric_limits<double>::infinity()), orbconv::handleTo);
    EXPECT_EQ(receiver.info.receiverClockOffset, std::numeric_limits<double>::infinity());
}
