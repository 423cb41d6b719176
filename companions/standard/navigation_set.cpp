#include "standard/navigation_set.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <optional>

#include "standard/leap_seconds.h"
#include "standard/navigation_time.h"
#include "standard/navigation_values.h"

namespace orbconv::standard {

namespace {

using reading::LogTime;
using std::chrono::seconds;

constexpr seconds beidouBehindGps{14};
constexpr std::int32_t greatestWeek = 9999;  // four columns

struct EphemerisTest {
    bool operator()(const reading::GlonassEphemeris& /*glonass*/) const { return true; }
    template <class Body>
    bool operator()(const Body& /*body*/) const {
        return requires(const Body& body) {
            body.orbit;
        };
    }
};
bool isEphemeris(const reading::Broadcast& broadcast) {
    return std::visit(EphemerisTest{}, broadcast.body);
}

// A value as it counts for a repetition: its bits, and of the time of transmission nothing. Blanks are all of
// one pattern of bits, and no zero has a sign.
std::uint64_t bitsOf(const NavigationRecord& record, std::size_t value) {
    return value == record.transmission ? 0 : std::bit_cast<std::uint64_t>(record.values[value]);
}

// Makes the terms such as their fields can show them. False if that cannot be, or if all of them are 0, which
// receivers give as long as they know none.
template <std::size_t Count>
bool settleTerms(const std::array<double*, Count>& terms) {
    bool tells = false;
    for (double* const term : terms) {
        const std::optional<double> shown = printable(*term);
        if (!shown) {
            return false;
        }
        *term = *shown;
        tells = tells || *shown != 0.0;
    }
    return tells;
}

LogTime inSystemTime(LogTime gpsTime, Constellation constellation) {
    const LogTime whole = std::chrono::floor<seconds>(gpsTime);
    switch (constellation) {
        case Constellation::beidou: return whole - beidouBehindGps;
        case Constellation::glonass: return whole - seconds{leapSecondsAt(gpsTime)};
        default: return whole;
    }
}

// The reference stands in the week that is nearest to the reception among those that the message can mean.
TimeOffsetTerms offsetTerms(Constellation constellation, std::string_view pair,
                            const reading::TimeOffset& offset, LogTime gpsTime) {
    const WeekCount weeks =
        weekCountOf(constellation == Constellation::beidou ? constellation : Constellation::gps);
    const std::int32_t week = settledWeek(offset.week, offset.reference, weeks, gpsTime);
    const LogTime weekStart = weeks.start + std::chrono::days{7} * std::int64_t{week};
    const LogTime sent = inSystemTime(gpsTime, constellation);
    return {.constellation = constellation,
            .pair = pair,
            .a0 = offset.a0,
            .a1 = offset.a1,
            .reference = offset.reference,
            .week = week,
            .epoch = weekStart + seconds{static_cast<std::int64_t>(offset.reference)},
            .sent = sent,
            .transmission = secondsOf(sent, weekStart)};
}

// GLONASS gives the corrections of its own time: their sign turned, they are offsets. They are of the day.
TimeOffsetTerms glonassTerms(std::string_view pair, double correction, LogTime gpsTime) {
    const LogTime sent = inSystemTime(gpsTime, Constellation::glonass);
    const auto day = std::chrono::floor<std::chrono::days>(sent);
    const LogTime weekStart = day - std::chrono::days{std::chrono::weekday{day}.c_encoding()};
    return {.constellation = Constellation::glonass,
            .pair = pair,
            .a0 = 0.0 - correction,
            .epoch = day,
            .sent = sent,
            .transmission = secondsOf(sent, weekStart)};
}

constexpr std::string_view utcPair(Constellation constellation) {
    switch (constellation) {
        case Constellation::beidou: return "BDUT";
        case Constellation::navic: return "IRUT";
        default: return "GPUT";
    }
}

}  // namespace

bool ByContent::operator()(const NavigationRecord* one, const NavigationRecord* other) const {
    const auto headOf = [](const NavigationRecord& record) {
        return std::tuple(record.constellation, record.sv, record.type, record.epoch);
    };
    if (headOf(*one) != headOf(*other)) {
        return headOf(*one) < headOf(*other);
    }
    for (std::size_t i = 0; i < one->values.size(); ++i) {
        if (bitsOf(*one, i) != bitsOf(*other, i)) {
            return bitsOf(*one, i) < bitsOf(*other, i);
        }
    }
    return false;
}

void NavigationSet::add(const reading::Broadcast& broadcast, const ReceptionTime& received) {
    switch (broadcast.state) {
        case reading::BroadcastState::none: return;
        case reading::BroadcastState::unknownForm: ++losses_.unknownForm; return;
        case reading::BroadcastState::decoded: break;
    }
    if (!received) {
        ++losses_.withoutDate;
        return;
    }
    if (isEphemeris(broadcast) && !addRecord(broadcast, *received)) {
        ++losses_.unusable;
        return;
    }
    addTerms(broadcast, *received);
}

bool NavigationSet::addRecord(const reading::Broadcast& broadcast, LogTime received) {
    const auto record = recordOf(broadcast, received);
    if (!record) {
        return false;
    }
    std::int32_t& last = lastSatellite_[indexOf(broadcast.constellation)];
    if (last == 0) {  // of terms that came ahead of every ephemeris of their constellation
        const auto nameSatellite = [&](auto& terms) {
            terms.sv = terms.constellation == broadcast.constellation ? broadcast.sv : terms.sv;
        };
        std::ranges::for_each(ionosphere_, nameSatellite);
        std::ranges::for_each(offsets_, nameSatellite);
    }
    last = broadcast.sv;
    records_.push_back(*record);
    if (!contents_.insert(&records_.back()).second) {
        records_.pop_back();
        ++losses_.repeated;
    }
    return true;
}

void NavigationSet::addIonosphere(IonosphereTerms terms) {
    std::array<double*, 8> values{};
    std::ranges::transform(terms.values, values.begin(), [](double& value) { return &value; });
    if (!settleTerms(values)) {
        return;
    }
    const auto [entry, isNew] =
        ionosphereByContent_.try_emplace({terms.constellation, terms.values}, ionosphere_.size());
    if (isNew) {
        ionosphere_.push_back(terms);
    }
    ionosphere_[entry->second].heard = ++heard_;
}

void NavigationSet::addOffset(TimeOffsetTerms terms) {
    const bool hasReference =
        isSecondOfWeek(terms.reference) && terms.week >= 0 && terms.week <= greatestWeek;
    if (!hasReference || !settleTerms(std::array{&terms.a0, &terms.a1})) {
        return;
    }
    terms.sv = lastSatellite_[indexOf(terms.constellation)];
    const auto [entry, isNew] =
        offsetsByContent_.try_emplace({terms.pair, terms.a0, terms.a1, terms.epoch}, offsets_.size());
    if (isNew) {
        offsets_.push_back(terms);
    }
    offsets_[entry->second].heard = ++heard_;
}

void NavigationSet::addTerms(const reading::Broadcast& broadcast, LogTime received) {
    const Constellation constellation = broadcast.constellation;
    IonosphereTerms ionosphere{.constellation = constellation,
                               .sv = lastSatellite_[indexOf(constellation)],
                               .sent = inSystemTime(received, constellation)};
    if (const auto* galileo = std::get_if<reading::GalileoEphemeris>(&broadcast.body)) {
        const reading::NequickTerms& terms = galileo->ionosphere;
        ionosphere.values = {terms.ai[0], terms.ai[1], terms.ai[2], static_cast<double>(terms.flags)};
        addIonosphere(ionosphere);
    } else if (const auto* terms = std::get_if<reading::KlobucharTerms>(&broadcast.body)) {
        std::ranges::copy(terms->alpha, ionosphere.values.begin());
        std::ranges::copy(terms->beta, ionosphere.values.begin() + terms->alpha.size());
        addIonosphere(ionosphere);
    } else if (const auto* utc = std::get_if<reading::UtcOffset>(&broadcast.body)) {
        addOffset(offsetTerms(constellation, utcPair(constellation), utc->offset, received));
    } else if (const auto* offsets = std::get_if<reading::GalileoOffsets>(&broadcast.body)) {
        addOffset(offsetTerms(constellation, "GAUT", offsets->utc.offset, received));
        addOffset(offsetTerms(constellation, "GAGP", offsets->gps, received));
    } else if (const auto* glonass = std::get_if<reading::GlonassOffsets>(&broadcast.body)) {
        addOffset(glonassTerms("GLUT", glonass->tauC, received));
        addOffset(glonassTerms("GLGP", glonass->tauGps, received));
    }
}

std::vector<const NavigationRecord*> NavigationSet::sortedRecords() const {
    std::vector<const NavigationRecord*> sorted;
    sorted.reserve(records_.size());
    for (const NavigationRecord& record : records_) {
        sorted.push_back(&record);
    }
    std::ranges::stable_sort(sorted, {}, [](const NavigationRecord* record) {
        return std::tuple(record->epoch, indexOf(record->constellation), record->sv);
    });
    return sorted;
}

}  // namespace orbconv::standard
