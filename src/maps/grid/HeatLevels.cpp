#include "maps/grid/HeatLevels.h"

#include <algorithm>

namespace korvane::maps {

std::vector<int> heatLevels(std::span<const double> numbers) {
    std::vector<int> levels(numbers.size(), 0);
    if (numbers.empty()) {
        return levels;
    }
    const auto [low, high] = std::minmax_element(numbers.begin(), numbers.end());
    const double range = *high - *low;
    for (std::size_t i = 0; range > 0 && i < numbers.size(); ++i) {
        const auto level = static_cast<int>((numbers[i] - *low) / range * kHeatLevels);
        levels[i] = std::min(level, kHeatLevels - 1);
    }
    return levels;
}

}  // namespace korvane::maps
