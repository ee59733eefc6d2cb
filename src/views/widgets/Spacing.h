// Distances that all windows use.
#pragma once

namespace korvane::views {

inline constexpr int kSpacing = 8;  // between the parts of a window, logical pixels

}  // namespace korvane::views
