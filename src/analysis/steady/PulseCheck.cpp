#include "analysis/steady/PulseCheck.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

bool PulseCheck::fits(double seconds, double off, double duty) {
    constexpr double kFar = 0.05;
    constexpr double kBack = 0.015;
    constexpr double kDecay = 4.0;  // seconds
    const double count = 1.0 / std::max(duty, 1.0);
    const double distance = std::fabs(off);
    if (distance > kFar + count) {
        off_ = true;
        farAt_ = seconds;
    } else if (distance < kBack + 0.5 * count || seconds - farAt_ > kDecay) {
        off_ = false;
    }
    return !off_;
}

}  // namespace korvane::steady
