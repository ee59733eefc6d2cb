// The grid that a map is: engine speed along its columns, load down its rows.
#pragma once

namespace korvane::maps {

// Cell index = row * columns + column. Column 0 is 1000 rpm and each further one 500 more; row r for load
// from r * 10 to (r + 1) * 10 percent.
struct MapGeometry {
    int rows;
    int columns;

    [[nodiscard]] constexpr int cells() const { return rows * columns; }
    [[nodiscard]] constexpr bool has(int cell) const { return cell >= 0 && cell < cells(); }
    [[nodiscard]] constexpr int rpmOf(int cell) const { return 1000 + 500 * (cell % columns); }
};

inline constexpr MapGeometry kOrdinaryMaps{10, 16};
inline constexpr MapGeometry kLargeMaps{16, 20};

}  // namespace korvane::maps
