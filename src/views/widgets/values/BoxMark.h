// The marks of a box for a number.
#pragma once

#include <QPainter>
#include <QRect>

namespace korvane::views {

enum class BoxMark { None, Filled, Hollow };

// A triangle in the upper right corner of `place`, and a line along its lower edge. Both stand out against `ground`.
void paintCorner(QPainter& painter, const QRect& place, BoxMark mark, const QColor& ground);
void paintUnderline(QPainter& painter, const QRect& place, const QColor& ground);

}  // namespace korvane::views
