#include "inspect/converter_walk.h"

#include <algorithm>
#include <cstdio>

#include "log/log_stream.h"
#include "log/message_lookup.h"
#include "log/message_reader.h"

namespace orbconv::inspect {

namespace {

constexpr std::uint64_t headerBytes = 5;
constexpr std::size_t mostMessageBytes = 8192;  // more than any length field can announce
static_assert(mostMessageBytes <= LogStream::maxTake);
constexpr std::size_t windowBytes = std::size_t{64} * 1024;

std::uint64_t formBytes(const MessageRow& row, int length) {
    const auto form = std::ranges::find(row.forms, length, &BodyForm::length);
    if (form == row.forms.end()) {
        return static_cast<std::uint64_t>(row.closingBytesOfOtherLengths);
    }
    std::uint64_t bytes = static_cast<std::uint64_t>(row.closingBytes);
    for (const FormPiece& piece : form->pieces) {
        bytes += piece.bytes;
    }
    return bytes;
}

}  // namespace

std::span<const std::uint8_t> LogBytes::at(std::uint64_t offset) {
    const bool held = offset >= offset_ && offset + mostMessageBytes <= offset_ + memory_.size();
    if (!held && !path_.empty()) {
        if (!file_.is_open()) {
            file_.open(path_, std::ios::binary);
            buffer_.resize(windowBytes);
        }
        offset_ = offset;
        file_.clear();
        file_.seekg(static_cast<std::streamoff>(offset));
        file_.read(reinterpret_cast<char*>(buffer_.data()), static_cast<std::streamsize>(buffer_.size()));
        const auto got = static_cast<std::size_t>(file_.gcount());
        memory_ = std::span(buffer_).first(got);
    }
    const std::uint64_t start = std::min<std::uint64_t>(offset - offset_, memory_.size());
    const auto rest = memory_.subspan(static_cast<std::size_t>(start));
    return rest.first(std::min(rest.size(), mostMessageBytes));
}

reading::LogReader LogBytes::reader() const {
    std::FILE* const file = path_.empty() ? nullptr : std::fopen(path_.c_str(), "rb");
    return file == nullptr ? reading::LogReader(memory_) : reading::LogReader(file);
}

std::uint64_t convertedBytes(MessageId id, std::size_t row, int length) {
    if (row == noRow) {
        constexpr std::uint64_t idBytes = 2;
        return id.first == '>' ? idBytes : headerBytes + static_cast<std::uint64_t>(length) + binaryLineEnd;
    }
    const MessageRow& known = messageTable[row];
    const auto closing = static_cast<std::uint64_t>(known.closingBytes);
    switch (known.reading) {
        case Reading::block:
            return headerBytes +
                   static_cast<std::uint64_t>(std::max(0, length + known.lineEndBytes - known.closingBytes)) +
                   closing;
        case Reading::fixedBlock:
            return headerBytes + static_cast<std::uint64_t>(known.assumedLength + known.lineEndBytes);
        case Reading::array:
            return headerBytes +
                   static_cast<std::uint64_t>((length - 1) / known.elementBytes * known.elementBytes) +
                   closing;
        case Reading::forms: break;
    }
    return headerBytes + formBytes(known, length);
}

// The converter's own reader, from where it stands up to `offset` or beyond.
void ConverterWalk::readOn(std::uint64_t offset) {
    while (position_ < offset) {
        const auto bytes = bytes_.at(position_);
        LogStream stream(bytes);
        readMessage(stream, staging_);
        const std::size_t left = stream.take(mostMessageBytes).size();
        if (left == bytes.size()) {  // less than an id, or no file any more
            position_ = offset;
            return;
        }
        position_ += bytes.size() - left;
    }
}

bool ConverterWalk::meets(const reading::Message& message) {
    readOn(message.offset);
    if (position_ > message.offset) {
        ++lost_;
        lostEpochs_ += message.row == orbconv::rowOf("TD") ? 1 : 0;
        if (example_.empty()) {
            example_ = cause_;
        }
        return false;
    }
    position_ += convertedBytes(message.id, message.row, static_cast<int>(message.body.size()));
    if (position_ != message.offset + message.bytes) {
        cause_ = "behind " + placeText(message) + ", of length " + std::to_string(message.body.size());
    }
    return true;
}

void ConverterWalk::passDamage(const reading::Damage& damage) {
    if (position_ != damage.offset) {
        return;  // out of step already
    }
    cause_ = "behind damage at offset " + std::to_string(damage.offset);
}

void ConverterWalk::tell(FindingTally& tally) const {
    tally.add(FindingId::outOfStep, lost_,
              [&] { return "first " + example_ + "; ends of epochs: " + std::to_string(lostEpochs_); });
}

}  // namespace orbconv::inspect
