// A map grid and the one widget that shows all its cells.
#pragma once

#include "maps/grid/MapGrid.h"
#include "views/frame/Binder.h"
#include "views/maps/MapGridView.h"

namespace korvane::views {

// Binds the cells of the grid and the labels at its edges; the widget is named for the cells.
void bindGrid(Binder& binder, maps::MapGrid& grid, MapGridView& widget);

}  // namespace korvane::views
