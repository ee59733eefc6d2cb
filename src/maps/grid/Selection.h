// The block that is selected in a map grid: how a cell extends it and how it is painted.
#pragma once

#include <optional>

#include "maps/grid/MapGrid.h"

namespace korvane::maps {

// A block command needs both ends.
[[nodiscard]] bool hasBlock(const MapGrid& grid);
// The cells on which a block command acts: all from the first to the last in reading order, whatever their colours.
// Nothing where it would act on none.
struct CellRange {
    int first;
    int last;

    [[nodiscard]] bool has(int cell) const { return first <= cell && cell <= last; }
    friend bool operator==(const CellRange&, const CellRange&) = default;
};
[[nodiscard]] std::optional<CellRange> blockRange(const MapGrid& grid);
// Nothing is selected any more; the cells keep their colours.
void forgetBlock(MapGrid& grid);

// Extend the selection to a cell; the cell must exist. True if the block has to be painted anew.
//
// The block of the ignition and PWM maps is a run of cells. A cell just behind the first moves the start instead of
// making a block of two, on purpose; a cell before it makes a block that ends where the old one began.
[[nodiscard]] bool extendRun(MapGrid& grid, int cell);
// After a step of the focus: as extendRun(), but the cell just behind the first makes a block too.
[[nodiscard]] bool extendRunByStep(MapGrid& grid, int cell);
// The block of the fuel map is the corner cells of a rectangle. A cell before the first grows it at that end.
[[nodiscard]] bool extendRectangle(MapGrid& grid, int cell);

// All cells from the first to the last become green, with 1 for their tool-tip.
void paintRun(MapGrid& grid);
// The same cells become white.
void whitenRun(MapGrid& grid);
// The cells of the rectangle between the first and the last cell become green, with 1 for their tool-tip; all others
// white, with 0.
void paintRectangle(MapGrid& grid);
void whitenAll(MapGrid& grid);

}  // namespace korvane::maps
