// Presence flags: which bits a record takes, and what the survey pass notes of a present signal beside its
// codes: use counts and the two kinds of satellite lists.
#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::Cell;
using testsupport::Constellation;
using testsupport::rowOf;
using testsupport::satellite;
using testsupport::satellites;
using enum testsupport::Constellation;

class FlagSteps : public testsupport::AssemblyTest {
protected:
    orbconv::SatelliteNumbers& signalList(Constellation system, std::size_t band) {
        return survey.signalSatelliteList[rowOf(system)][band];
    }
    orbconv::SatelliteNumbers& shiftList(Constellation system, std::size_t band) {
        return survey.phaseShiftSatellites[rowOf(system)][band];
    }
    // One satellite whose signal is present, in an epoch of its own.
    void meet(std::string_view id, testsupport::Satellite entry) {
        orbconv::clearEpochRecords(store);
        list({entry});
        put(id, {0x40});
        collect();
    }
};

// ---- bits ----

TEST_F(FlagSteps, OnlyBitSixIsTaken) {
    for (const std::string_view id : {"FC", "F1", "F2", "F3", "F5", "Fl"}) {
        restart();
        const std::size_t band = testsupport::bandOf(id);
        list(satellites(gps, 1, 2));
        put(id, {0xFFFF, 0xFFBF});
        assemble();
        EXPECT_EQ(record(gps, 0).signalFlags[band], 0x40U) << id;
        EXPECT_EQ(record(gps, 1).signalFlags[band], 0U) << id;
    }
}

TEST_F(FlagSteps, OtherBitsOfTheRecordsWordStay) {
    list(satellites(galileo, 1, 2));
    record(galileo, 0).signalFlags[2] = 0x80000021U;
    record(galileo, 1).signalFlags[2] = 0xFFFFFFFFU;
    put("F2", {0x40, 0});
    assemble();
    EXPECT_EQ(record(galileo, 0).signalFlags[2], 0x80000061U);
    EXPECT_EQ(record(galileo, 1).signalFlags[2], 0xFFFFFFBFU);
}

TEST_F(FlagSteps, FirstFurtherBandOfBeidouTakesBitSevenToo) {
    list(satellites(beidou, 1, 4));
    record(beidou, 3).signalFlags[1] = 0xFFFFFFFFU;
    put("F1", {0xFFFF, 0x80, 0x40, 0});
    assemble();
    EXPECT_EQ(record(beidou, 0).signalFlags[1], 0xC0U);
    EXPECT_EQ(record(beidou, 1).signalFlags[1], 0x80U);
    EXPECT_EQ(record(beidou, 2).signalFlags[1], 0x40U);
    EXPECT_EQ(record(beidou, 3).signalFlags[1], 0xFFFFFF3FU);
}

TEST_F(FlagSteps, BitSevenAloneIsNoPresence) {
    list({satellite(beidou, 30)});
    put("F1", {0x80});
    collect();
    EXPECT_EQ(code(beidou, 5), "");
    EXPECT_EQ(survey.signalUseCount[4][1], 0U);
    EXPECT_EQ(signalList(beidou, 1)[0], 0);
}

TEST_F(FlagSteps, NoOtherStepTakesBitSeven) {
    for (const std::string_view id : {"FC", "F1", "F2", "F3", "F5", "Fl"}) {
        for (const Constellation system : {gps, glonass, galileo, beidou, navic}) {
            if (id != "F1" || system != beidou) {
                restart();
                list({satellite(system, 5)});
                put(id, {0x80});
                assemble();
                EXPECT_EQ(record(system).signalFlags[testsupport::bandOf(id)], 0U) << id;
            }
        }
    }
}

TEST_F(FlagSteps, HighByteOfTheWordIsNotItsLowByte) {
    list(satellites(gps, 1, 2));
    put("FC", {0x4000, 0x0040});
    assemble();
    EXPECT_EQ(record(gps, 0).signalFlags[0], 0U);
    EXPECT_EQ(record(gps, 1).signalFlags[0], 0x40U);
}

TEST_F(FlagSteps, RecordOfAnotherSatelliteKeepsItsBit) {
    record(gps, 0) = {.number = 9, .signalFlags = {0x40}};
    record(gps, 1) = {.number = 9};
    list({satellite(gps, 1), satellite(gps, 2), satellite(gps, 3)});
    put("FC", {0, 0x40, 0x40});
    assemble();
    EXPECT_EQ(record(gps, 0).signalFlags[0], 0x40U);
    EXPECT_EQ(record(gps, 1).signalFlags[0], 0U);
    EXPECT_EQ(record(gps, 2).signalFlags[0], 0x40U);
}

