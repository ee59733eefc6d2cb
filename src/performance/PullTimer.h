// Times pulls between two engine speeds.
#pragma once

#include <optional>

#include "platform/EventPump.h"

namespace korvane::performance {

// What is known at one tick.
struct Reading {
    double rpm = 0.0;
    double speed = 0.0;  // km/h
    platform::Micros at = 0;
};

// A pull that has ended.
struct Pull {
    float startSpeed = 0.0F;
    float startRpm = 0.0F;
    double endSpeed = 0.0;
    double endRpm = 0.0;
    double seconds = 0.0;  // cut to three decimals
};

// A new timer is armed. Each tick offers its reading to start(), stop() and rearm(), in this order: one tick may start
// a pull and end it.
class PullTimer {
public:
    enum class State { Armed, Running, Done };

    [[nodiscard]] State state() const { return state_; }
    // Since the start of the pull.
    [[nodiscard]] platform::Micros elapsed(platform::Micros now) const { return now - startedAt_; }

    // Armed, and at `startRpm` or above: the pull begins. Raises RuntimeError 6 for a reading that a Single can't hold,
    // and stays armed.
    [[nodiscard]] bool start(const Reading& reading, double startRpm);
    // Running, and at `stopRpm` or above: the pull has ended.
    [[nodiscard]] std::optional<Pull> stop(const Reading& reading, double stopRpm);
    // Done, and at `startRpm` or below: armed for the next one.
    [[nodiscard]] bool rearm(double rpm, double startRpm);

private:
    State state_ = State::Armed;
    platform::Micros startedAt_ = 0;
    float startSpeed_ = 0.0F;
    float startRpm_ = 0.0F;
};

}  // namespace korvane::performance
