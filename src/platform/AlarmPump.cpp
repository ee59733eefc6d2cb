#include "platform/AlarmPump.h"

#include <algorithm>
#include <utility>

namespace korvane::platform {

class AlarmPump::QueuedAlarm final : public Alarm {
public:
    QueuedAlarm(AlarmPump& pump, Entries& entries, std::function<void()> handler)
        : call(std::make_shared<const std::function<void()>>(std::move(handler))), pump_(pump), entries_(entries) {}
    ~QueuedAlarm() override { cancel(); }
    QueuedAlarm(const QueuedAlarm&) = delete;
    QueuedAlarm& operator=(const QueuedAlarm&) = delete;

    void callAt(Micros due) override {
        cancel();
        entry_ = {std::max(due, pump_.now()), pump_.orders_++, this};
        entries_.insert(std::upper_bound(entries_.begin(), entries_.end(), entry_, later), entry_);
        armed_ = true;
        pump_.asked();
    }

    void cancel() override {
        if (armed_) {
            entries_.erase(std::lower_bound(entries_.begin(), entries_.end(), entry_, later));
            armed_ = false;
        }
    }

    // Shared, because a call may delete its own alarm.
    const std::shared_ptr<const std::function<void()>> call;

private:
    static bool later(const Entry& one, const Entry& other) { return other < one; }

    AlarmPump& pump_;
    Entries& entries_;
    Entry entry_{};
    bool armed_ = false;
};

AlarmPump::AlarmPump() = default;

AlarmPump::~AlarmPump() = default;

std::unique_ptr<Alarm> AlarmPump::makeAlarm(std::function<void()> call, AlarmKind kind) {
    return std::make_unique<QueuedAlarm>(*this, entries_.at(static_cast<std::size_t>(kind)), std::move(call));
}

const AlarmPump::Entry* AlarmPump::first() const {
    const Entry* first = nullptr;
    for (const auto kind : {AlarmKind::Program, AlarmKind::Command, AlarmKind::Device}) {
        const Entries& entries = entries_.at(static_cast<std::size_t>(kind));
        if (!entries.empty() && (first == nullptr || entries.back() < *first) && mayRun(kind)) {
            first = &entries.back();
        }
    }
    return first;
}

bool AlarmPump::isDue(AlarmKind kind) const {
    const Entries& entries = entries_.at(static_cast<std::size_t>(kind));
    return mayRun(kind) && !entries.empty() && entries.back().due <= now();
}

bool AlarmPump::runFirst(Micros limit, std::uint64_t before) {
    const Entry* const entry = first();
    if (entry == nullptr || entry->due > limit || entry->order >= before) {
        return false;
    }
    const Micros due = entry->due;
    QueuedAlarm* const alarm = entry->alarm;
    const auto call = alarm->call;
    alarm->cancel();
    starting(due);
    (*call)();
    return true;
}

}  // namespace korvane::platform
