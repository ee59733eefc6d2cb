// Where the numbers of a map lie between its lowest and its highest.
#pragma once

#include <span>
#include <vector>

namespace korvane::maps {

inline constexpr int kHeatLevels = 32;

// A level from 0, the lowest number, to kHeatLevels - 1, the highest, for each. All are 0 where all are equal.
[[nodiscard]] std::vector<int> heatLevels(std::span<const double> numbers);

}  // namespace korvane::maps
