#include "platform/virtual/MemoryLine.h"

#include <algorithm>
#include <utility>

namespace korvane::platform {

MemoryLine::MemoryLine(EventPump& pump, LineDevice* device)
    : pump_(pump), device_(device), alarm_(pump.makeAlarm([this] { advance(); }, AlarmKind::Device)) {}

void MemoryLine::open(int, int baud, LineListener& listener) {
    advance();
    listener_ = &listener;
    static_cast<void>(setBaud(baud));
}

void MemoryLine::close() {
    listener_ = nullptr;
}

std::string MemoryLine::deviceOf(int) {
    return device_ != nullptr ? "the built-in virtual ECU" : "a line in memory";
}

void MemoryLine::write(std::span<const std::uint8_t> bytes) {
    for (const auto byte : bytes) {
        busyUntil_ = std::max(busyUntil_, pump_.now()) + byteTime();
        output_.push_back({byte, busyUntil_});
    }
    schedule();
}

std::size_t MemoryLine::pendingOutput() {
    const Micros now = pump_.now();
    return static_cast<std::size_t>(std::count_if(output_.begin(), output_.end(),
                                                  [&](const auto& travelling) { return travelling.arrival > now; }));
}

bool MemoryLine::setBaud(int baud) {
    if (baud <= 0) {
        return false;
    }
    baud_ = baud;
    if (device_ != nullptr) {
        device_->setBaud(baud);
    }
    return true;
}

void MemoryLine::inject(std::span<const std::uint8_t> bytes) {
    if (listener_ != nullptr && !bytes.empty()) {
        listener_->lineReceived(bytes);
    }
}

void MemoryLine::pullOut() {
    if (LineListener* const listener = std::exchange(listener_, nullptr); listener != nullptr) {
        listener->lineLost("The device is gone. Was its cable pulled out?");
    }
}

bool MemoryLine::deviceFirst(Micros by) const {
    const auto due = device_ != nullptr ? device_->nextDue() : std::nullopt;
    return due && *due <= by && (output_.empty() || *due < output_.front().arrival);
}

// Both directions move on in the order of time up to now.
void MemoryLine::advance() {
    const Micros now = pump_.now();
    arrived_.clear();
    while (deviceFirst(now) || (!output_.empty() && output_.front().arrival <= now)) {
        if (deviceFirst(now)) {
            device_->take(*device_->nextDue(), arrived_);
            continue;
        }
        const auto travelling = output_.front();
        output_.pop_front();
        if (device_ != nullptr) {
            device_->receive(travelling.byte, travelling.arrival);
        }
    }
    schedule();
    inject(arrived_);
}

void MemoryLine::schedule() {
    std::optional<Micros> next = device_ != nullptr ? device_->nextDue() : std::nullopt;
    if (!output_.empty() && (!next || output_.front().arrival < *next)) {
        next = output_.front().arrival;
    }
    if (next) {
        alarm_->callAt(*next);
    } else {
        alarm_->cancel();
    }
}

}  // namespace korvane::platform
