// Codes that come from the measurement steps: those of SBAS and QZSS, which hold placeholders for signals
// that the constellation does not have, and the three changes to GLONASS ones; and the count of all codes.
#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::Constellation;
using testsupport::everyVersion;
using testsupport::Gate;
using testsupport::only3And4;
using testsupport::only4;
using testsupport::satellite;
using testsupport::SatEpochRecord;
using testsupport::shut;
using enum testsupport::Constellation;

struct CodeRow {
    std::string_view id;
    std::size_t slot;
    std::string_view sbasText;
    Gate sbasGate;
    std::string_view qzssText;
    Gate qzssGate;
    bool needsInclude = false;
};

using testsupport::always;

// clang-format off
constexpr auto codeRows = std::to_array<CodeRow>({
    {"cp",  1, "L1C", only3And4, "L1C", always},
    {"DC",  2, "D1C", only3And4, "D1C", always},
    {"0d",  2, "D1C", only3And4, "D1C", always},
    {"CE",  3, "S1C", only3And4, "S1C", always},
    {"2r", 10, "n2n", only4,     "C2X", always},
    {"3r", 15, "C2L", only4,     "nan", only4},
    {"5r", 20, "C5I", only3And4, "C5X", always},
    {"lr", 25, "nan", only4,     "C1X", always},
    {"1p",  6, "---", only4,     "nan", only4},
    {"2p", 11, "nan", only4,     "L2X", always},
    {"3p", 16, "nan", only4,     "nUn", only4},
    {"5p", 21, "L5I", only3And4, "L5X", always},
    {"lp", 26, "nSn", only4,     "L1X", always},
    {"1d",  7, "nAn", only4,     "nOn", only4},
    {"2d", 12, "nAn", only4,     "D2X", always},
    {"3d", 17, "nAn", only4,     "nOn", only4},
    {"5d", 22, "D5I", only3And4, "D5X", always},
    {"ld", 27, "nAn", only4,     "D1X", always},
    {"1E",  8, "nEn", only4,     "S1C", only4,  true},
    {"2E", 13, "nEn", only4,     "S2X", always, true},
    {"3E", 18, "nEn", only4,     "nan", only4,  true},
    {"5E", 23, "S5I", only3And4, "S5X", always, true},
    {"lE", 28, "---", only4,     "S1X", always, true},
    {"rc",  0, "",    shut,      "",    shut},
    {"rx",  0, "",    shut,      "",    shut},
    {"DX",  0, "",    shut,      "",    shut},
});
// clang-format on

class PlaceholderCodes : public testsupport::AssemblyTable<CodeRow> {
protected:
    void run(Constellation system, double version, bool included) {
        restart();
        options.rinexVersion = version;
        includeEverySystem();
        include(system, included);
        list({satellite(system, 3)});
        put(GetParam().id, {1});
        assemble();
    }
    void expectOnlyCode(Constellation system, std::string_view text) {
        for (std::size_t slot = 0; slot < 60; ++slot) {
            EXPECT_EQ(code(system, slot), slot == GetParam().slot ? text : "")
                << "slot " << slot << ", version " << options.rinexVersion;
        }
    }
    void expectCodeByVersion(Constellation system, const Gate& gate, std::string_view text) {
        for (const double version : everyVersion) {
            for (const bool included : {true, false}) {
                run(system, version, included);
                const bool entered = gate.opensFor(version) && (included || !GetParam().needsInclude);
                expectOnlyCode(system, entered ? text : "");
            }
        }
    }
};

TEST_P(PlaceholderCodes, OfSbas) {
    expectCodeByVersion(sbas, GetParam().sbasGate, GetParam().sbasText);
}

TEST_P(PlaceholderCodes, OfQzss) {
    expectCodeByVersion(qzss, GetParam().qzssGate, GetParam().qzssText);
}

