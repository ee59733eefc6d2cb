// A clock that stands still except inside waits, and then jumps from event to event.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/EventPump.h"

namespace korvane::platform {

// Events due at the same moment run in the order in which they were asked for, so every run is the same.
class VirtualPump : public EventPump {
public:
    explicit VirtualPump(WallTime start = {2026, 1, 5, 12, 0, 0});
    ~VirtualPump() override;

    [[nodiscard]] Micros now() const override { return now_; }
    [[nodiscard]] WallTime wallTime() const override;

    void pump() override;
    void wait(int milliseconds) override;
    void sleep(int milliseconds) override;
    // Without patience: events that always ask for more are left after ten minutes of the clock, or after a hundred
    // thousand of them.
    void whenSettled(std::function<void()> call, Micros patience) override;
    [[nodiscard]] std::unique_ptr<Alarm> makeAlarm(std::function<void()> call,
                                                   AlarmKind kind = AlarmKind::Program) override;

    // Lets events run until `moment` (a wait in microseconds), for tests that look at single bytes.
    void runUntil(Micros moment);
    // Sets the clock on the wall, and nothing else, forward or (below 0) back.
    void shiftWallTime(std::int64_t seconds) { wallStart_ += seconds; }

private:
    class VirtualAlarm;
    struct Entry {
        Micros due;
        std::uint64_t order;
        VirtualAlarm* alarm;
        bool operator<(const Entry& other) const { return due != other.due ? due < other.due : order < other.order; }
    };
    // What is armed, the next one last. Few at any time, so that inserting into the row beats a tree.
    using Entries = std::vector<Entry>;

    // Runs the first entry if it is due by `limit` and was asked for before `before`; false if there is none.
    bool runNext(Micros limit, std::uint64_t before);

    std::int64_t wallStart_;
    Micros now_ = 0;
    std::uint64_t orders_ = 0;
    bool blocked_ = false;
    Entries entries_;
    Entries deviceEntries_;
};

}  // namespace korvane::platform
