#include "link/LinkState.h"

#include <algorithm>

#include "controls/PropertyTable.h"
#include "link/Commands.h"
#include "link/Frames.h"

namespace korvane::link {

namespace {

constexpr int kPolls = 3;

using controls::Object;
using controls::PropertyInfo;
using controls::Value;

const LinkState& link(const Object& object) {
    return dynamic_cast<const LinkState&>(object);
}

template <auto Count>
constexpr PropertyInfo count(std::string_view name) {
    return {name, [](const Object& object) -> Value { return link(object).counts().*Count; }, nullptr};
}

template <auto Time>
constexpr PropertyInfo roundTrip(std::string_view name) {
    return {name,
            [](const Object& object) -> Value {
                const auto times = link(object).roundTrip();
                return times ? Value(static_cast<double>((*times).*Time) / platform::kMicrosPerMilli) : Value();
            },
            nullptr};
}

constexpr std::array kProperties{
    PropertyInfo{"state", [](const Object& object) -> Value { return std::string(nameOf(link(object).state())); },
                 nullptr},
    PropertyInfo{"age", [](const Object& object) -> Value { return link(object).age() / platform::kMicrosPerMilli; },
                 nullptr},
    PropertyInfo{"busy", [](const Object& object) -> Value { return link(object).isBusy(); }, nullptr},
    count<&LinkState::Counts::frames>("frames"),
    count<&LinkState::Counts::bytes>("bytes"),
    count<&LinkState::Counts::dropped>("dropped"),
    count<&LinkState::Counts::resyncs>("resyncs"),
    count<&LinkState::Counts::unanswered>("unanswered"),
    roundTrip<&PollTimes::RoundTrip::median>("roundTrip"),
    roundTrip<&PollTimes::RoundTrip::worst>("roundTripWorst"),
};

}  // namespace

std::string_view nameOf(LinkState::State state) {
    constexpr std::array<std::string_view, 5> kNames{"closed", "silent", "live", "late", "paused"};
    return kNames.at(static_cast<std::size_t>(state));
}

LinkState::LinkState(platform::EventPump& pump, controls::MSComm& port, controls::Timer& poll,
                     const ReceiveMachine& receiver)
    : pump_(pump),
      port_(port),
      poll_(poll),
      receiver_(receiver),
      // A message box does not stop the time: what is shown under it gets old.
      look_(pump.makeAlarm([this] { refresh(); }, platform::AlarmKind::Command)),
      pollRuns_(poll.Enabled) {
    port_.addObserver(*this);
    poll_.addObserver(*this);
}

LinkState::~LinkState() {
    port_.removeObserver(*this);
    poll_.removeObserver(*this);
}

platform::Micros LinkState::lateAfter() const {
    return std::max(kPolls * platform::Micros{poll_.Interval} * platform::kMicrosPerMilli, platform::kMicrosPerSecond);
}

platform::Micros LinkState::ageFrom() const {
    return open_ ? live_.value_or(opened_) : opened_;
}

// A live frame is due since then.
platform::Micros LinkState::awaitedFrom() const {
    return std::max(ageFrom(), pollFrom_);
}

// Polls stop while a message box is open. One that was shown before half of the time was over leaves the other half
// without a poll, and even the longest interval leaves no more than a third of it.
bool LinkState::isAskedBefore(platform::Micros due) const {
    return !asked_ || *asked_ > due - lateAfter() / 2;
}

bool LinkState::programWaits() const {
    const auto due = awaitedFrom() + lateAfter();
    return state() == State::Paused && pollRuns_ && pump_.now() >= due && !isAskedBefore(due);
}

LinkState::State LinkState::stateAt(platform::Micros now) const {
    if (!open_) {
        return State::Closed;
    }
    if (frames_ == 0) {
        return State::Silent;
    }
    if (!pollRuns_) {
        return State::Paused;
    }
    if (live_ && now - *live_ < lateAfter()) {
        return State::Live;
    }
    if (const auto due = awaitedFrom() + lateAfter(); now >= due) {
        return isAskedBefore(due) ? State::Late : State::Paused;
    }
    return live_ ? State::Paused : State::Silent;
}

void LinkState::refresh() {
    const State state = stateAt(pump_.now());
    const auto due = awaitedFrom() + lateAfter();
    if (frames_ > 0 && pollRuns_ && state != State::Closed && due > pump_.now()) {
        look_->callAt(due);
    } else {
        look_->cancel();
    }
    wasLate_ = wasLate_ || state == State::Late;
    if (state != shown_) {
        shown_ = state;
        changed(stateProperty());
    }
}

LinkState::Counts LinkState::counts() const {
    return {frames_, bytes_, receiver_.dropped() - droppedBefore_, receiver_.resyncs() - resyncsBefore_,
            polls_.unanswered(pump_.now())};
}

// The time without a poll is not the ECU's.
void LinkState::pollSent() {
    const auto now = pump_.now();
    const bool hasWaited = programWaits();
    asked_ = now;
    polls_.sent(now);
    if (hasWaited) {
        pollFrom_ = now;
        refresh();
    }
}

void LinkState::frameReceived(std::uint8_t code, platform::Micros now) {
    ++frames_;
    if (code == kLiveDataFrame) {
        liveBytes_ = receiver_.rxLength() + kFrameOverhead;
        polls_.answered(now, frameTime());
        live_ = now;
        wasLate_ = false;
    } else {
        polls_.otherFrame();
    }
    if (shown_ != State::Live || frames_ == 1) {
        refresh();
    }
    changed(countsProperty());
}

// The device is asked once for its rate.
platform::Micros LinkState::frameTime() {
    if (baud_ == 0 && open_) {
        baud_ = port_.lineBaud();
    }
    return baud_ <= 0 ? 0 : platform::kMicrosPerSecond * kBitsPerByte * liveBytes_ / baud_;
}

void LinkState::bytesReceived(std::size_t count) {
    bytes_ += static_cast<std::int64_t>(count);
    const auto losses = receiver_.dropped() + receiver_.resyncs();
    if (losses != lossesTold_) {
        lossesTold_ = losses;
        changed(countsProperty());
    }
}

void LinkState::propertyChanged(Object&, const void* property) {
    if (property == port_.portOpenProperty()) {
        portChanged();
    } else if (property == &poll_.Enabled || property == &poll_.Interval) {
        pollChanged();
    }
}

void LinkState::portChanged() {
    open_ = port_.PortOpen();
    opened_ = pump_.now();
    live_.reset();
    if (open_) {
        frames_ = 0;
        bytes_ = 0;
        wasLate_ = false;
        liveBytes_ = 0;
        baud_ = 0;
        droppedBefore_ = receiver_.dropped();
        resyncsBefore_ = receiver_.resyncs();
        polls_.reset();
        asked_.reset();
    } else {
        polls_.forgetOpen();
    }
    refresh();
    changed(countsProperty());
    if (transfers_ > 0) {
        changed(busyProperty());
    }
}

void LinkState::pollChanged() {
    if (poll_.Enabled != pollRuns_) {
        pollRuns_ = poll_.Enabled;
        pollFrom_ = pump_.now();
        if (pollRuns_) {
            polls_.restarted(pollFrom_);
        }
    }
    refresh();
}

void LinkState::transferChanged(int change) {
    transfers_ += change;
    changed(busyProperty());
}

std::vector<std::span<const PropertyInfo>> LinkState::propertyTables() const {
    return {kProperties};
}

}  // namespace korvane::link