TEST_F(FlagSteps, ClaimARecordAlsoWithoutTheirMessage) {
    list({satellite(gps, 7), satellite(glonass, -4)});
    assemble();
    EXPECT_EQ(record(gps).number, 7);
    EXPECT_EQ(record(glonass).number, -4);
}

TEST_F(FlagSteps, WalkTheCountOfTheListAndNotTheirMessages) {
    list(satellites(gps, 1, 3));
    put("FC", {0x40, 0x40, 0x40});
    put("FC", {0x40});  // the elements behind it are still those of the message before
    assemble();
    EXPECT_EQ(record(gps, 2).signalFlags[0], 0x40U);
    list(satellites(gps, 1, 2));
    put("FC", {0, 0, 0});
    assemble();
    EXPECT_EQ(record(gps, 1).signalFlags[0], 0U);
    EXPECT_EQ(record(gps, 2).signalFlags[0], 0x40U);
}

TEST_F(FlagSteps, OneHundredAndEightyElementsHaveRoom) {
    std::vector<testsupport::Satellite> entries = satellites(sbas, 1, 179);
    entries.push_back(satellite(gps, 32));
    list(entries);
    std::vector<std::int64_t> words(179, 0);
    words.push_back(0x40);
    put("Fl", words);
    assemble();
    EXPECT_EQ(record(gps).number, 32);
    EXPECT_EQ(record(gps).signalFlags[5], 0x40U);
}

// ---- use counts and lists of every cell ----

constexpr std::size_t uncounted = 99;

struct NoteRow : Cell {
    std::size_t countRow;
    std::size_t countColumn;
    double version = 4.01;
};

// clang-format off
constexpr auto noteRows = std::to_array<NoteRow>({
    {{"FC", gps},         0, 0}, {{"F1", gps},     0, 1},        {{"F2", gps},     0, 2},
    {{"F3", gps},         0, 3}, {{"F5", gps},     0, 4},        {{"Fl", gps},     0, 5},
    {{"FC", glonass},     1, 0}, {{"F1", glonass}, 1, 1},        {{"F2", glonass}, 1, 2},
    {{"F3", glonass},     1, 3}, {{"F5", glonass}, 1, 4},        {{"Fl", glonass}, 1, 5, 8.0},
    {{"FC", galileo},     2, 0}, {{"F1", galileo}, 2, 1},        {{"F2", galileo}, 2, 2},
    {{"F3", galileo},     2, 3}, {{"F5", galileo}, 2, 3},        {{"Fl", galileo}, 2, 5, 136.0},
    {{"FC", beidou},      4, 0}, {{"F1", beidou},  4, 1},        {{"F2", beidou},  4, 2},
    {{"F3", beidou},      4, 3}, {{"F5", beidou},  4, 4},        {{"Fl", beidou},  4, 5},
    {{"FC", navic},       5, 0}, {{"F1", navic},   5, 1, 136.0}, {{"F2", navic},   5, 2, 136.0},
    {{"F3", navic},       5, 3, 136.0}, {{"F5", navic}, uncounted, uncounted}, {{"Fl", navic}, 5, 5},
    {{"FC", glonassCdma}, 6, 0}, {{"F3", glonassCdma}, 6, 3},    {{"F5", glonassCdma}, 6, 4},
});
// clang-format on

class FlagNotes : public testsupport::AssemblyTable<NoteRow> {
protected:
    // Two satellites with the signal, one without between them.
    void run() {
        options.rinexVersion = GetParam().version;
        includeEverySystem();
        list(satellites(GetParam().system, 11, 3));
        for (std::size_t i = 0; i < 3; ++i) {
            record(GetParam().system, i).gloSlotNumber = 21 + static_cast<std::int32_t>(i);
        }
        put(GetParam().id, {0x40, 0, 0x40});
        collect();
    }
    template <class Lists>
    void expectOnlyList(const Lists& lists, const std::vector<std::int32_t>& entries) {
        const std::size_t band = testsupport::bandOf(GetParam().id);
        for (std::size_t system = 0; system < lists.size(); ++system) {
            for (std::size_t other = 0; other < lists[system].size(); ++other) {
                orbconv::SatelliteNumbers expected{};
                if (system == rowOf(GetParam().system) && other == band) {
                    std::copy(entries.begin(), entries.end(), expected.begin());
                }
                EXPECT_EQ(lists[system][other], expected) << system << " " << other;
            }
        }
    }
};

