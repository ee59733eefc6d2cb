// What a map grid shows beside its cells: the selected block, the place of the engine, and how its numbers are drawn.
#pragma once

#include "maps/grid/GridLook.h"
#include "maps/grid/MapGrid.h"
#include "views/frame/Binder.h"
#include "views/maps/MapGridView.h"

namespace korvane::views {

void bindMarks(Binder& binder, maps::MapGrid& grid, maps::GridLook& look, MapGridView& widget);

}  // namespace korvane::views
