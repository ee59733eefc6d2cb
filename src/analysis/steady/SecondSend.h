// Which changed cells are due to be sent once more: a frame may get lost on the line, and nothing tells so.
#pragma once

#include <array>
#include <cstddef>

#include "analysis/steady/Grid.h"

namespace korvane::steady {

class SecondSend {
public:
    static constexpr double kAfter = 4.0;  // seconds

    SecondSend() { reset(); }
    void reset() { dueAt_.fill(kNever); }
    void changed(std::size_t cell, double seconds) { dueAt_.at(cell) = seconds + kAfter; }
    // It has been sent again, or it is somebody else's now.
    void drop(std::size_t cell) { dueAt_.at(cell) = kNever; }
    [[nodiscard]] bool isDue(std::size_t cell, double seconds) const { return seconds >= dueAt_.at(cell); }
    // A second send of the cell is still to come.
    [[nodiscard]] bool isWaiting(std::size_t cell) const { return dueAt_.at(cell) < kNever; }

private:
    static constexpr double kNever = 1e18;

    std::array<double, kMostCells> dueAt_{};
};

}  // namespace korvane::steady
