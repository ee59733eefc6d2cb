#include "ecu/server/LineQueue.h"

#include <algorithm>

namespace korvane::ecu {

namespace {

constexpr std::int64_t kNanosPerMicro = 1000;

// Rounded up, so that a byte is never reported before it has arrived.
Micros micros(std::int64_t nanos) {
    const std::int64_t whole = nanos / kNanosPerMicro;
    return nanos % kNanosPerMicro > 0 ? whole + 1 : whole;
}

}  // namespace

void LineQueue::setBaud(int baud) {
    byteTime_ = 10'000'000'000 / std::max(baud, 1);
}

void LineQueue::send(std::span<const std::uint8_t> frame, Micros earliest) {
    // With strays, a frame takes up to twice its length.
    if (transits_.size() - first_ + 2 * frame.size() > kCapacity) {
        return;
    }
    free_ = std::max(free_, earliest * kNanosPerMicro);
    for (std::uint8_t byte : frame) {
        if (noise_.happens(faults_.add)) {
            place(static_cast<std::uint8_t>(noise_.next() >> 56U), true);
        }
        if (noise_.happens(faults_.flip)) {
            byte = static_cast<std::uint8_t>(byte ^ (1U << (noise_.next() >> 61U)));
        }
        place(byte, !noise_.happens(faults_.lose));
    }
}

void LineQueue::place(std::uint8_t byte, bool arrives) {
    free_ += byteTime_;
    if (arrives) {
        transits_.push_back({free_, byte});
    }
}

Micros LineQueue::backlog(Micros at) const {
    const Nanos now = at * kNanosPerMicro;
    return free_ > now ? micros(free_ - now) : 0;
}

Micros LineQueue::duration(std::size_t bytes) const {
    return micros(byteTime_ * static_cast<Nanos>(bytes));
}

std::optional<Micros> LineQueue::nextDue() const {
    if (first_ == transits_.size()) {
        return std::nullopt;
    }
    return micros(transits_[first_].arrival);
}

void LineQueue::take(Micros at, std::vector<std::uint8_t>& out) {
    const Nanos now = at * kNanosPerMicro;
    while (first_ < transits_.size() && transits_[first_].arrival <= now) {
        out.push_back(transits_[first_++].byte);
    }
    if (first_ == transits_.size()) {
        transits_.clear();
        first_ = 0;
    } else if (first_ > kCapacity / 2) {
        transits_.erase(transits_.begin(), transits_.begin() + static_cast<std::ptrdiff_t>(first_));
        first_ = 0;
    }
}

void LineQueue::cut(Micros at) {
    const Nanos now = at * kNanosPerMicro;
    const auto begun = [this, now](const Transit& transit) { return transit.arrival - byteTime_ < now; };
    const auto from = transits_.begin() + static_cast<std::ptrdiff_t>(first_);
    transits_.erase(std::find_if_not(from, transits_.end(), begun), transits_.end());
    free_ = transits_.empty() ? now : std::max(now, transits_.back().arrival);
}

}  // namespace korvane::ecu
