// The merge of the GLONASS CDMA records, codes and lists into the GLONASS ones, with what it stores one place
// past the end of a row, of the flags and of the record.
#include <gtest/gtest.h>

#include "assembly/record_order.h"
#include "support/assembly_bench.h"

namespace {

using testsupport::ObsRow;
using testsupport::rowOf;
using testsupport::SatEpochRecord;
using enum testsupport::Constellation;

class GlonassCdmaMerge : public testsupport::AssemblyTest {
protected:
    // Numbers that match nothing else, and whose presence bit is clear, so that only the records of a test
    // meet.
    void SetUp() override {
        for (std::size_t i = 0; i < 32; ++i) {
            record(glonass, i).number = 2048 + static_cast<std::int32_t>(i);
        }
    }
    // A CDMA record with a value of its own in row r and band b: 100 * (r + 1) + b.
    SatEpochRecord& cdma(std::size_t i, std::int32_t number) {
        SatEpochRecord& record = this->record(glonassCdma, i);
        record.number = number;
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t band = 0; band < 6; ++band) {
                record.obs[row * 11 + band] = static_cast<double>(100 * (row + 1) + band);
            }
        }
        for (std::size_t band = 0; band < 6; ++band) {
            record.strengthIndex[band] = 4 + static_cast<std::int32_t>(band);
        }
        return record;
    }
    void merge() { orbconv::mergeGlonassCdma(store, survey); }
};

TEST_F(GlonassCdmaMerge, CodesGoBehindThoseOfGlonassEmptyOnesToo) {
    survey.codes(glonass).fill("old");
    survey.codes(glonassCdma)[0] = "C4X";
    survey.codes(glonassCdma)[29] = "L3X";
    survey.codes(glonassCdma)[30] = "nan";  // behind the thirty that go over
    merge();
    for (std::size_t slot = 0; slot < 60; ++slot) {
        EXPECT_EQ(code(glonass, slot), slot < 30    ? "old"
                                       : slot == 30 ? "C4X"
                                       : slot == 59 ? "L3X"
                                                    : "")
            << slot;
    }
    EXPECT_EQ(code(glonassCdma, 0), "C4X");
}

TEST_F(GlonassCdmaMerge, ListsGoBehindTheSixBandsOfGlonass) {
    auto& lists = survey.signalSatelliteList[rowOf(glonass)];
    lists.fill({21, 22});
    for (std::size_t band = 0; band < 6; ++band) {
        survey.signalSatelliteList[rowOf(glonassCdma)][band] = {static_cast<std::int32_t>(band) + 1, 30};
    }
    merge();
    for (std::size_t band = 0; band < 6; ++band) {
        EXPECT_EQ(lists[band], (orbconv::SatelliteNumbers{21, 22}));
        EXPECT_EQ(lists[6 + band], (orbconv::SatelliteNumbers{static_cast<std::int32_t>(band) + 1, 30}));
    }
}

TEST_F(GlonassCdmaMerge, ValuesOfFiveBandsGoToTheColumnsBehindTheOwnOnes) {
    cdma(4, 2050);
    record(glonass, 2).obs.fill(-1.0);
    merge();
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t band = 0; band < 5; ++band) {
            EXPECT_EQ(record(glonass, 2).obs[row * 11 + 6 + band],
                      static_cast<double>(100 * (row + 1) + band));
        }
        for (std::size_t column = 1; column < 6; ++column) {
            EXPECT_EQ(record(glonass, 2).obs[row * 11 + column], -1.0);
        }
    }
}

TEST_F(GlonassCdmaMerge, SixthBandOfARowGoesToTheFirstColumnOfTheNext) {
    cdma(0, 2048);
    record(glonass, 0).obs.fill(-1.0);
    merge();
    EXPECT_EQ(record(glonass, 0).at(ObsRow::pseudorange, 0), -1.0);
    EXPECT_EQ(record(glonass, 0).at(ObsRow::doppler, 0), 105.0);
    EXPECT_EQ(record(glonass, 0).at(ObsRow::phase, 0), 205.0);
    EXPECT_EQ(record(glonass, 0).at(ObsRow::strength, 0), 305.0);
}

TEST_F(GlonassCdmaMerge, SixthBandOfTheLastRowGoesToTheFirstTwoDigits) {
    cdma(0, 2048).at(ObsRow::strength, 5) = 46.75;
    merge();
    // 46.75 is 1.4609375 * 2^5: sign and exponent 0x404, fraction 0x7600000000000.
    EXPECT_EQ(record(glonass, 0).strengthIndex[0], 0);
    EXPECT_EQ(record(glonass, 0).strengthIndex[1], 0x40476000);
    cdma(0, 2048).at(ObsRow::strength, 5) = 0.1;
    merge();
    EXPECT_EQ(static_cast<std::uint32_t>(record(glonass, 0).strengthIndex[0]), 0x9999999AU);
    EXPECT_EQ(record(glonass, 0).strengthIndex[1], 0x3FB99999);
}

TEST_F(GlonassCdmaMerge, DigitsGoBehindTheOwnSix) {
    cdma(0, 2048);
    record(glonass, 0).strengthIndex.fill(-1);
    merge();
    const auto& digits = record(glonass, 0).strengthIndex;
    for (std::size_t i = 2; i < 22; ++i) {
        EXPECT_EQ(digits[i], i >= 6 && i < 12 ? static_cast<std::int32_t>(i) - 2 : -1) << i;
    }
}

