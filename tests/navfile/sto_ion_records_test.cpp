#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "navfile/mixed_nav_file.h"
#include "support/conversion.h"
#include "support/nav_survey.h"
#include "support/staging.h"

namespace {
namespace stoIonRecordsTest {

using namespace orbconv;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::splitLines;
using testsupport::written;

using Lines = std::vector<std::string>;
using RecordWriter = void (*)(TextWriter&, const NavigationTables&);

constexpr EpochClock moment = {
    .year = 2024, .month = 3, .day = 5, .hour = 6, .minute = 7, .second = 8, .timeBase = 0};

TimeOffsetRecord offset(double a0) {
    return {.a0 = a0, .a1 = -0.25F, .tot = 604784, .week = 2348, .stamp = moment};
}

IonoRecord iono(float first) {
    return {.alpha = {first, 2.0F, 3.0F, 4.0F}, .beta = {-5.0F, 6.0F, 7.0F, 8.0F}, .stamp = moment};
}

BeidouIonoRecord beidouIono(std::int32_t sv, float first = 1.0F) {
    const IonoRecord plain = iono(first);
    return {.tot = 0, .alpha = plain.alpha, .beta = plain.beta, .stamp = moment, .hourLetter = 'A', .sv = sv};
}

class StoAndIon : public testing::Test {
protected:
    std::unique_ptr<NavigationTables> tables = std::make_unique<NavigationTables>();

