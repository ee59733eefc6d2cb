#include "performance/PullTimer.h"

#include "core/Numbers.h"

namespace korvane::performance {

namespace {

constexpr double kMillisPerSecond = 1000.0;

// In whole numbers, so that no rounding takes a thousandth away.
double secondsOf(platform::Micros elapsed) {
    return static_cast<double>(elapsed / platform::kMicrosPerMilli) / kMillisPerSecond;
}

}  // namespace

bool PullTimer::start(const Reading& reading, double startRpm) {
    if (state_ != State::Armed || reading.rpm < startRpm) {
        return false;
    }
    startSpeed_ = core::toSingle(reading.speed);
    startRpm_ = core::toSingle(reading.rpm);
    startedAt_ = reading.at;
    state_ = State::Running;
    return true;
}

std::optional<Pull> PullTimer::stop(const Reading& reading, double stopRpm) {
    if (state_ != State::Running || reading.rpm < stopRpm) {
        return std::nullopt;
    }
    state_ = State::Done;
    return Pull{startSpeed_, startRpm_, reading.speed, reading.rpm, secondsOf(elapsed(reading.at))};
}

bool PullTimer::rearm(double rpm, double startRpm) {
    if (state_ != State::Done || rpm > startRpm) {
        return false;
    }
    state_ = State::Armed;
    return true;
}

}  // namespace korvane::performance
