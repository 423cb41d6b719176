#include "standard/navigation_set.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <tuple>

#include "standard/navigation_time.h"

namespace orbconv::standard {

namespace {

using reading::LogTime;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr seconds beidouBehindGps{14};

// What makes a record a repetition of another: satellite, kind, and all numbers but one.
bool sameContent(const NavigationRecord& a, const NavigationRecord& b) {
    if (a.constellation != b.constellation || a.sv != b.sv || a.type != b.type || a.epoch != b.epoch) {
        return false;
    }
    for (std::size_t i = 0; i < a.values.size(); ++i) {
        const bool equal = a.values[i] == b.values[i] || (std::isnan(a.values[i]) && std::isnan(b.values[i]));
        if (!equal && i != a.transmission) {
            return false;
        }
    }
    return true;
}

std::uint64_t contentHash(const NavigationRecord& record) {
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t hash = static_cast<std::uint64_t>(record.epoch.time_since_epoch().count());
    const auto mix = [&hash](std::uint64_t value) { hash = (std::rotl(hash, 23) ^ value) * prime; };
    mix(indexOf(record.constellation));
    mix(static_cast<std::uint64_t>(record.sv));
    mix(static_cast<std::uint64_t>(record.type));
    for (std::size_t i = 0; i < record.values.size(); ++i) {
        mix(i == record.transmission ? 0 : std::bit_cast<std::uint64_t>(record.values[i]));
    }
    return hash;
}

// Terms of which every one is a number that its field can show, and one at least is not 0.
template <class Terms>
bool areTerms(const Terms& terms) {
    constexpr double greatest = 1e90;
    return std::ranges::all_of(terms, [](double value) { return std::abs(value) < greatest; }) &&
           std::ranges::any_of(terms, [](double value) { return value != 0.0; });
}

LogTime inSystemTime(LogTime gpsTime, Constellation constellation) {
    const LogTime whole = std::chrono::floor<seconds>(gpsTime);
    return constellation == Constellation::beidou ? whole - beidouBehindGps : whole;
}

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
            .transmission = secondsOf(sent, weekStart)};
}

// GLONASS gives the corrections of its own time: their sign turned, they are offsets. They are of the day.
TimeOffsetTerms glonassTerms(std::string_view pair, double correction, LogTime gpsTime) {
    const auto day = std::chrono::floor<std::chrono::days>(gpsTime);
    const auto weekday = std::chrono::weekday{day}.c_encoding();
    const LogTime weekStart = day - std::chrono::days{weekday};
    return {.constellation = Constellation::glonass,
            .pair = pair,
            .a0 = 0.0 - correction,
            .epoch = day,
            .transmission = secondsOf(std::chrono::floor<seconds>(gpsTime), weekStart)};
}

constexpr std::string_view utcPair(Constellation constellation) {
    switch (constellation) {
        case Constellation::beidou: return "BDUT";
        case Constellation::navic: return "IRUT";
        default: return "GPUT";
    }
}

}  // namespace

void NavigationSet::add(const reading::Broadcast& broadcast, const Reception& received) {
    switch (broadcast.state) {
        case reading::BroadcastState::none: return;
        case reading::BroadcastState::unknownForm: ++losses_.unknownForm; return;
        case reading::BroadcastState::decoded: break;
    }
    if (!received.gpsTime) {
        ++losses_.withoutDate;
        return;
    }
    if (broadcast.sv != 0) {
        addRecord(broadcast, received);
    }
    addTerms(broadcast, received);
}

void NavigationSet::addRecord(const reading::Broadcast& broadcast, const Reception& received) {
    auto record = recordOf(broadcast, received.gpsTime);
    if (!record) {
        ++losses_.unusable;
        return;
    }
    std::int32_t& last = lastSatellite_[indexOf(broadcast.constellation)];
    if (last == 0) {  // of terms that came ahead of every ephemeris of their constellation
        for (IonosphereTerms& terms : ionosphere_) {
            terms.sv =
                terms.constellation == broadcast.constellation && terms.sv == 0 ? broadcast.sv : terms.sv;
        }
    }
    last = broadcast.sv;
    const std::uint64_t hash = contentHash(*record);
    const auto [first, end] = byContent_.equal_range(hash);
    const bool isRepeated = std::any_of(
        first, end, [&](const auto& entry) { return sameContent(records_[entry.second], *record); });
    if (isRepeated) {
        ++losses_.repeated;
        return;
    }
    byContent_.emplace(hash, records_.size());
    records_.push_back(*record);
}

void NavigationSet::addIonosphere(IonosphereTerms terms) {
    if (!areTerms(terms.values)) {
        return;
    }
    const auto same = std::ranges::find_if(ionosphere_, [&](const IonosphereTerms& other) {
        return other.constellation == terms.constellation && other.values == terms.values;
    });
    if (same != ionosphere_.end()) {
        std::rotate(same, same + 1, ionosphere_.end());  // it holds again
        return;
    }
    ionosphere_.push_back(terms);
}

void NavigationSet::addOffset(TimeOffsetTerms terms) {
    if (!areTerms(std::array{terms.a0, terms.a1, terms.reference})) {
        return;
    }
    const auto same = std::ranges::find_if(offsets_, [&](const TimeOffsetTerms& other) {
        return other.pair == terms.pair && other.a0 == terms.a0 && other.a1 == terms.a1 &&
               other.epoch == terms.epoch;
    });
    if (same != offsets_.end()) {
        std::rotate(same, same + 1, offsets_.end());
        return;
    }
    offsets_.push_back(terms);
}

void NavigationSet::addTerms(const reading::Broadcast& broadcast, const Reception& received) {
    const Constellation constellation = broadcast.constellation;
    const LogTime gpsTime = *received.gpsTime;
    const LogTime sent = inSystemTime(gpsTime, constellation);
    if (const auto* galileo = std::get_if<reading::GalileoEphemeris>(&broadcast.body)) {
        const reading::NequickTerms& terms = galileo->ionosphere;
        addIonosphere({.constellation = constellation,
                       .values = {terms.ai[0], terms.ai[1], terms.ai[2], static_cast<double>(terms.flags)},
                       .sv = broadcast.sv,
                       .sent = sent});
    } else if (const auto* terms = std::get_if<reading::KlobucharTerms>(&broadcast.body)) {
        IonosphereTerms set{
            .constellation = constellation, .sv = lastSatellite_[indexOf(constellation)], .sent = sent};
        std::ranges::copy(terms->alpha, set.values.begin());
        std::ranges::copy(terms->beta, set.values.begin() + terms->alpha.size());
        addIonosphere(set);
    } else if (const auto* utc = std::get_if<reading::UtcOffset>(&broadcast.body)) {
        addOffset(offsetTerms(constellation, utcPair(constellation), utc->offset, gpsTime));
        if (constellation == Constellation::gps) {
            leapSeconds_ = utc->leapSeconds;
        }
    } else if (const auto* offsets = std::get_if<reading::GalileoOffsets>(&broadcast.body)) {
        addOffset(offsetTerms(constellation, "GAUT", offsets->utc.offset, gpsTime));
        addOffset(offsetTerms(constellation, "GAGP", offsets->gps, gpsTime));
        leapSeconds_ = offsets->utc.leapSeconds;
    } else if (const auto* glonass = std::get_if<reading::GlonassOffsets>(&broadcast.body)) {
        addOffset(glonassTerms("GLUT", glonass->tauC, gpsTime));
        addOffset(glonassTerms("GLGP", glonass->tauGps, gpsTime));
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
