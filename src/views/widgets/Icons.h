// The program's pictures, painted rather than loaded.
#pragma once

#include <QIcon>

namespace korvane::views {

// A dial with its needle up: what every window bears.
[[nodiscard]] QIcon programIcon();

// A number that fills its frame.
[[nodiscard]] QIcon bigReadoutIcon();

}  // namespace korvane::views
