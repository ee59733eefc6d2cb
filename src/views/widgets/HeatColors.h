// Colours from low to high: their lightness rises in even steps, and from blue to yellow, so that eyes that don't tell
// red from green see the same order.
#pragma once

#include <QColor>

namespace korvane::views {

inline constexpr int kHeatColors = 32;

// A level from 0 to kHeatColors - 1; others count as the nearest.
[[nodiscard]] QColor heatColor(int level);

}  // namespace korvane::views
