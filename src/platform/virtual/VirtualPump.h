// A clock that moves only inside waits, and there jumps from event to event.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>

#include "platform/AlarmPump.h"

namespace korvane::platform {

// Every run is the same.
class VirtualPump : public AlarmPump {
public:
    explicit VirtualPump(WallTime start = {2026, 1, 5, 12, 0, 0});
    ~VirtualPump() override;

    [[nodiscard]] Micros now() const override { return now_; }
    [[nodiscard]] WallTime wallTime() const override;

    void pump() override;
    void wait(int milliseconds) override;
    void sleep(int milliseconds) override;
    // `patience` is not used: events that always ask for more are given up after ten minutes of the clock, or after a
    // hundred thousand of them.
    void whenSettled(std::function<void()> call, Micros patience) override;

    // Lets events run until `moment` (a wait in microseconds), for tests that examine single bytes.
    void runUntil(Micros moment);
    // Sets the time of day, and nothing else, forward or (below 0) back.
    void shiftWallTime(std::int64_t seconds) { wallStart_ += seconds; }

private:
    [[nodiscard]] bool mayRun(AlarmKind kind) const override { return kind == AlarmKind::Device || !blocked_; }
    void starting(Micros due) override { now_ = std::max(now_, due); }

    std::int64_t wallStart_;
    Micros now_ = 0;
    bool blocked_ = false;
};

}  // namespace korvane::platform
