#include "inspect/navigation_findings.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

#include "log/epoch_bodies.h"
#include "log/navigation_bodies.h"
#include "navdecode/kepler_block.h"
#include "navdecode/message_meaning.h"
#include "navdecode/navigation_tables.h"

namespace orbconv::inspect {

namespace {

using reading::LogDate;
using reading::LogTime;
using reading::Message;

using Kepler = KeplerBlock;

constexpr std::size_t tableCapacity = static_cast<std::size_t>(ephemerisTableCapacity);
constexpr std::chrono::hours moscowOffset{3};
constexpr std::int16_t fitIntervalLimit = 240;  // issue numbers from here on have no fit interval of 4 hours

// How many sets of ionosphere coefficients and of time offsets are kept, by constellation.
constexpr PerConstellation<std::uint64_t> ionosphereRoom = {ionoWrap,       0,        0, 0,
                                                            beidouIonoWrap, ionoWrap, 0, 0};
constexpr PerConstellation<std::uint64_t> timeOffsetRoom = {
    timeOffsetSlots, 0, timeOffsetSlots, 0, timeOffsetSlots, navicTimeOffsetWrap, 0, 0};

// Added to a body's week for the week that is counted from the start of GPS time (BeiDou: of its own).
constexpr PerConstellation<int> weekOffsets = {
    gpsWeekOffset, 0, galileoWeekOffset, 0, beidouWeekOffset, navicWeekOffset, 0, 0};
constexpr LogDate gpsStart{std::chrono::local_days{std::chrono::January / 6 / 1980}};
constexpr LogDate beidouStart{std::chrono::local_days{std::chrono::January / 1 / 2006}};

// What opens a time offset and tells a repetition: a0, a1 and the reference time; of NU the two offsets.
constexpr std::size_t timeOffsetKeyBytes = bodies::timeOffset::week.offset;
constexpr std::size_t glonassKeyBytes = bodies::nu::word1.offset;

// FNV-1a; never 0.
std::uint64_t hashOf(std::span<const std::uint8_t> bytes, std::uint64_t hash = 0xCBF29CE484222325U) {
    for (const std::uint8_t byte : bytes) {
        hash = (hash ^ byte) * 0x100000001B3U;
    }
    return hash | 1U;
}
std::uint64_t hashOf(std::span<const std::uint8_t> body, std::span<const BodyField<float>> fields) {
    std::uint64_t hash = hashOf({});
    for (const BodyField<float>& field : fields) {
        hash = hashOf(body.subspan(field.offset, BodyField<float>::width), hash);
    }
    return hash;
}

Kepler keplerOf(Constellation constellation, const std::uint8_t* body) {
    Kepler kepler{};
    decodeKeplerBlock(body, weekOffsets[indexOf(constellation)], kepler);
    kepler.sv = bodies::kepler::sv.load(body);
    return kepler;
}

// The day of an ephemeris by its week and toe.
LogDate dayOf(Constellation constellation, const Kepler& kepler) {
    const LogDate start = constellation == Constellation::beidou ? beidouStart : gpsStart;
    return start + std::chrono::weeks{kepler.week} +
           std::chrono::duration_cast<std::chrono::days>(std::chrono::seconds{kepler.toe});
}

bool isCnav(const NavigationKindRow& kind) {
    return kind.name.starts_with("CN");
}

}  // namespace

void NavigationFindings::take(const Message& message, FindingTally& tally) {
    if (message.row == orbconv::rowOf("RD")) {
        takeDate(message);
    } else if (const auto kind = navigationKindOf(message.id, message.content())) {
        takeKind(*kind, message, tally);
    }
}

void NavigationFindings::takeDate(const Message& message) {
    const auto content = message.content();
    if (content.size() < bodies::rd::bytes) {
        return;
    }
    const auto date =
        reading::dateOf(bodies::rd::year.load(content.data()), bodies::rd::month.load(content.data()),
                        bodies::rd::day.load(content.data()));
    date_ = date ? date : date_;
}

void NavigationFindings::takeKind(NavigationKind index, const Message& message, FindingTally& tally) {
    const NavigationKindRow& kind = rowOf(index);
    const bool noTable =
        kind.constellation == Constellation::qzss || kind.constellation == Constellation::sbas;
    if (noTable) {
        tally.add(FindingId::noRecords, 1, [&] { return placeText(message); });
        return;
    }
    if (kind.content == NavigationContent::almanac) {
        return;
    }
    tally.add(FindingId::yearZero, date_ ? 0 : 1, [&] { return placeText(message); });
    switch (kind.content) {
        case NavigationContent::ionosphere: takeIonosphere(kind, message, tally); break;
        case NavigationContent::timeOffset: takeTimeOffset(kind, message, tally); break;
        default:
            if (kind.constellation == Constellation::glonass) {
                takeGlonass(message, tally);
            } else {
                takeKepler(kind, message, tally);
            }
            break;
    }
}

// Whether the converter keeps an ephemeris of this key.
bool NavigationFindings::keep(Constellation constellation, std::uint64_t key, std::uint64_t content,
                              const Message& message, FindingTally& tally) {
    Records& records = records_[indexOf(constellation)];
    const auto known = records.find(key);
    if (known != records.end()) {
        const bool other = known->second != content;
        const bool removes = constellation == Constellation::glonass;
        tally.add(removes ? FindingId::removedGlonass : FindingId::droppedRepeats, removes || other ? 1 : 0,
                  [&] { return placeText(message); });
        return false;
    }
    if (records.size() == tableCapacity) {
        tally.add(FindingId::fullTables, 1, [&] { return placeText(message); });
        return false;
    }
    records.emplace(key, content);
    return true;
}

void NavigationFindings::takeKepler(const NavigationKindRow& kind, const Message& message,
                                    FindingTally& tally) {
    const auto content = message.content();
    if (content.size() < bodies::kepler::bytes) {
        return;
    }
    const auto where = [&] { return placeText(message); };
    beidouCame_ = beidouCame_ || kind.constellation == Constellation::beidou;
    const std::uint8_t flags = navFlagsOf(message.id, content).value_or(0);
    const bool byFlags =
        kind.constellation == Constellation::galileo || kind.constellation == Constellation::beidou;
    const Kepler kepler = keplerOf(kind.constellation, content.data());
    const std::uint64_t key = duplicateKey(kepler, byFlags ? flags : std::uint8_t{0});
    const std::uint64_t what = static_cast<std::uint64_t>(kepler.health & 0xFF) << 40 |
                               std::uint64_t{flags} << 32 |
                               std::uint64_t{static_cast<std::uint16_t>(kepler.iodc)} << 16 | kepler.iode;
    const bool written = kepler.sv != 0;
    if (keep(kind.constellation, key, what, message, tally) && written) {
        takeNewRecord(kind, message, tally);
    }
    tally.add(FindingId::roundedInclinations, 1, where);
    tally.add(FindingId::galileoHealth, kind.constellation == Constellation::galileo ? 1 : 0, where);
}

// What a record shows once it is kept.
void NavigationFindings::takeNewRecord(const NavigationKindRow& kind, const Message& message,
                                       FindingTally& tally) {
    const auto content = message.content();
    const Kepler kepler = keplerOf(kind.constellation, content.data());
    const auto where = [&] { return placeText(message); };
    const bool gps = kind.constellation == Constellation::gps;
    const bool galileo = kind.constellation == Constellation::galileo;
    const bool beidou = kind.constellation == Constellation::beidou;

    const LogDate day = dayOf(kind.constellation, kepler);
    tally.add(FindingId::wrongDay, date_ && day != *date_ ? 1 : 0, [&] {
        return placeText(message) + ": of " + reading::isoText(day).substr(0, 10) + ", received on " +
               reading::isoText(*date_).substr(0, 10);
    });
    const std::int8_t accuracy = bodies::kepler::uraIndex.load(content.data());
    const bool cut = !galileo && accuracy > 0 && accuracy < 6 && accuracy % 2 == 1;
    tally.add(FindingId::cutAccuracies, cut ? 1 : 0, where);
    tally.add(FindingId::noFitInterval, gps && kepler.iodc >= fitIntervalLimit ? 1 : 0, where);
    tally.add(FindingId::fnavRecords, kind.name == "FNAV" ? 1 : 0, where);
    tally.add(FindingId::galileoIonosphere,
              galileo && records_[indexOf(Constellation::galileo)].size() == 1 ? 1 : 0, where);
    tally.add(FindingId::mixedExponents, gps || kind.constellation == Constellation::navic ? 1 : 0, where);
    tally.add(FindingId::cnavRecords, gps && isCnav(kind) ? 1 : 0, where);
    tally.add(FindingId::beidouCnavRecords, beidou && isCnav(kind) ? 1 : 0, where);
    const bool ofD = beidou && kind.name.starts_with("D");
    tally.add(FindingId::beidouTypes, ofD ? 1 : 0, where);
    tally.add(FindingId::geostationaryD1, ofD && kepler.sv >= 59 ? 1 : 0, where);
    if (gps) {
        takeNewGps(kind, message, kepler.week, tally);
    }
}

void NavigationFindings::takeNewGps(const NavigationKindRow& kind, const Message& message, std::int16_t week,
                                    FindingTally& tally) {
    const auto where = [&] { return placeText(message); };
    if (isCnav(kind)) {
        const auto accuracies = message.content().subspan(bodies::ge::uraiEd.offset,
                                                          bodies::ge::bytes - bodies::ge::uraiEd.offset);
        const bool negative = std::ranges::any_of(accuracies, [](std::uint8_t byte) { return byte >= 0x80; });
        tally.add(FindingId::negativeAccuracies, negative ? 1 : 0, where);
    }
    tally.add(FindingId::severalWeeks, lastWeek_ && week != *lastWeek_ && week != *firstWeek_ ? 1 : 0, where);
    firstWeek_ = firstWeek_ ? firstWeek_ : week;
    lastWeek_ = week;
}

void NavigationFindings::takeGlonass(const Message& message, FindingTally& tally) {
    const auto content = message.content();  // of one of the two lengths: the reader takes no other
    const auto where = [&] { return placeText(message); };
    const std::uint64_t key = std::uint64_t{bodies::ne::sv.load(content.data())} << 32 |
                              static_cast<std::uint32_t>(bodies::ne::tk.load(content.data()));
    tally.add(FindingId::threeLines, 1, where);
    if (keep(Constellation::glonass, key, 0, message, tally)) {
        const bool early =
            std::chrono::seconds{bodies::ne::tb.load(content.data())} % std::chrono::days{1} < moscowOffset;
        tally.add(FindingId::wrongHour, early ? 1 : 0, where);
    }
}

// A set that equals the one before adds nothing.
void NavigationFindings::takeIonosphere(const NavigationKindRow& kind, const Message& message,
                                        FindingTally& tally) {
    const auto content = message.content();
    if (content.size() < bodies::iono::bytes) {
        return;
    }
    const auto where = [&] { return placeText(message); };
    const std::size_t system = indexOf(kind.constellation);
    const std::uint64_t hash =
        hashOf(content, std::array{bodies::iono::alpha[0], bodies::iono::alpha[1], bodies::iono::beta[0]});
    if (hash == ionospheres_[system]) {
        return;
    }
    ionospheres_[system] = hash;
    ++ionosphereSets_[system];
    // A first coefficient of 0 ends the list that is written.
    ionosphereEnded_[system] =
        ionosphereEnded_[system] || bodies::iono::alpha[0].load(content.data()) == 0.0F;
    const bool lost = kind.constellation == Constellation::beidou && !beidouCame_;
    tally.add(FindingId::severalIonospheres, ionosphereSets_[system] > 1 ? 1 : 0, where);
    tally.add(FindingId::ionosphereEnds, ionosphereEnded_[system] ? 1 : 0, where);
    tally.add(FindingId::fullTables, ionosphereSets_[system] > ionosphereRoom[system] ? 1 : 0, where);
    tally.add(FindingId::beidouIonosphereLost, lost ? 1 : 0, where);
    tally.add(FindingId::navicIonosphere, kind.constellation == Constellation::navic ? 1 : 0, where);
}

void NavigationFindings::takeTimeOffset(const NavigationKindRow& kind, const Message& message,
                                        FindingTally& tally) {
    const auto content = message.content();
    const auto where = [&] { return placeText(message); };
    const std::size_t system = indexOf(kind.constellation);
    const bool glonass = kind.constellation == Constellation::glonass;
    const std::size_t keyBytes = glonass ? glonassKeyBytes : timeOffsetKeyBytes;
    if (content.size() < keyBytes) {
        return;
    }
    const std::uint64_t hash = hashOf(content.first(keyBytes));
    if (hash == timeOffsets_[system]) {
        return;
    }
    timeOffsets_[system] = hash;
    ++timeOffsetSets_[system];
    tally.add(FindingId::timeOffsetForms, 1, where);
    tally.add(FindingId::timeOffsetDates, 1, where);
    if (glonass) {
        tally.add(FindingId::glonassOffsets, 1, where);
        const bool shifted = bodies::nu::tauGps.load(content.data()) < 0.0F;  // the last one is written
        glonassShifted_ = shifted ? std::optional(where()) : std::nullopt;
        return;
    }
    takeShiftedOffsets(kind, message, tally);
    tally.add(FindingId::fullTables, timeOffsetSets_[system] > timeOffsetRoom[system] ? 1 : 0, where);
}

// A first coefficient of 0 ends the list that is written, of GPS only if the second one is 0 too.
void NavigationFindings::takeShiftedOffsets(const NavigationKindRow& kind, const Message& message,
                                            FindingTally& tally) {
    const auto content = message.content();
    const auto where = [&] { return placeText(message); };
    const std::size_t system = indexOf(kind.constellation);
    // The names that are written in six columns are shifted by a minus sign, those in five by its absence.
    const double a0 = bodies::timeOffset::a0.load(content.data());
    const bool five =
        kind.constellation == Constellation::beidou || kind.constellation == Constellation::galileo;
    const bool goesOn =
        kind.constellation == Constellation::gps && bodies::timeOffset::a1.load(content.data()) != 0.0F;
    timeOffsetsEnded_[system] = timeOffsetsEnded_[system] || (a0 == 0.0 && !goesOn);
    const bool shifted = five ? a0 > 0.0 : a0 < 0.0;
    tally.add(FindingId::shiftedOffsets, shifted && !timeOffsetsEnded_[system] ? 1 : 0, where);
    if (kind.constellation == Constellation::galileo && content.size() >= bodies::eu::bytes) {
        const float a0Gps = bodies::eu::a0Gps.load(content.data());
        galileoGpsEnded_ = galileoGpsEnded_ || a0Gps == 0.0F;
        tally.add(FindingId::shiftedOffsets, a0Gps > 0.0F && !galileoGpsEnded_ ? 1 : 0, where);
    }
}

void NavigationFindings::tell(FindingTally& tally) const {
    tally.add(FindingId::shiftedOffsets, glonassShifted_ ? 1 : 0, [&] { return *glonassShifted_; });
}

}  // namespace orbconv::inspect