TEST_P(PlaceholderCodes, ComeWithoutAValueInAnyRecord) {
    for (const Constellation system : {sbas, qzss}) {
        for (const double version : everyVersion) {
            run(system, version, true);
            for (const SatEpochRecord& record : store.all) {
                ASSERT_EQ(record.number, 0);
                ASSERT_EQ(record.obs, SatEpochRecord{}.obs);
                ASSERT_EQ(record.clockOffset, 0.0);
                ASSERT_EQ(record.referenceDoppler, 0);
                ASSERT_EQ(record.strengthIndex, SatEpochRecord{}.strengthIndex);
            }
        }
    }
}

TEST_P(PlaceholderCodes, ReachNoOtherList) {
    run(sbas, 4.01, true);
    EXPECT_EQ(survey.codes(qzss), orbconv::ObsCodeList{});
    EXPECT_EQ(survey.codes(gps), orbconv::ObsCodeList{});
    run(qzss, 4.01, true);
    EXPECT_EQ(survey.codes(sbas), orbconv::ObsCodeList{});
    EXPECT_EQ(survey.codes(gps), orbconv::ObsCodeList{});
}

TEST_P(PlaceholderCodes, NeedASatelliteWithinTheMessagesCount) {
    includeEverySystem();
    options.rinexVersion = 4.0;
    list({satellite(gps, 1), satellite(sbas, 20), satellite(qzss, 3)});
    put(GetParam().id, {1});
    assemble();
    EXPECT_EQ(code(sbas, GetParam().slot), "");
    EXPECT_EQ(code(qzss, GetParam().slot), "");
    put(GetParam().id, {1, 1});
    assemble();
    EXPECT_EQ(code(sbas, GetParam().slot), GetParam().sbasText);
    EXPECT_EQ(code(qzss, GetParam().slot), "");
    put(GetParam().id, {1, 1, 1});
    assemble();
    EXPECT_EQ(code(qzss, GetParam().slot), GetParam().qzssText);
}

INSTANTIATE_TEST_SUITE_P(EveryStep, PlaceholderCodes, testing::ValuesIn(codeRows),
                         testsupport::nameOfMessage);

class MeasurementCodes : public testsupport::AssemblyTest {};

TEST_F(MeasurementCodes, FirstRangeDifferenceOfSbasIsSwitchedOffInEveryRun) {
    includeEverySystem();
    for (const double version : {3.05, 4.0, 4.01}) {
        options.rinexVersion = version;
        list({satellite(sbas, 3)});
        put("1r", {1});
        assemble();
        EXPECT_EQ(survey.codes(sbas), orbconv::ObsCodeList{});
    }
}

TEST_F(MeasurementCodes, FirstRangeDifferenceOfQzssIsAPlaceholderOfVersion4) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        list({satellite(qzss, 3)});
        put("1r", {1});
        assemble();
        EXPECT_EQ(code(qzss, 5), only4.opensFor(version) ? "nan" : "") << version;
    }
}

TEST_F(MeasurementCodes, ThirdRangeDifferenceOfGlonassEntersItsCodeWhateverTheFlagsSay) {
    for (const double version : everyVersion) {
        restart();
        options.rinexVersion = version;
        list({satellite(glonass, 2)});
        put("3r", {5});
        assemble();
        for (std::size_t slot = 0; slot < 60; ++slot) {
            EXPECT_EQ(code(glonass, slot), slot == 15 ? "C2P" : "") << slot;
        }
    }
}

TEST_F(MeasurementCodes, ThirdRangeDifferenceOfGlonassOverwritesWhatStoodThere) {
    survey.codes(glonass)[15] = "old";
    options.includeGlonass = false;
    record(glonass).number = 5;  // another satellite's record: the code is entered all the same
    list({satellite(glonass, 2)});
    put("3r", {5});
    assemble();
    EXPECT_EQ(code(glonass, 15), "C2P");
}

TEST_F(MeasurementCodes, ThirdRangeDifferenceEntersNoCodeForOtherConstellations) {
    for (const Constellation system : {gps, galileo, beidou, navic, glonassCdma}) {
        list({satellite(system, 2)});
        put("3r", {5});
        assemble();
        EXPECT_EQ(survey.codes(system), orbconv::ObsCodeList{});
    }
    EXPECT_EQ(survey.codes(glonass), orbconv::ObsCodeList{});
}

