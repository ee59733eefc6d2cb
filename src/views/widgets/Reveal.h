// Keeps the widget with the focus visible.
#pragma once

#include <QWidget>

namespace korvane::views {

// Scrolls the scroll area around `widget` until `place` of it is visible; does nothing without a scroll area.
void reveal(const QWidget& widget, const QRect& place);

}  // namespace korvane::views
