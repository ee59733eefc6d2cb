// Distances that all windows keep.
#pragma once

namespace korvane::views {

inline constexpr int kSpacing = 8;  // between the parts of a window, logical pixels

}  // namespace korvane::views
