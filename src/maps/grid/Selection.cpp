#include "maps/grid/Selection.h"

namespace korvane::maps {

namespace {

constexpr std::string_view kSelected = "1";  // the Shift that selected it
constexpr std::string_view kNotSelected = "0";

int numberOf(int cell) {
    return cell + 1;
}

void mark(controls::TextBox& cell, bool selected) {
    cell.BackColor = selected ? controls::kGreen : controls::kWhite;
    cell.ToolTipText = selected ? kSelected : kNotSelected;
}

template <class Paint>
void forRun(MapGrid& grid, Paint paint) {
    for (int number = grid.SelFirst; number <= grid.SelLast; ++number) {
        paint(grid(number - 1));
    }
}

// A block that grows before its first cell ends at `endBehind`.
bool extendTo(MapGrid& grid, int cell, int endBehind) {
    const int number = numberOf(cell);
    if (grid.SelFirst == 0 || grid.SelFirst == number) {
        grid.SelFirst = number;
        return false;
    }
    if (number > grid.SelFirst) {
        grid.SelLast = number;
    } else {
        grid.SelLast = endBehind;
        grid.SelFirst = number;
    }
    return true;
}

}  // namespace

bool hasBlock(const MapGrid& grid) {
    return grid.SelFirst != 0 && grid.SelLast != 0;
}

std::optional<CellRange> blockRange(const MapGrid& grid) {
    const CellRange range{grid.SelFirst - 1, grid.SelLast - 1};
    const bool acts = hasBlock(grid) && range.first <= range.last;
    return acts && grid.geometry.has(range.first) && grid.geometry.has(range.last) ? std::optional(range)
                                                                                   : std::nullopt;
}

void forgetBlock(MapGrid& grid) {
    grid.SelFirst = 0;
    grid.SelLast = 0;
}

bool extendRun(MapGrid& grid, int cell) {
    if (grid.SelFirst == cell) {
        grid.SelFirst = numberOf(cell);
        return false;
    }
    return extendRunByStep(grid, cell);
}

bool extendRunByStep(MapGrid& grid, int cell) {
    return extendTo(grid, cell, grid.SelFirst);
}

bool extendRectangle(MapGrid& grid, int cell) {
    return extendTo(grid, cell, grid.SelLast == 0 ? grid.SelFirst : grid.SelLast);
}

void paintRun(MapGrid& grid) {
    forRun(grid, [](auto& cell) { mark(cell, true); });
}

void whitenRun(MapGrid& grid) {
    forRun(grid, [](auto& cell) { cell.BackColor = controls::kWhite; });
}

void paintRectangle(MapGrid& grid) {
    const int columns = grid.geometry.columns;
    const int left = (grid.SelFirst - 1) % columns;
    const int right = (grid.SelLast - 1) % columns;
    for (int cell = 0; cell < grid.geometry.cells(); ++cell) {
        const bool between = grid.SelFirst <= cell + 1 && cell + 1 <= grid.SelLast;
        const int column = cell % columns;
        mark(grid(cell), between && left <= column && column <= right);
    }
}

void whitenAll(MapGrid& grid) {
    for (auto& cell : grid.cells) {
        cell.BackColor = controls::kWhite;
    }
}

}  // namespace korvane::maps
