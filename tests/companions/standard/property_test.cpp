// Any log, however damaged, gives a file that a strict reader accepts, or an error and no file.
#include <gtest/gtest.h>

#include <random>

#include "companions/standard/support/standard_run.h"
#include "companions/standard/support/strict_reader.h"
#include "support/random_log.h"

namespace {

using testsupport::RandomLog;
using testsupport::runStandard;
using testsupport::StandardRun;

void expectSoundOrNone(const std::string& log, const char* version) {
    const StandardRun run = runStandard(log, {"--rinex", version, "-q"});
    if (run.exitStatus == 1) {
        EXPECT_TRUE(run.files.empty());
        EXPECT_FALSE(run.errors.empty());
        EXPECT_EQ(run.errors.find("second reading"), std::string::npos) << run.errors;
        return;
    }
    EXPECT_TRUE(run.exitStatus == 0 || run.exitStatus == 2);
    EXPECT_EQ(testsupport::readStrictly(run.text()).complaints, std::vector<std::string>{});
}

// One to four damages of a few bytes each, or of a few hundred.
void damage(std::string& log, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % std::max<std::size_t>(limit, 1); };
    for (std::size_t times = 1 + below(4); times > 0; --times) {
        const std::size_t place = below(log.size());
        const std::size_t count = below(2) == 0 ? below(8) : below(400);
        switch (below(5)) {
            case 0: log.erase(place, count); break;
            case 1: log.insert(place, log.substr(below(log.size()), count)); break;
            case 2: log.resize(place); break;
            case 3: log.insert(place, std::string(count, static_cast<char>(random()))); break;
            default: log[place] = static_cast<char>(log[place] ^ (1 << below(8))); break;
        }
        if (log.empty()) {
            return;
        }
    }
}

TEST(StandardProperty, DamagedLogGivesASoundFileOrNone) {
    std::mt19937 random(20241105);
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::string log = RandomLog({.seed = seed, .epochs = 3, .mostOfASystem = 4}).bytes();
        damage(log, random);
        expectSoundOrNone(log, seed % 2 == 0 ? "3.05" : "4.01");
        if (HasFailure()) {
            FAIL() << "seed " << seed;
        }
    }
}

TEST(StandardProperty, DamagedPartsOfSeveralLogsGiveASoundFileOrNone) {
    std::mt19937 random(19700101);
    for (unsigned seed = 1; seed <= 100; ++seed) {
        std::string log;
        for (unsigned part = 0; part < 4; ++part) {
            log += RandomLog({.seed = 4 * seed + part, .epochs = 3, .mostOfASystem = 3}).bytes();
            damage(log, random);
        }
        expectSoundOrNone(log, "3.05");
        if (HasFailure()) {
            FAIL() << "seed " << seed;
        }
    }
}

TEST(StandardProperty, FlippedBitsOfTheDateGiveASoundFile) {
    std::mt19937 random(7);
    for (unsigned seed = 1; seed <= 100; ++seed) {
        const RandomLog good({.seed = seed, .epochs = 6, .mostOfASystem = 1});
        std::string log = good.bytes();
        for (const testsupport::PlacedMessage& message : good.messages()) {
            if ((message.id == "RD" || message.id == "~~") && random() % 3 == 0) {
                char& byte = log[message.begin + 5 + random() % 4];
                byte = static_cast<char>(byte ^ (1 << random() % 8));
            }
        }
        expectSoundOrNone(log, "3.05");
        if (HasFailure()) {
            FAIL() << "seed " << seed;
        }
    }
}

TEST(StandardProperty, UndamagedLogLosesNothing) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const RandomLog log({.seed = seed, .epochs = 5, .mostOfASystem = 12});
        const StandardRun run = runStandard(log.bytes());
        EXPECT_EQ(run.exitStatus, 0) << run.errors;
        EXPECT_EQ(testsupport::readStrictly(run.text()).epochs.size(), 5U);
    }
}

}  // namespace
