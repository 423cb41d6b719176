// The epochs of the observation file: the epoch line, the satellite lines, the 64 columns of each band.
#include "obsfile/epoch_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "support/conversion.h"
#include "support/obs_text.h"
#include "support/staging.h"

namespace {

using orbconv::Constellation;
using orbconv::indexOf;
using orbconv::ObsRow;
using orbconv::SatEpochRecord;
using testing::ElementsAre;
using testsupport::absentSignal;
using testsupport::blanks;
using Lines = std::vector<std::string>;

struct Epoch {
    orbconv::RunOptions options;
    orbconv::EpochClock clock{2024, 3, 5, 1, 2, 3, 0};
    std::int32_t satellites = 0;
    double clockOffset = 0.0;
    orbconv::EpochStore store;
    orbconv::SignalSurvey survey;

    // A record with its number alone, in a constellation that has codes.
    SatEpochRecord& satellite(Constellation system, std::size_t index, std::int32_t number) {
        if (indexOf(system) < survey.obsCodeCount.size()) {
            survey.obsCodeCount[indexOf(system)] = 4;
        }
        SatEpochRecord& record = store.useFirst(system, index + 1)[index];
        record.number = number;
        return record;
    }
    std::string epochLine(std::int32_t flag = 0) {
        return testsupport::written([&](orbconv::TextWriter& out) {
            orbconv::writeEpochLine(out, flag, {options, clock, satellites, clockOffset, store, survey});
        });
    }
    Lines lines() {
        return testsupport::splitLines(testsupport::written([&](orbconv::TextWriter& out) {
            orbconv::writeEpoch(out, 0, {options, clock, satellites, clockOffset, store, survey});
        }));
    }
    // The lines behind the epoch line.
    Lines satelliteLines() {
        Lines all = lines();
        all.erase(all.begin());
        return all;
    }
};

class EpochLine : public testing::Test {
protected:
    std::unique_ptr<Epoch> epoch_ = std::make_unique<Epoch>();
    Epoch& epoch = *epoch_;
};
class EpochLines : public EpochLine {};

// A present signal with the values 1.5 m, 2.25 cycles, -3.125 Hz and 44.75 dB-Hz.
void makePresent(SatEpochRecord& record, std::size_t band) {
    record.signalFlags[band] = 0x40;
    record.at(ObsRow::pseudorange, band) = 1.5;
    record.at(ObsRow::phase, band) = 2.25;
    record.at(ObsRow::doppler, band) = -3.125;
    record.at(ObsRow::strength, band) = 44.75;
    record.strengthIndex[band] = 7;
}
constexpr std::string_view presentSignal = "         1.500           2.250 7        -3.125          44.750  ";
constexpr std::string_view presentZeros = "         0.000           0.000 0         0.000           0.000  ";

// ---- the epoch line ----

TEST_F(EpochLine, HasDateTimeFlagCountAndClockOffset) {
    epoch.satellites = 17;
    epoch.clockOffset = -0.000123456789;
    EXPECT_EQ(epoch.epochLine(), "> 2024 03 05 01 02  3.0000000  0 17      -0.000123456789\n");
}

TEST_F(EpochLine, SecondIsBlankFilledTo10Columns) {
    epoch.clock = {2024, 12, 31, 23, 59, 5, 0};
    EXPECT_EQ(epoch.epochLine(), "> 2024 12 31 23 59  5.0000000  0  0       0.000000000000\n");
    epoch.clock.second = 60.0F;
    EXPECT_EQ(epoch.epochLine(), "> 2024 12 31 23 59 60.0000000  0  0       0.000000000000\n");
}

TEST_F(EpochLine, SecondIsASingleWidenedToADouble) {
    epoch.clock.second = 59.8F;  // 59.799999237...
    EXPECT_EQ(epoch.epochLine(), "> 2024 03 05 01 02 59.7999992  0  0       0.000000000000\n");
}

TEST_F(EpochLine, YearIsLeftJustifiedInFive) {
    epoch.clock.year = 87;
    EXPECT_EQ(epoch.epochLine(), "> 87   03 05 01 02  3.0000000  0  0       0.000000000000\n");
    epoch.clock.year = 65535;
    EXPECT_EQ(epoch.epochLine(), "> 6553503 05 01 02  3.0000000  0  0       0.000000000000\n");
}

TEST_F(EpochLine, MonthToMinuteTakeAsManyDigitsAsTheyNeed) {
    epoch.clock = {2024, 255, 200, 1193, 60, 0, 0};
    EXPECT_EQ(epoch.epochLine(), "> 2024 255 200 1193 60  0.0000000  0  0       0.000000000000\n");
}

TEST_F(EpochLine, FlagAndCountTakeThreeColumnsEach) {
    epoch.satellites = 180;
    EXPECT_EQ(epoch.epochLine(6), "> 2024 03 05 01 02  3.0000000  6180       0.000000000000\n");
    epoch.satellites = -1;
    EXPECT_EQ(epoch.epochLine(12), "> 2024 03 05 01 02  3.0000000 12 -1       0.000000000000\n");
}

TEST_F(EpochLine, ClockOffsetHasTwelveDecimalsInFifteenColumns) {
    epoch.clockOffset = 1e-12;
    EXPECT_THAT(epoch.epochLine(), testing::EndsWith("  0  0       0.000000000001\n"));
    epoch.clockOffset = 99.5;
    EXPECT_THAT(epoch.epochLine(), testing::EndsWith("  0  0      99.500000000000\n"));
    epoch.clockOffset = -100.25;
    EXPECT_THAT(epoch.epochLine(), testing::EndsWith("  0  0      -100.250000000000\n"));
}

TEST_F(EpochLine, StandsAloneWithoutSatellites) {
    epoch.survey.obsCodeCount.fill(4);
    EXPECT_THAT(epoch.lines(), ElementsAre("> 2024 03 05 01 02  3.0000000  0  0       0.000000000000"));
}

// ---- the bands of a line ----

TEST_F(EpochLines, APresentSignalHasFourValuesAndADigitIn64Columns) {
    SatEpochRecord& record = epoch.satellite(Constellation::gps, 0, 7);
    makePresent(record, 0);
    record.at(ObsRow::pseudorange, 0) = 22484434.35;
    record.at(ObsRow::phase, 0) = 118156500.0625;
    record.at(ObsRow::doppler, 0) = -1234.5678;
    record.strengthIndex[0] = 9;
    EXPECT_THAT(epoch.satelliteLines(),
                ElementsAre("G07" + ("  22484434.350   118156500.062 9     -1234.568          44.750  " +
                                     blanks(320))));
}

TEST_F(EpochLines, ASignalOfWhichNothingWasMeasuredPrintsZeros) {
    epoch.satellite(Constellation::gps, 0, 1).signalFlags[5] = 0x40;
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("G01" + blanks(320) + std::string(presentZeros)));
}

