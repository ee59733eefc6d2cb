// The step in which the engine moves on.
#pragma once

namespace korvane::ecu {

// Seconds.
inline constexpr double kStepSeconds = 0.005;

// Moves `value` by one step towards `target`, which it follows with the time constant `seconds`.
inline void follow(double& value, double target, double seconds) {
    value += (target - value) * (kStepSeconds / (kStepSeconds + seconds));
}

}  // namespace korvane::ecu
