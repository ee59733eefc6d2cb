#include "analysis/steady/SpeedLimit.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace korvane::steady {

void SpeedLimit::reset(double seconds, const MapBytes& map) {
    marks_.fill(map);
    next_ = 0;
    markedAt_ = seconds;
    seconds_ = seconds;
    counts_ = 0.0;
    proved(map);
}

void SpeedLimit::proved(const MapBytes& map) {
    proved_ = map;
    least_ = map;
    most_ = map;
}

void SpeedLimit::pass(double seconds, const MapBytes& map) {
    counts_ = std::min(counts_ + std::max(seconds - seconds_, 0.0) * kCountsPerSecond, kCountsPerSecond);
    seconds_ = seconds;
    if (std::abs(seconds - markedAt_) >= kInterval) {
        markedAt_ = seconds;
        marks_[next_] = map;
        next_ = (next_ + 1) % kMarks;
    }
}

bool SpeedLimit::allows(std::size_t cell, int byte) const {
    const int least = std::min<int>(least_.at(cell), byte);
    const int most = std::max<int>(most_.at(cell), byte);
    return most - least <= 1 || 100.0 * (most - least) <= kMostPercent * least;
}

void SpeedLimit::spend(std::size_t cell, int from, int to) {
    counts_ -= std::abs(to - from);
    least_.at(cell) = static_cast<std::uint8_t>(std::min<int>(least_.at(cell), to));
    most_.at(cell) = static_cast<std::uint8_t>(std::max<int>(most_.at(cell), to));
}

void SpeedLimit::settle(std::size_t cell, std::uint8_t byte) {
    proved_.at(cell) = byte;
    least_.at(cell) = byte;
    most_.at(cell) = byte;
    for (MapBytes& map : marks_) {
        map.at(cell) = byte;
    }
}

}  // namespace korvane::steady