TEST_P(FlagNotes, CountThePresentSignals) {
    run();
    for (std::size_t row = 0; row < 7; ++row) {
        for (std::size_t column = 0; column < 12; ++column) {
            const bool own = row == GetParam().countRow && column == GetParam().countColumn;
            EXPECT_EQ(survey.signalUseCount[row][column], own ? 2U : 0U) << row << " " << column;
        }
    }
}

TEST_P(FlagNotes, ListTheSatellitesOfTheSignalInTheOrderMet) {
    run();
    const bool bySlot = GetParam().system == glonass;
    expectOnlyList(survey.signalSatelliteList,
                   bySlot ? std::vector<std::int32_t>{21, 23} : std::vector<std::int32_t>{11, 13});
}

TEST_P(FlagNotes, ListTheSatellitesForThePhaseShiftByPosition) {
    run();
    expectOnlyList(survey.phaseShiftSatellites, {11, 0, 13});
}

TEST_P(FlagNotes, AreNotedInTheSurveyPassOnly) {
    options.rinexVersion = GetParam().version;
    includeEverySystem();
    list({satellite(GetParam().system, 11)});
    record(GetParam().system).gloSlotNumber = 21;
    put(GetParam().id, {0x40});
    assemble();
    EXPECT_EQ(survey.signalUseCount, orbconv::SignalSurvey{}.signalUseCount);
    expectOnlyList(survey.signalSatelliteList, {});
    expectOnlyList(survey.phaseShiftSatellites, {});
}

// BeiDou F1 keeps numbers 6 to 58 of its list; 11 and 13 are among them.
INSTANTIATE_TEST_SUITE_P(EveryCell, FlagNotes, testing::ValuesIn(noteRows), testsupport::nameOfCell);

// ---- the satellite lists of a signal ----

TEST_F(FlagSteps, SatelliteIsListedOnce) {
    for (const int number : {5, 9, 5, 9, 2, 5}) {
        meet("F2", satellite(gps, number));
    }
    EXPECT_EQ(signalList(gps, 2), (orbconv::SatelliteNumbers{5, 9, 2}));
    EXPECT_EQ(survey.signalUseCount[0][2], 6U);
}

TEST_F(FlagSteps, ListsTakeThirtyTwoSatellitesAndBeidouSixtyOne) {
    for (const Constellation system : {gps, galileo, navic}) {
        for (int number = 1; number <= 40; ++number) {
            meet("F5", satellite(system, number));
        }
        EXPECT_EQ(signalList(system, 4)[31], 32);
        EXPECT_EQ(signalList(system, 4)[32], 0) << rowOf(system);
    }
    for (int number = 1; number <= 70; ++number) {
        meet("F5", satellite(beidou, number));
    }
    EXPECT_EQ(signalList(beidou, 4)[60], 61);
    EXPECT_EQ(signalList(beidou, 5), orbconv::SatelliteNumbers{});
}

TEST_F(FlagSteps, FullListStillKnowsItsSatellites) {
    for (int number = 1; number <= 40; ++number) {
        meet("FC", satellite(gps, number));
    }
    meet("FC", satellite(gps, 32));
    EXPECT_EQ(signalList(gps, 0)[31], 32);
    EXPECT_EQ(signalList(gps, 0)[32], 0);
}

TEST_F(FlagSteps, GlonassListHoldsSlotsAlsoTheUnknownOne) {
    const std::vector<std::int32_t> slots = {24, 255, 0, 24};
    for (std::size_t i = 0; i < slots.size(); ++i) {
        record(glonass, i).gloSlotNumber = slots[i];
    }
    list(satellites(glonass, -2, 4));
    put("FC", {0x40, 0x40, 0x40, 0x40});
    collect();
    EXPECT_EQ(signalList(glonass, 0), (orbconv::SatelliteNumbers{24, 255}));
    EXPECT_EQ(shiftList(glonass, 0), (orbconv::SatelliteNumbers{-2, -1, 0, 1}));
}

