// One of a map window's grids: its cells, the labels at its edges and the block that is selected in it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "controls/Controls.h"
#include "maps/grid/GridFill.h"
#include "maps/grid/MapGeometry.h"

namespace korvane::maps {

// The names of a grid's controls; string literals.
struct MapGridNames {
    std::string_view cells;         // "txtFuel"
    std::string_view columnLabels;  // "lblRpmF", the engine speed of each column
    std::string_view rowLabels;     // "lblMapF", the load of each row
};

class MapGrid : public controls::Object {
public:
    // All cells are Locked: nothing is typed into them. `frame` contains all controls of the grid.
    MapGrid(controls::Window& window, const MapGridNames& names, MapGeometry shape, controls::Control& frame);

    controls::TextBox& operator()(int cell) { return cells(cell); }
    // The cell that an arrow key leads to; nothing at the edge, and for another key.
    [[nodiscard]] std::optional<int> beside(int cell, int keyCode) const;

    const MapGeometry geometry;
    controls::ControlArray<controls::TextBox> cells;
    controls::ControlArray<controls::Label> columnLabels;
    controls::ControlArray<controls::Label> rowLabels;

    // The selected block by 1-based cell numbers (cell index + 1); 0 means none. A block needs both.
    controls::Property<int> SelFirst{*this};
    controls::Property<int> SelLast{*this};

    // The cell in which the engine runs now, as far as the line tells.
    controls::Property<std::optional<int>> EngineCell{*this};

    GridFill fill;

    // What the view's own tool-tip says of a cell below its ToolTipText; may be null, or empty for a cell.
    std::function<std::string(int cell)> tip;

    // Puts a cell under its column label and beside its row label.
    void place();
};

}  // namespace korvane::maps
