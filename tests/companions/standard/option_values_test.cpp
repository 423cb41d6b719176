// The values of options at their limits, what a refusal says, and the widths of the header's texts.
#include "standard/option_values.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "standard/header_texts.h"
#include "standard/log_texts.h"
#include "standard/options.h"
#include "standard/summary.h"

namespace {

using namespace orbconv::standard;  // NOLINT(google-build-using-namespace)
using orbconv::Constellation;
using Lines = std::vector<std::string>;

std::string refusalBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

Options optionsFrom(const Lines& arguments) {
    std::vector<const char*> argv = {"orbconv-standard", "site.kvs"};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    return optionsOf(static_cast<int>(argv.size()), argv.data());
}

TEST(StandardOptionValues, RefusalsSayWhatIsWanted) {
    EXPECT_EQ(refusalBy([] { versionOf("3.04"); }), "'3.04' is not 3.05 or 4.01");
    EXPECT_EQ(refusalBy([] { splitOf("1H"); }), "'1H' is not 1h or 1d");
    EXPECT_EQ(refusalBy([] { fileKindOf("o"); }), "'o' is not obs or nav");
    EXPECT_EQ(refusalBy([] { longNamesOf(""); }), "'' is not yes or no");
    EXPECT_EQ(refusalBy([] { systemsOf("GX"); }), "'GX' is not one or several letters of GRECI");
    EXPECT_EQ(refusalBy([] { timeOf("x"); }), "'x' is not a time such as 2024-05-06T23:00:30");
    EXPECT_EQ(refusalBy([] { dateOf("x"); }), "'x' is not a date such as 2024-05-06");
    EXPECT_EQ(refusalBy([] { intervalMsOf("0"); }),
              "'0' is not a number of seconds from 0.001 to 86400 with at most three decimals");
    EXPECT_EQ(refusalBy([] { stationNameOf("x"); }),
              "'x' is not a name of nine letters and digits such as ALGO00CAN");
    EXPECT_EQ(refusalBy([] { threeNumbersOf("1"); }),
              "'1' is not three numbers of metres with commas between them, each below 99999999");
}

TEST(StandardOptionValues, BothVersionsHaveTheirName) {
    EXPECT_EQ(versionOf("3.05"), RinexVersion::v305);
    EXPECT_EQ(versionOf("4.01"), RinexVersion::v401);
}

TEST(StandardOptionValues, EachSystemHasItsLetter) {
    const std::vector<std::pair<std::string, Constellation>> letters = {{"G", Constellation::gps},
                                                                        {"R", Constellation::glonass},
                                                                        {"E", Constellation::galileo},
                                                                        {"C", Constellation::beidou},
                                                                        {"I", Constellation::navic}};
    for (const auto& [letter, constellation] : letters) {
        orbconv::PerConstellation<bool> expected{};
        expected[orbconv::indexOf(constellation)] = true;
        EXPECT_EQ(systemsOf(letter), expected) << letter;
    }
}

TEST(StandardOptionValues, SystemsThatCannotBeWrittenAreRefused) {
    EXPECT_EQ(writableConstellations, systemsOf("GRECI"));
    for (const char* const letter : {"J", "S", "M", "g"}) {
        EXPECT_THROW(systemsOf(letter), std::runtime_error) << letter;
    }
}

TEST(StandardOptionValues, IntervalIsOfWholeMilliseconds) {
    EXPECT_EQ(intervalMsOf("0.3"), 300);
    EXPECT_EQ(intervalMsOf("86400"), 86'400'000);
    EXPECT_THROW(intervalMsOf("1.0000000015"), std::runtime_error);  // 1.5e-6 ms beside one
}

TEST(StandardOptionValues, LengthsFitFourteenColumns) {
    EXPECT_EQ(threeNumbersOf("99999998.9,-99999998.9,0"), (std::array{99999998.9, -99999998.9, 0.0}));
    EXPECT_THROW(threeNumbersOf("99999999,0,0"), std::runtime_error);
    EXPECT_EQ(optionsFrom({"--position", "-9,8,7"}).texts.position, (std::array{-9.0, 8.0, 7.0}));
}

TEST(StandardOptionValues, StationHasAllLettersAndDigits) {
    EXPECT_EQ(stationNameOf("azAZ09xyz"), "AZAZ09XYZ");
}

TEST(StandardHeaderTexts, TextsOfOptionsFillTheirColumns) {
    const std::vector<std::pair<std::string, std::size_t>> widths = {
        {"--marker-name", 60},   {"--marker-number", 20},    {"--marker-type", 20},
        {"--observer", 20},      {"--agency", 40},           {"--receiver-number", 20},
        {"--receiver-type", 20}, {"--receiver-version", 20}, {"--antenna-number", 20},
        {"--antenna-type", 20},  {"--comment", 60}};
    for (const auto& each : widths) {
        const std::string& option = each.first;
        const std::size_t width = each.second;
        EXPECT_NO_THROW(optionsFrom({option, std::string(width, 'x')})) << option;
        const std::string wide(width + 1, 'x');
        EXPECT_EQ(refusalBy([&] {
                      optionsFrom({option, wide});
                  }),
                  option + ": '" + wide + "' has " + std::to_string(width + 1) +
                      " characters; the header has room for " + std::to_string(width));
    }
}

TEST(StandardHeaderTexts, TextsOfTheLogAreCutWithAWarning) {
    const auto text = [](std::size_t size) {
        return orbconv::reading::LogText{.text = std::string(size, 'x'), .offset = 7};
    };
    SurveyedLog log{.name = "site.kvs", .site = {}};
    orbconv::reading::SiteIdentity& site = log.site;
    site.markerName = text(61);
    site.receiverNumber = text(21);
    site.receiverType = text(22);
    site.receiverVersion = text(23);
    site.antennaType = text(24);
    Lines warnings;
    const HeaderTexts texts = headerTextsOf({}, std::array{log}, warnings);
    EXPECT_EQ(texts.markerName, std::string(60, 'x'));
    for (const HeaderText& cut :
         {texts.receiverNumber, texts.receiverType, texts.receiverVersion, texts.antennaType}) {
        EXPECT_EQ(cut, std::string(20, 'x'));
    }
    const auto warning = [](const std::string& id, int size, int width, const std::string& option) {
        return "site.kvs: the " + id + " message at byte 7 tells a text of " + std::to_string(size) +
               " characters, cut to " + std::to_string(width) + "; " + option + " gives another";
    };
    EXPECT_EQ(warnings,
              (Lines{warning("KV", 61, 60, "--marker-name"), warning("PM", 21, 20, "--receiver-number"),
                     warning("PM", 22, 20, "--receiver-type"), warning("PM", 23, 20, "--receiver-version"),
                     warning("==", 24, 20, "--antenna-type")}));
}

TEST(StandardSummary, FirstLineHasTimesScaleAndInterval) {
    ContentSurvey content;
    content.epochs = 2;
    content.first = timeOf("2024-05-06T10:00");
    content.last = timeOf("2024-05-06T10:00:30.5");
    EXPECT_EQ(contentLines(content, TimeScale::gps, {}),
              Lines{"epochs: 2, 2024-05-06T10:00:00.000 to 2024-05-06T10:00:30.500 GPS"});
    content.steps.add(30'500);
    EXPECT_EQ(contentLines(content, TimeScale::gps, {}),
              Lines{"epochs: 2, 2024-05-06T10:00:00.000 to 2024-05-06T10:00:30.500 "
                    "GPS, mostly every 30.500 s"});
    content.steps.add(30'500);
    content.steps.add(61'000);
    content.steps.add(99'000);
    content.steps.add(1'000);
    EXPECT_EQ(contentLines(content, TimeScale::utc, {}),
              Lines{"epochs: 2, 2024-05-06T10:00:00.000 to 2024-05-06T10:00:30.500 "
                    "GLO, mostly every 30.500 s, longer steps: 2"});
}

}  // namespace
