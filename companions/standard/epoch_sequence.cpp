#include "standard/epoch_sequence.h"

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "standard/platform.h"

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

EpochSequence::EpochSequence(const std::string& logName, const Survey& survey, const Selection& selection) {
    const TimeScale scale = survey.content.scale.value_or(TimeScale::gps);
    for (const Stretch& stretch : survey.stretches) {
        readers_.push_back(std::make_unique<StretchReader>(logName, stretch, selection, scale));
        if (!readers_.back()->next()) {
            readers_.pop_back();
        }
    }
}

void EpochSequence::drop(std::size_t index) {
    if (!readers_[index]->next()) {
        readers_.erase(readers_.begin() + static_cast<std::ptrdiff_t>(index));
    }
}

const EpochObservations* EpochSequence::next() {
    if (handedOut_) {
        // From the last one on, so that no index moves that is still to be looked at.
        const reading::LogTime time = readers_[*handedOut_]->epoch().time;
        for (std::size_t i = readers_.size(); i-- > 0;) {
            if (readers_[i]->epoch().time == time) {
                repeatedEpochs_ += static_cast<std::uint64_t>(i != *handedOut_);
                drop(i);
            }
        }
        handedOut_.reset();
    }
    const auto earliest =
        std::ranges::min_element(readers_, {}, [](const auto& reader) { return reader->epoch().time; });
    if (earliest == readers_.end()) {
        return nullptr;
    }
    handedOut_ = static_cast<std::size_t>(earliest - readers_.begin());
    return &(*earliest)->epoch();
}

}  // namespace orbconv::standard
