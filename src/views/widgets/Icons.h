// The program's pictures, painted rather than loaded.
#pragma once

#include <QIcon>
#include <QPalette>

namespace korvane::views {

// A dial with its needle up.
[[nodiscard]] QIcon programIcon();

// A number that fills its frame.
[[nodiscard]] QIcon bigReadoutIcon(const QPalette& palette);

}  // namespace korvane::views
