// A log in which bytes of the framing are wrong, or whose end is missing: what the log gave ahead of the
// damage is in the files all the same, and the files have their form to the last line.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include "support/all_files.h"
#include "support/effort.h"
#include "support/random_log.h"

namespace {

using testsupport::allFiles;
using testsupport::Files;
using testsupport::partsBehindArrows;
using testsupport::PlacedMessage;
using testsupport::RandomLog;
using testsupport::splitLines;
using Lines = std::vector<std::string>;

const RandomLog& goodLog() {
    static const RandomLog log({.seed = 31, .epochs = 3, .mostOfASystem = 4});
    return log;
}

const orbconv::RunOptions& version401() {
    static const orbconv::RunOptions options = [] {
        orbconv::RunOptions made;
        made.rinexVersion = 4.01;
        return made;
    }();
    return options;
}

// Epochs of the good log's file that are written once the first `size` bytes have been read: the first comes
// with the second ~~, each other with its own TD. Two bytes of the message are enough.
std::size_t epochsIn(std::size_t size) {
    std::size_t times = 0;
    std::size_t epochs = 0;
    for (const PlacedMessage& message : goodLog().messages()) {
        if (message.begin + 2 > size) {
            break;
        }
        times += message.id == "~~" ? 1U : 0U;
        const bool first = epochs == 0;
        epochs += times >= 2 && message.id == (first ? "~~" : "TD") ? 1U : 0U;
    }
    return epochs;
}

// Where the last message ends that lies wholly in the first `size` bytes.
std::size_t wholeMessagesIn(std::size_t size) {
    std::size_t end = 0;
    for (const PlacedMessage& message : goodLog().messages()) {
        end = message.end <= size ? message.end : end;
    }
    return end;
}

// ---- the form ----

constexpr std::string_view letters = "GRECI";

// An epoch line, then satellite lines in the order of the systems, at most 30 of each.
void expectFormOfEpoch(const std::string& epoch) {
    const Lines lines = splitLines(epoch);
    std::array<int, letters.size()> count{};
    std::size_t latest = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::size_t system = letters.find(lines[i].empty() ? '?' : lines[i][0]);
        ASSERT_NE(system, std::string_view::npos) << lines[i];
        ASSERT_GE(system, latest) << lines[i];
        ASSERT_LE(++count[system], 30) << lines[i];
        latest = system;
    }
}

// Only what numbers, codes and their separators are made of.
void expectPlainText(std::string_view text) {
    ASSERT_TRUE(text.empty() || text.back() == '\n');
    const auto odd = std::ranges::find_if(text, [](char c) { return c != '\n' && (c < ' ' || c > '~'); });
    ASSERT_EQ(odd, text.end());
}

void expectForm(const Files& files) {
    for (const auto& [letter, text] : files) {
        ASSERT_NO_FATAL_FAILURE(expectPlainText(text)) << letter;
    }
    for (const std::string& epoch : partsBehindArrows(files.at('o'))) {
        ASSERT_NO_FATAL_FAILURE(expectFormOfEpoch(epoch));
    }
    const Lines navigation = splitLines(files.at('p'));
    const auto ends = std::ranges::count_if(
        navigation, [](const std::string& line) { return line.ends_with("END OF HEADER"); });
    ASSERT_EQ(ends, 1);
    for (const std::string& record : partsBehindArrows(files.at('p'))) {
        const std::string kind = record.substr(0, 6);
        ASSERT_TRUE(kind == "> EPH " || kind == "> STO " || kind == "> ION ") << record;
        ASSERT_GE(splitLines(record).size(), 2U) << record;
    }
}

// ---- what came ahead of the damage ----

// Less the lines of GLONASS: a slot that the survey of a later epoch left in a free record has a line too.
Lines linesOfEpoch(const std::string& epoch) {
    Lines lines = splitLines(epoch);
    std::erase_if(lines, [](const std::string& line) { return line.starts_with('R'); });
    return lines;
}

void expectEpochsAhead(const std::string& file, std::size_t damage) {
    static const std::vector<std::string> good =
        partsBehindArrows(allFiles(goodLog().bytes(), version401()).at('o'));
    const std::vector<std::string> found = partsBehindArrows(file);
    const std::size_t ahead = epochsIn(damage);
    ASSERT_GE(found.size(), ahead);
    for (std::size_t i = 0; i < ahead; ++i) {
        ASSERT_EQ(linesOfEpoch(found[i]), linesOfEpoch(good[i])) << "epoch " << i;
    }
}

// Those that no later message can change: all but GLONASS, where a repeat strikes another entry dead.
std::multiset<std::string> ephemerides(const std::string& file) {
    std::multiset<std::string> records;
    for (const std::string& record : partsBehindArrows(file)) {
        if (record.starts_with("> EPH ") && record[6] != 'R') {
            records.insert(record);
        }
    }
    return records;
}