TEST_F(GlonassCdmaMerge, PresenceBitsGoBehindTheOwnSixAndOtherBitsStay) {
    cdma(0, 2048).signalFlags = {0xFFFFFFFFU, 0, 0x40, 0xFFFFFFBFU, 0x40};
    record(glonass, 0).signalFlags = {1, 2, 3, 4, 5, 6, 0x81, 0xFF, 0, 0x40, 0x40};
    merge();
    EXPECT_EQ(record(glonass, 0).signalFlags,
              (std::array<std::uint32_t, 11>{1, 2, 3, 4, 5, 6, 0xC1, 0xBF, 0x40, 0, 0x40}));
}

TEST_F(GlonassCdmaMerge, PresenceOfTheSixthBandGoesToTheNumberOfTheNextRecord) {
    record(glonass, 1).number = 0x105;
    cdma(0, 2048).signalFlags[5] = 0x40;
    merge();
    EXPECT_EQ(record(glonass, 1).number, 0x145);
    cdma(0, 2048).signalFlags[5] = 0xFFFFFFBFU;
    merge();
    EXPECT_EQ(record(glonass, 1).number, 0x105);
}

TEST_F(GlonassCdmaMerge, NumberChangedOnTheWayDecidesAboutTheNextRecord) {
    record(glonass, 1).number = 5;
    cdma(0, 2048).signalFlags[5] = 0x40;
    cdma(1, 5 + 64);
    merge();
    EXPECT_EQ(record(glonass, 1).number, 5 + 64);
    EXPECT_EQ(record(glonass, 1).at(ObsRow::pseudorange, 6), 100.0);
}

TEST_F(GlonassCdmaMerge, OnlyTheFirstSixGlonassRecordsTakePart) {
    for (std::size_t i = 0; i < 7; ++i) {
        cdma(i, 2048 + static_cast<std::int32_t>(i));
    }
    merge();
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(record(glonass, i).at(ObsRow::pseudorange, 6), 100.0) << i;
    }
    EXPECT_EQ(record(glonass, 6).obs, SatEpochRecord{}.obs);
}

TEST_F(GlonassCdmaMerge, AllThirtyCdmaRecordsAreLookedAt) {
    cdma(29, 2051);
    merge();
    EXPECT_EQ(record(glonass, 3).at(ObsRow::doppler, 6), 200.0);
}

TEST_F(GlonassCdmaMerge, LastOfSeveralCdmaRecordsOfANumberRemains) {
    cdma(3, 2048);
    cdma(7, 2048).at(ObsRow::pseudorange, 0) = 4711.0;
    merge();
    EXPECT_EQ(record(glonass, 0).at(ObsRow::pseudorange, 6), 4711.0);
}

TEST_F(GlonassCdmaMerge, ChannelZeroMeetsEveryFreeCdmaRecord) {
    record(glonass, 2) = {.number = 0};
    record(glonass, 2).obs.fill(7.0);
    record(glonass, 2).strengthIndex.fill(5);
    record(glonass, 3).number = 0x4F;
    merge();
    const auto& folded = record(glonass, 2);
    EXPECT_EQ(folded.at(ObsRow::pseudorange, 0), 7.0);
    EXPECT_EQ(folded.at(ObsRow::pseudorange, 5), 7.0);
    EXPECT_EQ(folded.at(ObsRow::pseudorange, 6), 0.0);
    EXPECT_EQ(folded.at(ObsRow::doppler, 0), 0.0);
    EXPECT_EQ(folded.at(ObsRow::strength, 0), 0.0);
    EXPECT_EQ(folded.strengthIndex[0], 0);
    EXPECT_EQ(folded.strengthIndex[2], 5);
    EXPECT_EQ(record(glonass, 3).number, 0x0F);
}

TEST_F(GlonassCdmaMerge, CdmaRecordsStayAsTheyAre) {
    const SatEpochRecord before = cdma(0, 2048);
    merge();
    EXPECT_EQ(record(glonassCdma, 0).number, 2048);
    EXPECT_EQ(record(glonassCdma, 0).obs, before.obs);
    EXPECT_EQ(record(glonassCdma, 0).strengthIndex, before.strengthIndex);
}

TEST_F(GlonassCdmaMerge, WithoutAMatchNoRecordChanges) {
    cdma(0, 77);
    merge();
    for (std::size_t i = 0; i < 32; ++i) {
        EXPECT_EQ(record(glonass, i).number, 2048 + static_cast<std::int32_t>(i));
        EXPECT_EQ(record(glonass, i).obs, SatEpochRecord{}.obs);
        EXPECT_EQ(record(glonass, i).strengthIndex, SatEpochRecord{}.strengthIndex);
    }
}

TEST_F(GlonassCdmaMerge, ClearFindsWhatItWroteIntoAFreeRecord) {
    // The number of the free record 1 becomes 64; the free record 3 meets the CDMA record of number 0.
    for (std::size_t i = 1; i < 32; ++i) {
        record(glonass, i).number = 0;
    }
    cdma(0, 2048).signalFlags[5] = 0x40;
    cdma(29, 0);  // behind all free ones
    merge();
    EXPECT_EQ(record(glonass, 1).number, 64);
    EXPECT_NE(record(glonass, 3).obs, SatEpochRecord{}.obs);
    orbconv::clearEpochRecords(store);
    EXPECT_EQ(record(glonass, 1).number, 0);
    EXPECT_EQ(record(glonass, 3).obs, SatEpochRecord{}.obs);
}

}  // namespace
