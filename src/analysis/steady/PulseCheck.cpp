#include "analysis/steady/PulseCheck.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

bool PulseCheck::fits(double seconds, double off, double duty) {
    constexpr double kFar = 0.05;
    constexpr double kBack = 0.015;
    constexpr double kDecay = 4.0;     // seconds
    constexpr double kMeanOver = 0.3;  // seconds
    const double count = 1.0 / std::max(duty, 1.0);
    const double distance = std::fabs(off);
    const double gap = std::clamp(seconds - last_, 0.0, 1.0);
    mean_ += (off - mean_) * gap / (gap + kMeanOver);
    last_ = seconds;
    if (distance > kFar + count) {
        off_ = true;
        farAt_ = seconds;
    } else if ((std::fabs(mean_) < kBack && distance < kBack + 0.5 * count) || seconds - farAt_ > kDecay) {
        off_ = false;
    }
    return !off_;
}

void PulseCheck::expect(double seconds) {
    off_ = true;
    farAt_ = seconds;
}

}  // namespace korvane::steady
