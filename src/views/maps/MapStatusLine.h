// The line at the bottom of a map window: the cell with the focus, a selected block, the cells that were not sent, and
// how the grids look.
#pragma once

#include <QWidget>

#include "maps/panes/PaneWindow.h"
#include "views/frame/Binder.h"

namespace korvane::views {

[[nodiscard]] QWidget& makeMapStatusLine(maps::PaneWindow& window, Binder& binder, QWidget* parent);

}  // namespace korvane::views
