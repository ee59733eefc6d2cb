// Keeps each cell near to what it was at lambda's last proof of life, so that a fault that is not yet known can't do
// much, and remembers the map of the last minute.
#pragma once

#include <array>
#include <cstdint>

#include "analysis/steady/SteadySetup.h"

namespace korvane::steady {

class SpeedLimit {
public:
    static constexpr double kMostPercent = 3.0;  // of a cell's byte, from one proof to the next
    static constexpr double kCountsPerSecond = 5.0;

    void reset(double seconds, const MapBytes& map);
    // Lambda has been proved to follow: from here on each cell may move anew.
    void proved(const MapBytes& map);
    // To be called with each frame, before cells are changed.
    void pass(double seconds, const MapBytes& map);
    // Whether the cell may have that byte now: all that it has had since the proof stays within kMostPercent. A single
    // count is always allowed, since a byte can't do less.
    [[nodiscard]] bool allows(std::size_t cell, int byte) const;
    // A count can be spent.
    [[nodiscard]] bool ready() const { return counts_ >= 1.0; }
    // The cell gets that byte.
    void spend(std::size_t cell, int from, int to);
    // The map at the last proof.
    [[nodiscard]] const MapBytes& atProof() const { return proved_; }
    // The map as it was a minute ago, or up to ten seconds earlier; at the start if that is later.
    [[nodiscard]] const MapBytes& minuteAgo() const { return marks_[next_]; }
    // A byte that the tuner has set is where the cell stands from now on.
    void settle(std::size_t cell, std::uint8_t byte);

private:
    static constexpr std::size_t kMarks = 7;
    static constexpr double kInterval = 10.0;  // seconds

    MapBytes proved_{};
    MapBytes least_{};  // of each cell since the proof
    MapBytes most_{};
    std::array<MapBytes, kMarks> marks_{};
    std::size_t next_ = 0;
    double markedAt_ = 0.0;
    double seconds_ = 0.0;
    double counts_ = 0.0;
};

}  // namespace korvane::steady
