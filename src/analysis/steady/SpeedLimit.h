// Keeps the map near to what it was in the last minutes, so that a fault that is not yet known can't do much.
#pragma once

#include <array>
#include <cstdint>

#include "analysis/steady/Setup.h"

namespace korvane::steady {

class SpeedLimit {
public:
    static constexpr double kMostPercent = 3.0;  // of a cell's byte, within kWindow
    static constexpr double kWindow = 100.0;     // seconds
    static constexpr double kCountsPerSecond = 5.0;

    void reset(double seconds, const MapBytes& map);
    // To be called with each frame, before cells are changed.
    void pass(double seconds, const MapBytes& map);
    // Whether the cell may have that byte now. A single count always may, once within kWindow: a byte can't do less.
    [[nodiscard]] bool allows(std::size_t cell, int byte) const;
    // A count can be spent.
    [[nodiscard]] bool ready() const { return counts_ >= 1.0; }
    void spend(int counts) { counts_ -= counts; }
    // The map as it was so many seconds ago or a little earlier; at most kWindow.
    [[nodiscard]] const MapBytes& ago(double seconds) const;
    // A byte that the tuner has set is where the cell stands from now on.
    void settle(std::size_t cell, std::uint8_t byte);

private:
    static constexpr std::size_t kMarks = 11;

    std::array<MapBytes, kMarks> marks_{};  // the map at the last marks, one each 10 s
    std::size_t next_ = 0;
    double markedAt_ = 0.0;
    double seconds_ = 0.0;
    double counts_ = 0.0;
};

}  // namespace korvane::steady
