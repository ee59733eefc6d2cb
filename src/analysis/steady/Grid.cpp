#include "analysis/steady/Grid.h"

#include <algorithm>
#include <cmath>

namespace korvane::steady {

namespace {

struct Span {
    int low = 0;
    int high = 0;
    double share = 0.0;  // of the high one
};

Span spanOf(double position, int count, double beyond) {
    const double centre = std::clamp(position - 0.5, -beyond, count - 1.0 + beyond);
    const int low = std::clamp(static_cast<int>(centre), 0, std::max(count - 2, 0));
    return {low, std::min(low + 1, count - 1), centre - low};
}

Corners cornersBetween(const Span& across, const Span& down, int columns) {
    const auto cell = [columns](int row, int column) { return static_cast<std::size_t>(row * columns + column); };
    return {.cell = {cell(down.low, across.low), cell(down.low, across.high), cell(down.high, across.low),
                     cell(down.high, across.high)},
            .share = {(1.0 - down.share) * (1.0 - across.share), (1.0 - down.share) * across.share,
                      down.share * (1.0 - across.share), down.share * across.share}};
}

double into(double position, int index) {
    constexpr double kInside = 1e-3;
    return std::clamp(position, index + kInside, index + 1.0 - kInside);
}

}  // namespace

bool Grid::contains(const Place& place) const {
    return place.column >= 0.0 && place.column <= columns && place.row >= 0.0 && place.row <= rows;
}

Place Grid::near(const Place& place) const {
    constexpr double kMargin = 0.5;
    return {std::clamp(place.column, -kMargin, columns + kMargin), std::clamp(place.row, -kMargin, rows + kMargin)};
}

std::size_t Grid::cellAt(const Place& place) const {
    const int column = static_cast<int>(std::clamp(place.column, 0.0, columns - 1.0));
    const int row = static_cast<int>(std::clamp(place.row, 0.0, rows - 1.0));
    return static_cast<std::size_t>(row * columns + column);
}

Corners Grid::cornersOf(const Place& place) const {
    return cornersBetween(spanOf(place.column, columns, 0.0), spanOf(place.row, rows, 0.0), columns);
}

Corners Grid::linesOf(const Place& place) const {
    return cornersBetween(spanOf(place.column, columns, 0.5), spanOf(place.row, rows, 0.5), columns);
}

bool Grid::touches(const Place& place, std::size_t cell) const {
    const int column = static_cast<int>(cell) % columns;
    const int row = static_cast<int>(cell) / columns;
    return std::fabs(place.column - column - 0.5) < 1.5 && std::fabs(place.row - row - 0.5) < 1.5;
}

Place Grid::within(const Place& place, std::size_t cell) const {
    if (!touches(place, cell)) {
        return place;
    }
    return {into(place.column, static_cast<int>(cell) % columns), into(place.row, static_cast<int>(cell) / columns)};
}

}  // namespace korvane::steady
