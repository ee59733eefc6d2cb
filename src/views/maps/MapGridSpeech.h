// Accessibility of a map grid: a table of cells, each with its name, value and state.
#pragma once

#include <QAccessibleInterface>

namespace korvane::views {

class MapGridView;

// Called by the toolkit, which owns the result.
[[nodiscard]] QAccessibleInterface* speakGrid(MapGridView& grid);

}  // namespace korvane::views
