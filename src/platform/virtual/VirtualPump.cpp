#include "platform/virtual/VirtualPump.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace korvane::platform {

namespace {

constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();
constexpr Micros kLongestSettling = Micros{600'000} * kMicrosPerMilli;
constexpr int kMostSettling = 100'000;

}  // namespace

class VirtualPump::VirtualAlarm final : public Alarm {
public:
    VirtualAlarm(VirtualPump& pump, Entries& entries, std::function<void()> handler)
        : call(std::move(handler)), pump_(pump), entries_(entries) {}
    ~VirtualAlarm() override { cancel(); }

    void callAt(Micros due) override {
        cancel();
        entry_ = {std::max(due, pump_.now_), pump_.orders_++, this};
        entries_.insert(std::upper_bound(entries_.begin(), entries_.end(), entry_, later), entry_);
        armed_ = true;
    }

    void cancel() override {
        if (armed_) {
            entries_.erase(std::lower_bound(entries_.begin(), entries_.end(), entry_, later));
            armed_ = false;
        }
    }

    std::function<void()> call;

private:
    static bool later(const Entry& one, const Entry& other) { return other < one; }

    VirtualPump& pump_;
    Entries& entries_;
    Entry entry_{};
    bool armed_ = false;
};

VirtualPump::VirtualPump(WallTime start) : wallStart_(secondsOf(start)) {}

VirtualPump::~VirtualPump() = default;

WallTime VirtualPump::wallTime() const {
    return wallTimeOf(wallStart_ + now_ / (1000 * kMicrosPerMilli));
}

void VirtualPump::pump() {
    // What the events ask for while they run waits for the next chance, so a pump always ends.
    const auto before = orders_;
    while (runNext(now_, before)) {
    }
}

void VirtualPump::wait(int milliseconds) {
    runUntil(now_ + std::max(milliseconds, 0) * kMicrosPerMilli);
}

void VirtualPump::runUntil(Micros moment) {
    while (runNext(moment, kAll)) {
    }
    now_ = std::max(now_, moment);
}

void VirtualPump::sleep(int milliseconds) {
    const Micros end = now_ + std::max(milliseconds, 0) * kMicrosPerMilli;
    const bool outer = std::exchange(blocked_, true);
    runUntil(end);
    blocked_ = outer;
}

void VirtualPump::whenSettled(std::function<void()> call, Micros) {
    const Micros latest = now_ + kLongestSettling;
    for (int events = 0; events < kMostSettling && now_ <= latest && runNext(now_, kAll); ++events) {
    }
    call();
}

bool VirtualPump::runNext(Micros limit, std::uint64_t before) {
    const Entries* source = nullptr;
    if (!deviceEntries_.empty()) {
        source = &deviceEntries_;
    }
    if (!blocked_ && !entries_.empty() && (source == nullptr || entries_.back() < source->back())) {
        source = &entries_;
    }
    if (source == nullptr || source->back().due > limit || source->back().order >= before) {
        return false;
    }
    VirtualAlarm* const alarm = source->back().alarm;
    now_ = std::max(now_, source->back().due);
    // A copy: a call may delete its own alarm.
    const auto call = alarm->call;
    alarm->cancel();
    call();
    return true;
}

std::unique_ptr<Alarm> VirtualPump::makeAlarm(std::function<void()> call, AlarmKind kind) {
    auto& entries = kind == AlarmKind::Device ? deviceEntries_ : entries_;
    return std::make_unique<VirtualAlarm>(*this, entries, std::move(call));
}

}  // namespace korvane::platform
