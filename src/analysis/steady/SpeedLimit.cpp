#include "analysis/steady/SpeedLimit.h"

#include <algorithm>
#include <cstdlib>

namespace korvane::steady {

void SpeedLimit::reset(double seconds, const MapBytes& map) {
    marks_.fill(map);
    next_ = 0;
    markedAt_ = seconds;
    seconds_ = seconds;
    counts_ = 0.0;
}

void SpeedLimit::pass(double seconds, const MapBytes& map) {
    counts_ = std::min(counts_ + (seconds - seconds_) * kCountsPerSecond, kCountsPerSecond);
    seconds_ = seconds;
    if (seconds - markedAt_ >= kWindow / (kMarks - 1)) {
        markedAt_ = seconds;
        marks_.at(next_) = map;
        next_ = (next_ + 1) % kMarks;
    }
}

bool SpeedLimit::allows(std::size_t cell, int byte) const {
    return std::ranges::all_of(marks_, [&](const MapBytes& map) {
        const int moved = std::abs(byte - map.at(cell));
        return moved <= 1 || 100.0 * moved <= kMostPercent * map.at(cell);
    });
}

const MapBytes& SpeedLimit::ago(double seconds) const {
    const double interval = kWindow / (kMarks - 1);
    const auto back = static_cast<std::size_t>(std::clamp(seconds / interval + 1.0, 1.0, kMarks - 0.0));
    return marks_.at((next_ + kMarks - back) % kMarks);
}

void SpeedLimit::settle(std::size_t cell, std::uint8_t byte) {
    for (MapBytes& map : marks_) {
        map.at(cell) = byte;
    }
}

}  // namespace korvane::steady
