#include "analysis/steady/CountLimit.h"

#include <algorithm>

namespace korvane::steady {

int CountLimit::left(double seconds) const {
    return static_cast<int>(std::ranges::count_if(spentAt_, [seconds](double spent) { return seconds - spent > 1.0; }));
}

void CountLimit::spend(double seconds, int counts) {
    for (int i = 0; i < counts; ++i) {
        spentAt_[next_] = seconds;
        next_ = (next_ + 1) % kCountsPerSecond;
    }
}

}  // namespace korvane::steady