    Lines lines(RecordWriter write) {
        return splitLines(written([&](TextWriter& out) { write(out, *tables); }));
    }
};

// ---- STO ----

TEST_F(StoAndIon, GpsTimeOffset) {
    tables->gpsTimeOffset.records[0] = offset(0.5);
    EXPECT_THAT(
        lines(writeGpsStoRecords),
        ElementsAre("> STO G   LNAV",
                    "    2024 03 05 06 07 08 GPUT                                  UTC(USNO)",
                    "     6.047840000000e+05 5.000000000000e-01-2.500000000000e-01 0.000000000000e+00"));
}

TEST_F(StoAndIon, BeidouTimeOffsetHasATextWiderThanItsField) {
    tables->beidouTimeOffset.records[0] = offset(0.5);
    EXPECT_THAT(
        lines(writeBeidouStoRecords),
        ElementsAre("> STO C   D1D2",
                    "    2024 03 05 06 07 08 BDUT                                  UTC(NTSC)",
                    "     6.047840000000e+05 5.000000000000e-01-2.500000000000e-01 0.000000000000e+00"));
}

TEST_F(StoAndIon, NavicTimeOffset) {
    tables->navicTimeOffset.records[0] = offset(0.5);
    EXPECT_THAT(
        lines(writeNavicStoRecords),
        ElementsAre("> STO I   LNAV", "    2024 03 05 06 07 08 IRUT                                  UTCIRN",
                    "     6.047840000000e+05 5.000000000000e-01-2.500000000000e-01 0.000000000000e+00"));
}

TEST_F(StoAndIon, GalileoTimeOffsetTakesTheFirstHalfOfItsRecord) {
    tables->galileoTimeOffset.records[0] = {
        .utc = offset(0.5), .a0Gps = 9.0F, .a1Gps = 9.0F, .totGps = 9, .weekGps = 9};
    EXPECT_THAT(
        lines(writeGalileoStoRecords),
        ElementsAre("> STO E   IFNV", "    2024 03 05 06 07 08 GAUT                                  UTCGAL",
                    "     6.047840000000e+05 5.000000000000e-01-2.500000000000e-01 0.000000000000e+00"));
}

TEST_F(StoAndIon, GlonassTimeOffsetPrintsItsFloatFirstAndNamesGalileosTime) {
    tables->glonassTimeOffset = {.tauC = -0.25, .tauGps = 0.5F, .stamp = moment};
    EXPECT_THAT(
        lines(writeGlonassStoRecords),
        ElementsAre("> STO R   FDMA", "    2024 03 05 06 07 08 GLGP                                  UTCGAL",
                    "     5.000000000000e-01-2.500000000000e-01 0.000000000000e+00 0.000000000000e+00"));
}

TEST_F(StoAndIon, GlonassTimeOffsetIsWrittenWithoutDataToo) {
    EXPECT_THAT(
        lines(writeGlonassStoRecords),
        ElementsAre("> STO R   FDMA", "       0 00 00 00 00 00 GLGP                                  UTCGAL",
                    "     0.000000000000e+00 0.000000000000e+00 0.000000000000e+00 0.000000000000e+00"));
}

TEST_F(StoAndIon, TimeOfTheOffsetKeepsAllItsDigits) {
    tables->gpsTimeOffset.records[0] = offset(0.5);
    tables->gpsTimeOffset.records[0].tot = 4294967295U;  // single precision would show 4294967296
    EXPECT_EQ(lines(writeGpsStoRecords).at(2).substr(0, 23), "     4.294967295000e+09");
    tables->gpsTimeOffset.records[0].tot = 604800;
    EXPECT_EQ(lines(writeGpsStoRecords).at(2).substr(0, 23), "     6.048000000000e+05");
}

TEST_F(StoAndIon, FirstCoefficientIsDoubleAndSecondAWidenedFloat) {
    tables->navicTimeOffset.records[0] = offset(0.1);
    tables->navicTimeOffset.records[0].a1 = 0.1F;
    EXPECT_EQ(lines(writeNavicStoRecords).at(2).substr(23, 38), " 1.000000000000e-01 1.000000014901e-01");
}

// The tables that are walked, with the number of their slots.
struct Walk {
    const char* name;
    RecordWriter write;
    void (*put)(NavigationTables&, std::size_t, double);
    std::size_t slots;
    std::size_t linesOfARecord;
};

const Walk walks[] = {
    {"GpsSto", writeGpsStoRecords,
     [](NavigationTables& t, std::size_t i, double v) { t.gpsTimeOffset.records[i] = offset(v); }, 100, 3},
    {"GalileoSto", writeGalileoStoRecords,
     [](NavigationTables& t, std::size_t i, double v) { t.galileoTimeOffset.records[i].utc = offset(v); },
     100, 3},
    {"BeidouSto", writeBeidouStoRecords,
     [](NavigationTables& t, std::size_t i, double v) { t.beidouTimeOffset.records[i] = offset(v); }, 100, 3},
    {"NavicSto", writeNavicStoRecords,
     [](NavigationTables& t, std::size_t i, double v) { t.navicTimeOffset.records[i] = offset(v); }, 100, 3},
    {"GpsIon", writeGpsIonRecords,
     [](NavigationTables& t, std::size_t i, double v) { t.gpsIono.records[i] = iono(static_cast<float>(v)); },
     1000, 4},
    {"NavicIon", writeNavicIonRecords,
     [](NavigationTables& t, std::size_t i, double v) {
         t.navicIono.records[i] = iono(static_cast<float>(v));
     },
     1000, 4},
    {"BeidouIon", writeBeidouIonRecords,
     [](NavigationTables& t, std::size_t i, double v) {
         t.beidouIono.records[i] = beidouIono(7, static_cast<float>(v));
     },
     1000, 4},
};

class StoAndIonWalk : public StoAndIon, public testing::WithParamInterface<Walk> {
protected:
    // Records written from a table with these first coefficients, whatever its count is.
    std::size_t recordsOf(const std::vector<double>& firsts) {
        for (std::size_t i = 0; i < firsts.size(); ++i) {
            GetParam().put(*tables, i, firsts[i]);
        }
        return lines(GetParam().write).size() / GetParam().linesOfARecord;
    }
};

TEST_P(StoAndIonWalk, EndsAtAFirstCoefficientOf0) {
    EXPECT_EQ(recordsOf({1.0, 2.0, 0.0, 3.0}), 2U);
}
TEST_P(StoAndIonWalk, NegativeZeroEndsItToo) {
    EXPECT_EQ(recordsOf({1.0, -0.0, 3.0}), 1U);
}
TEST_P(StoAndIonWalk, ZeroInTheFirstRecordWritesNothing) {
    EXPECT_EQ(recordsOf({0.0, 2.0}), 0U);
}
TEST_P(StoAndIonWalk, NotANumberDoesNotEndIt) {
    EXPECT_EQ(recordsOf({1.0, std::numeric_limits<double>::quiet_NaN(), 3.0}), 3U);
}
TEST_P(StoAndIonWalk, OverAFullTableEndsWithTheTable) {
    EXPECT_EQ(recordsOf(std::vector<double>(GetParam().slots, 1.0)), GetParam().slots);
}

INSTANTIATE_TEST_SUITE_P(Tables, StoAndIonWalk, testing::ValuesIn(walks),
                         [](const auto& walk) { return std::string(walk.param.name); });

TEST_F(StoAndIon, GpsWalkLooksAtTheFirstCoefficientOnly) {
    tables->gpsTimeOffset.records[0] = offset(0.0);  // with an a1 that is not 0
    EXPECT_THAT(lines(writeGpsStoRecords), IsEmpty());
}

// ---- ION ----

TEST_F(StoAndIon, GpsIonosphere) {
    tables->gpsIono.records[0] = iono(1.0F);
    EXPECT_THAT(
        lines(writeGpsIonRecords),
        ElementsAre("> ION G00 LNAV",
                    "    2024 03 05 06 07 08 1.000000000000e+00 2.000000000000e+00 3.000000000000e+00",
                    "     4.000000000000e+00-5.000000000000e+00 6.000000000000e+00 7.000000000000e+00",
                    "     8.000000000000e+00"));
}

TEST_F(StoAndIon, NavicIonosphere) {
    tables->navicIono.records[0] = iono(-1.0F);
    EXPECT_THAT(
        lines(writeNavicIonRecords),
        ElementsAre("> ION I00 LNAV",
                    "    2024 03 05 06 07 08-1.000000000000e+00 2.000000000000e+00 3.000000000000e+00",
                    "     4.000000000000e+00-5.000000000000e+00 6.000000000000e+00 7.000000000000e+00",
                    "     8.000000000000e+00"));
}

TEST_F(StoAndIon, BeidouIonosphereShowsItsSatellite) {
    tables->beidouIono.records[0] = beidouIono(12);
    EXPECT_THAT(
        lines(writeBeidouIonRecords),
        ElementsAre("> ION C12 D1D2",
                    "    2024 03 05 06 07 08 1.000000000000e+00 2.000000000000e+00 3.000000000000e+00",
                    "     4.000000000000e+00-5.000000000000e+00 6.000000000000e+00 7.000000000000e+00",
                    "     8.000000000000e+00"));
}

TEST_F(StoAndIon, BeidouSatelliteIsLeftJustifiedIn3) {
    tables->beidouIono.records[0] = beidouIono(7);
    tables->beidouIono.records[1] = beidouIono(123);
    EXPECT_EQ(lines(writeBeidouIonRecords).at(0), "> ION C7  D1D2");
    EXPECT_EQ(lines(writeBeidouIonRecords).at(4), "> ION C123D1D2");
}

TEST_F(StoAndIon, BeidouIonosphereEndsAtADroppedRecord) {
    tables->beidouIono.records[0] = beidouIono(7);
    tables->beidouIono.records[1] = beidouIono(0);
    tables->beidouIono.records[2] = beidouIono(9);
    EXPECT_EQ(lines(writeBeidouIonRecords).size(), 4U);
}

GalileoEphemeris& firstGalileo(NavigationTables& tables, std::uint8_t ionFlags) {
    GalileoEphemeris& entry = testsupport::append(tables.galileo);
    entry.epoch = testsupport::recordEpoch();
    entry.ai0 = 64.0F;
    entry.ai1 = -0.5F;
    entry.ai2 = 0.25F;
    entry.ionFlags = ionFlags;
    return entry;
}

TEST_F(StoAndIon, GalileoIonosphereHasTheLetterCAndIsThatOfSlot0EvenIfDead) {
    firstGalileo(*tables, 5);
    testsupport::append(tables->galileo).ai0 = 1.0F;
    EXPECT_THAT(
        lines(writeGalileoIonRecords),
        ElementsAre("> ION C00 IFNV",
                    "    2024 03 05 06 07 08 6.400000000000e+01-5.000000000000e-01 2.500000000000e-01",
                    "     5.000000000000e+00"));
}

TEST_F(StoAndIon, GalileoIonosphereIsWrittenWithoutDataToo) {
    EXPECT_THAT(
        lines(writeGalileoIonRecords),
        ElementsAre("> ION C00 IFNV",
                    "       0 00 00 00 00 00 0.000000000000e+00 0.000000000000e+00 0.000000000000e+00",
                    "     0.000000000000e+00"));
}

TEST_F(StoAndIon, GalileoIonosphereShowsTheLowFiveFlags) {
    GalileoEphemeris& entry = firstGalileo(*tables, 255);
    EXPECT_EQ(lines(writeGalileoIonRecords).at(2), "     3.100000000000e+01");
    entry.ionFlags = 0xE0;
    EXPECT_EQ(lines(writeGalileoIonRecords).at(2), "     0.000000000000e+00");
    entry.ionFlags = 16;
    EXPECT_EQ(lines(writeGalileoIonRecords).at(2), "     1.600000000000e+01");
}

TEST_F(StoAndIon, CoefficientsAreWidenedFloats) {
    tables->gpsIono.records[0] = iono(0.1F);
    EXPECT_EQ(lines(writeGpsIonRecords).at(1).substr(23, 19), " 1.000000014901e-01");
}

// ---- the stamp ----

TEST_F(StoAndIon, StampWiderThanItsFieldsMovesTheLine) {
    tables->glonassTimeOffset.stamp = {
        .year = 65535, .month = 123, .day = 5, .hour = 1193, .minute = 0, .second = 0, .timeBase = 0};
    EXPECT_EQ(lines(writeGlonassStoRecords).at(1).substr(0, 32), "    65535 123 05 1193 00 00 GLGP");
}

// ---- the mixed file ----

// The lines that open records.
Lines heads(const Lines& file) {
    Lines opening;
    std::copy_if(file.begin(), file.end(), std::back_inserter(opening),
                 [](const std::string& line) { return line.starts_with('>'); });
    return opening;
}

TEST_F(StoAndIon, MixedFileTakesConstellationByConstellation) {
    for (auto* table : {&tables->gpsTimeOffset, &tables->beidouTimeOffset, &tables->navicTimeOffset}) {
        table->records[0] = table->records[1] = offset(0.5);
    }
    tables->galileoTimeOffset.records[0].utc = offset(0.5);
    tables->gpsIono.records[0] = tables->navicIono.records[0] = iono(1.0F);
    tables->beidouIono.records[0] = beidouIono(7);
    GpsEphemeris& gps = testsupport::append(tables->gps);
    gps.kepler.sv = 1;
    gps.navType = NavType::cnav;
    testsupport::append(tables->glonass).sv = 2;
    testsupport::append(tables->galileo).kepler.sv = 3;
    testsupport::append(tables->beidou).kepler.sv = 4;
    testsupport::append(tables->navic).kepler.sv = 5;

    const RunStamp stamp;
    const std::string file = written([&](TextWriter& out) {
        writeMixedNavFile(out, {4.01, stamp, "M", *tables});
    });
    EXPECT_THAT(
        heads(splitLines(file)),
        ElementsAre("> EPH G01 CNAV", "> STO G   LNAV", "> STO G   LNAV", "> ION G00 LNAV", "> EPH R02 FDMA",
                    "> STO R   FDMA", "> EPH E03     ", "> STO E   IFNV", "> ION C00 IFNV", "> EPH C04     ",
                    "> STO C   D1D2", "> STO C   D1D2", "> ION C7  D1D2", "> EPH I05 LNAV", "> STO I   LNAV",
                    "> STO I   LNAV", "> ION I00 LNAV"));
}

TEST_F(StoAndIon, MixedFileWithoutDataHasTwoRecords) {
    const RunStamp stamp;
    const std::string file = written([&](TextWriter& out) {
        writeMixedNavFile(out, {4.0, stamp, "M", *tables});
    });
    EXPECT_THAT(heads(splitLines(file)), ElementsAre("> STO R   FDMA", "> ION C00 IFNV"));
    EXPECT_EQ(splitLines(file).size(), 4U + 3U + 3U);
}

}  // namespace stoIonRecordsTest
}  // namespace
