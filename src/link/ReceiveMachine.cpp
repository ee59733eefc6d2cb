#include "link/ReceiveMachine.h"

#include <algorithm>

#include "link/Commands.h"
#include "link/Frames.h"

namespace korvane::link {

namespace {

// rxTotal() until the length is known; nothing uses it.
constexpr std::int16_t kTotalUnknown = 20;

constexpr std::int32_t kFirstPayloadPosition = 2;

}  // namespace

std::size_t ReceiveMachine::consume(std::span<const std::uint8_t> bytes) {
    std::size_t taken = 0;
    ready_ = false;
    while (taken < bytes.size() && !ready_) {
        if (position_ == 0) {
            taken += hunt(bytes.subspan(taken));
        } else if (position_ == 1) {
            takeLength(bytes[taken++]);
        } else if (position_ == total_) {
            takeComplement(bytes[taken++]);
        } else {
            taken += takePayload(bytes.subspan(taken));
        }
    }
    return taken;
}

void ReceiveMachine::frameDone() {
    command_ = 0;
    length_ = 0;
    ready_ = false;
}

std::span<const std::uint8_t> ReceiveMachine::payload() const {
    return std::span(current_->bytes).first(current_->size);
}

std::size_t ReceiveMachine::hunt(std::span<const std::uint8_t> bytes) {
    const auto* const found =
        std::find_if(bytes.data(), bytes.data() + bytes.size(), [](std::uint8_t byte) { return kIsFrameCode[byte]; });
    if (found == bytes.data() + bytes.size()) {
        command_ = 0;
        noteSkipped(bytes.size());
        return bytes.size();
    }
    const auto skipped = static_cast<std::size_t>(found - bytes.data());
    noteSkipped(skipped);
    skipping_ = false;
    command_ = *found;
    position_ = 1;
    total_ = kTotalUnknown;
    return skipped + 1;
}

void ReceiveMachine::noteSkipped(std::size_t count) {
    if (count > 0 && !skipping_) {
        skipping_ = true;
        ++resyncs_;
    }
}

void ReceiveMachine::takeLength(std::uint8_t byte) {
    length_ = byte;
    total_ = static_cast<std::int16_t>(byte + 2);
    position_ = kFirstPayloadPosition;
    current_ = &freePayload();
    // A handler may read the first byte of an empty payload: it reads zero.
    current_->size = std::max<std::size_t>(byte, 1);
    std::fill_n(current_->bytes.begin(), current_->size, std::uint8_t{0});
}

ReceiveMachine::Payload& ReceiveMachine::freePayload() {
    const auto found =
        std::find_if(payloads_.begin(), payloads_.end(), [](const Payload& each) { return !each.inUse; });
    return found == payloads_.end() ? payloads_.emplace_back() : *found;
}

std::size_t ReceiveMachine::takePayload(std::span<const std::uint8_t> bytes) {
    const auto count = std::min(bytes.size(), static_cast<std::size_t>(total_ - position_));
    std::copy_n(bytes.data(), count, current_->bytes.data() + (position_ - kFirstPayloadPosition));
    position_ += static_cast<std::int32_t>(count);
    return count;
}

void ReceiveMachine::takeComplement(std::uint8_t byte) {
    position_ = 0;
    if (byte == complement(command_)) {
        ready_ = true;
    } else {
        drop(byte);
    }
}

void ReceiveMachine::drop(std::uint8_t wrongComplement) {
    const DroppedFrame frame{command_, length_, wrongComplement};
    command_ = 0;
    length_ = 0;
    ++dropped_;
    if (frameDropped) {
        frameDropped(frame);
    }
}

}  // namespace korvane::link
