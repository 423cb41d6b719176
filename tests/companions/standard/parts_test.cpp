// Pieces of orbconv-standard that a whole run shows only in part.
#include <gtest/gtest.h>

#include <sstream>

#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "standard/conversion.h"
#include "standard/epoch_lines.h"
#include "standard/epoch_sequence.h"
#include "standard/header_fields.h"
#include "standard/output_file.h"
#include "standard/progress.h"
#include "standard/summary.h"

namespace {

using namespace orbconv::standard;  // NOLINT(google-build-using-namespace)
using testsupport::OwnFolder;
using Lines = std::vector<std::string>;

TEST(StandardProgress, BarShowsTheShare) {
    EXPECT_EQ(progressBar(0.0), "[                    ] 0 %");
    EXPECT_EQ(progressBar(0.5), "[##########          ] 50 %");
    EXPECT_EQ(progressBar(1.0), "[####################] 100 %");
    EXPECT_EQ(progressBar(7.0), "[####################] 100 %");
}

TEST(StandardProgress, BarIsTakenAwayAtTheEnd) {
    std::ostringstream out;
    {
        ProgressBar bar(&out, 10.0, std::chrono::seconds{0});
        bar.show(5.0);
        bar.show(5.0);  // nothing new
    }
    EXPECT_EQ(out.str(), "\r[##########          ] 50 %\r" + std::string(27, ' ') + "\r");
}

TEST(StandardProgress, NothingIsShownEarlyOrWithoutAStream) {
    std::ostringstream out;
    {
        ProgressBar bar(&out, 10.0, std::chrono::hours{1});
        bar.show(5.0);
        ProgressBar none(nullptr, 10.0, std::chrono::seconds{0});
        none.show(5.0);
    }
    EXPECT_EQ(out.str(), "");
}

TEST(StandardOutputFile, FileIsThereWholeOrNotAtAll) {
    const OwnFolder folder;
    {
        OutputFile given(folder.path() / "a.rnx");
        given.stream().writer().text("half");
        EXPECT_EQ(folder.names(), Lines{"a.rnx.part"});
    }
    EXPECT_EQ(folder.names(), Lines{});
    OutputFile file(folder.path() / "a.rnx");
    file.stream().writer().text("whole");
    file.stream().check();
    file.finish();
    EXPECT_EQ(folder.names(), Lines{"a.rnx"});
    EXPECT_EQ(testsupport::textOfFile(folder.path() / "a.rnx"), "whole");
    EXPECT_EQ(file.path(), folder.path() / "a.rnx");
}

TEST(StandardOutputFile, NameThatAFolderHasIsAFailureAndLeavesNothing) {
    const OwnFolder folder;
    std::filesystem::create_directories(folder.path() / "a.rnx" / "b");
    {
        OutputFile file(folder.path() / "a.rnx");
        EXPECT_THROW(file.finish(), std::runtime_error);
    }
    EXPECT_EQ(folder.names(), Lines{"a.rnx"});
}

TEST(StandardOutputFile, FolderIsRefusedEvenWhereFilesAreOverwritten) {
    const OwnFolder folder;
    std::filesystem::create_directory(folder.path() / "a.rnx");
    testsupport::writeBytes(folder.path() / "b.rnx", "old");
    EXPECT_THROW(orbconv::standard::refuseExisting(folder.path() / "a.rnx", true), std::runtime_error);
    EXPECT_THROW(orbconv::standard::refuseExisting(folder.path() / "b.rnx", false), std::runtime_error);
    EXPECT_NO_THROW(orbconv::standard::refuseExisting(folder.path() / "b.rnx", true));
}

TEST(StandardSteps, MostFrequentIsTheShortestOfSeveral) {
    StepCounts steps;
    EXPECT_FALSE(steps.mostFrequent());
    EXPECT_EQ(steps.gaps(), 0U);
    for (const std::int64_t step : {5000, 3000, 5000, 3000, 1000}) {
        steps.add(step);
    }
    EXPECT_EQ(steps.mostFrequent(), 3000);
}

TEST(StandardSteps, StepsWithoutRoomInTheHeaderAreNone) {
    StepCounts steps;
    steps.add(1'000'000'000);
    EXPECT_FALSE(steps.mostFrequent());
    steps.add(999'999'999);
    EXPECT_EQ(steps.mostFrequent(), 999'999'999);
}

TEST(StandardSteps, VeryManyKindsDoNotGrow) {
    StepCounts steps;
    for (std::int64_t step = 1; step <= 10'000; ++step) {
        steps.add(step);
    }
    steps.add(20'000);
    steps.add(20'000);
    EXPECT_EQ(steps.mostFrequent(), 1);
    steps.add(7);
    EXPECT_EQ(steps.mostFrequent(), 7);
}

TEST(StandardHeaderFields, ListsGoOnInFurtherLines) {
    EXPECT_EQ(listLines({}, 2, "first", "more"), Lines{"first"});
    EXPECT_EQ(listLines({"a", "b"}, 2, "first", "more"), Lines{"firstab"});
    EXPECT_EQ(listLines({"a", "b", "c"}, 2, "first", "more"), (Lines{"firstab", "morec"}));
}

TEST(StandardHeaderFields, FieldsFillTheirWidth) {
    EXPECT_EQ(leftField("ab", 4), "ab  ");
    EXPECT_EQ(integerField(-7, 4), "  -7");
    EXPECT_EQ(twoDigits(7), "07");
    EXPECT_EQ(twoDigits(17), "17");
    EXPECT_EQ(fixedField(-1.5, 3, 8), "  -1.500");
}

TEST(StandardEpochLines, ClockOffsetHasRoomBelowNineSeconds) {
    EXPECT_TRUE(isPrintable(-8.999));
    EXPECT_FALSE(isPrintable(-9.0));
    EXPECT_FALSE(isPrintable(9.0));
}

TEST(StandardConversion, LogThatCannotBeReadIsAFailure) {
    const OwnFolder folder;
    Options options;
    options.logNames = {folder.path().string()};  // a folder can be opened, but not read
    ProgressBar progress(nullptr, 1.0);
    EXPECT_THROW(surveyOf(options, progress), std::runtime_error);
}

TEST(StandardConversion, SecondReadingMustFindWhatTheFirstFound) {
    const OwnFolder folder;
    Options options;
    const std::string log = folder.file("site.kvs");
    options.logNames = {log};
    ProgressBar progress(nullptr, 1.0);
    testsupport::writeBytes(log, testsupport::logOfTimes({0, 1000, 2000}));
    const Survey survey = surveyOf(options, progress);
    const Conversion conversion = conversionOf(options, survey, {});
    // Cut off, and then without the epoch that its stretch begins with.
    for (const std::string& other : {testsupport::logOfTimes({0}), std::string(200, ' ')}) {
        testsupport::writeBytes(log, other);
        OutputFile file(folder.path() / "a.rnx");
        EpochSequence epochs(survey, options.selection);
        epochs.next();
        EXPECT_THROW(writeObservations(file.stream(), conversion, 0, epochs, progress), std::runtime_error);
    }
}

TEST(StandardConversion, LogThatIsGoneIsAFailure) {
    Survey survey;
    survey.logs.push_back({.name = "/no/such/log", .site = {}});
    survey.stretches.resize(1);
    const Selection selection;
    EpochSequence epochs(survey, selection);
    EXPECT_THROW(epochs.next(), std::runtime_error);
}

TEST(StandardSummary, EachReasonHasALineAndSomeAreLosses) {
    LossCounts lost;
    EXPECT_EQ(lossLines(lost), Lines{});
    EXPECT_FALSE(hasLoss(lost));
    lost.satellites[static_cast<std::size_t>(LeftOut::sbas)] = 3;
    lost.openEpochs = 1;
    EXPECT_EQ(lossLines(lost), (Lines{"epochs that the log does not close: 1", "satellites of SBAS: 3"}));
    EXPECT_FALSE(hasLoss(lost));
    lost.damagedBytes = 1;
    EXPECT_TRUE(hasLoss(lost));
}

TEST(StandardSummary, LinesStandInTheirOrder) {
    LossCounts lost{.damagedStretches = 2,
                    .damagedBytes = 1,
                    .epochsWithoutDate = 3,
                    .epochsOfOtherScale = 4,
                    .epochsNotAskedFor = 8,
                    .epochsWithoutSatellites = 7,
                    .repeatedEpochs = 6,
                    .disorderedEpochs = 5,
                    .unprintableClockOffsets = 10,
                    .openEpochs = 1};
    for (std::size_t reason = 0; reason < leftOutCount; ++reason) {
        lost.satellites[reason] = 11 + reason;
    }
    EXPECT_EQ(
        lossLines(lost),
        (Lines{"bytes of damage: 1", "places of damage: 2",
               "epochs without date (--date gives that of the first): 3",
               "epochs in another time scale than the first: 4", "epochs in too much disorder of time: 5",
               "epochs of a time that came already: 6", "epochs without a satellite to write: 7",
               "epochs outside the window or the interval: 8", "epochs that the log does not close: 1",
               "clock offsets beyond 9 s: 10", "satellites of GLONASS without slot: 11",
               "satellites of GLONASS on an impossible channel: 12",
               "satellites without a number of two digits: 13",
               "satellites that stand in their epoch already: 14", "satellites of QZSS: 15",
               "satellites of SBAS: 16", "satellites of GLONASS CDMA: 17",
               "satellites of an unknown system: 18"}));
}

TEST(StandardSummary, LossesAreDamageAndEpochsThatFitNowhere) {
    EXPECT_TRUE(hasLoss({.damagedStretches = 1}));
    EXPECT_TRUE(hasLoss({.damagedBytes = 1}));
    EXPECT_TRUE(hasLoss({.epochsWithoutDate = 1}));
    EXPECT_TRUE(hasLoss({.epochsOfOtherScale = 1}));
    EXPECT_TRUE(hasLoss({.disorderedEpochs = 1}));
    LossCounts others{.epochsNotAskedFor = 1,
                      .epochsWithoutSatellites = 1,
                      .repeatedEpochs = 1,
                      .unprintableClockOffsets = 1,
                      .openEpochs = 1};
    others.satellites.fill(1);
    EXPECT_FALSE(hasLoss(others));
}

}  // namespace
