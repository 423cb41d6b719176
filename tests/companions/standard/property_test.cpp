// Any log, however damaged, gives files that strict readers accept, or an error and no file.
#include <gtest/gtest.h>

#include <random>

#include "companions/standard/support/small_logs.h"
#include "companions/standard/support/standard_run.h"
#include "companions/standard/support/strict_navigation_reader.h"
#include "companions/standard/support/strict_reader.h"
#include "companions/support/navigation_messages.h"
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
    const std::string navigation = run.navigationText();
    if (run.files.size() != 1 || navigation.empty()) {  // what has no epoch gives a navigation file alone
        EXPECT_EQ(testsupport::readStrictly(run.text()).complaints, std::vector<std::string>{});
        EXPECT_EQ(run.files.size(), navigation.empty() ? 1U : 2U);
    }
    if (!navigation.empty()) {
        EXPECT_EQ(testsupport::readNavigationStrictly(navigation).complaints, std::vector<std::string>{});
    }
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

// Files of an hour each, out of several logs that are damaged each on its own.
TEST(StandardProperty, DamagedLogsTogetherGiveSoundFilesOrNone) {
    std::mt19937 random(19991231);
    for (unsigned seed = 1; seed <= 100; ++seed) {
        std::vector<testsupport::NamedLog> logs;
        for (unsigned i = 0; i < 3; ++i) {
            std::string log = RandomLog({.seed = 5 * seed + i, .epochs = 3, .mostOfASystem = 3}).bytes();
            damage(log, random);
            logs.push_back({std::to_string(i) + ".kvs", std::move(log)});
        }
        const char* const version = seed % 2 == 0 ? "3.05" : "4.01";
        const StandardRun run = testsupport::runStandardOn(logs, {"-q", "--split", "1h", "--rinex", version});
        EXPECT_EQ(run.exitStatus == 1, run.files.empty());
        EXPECT_EQ(run.errors.find("second reading"), std::string::npos) << run.errors;
        for (const auto& [name, text] : run.files) {
            EXPECT_EQ(name.ends_with("_MO.rnx") ? testsupport::readStrictly(text).complaints
                                                : testsupport::readNavigationStrictly(text).complaints,
                      std::vector<std::string>{})
                << name;
        }
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

// Three epochs of 2025-01-05, behind a navigation message of each kind each.
std::string navigationLog() {
    samplelog::LogBuilder log;
    log.rd(2025, 1, 5).time(7199000);
    for (std::uint8_t i = 0; i < 3; ++i) {
        testsupport::addEveryKind(log, i + 1);
        testsupport::addEpoch(log, 7200000U + i * 1000U);
    }
    return log.take();
}

using RecordCounts = std::map<std::string, std::size_t>;

// Messages that differ in their form alone give one record; GLONASS has the satellites 1 to 4.
TEST(StandardProperty, UndamagedNavigationIsAllThere) {
    const auto readOf = [](const char* version) {
        const StandardRun run = runStandard(navigationLog(), {"--rinex", version});
        EXPECT_EQ(run.exitStatus, 0) << run.errors;
        return testsupport::readNavigationStrictly(run.navigationText());
    };
    const auto old = readOf("3.05");
    EXPECT_EQ(old.complaints, std::vector<std::string>{});
    EXPECT_EQ(
        old.records,
        (RecordCounts{
            {"EPH G LNAV", 3}, {"EPH R FDMA", 4}, {"EPH E INAV", 6}, {"EPH C D1", 6}, {"EPH I LNAV", 3}}));
    const auto newer = readOf("4.01");
    EXPECT_EQ(newer.complaints, std::vector<std::string>{});
    EXPECT_EQ(newer.records, (RecordCounts{{"EPH G LNAV", 3},
                                           {"EPH G CNAV", 3},
                                           {"EPH G CNV2", 3},
                                           {"EPH R FDMA", 4},
                                           {"EPH E INAV", 3},
                                           {"EPH E FNAV", 3},
                                           {"EPH C D1", 3},
                                           {"EPH C D2", 3},
                                           {"EPH C CNV1", 3},
                                           {"EPH C CNV2", 3},
                                           {"EPH C CNV3", 3},
                                           {"EPH I LNAV", 3},
                                           // Offsets of GLONASS and Galileo to GPS time are the same in all.
                                           {"STO G LNAV", 3},
                                           {"STO R FDMA", 4},
                                           {"STO E IFNV", 4},
                                           {"STO C D1D2", 3},
                                           {"STO I LNAV", 3},
                                           {"ION G LNAV", 3},
                                           {"ION E IFNV", 1},
                                           {"ION C D1D2", 3},
                                           {"ION I LNAV", 3}}));
}

TEST(StandardProperty, DamagedNavigationGivesASoundFileOrNone) {
    std::mt19937 random(20250105);
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::string log = navigationLog();
        damage(log, random);
        expectSoundOrNone(log, seed % 2 == 0 ? "3.05" : "4.01");
        if (HasFailure()) {
            FAIL() << "seed " << seed;
        }
    }
}

// Numbers of the messages' bodies, of any width and place, give way to others, often to the largest, the
// least and to what is no number.
void changeNumbers(std::string& log, std::mt19937& random) {
    const auto messages = testsupport::itemsOf(log).messages;
    for (const testsupport::FoundMessage& message : messages) {
        if (message.body.size() < 16 || random() % 2 == 0) {
            continue;
        }
        for (std::size_t times = 1 + random() % 3; times > 0; --times) {
            const std::size_t width = std::size_t{1} << (random() % 4);
            const std::size_t place = message.offset + 5 + random() % (message.body.size() - width);
            const std::size_t choice = random() % 4;
            const char low = std::string{'\0', '\xFF', '\0', '\x7F'}[choice];
            for (std::size_t i = 0; i < width; ++i) {
                log[place + i] = choice == 2 ? static_cast<char>(random()) : low;
            }
        }
    }
}

TEST(StandardProperty, NavigationOfAnyNumbersGivesASoundFile) {
    std::mt19937 random(5);
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::string log = navigationLog();
        changeNumbers(log, random);
        expectSoundOrNone(log, seed % 2 == 0 ? "3.05" : "4.01");
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
