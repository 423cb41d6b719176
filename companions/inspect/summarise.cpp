#include "inspect/summarise.h"

#include <algorithm>

#include "inspect/epoch_steps.h"
#include "inspect/header_findings.h"
#include "inspect/navigation_findings.h"
#include "inspect/satellite_findings.h"
#include "inspect/signal_counts.h"
#include "inspect/time_findings.h"
#include "inspect/timeline_builder.h"
#include "log/receiver_clock.h"
#include "reading/epoch.h"

namespace orbconv::inspect {

namespace {

constexpr std::uint64_t progressStep = std::uint64_t{4} << 20;  // bytes

// Messages by the two characters of their ids.
class MessageCounts {
public:
    MessageCounts() : counts_(std::size_t{128} * 128) {}

    void add(const reading::Message& message) {
        Count& count = counts_[static_cast<std::size_t>(message.id.first) * 128 +
                               static_cast<std::size_t>(message.id.second)];
        ++count.messages;
        count.bytes += message.bytes;
    }
    void tell(LogSummary& summary) const {
        for (std::size_t i = 0; i < counts_.size(); ++i) {
            const MessageId id{static_cast<char>(i / 128), static_cast<char>(i % 128)};
            if (counts_[i].messages > 0) {
                summary.messages += counts_[i].messages;
                summary.messagesById.push_back({.id = id,
                                                .known = findRow(id).has_value(),
                                                .count = counts_[i].messages,
                                                .bytes = counts_[i].bytes});
            }
        }
        std::ranges::stable_sort(summary.messagesById, std::ranges::greater{}, &MessageCount::bytes);
    }

private:
    struct Count {
        std::uint64_t messages = 0;
        std::uint64_t bytes = 0;
    };
    std::vector<Count> counts_;
};

class NavigationCounts {
public:
    void add(const reading::Message& message) {
        const auto content = message.content();
        const auto kind = navigationKindOf(message.id, content);
        if (!kind) {
            return;
        }
        NavigationSummary& count = counts_[*kind];
        ++count.messages;
        if (rowOf(*kind).namesSatellite && !content.empty()) {
            count.satellites[content[0]] = true;
        }
    }
    void tell(LogSummary& summary) const {
        for (std::size_t kind = 0; kind < counts_.size(); ++kind) {
            if (counts_[kind].messages > 0) {
                summary.navigation.push_back(counts_[kind]);
                summary.navigation.back().kind = static_cast<NavigationKind>(kind);
            }
        }
    }

private:
    std::array<NavigationSummary, navigationKinds.size()> counts_{};
};

// Times of the epochs as the summary counts them: of a log without dates from its first day on. When the
// first date comes, what was counted without one is given up.
class Times {
public:
    // The epoch's time, and in `restarts` whether those told before were of no date.
    std::optional<LogTime> of(const reading::Epoch& epoch, bool& restarts) {
        restarts = epoch.time && !dated_ && previousMs_;
        dated_ = dated_ || epoch.time;
        if (dated_ || !epoch.timeOfDayMs) {
            return epoch.time;
        }
        if (previousMs_ && *epoch.timeOfDayMs < *previousMs_) {
            ++days_;
        }
        previousMs_ = epoch.timeOfDayMs;
        return LogTime{std::chrono::days{days_}} + Milliseconds{*epoch.timeOfDayMs};
    }
    [[nodiscard]] bool dated() const { return dated_; }

private:
    bool dated_ = false;
    std::optional<std::uint32_t> previousMs_;
    int days_ = 0;
};

class Summariser {
public:
    Summariser(LogBytes bytes, bool timeline) : walk_(std::move(bytes)) {
        if (timeline) {
            timeline_.emplace();
        }
    }

    void take(const reading::Message& message);
    void take(const reading::Damage& damage);
    LogSummary tell(std::uint64_t bytes);

private:
    // Ids that the finders of header, times and navigation look at; the bulk of a log is none of them.
    [[nodiscard]] static bool isRare(const reading::Message& message) {
        return message.row == noRow || messageTable[message.row].reading != Reading::array ||
               message.row == orbconv::rowOf("SX");
    }
    void takeRare(const reading::Message& message, bool met);
    void takeEpoch(const reading::Epoch& epoch, bool met);
    void takeTime(const reading::Epoch& epoch);