TEST_F(MeasurementCodes, LastBandOfGlonassLosesItsPhaseAndDopplerCodesInVersion4) {
    for (const double version : everyVersion) {
        for (const auto& [id, slot] : {std::pair{"ld", 27U}, std::pair{"lp", 26U}}) {
            restart();
            options.rinexVersion = version;
            survey.codes(glonass).fill("old");
            list({satellite(glonass, 2)});
            put(id, {5});
            assemble();
            for (std::size_t other = 0; other < 60; ++other) {
                const bool emptied = other == slot && only4.opensFor(version);
                EXPECT_EQ(code(glonass, other), emptied ? "" : "old") << id << " slot " << other;
            }
        }
    }
}

// ---- the count ----

TEST_F(MeasurementCodes, CountIsThatOfTheStringsInAllSixtySlots) {
    survey.codes(gps)[0] = "C1C";
    survey.codes(gps)[59] = "S1C";
    survey.codes(glonass).fill("nan");
    survey.codes(beidou)[4] = "L2I";
    survey.codes(sbas)[7] = "nAn";
    survey.codes(sbas)[8] = "nEn";
    survey.codes(sbas)[9] = "---";
    assemble();
    // GPS, GLONASS, Galileo, QZSS, BeiDou, NavIC, SBAS
    EXPECT_EQ(survey.obsCodeCount, (std::array<std::int32_t, 7>{2, 60, 0, 0, 1, 0, 3}));
}

TEST_F(MeasurementCodes, CodesOfGlonassCdmaAreNeverCounted) {
    survey.codes(glonassCdma).fill("C4X");
    assemble();
    EXPECT_EQ(survey.obsCodeCount, (std::array<std::int32_t, 7>{}));
}

TEST_F(MeasurementCodes, CountIsTakenAnewByEveryEpochOfTheWritingPass) {
    survey.codes(galileo)[0] = "C1X";
    assemble();
    EXPECT_EQ(survey.obsCodeCount[2], 1);
    survey.codes(galileo)[0] = {};
    survey.codes(galileo)[5] = "C8X";
    survey.codes(galileo)[6] = "L8X";
    assemble();
    EXPECT_EQ(survey.obsCodeCount[2], 2);
}

TEST_F(MeasurementCodes, CountCoversWhatTheEpochsOwnStepsEntered) {
    list({satellite(glonass, 1), satellite(qzss, 2)});
    put("3r", {4, 4});
    put("cp", {4, 4});
    put("DC", {4, 4});
    assemble();
    EXPECT_EQ(survey.obsCodeCount, (std::array<std::int32_t, 7>{0, 1, 0, 2, 0, 0, 0}));
}

TEST_F(MeasurementCodes, SurveyPassCountsNothing) {
    list({satellite(gps, 1)});
    put("FC", {0x40});
    collect();
    EXPECT_EQ(code(gps, 0), "C1C");
    EXPECT_EQ(survey.obsCodeCount, (std::array<std::int32_t, 7>{}));
}

TEST_F(MeasurementCodes, SurveyPassRunsNoMeasurementStep) {
    includeEverySystem();
    list({satellite(glonass, 1), satellite(qzss, 2)});
    for (const std::string_view id : {"rc", "rx", "3r", "cp", "DX", "DC", "CE"}) {
        put(id, {4, 4});
    }
    collect();
    EXPECT_EQ(survey.codes(glonass), orbconv::ObsCodeList{});
    EXPECT_EQ(survey.codes(qzss), orbconv::ObsCodeList{});
    EXPECT_EQ(record(glonass).obs, SatEpochRecord{}.obs);
    EXPECT_EQ(record(glonass).clockOffset, 0.0);
    EXPECT_EQ(record(glonass).referenceDoppler, 0);
}

}  // namespace
