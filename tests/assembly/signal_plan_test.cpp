// Which observables the flag steps enter for which constellation, band and version, and the names that the
// measurement steps give to what they store.
#include "assembly/signal_plan.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <vector>

#include "support/assembly_bench.h"

namespace {

using testsupport::Cell;
using testsupport::Constellation;
using testsupport::everyVersion;
using testsupport::Gate;
using testsupport::satellite;
using enum testsupport::Constellation;

using Codes = std::array<std::string_view, 4>;

// ---- codes of the flag steps ----

struct FlagRow : Cell {
    Gate gate;
    Codes codes;  // code, phase, Doppler, strength; empty for a step that enters none
};

// A satellite number that is in no BeiDou class.
constexpr int plainNumber = 120;

constexpr Codes none = {};
constexpr Codes nan4 = {"nan", "nan", "nan", "nan"};

// clang-format off
constexpr auto flagRows = std::to_array<FlagRow>({
    {{"FC", gps},         testsupport::always,    {"C1C", "L1C", "D1C", "S1C"}},
    {{"F1", gps},         testsupport::always,    {"C1W", "L1W", "D1W", "S1W"}},
    {{"F2", gps},         testsupport::always,    {"C2W", "L2W", "D2W", "S2W"}},
    {{"F3", gps},         testsupport::always,    {"C2X", "L2X", "D2X", "S2X"}},
    {{"F5", gps},         testsupport::always,    {"C5X", "L5X", "D5X", "S5X"}},
    {{"Fl", gps},         testsupport::always,    {"C1X", "L1X", "D1X", "S1X"}},
    {{"FC", glonass},     testsupport::always,    {"C1C", "L1C", "D1C", "S1C"}},
    {{"F1", glonass},     testsupport::from305,   {"C1P", "L1P", "D1P", "S1P"}},
    {{"F2", glonass},     testsupport::from305,   {"C2C", "L2C", "D2C", "S2C"}},
    {{"F3", glonass},     testsupport::from305,   {"C2P", "L2P", "D2P", "S2P"}},
    {{"F5", glonass},     testsupport::from305,   {"C3X", "L3X", "D3X", "S3X"}},
    {{"Fl", glonass},     testsupport::only8,     none},
    {{"FC", galileo},     testsupport::from305,   {"C1X", "L1X", "D1X", "S1X"}},
    {{"F1", galileo},     testsupport::from305,   {"C8X", "L8X", "D8X", "S8X"}},
    {{"F2", galileo},     testsupport::from305,   {"C7X", "L7X", "D7X", "S7X"}},
    {{"F3", galileo},     testsupport::from305,   {"C6X", "L6X", "D6X", "S6X"}},
    {{"F5", galileo},     testsupport::from305,   {"C5X", "L5X", "D5X", "S5X"}},
    {{"Fl", galileo},     testsupport::only136,   none},
    {{"FC", beidou},      testsupport::always,    {"C2I", "L2I", "D2I", "S2I"}},
    {{"F1", beidou},      testsupport::always,    {"C8X", "L8X", "D8X", "S8X"}},
    {{"F2", beidou},      testsupport::always,    {"C7I", "L7I", "D7I", "S7I"}},
    {{"F3", beidou},      testsupport::always,    {"C6I", "L6I", "D6I", "S6I"}},
    {{"F5", beidou},      testsupport::always,    {"C5X", "L5X", "D5X", "S5X"}},
    {{"Fl", beidou},      testsupport::always,    {"C1X", "L1X", "D1X", "S1X"}},
    {{"FC", navic},       testsupport::only3And4, {"C9A", "L9A", "D9A", "S9A"}},
    {{"F1", navic},       testsupport::only136,   nan4},
    {{"F2", navic},       testsupport::only136,   nan4},
    {{"F3", navic},       testsupport::only136,   nan4},
    {{"F5", navic},       testsupport::always,    {"C5A", "L5A", "D5A", "S5A"}},
    {{"Fl", navic},       testsupport::from401,   {"C1X", "L1X", "D1X", "S1X"}},
    {{"FC", glonassCdma}, testsupport::always,    {"C4X", "L4X", "D4X", "S4X"}},
    {{"F1", glonassCdma}, testsupport::shut,      none},
    {{"F2", glonassCdma}, testsupport::shut,      none},
    {{"F3", glonassCdma}, testsupport::always,    {"C6X", "L6X", "D6X", "S6X"}},
    {{"F5", glonassCdma}, testsupport::always,    {"C3X", "L3X", "D3X", "S3X"}},
    {{"Fl", glonassCdma}, testsupport::shut,      none},
    {{"FC", sbas}, testsupport::shut, none}, {{"F1", sbas}, testsupport::shut, none},
    {{"F2", sbas}, testsupport::shut, none}, {{"F3", sbas}, testsupport::shut, none},
    {{"F5", sbas}, testsupport::shut, none}, {{"Fl", sbas}, testsupport::shut, none},
    {{"FC", qzss}, testsupport::shut, none}, {{"F1", qzss}, testsupport::shut, none},
    {{"F2", qzss}, testsupport::shut, none}, {{"F3", qzss}, testsupport::shut, none},
    {{"F5", qzss}, testsupport::shut, none}, {{"Fl", qzss}, testsupport::shut, none},
});
// clang-format on

class FlagCodes : public testsupport::AssemblyTable<FlagRow> {
protected:
    // One satellite whose flag word in the row's message is `word`, all other flag words 0.
    void stageFlag(double version, int word) {
        restart();
        includeEverySystem();
        options.rinexVersion = version;
        list({satellite(GetParam().system, plainNumber)});
        put(GetParam().id, {word});
    }
    void expectCodes(Constellation system, const Codes& codes) {
        const std::size_t first = 5 * testsupport::bandOf(GetParam().id);
        for (std::size_t slot = 0; slot < 60; ++slot) {
            const bool inGroup = slot >= first && slot < first + 4;
            const bool fifthOfBeidou5 = system == beidou && slot == 24 && GetParam().id == "F5";
            EXPECT_EQ(code(system, slot), inGroup          ? codes[slot - first]
                                          : fifthOfBeidou5 ? "L5x"
                                                           : "")
                << "slot " << slot << ", version " << options.rinexVersion;
        }
    }
};

TEST_P(FlagCodes, AreEnteredForTheVersionsOfTheSignal) {
    for (const double version : everyVersion) {
        stageFlag(version, 0x40);
        collect();
        if (GetParam().gate.opensFor(version)) {
            expectCodes(GetParam().system, GetParam().codes);
        } else {
            for (std::size_t slot = 0; slot < 60; ++slot) {
                EXPECT_EQ(code(GetParam().system, slot), "") << "slot " << slot << ", version " << version;
            }
        }
    }
}

TEST(ObsCodes, PutTheKindAheadOfTheSignal) {
    EXPECT_EQ(orbconv::obsCodesOf(gps, "2W"), (orbconv::ObsCodes{"C2W", "L2W", "D2W", "S2W"}));
    EXPECT_EQ(orbconv::obsCodesOf(galileo, orbconv::noSignal), orbconv::ObsCodes{});
    EXPECT_EQ(orbconv::obsCodesOf(navic, orbconv::noSignal), (orbconv::ObsCodes{"nan", "nan", "nan", "nan"}));
}

TEST_P(FlagCodes, ReachNoOtherConstellation) {
    for (const double version : everyVersion) {
        stageFlag(version, 0x40);
        collect();
        for (const Constellation other : testsupport::everyConstellation) {
            if (other != GetParam().system) {
                EXPECT_EQ(survey.codes(other), orbconv::ObsCodeList{});
            }
        }
    }
}

TEST_P(FlagCodes, ComeWithThePresenceBit) {
    for (const double version : everyVersion) {
        stageFlag(version, 0x40);
        collect();
        const auto& flags = record(GetParam().system).signalFlags;
        for (std::size_t band = 0; band < flags.size(); ++band) {
            const bool set = band == testsupport::bandOf(GetParam().id) && GetParam().gate.opensFor(version);
            EXPECT_EQ(flags[band], set ? 0x40U : 0U) << "band " << band << ", version " << version;
        }
    }
}

TEST_P(FlagCodes, NeedBitSix) {
    for (const double version : everyVersion) {
        stageFlag(version, 0xFFBF);
        collect();
        EXPECT_EQ(survey.codes(GetParam().system), orbconv::ObsCodeList{}) << version;
        EXPECT_EQ(record(GetParam().system).signalFlags[testsupport::bandOf(GetParam().id)] & 0x40U, 0U);
    }
}

TEST_P(FlagCodes, AreNotEnteredForALeftOutConstellation) {
    for (const double version : everyVersion) {
        stageFlag(version, 0x40);
        include(GetParam().system, false);
        collect();
        EXPECT_EQ(survey.codes(GetParam().system), orbconv::ObsCodeList{}) << version;
        EXPECT_EQ(record(GetParam().system).number, 0) << version;
        EXPECT_EQ(record(GetParam().system).signalFlags, (std::array<std::uint32_t, 11>{})) << version;
    }
}

TEST_P(FlagCodes, AreNotEnteredInTheWritingPass) {
    for (const double version : everyVersion) {
        stageFlag(version, 0x40);
        assemble();
        EXPECT_EQ(survey.codes(GetParam().system), orbconv::ObsCodeList{}) << version;
        const bool set = GetParam().gate.opensFor(version);
        EXPECT_EQ(record(GetParam().system).signalFlags[testsupport::bandOf(GetParam().id)],
                  set ? 0x40U : 0U);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryBand, FlagCodes, testing::ValuesIn(flagRows), testsupport::nameOfCell);

// Signals whose codes look at the first slot alone. BeiDou band 5 writes behind it all the same; GLONASS
// band 5 and GLONASS CDMA band 3 write the same codes at every satellite.
std::vector<FlagRow> guardedRows() {
    std::vector<FlagRow> rows;
    for (const FlagRow& row : flagRows) {
        if ((row.id != "F5" || (row.system != beidou && row.system != glonass)) &&
            (row.id != "F3" || row.system != glonassCdma)) {
            rows.push_back(row);
        }
    }
    return rows;
}

class GuardedFlagCodes : public FlagCodes {};

TEST_P(GuardedFlagCodes, StayIfTheFirstSlotIsTaken) {
    const std::size_t first = 5 * testsupport::bandOf(GetParam().id);
    for (const double version : everyVersion) {
        stageFlag(version, 0x40);
        survey.codes(GetParam().system)[first] = "old";
        collect();
        EXPECT_EQ(code(GetParam().system, first), "old");
        for (std::size_t slot = first + 1; slot < first + 5; ++slot) {
            EXPECT_EQ(code(GetParam().system, slot), "") << "slot " << slot << ", version " << version;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryBand, GuardedFlagCodes, testing::ValuesIn(guardedRows()),
                         testsupport::nameOfCell);

// ---- names in the records ----

constexpr std::string_view kept = "old";

struct NameRow {
    std::string_view id;
    std::size_t slot;
    // GLONASS, Galileo, BeiDou, NavIC, GLONASS CDMA
    std::array<std::string_view, 5> names;
    // 4.01 where nothing else is told: the version that lets NavIC and GLONASS CDMA pass.
    double navicVersion = 4.01;
    double cdmaVersion = 4.01;
};

// clang-format off
constexpr auto nameRows = std::to_array<NameRow>({
    {"DC",  2, {"D1C", "D1X", "D2I", "D9C", kept}},
    {"0d",  2, {"D1C", "D1X", "D8X", "D9C", "D9C"}, 4.01,  135.0},
    {"1d",  7, {"D1P", "D8X", "D7X", "nAn", kept}},
    {"2d", 12, {"D2C", "D7X", "D7X", "nAn", kept},  136.0},
    {"3d", 17, {"D2P", "D6X", "D6I", "nAn", kept},  136.0},
    {"5d", 22, {"D3X", "D5X", "D5X", "D5A", kept}},
    {"ld", 27, {kept,  kept,  kept,  kept,  kept}},
    {"cp",  1, {"L1C", "L1X", "L2I", "L9C", "L9C"}},
    {"1p",  6, {"L1P", "L8X", "L8X", "nan", kept},  136.0},
    {"2p", 11, {"L2C", "L7X", "L7I", "nan", kept}},
    {"3p", 16, {kept,  "L6X", "L6I", "nEn", kept}},
    {"5p", 21, {kept,  "L5X", "L5X", "L5A", "L5A"}},
    {"lp", 26, {"",    kept,  "L1X", kept,  kept}},
    {"CE",  3, {"S1C", "S1X", kept,  "S9C", "GL1"}},
    {"1E",  8, {"S1P", "S8X", "S8X", "nEn", kept},  136.0},
    {"2E", 13, {"S2C", "S7X", "S7X", "nEn", kept},  136.0},
    {"3E", 18, {"S2P", "S6X", "S6I", "nEn", "GL2"}, 136.0},
    {"5E", 23, {"S3X", "S5X", "S5X", "S5A", "GL3"}},
    {"lE", 28, {kept,  kept,  "S1X", "S9X", kept}},
    {"rc",  0, {kept,  kept,  kept,  kept,  kept}},
    {"rx",  0, {kept,  kept,  kept,  kept,  kept}},
    {"1r",  5, {kept,  kept,  kept,  kept,  kept},  135.0, 135.0},
    {"2r", 10, {kept,  kept,  kept,  kept,  kept},  4.01,  135.0},
    {"3r", 15, {kept,  kept,  kept,  kept,  kept},  135.0, 135.0},
    {"5r", 20, {kept,  kept,  kept,  kept,  kept}},
    {"lr", 25, {kept,  kept,  kept,  kept,  kept}},
});
// clang-format on

class RecordNames : public testsupport::AssemblyTable<NameRow> {
protected:
    void expectName(Constellation system, double version, std::string_view name) {
        restart();
        includeEverySystem();
        options.rinexVersion = version;
        record(system).signalName.fill("old");
        list({satellite(system, 5)});
        put(GetParam().id, {33});
        assemble();
        for (std::size_t slot = 0; slot < 30; ++slot) {
            EXPECT_EQ(record(system).signalName[slot].view(), slot == GetParam().slot ? name : kept)
                << testsupport::constellationNames[testsupport::rowOf(system)] << " slot " << slot;
        }
    }
};

TEST_P(RecordNames, FollowAPlanOfTheirOwn) {
    const auto& names = GetParam().names;
    expectName(glonass, 4.01, names[0]);
    expectName(galileo, 4.01, names[1]);
    expectName(beidou, 4.01, names[2]);
    expectName(navic, GetParam().navicVersion, names[3]);
    expectName(glonassCdma, GetParam().cdmaVersion, names[4]);
}

TEST_P(RecordNames, AreNeverWrittenForGps) {
    for (const double version : everyVersion) {
        expectName(gps, version, kept);
    }
}

TEST_P(RecordNames, StayBehindAClosedGate) {
    // 2d, 3d, 1p, 1E, 2E and 3E of NavIC and 0d of GLONASS CDMA are switched off in every run.
    if (GetParam().navicVersion != 4.01) {
        expectName(navic, 3.05, kept);
        expectName(navic, 4.01, kept);
    }
    if (GetParam().cdmaVersion != 4.01) {
        expectName(glonassCdma, 3.05, kept);
        expectName(glonassCdma, 4.01, kept);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryStep, RecordNames, testing::ValuesIn(nameRows), testsupport::nameOfMessage);

}  // namespace