// Many damages have the same whole messages ahead of them: what these give is kept.
void expectEphemeridesAhead(const std::string& file, std::size_t damage) {
    const std::size_t whole = wholeMessagesIn(damage);
    static std::size_t length = 0;
    static std::multiset<std::string> ahead;
    if (whole != length) {
        ahead =
            ephemerides(allFiles(std::string_view(goodLog().bytes()).substr(0, whole), version401()).at('p'));
        length = whole;
    }
    const std::multiset<std::string> found = ephemerides(file);
    ASSERT_TRUE(std::ranges::includes(found, ahead)) << found.size() << " for " << ahead.size();
}

void expectNothingLost(const std::string& log, std::size_t damage) {
    Files files;
    ASSERT_NO_THROW(files = allFiles(log, version401()));
    ASSERT_NO_FATAL_FAILURE(expectForm(files));
    ASSERT_NO_FATAL_FAILURE(expectEpochsAhead(files.at('o'), damage));
    ASSERT_NO_FATAL_FAILURE(expectEphemeridesAhead(files.at('p'), damage));
}

// ---- the properties ----

TEST(DamagedFraming, GoodLogHasAllItsEpochsAndEphemerides) {
    const Files files = allFiles(goodLog().bytes(), version401());
    EXPECT_NO_FATAL_FAILURE(expectForm(files));
    EXPECT_EQ(partsBehindArrows(files.at('o')).size(), 3U);
    EXPECT_EQ(epochsIn(goodLog().bytes().size()), 3U);
    EXPECT_EQ(ephemerides(files.at('p')).size(), 4U * 3U);
}

// Messages by their number, in quarters so that they can run side by side.
class DamagedFraming : public testing::TestWithParam<std::size_t> {};

TEST_P(DamagedFraming, LosesNothingThatCameAhead) {
    const auto& messages = goodLog().messages();
    constexpr std::array special = {'\0', ' ', '-', '+', '0', 'F', 'x', '>', '~', '\n', '\xFF'};
    const std::size_t step = testsupport::effort(std::size_t{4}, std::size_t{28});
    for (std::size_t i = GetParam(); i < messages.size(); i += step) {
        // The id, the length and the line end.
        for (const std::size_t place : {messages[i].begin, messages[i].begin + 1, messages[i].begin + 2,
                                        messages[i].begin + 3, messages[i].begin + 4, messages[i].end - 1}) {
            std::set<char> values(special.begin(), special.end());
            const char good = goodLog().bytes()[place];
            for (unsigned bit = 0; bit < 8; ++bit) {
                values.insert(static_cast<char>(static_cast<unsigned char>(good) ^ (1U << bit)));
            }
            std::string damaged = goodLog().bytes();
            for (const char value : values) {
                damaged[place] = value;
                ASSERT_NO_FATAL_FAILURE(expectNothingLost(damaged, place))
                    << messages[i].id << " at " << place << " is " << static_cast<int>(value);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Quarters, DamagedFraming, testing::Range(std::size_t{0}, std::size_t{4}));

// A message of any id that announces any length stands in the middle of the log.
TEST(DamagedFraming, AnnouncedLengthsLoseNothingThatCameAhead) {
    const auto& messages = goodLog().messages();
    std::set<std::string> seen;
    for (const PlacedMessage& message : messages) {
        if (message.begin < goodLog().bytes().size() / 3 || !seen.insert(message.id).second) {
            continue;
        }
        std::string damaged = goodLog().bytes();
        const unsigned step = testsupport::effort(97U, 997U);
        for (unsigned length = 0; length < 0x1000; length += step) {
            const std::string digits = samplelog::LogBuilder().messageWithLength("zz", length, "").take();
            damaged.replace(message.begin + 2, 3, digits, 2, 3);
            ASSERT_NO_FATAL_FAILURE(expectNothingLost(damaged, message.begin)) << message.id << ' ' << length;
        }
    }
    EXPECT_GT(seen.size(), 40U);
}

// Every length up to and with the second epoch.
TEST(CutNavigation, HasTheEphemeridesOfItsWholeMessagesAndAtMostOneMore) {
    const std::string_view log = goodLog().bytes();
    const std::size_t step = testsupport::effort(std::size_t{1}, std::size_t{23});
    for (std::size_t length = 0; length <= log.size() * 2 / 3; length += step) {
        const Files files = allFiles(log.substr(0, length), version401());
        ASSERT_NO_FATAL_FAILURE(expectForm(files)) << length;
        ASSERT_NO_FATAL_FAILURE(expectEphemeridesAhead(files.at('p'), length)) << length;
        const auto whole = std::ranges::count_if(goodLog().messages(), [&](const PlacedMessage& message) {
            const bool ephemeris =
                message.id == "GE" || message.id == "EN" || message.id == "CN" || message.id == "IE";
            return ephemeris && message.end <= length;
        });
        ASSERT_LE(ephemerides(files.at('p')).size(), static_cast<std::size_t>(whole) + 1) << length;
    }
}

}  // namespace
