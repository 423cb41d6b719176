#include "standard/epoch_sequence.h"

#include <algorithm>
#include <cerrno>
#include <numeric>
#include <stdexcept>
#include <system_error>

#include "standard/platform.h"
#include "standard/stop_request.h"

namespace orbconv::standard {

namespace {

[[noreturn]] void failToRead(const std::string& name) {
    throw std::runtime_error(name + ": " + std::generic_category().message(errno));
}

std::FILE* openLogAt(const std::string& name, std::uint64_t offset) {
    std::FILE* const file = openLog(name);
    if (!seekTo(file, offset)) {
        std::fclose(file);
        failToRead(name);
    }
    return file;
}

}  // namespace

std::FILE* openLog(const std::string& name) {
    std::FILE* const file = std::fopen(name.c_str(), "rb");
    if (file == nullptr) {
        failToRead(name);
    }
    return file;
}

StretchReader::StretchReader(const std::string& logName, const Stretch& stretch, const Selection& selection,
                             TimeScale scale)
    : selection_(selection),
      scale_(scale),
      stretch_(stretch),
      reader_(openLogAt(logName, stretch.offset), stretch.habits),
      collector_(stretch.carried) {}

bool StretchReader::next() {
    auto item = reading::LogItem::damage;
    while (item != reading::LogItem::end && stretch_.offset + reader_.position() < stretch_.endOffset) {
        endIfAsked();  // many epochs can come that are not asked for
        item = reader_.next();
        if (item == reading::LogItem::message && collector_.add(reader_.message()) && takeEpoch()) {
            return true;
        }
    }
    return false;
}

// The survey's decisions once more.
bool StretchReader::takeEpoch() {
    const reading::Epoch& epoch = collector_.epoch();
    if (gateOf(epoch, selection_, scale_) != Gate::open || (lastTime_ && *epoch.time <= *lastTime_)) {
        return false;
    }
    observationsOf(epoch, selection_, observations_);
    if (observations_.satellites.empty()) {
        return false;
    }
    lastTime_ = observations_.time;
    return true;
}

EpochSequence::EpochSequence(const Survey& survey, const Selection& selection)
    : survey_(survey), selection_(selection), waiting_(survey.stretches.size()) {
    // Of stretches that begin at the same time the one that was found first is the first to be opened.
    std::iota(waiting_.rbegin(), waiting_.rend(), std::size_t{0});
    std::ranges::stable_sort(waiting_, std::ranges::greater{},
                             [&](std::size_t index) { return survey.stretches[index].first; });
}

std::vector<EpochSequence::OpenStretch>::const_iterator EpochSequence::earliest() const {
    return std::ranges::min_element(open_, {},
                                    [](const OpenStretch& stretch) { return stretch.reader->epoch().time; });
}

// Goes on behind a time in each stretch that stands on it.
void EpochSequence::leave(reading::LogTime time) {
    std::erase_if(open_, [&](const OpenStretch& stretch) {
        if (stretch.reader->epoch().time != time) {
            return false;
        }
        repeatedEpochs_ += static_cast<std::uint64_t>(stretch.index != handedOut_);
        return !stretch.reader->next();
    });
}

// Opens the stretches that have begun by the earliest epoch of the open ones.
void EpochSequence::openStretches() {
    while (!waiting_.empty()) {
        const std::size_t index = waiting_.back();
        const Stretch& stretch = survey_.stretches[index];
        if (!open_.empty() && stretch.first > earliest()->reader->epoch().time) {
            return;
        }
        if (open_.size() == mostSideBySide) {
            throw std::runtime_error("at " + reading::isoText(stretch.first) + " more than " +
                                     std::to_string(mostSideBySide) +
                                     " logs, or parts of them, overlap; give fewer logs at once");
        }
        waiting_.pop_back();
        auto reader = std::make_unique<StretchReader>(survey_.logs[stretch.log].name, stretch, selection_,
                                                      survey_.scale.value_or(TimeScale::gps));
        if (reader->next()) {
            const auto behind = std::ranges::upper_bound(open_, index, {}, &OpenStretch::index);
            open_.insert(behind, {.index = index, .reader = std::move(reader)});
        }
    }
}

const EpochObservations* EpochSequence::next() {
    if (current_ != nullptr) {
        leave(current_->time);
        current_ = nullptr;
    }
    openStretches();
    if (!open_.empty()) {
        const auto stretch = earliest();
        handedOut_ = stretch->index;
        current_ = &stretch->reader->epoch();
    }
    return current_;
}

}  // namespace orbconv::standard