TEST_F(EpochLines, ASatelliteWithoutAnySignalKeepsItsNumberAndItsBlanks) {
    epoch.satellite(Constellation::gps, 0, 32);
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("G32" + blanks(384)));
}

TEST_F(EpochLines, AnAbsentSignalIsBlankWhateverItsValues) {
    SatEpochRecord& record = epoch.satellite(Constellation::gps, 0, 32);
    makePresent(record, 2);
    record.signalFlags[2] = 0xFFFFFFBF;
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("G32" + blanks(384)));
}

TEST_F(EpochLines, OnlyBit6OfTheFlagWordCounts) {
    SatEpochRecord& record = epoch.satellite(Constellation::gps, 0, 32);
    makePresent(record, 0);
    record.signalFlags[0] = 0xFFFFFFFF;
    record.signalFlags[1] = 0x80;
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("G32" + std::string(presentSignal) + blanks(320)));
}

TEST_F(EpochLines, SlotsAreNotCompressed) {
    makePresent(epoch.satellite(Constellation::galileo, 0, 11), 3);
    EXPECT_THAT(epoch.satelliteLines(),
                ElementsAre("E11" + blanks(192) + std::string(presentSignal) + absentSignal()));
}

TEST_F(EpochLines, EachSlotTakesItsOwnColumnOfValues) {
    SatEpochRecord& record = epoch.satellite(Constellation::gps, 0, 1);
    for (std::size_t band = 0; band < 6; ++band) {
        const auto value = static_cast<double>(band);
        record.signalFlags[band] = 0x40;
        record.at(ObsRow::pseudorange, band) = value + 100;
        record.at(ObsRow::phase, band) = value + 200;
        record.at(ObsRow::doppler, band) = value + 300;
        record.at(ObsRow::strength, band) = value + 400;
        record.strengthIndex[band] = static_cast<std::int32_t>(band) + 1;
    }
    EXPECT_THAT(epoch.satelliteLines(),
                ElementsAre("G01"
                            "       100.000         200.000 1       300.000         400.000  "
                            "       101.000         201.000 2       301.000         401.000  "
                            "       102.000         202.000 3       302.000         402.000  "
                            "       103.000         203.000 4       303.000         403.000  "
                            "       104.000         204.000 5       304.000         404.000  "
                            "       105.000         205.000 6       305.000         405.000  "));
}

// ---- constellations ----