    LogSummary summary_;
    MessageCounts messages_;
    NavigationCounts navigation_;
    reading::EpochCollector epochs_;
    Times times_;
    EpochSteps steps_;
    SignalCounts signals_;
    std::optional<TimelineBuilder> timeline_;

    FindingTally tally_;
    ConverterWalk walk_;
    TimeFindings timeFindings_;
    HeaderFindings headerFindings_;
    SatelliteFindings satelliteFindings_;
    NavigationFindings navigationFindings_;
};

void Summariser::take(const reading::Message& message) {
    const bool met = walk_.meets(message);
    messages_.add(message);
    if (isRare(message)) {
        takeRare(message, met);
    }
    if (epochs_.add(message)) {
        takeEpoch(epochs_.epoch(), met);
    }
}

void Summariser::takeRare(const reading::Message& message, bool met) {
    navigation_.add(message);
    summary_.identity.take(message);
    if (!met) {
        return;
    }
    headerFindings_.take(message, tally_);
    navigationFindings_.take(message, tally_);
    timeFindings_.take(message);
    if (timeFindings_.headerComes()) {
        headerFindings_.takeHeader(tally_);
    }
}

void Summariser::takeEpoch(const reading::Epoch& epoch, bool met) {
    ++summary_.epochs;
    takeTime(epoch);
    signals_.add(epoch);
    if (met) {
        timeFindings_.take(epoch, tally_);
        satelliteFindings_.take(epoch, tally_);
    }
}

void Summariser::takeTime(const reading::Epoch& epoch) {
    bool restarts = false;
    const auto time = times_.of(epoch, restarts);
    if (restarts) {
        summary_.epochsWithoutTime = summary_.epochs - 1;
        steps_ = {};
        if (timeline_) {
            timeline_.emplace();
        }
    }
    if (time) {
        steps_.add(*time);
        summary_.dated = times_.dated();
        summary_.timeScale = timeScaleName(epoch.timeBase);
    } else {
        ++summary_.epochsWithoutTime;
    }
    if (timeline_ && time) {
        timeline_->add(epoch, *time);
    } else if (timeline_) {
        timeline_->leaveOut();
    }
}

void Summariser::take(const reading::Damage& damage) {
    walk_.passDamage(damage);
    ++summary_.damageCount;
    summary_.damageBytes += damage.bytes;
    if (summary_.damage.size() < mostDamageKept) {
        summary_.damage.push_back(damage);
    }
    if (timeline_) {
        timeline_->addDamage(damage.bytes);
    }
}

LogSummary Summariser::tell(std::uint64_t bytes) {
    summary_.bytes = bytes;
    messages_.tell(summary_);
    navigation_.tell(summary_);
    signals_.tell(summary_);
    steps_.tell(summary_);
    walk_.tell(tally_);
    timeFindings_.tell(summary_, tally_);
    headerFindings_.tell(summary_, tally_);
    satelliteFindings_.tell(summary_, tally_);
    navigationFindings_.tell(tally_);
    if (satelliteFindings_.glonassChanges() && timeFindings_.headerDone()) {
        satelliteFindings_.walkGlonass(walk_.bytes().reader(), bytes, timeFindings_.unwrittenEpochs(),
                                       tally_);
    }
    summary_.findings = tally_.findings();
    if (timeline_) {
        summary_.timeline = timeline_->tell(summary_);
    }
    if (!summary_.dated) {
        summary_.timeScale = {};
    }
    return std::move(summary_);
}

}  // namespace

LogSummary summarise(reading::LogReader& reader, LogBytes bytes, const SummaryWishes& wishes) {
    const auto summariser = std::make_unique<Summariser>(std::move(bytes), wishes.timeline);
    std::uint64_t told = 0;
    while (reader.position() < wishes.end) {
        const auto item = reader.next();
        if (item == reading::LogItem::end) {
            break;
        }
        if (item == reading::LogItem::message) {
            summariser->take(reader.message());
        } else {
            summariser->take(reader.damage());
        }
        if (wishes.progress && reader.position() - told >= progressStep) {
            told = reader.position();
            wishes.progress(told);
        }
    }
    return summariser->tell(reader.position());
}

}  // namespace orbconv::inspect
