#include "reading/epoch.h"

#include <algorithm>
#include <cmath>

#include "assembly/signals.h"
#include "log/epoch_bodies.h"

namespace orbconv::reading {

namespace {

// Whether a message has room for a field.
template <class T>
bool holds(const Message& message, BodyField<T> field) {
    return message.content().size() >= field.offset + field.width;
}

// A second that a scale with leap seconds adds to a day stands behind its last millisecond.
constexpr std::uint32_t latestTimeOfDayMs = millisecondsPerDay + 999;

}  // namespace

EpochCollector::EpochCollector(const CarriedTime& carried)
    : date_(carried.date), previousTimeOfDayMs_(carried.timeOfDayMs) {
    epoch_.timeOfDayMs = carried.timeOfDayMs;
    epoch_.timeBase = carried.timeBase;
}

bool EpochCollector::add(const Message& message) {
    if (closed_) {
        begin(message);
    }
    switch (message.row) {
        case rowOf("TD"): close(message); return true;
        case rowOf("~~"): takeTime(message); break;
        case rowOf("RD"): takeDate(message); break;
        case rowOf("TO"): takeClockOffset(message); break;
        case rowOf("SX"): takeList(message); break;
        default:
            if (message.row != noRow && messageTable[message.row].reading == Reading::array) {
                takeArray(message);
            }
            break;
    }
    return false;
}

void EpochCollector::begin(const Message& message) {
    closed_ = false;
    epoch_.came_.fill(false);
    epoch_.hasOwnTime = false;
    epoch_.hasOwnDate = false;
    epoch_.clockOffset.reset();
    epoch_.offset = message.offset;
}

// Where two epochs run into each other, because the TD between them is lost, the clock offset is that of the
// later one.
void EpochCollector::takeTime(const Message& message) {
    if (!holds(message, bodies::timeOfDay::milliseconds)) {
        return;
    }
    const auto timeOfDayMs = bodies::timeOfDay::milliseconds.load(message.body.data());
    if (timeOfDayMs > latestTimeOfDayMs) {
        return;
    }
    if (epoch_.hasOwnTime) {
        epoch_.clockOffset.reset();
    }
    epoch_.timeOfDayMs = timeOfDayMs;
    epoch_.hasOwnTime = true;
}

void EpochCollector::takeDate(const Message& message) {
    if (!holds(message, bodies::rd::timeBase)) {
        return;
    }
    const std::uint8_t* const body = message.body.data();
    const auto date =
        dateOf(bodies::rd::year.load(body), bodies::rd::month.load(body), bodies::rd::day.load(body));
    if (date) {
        date_ = date;
        epoch_.hasOwnDate = true;
        epoch_.timeBase = bodies::rd::timeBase.load(body);
    }
}

void EpochCollector::takeClockOffset(const Message& message) {
    if (!holds(message, bodies::clock::offset)) {
        return;
    }
    const double seconds = bodies::clock::offset.load(message.body.data());
    if (std::isfinite(seconds)) {
        epoch_.clockOffset = seconds;
    }
}

void EpochCollector::takeArray(const Message& message) {
    const std::size_t row = message.row;
    const auto content = message.content();
    std::ranges::copy(content, epoch_.arrays_.begin() + static_cast<std::ptrdiff_t>(areaOffsets[row]));
    epoch_.elementCounts_[row] =
        static_cast<std::uint16_t>(content.size() / static_cast<std::size_t>(messageTable[row].elementBytes));
    epoch_.came_[row] = true;
}

// Arrays that came ahead of another list belong to that other one: their elements cannot be told here.
void EpochCollector::takeList(const Message& message) {
    const auto held = epoch_.bytes(message.row);
    if (epoch_.came_[message.row] && !std::ranges::equal(held, message.content())) {
        epoch_.came_.fill(false);
    }
    takeArray(message);
}

void EpochCollector::close(const Message& message) {
    closed_ = true;
    epoch_.endOffset = message.offset + message.bytes;
    epoch_.time.reset();
    if (epoch_.timeOfDayMs) {
        if (date_ && passedMidnight()) {
            *date_ += std::chrono::days{1};
        }
        if (date_) {
            epoch_.time = *date_ + std::chrono::milliseconds{*epoch_.timeOfDayMs};
        }
    }
    previousTimeOfDayMs_ = epoch_.timeOfDayMs;
    listSatellites();
}

bool EpochCollector::passedMidnight() const {
    const bool fellBack =
        previousTimeOfDayMs_ && epoch_.timeOfDayMs && *epoch_.timeOfDayMs < *previousTimeOfDayMs_;
    return fellBack && !epoch_.hasOwnDate;
}

std::optional<LogTime> EpochCollector::timeSoFar() const {
    if (!date_) {
        return std::nullopt;
    }
    return *date_ + std::chrono::days{passedMidnight() ? 1 : 0} +
           std::chrono::milliseconds{epoch_.timeOfDayMs.value_or(0)};
}

// NN has one byte for each GLONASS satellite of the list, in its order.
void EpochCollector::listSatellites() {
    epoch_.satellites_.clear();
    const auto list = epoch_.bytes(rowOf("SX"));
    std::size_t glonassIndex = 0;
    for (std::size_t i = 0; 2 * i + 1 < list.size(); ++i) {
        EpochSatellite satellite{.constellation = constellationOfCode(list[2 * i]),
                                 .systemCode = list[2 * i],
                                 .number = list[2 * i + 1],
                                 .element = i};
        if (satellite.constellation == Constellation::glonass) {
            const auto slot = epoch_.element<std::uint8_t>(rowOf("NN"), glonassIndex++);
            satellite.slot = slot.value_or(unknownSlot) == unknownSlot ? std::uint8_t{0} : *slot;
        }
        epoch_.satellites_.push_back(satellite);
    }
}

}  // namespace orbconv::reading
