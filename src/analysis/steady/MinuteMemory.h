// The map of a minute ago.
#pragma once

#include <array>
#include <cstdint>

#include "analysis/steady/SteadySetup.h"

namespace korvane::steady {

class MinuteMemory {
public:
    void reset(double seconds, const MapBytes& map);
    // To be called with each frame, before cells are changed.
    void pass(double seconds, const MapBytes& map);
    // The map as it was a minute ago, or up to ten seconds earlier; at the start if that is later.
    [[nodiscard]] const MapBytes& minuteAgo() const { return marks_[next_]; }
    // The cell has that byte now, and is to be taken as if it had always had it.
    void settle(std::size_t cell, std::uint8_t byte);

private:
    static constexpr std::size_t kMarks = 7;
    static constexpr double kInterval = 10.0;  // seconds

    std::array<MapBytes, kMarks> marks_{};
    std::size_t next_ = 0;
    double markedAt_ = 0.0;
};

}  // namespace korvane::steady
