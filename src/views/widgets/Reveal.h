// Keeping what has the focus in view.
#pragma once

#include <QWidget>

namespace korvane::views {

// Scrolls what `widget` stands in until `place` of it can be seen; does nothing where nothing scrolls.
void reveal(const QWidget& widget, const QRect& place);

}  // namespace korvane::views