struct Row {
    Constellation system;
    char letter;
    std::size_t bands;
    bool orbconv::RunOptions::*flag;
};

class EpochConstellation : public testing::TestWithParam<Row> {};

TEST_P(EpochConstellation, HasItsLetterAndItsSlotsUnlessItsFlagIsCleared) {
    const auto epoch = std::make_unique<Epoch>();
    SatEpochRecord& record = epoch->satellite(GetParam().system, 0, 9);
    record.signalFlags.fill(0x40);
    epoch->options.*GetParam().flag = true;
    std::string line = {GetParam().letter, '0', '9'};
    for (std::size_t band = 0; band < GetParam().bands; ++band) {
        line += presentZeros;
    }
    EXPECT_THAT(epoch->satelliteLines(), ElementsAre(line));
    epoch->options.*GetParam().flag = false;
    EXPECT_THAT(epoch->satelliteLines(), ElementsAre());
}

TEST_P(EpochConstellation, WritesNoLinesAtACodeCountOf0ButDoesAtANegativeOne) {
    const auto epoch = std::make_unique<Epoch>();
    epoch->options.*GetParam().flag = true;
    epoch->satellite(GetParam().system, 0, 9);
    epoch->survey.obsCodeCount[indexOf(GetParam().system)] = 0;
    EXPECT_EQ(epoch->satelliteLines().size(), 0U);
    epoch->survey.obsCodeCount[indexOf(GetParam().system)] = -3;
    EXPECT_EQ(epoch->satelliteLines().size(), 1U);
}

// Deliberate: 30 records whatever the array's capacity.
TEST_P(EpochConstellation, WritesItsFirst30RecordsAlone) {
    const auto epoch = std::make_unique<Epoch>();
    epoch->options.*GetParam().flag = true;
    const std::size_t capacity = epoch->store.records(GetParam().system).size();
    for (std::size_t i = 0; i < capacity; ++i) {
        epoch->satellite(GetParam().system, i, static_cast<std::int32_t>(i) + 1);
    }
    const Lines lines = epoch->satelliteLines();
    ASSERT_EQ(lines.size(), 30U);
    EXPECT_EQ(lines[0].substr(1, 2), "01");
    EXPECT_EQ(lines[29].substr(1, 2), "30");
}

// NavIC has a code list of its own to look at: without codes its bands take no columns.
INSTANTIATE_TEST_SUITE_P(
    Rows, EpochConstellation,
    testing::Values(Row{Constellation::gps, 'G', 6, &orbconv::RunOptions::includeGps},
                    Row{Constellation::glonass, 'R', 5, &orbconv::RunOptions::includeGlonass},
                    Row{Constellation::galileo, 'E', 5, &orbconv::RunOptions::includeGalileo},
                    Row{Constellation::qzss, 'J', 6, &orbconv::RunOptions::includeQzss},
                    Row{Constellation::beidou, 'C', 6, &orbconv::RunOptions::includeBeidou},
                    Row{Constellation::navic, 'I', 0, &orbconv::RunOptions::includeNavic},
                    Row{Constellation::sbas, 'S', 6, &orbconv::RunOptions::includeSbas}),
    [](const auto& row) { return std::string(1, row.param.letter); });

TEST_F(EpochLines, ConstellationsStandInTheOrderGREJCIS) {
    epoch.options.includeQzss = epoch.options.includeSbas = true;
    for (std::size_t c = orbconv::constellationCount; c-- > 0;) {
        epoch.satellite(static_cast<Constellation>(c), 0, 40);
    }
    EXPECT_THAT(epoch.satelliteLines(),
                ElementsAre("G40" + blanks(384), "R40" + blanks(320), "E40" + blanks(320),
                            "J40" + blanks(384), "C40" + blanks(384), "I40", "S40" + blanks(384)));
}

TEST_F(EpochLines, GlonassCdmaIsNeverWritten) {
    epoch.options.includeGlonassCdma = true;
    epoch.survey.obsCodeCount.fill(4);
    makePresent(epoch.satellite(Constellation::glonassCdma, 0, 3), 0);
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre());
}

// ---- free records and GLONASS slots ----

TEST_F(EpochLines, FreeRecordsAreSkippedWhereverTheyStand) {
    epoch.satellite(Constellation::gps, 1, 5);
    epoch.satellite(Constellation::gps, 29, 2);
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("G05" + blanks(384), "G02" + blanks(384)));
}

// GLONASS satellites as {channel, slot}, record by record.
Lines glonassLines(Epoch& epoch, const std::vector<std::pair<int, int>>& satellites) {
    for (std::size_t i = 0; i < satellites.size(); ++i) {
        epoch.satellite(Constellation::glonass, i, satellites[i].first).gloSlotNumber = satellites[i].second;
    }
    Lines lines = epoch.satelliteLines();
    for (std::string& line : lines) {
        EXPECT_TRUE(line.ends_with(blanks(320)));
        line.erase(line.size() - 320);
    }
    return lines;
}

