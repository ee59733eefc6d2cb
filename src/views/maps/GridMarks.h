// The marks of a map grid: around the cell with the focus, the cell in which the engine is, and a selected block.
#pragma once

#include <QPainter>

#include "maps/grid/Selection.h"
#include "views/maps/MapGridLayout.h"

namespace korvane::views {

// Stands out on white, green, yellow and red.
inline constexpr QColor kOutlineColor{75, 0, 130};

void paintFocusMark(QPainter& painter, const QRect& cell, const QColor& color);
void paintEngineRing(QPainter& painter, const QRect& cell);
// What the ring of a cell may touch, the smoothing of its edge included.
[[nodiscard]] QRect engineRingRect(const QRect& cell);
// Along all edges at which the range ends.
void paintOutline(QPainter& painter, const MapGridLayout& layout, const maps::CellRange& range);

}  // namespace korvane::views