TEST_F(FlagSteps, FirstFurtherBandOfBeidouListsNumbers6To58Only) {
    for (const int number : {1, 5, 6, 18, 58, 59, 61}) {
        meet("F1", satellite(beidou, number));
    }
    EXPECT_EQ(signalList(beidou, 1), (orbconv::SatelliteNumbers{6, 18, 58}));
    EXPECT_EQ(survey.signalUseCount[4][1], 7U);
}

TEST_F(FlagSteps, PresentRecordOfAnotherSatelliteIsNotedAfterAMismatch) {
    record(gps) = {.number = 9, .signalFlags = {0x40}};
    list({satellite(gps, 7)});
    put("FC", {0});
    collect();
    EXPECT_EQ(code(gps, 0), "C1C");
    EXPECT_EQ(survey.signalUseCount[0][0], 1U);
    EXPECT_EQ(signalList(gps, 0)[0], 9) << "the record's number";
    EXPECT_EQ(shiftList(gps, 0)[0], 7) << "the list's number";
}

TEST_F(FlagSteps, SatellitesBeyondTheRecordsReachNoOtherList) {
    list(satellites(gps, 1, 180));
    put("FC", std::vector<std::int64_t>(180, 0x40));
    collect();
    EXPECT_EQ(signalList(gps, 0)[31], 32);
    EXPECT_EQ(signalList(gps, 0)[32], 0);
    EXPECT_EQ(signalList(gps, 1), orbconv::SatelliteNumbers{});
    EXPECT_EQ(shiftList(gps, 0)[31], 32);
    EXPECT_EQ(shiftList(gps, 0)[60], 0);
    EXPECT_EQ(shiftList(gps, 1), orbconv::SatelliteNumbers{});
}

TEST_F(FlagSteps, NewOwnerOfAPlaceIsListedAlsoIfTheListStaysAsItWas) {
    for (const std::int32_t owner : {9, 10, 9, 11}) {
        record(gps) = {.number = owner, .signalFlags = {0x40}};
        list({satellite(gps, 7)});
        put("FC", {0});
        collect();
    }
    EXPECT_EQ(signalList(gps, 0), (orbconv::SatelliteNumbers{9, 10, 11}));
    EXPECT_EQ(survey.signalUseCount[0][0], 4U);
}

TEST_F(FlagSteps, NewSlotOfAChannelIsListed) {
    for (const std::int32_t slot : {0, 3, 255, 3, 4}) {
        record(glonass).gloSlotNumber = slot;
        meet("FC", satellite(glonass, -7));
    }
    EXPECT_EQ(signalList(glonass, 0), (orbconv::SatelliteNumbers{3, 255, 4}));
    EXPECT_EQ(shiftList(glonass, 0), orbconv::SatelliteNumbers{-7});
}

// ---- the satellite lists of the phase shift ----

TEST_F(FlagSteps, PlaceOfAnotherSatelliteSendsTheNumberToTheFirstFreeEntry) {
    meet("FC", satellite(gps, 5));
    meet("FC", satellite(gps, 6));
    meet("FC", satellite(gps, 5));
    meet("FC", satellite(gps, 6));
    EXPECT_EQ(shiftList(gps, 0), (orbconv::SatelliteNumbers{5, 6}));
}

TEST_F(FlagSteps, FreePlaceTakesANumberThatIsListedElsewhere) {
    meet("FC", satellite(gps, 5));
    list({satellite(gps, 4), satellite(gps, 5)});
    put("FC", {0, 0x40});
    orbconv::clearEpochRecords(store);
    collect();
    EXPECT_EQ(shiftList(gps, 0), (orbconv::SatelliteNumbers{5, 5}));
}

TEST_F(FlagSteps, PhaseShiftListsTakeSixtyNumbersAndSixtyOneOfFurtherBeidouBands) {
    for (const auto& [system, id, room] : {std::tuple{gps, "F1", 60U},
                                           {galileo, "FC", 60U},
                                           {beidou, "FC", 60U},
                                           {beidou, "F1", 61U},
                                           {beidou, "Fl", 61U}}) {
        restart();
        auto& entries = shiftList(system, testsupport::bandOf(id));
        for (std::size_t i = 0; i < 60; ++i) {
            entries[i] = 101 + static_cast<std::int32_t>(i);
        }
        meet(id, satellite(system, 30));
        EXPECT_EQ(entries[60], room == 61 ? 30 : 0) << id;
        EXPECT_EQ(entries[0], 101);
    }
}

}  // namespace