TEST_F(EpochLines, GlonassShowsTheSlotAndWithoutOneTheChannel) {
    EXPECT_THAT(glonassLines(epoch, {{3, 17}, {5, 0}, {-7, 0}, {-3, 9}}),
                ElementsAre("R17", "R05", "R-7", "R09"));
}

TEST_F(EpochLines, OfTwoNeighboursOfOneSlotTheFirstIsWritten) {
    SatEpochRecord& first = epoch.satellite(Constellation::glonass, 0, 1);
    SatEpochRecord& second = epoch.satellite(Constellation::glonass, 1, 2);
    first.gloSlotNumber = 8;
    second.gloSlotNumber = 8;
    makePresent(first, 0);
    makePresent(second, 1);
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("R08" + std::string(presentSignal) + blanks(256)));
}

TEST_F(EpochLines, AllNeighboursOfOneSlotButTheFirstAreDropped) {
    EXPECT_THAT(glonassLines(epoch, {{1, 4}, {2, 4}, {3, 4}, {4, 5}}), ElementsAre("R04", "R05"));
}

TEST_F(EpochLines, AFreeRecordBetweenTwoOfOneSlotChangesNothing) {
    EXPECT_THAT(glonassLines(epoch, {{1, 4}, {0, 0}, {2, 4}}), ElementsAre("R04"));
}

TEST_F(EpochLines, ASlotIsWrittenAgainBehindAnotherOrBehindNone) {
    EXPECT_THAT(glonassLines(epoch, {{1, 4}, {2, 5}, {3, 4}, {6, 0}, {1, 4}}),
                ElementsAre("R04", "R05", "R04", "R06", "R04"));
}

TEST_F(EpochLines, AChannelIsNotTakenForTheSlotOfTheNext) {
    EXPECT_THAT(glonassLines(epoch, {{6, 0}, {1, 6}}), ElementsAre("R06", "R06"));
}

TEST_F(EpochLines, RecordsWithoutASlotAreAllWritten) {
    EXPECT_THAT(glonassLines(epoch, {{2, 0}, {2, 0}, {-1, 0}}), ElementsAre("R02", "R02", "R-1"));
}

TEST_F(EpochLines, AFreeRecordWithASlotLeftFromEarlierHasItsLine) {
    EXPECT_THAT(glonassLines(epoch, {{0, 12}}), ElementsAre("R12"));
}

TEST_F(EpochLines, AnUnknownSlotIsWrittenAsIsInThreeDigits) {
    EXPECT_THAT(glonassLines(epoch, {{0, 255}}), ElementsAre("R255"));
}

// ---- NavIC ----

TEST_F(EpochLines, NavicSlotsWithoutACodeTakeNoColumns) {
    SatEpochRecord& record = epoch.satellite(Constellation::navic, 0, 3);
    record.signalFlags.fill(0x40);
    makePresent(record, 4);
    testsupport::setCodes(epoch.survey.codes(Constellation::navic), 0, {"C9A"});
    testsupport::setCodes(epoch.survey.codes(Constellation::navic), 20, {"C5A"});
    EXPECT_THAT(epoch.satelliteLines(),
                ElementsAre("I03" + std::string(presentZeros) + std::string(presentSignal)));
}

TEST_F(EpochLines, NavicSlotsWithACodeAndNoSignalAreBlank) {
    epoch.satellite(Constellation::navic, 0, 3);
    testsupport::setCodes(epoch.survey.codes(Constellation::navic), 20, {"C5A"});
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("I03" + absentSignal()));
}

TEST_F(EpochLines, NavicSlotsGoByThePseudorangeCodeAlone) {
    epoch.satellite(Constellation::navic, 0, 3).signalFlags.fill(0x40);
    testsupport::setCodes(epoch.survey.codes(Constellation::navic), 1, {"L9A", "D9A", "S9A", "L9B"});
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("I03"));
}

TEST_F(EpochLines, NavicHasASeventhSlot) {
    SatEpochRecord& record = epoch.satellite(Constellation::navic, 0, 3);
    makePresent(record, 6);
    for (std::size_t band = 0; band < 7; ++band) {
        testsupport::setCodes(epoch.survey.codes(Constellation::navic), band * 5, {"C9A"});
    }
    EXPECT_THAT(epoch.satelliteLines(), ElementsAre("I03" + blanks(384) + std::string(presentSignal)));
}

}  // namespace
