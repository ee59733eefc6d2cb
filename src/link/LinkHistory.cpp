#include "link/LinkHistory.h"

#include <algorithm>

#include "link/Commands.h"

namespace korvane::link {

namespace {

constexpr int kPollBytes = 1;

std::int64_t faultsOf(const LinkState::Counts& counts) {
    return counts.dropped + counts.resyncs + counts.unanswered;
}

// Counts begin anew with each connection.
int grown(std::int64_t before, std::int64_t now) {
    return static_cast<int>(now >= before ? now - before : now);
}

}  // namespace

LinkHistory::LinkHistory(platform::EventPump& pump, LinkState& state)
    : pump_(pump), state_(state), next_(pump.makeAlarm([this] { takeSecond(); })) {
    state_.addObserver(*this);
    seconds_.reserve(kSeconds);
}

LinkHistory::~LinkHistory() {
    state_.removeObserver(*this);
}

void LinkHistory::propertyChanged(controls::Object&, const void* property) {
    if (!runs_ && property == state_.stateProperty() && state_.state() != LinkState::State::Closed) {
        runs_ = true;
        begin_ = pump_.now();
        next_->callAt(begin_ + platform::kMicrosPerSecond);
    }
}

// A moment that came late, because the program was busy, makes its second longer.
void LinkHistory::takeSecond() {
    const auto counts = state_.counts();
    const auto trip = state_.roundTripSince(begin_);
    Second second{grown(frames_, counts.frames), {}, grown(faults_, faultsOf(counts))};
    if (trip) {
        second.roundTrip = static_cast<double>(trip->median) / platform::kMicrosPerMilli;
    }
    if (seconds_.size() == kSeconds) {
        seconds_.erase(seconds_.begin());
    }
    seconds_.push_back(second);
    frames_ = counts.frames;
    faults_ = faultsOf(counts);
    begin_ = pump_.now();
    next_->callAt(begin_ + platform::kMicrosPerSecond);
    changed(&seconds_);
}

PollLimits pollLimits(int baud, int intervalMs, int answerBytes) {
    constexpr double kMilliseconds = 1000.0;
    const double bits = static_cast<double>(kBitsPerByte) * (kPollBytes + answerBytes);
    return {kMilliseconds / std::max(intervalMs, 1), std::max(baud, 0) / bits};
}

}  // namespace korvane::link
